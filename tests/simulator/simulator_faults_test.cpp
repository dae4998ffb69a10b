// SPDX-License-Identifier: GPL-3.0-or-later
//
// Fault rules, the k-th call, and what a failing call leaves behind.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <map>
#include <set>
#include <stdexcept>

#include "simulator/simulator.h"

using namespace sim;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::vector<int32_t> CountCpus(int calls) {
    std::vector<int32_t> results;
    for (int call = 0; call < calls; ++call) {
        uint8_t count = 0;
        results.push_back(HAL_GetCpuMaxCount(&count));
    }
    return results;
}

} // namespace

// ---- rules -------------------------------------------------------------------------------------------

TEST(Fault, HitsEveryCallWithoutAnOccurrence) {
    Start({});
    AddFault({.call = "HAL_GetCpuMaxCount"});
    EXPECT_FALSE(FaultWasHit());
    EXPECT_THAT(CountCpus(3), ElementsAre(-1, -1, -1));
    EXPECT_TRUE(FaultWasHit());
}

TEST(Fault, HitsTheNthCallOnce) {
    Start({});
    AddFault({.call = "HAL_GetCpuMaxCount", .occurrence = 2});
    EXPECT_THAT(CountCpus(4), ElementsAre(0, -1, 0, 0));
}

TEST(Fault, HitsTheNthCallAndAllLaterOnes) {
    Start({});
    AddFault({.call = "HAL_GetCpuMaxCount", .occurrence = 3, .from_then_on = true});
    EXPECT_THAT(CountCpus(4), ElementsAre(0, 0, -1, -1));
}

TEST(Fault, HitsCallsByArgumentAndNotLongerNumbers) {
    Start({});
    AddFault({.call = "HalFanService.GetFanSilkByIndex", .args = "index=2"});
    const HalFanService *service = HalFanInst();
    uint8_t silk = 0;
    EXPECT_EQ(service->GetFanSilkByIndex(1, &silk), 0);
    EXPECT_EQ(service->GetFanSilkByIndex(2, &silk), -1);
    EXPECT_EQ(service->GetFanSilkByIndex(21, &silk), 0);
    EXPECT_EQ(service->GetFanSilkByIndex(12, &silk), 0);
}

TEST(Fault, WithArgumentsTheOccurrenceCountsMatchingCalls) {
    Start({});
    SetTracing(false); // arguments count also when nobody records them
    AddFault({.call = "HAL_GetCpuOnlineStatus", .occurrence = 2, .args = "index=1"});
    std::vector<int32_t> results;
    for (const uint8_t cpu : {0, 1, 0, 1, 1}) {
        int32_t online = 0;
        results.push_back(HAL_GetCpuOnlineStatus(cpu, &online));
    }
    EXPECT_THAT(results, ElementsAre(0, 0, 0, -1, 0));
}

TEST(Fault, AnIniFileMayLoadWithoutAHandle) {
    Start({});
    AddFault({.call = "IniLoadFile", .output = 0, .succeed = true});
    char some;
    IniFile *ini = reinterpret_cast<IniFile *>(&some);
    EXPECT_EQ(IniLoadFile("/var/SpecificSDRRec", &ini), 0);
    EXPECT_EQ(ini, nullptr);
    EXPECT_THAT(Violations(), IsEmpty()); // nothing is left open
}

TEST(Fault, GivesResultAndOutputOfAFailure) {
    Start({});
    AddFault({.call = "HAL_GetCpuMaxCount", .result = 0x77, .output = 9});
    uint8_t count = 0;
    EXPECT_EQ(HAL_GetCpuMaxCount(&count), 0x77);
    EXPECT_EQ(count, 9);
    EXPECT_TRUE(Trace().back().failed);
}

