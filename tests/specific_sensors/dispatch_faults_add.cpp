// SPDX-License-Identifier: GPL-3.0-or-later
//
// Adding one sensor of every kind: what each failing call may come to.
#include <cctype>

#include "specific_sensors/dispatch_faults.h"

namespace faults {
namespace {

using namespace dispatch;
using testing::AnyOf;

constexpr uint32_t kOnce = 1, kNever = 0;
using Results = std::vector<int64_t>;

// A sensor to add, and what the rules say about it.
struct Sensor {
    std::string name;
    SpecificSensorParam param = {};
    sim::Board board = {};
    std::map<std::string, Bytes> files = {};
    int64_t clean_result = 0;
    // Calls whose failure may change the record: another name, other factors, another id.
    Calls may_change = {};
    // Calls whose failure has one of these results.
    std::map<std::string, Results> results = {};
    std::string fru_id_file = {}; // its text when all went well
    std::string used_line = {};   // once this line came, the sensor cannot be added a second time
    Bytes record = {};            // what is added at all; empty: what the clean run added
};

bool IsDisk(const Sensor &sensor) {
    const uint32_t sensor_class = sensor.param.dwSensorDevType;
    return sensor.param.ucDeviceType == kDisk && (sensor_class == 0x0100 || sensor_class == 0x0D00);
}

// The calls that only ask for what helps: their failure is no reason to add nothing.
const Calls kHarmless = {"LIBIPMI_CloseSession",
                         "OAL_SemCreate",
                         "OAL_SemLockByKey",
                         "OAL_SemUnLockByKey",
                         "sigwrap_open_mode",
                         "sigwrap_read",
                         "sigwrap_close",
                         "lseek",
                         "oxa_strerror_s",
                         "MW_GetSensorThreshInfo",
                         "MW_GetGPUAssetInfo",
                         "get_default_board_id",
                         "IPMI_LoadCustomID",
                         "MW_GetInnerProductId",
                         "HalHddBackpanelInst",
                         "HalHddBackpanelService.GetBackPanelList",
                         "Hal_GetPcieLocationByPcieSlot",
                         "Hal_GetPcieSilkByPcieSlot",
                         "IniLoadFile",
                         "OXA_IniLoadFile",
                         "IniSetUInt",
                         "IniSaveFile"};

Results ResultsOf(const Sensor &sensor, const Run &run) {
    if (run.clean)
        return {sensor.clean_result};
    if (run.from_then_on || run.failed.size() != 1)
        return {0, 0xC3, 0xFFFE, 0xFFFF};
    const std::string &call = *run.failed.begin();
    if (sensor.results.count(call) != 0)
        return sensor.results.at(call);
    if (call == kSession || call == kAdd)
        return {0xC3};
    if (kHarmless.count(call) != 0)
        return {sensor.clean_result};
    EXPECT_TRUE(run.BoundedFailed()) << "no rule for this call";
    return {0, 0xFFFE, 0xFFFF}; // a broken bound drops the record, or nothing depends on it
}

// A record that is there at all is whole.  The sub card's is handed on with three bytes more.
void ExpectWhole(const Sensor &sensor, Bytes record) {
    if (sensor.param.dwSensorDevType == 0x170B) {
        ASSERT_EQ(record.size(), 27u);
        EXPECT_EQ(Bytes(record.end() - 3, record.end()), (Bytes{0xFF, 0xFF, 0xFF}));
        record.resize(24);
    }
    ASSERT_GE(record.size(), 17u);
    ASSERT_LE(record.size(), 64u);
    EXPECT_EQ(record[2], 0x51);
    EXPECT_EQ(record[4] + 5u, record.size());
    const size_t at = record[3] == 1 ? 48 : record[3] == 2 ? 32 : 16;
    EXPECT_THAT(record[3], AnyOf(1, 2, 0x11));
    ASSERT_GT(record.size(), at);
    ASSERT_LE(record.size(), at + 16);
    EXPECT_EQ(record[at - 1], 0xC0 + (record.size() - at));
    for (size_t i = at; i < record.size(); ++i)
        EXPECT_TRUE(std::isprint(record[i])) << i;
}

void JudgeRepository(const Sensor &sensor, const Run &run) {
    const bool added = run.result == 0;
    ASSERT_EQ(sim::Repository().size(), added ? kOnce : kNever);
    if (!added)
        return;
    const Bytes &record = sim::Repository().back().bytes;
    ExpectWhole(sensor, record);
    if (run.AnyFailed(sensor.may_change))
        return;
    EXPECT_TRUE(tests::SameSdr(sensor.record.empty() ? run.clean_record : sensor.record, record));
}

// A session is opened exactly when the generator gave a record, and closed exactly when it was opened.
void JudgeSession(const Run &run) {
    const bool tried = run.result != 0xFFFE && run.result != 0xFFFF;
    EXPECT_EQ(sim::CountCalls(kSession), tried ? kOnce : kNever);
    const bool opened = tried && !run.Failed(kSession);
    EXPECT_EQ(sim::CountCalls(kAdd), opened ? kOnce : kNever);
    EXPECT_EQ(sim::CountCalls(kClose), opened ? kOnce : kNever);
    const int64_t code = run.Failed(kSession) || run.Failed(kAdd) ? 0xC3 : 0;
    EXPECT_EQ(run.result, tried ? code : run.result);
}

void JudgeRegistry(const Sensor &sensor) {
    if (!IsDisk(sensor) || sim::CountCalls(kSession) == 0) {
        EXPECT_THAT(Registered(), IsEmpty());
        return;
    }
    const bool temperature = sensor.param.dwSensorDevType == 0x0100;
    const uint8_t kind =
        temperature ? sensor.param.SubDeviceType : static_cast<uint8_t>(sensor.param.wBitmap & 0xFF);
    EXPECT_THAT(Registered(),
                ElementsAre(Bytes{sensor.param.SlotId, kind, temperature ? uint8_t{1} : uint8_t{0},
                                  temperature ? uint8_t{0} : uint8_t{1}}));
}

void JudgeFiles(const Sensor &sensor, const Run &run) {
    const auto before = sensor.files.find(kRecordFile);
    EXPECT_EQ(sim::ReadFile(kRecordFile), before == sensor.files.end() ? Bytes{} : before->second);
    const auto store = sensor.files.find(kStoreFile);
    EXPECT_EQ(sim::ReadFile(kStoreFile), store == sensor.files.end() ? Bytes{} : store->second);
    if (run.AnyFailed(sensor.may_change))
        return; // another id
    const std::vector<std::string> lines = LinesIn(sensor.fru_id_file);
    for (const std::string &line : LinesIn(Text(kFruIdFile)))
        EXPECT_NE(std::find(lines.begin(), lines.end(), line), lines.end()) << line;
    const bool saved = run.result != 0xFFFE && run.result != 0xFFFF && !run.BoundedFailed() &&
                       !run.AnyFailed({"OXA_IniLoadFile", "IniSetUInt", "IniSaveFile"});
    EXPECT_EQ(Text(kFruIdFile), saved ? sensor.fru_id_file : Text(kFruIdFile));
}

// The platform is well again: the next add of the same sensor does what it should.
void JudgeNextAdd(const Sensor &sensor, const Run &run) {
    const bool registered = IsDisk(sensor) && sim::CountCalls(kSession) != 0;
    const bool used = !sensor.used_line.empty() && sim::CountText(sensor.used_line) != 0;
    const size_t records = sim::Repository().size();
    sim::FailCall(0);
    SpecificSensorParam param = sensor.param;
    const int64_t result = SDR_AddSpecificSensor(&param);
    // an id that was taken for a record that then failed may be given back
    const bool given_back = used && run.BoundedFailed() && run.result == 0xFFFF && result == 0;
    const bool skipped = registered || (used && !given_back);
    EXPECT_EQ(result, skipped ? 0xFFFF : sensor.clean_result);
    ASSERT_EQ(sim::Repository().size(), records + (result == 0 ? 1 : 0));
    if (result == 0)
        ExpectWhole(sensor, sim::Repository().back().bytes);
}

Scenario ToScenario(const Sensor &sensor) {
    Scenario scenario;
    scenario.name = "Add" + sensor.name;
    scenario.board = sensor.board;
    scenario.files = sensor.files;
    scenario.act = [sensor]() -> int64_t {
        SpecificSensorParam param = sensor.param;
        return SDR_AddSpecificSensor(&param);
    };
    scenario.judge = [sensor](const Run &run) {
        EXPECT_THAT(ResultsOf(sensor, run), testing::Contains(run.result));
        JudgeRepository(sensor, run);
        JudgeSession(run);
        JudgeRegistry(sensor);
        JudgeFiles(sensor, run);
        JudgeNextAdd(sensor, run);
    };
    return scenario;
}

sim::Board Machine(uint32_t profile, uint16_t board_id = 0x5502) {
    sim::Board board;
    board.custom_id = profile;
    board.board_id = board_id;
    return board;
}
sim::Board WithOffset8() {
    sim::Board board = Machine(CUSTOM_ID_SABLIN);
    board.inner_product_id = 7;
    return board;
}
// A store that holds another sensor: it is read and looked through.
std::map<std::string, Bytes> OtherSensorStored() {
    Bytes slot(SDR_SLOT_SIZE, 0xFF);
    slot[3] = 1;
    slot[47] = 0xC4;
    return {{kStoreFile, slot}};
}

const char kLoadProfile[] = "IPMI_LoadCustomID";
const Calls kOffsetCalls = {kLoadProfile, "MW_GetInnerProductId"};
// Without the profile the sensor has no name, or the name alone was asked for with it.
const std::map<std::string, Results> kNeedsProfile = {{kLoadProfile, {0, 0xFFFE}}};

// A network card in a front slot: its name has two numbers, and the front's own pattern.
Sensor FrontPort() {
    Sensor port = {.name = "FrontPortTemperature",
                   .param = Description(0x0100, 5, 3, 1),
                   .board = Machine(CUSTOM_ID_DEFAULT),
                   .may_change = {"Hal_GetPcieLocationByPcieSlot", "Hal_GetPcieSilkByPcieSlot"}};
    port.param.ucSensorSeq = 1;
    port.board.pcie.slots = {{.slot = 3, .location = 1, .silk = "F-Slot2"}};
    return port;
}

std::vector<Sensor> FullRecords() {
    sim::Board with_thresholds = Machine(CUSTOM_ID_DEFAULT);
    with_thresholds.thresholds = {{.name = "GPU_TEMP_03", .unr = 110, .uc = 105, .unc = 99, .mask = 0x38}};
    sim::Board with_gpus = Machine(CUSTOM_ID_DEFAULT);
    with_gpus.gpus = {{.slot = 3, .power_w = 300, .vendor = 0x10DE},
                      {.slot = 4, .power_w = 350, .vendor = 0x10DE}};
    sim::Board with_unit = Machine(CUSTOM_ID_SABLIN, 0x54E0);
    with_unit.gpus = {{.slot = 5, .power_w = 300, .vendor = 0xCABC}};
    return {
        FrontPort(),
        {.name = "Temperature",
         .param = GpuTemperature(3),
         .board = with_thresholds,
         .files = OtherSensorStored(),
         .may_change = {"MW_GetSensorThreshInfo"}},
        {.name = "TemperatureWithoutStore", .param = GpuTemperature(3), .board = Machine(CUSTOM_ID_DEFAULT)},
        {.name = "CardTemperature", .param = Description(0x0100, 41, 2), .board = Machine(CUSTOM_ID_DEFAULT)},
        {.name = "FerriskTemperature",
         .param = Description(0x0100, 2, 2),
         .board = Machine(CUSTOM_ID_FERRISK),
         .may_change = {kLoadProfile},
         .results = kNeedsProfile},
        {.name = "Fan",
         .param = Description(0x0403, 255, 2),
         .board = Machine(CUSTOM_ID_DEFAULT),
         .files = OtherSensorStored()},
        {.name = "Voltage",
         .param = Description(0x0200, 31, 3),
         .board = Machine(CUSTOM_ID_VORANA),
         .files = OtherSensorStored(),
         .may_change = {kLoadProfile},
         .results = kNeedsProfile},
        {.name = "GpuPower",
         .param = Description(0x0803, 2, 3),
         .board = with_gpus,
         .files = OtherSensorStored(),
         .may_change = {"MW_GetGPUAssetInfo"}},
        {.name = "SablinUnitPower",
         .param = Description(0x0803, 56, 5),
         .board = with_unit,
         .may_change = {"MW_GetGPUAssetInfo", "get_default_board_id", kLoadProfile},
         .results = {{kLoadProfile, {0, 0xFFFE}}, {"get_default_board_id", {0, 0xFFFE}}}},
        {.name = "NeoPower", .param = Description(0x0803, 36, 3, 3), .board = Machine(CUSTOM_ID_DEFAULT)},
    };
}

std::vector<Sensor> CompactRecords() {
    return {
        {.name = "CardStatus",
         .param = Description(0x1501, 42, 1),
         .board = Machine(CUSTOM_ID_DEFAULT),
         .files = OtherSensorStored()},
        {.name = "SablinUnitStatus",
         .param = Description(0x1700, 2, 5),
         .board = Machine(CUSTOM_ID_SABLIN, 0x54E0),
         .files = OtherSensorStored(),
         .may_change = {kLoadProfile, "get_default_board_id"},
         .results = {{kLoadProfile, {0, 0xFFFE}}, {"get_default_board_id", {0xFFFE}}}},
        {.name = "MemoryStatus",
         .param = Description(0x0C01, 18, 3),
         .board = Machine(CUSTOM_ID_KESTRIN),
         .files = OtherSensorStored(),
         .results = kNeedsProfile},
    };
}

std::vector<Sensor> Disks() {
    sim::Board converting = DiskBoard();
    converting.disks.conversion = {{4, 12}};
    const Calls place = {"HalHddBackpanelInst", "HalHddBackpanelService.GetBackPanelList"};
    return {
        {.name = "DiskTemperature",
         .param = DiskTemperature(4),
         .board = converting,
         .files = OtherSensorStored(),
         .may_change = place,
         .results = kNeedsProfile},
        {.name = "DiskStatus",
         .param = DiskStatus(4, 1, 1),
         .board = converting,
         .files = OtherSensorStored(),
         .may_change = place,
         .results = kNeedsProfile},
        {.name = "SataStatus", .param = DiskStatus(9, 2, 2), .board = converting, .results = kNeedsProfile},
    };
}

std::string CardFile(const std::string &section, const std::string &name, int id, int slot) {
    return "[" + section + "]\n" + name + "_FruId =" + std::to_string(id) + "\n" + name +
           "_SlotId =" + std::to_string(slot) + "\n";
}

std::vector<Sensor> FruLocators() {
    const std::map<std::string, Bytes> others = {{kRecordFile, BytesOf(Section("PSU_9", 4, 1))}};
    const std::map<std::string, Bytes> recorded = {{kRecordFile, BytesOf(Section("PSU_2", 4, 1))}};
    return {
        {.name = "Psu", .param = Psu(2), .board = Machine(CUSTOM_ID_DEFAULT), .files = others},
        {.name = "PsuOfQuorral",
         .param = Psu(2),
         .board = Machine(CUSTOM_ID_QUORRAL),
         .may_change = {kLoadProfile}},
        {.name = "PsuOfSablin", .param = Psu(2), .board = WithOffset8(), .may_change = kOffsetCalls},
        {.name = "PsuThatIsRecorded",
         .param = Psu(2),
         .board = Machine(CUSTOM_ID_DEFAULT),
         .files = recorded,
         .clean_result = 0xFFFF,
         .results = {{"IniLoadFile", {0}}},
         .record = {0x00, 0x00, 0x51, 0x11, 0x13, 0x20, 0x12, 0x80, 0x12, 0x00, 0x10, 0x00,
                    0x0A, 0x02, 0x00, 0xC8, 'P',  'S',  'U',  '2',  '_',  'F',  'R',  'U'}},
        {.name = "PurchaseCard",
         .param = Description(0x010B, 0, 1),
         .board = Machine(CUSTOM_ID_DEFAULT),
         .fru_id_file = CardFile("HyperCard", "HyperCard", 36, 1)},
        {.name = "PurchaseCardOfSablin",
         .param = Description(0x010B, 0, 1),
         .board = WithOffset8(),
         .may_change = kOffsetCalls,
         .fru_id_file = CardFile("HyperCard", "HyperCard", 44, 1)},
        {.name = "Sl200",
         .param = Description(0x040B, 0, 1),
         .board = Machine(CUSTOM_ID_DEFAULT),
         .fru_id_file = CardFile("SL200 Card", "SL200 Card 36", 36, 1)},
        {.name = "Sl200OfSablin",
         .param = Description(0x040B, 0, 5),
         .board = WithOffset8(),
         .may_change = kOffsetCalls,
         .fru_id_file = CardFile("SL200 Card", "SL200 Card 3", 3, 5),
         .used_line = "FruId = 3 Is Allocated !"},
        {.name = "SubCard",
         .param = Description(0x170B, 0, 15),
         .board = Machine(CUSTOM_ID_DEFAULT),
         .used_line = "FruId = 59 Is Allocated !"},
    };
}

std::vector<Sensor> NothingToAdd() {
    Bytes slot = GpuTemperatureRecord();
    slot.resize(SDR_SLOT_SIZE, 0xFF);
    Sensor stored = {.name = "TemperatureThatIsStored",
                     .param = GpuTemperature(3),
                     .board = Machine(CUSTOM_ID_DEFAULT),
                     .files = {{kStoreFile, slot}},
                     .clean_result = 0xFFFE,
                     .record = GpuTemperatureRecord()};
    for (const char *call :
         {"OAL_SemCreate", "OAL_SemLockByKey", "sigwrap_open_mode", "sigwrap_read", "lseek"})
        stored.results[call] = {0}; // a store that cannot be read holds nothing
    return {stored,
            {.name = "FanOfASmallBoard",
             .param = Description(0x0403, 255, 2),
             .board = Machine(CUSTOM_ID_DEFAULT, 0x5497),
             .clean_result = 0xFFFF,
             .may_change = {"get_default_board_id"},
             .results = {{"get_default_board_id", {0}}}}};
}

} // namespace

std::vector<Scenario> AddScenarios() {
    std::vector<Scenario> scenarios;
    for (const std::vector<Sensor> &group :
         {FullRecords(), CompactRecords(), Disks(), FruLocators(), NothingToAdd()}) {
        for (const Sensor &sensor : group)
            scenarios.push_back(ToScenario(sensor));
    }
    return scenarios;
}

} // namespace faults
