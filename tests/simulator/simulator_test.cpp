// SPDX-License-Identifier: GPL-3.0-or-later
//
// The simulated platform itself: what it answers from the board, what it traces, repository and event log.
#include <gmock/gmock.h>

#include <chrono>
#include <fstream>
#include <regex>
#include <set>
#include <thread>

#include "simulator/firmware_calls.h"
#include "simulator/simulator.h"
#include "support/build_facts.h"

using namespace sim;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::vector<std::string> Lines() {
    std::vector<std::string> lines;
    for (const Event &event : Trace()) {
        lines.push_back(Format(event));
    }
    return lines;
}

} // namespace

// ---- names ---------------------------------------------------------------------------------------

TEST(CallNames, AreThePrototypesOfThePlatformHeaderAndTheCLibraryFunctions) {
    std::ifstream file(tests::InSource("include/oxa/platform.h"));
    std::string text((std::istreambuf_iterator<char>(file)), {});
    text = std::regex_replace(text, std::regex(R"(/\*[^*]*\*+([^/*][^*]*\*+)*/)"), "");
    std::set<std::string> expected = {"lseek", "ftruncate", "fread", "fwrite", "unlink", "access"};
    const std::regex prototype(R"(\n(?:const )?\w+ \*?(\w+)\([^;]*\)\s*(?:PLAT_PRINTF\(\d, \d\))?;)");
    for (std::sregex_iterator found(text.begin(), text.end(), prototype), end; found != end; ++found) {
        expected.insert((*found)[1]);
    }
    const std::regex service(R"(typedef struct (Hal\w+Service) \{([^}]*)\})");
    const std::regex operation(R"(\(\*(\w+)\))");
    for (std::sregex_iterator found(text.begin(), text.end(), service), end; found != end; ++found) {
        const std::string body = (*found)[2];
        for (std::sregex_iterator op(body.begin(), body.end(), operation); op != end; ++op) {
            expected.insert((*found)[1].str() + "." + (*op)[1].str());
        }
    }
    ASSERT_GT(expected.size(), 100u); // the header was understood
    const std::vector<std::string> names = CallNames();
    EXPECT_THAT(names, testing::UnorderedElementsAreArray(expected));
}

// ---- answers from the board ------------------------------------------------------------------------

TEST(Hal, FactsAreReadFromTheBoardAtEveryCall) {
    Board board;
    board.board_id = 0x5497;
    board.cpus.count = 2;
    Start(board);
    uint16_t id = 0;
    uint8_t count = 0;
    EXPECT_EQ(get_default_board_id(&id), 0);
    EXPECT_EQ(HAL_GetCpuMaxCount(&count), 0);
    EXPECT_EQ(id, 0x5497);
    EXPECT_EQ(count, 2);
    CurrentBoard().cpus.count = 4;
    EXPECT_EQ(HAL_GetCpuMaxCount(&count), 0);
    EXPECT_EQ(count, 4);
}

TEST(Hal, ClientsHaveDefaults) {
    Board board;
    board.cpus.vr_clients[1] = {7, 0x66};
    board.switch_board.clients[2] = {9, 0x44};
    Start(board);
    HalI2cClient client{};
    EXPECT_EQ(HAL_CPUVRTempCoreVolts_GetI2cClientByInstance(3, &client), 0);
    EXPECT_EQ(client.ucBus, 3);
    EXPECT_EQ(client.ucAddr, 0x60);
    EXPECT_EQ(HAL_CPUVRTempCoreVolts_GetI2cClientByInstance(1, &client), 0);
    EXPECT_EQ(client.ucBus, 7);
    EXPECT_EQ(client.ucAddr, 0x66);
    EXPECT_EQ(HAL_SWTICH_GetI2cClientByInstance(3, &client), 0);
    EXPECT_EQ(client.ucBus, 3);
    EXPECT_EQ(client.ucAddr, 0x40);
    EXPECT_EQ(HAL_SWTICH_GetI2cClientByInstance(2, &client), 0);
    EXPECT_EQ(client.ucBus, 9);
    EXPECT_EQ(client.ucAddr, 0x44);
    EXPECT_EQ(HAL_InputTemp_GetI2cClient(&client), 0);
    EXPECT_EQ(client.ucBus, 1);
    EXPECT_EQ(client.ucAddr, 0x48);
}