TEST(Fault, GivesAnOutputOfASuccess) {
    Start({});
    AddFault({.call = "MW_GetCustomid", .output = 0x12345678, .succeed = true});
    uint32_t profile = 0;
    EXPECT_EQ(MW_GetCustomid(&profile), 0);
    EXPECT_EQ(profile, 0x12345678u);
    EXPECT_FALSE(Trace().back().failed);
    EXPECT_TRUE(FaultWasHit());
}

TEST(Fault, AnOutputSetsTheFirstFieldOfARecord) {
    Board board;
    board.disks.backplanes = {{8, 4, "Front"}};
    board.gpus = {{3, 100, 1}};
    Start(board);
    AddFault({.call = "HalHddBackpanelService.GetBackPanelList", .output = 33, .succeed = true});
    AddFault({.call = "MW_GetGPUAssetInfo", .output = 30});
    HalHddBackpanelList list;
    EXPECT_EQ(HalHddBackpanelInst()->GetBackPanelList(&list), 0);
    EXPECT_EQ(list.count, 33u);
    EXPECT_EQ(list.atRec[0].ucStartSlot, 8);
    GpuAssetInfo info;
    EXPECT_EQ(MW_GetGPUAssetInfo(&info), -1);
    EXPECT_EQ(info.dwCount, 30u);
    EXPECT_EQ(info.atGpu[0].ucSlot, 0xA5);
}

TEST(Fault, ClientBytesAreBusThenAddress) {
    Start({});
    AddFault({.call = "HAL_InputTemp_GetI2cClient", .output = 0x4C07, .succeed = true});
    HalI2cClient client{};
    EXPECT_EQ(HAL_InputTemp_GetI2cClient(&client), 0);
    EXPECT_EQ(client.ucBus, 7);
    EXPECT_EQ(client.ucAddr, 0x4C);
}

TEST(Fault, TheFirstRuleThatMatchesDecides) {
    Start({});
    AddFault({.call = "HAL_GetCpuMaxCount", .occurrence = 2, .result = -2});
    AddFault({.call = "HAL_GetCpuMaxCount", .result = -3});
    EXPECT_THAT(CountCpus(3), ElementsAre(-3, -2, -3));
    ClearFaults();
    EXPECT_THAT(CountCpus(1), ElementsAre(0));
}

TEST(Fault, FunctionsThatCannotFailReturnWhatTheRuleSays) {
    Start({});
    AddFault({.call = "GetLiquidCoolingFlag", .result = 2});
    AddFault({.call = "GetOcpPresentStatus", .output = 0xF0});
    AddFault({.call = "oxa_CustomSlotConversion", .output = 44});
    AddFault({.call = "strnlen_s", .result = 0});
    EXPECT_EQ(GetLiquidCoolingFlag(), 2);
    EXPECT_EQ(GetOcpPresentStatus(), 0xF0u);
    uint8_t slot = 1;
    oxa_CustomSlotConversion(&slot);
    EXPECT_EQ(slot, 44);
    EXPECT_EQ(strnlen_s("abc", 16), 0u);
    EXPECT_EQ(FailableCalls(), 0u);
    EXPECT_TRUE(FaultWasHit());
}

TEST(Fault, ServiceGettersGiveNullObjectsAndNullOperations) {
    Start({});
    AddFault({.call = "HalCpuInst", .null_object = true});
    AddFault({.call = "HalFanInst", .null_operation = true});
    AddFault({.call = "HalHddBackpanelInst", .occurrence = 1});
    EXPECT_EQ(HalCpuInst(), nullptr);
    const HalFanService *fans = HalFanInst();
    ASSERT_NE(fans, nullptr);
    EXPECT_EQ(fans->GetFanMaxCount, nullptr);
    EXPECT_EQ(fans->GetFanSilkByIndex, nullptr);
    EXPECT_EQ(HalHddBackpanelInst(), nullptr);
    EXPECT_NE(HalHddBackpanelInst(), nullptr);
}

