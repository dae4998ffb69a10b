// SPDX-License-Identifier: GPL-3.0-or-later
//
// Overlay: the order of the merged thresholds, for every mask.
#include "thresholds/threshold_fixture.h"

namespace {

using namespace thresh;

class ThresholdOrder : public ThresholdTest {
protected:
    // What the overlay says and does with these stored values under this mask.
    static void Expect(uint8_t mask, const Six &stored, bool good, const Six &own = kOwn) {
        SetLive(Image(0, {{"SENSOR", stored, mask}}));
        const Sdr sdr = FullRecord("SENSOR", mask, own);
        const Six six = Merged(mask, own, stored);
        EXPECT_TRUE(tests::SameSdr(good ? With(sdr, six) : sdr, Applied(sdr))) << int{mask};
        EXPECT_THAT(Written(), ElementsAreArray(Updated("SENSOR", mask, six, good)));
        EXPECT_THAT(Calls(), ElementsAre(kGet));
    }
};

// Steps through all triples of three values, one of them above 0x7F: bytes are compared without sign.
constexpr uint8_t kValues[] = {0x10, 0x7F, 0x90};
constexpr int kTriples = 27;
void PutTriple(Six &six, int first, int triple) {
    six[first] = kValues[triple / 9];
    six[first + 1] = kValues[triple / 3 % 3];
    six[first + 2] = kValues[triple % 3];
}

// One process for all 64 masks.
class EveryMask : public ThresholdOrder {
protected:
    template <class Function> static void ForEachMask(Function check) {
        for (int mask = 0; mask < 64 && !HasFailure(); ++mask) {
            SCOPED_TRACE(testing::Message() << "mask " << mask);
            check(static_cast<uint8_t>(mask));
        }
    }
};

TEST_F(EveryMask, LowerTripleOfAnyValues) {
    ForEachMask([](uint8_t mask) {
        for (int triple = 0; triple < kTriples; ++triple) {
            Six stored = {0xF0, 0xE0, 0xD0, 0, 0, 0};
            PutTriple(stored, kLnr, triple);
            Expect(mask, stored, InOrder(mask, stored));
        }
    });
}

TEST_F(EveryMask, UpperTripleOfAnyValues) {
    ForEachMask([](uint8_t mask) {
        for (int triple = 0; triple < kTriples; ++triple) {
            Six stored = {0, 0, 0, 1, 2, 3};
            PutTriple(stored, kUnr, triple);
            Expect(mask, stored, InOrder(mask, stored));
        }
    });
}

TEST_F(EveryMask, BothTriplesOfAnyValues) {
    ForEachMask([](uint8_t mask) {
        for (int lower = 0; lower < kTriples; lower += 2) {
            for (int upper = lower % 5; upper < kTriples; upper += 5) {
                Six stored{};
                PutTriple(stored, kLnr, lower);
                PutTriple(stored, kUnr, upper);
                Expect(mask, stored, InOrder(mask, stored));
            }
        }
    });
}

// For every rule of the mask values that break this rule and no other, or, where that cannot be, as few as can be.
TEST_F(EveryMask, EveryRuleAloneRefuses) {
    ForEachMask([](uint8_t mask) {
        for (const Rule &rule : RulesOf(mask)) {
            const Six good = {220, 210, 200, 10, 20, 30};
            for (const int difference : {0, 1}) { // equal, and the wrong way round by one
                Six stored = good;
                const bool middle_is_below = rule.below == kUc || rule.below == kLc;
                if (middle_is_below) {
                    stored[rule.above] = static_cast<uint8_t>(stored[rule.below] - difference);
                } else {
                    stored[rule.below] = static_cast<uint8_t>(stored[rule.above] + difference);
                }
                Expect(mask, stored, false);
            }
            Six close = good; // one count is enough
            close[rule.below] = static_cast<uint8_t>(close[rule.above] - 1);
            Expect(mask, close, InOrder(mask, close));
            EXPECT_LT(close[rule.below], close[rule.above]);
        }
    });
}

// Thresholds outside the mask come from the record and are not compared, however they stand.
TEST_F(EveryMask, ThresholdsOutsideTheMaskDoNotRefuse) {
    ForEachMask([](uint8_t mask) {
        const Six good = {220, 210, 200, 10, 20, 30};
        Expect(mask, good, true, {0, 0, 0, 255, 255, 255});
        Expect(mask, good, true, {255, 255, 255, 0, 0, 0});
        Expect(mask, good, true, {0, 255, 0, 255, 0, 255});
    });
}

TEST_F(EveryMask, LowerAndUpperThresholdsAreNotCompared) {
    ForEachMask([](uint8_t mask) { Expect(mask, {30, 20, 10, 200, 210, 220}, true); });
}

TEST_F(EveryMask, EqualValuesPassOnlyWhereNothingIsCompared) {
    ForEachMask([](uint8_t mask) { Expect(mask, {50, 50, 50, 50, 50, 50}, RulesOf(mask).empty()); });
}

TEST_F(ThresholdOrder, Mask07With10And20And15Fails) {
    // non-recoverable 10, critical 20, non-critical 15
    SetLive(Image(0, {{"SENSOR", {0, 0, 0, 10, 20, 15}, 0x07}}));
    const Sdr sdr = FullRecord("SENSOR", 0x07);
    EXPECT_TRUE(tests::SameSdr(sdr, Applied(sdr)));
    EXPECT_THAT(Written(), ElementsAre("info 42 updateSdrThreshold: update sensor "
                                       "SENSOR mask 0x7, threshold 201, 202, 203, 10, 20, 15 failed"));
}

TEST_F(ThresholdOrder, Mask01IsAppliedWithoutAnyCheck) {
    for (unsigned value = 0; value < 256; ++value) {
        Expect(0x01, {0, 0, 0, 0, 0, static_cast<uint8_t>(value)}, true, {1, 1, 1, 255, 255, 0});
    }
}

TEST_F(ThresholdOrder, ValuesAbove127AreNotNegative) {
    Expect(0x07, {0, 0, 0, 0x7E, 0x7F, 0x80}, true);
    Expect(0x38, {0x80, 0x7F, 0x7E, 0, 0, 0}, true);
    Expect(0x07, {0, 0, 0, 0xFD, 0xFE, 0x01}, false);
    Expect(0x38, {0x01, 0xFE, 0xFD, 0, 0, 0}, false);
}

TEST_F(ThresholdOrder, AFailedSideKeepsTheOtherFromBeingWritten) {
    Expect(0x3F, {220, 210, 200, 30, 20, 10}, false); // lower wrong
    Expect(0x3F, {200, 210, 220, 10, 20, 30}, false); // upper wrong
    Expect(0x3F, {200, 210, 220, 30, 20, 10}, false);
    Expect(0x3F, {220, 210, 200, 10, 20, 30}, true);
}

TEST_F(ThresholdOrder, UnusedMaskBitsDoNotChangeTheChecks) {
    Expect(0xC7, {0, 0, 0, 10, 20, 15}, false);
    Expect(0xC7, {0, 0, 0, 10, 20, 30}, true);
    Expect(0xF8, {30, 20, 10, 0, 0, 0}, true);
    Expect(0xF8, {10, 20, 10, 0, 0, 0}, false);
}

} // namespace
