// SPDX-License-Identifier: GPL-3.0-or-later
#include "sets/aside.h"

#include <algorithm>

#include "base/text.h"
#include "sets/decode.h"

namespace workbench {
namespace {

using Bytes = std::span<const uint8_t>;

// A byte of a record that may be too short for it.
uint8_t At(Bytes record, size_t offset) {
    return offset < record.size() ? record[offset] : uint8_t{0};
}

std::string Entity(Bytes record, size_t offset) {
    return EntityText(At(record, offset)) + " " + Hex(At(record, offset + 1));
}

std::string EventOnly(Bytes r) {
    return SensorTypeText(At(r, 10)) + " of " + Entity(r, 8) + ", sensor number " + std::to_string(At(r, 7));
}
std::string Association(Bytes r) {
    return "container " + Entity(r, 5);
}
std::string Device(Bytes r) {
    return "device at " + Hex(At(r, 5)) + "/" + Hex(At(r, 6)) + ", " + Entity(r, 12);
}
std::string Fru(Bytes r) {
    const bool logical = At(r, 7) >> 7;
    return (logical ? "FRU id " + std::to_string(At(r, 6)) : "device at " + Hex(At(r, 6))) + ", " +
           Entity(r, 12);
}
std::string Controller(Bytes r) {
    return "slave address " + Hex(At(r, 5)) + ", " + Entity(r, 12);
}
std::string Oem(Bytes r) {
    return "manufacturer " + std::to_string(At(r, 5) | At(r, 6) << 8 | At(r, 7) << 16);
}
std::string NothingMore(Bytes) {
    return "";
}

// What a type of record is called, and what is told of it.  name_at: its type/length byte; 0: it has no name.
struct Kind {
    uint8_t type;
    const char *one, *several;
    size_t name_at;
    std::string (*what)(Bytes record);
};
constexpr Kind kKinds[] = {
    {0x03, "event-only record", "event-only records", 16, EventOnly},
    {0x08, "entity association", "entity associations", 0, Association},
    {0x09, "device-relative entity association", "device-relative entity associations", 0, Association},
    {0x10, "device locator", "device locators", 15, Device},
    {0x11, "FRU locator", "FRU locators", 15, Fru},
    {0x12, "MC locator", "MC locators", 15, Controller},
    {0x13, "MC confirmation record", "MC confirmation records", 0, NothingMore},
    {0x14, "message channel record", "message channel records", 0, NothingMore},
    {0xC0, "OEM record", "OEM records", 0, Oem},
};
constexpr const char *kUnreadable = "unreadable sensor record";

std::string Several(const std::string &kind) {
    for (const Kind &known : kKinds)
        if (kind == known.one)
            return known.several;
    return kind == kUnreadable ? "unreadable sensor records" : "records of " + kind.substr(kind.find("type"));
}

} // namespace

AsideRecord Aside(size_t place, Bytes record, const std::string &why) {
    AsideRecord out{place,
                    static_cast<uint16_t>(record[0] | record[1] << 8),
                    record[SDR_RECORD_TYPE],
                    "record of type " + Hex(record[SDR_RECORD_TYPE]),
                    "",
                    why,
                    {record.begin(), record.end()}};
    if (!why.empty()) {
        out.kind = kUnreadable;
        return out;
    }
    const auto kind = std::find_if(std::begin(kKinds), std::end(kKinds),
                                   [&out](const Kind &known) { return known.type == out.type; });
    if (kind == std::end(kKinds))
        return out;
    out.kind = kind->one;
    out.name = kind->name_at != 0 ? IdText(record, kind->name_at) : "";
    out.what = kind->what(record);
    return out;
}

std::string AsideCount(const std::vector<AsideRecord> &records) {
    std::vector<std::pair<std::string, size_t>> counts; // in the order in which they come
    for (const AsideRecord &record : records) {
        const auto known = std::find_if(counts.begin(), counts.end(),
                                        [&record](const auto &one) { return one.first == record.kind; });
        if (known == counts.end())
            counts.emplace_back(record.kind, 1);
        else
            ++known->second;
    }
    std::vector<std::string> out;
    for (const auto &[kind, count] : counts)
        out.push_back(std::to_string(count) + " " + (count == 1 ? kind : Several(kind)));
    return Join(out, ", ");
}

std::string AsideLine(const StaticSet &set) {
    return set.aside.empty() ? "" : "set aside: " + AsideCount(set.aside) + "\n";
}

Json AsideJson(const std::vector<AsideRecord> &records) {
    Json out = Json::array();
    for (const AsideRecord &record : records)
        out.push_back({{"place", record.place},
                       {"record_id", record.record_id},
                       {"type", record.type},
                       {"kind", record.kind},
                       {"name", record.name},
                       {"what", record.what},
                       {"record", HexBytes(record.bytes)}});
    return out;
}

} // namespace workbench
