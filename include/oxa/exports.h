/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief All that liboxaspecificsensorinfo exports: includes its headers, in this order, and declares nothing itself.
 *
 * Each of them stands alone; a program that wants one thing includes that thing's header.
 *   - records.h: numbers, results, records and function types; what holds for all functions; how to start
 *   - specific_sensors.h: sensors that come and go: add, delete, names, FRU ids, device-table entries
 *   - store.h: the record file and the extended store
 *   - thresholds.h: thresholds that a user set
 *   - events.h: the event log
 *   - profiles/: per customer profile the static driver, its generators and tables
 *
 * What the library needs of the firmware stands in platform.h, which is included by none of them.
 */
#ifndef OXA_EXPORTS_H
#define OXA_EXPORTS_H

#include "oxa/records.h"
#include "oxa/specific_sensors.h"
#include "oxa/store.h"
#include "oxa/thresholds.h"
#include "oxa/events.h"

#include "oxa/profiles/default.h"
#include "oxa/profiles/kestrin.h"
#include "oxa/profiles/pellago.h"
#include "oxa/profiles/vorana.h"
#include "oxa/profiles/astrel.h"
#include "oxa/profiles/quorral.h"
#include "oxa/profiles/lumora.h"
#include "oxa/profiles/durnow.h"
#include "oxa/profiles/ferrisk.h"

#endif
