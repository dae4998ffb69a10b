// SPDX-License-Identifier: GPL-3.0-or-later
#include "sets/rows.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>
#include <set>
#include <utility>

namespace workbench {
namespace {

using namespace oxa;

// "/home/x/oxa/library/profiles/default.def" as it stands in the tree.
std::string InTree(const std::string &path) {
    const size_t at = path.rfind("library/");
    return at == std::string::npos ? path : path.substr(at);
}

struct RowMaker {
    Row row;

    template <size_t N> void Take(const VariantText<N> &text) {
        row.variant = text.ac;
    }
    template <size_t N> void Take(const AnnouncedText<N> &) {}
    void Take(const Limits &) {}

    template <class... T> Row Make(const char *name, const T &...departures) {
        row.name = name;
        (Take(departures), ...);
        return row;
    }
    template <size_t P, class... T> Row Make(const TwoDigitName<P> &name, const T &...departures) {
        return Make(name.ac, departures...);
    }
};

#define LISTED(group, kind, function, ...)                                                                   \
    RowMaker{{Group::group, kind, function, "", "", InTree(__FILE__), __LINE__}}.Make(__VA_ARGS__),

// What every list is read with; each takes the word away at its end.
std::vector<Row> ListedRows() {
    return {
#define ROW LISTED
#include "library/profiles/default.def"
#define ROW LISTED
#include "library/profiles/kestrin.def"
#define ROW LISTED
#include "library/profiles/pellago.def"
#define ROW LISTED
#include "library/profiles/vorana.def"
#define ROW LISTED
#include "library/profiles/astrel.def"
#define ROW LISTED
#include "library/profiles/quorral.def"
#define ROW LISTED
#include "library/profiles/lumora.def"
#define ROW LISTED
#include "library/profiles/durnow.def"
#define ROW LISTED
#include "library/profiles/ferrisk.def"
    };
}

// By custom id; a list is named after its profile.
const std::map<uint32_t, std::vector<Row>> &AllRows() {
    static const auto all = [] {
        std::map<uint32_t, std::vector<Row>> out;
        for (Row &row : ListedRows()) {
            std::vector<Row> &rows = out[NamedProfile(std::filesystem::path(row.file).stem()).id];
            row.place = static_cast<unsigned>(rows.size()) + 1;
            rows.push_back(std::move(row));
        }
        return out;
    }();
    return all;
}

// The pattern before its number or text, what is printed there, and what stands behind it.
struct Pattern {
    std::string before, behind;
    char prints = '\0'; // d, u, X, c or s; none: the whole name is in `before`
};

Pattern Take(const std::string &pattern) {
    const size_t at = pattern.find('%');
    if (at == std::string::npos)
        return {pattern, "", '\0'};
    const size_t letter = pattern.find_first_not_of("0123456789", at + 1);
    return {pattern.substr(0, at), pattern.substr(letter + 1), pattern[letter]};
}

// A name field holds 16 characters, what is printed beyond them is cut.
std::string AsName(const std::string &printed) {
    return printed.substr(0, kLongestName);
}

// What the pattern prints with any number; kept, for a sheet may ask for thousands of names.
const std::set<std::string> &NumberedNames(const std::string &pattern, bool letters) {
    static std::map<std::string, std::set<std::string>> all;
    std::set<std::string> &names = all[pattern];
    if (!names.empty())
        return names;
    for (int number = letters ? '!' : 0; number <= (letters ? '~' : 255); ++number) {
        char printed[64];
        std::snprintf(printed, sizeof printed, pattern.c_str(), number);
        names.insert(AsName(printed));
    }
    return names;
}

bool Prints(const std::string &pattern, const std::string &name) {
    const Pattern parts = Take(pattern);
    if (parts.prints == '\0')
        return AsName(parts.before) == name;
    if (!name.starts_with(parts.before))
        return false;
    if (parts.prints == 's')
        return name.size() > parts.before.size() &&
               (name.size() == kLongestName ||
                (name.ends_with(parts.behind) && name.size() > parts.before.size() + parts.behind.size()));
    return NumberedNames(pattern, parts.prints == 'c').contains(name);
}

// Two kinds may share device code, item and name; then these tell them apart.
bool LooksLike(const SensorKind &kind, const Sensor &sensor) {
    for (const unsigned at : {SDR_RECORD_TYPE, SDR_ENTITY_ID, SDR_SENSOR_TYPE, SDR_EVENT_TYPE})
        if (kind.tHead.auc[at] != sensor.record[at])
            return false;
    return true;
}

bool VariantIsName(const Row &row) {
    const Naming naming = row.Kind().tDoes.eNaming;
    return !row.variant.empty() && (naming == Naming::kSecondGroup || naming == Naming::kInletOutlet ||
                                    naming == Naming::kSmallBoard || naming == Naming::kLongNumber);
}

} // namespace

const GroupWords &Row::Words() const {
    return *std::find_if(
        std::begin(kGroupWords), std::end(kGroupWords),
        [this](const GroupWords &words) { return words.eGroup == group; });
}

const std::vector<Row> &RowsOf(const Profile &profile) {
    return AllRows().at(profile.id);
}

std::string KindName(const Row &row) {
    return kKindPlaces[row.kind].pcName;
}

std::string KindPlace(const Row &row) {
    const auto &place = kKindPlaces[row.kind];
    return InTree(place.pcFile) + ":" + std::to_string(place.sdwLine);
}

std::string RowPlace(const Row &row) {
    return row.file + ":" + std::to_string(row.line);
}

bool MakesName(const Row &row, const std::string &name) {
    return Prints(row.name, name) || (VariantIsName(row) && Prints(row.variant, name));
}

bool HasNumber(const Row &row) {
    return row.name.find('%') != std::string::npos;
}

bool Built(const Row &row, const Sensor &sensor) {
    const Behaviour &does = row.Kind().tDoes;
    return does.tDevice.ucCode == sensor.entry[0] &&
           ((does.ucFlags & kIndexInItem) != 0 || does.tDevice.ucItem == sensor.entry[1]) &&
           MakesName(row, NameOf(sensor));
}

const Row *RowThatBuilt(const Sensor &sensor) {
    for (const auto &[id, rows] : AllRows())
        for (const Row &row : rows)
            if (LooksLike(row.Kind(), sensor) && Built(row, sensor))
                return &row;
    return nullptr;
}

std::string NameOf(const Sensor &sensor) {
    const bool full = sensor.record[SDR_RECORD_TYPE] == 0x01;
    const unsigned at = full ? FULL_SDR_NAME : COMPACT_SDR_NAME;
    const size_t length = std::min<size_t>(sensor.record[at - 1u] & 0x1F, kLongestName);
    return {reinterpret_cast<const char *>(sensor.record.data()) + at, length};
}

} // namespace workbench
