// SPDX-License-Identifier: Apache-2.0
//
// Makes of a profile's list, which OXA_SENSOR_LIST names, the profile's constant kProfile and the exported
// generators.  Included once by each profile's file, which defines kNames and kPass before.
#include "library/static_sensors/generators.h"
#include "library/static_sensors/make_profile.h"

namespace {

using namespace oxa;

constexpr auto kRows = Join(
#define ROW(group, kind, function, ...) MakeRow(Group::group, kind, function, __VA_ARGS__),
#include OXA_SENSOR_LIST
    kEndOfRows);
#define ROW(group, kind, function, ...)                                                                      \
    static_assert(IsWalked(kPass, Group::group),                                                             \
                  "row_of_a_group_that_no_step_of_the_profile_walks: " #kind ", " #__VA_ARGS__);             \
    static_assert(NamedOnce(kRows, Group::group, PatternOf(__VA_ARGS__)),                                    \
                  "sensor_name_twice_in_a_profile: " #kind ", " #__VA_ARGS__);                               \
    static_assert(GeneratedOnce(kRows, function), "generator_twice_in_a_profile: " function);                \
    static_assert(StandsTogether(kRows, Group::group),                                                       \
                  "row_stands_outside_its_group: " #kind ", " #__VA_ARGS__);
#include OXA_SENSOR_LIST
constexpr auto kProfile = MakeProfile(kNames, kPass, kRows);

// Out of line, so that each generator is two instructions: where its row stands, and a jump.  A list may have
// generators of one kind only.
[[gnu::noinline, maybe_unused]] uint8_t BuildRow(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint32_t dwRow) {
    return BuildAlone(pucSDRRec, ptDEVTab, dwRow, kProfile.tProfile);
}
[[gnu::noinline, maybe_unused]] uint8_t BuildRowOf(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab,
                                                   uint32_t dwRow) {
    return BuildIndexed(ucIndex | dwRow << 8, pucSDRRec, ptDEVTab, kProfile.tProfile);
}

} // namespace

#define GENERATE_STATIC(function)                                                                            \
    uint8_t function(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab) {                                            \
        return BuildRow(pucSDRRec, ptDEVTab, FindRow(kRows, #function));                                     \
    }
#define GENERATE_INDEXED(function)                                                                           \
    uint8_t function(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab) {                           \
        return BuildRowOf(ucIndex, pucSDRRec, ptDEVTab, FindRow(kRows, #function));                          \
    }
#define GENERATE_INDEX_LAST(function)                                                                        \
    uint8_t function(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint8_t ucIndex) {                           \
        return BuildRowOf(ucIndex, pucSDRRec, ptDEVTab, FindRow(kRows, #function));                          \
    }
#include OXA_SENSOR_LIST