TEST(Hal, CpusBeyondTheOnlineListAreOnline) {
    Board board;
    board.cpus.online = {true, false};
    Start(board);
    int32_t online = -1;
    HAL_GetCpuOnlineStatus(1, &online);
    EXPECT_EQ(online, 0);
    HAL_GetCpuOnlineStatus(2, &online);
    EXPECT_EQ(online, 1);
}

TEST(Hal, DimmsHaveNamesByChannelAndSlotOrTheirOwn) {
    Board board;
    board.cpus.count = 2;
    board.dimms.count = 64;
    board.dimms.names = {"X1"};
    Start(board);
    const auto name = [](uint8_t dimm) {
        HalDimmDevInfo info{};
        char text[17] = {};
        EXPECT_EQ(HAL_GetDimmDevInfoByDimmNum(dimm, &info), 0);
        EXPECT_EQ(HAL_GetDimmSensorNameIndex(&info, text, sizeof(text)), 0);
        return std::string(text);
    };
    EXPECT_EQ(name(0), "X1");
    EXPECT_EQ(name(1), "A1");
    EXPECT_EQ(name(2), "B0");
    EXPECT_EQ(name(51), "Z1");
    EXPECT_EQ(name(52), "AA0");
    HalDimmDevInfo info{};
    EXPECT_EQ(HAL_GetDimmDevInfoByDimmNum(35, &info), 0);
    EXPECT_EQ(info.ucDimmNum, 35);
    EXPECT_EQ(info.ucCpuNum, 1);
    EXPECT_EQ(info.ucChannel, 1);
    EXPECT_EQ(info.ucSlotInChannel, 1);
    EXPECT_EQ(HAL_GetDimmDevInfoByDimmNum(64, &info), -1);
    EXPECT_EQ(info.ucDimmNum, 0xA5);
}

TEST(Hal, ATextIsCutToItsBuffer) {
    Board board;
    board.pcie.slots = {{5, 1, "F-Slot12", true}};
    Start(board);
    char silk[5] = "....";
    EXPECT_EQ(Hal_GetPcieSilkByPcieSlot(5, silk, sizeof(silk)), 0);
    EXPECT_STREQ(silk, "F-Sl");
    EXPECT_EQ(Hal_GetPcieSilkByPcieSlot(6, silk, sizeof(silk)), -1);
}

TEST(Hal, PcieIndexesStartAt1AndAbsentSlotsAnswerMinus1) {
    Board board;
    board.pcie.slots = {{5, 0, "Slot5", true}, {6, 0, "Slot6", false}};
    Start(board);
    EXPECT_EQ(Hal_GetStandPcieSlotCounts(), 2);
    uint8_t slot = 0;
    EXPECT_EQ(Hal_GetPcieSlotByIndex(0, &slot), -1);
    EXPECT_EQ(Hal_GetPcieSlotByIndex(1, &slot), 0);
    EXPECT_EQ(slot, 5);
    EXPECT_EQ(Hal_GetPcieSlotByIndex(2, &slot), -1);
    EXPECT_EQ(slot, 0xA5);
    EXPECT_EQ(GetBlueFieldS5PcieSlotNum(&slot), -1);
    CurrentBoard().pcie.s5_slot = 3;
    EXPECT_EQ(GetBlueFieldS5PcieSlotNum(&slot), 0);
    EXPECT_EQ(slot, 3);
}

TEST(Hal, OfTheBackplaneListAsManyBytesAreWrittenAsTheBoardSays) {
    Board board;
    board.disks.backplanes = {{8, 4, "Front"}, {12, 4, "Rear"}};
    board.disks.written_bytes = 4 + 34 + 1;
    Start(board);
    HalHddBackpanelList list;
    std::memset(&list, 0x77, sizeof(list));
    ASSERT_EQ(HalHddBackpanelInst()->GetBackPanelList(&list), 0);
    EXPECT_EQ(list.count, 2u);
    EXPECT_STREQ(list.atRec[0].acLocation, "Front");
    EXPECT_EQ(list.atRec[1].ucStartSlot, 12);
    EXPECT_EQ(list.atRec[1].ucDiskCnt, 0x77);
}

