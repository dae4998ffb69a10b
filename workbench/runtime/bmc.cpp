// SPDX-License-Identifier: GPL-3.0-or-later
#include "runtime/bmc.h"

#include <algorithm>
#include <memory>
#include <set>

#include "base/errors.h"
#include "base/progress.h"
#include "base/text.h"
#include "sets/static_set.h"

namespace workbench {
namespace {

constexpr uint8_t kSensorEvent = 0x04; // network function
constexpr uint8_t kGetRepositoryInfo = 0x20, kReserveRepository = 0x22, kGetSdr = 0x23;
constexpr uint8_t kGetThresholds = 0x27;
constexpr uint8_t kGetSelEntry = 0x43;
constexpr uint8_t kNotReserved = 0xC5, kTooMuchAsked = 0xCA, kNotPresent = 0xCB; // completion codes
constexpr uint16_t kNone = 0xFFFF;                   // record id after the last record
constexpr size_t kMostAtOnce = 32, kLeastAtOnce = 8; // bytes of a record in one answer
constexpr unsigned kMostReservations = 100;          // somebody else may reserve in between

uint16_t TwoBytes(const std::vector<uint8_t> &bytes, size_t at = 0) {
    return static_cast<uint16_t>(bytes[at] | bytes[at + 1] << 8);
}

uint8_t Low(uint16_t word) {
    return static_cast<uint8_t>(word);
}

uint8_t High(uint16_t word) {
    return static_cast<uint8_t>(word >> 8);
}

std::string Address(const sim::Bmc &bmc) {
    return bmc.host + ":" + std::to_string(bmc.port);
}

// A session; Ask gives the data behind the completion code.
class Reader {
public:
    explicit Reader(const sim::Bmc &bmc) : name_(Address(bmc)) {
        std::string reason;
        session_ = sim::SessionsWith(bmc)(reason);
        if (session_ == nullptr)
            throw SetError("BMC: no session: " + reason);
    }

    using Bytes = std::vector<uint8_t>;

    // Completion code and data, as they come.
    Bytes Send(uint8_t command, const Bytes &data, uint8_t network_function = sim::kStorage,
               uint8_t lun = 0) {
        std::string reason;
        const auto answer = session_->Send(network_function, command, data, reason, lun);
        if (!answer)
            throw SetError("BMC " + name_ + ": no answer to command " + Hex(command) + ": " + reason);
        return *answer;
    }

    // Nothing: there is no such record.  What comes behind the bytes that were asked for is not believed.
    Bytes Ask(uint8_t command, const Bytes &data, size_t wanted) {
        return Checked(command, Send(command, data), wanted);
    }

    // A piece of a record of at most so many bytes; the id of the next one stands before it.
    Bytes GetSdr(uint16_t id, size_t offset, size_t count) {
        for (unsigned tries = 0;; ++tries) {
            count = std::min(count, at_once_);
            const Bytes answer = Send(kGetSdr, {Low(reservation_), High(reservation_), Low(id), High(id),
                                                static_cast<uint8_t>(offset), static_cast<uint8_t>(count)});
            if (answer[0] == kNotReserved && tries < kMostReservations)
                Reserve();
            else if (answer[0] == kTooMuchAsked && at_once_ > kLeastAtOnce && count == at_once_)
                at_once_ /= 2;
            else
                return Checked(kGetSdr, answer, 2 + count);
        }
    }

    void Reserve() {
        const Bytes reserved = Ask(kReserveRepository, {}, 2);
        if (reserved.empty())
            throw SetError("BMC " + name_ + ": its repository gives no reservation");
        reservation_ = TwoBytes(reserved);
    }

    // The id behind the record that was just read; one that came before has no end.
    uint16_t Follow(uint16_t id, const char *what) {
        if (id != kNone && !seen_.insert(id).second)
            throw SetError("BMC " + name_ + ": its " + what + " runs in a circle at id " +
                           std::to_string(id));
        return id;
    }

private:
    Bytes Checked(uint8_t command, const Bytes &answer, size_t wanted) const {
        if (answer[0] == kNotPresent)
            return {};
        if (answer[0] != 0)
            throw SetError("BMC " + name_ + ": command " + Hex(command) + " is answered with code " +
                           Hex(answer[0]));
        if (answer.size() < wanted + 1)
            throw SetError("BMC " + name_ + ": command " + Hex(command) + " is answered with " +
                           std::to_string(answer.size() - 1) + " bytes instead of " + std::to_string(wanted));
        return {answer.begin() + 1, answer.begin() + 1 + static_cast<long>(wanted)};
    }

