// SPDX-License-Identifier: GPL-3.0-or-later
//
// The steps.  What must be true afterwards is in checks.cpp.
#include "endurance/caller.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <stdexcept>

#include "library/profiles/catalogue.h"
#include "oxa/exports.h"
#include "simulator/simulator.h"

namespace endurance {
namespace {

constexpr size_t kMostSensors = 240; // sensor numbers of a byte, and some room
constexpr uint32_t kPsuClass = 0xFF0A;
constexpr uint8_t kDisk = 59; // card type
constexpr uint8_t kCardPool = 4;

// The library's answer must be this.
void Expect(uint64_t got, uint64_t wanted, const char *what) {
    if (got != wanted)
        throw std::runtime_error(std::string(what) + ": " + std::to_string(got) + ", not " +
                                 std::to_string(wanted));
}

uint32_t Driven(uint32_t profile) { // Sablin has no driver
    return oxa::DriverOf(profile) != nullptr ? profile : uint32_t{CUSTOM_ID_DEFAULT};
}

struct StaticSet {
    bool counted = false;
    std::vector<std::string> names;
};

StaticSet RunDriver(uint32_t profile) {
    constexpr uint16_t kNoCount = 0xBEEF;
    sim::StaticArrays &arrays = sim::CallerArrays(2048);
    arrays.count = kNoCount;
    oxa::DriverOf(profile)(arrays.slots, arrays.entries, &arrays.count);
    StaticSet out;
    out.counted = arrays.count != kNoCount;
    for (size_t i = 0; out.counted && i < arrays.count; ++i)
        out.names.push_back(TypeAndName(arrays.slots + i * SDR_SLOT_SIZE));
    return out;
}

} // namespace

Caller::Caller(uint64_t seed, const sim::Board &board, uint32_t profile, const std::string &root,
               Journal &journal, Repository &repository)
    : random_(seed), journal_(journal), repository_(repository), profile_(profile), counts_(Kinds().size()) {
    sensors_.reserve(EXT_SLOT_MAX); // what grows from here on is somebody else's
    sim::SetTracing(false);
    LearnStaticSets(board, root);
    sim::SetRoot(root);
    sim::Start(board);
    sim::CurrentBoard().custom_id = profile;
    repository_.UseForSessions();
}

// What every driver builds while the store is empty.
void Caller::LearnStaticSets(const sim::Board &board, const std::string &root) {
    sim::SetRoot(root + ".empty");
    sim::Start(board);
    for (const oxa::ProfileView &profile : oxa::kProfiles)
        if (oxa::DriverOf(profile.dwCustomId) != nullptr)
            static_names_[profile.dwCustomId] = RunDriver(profile.dwCustomId).names;
}

const std::vector<Caller::Kind> &Caller::Kinds() {
    static const std::vector<Kind> kinds = {
        {"sensor comes", 270, &Caller::AddSensor},
        {"sensor goes", 230, &Caller::RemoveSensor},
        {"power supply comes", 70, &Caller::SupplyComes},
        {"power supply goes", 70, &Caller::SupplyGoes},
        {"card comes", 25, &Caller::CardComes},
        {"card goes", 25, &Caller::CardGoes},
        {"event", 200, &Caller::SendEvent},
        {"threshold saved", 70, &Caller::SaveThreshold},
        {"static pass", 10, &Caller::Pass},
        {"question", 30, &Caller::Ask},
    };
    return kinds;
}

void Caller::Step() {
    uint32_t lot = Any(1000);
    for (current_ = 0; lot >= Kinds()[current_].per_mille; ++current_)
        lot -= Kinds()[current_].per_mille;
    ++counts_[current_].taken;
    (this->*Kinds()[current_].run)();
    journal_.Settle();
    ++journal_.steps;
    sim::Repository().clear(); // the simulator's own copies: the service that keeps them is another one
    sim::EventLog().clear();
}

// ---- sensors -----------------------------------------------------------------------------------------

// One of the profile's table, or of a card family.
SpecificSensorParam Caller::AnySensor() {
    SpecificSensorParam out = {};
    if (Any(4) == 0) {
        const CardSnrRow &family = g_atPurchaseCardSnrInfo[Any(31)];
        out.dwSensorDevType = family.dwSensorDevType;
        out.ucDeviceType = family.ucDeviceType;
        out.ucBrenmorSensorIndex = static_cast<uint8_t>(Any(family.ucCnt));
    } else {
        const SnrSpecificInfoRow *profile = g_atSnrSpecificInfo;
        while (profile->dwCustomId != sim::CurrentBoard().custom_id)
            ++profile;
        const SnrInfoRec &row = profile->ptInfo[Any(*profile->pucSnrCnt)];
        out.dwSensorDevType = row.dwSensorDevType;
        out.ucDeviceType = row.ucDeviceType;
        out.SubDeviceType = row.SubDeviceType;
    }
    out.SlotId = static_cast<uint8_t>(1 + Any(12));
    out.wBitmap = static_cast<uint16_t>(Any(64));
    for (uint8_t *limit = &out.ucUNR; limit <= &out.ucHysteresis; ++limit)
        *limit = static_cast<uint8_t>(Any(256));
    out.ucSensorSeq = static_cast<uint8_t>(Any(4));
    out.ucSecondPort = static_cast<uint8_t>(Any(4));
    if (out.ucDeviceType == kDisk)
        out.wBitmap = out.SubDeviceType = 1; // NVMe, in a state's and in a temperature's field
    return out;
}

uint8_t Caller::FreeNumber() const {
    for (uint8_t number = 1;; ++number)
        if (std::none_of(sensors_.begin(), sensors_.end(),
                         [number](const StoredSensor &s) { return s.entry.ucSensorNum == number; }))
            return number;
}

// As the header tells a caller: number the record, make its entry, append both.
void Caller::Remember(const KeptRecord &record, uint8_t device_type, uint8_t number) {
    StoredSensor sensor;
    sensor.id = record.id;
    std::memcpy(sensor.record.data(), record.bytes, record.size);
    sensor.record[SDR_SENSOR_NUM] = number;
    if (sensor.record[SDR_RECORD_TYPE] == 2 && sensor.record[SDR_SENSOR_TYPE] == 0x0C)
        sensor.record[COMPACT_SDR_OEM] = device_type; // a memory state is built with 0
    GenDevTable(sensor.record.data(), &sensor.entry);
    sensors_.push_back(sensor);
}

void Caller::AddSensor() {
    if (sensors_.size() >= kMostSensors)
        return RemoveSensor();
    SpecificSensorParam sensor = AnySensor();
    const uint8_t device_type = sensor.ucDeviceType;
    const size_t before = repository_.Count();
    const uint32_t result = SDR_AddSpecificSensor(&sensor);
    if (result != OXA_OK) {
        if (result != OXA_NOT_SUPPORTED)
            Expect(result, OXA_FAILED, "a sensor is declined");
        Expect(repository_.Count(), before, "records after a sensor was declined");
        return Decline();
    }
    Expect(repository_.Count(), before + 1, "records after a sensor came");
    const KeptRecord &record = *repository_.Find(repository_.last_id());
    const std::string name = TypeAndName(record.bytes);
    for (const StoredSensor &stored : sensors_)
        if (TypeAndName(stored.record.data()) == name)
            throw std::runtime_error("a stored sensor was taken again: " + name);
    CheckStoreIsAsWritten();
    Remember(record, device_type, FreeNumber());
    WriteStore();
}

void Caller::RemoveSensor() {
    if (sensors_.empty())
        return Decline();
    const size_t which = Any(static_cast<uint32_t>(sensors_.size()));
    repository_.Remove(sensors_[which].id);
    if (sensors_[which].entry.ucMark == 0x25) // a disk: may come again
        gRegisterInfo = {};
    sensors_.erase(sensors_.begin() + static_cast<std::ptrdiff_t>(which));
    WriteStore();
}

// First the records, then the entries.
void Caller::WriteStore() {
    auto &sdrs = journal_.sdrs[kAfter];
    auto &entries = journal_.entries[kAfter];
    for (size_t i = 0; i < sensors_.size(); ++i) {
        std::memcpy(sdrs.bytes + i * SDR_SLOT_SIZE, sensors_[i].record.data(), SDR_SLOT_SIZE);
        std::memcpy(entries.bytes + i * DEV_TAB_ENTRY_SIZE, &sensors_[i].entry, DEV_TAB_ENTRY_SIZE);
    }
    sdrs.size = static_cast<uint32_t>(sensors_.size() * SDR_SLOT_SIZE);
    entries.size = static_cast<uint32_t>(sensors_.size() * DEV_TAB_ENTRY_SIZE);
    Expect(static_cast<uint64_t>(writeExtSDRFile(sdrs.bytes, sdrs.size)), 0, "writeExtSDRFile");
    Expect(static_cast<uint64_t>(writeExtDevTabFile(entries.bytes, entries.size)), 0, "writeExtDevTabFile");
}

// ---- power supplies and cards ------------------------------------------------------------------------

void Caller::SupplyComes() {
    SpecificSensorParam supply = {};
    const uint8_t index = static_cast<uint8_t>(1 + Any(kSupplies));
    supply.dwSensorDevType = kPsuClass;
    supply.ucDeviceType = index;
    const bool there = journal_.supplies[kAfter][index] != 0;
    Expect(SDR_AddSpecificSensor(&supply), there ? OXA_FAILED : OXA_OK, "a power supply comes");
    if (there)
        return Decline();
    const uint16_t id = repository_.last_id();
    journal_.supplies[kAfter][index] = id;
    SDR_UpdateSpecificSDRRecFile(kPsuEntity, index, id, 1);
}

void Caller::SupplyGoes() {
    SpecificSensorParam supply = {};
    const uint8_t index = static_cast<uint8_t>(1 + Any(kSupplies));
    supply.dwSensorDevType = kPsuClass;
    supply.SlotId = index;
    const size_t before = repository_.Count();
    const uint16_t id = journal_.supplies[kAfter][index];
    journal_.supplies[kAfter][index] = 0;
    Expect(static_cast<uint64_t>(SDR_DeleteSpecificSDR(&supply)), 0, "a power supply goes");
    Expect(repository_.Count(), before - (id != 0 ? 1 : 0), "records after a power supply went");
    if (id == 0)
        Decline();
}

void Caller::CardComes() {
    SpecificSensorParam card = {};
    const size_t row = Any(kCards);
    card.dwSensorDevType = gPurchaseCardInfo[row].wDevType;
    card.SlotId = static_cast<uint8_t>(1 + Any(200));
    const bool free = cards_.size() < kCardPool;
    if (free) { // ids are given from the highest down
        uint8_t id = 36;
        while (std::any_of(cards_.begin(), cards_.end(), [id](const Card &c) { return c.fru_id == id; }))
            --id;
        journal_.cards[kAfter][row] = id;
    }
    Expect(SDR_AddSpecificSensor(&card), free ? OXA_OK : OXA_FAILED, "a card comes");
    if (!free)
        return Decline();
    const uint16_t id = repository_.last_id();
    Expect(repository_.Find(id)->bytes[FRU_SDR_FRU_ID], journal_.cards[kAfter][row], "FRU id of a card");
    cards_.push_back({row, journal_.cards[kAfter][row], id});
}

void Caller::CardGoes() {
    if (cards_.empty())
        return Decline();
    const size_t which = Any(static_cast<uint32_t>(cards_.size()));
    repository_.Remove(cards_[which].id);
    SetFruValidState(cards_[which].fru_id);
    cards_.erase(cards_.begin() + static_cast<std::ptrdiff_t>(which));
}

// ---- events, thresholds, passes, questions -----------------------------------------------------------

// One in ten of the steps that change nothing runs with a platform call that fails; everything must be given back then
// as well.
bool Caller::FailOneCallSometimes() {
    if (Any(10) != 0)
        return false;
    sim::FailCall(sim::FailableCalls() + 1 + Any(60));
    return true;
}

void Caller::SendEvent() {
    const LeakageInfo leak = {static_cast<uint8_t>(Any(2)), static_cast<uint8_t>(Any(16))};
    const uint32_t a = Any(40), b = Any(40), c = Any(256), flag = Any(2);
    const uint8_t small = static_cast<uint8_t>(Any(16));
    const bool faulty = FailOneCallSometimes();
    const uint32_t result = [&]() -> uint32_t {
        switch (Any(20)) {
        case 0:
            return addMemPredictiveFault(a, flag);
        case 1:
            return addPOSTErrorSel();
        case 2:
            return addS0PowerButtonSel();
        case 3:
            return addGpuSlotErrorSel(a);
        case 4:
            return addMinorCDUFaultSel(c, flag);
        case 5:
            return addMajorCDUFaultSel(c, a, flag);
        case 6:
            return addNETPortSEL(a, b, c, a, small, small, small, 1, 0);
        case 7:
            return addControllerSEL(a, b, a, flag);
        case 8:
            return addDiskSEL(4, a, b, flag);
        case 9:
            return addLDSEL(4, c, a, b, flag);
        case 10:
            return addPEMSEL(a, b, flag);
        case 11:
            return addUsageSEL(3, c, c, a, flag);
        case 12:
            return addSELAlarm(30, a, flag);
        case 13:
            return addCPUError(a, flag, b, 11, flag);
        case 14:
            return addMemError(a, b, c, flag);
        case 15:
            return addI2CStatusSel(c, flag, a, small);
        case 16:
            return addTrapSELAlarm(a, b, c, flag);
        case 17:
            return addPowerDropSEL(small, small, c, flag);
        case 18:
            return addLeakageSel(small, &leak);
        default:
            return SendSubCardStatusToFRU(journal_.sdrs[kAfter].bytes);
        }
    }();
    sim::FailCall(0);
    if (result != OXA_OK && !(faulty && result == 0xC3)) // 0xC3: the simulator's, of the sub card's message
        Expect(result, OXA_FAILED, "an event");
    if (result != OXA_OK)
        Decline();
}

void Caller::SaveThreshold() {
    char name[17] = {};
    if (!sensors_.empty() && Any(10) < 7) {
        const StoredSensor &sensor = sensors_[Any(static_cast<uint32_t>(sensors_.size()))];
        const std::string full = TypeAndName(sensor.record.data());
        std::snprintf(name, sizeof name, "%s", full.c_str() + full.find(' ') + 1);
    } else {
        std::snprintf(name, sizeof name, "NO_SENSOR_%u", Any(700));
    }
    uint8_t info[8];
    for (uint8_t &byte : info)
        byte = static_cast<uint8_t>(Any(256));
    const uint16_t mask = static_cast<uint16_t>(Any(64));
    KeepThreshold(name, info, mask);
    SaveSdrThresholdInfoInFile(name, info, mask);
}

// The table as it must be afterwards; a full one takes no new names.
void Caller::KeepThreshold(const char (&name)[17], const uint8_t (&info)[8], uint16_t mask) {
    SensorThreshTable table = {};
    auto &image = journal_.thresholds[kAfter];
    std::memcpy(&table, image.bytes, image.size);
    uint16_t at = 0;
    while (at < table.wCount && std::strncmp(table.atEntry[at].acName, name, 17) != 0)
        ++at;
    if (at == SENSOR_MAX_COUNT)
        return Decline();
    table.dwCustomId = profile_;
    table.wCount = std::max<uint16_t>(table.wCount, static_cast<uint16_t>(at + 1));
    SensorThreshEntry &entry = table.atEntry[at];
    std::memcpy(entry.acName, name, sizeof entry.acName);
    std::memcpy(&entry.ucUNR, info, sizeof info);
    entry.wMask = mask;
    std::memcpy(image.bytes, &table, sizeof table);
    image.size = sizeof table;
}

void Caller::CheckCount(uint32_t profile, size_t slots) {
    const std::vector<std::string> &all = static_names_.at(profile);
    const auto stored = [&](const std::string &name) {
        for (size_t i = 0; i < slots; ++i)
            if (TypeAndName(journal_.sdrs[kAfter].bytes + i * SDR_SLOT_SIZE) == name)
                return true;
        return false;
    };
    const auto left = all.size() - static_cast<size_t>(std::count_if(all.begin(), all.end(), stored));
    Expect(RunDriver(profile).names.size(), left, "records of a static pass");
}

// The profile changes with each pass, so that names and descriptions of all of them come.
void Caller::Pass() {
    sim::CurrentBoard().custom_id = oxa::kProfiles[Any(std::size(oxa::kProfiles))].dwCustomId;
    const uint32_t profile = Driven(sim::CurrentBoard().custom_id);
    if (!FailOneCallSometimes())
        return CheckCount(profile, sensors_.size());
    RunDriver(profile);
    sim::FailCall(0);
    Decline();
}

void Caller::Ask() {
    Expect(getExtDevTabCount(), sensors_.size(), "entries counted");
    if (sensors_.empty())
        return Decline();
    Slot record = sensors_[Any(static_cast<uint32_t>(sensors_.size()))].record;
    Expect(static_cast<uint64_t>(checkSensorExist(record.data())), 1, "a stored sensor exists");
    ModifySensorThresholdByFile(record.data());
    const uint8_t index = static_cast<uint8_t>(1 + Any(kSupplies));
    Expect(SDR_GetSepcificFruSDRRecID(kPsuEntity, index), journal_.supplies[kAfter][index],
           "record id of a power supply");
}

std::string Caller::Tally() const {
    std::string out;
    for (size_t i = 0; i < counts_.size(); ++i) {
        char line[128];
        std::snprintf(line, sizeof line, "  %-20s %3u per mille %9llu  declined %9llu\n", Kinds()[i].name,
                      Kinds()[i].per_mille, static_cast<unsigned long long>(counts_[i].taken),
                      static_cast<unsigned long long>(counts_[i].declined));
        out += line;
    }
    return out;
}

} // namespace endurance