TEST(Hal, ASilkTextThatDoesNotFitIsCutWithOrWithoutANul) {
    Board board;
    board.pcie.slots = {{.slot = 5, .silk = "12345678"}};
    Start(board);
    char silk[8];
    ASSERT_EQ(Hal_GetPcieSilkByPcieSlot(5, silk, sizeof(silk)), 0);
    EXPECT_EQ(std::string(silk, 8), std::string("1234567\0", 8));
    CurrentBoard().pcie.slots[0].silk_nul = false;
    ASSERT_EQ(Hal_GetPcieSilkByPcieSlot(5, silk, sizeof(silk)), 0);
    EXPECT_EQ(std::string(silk, 8), "12345678");
}

TEST(Hal, TheBackplaneListReportsItsCountAndHoldsAtMost32) {
    Board board;
    board.disks.backplanes.assign(40, {8, 4, "Front"});
    board.disks.backplanes[31].location = std::string(40, 'x');
    board.disks.nvme_slots = {9};
    Start(board);
    const HalHddBackpanelService *service = HalHddBackpanelInst();
    ASSERT_NE(service, nullptr);
    HalHddBackpanelList list;
    ASSERT_EQ(service->GetBackPanelList(&list), 0);
    EXPECT_EQ(list.count, 40u);
    EXPECT_EQ(list.atRec[0].ucStartSlot, 8);
    EXPECT_EQ(list.atRec[0].ucDiskCnt, 4);
    EXPECT_STREQ(list.atRec[0].acLocation, "Front");
    EXPECT_EQ(std::string(list.atRec[31].acLocation, 32), std::string(32, 'x')); // no NUL
    uint8_t nvme = 0;
    EXPECT_EQ(service->CheckHddIsSupportNvme(9, &nvme), 0);
    EXPECT_EQ(nvme, 1);
    EXPECT_EQ(service->CheckHddIsSupportNvme(10, &nvme), 0);
    EXPECT_EQ(nvme, 0);
}

TEST(Hal, ServicesThatTheBoardLacksAreNull) {
    Board board;
    board.cpus.service = board.fans.service = board.disks.service = false;
    Start(board);
    EXPECT_EQ(HalCpuInst(), nullptr);
    EXPECT_EQ(HalFanInst(), nullptr);
    EXPECT_EQ(HalHddBackpanelInst(), nullptr);
    EXPECT_FALSE(FaultWasHit());
}

TEST(Hal, SupportFlagsFollowTheListThenTheGeneralFlag) {
    Board board;
    board.support.all = false;
    board.support.sensors[SENSOR_VCC12V] = 1;
    board.support.kinds[SENSOR_KIND_INPUT_VOLTS] = 0;
    Start(board);
    uint8_t flag = 9;
    HAL_GetSensorNotSupportFlagBySensor(SENSOR_VCC12V, &flag);
    EXPECT_EQ(flag, 1);
    HAL_GetSensorNotSupportFlagBySensor(SENSOR_PCH_TEMP, &flag);
    EXPECT_EQ(flag, 0);
    HAL_GetSensorSupportFlagBySensor(SENSOR_KIND_INPUT_VOLTS, &flag);
    EXPECT_EQ(flag, 0);
    HAL_GetSensorSupportFlagBySensor(SENSOR_KIND_OUTPUT_VOLTS, &flag);
    EXPECT_EQ(flag, 1);
}

TEST(Hal, PowerRegistersKeepWhatIsWritten) {
    Start({});
    uint8_t value = 9;
    EXPECT_EQ(epldio_read(1, &value), 0);
    EXPECT_EQ(value, 0);
    EXPECT_EQ(epldio_write(1, 0x5A), 0);
    EXPECT_EQ(epldio_read(1, &value), 0);
    EXPECT_EQ(value, 0x5A);
}