TEST(Fault, ARuleThatCouldNeverActIsRefused) {
    Start({});
    EXPECT_THROW(AddFault({.call = "HAL_GetCpuMaxCuont"}), std::invalid_argument);
    EXPECT_THROW(AddFault({.call = "GetLiquidCoolingFlag"}), std::invalid_argument);
    EXPECT_THROW(AddFault({.call = "_ssp_info"}), std::invalid_argument);
    EXPECT_THROW(AddFault({.call = "IniCloseFile"}), std::invalid_argument);
    EXPECT_THROW(AddFault({.call = "HAL_GetCpuMaxCount", .null_object = true}), std::invalid_argument);
    EXPECT_THROW(AddFault({.call = "HAL_GetCpuMaxCount", .occurrence = 0}), std::invalid_argument);
}

// ---- the k-th call --------------------------------------------------------------------------------------

TEST(FailCall, HitsTheKthCallThatCanFailOnce) {
    Start({});
    FailCall(3);
    uint8_t count = 0;
    char text[4];
    EXPECT_EQ(HAL_GetCpuMaxCount(&count), 0);
    EXPECT_EQ(GetLiquidCoolingFlag(), 0);  // not counted
    EXPECT_EQ(strnlen_s("x", 4), 1u);      // not counted
    EXPECT_EQ(memset_s(text, 4, 0, 4), 0); // counted
    EXPECT_EQ(HalFanInst(), nullptr);      // the third
    EXPECT_NE(HalFanInst(), nullptr);
    EXPECT_EQ(FailableCalls(), 4u);
    EXPECT_TRUE(FaultWasHit());
}

TEST(FailCall, HitsTheKthCallAndAllLaterOnes) {
    Start({});
    FailCall(2, true);
    EXPECT_THAT(CountCpus(4), ElementsAre(0, -1, -1, -1));
    FailCall(0);
    EXPECT_THAT(CountCpus(1), ElementsAre(0));
}

TEST(FailCall, BeyondTheLastCallNothingIsHit) {
    Start({});
    FailCall(5);
    EXPECT_THAT(CountCpus(4), Each(0));
    EXPECT_FALSE(FaultWasHit());
}

TEST(FailCall, CountsFromStart) {
    Start({});
    CountCpus(3);
    Start({});
    EXPECT_EQ(FailableCalls(), 0u);
    FailCall(1);
    EXPECT_THAT(CountCpus(2), ElementsAre(-1, 0));
}

// ---- rubbish
// ------------------------------------------------------------------------------------------------

