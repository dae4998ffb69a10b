// SPDX-License-Identifier: GPL-3.0-or-later
//
// The rules of the nine drivers: arguments, facts, guards, lines, and which groups each of them has.
//
// Not shown: a record whose length byte is FBh is copied but not counted.  The length byte is at most 43 + 16
// with names of at most 16 characters, so no board reaches that test.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "oxa/store.h"
#include "support/static_pass.h"

namespace {

using namespace tests;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

class EveryProfile : public testing::TestWithParam<Profile> {
protected:
    Driver driver() const {
        return GetParam().driver;
    }
    std::string DriverName() const {
        return GetParam().DriverName();
    }
};
INSTANTIATE_TEST_SUITE_P(Profiles, EveryProfile, testing::ValuesIn(Profiles()), ProfileName);

// The eight whose table comes first; Default, whose groups do, is shown beside its own groups.
std::vector<Profile> TableFirst() {
    std::vector<Profile> profiles;
    for (const Profile &profile : Profiles())
        if (profile.table_first)
            profiles.push_back(profile);
    return profiles;
}
class EveryProfileWithItsTableFirst : public EveryProfile {};
INSTANTIATE_TEST_SUITE_P(Profiles, EveryProfileWithItsTableFirst, testing::ValuesIn(TableFirst()),
                         ProfileName);

// ---- arguments and fatal facts ----------------------------------------------------------------------------

TEST_P(EveryProfile, ANullArgumentIsAnErrorAndWritesNothing) {
    for (int missing = 0; missing < 3; ++missing) {
        SCOPED_TRACE(missing);
        sim::Start(BaseBoard());
        auto &arrays = sim::CallerArrays(64, kUntouched);
        arrays.count = kCallersCount;
        driver()(missing == 0 ? nullptr : arrays.slots, missing == 1 ? nullptr : arrays.entries,
                 missing == 2 ? nullptr : &arrays.count);
        EXPECT_EQ(arrays.count, kCallersCount);
        EXPECT_EQ(arrays.slots[0], kUntouched);
        EXPECT_EQ(sim::Trace().size(), 2u);
        EXPECT_EQ(AllLines(GetParam().File()),
                  (LineList{"stat",
                            "error 42 " + DriverName() + ": " + DriverName() +
                                " failed! pucSDRRec == NULL || ptDEVTab == NULL || pucSensorCnt == NULL."}));
    }
}

TEST_P(EveryProfile, APassWithoutPsuCountOrBoardIdEndsBeforeAnyRecord) {
    const std::pair<const char *, const char *> cases[] = {
        {"HAL_GetPsuMaxCount", "get pem max count failed\n"},
        {"get_default_board_id", "get Board Id failed\n"}};
    for (const auto &[call, text] : cases) {
        SCOPED_TRACE(call);
        sim::Start(BaseBoard());
        sim::AddFault({.call = call});
        const Outcome outcome = RunPass(driver());
        EXPECT_FALSE(outcome.written);
        EXPECT_EQ(outcome.count, kCallersCount);
        EXPECT_THAT(outcome.records, IsEmpty());
        EXPECT_THAT(Lines(), ElementsAre(Line{'E', 42, text}));
        EXPECT_THAT(sim::Violations(), IsEmpty());
    }
}

TEST_P(EveryProfile, OnlyANegativeBoardIdResultIsFatal) {
    sim::Start(BaseBoard());
    sim::AddFault({.call = "get_default_board_id", .result = 1, .succeed = true});
    EXPECT_TRUE(RunPass(driver()).written);
}

TEST_P(EveryProfile, FactsThatFailAreWarnedAboutInOrderAndCountAsZero) {
    sim::Board board = BaseBoard();
    board.dimms.count = 2;
    board.fans.count = 2;
    board.sensor_simplification = true;
    sim::Start(board);
    int32_t code = 0x11;
    for (const char *call :
         {"HAL_GetCpuMaxCount", "HAL_GetCpuSilkScreenIndexFixValue", "HAL_GetDimmMaxCount", "HAL_GetCpuType",
          "HalFanService.GetFanMaxCount", "HAL_IsNeedSensorSimplification"})
        sim::AddFault({.call = call, .occurrence = 1, .result = code++});
    const Outcome outcome = RunPass(driver());
    ASSERT_TRUE(outcome.written);
    auto lines = Lines();
    ASSERT_GE(lines.size(), 6u);
    lines.resize(6);
    EXPECT_THAT(lines,
                ElementsAre(Line{'W', 255, "HAL_GetCpuMaxCount(&ucCpuMaxCount) = [11]"},
                            Line{'W', 255, "HAL_GetCpuSilkScreenIndexFixValue(&ucCpuSilkStartIndex) = [12]"},
                            Line{'W', 255, "HAL_GetDimmMaxCount(&ucDimmMaxCount) = [13]"},
                            Line{'W', 255, "HAL_GetCpuType(&ucCpuType) = [14]"},
                            Line{'E', 42, "Get fan max count failed, result:21!"},
                            Line{'W', 255, "HAL_IsNeedSensorSimplification(&SensorSimpleFlag) = [16]"}));
    EXPECT_EQ(FunctionOf("Get fan max count failed, result:21!"), GetParam().name + "_GetFanMaxCountByHal_");
    sim::Board none = BaseBoard();
    none.cpus.count = 0;
    EXPECT_EQ(outcome.Names(), RunPass(driver(), none).Names());
    EXPECT_THAT(sim::Violations(), IsEmpty());
}

// ---- guards -----------------------------------------------------------------------------------------------

struct Guard {
    const char *name;
    void (*set)(sim::Board &, uint8_t);
    uint8_t trips, passes;
    Line line;
};

const std::vector<Guard> kGuards = {
    {"cpu",
     [](sim::Board &board, uint8_t value) { board.cpus.silk_start = value; },
     254,
     253,
     {'W', 42, "ucIndex may overflow. (ucCPUCnt+ucCpuSilkStart) = 256!\n"}},
    {"dimm",
     [](sim::Board &board, uint8_t value) { board.dimms.count = value; },
     255,
     254,
     {'W', 42, "ucIndex may overflow. dwDimmCnt = 255!\n"}},
    {"psu",
     [](sim::Board &board, uint8_t value) { board.psus.count = value; },
     255,
     254,
     {'W', 42, "ucIndex may overflow. dwPSUCnt = 255!\n"}},
    {"fan",
     [](sim::Board &board, uint8_t value) { board.fans.count = value; },
     255,
     254,
     {'W', 42, "ucIndex may overflow. ucFanCnt = 255!\n"}},
    {"disk",
     [](sim::Board &board, uint8_t value) {
         board.disks.backplanes = {{0, 1, "Front"}, {250, value, "Rear"}};
     },
     6,
     5,
     {'I', 42, "diskIndex may overflow.\n"}},
    {"ocp",
     [](sim::Board &board, uint8_t value) { board.ocp.count = value; },
     255,
     254,
     {'W', 42, "ucIndex may overflow. ucOCPCnt = 255!\n"}},
    {"pcie",
     [](sim::Board &board, uint8_t value) { board.pcie.count = value; },
     255,
     254,
     {'W', 42, "ucIndex may overflow. ucPcieCnt = 255!\n"}},
};

// The exact records in front of each guard are those of the model on boards/guards.
TEST_P(EveryProfile, EachGuardOfAGroupThatItHasEndsThePassWithoutACount) {
    for (const Guard &guard : kGuards) {
        SCOPED_TRACE(guard.name);
        const bool has = guard.name == std::string("fan")    ? GetParam().fans
                         : guard.name == std::string("pcie") ? GetParam().pcie
                                                             : true;
        sim::Board board = BaseBoard();
        guard.set(board, guard.trips);
        const Outcome outcome = RunPass(driver(), board);
        EXPECT_EQ(outcome.written, !has);
        EXPECT_EQ(CountLine(guard.line), has ? 1u : 0u);
        if (has) {
            EXPECT_EQ(Lines().back(), guard.line);
            EXPECT_EQ(outcome.count, kCallersCount);
            EXPECT_TRUE(!outcome.records.empty() ||
                        !GetParam().table_first); // the table came before the guard
        }
        EXPECT_THAT(sim::Violations(), IsEmpty());
        guard.set(board, guard.passes);
        EXPECT_TRUE(RunPass(driver(), board).written);
        EXPECT_EQ(CountLine(guard.line), 0u);
    }
}

// ---- the lines of a small pass ----------------------------------------------------------------------------

struct Counts { // records of each group on SmallBoard()
    const char *profile;
    int rows;       // of the table
    int silent_row; // leakage, which gives nothing there (-1: no such row)
    int second_silent_row;
    int cpu, psu;
    const char *ocp_line; // with index and count, and the number of cards where %s stands
};
const Counts kCounts[] = {
    {"Kestrin", 40, 27, 33, 5, 8, " for OCP temp: ucIndex = 1, ucCnt = %d, ucOCPCnt:1!"},
    {"Astrel", 21, 18, -1, 4, 4, " for OCP temp: ucIndex = 1, ucCnt = %d, ucOCPCnt:1!"},
    {"Pellago", 21, 18, -1, 5, 5, " for OCP temp: ucIndex = 1, ucCnt = %d, ucOCPCnt:1!"},
    {"Vorana", 24, 21, -1, 9, 6, " for nic temp: ucIndex = 1, ucCnt = %d!"},
    {"Lumora", 28, 19, -1, 4, 6, " for OCP sdr: ucIndex = 1, ucCnt = %d!"},
    {"Quorral", 28, 18, -1, 7, 6, " for OCP temp: ucIndex = 1, ucCnt = %d, ucOCPCnt:1!"},
    {"Durnow", 19, 16, -1, 4, 6, " for OCP temp: ucIndex = 1, ucCnt = %d, ucOCPCnt:1!"},
    {"Ferrisk", 25, -1, -1, 4, 8, " for nic temp: ucIndex = 1, ucCnt = %d!"},
};

TEST_P(EveryProfileWithItsTableFirst, TheDriversOwnLinesOfASmallPass) {
    const Profile &profile = GetParam();
    const Counts &counts = *std::find_if(std::begin(kCounts), std::end(kCounts),
                                         [&](const Counts &c) { return c.profile == profile.name; });
    const std::string driver = DriverName();
    const auto number = [](const std::string &text, int count) {
        return Replace(text, "%d", std::to_string(count));
    };
    std::vector<Line> expected;
    const auto add = [&](const std::string &text, int count = 0) {
        expected.push_back({'I', 42, number(driver + text, count)});
    };
    int count = 0;
    for (int row = 0; row < counts.rows; ++row) {
        add(": ucIndex = " + std::to_string(row) + ", ucCnt = %d!", count);
        count += row == counts.silent_row || row == counts.second_silent_row ? 0 : 1;
    }
    add(" for CPU: dwIndex = 1,ucCPUCnt = 1, dwCnt = 2!");
    if (profile.name == "Kestrin")
        add(" for CPU Prochot: ucIndex = 1, ucCnt = %d!", count);
    count += counts.cpu;
    add(" for Mem Status Sensor: ucDimmCnt = 1!");
    count += 2;
    add(" for PSU Sensor: dwIndex = 1, ucCnt = %d!", count);
    count += counts.psu + 1; // and the redundancy
    if (profile.fans) {
        add(" for Fan status: ucIndex = 0, ucCnt = %d!", count);
        ++count;
    }
    add(" for Disk Sensor: hddBackPanelDevInfoList->count = 1");
    add(" for Disk Sensor: backPanelIndex = 0, ucCnt = %d!,startslt = 3, diskCnt = 1", count);
    count += 2;
    add(counts.ocp_line, count);
    count += 2;
    if (profile.pcie) {
        add(" for Pcie Status Sensor ucPcieCnt = 1!");
        ++count;
    }
    if (profile.name == "Kestrin") {
        count += 4; // power modules
        for (int i = 1; i <= 8; ++i)
            add(" for UBB RT: ucIndex = " + std::to_string(i) + ", ucCnt = %d!", count++);
        count += 8; // 54 V rails
        expected.push_back({'I', 42, number("AddKestrinSensor: ucCnt = %d!", count)});
    } else {
        count += profile.name == "Lumora" ? 1 : 0;
        add(": ucCnt = %d!", count);
    }
    EXPECT_EQ(RunPass(profile.driver, SmallBoard()).count, count);
    std::vector<Line> ours;
    for (const Line &line : Lines())
        if (line.text.starts_with(driver) || line.text.starts_with("AddKestrinSensor"))
            ours.push_back(line);
    EXPECT_THAT(ours, ElementsAreArray(expected));
    EXPECT_THAT(sim::Violations(), IsEmpty());
}

TEST_P(EveryProfileWithItsTableFirst, TheLinesOfGroupsVoltagesAndSwitchBoards) {
    sim::Board board = SmallBoard();
    board.sensor_simplification = true;
    board.cpus.type = 3;
    board.board_id = 0x550F;
    board.switch_board.supported = true;
    board.switch_board.cards[2] = {true, 0x5510};
    Outcome outcome = RunPass(driver(), board);
    const std::string name = GetParam().name;
    const auto at = [&](const std::string &sensor) {
        const auto names = outcome.Names();
        return std::to_string(std::find(names.begin(), names.end(), sensor) - names.begin());
    };
    EXPECT_EQ(CountLine({'C', 130,
                         DriverName() + (name == "Quorral" ? " for dimm group sensor" : " for dimm group") +
                             ": ucIndex = 0, ucCnt = " + at("DIMMG0_Temp") + "!"}),
              1u)
        << testing::PrintToString(Lines(true));
    size_t voltages = 0, boards = 0;
    for (const Line &line : Lines()) {
        voltages += line.text.starts_with(DriverName() + " for CPU Voltage:  ucCnt = ") ? 1 : 0;
        boards += line.text == DriverName() + " for SwitchBoard!" ? 1 : 0;
    }
    EXPECT_EQ(voltages, name == "Ferrisk" ? 0u : 4u);
    EXPECT_EQ(boards, 1u);
    EXPECT_EQ(outcome.CountName("SW4_Current"), 1u);
    board.board_id = 0x5502;
    board.switch_board.cards[2] = {true, 0x5504};
    outcome = RunPass(driver(), board);
    EXPECT_EQ(CountLine({'I', 42, DriverName() + " for SwitchBoard Temp!"}), 1u);
    EXPECT_EQ(outcome.CountName("SW_Output_T_02"), 1u);
}

// ---- boards and parts -------------------------------------------------------------------------------------

TEST_P(EveryProfile, TwoBoardsHaveNoOcpCards) {
    sim::Board board = SmallBoard();
    board.ocp.count = 0;
    const Outcome none = RunPass(driver(), board);
    for (const uint16_t id : {0x558B, 0x5580}) {
        board.board_id = id;
        board.ocp = {.count = 255, .present = 1}; // not even the guard trips
        EXPECT_TRUE(SameRecords(none.records, RunPass(driver(), board).records));
        EXPECT_NE(sim::CallerArrays().count, kCallersCount);
    }
}

TEST_P(EveryProfile, EveryPsuStatusLoadsTheAlarmConfigurationAndStaysWithoutIt) {
    sim::Board board = SmallBoard();
    board.psus.count = 2;
    const Outcome clean = RunPass(driver(), board);
    const size_t loads = 2 * GetParam().alarm_loads;
    EXPECT_EQ(sim::CountCalls("LoadPsuAlarmCfg"), loads);
    board.psus.alarm_config = false;
    EXPECT_TRUE(SameRecords(clean.records, RunPass(driver(), board).records));
    EXPECT_EQ(CountLine({'W', 255, "LoadPsuAlarmCfg failed!"}), loads);
}

TEST_P(EveryProfile, StoredRecordsLeaveNoGap) {
    const Outcome clean = RunPass(driver(), SmallBoard());
    for (size_t i = 0; i < clean.records.size(); ++i) {
        SCOPED_TRACE(clean.records[i].Name());
        sim::Start(SmallBoard());
        Store({clean.records[i]});
        const Outcome outcome = RunPass(driver());
        std::vector<Record> expected = clean.records;
        expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(i));
        EXPECT_TRUE(SameRecords(expected, outcome.records));
        EXPECT_EQ(outcome.count, clean.count - 1);
        EXPECT_EQ(CountLine({'I', 42, "This sensor is already exist!"}), 1u);
    }
    sim::Start(SmallBoard());
    Store(clean.records);
    const Outcome nothing = RunPass(driver());
    EXPECT_TRUE(nothing.written);
    EXPECT_EQ(nothing.count, 0);
}

