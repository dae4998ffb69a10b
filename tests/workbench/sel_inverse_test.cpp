// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the library writes is read back: over generated arguments, every record of every builder names its
// builder and gives its arguments back, but for the bits that the record does not hold.  Those are listed
// here by hand.
#include <algorithm>
#include <functional>
#include <map>
#include <random>

#include <gmock/gmock.h>

#include "events/sel_calls.h"
#include "simulator/simulator.h"
#include "support/bytes.h"

namespace {

using namespace workbench;
using testing::Contains;
using Words = std::vector<uint32_t>;

constexpr uint32_t kByte = 0xFF, kNibble = 0x0F, kFlag = 1, kWord = 0xFFFFFFFF, kLost = 0;

bool In(uint32_t value, std::initializer_list<uint32_t> list) {
    return std::find(list.begin(), list.end(), value) != list.end();
}

// Per builder: which bits of each argument stand in the record.
using Kept = std::function<Words(const Words &)>;
const std::map<std::string, Kept> kKept = {
    {"addMemPredictiveFault",
     [](const Words &) {
         return Words{kByte, kFlag};
     }},
    {"addPOSTErrorSel", [](const Words &) { return Words{}; }},
    {"addS0PowerButtonSel", [](const Words &) { return Words{}; }},
    {"addGpuSlotErrorSel", [](const Words &) { return Words{kByte}; }},
    {"addMinorCDUFaultSel",
     [](const Words &) {
         return Words{kByte, kFlag};
     }},
    {"addMajorCDUFaultSel",
     [](const Words &) {
         return Words{kByte, kByte, kFlag};
     }},
    {"addNETPortSEL",
     [](const Words &) {
         return Words{kByte, kByte, kByte, kNibble, kNibble, kNibble, kNibble, kLost, kFlag};
     }},
    {"addControllerSEL",
     [](const Words &a) {
         return Words{kByte, kByte, kByte, In(a[2], {18, 19}) ? kFlag : kLost};
     }},
    {"addDiskSEL",
     [](const Words &a) {
         const bool numbered = In(a[2], {19, 21, 24, 27, 28, 29, 30, 31});
         return Words{numbered ? kLost : kByte, kWord, In(a[2], {27, 28, 29}) ? kLost : kByte, kFlag};
     }},
    {"addLDSEL",
     [](const Words &a) {
         return Words{a[1] == 131 ? kLost : kByte, kByte, kByte, kByte, kFlag};
     }},
    {"addPEMSEL",
     [](const Words &a) {
         return Words{kByte, kByte, a[1] >= 17 && a[1] <= 34 ? kFlag : kLost};
     }},
    {"addUsageSEL",
     [](const Words &) {
         return Words{kByte, kByte, kByte, kByte, kFlag};
     }},
    {"addSELAlarm",
     [](const Words &a) {
         const bool placed = In(a[0], {29, 30, 55}) || (a[0] == 144 && In(a[1], {0, 1, 32}));
         return Words{kByte, kByte, placed ? kFlag : kLost};
     }},
    {"addCPUError",
     [](const Words &a) {
         const bool high = a[3] == 11 && a[2] != 0xFF;
         return Words{kByte, high ? kFlag : kLost, high ? 0x7Fu : kByte, kByte, kFlag};
     }},
    {"addMemError",
     [](const Words &) {
         return Words{kByte, kByte, kByte, kFlag};
     }},
    {"addI2CStatusSel",
     [](const Words &) {
         return Words{kByte, kFlag, kByte, 3};
     }},
    {"addTrapSELAlarm",
     [](const Words &) {
         return Words{kByte, kByte, kByte, kFlag};
     }},
    {"addPowerDropSEL",
     [](const Words &) {
         return Words{kNibble, kNibble, kByte, kFlag};
     }},
    {"addLeakageSel",
     [](const Words &a) {
         const uint32_t told = In(a[0], {1, 2, 3}) ? kNibble : kLost;
         return Words{told, kLost, told};
     }},
};

// Events that only one customer's machine reports.
uint32_t ProfileFor(const std::string &name, const Words &arguments) {
    if (name == "addPowerDropSEL")
        return CUSTOM_ID_VORANA;
    if (name == "addLeakageSel" && arguments[1] == 1)
        return CUSTOM_ID_LUMORA;
    if (name == "addMemError" && arguments[1] == 14)
        return CUSTOM_ID_KESTRIN;
    return CUSTOM_ID_DEFAULT;
}

sim::Board Directory(std::mt19937 &random) {
    sim::Board board;
    board.inlet_temperature = static_cast<uint8_t>(random());
    board.sensor_numbers.by_key["1E 0A 03 00 00"] = 0x5E;
    board.sensor_numbers.power_fault = random() & 0xFF;
    for (uint32_t n = 0; n < 40; n += 1 + random() % 3) { // with gaps: some lookups fail
        const std::string disk = tests::Hex({0x04, 0x0D, 0x6F, static_cast<uint8_t>(n), 0});
        board.sensor_numbers.by_key[disk] = random() & 0xFF;
        board.sensor_numbers.cpu[n] = random() & 0xFF;
        board.sensor_numbers.dimm[n] = random() & 0xFF;
        board.sensor_numbers.power_module[n] = random() & 0xFF;
    }
    return board;
}

// Small numbers, numbers that the rules name, any byte, and now and then a word that is no byte.
uint32_t AnyValue(std::mt19937 &random) {
    static constexpr uint32_t kNamed[] = {0,   1,   2,   3,   9,   11,  12,  13,  14,  15,  16,
                                          17,  18,  19,  20,  21,  22,  24,  25,  26,  27,  28,
                                          29,  30,  31,  32,  33,  34,  35,  55,  128, 129, 130,
                                          131, 132, 144, 254, 255, 256, 257, 285, 300, 511, 0xFFFFFFFF};
    switch (random() % 8) {
    case 0:
        return random();
    case 1:
    case 2:
        return random() & 0xFF;
    case 3:
        return random() % 40;
    default:
        return kNamed[random() % std::size(kNamed)];
    }
}

Words AnyArguments(const BuilderView &builder, std::mt19937 &random) {
    Words out;
    for (size_t n = 0; n < ArgumentCount(builder); ++n) {
        const oxa::sel::Item &item = builder.ptItem[n];
        const bool flag = item.eValue == oxa::sel::kAssertFlag || item.eValue == oxa::sel::kEventDir;
        const uint32_t value = flag ? random() & 1 : AnyValue(random);
        out.push_back(item.ucBits == 8 ? value & 0xFF : value);
    }
    return out;
}

SelRecord Written(const BuilderView &builder, const Words &arguments, std::mt19937 &random) {
    sim::Board board = Directory(random);
    board.custom_id = ProfileFor(BuilderName(builder), arguments);
    sim::Start(std::move(board));
    EXPECT_EQ(CallBuilder(builder, arguments), 0u);
    SelBytes bytes{};
    EXPECT_EQ(sim::EventLog().size(), 1u);
    if (sim::EventLog().size() == 1)
        std::copy_n(sim::EventLog()[0].begin(), SEL_RECORD_SIZE, bytes.begin());
    return WholeRecord(bytes);
}

bool Allows(const FoundValue &found, uint32_t value) {
    return std::any_of(found.possible.begin(), found.possible.end(),
                       [value](const Interval &range) { return range.from <= value && value <= range.to; });
}

// The candidate is this call: every argument agrees in all bits that the record holds, and only those are
// claimed.
bool IsCall(const Candidate &candidate, const BuilderView &builder, const Words &arguments) {
    if (candidate.builder != &builder)
        return false;
    const Words kept = kKept.at(BuilderName(builder))(arguments);
    for (size_t n = 0; n < arguments.size(); ++n) {
        const FoundValue &found = candidate.values[n];
        const bool agrees =
            kept[n] == kLost ? found.known == 0 && Allows(found, arguments[n])
                             : found.known == kept[n] && (found.value & kept[n]) == (arguments[n] & kept[n]);
        if (!agrees)
            return false;
    }
    return true;
}

// Arguments that fit into what the record holds come back as they were.
bool ComesBackWhole(const Candidate &candidate, const Words &arguments) {
    const Words kept = kKept.at(BuilderName(*candidate.builder))(arguments);
    for (size_t n = 0; n < arguments.size(); ++n)
        if (kept[n] != kLost && (arguments[n] & ~kept[n]) == 0 && candidate.values[n].value != arguments[n])
            return false;
    return true;
}

class EveryBuilder : public testing::TestWithParam<std::string> {};

TEST_P(EveryBuilder, GivesItsArgumentsBack) {
    const BuilderView &builder = FindBuilder(GetParam());
    std::mt19937 random(20240611);
    for (int sample = 0; sample < 250; ++sample) {
        const Words arguments = AnyArguments(builder, random);
        SCOPED_TRACE(CallText(builder, arguments));
        const SelRecord record = Written(builder, arguments, random);
        const std::vector<Candidate> candidates = Decode(record);
        const auto found =
            std::find_if(candidates.begin(), candidates.end(),
                         [&](const Candidate &candidate) { return IsCall(candidate, builder, arguments); });
        ASSERT_NE(found, candidates.end());
        EXPECT_TRUE(ComesBackWhole(*found, arguments));
        for (const Candidate &candidate : candidates) // none of them is a guess
            EXPECT_EQ(Composed(candidate), record.bytes) << BuilderName(*candidate.builder);
    }
}

// The library itself, called as the record says, writes the record again.
TEST_P(EveryBuilder, IsConfirmedByTheLibrary) {
    const std::map<uint32_t, std::string> names = {{CUSTOM_ID_DEFAULT, "default"},
                                                   {CUSTOM_ID_KESTRIN, "kestrin"},
                                                   {CUSTOM_ID_VORANA, "vorana"},
                                                   {CUSTOM_ID_LUMORA, "lumora"}};
    const BuilderView &builder = FindBuilder(GetParam());
    std::mt19937 random(7);
    constexpr int kSamples = 60;
    int confirmed = 0;
    for (int sample = 0; sample < kSamples; ++sample) {
        const Words arguments = AnyArguments(builder, random);
        SCOPED_TRACE(CallText(builder, arguments));
        for (const Candidate &candidate : Decode(Written(builder, arguments, random))) {
            if (!IsCall(candidate, builder, arguments))
                continue;
            ++confirmed;
            EXPECT_THAT(ProfilesThatWrite(candidate), Contains(names.at(ProfileFor(GetParam(), arguments))));
        }
    }
    EXPECT_EQ(confirmed, kSamples);
}

INSTANTIATE_TEST_SUITE_P(All, EveryBuilder, testing::ValuesIn(BuilderNames()),
                         [](const auto &info) { return info.param; });

TEST(Losses, AreListedForEveryBuilder) {
    EXPECT_EQ(kKept.size(), 19u);
    EXPECT_EQ(BuilderNames().size(), 19u);
}

// 10 C0 .. : any other entity of an alarm; FFh as message revision: nobody.
TEST(Decode, ARecordThatNobodyWritesHasNoCandidate) {
    EXPECT_TRUE(Decode(WholeRecord({0, 0, 0xC0, 0, 0, 0, 0, 16, 1, 0xFF, 0, 0, 0, 0, 0, 0})).empty());
    EXPECT_TRUE(Decode(WholeRecord({})).empty());
}

// Ids and stamps are the log's.
TEST(Decode, RecordIdAndTimeStampDoNotMatter) {
    const auto found =
        Decode(WholeRecord({0x34, 0x12, 0x02, 1, 2, 3, 4, 0x20, 0, 4, 0x1B, 0, 0x6F, 1, 9, 0}));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(BuilderName(*found[0].builder), "addGpuSlotErrorSel");
    EXPECT_EQ(found[0].values[0].value, 9u);
}

// In a record without stamp the same bytes are the slot: 01 02 03 04, most significant byte first.
TEST(Decode, TheSlotOfADiskIsAWholeWord) {
    const auto found = Decode(WholeRecord({0, 0, 0xE0, 1, 2, 3, 4, 9, 0, 4, 0x0D, 0, 0x6F, 0xA1, 0, 23}));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(CallText(*found[0].builder, {found[0].values[0].value, found[0].values[1].value,
                                           found[0].values[2].value, found[0].values[3].value}),
              "addDiskSEL entityId=9 slotNum=16909060 eventNum=23 eventDir=0");
}

// Event 286 is 1Eh in one byte, but none of 30 to 33: no types.  The number that comes back is 286, not 30.
TEST(Decode, AWordThatTheRulesCompareWholeComesBackAsAWord) {
    const auto found = Decode(WholeRecord({0, 0, 0xC0, 0, 0, 0, 0, 0x0A, 0, 4, 0x08, 0, 0, 0, 5, 30}));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(BuilderName(*found[0].builder), "addPEMSEL");
    EXPECT_EQ(found[0].values[1].value, 286u);
}

} // namespace
