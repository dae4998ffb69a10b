// SPDX-License-Identifier: GPL-3.0-or-later
//
// The sub card's status on its way to the FRU service.
#include "specific_sensors/dispatch_fixture.h"

namespace {

using namespace dispatch;

class SubCardStatus : public Dispatch {
protected:
    static std::string Line(const std::string &level, const std::string &text) {
        return level + " 43 SendSubCardStatusToFRU: " + text;
    }
    const std::string called_ = Line("info", "SendSubCardStatusToFRU Is Called!");
    static constexpr uint8_t kStatus[20] = {0x00, 0xFF, 0x12, 0x80, 0x7F, 0x01, 0x02, 0x03, 0x04, 0x05,
                                            0x06, 0x07, 0x08, 0x09, 0x0A, 0x0B, 0x0C, 0x0D, 0x0E, 0xE0};
    static std::string Sent(int result = 0) {
        return std::string(kSend) +
               "(session=1 message=\"12 00 8E 01 00 FF 12 80 7F 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E E0 "
               "00\" "
               "arg=20) = " +
               std::to_string(result);
    }
};

TEST_F(SubCardStatus, GoesToTheFruServiceAsItIs) {
    EXPECT_EQ(SendSubCardStatusToFRU(kStatus), 0u);
    EXPECT_THAT(SessionCalls(), ElementsAre(Opened(), Sent(), Closed(1)));
    EXPECT_THAT(LinesOf(), ElementsAre(called_));
    EXPECT_EQ(LinesOf(), UnitLines());
}

TEST_F(SubCardStatus, ANullBlockIsAnErrorAndReturnsZero) {
    EXPECT_EQ(SendSubCardStatusToFRU(nullptr), 0u);
    EXPECT_THAT(LinesOf(), ElementsAre(called_, Line("error", "pSubCardInfo is null.")));
    EXPECT_EQ(LinesOf(), UnitLines());
    EXPECT_EQ(sim::FailableCalls(), 0u);
}

TEST_F(SubCardStatus, WithoutASessionItsCodeIsTheResult) {
    for (const int code : {1, 0xC3, 0xFFFF}) {
        Use(sim::Board{});
        Fail(kSession, code);
        const uint32_t expected = static_cast<uint32_t>(code);
        EXPECT_EQ(SendSubCardStatusToFRU(kStatus), expected);
        EXPECT_THAT(LinesOf(), ElementsAre(called_, Line("error", "Failed to create IPMI Session wRet(" +
                                                                      HexNumber(expected) + ") !")));
        EXPECT_THAT(SessionCalls(), ElementsAre(Opened(code)));
    }
}

TEST_F(SubCardStatus, ARefusedMessageClosesTheSessionAndItsCodeIsTheResult) {
    for (const int code : {1, 0xC3, 0xFFFF}) {
        Use(sim::Board{});
        Fail(kSend, code);
        const uint32_t expected = static_cast<uint32_t>(code);
        EXPECT_EQ(SendSubCardStatusToFRU(kStatus), expected);
        EXPECT_THAT(LinesOf(), ElementsAre(called_, Line("error", "Failed to send fru data to IPMI: " +
                                                                      HexNumber(expected))));
        EXPECT_THAT(SessionCalls(), ElementsAre(Opened(), Sent(code), Closed(1)));
    }
}

TEST_F(SubCardStatus, ASessionThatDoesNotCloseChangesNothing) {
    Fail(kClose);
    EXPECT_EQ(SendSubCardStatusToFRU(kStatus), 0u);
    EXPECT_THAT(LinesOf(), ElementsAre(called_));
}

} // namespace
