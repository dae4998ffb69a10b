// SPDX-License-Identifier: Apache-2.0
//
// A record on its way, and the steps that are split over several files.  Private to the engine.
#ifndef OXA_SDR_SENSOR_ENGINE_DRAFT_H
#define OXA_SDR_SENSOR_ENGINE_DRAFT_H

#include "oxa/platform.h"
#include "sdr/oxa_log.h"
#include "sdr/sensor_engine.h"

namespace oxa {

struct Draft {
    const ProfileName &tProfile;
    const SensorKind &tKind;
    RowView tRow;
    At tAt;
    uint8_t ucCpu = 0;       // CPU number counted from 0
    bool bBelowSilk = false; // the printed CPU number is below the first one: no number, no client
    uint8_t ucM = 0;         // measured accuracy, where the gate asked for one
    uint16_t wBoardId = 0;   // read by the board line
    HalI2cClient tClient = {0, 0};
    // The rest is filled before it is read; clearing it first would cost more than building the record.
    HalCpuVoltSdrInfo tVoltage;
    char acText[SENSOR_NAME_SIZE]; // text of the name, where it has one
    char acName[SENSOR_NAME_SIZE];
    alignas(4) uint8_t aucSDR[SDR_SLOT_SIZE];
    alignas(4) DevTabEntry tEntry;

    Draft(const ProfileName &tWhose, const SensorKind &tWhat, RowView tWhich, At tWhere)
        : tProfile(tWhose), tKind(tWhat), tRow(tWhich), tAt(tWhere) {}

    const Behaviour &Does() const {
        return tKind.tBehaviour;
    }
    bool Has(KindFlag eFlag) const {
        return (Does().ucFlags & eFlag) != 0;
    }
};

// A log line under the generator's name, from the profile's file.
#define DRAFT_INFO(tDraft, ...)                                                                              \
    OXA_INFO(kModuleSdr, (tDraft).tProfile.acFile, Label((tDraft).tProfile, (tDraft).tRow.Generator()).ac,   \
             __VA_ARGS__)
#define DRAFT_WARN(module, tDraft, ...)                                                                      \
    OXA_WARN((module), (tDraft).tProfile.acFile, Label((tDraft).tProfile, (tDraft).tRow.Generator()).ac,     \
             __VA_ARGS__)
#define DRAFT_ERROR(module, tDraft, ...)                                                                     \
    OXA_ERROR((module), (tDraft).tProfile.acFile, Label((tDraft).tProfile, (tDraft).tRow.Generator()).ac,    \
              __VA_ARGS__)
// A line whose text begins with the generator's name.
#define DRAFT_NAMED(write, module, tDraft, format, ...)                                                      \
    do {                                                                                                     \
        const Label tLabel((tDraft).tProfile, (tDraft).tRow.Generator());                                    \
        write((module), (tDraft).tProfile.acFile, tLabel.ac, format, tLabel.ac __VA_OPT__(, ) __VA_ARGS__);  \
    } while (0)

bool PassGate(Draft &tDraft);                           // false: refused, said why
void WriteBoardLine(Draft &tDraft);                     // reads the board id
void SayKnown(const Draft &tDraft);                     // the record is already stored
const char *PickName(Draft &tDraft, uint8_t &ucNumber); // the pattern, null: no such index

} // namespace oxa
#endif
