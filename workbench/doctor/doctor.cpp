// SPDX-License-Identifier: GPL-3.0-or-later
#include "doctor/doctor.h"

#include <algorithm>

#include "base/text.h"
#include "doctor/parts.h"
#include "runtime/stored.h"

namespace workbench {
namespace {

// Up to the end of the last whole line, where the rest was not read.
std::vector<uint8_t> WholeLines(const MachineFile &file) {
    const auto last = std::find(file.bytes.rbegin(), file.bytes.rend(), '\n');
    return {file.bytes.begin(), file.unread > 0 ? last.base() : file.bytes.end()};
}

} // namespace

std::vector<std::pair<std::string, std::string>> FileRules() {
    return {{"torn", "the file ends where no write of the library ends"},
            {"foreign", "bytes or lines that the library does not write"},
            {"stale", "an entry tells what is not so any more"},
            {"orphaned", "an entry belongs to nothing"},
            {"no-entry", "a record has no entry"},
            {"twice", "a name or an id is in use twice"},
            {"refused", "the library reads an entry and never uses it"}};
}

bool Examination::IsThere(Which which, const std::string &then) {
    const MachineFile &file = File(which);
    out.holds[which] = file.kind == FileKind::kAbsent ? "not there" : file.what;
    const bool from_repository = has_repository && which != kLimits;
    if (file.kind == FileKind::kOther)
        Add(which, "foreign", "", file.what + " is in its place", then,
            from_repository ? "as the repository has it, else left out" : kLeftOut);
    return file.Has();
}

void Examination::TellUnread(Which which, const std::string &then) {
    const MachineFile &file = File(which);
    if (file.unread > 0)
        Add(which, "foreign", "",
            "has " + std::to_string(file.Size()) + " bytes; only what is whole in the first " +
                std::to_string(file.bytes.size()) + " was looked at",
            then, kLeftOut);
}

IniText Examination::ReadLines(Which which, const std::string &then_torn) {
    constexpr char kThen[] = "what the platform's INI functions make of it";
    if (!IsThere(which, kThen))
        return {};
    TellUnread(which, kThen);
    const IniText text = ReadIni(WholeLines(File(which)));
    for (const IniFault &fault : text.faults)
        Add(which, "foreign", "line " + std::to_string(fault.line), fault.text, kThen, kLeftOut);
    if (text.torn)
        Add(which, "torn", "", "the last line does not end: a number may be cut", then_torn,
            has_repository ? "as the repository has it" : "the line as it stands");
    return text;
}

const KeptRecord *Examination::Find(uint16_t id) const {
    const auto found = std::find_if(repository.begin(), repository.end(),
                                    [id](const KeptRecord &record) { return record.id == id; });
    return found == repository.end() ? nullptr : &*found;
}

bool Examination::IsStatic(const uint8_t *record) const {
    return patient.static_set &&
           std::any_of(
               patient.static_set->begin(), patient.static_set->end(),
               [&](const Record &other) { return TypeAndName(other.data()) == TypeAndName(record); });
}

std::string Quoted(const uint8_t *record) {
    return "'" + Printable(NameOf(record)) + "'";
}

std::string Shown(const KeptRecord &record) {
    return "record " + std::to_string(record.id) + " (" + Quoted(record.slot.data()) + ")";
}

std::string RecordFault(const uint8_t *slot) {
    const uint8_t type = slot[SDR_RECORD_TYPE];
    if (std::all_of(slot, slot + SDR_SLOT_SIZE, [](uint8_t byte) { return byte == 0; }))
        return "all zeros";
    if (slot[SDR_VERSION] != 0x51)
        return "byte 2 is " + Hex(slot[SDR_VERSION]) + ", of records 0x51";
    if (!IsSensorRecord(slot) && type != kLocatorRecord)
        return "record type " + Hex(type);
    const size_t head = type == kFullRecord      ? FULL_SDR_NAME
                        : type == kCompactRecord ? COMPACT_SDR_NAME
                                                 : FRU_SDR_NAME;
    const uint8_t name = slot[head - 1];
    const size_t length = name & 0x3F;
    if ((name & 0xC0) != 0xC0 || length == 0 || length > SENSOR_NAME_SIZE - 1)
        return "byte " + std::to_string(head - 1) + ", the length of its name, is " + Hex(name);
    if (slot[SDR_RECORD_LENGTH] + size_t{SDR_RECORD_LENGTH} + 1 != head + length)
        return "its length byte is " + std::to_string(slot[SDR_RECORD_LENGTH]) + ", its name ends after " +
               std::to_string(head + length - SDR_RECORD_LENGTH - 1);
    if (Printable(NameOf(slot)) != NameOf(slot))
        return "its name " + Quoted(slot) + " is not printable";
    return "";
}

Diagnosis Diagnose(const Patient &patient) {
    Diagnosis out;
    out.mended = patient.machine;
    out.mended[kRepository].path = Machine()[kRepository].path; // wherever it came from
    Examination about{patient, out, false, {}};
    ExamineRepository(about);
    ExamineLimits(about);
    ExamineStore(about);
    ExamineRecordFile(about);
    ExamineFruIdFile(about);
    std::stable_sort(out.findings.begin(), out.findings.end(),
                     [](const FileFinding &a, const FileFinding &b) { return a.file < b.file; });
    return out;
}

} // namespace workbench
