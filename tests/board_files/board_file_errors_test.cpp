// SPDX-License-Identifier: GPL-3.0-or-later
//
// Whatever is wrong in a board file is told in one line: file, line, what is wrong, what would be right.
#include <algorithm>
#include <fstream>

#include <gmock/gmock.h>

#include "simulator/board_file.h"
#include "support/build_facts.h"

namespace {

std::string ErrorOf(const std::string &text) {
    try {
        sim::LoadBoardText(text, "b.toml");
    } catch (const sim::BoardError &error) {
        return error.what();
    }
    return "no error";
}

std::string FileError(const std::string &path) {
    try {
        sim::LoadBoard(path);
    } catch (const sim::BoardError &error) {
        return error.what();
    }
    return "no error";
}

struct Case {
    const char *name;
    const char *text;
    const char *error;
};

std::ostream &operator<<(std::ostream &out, const Case &test_case) {
    return out << test_case.name;
}

class BoardErrors : public testing::TestWithParam<Case> {};

TEST_P(BoardErrors, IsToldInExactlyThisLine) {
    EXPECT_EQ(ErrorOf(GetParam().text), GetParam().error);
}

const Case kUnknown[] = {
    {"KeyNearAKnownOne", "[cpus]\n\ncuont = 2\n",
     "b.toml:3:1: unknown key 'cuont' in [cpus]; did you mean 'count'?"},
    {"KeyFarFromAll", "[psus]\nvolts = 2\n",
     "b.toml:2:1: unknown key 'volts' in [psus]; known keys are 'count' 'group_count' 'count_per_group' "
     "'power_manage' 'alarm_config'"},
    {"KeyInOtherCase", "[board]\nID = 2\n", "b.toml:2:1: unknown key 'ID' in [board]; did you mean 'id'?"},
    {"Section", "[board]\nid = 1\n[dimm]\ncount = 1\n",
     "b.toml:3:2: unknown key 'dimm' in the file; did you mean 'dimms'?"},
    {"KeyAtTopLevel", "fan = 2\n", "b.toml:1:1: unknown key 'fan' in the file; did you mean 'fans'?"},
    {"KeyInListedTable", "[[disks.backplane]]\nstart_slot = 1\ndisk_cont = 1\n",
     "b.toml:3:1: unknown key 'disk_cont' in [[disks.backplane]]; did you mean 'disk_count'?"},
    {"KeyInNumberedTable", "[switch_board.card.2]\nonlin = true\n",
     "b.toml:2:1: unknown key 'onlin' in [switch_board.card.2]; did you mean 'online'?"},
    {"Sensor", "[support.sensors]\nCPU_VR_TMEP = true\n",
     "b.toml:2:1: unknown key 'CPU_VR_TMEP' in [support.sensors]; did you mean 'CPU_VR_TEMP'?"},
    {"SensorFarFromAll", "[support.sensors]\n\nWIND_SPEED_AND_RAIN = true\n",
     "b.toml:3:1: unknown key 'WIND_SPEED_AND_RAIN' in [support.sensors]; a key must be a number 0 to "
     "4294967295 or a "
     "name such as CPU_VR_TEMP"},
    {"CardNumber", "[switch_board.card.3]\nonline = true\n",
     "b.toml:1:20: unknown key '3' in [switch_board.card]; a key must be a number 1 to 2"},
    {"VoltageDomain", "[cpus.voltage.0]\nm = 1\n",
     "b.toml:1:15: unknown key '0' in [cpus.voltage]; a key must be a number 1 to 4"},
    {"DirectoryKey", "[sensor_numbers.by_key]\n'04 0D 6F 03' = 1\n",
     "b.toml:2:1: unknown key '04 0D 6F 03' in [sensor_numbers.by_key]; a key must be five bytes such as \"04 "
     "0D 6F 03 00\""},
    {"CallOfAFault", "[[fault]]\ncall = 'HAL_GetPsuMaxCuont'\n",
     "b.toml:2:8: unknown call 'HAL_GetPsuMaxCuont' in [[fault]]; did you mean 'HAL_GetPsuMaxCount'?"},
    {"CallFarFromAll", "[[fault]]\ncall = 'the whole thing goes wrong'\n",
     "b.toml:2:8: unknown call 'the whole thing goes wrong' in [[fault]]; it must be the name of a platform "
     "call such as "
     "'get_default_board_id'"},
    {"CallThatObeysNoFault", "[[fault]]\ncall = '_ssp_warn'\n",
     "b.toml:2:8: unknown call '_ssp_warn' in [[fault]]; it must be the name of a platform call such as "
     "'get_default_board_id'"},
    {"RelativePath", "[files]\n'var/x' = ''\n",
     "b.toml:2:1: unknown key 'var/x' in [files]; a key must be an absolute path without \"..\""},
    {"PathThatClimbs", "[files]\n'/var/../../x' = ''\n",
     "b.toml:2:1: unknown key '/var/../../x' in [files]; a key must be an absolute path without \"..\""},
};

const Case kWrongType[] = {
    {"TextForNumber", "[cpus]\ncount = 'two'\n",
     "b.toml:2:9: 'count' in [cpus] is the text \"two\"; it must be a number 0 to 255"},
    {"FractionForNumber", "[cpus]\ncount = 2.5\n",
     "b.toml:2:9: 'count' in [cpus] is a number with a fraction; it must be a number 0 to 255"},
    {"FlagForNumber", "[cpus]\ncount = true\n",
     "b.toml:2:9: 'count' in [cpus] is true; it must be a number 0 to 255"},
    {"NumberForFlag", "[fans]\nservice = 1\n",
     "b.toml:2:11: 'service' in [fans] is 1; it must be true or false"},
    {"NumberForText", "[board]\nname = 7\n",
     "b.toml:2:8: 'name' in [board] is 7; it must be a text of 0 to 63 printable ASCII characters"},
    {"DateForNumber", "[board]\nid = 2024-01-01\n",
     "b.toml:2:6: 'id' in [board] is a date or time; it must be a number 0 to 65535"},
    {"UnknownWord", "[cpus]\ntype = 'intle'\n",
     "b.toml:2:8: 'type' in [cpus] is the text \"intle\"; it must be a number 0 to 255 or \"unknown\", "
     "\"intel\", "
     "\"domain_volt\""},
    {"NumberForSection", "cpus = 4\n", "b.toml:1:8: 'cpus' in the file is 4; it must be a table [cpus]"},
    {"NumberForNumberedSection", "[cpus.vr_client]\n0 = 3\n",
     "b.toml:2:5: '0' in [cpus.vr_client] is 3; it must be a table [cpus.vr_client.0]"},
    {"SingleBrackets", "[gpu]\nslot = 4\n",
     "b.toml:1:1: 'gpu' in the file is a table; it must be one or more [[gpu]] tables, at most 255"},
    {"ListOfNumbersForTables", "gpu = [1]\n",
     "b.toml:1:8: 'gpu' in the file is 1; it must be one or more [[gpu]] tables, at most 255"},
    {"DoubleBrackets", "[[psus]]\ncount = 1\n",
     "b.toml:1:1: 'psus' in the file is a list of 1 values; it must be a table [psus]"},
    {"FlagsWithNumber", "[cpus]\nonline = [true, 1]\n",
     "b.toml:2:10: 'online' in [cpus] is a list of 2 values; it must be a list of at most 255 times true or "
     "false"},
    {"NumberForSlots", "[disks]\nnvme_slots = 3\n",
     "b.toml:2:14: 'nvme_slots' in [disks] is 3; it must be a list of slot numbers 0 to 255 and ranges such as "
     "\"0-7\""},
    {"RangeBackwards", "[disks]\nnvme_slots = [\n 1,\n '7-2' ]\n",
     "b.toml:4:2: 'nvme_slots' in [disks] holds the text \"7-2\"; it must be a list of slot numbers 0 to 255 "
     "and ranges "
     "such as \"0-7\""},
    {"ByteList", "[files]\n'/a' = [1, 300]\n",
     "b.toml:2:12: '/a' in [files] holds 300; it must be a number 0 to 255"},
    {"OddHex", "[files]\n'/a' = { hex = '01 F' }\n",
     "b.toml:2:16: '/a' in [files] has a hex text with \"F\" at character 4; write two digits 0-9 or A-F for each "
     "byte, as in { hex = \"01 FF\" }"},
    {"NoHexDigit", "[files]\n'/a' = { hex = '01 0G' }\n",
     "b.toml:2:16: '/a' in [files] has a hex text with \"0G\" at character 4; write two digits 0-9 or A-F for each "
     "byte, as in { hex = \"01 FF\" }"},
    {"SizeOfAFile", "[files]\n'/a' = { size = 2000000000 }\n",
     "b.toml:2:17: '/a.size' in [files] is 2000000000; it must be a number 0 to 1048576"},
    {"FillOfAFile", "[files]\n'/a' = { size = 1, fill = 256 }\n",
     "b.toml:2:27: '/a.fill' in [files] is 256; it must be a number 0 to 255"},
    {"KeyOfAFile", "[files]\n'/a' = { siez = 1 }\n",
     "b.toml:2:10: unknown key '/a.siez' in [files]; write { hex = \"01 FF\" } or { size = 64, fill = 0 }"},
    {"NothingOfAFile", "[files]\n'/a' = { }\n",
     "b.toml:2:8: '/a' in [files] is a table; it must be a text, a list of numbers 0 to 255, { hex = \"01 FF\" } or "
     "{ size = 64, fill = 0 }"},
    {"UnknownPlaceholder", "[dimms]\ncount = 1\nnames = '{socket}'\n",
     "b.toml:3:9: 'names' in [dimms] is the text \"{socket}\"; it must be a list of texts or a pattern of {n} "
     "{cpu} "
     "{channel} {letter} {slot}, with a width as in {n:2}"},
    {"LineBreakInText", "[board]\nname = \"a\\nb\"\n",
     "b.toml:2:8: 'name' in [board] is the text \"a b\"; it must be a text of 0 to 63 printable ASCII "
     "characters"},
};

const Case kOutOfRange[] = {
    {"ByteOf256", "[cpus]\ncount = 256\n",
     "b.toml:2:9: 'count' in [cpus] is 256; it must be a number 0 to 255"},
    {"ByteBelow0", "[cpus]\ncount = -1\n",
     "b.toml:2:9: 'count' in [cpus] is -1; it must be a number 0 to 255"},
    {"Word", "[board]\nid = 0x10000\n",
     "b.toml:2:6: 'id' in [board] is 65536; it must be a number 0 to 65535"},
    {"LongWord", "[dimms]\npower_accuracy = 4294967296\n",
     "b.toml:2:18: 'power_accuracy' in [dimms] is 4294967296; it must be a number 0 to 4294967295"},
    {"VoltageMask", "[cpus.voltage.1]\nmask = 64\n",
     "b.toml:2:8: 'mask' in [cpus.voltage.1] is 64; it must be a number 0 to 63"},
    {"ListedSlot", "[disks]\nnvme_slots = [256]\n",
     "b.toml:2:15: 'nvme_slots' in [disks] holds 256; it must be a list of slot numbers 0 to 255 and ranges "
     "such as \"0-7\""},
    {"OcpCard", "[ocp]\npresent = [32]\n",
     "b.toml:2:11: 'present' in [ocp] holds card 32; it must be a bitmap 0 to 4294967295 or a list of card "
     "numbers 0 to 31"},
    {"MapValue", "[ocp.restored]\n1 = 256\n",
     "b.toml:2:5: '1' in [ocp.restored] is 256; it must be a number 0 to 255"},
    {"MapKey", "[ocp.restored]\n256 = 1\n",
     "b.toml:2:1: unknown key '256' in [ocp.restored]; a key must be a number 0 to 255"},
    {"SensorName", "[[threshold]]\nname = 'A_NAME_OF_17_CHRS'\n",
     "b.toml:2:8: 'name' in [[threshold]] is the text \"A_NAME_OF_17_CHRS\"; it must be a text of 1 to 16 "
     "printable ASCII "
     "characters"},
    {"FirstOccurrence", "[[fault]]\ncall = 'HalFanInst'\noccurrence = 0\n",
     "b.toml:3:14: 'occurrence' in [[fault]] is 0; it must be a number 1 to 4294967295"},
    {"DimmNames", "[dimms]\ncount = 1\nnames = ['A', 'B']\n",
     "b.toml:3:1: 'names' in [dimms] names 2 DIMMs; 'count' is 1"},
    {"FanNumbers", "[fans]\nsilk = ['1-3']\ncount = 2\n",
     "b.toml:2:1: 'silk' in [fans] numbers 3 fans; 'count' is 2"},
};

const Case kTwice[] = {
    {"NvmeSlot", "[disks]\nnvme_slots = ['0-7', 5]\n",
     "b.toml:2:22: 'nvme_slots' in [disks] holds slot 5 twice; list every slot once"},
    {"FanNumber", "[fans]\ncount = 4\nsilk = [1, 2, 2]\n",
     "b.toml:3:15: 'silk' in [fans] holds fan 2 twice; list every fan once"},
    {"DiskSlot",
     "[[disks.backplane]]\ndisk_count = 9\n\n[[disks.backplane]]\nstart_slot = 8\ndisk_count = 4\n",
     "b.toml:4:1: slot 8 is on an earlier [[disks.backplane]] too; backplanes must not overlap"},
    {"PcieSlot", "[[pcie.slot]]\nslot = 3\n[[pcie.slot]]\nslot = 3\n",
     "b.toml:3:1: slot 3 has an earlier [[pcie.slot]] too; describe every slot once"},
    {"PlainPcieSlot", "[pcie]\nslots = [3, '1-4']\n",
     "b.toml:2:13: 'slots' in [pcie] holds slot 3 twice; list every slot once"},
    {"SensorUnderTwoNames", "[support.sensors]\nCPU_VOLTS = true\n102 = false\n",
     "b.toml:3:1: key '102' in [support.sensors] names the same thing as an earlier one; give every key once"},
    {"NumberedTable", "[cpus.vr_client.1]\nbus = 1\n[cpus.vr_client.0x1]\nbus = 1\n",
     "b.toml:3:17: key '0x1' in [cpus.vr_client] names the same thing as an earlier one; give every key once"},
    {"DimmName", "[dimms]\ncount = 2\nnames = ['A1']\n",
     "b.toml:3:1: 'names' in [dimms] gives the name \"A1\" twice; every DIMM needs a name of its own"},
    {"DimmPattern", "[dimms]\ncount = 2\nnames = '{cpu}'\n",
     "b.toml:3:1: 'names' in [dimms] gives the name \"0\" twice; every DIMM needs a name of its own"},
};

const Case kMissing[] = {
    {"PcieSlotNumber", "\n[[pcie.slot]]\nsilk = 'x'\n",
     "b.toml:2:1: [[pcie.slot]] has no key 'slot'; it must be a number 0 to 255"},
    {"GpuSlotNumber", "[[gpu]]\npower_w = 1\n",
     "b.toml:1:1: [[gpu]] has no key 'slot'; it must be a number 0 to 255"},
    {"ThresholdName", "[[threshold]]\nuc = 1\n",
     "b.toml:1:1: [[threshold]] has no key 'name'; it must be a text of 1 to 16 printable ASCII characters"},
    {"FaultCall", "[[fault]]\nresult = 1\n",
     "b.toml:1:1: [[fault]] has no key 'call'; it must be the name of a platform call"},
};

auto CaseName = [](const testing::TestParamInfo<Case> &info) { return std::string(info.param.name); };
INSTANTIATE_TEST_SUITE_P(Unknown, BoardErrors, testing::ValuesIn(kUnknown), CaseName);
INSTANTIATE_TEST_SUITE_P(WrongType, BoardErrors, testing::ValuesIn(kWrongType), CaseName);
INSTANTIATE_TEST_SUITE_P(OutOfRange, BoardErrors, testing::ValuesIn(kOutOfRange), CaseName);
INSTANTIATE_TEST_SUITE_P(Twice, BoardErrors, testing::ValuesIn(kTwice), CaseName);
INSTANTIATE_TEST_SUITE_P(Missing, BoardErrors, testing::ValuesIn(kMissing), CaseName);

TEST(BoardFileErrors, EveryMistakeOfTheFileIsToldInItsOrder) {
    EXPECT_EQ(
        ErrorOf(
            "[psus]\ncount = 256\n[board]\nidd = 1\n[[gpu]]\nslot = 300\n[[gpu]]\n[ocp.restored]\n  7 = -1\n"),
        "b.toml:2:9: 'count' in [psus] is 256; it must be a number 0 to 255\n"
        "b.toml:4:1: unknown key 'idd' in [board]; did you mean 'id'?\n"
        "b.toml:6:8: 'slot' in [[gpu]] is 300; it must be a number 0 to 255\n"
        "b.toml:7:1: [[gpu]] has no key 'slot'; it must be a number 0 to 255\n"
        "b.toml:9:7: '7' in [ocp.restored] is -1; it must be a number 0 to 255");
}

TEST(BoardFileErrors, TwentyMistakesAreToldAndThatThereAreMore) {
    std::string text, told;
    for (int line = 1; line <= 20; ++line) {
        const std::string key = "k" + std::to_string(100 + line);
        text += key + " = 1\n";
        told += "b.toml:" + std::to_string(line) + ":1: unknown key '" + key + "' in the file; ";
    }
    const auto lines = [](const std::string &all) { return std::count(all.begin(), all.end(), '\n') + 1; };
    EXPECT_EQ(lines(ErrorOf(text)), 20);
    const std::string more = ErrorOf(text + "k121 = 1\nk122 = 1\n");
    EXPECT_EQ(lines(more), 21);
    EXPECT_THAT(more, testing::HasSubstr("\nb.toml:20:1: unknown key 'k120' in the file; "));
    EXPECT_THAT(
        more, testing::EndsWith("\nb.toml: more than 20 mistakes; the others are told when these are gone"));
}

TEST(BoardFileErrors, LinesThatAreBrokenByThemselvesAreAllTold) {
    const std::string error = ErrorOf("[cpus]\ncount = \n[psus]\ncount = 1\ncount = 0x\n");
    EXPECT_THAT(error, testing::StartsWith("b.toml:2:9: broken TOML: "));
    EXPECT_THAT(error, testing::HasSubstr("\nb.toml:5:"));
    EXPECT_EQ(std::count(error.begin(), error.end(), '\n'), 1);
}

TEST(BoardFileErrors, WhatABrokenHeaderHidesIsNotGuessed) {
    const std::string error = ErrorOf("[cpus]\ncount = 1\n[psus\ncount = 2\n");
    EXPECT_THAT(error, testing::StartsWith("b.toml:3:"));
    EXPECT_EQ(error.find('\n'), error.npos);
}

TEST(BoardFileErrors, ALongTextIsCutVisibly) {
    const std::string cut = "the text \"" + std::string(200, 'x') + "...\" (300 characters)";
    EXPECT_EQ(ErrorOf("[board]\nname = '" + std::string(300, 'x') + "'\n"),
              "b.toml:2:8: 'name' in [board] is " + cut +
                  "; it must be a text of 0 to 63 printable ASCII characters");
}

TEST(BoardFileErrors, ADeviceWithoutEndIsRefused) {
    EXPECT_EQ(FileError("/dev/zero"), "/dev/zero: has more than 16 MB; give the path of a board file such as "
                                      "boards/two_socket_2u.toml");
}

TEST(BoardFileErrors, BrokenTomlIsOneLineWithItsPlace) {
    const std::string error = ErrorOf("[cpus]\ncount = \n[psus]\n");
    EXPECT_THAT(error, testing::StartsWith("b.toml:2:9: broken TOML: "));
    EXPECT_THAT(error, testing::EndsWith("; write key = value, [table] and [[table]] lines"));
    EXPECT_EQ(error.find('\n'), error.npos);
}

TEST(BoardFileErrors, AKeyGivenTwiceIsBrokenToml) {
    const std::string error = ErrorOf("[cpus]\ncount = 1\ncount = 2\n");
    EXPECT_THAT(error, testing::StartsWith("b.toml:3:"));
    EXPECT_THAT(error, testing::EndsWith("; give every key and every table once"));
}

// toml++ by itself asserts on the first and runs off the end of a table on the second, see simulator/toml_text.h.
TEST(BoardFileErrors, AHeaderOfADotAtTheEndIsBrokenToml) {
    const std::string path = tests::InSource("tests/board_files/broken/header_of_a_dot_at_the_end.toml");
    EXPECT_THAT(FileError(path), testing::StartsWith(path + ":3:"));
}

TEST(BoardFileErrors, AValueThatBeginsBeyondAsciiIsBrokenToml) {
    const std::string path = tests::InSource("tests/board_files/broken/value_beyond_ascii.toml");
    EXPECT_THAT(FileError(path), testing::StartsWith(path + ":2:"));
}

TEST(BoardFileErrors, AMissingFileIsToldWithoutALine) {
    EXPECT_EQ(FileError("/nowhere/b.toml"),
              "/nowhere/b.toml: cannot be read (No such file or directory); give the path "
              "of a board file such as boards/two_socket_2u.toml");
}

TEST(BoardFileErrors, ADirectoryIsNoBoardFile) {
    EXPECT_EQ(FileError("/tmp"),
              "/tmp: cannot be read (it is a directory); give the path of a board file such as "
              "boards/two_socket_2u.toml");
}

TEST(BoardFileErrors, FaultsAreCheckedWhenTheBoardIsRead) {
    EXPECT_EQ(ErrorOf("[[fault]]\ncal = 'x'\n"),
              "b.toml:2:1: unknown key 'cal' in [[fault]]; did you mean 'call'?");
}

TEST(BoardFileErrors, MoreThan32BackplanesAreTooMany) {
    std::string text;
    for (int i = 0; i < 32; ++i)
        text += "[[disks.backplane]]\n";
    EXPECT_EQ(ErrorOf(text), "no error");
    EXPECT_EQ(ErrorOf(text + "[[disks.backplane]]\n"),
              "b.toml:1:1: 'backplane' in [disks] is a list of 33 values; it "
              "must be one or more [[disks.backplane]] tables, at "
              "most 32");
}

} // namespace
