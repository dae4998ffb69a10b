// SPDX-License-Identifier: GPL-3.0-or-later
#include "runtime/platform.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "base/errors.h"
#include "base/input.h"
#include "base/output.h"
#include "runtime/records.h"
#include "sets/board.h"
#include "sets/static_set.h"

namespace workbench {
namespace {

constexpr uint8_t kVersion = 0x51;

uint16_t RecordId(const std::string &bytes, size_t at) {
    return static_cast<uint16_t>(static_cast<uint8_t>(bytes[at]) | static_cast<uint8_t>(bytes[at + 1]) << 8);
}

// Size of the record that begins there; 0 with the fault when it is none or is cut.
size_t SizeAt(const std::string &bytes, size_t at, std::string &fault) {
    const size_t left = bytes.size() - at;
    const size_t size =
        left < kRecordHeader ? 0 : static_cast<uint8_t>(bytes[at + SDR_RECORD_LENGTH]) + kRecordHeader;
    if (size == 0 || size > left)
        fault = "the file ends within it";
    else if (size > SDR_SLOT_SIZE || static_cast<uint8_t>(bytes[at + SDR_VERSION]) != kVersion)
        fault = "no record (the file is a repository that 'add --root' wrote)";
    return fault.empty() ? size : 0;
}

} // namespace

sim::Board LoadBoardFor(const std::string &path, const std::string &profile) {
    sim::Board board = BoardOf(path).board;
    if (!profile.empty())
        board.custom_id = NamedProfile(profile).id;
    return board;
}

void StartWith(sim::Board board, const std::vector<sim::Fault> &faults, const RepositoryState &repository) {
    sim::Start(std::move(board));
    for (const sim::Fault &fault : faults)
        sim::AddFault(fault);
    sim::Repository() = repository.records;
    sim::NextRecordId() = repository.next_id;
}

RepositoryState CurrentRepository() {
    return {sim::Repository(), sim::NextRecordId()};
}

RecordsRead ReadRecords(const std::string &bytes) {
    RecordsRead out;
    RepositoryState &state = out.state;
    while (out.whole < bytes.size()) {
        const size_t size = SizeAt(bytes, out.whole, out.fault);
        if (size == 0) {
            out.fault = "record " + std::to_string(state.records.size() + 1) + ": " + out.fault;
            break;
        }
        sim::RepositoryRecord record{RecordId(bytes, out.whole), {}};
        record.bytes.assign(bytes.begin() + static_cast<long>(out.whole),
                            bytes.begin() + static_cast<long>(out.whole + size));
        state.next_id = std::max<uint16_t>(state.next_id, static_cast<uint16_t>(record.id + 1));
        state.records.push_back(std::move(record));
        out.whole += size;
    }
    return out;
}

RepositoryState LoadRepository(const std::string &path) {
    std::error_code ignored;
    std::ifstream file;
    if (std::filesystem::is_regular_file(path, ignored)) // a pipe would be waited for
        file.open(path, std::ios::binary);
    if (!file.is_open())
        throw InputError(path + ": cannot be read");
    RecordsRead read = ReadRecords(ReadAllOf(file, path));
    if (!read.fault.empty())
        throw InputError(path + ": " + read.fault);
    return std::move(read.state);
}

std::string RecordsBytes(const RepositoryState &repository) {
    std::string bytes;
    for (const sim::RepositoryRecord &record : repository.records) {
        std::string one(record.bytes.begin(), record.bytes.end());
        one.resize(std::min(one.size(), RecordSize(record.bytes)));
        one[SDR_RECORD_ID] = static_cast<char>(record.id);
        one[SDR_RECORD_ID + 1] = static_cast<char>(record.id >> 8);
        bytes += one;
    }
    return bytes;
}

void SaveRepository(const std::string &path, const RepositoryState &repository) {
    WriteFileAtomically(path, RecordsBytes(repository));
}

} // namespace workbench
