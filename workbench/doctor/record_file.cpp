// SPDX-License-Identifier: GPL-3.0-or-later
//
// The record file: which id the repository gave to the locator of a power supply or card.
#include <algorithm>
#include <map>

#include "base/text.h"
#include "doctor/parts.h"
#include "runtime/stored.h"

namespace workbench {
namespace {

constexpr char kRecId[] = "sdrRecId", kPresence[] = "Presence";
constexpr char kPsuPrefix[] = "PSU_";

struct Device {
    std::string section;
    uint8_t entity = 0;
    uint32_t index = 0;
    uint32_t id = 0;     // 0: not there
    bool broken = false; // its values are
    bool IsPsu() const {
        return entity == kPsuEntity;
    }
};

// "PSU_3": what it is about; nothing for another section.
std::optional<Device> DeviceOf(const std::string &section) {
    const std::pair<const char *, uint8_t> prefixes[] = {
        {kPsuPrefix, kPsuEntity}, {"PurchaseCard_", 0x0B}, {"PurchaseUBB_", 0xE0}};
    for (const auto &[prefix, entity] : prefixes) {
        if (!section.starts_with(prefix))
            continue;
        const std::string digits = section.substr(std::string(prefix).size());
        const bool number = !digits.empty() && digits.size() <= 3 && digits.front() != '0' &&
                            digits.find_first_not_of("0123456789") == std::string::npos;
        if (number && std::stoul(digits) <= 0xFF)
            return Device{section, entity, static_cast<uint32_t>(std::stoul(digits))};
    }
    return std::nullopt;
}

std::string Place(const std::string &section) {
    return "[" + Printable(section) + "]";
}

// What the library does with an entry that does not count; cards' entries it never reads.
std::string TakenForAbsent(const Device &device) {
    return device.IsPsu()
               ? "takes power supply " + std::to_string(device.index) +
                     " for not recorded: it is added again when it is offered, and cannot be removed"
               : "nothing: it reads power supplies only";
}

// The values of a section, with what is wrong about them alone.
void JudgeValues(Examination &about, const IniSection &section, Device &device) {
    const std::optional<uint32_t> id = section.Value(kRecId), presence = section.Value(kPresence);
    const auto add = [&](const std::string &rule, const std::string &text, const std::string &then) {
        device.broken = true;
        about.Add(kRecordFile, rule, Place(section.name), text, then, "as the repository has it, else gone");
    };
    for (const IniKey &key : section.keys)
        if (key.name != kRecId && key.name != kPresence)
            add("foreign", "line " + std::to_string(key.line) + ": key '" + Printable(key.name) + "'",
                "does not look at it");
    if (!id || !presence)
        return add("torn", std::string("has no key '") + (id ? kPresence : kRecId) + "'",
                   TakenForAbsent(device));
    if (*presence > 1 || (*presence == 0 && *id != 0))
        return add("foreign",
                   "presence " + std::to_string(*presence) + " with record id " + std::to_string(*id),
                   TakenForAbsent(device));
    if (*presence == 1 && (*id == 0 || *id >= 0xFFFF))
        return add("foreign", "present, with record id " + std::to_string(*id),
                   *id <= 0xFFFF ? TakenForAbsent(device) : "takes the low 16 bits for the id");
    device.id = *presence == 1 ? *id : 0;
}

bool IsLocatorOfDevice(const KeptRecord &record, const Device &device) {
    return IsLocatorOf(record.slot.data(), device.entity) &&
           record.slot[FRU_SDR_ENTITY_INSTANCE] == device.index;
}

const KeptRecord *LocatorOfDevice(const Examination &about, const Device &device) {
    const KeptRecord *found = nullptr; // the last one: the library knows of no earlier one
    for (const KeptRecord &record : about.repository)
        if (IsLocatorOfDevice(record, device))
            found = &record;
    return found;
}

// Whether its id is that of a locator of it, whatever else has the id.
bool IsRight(const Examination &about, const Device &device) {
    return std::any_of(
        about.repository.begin(), about.repository.end(),
        [&](const KeptRecord &record) {
            return record.id == device.id && IsLocatorOfDevice(record, device);
        });
}

void JudgeId(Examination &about, const Device &device) {
    if (IsRight(about, device))
        return;
    const KeptRecord *const record = about.Find(static_cast<uint16_t>(device.id));
    const std::string number = std::to_string(device.index);
    const std::string mend =
        LocatorOfDevice(about, device) != nullptr ? "the id of the repository's locator" : "gone";
    if (record == nullptr)
        about.Add(kRecordFile, "stale", Place(device.section),
                  "record " + std::to_string(device.id) + " is not in the repository",
                  device.IsPsu() ? "power supply " + number + " can be neither added nor removed (CBh)"
                                 : "nothing: it reads power supplies only",
                  mend);
    else
        about.Add(kRecordFile, "stale", Place(device.section), Shown(*record) + " is not its locator",
                  device.IsPsu() ? "removes that record in place of power supply " + number + "'s"
                                 : "nothing: it reads power supplies only",
                  mend);
}

void JudgeDevices(Examination &about, const std::vector<Device> &devices) {
    std::map<uint32_t, const Device *> by_id;
    for (const Device &device : devices) {
        if (device.id == 0)
            continue;
        if (const auto [first, fresh] = by_id.emplace(device.id, &device); !fresh)
            about.Add(kRecordFile, "twice", Place(device.section),
                      "record id " + std::to_string(device.id) + ", as " + Place(first->second->section),
                      "removes the record with the first of them that goes",
                      about.has_repository && !IsRight(about, device) ? "as the repository has it" : "");
        if (about.has_repository)
            JudgeId(about, device);
    }
}

// Locators of power supplies that no entry names.
void JudgeUnrecorded(Examination &about, const std::vector<Device> &devices) {
    for (const KeptRecord &record : about.repository) {
        if (!IsLocatorOf(record.slot.data(), kPsuEntity))
            continue;
        const uint8_t index = record.slot[FRU_SDR_ENTITY_INSTANCE];
        const auto entry = std::find_if(devices.begin(), devices.end(), [&](const Device &device) {
            return device.IsPsu() && device.index == index;
        });
        const bool recorded = entry != devices.end() && entry->id != 0;
        if (recorded && entry->id == record.id)
            continue;
        const bool last = LocatorOfDevice(about, {"", kPsuEntity, index}) == &record;
        about.Add(kRecordFile, "no-entry", Place(kPsuPrefix + std::to_string(index)),
                  Shown(record) + " of the repository is not recorded",
                  std::string("cannot remove it") +
                      (recorded ? "" : ", and adds another one when the power supply is offered"),
                  last ? "recorded" : "");
    }
}

// Entries that are sound, with the ids of the repository where there is one.
void Mend(Examination &about, std::vector<Device> devices) {
    for (const KeptRecord &record : about.repository) {
        const uint8_t index = record.slot[FRU_SDR_ENTITY_INSTANCE];
        const std::string section = kPsuPrefix + std::to_string(index);
        const bool told = std::any_of(devices.begin(), devices.end(),
                                      [&](const Device &device) { return device.section == section; });
        if (IsLocatorOf(record.slot.data(), kPsuEntity) && !told)
            devices.push_back({section, kPsuEntity, index, record.id});
    }
    std::vector<IniSection> sections;
    for (Device &device : devices) {
        const bool right = device.id != 0 && IsRight(about, device);
        if (about.has_repository && !right && (device.id != 0 || device.IsPsu() || device.broken)) {
            const KeptRecord *const locator = LocatorOfDevice(about, device);
            device.id = locator == nullptr ? 0 : locator->id;
        }
        sections.push_back({device.section, 0, {{kRecId, device.id, 0}, {kPresence, device.id != 0, 0}}});
    }
    MachineFile &mended = about.out.mended[kRecordFile];
    if (mended.Has() || !sections.empty())
        mended.Put(WriteIni(sections));
}

} // namespace

void ExamineRecordFile(Examination &about) {
    const IniText text = about.ReadLines(kRecordFile, "takes the number as it stands");
    std::vector<Device> devices;
    for (const IniSection &section : text.sections) {
        std::optional<Device> device = DeviceOf(section.name);
        if (!device) {
            about.Add(kRecordFile, "foreign", Place(section.name), "no section of the record file",
                      "does not look at it", kLeftOut);
            continue;
        }
        JudgeValues(about, section, *device);
        devices.push_back(*device);
    }
    if (about.File(kRecordFile).Has()) {
        const auto there = std::count_if(devices.begin(), devices.end(),
                                         [](const Device &device) { return device.id != 0; });
        about.out.holds[kRecordFile] =
            std::to_string(there) + (there == 1 ? " device" : " devices") + " present";
    }
    JudgeDevices(about, devices);
    JudgeUnrecorded(about, devices);
    Mend(about, devices);
}

} // namespace workbench
