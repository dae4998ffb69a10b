// SPDX-License-Identifier: GPL-3.0-or-later
//
// Damaged files of a machine: every truncation and a thousand random damages of each are found or harmless.  Harmless is
// what the library itself says: started on the damaged files it answers as it does on the whole ones.
#include <gmock/gmock.h>

#include <random>

#include "doctor/doctor.h"
#include "oxa/specific_sensors.h"
#include "oxa/store.h"
#include "oxa/thresholds.h"
#include "runtime/calls.h"
#include "runtime/platform.h"
#include "simulator/simulator.h"
#include "support/build_facts.h"

namespace {

using namespace workbench;

constexpr unsigned kDamages = 1000;
constexpr uint8_t kSupplies = 8;

SpecificSensorParam Described(std::initializer_list<std::pair<const char *, const char *>> words) {
    DescriptionDraft draft;
    for (const auto &[key, word] : words)
        SetFromWord(draft, key, word);
    return Finish(draft);
}

// What the library tells its callers when it starts on the files.
struct Answers {
    std::vector<uint8_t> limits;
    std::vector<int32_t> known; // sensors of the whole store
    uint32_t entries = 0;
    std::vector<uint16_t> supplies;
    std::vector<unsigned> cards;
    bool operator==(const Answers &) const = default;
};

sim::Board Ferrisk() { // has disks at run time
    sim::Board board;
    board.custom_id = CUSTOM_ID_FERRISK;
    return board;
}

class DoctorDamage : public testing::Test {
protected:
    DoctorDamage() {
        sim::KeepFilesInMemory();
        StartWith(Ferrisk(), {}, {});
        StartLibrary();
        for (const char *slot : {"1", "2", "3"})
            Add({{"class", "temperature"}, {"device_type", "gpu"}, {"slot", slot}, {"uc", "90"}});
        for (const char *slot : {"0", "7"}) {
            Add({{"class", "temperature"},
                 {"device_type", "nvme-disk"},
                 {"sub_type", "1"},
                 {"slot", slot},
                 {"uc", "70"}});
            Add({{"class", "disk-status"},
                 {"device_type", "nvme-disk"},
                 {"sub_type", "1"},
                 {"slot", slot},
                 {"bitmap", "1"}});
        }
        for (const char *slot : {"1", "2", "4"})
            Add({{"class", "psu-fru"}, {"slot", slot}});
        Add({{"class", "hgx-ubb-fru"}, {"slot", "1"}});
        Add({{"class", "0x020B"}, {"slot", "12"}});
        SaveThresholds({"GPU1_Temp", {95, 90, 85, 0, 0, 0, 0, 0}, 0x38});
        SaveThresholds({"INPUT_TEMP", {60, 55, 50, 0, 0, 0, 0, 0}, 0x38});
        for (MachineFile &file : patient.machine.files)
            if (file.path != "repository.sdr")
                file.Put(sim::ReadFile("/" + file.path));
        const std::string records = RecordsBytes(CurrentRepository());
        patient.machine[kRepository].Put({records.begin(), records.end()});
        patient.custom_id = CUSTOM_ID_FERRISK;
        sim::SetTracing(false);
        whole = Ask(patient.machine);
    }

    static void Add(std::initializer_list<std::pair<const char *, const char *>> words) {
        const Outcome outcome = AddSensor(Described(words), true);
        ASSERT_EQ(outcome.word, "added") << outcome.subject << ": " << outcome.why;
    }

    Answers Ask(const Machine &machine) const {
        sim::RemoveMemoryFiles();
        sim::Start(Ferrisk());
        sim::SetTracing(false);
        sim::ForgetLibraryState();
        for (const MachineFile &file : machine.files)
            sim::WriteFile("/" + file.path, file.bytes);
        Answers out;
        InitLimits(out);
        const std::vector<uint8_t> &slots = patient.machine[kStore].bytes;
        for (size_t at = 0; at < slots.size(); at += SDR_SLOT_SIZE)
            out.known.push_back(checkSensorExist(&slots[at]));
        out.entries = getExtDevTabCount();
        for (uint8_t index = 1; index <= kSupplies; ++index)
            out.supplies.push_back(SDR_GetSepcificFruSDRRecID(0x0A, index));
        for (const PurchaseCardRow &row : gPurchaseCardInfo) {
            uint8_t slot = 0, fru_id = 0;
            LoadPurchaseCardFruId(row.wDevType, row.acName, &slot, &fru_id);
            out.cards.insert(out.cards.end(), {slot, fru_id});
        }
        return out;
    }
    static void InitLimits(Answers &out) {
        StartLibrary();
        const SensorThreshTable table = sim::ThresholdTable();
        const uint8_t *const begin = reinterpret_cast<const uint8_t *>(&table);
        out.limits.assign(begin, begin + sizeof table);
    }

