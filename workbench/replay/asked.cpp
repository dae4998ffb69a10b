// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/asked.h"

#include <functional>
#include <map>
#include <string_view>

#include "base/text.h"
#include "library/profiles/catalogue.h"

namespace workbench {
namespace {

const Item &ItemAt(const std::vector<Item> &items, size_t at) {
    static const Item none;
    return at < items.size() ? items[at] : none;
}

// A file that is written is a question too, and may be long: many keys of it must not become gigabytes.
std::string KeyOf(const CapturedCall &call) {
    constexpr size_t kLong = 64;
    std::string key = call.name;
    for (const Item &item : call.in) {
        const std::string &bytes = item.Bytes();
        key += '\0' + std::to_string(item.number) + '\0' +
               (bytes.size() > kLong ? std::to_string(std::hash<std::string>()(bytes)) : bytes);
    }
    return key;
}

} // namespace

std::vector<AskedOnce> AskedOnceIn(const Capture &capture) {
    std::vector<AskedOnce> out;
    std::map<std::string, size_t> places;
    for (const CapturedEntry &entry : capture.entries)
        for (const CapturedCall &call : entry.calls) {
            if (!call.ended)
                continue;
            const auto [at, fresh] = places.emplace(KeyOf(call), out.size());
            if (fresh)
                out.push_back({&call, nullptr});
            AskedOnce &asked = out[at->second];
            if (asked.otherwise == nullptr &&
                (call.result != asked.call->result || call.out != asked.call->out))
                asked.otherwise = &call;
        }
    return out;
}

std::string ProfileOfDriver(const std::string &entry) {
    constexpr std::string_view kBefore = "OXA_Add", kBehind = "StaticSensor";
    if (!entry.starts_with(kBefore) || !entry.ends_with(kBehind))
        return "";
    const std::string name = entry.substr(kBefore.size(), entry.size() - kBefore.size() - kBehind.size());
    for (const oxa::ProfileView &profile : oxa::kProfiles)
        if (SameName(profile.pcName, name))
            return profile.pcName;
    return "";
}

uint32_t InNumber(const CapturedCall &call, size_t parameter) {
    return static_cast<uint32_t>(ItemAt(call.in, parameter).number);
}

uint32_t OutNumber(const CapturedCall &call, size_t place) {
    return static_cast<uint32_t>(ItemAt(call.out, place).number);
}

int64_t ResultOf(const CapturedCall &call) {
    return call.result ? call.result->number : 0;
}

const std::string &InBytes(const CapturedCall &call, size_t parameter) {
    return ItemAt(call.in, parameter).Bytes();
}

const std::string &OutBytes(const CapturedCall &call, size_t place) {
    return ItemAt(call.out, place).Bytes();
}

uint8_t ByteAt(const std::string &bytes, size_t at) {
    return at < bytes.size() ? static_cast<uint8_t>(bytes[at]) : uint8_t{0};
}

uint32_t WordAt(const std::string &bytes, size_t at, unsigned size) {
    uint32_t word = 0;
    for (unsigned i = 0; i < size; ++i)
        word |= uint32_t{ByteAt(bytes, at + i)} << (8 * i);
    return word;
}

} // namespace workbench
