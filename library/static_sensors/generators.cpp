// SPDX-License-Identifier: Apache-2.0
#include "library/static_sensors/generators.h"

#include "library/static_sensors/engine.h"

namespace oxa {

uint8_t BuildAlone(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint32_t dwRow, const StaticProfile &tProfile) {
    return BuildSensor(tProfile, tProfile.RowAt(dwRow), At(), pucSDRRec, ptDEVTab);
}

uint8_t BuildIndexed(uint32_t dwIndexAndRow, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab,
                     const StaticProfile &tProfile) {
    return BuildSensor(tProfile, tProfile.RowAt(dwIndexAndRow >> 8), At(static_cast<uint8_t>(dwIndexAndRow)),
                       pucSDRRec, ptDEVTab);
}

} // namespace oxa
