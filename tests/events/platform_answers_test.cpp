// SPDX-License-Identifier: GPL-3.0-or-later
//
// Answers and buffers that the simulated platform does not show: this program has a small platform of its own and
// the units of the library in it.
#include <unistd.h>

#include <array>
#include <cstring>
#include <vector>

#include <gmock/gmock.h>

#include "oxa/events.h"
#include "oxa/platform.h"

namespace {

using testing::Each;
using testing::ElementsAre;

struct Platform {
    MwSpecificSensorInfo leak = {};
    int32_t leak_result = 0;
    uint32_t custom_id = 0;
    uint32_t number = 0;
    int32_t number_result = 0;
    uint8_t inlet = 0;
    int32_t inlet_result = 0;
    std::vector<uint8_t> session_block, user, password, response, record;
    const void *session = nullptr;
    const void *add_session = nullptr;
    const void *closed_session = nullptr;
};
Platform g_platform;

int32_t GiveNumber(uint32_t *number) {
    *number = g_platform.number;
    return g_platform.number_result;
}

} // namespace

extern "C" {

void _ssp_info(uint32_t, const char *, uint32_t, const char *, const char *, ...) {}
void _ssp_warn(uint32_t, const char *, uint32_t, const char *, const char *, ...) {}
void _ssp_error(uint32_t, const char *, uint32_t, const char *, const char *, ...) {}
void sspFailedStat(const char *, uint32_t) {}
int32_t MW_GetCustomid(uint32_t *id) {
    *id = g_platform.custom_id;
    return 0;
}
int32_t MW_GetSensorNumber(const MwSensorKey *, uint32_t *number) {
    return GiveNumber(number);
}
int32_t MW_GetCPUSensorNumber(uint32_t, uint32_t *number) {
    return GiveNumber(number);
}
int32_t MW_GetMemSensorNumber(uint32_t, uint32_t *number) {
    return GiveNumber(number);
}
int32_t MW_GetPemSensorNumber(uint32_t, uint32_t *number) {
    return GiveNumber(number);
}
int32_t MW_GetPowerFaultSensorNum(uint32_t *number) {
    return GiveNumber(number);
}
int32_t MW_GetSpecificSensorInfo(const MwSensorKey *, MwSpecificSensorInfo *info) {
    *info = g_platform.leak;
    return g_platform.leak_result;
}
int32_t MW_GetInletTempInfo(uint8_t *temperature) {
    *temperature = g_platform.inlet;
    return g_platform.inlet_result;
}
int32_t MW_SetMemPredictiveFailureState(uint32_t, uint32_t) {
    return 0;
}
uint16_t LIBIPMI_Create_IPMI_Local_Session(IpmiLocalSession *session, const char *user, const char *password,
                                           uint8_t *, uint32_t, uint32_t, uint32_t) {
    g_platform.session_block.assign(session->aucRaw, session->aucRaw + 42);
    g_platform.user.assign(user, user + 8);
    g_platform.password.assign(password, password + 8);
    g_platform.session = session;
    std::memset(session, 0xA5, sizeof(*session));
    return 0;
}
uint16_t IPMICMD_AddSELEntry(IpmiLocalSession *session, const uint8_t *record, uint8_t *response, uint32_t) {
    g_platform.add_session = session;
    g_platform.record.assign(record, record + 16);
    g_platform.response.assign(response, response + 3);
    std::memset(response, 0xA5, 3);
    return 0;
}
uint16_t LIBIPMI_CloseSession(IpmiLocalSession *session) {
    g_platform.closed_session = session;
    return 0;
}

} // extern "C"

