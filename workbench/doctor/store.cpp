// SPDX-License-Identifier: GPL-3.0-or-later
//
// The extended store: records in slots, and the device-table entries that belong to them by their place.
#include <algorithm>
#include <cstring>
#include <set>

#include "base/text.h"
#include "doctor/parts.h"
#include "oxa/specific_sensors.h"
#include "runtime/stored.h"

namespace workbench {
namespace {

constexpr char kNotLookedAt[] = "does not look at it";
constexpr char kAddsAgain[] = "adds the sensor again when it is offered";

struct Slot {
    Record record{};
    bool kept = false; // in a mended copy
    const KeptRecord *in_repository = nullptr;
};

std::string SlotPlace(size_t index) {
    return "slot " + std::to_string(index + 1);
}

std::string EntryPlace(size_t index) {
    return "entry " + std::to_string(index + 1);
}

template <class T> std::vector<T> WholeOnes(const std::vector<uint8_t> &bytes) {
    std::vector<T> out(std::min<size_t>(bytes.size() / sizeof(T), EXT_SLOT_MAX));
    if (!out.empty())
        std::memcpy(out.data(), bytes.data(), out.size() * sizeof(T));
    return out;
}

// What stands behind the last whole one, and behind what the library reads at most.
void JudgeEnd(Examination &about, Which which, size_t each, const char *what) {
    const size_t size = about.File(which).bytes.size(), most = size_t{EXT_SLOT_MAX} * each;
    if (size > most)
        about.Add(which, "foreign", "byte " + std::to_string(most),
                  "more than the " + std::to_string(EXT_SLOT_MAX) + " " + what + "s that there can be",
                  kNotLookedAt, "cut off");
    else if (size % each != 0)
        about.Add(which, "torn", "byte " + std::to_string(size - size % each),
                  "the file ends after " + std::to_string(size % each) + " of the " + std::to_string(each) +
                      " bytes of " + (what[0] == 'e' ? "an " : "a ") + what,
                  kNotLookedAt, "cut off");
}

// ---- records ---------------------------------------------------------------------------------------

// Where the caller may change what it stores: the sensor's number, and the card type of a memory state.
bool MayDiffer(const uint8_t *record, size_t offset) {
    constexpr uint8_t kMemory = 0x0C;
    return offset < SDR_VERSION || offset == SDR_OWNER_LUN || offset == SDR_SENSOR_NUM ||
           (offset == COMPACT_SDR_OEM && record[SDR_RECORD_TYPE] == kCompactRecord &&
            record[SDR_SENSOR_TYPE] == kMemory);
}

// How the slot differs from the repository's record: "byte 37 is 0x5A, there 0x50"; empty: it does not.
std::string Difference(const Slot &slot) {
    const KeptRecord &there = *slot.in_repository;
    const unsigned id = slot.record[SDR_RECORD_ID] | slot.record[SDR_RECORD_ID + 1] << 8;
    if (id != 0 && id != there.id)
        return "the slot has record id " + std::to_string(id) + ", the repository " +
               std::to_string(there.id);
    for (size_t at = SDR_VERSION; at < there.size; ++at)
        if (slot.record[at] != there.slot[at] && !MayDiffer(slot.record.data(), at))
            return "byte " + std::to_string(at) + " is " + Hex(slot.record[at]) + ", in the repository " +
                   Hex(there.slot[at]);
    return "";
}

// The sensor of this type and name; of several the one with the id, else the first.
const KeptRecord *SensorLike(const Examination &about, const uint8_t *record) {
    const KeptRecord *first = nullptr;
    for (const KeptRecord &kept : about.repository) {
        if (TypeAndName(kept.slot.data()) != TypeAndName(record))
            continue;
        if (kept.id == (record[SDR_RECORD_ID] | record[SDR_RECORD_ID + 1] << 8))
            return &kept;
        first = first == nullptr ? &kept : first;
    }
    return first;
}

void JudgeAgainstRepository(Examination &about, std::vector<Slot> &slots, size_t i) {
    Slot &slot = slots[i];
    const std::string name = Quoted(slot.record.data());
    slot.in_repository = SensorLike(about, slot.record.data());
    if (slot.in_repository == nullptr) {
        slot.kept = false;
        about.Add(kStore, "orphaned", SlotPlace(i), name + " is not in the repository",
                  "takes the sensor for present: it is not built and cannot be added", "left out");
    } else if (const std::string difference = Difference(slot); !difference.empty())
        about.Add(kStore, "stale", SlotPlace(i), name + ": " + difference,
                  "looks at type and name only: the sensor is not added again", "the repository's record");
}

// An id or number that two slots share; 0 is none.
void JudgeNumbers(Examination &about, const std::vector<Slot> &slots, size_t i) {
    const uint8_t *const record = slots[i].record.data();
    if (record[SDR_SENSOR_NUM] == 0)
        return;
    for (size_t j = 0; j < i; ++j) {
        const uint8_t *const other = slots[j].record.data();
        if (slots[j].kept && other[SDR_SENSOR_NUM] == record[SDR_SENSOR_NUM] &&
            other[SDR_OWNER_LUN] == record[SDR_OWNER_LUN])
            return about.Add(kStore, "twice", SlotPlace(i),
                             Quoted(record) + " has sensor number " + Hex(record[SDR_SENSOR_NUM]) + ", as " +
                                 SlotPlace(j) + ", " + Quoted(other),
                             "nothing: events and readings of one are taken for the other's");
    }
}

void JudgeSlot(Examination &about, std::vector<Slot> &slots, size_t i) {
    Slot &slot = slots[i];
    const uint8_t *const record = slot.record.data();
    std::string fault = RecordFault(record);
    if (fault.empty() && !IsSensorRecord(record))
        fault = "a FRU locator, which is never looked for here";
    if (!fault.empty())
        return about.Add(kStore, "foreign", SlotPlace(i), fault,
                         "finds no sensor in it, and the entries behind keep their places", "left out");
    for (size_t j = 0; j < i; ++j)
        if (slots[j].kept && TypeAndName(slots[j].record.data()) == TypeAndName(record))
            return about.Add(kStore, "twice", SlotPlace(i),
                             Quoted(record) + " stands in " + SlotPlace(j) + " already",
                             "finds the first one only", "left out");
    slot.kept = true;
    JudgeNumbers(about, slots, i);
    if (about.has_repository)
        JudgeAgainstRepository(about, slots, i);
}

void JudgeMissing(Examination &about, const std::vector<Slot> &slots, std::vector<Slot> &lost) {
    std::set<std::string> known; // stored, or told already
    for (const Slot &slot : slots)
        if (slot.kept)
            known.insert(TypeAndName(slot.record.data()));
    for (const KeptRecord &kept : about.repository) {
        const uint8_t *const record = kept.slot.data();
        if (!IsSensorRecord(record) || about.IsStatic(record) || !known.insert(TypeAndName(record)).second)
            continue;
        about.Add(kStore, "no-entry", "", Shown(kept) + " of the repository is not stored", kAddsAgain,
                  "added at the end");
        lost.push_back({kept.slot, true, &kept});
    }
}

// ---- entries ---------------------------------------------------------------------------------------

std::optional<DevTabEntry> MadeFor(const Record &record) {
    DevTabEntry entry{};
    return GenDevTable(record.data(), &entry) == 0 ? std::optional(entry) : std::nullopt;
}

bool IsBlank(const DevTabEntry &entry) {
    const DevTabEntry blank{};
    return std::memcmp(&entry, &blank, sizeof entry) == 0;
}

// The platform tells whether a card is scanned in S5; the rest follows from the record.
std::string EntryDifference(const DevTabEntry &entry, const DevTabEntry &made) {
    const uint8_t *const is = reinterpret_cast<const uint8_t *>(&entry);
    const uint8_t *const is_made = reinterpret_cast<const uint8_t *>(&made);
    for (size_t at = 0; at < sizeof entry; ++at)
        if (is[at] != is_made[at] && at != offsetof(DevTabEntry, ucScanFlag))
            return "byte " + std::to_string(at) + " is " + Hex(is[at]) + ", GenDevTable() makes it " +
                   Hex(is_made[at]);
    return "";
}

std::string WhoseEntry(const DevTabEntry &entry, const std::vector<Slot> &slots) {
    for (size_t i = 0; i < slots.size(); ++i)
        if (slots[i].kept && EntryFits(entry, slots[i].record.data()))
            return "it is that of " + SlotPlace(i) + ", " + Quoted(slots[i].record.data());
    return "it is no stored sensor's";
}

constexpr char kScansOther[] = "counts it; the scanner reads another sensor's device for this one";
constexpr char kMadeAnew[] = "made anew";

void JudgeEntry(Examination &about, const std::vector<Slot> &slots, const DevTabEntry &entry, size_t i) {
    const Record &record = slots[i].record;
    const std::string name = Quoted(record.data());
    const std::optional<DevTabEntry> made = MadeFor(record);
    if (IsBlank(entry)) {
        if (made)
            about.Add(kEntries, "no-entry", EntryPlace(i), "all zeros, for " + name,
                      "counts it; the scanner does not know how to read the sensor", kMadeAnew);
        return;
    }
    if (!EntryFits(entry, record.data()))
        return about.Add(kEntries, "stale", EntryPlace(i), "not of " + name + ": " + WhoseEntry(entry, slots),
                         kScansOther, kMadeAnew);
    if (const std::string difference = made ? EntryDifference(entry, *made) : ""; !difference.empty())
        about.Add(kEntries, "foreign", EntryPlace(i), "of " + name + ": " + difference, kScansOther,
                  kMadeAnew);
}

void JudgeEntries(Examination &about, const std::vector<Slot> &slots,
                  const std::vector<DevTabEntry> &entries) {
    for (size_t i = 0; i < slots.size(); ++i)
        if (!slots[i].kept)
            continue;
        else if (i < entries.size())
            JudgeEntry(about, slots, entries[i], i);
        else if (MadeFor(slots[i].record))
            about.Add(kEntries, "no-entry", EntryPlace(i), "missing, for " + Quoted(slots[i].record.data()),
                      "does not count it; the scanner does not know how to read the sensor", kMadeAnew);
    if (entries.size() > slots.size())
        about.Add(kEntries, "orphaned", EntryPlace(slots.size()),
                  std::to_string(entries.size() - slots.size()) + " more than there are slots",
                  "counts them: its number of run-time sensors is too high", "cut off");
}

// ---- mended ----------------------------------------------------------------------------------------

Record MendedRecord(const Slot &slot) {
    if (slot.in_repository == nullptr || Difference(slot).empty())
        return slot.record;
    Record record = slot.in_repository->slot;
    record[SDR_OWNER_LUN] = slot.record[SDR_OWNER_LUN];
    record[SDR_SENSOR_NUM] = slot.record[SDR_SENSOR_NUM];
    return record;
}

DevTabEntry MendedEntry(const Record &record, const DevTabEntry *was) {
    const std::optional<DevTabEntry> made = MadeFor(record);
    const bool good =
        was != nullptr && EntryFits(*was, record.data()) && (!made || EntryDifference(*was, *made).empty());
    return good ? *was : made.value_or(DevTabEntry{});
}

void Mend(Examination &about, const std::vector<Slot> &slots, const std::vector<DevTabEntry> &entries) {
    std::vector<uint8_t> records, table;
    for (size_t i = 0; i < slots.size() && records.size() < size_t{EXT_SLOT_MAX} * SDR_SLOT_SIZE; ++i) {
        if (!slots[i].kept)
            continue;
        const Record record = MendedRecord(slots[i]);
        const DevTabEntry entry = MendedEntry(record, i < entries.size() ? &entries[i] : nullptr);
        const uint8_t *const bytes = reinterpret_cast<const uint8_t *>(&entry);
        records.insert(records.end(), record.begin(), record.end());
        table.insert(table.end(), bytes, bytes + sizeof entry);
    }
    Machine &mended = about.out.mended;
    if (mended[kStore].Has() || !records.empty())
        mended[kStore].Put(records);
    if (mended[kEntries].Has() || !table.empty())
        mended[kEntries].Put(table);
}

std::string Counted(size_t count, const std::string &one, const std::string &many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

} // namespace

void ExamineStore(Examination &about) {
    constexpr char kEmptyStore[] =
        "finds an empty store there (a link is followed), and what is written is lost";
    std::vector<Slot> slots;
    std::vector<DevTabEntry> entries;
    if (about.IsThere(kStore, kEmptyStore)) {
        for (const Record &record : WholeOnes<Record>(about.File(kStore).bytes))
            slots.push_back({record, false, nullptr});
        about.out.holds[kStore] = Counted(slots.size(), "slot", "slots");
        JudgeEnd(about, kStore, SDR_SLOT_SIZE, "slot");
    }
    if (about.IsThere(kEntries, kEmptyStore)) {
        entries = WholeOnes<DevTabEntry>(about.File(kEntries).bytes);
        about.out.holds[kEntries] = Counted(entries.size(), "entry", "entries");
        JudgeEnd(about, kEntries, DEV_TAB_ENTRY_SIZE, "entry");
    }
    for (size_t i = 0; i < slots.size(); ++i)
        JudgeSlot(about, slots, i);
    JudgeEntries(about, slots, entries);
    std::vector<Slot> lost;
    JudgeMissing(about, slots, lost);
    const size_t counted = slots.size();
    slots.insert(slots.end(), lost.begin(), lost.end());
    entries.resize(std::min(entries.size(), counted)); // what is behind belongs to nothing
    Mend(about, slots, entries);
}

} // namespace workbench