TEST_P(EveryProfile, OnlySixRunAFanPassAndAMissingFanServiceGivesNumberZero) {
    sim::Board board = SmallBoard();
    board.fans.count = 2;
    sim::Start(board);
    sim::AddFault({.call = "HalFanInst", .occurrence = 2, .from_then_on = true, .null_object = true});
    const Outcome outcome = RunPass(driver());
    size_t fans = 0;
    for (const Record &record : outcome.records)
        if (record.entry[0] == 0x54 && record.entry[1] == 1) {
            ++fans;
            EXPECT_EQ(record.sdr[9], 0x60);
            EXPECT_EQ(record.entry[3], 0);
        }
    EXPECT_EQ(fans, GetParam().fans ? 2u : 0u);
    EXPECT_EQ(CountLine({'E', 255, "assertion failed: halFan != 0"}), GetParam().fans ? 2u : 0u)
        << testing::PrintToString(Lines());
}

TEST_P(EveryProfile, OnlyTwoAskForTheLiquidCoolingConfigurationAndOnlyKestrinForTheModules) {
    sim::Board board = SmallBoard();
    board.cdu_enable = 1;
    RunPass(driver(), board);
    const size_t wanted = GetParam().name == "Kestrin" ? 1 : 0;
    EXPECT_EQ(sim::CountCalls("IPMI_GetCduManageConfig"), GetParam().cdu ? 1u : 0u);
    EXPECT_EQ(sim::CountCalls("MW_SetPWRModuleOnlineNum"), wanted);
    EXPECT_EQ(sim::CountCalls("Hal_GetSwiTempSensorCnt"), wanted);
    EXPECT_EQ(sim::CountCalls("Hal_CheckHddSlotIsDiffHddSilk") != 0, wanted != 0);
    EXPECT_EQ(sim::CountCalls("GetOcpPresentStatus") != 0, GetParam().name == "Ferrisk");
}

// ---- the image of the store -------------------------------------------------------------------------------

// Disks without a record come last on this board, so that nothing is read behind the list of backplanes.
TEST_P(EveryProfile, APassLeavesTheImageOfTheStoreAsItsLastReadDid) {
    sim::Board board = BareBoard();
    board.disks.backplanes = {{0, 0, "Front"}};
    sim::Start(board);
    std::memset(g_extSdrData, 0x5A, sizeof(g_extSdrData));
    RunPass(driver());
    EXPECT_GE(sim::CountCalls("HalHddBackpanelService.GetBackPanelList"), 1u);
    for (const uint8_t byte : g_extSdrData)
        ASSERT_EQ(byte, 0x5A); // the store is empty: a read puts nothing into the image
}

} // namespace
