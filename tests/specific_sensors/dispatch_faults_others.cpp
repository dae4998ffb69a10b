// SPDX-License-Identifier: GPL-3.0-or-later
//
// Deleting, the sub card's status, the two INI files and the stored thresholds: what each failing call may come
// to.
#include "specific_sensors/dispatch_faults.h"

namespace faults {
namespace {

using namespace dispatch;
using testing::AnyOf;
using testing::Contains;
using testing::Each;

const Calls kIniWriting = {"IniSetUInt", "IniSaveFile"};

// No line of the file stands neither in one text nor in the other.
void ExpectLinesOf(const std::string &file, const std::string &one, const std::string &other) {
    std::vector<std::string> known = LinesIn(one);
    for (const std::string &line : LinesIn(other))
        known.push_back(line);
    for (const std::string &line : LinesIn(Text(file)))
        EXPECT_THAT(known, Contains(line));
}
// What lies beside the entry is never touched.
void ExpectHolds(const std::string &file, const std::string &section) {
    EXPECT_NE(Text(file).find(section), std::string::npos) << Text(file);
}

// ---- deleting a power supply -------------------------------------------------------------------------

const std::string kBeside = Section("PSU_1", 5, 1);
const std::string kPresent = kBeside + Section("PSU_2", 1, 1);
const std::string kGone = kBeside + Section("PSU_2", 0, 0);

void JudgeDelete(const Run &run) {
    const size_t sessions = sim::CountCalls(kSession);
    const bool deleted = sim::Repository().empty();
    EXPECT_THAT(run.result, AnyOf(0, 0xC3));
    ExpectHolds(kRecordFile, kBeside);
    ExpectLinesOf(kRecordFile, kPresent, kGone);
    EXPECT_EQ(run.result == 0xC3, run.Failed(kSession) || run.Failed(kDelete));
    EXPECT_EQ(sim::CountCalls(kClose), sessions == 1 && !run.Failed(kSession) ? 1u : 0u);
    if (run.result != 0 || sessions == 0) {
        EXPECT_FALSE(deleted);
        EXPECT_EQ(Text(kRecordFile), kPresent);
        EXPECT_TRUE(sessions == 1 || run.Failed("IniLoadFile") || run.BoundedFailed());
        return;
    }
    EXPECT_TRUE(deleted);
    const bool written = !run.BoundedFailed() && !run.AnyFailed(kIniWriting) && !run.Failed("IniLoadFile");
    EXPECT_EQ(Text(kRecordFile), written ? kGone : Text(kRecordFile));
    EXPECT_EQ(Text(kRecordFile), run.Failed("IniSaveFile") ? kPresent : Text(kRecordFile));
}

Scenario DeletingASupply() {
    Scenario scenario;
    scenario.name = "DeletePsu";
    scenario.files = {{kRecordFile, BytesOf(kPresent)}};
    scenario.before = [] { sim::Repository().push_back({1, {0x00, 0x00, 0x51, 0x11, 0x0B}}); };
    scenario.act = []() -> int64_t {
        SpecificSensorParam param = Psu(2);
        return SDR_DeleteSpecificSDR(&param);
    };
    scenario.judge = JudgeDelete;
    return scenario;
}

// ---- sub card ------------------------------------------------------------------------------------------

Scenario SendingTheSubCardStatus() {
    Scenario scenario;
    scenario.name = "SendSubCardStatus";
    scenario.act = []() -> int64_t {
        const uint8_t status[20] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20};
        return SendSubCardStatusToFRU(status);
    };
    scenario.judge = [](const Run &run) {
        Lines messages;
        for (const sim::Event &event : sim::Trace()) {
            if (event.kind == sim::Kind::kNote)
                messages.push_back(event.text);
        }
        EXPECT_THAT(messages,
                    Each("FRU service: message received: 12 00 8E 01 01 02 03 04 05 06 07 08 09 0A 0B "
                         "0C 0D 0E 0F 10 11 12 13 14 00"));
        EXPECT_EQ(messages.size(), run.result == 0 ? 1u : 0u);
        EXPECT_THAT(run.result,
                    run.BoundedFailed() ? testing::Ge(0) : testing::Matcher<int64_t>(AnyOf(0, 0xC3)));
        EXPECT_EQ(run.result == 0xC3, run.Failed(kSession) || run.Failed(kSend));
    };
    return scenario;
}

// ---- FRU id file ---------------------------------------------------------------------------------------

const std::string kOtherCard = "[NEO CARD]\nNEO CARD_FruId =35\nNEO CARD_SlotId =7\n";
const std::string kCard = "[HyperCard]\nHyperCard_FruId =36\nHyperCard_SlotId =3\n";

Scenario SavingAFruId() {
    Scenario scenario;
    scenario.name = "SavePurchaseCardFruId";
    scenario.files = {{kFruIdFile, BytesOf(kOtherCard)}};
    scenario.act = []() -> int64_t { return SavePurchaseCardFruId(0x010B, "HyperCard", 3, 36); };
    scenario.judge = [](const Run &run) {
        ExpectHolds(kFruIdFile, kOtherCard);
        ExpectLinesOf(kFruIdFile, kOtherCard, kCard);
        EXPECT_THAT(run.result, AnyOf(0, -1));
        EXPECT_EQ(run.result, run.Failed("OXA_IniLoadFile") ? -1 : run.BoundedFailed() ? run.result : 0);
        const bool kept = run.result == -1 || run.Failed("IniSaveFile");
        const bool whole = run.result == 0 && !run.AnyFailed(kIniWriting) && !run.BoundedFailed();
        EXPECT_EQ(Text(kFruIdFile), kept ? kOtherCard : Text(kFruIdFile));
        EXPECT_EQ(Text(kFruIdFile), whole ? kOtherCard + kCard : Text(kFruIdFile));
    };
    return scenario;
}

Scenario LoadingAFruId() {
    static uint8_t slot, fru_id;
    Scenario scenario;
    scenario.name = "LoadPurchaseCardFruId";
    scenario.files = {{kFruIdFile, BytesOf(kOtherCard + kCard)}};
    scenario.act = []() -> int64_t {
        slot = 99;
        fru_id = 98;
        return LoadPurchaseCardFruId(0x010B, "HyperCard", &slot, &fru_id);
    };
    scenario.judge = [](const Run &run) {
        EXPECT_EQ(Text(kFruIdFile), kOtherCard + kCard);
        EXPECT_THAT(run.result, AnyOf(0, -1));
        EXPECT_EQ(run.result, run.Failed("OXA_IniLoadFile") ? -1 : run.BoundedFailed() ? run.result : 0);
        EXPECT_EQ(slot, run.result == 0 ? 3 : 99);
        EXPECT_EQ(fru_id, run.result == 0 ? 36 : 98);
    };
    return scenario;
}

// ---- record file ---------------------------------------------------------------------------------------

Scenario WritingTheRecordFile() {
    const std::string after = kBeside + Section("PSU_2", 77, 1);
    Scenario scenario;
    scenario.name = "UpdateRecordFile";
    scenario.files = {{kRecordFile, BytesOf(kGone)}};
    scenario.act = []() -> int64_t {
        SDR_UpdateSpecificSDRRecFile(10, 2, 77, 1);
        return 0;
    };
    scenario.judge = [after](const Run &run) {
        ExpectHolds(kRecordFile, kBeside);
        ExpectLinesOf(kRecordFile, kGone, after);
        const bool kept = run.Failed("IniLoadFile") || run.Failed("IniSaveFile");
        const bool whole = !kept && !run.Failed("IniSetUInt") && !run.BoundedFailed();
        EXPECT_EQ(Text(kRecordFile), kept ? kGone : Text(kRecordFile));
        EXPECT_EQ(Text(kRecordFile), whole ? after : Text(kRecordFile));
    };
    return scenario;
}

Scenario ReadingTheRecordFile() {
    Scenario scenario;
    scenario.name = "ReadRecordFile";
    scenario.files = {{kRecordFile, BytesOf(kBeside + Section("PSU_2", 0x1234, 1))}};
    scenario.act = []() -> int64_t { return SDR_GetSepcificFruSDRRecID(10, 2); };
    scenario.judge = [](const Run &run) {
        EXPECT_EQ(run.result, run.clean ? 0x1234 : 0); // every call is needed
        EXPECT_EQ(Text(kRecordFile), kBeside + Section("PSU_2", 0x1234, 1));
    };
    return scenario;
}

// ---- thresholds ----------------------------------------------------------------------------------------

const char kThresholdFile[] = "/conf/BMC1/sensor_threshold.dat";

SensorThreshTable TableOf(uint32_t id, const std::vector<std::string> &names) {
    SensorThreshTable table = {};
    table.dwCustomId = id;
    table.wCount = static_cast<uint16_t>(names.size());
    for (size_t i = 0; i < names.size(); ++i) {
        SensorThreshEntry &entry = table.atEntry[i];
        std::memcpy(entry.acName, names[i].data(), names[i].size());
        entry.ucUNR = 110;
        entry.ucUC = 105;
        entry.ucUNC = 99;
        entry.wMask = 0x38;
    }
    return table;
}
Bytes ImageOf(const SensorThreshTable &table) {
    Bytes image(sizeof(table));
    std::memcpy(image.data(), &table, sizeof(table));
    return image;
}
sim::Board BoardWith(const std::string &name) {
    sim::Board board;
    board.thresholds = {{.name = name, .unr = 110, .uc = 105, .unc = 99, .mask = 0x38}};
    return board;
}
bool LiveTableIs(const SensorThreshTable &table) {
    return ImageOf(sim::ThresholdTable()) == ImageOf(table);
}

Scenario StartingUnderTheSameProfile() {
    const SensorThreshTable before = TableOf(0, {"OLD"});
    const SensorThreshTable stored = TableOf(0, {"GPU_TEMP_03", "FAN_SPEED_01"});
    Scenario scenario;
    scenario.name = "InitThresholds";
    scenario.board = BoardWith("OLD");
    scenario.files = {{kThresholdFile, ImageOf(stored)}};
    scenario.act = []() -> int64_t {
        InitSdrThresholdInfoFromFile(0);
        return 0;
    };
    scenario.judge = [before, stored](const Run &run) {
        const bool unread = run.Failed("fread"); // goes on with nothing, or with what is left in the buffer
        const bool taken =
            !run.AnyFailed({"oxa_fopen_s", "MW_SetSensorThreshInfo", "fread"}) && !run.BoundedFailed();
        EXPECT_TRUE(LiveTableIs(stored) || (!taken && LiveTableIs(before)) ||
                    (unread && LiveTableIs(TableOf(0, {}))));
        EXPECT_TRUE(sim::ReadFile(kThresholdFile) == ImageOf(stored) ||
                    (unread && !sim::FileExists(kThresholdFile)));
    };
    return scenario;
}

Scenario StartingUnderAnotherProfile() {
    const SensorThreshTable before = TableOf(0, {"OLD"});
    const SensorThreshTable stored = TableOf(3, {"GPU_TEMP_03"});
    Scenario scenario;
    scenario.name = "InitThresholdsOfAnotherProfile";
    scenario.board = BoardWith("OLD");
    scenario.files = {{kThresholdFile, ImageOf(stored)}};
    scenario.act = []() -> int64_t {
        InitSdrThresholdInfoFromFile(1);
        return 0;
    };
    scenario.judge = [before, stored](const Run &run) {
        EXPECT_TRUE(LiveTableIs(before)); // never handed over
        const bool kept = run.Failed("oxa_fopen_s") || run.Failed("unlink");
        EXPECT_EQ(sim::FileExists(kThresholdFile),
                  kept || (run.BoundedFailed() && sim::FileExists(kThresholdFile)));
        if (sim::FileExists(kThresholdFile)) {
            EXPECT_EQ(sim::ReadFile(kThresholdFile), ImageOf(stored));
        }
    };
    return scenario;
}

Scenario SavingThresholds() {
    const SensorThreshTable before = TableOf(0, {"OLD"});
    SensorThreshTable after = TableOf(5, {"OLD", "GPU_TEMP_03"});
    after.atEntry[1].aucExtra[0] = 0x77;
    after.atEntry[1].aucExtra[1] = 0x88;
    Scenario scenario;
    scenario.name = "SaveThresholds";
    scenario.board = BoardWith("OLD");
    scenario.before = [] { InitSdrThresholdInfoFromFile(5); };
    scenario.act = []() -> int64_t {
        const char name[16] = "GPU_TEMP_03";
        const uint8_t values[8] = {110, 105, 99, 0, 0, 0, 0x77, 0x88};
        SaveSdrThresholdInfoInFile(name, values, 0x38);
        return 0;
    };
    scenario.judge = [before, after](const Run &run) {
        const Bytes file = sim::ReadFile(kThresholdFile);
        const bool exists = sim::FileExists(kThresholdFile);
        const bool unfetched = run.Failed("MW_GetSensorThreshInfo");
        const bool unwritten = run.Failed("oxa_fopen_s") || unfetched;
        const bool live = !unfetched && !run.Failed("MW_SetSensorThreshInfo");
        EXPECT_TRUE(LiveTableIs(live ? after : before) || (run.BoundedFailed() && LiveTableIs(before)));
        if (run.BoundedFailed()) {
            EXPECT_TRUE(!exists || file.empty() || file == ImageOf(after));
            return;
        }
        EXPECT_EQ(exists, !unwritten);
        EXPECT_EQ(file, unwritten || run.Failed("fwrite") ? Bytes{} : ImageOf(after));
    };
    return scenario;
}

Scenario ApplyingThresholds() {
    static Bytes sdr;
    Scenario scenario;
    scenario.name = "ApplyThresholds";
    scenario.board = BoardWith("GPU_TEMP_03");
    scenario.act = []() -> int64_t {
        sdr = GpuTemperatureRecord();
        sdr.resize(SDR_SLOT_SIZE, 0xFF);
        ModifySensorThresholdByFile(sdr.data());
        return 0;
    };
    scenario.judge = [](const Run &run) {
        Bytes original = GpuTemperatureRecord();
        original.resize(SDR_SLOT_SIZE, 0xFF);
        Bytes changed = original;
        changed[36] = 110;
        changed[37] = 105;
        changed[38] = 99;
        const bool kept = run.Failed("MW_GetSensorThreshInfo");
        EXPECT_TRUE(sdr == (kept ? original : changed) || (run.BoundedFailed() && sdr == original));
    };
    return scenario;
}

} // namespace

std::vector<Scenario> OtherScenarios() {
    return {DeletingASupply(),
            SendingTheSubCardStatus(),
            SavingAFruId(),
            LoadingAFruId(),
            WritingTheRecordFile(),
            ReadingTheRecordFile(),
            SavingThresholds(),
            ApplyingThresholds(),
            StartingUnderTheSameProfile(),
            StartingUnderAnotherProfile()};
}

} // namespace faults
