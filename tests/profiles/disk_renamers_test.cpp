// SPDX-License-Identifier: GPL-3.0-or-later
//
// The three rewriters of disk sensor names.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "oxa/profiles/astrel.h"
#include "oxa/profiles/pellago.h"
#include "oxa/profiles/quorral.h"
#include "support/static_pass.h"

namespace {

using namespace tests;
using testing::ElementsAre;

struct Rewriter {
    const char *name;
    int32_t (*call)(uint8_t *, uint8_t);
    const char *status, *temp; // how its names begin
    const char *temp_end;
    bool subtracts;
    const char *null_text;
};
inline std::ostream &operator<<(std::ostream &out, const Rewriter &rewriter) {
    return out << rewriter.name;
}
const Rewriter kRewriters[] = {
    {"Astrel", Astrel_ModifyDiskSensorName, "Disk", "Disk", "_Temp", true,
     "Astrel_ModifyDiskSensorName failed! pucSDRRec == NULL."},
    {"Pellago", Pellago_ModifyDiskSensorName, "Disk", "Disk", "_Temp", false,
     "Pellago_ModifyDiskSensorName failed! The input parameter pucSDRRec is null."},
    {"Quorral", Quorral_ModifyDiskSensorName, "HDD", "NVME", "_Temp", true,
     "Quorral_ModifyDiskSensorName failed! pucSDRRec == NULL."},
};
class DiskNames : public testing::TestWithParam<Rewriter> {};
INSTANTIATE_TEST_SUITE_P(Rewriters, DiskNames, testing::ValuesIn(kRewriters),
                         [](const auto &info) { return std::string(info.param.name); });

// A compact record whose every byte is known, name field filled with 'x'.
Bytes Compact(uint8_t instance, uint8_t id_code = 0xCC) {
    Bytes sdr(64, 0x11);
    sdr[3] = 2;
    sdr[4] = 39;
    sdr[8] = 4;
    sdr[9] = instance;
    sdr[31] = id_code;
    std::fill(sdr.begin() + 32, sdr.begin() + 48, 'x');
    return sdr;
}
Bytes Full(uint8_t instance, uint8_t entity, const std::string &name, uint8_t id_code = 0xCC) {
    Bytes sdr(64, 0x22);
    sdr[3] = 1;
    sdr[4] = 55;
    sdr[8] = entity;
    sdr[9] = instance;
    sdr[47] = id_code;
    std::fill(sdr.begin() + 48, sdr.end(), 'x');
    std::copy(name.begin(), name.end(), sdr.begin() + 48);
    return sdr;
}
// What a rewritten record must be: instance, name and the two lengths; sixteen bytes of a zeroed buffer.
Bytes Renamed(Bytes sdr, uint8_t instance, const std::string &name) {
    const size_t at = sdr[3] == 2 ? 31 : 47;
    sdr[9] = instance;
    sdr[4] = static_cast<uint8_t>((sdr[3] == 2 ? 27 : 43) + name.size());
    sdr[at] = static_cast<uint8_t>((sdr[at] & 0xC0) | name.size());
    for (size_t i = 0; i < 16; ++i)
        sdr[at + 1 + i] = i < name.size() ? static_cast<uint8_t>(name[i]) : 0;
    return sdr;
}

void Expect(const Rewriter &rewriter, Bytes sdr, uint8_t offset, const Bytes &expected) {
    EXPECT_EQ(rewriter.call(sdr.data(), offset), 0);
    EXPECT_TRUE(SameSdr(expected, sdr));
}

TEST_P(DiskNames, AMissingRecordIsAnErrorAndGivesMinusOne) {
    sim::Start({});
    EXPECT_EQ(GetParam().call(nullptr, 3), -1);
    ASSERT_EQ(sim::Trace().size(), 2u);
    EXPECT_EQ(sim::Trace()[0].kind, sim::Kind::kStat);
    EXPECT_THAT(Lines(), ElementsAre(Line{'E', 42, GetParam().null_text}));
    EXPECT_EQ(sim::Trace()[1].function, std::string(GetParam().name) + "_ModifyDiskSensorName");
    EXPECT_THAT(sim::Violations(), testing::IsEmpty());
}

TEST_P(DiskNames, ACompactRecordGetsTheOffsetTheConversionAndTheName) {
    const std::string status = GetParam().status;
    sim::Board board;
    board.disks.conversion = {{7, 40}};
    sim::Start(board);
    Expect(GetParam(), Compact(3), 2, Renamed(Compact(3), 5, status + "5_Status"));
    Expect(GetParam(), Compact(3), 4, Renamed(Compact(3), 40, status + "40_Status")); // converted in place
    Expect(GetParam(), Compact(7), 0, Renamed(Compact(7), 40, status + "40_Status"));
    EXPECT_EQ(sim::CountCalls("oxa_CustomSlotConversion"), 3u);
}

TEST_P(DiskNames, AnOffsetThatWouldWrapIsNotAdded) {
    const std::string status = GetParam().status;
    sim::Start({});
    Expect(GetParam(), Compact(250), 10, Renamed(Compact(250), 250, status + "250_Status"));
    Expect(GetParam(), Compact(250), 5, Renamed(Compact(250), 255, status + "255_Status"));
    Expect(GetParam(), Compact(250), 6, Renamed(Compact(250), 250, status + "250_Status"));
    Expect(GetParam(), Compact(0), 255, Renamed(Compact(0), 255, status + "255_Status"));
}

TEST_P(DiskNames, TheTopTwoBitsOfTheLengthByteStay) {
    const std::string status = GetParam().status;
    sim::Start({});
    for (const uint8_t code : {0x00, 0x3F, 0x40, 0x80, 0xFF})
        Expect(GetParam(), Compact(3, code), 0, Renamed(Compact(3, code), 3, status + "3_Status"));
    const Bytes nvme = Full(0x63, 4, "NVME_TEMP_03", 0x7F);
    Expect(GetParam(), nvme, 0, Renamed(nvme, 0x63, std::string(GetParam().temp) + "99_Temp"));
}

TEST_P(DiskNames, ACompactRecordByHand) {
    sim::Start({});
    Bytes sdr = Literal(
        "00 00 51 02 29 20 00 00 04 03 63 C0 0D 6F 01 00 01 00 47 00 C0 00 00 01 00 00 00 00 00 03 00 CE 'HDD_STATUS_003' FF FF 00x16");
    EXPECT_EQ(GetParam().call(sdr.data(), 9), 0);
    const std::string name = std::string(GetParam().status) + "12_Status"; // 13 or 12 characters
    EXPECT_EQ(sdr[4], name.size() == 13 ? 0x28 : 0x27);
    EXPECT_EQ(sdr[9], 12);
    EXPECT_EQ(sdr[29], 3); // the slot byte stays
    EXPECT_EQ(
        Hex({sdr.begin() + 31, sdr.begin() + 48}),
        Hex(name.size() == 13 ? Literal("CD 'Disk12_Status' 00 00 00") : Literal("CC 'HDD12_Status' 00x4")));
}

TEST_P(DiskNames, AnNvmeRecordOfTheDiskEntityKeepsItsInstance) {
    const std::string temp = GetParam().temp;
    sim::Board board;
    board.disks.conversion = {{9, 77}};
    sim::Start(board);
    const Bytes sdr = Full(3, 4, "NVME_TEMP_03");
    Expect(GetParam(), sdr, 0, Renamed(sdr, 3, temp + "3_Temp"));
    Expect(GetParam(), sdr, 2, Renamed(sdr, 5, temp + "5_Temp"));
    Expect(GetParam(), sdr, 6, Renamed(sdr, 77, temp + "77_Temp"));
    const Bytes high = Full(0x63, 4, "NVME_TEMP_99");
    Expect(GetParam(), high, 0, Renamed(high, 0x63, temp + "99_Temp"));
    const Bytes top = Full(250, 4, "NVME_TEMP_03");
    Expect(GetParam(), top, 10, Renamed(top, 250, temp + "250_Temp"));
}

TEST_P(DiskNames, OnAnotherEntityNinetySixIsSubtractedButByPellago) {
    const std::string temp = GetParam().temp;
    const auto name = [&](int number) { return temp + std::to_string(number) + "_Temp"; };
    const bool subtracts = GetParam().subtracts;
    sim::Start({});
    const Bytes sdr = Full(0x63, 0x0B, "NVME_TEMP_03");
    Expect(GetParam(), sdr, 0, subtracts ? Renamed(sdr, 3, name(3)) : Renamed(sdr, 0x63, name(99)));
    Expect(GetParam(), sdr, 10, subtracts ? Renamed(sdr, 13, name(13)) : Renamed(sdr, 0x6D, name(109)));
    // modulo 256, before the wrap test: 0x50 becomes 0xF0 (240)
    const Bytes low = Full(0x50, 0x0B, "NVME_TEMP_03");
    Expect(GetParam(), low, 0, subtracts ? Renamed(low, 0xF0, name(240)) : Renamed(low, 0x50, name(80)));
    Expect(GetParam(), low, 16, subtracts ? Renamed(low, 0xF0, name(240)) : Renamed(low, 0x60, name(96)));
    Expect(GetParam(), low, 15, subtracts ? Renamed(low, 0xFF, name(255)) : Renamed(low, 0x5F, name(95)));
    // 250 becomes 154, so that an offset of 10 fits
    const Bytes top = Full(250, 0x0B, "NVME_TEMP_03");
    Expect(GetParam(), top, 10, subtracts ? Renamed(top, 164, name(164)) : Renamed(top, 250, name(250)));
}

TEST_P(DiskNames, ANameThatCannotBePrintedLeavesTheRecordAsItIs) {
    sim::Start({});
    sim::AddFault({.call = "snprintf_s"});
    Expect(GetParam(), Compact(3), 2, Compact(3));
    Expect(GetParam(), Full(3, 4, "NVME_TEMP_03"), 2, Full(3, 4, "NVME_TEMP_03"));
}

// The copy that fails leaves rubbish in the name; lengths and instance stay.
TEST_P(DiskNames, ANameThatCannotBeCopiedLeavesTheLengthsAndTheInstance) {
    sim::Start({});
    sim::AddFault({.call = "memcpy_s"});
    Bytes compact = Compact(3), full = Full(3, 4, "NVME_TEMP_03");
    std::fill_n(compact.begin() + 32, 16, uint8_t{0xA5});
    std::fill_n(full.begin() + 48, 16, uint8_t{0xA5});
    Expect(GetParam(), Compact(3), 2, compact);
    Expect(GetParam(), Full(3, 4, "NVME_TEMP_03"), 2, full);
}

TEST_P(DiskNames, OnlyTheWholePrefixCounts) {
    const std::string temp = GetParam().temp;
    sim::Start({});
    for (const char *name :
         {"NVME_TEMP", "NVME_TEMPx01", "nvme_temp_01", "xNVME_TEMP_01", "INPUT_TEMP", "NVME3_Temp"})
        Expect(GetParam(), Full(3, 4, name), 2, Full(3, 4, name));
    const Bytes bare = Full(3, 4, "NVME_TEMP_"); // nothing behind it
    Expect(GetParam(), bare, 0, Renamed(bare, 3, temp + "3_Temp"));
}

TEST_P(DiskNames, AnyOtherRecordIsLeftAsItIs) {
    sim::Start({});
    for (const uint8_t type : {0x00, 0x03, 0x11, 0xC0, 0xFF}) {
        Bytes sdr = Full(3, 4, "NVME_TEMP_03");
        sdr[3] = type;
        Expect(GetParam(), sdr, 2, sdr);
    }
    EXPECT_EQ(sim::CountCalls("oxa_CustomSlotConversion"), 0u);
    EXPECT_TRUE(Lines().empty());
}

TEST_P(DiskNames, TheProfilesOwnRecordsAreRewrittenWhole) {
    sim::Board board = BaseBoard();
    board.disks.backplanes = {{2, 1, "Front"}};
    board.disks.nvme_slots = {2};
    const Outcome outcome = RunPass(FindProfile(GetParam().name).driver, board);
    const Record *nvme = outcome.Find("NVME_TEMP_02");
    const Record *status = outcome.Find(std::string(GetParam().status) + "2_Status");
    ASSERT_NE(nvme, nullptr);
    ASSERT_NE(status, nullptr);
    Expect(GetParam(), nvme->sdr, 8, Renamed(nvme->sdr, 10, std::string(GetParam().temp) + "10_Temp"));
    Expect(GetParam(), status->sdr, 8,
           Renamed(status->sdr, 10, std::string(GetParam().status) + "10_Status"));
}

} // namespace
