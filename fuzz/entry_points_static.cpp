// SPDX-License-Identifier: GPL-3.0-or-later
#include <dlfcn.h>

#include <fstream>
#include <sstream>

#include "fuzz/entry_points.h"
#include "library/profiles/catalogue.h"
#include "simulator/simulator.h"

namespace fuzz {
namespace {

constexpr uint8_t kUntouched = 0xEE;
constexpr uint16_t kCallersCount = 0xBEEF;

// A slot or an entry with guard bytes round it.
template <size_t size> struct Guarded {
    uint8_t before[16];
    alignas(8) uint8_t bytes[size];
    uint8_t after[16];

    Guarded() {
        std::memset(this, kUntouched, sizeof(*this));
    }
    bool IsUntouched() const {
        return All(bytes, size);
    }
    void Check(const std::string &name) const {
        Require(All(before, 16) && All(after, 16), name + " writes beside its output");
    }
    static bool All(const uint8_t *from, size_t count) {
        return std::all_of(
            from, from + count, [](uint8_t byte) { return byte == kUntouched; });
    }
};

// A record of the length that was told: compact or full, with a name that ends with it.
void CheckRecord(const uint8_t *slot, size_t length, const std::string &who) {
    const uint8_t type = slot[SDR_RECORD_TYPE];
    Require(type == 0x01 || type == 0x02, who + ": record type " + std::to_string(type));
    Require(slot[SDR_RECORD_LENGTH] + 5u == length,
            who + ": length byte " + std::to_string(slot[SDR_RECORD_LENGTH]));
    const size_t name = type == 0x01 ? FULL_SDR_NAME : COMPACT_SDR_NAME;
    Require(length == name + (slot[name - 1] & 0x1F) && length <= name + 16,
            who + ": the name does not end with the record");
}

void CallGenerator(uint8_t index, int shape, void *function, Guarded<64> &slot, Guarded<32> &entry,
                   const std::string &name) {
    auto *const at = reinterpret_cast<DevTabEntry *>(entry.bytes);
    const uint8_t length = shape == 1   ? reinterpret_cast<IndexedGenFn>(function)(index, slot.bytes, at)
                           : shape == 2 ? reinterpret_cast<IndexLastGenFn>(function)(slot.bytes, at, index)
                                        : reinterpret_cast<StaticGenFn>(function)(slot.bytes, at);
    slot.Check(name);
    entry.Check(name);
    if (length != 0)
        return CheckRecord(slot.bytes, length, name);
    // the copy of the entry may fail after that of the record
    Require(sim::FaultWasHit() || slot.IsUntouched(), name + " gives 0 and writes the slot");
    Require(sim::FaultWasHit() || entry.IsUntouched(), name + " gives 0 and writes the entry");
}

template <int shape> void CallStatic(Reader &arguments, void *function) {
    Guarded<64> slot;
    Guarded<32> entry;
    CallGenerator(arguments.Byte(), shape, function, slot, entry, "static generator");
}

} // namespace

const std::vector<EntryPoint> &StaticGenerators() {
    static const std::vector<EntryPoint> kAll = [] {
        std::ifstream file(OXA_SOURCE_DIR "/tests/model/expected/generators.txt");
        std::vector<EntryPoint> all;
        for (std::string line; std::getline(file, line);) {
            std::istringstream in(line);
            std::string name, shape;
            in >> name >> shape;
            void *const function = dlsym(RTLD_DEFAULT, name.c_str());
            Require(function != nullptr, name + " is not exported");
            all.push_back({name, 1,
                           shape == "indexed"        ? CallStatic<1>
                           : shape == "indexed_last" ? CallStatic<2>
                                                     : CallStatic<0>,
                           function});
        }
        Require(!all.empty(), "no list of generators");
        return all;
    }();
    return kAll;
}

bool RunDriver(uint32_t custom_id) {
    const oxa::StaticDriverFn driver = oxa::DriverOf(custom_id);
    if (driver == nullptr)
        return false;
    sim::StaticArrays &arrays = sim::CallerArrays(2048, kUntouched);
    arrays.count = kCallersCount;
    driver(arrays.slots, arrays.entries, &arrays.count);
    if (arrays.count == kCallersCount) // the pass ended without a count
        return true;
    Require(arrays.count <= arrays.capacity, "the driver counts more records than there is room for");
    for (size_t i = 0; i < arrays.count; ++i) {
        const uint8_t *const slot = arrays.slots + SDR_SLOT_SIZE * i;
        CheckRecord(slot, slot[SDR_RECORD_LENGTH] + 5u, "record " + std::to_string(i));
    }
    return true;
}

} // namespace fuzz