TEST(Middleware, TheSensorDirectoryAnswersByKeyAndFailsOtherwise) {
    Board board;
    board.sensor_numbers.by_key["04 0D 6F 03 00"] = 0x51;
    board.sensor_numbers.cpu[1] = 7;
    board.sensor_numbers.power_fault = 8;
    Start(board);
    const MwSensorKey disk3{0x04, 0x0D, 0x6F, 3, 0};
    const MwSensorKey disk4{0x04, 0x0D, 0x6F, 4, 0};
    uint32_t number = 0;
    EXPECT_EQ(MW_GetSensorNumber(&disk3, &number), 0);
    EXPECT_EQ(number, 0x51u);
    EXPECT_EQ(MW_GetSensorNumber(&disk4, &number), -1);
    EXPECT_EQ(number, 0xA5A5A5A5u);
    EXPECT_EQ(MW_GetCPUSensorNumber(1, &number), 0);
    EXPECT_EQ(number, 7u);
    EXPECT_EQ(MW_GetCPUSensorNumber(0, &number), -1);
    EXPECT_EQ(MW_GetPowerFaultSensorNum(&number), 0);
    EXPECT_EQ(number, 8u);
    MwSpecificSensorInfo info{};
    EXPECT_EQ(MW_GetSpecificSensorInfo(&disk3, &info), 0);
    EXPECT_EQ(info.ucSensorNum, 0x51);
    EXPECT_EQ(info.ucSensorType, 0x0D);
    EXPECT_EQ(info.ucEventType, 0x6F);
    EXPECT_EQ(MW_GetSpecificSensorInfo(&disk4, &info), -1);
    EXPECT_EQ(info.aucReserved[11], 0xA5);
}

TEST(Middleware, TheThresholdTableIsTheBoardsUntilItIsReplaced) {
    Board board;
    board.custom_id = 6;
    board.thresholds.push_back({"Inlet_Temp", 60, 50, 40, 1, 2, 3, 0x3F});
    Start(board);
    SensorThreshTable table;
    ASSERT_EQ(MW_GetSensorThreshInfo(&table), 0);
    EXPECT_EQ(table.dwCustomId, 6u);
    ASSERT_EQ(table.wCount, 1);
    EXPECT_STREQ(table.atEntry[0].acName, "Inlet_Temp");
    EXPECT_EQ(table.atEntry[0].ucUNR, 60);
    EXPECT_EQ(table.atEntry[0].ucLNC, 3);
    EXPECT_EQ(table.atEntry[0].wMask, 0x3F);
    table.atEntry[0].aucExtra[1] = 0x77;
    ASSERT_EQ(MW_SetSensorThreshInfo(&table), 0);
    EXPECT_EQ(ThresholdTable().atEntry[0].aucExtra[1], 0x77);
    SensorThreshTable again;
    ASSERT_EQ(MW_GetSensorThreshInfo(&again), 0);
    EXPECT_EQ(memcmp(&again, &table, sizeof(table)), 0);
}

TEST(Middleware, TheGpuInventoryReportsItsCountAndHoldsAtMost29) {
    Board board;
    board.gpus.assign(30, {4, 350, 0xCABC});
    Start(board);
    GpuAssetInfo info;
    ASSERT_EQ(MW_GetGPUAssetInfo(&info), 0);
    EXPECT_EQ(info.dwCount, 30u);
    EXPECT_EQ(info.atGpu[28].ucSlot, 4);
    EXPECT_EQ(info.atGpu[28].dwPowerW, 350u);
    EXPECT_EQ(info.atGpu[28].wVendorId, 0xCABC);
}

// ---- repository and event log ------------------------------------------------------------------------

TEST(Repository, RecordsGetIdsFrom1AndAreDeletedByTheIdInBytes2And3) {
    Start({});
    IpmiLocalSession session{};
    ASSERT_EQ(OpenSession(session), 0);
    const uint8_t record[] = {0, 0, 0x51, 1, 1, 0x20};
    uint8_t response[3] = {9, 9, 9};
    EXPECT_EQ(IPMICMD_AddSDR(&session, record, 6, response, 20), 0);
    EXPECT_THAT(response, ElementsAre(0, 1, 0));
    EXPECT_EQ(IPMICMD_AddSDR(&session, record, 5, response, 20), 0);
    EXPECT_THAT(response, ElementsAre(0, 2, 0));
    ASSERT_EQ(Repository().size(), 2u);
    EXPECT_EQ(Repository()[0].id, 1);
    EXPECT_THAT(Repository()[0].bytes, ElementsAre(0, 0, 0x51, 1, 1, 0x20));
    EXPECT_EQ(Repository()[1].bytes.size(), 5u);
    const uint8_t request[] = {0, 0, 1, 0};
    uint8_t answer[4] = {};
    EXPECT_EQ(IPMICMD_DeleteSDR(&session, request, answer, 20), 0);
    ASSERT_EQ(Repository().size(), 1u);
    EXPECT_EQ(Repository()[0].id, 2);
    EXPECT_EQ(IPMICMD_DeleteSDR(&session, request, answer, 20), 0xCB);
    EXPECT_EQ(LIBIPMI_CloseSession(&session), 0);
    EXPECT_THAT(Violations(), IsEmpty());
}

