// SPDX-License-Identifier: Apache-2.0
//
// A record on its way, and the steps that are split over several files.  Private to the engine.
#ifndef OXA_SDR_SENSOR_ENGINE_DRAFT_H
#define OXA_SDR_SENSOR_ENGINE_DRAFT_H

#include "sdr/sensor_engine.h"

namespace oxa {

// What becomes of it.  A full name of 16 characters is printed in place, with its NUL behind the slot.
struct Result {
    alignas(4) uint8_t aucSDR[SDR_SLOT_SIZE + 1];
    alignas(4) DevTabEntry tEntry;
};

struct Draft : Result {
    const ProfileName &tProfile;
    const StoredKind &tKind;
    RowView tRow;
    At tAt;
    uint8_t ucCpu = 0;       // CPU number counted from 0
    bool bBelowSilk = false; // the printed CPU number is below the first one: no number, no client
    uint16_t wBoardId = 0;   // read by the board line
    uint8_t ucM = 0;         // measured accuracy, where the gate asked for one
    // The rest is filled before it is read; clearing it first would cost as much as filling it.
    union {
        char acText[SENSOR_NAME_SIZE]; // text of the name, where it has one
        HalCpuVoltSdrInfo tVoltage;    // conversion and limits, where the platform describes them
    };

    Draft(const ProfileName &tWhose, const StoredKind &tWhat, RowView tWhich, At tWhere)
        : tProfile(tWhose), tKind(tWhat), tRow(tWhich), tAt(tWhere) {}

    const StoredKind &Does() const {
        return tKind;
    }
    bool Has(KindFlag eFlag) const {
        return (Does().ucFlags & eFlag) != 0;
    }
};

// Lines under the generator's name, from the profile's file, and such that begin with it.
void Say(const Draft &tDraft, Remark tRemark, const char *pcFormat, int sdw = 0);
void SayNamed(const Draft &tDraft, Remark tRemark, const char *pcFormat, int sdw = 0);
void SayNamed(const Draft &tDraft, Remark tRemark, const char *pcFormat, int sdwA, int sdwB);
#define DRAFT_SPEAKER(tDraft) (tDraft).tProfile, (tDraft).tRow.Generator()
#define DRAFT_INFO(tDraft, ...) Say(tDraft, OXA_REMARK(kInfo, kModuleSdr), __VA_ARGS__)
#define DRAFT_WARN(module, tDraft, ...) Say(tDraft, OXA_REMARK(kWarn, module), __VA_ARGS__)
#define DRAFT_ERROR(module, tDraft, ...) Say(tDraft, OXA_REMARK(kError, module), __VA_ARGS__)
#define DRAFT_NAMED(severity, module, tDraft, ...) SayNamed(tDraft, OXA_REMARK(severity, module), __VA_ARGS__)

bool Ask(Draft &tDraft);            // what comes before the template; false: refused, said why
bool PassGate(Draft &tDraft);       // the gate of it
bool ChangeTemplate(Draft &tDraft); // by what the board told; false: no bus client, said so
void SayKnown(const Draft &tDraft); // the record is already stored
const char *PickName(Draft &tDraft, uint8_t &ucNumber); // the pattern, null: no such index
bool WriteBoardLine(Draft &tDraft);                     // reads the board id; true

} // namespace oxa
#endif
