// SPDX-License-Identifier: GPL-3.0-or-later
#include "explore/state.h"

#include <algorithm>
#include <cstring>

#include "base/errors.h"
#include "base/text.h"
#include "doctor/doctor.h"
#include "doctor/ini_file.h"
#include "oxa/specific_sensors.h"
#include "oxa/store.h"
#include "runtime/platform.h"
#include "runtime/stored.h"
#include "thresholds/image.h"

namespace workbench {
namespace {

using Text = std::string; // bytes

Text TextOf(const std::vector<uint8_t> &bytes) {
    return {bytes.begin(), bytes.end()};
}

// ---- equal states ----------------------------------------------------------------------------------

class Digest {
public:
    void Add(const Text &text) { // with its length: "ab", "c" is not "a", "bc"
        const uint64_t size = text.size();
        Mix(reinterpret_cast<const uint8_t *>(&size), sizeof size);
        Mix(reinterpret_cast<const uint8_t *>(text.data()), text.size());
    }
    void AddSorted(std::vector<Text> texts) {
        std::sort(texts.begin(), texts.end());
        for (const Text &text : texts)
            Add(text);
        Add("");
    }
    uint64_t Value() const {
        return value_;
    }

private:
    void Mix(const uint8_t *bytes, size_t size) { // words first: most of it is 14 KB of limits
        for (; size >= sizeof(uint64_t); bytes += sizeof(uint64_t), size -= sizeof(uint64_t)) {
            uint64_t word;
            std::memcpy(&word, bytes, sizeof word);
            value_ = (value_ ^ word) * kFactor;
            value_ ^= value_ >> 32;
        }
        for (; size > 0; ++bytes, --size)
            value_ = (value_ ^ *bytes) * kFactor;
    }
    static constexpr uint64_t kFactor = 0x9E3779B97F4A7C15;
    uint64_t value_ = 0xCBF29CE484222325;
};

std::vector<Text> Records() {
    std::vector<Text> out;
    for (const sim::RepositoryRecord &record : sim::Repository()) {
        out.push_back(TextOf(record.bytes));
        out.back()[0] = out.back()[1] = 0;
    }
    return out;
}

// The record that an id stands for.
Text RecordOf(uint32_t id) {
    for (const sim::RepositoryRecord &record : sim::Repository())
        if (record.id == id)
            return TextOf(record.bytes);
    return id == 0 ? "none" : "gone";
}

void AddStore(Digest &digest, const Machine &machine) {
    Text slots = TextOf(machine[kStore].bytes), entries = TextOf(machine[kEntries].bytes);
    std::vector<Text> pairs;
    while (slots.size() >= SDR_SLOT_SIZE) {
        Text slot = slots.substr(0, SDR_SLOT_SIZE);
        const auto id =
            static_cast<uint32_t>(static_cast<uint8_t>(slot[0]) | static_cast<uint8_t>(slot[1]) << 8);
        slot[0] = slot[1] = 0;
        const size_t entry = std::min<size_t>(entries.size(), DEV_TAB_ENTRY_SIZE);
        pairs.push_back(slot + RecordOf(id) + "|" + entries.substr(0, entry));
        slots.erase(0, SDR_SLOT_SIZE);
        entries.erase(0, entry);
    }
    digest.AddSorted(pairs);
    digest.Add(slots); // what is left of torn ones
    digest.Add(entries);
}

void AddIni(Digest &digest, const MachineFile &file, bool with_ids) {
    const IniText ini = ReadIni(file.bytes);
    if (ini.torn || !ini.faults.empty())
        digest.Add(TextOf(file.bytes));
    std::vector<Text> lines;
    for (const IniSection &section : ini.sections) {
        lines.push_back(section.name);
        for (const IniKey &key : section.keys)
            lines.push_back(
                section.name + "." + key.name + "=" +
                (with_ids && key.name == "sdrRecId" ? RecordOf(key.value) : std::to_string(key.value)));
    }
    digest.AddSorted(lines);
}

template <class T> void Drop(sim::LibraryMemory &memory, const T &variable) {
    const auto at = reinterpret_cast<const uint8_t *>(&variable) - memory.begin;
    if (at < 0 || static_cast<size_t>(at) + sizeof variable > memory.bytes.size())
        throw SetError("the program has a copy of one of the library's variables: nothing resets it");
    std::fill_n(memory.bytes.begin() + at, sizeof variable, 0);
}

// All that the library keeps, but for its scratch image, and with the disks in order.
void AddLibrary(Digest &digest) {
    sim::LibraryMemory memory = sim::KeptByLibrary();
    Drop(memory, g_extSdrData);
    Drop(memory, gRegisterInfo);
    digest.Add(TextOf(memory.bytes));
    std::vector<Text> disks;
    const size_t used = std::min<size_t>(gRegisterInfo.registerSlotNum, HDD_REGISTER_MAX);
    for (size_t i = 0; i < used; ++i) {
        const uint8_t *const disk = reinterpret_cast<const uint8_t *>(&gRegisterInfo.tHddInfo[i]);
        disks.emplace_back(disk, disk + sizeof(HddRegisterEntry));
    }
    digest.AddSorted(disks);
}

void AddLimits(Digest &digest, const Machine &machine, const Life &life) {
    const SensorThreshTable live = sim::ThresholdTable();
    digest.Add(TextOf(machine[kLimits].bytes));
    digest.Add({reinterpret_cast<const char *>(&live), sizeof live});
    for (const auto &[sensor, any_of] : life.Limits()) {
        digest.Add(sensor);
        for (const UserThresholds &limits : any_of)
            digest.Add({reinterpret_cast<const char *>(limits.values), sizeof limits.values});
    }
}

uint64_t DigestOf(const Machine &machine, const Life &life) {
    Digest digest;
    digest.Add(std::to_string(life.FaultsUsed()));
    for (const MachineFile &file : machine.files)
        digest.Add(file.Has() ? "there" : "");
    digest.AddSorted(Records());
    AddStore(digest, machine);
    AddIni(digest, machine[kRecordFile], true);
    AddIni(digest, machine[kFruIdFile], false);
    AddLimits(digest, machine, life);
    AddLibrary(digest);
    return digest.Value();
}

// ---- what is broken --------------------------------------------------------------------------------

// What doctor finds, under the name of what must hold.
std::string RuleOf(const FileFinding &finding) {
    switch (finding.file) {
    case kLimits:
        return "limits " + finding.rule;
    case kStore:
        return "store " + finding.rule;
    case kEntries:
        return "device-table " + finding.rule;
    case kRecordFile:
        return "record-file " + finding.rule;
    case kFruIdFile:
        return "fru-id-file " + finding.rule;
    default:
        return finding.text.starts_with("FRU id") ? "one-id"
               : finding.rule == "twice"          ? "one-record"
                                                  : "repository " + finding.rule;
    }
}

void JudgeFiles(const Machine &machine, const World &world, std::vector<Broken> &out) {
    Patient patient{machine};
    patient.custom_id = world.board.custom_id;
    for (const FileFinding &finding : Diagnose(patient).findings)
        out.push_back({RuleOf(finding), machine.files[finding.file].path +
                                            (finding.place.empty() ? "" : ", " + finding.place) + ": " +
                                            finding.text});
}

bool IsInRepository(const std::string &type_and_name) {
    const auto &records = sim::Repository();
    return std::any_of(records.begin(), records.end(), [&](const sim::RepositoryRecord &record) {
        std::vector<uint8_t> slot = record.bytes;
        slot.resize(SDR_SLOT_SIZE);
        return TypeAndName(slot.data()) == type_and_name;
    });
}

// A disk that counts as registered has its records.
void JudgeRegistry(const World &world, std::vector<Broken> &out) {
    const size_t used = std::min<size_t>(gRegisterInfo.registerSlotNum, HDD_REGISTER_MAX);
    for (const Part &part : world.parts)
        for (size_t i = 0; i < used; ++i) {
            const HddRegisterEntry &disk = gRegisterInfo.tHddInfo[i];
            const bool flags[] = {disk.tempFlag != 0, disk.statusFlag != 0};
            for (size_t n = 0; part.kind == "disk" && disk.slotNum == part.number && n < std::size(flags);
                 ++n)
                if (flags[n] && !IsInRepository(part.names[n]))
                    out.push_back({"registry", part.Text() +
                                                   " counts as registered; the repository has no record '" +
                                                   part.names[n] + "'"});
        }
}

bool Has(const SensorThreshTable &table, const UserThresholds &limits) {
    const size_t used = std::min<size_t>(table.wCount, SENSOR_MAX_COUNT);
    return std::any_of(table.atEntry, table.atEntry + used, [&](const SensorThreshEntry &entry) {
        return limits.sensor == std::string(entry.acName, strnlen(entry.acName, sizeof entry.acName)) &&
               std::memcmp(&entry.ucUNR, limits.values, sizeof limits.values) == 0 &&
               entry.wMask == limits.mask;
    });
}

void JudgeLimits(const Machine &machine, const Life &life, std::vector<Broken> &out) {
    const SensorThreshTable tables[] = {sim::ThresholdTable(), TableOf(machine[kLimits].bytes)};
    const char *const where[] = {"in the live table", "in the file"};
    for (const auto &[sensor, any_of] : life.Limits())
        for (size_t i = 0; i < std::size(tables); ++i)
            if (std::none_of(any_of.begin(), any_of.end(),
                             [&](const UserThresholds &limits) { return Has(tables[i], limits); }))
                out.push_back({std::string("limits lost ") + where[i],
                               "those that a user set for " + sensor + " are not " + where[i]});
}

Machine MachineNow() {
    Machine machine;
    for (MachineFile &file : machine.files)
        if (sim::FileExists("/" + file.path))
            file.Put(sim::ReadFile("/" + file.path));
    const std::string records = RecordsBytes(CurrentRepository());
    machine[kRepository].Put({records.begin(), records.end()});
    return machine;
}

} // namespace

WalkState Judge(const World &world, const Life &life) {
    WalkState out;
    const Machine machine = MachineNow();
    out.digest = DigestOf(machine, life);
    for (const std::string &violation : sim::Violations())
        out.broken.push_back({"platform", OneLine(violation)});
    JudgeFiles(machine, world, out.broken);
    JudgeRegistry(world, out.broken);
    JudgeLimits(machine, life, out.broken);
    return out;
}

} // namespace workbench
