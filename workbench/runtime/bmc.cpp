// SPDX-License-Identifier: GPL-3.0-or-later
#include "runtime/bmc.h"

#include <algorithm>
#include <memory>
#include <set>

#include "base/errors.h"
#include "base/text.h"
#include "sets/static_set.h"

namespace workbench {
namespace {

constexpr uint8_t kReserveRepository = 0x22, kGetSdr = 0x23;
constexpr uint8_t kGetSelEntry = 0x43;
constexpr uint8_t kNotPresent = 0xCB;
constexpr uint16_t kNone = 0xFFFF; // record id after the last record
constexpr size_t kMostAtOnce = 32; // bytes of a record in one answer

// A session; Ask gives the data behind the completion code.
class Reader {
public:
    explicit Reader(const sim::Bmc &bmc) : name_(bmc.host + ":" + std::to_string(bmc.port)) {
        std::string reason;
        session_ = sim::SessionsWith(bmc)(reason);
        if (session_ == nullptr)
            throw SetError("BMC: no session: " + reason);
    }

    // Nothing: there is no such record.  What comes behind the bytes that were asked for is not believed.
    std::vector<uint8_t> Ask(uint8_t command, const std::vector<uint8_t> &data, size_t wanted) {
        std::string reason;
        const auto answer = session_->Send(sim::kStorage, command, data, reason);
        if (!answer)
            throw SetError("BMC " + name_ + ": no answer to command " + Hex(command) + ": " + reason);
        if ((*answer)[0] == kNotPresent)
            return {};
        if ((*answer)[0] != 0)
            throw SetError("BMC " + name_ + ": command " + Hex(command) + " is answered with code " +
                           Hex((*answer)[0]));
        if (answer->size() < wanted + 1)
            throw SetError("BMC " + name_ + ": command " + Hex(command) + " is answered with " +
                           std::to_string(answer->size() - 1) + " bytes instead of " +
                           std::to_string(wanted));
        return {answer->begin() + 1, answer->begin() + 1 + static_cast<long>(wanted)};
    }

    // The id behind the record that was just read; one that came before has no end.
    uint16_t Follow(uint16_t id, const char *what) {
        if (id != kNone && !seen_.insert(id).second)
            throw SetError("BMC " + name_ + ": its " + what + " runs in a circle at id " +
                           std::to_string(id));
        return id;
    }

private:
    std::string name_;
    std::set<uint16_t> seen_;
    std::unique_ptr<sim::BmcSession> session_;
};

uint16_t FirstTwoBytes(const std::vector<uint8_t> &bytes) {
    return static_cast<uint16_t>(bytes[0] | bytes[1] << 8);
}

uint8_t Low(uint16_t word) {
    return static_cast<uint8_t>(word);
}

uint8_t High(uint16_t word) {
    return static_cast<uint8_t>(word >> 8);
}

// A piece of a record; the id of the next one stands before it.
std::vector<uint8_t> GetSdr(Reader &reader, uint16_t reservation, uint16_t id, size_t offset, size_t count) {
    return reader.Ask(kGetSdr,
                      {Low(reservation), High(reservation), Low(id), High(id), static_cast<uint8_t>(offset),
                       static_cast<uint8_t>(count)},
                      2 + count);
}

} // namespace

std::vector<sim::RepositoryRecord> ReadRepositoryOf(const sim::Bmc &bmc) {
    Reader reader(bmc);
    const std::vector<uint8_t> reserved = reader.Ask(kReserveRepository, {}, 2);
    if (reserved.empty())
        throw SetError("BMC: its repository gives no reservation");
    const uint16_t reservation = FirstTwoBytes(reserved);
    std::vector<sim::RepositoryRecord> out;
    for (uint16_t id = 0; id != kNone;) {
        const std::vector<uint8_t> head = GetSdr(reader, reservation, id, 0, kRecordHeader);
        if (head.empty())
            break; // an empty repository
        sim::RepositoryRecord record{static_cast<uint16_t>(head[2] | head[3] << 8), {}};
        record.bytes.assign(head.begin() + 2, head.end());
        const size_t size = kRecordHeader + head[2 + SDR_RECORD_LENGTH];
        while (record.bytes.size() < size) {
            const size_t count = std::min(kMostAtOnce, size - record.bytes.size());
            const auto piece = GetSdr(reader, reservation, record.id, record.bytes.size(), count);
            if (piece.empty())
                throw SetError("BMC: record " + std::to_string(record.id) + " went while it was read");
            record.bytes.insert(record.bytes.end(), piece.begin() + 2, piece.end());
        }
        out.push_back(std::move(record));
        id = reader.Follow(FirstTwoBytes(head), "repository");
    }
    return out;
}

std::vector<BmcEvent> ReadEventLogOf(const sim::Bmc &bmc) {
    constexpr size_t kRecord = 16;
    constexpr uint8_t kWhole = 0xFF;
    Reader reader(bmc);
    std::vector<BmcEvent> out;
    for (uint16_t id = 0; id != kNone;) {
        const auto answer = reader.Ask(kGetSelEntry, {0, 0, Low(id), High(id), 0, kWhole}, 2 + kRecord);
        if (answer.empty())
            break;
        out.push_back({static_cast<uint16_t>(answer[2] | answer[3] << 8),
                       {answer.begin() + 2, answer.begin() + 2 + kRecord}});
        id = reader.Follow(FirstTwoBytes(answer), "event log");
    }
    return out;
}

} // namespace workbench
