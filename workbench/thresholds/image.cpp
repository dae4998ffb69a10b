// SPDX-License-Identifier: GPL-3.0-or-later
#include "thresholds/image.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "base/errors.h"
#include "base/text.h"
#include "runtime/platform.h"
#include "sets/static_set.h"

namespace workbench {

const std::array<ThresholdPlace, 6> kThresholdPlaces = {{{"LNR", "lnr", THRESH_BIT_LNR, 3},
                                                         {"LC", "lc", THRESH_BIT_LC, 4},
                                                         {"LNC", "lnc", THRESH_BIT_LNC, 5},
                                                         {"UNC", "unc", THRESH_BIT_UNC, 2},
                                                         {"UC", "uc", THRESH_BIT_UC, 1},
                                                         {"UNR", "unr", THRESH_BIT_UNR, 0}}};

namespace {

constexpr size_t kImageSize = sizeof(SensorThreshTable);
constexpr size_t kMost = 1 << 20; // more is read of no file
constexpr unsigned kAllThresholds = 0x3F;

std::string Place(size_t index) {
    return "entry " + std::to_string(index + 1) + " (byte " +
           std::to_string(offsetof(SensorThreshTable, atEntry) + index * sizeof(SensorThreshEntry)) + "): ";
}

std::string Bytes(size_t count, const char *what) {
    return "; " + std::to_string(count) + (count == 1 ? " is " : " are ") + what;
}

std::string SizeFault(size_t size) {
    const std::string is = size >= kMost ? "more than a million" : std::to_string(size);
    return is + " bytes, a threshold image has " + std::to_string(kImageSize) +
           (size >= kMost       ? ""
            : size < kImageSize ? Bytes(kImageSize - size, "missing")
                                : Bytes(size - kImageSize, "too many"));
}

// What no save of the library leaves in an entry; empty when it is sound.
std::string EntryFault(const SensorThreshEntry &entry) {
    const size_t length = strnlen(entry.acName, kLongestName);
    if (length == 0)
        return "it has no name";
    for (size_t i = 0; i < length; ++i)
        if (entry.acName[i] < ' ' || entry.acName[i] > '~')
            return "character " + std::to_string(i + 1) + " of its name is " +
                   Hex(static_cast<uint8_t>(entry.acName[i])) + ", not printable ASCII";
    for (size_t i = length; i <= kLongestName; ++i)
        if (entry.acName[i] != 0)
            return "byte " + std::to_string(i) + " of it is " + Hex(static_cast<uint8_t>(entry.acName[i])) +
                   "; behind the end of a name all are zero";
    if (entry.ucZero != 0)
        return "byte 25 of it is " + Hex(entry.ucZero) + "; it is always zero";
    return "";
}

bool IsBlank(const SensorThreshEntry &entry) {
    const uint8_t *bytes = reinterpret_cast<const uint8_t *>(&entry);
    return std::all_of(bytes, bytes + sizeof(entry), [](uint8_t byte) { return byte == 0; });
}

StoredThresholds View(const SensorThreshEntry &entry) {
    return {std::string(entry.acName, strnlen(entry.acName, kLongestName)),
            {entry.ucUNR, entry.ucUC, entry.ucUNC, entry.ucLNR, entry.ucLC, entry.ucLNC},
            {entry.aucExtra[0], entry.aucExtra[1]},
            entry.wMask};
}

size_t UsedEntries(const SensorThreshTable &table) {
    return std::min<size_t>(table.wCount, SENSOR_MAX_COUNT);
}

} // namespace

SensorThreshTable TableOf(const FileBytes &bytes) {
    SensorThreshTable table{};
    if (!bytes.empty()) // both little-endian, natural layout
        std::memcpy(&table, bytes.data(), std::min(bytes.size(), kImageSize));
    return table;
}

ThresholdImage ViewThresholdImage(const FileBytes &bytes) {
    const SensorThreshTable table = TableOf(bytes);
    ThresholdImage image{table.dwCustomId, {}};
    for (size_t i = 0; i < UsedEntries(table); ++i)
        image.entries.push_back(View(table.atEntry[i]));
    return image;
}

std::vector<ImageFault> FaultsOfImage(const FileBytes &bytes) {
    std::vector<ImageFault> out;
    if (bytes.size() != kImageSize)
        out.push_back({std::nullopt, SizeFault(bytes.size()), true});
    const SensorThreshTable table = TableOf(bytes);
    if (table.wCount > SENSOR_MAX_COUNT)
        out.push_back({std::nullopt, "damaged: the entry count (bytes 4 and 5) is " +
                                         std::to_string(table.wCount) + "; a table has at most " +
                                         std::to_string(SENSOR_MAX_COUNT)});
    for (size_t i = 0; i < UsedEntries(table); ++i)
        if (const std::string fault = EntryFault(table.atEntry[i]); !fault.empty())
            out.push_back({i, "damaged: " + Place(i) + fault});
    for (size_t i = UsedEntries(table); i < SENSOR_MAX_COUNT; ++i)
        if (!IsBlank(table.atEntry[i]))
            out.push_back({i, "damaged: " + Place(i) + "it is not empty, but the entry count is " +
                                  std::to_string(table.wCount)});
    if (table.wUnused != 0)
        out.push_back({std::nullopt, "damaged: the last two bytes (14342 and 14343) are not zero"});
    return out;
}

std::optional<size_t> ThresholdImage::Find(const std::string &name) const {
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&name](const StoredThresholds &entry) { return entry.name == name; });
    if (found == entries.end())
        return std::nullopt;
    return static_cast<size_t>(found - entries.begin());
}

