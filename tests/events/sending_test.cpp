// SPDX-License-Identifier: GPL-3.0-or-later
//
// What becomes of every builder's record when the way to the event log fails: one repeat, then the builder's own
// line.
#include "events/event_fixture.h"

namespace {

using namespace seltest;

class EveryBuilder : public Sel, public testing::WithParamInterface<Sender> {
protected:
    EveryBuilder() {
        Profile(GetParam().custom_id);
    }
    static void FailFirst(const std::string &call, uint32_t times) {
        for (uint32_t occurrence = 1; occurrence <= times; ++occurrence) {
            sim::AddFault({.call = call, .occurrence = occurrence});
        }
    }
    static void ExpectTries(size_t sessions, size_t sends, size_t records) {
        EXPECT_EQ(sim::CountCalls(kSession), sessions);
        EXPECT_EQ(sim::CountCalls(kAdd), sends);
        EXPECT_EQ(sim::CountCalls(kClose), sends);
        EXPECT_THAT(Records(), ElementsAreArray(Lines(records, Hex(GetParam().record))));
    }
    static size_t Errors() {
        return sim::LogTexts(sim::Level::kError).size();
    }
};

TEST_P(EveryBuilder, SendsItsRecordOnceWhenNothingFails) {
    EXPECT_EQ(GetParam().call(), 0u);
    ExpectLines(GetParam().before);
    ExpectTries(1, 1, 1);
}

TEST_P(EveryBuilder, SendsAgainWhenTheSessionFailsOnce) {
    FailFirst(kSession, 1);
    EXPECT_EQ(GetParam().call(), 0u);
    ExpectLines(GetParam().before + NoSession());
    ExpectTries(2, 1, 1);
}

TEST_P(EveryBuilder, GivesUpWhenTheSessionFailsTwice) {
    FailFirst(kSession, 2);
    EXPECT_EQ(GetParam().call(), 0xFFFFu);
    ExpectLines(GetParam().before + NoSession() + NoSession() + Error(GetParam().name, GetParam().failure));
    ExpectTries(2, 0, 0);
}

TEST_P(EveryBuilder, SendsAgainWhenTheAddFailsOnce) {
    FailFirst(kAdd, 1);
    EXPECT_EQ(GetParam().call(), 0u);
    ExpectLines(GetParam().before + Dump(GetParam().record));
    ExpectTries(2, 2, 1);
}

TEST_P(EveryBuilder, GivesUpWhenTheAddFailsTwice) {
    FailFirst(kAdd, 2);
    EXPECT_EQ(GetParam().call(), 0xFFFFu);
    ExpectLines(GetParam().before + Dump(GetParam().record) + Dump(GetParam().record) +
                Error(GetParam().name, GetParam().failure));
    ExpectTries(2, 2, 0);
}

TEST_P(EveryBuilder, GivesUpWhenTheSessionAndThenTheAddFails) {
    FailFirst(kSession, 1);
    FailFirst(kAdd, 1);
    EXPECT_EQ(GetParam().call(), 0xFFFFu);
    ExpectLines(GetParam().before + NoSession() + Dump(GetParam().record) +
                Error(GetParam().name, GetParam().failure));
    ExpectTries(2, 1, 0);
}

TEST_P(EveryBuilder, NeverTriesAThirdTime) {
    FailAlways(kAdd);
    EXPECT_EQ(GetParam().call(), 0xFFFFu);
    ExpectTries(2, 2, 0);
}

// Whatever fails, the result is one of the two words and the invariants of the platform hold.
TEST_P(EveryBuilder, KeepsTheInvariantsWhicheverCallFails) {
    EXPECT_EQ(GetParam().call(), 0u);
    const uint64_t calls = sim::FailableCalls();
    uint32_t runs = 0;
    for (const bool from_then_on : {false, true}) {
        for (uint64_t k = 1; k <= calls; ++k, ++runs) {
            sim::Start(BoardWithDirectory());
            Profile(GetParam().custom_id);
            sim::FailCall(k, from_then_on);
            const uint32_t result = GetParam().call();
            EXPECT_TRUE(sim::FaultWasHit());
            EXPECT_TRUE(result == 0 || result == 0xFFFF) << result;
            EXPECT_THAT(sim::Violations(), IsEmpty()) << "call " << k;
            EXPECT_LE(sim::CountCalls(kAdd), 2u);
            EXPECT_LE(sim::EventLog().size(), 1u);
            EXPECT_TRUE(result == 0 || sim::EventLog().empty());
        }
    }
    RecordProperty("fault_runs", static_cast<int>(runs));
}

INSTANTIATE_TEST_SUITE_P(Sel, EveryBuilder, testing::ValuesIn(Senders()),
                         [](const auto &info) { return info.param.name; });

TEST(Senders, AreAllNineteenBuilders) {
    EXPECT_EQ(Senders().size(), 19u);
}

// Two failures of the add: the info line, twice seventeen, and the builder's own.
TEST_F(Sel, TwoFailedAddsAreThirtySixLines) {
    FailAlways(kAdd);
    EXPECT_EQ(addGpuSlotErrorSel(9), 0xFFFFu);
    EXPECT_EQ(sim::Logs().size(), 1u + 17u + 17u + 1u);
}

} // namespace
