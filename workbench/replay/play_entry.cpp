// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/play_entry.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <tuple>
#include <utility>

#include "oxa/exports.h"

namespace workbench {
namespace {

using namespace oxa::capture; // the words of the lists

constexpr size_t kMostRoom = size_t{1} << 20;
constexpr size_t kDriverCapacity = 24576;     // above what any pass builds
constexpr uint16_t kCountNotWritten = 0xFFFF; // a driver writes its count last, or not at all

// What a parameter of that type is made of.
template <class T> struct Place {
    T value{};
    bool Take(const Item &item) {
        value = static_cast<T>(item.number);
        return item.kind == Item::Kind::kNumber;
    }
    T Argument() {
        return value;
    }
    bool Holds(const Part &) const {
        return true;
    }
};
template <class T> struct Place<T *> {
    std::vector<char> bytes;
    bool null = false;
    bool Take(const Item &item) {
        null = item.kind == Item::Kind::kNull;
        const bool room = item.kind == Item::Kind::kRoom;
        const size_t size = room ? static_cast<size_t>(item.number) : item.Bytes().size();
        if (item.kind == Item::Kind::kNumber || size > kMostRoom)
            return false;
        bytes.assign(std::max<size_t>(size + 1, SDR_SLOT_SIZE),
                     '\0'); // a text has its end, a record its length
        if (!room)
            std::memcpy(bytes.data(), item.Bytes().data(), size);
        return true;
    }
    T *Argument() {
        return null ? nullptr : reinterpret_cast<T *>(bytes.data());
    }
    bool Holds(const Part &part) const {
        return null || part.size <= bytes.size();
    }
};

// The function and what its list says of its parameters, as it is called and behind it.
template <class R, class... A, size_t... I, class Describe>
std::string Play(R (*function)(A...), std::index_sequence<I...>, Describe describe,
                 const CapturedEntry &entry, Player &player) {
    std::tuple<Place<A>...> places;
    if (entry.in.size() != sizeof...(A) || !(std::get<I>(places).Take(entry.in[I]) && ...))
        return "other parameters than this program's";
    bool fits = true; // what the list says that is read and written is there
    describe([&](const Part *parts) { fits = (std::get<I>(places).Holds(parts[I]) && ...); },
             std::get<I>(places).Argument()...);
    if (!fits)
        return "shorter parameters than the library reads";
    errno = entry.error.value_or(0);
    if constexpr (std::is_same_v<R, void>) {
        function(std::get<I>(places).Argument()...);
        describe([&](const Part *parts) { player.Finish(parts, sizeof...(A), nullptr); },
                 std::get<I>(places).Argument()...);
    } else {
        const R result = function(std::get<I>(places).Argument()...);
        const Part told = Number(result);
        describe([&](const Part *parts) { player.Finish(parts, sizeof...(A), &told); },
                 std::get<I>(places).Argument()...);
    }
    return "";
}

using Driver = void (*)(uint8_t *, DevTabEntry *, uint16_t *);

std::string PlayDriver(Driver driver, const CapturedEntry &entry, Player &player) {
    if (entry.in.size() != 3)
        return "other parameters than this program's";
    const auto given = [&](size_t i) { return entry.in[i].kind != Item::Kind::kNull; };
    std::vector<uint8_t> slots(kDriverCapacity * SDR_SLOT_SIZE);
    std::vector<DevTabEntry> entries(kDriverCapacity);
    uint16_t count = kCountNotWritten;
    errno = entry.error.value_or(0);
    driver(given(0) ? slots.data() : nullptr, given(1) ? entries.data() : nullptr,
           given(2) ? &count : nullptr);
    const bool counted = count != kCountNotWritten;
    const uint32_t built = counted ? count : 0;
    const Part parts[] = {
        Out(given(0) ? slots.data() : nullptr, built * SDR_SLOT_SIZE),
        Out(given(1) ? static_cast<void *>(entries.data()) : nullptr, built * DEV_TAB_ENTRY_SIZE),
        Out(counted ? &count : nullptr)};
    player.FinishDriver(parts, 3);
    return "";
}

// ---- what the list says of the parameters of a function, by its name -------------------------------------------

namespace described {
#define OXA_ARGUMENTS(...) __VA_OPT__(, ) __VA_ARGS__
#define ENTRY(result, name, parameters, arguments, ...)                                                      \
    struct name {                                                                                            \
        template <class Use> struct With {                                                                   \
            Use use;                                                                                         \
            void operator() parameters const {                                                               \
                const Part parts[] = {__VA_ARGS__ __VA_OPT__(, ) Part{}};                                    \
                use(parts);                                                                                  \
            }                                                                                                \
        };                                                                                                   \
    };
#include "capture/entries.def"
} // namespace described

template <class Name, class R, class... A>
std::string PlayNamed(R (*function)(A...), const CapturedEntry &entry, Player &player) {
    const auto describe = [](auto use, A... arguments) {
        typename Name::template With<decltype(use)>{use}(arguments...);
    };
    return Play(function, std::index_sequence_for<A...>(), describe, entry, player);
}

struct Row {
    const char *name;
    std::string (*play)(const CapturedEntry &, Player &);
};
const Row kRows[] = {
#define DRIVER(name)                                                                                         \
    {#name, [](const CapturedEntry &entry, Player &player) { return PlayDriver(&::name, entry, player); }},
#define ENTRY(result, name, ...)                                                                             \
    {#name, [](const CapturedEntry &entry, Player &player) {                                                 \
         return PlayNamed<described::name>(&::name, entry, player);                                          \
     }},
#include "capture/entries.def"
};

} // namespace

std::string PlayEntry(const CapturedEntry &entry, Player &player) {
    for (const Row &row : kRows)
        if (row.name == entry.name)
            return row.play(entry, player);
    return "not known to this program";
}

} // namespace workbench