    std::string name_;
    std::set<uint16_t> seen_;
    uint16_t reservation_ = 0;
    size_t at_once_ = kMostAtOnce;
    std::unique_ptr<sim::BmcSession> session_;
};

sim::RepositoryRecord ReadRecord(Reader &reader, const std::vector<uint8_t> &head) {
    sim::RepositoryRecord record{static_cast<uint16_t>(head[2] | head[3] << 8), {}};
    record.bytes.assign(head.begin() + 2, head.end());
    const size_t size = kRecordHeader + head[2 + SDR_RECORD_LENGTH];
    while (record.bytes.size() < size) {
        const auto piece = reader.GetSdr(record.id, record.bytes.size(), size - record.bytes.size());
        if (piece.empty())
            throw SetError("BMC: record " + std::to_string(record.id) + " went while it was read");
        record.bytes.insert(record.bytes.end(), piece.begin() + 2, piece.end());
    }
    return record;
}

std::vector<sim::RepositoryRecord> ReadRecords(Reader &reader, size_t expected) {
    Progress progress("reading", expected, "records");
    reader.Reserve();
    std::vector<sim::RepositoryRecord> out;
    for (uint16_t id = 0; id != kNone;) {
        const std::vector<uint8_t> head = reader.GetSdr(id, 0, kRecordHeader);
        if (head.empty())
            break; // an empty repository
        out.push_back(ReadRecord(reader, head));
        id = reader.Follow(TwoBytes(head), "repository");
        progress.Done(out.size());
    }
    return out;
}

// Of the BMC's own sensors, which it can be asked for.
bool HasReadableThresholds(const std::vector<uint8_t> &record) {
    constexpr uint8_t kBmc = 0x20, kThresholdEvents = 0x01, kReadable = 1, kSettable = 2;
    if (record.size() <= SDR_READING_MASK || record[SDR_RECORD_TYPE] != 1)
        return false;
    const uint8_t access = record[SDR_SENSOR_CAPS] >> 2 & 3;
    return record[SDR_OWNER_ID] == kBmc && record[SDR_EVENT_TYPE] == kThresholdEvents &&
           record[SDR_READING_MASK] != 0 && (access == kReadable || access == kSettable);
}

// The answer has the mask and LNC LC LNR UNC UC UNR.
ActiveLimits LimitsOf(const std::vector<uint8_t> &answer) {
    static constexpr unsigned kInRecord[] = {FULL_SDR_LNC, FULL_SDR_LC, FULL_SDR_LNR,
                                             FULL_SDR_UNC, FULL_SDR_UC, FULL_SDR_UNR};
    ActiveLimits out{answer[1], {}};
    for (size_t i = 0; i < out.raw.size(); ++i)
        out.raw[kInRecord[i] - FULL_SDR_UNR] = answer[2 + i];
    return out;
}

std::map<SensorPlace, ActiveLimits> ReadThresholds(Reader &reader, const std::vector<RecordBytes> &records) {
    Progress progress("reading the thresholds of", records.size(), "records");
    std::map<SensorPlace, ActiveLimits> out;
    for (size_t i = 0; i < records.size(); ++i) {
        const RecordBytes &record = records[i];
        progress.Done(i);
        if (!HasReadableThresholds(record))
            continue;
        const uint8_t lun = record[SDR_OWNER_LUN] & 3, number = record[SDR_SENSOR_NUM];
        const auto answer = reader.Send(kGetThresholds, {number}, kSensorEvent, lun);
        if (answer[0] == 0 && answer.size() >= 8)
            out[{lun, number}] = LimitsOf(answer);
    }
    return out;
}

} // namespace

std::vector<sim::RepositoryRecord> ReadRepositoryOf(const sim::Bmc &bmc) {
    Reader reader(bmc);
    return ReadRecords(reader, 0);
}

LiveRepository ReadLiveRepositoryOf(const sim::Bmc &bmc, bool thresholds) {
    Reader reader(bmc);
    LiveRepository out;
    const std::vector<uint8_t> info = reader.Ask(kGetRepositoryInfo, {}, 14);
    if (info.empty())
        throw SetError("BMC " + Address(bmc) + ": it has no repository");
    out.version = info[0];
    out.added_at = TwoBytes(info, 5) | static_cast<uint32_t>(TwoBytes(info, 7)) << 16;
    out.erased_at = TwoBytes(info, 9) | static_cast<uint32_t>(TwoBytes(info, 11)) << 16;
    out.records = ReadRecords(reader, TwoBytes(info, 1));
    if (!thresholds)
        return out;
    std::vector<RecordBytes> records;
    for (const sim::RepositoryRecord &record : out.records)
        records.push_back(record.bytes);
    out.thresholds = ReadThresholds(reader, records);
    return out;
}

std::map<SensorPlace, ActiveLimits> ReadThresholdsOf(const sim::Bmc &bmc,
                                                     const std::vector<RecordBytes> &records) {
    Reader reader(bmc);
    return ReadThresholds(reader, records);
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
        id = reader.Follow(TwoBytes(answer), "event log");
    }
    return out;
}

} // namespace workbench