namespace {

// One call of every function with outputs: the result, and the output in `out`, of which `size` bytes count.
struct Output {
    size_t size = 0;
    int64_t result = 0;
};
using MakeCall = std::function<Output(uint8_t *)>;

template <class T> MakeCall Out(int32_t (*function)(T *)) {
    return [function](uint8_t *out) { return Output{sizeof(T), function(reinterpret_cast<T *>(out))}; };
}
template <class A, class T> MakeCall Out1(int32_t (*function)(A, T *)) {
    return [function](uint8_t *out) {
        return Output{sizeof(T), function(static_cast<A>(1), reinterpret_cast<T *>(out))};
    };
}

IpmiLocalSession g_session;
const uint8_t kRecord[64] = {};

std::map<std::string, MakeCall> CallsWithOutputs() {
    static const MwSensorKey kKey{4, 0x0D, 0x6F, 1, 0};
    std::map<std::string, MakeCall> calls = {
        {"get_default_board_id", Out(get_default_board_id)},
        {"HAL_CPUVRTempCoreVolts_GetI2cClientByInstance",
         Out1(HAL_CPUVRTempCoreVolts_GetI2cClientByInstance)},
        {"HAL_InputTemp_GetI2cClient", Out(HAL_InputTemp_GetI2cClient)},
        {"HAL_SWTICH_GetI2cClientByInstance", Out1(HAL_SWTICH_GetI2cClientByInstance)},
        {"HAL_GetCpuMaxCount", Out(HAL_GetCpuMaxCount)},
        {"HAL_GetCpuSilkScreenIndexFixValue", Out(HAL_GetCpuSilkScreenIndexFixValue)},
        {"HAL_GetCpuType", Out(HAL_GetCpuType)},
        {"HAL_GetCpuOnlineStatus", Out1(HAL_GetCpuOnlineStatus)},
        {"HAL_GetCpuVoltSdrInfoforSensor", Out1(HAL_GetCpuVoltSdrInfoforSensor)},
        {"HalCpuService.GetCpuReduceFlag", Out(HalCpuInst()->GetCpuReduceFlag)},
        {"HAL_GetDimmMaxCount", Out(HAL_GetDimmMaxCount)},
        {"HAL_GetDimmDevInfoByDimmNum", Out1(HAL_GetDimmDevInfoByDimmNum)},
        {"HAL_GetDimmPowerAccuracy", Out(HAL_GetDimmPowerAccuracy)},
        {"HAL_IsNeedSensorSimplification", Out(HAL_IsNeedSensorSimplification)},
        {"HAL_GetPsuMaxCount", Out(HAL_GetPsuMaxCount)},
        {"HAL_GetIsSupportPowerManage", Out(HAL_GetIsSupportPowerManage)},
        {"HAL_GetPsuGroupCount", Out(HAL_GetPsuGroupCount)},
        {"HAL_GetPsuCountPerGroup", Out(HAL_GetPsuCountPerGroup)},
        {"HAL_GetSensorNotSupportFlagBySensor", Out1(HAL_GetSensorNotSupportFlagBySensor)},
        {"HAL_GetSensorSupportFlagBySensor", Out1(HAL_GetSensorSupportFlagBySensor)},
        {"HalFanService.GetFanMaxCount", Out(HalFanInst()->GetFanMaxCount)},
        {"HalFanService.GetFanSilkByIndex", Out1(HalFanInst()->GetFanSilkByIndex)},
        {"HAL_GetFanPowerAccuracy", Out(HAL_GetFanPowerAccuracy)},
        {"HalHddBackpanelService.GetBackPanelList", Out(HalHddBackpanelInst()->GetBackPanelList)},
        {"HalHddBackpanelService.CheckHddIsSupportNvme", Out1(HalHddBackpanelInst()->CheckHddIsSupportNvme)},
        {"Hal_GetHddSilkByHddSlot", Out1(Hal_GetHddSilkByHddSlot)},
        {"HAL_GetHddPowerAccuracy", Out(HAL_GetHddPowerAccuracy)},
        {"Hal_GetPcieSlotByIndex", Out1(Hal_GetPcieSlotByIndex)},
        {"Hal_GetPcieLocationByPcieSlot", Out1(Hal_GetPcieLocationByPcieSlot)},
        {"GetBlueFieldS5PcieSlotNum", Out(GetBlueFieldS5PcieSlotNum)},
        {"MW_GetCustomid", Out(MW_GetCustomid)},
        {"MW_GetInnerProductId", Out(MW_GetInnerProductId)},
        {"MW_GetGPUAssetInfo", Out(MW_GetGPUAssetInfo)},
        {"MW_GetSensorThreshInfo", Out(MW_GetSensorThreshInfo)},
        {"MW_GetCPUSensorNumber", Out1(MW_GetCPUSensorNumber)},
        {"MW_GetMemSensorNumber", Out1(MW_GetMemSensorNumber)},
        {"MW_GetPemSensorNumber", Out1(MW_GetPemSensorNumber)},
        {"MW_GetPowerFaultSensorNum", Out(MW_GetPowerFaultSensorNum)},
        {"MW_GetInletTempInfo", Out(MW_GetInletTempInfo)},
        {"MW_GetSWSensorVail", Out(MW_GetSWSensorVail)},
        {"IPMI_LoadCustomID", Out(IPMI_LoadCustomID)},
        {"IPMI_GetCduManageConfig", Out(IPMI_GetCduManageConfig)},
        {"epldio_read", Out1(epldio_read)},
    };
    calls["MW_GetSensorNumber"] = [](uint8_t *out) {
        return Output{4, MW_GetSensorNumber(&kKey, reinterpret_cast<uint32_t *>(out))};
    };
    calls["MW_GetSpecificSensorInfo"] = [](uint8_t *out) {
        return Output{16, MW_GetSpecificSensorInfo(&kKey, reinterpret_cast<MwSpecificSensorInfo *>(out))};
    };
    calls["HAL_GetDimmSensorNameIndex"] = [](uint8_t *out) {
        const HalDimmDevInfo info{};
        return Output{17, HAL_GetDimmSensorNameIndex(&info, reinterpret_cast<char *>(out), 17)};
    };
    calls["Hal_GetPcieSilkByPcieSlot"] = [](uint8_t *out) {
        return Output{17, Hal_GetPcieSilkByPcieSlot(1, reinterpret_cast<char *>(out), 17)};
    };
    calls["LIBIPMI_Create_IPMI_Local_Session"] = [](uint8_t *out) {
        uint8_t privilege = 4;
        return Output{42, LIBIPMI_Create_IPMI_Local_Session(reinterpret_cast<IpmiLocalSession *>(out), "", "",
                                                            &privilege, 0, 2, 10)};
    };
    calls["IPMICMD_AddSDR"] = [](uint8_t *out) {
        return Output{3, IPMICMD_AddSDR(&g_session, kRecord, 64, out, 20)};
    };
    calls["IPMICMD_DeleteSDR"] = [](uint8_t *out) {
        return Output{4, IPMICMD_DeleteSDR(&g_session, kRecord, out, 20)};
    };
    calls["IPMICMD_AddSELEntry"] = [](uint8_t *out) {
        return Output{3, IPMICMD_AddSELEntry(&g_session, kRecord, out, 100)};
    };
    calls["IniLoadFile"] = [](uint8_t *out) {
        return Output{sizeof(void *), IniLoadFile("/var/SpecificSDRRec", reinterpret_cast<IniFile **>(out))};
    };
    calls["OXA_IniLoadFile"] = [](uint8_t *out) {
        return Output{sizeof(void *),
                      OXA_IniLoadFile("/var/SpecificSDRRec", reinterpret_cast<IniFile **>(out))};
    };
    calls["oxa_fopen_s"] = [](uint8_t *out) {
        return Output{sizeof(void *), oxa_fopen_s(reinterpret_cast<FILE **>(out), "/conf/BMC1/x", "wb")};
    };
    calls["memcpy_s"] = [](uint8_t *out) { return Output{16, memcpy_s(out, 20, kRecord, 16)}; };
    calls["oxa_memcpy_s"] = [](uint8_t *out) { return Output{16, oxa_memcpy_s(out, 20, kRecord, 16)}; };
    calls["memset_s"] = [](uint8_t *out) { return Output{16, memset_s(out, 20, 1, 16)}; };
    calls["oxa_memset_s"] = [](uint8_t *out) { return Output{16, oxa_memset_s(out, 20, 1, 16)}; };
    calls["snprintf_s"] = [](uint8_t *out) {
        return Output{17, snprintf_s(reinterpret_cast<char *>(out), 17, "abc")};
    };
    calls["oxa_snprintf_s"] = [](uint8_t *out) {
        return Output{17, oxa_snprintf_s(reinterpret_cast<char *>(out), 17, "abc")};
    };
    calls["oxa_strerror_s"] = [](uint8_t *out) {
        return Output{32, oxa_strerror_s(reinterpret_cast<char *>(out), 32, 2)};
    };
    return calls;
}

} // namespace

