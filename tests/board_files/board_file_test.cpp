// SPDX-License-Identifier: GPL-3.0-or-later
//
// Every key of a board file reaches its field; what a file leaves out has the value of a plain Board.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <sstream>

#include <gmock/gmock.h>

#include "oxa/platform.h"
#include "simulator/board_file.h"
#include "support/boards.h"
#include "support/build_facts.h"

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

namespace {

sim::Board Load(const std::string &text) {
    return sim::LoadBoardText(text, "boards/test.toml").board;
}

std::string ReadText(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// ---- keys
// --------------------------------------------------------------------------------------------------

TEST(BoardSection, EveryKeyReachesItsField) {
    const sim::Board board = Load(R"(
[board]
name = "rack 7"
id = 0x550F
inner_product_id = 7
custom_id = 11
liquid_cooling_mode = 2
cdu_enable = 1
sensor_simplification = true
inlet_temperature = 31
inlet_client = { bus = 4, address = 0x4A }
sel_limit = 16
sdr_limit = 4294967295
)");
    EXPECT_EQ(board.name, "rack 7");
    EXPECT_EQ(board.board_id, 0x550F);
    EXPECT_EQ(board.inner_product_id, 7u);
    EXPECT_EQ(board.custom_id, 11u);
    EXPECT_EQ(board.liquid_cooling_mode, 2);
    EXPECT_EQ(board.cdu_enable, 1);
    EXPECT_TRUE(board.sensor_simplification);
    EXPECT_EQ(board.inlet_temperature, 31);
    EXPECT_EQ(board.inlet_client.bus, 4);
    EXPECT_EQ(board.inlet_client.address, 0x4A);
    EXPECT_EQ(board.sel_limit, 16u);
    EXPECT_EQ(board.sdr_limit, 4294967295u);
}

TEST(BoardSection, WordsStandForNumbers) {
    const sim::Board board = Load("[board]\ncustom_id = 'sablin'\nliquid_cooling_mode = 'leak_sensor'\n"
                                  "cdu_enable = true\n[cpus]\ntype = 'domain_volt'\n");
    EXPECT_EQ(board.custom_id, 20u);
    EXPECT_EQ(board.liquid_cooling_mode, 1);
    EXPECT_EQ(board.cdu_enable, 1);
    EXPECT_EQ(board.cpus.type, 3);
}

TEST(BoardSection, AnAbsentNameIsTheFileName) {
    EXPECT_EQ(sim::LoadBoardText("", "a/b/small.toml").board.name, "small");
}

TEST(CpusSection, EveryKeyReachesItsField) {
    const sim::Cpus cpus = Load(R"(
[cpus]
service = false
count = 4
silk_start = 1
type = 1
reduce_flag = 1
online = [true, false, true]
[cpus.vr_client.0]
bus = 3
address = 0x62
[cpus.voltage.2]
m = 5
b = 6
exponents = 0xD0
mask = 0x3F
unr = 250
uc = 240
unc = 230
lnr = 130
lc = 140
lnc = 150
)")
                               .cpus;
    EXPECT_FALSE(cpus.service);
    EXPECT_EQ(cpus.count, 4);
    EXPECT_EQ(cpus.silk_start, 1);
    EXPECT_EQ(cpus.type, 1);
    EXPECT_EQ(cpus.reduce_flag, 1);
    EXPECT_THAT(cpus.online, ElementsAre(true, false, true));
    ASSERT_THAT(cpus.vr_clients, SizeIs(1));
    EXPECT_EQ(cpus.vr_clients.at(0).bus, 3);
    EXPECT_EQ(cpus.vr_clients.at(0).address, 0x62);
    ASSERT_THAT(cpus.voltages, SizeIs(1));
    const sim::CpuVoltage voltage = cpus.voltages.at(2);
    EXPECT_THAT((std::vector<int>{voltage.m, voltage.b, voltage.exponents, voltage.mask}),
                ElementsAre(5, 6, 0xD0, 0x3F));
    EXPECT_THAT(
        (std::vector<int>{voltage.unr, voltage.uc, voltage.unc, voltage.lnr, voltage.lc, voltage.lnc}),
        ElementsAre(250, 240, 230, 130, 140, 150));
}

TEST(PsusSection, EveryKeyReachesItsField) {
    const sim::Psus psus =
        Load("[psus]\ncount = 6\ngroup_count = 2\ncount_per_group = 3\npower_manage = true\n"
             "alarm_config = false\n")
            .psus;
    EXPECT_EQ(psus.count, 6);
    EXPECT_EQ(psus.group_count, 2);
    EXPECT_EQ(psus.count_per_group, 3);
    EXPECT_EQ(psus.power_manage, 1);
    EXPECT_FALSE(psus.alarm_config);
}

TEST(FansSection, EveryKeyReachesItsField) {
    const sim::Fans fans =
        Load("[fans]\nservice = false\ncount = 6\nsilk = ['3-4', 255, 255, 9]\npower_accuracy = 0\n").fans;
    EXPECT_FALSE(fans.service);
    EXPECT_EQ(fans.count, 6);
    EXPECT_THAT(fans.silk, ElementsAre(3, 4, 255, 255, 9));
    EXPECT_EQ(fans.power_accuracy, 0u);
}

TEST(DisksSection, EveryKeyReachesItsField) {
    const sim::Disks disks = Load(R"(
[disks]
service = false
enabled = false
reported_count = 40
written_bytes = 38
nvme_slots = ["0-2", 12, "0x10-17"]
power_accuracy = 300
conversion = { 1 = 11 }
[disks.silk]
0x02 = 12
[[disks.backplane]]
start_slot = 0
disk_count = 8
[[disks.backplane]]
start_slot = 8
disk_count = 4
location = "Rear"
)")
                                 .disks;
    EXPECT_FALSE(disks.service);
    EXPECT_FALSE(disks.enabled);
    EXPECT_EQ(disks.reported_count, 40u);
    EXPECT_EQ(disks.written_bytes, 38);
    EXPECT_THAT(disks.nvme_slots, ElementsAre(0, 1, 2, 12, 16, 17));
    EXPECT_EQ(disks.power_accuracy, 300u);
    EXPECT_THAT(disks.conversion, ElementsAre(Pair(1, 11)));
    EXPECT_THAT(disks.silk, ElementsAre(Pair(2, 12)));
    ASSERT_THAT(disks.backplanes, SizeIs(2));
    EXPECT_EQ(disks.backplanes[0].start_slot, 0);
    EXPECT_EQ(disks.backplanes[0].disk_count, 8);
    EXPECT_EQ(disks.backplanes[0].location, "Front");
    EXPECT_EQ(disks.backplanes[1].start_slot, 8);
    EXPECT_EQ(disks.backplanes[1].disk_count, 4);
    EXPECT_EQ(disks.backplanes[1].location, "Rear");
}

TEST(DisksSection, ARangeBeyond255IsLetThrough) {
    const sim::Disks disks = Load("[[disks.backplane]]\nstart_slot = 250\ndisk_count = 6\n").disks;
    EXPECT_EQ(disks.backplanes[0].start_slot, 250);
    EXPECT_EQ(disks.backplanes[0].disk_count, 6);
}

TEST(DisksSection, ALocationMayFillItsField) {
    const std::string location(32, 'x');
    const sim::Disks disks = Load("[[disks.backplane]]\nlocation = '" + location + "'\n").disks;
    EXPECT_EQ(disks.backplanes[0].location, location);
    EXPECT_FALSE(disks.written_bytes);
}

TEST(PcieSection, EveryKeyReachesItsField) {
    const sim::Pcie pcie = Load(R"(
[pcie]
count = 255
slots = ["1-2"]
s5_slot = 12
[[pcie.slot]]
slot = 9
location = 1
silk = "F-Slot2"
silk_nul = false
present = false
)")
                               .pcie;
    EXPECT_EQ(pcie.count, 255);
    EXPECT_EQ(pcie.s5_slot, 12);
    ASSERT_THAT(pcie.slots, SizeIs(3));
    EXPECT_EQ(pcie.slots[0].slot, 1);
    EXPECT_EQ(pcie.slots[0].location, 0);
    EXPECT_TRUE(pcie.slots[0].present);
    EXPECT_TRUE(pcie.slots[0].silk_nul);
    EXPECT_EQ(pcie.slots[1].slot, 2);
    EXPECT_EQ(pcie.slots[2].slot, 9);
    EXPECT_EQ(pcie.slots[2].location, 1);
    EXPECT_EQ(pcie.slots[2].silk, "F-Slot2");
    EXPECT_FALSE(pcie.slots[2].silk_nul);
    EXPECT_FALSE(pcie.slots[2].present);
}

TEST(PcieSection, ADescribedSlotTakesThePlaceOfThePlainOne) {
    const sim::Pcie pcie =
        Load("[pcie]\nslots = ['1-3']\n[[pcie.slot]]\nslot = 2\nlocation = 'front'\nsilk = 'F-Slot1'\n").pcie;
    ASSERT_THAT(pcie.slots, SizeIs(3));
    EXPECT_EQ(pcie.slots[1].slot, 2);
    EXPECT_EQ(pcie.slots[1].location, 1);
    EXPECT_EQ(pcie.slots[1].silk, "F-Slot1");
    EXPECT_EQ(pcie.slots[2].slot, 3);
}

TEST(OcpSection, EveryKeyReachesItsField) {
    const sim::Ocp ocp = Load("[ocp]\ncount = 8\npresent = 0x83\nrestored = { 1 = 5, 0x2 = 6 }\n").ocp;
    EXPECT_EQ(ocp.count, 8);
    EXPECT_EQ(ocp.present, 0x83u);
    EXPECT_THAT(ocp.restored, ElementsAre(Pair(1, 5), Pair(2, 6)));
}

TEST(OcpSection, PresentCardsMayBeListed) {
    EXPECT_EQ(Load("[ocp]\npresent = ['0-1', 7, 31]\n").ocp.present, 0x80000083u);
}

TEST(SwitchBoardSection, EveryKeyReachesItsField) {
    const sim::SwitchBoard board = Load(R"(
[switch_board]
supported = true
chip_temp_count = 4
sensors_valid = 1
[switch_board.card.2]
online = true
id = 0x5510
[switch_board.client.3]
bus = 9
address = 0x41
)")
                                       .switch_board;
    EXPECT_TRUE(board.supported);
    EXPECT_EQ(board.chip_temp_count, 4);
    EXPECT_EQ(board.sensors_valid, 1);
    ASSERT_THAT(board.cards, SizeIs(1));
    EXPECT_TRUE(board.cards.at(2).online);
    EXPECT_EQ(board.cards.at(2).board_id, 0x5510);
    ASSERT_THAT(board.clients, SizeIs(1));
    EXPECT_EQ(board.clients.at(3).bus, 9);
    EXPECT_EQ(board.clients.at(3).address, 0x41);
}

TEST(GpuList, EveryKeyReachesItsFieldAndASlotMayComeTwice) {
    const std::vector<sim::Gpu> gpus =
        Load("[[gpu]]\nslot = 5\npower_w = 700\nvendor = 0xCABC\n[[gpu]]\nslot = 5\npower_w = 'unknown'\n")
            .gpus;
    ASSERT_THAT(gpus, SizeIs(2));
    EXPECT_EQ(gpus[0].slot, 5);
    EXPECT_EQ(gpus[0].power_w, 700u);
    EXPECT_EQ(gpus[0].vendor, 0xCABC);
    EXPECT_EQ(gpus[1].power_w, 0xFFFFFFFFu);
    EXPECT_EQ(gpus[1].vendor, 0);
}

TEST(SupportSection, SensorsGoByNameShortNameAndNumber) {
    const sim::Support support = Load(R"(
[support]
all = false
sensors = { CPU_VR_TEMP = true, SENSOR_CPU_VOLTS = 7, 0x67 = false, 999 = true }
kinds = { INPUT_VOLTS = false, SENSOR_KIND_OUTPUT_VOLTS = true, 9 = 2 }
)")
                                     .support;
    EXPECT_FALSE(support.all);
    EXPECT_THAT(support.sensors, ElementsAre(Pair(101, 1), Pair(102, 7), Pair(103, 0), Pair(999, 1)));
    EXPECT_THAT(support.kinds, ElementsAre(Pair(3, 0), Pair(4, 1), Pair(9, 2)));
}

// The list of names is the platform header's: none of it may be missing, and the numbers must agree.
TEST(SupportSection, KnowsEverySensorNameOfThePlatform) {
    const std::string header = ReadText(tests::InSource("include/oxa/platform.h"));
    const std::regex line("SENSOR_([A-Z0-9_]+) = ([0-9]+)");
    size_t names = 0;
    for (std::sregex_iterator match(header.begin(), header.end(), line), end; match != end; ++match) {
        const std::string name = (*match)[1];
        const auto number = static_cast<uint32_t>(std::stoul((*match)[2]));
        const bool kind = name.starts_with("KIND_");
        const std::string section = kind ? "[support.kinds]\n" : "[support.sensors]\n";
        for (const std::string &key : {"SENSOR_" + name, kind ? name.substr(5) : name}) {
            const sim::Support support = Load(section + key + " = 5\n").support;
            EXPECT_THAT(kind ? support.kinds : support.sensors, ElementsAre(Pair(number, 5))) << key;
        }
        ++names;
    }
    EXPECT_GE(names, 30u);
}

TEST(ThresholdList, EveryKeyReachesItsField) {
    const std::vector<sim::ThresholdEntry> entries =
        Load("[[threshold]]\nname = 'INPUT_TEMP'\nunr = 1\nuc = 2\nunc = 3\nlnr = 4\nlc = 5\nlnc = 6\nmask = "
             "0x138\n")
            .thresholds;
    ASSERT_THAT(entries, SizeIs(1));
    const sim::ThresholdEntry &entry = entries[0];
    EXPECT_EQ(entry.name, "INPUT_TEMP");
    EXPECT_THAT((std::vector<int>{entry.unr, entry.uc, entry.unc, entry.lnr, entry.lc, entry.lnc}),
                ElementsAre(1, 2, 3, 4, 5, 6));
    EXPECT_EQ(entry.mask, 0x138);
}

TEST(SensorNumbersSection, EveryKeyReachesItsField) {
    const sim::SensorNumbers numbers = Load(R"(
[sensor_numbers]
by_key = { "04 0d 6F 03 00" = 0x55 }
cpu = { 0 = 0x10, 1 = 0x11 }
dimm = { 31 = 0x20 }
power_module = { 1 = 0x30 }
power_fault = 0x40
)")
                                           .sensor_numbers;
    EXPECT_THAT(numbers.by_key, ElementsAre(Pair("04 0D 6F 03 00", 0x55u)));
    EXPECT_THAT(numbers.cpu, ElementsAre(Pair(0, 0x10), Pair(1, 0x11)));
    EXPECT_THAT(numbers.dimm, ElementsAre(Pair(31, 0x20)));
    EXPECT_THAT(numbers.power_module, ElementsAre(Pair(1, 0x30)));
    EXPECT_EQ(numbers.power_fault, 0x40u);
}

TEST(PowerRegistersSection, RegistersGoByNameAndNumber) {
    const sim::Board board = Load("[power_registers]\nPMIC_POWER_FAULT_REG_5350 = 0x80\n2 = 1\n0x10 = 255\n");
    EXPECT_THAT(board.power_registers, ElementsAre(Pair(1, 0x80), Pair(2, 1), Pair(16, 255)));
}

TEST(FilesSection, ContentIsTextListHexOrFill) {
    const sim::Board board = Load("[files]\n'/a' = 'hi'\n'/b' = [0, 0xFF]\n'/c' = { hex = '01 fe' }\n"
                                  "'/d' = { size = 3, fill = 0xEE }\n'/e' = { size = 2 }\n'/f' = ''\n");
    EXPECT_THAT(board.files,
                ElementsAre(Pair("/a", ElementsAre('h', 'i')), Pair("/b", ElementsAre(0, 255)),
                            Pair("/c", ElementsAre(1, 0xFE)), Pair("/d", ElementsAre(0xEE, 0xEE, 0xEE)),
                            Pair("/e", ElementsAre(0, 0)), Pair("/f", IsEmpty())));
}

TEST(FaultList, EveryKeyReachesItsField) {
    const std::vector<sim::Fault> faults = sim::LoadBoardText(R"(
[[fault]]
call = "HalFanService.GetFanSilkByIndex"
occurrence = 2
from_then_on = true
args = "index=2"
result = -1
output = 0xFF
succeed = true
null_object = true
null_operation = true
errno_value = 13
[[fault]]
call = "HAL_GetPsuMaxCount"
)",
                                                              "x.toml")
                                               .faults;
    ASSERT_THAT(faults, SizeIs(2));
    EXPECT_EQ(faults[0].call, "HalFanService.GetFanSilkByIndex");
    EXPECT_EQ(faults[0].occurrence, 2u);
    EXPECT_TRUE(faults[0].from_then_on);
    EXPECT_EQ(faults[0].args, "index=2");
    EXPECT_EQ(faults[0].result, -1);
    EXPECT_EQ(faults[0].output, 0xFFu);
    EXPECT_TRUE(faults[0].succeed);
    EXPECT_TRUE(faults[0].null_object);
    EXPECT_TRUE(faults[0].null_operation);
    EXPECT_EQ(faults[0].errno_value, 13);
    EXPECT_EQ(faults[1].call, "HAL_GetPsuMaxCount");
    EXPECT_FALSE(faults[1].occurrence);
    EXPECT_FALSE(faults[1].result);
    EXPECT_FALSE(faults[1].output);
}

// ---- names of DIMMs
// ----------------------------------------------------------------------------------------

TEST(DimmNames, DefaultToChannelLetterAndSlot) {
    const sim::Dimms dimms = Load("[dimms]\ncount = 5\npower_accuracy = 10\n").dimms;
    EXPECT_EQ(dimms.count, 5);
    EXPECT_EQ(dimms.power_accuracy, 10u);
    EXPECT_THAT(dimms.names, ElementsAre("A0", "A1", "B0", "B1", "C0"));
    EXPECT_EQ(sim::DefaultDimmName(51), "Z1");
    EXPECT_EQ(sim::DefaultDimmName(52), "AA0");
    EXPECT_EQ(sim::DefaultDimmName(254), "DX0");
}

TEST(DimmNames, OfTheLargestBoardAreDifferentAndFitASensorName) {
    const sim::Dimms dimms = Load("[dimms]\ncount = 255\n").dimms;
    ASSERT_THAT(dimms.names, SizeIs(255));
    EXPECT_THAT(std::set<std::string>(dimms.names.begin(), dimms.names.end()), SizeIs(255));
    for (const std::string &name : dimms.names)
        EXPECT_LE(std::string("MEM_STATUS_").size() + name.size(), 16u);
}

TEST(DimmNames, GivenNamesComeFirst) {
    const sim::Dimms dimms = Load("[dimms]\ncount = 3\nnames = ['X', 'Y']\n").dimms;
    EXPECT_THAT(dimms.names, ElementsAre("X", "Y", "B0"));
}

TEST(DimmNames, APatternCountsCpuChannelAndSlot) {
    const sim::Dimms dimms = Load("[dimms]\ncount = 7\ndimms_per_cpu = 4\nslots_per_channel = 2\n"
                                  "names = '{n:2}-{cpu}{channel:2}{letter}{slot}'\n")
                                 .dimms;
    EXPECT_THAT(dimms.names, ElementsAre("00-000A0", "01-000A1", "02-001B0", "03-001B1", "04-100A0",
                                         "05-100A1", "06-101B0"));
}

// ---- defaults and shipped boards
// ---------------------------------------------------------------------------

TEST(EmptyFile, IsABoardWithEveryDefault) {
    const sim::Board board = Load("");
    EXPECT_EQ(board.board_id, 0);
    EXPECT_EQ(board.inlet_temperature, 25);
    EXPECT_EQ(board.inlet_client.bus, 1);
    EXPECT_EQ(board.inlet_client.address, 0x48);
    EXPECT_EQ(board.sel_limit, 1000u);
    EXPECT_EQ(board.sdr_limit, 1000u);
    EXPECT_TRUE(board.cpus.service);
    EXPECT_EQ(board.cpus.count, 0);
    EXPECT_EQ(board.cpus.reduce_flag, 0);
    EXPECT_EQ(board.dimms.count, 0);
    EXPECT_THAT(board.dimms.names, IsEmpty());
    EXPECT_EQ(board.dimms.power_accuracy, 1u);
    EXPECT_TRUE(board.psus.alarm_config);
    EXPECT_TRUE(board.fans.service);
    EXPECT_EQ(board.fans.power_accuracy, 1u);
    EXPECT_TRUE(board.disks.service);
    EXPECT_TRUE(board.disks.enabled);
    EXPECT_FALSE(board.disks.reported_count);
    EXPECT_EQ(board.disks.power_accuracy, 1u);
    EXPECT_FALSE(board.pcie.count);
    EXPECT_FALSE(board.pcie.s5_slot);
    EXPECT_FALSE(board.switch_board.supported);
    EXPECT_TRUE(board.support.all);
    EXPECT_FALSE(board.sensor_numbers.power_fault);
    EXPECT_THAT(board.gpus, IsEmpty());
    EXPECT_THAT(board.files, IsEmpty());
    EXPECT_THAT(sim::LoadBoardText("", "x.toml").faults, IsEmpty());
}

TEST(ShippedBoards, AllLoadAndBeginByTellingWhatTheyTeach) {
    for (const std::string &name : tests::BoardNames()) {
        EXPECT_NO_THROW(tests::LoadBoard(name)) << name;
        EXPECT_TRUE(std::regex_search(ReadText(tests::BoardPath(name)),
                                      std::regex("^#:schema [^\n]+\n# [^\n]+\n# [^\n]+\n")))
            << name;
    }
    EXPECT_GE(tests::BoardNames().size(), 18u);
}

TEST(ShippedBoards, TheFailingOnesCarryTheirFault) {
    const auto psu = sim::LoadBoard(tests::BoardPath("guards-psu_count_fails")).faults;
    ASSERT_THAT(psu, SizeIs(1));
    EXPECT_EQ(psu[0].call, "HAL_GetPsuMaxCount");
    const auto board_id = sim::LoadBoard(tests::BoardPath("guards-board_id_fails")).faults;
    ASSERT_THAT(board_id, SizeIs(1));
    EXPECT_EQ(board_id[0].call, "get_default_board_id");
    EXPECT_EQ(board_id[0].result, -1);
}

TEST(ShippedBoards, EachGuardBoardTripsItsGuardAndNoOther) {
    const std::map<std::string, std::string> expected = {
        {"psu_count_255", "psus"},       {"dimm_count_255", "dimms"}, {"pcie_count_255", "pcie"},
        {"fan_count_255", "fans"},       {"ocp_count_255", "ocp"},    {"cpu_silk_overflow", "cpus"},
        {"disk_range_overflow", "disks"}};
    for (const auto &[file, guard] : expected) {
        const sim::Board board = tests::LoadBoard("guards-" + file);
        EXPECT_EQ(board.psus.count == 255, guard == "psus") << file;
        EXPECT_EQ(board.dimms.count == 255, guard == "dimms") << file;
        EXPECT_EQ(board.pcie.count == 255, guard == "pcie") << file;
        EXPECT_EQ(board.fans.count == 255, guard == "fans") << file;
        EXPECT_EQ(board.ocp.count == 255, guard == "ocp") << file;
        EXPECT_EQ(board.cpus.silk_start + board.cpus.count > 255, guard == "cpus") << file;
        bool beyond = false;
        for (const sim::Backplane &backplane : board.disks.backplanes)
            beyond |= backplane.start_slot + backplane.disk_count > 255;
        EXPECT_EQ(beyond, guard == "disks") << file;
    }
}

TEST(Readme, DocumentsEveryKeyWithWhatIsExpectedOfIt) {
    const std::string readme = ReadText(tests::InSource("boards/README.md"));
    std::set<std::string> sections;
    std::string text;
    for (const sim::BoardKey &key : sim::BoardKeys()) {
        if (key.section.empty())
            continue;
        if (sections.insert(key.section).second) {
            std::string name = key.section;
            if (name.ends_with("*"))
                name.back() = 'N';
            size_t start = readme.find("### `[" + name + "]`");
            if (start == readme.npos)
                start = readme.find("### `[[" + name + "]]`");
            ASSERT_NE(start, readme.npos) << name;
            text = readme.substr(start, readme.find("\n### ", start) - start);
        }
        const std::string cell = key.key == "*" ? "(any)" : "`" + key.key + "`";
        EXPECT_NE(text.find("| " + cell + " | " + key.expected + " |"), text.npos)
            << key.section << " " << key.key;
    }
    EXPECT_GE(sections.size(), 25u);
}

} // namespace
