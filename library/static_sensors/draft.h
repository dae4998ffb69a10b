// SPDX-License-Identifier: Apache-2.0
//
// A record on its way, and the steps that it takes.  Private to the engine.
#ifndef OXA_STATIC_SENSORS_DRAFT_H
#define OXA_STATIC_SENSORS_DRAFT_H

#include "library/record/boards.h"
#include "library/record/log.h"
#include "library/static_sensors/engine.h"

namespace oxa {

// What becomes of it.  A full name of 16 characters is printed in place, with its NUL behind the slot.
struct Result {
    alignas(4) uint8_t aucSDR[SDR_SLOT_SIZE + 1];
    alignas(4) DevTabEntry tEntry;
};

struct Draft : Result {
    const StaticProfile &tProfile;
    const SensorKind &tKind;
    RowView tRow;
    const At &tAt;
    uint8_t ucCpu = 0;           // CPU number counted from 0
    bool bBelowFirstCpu = false; // the printed CPU number is below the first one: no number, no client
    uint16_t wBoardId = 0;       // read by the board line
    uint8_t ucM = 0;             // measured accuracy, where the gate asked for one
    // The rest is filled before it is read; clearing it first would cost as much as filling it.
    union {
        char acText[SENSOR_NAME_SIZE]; // text of the name, where it has one
        HalCpuVoltSdrInfo tVoltage;    // conversion and limits, where the platform describes them
    };

    Draft(const StaticProfile &tWhose, const SensorKind &tWhat, RowView tWhich, const At &tWhere)
        : tProfile(tWhose), tKind(tWhat), tRow(tWhich), tAt(tWhere) {}

    const Behaviour &Does() const {
        return tKind.tDoes;
    }
    bool Has(KindFlag eFlag) const {
        return (Does().ucFlags & eFlag) != 0;
    }
    // For log lines: the profile's unit and name, and the generator, or the driver where the row has none.
    const char *Unit() const {
        return tProfile.tNames.acUnit;
    }
    const char *ProfileName() const {
        return tProfile.tNames.acName;
    }
    const char *Function() const {
        const char *pcFunction = tRow.Function();
        return *pcFunction != '\0' ? pcFunction : tProfile.tNames.acDriver;
    }
};

bool PassGate(Draft &tDraft);                           // false: refused, said why
bool AskForFacts(Draft &tDraft);                        // CPU number and board id; false: not to be built
void WriteBoardLine(Draft &tDraft);                     // reads the board id as the kind says
bool ApplyPlatformValues(Draft &tDraft);                // what the board told; false: no bus client, said so
const char *PickName(Draft &tDraft, uint8_t &ucNumber); // the pattern, null: no such index
void WriteDuplicateNotice(const Draft &tDraft);         // the record is already stored

} // namespace oxa
#endif