TEST(Rubbish, FillsEveryOutputOfEveryCallThatFailsAndNothingBeyond) {
    Board board;
    board.dimms.count = 4;
    board.pcie.slots = {{1, 1, "Slot1", true}};
    Start(board);
    uint8_t privilege = 4;
    LIBIPMI_Create_IPMI_Local_Session(&g_session, "", "", &privilege, 0, 2, 10);
    for (const auto &[name, call] : CallsWithOutputs()) {
        SCOPED_TRACE(name);
        std::vector<uint8_t> out(sizeof(SensorThreshTable) + 64, 0);
        FailCall(FailableCalls() + 1);
        const Output output = call(out.data());
        EXPECT_NE(output.result, 0);
        const auto begin = out.begin();
        const auto end = begin + static_cast<std::ptrdiff_t>(output.size);
        EXPECT_THAT(std::vector<uint8_t>(begin, end), Each(0xA5));
        EXPECT_THAT(std::vector<uint8_t>(end, end + 16), Each(0));
    }
    FailCall(0);
    LIBIPMI_CloseSession(&g_session);
    EXPECT_THAT(Violations(), IsEmpty());
}

// Functions without outputs, or covered by tests of their own below: the rest must be in the table above.
TEST(Rubbish, NoFunctionWithAnOutputIsForgotten) {
    Start({});
    std::set<std::string> covered = {"FruSdrInitPathChoice",
                                     "HalCpuInst",
                                     "HalFanInst",
                                     "HalHddBackpanelInst",
                                     "LoadPsuAlarmCfg",
                                     "epldio_write",
                                     "MW_SetSensorThreshInfo",
                                     "MW_SetMemPredictiveFailureState",
                                     "MW_SetPWRModuleOnlineNum",
                                     "LIBIPMI_CloseSession",
                                     "LIBIPMI_HL_SendMsgToFRU",
                                     "IniSetUInt",
                                     "IniSaveFile",
                                     "OAL_SemCreate",
                                     "OAL_SemLockByKey",
                                     "OAL_SemUnLockByKey",
                                     "sigwrap_open_mode",
                                     "sigwrap_read",
                                     "sigwrap_write",
                                     "sigwrap_close",
                                     "oxa_fclose_s",
                                     "lseek",
                                     "ftruncate",
                                     "fread",
                                     "fwrite",
                                     "unlink",
                                     "access"};
    for (const auto &[name, call] : CallsWithOutputs()) {
        covered.insert(name);
    }
    for (const std::string &name : CallNames()) {
        try {
            AddFault({.call = name}); // refused for calls that cannot fail
        } catch (const std::invalid_argument &) {
            continue;
        }
        EXPECT_TRUE(covered.contains(name)) << name;
    }
}

