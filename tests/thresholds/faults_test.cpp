// SPDX-License-Identifier: GPL-3.0-or-later
//
// Every call that can fail, failing alone and from then on, at each of the three entry points: the live table, the
// file and the record are what they were or what they should become, and nothing stays open.
#include <functional>

#include "thresholds/threshold_fixture.h"

namespace {

using namespace thresh;

const std::vector<Stored> kEntriesBefore = {{"INPUT_TEMP", {60, 55, 50, 1, 2, 3}, 0x38}, {"FAN", {}, 0}};
const Bytes kBefore = Image(4, kEntriesBefore);
constexpr uint8_t kNewLimits[8] = {61, 56, 51, 4, 5, 6, 7, 8};
constexpr char kName[16] = "NEW_SENSOR";

Bytes AfterSave() {
    auto entries = kEntriesBefore;
    entries.push_back({kName, {61, 56, 51, 4, 5, 6}, 0x38, {7, 8}});
    return Image(4, entries);
}

class ThresholdFaults : public ThresholdTest {
protected:
    void Prepare(const Bytes &file, const Bytes &live) {
        sim::Start(sim::Board{});
        sim::WriteFile(kFile, file);
        InitSdrThresholdInfoFromFile(4);
        sim::WriteFile(kFile, file);
        SetLive(live);
    }
    // Runs once without fault, then once for every call that can fail, once and from then on.
    static void Sweep(const std::function<void()> &prepare, const std::function<void()> &run,
                      const std::function<void()> &judge) {
        prepare();
        const uint64_t start = sim::FailableCalls();
        run();
        const uint64_t calls = sim::FailableCalls() - start;
        EXPECT_GE(calls, 1u);
        for (uint64_t k = 1; k <= calls; ++k) {
            for (const bool from_then_on : {false, true}) {
                SCOPED_TRACE(testing::Message() << "call " << k << (from_then_on ? " and later" : ""));
                prepare();
                sim::FailCall(start + k, from_then_on);
                run();
                EXPECT_TRUE(sim::FaultWasHit());
                sim::FailCall(0);
                judge();
                EXPECT_THAT(sim::Violations(), IsEmpty());
            }
        }
    }
    static void ExpectOneOf(const Bytes &bytes, const std::vector<Bytes> &allowed) {
        EXPECT_NE(std::find(allowed.begin(), allowed.end(), bytes), allowed.end());
    }
};

TEST_F(ThresholdFaults, AStartHandsOverTheFileOrNothing) {
    const Bytes file = AfterSave(), zeros(kImageSize, 0);
    Sweep([&] { Prepare(file, kBefore); }, [] { InitSdrThresholdInfoFromFile(4); },
          [&] {
              ExpectOneOf(Live(), {kBefore, file});
          });
}

TEST_F(ThresholdFaults, AStartOfAnotherCustomerHandsOverNothing) {
    const Bytes file = AfterSave();
    Sweep([&] { Prepare(file, kBefore); }, [] { InitSdrThresholdInfoFromFile(5); },
          [&] {
              EXPECT_EQ(Live(), kBefore);
              ExpectOneOf(sim::ReadFile(kFile), {file, {}});
          });
}

TEST_F(ThresholdFaults, ASaveLeavesTheOldTableOrTheNewOne) {
    Sweep([&] { Prepare(kBefore, kBefore); }, [] { SaveSdrThresholdInfoInFile(kName, kNewLimits, 0x38); },
          [] {
              ExpectOneOf(Live(), {kBefore, AfterSave()});
              ExpectOneOf(sim::ReadFile(kFile),
                          {kBefore, AfterSave(), {}}); // {}: opened, then the write failed
          });
}

TEST_F(ThresholdFaults, AnOverlayLeavesTheOldThresholdsOrTheNewOnes) {
    const Sdr sdr = FullRecord("INPUT_TEMP", 0x38);
    static Sdr out;
    Sweep([&] { Prepare(kBefore, kBefore); }, [&] { out = Applied(sdr); },
          [&] {
              EXPECT_TRUE(out == sdr || out == With(sdr, {60, 55, 50, 204, 205, 206}));
              EXPECT_EQ(Live(), kBefore);
              EXPECT_EQ(sim::ReadFile(kFile), kBefore);
          });
}

} // namespace
