// SPDX-License-Identifier: GPL-3.0-or-later
//
// The way of one record into the event log.
#include "events/event_fixture.h"

namespace {

using namespace seltest;

using Writer = Sel;

const std::vector<uint8_t> kRecord = {0x00, 0x00, 0x02, 0x00, 0x00, 0x00, 0x00, 0x20,
                                      0x00, 0x04, 0x0C, 0xA1, 0x6F, 0x0F, 0xFF, 0x10};

TEST_F(Writer, ARecordGoesOutOverOneSessionAsItIs) {
    ExpectSent(ipmi_add_sel_entry(kRecord.data()), "00 00 02 00 00 00 00 20 00 04 0C A1 6F 0F FF 10");
}

TEST_F(Writer, ASuccessWritesNoLine) {
    EXPECT_EQ(ipmi_add_sel_entry(kRecord.data()), 0u);
    ExpectLines({});
}

TEST_F(Writer, TheSessionIsOpenedForTheAdministratorWithEmptyNames) {
    EXPECT_EQ(ipmi_add_sel_entry(kRecord.data()), 0u);
    EXPECT_THAT(Calls(), ElementsAre(kSession, kAdd, kClose));
    EXPECT_THAT(CallArguments(kSession),
                ElementsAre("user=\"\" password=\"\" privilege=4 arg5=0 arg6=2 arg7=100"));
    EXPECT_THAT(CallArguments(kAdd), ElementsAre("session=1 record=\"00 00 02 00 00 00 00 20 00 04 0C A1 6F "
                                                 "0F FF 10\" arg=100"));
}

TEST_F(Writer, ANullRecordIsAnAssertionLineAndNoSession) {
    ExpectNothingSent(ipmi_add_sel_entry(nullptr), 0xFFFF);
    ExpectLines(Error("ipmi_add_sel_entry", "assertion failed: SelRec != 0", 255));
    EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(Writer, ASessionFailureIsOneErrorLineWithoutDumpAndNothingToClose) {
    FailAlways(kSession);
    EXPECT_EQ(ipmi_add_sel_entry(kRecord.data()), 0xFFFFu);
    ExpectLines(NoSession());
    EXPECT_THAT(Calls(), ElementsAre(kSession));
}

TEST_F(Writer, AFailedAddDumpsTheRecordInSeventeenLinesAndClosesTheSession) {
    FailAlways(kAdd);
    EXPECT_EQ(ipmi_add_sel_entry(kRecord.data()), 0xFFFFu);
    EXPECT_EQ(sim::Logs().size(), 17u);
    const auto warn = [](const char *text) { return Line("warn", 52, "ipmi_add_sel_entry", text); };
    ExpectLines(
        Error("ipmi_add_sel_entry", "Error when send add sel entry cmd to Local BMC, Sel Data(HEX):") +
        Lines{warn("0x0 "), warn("0x0 "), warn("0x2 "), warn("0x0 "), warn("0x0 "), warn("0x0 "),
              warn("0x0 "), warn("0x20 "), warn("0x0 "), warn("0x4 "), warn("0xc "), warn("0xa1 "),
              warn("0x6f "), warn("0xf "), warn("0xff "), warn("0x10 ")});
    EXPECT_THAT(Calls(), ElementsAre(kSession, kAdd, kClose));
}

TEST_F(Writer, ItDoesNotTryTwice) {
    sim::AddFault({.call = kAdd, .occurrence = 1});
    EXPECT_EQ(ipmi_add_sel_entry(kRecord.data()), 0xFFFFu);
    EXPECT_EQ(sim::CountCalls(kAdd), 1u);
    EXPECT_THAT(Records(), IsEmpty());
}

TEST_F(Writer, AnyCodeButZeroIsAFailure) {
    sim::AddFault({.call = kSession, .occurrence = 1, .result = 1});
    EXPECT_EQ(ipmi_add_sel_entry(kRecord.data()), 0xFFFFu);
    sim::AddFault({.call = kAdd, .occurrence = 1, .result = 0x8000});
    EXPECT_EQ(ipmi_add_sel_entry(kRecord.data()), 0xFFFFu);
}

TEST_F(Writer, AFailedCloseIsNobodysConcern) {
    FailAlways(kClose);
    EXPECT_EQ(ipmi_add_sel_entry(kRecord.data()), 0u);
    ExpectLines({});
}

TEST_F(Writer, AFullLogIsAFailedAdd) {
    sim::CurrentBoard().sel_limit = 1;
    EXPECT_EQ(ipmi_add_sel_entry(kRecord.data()), 0u);
    EXPECT_EQ(ipmi_add_sel_entry(kRecord.data()), 0xFFFFu);
    ExpectLines(Dump(kRecord));
}

TEST_F(Writer, ARecordAtAnOddAddressIsFine) {
    std::vector<uint8_t> memory(17);
    std::copy(kRecord.begin(), kRecord.end(), memory.begin() + 1);
    ExpectSent(ipmi_add_sel_entry(memory.data() + 1), Hex(kRecord));
}

} // namespace
