// SPDX-License-Identifier: GPL-3.0-or-later
//
// The thresholds that users set.
#include <algorithm>
#include <cstring>

#include "base/text.h"
#include "doctor/parts.h"
#include "runtime/stored.h"
#include "thresholds/image.h"

namespace workbench {
namespace {

constexpr char kDropped[] = "left out";

std::string LimitEntry(size_t index) {
    return "entry " + std::to_string(index + 1);
}

constexpr char kAsItIs[] = "takes it as it is: it applies to a sensor of exactly this name, or to none";

// Entries that are counted and all there; behind the end of a short file there are zeros.
size_t WholeEntries(const FileBytes &bytes, const ThresholdImage &image) {
    constexpr size_t kHead = offsetof(SensorThreshTable, atEntry);
    const size_t there = bytes.size() < kHead ? 0 : (bytes.size() - kHead) / sizeof(SensorThreshEntry);
    return std::min(image.entries.size(), there);
}

bool IsFaulty(const std::vector<ImageFault> &faults, size_t entry) {
    return std::any_of(
        faults.begin(), faults.end(), [entry](const ImageFault &fault) { return fault.entry == entry; });
}

// What the library does with a file of the wrong size.
std::string ThenOfSize(const FileBytes &bytes, const ThresholdImage &image) {
    const size_t size = bytes.size();
    if (size > sizeof(SensorThreshTable))
        return "reads the first " + std::to_string(sizeof(SensorThreshTable)) + " bytes";
    const size_t lost = image.entries.size() - WholeEntries(bytes, image);
    return "takes what is there and zeros behind it, without an error line" +
           (size < sizeof image.custom_id ? ": an empty table of profile " + std::to_string(image.custom_id) +
                                                ", deleted under any other"
            : lost > 0 ? ": " + std::to_string(lost) + " of " + std::to_string(image.entries.size()) +
                             " entries are lost"
                       : "");
}

// Entries that are counted and have no name, several in a row as one; gives the first one behind them.
size_t JudgeNameless(Examination &about, const ThresholdImage &image, size_t from, size_t whole) {
    size_t end = from;
    while (end < whole && image.entries[end].name.empty())
        ++end;
    if (end != from)
        about.Add(kLimits, "foreign",
                  end - from == 1 ? LimitEntry(from)
                                  : "entries " + std::to_string(from + 1) + " to " + std::to_string(end),
                  "counted, but without a name", kAsItIs, kDropped);
    return end;
}

void JudgeForm(Examination &about, const FileBytes &bytes, const ThresholdImage &image) {
    const size_t whole = WholeEntries(bytes, image);
    size_t told = 0; // entries in front of it
    for (const ImageFault &fault : FaultsOfImage(bytes)) {
        if (fault.of_size)
            about.Add(kLimits, bytes.size() < sizeof(SensorThreshTable) ? "torn" : "foreign", "", fault.text,
                      ThenOfSize(bytes, image), "whole entries, at their full length");
        else if (!fault.entry)
            about.Add(kLimits, "foreign", "", fault.text, "takes it as it is; at most 512 entries count",
                      "as the entries that are left need it");
        else if (*fault.entry >= image.entries.size())
            about.Add(kLimits, "foreign", LimitEntry(*fault.entry), fault.text, "keeps it and never uses it",
                      kDropped);
        else if (*fault.entry >= told && *fault.entry < whole) {
            told = JudgeNameless(about, image, *fault.entry, whole);
            if (told == *fault.entry)
                about.Add(kLimits, "foreign", LimitEntry(told), fault.text, kAsItIs, kDropped);
        }
    }
}

void JudgeProfile(Examination &about, const ThresholdImage &image) {
    const std::optional<uint32_t> &now = about.patient.custom_id;
    if (now && *now != image.custom_id)
        about.Add(kLimits, "stale", "",
                  "saved under " + SavedUnder(image.custom_id) + ", the machine has " + SavedUnder(*now),
                  "deletes the file: " + std::to_string(image.entries.size()) + " entries are lost");
    else if (SavedUnder(image.custom_id).find('(') == std::string::npos)
        about.Add(kLimits, "foreign", "",
                  "saved under " + SavedUnder(image.custom_id) + ", which the library does not know",
                  "deletes the file, unless the machine tells this profile");
}

// A full record of the name, wherever one is known: repository, store, static set.
const uint8_t *FullRecordOf(const Examination &about, const std::string &name,
                            const std::vector<Record> &store) {
    const auto fits = [&name](const uint8_t *slot) {
        return slot[SDR_RECORD_TYPE] == kFullRecord && NameOf(slot) == name;
    };
    for (const KeptRecord &kept : about.repository)
        if (fits(kept.slot.data()))
            return kept.slot.data();
    for (const Record &record : store)
        if (fits(record.data()))
            return record.data();
    if (about.patient.static_set)
        for (const Record &record : *about.patient.static_set)
            if (fits(record.data()))
                return record.data();
    return nullptr;
}

std::vector<Record> WholeSlots(const MachineFile &file) {
    std::vector<Record> out(std::min<size_t>(file.bytes.size() / SDR_SLOT_SIZE, EXT_SLOT_MAX));
    for (size_t i = 0; i < out.size(); ++i)
        std::copy_n(file.bytes.begin() + static_cast<long>(i * SDR_SLOT_SIZE), SDR_SLOT_SIZE, out[i].begin());
    return out;
}

void JudgeUse(Examination &about, const ThresholdImage &image) {
    const FileBytes &bytes = about.File(kLimits).bytes;
    const std::vector<Record> store = WholeSlots(about.File(kStore));
    const std::vector<ImageFault> faults = FaultsOfImage(bytes);
    for (size_t i = 0; i < WholeEntries(bytes, image); ++i) {
        const StoredThresholds &entry = image.entries[i];
        if (IsFaulty(faults, i))
            continue;
        const std::string name = "'" + Printable(entry.name) + "'";
        const uint8_t *const record = FullRecordOf(about, entry.name, store);
        if (const size_t first = *image.Find(entry.name); first != i)
            about.Add(kLimits, "twice", LimitEntry(i), name + " has " + LimitEntry(first) + " already",
                      "finds the first one only", kDropped);
        else if (const std::string fault = OrderFault(entry.mask, entry.six); !fault.empty())
            about.Add(kLimits, "refused", LimitEntry(i), name + ": " + fault,
                      "lays it over no record: limits must rise");
        else if (record != nullptr && record[SDR_READING_MASK] != static_cast<uint8_t>(entry.mask))
            about.Add(kLimits, "refused", LimitEntry(i),
                      name + ": saved for " + MaskText(entry.mask) + ", the record has " +
                          MaskText(record[SDR_READING_MASK]),
                      "lays it over no record: the masks must be the same");
        else if (record == nullptr && about.patient.static_set)
            about.Add(kLimits, "orphaned", LimitEntry(i), "no sensor with limits is called " + name,
                      "keeps it until such a sensor comes");
    }
}

// Sound entries, each name once.
FileBytes Mended(const FileBytes &bytes) {
    const SensorThreshTable table = TableOf(bytes);
    SensorThreshTable out{};
    out.dwCustomId = table.dwCustomId;
    const ThresholdImage image = ViewThresholdImage(bytes);
    const std::vector<ImageFault> faults = FaultsOfImage(bytes);
    for (size_t i = 0; i < WholeEntries(bytes, image); ++i)
        if (!IsFaulty(faults, i) && *image.Find(image.entries[i].name) == i)
            out.atEntry[out.wCount++] = table.atEntry[i];
    const uint8_t *const begin = reinterpret_cast<const uint8_t *>(&out);
    return {begin, begin + sizeof out};
}

} // namespace

void ExamineLimits(Examination &about) {
    if (!about.IsThere(kLimits, "reads and writes whatever that is or leads to"))
        return;
    const FileBytes &bytes = about.File(kLimits).bytes;
    const ThresholdImage image = ViewThresholdImage(bytes);
    about.out.holds[kLimits] = std::to_string(image.entries.size()) +
                               (image.entries.size() == 1 ? " entry" : " entries") + ", saved under " +
                               SavedUnder(image.custom_id);
    JudgeForm(about, bytes, image);
    JudgeProfile(about, image);
    JudgeUse(about, image);
    about.out.mended[kLimits].bytes = Mended(bytes);
}

} // namespace workbench
