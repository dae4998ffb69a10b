// SPDX-License-Identifier: Apache-2.0
//
// What a customer profile does otherwise at run time: a constant for each profile, in the profile's own file.
// Whoever needs a trait has read the profile's id where it always did and asks by it.
#ifndef OXA_RECORD_TRAITS_H
#define OXA_RECORD_TRAITS_H

#include <cstdint>

namespace oxa {

// The profile that counts where the id cannot be read.
inline constexpr uint32_t kProfileWhenUnreadable = 0;

enum class FanNumber : uint8_t { kLikeASlot, kHexadecimal, kTwoDigits };

// Of temperatures of one device type, in degrees Celsius; device type 0: none.
struct FixedLimits {
    uint8_t ucDeviceType = 0;
    uint8_t ucUNC = 0, ucUC = 0, ucUNR = 0;
};

struct ProfileTraits {
    // names of sensors that come at run time
    bool bTwoDigitSlots = false; // slots are printed with two digits, plain ports with one
    FanNumber eFanNumber = FanNumber::kLikeASlot;
    bool bNicsCountOnFromOcp = false; // NICs are numbered as they turn up, behind the OCP cards
    bool bGpusNamedByPlace = false;   // GPU units by row and place, on the one board that has them
    // their records
    bool bRelativeOcpPorts = false;    // instances of OCP ports are relative, their slot is FFh
    FixedLimits atFixedLimits[2] = {}; // upper limits of cards, whatever is described
    bool bForcesFanLimits = false; // a fan's lower critical limit only warns; two counts below is critical
    uint8_t ucPowerSensorType = 0; // of power sensors; 0: the template's
    char acPsuLocator[11] = "PSU%d_FRU"; // name of a power supply's FRU locator
    uint8_t ucFruIdOffset = 0;           // of locators, on the product below only
    uint32_t dwFruIdOffsetProduct = 0;
    bool bRegistersDisks = false; // disks have sensors of their own
    // events
    bool bKeepsMemoryState = false;    // a state is kept instead of the memory failure event
    bool bHasMemoryOffset14 = false;   // elsewhere it is no event
    bool bHidesPowerForecasts = false; // of power modules
    bool bHidesDiskLife = false;       // worn disks
    bool bReportsPowerDrop = false;
    bool bReportsLeakGone = false;
};

// Of the profile with that id; without a profile of that id nothing is special.
const ProfileTraits &TraitsOf(uint32_t dwCustomId);

} // namespace oxa
#endif
