// SPDX-License-Identifier: GPL-3.0-or-later
//
// Every exported generator of the nine profiles behind one shape, as the independent model lists it (tests/model/
// generators.py): the index that the tests call it with, what it asks the platform first, what it writes then.
#ifndef OXA_TESTS_STATIC_SENSORS_GENERATORS_H
#define OXA_TESTS_STATIC_SENSORS_GENERATORS_H

#include <dlfcn.h>

#include <cctype>
#include <fstream>
#include <functional>
#include <sstream>
#include <vector>

#include "support/build_facts.h"
#include "support/static_pass.h"

namespace tests {

struct Generator {
    std::string name;
    std::string shape; // static, indexed, or indexed_last: the index is the last argument
    int index = 0;
    std::string table; // table, unit (liquid cooling), rack, or - for none
    std::string asks;  // flag, kind, intel, pch, fans, leakage, accuracy, fans_and_accuracy, not_small_board,
                       // switch_power or nothing
    uint32_t number = 0; // of the flag or the kind
    std::string refused; // how a refusal names the sensor
    std::string sensor;  // the record that it writes on GeneratorBoard()
    Record record;

    std::string Suffix() const { // "Kestrin_GenNICPowerSDR" gives "NICPowerSDR"
        return name.substr(name.find("_Gen") + 4);
    }
    std::string Prefix() const {
        return name.substr(0, name.find("_Gen") + 4);
    }
    uint8_t Call(uint8_t *slot, DevTabEntry *entry) const {
        void *const symbol = dlsym(RTLD_DEFAULT, name.c_str());
        if (symbol == nullptr)
            throw std::runtime_error(name + " is not exported");
        const auto at = static_cast<uint8_t>(index);
        if (shape == "indexed")
            return reinterpret_cast<IndexedGenFn>(symbol)(at, slot, entry);
        if (shape == "indexed_last")
            return reinterpret_cast<IndexLastGenFn>(symbol)(slot, entry, at);
        return reinterpret_cast<StaticGenFn>(symbol)(slot, entry);
    }
};

inline Generator ReadGenerator(const std::string &line) {
    std::istringstream in(line);
    Generator generator;
    std::string index, sdr, entry;
    in >> generator.name >> generator.shape >> index >> generator.table >> generator.asks >>
        generator.number >> generator.refused >> generator.sensor >> sdr >> entry;
    generator.index = index == "-" ? 0 : std::stoi(index);
    generator.record = {Literal(sdr), Literal(entry)};
    return generator;
}

inline const std::vector<Generator> &Generators() { // table by table in the order of their rows
    static const std::vector<Generator> kAll = [] {
        std::ifstream file(tests::InSource("tests/model/expected/generators.txt"));
        std::vector<Generator> all;
        for (std::string line; std::getline(file, line);)
            all.push_back(ReadGenerator(line));
        return all;
    }();
    return kAll;
}

inline std::vector<Generator> GeneratorsOf(const Profile &profile) {
    std::vector<Generator> own;
    for (const Generator &generator : Generators())
        if (generator.name.starts_with(profile.name + "_"))
            own.push_back(generator);
    return own;
}

inline const Generator &FindGenerator(const std::string &name) {
    for (const Generator &generator : Generators())
        if (name == generator.name)
            return generator;
    std::abort();
}

inline bool OneOf(const std::string &text, std::initializer_list<const char *> all) {
    return std::any_of(all.begin(), all.end(), [&](const char *one) { return text == one; });
}

// A board on which every generator writes its record.
inline sim::Board GeneratorBoard() {
    sim::Board board = BaseBoard();
    board.board_id = 0x5502;
    board.switch_board.sensors_valid = 1;
    board.liquid_cooling_mode = 1;
    return board;
}

// One call of a generator over fresh memory.
struct Built {
    uint8_t result = 0;
    Record record;
    bool Untouched() const {
        return record.sdr == Bytes(64, kUntouched) && record.entry == Bytes(32, kUntouched);
    }
};
inline Built Build(const std::function<uint8_t(uint8_t *, DevTabEntry *)> &call) {
    Built built;
    built.record = {Bytes(64, kUntouched), Bytes(32, kUntouched)};
    DevTabEntry entry;
    std::memcpy(&entry, built.record.entry.data(), 32);
    built.result = call(built.record.sdr.data(), &entry);
    std::memcpy(built.record.entry.data(), &entry, 32);
    return built;
}
inline Built Build(const Generator &generator) {
    return Build([&](uint8_t *slot, DevTabEntry *entry) { return generator.Call(slot, entry); });
}
inline Built Build(const std::string &name) {
    return Build(FindGenerator(name));
}
template <class Function> Built BuildIndexed(Function function, uint8_t index) {
    return Build([=](uint8_t *slot, DevTabEntry *entry) { return function(index, slot, entry); });
}

} // namespace tests

#endif
