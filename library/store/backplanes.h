// SPDX-License-Identifier: Apache-2.0
//
// The platform's list of disk backplanes.  It is a kilobyte, more than a caller may take from the stack, so
// it is borrowed from the image of the extended store, which is read afresh before each use; the bytes are
// zero afterwards.
#ifndef OXA_STORE_BACKPLANES_H
#define OXA_STORE_BACKPLANES_H

#include "oxa/platform.h"

namespace oxa {

class Backplanes {
public:
    Backplanes(); // asks the platform
    ~Backplanes();
    Backplanes(const Backplanes &) = delete;
    Backplanes &operator=(const Backplanes &) = delete;

    bool IsRead() const {
        return bRead;
    }
    uint32_t Reported() const; // the platform's own count
    uint32_t Usable() const {  // as many as the list can hold
        return Reported() < HAL_HDD_BACKPANEL_MAX ? Reported() : HAL_HDD_BACKPANEL_MAX;
    }
    const uint8_t *Record(uint32_t dwIndex) const; // bytes of a HalHddBackpanelRec

private:
    bool bRead;
};

} // namespace oxa
#endif
