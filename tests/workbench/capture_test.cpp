// SPDX-License-Identifier: GPL-3.0-or-later
//
// Captures that are put together here, byte by byte as docs/capture.md says it: read, cut, damaged, and made a board.
#include <algorithm>

#include <gmock/gmock.h>

#include "base/errors.h"
#include "capture/block.h"
#include "replay/captured_board.h"
#include "replay/player.h"

namespace {

using namespace workbench;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

std::string Le(uint64_t value, unsigned size) {
    std::string out;
    for (unsigned i = 0; i < size; ++i)
        out += static_cast<char>(value >> (8 * i));
    return out;
}

uint32_t Sum(const std::string &words) {
    uint32_t sum = 0x811C9DC5;
    for (size_t at = 0; at < words.size(); at += 4) {
        uint32_t word = 0;
        for (unsigned i = 0; i < 4; ++i)
            word |= uint32_t{static_cast<uint8_t>(words[at + i])} << (8 * i);
        sum = (sum ^ word) * 0x01000193;
    }
    return sum;
}

std::string Header(unsigned format = 1, unsigned pointer = 4, unsigned order = 1) {
    const std::string head = "OXACAPT\n" + Le(format, 2) + Le(pointer, 1) + Le(order, 1);
    return head + Le(Sum(head), 4);
}

// What runs in each thread: nothing, or in the first one the call of this number.
std::string Running(unsigned number = 0) {
    return Le(0, 2) + Le(number, 2) + std::string(508, '\0');
}

std::string Item(unsigned kind, const std::string &content) {
    std::string length;
    size_t rest = content.size();
    for (; rest >= 0x80; rest >>= 7)
        length += static_cast<char>((rest & 0x7F) | 0x80);
    return Le(kind, 1) + length + static_cast<char>(rest) + content;
}

std::string Block(unsigned kind, unsigned number, const std::string &payload, unsigned thread = 1) {
    const std::string head = Le(payload.size(), 4) + Le(kind, 1) + Le(thread, 1) + Le(number, 2);
    const std::string filled = payload + std::string((4 - payload.size() % 4) % 4, '\0');
    return head + Le(Sum(head + filled), 4) + filled;
}

constexpr unsigned kName = 2, kData = 3, kEntryBegin = 4, kEntryEnd = 5, kCall = 6, kEnd = 9;
constexpr unsigned kUnsigned = 1, kSigned = 2, kText = 3, kBytes = 4, kNumbers = 5, kNull = 6, kRoom = 7,
                   kErrno = 8, kReturned = 10, kResult = 16;

const std::string kStart = Block(1, 0,
                                 Item(kText, "1.0.0") + Item(kText, "/usr/lib/x.so") +
                                     Item(kUnsigned, Le(7, 1)) + Item(kUnsigned, Le(4711, 2)),
                                 0);

// A call without parameters that go in: one number comes out, and the result.
std::string Query(unsigned number, const std::string &name, const std::string &out, int32_t result = 0) {
    return Block(kName, number, Item(kText, name)) +
           Block(kCall, number,
                 Item(kRoom, Le(1, 1)) + Item(kReturned, "") + out +
                     Item(kResult + kSigned, Le(static_cast<uint32_t>(result), 4)));
}

const std::string kEntry =
    Block(kName, 9, Item(kText, "isNeedRegisterHddSdr")) + Block(kEntryBegin, 9, Item(kErrno, Le(0, 4)));
const std::string kEntryBack = Block(kEntryEnd, 9, Item(kResult + kSigned, Le(1, 4)));

std::string Whole() {
    const std::string store(100, 'x');
    return Header() + Running() + kStart + kEntry +
           Query(1, "IPMI_LoadCustomID", Item(kUnsigned, Le(16, 1))) + Block(kData, 0, store) +
           Block(kName, 2, Item(kText, "sigwrap_read")) +
           Block(kCall, 2,
                 Item(kSigned, Le(5, 4)) + Item(kRoom, Le(100, 1)) + Item(kUnsigned, Le(100, 1)) +
                     Item(kReturned, "") + Item(kNumbers, Le(1, 4)) + Item(kResult + kSigned, Le(100, 4)) +
                     Item(kErrno, Le(4, 4))) +
           kEntryBack + Block(kEnd, 0, "", 0);
}

std::string Refusal(const std::string &bytes) {
    try {
        ParseCapture("x.cap", bytes);
        return "";
    } catch (const InputError &error) {
        return error.what();
    }
}

TEST(Capture, IsReadAsItStands) {
    const Capture capture = ParseCapture("x.cap", Whole());
    EXPECT_EQ(capture.version, "1.0.0");
    EXPECT_EQ(capture.library, "/usr/lib/x.so");
    EXPECT_EQ(capture.process, 4711u);
    EXPECT_EQ(capture.pointer_size, 4u);
    EXPECT_TRUE(capture.ended);
    EXPECT_THAT(capture.torn, IsEmpty());
    ASSERT_THAT(capture.entries, SizeIs(1));
    const CapturedEntry &entry = capture.entries[0];
    EXPECT_EQ(CallText(entry), "isNeedRegisterHddSdr()");
    EXPECT_EQ(AnswerText(entry), "1");
    EXPECT_EQ(entry.error, 0);
    ASSERT_THAT(entry.calls, SizeIs(2));
    EXPECT_EQ(AnswerText(entry.calls[0]), "0, 16");
    EXPECT_EQ(CallText(entry.calls[1]), "sigwrap_read(5, 100)");
    EXPECT_EQ(entry.calls[1].out.at(0).Bytes(), std::string(100, 'x'));
    EXPECT_EQ(entry.calls[1].error, 4);
}

TEST(Capture, NumbersKeepTheirSign) {
    const std::string bytes = Header() + Running() + kStart + kEntry +
                              Query(1, "HAL_GetCpuType", Item(kSigned, Le(0xFFFFFFFE, 4)), -7);
    const Capture capture = ParseCapture("x.cap", bytes);
    EXPECT_EQ(AnswerText(capture.entries.at(0).calls.at(0)), "-7, -2");
}

TEST(Capture, ANullPointerAndAnUnknownKindOfItemAreTold) {
    const std::string start =
        Header() + Running() + kStart + Block(kName, 9, Item(kText, "checkSensorExist"));
    EXPECT_EQ(CallText(ParseCapture("x.cap", start + Block(kEntryBegin, 9, Item(kNull, ""))).entries.at(0)),
              "checkSensorExist(null)");
    EXPECT_THAT(ParseCapture("x.cap", start + Block(kEntryBegin, 9, Item(12, ""))).torn,
                HasSubstr("an item of the unknown kind 12"));
}

TEST(Capture, WhatIsNoneIsRefusedInOneLine) {
    EXPECT_EQ(Refusal(""), "x.cap: no capture (it does not begin with OXACAPT)");
    EXPECT_EQ(Refusal("OXACAPT\n\1"), "x.cap: the capture ends within its header");
    EXPECT_EQ(Refusal(Header(2) + Running()), "x.cap: a capture of format 2; this program reads up to 1");
    EXPECT_EQ(Refusal(Header(1, 4, 2) + Running()),
              "x.cap: byte 11: a capture of a machine with another byte order");
    std::string damaged = Header() + Running();
    damaged[9] ^= 1;
    EXPECT_EQ(Refusal(damaged),
              "x.cap: byte 12: the header of the capture is damaged (its checksum is another)");
}

TEST(Capture, ZerosBehindTheLastBlockAreAFileThatStillGrows) {
    const Capture capture =
        ParseCapture("x.cap", Header() + Running() + kStart + kEntry + std::string(5000, '\0'));
    EXPECT_THAT(capture.torn, IsEmpty());
    EXPECT_FALSE(capture.ended);
    EXPECT_FALSE(capture.entries.at(0).ended);
}

TEST(Capture, EveryCutIsReadUpToTheCut) {
    const std::string whole = Whole();
    const Capture all = ParseCapture("x.cap", whole);
    const size_t first = Header().size() + Running().size();
    for (size_t size = first; size < whole.size(); ++size) {
        const Capture cut = ParseCapture("x.cap", whole.substr(0, size));
        EXPECT_LE(cut.bytes, size);
        EXPECT_EQ(cut.torn.empty(), cut.bytes == size) << size;
        EXPECT_FALSE(cut.ended);
        ASSERT_LE(cut.entries.size(), 1u);
        for (size_t i = 0; !cut.entries.empty() && i < cut.entries[0].calls.size(); ++i)
            EXPECT_EQ(CallText(cut.entries[0].calls[i]), CallText(all.entries[0].calls[i]));
    }
    for (size_t size = 0; size < first; ++size)
        EXPECT_NE(Refusal(whole.substr(0, size)), "") << size;
}

TEST(Capture, EveryChangedBitIsNoticedWhereItStands) {
    const std::string whole = Whole();
    for (size_t at = Header().size() + Running().size(); at < whole.size(); ++at)
        for (unsigned bit = 0; bit < 8; ++bit) {
            std::string changed = whole;
            changed[at] = static_cast<char>(changed[at] ^ (1 << bit));
            const Capture read = ParseCapture("x.cap", changed);
            EXPECT_LE(read.bytes, at) << at;
            EXPECT_FALSE(read.ended) << at;
        }
}

// The word in place of a block: top bit, 7 bits of checksum, thread, function.
std::string Again(unsigned thread, unsigned function) {
    unsigned check = 0x55;
    for (unsigned rest = thread << 16 | function; rest != 0; rest >>= 7)
        check ^= rest & 0x7F;
    return Le(1u << 31 | check << 24 | thread << 16 | function, 4);
}

TEST(Capture, ACallThatIsTheSameOnceMoreIsAWord) {
    const std::string start = Header() + Running() + kStart + kEntry;
    const std::string once = Query(1, "HAL_GetCpuType", Item(kUnsigned, Le(3, 1)));
    const Capture capture = ParseCapture("x.cap", start + once + Again(1, 1) + Again(1, 1) + kEntryBack);
    EXPECT_THAT(capture.torn, IsEmpty());
    ASSERT_THAT(capture.entries.at(0).calls, SizeIs(3));
    EXPECT_EQ(AnswerText(capture.entries[0].calls[2]), "0, 3");
    for (unsigned bit = 0; bit < 32; ++bit) {
        std::string changed = Again(1, 1);
        changed[bit / 8] = static_cast<char>(changed[bit / 8] ^ (1 << bit % 8));
        EXPECT_THAT(ParseCapture("x.cap", start + once + changed + kEntryBack).torn, Not(IsEmpty())) << bit;
    }
}

TEST(Capture, ACallThatDidNotReturnIsKnownFromWhatRuns) {
    const std::string bytes =
        Header() + Running(2) + kStart + kEntry + Block(kName, 1, Item(kText, "HAL_GetCpuType"));
    const Capture capture = ParseCapture("x.cap", bytes + std::string(64, '\0'));
    ASSERT_THAT(capture.entries.at(0).calls, SizeIs(1));
    EXPECT_EQ(CallText(capture.entries[0].calls[0]), "HAL_GetCpuType()");
    EXPECT_EQ(AnswerText(capture.entries[0].calls[0]), "did not return");
}

TEST(Capture, ADataBlockIsThereBeforeItIsNamed) {
    const std::string bytes = Header() + Running() + kStart + kEntry +
                              Block(kName, 2, Item(kText, "sigwrap_read")) +
                              Block(kCall, 2, Item(kNumbers, Le(1, 4)) + Item(kReturned, ""));
    EXPECT_THAT(ParseCapture("x.cap", bytes).torn, HasSubstr("data block 1 is named before it is there"));
}

TEST(Capture, AnItemDoesNotReachBeyondItsBlock) {
    const std::string name = Header() + Running() + kStart;
    for (const std::string &payload :
         {Le(3, 1) + Le(9, 1) + "short", Le(3, 1) + std::string(6, '\xFF'), Le(3, 1)})
        EXPECT_THAT(ParseCapture("x.cap", name + Block(kName, 1, payload)).torn, HasSubstr("byte 572: "))
            << payload;
}

TEST(Capture, CallsAndEntriesEndAsTheyBegan) {
    const std::string start = Header() + Running() + kStart;
    EXPECT_THAT(ParseCapture("x.cap", start + Query(1, "HAL_GetCpuType", "")).torn,
                HasSubstr("HAL_GetCpuType stands outside an entry of its thread"));
    EXPECT_THAT(ParseCapture("x.cap", start + kEntry + kEntryBack + kEntryBack).torn,
                HasSubstr("isNeedRegisterHddSdr stands outside an entry"));
    EXPECT_THAT(ParseCapture("x.cap", start + Block(kEntryBegin, 77, "")).torn,
                HasSubstr("function 77 has no name"));
}

TEST(Capture, AFewBytesDoNotBecomeGigabytes) {
    std::string numbers;
    for (unsigned i = 0; i < 4000; ++i)
        numbers += Le(1, 4);
    std::string bytes = Header() + Running() + kStart + kEntry + Block(kData, 0, std::string(16384, 'x')) +
                        Block(kName, 2, Item(kText, "sigwrap_read"));
    for (unsigned i = 0; i < 6; ++i)
        bytes += Block(kCall, 2, Item(kNumbers, numbers) + Item(kReturned, "") + Item(kErrno, Le(i, 4)));
    EXPECT_THAT(ParseCapture("x.cap", bytes).torn, HasSubstr("longer than any capture's"));
}

TEST(Capture, ACallThatIsToldManyTimesDoesNotBecomeGigabytes) {
    std::string bytes = Header() + Running() + kStart + kEntry +
                        Block(kName, 2, Item(kText, "sspFailedStat")) +
                        Block(kCall, 2, Item(kText, std::string(1 << 20, 'x')) + Item(kReturned, ""));
    for (unsigned i = 0; i < 300; ++i)
        bytes += Again(1, 2);
    EXPECT_THAT(ParseCapture("x.cap", bytes).torn, HasSubstr("longer than any capture's"));
}

TEST(Capture, WhatIsNotPrintableDoesNotReachATerminal) {
    const std::string bytes = Header() + Running() + kStart + kEntry +
                              Block(kName, 2, Item(kText, "sspFailedStat")) +
                              Block(kCall, 2, Item(kText, "\x1B[31mred\r\xFF") + Item(kReturned, ""));
    EXPECT_EQ(CallText(ParseCapture("x.cap", bytes).entries.at(0).calls.at(0)),
              "sspFailedStat(\"?[31mred??\")");
}

// ---- what comes out of a replay -----------------------------------------------------------------------------

TEST(Replay, APassOfTheSameCountButOtherLengthsIsNotTheSame) {
    CapturedEntry pass;
    pass.name = "OXA_AddDefaultStaticSensor";
    pass.ended = true;
    const auto nothing = std::make_shared<const std::string>();
    pass.out = {{workbench::Item::Kind::kBytes, 0, nothing},
                {workbench::Item::Kind::kBytes, 0, nothing},
                {workbench::Item::Kind::kNumber, 1, nullptr}};
    std::vector<ReplayDifference> differences;
    uint8_t slot[64] = {}, entry[32] = {};
    uint16_t count = 1;
    const parts::Part out[] = {parts::Out(slot, sizeof slot), parts::Out(entry, sizeof entry),
                               parts::Out(&count)};
    Player(pass, 1, differences).FinishDriver(out, 3);
    ASSERT_THAT(differences, SizeIs(2));
    EXPECT_EQ(differences[0].where + ": " + differences[0].what,
              "OXA_AddDefaultStaticSensor, parameter 1: 0 bytes recorded, 64 now");
    EXPECT_EQ(differences[1].what, "0 bytes recorded, 32 now");
}

// ---- as the recorder writes it ----------------------------------------------------------------------------------

// What a process that dies now leaves: nothing but zeros behind its last block, which a reader takes for the end.
TEST(RecordedBlock, NothingStandsBehindIt) {
    for (const uint32_t size : {1u, 2u, 4u, 8u})
        for (const bool again : {false, true}) {
            alignas(4) uint8_t room[64] = {};
            oxa::capture::Block block(room, oxa::capture::kCall, 1, 7);
            block.AddSigned(kResult + kSigned, -2, size);
            const uint32_t end = again ? block.EndAgain() : block.End();
            EXPECT_EQ(end, again ? 4u : 12u + (2 + size + 3) / 4 * 4);
            EXPECT_EQ(std::count(room + end, room + sizeof room, 0), static_cast<long>(sizeof room - end))
                << size;
        }
}

// ---- the machine behind it --------------------------------------------------------------------------------------

std::string BoardOf(const std::string &calls) {
    const Capture capture =
        ParseCapture("x.cap", Header() + Running() + kStart + kEntry + calls + kEntryBack);
    const std::string text = CapturedBoardText(capture, MachineOf(capture));
    sim::LoadBoardText(text, "x.toml"); // a board that can be read
    return text.substr(text.find('\n') + 1);
}

TEST(CapturedBoard, AnswersBecomeKeysAndDefaultsAreLeftOut) {
    EXPECT_EQ(BoardOf(Query(1, "HAL_GetCpuMaxCount", Item(kUnsigned, Le(2, 1))) +
                      Query(2, "HAL_GetCpuType", Item(kUnsigned, Le(0, 1))) +
                      Query(3, "get_default_board_id", Item(kUnsigned, Le(0x550F, 2)))),
              "\n[board]\nid = 0x550F\n\n[cpus]\ncount = 2\n");
}

TEST(CapturedBoard, ACallThatFailedBecomesAFault) {
    EXPECT_EQ(BoardOf(Query(1, "HAL_GetPsuMaxCount", Item(kUnsigned, Le(0xA5, 1)), -5)),
              "\n[[fault]]\ncall = \"HAL_GetPsuMaxCount\"\nresult = -5\n");
}

TEST(CapturedBoard, WhatIsAnsweredOtherwiseLaterIsListed) {
    const std::string text = BoardOf(Query(1, "HAL_GetCpuMaxCount", Item(kUnsigned, Le(2, 1))) +
                                     Query(1, "HAL_GetCpuMaxCount", Item(kUnsigned, Le(4, 1))));
    EXPECT_THAT(text, HasSubstr("# not said here: HAL_GetCpuMaxCount(): answered 0, 2 first, 0, 4 later\n"));
    EXPECT_THAT(text, HasSubstr("count = 2\n"));
}

// The name of a DIMM, which the library asks by its number.
std::string DimmName(unsigned dimm, const std::string &name) {
    return Block(kName, 3, Item(kText, "HAL_GetDimmSensorNameIndex")) +
           Block(kCall, 3,
                 Item(kBytes, Le(dimm, 8)) + Item(kRoom, Le(32, 1)) + Item(kUnsigned, Le(32, 1)) +
                     Item(kReturned, "") + Item(kText, name) + Item(kResult + kSigned, Le(0, 4)));
}

TEST(CapturedBoard, AnswersThatNoBoardFileCanSayAreListedAndTheOthersStay) {
    EXPECT_EQ(
        BoardOf(Query(1, "HAL_GetDimmMaxCount", Item(kUnsigned, Le(3, 1))) + DimmName(0, "A\xFF") +
                DimmName(1, "B7") + DimmName(2, "")),
        "# not said here: HAL_GetDimmSensorNameIndex(00 00 00 00 00 00 00 00, 32): answered 0, \"A?\", which no "
        "board file can say\n"
        "# not said here: HAL_GetDimmSensorNameIndex(02 00 00 00 00 00 00 00, 32): answered 0, \"\", which no "
        "board file can say\n"
        "\n[dimms]\ncount = 3\nnames = [\"A0\", \"B7\"]\n");
}

} // namespace