TEST(Rubbish, IpmiCallsFailWithC3) {
    Start({});
    FailCall(1, true);
    IpmiLocalSession session{};
    uint8_t privilege = 4;
    EXPECT_EQ(LIBIPMI_Create_IPMI_Local_Session(&session, "", "", &privilege, 0, 2, 10), 0xC3);
    EXPECT_THAT(session.aucRaw, Each(0xA5));
    EXPECT_THAT(Violations(), IsEmpty()); // nothing was opened
}

TEST(Failures, OfFileCallsSetErrno) {
    Start({});
    AddFault({.call = "sigwrap_open_mode", .args = "locked", .errno_value = EBUSY});
    errno = 0;
    EXPECT_EQ(sigwrap_open_mode("/var/tmp/locked", O_RDWR | O_CREAT, 0775), -1);
    EXPECT_EQ(errno, EBUSY);
    const int32_t file = sigwrap_open_mode("/var/tmp/extSDR.dat", O_RDWR | O_CREAT, 0775);
    ASSERT_GE(file, 0);
    FailCall(1, true);
    uint8_t bytes[8] = {};
    errno = 0;
    EXPECT_EQ(sigwrap_read(file, bytes, sizeof(bytes)), -1);
    EXPECT_EQ(errno, EIO);
    EXPECT_THAT(bytes, Each(0xA5));
    errno = 0;
    EXPECT_NE(sigwrap_write(file, bytes, sizeof(bytes)), 0);
    EXPECT_EQ(errno, EIO);
    errno = 0;
    EXPECT_EQ(lseek(file, 0, SEEK_SET), -1);
    EXPECT_EQ(errno, EIO);
    errno = 0;
    EXPECT_EQ(ftruncate(file, 0), -1);
    EXPECT_EQ(errno, EIO);
    EXPECT_EQ(sigwrap_close(file), -1);
    EXPECT_EQ(errno, EIO);
    EXPECT_THAT(Violations(), IsEmpty()); // a close that fails closes
}

