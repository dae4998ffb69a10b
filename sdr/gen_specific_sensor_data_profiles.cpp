// SPDX-License-Identifier: Apache-2.0
//
// The profile table and the ten sensor information tables that it leads to.
//
// The rows point at hidden objects and the exported names are aliases of these: pointers at the exported
// names themselves could be preempted, and each would cost a symbol lookup when the library is loaded.
#include "sdr/gen_specific_sensor_data_profiles_astrel.h"
#include "sdr/gen_specific_sensor_data_profiles_default.h"
#include "sdr/gen_specific_sensor_data_profiles_durnow.h"
#include "sdr/gen_specific_sensor_data_profiles_ferrisk.h"
#include "sdr/gen_specific_sensor_data_profiles_kestrin.h"
#include "sdr/gen_specific_sensor_data_profiles_lumora.h"
#include "sdr/gen_specific_sensor_data_profiles_pellago.h"
#include "sdr/gen_specific_sensor_data_profiles_quorral.h"
#include "sdr/gen_specific_sensor_data_profiles_sablin.h"
#include "sdr/gen_specific_sensor_data_profiles_vorana.h"

using namespace oxa::snr;

// Search order: profile id, count variable, exported table, its rows, how many, digits of a slot number.
#define OXA_PROFILES(ROW)                                                                                    \
    ROW(CUSTOM_ID_DEFAULT, g_ucSnrDefaultCnt, g_atDefaultSnrInfo, kDefaultSnrInfo, 48, 2)                    \
    ROW(CUSTOM_ID_KESTRIN, g_ucSnrKestrinCnt, g_atKestrinSnrInfo, kKestrinSnrInfo, 48, 1)                    \
    ROW(CUSTOM_ID_PELLAGO, g_ucSnrPellagoCnt, g_atPellagoSnrInfo, kPellagoSnrInfo, 48, 1)                    \
    ROW(CUSTOM_ID_VORANA, g_ucSnrVoranaCnt, g_atVoranaSnrInfo, kVoranaSnrInfo, 56, 1)                        \
    ROW(CUSTOM_ID_ASTREL, g_ucSnrAstrelCnt, g_atAstrelSnrInfo, kAstrelSnrInfo, 45, 1)                        \
    ROW(CUSTOM_ID_QUORRAL, g_ucSnrQuorralCnt, g_atQuorralSnrInfo, kQuorralSnrInfo, 45, 1)                    \
    ROW(CUSTOM_ID_LUMORA, g_ucSnrLmCnt, g_atLmSnrInfo, kLumoraSnrInfo, 39, 1)                                \
    ROW(CUSTOM_ID_DURNOW, g_ucSnrDurnowCnt, g_atDurnowSnrInfo, kDurnowSnrInfo, 44, 1)                        \
    ROW(CUSTOM_ID_SABLIN, g_ucSnrSablinCnt, g_atSablinSnrInfo, kSablinSnrInfo, 51, 2)                        \
    ROW(CUSTOM_ID_FERRISK, g_ucSnrFerriskCnt, g_atFerriskSnrInfo, kFerriskSnrInfo, 14, 1)

#define OXA_HIDDEN __attribute__((visibility("hidden")))
#define OXA_ALIAS(name) __attribute__((alias(#name), visibility("default")))

extern "C" {

#define OXA_TABLE(id, count, table, rows, number, digits)                                                    \
    static_assert(sizeof(rows.at) / sizeof(rows.at[0]) == number && Checked(rows, digits));                  \
    OXA_HIDDEN extern constinit const SnrTable<number> own_##table;                                          \
    OXA_HIDDEN extern constinit const uint8_t own_##count;                                                   \
    constinit const SnrTable<number> own_##table = rows;                                                     \
    constinit const uint8_t own_##count = number;                                                            \
    extern const SnrInfoRec table[number] OXA_ALIAS(own_##table);                                            \
    extern const uint8_t count OXA_ALIAS(own_##count);
OXA_PROFILES(OXA_TABLE)
#undef OXA_TABLE

#define OXA_ROW(id, count, table, rows, number, digits) {id, &own_##count, own_##table.at},
constinit const SnrSpecificInfoRow g_atSnrSpecificInfo[10] = {OXA_PROFILES(OXA_ROW)};
#undef OXA_ROW

constinit const uint32_t g_dwSdrCustomCnt = sizeof(g_atSnrSpecificInfo) / sizeof(g_atSnrSpecificInfo[0]);

} // extern "C"