TEST(Repository, AFullRepositoryAnswersC4) {
    Board board;
    board.sdr_limit = 1;
    board.sel_limit = 1;
    Start(board);
    IpmiLocalSession session{};
    ASSERT_EQ(OpenSession(session), 0);
    const uint8_t record[16] = {};
    uint8_t response[3];
    EXPECT_EQ(IPMICMD_AddSDR(&session, record, 16, response, 20), 0);
    EXPECT_EQ(IPMICMD_AddSDR(&session, record, 16, response, 20), 0xC4);
    EXPECT_EQ(IPMICMD_AddSELEntry(&session, record, response, 100), 0);
    EXPECT_EQ(IPMICMD_AddSELEntry(&session, record, response, 100), 0xC4);
    EXPECT_EQ(Repository().size(), 1u);
    EXPECT_EQ(EventLog().size(), 1u);
    LIBIPMI_CloseSession(&session);
}

TEST(Repository, MessagesToTheFruServiceLeaveANote) {
    Start({});
    IpmiLocalSession session{};
    ASSERT_EQ(OpenSession(session), 0);
    uint8_t message[25] = {0x12, 0x00, 0x8E, 0x01};
    message[24] = 0xFF;
    EXPECT_EQ(LIBIPMI_HL_SendMsgToFRU(&session, message, 20), 0);
    LIBIPMI_CloseSession(&session);
    EXPECT_THAT(Lines(),
                testing::Contains("note FRU service: message received: 12 00 8E 01 00 00 00 00 00 00 00 00 "
                                  "00 00 00 00 00 00 00 00 00 00 00 00 FF"));
}

// ---- trace -------------------------------------------------------------------------------------------

TEST(Trace, EveryKindOfEventIsOneLineWithMaskedLineNumbers) {
    Board board;
    board.cpus.count = 2;
    Start(board);
    uint8_t value = 0;
    HAL_GetCpuMaxCount(&value);
    AddFault({.call = "HAL_CPUVRTempCoreVolts_GetI2cClientByInstance", .result = -7});
    HalI2cClient client;
    HAL_CPUVRTempCoreVolts_GetI2cClientByInstance(2, &client);
    _ssp_info(42, kUnit, 12, "checkSensorExist", "This sensor is already exist!");
    sspFailedStat(kUnit, 77);
    _ssp_error(42, kUnit, 77, "extSDRFileSemLock", "sem create failed, line=%d\n", 77);
    IDBG_LINUXAPP_DbgOut(132, "[%s:%d]open %s failed!", kUnit, 91, "/var/tmp/extSDR.dat");
    IDBG_LINUXAPP_AuditOut(191, "[%s:%d]SetFruValidState is fail!!!", "gen_specific_sensor_data.c", 5);
    EXPECT_THAT(Lines(),
                ElementsAre("call HAL_GetCpuMaxCount() = 0",
                            "call HAL_CPUVRTempCoreVolts_GetI2cClientByInstance(cpu=2) = -7 FAILED",
                            "info 42 specific_sdr_file.c:# checkSensorExist: This sensor is already exist!",
                            "stat specific_sdr_file.c:#",
                            "error 42 specific_sdr_file.c:# extSDRFileSemLock: sem create failed, line=#\\n",
                            "dbgout 132 [specific_sdr_file.c:#]open /var/tmp/extSDR.dat failed!",
                            "audit 191 [gen_specific_sensor_data.c:#]SetFruValidState is fail!!!"));
    EXPECT_THAT(Violations(), IsEmpty());
}

TEST(Trace, LogLinesKeepLevelModulePlaceAndText) {
    Start({});
    _ssp_debug(42, kUnit, 1, "f", "a %d", 1);
    _ssp_info(43, kUnit, 2, "g", "b");
    _ssp_warn(255, kUnit, 3, "h", "c\n");
    const std::vector<Event> logs = Logs();
    ASSERT_EQ(logs.size(), 3u);
    EXPECT_EQ(logs[1].number, 43u);
    EXPECT_EQ(logs[1].file, kUnit);
    EXPECT_EQ(logs[1].line, 2u);
    EXPECT_EQ(logs[1].function, "g");
    EXPECT_EQ(logs[2].level, Level::kWarn);
    EXPECT_THAT(LogTexts(), ElementsAre("a 1", "b", "c\n"));
    EXPECT_THAT(LogTexts(Level::kDebug), ElementsAre("a 1"));
    EXPECT_EQ(CountText("c\n"), 1u);
    EXPECT_EQ(CountText("c"), 0u);
}

