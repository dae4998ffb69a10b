// SPDX-License-Identifier: GPL-3.0-or-later
//
// What must be true of files, repository and platform between two steps, and after a kill.
#include <algorithm>
#include <set>
#include <stdexcept>

#include "endurance/caller.h"
#include "oxa/exports.h"
#include "simulator/simulator.h"

namespace endurance {
namespace {

constexpr char kSdrFile[] = "/var/tmp/extSDR.dat";
constexpr char kEntryFile[] = "/var/tmp/extDevTab.dat";
constexpr char kThresholdFile[] = "/conf/BMC1/sensor_threshold.dat";
constexpr char kRecordFile[] = "/var/SpecificSDRRec";

void Require(bool fact, const std::string &what) {
    if (!fact)
        throw std::runtime_error(what);
}

template <size_t N> void RequireImage(const char *path, const Image<N> &image) {
    const std::vector<uint8_t> file = sim::ReadFile(path);
    Require(file.size() == image.size && std::equal(file.begin(), file.end(), image.bytes),
            std::string(path) + " does not hold what was written");
}

bool IsSupply(const KeptRecord &record) {
    return IsLocatorOf(record.bytes, kPsuEntity);
}

} // namespace

void Caller::CheckEverything() {
    CheckStore();
    CheckSupplies();
    CheckCards();
    CheckThresholds();
    const std::vector<std::string> violations = sim::Violations(); // open files, sessions, semaphores too
    Require(violations.empty(), violations.empty() ? "" : violations.front());
}

void Caller::CheckStoreIsAsWritten() {
    static uint8_t room[EXT_SLOT_MAX * SDR_SLOT_SIZE];
    const auto same = [](const auto &image, int32_t got) {
        return got == static_cast<int32_t>(image.size) && std::memcmp(room, image.bytes, image.size) == 0;
    };
    Require(same(journal_.sdrs[kAfter], readExtSDRFile(room, sizeof room)), "stored records are others");
    Require(same(journal_.entries[kAfter], readExtDevTabFile(room, sizeof room)),
            "stored entries are others");
}

// Every sensor record of the repository stands in the store once, with its entry, and nothing else stands there.
void Caller::CheckStore() {
    RequireImage(kSdrFile, journal_.sdrs[kAfter]);
    RequireImage(kEntryFile, journal_.entries[kAfter]);
    std::set<uint16_t> ids;
    for (const StoredSensor &sensor : sensors_) {
        const std::string name = TypeAndName(sensor.record.data());
        Require(EntryFits(sensor.entry, sensor.record.data()), "the entry is another sensor's: " + name);
        const KeptRecord *kept = repository_.Find(sensor.id);
        Require(kept != nullptr, "stored, but not in the repository: " + name);
        Require(TypeAndName(kept->bytes) == name && ids.insert(sensor.id).second, "stored twice: " + name);
    }
    const std::vector<const KeptRecord *> all = repository_.All();
    const auto sensors = std::count_if(
        all.begin(), all.end(), [](const KeptRecord *record) { return IsSensorRecord(record->bytes); });
    Require(static_cast<size_t>(sensors) == sensors_.size(), "in the repository, but not stored");
}

// The record file names the repository's locator of every power supply that is there, and no other.
void Caller::CheckSupplies() {
    const std::vector<uint8_t> file = sim::ReadFile(kRecordFile);
    const std::string text(file.begin(), file.end());
    size_t there = 0;
    for (uint8_t index = 1; index <= kSupplies; ++index) {
        const uint16_t id = journal_.supplies[kAfter][index];
        const std::string number = std::to_string(index);
        Require(SDR_GetSepcificFruSDRRecID(kPsuEntity, index) == id, "record id of power supply " + number);
        if (id == 0)
            continue;
        ++there;
        const KeptRecord *record = repository_.Find(id);
        Require(record != nullptr && IsSupply(*record) && record->bytes[FRU_SDR_ENTITY_INSTANCE] == index,
                "no locator of power supply " + number);
        const std::string section = "[PSU_" + number + "]\nsdrRecId=" + std::to_string(id) + "\nPresence=1\n";
        Require(text.find(section) != std::string::npos, "no section of power supply " + number);
    }
    const std::vector<const KeptRecord *> all = repository_.All();
    const auto locators =
        std::count_if(all.begin(), all.end(), [](const KeptRecord *record) { return IsSupply(*record); });
    Require(static_cast<size_t>(locators) == there, "a locator that the record file does not name");
}

void Caller::CheckCards() {
    for (size_t row = 0; row < kCards; ++row) {
        uint8_t slot = 0, id = 0;
        const PurchaseCardRow &card = gPurchaseCardInfo[row];
        Require(LoadPurchaseCardFruId(card.wDevType, card.acName, &slot, &id) == 0 &&
                    id == journal_.cards[kAfter][row],
                std::string("FRU id of ") + card.acName + " in the file");
    }
}

void Caller::CheckThresholds() {
    RequireImage(kThresholdFile, journal_.thresholds[kAfter]);
    CheckRunningTable();
}

// A platform that was given no table has an empty one of its profile.
void Caller::CheckRunningTable() {
    SensorThreshTable wanted = {};
    wanted.dwCustomId = profile_;
    const auto &image = journal_.thresholds[kAfter];
    std::memcpy(&wanted, image.bytes, image.size);
    const SensorThreshTable running = sim::ThresholdTable();
    Require(std::memcmp(&running, &wanted, sizeof running) == 0, "the platform's thresholds are others");
}

// ---- after a kill ------------------------------------------------------------------------------------

// The files stand in the journal as they are.  The library counts whole slots and entries, knows every whole record, tells
// no record id but the one before or after the step that was cut off, and takes of the limits what is there.
void Caller::CheckStart() {
    InitSdrThresholdInfoFromFile(profile_);
    auto &thresholds = journal_.thresholds[kAfter];
    uint32_t saved_under = 0;
    std::memcpy(&saved_under, thresholds.bytes, std::min<size_t>(thresholds.size, sizeof saved_under));
    const bool exists = sim::FileExists(kThresholdFile);
    if (!exists || saved_under != profile_)
        thresholds = {};
    Require(!exists || saved_under == profile_ || thresholds.size == 0, "limits of another profile");
    CheckRunningTable();
    const auto &sdrs = journal_.sdrs[kAfter];
    Require(getExtDevTabCount() == journal_.entries[kAfter].size / DEV_TAB_ENTRY_SIZE, "entries counted");
    CheckCount(profile_, sdrs.size / SDR_SLOT_SIZE);
    for (size_t at = 0; at + SDR_SLOT_SIZE <= sdrs.size; at += SDR_SLOT_SIZE)
        Require(checkSensorExist(sdrs.bytes + at) == 1, "a whole record is not found");
    for (uint8_t index = 1; index <= kSupplies; ++index) {
        const uint16_t told = SDR_GetSepcificFruSDRRecID(kPsuEntity, index);
        Require(told == 0 || told == journal_.supplies[kBefore][index] ||
                    told == journal_.supplies[kAfter][index],
                "a record id that no power supply had");
    }
}

// From the repository, which no kill of this process touches: the records that were lost come back to the store, locators
// and record file agree again.  Cards are given up, and with them their FRU ids.
void Caller::Repair() {
    std::vector<StoredSensor> stored;
    const auto &sdrs = journal_.sdrs[kAfter];
    for (size_t at = 0; at + SDR_SLOT_SIZE <= sdrs.size; at += SDR_SLOT_SIZE) {
        stored.emplace_back();
        std::memcpy(stored.back().record.data(), sdrs.bytes + at, SDR_SLOT_SIZE);
    }
    uint16_t supplies[kSupplies + 1] = {};
    std::vector<KeptRecord> lost;
    for (const KeptRecord *record : repository_.All()) {
        const std::string name = TypeAndName(record->bytes);
        const auto found = std::find_if(stored.begin(), stored.end(), [&](const StoredSensor &s) {
            return TypeAndName(s.record.data()) == name;
        });
        if (IsSupply(*record))
            supplies[record->bytes[FRU_SDR_ENTITY_INSTANCE]] = record->id;
        else if (!IsSensorRecord(record->bytes))
            repository_.Remove(record->id);
        else if (found == stored.end())
            lost.push_back(*record);
        else
            Remember(*record, found->record[COMPACT_SDR_OEM], found->record[SDR_SENSOR_NUM]);
    }
    for (const KeptRecord &record : lost) // the card type of a memory state is not in its record
        Remember(record, 18, FreeNumber());
    WriteStore();
    for (uint8_t index = 1; index <= kSupplies; ++index) {
        journal_.supplies[kAfter][index] = supplies[index];
        SDR_UpdateSpecificSDRRecFile(kPsuEntity, index, supplies[index], supplies[index] != 0);
    }
    for (size_t row = 0; row < kCards; ++row) {
        uint8_t slot = 0;
        const PurchaseCardRow &card = gPurchaseCardInfo[row];
        LoadPurchaseCardFruId(card.wDevType, card.acName, &slot, &journal_.cards[kAfter][row]);
    }
    journal_.Settle();
}

} // namespace endurance