TEST(Failures, OfStreamCallsLeaveRubbishAndCount0) {
    Start({});
    WriteFile("/conf/BMC1/sensor_threshold.dat", {1, 2, 3, 4});
    FILE *stream = nullptr;
    ASSERT_EQ(oxa_fopen_s(&stream, "/conf/BMC1/sensor_threshold.dat", "rb+"), 0);
    FailCall(FailableCalls() + 1, true);
    uint8_t bytes[4] = {};
    EXPECT_EQ(fread(bytes, 1, 4, stream), 0u);
    EXPECT_THAT(bytes, Each(0xA5));
    EXPECT_EQ(fwrite(bytes, 4, 1, stream), 0u);
    EXPECT_NE(oxa_fclose_s(stream), 0);
    EXPECT_EQ(unlink("/conf/BMC1/sensor_threshold.dat"), -1);
    EXPECT_TRUE(FileExists("/conf/BMC1/sensor_threshold.dat"));
    EXPECT_EQ(access("/var/test_disk_fault_predict", F_OK), -1);
    EXPECT_EQ(FailableCalls(), 6u);
    EXPECT_THAT(Violations(), IsEmpty());
}

TEST(Failures, AShortReadGivesAsManyBytesAsTheRuleSays) {
    Start({});
    WriteFile("/var/tmp/extDevTab.dat", std::vector<uint8_t>(64, 7));
    AddFault({.call = "sigwrap_read", .result = 40, .succeed = true});
    const int32_t file = sigwrap_open_mode("/var/tmp/extDevTab.dat", O_RDWR, 0775);
    uint8_t bytes[64] = {};
    EXPECT_EQ(sigwrap_read(file, bytes, sizeof(bytes)), 40);
    EXPECT_EQ(bytes[39], 7);
    EXPECT_EQ(bytes[40], 0);
    sigwrap_close(file);
}

TEST(Failures, ChangeNothingOnThePlatform) {
    Start({});
    IpmiLocalSession session{};
    uint8_t privilege = 4;
    ASSERT_EQ(LIBIPMI_Create_IPMI_Local_Session(&session, "", "", &privilege, 0, 2, 10), 0);
    FailCall(FailableCalls() + 1, true);
    uint8_t response[4];
    EXPECT_NE(IPMICMD_AddSDR(&session, kRecord, 64, response, 20), 0);
    EXPECT_NE(IPMICMD_AddSELEntry(&session, kRecord, response, 100), 0);
    EXPECT_NE(epldio_write(1, 5), 0);
    EXPECT_THAT(Repository(), IsEmpty());
    EXPECT_THAT(EventLog(), IsEmpty());
    EXPECT_THAT(CurrentBoard().power_registers, IsEmpty());
    EXPECT_EQ(LIBIPMI_CloseSession(&session), 0xC3);
    EXPECT_THAT(Violations(), IsEmpty()); // a close that fails closes
}

TEST(Failures, OfAnUnlockStillReleaseTheSemaphore) {
    Start({});
    ASSERT_EQ(OAL_SemCreate(12313), 0);
    ASSERT_EQ(OAL_SemLockByKey(12313, 2000), 0);
    FailCall(FailableCalls() + 1);
    EXPECT_EQ(OAL_SemUnLockByKey(12313, 2000), -1);
    EXPECT_THAT(Violations(), IsEmpty());
}
