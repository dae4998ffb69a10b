// SPDX-License-Identifier: GPL-3.0-or-later
//
// Platform calls that fail under the generators of single sensors: what each leaves standing, and that no
// single failure gives half a record.
#include <algorithm>
#include <set>

#include "specific_sensors/generators_fixture.h"

namespace {

using namespace generators;
using testing::Contains;
using testing::IsEmpty;

class GeneratorFailures : public GeneratorTest {
protected:
    static void FailService(const std::string &getter, bool whole) {
        sim::Fault fault;
        fault.call = getter;
        fault.null_object = whole;
        fault.null_operation = !whole;
        sim::AddFault(fault);
    }
};

// ---- the profile id -----------------------------------------------------------------------------

TEST_F(GeneratorFailures, AnUnreadableProfileIsProfile0ForNameAndThresholds) {
    Board(CUSTOM_ID_FERRISK);
    Fail("IPMI_LoadCustomID");
    const Made made = Make(kTempGenerator, Description(kTemp, 2, 5));
    EXPECT_EQ(made.Name(), "GPU_TEMP_05");
    EXPECT_EQ(made.At(38), 90) << "the description's, not the fixed one";
    EXPECT_EQ(made.At(18), 0x3F);
}

TEST_F(GeneratorFailures, WhatAFailedProfileCallLeavesIsNotUsed) {
    sim::Fault fault;
    fault.call = "IPMI_LoadCustomID";
    fault.output = CUSTOM_ID_FERRISK;
    sim::AddFault(fault);
    EXPECT_EQ(Make(kTempGenerator, Description(kTemp, 2, 5)).At(18), 0x3F);
    EXPECT_EQ(Make(kFanGenerator, Description(kFan, 255, 5)).At(18), 0x3F);
}

// The generator reads the profile itself, the naming reads it again.
TEST_F(GeneratorFailures, AProfileUnreadableOnceGivesEitherNameOrThresholdsOfProfile0) {
    Board(CUSTOM_ID_FERRISK);
    Fail("IPMI_LoadCustomID", 1);
    Made made = Make(kTempGenerator, Description(kTemp, 2, 5));
    EXPECT_EQ(made.Name(), "GPU5_Temp");
    EXPECT_EQ(made.At(18), 0x3F);
    Board(CUSTOM_ID_FERRISK);
    Fail("IPMI_LoadCustomID", 2);
    made = Make(kTempGenerator, Description(kTemp, 2, 5));
    EXPECT_EQ(made.Name(), "GPU_TEMP_05");
    EXPECT_EQ(made.At(18), 0x38);
}

TEST_F(GeneratorFailures, AnUnreadableProfileMeansPowerOfTheUsualType) {
    Board(CUSTOM_ID_LUMORA);
    EXPECT_EQ(Make(kPowerGenerator, Description(kPower, 30, 1)).At(12), 0x0B);
    Fail("IPMI_LoadCustomID");
    const Made made = Make(kPowerGenerator, Description(kPower, 30, 1));
    EXPECT_EQ(made.At(12), 0x08);
    EXPECT_EQ(made.Name(), "OAM_TOTAL_POWER");
}

TEST_F(GeneratorFailures, AnUnreadableProfileMeansAnOcpPortLikeAnyOther) {
    Board(CUSTOM_ID_LUMORA);
    Fail("IPMI_LoadCustomID");
    const Made made = Make(kTempGenerator, Description(kTemp, 6, 2, 1));
    EXPECT_EQ(made.Name(), "OCP_SFP5_TEMP_02");
    EXPECT_EQ(made.At(9), 0x62);
    EXPECT_EQ(made.At(45), 2);
}

TEST_F(GeneratorFailures, AnUnreadableProfileMeansFansWithoutForcedThresholds) {
    Board(CUSTOM_ID_FERRISK);
    Fail("IPMI_LoadCustomID");
    const Made made = Make(kFanGenerator, Description(kFan, 255, 4));
    EXPECT_EQ(made.Name(), "FAN_SPEED_04");
    EXPECT_EQ(made.At(18), 0x3F);
    EXPECT_EQ(made.At(40), 5);
}

TEST_F(GeneratorFailures, AnUnreadableProfileHasNoDisks) {
    Board(CUSTOM_ID_FERRISK).disks.conversion[3] = 14;
    Fail("IPMI_LoadCustomID");
    SpecificSensorParam param = Description(kDisk, kNvme, 3, 2);
    EXPECT_EQ(Make(kDiskGenerator, param).result, GEN_SDR_SKIPPED);
    param = Description(kTemp, kNvme, 3, 1);
    EXPECT_EQ(Make(kTempGenerator, param).result, GEN_SDR_SKIPPED);
    EXPECT_EQ(param.SlotId, 14) << "converted before the name was looked for";
}

TEST_F(GeneratorFailures, AProfileThatNobodyKnowsHasOnlyCardFamilies) {
    Board(5);
    for (const Generator &generator : kAllGenerators) {
        EXPECT_EQ(Make(generator, Description(generator, 2, 3)).result, GEN_SDR_SKIPPED) << generator.name;
    }
    EXPECT_EQ(Make(kTempGenerator, Description(kTemp, 22, 3)).Name(), "HGX_NSWITCH_TEMP");
    EXPECT_EQ(Make(kCardGenerator, Description(kCard, 42, 3)).Name(), "BOX");
}

// ---- board id and inventory ---------------------------------------------------------------------

TEST_F(GeneratorFailures, PowerWithoutABoardIdTakesTheFactorsOfNoBoard) {
    Board(CUSTOM_ID_DEFAULT, 0x5502);
    EXPECT_EQ(Make(kPowerGenerator, Description(kPower, 2, 3)).At(24), 17);
    sim::Fault fault;
    fault.call = "get_default_board_id";
    fault.output = 0x550F; // what a failed call leaves is not to be used
    sim::AddFault(fault);
    const Made made = Make(kPowerGenerator, Description(kPower, 2, 3));
    EXPECT_EQ(made.At(24), 4);
    EXPECT_EQ(made.At(26), 2);
    EXPECT_THAT(Lines(), Contains("warn 42 GenSpecificPowerSDR: get Board Id failed!"));
}

TEST_F(GeneratorFailures, AFanWithoutABoardIdIsMade) {
    Board(CUSTOM_ID_DEFAULT, 0x5497);
    sim::Fault fault;
    fault.call = "get_default_board_id";
    fault.output = 0x5497;
    sim::AddFault(fault);
    EXPECT_EQ(Make(kFanGenerator, Description(kFan, 255, 3)).Name(), "FAN_SPEED_03");
}

TEST_F(GeneratorFailures, ABoardIdCallThatAnswersAboveZeroSucceeded) {
    sim::Fault fault;
    fault.call = "get_default_board_id";
    fault.result = 3;
    fault.output = 0x5497;
    fault.succeed = true;
    sim::AddFault(fault);
    EXPECT_EQ(Make(kFanGenerator, Description(kFan, 255, 3)).result, GEN_SDR_FAILED);
    EXPECT_THAT(Lines(), Contains("info 42 GenSpecificFanSpeedSDR: GenSpecificFanSpeedSDR: "
                                  "sdwRet = 3 wBoardId = 5497!"));
    EXPECT_NE(Make(kPowerGenerator, Description(kPower, 34, 3)).result, GEN_SDR_FAILED);
    EXPECT_THAT(LinesOf(kPowerGenerator),
                testing::Not(Contains("warn 42 GenSpecificPowerSDR: get Board Id failed!")));
}

TEST_F(GeneratorFailures, AnInventoryThatFailsGivesTheFactorsOfTheBoard) {
    Board(CUSTOM_ID_DEFAULT, 0x550F).gpus = {{3, 350, 0x10DE}};
    EXPECT_EQ(Make(kPowerGenerator, Description(kPower, 2, 3)).At(24), 2);
    Fail("MW_GetGPUAssetInfo");
    const Made made = Make(kPowerGenerator, Description(kPower, 2, 3));
    EXPECT_EQ(made.At(24), 22);
    EXPECT_EQ(made.At(26), 11);
}

TEST_F(GeneratorFailures, AnInventoryThatFailsGivesOneSlotNoFactors) {
    Board(CUSTOM_ID_PELLAGO, 0x550F).gpus = {{3, 350, 0x10DE}};
    Fail("MW_GetGPUAssetInfo");
    const Made made = Make(kPowerGenerator, Description(kPower, 56, 3));
    EXPECT_EQ(made.Name(), "GPU3_Power");
    EXPECT_EQ(made.At(24), 0);
    EXPECT_EQ(made.At(26), 0);
}

TEST_F(GeneratorFailures, FansNeedNoFanService) {
    FailService("HalFanInst", true);
    EXPECT_EQ(Make(kFanGenerator, Description(kFan, 255, 3)).Name(), "FAN_SPEED_03");
    sim::ClearFaults();
    Fail("HalFanService.GetFanSilkByIndex");
    EXPECT_EQ(Make(kFanGenerator, Description(kFan, 255, 3)).Name(), "FAN_SPEED_03");
}

// ---- thresholds ---------------------------------------------------------------------------------

TEST_F(GeneratorFailures, AnUnreadableThresholdTableIsAnErrorAndLeavesTheDescriptionsThresholds) {
    const std::pair<Generator, SpecificSensorParam> offers[] = {
        {kTempGenerator, Description(kTemp, 2, 3)},
        {kVoltGenerator, Description(kVolt, 31, 3)},
        {kPowerGenerator, Description(kPower, 30, 3)},
        {kFanGenerator, Description(kFan, 255, 3)},
    };
    for (auto [generator, param] : offers) {
        Board(CUSTOM_ID_VORANA);
        const Made good = Make(generator, param);
        ASSERT_GT(good.result, 48) << generator.name;
        sim::ClearTrace();
        Fail("MW_GetSensorThreshInfo");
        EXPECT_TRUE(tests::SameSdr(good.record, Make(generator, param).record));
        EXPECT_THAT(Lines(), Contains("error 42 ModifySensorThresholdByFile: "
                                      "MW Get Sensor Thresh Info failed!"));
    }
}

TEST_F(GeneratorFailures, CompactRecordsDoNotAskForThresholds) {
    Board(CUSTOM_ID_KESTRIN);
    EXPECT_GT(Make(kMemoryGenerator, Description(kMemory, 18, 3)).result, 32);
    EXPECT_GT(Make(kCardGenerator, Description(kCard, 42, 3)).result, 32);
    Board(CUSTOM_ID_FERRISK);
    EXPECT_GT(Make(kDiskGenerator, Description(kDisk, kNvme, 3, 2)).result, 32);
    EXPECT_EQ(sim::CountCalls("MW_GetSensorThreshInfo"), 0u);
}

// ---- disks and front slots ----------------------------------------------------------------------

TEST_F(GeneratorFailures, UnknownBackplanesMeanARearDisk) {
    const auto offer = [](const std::string &expected_temp, const std::string &expected_status) {
        EXPECT_EQ(Make(kTempGenerator, Description(kTemp, kNvme, 3, 1)).Name(), expected_temp);
        EXPECT_EQ(Make(kTempGenerator, Description(kTemp, kNvme, 3, 1)).At(44) >> 4,
                  expected_temp == "NVME3_Temp" ? 4 : 5);
        EXPECT_EQ(Make(kDiskGenerator, Description(kDisk, kNvme, 3, 1)).Name(), expected_status);
    };
    const auto machine = [] { Board(CUSTOM_ID_FERRISK).disks.backplanes.push_back({0, 8, "Front"}); };
    machine();
    offer("NVME3_Temp", "NVME3_Status");
    machine();
    Fail("HalHddBackpanelService.GetBackPanelList");
    offer("NVME3_R_Temp", "NVME3_R_Status");
    for (const bool whole : {true, false}) {
        machine();
        FailService("HalHddBackpanelInst", whole);
        offer("NVME3_R_Temp", "NVME3_R_Status");
    }
}

TEST_F(GeneratorFailures, ASlotWhosePlaceIsUnknownKeepsTheRearName) {
    AddSlot(4, "F-Slot2");
    EXPECT_EQ(Make(kTempGenerator, Description(kTemp, 3, 4)).Name(), "RAID_TEMP_F-02");
    for (const char *const call : {"Hal_GetPcieLocationByPcieSlot", "Hal_GetPcieSilkByPcieSlot"}) {
        sim::ClearFaults();
        Fail(call);
        EXPECT_EQ(Make(kTempGenerator, Description(kTemp, 3, 4)).Name(), "RAID_TEMP_04") << call;
    }
}

// ---- the extended store -------------------------------------------------------------------------

TEST_F(GeneratorFailures, AStoreThatCannotBeReadHoldsNothing) {
    const Made first = Make(kTempGenerator, Description(kTemp, 2, 3));
    for (const char *const call :
         {"OAL_SemCreate", "OAL_SemLockByKey", "sigwrap_open_mode", "lseek", "sigwrap_read"}) {
        Board(CUSTOM_ID_DEFAULT);
        Store({first.record});
        ASSERT_EQ(Make(kTempGenerator, Description(kTemp, 2, 3)).result, GEN_SDR_SKIPPED);
        Fail(call);
        EXPECT_TRUE(tests::SameSdr(first.record, Make(kTempGenerator, Description(kTemp, 2, 3)).record))
            << call;
        EXPECT_THAT(sim::Violations(), IsEmpty());
    }
}

TEST_F(GeneratorFailures, AStoreThatCannotBeUnlockedWasReadAllTheSame) {
    const Made first = Make(kTempGenerator, Description(kTemp, 2, 3));
    Store({first.record});
    Fail("OAL_SemUnLockByKey");
    EXPECT_EQ(Make(kTempGenerator, Description(kTemp, 2, 3)).result, GEN_SDR_SKIPPED);
}

// ---- every call alone ---------------------------------------------------------------------------

struct Sweep {
    const char *name;
    Generator generator;
    uint32_t custom_id;
    SpecificSensorParam param;
    std::vector<std::string> other_names = {}; // that a failure may give, with the bytes of that name's rule
};

void PrintTo(const Sweep &sweep, std::ostream *out) {
    *out << sweep.name;
}

std::vector<Sweep> Sweeps() {
    SpecificSensorParam nic = Description(kTemp, 5, 4, 1);
    return {
        {"temperature", kTempGenerator, 0, Description(kTemp, 2, 3), {}},
        {"front_nic", kTempGenerator, 0, nic, {"NIC_SFP5_TEMP_04"}},
        {"card_family", kTempGenerator, 20, Description(kTemp, 22, 3), {}},
        {"disk_temperature", kTempGenerator, 16, Description(kTemp, kNvme, 3, 1), {"NVME7_R_Temp"}},
        {"voltage", kVoltGenerator, 3, Description(kVolt, 31, 3), {}},
        {"card_power", kPowerGenerator, 0, Description(kPower, 34, 3), {}},
        {"fan", kFanGenerator, 0, Description(kFan, 255, 3), {}},
        {"disk_status", kDiskGenerator, 16, Description(kDisk, kNvme, 3, 1), {"NVME7_R_Status"}},
        {"card_status", kCardGenerator, 0, Description(kCard, 42, 3), {}},
        {"gpu_card_status", kGpuCardGenerator, 20, Description(kGpuCard, 2, 5), {}},
        {"memory_status", kMemoryGenerator, 1, Description(kMemory, 18, 3), {}},
    };
}

class EveryCallAlone : public GeneratorFailures, public testing::WithParamInterface<Sweep> {
protected:
    static void Machine(uint32_t custom_id) {
        sim::Board &board = Board(custom_id, 0x54E0);
        board.disks.backplanes.push_back({0, 8, "Front"});
        board.disks.conversion[3] = 7;
        AddSlot(4, "F-Slot2");
        Store({Bytes(64, 0x11)});
    }
    // The call that a counted fault hit.
    static std::string FailedCall() {
        for (const sim::Event &event : sim::Trace()) {
            if (event.kind == sim::Kind::kCall && event.failed) {
                return event.function;
            }
        }
        return "";
    }
};

TEST_P(EveryCallAlone, GivesTheWholeRecordOrNone) {
    const Sweep &sweep = GetParam();
    sim::SetTraceBounded(true);
    Machine(sweep.custom_id);
    SpecificSensorParam param = sweep.param;
    const Made good = Make(sweep.generator, param);
    const uint64_t calls = sim::FailableCalls();
    ASSERT_GT(good.record.size(), 32u);
    ASSERT_GT(calls, 0u);
    for (uint64_t k = 1; k <= calls; ++k) {
        Machine(sweep.custom_id);
        sim::FailCall(k);
        param = sweep.param;
        const Made made = Make(sweep.generator, param, Output::kMayBeSpoilt);
        const std::string call = FailedCall();
        ASSERT_NE(call, "") << "call " << k;
        const bool profile = call == "IPMI_LoadCustomID" && sweep.custom_id != 0;
        const bool bounded = call.ends_with("_s"); // drops the record
        const std::vector<std::string> &others = sweep.other_names;
        if (made.record.empty()) {
            EXPECT_TRUE(profile || bounded || call == "get_default_board_id") << call << " took the record";
        } else if (std::find(others.begin(), others.end(), made.Name()) == others.end()) {
            EXPECT_TRUE(tests::SameSdr(good.record, made.record)) << call;
        } else {
            EXPECT_EQ(made.record.size(), good.record.size() - good.Name().size() + made.Name().size());
        }
        EXPECT_THAT(sim::Violations(), IsEmpty()) << call;
    }
    sim::SetTraceBounded(false);
}

TEST_P(EveryCallAlone, AndAllThatFollowGiveNoHalfRecord) {
    const Sweep &sweep = GetParam();
    Machine(sweep.custom_id);
    SpecificSensorParam param = sweep.param;
    Make(sweep.generator, param);
    const uint64_t calls = sim::FailableCalls();
    for (uint64_t k = 1; k <= calls; ++k) {
        Machine(sweep.custom_id);
        sim::FailCall(k, true);
        param = sweep.param;
        const Made made = Make(sweep.generator, param, Output::kMayBeSpoilt);
        if (!made.record.empty()) {
            const size_t head = sweep.generator.full ? 48 : 32;
            EXPECT_EQ(static_cast<size_t>(made.result), head + made.Name().size());
            EXPECT_EQ(made.At(4), made.result - 5);
            EXPECT_EQ(made.At(head - 1), static_cast<int>(0xC0 + made.Name().size()));
        }
        EXPECT_THAT(sim::Violations(), IsEmpty()) << "from call " << k;
    }
}

INSTANTIATE_TEST_SUITE_P(Sweeps, EveryCallAlone, testing::ValuesIn(Sweeps()),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace
