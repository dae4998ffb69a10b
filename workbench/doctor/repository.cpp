// SPDX-License-Identifier: GPL-3.0-or-later
//
// The repository, which no death of the library's process touches: what it holds is taken for true by all other parts.
#include <algorithm>
#include <map>

#include "base/text.h"
#include "doctor/parts.h"
#include "runtime/platform.h"
#include "runtime/stored.h"

namespace workbench {
namespace {

constexpr char kNobodyChooses[] = "nothing: the library never reads the repository";

void AddTwice(Examination &about, const KeptRecord &first, const KeptRecord &second,
              const std::string &what) {
    about.Add(kRepository, "twice", "record " + std::to_string(second.id), what + ", as of " + Shown(first),
              IsSensorRecord(second.slot.data())
                  ? "nothing: readers of the repository see two sensors of one name"
                  : "nothing: readers of the repository see two devices in one");
}

// Event-only records, management controllers and the like are others' matter.
bool IsOfTheLibrary(const KeptRecord &record) {
    return IsSensorRecord(record.slot.data()) || record.slot[SDR_RECORD_TYPE] == kLocatorRecord;
}

// What must be there once: ids, sensors by type and name, locators by device, FRU ids.
void FindTwice(Examination &about) {
    std::map<std::string, const KeptRecord *> seen;
    const auto meet = [&](const std::string &key, const KeptRecord &record, const std::string &what) {
        const auto [found, fresh] = seen.emplace(key, &record);
        if (!fresh)
            AddTwice(about, *found->second, record, what);
        return fresh;
    };
    for (const KeptRecord &record : about.repository) {
        const uint8_t *const slot = record.slot.data();
        meet("id " + std::to_string(record.id), record, "its id is in use twice");
        if (!IsOfTheLibrary(record))
            continue;
        const std::string name = TypeAndName(slot);
        if (IsSensorRecord(slot)) {
            meet(name, record, Quoted(slot) + " is there twice");
            continue;
        }
        const std::string device =
            std::to_string(slot[FRU_SDR_ENTITY_ID]) + "." + std::to_string(slot[FRU_SDR_ENTITY_INSTANCE]);
        if (meet("device " + device + " " + name, record, Quoted(slot) + " is there twice"))
            meet("fru " + std::to_string(slot[FRU_SDR_FRU_ID]), record,
                 "FRU id " + std::to_string(slot[FRU_SDR_FRU_ID]) + " is in use twice");
    }
}

// What keeps a record from being looked at any further; empty: nothing.
std::string FaultOf(const KeptRecord &record) {
    if (record.id == 0 || record.id == 0xFFFF)
        return "no record has this id";
    if (IsLocatorOf(record.slot.data(), kPsuEntity) && record.slot[FRU_SDR_ENTITY_INSTANCE] == 0)
        return "a locator of power supply 0, which there is not";
    return RecordFault(record.slot.data());
}

void Judge(Examination &about) {
    for (const KeptRecord &record : about.repository) {
        const uint8_t *const slot = record.slot.data();
        std::string fault = IsOfTheLibrary(record) ? FaultOf(record) : "";
        if (fault.empty() && slot[SDR_RECORD_TYPE] == kLocatorRecord &&
            slot[FRU_SDR_FRU_ID] != slot[FRU_SDR_CHANNEL])
            fault = "bytes 6 and 8 tell different FRU ids, " + std::to_string(slot[FRU_SDR_FRU_ID]) +
                    " and " + std::to_string(slot[FRU_SDR_CHANNEL]);
        if (!fault.empty())
            about.Add(kRepository, "foreign", "record " + std::to_string(record.id), fault, kNobodyChooses);
    }
}

} // namespace

void ExamineRepository(Examination &about) {
    constexpr char kNeedsFile[] = "nothing; oxa-sensors add and remove refuse the folder";
    about.has_repository = about.IsThere(kRepository, kNeedsFile);
    if (!about.has_repository)
        return;
    const std::vector<uint8_t> &bytes = about.File(kRepository).bytes;
    const RecordsRead read = ReadRecords({bytes.begin(), bytes.end()});
    for (const sim::RepositoryRecord &record : read.state.records) {
        KeptRecord kept{record.id, record.bytes.size(), {}};
        std::copy(record.bytes.begin(), record.bytes.end(), kept.slot.begin());
        about.repository.push_back(kept);
    }
    about.out.holds[kRepository] =
        std::to_string(read.state.records.size()) + (read.state.records.size() == 1 ? " record" : " records");
    about.TellUnread(kRepository, kNobodyChooses);
    const bool torn = read.fault.find("ends within") != std::string::npos;
    if (!read.fault.empty() && !(torn && about.File(kRepository).unread > 0))
        about.Add(kRepository, torn ? "torn" : "foreign", "byte " + std::to_string(read.whole), read.fault,
                  kNeedsFile, "the records in front of it");
    if (!read.fault.empty())
        about.out.mended[kRepository].bytes.resize(read.whole);
    Judge(about);
    FindTwice(about);
    std::erase_if(about.repository, [](const KeptRecord &record) {
        return !IsOfTheLibrary(record) || !FaultOf(record).empty();
    });
}

} // namespace workbench