    // Limits are anything that a user may set: whether the library itself writes this very file when it is told to.
    static bool IsWritten(const std::vector<uint8_t> &bytes) {
        if (bytes.size() != sizeof(SensorThreshTable))
            return false;
        SensorThreshTable table;
        std::memcpy(&table, bytes.data(), sizeof table);
        sim::RemoveMemoryFiles();
        sim::Start(Ferrisk());
        sim::SetTracing(false);
        InitSdrThresholdInfoFromFile(table.dwCustomId);
        for (size_t i = 0; i < std::min<size_t>(table.wCount, SENSOR_MAX_COUNT); ++i)
            SaveSdrThresholdInfoInFile(table.atEntry[i].acName, &table.atEntry[i].ucUNR,
                                       table.atEntry[i].wMask);
        return sim::ReadFile("/conf/BMC1/sensor_threshold.dat") == bytes;
    }

    // Found, or the library answers as before; and what can be mended is not found again in the mended copy.
    void Judge(Which which, std::vector<uint8_t> bytes) {
        Patient damaged = patient;
        damaged.machine[which].Put(std::move(bytes));
        const Diagnosis diagnosis = Diagnose(damaged);
        found += !diagnosis.findings.empty();
        if (diagnosis.findings.empty()) {
            ++harmless;
            EXPECT_TRUE(Ask(damaged.machine) == whole ||
                        (which == kLimits && IsWritten(damaged.machine[kLimits].bytes)))
                << patient.machine[which].path << ": not found";
        }
        const Patient mended{diagnosis.mended, damaged.custom_id, {}};
        for (const FileFinding &finding : Diagnose(mended).findings)
            EXPECT_EQ(finding.mend, "") << finding.rule << ", " << finding.place << ": " << finding.text;
        if (which == kStore || which == kEntries || which == kRecordFile || which == kFruIdFile) {
            EXPECT_TRUE(Ask(diagnosis.mended) == whole)
                << patient.machine[which].path << ": mended, but not as it was";
        }
    }

    Patient patient;
    Answers whole;
    unsigned found = 0, harmless = 0;
};

TEST_F(DoctorDamage, AWholeMachineHasNoFinding) {
    for (const FileFinding &finding : Diagnose(patient).findings)
        ADD_FAILURE() << finding.rule << ", " << finding.place << ": " << finding.text;
    EXPECT_THAT(whole.known, testing::Each(1));
    EXPECT_EQ(whole.known.size(), 7u);
    EXPECT_EQ(whole.entries, 7u);
    EXPECT_THAT(whole.supplies, testing::ElementsAre(8, 9, 0, 10, 0, 0, 0, 0));
}

class EachFile : public DoctorDamage, public testing::WithParamInterface<Which> {};
INSTANTIATE_TEST_SUITE_P(DoctorDamage, EachFile,
                         testing::Values(kLimits, kStore, kEntries, kRecordFile, kFruIdFile, kRepository));

TEST_P(EachFile, CutAnywhereItIsFoundOrHarmless) {
    const std::vector<uint8_t> bytes = patient.machine[GetParam()].bytes;
    const size_t step = bytes.size() > 1000 ? tests::SweepStep() : 1;
    for (size_t length = 0; length < bytes.size() && !HasFailure(); length += step) {
        SCOPED_TRACE(length);
        Judge(GetParam(), {bytes.begin(), bytes.begin() + static_cast<long>(length)});
    }
    EXPECT_GT(found, harmless);
}

std::vector<uint8_t> Damaged(std::vector<uint8_t> bytes, std::mt19937 &random) {
    const auto any = [&random](size_t below) { return random() % std::max<size_t>(below, 1); };
    const auto at = [&](size_t place) { return bytes.begin() + static_cast<long>(place); };
    // two of three within the first kilobyte, where most files have all there is
    const size_t place = any(any(3) == 0 ? bytes.size() : std::min<size_t>(bytes.size(), 1024));
    const size_t length = std::min<size_t>(1 + any(any(2) == 0 ? 4 : 100), bytes.size() - place);
    switch (any(6)) {
    case 0:
        bytes[place] = static_cast<uint8_t>(bytes[place] ^ 1 << any(8));
        break;
    case 1:
        std::generate_n(at(place), length, [&] { return static_cast<uint8_t>(random()); });
        break;
    case 2:
        std::fill_n(at(place), length, any(2) == 0 ? 0x00 : 0xFF);
        break;
    case 3:
        bytes.erase(at(place), at(place + length));
        break;
    case 4: {
        const std::vector<uint8_t> part(at(place), at(place + length));
        bytes.insert(at(any(bytes.size())), part.begin(), part.end());
        break;
    }
    default:
        std::swap_ranges(at(place), at(place + length / 2), at(place + length - length / 2));
    }
    return bytes;
}

TEST_P(EachFile, DamagedAnyhowItIsFoundOrHarmless) {
    std::mt19937 random(20261122);
    for (unsigned n = 0; n < kDamages && !HasFailure(); ++n) {
        SCOPED_TRACE(n);
        Judge(GetParam(), Damaged(patient.machine[GetParam()].bytes, random));
    }
    EXPECT_GT(found, harmless);
}

} // namespace
