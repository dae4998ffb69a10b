// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/recording.h"

#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace bench {
namespace {

constexpr char kBetween = '\t';

std::string Hex(const void *data, size_t size) {
    std::string text(2 * size, '0');
    for (size_t at = 0; at < size; ++at)
        for (size_t half = 0; half < 2; ++half)
            text[2 * at + half] =
                "0123456789abcdef"[static_cast<const uint8_t *>(data)[at] >> (4 - 4 * half) & 15];
    return text;
}

uint8_t Digit(char letter) {
    return static_cast<uint8_t>(letter <= '9' ? letter - '0' : letter - 'a' + 10);
}

Bytes FromHex(const std::string &text) {
    Bytes bytes(text.size() / 2);
    for (size_t at = 0; at < bytes.size(); ++at)
        bytes[at] = static_cast<uint8_t>(Digit(text[2 * at]) << 4 | Digit(text[2 * at + 1]));
    return bytes;
}

std::string Word(std::istringstream &line) {
    std::string word;
    std::getline(line, word, kBetween);
    return word;
}

RecordedCall ReadCall(const std::string &text) {
    std::istringstream line(text);
    RecordedCall call;
    call.function = Word(line);
    call.first = static_cast<uint32_t>(std::stoul(Word(line)));
    call.second = static_cast<uint32_t>(std::stoul(Word(line)));
    call.format = Word(line);
    call.text = Word(line);
    return call;
}

void WriteCalls(std::ofstream &file, const std::vector<RecordedCall> &calls) {
    file << calls.size() << '\n';
    for (const RecordedCall &call : calls)
        file << call.function << kBetween << call.first << kBetween << call.second << kBetween << call.format
             << kBetween << call.text << '\n';
}

std::string Line(std::ifstream &file) {
    std::string line;
    if (!std::getline(file, line))
        throw std::runtime_error("the recording ends too early");
    return line;
}

RecordedPass ReadPass(std::ifstream &file) {
    RecordedPass pass;
    pass.slots = FromHex(Line(file));
    pass.entries = FromHex(Line(file));
    for (std::vector<RecordedCall> &calls : pass.calls) {
        calls.resize(std::stoul(Line(file)));
        for (RecordedCall &call : calls)
            call = ReadCall(Line(file));
    }
    return pass;
}

} // namespace

void Save(const Recording &recording, const std::string &path) {
    std::ofstream file(path);
    file << Hex(&recording.answers, sizeof(recording.answers)) << '\n';
    for (const auto &[name, pass] : recording.passes) {
        file << name << '\n'
             << Hex(pass.slots.data(), pass.slots.size()) << '\n'
             << Hex(pass.entries.data(), pass.entries.size()) << '\n';
        for (const std::vector<RecordedCall> &calls : pass.calls)
            WriteCalls(file, calls);
    }
    if (!file.flush())
        throw std::runtime_error(path + " cannot be written");
}

Recording Load(const std::string &path) {
    std::ifstream file(path);
    if (!file)
        throw std::runtime_error(path + " cannot be read");
    Recording recording;
    const Bytes answers = FromHex(Line(file));
    if (answers.size() != sizeof(recording.answers))
        throw std::runtime_error(path + " was written by another version");
    memcpy(&recording.answers, answers.data(), answers.size());
    for (std::string name; std::getline(file, name);)
        recording.passes[name] = ReadPass(file);
    return recording;
}

size_t NameOffset(const uint8_t *slot) {
    return slot[SDR_RECORD_TYPE] == 1 ? FULL_SDR_NAME : COMPACT_SDR_NAME;
}

size_t NameLength(const uint8_t *slot) {
    return slot[NameOffset(slot) - 1] & 0x3Fu;
}

Bytes FullStore(const Bytes &slots) {
    Bytes store;
    for (size_t at = 0; store.size() < EXT_SLOT_MAX * SDR_SLOT_SIZE;
         at = (at + SDR_SLOT_SIZE) % slots.size()) {
        store.insert(store.end(), slots.begin() + long(at), slots.begin() + long(at) + SDR_SLOT_SIZE);
        uint8_t *slot = &store[store.size() - SDR_SLOT_SIZE];
        slot[NameOffset(slot) + NameLength(slot) - 1] = '~';
    }
    return store;
}

} // namespace bench
