// SPDX-License-Identifier: Apache-2.0
//
// Small text work on the name of a query.
#ifndef OXA_SPECIFIC_SENSORS_NAME_TEXT_H
#define OXA_SPECIFIC_SENSORS_NAME_TEXT_H

#include "oxa/specific_sensors.h"

namespace oxa::snr {

uint8_t NameLength(const SnrQuery *ptInfo);
bool Contains(const char *pcText, const char *pcNeedle);
// Replaces every pattern; returns the length that the name would have, whatever fits of it is stored.
uint8_t ReplaceInName(SnrQuery &tInfo, const char *pcPattern, const char *pcReplacement);

} // namespace oxa::snr
#endif