TEST(Trace, BoundedFunctionsAreTracedOnRequestOnlyAndCountedAlways) {
    Start({});
    char text[8];
    snprintf_s(text, sizeof(text), "%d", 42);
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_EQ(CountCalls("snprintf_s"), 1u);
    EXPECT_EQ(FailableCalls(), 1u);
    SetTraceBounded(true);
    snprintf_s(text, sizeof(text), "%d", 43);
    memset_s(text, sizeof(text), 0, 4);
    EXPECT_THAT(Lines(), ElementsAre("call snprintf_s(size=8 format=\"%d\") = 2 \"43\"",
                                     "call memset_s(size=8 byte=0 count=4) = 0"));
}

TEST(Trace, ClearTraceForgetsEventsAndCountsButNotFaultCounts) {
    Start({});
    uint8_t value;
    HAL_GetCpuMaxCount(&value);
    ClearTrace();
    EXPECT_THAT(Trace(), IsEmpty());
    EXPECT_EQ(CountCalls("HAL_GetCpuMaxCount"), 0u);
    EXPECT_EQ(FailableCalls(), 1u);
}

TEST(Trace, NothingIsRecordedWhenItIsOffButCallsAreCounted) {
    Start({});
    SetTracing(false);
    uint8_t value;
    HAL_GetCpuMaxCount(&value);
    _ssp_info(42, kUnit, 1, "f", "a");
    EXPECT_THAT(Trace(), IsEmpty());
    EXPECT_EQ(CountCalls("HAL_GetCpuMaxCount"), 1u);
    EXPECT_EQ(CountCalls("_ssp_info"), 1u);
}

TEST(Trace, AFunctionThatDoesNotExistCannotBeCounted) {
    Start({});
    EXPECT_THROW(CountCalls("HAL_GetCpuMaxCuont"), std::invalid_argument);
}

TEST(Trace, EightThreadsLoseNothing) {
    Start({});
    std::vector<std::thread> threads;
    for (int number = 0; number < 8; ++number) {
        threads.emplace_back([] {
            for (int round = 0; round < 200; ++round) {
                uint8_t value = 0;
                HAL_GetCpuMaxCount(&value);
                sspFailedStat(kUnit, 1);
                _ssp_error(42, kUnit, 1, "f", "x");
                IpmiLocalSession session{};
                const uint8_t record[16] = {};
                uint8_t response[3];
                OpenSession(session);
                IPMICMD_AddSELEntry(&session, record, response, 100);
                LIBIPMI_CloseSession(&session);
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(CountCalls("HAL_GetCpuMaxCount"), 1600u);
    EXPECT_EQ(CountText("x"), 1600u);
    EXPECT_THAT(Violations(), IsEmpty());
}

TEST(Trace, ACallCostsLessThanAMicrosecondWhenItIsOff) {
    Start({});
    SetTracing(false);
    constexpr int kRounds = 100000;
    const auto cost = [](auto call) {
        double best = 1e9;
        for (int attempt = 0; attempt < 5; ++attempt) { // the best of five: other work disturbs
            const auto begin = std::chrono::steady_clock::now();
            for (int round = 0; round < kRounds; ++round) {
                call();
            }
            const std::chrono::duration<double, std::nano> spent = std::chrono::steady_clock::now() - begin;
            best = std::min(best, spent.count() / kRounds);
        }
        return best;
    };
    uint8_t value = 0;
    const double fact = cost([&] { HAL_GetSensorNotSupportFlagBySensor(SENSOR_VCC12V, &value); });
    uint8_t bytes[64];
    const double fill = cost([&] { memset_s(bytes, sizeof(bytes), 0, sizeof(bytes)); });
    RecordProperty("nanoseconds_fact", std::to_string(fact));
    std::printf("support flag %.0f ns, memset_s %.0f ns\n", fact, fill);
#if defined(__x86_64__) && defined(__OPTIMIZE__) && !defined(__SANITIZE_ADDRESS__)
    EXPECT_LT(fact, 1000);
    EXPECT_LT(fill, 1000);
#endif
}