namespace {

class FreshPlatform : public testing::Test {
protected:
    FreshPlatform() {
        g_platform = Platform{};
    }
};
using Buffers = FreshPlatform;
using Leakage = FreshPlatform;
using Lookups = FreshPlatform;

constexpr LeakageInfo kLeak = {0, 5};
constexpr LeakageInfo kGone = {1, 5};

TEST_F(Buffers, SessionBlockNamesAndResponseAreHandedOverZeroed) {
    EXPECT_EQ(addPOSTErrorSel(), 0u);
    EXPECT_THAT(g_platform.session_block, Each(0));
    EXPECT_THAT(g_platform.user, Each(0));
    EXPECT_THAT(g_platform.password, Each(0));
    EXPECT_THAT(g_platform.response, ElementsAre(0, 0, 0));
}

TEST_F(Buffers, AddAndCloseGetTheSessionThatWasOpened) {
    EXPECT_EQ(addPOSTErrorSel(), 0u);
    EXPECT_NE(g_platform.session, nullptr);
    EXPECT_EQ(g_platform.add_session, g_platform.session);
    EXPECT_EQ(g_platform.closed_session, g_platform.session);
}

TEST_F(Leakage, TakesNumberTypesAndLunFromTheAnswer) {
    g_platform.leak = {0xC4, 0x2B, 0x6F, 2, {}};
    EXPECT_EQ(addLeakageSel(1, &kLeak), 0u);
    EXPECT_THAT(g_platform.record,
                ElementsAre(0, 0, 2, 0, 0, 0, 0, 0x20, 2, 4, 0x2B, 0xC4, 0x6F, 0x81, 0x51, 0));
}

TEST_F(Leakage, TakesTheLowTwoBitsOfTheLun) {
    g_platform.leak = {0x5E, 0x0A, 0x03, 0xFD, {}};
    EXPECT_EQ(addLeakageSel(1, &kLeak), 0u);
    EXPECT_EQ(g_platform.record[8], 1);
}

TEST_F(Leakage, ADeassertionSetsBit7BesideTheAnswersEventType) {
    g_platform.leak = {0x5E, 0x0A, 0x6F, 0, {}};
    g_platform.custom_id = 7;
    EXPECT_EQ(addLeakageSel(1, &kGone), 0u);
    EXPECT_EQ(g_platform.record[12], 0xEF);
    g_platform.leak.ucEventType = 0xEF;
    EXPECT_EQ(addLeakageSel(1, &kGone), 0u);
    EXPECT_EQ(g_platform.record[12], 0xEF);
}

TEST_F(Leakage, AnyResultBut0IsAFailure) {
    g_platform.leak_result = 1;
    EXPECT_EQ(addLeakageSel(1, &kLeak), 0xFFFFu);
    EXPECT_TRUE(g_platform.record.empty());
}

// A failed call may well have written something that looks like an answer.
TEST_F(Lookups, TheNumberOfAFailedLookupIsNotTrusted) {
    g_platform.number = 0x42;
    g_platform.number_result = 1;
    g_platform.custom_id = 3;
    EXPECT_EQ(addCPUError(0, 0, 0, 0, 0), 0u);
    EXPECT_EQ(g_platform.record[11], 0);
    EXPECT_EQ(addMemError(0, 0, 0, 0), 0u);
    EXPECT_EQ(g_platform.record[11], 0);
    EXPECT_EQ(addPEMSEL(0, 17, 0), 0u);
    EXPECT_EQ(g_platform.record[11], 0);
    EXPECT_EQ(addPowerDropSEL(0, 0, 0, 0), 0u);
    EXPECT_EQ(g_platform.record[11], 0);
    EXPECT_EQ(g_platform.record[8], 0);
    EXPECT_EQ(addDiskSEL(0, 0, 19, 0), 0u);
    EXPECT_EQ(g_platform.record[11], 0);
}

TEST_F(Lookups, TheTemperatureOfAFailedReadingIsNotTrusted) {
    g_platform.inlet = 77;
    EXPECT_EQ(addSELAlarm(55, 0, 0), 0u);
    EXPECT_EQ(g_platform.record[14], 77);
    g_platform.inlet_result = 1;
    EXPECT_EQ(addSELAlarm(55, 0, 0), 0u);
    EXPECT_EQ(g_platform.record[14], 0);
}

} // namespace