std::optional<FileBytes> ReadThresholdFile(const std::string &path) {
    const std::unique_ptr<FILE, int (*)(FILE *)> file(std::fopen(path.c_str(), "rb"), std::fclose);
    if (!file && errno == ENOENT)
        return std::nullopt;
    if (!file)
        throw InputError(path + ": cannot read: " + std::strerror(errno));
    FileBytes bytes(kMost);
    bytes.resize(std::fread(bytes.data(), 1, kMost, file.get()));
    if (std::ferror(file.get()))
        throw InputError(path + ": cannot read: " + std::strerror(errno));
    return bytes;
}

ThresholdImage ParseThresholdImage(const std::string &path, const FileBytes &bytes) {
    if (const auto faults = FaultsOfImage(bytes); !faults.empty())
        throw InputError(path + ": " + faults.front().text);
    return ViewThresholdImage(bytes);
}

std::string MaskText(unsigned mask) {
    std::vector<std::string> words;
    for (const ThresholdPlace &place : kThresholdPlaces)
        if (mask & place.bit)
            words.push_back(place.key);
    if (mask & ~kAllThresholds)
        words.push_back(Hex(mask & ~kAllThresholds));
    return words.empty() ? "none" : Join(words, ", ");
}

std::string OrderFault(unsigned mask, const SixThresholds &six) {
    for (size_t side = 0; side < 2; ++side) { // LNR LC LNC, then UNC UC UNR
        const ThresholdPlace *last = nullptr;
        for (size_t i = 3 * side; i < 3 * side + 3; ++i) {
            const ThresholdPlace &place = kThresholdPlaces[i];
            if (!(mask & place.bit))
                continue;
            if (last != nullptr && six[last->index] >= six[place.index])
                return std::string(last->key) + " " + std::to_string(six[last->index]) + " is not below " +
                       place.key + " " + std::to_string(six[place.index]);
            last = &place;
        }
    }
    return "";
}

std::string SavedUnder(uint32_t custom_id) {
    const std::string name = ProfileName(custom_id); // "profile 5" when it has none
    return "profile " + std::to_string(custom_id) +
           (name == "profile " + std::to_string(custom_id) ? "" : " (" + name + ")");
}

Json StoredJson(const StoredThresholds &entry) {
    Json thresholds;
    for (const ThresholdPlace &place : kThresholdPlaces)
        thresholds[place.option] = entry.Has(place) ? Json{{"raw", entry.six[place.index]}} : Json(nullptr);
    return {{"name", entry.name},
            {"mask", entry.mask},
            {"mask_text", MaskText(entry.mask)},
            {"thresholds", thresholds},
            {"further", entry.further}};
}

} // namespace workbench
