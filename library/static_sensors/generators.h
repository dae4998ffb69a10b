// SPDX-License-Identifier: Apache-2.0
//
// One record of one row, as the exported generators build it.
#ifndef OXA_STATIC_SENSORS_GENERATORS_H
#define OXA_STATIC_SENSORS_GENERATORS_H

#include "library/static_sensors/profile.h"

namespace oxa {

// Alone, or for an index that stands in the low byte before the row's place.
uint8_t BuildAlone(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint32_t dwRow, const StaticProfile &tProfile);
uint8_t BuildIndexed(uint32_t dwIndexAndRow, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab,
                     const StaticProfile &tProfile);

} // namespace oxa
#endif
