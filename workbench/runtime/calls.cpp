// SPDX-License-Identifier: GPL-3.0-or-later
#include "runtime/calls.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <freeipmi/freeipmi.h>

#include "base/text.h"
#include "events/sel_calls.h"
#include "oxa/specific_sensors.h"
#include "oxa/store.h"
#include "oxa/thresholds.h"
#include "sets/static_set.h"
#include "simulator/bmc_session.h"

namespace workbench {
namespace {

constexpr uint8_t kAddSdr = 0x24;
constexpr const char *kThresholdFile = "/conf/BMC1/sensor_threshold.dat";

std::span<const sim::Event> Since(size_t mark) {
    return std::span(sim::Trace()).subspan(mark);
}

bool Logged(size_t mark, const std::string &part) {
    const auto events = Since(mark);
    return std::any_of(events.begin(), events.end(), [&](const sim::Event &event) {
        return event.kind == sim::Kind::kLog && event.text.find(part) != std::string::npos;
    });
}

bool Called(size_t mark, const std::string &function, const std::string &args = "") {
    const auto events = Since(mark);
    return std::any_of(events.begin(), events.end(), [&](const sim::Event &event) {
        return event.kind == sim::Kind::kCall && event.function == function &&
               event.args.find(args) != std::string::npos;
    });
}

Outcome Begin(const char *action, const std::string &subject) {
    Outcome outcome;
    outcome.action = action;
    outcome.subject = subject;
    return outcome;
}

// The last line before the one that only says that it did not work.
std::string ReasonBefore(size_t mark, const std::string &closing) {
    std::string reason;
    for (const sim::Event &event : Since(mark)) {
        if (event.kind != sim::Kind::kLog)
            continue;
        if (event.text.find(closing) != std::string::npos)
            break;
        reason = OneLine(event.text);
    }
    return reason.empty() ? "it logged nothing" : "its last line: " + reason;
}

std::string BmcRemark(size_t mark) {
    std::string remark;
    for (const sim::Event &event : Since(mark))
        if (event.kind == sim::Kind::kNote && event.text.rfind("BMC: ", 0) == 0)
            remark = "; " + event.text;
    return remark;
}

// ---- add -------------------------------------------------------------------------------------------

constexpr const char *kNotBuilt = "Add SDR: GenSDRHndlr ucRecLen = 0.";

void SetNotSupported(Outcome &outcome, const SpecificSensorParam &param, size_t mark) {
    outcome.word = "not-supported";
    if (Logged(mark, "This sensor is already exist!")) {
        outcome.word = "already-present";
        outcome.why = "the extended store holds a record of this name";
    } else if (Logged(mark, "is not supported to add SDR."))
        outcome.why = "the library has no generator for " + ClassText(param.dwSensorDevType);
    else
        outcome.why = ReasonBefore(mark, "Add SDR: GenSDRHndlr. This sensor is not support.");
}

// The generator of a power supply's locator has looked into the record file.
bool FoundInRecordFile(size_t mark) {
    const auto events = Since(mark);
    return std::any_of(events.begin(), events.end(), [](const sim::Event &event) {
        return event.function == "IniGetUInt" && event.result == 1 &&
               event.args.find("key=\"Presence\"") != std::string::npos;
    });
}

void SetNotBuilt(Outcome &outcome, const SpecificSensorParam &param, size_t mark) {
    if (!Logged(mark,
                "Add SDR: sensor device type:")) { // the registry answers before any line of the dispatch
        outcome.word = "already-registered";
        outcome.why = "the disk registry has this slot";
    } else if (param.dwSensorDevType == kPsuFruClass && FoundInRecordFile(mark)) {
        outcome.word = "already-recorded";
        outcome.why = "the record file has power supply " + std::to_string(param.ucDeviceType);
    } else {
        outcome.word = "not-built";
        outcome.why = ReasonBefore(mark, kNotBuilt);
    }
}

void SetRefused(Outcome &outcome, size_t mark) {
    outcome.word = "refused";
    outcome.why = Logged(mark, "Failed to create IPMI Session") ? "no session: " : "";
    outcome.why += CompletionText(outcome.code) + BmcRemark(mark);
}

void SetAdded(Outcome &outcome, size_t records_before) {
    if (sim::Repository().size() <= records_before) {
        outcome.word = "lost";
        outcome.why = "the library reports success, the repository has no new record";
        return;
    }
    outcome.word = "added";
    outcome.record = ViewRecord(sim::Repository().back());
}

// The record id in the request of the delete command.
std::optional<uint16_t> DeletedId(size_t mark) {
    for (const sim::Event &event : Since(mark)) {
        unsigned low = 0, high = 0;
        const size_t at = event.args.find("request=\"");
        if (event.function == "IPMICMD_DeleteSDR" && at != std::string::npos &&
            std::sscanf(event.args.c_str() + at, "request=\"%*x %*x %x %x", &low, &high) == 2)
            return static_cast<uint16_t>(low | high << 8);
    }
    return std::nullopt;
}

// ---- the caller ------------------------------------------------------------------------------------

template <size_t kSize, class Read> std::vector<uint8_t> ReadStore(Read read) {
    std::vector<uint8_t> bytes(size_t{EXT_SLOT_MAX} * kSize, 0);
    const int32_t got = read(bytes.data(), static_cast<uint32_t>(bytes.size()));
    bytes.resize(got > 0 ? static_cast<size_t>(got) / kSize * kSize : 0);
    return bytes;
}

std::string AppendToStore(const RecordView &record) {
    std::vector<uint8_t> slots = ReadStore<SDR_SLOT_SIZE>(readExtSDRFile);
    std::vector<uint8_t> entries = ReadStore<DEV_TAB_ENTRY_SIZE>(readExtDevTabFile);
    const size_t at = slots.size() / SDR_SLOT_SIZE;
    if (at >= EXT_SLOT_MAX)
        return "extended store: full";
    slots.resize((at + 1) * SDR_SLOT_SIZE, 0);
    std::copy(record.bytes.begin(), record.bytes.end(),
              slots.begin() + static_cast<long>(at * SDR_SLOT_SIZE));
    DevTabEntry entry{};
    const bool has_entry = GenDevTable(&slots[at * SDR_SLOT_SIZE], &entry) == 0;
    if (!has_entry)
        entry = {};
    entries.resize((at + 1) * DEV_TAB_ENTRY_SIZE, 0); // entry n belongs to slot n
    std::memcpy(&entries[at * DEV_TAB_ENTRY_SIZE], &entry, sizeof entry);
    writeExtSDRFile(slots.data(), static_cast<uint32_t>(slots.size()));
    writeExtDevTabFile(entries.data(), static_cast<uint32_t>(entries.size()));
    Entry bytes;
    std::memcpy(bytes.data(), &entry, sizeof entry);
    return "extended store: slot " + std::to_string(at + 1) +
           (has_entry ? ", device " + DeviceText(bytes) : ", no device-table entry for this kind");
}

std::string WriteRecordFile(const SpecificSensorParam &param, const RecordView &record) {
    constexpr uint8_t kPowerSupply = 0x0A, kCard = 0x0B;
    const auto device = static_cast<uint8_t>(param.dwSensorDevType);
    const uint8_t index = device == kPowerSupply ? param.ucDeviceType : param.SlotId;
    SDR_UpdateSpecificSDRRecFile(device, index, record.id, 1);
    const char *section = device == kPowerSupply ? "PSU_"
                          : device == kCard      ? "PurchaseCard_"
                                                 : "PurchaseUBB_";
    return std::string("record file: ") + section + std::to_string(index) + " is record " +
           std::to_string(record.id);
}

// ---- thresholds ------------------------------------------------------------------------------------

bool TableHas(const SensorThreshTable &table, const UserThresholds &thresholds) {
    const size_t count = std::min<size_t>(table.wCount, SENSOR_MAX_COUNT);
    return std::any_of(table.atEntry, table.atEntry + count, [&](const SensorThreshEntry &entry) {
        return std::string(entry.acName, strnlen(entry.acName, sizeof entry.acName)) == thresholds.sensor &&
               std::equal(std::begin(thresholds.values), std::end(thresholds.values), &entry.ucUNR) &&
               entry.wMask == thresholds.mask;
    });
}

bool FileIs(const SensorThreshTable &table) {
    const std::vector<uint8_t> file = sim::ReadFile(kThresholdFile);
    return file.size() == sizeof table && std::memcmp(file.data(), &table, sizeof table) == 0;
}

} // namespace

std::vector<std::string> OutcomeWords(const std::string &action) {
    if (action == "add")
        return {"added",
                "not-supported",
                "already-present",
                "already-registered",
                "already-recorded",
                "not-built",
                "refused",
                "lost",
                "killed"};
    if (action == "remove")
        return {"removed", "nothing-to-remove", "not-removable", "refused", "killed"};
    if (action == "event")
        return {"written", "not-reported", "failed", "killed"};
    if (action == "thresholds")
        return {"saved", "not-stored", "not-saved", "killed"};
    if (action == "restart")
        return {"thresholds-loaded", "no-thresholds", "thresholds-discarded"};
    return {"done"};
}

std::vector<std::string> LogSince(size_t mark) {
    std::vector<std::string> out;
    for (const sim::Event &event : Since(mark))
        if (event.kind == sim::Kind::kLog || event.kind == sim::Kind::kAudit)
            out.push_back(OneLine(sim::Format(event)));
    return out;
}

std::string CompletionText(uint32_t code) {
    char text[128] = {};
    if (code > 0xFF || ipmi_completion_code_strerror_r(kAddSdr, sim::kStorage, static_cast<uint8_t>(code),
                                                       text, sizeof text) < 0)
        return "no IPMI completion code";
    std::string name = text; // a name and a sentence
    if (name.rfind("No error message", 0) == 0)
        return "no completion code of this command";
    name = name.substr(0, name.find(". "));
    if (!name.empty() && name.back() == '.')
        name.pop_back();
    return name;
}

std::vector<std::string> RecordAsCaller(const SpecificSensorParam &param, const RecordView &record) {
    return {record.IsLocator() ? WriteRecordFile(param, record) : AppendToStore(record)};
}

Outcome AddSensor(const SpecificSensorParam &param, bool record) {
    Outcome outcome = Begin("add", DescriptionText(param));
    const size_t mark = sim::Trace().size(), before = sim::Repository().size();
    SpecificSensorParam writable = param; // bitmap and slot are written back
    outcome.code = SDR_AddSpecificSensor(&writable);
    if (Logged(mark, "Add SDR Record failed for retCode"))
        SetRefused(outcome, mark);
    else if (outcome.code == OXA_NOT_SUPPORTED)
        SetNotSupported(outcome, param, mark);
    else if (outcome.code == OXA_FAILED)
        SetNotBuilt(outcome, param, mark);
    else
        SetAdded(outcome, before);
    if (record && outcome.record)
        outcome.recorded = RecordAsCaller(param, *outcome.record);
    outcome.log = LogSince(mark);
    return outcome;
}

Outcome RemoveSensor(const SpecificSensorParam &param) {
    Outcome outcome = Begin("remove", DescriptionText(param));
    const size_t mark = sim::Trace().size();
    const std::vector<sim::RepositoryRecord> before = sim::Repository();
    SpecificSensorParam writable = param;
    outcome.code = static_cast<uint32_t>(SDR_DeleteSpecificSDR(&writable));
    const std::optional<uint16_t> id = DeletedId(mark);
    if (param.dwSensorDevType != kPsuFruClass) {
        outcome.word = "not-removable";
        outcome.why = "the library removes FRU locators of power supplies only";
    } else if (outcome.code != 0) {
        outcome.word = "refused";
        outcome.why = (id ? "record " + std::to_string(*id) + ": " : "no session: ") +
                      CompletionText(outcome.code) + BmcRemark(mark);
    } else if (!id) {
        outcome.word = "nothing-to-remove";
        outcome.why = "the record file has no power supply " + std::to_string(param.SlotId);
    } else {
        outcome.word = "removed";
        for (const sim::RepositoryRecord &record : before)
            if (record.id == *id)
                outcome.record = ViewRecord(record);
        if (!outcome.record) // it was added in another process
            outcome.why = "record " + std::to_string(*id);
    }
    outcome.log = LogSince(mark);
    return outcome;
}

Outcome WriteEvent(const std::string &name, const std::vector<uint32_t> &arguments) {
    const BuilderView &builder = FindBuilder(name);
    Outcome outcome = Begin("event", CallText(builder, arguments));
    const size_t mark = sim::Trace().size(), before = sim::EventLog().size();
    outcome.code = CallBuilder(builder, arguments);
    outcome.word = outcome.code != OXA_OK            ? "failed"
                   : sim::EventLog().size() > before ? "written"
                                                     : "not-reported";
    if (outcome.word == "written")
        outcome.event = HexBytes(sim::EventLog().back());
    if (outcome.word == "failed")
        outcome.why = ReasonBefore(mark, "\x01") + BmcRemark(mark);
    outcome.log = LogSince(mark);
    return outcome;
}

Outcome SaveThresholds(const UserThresholds &thresholds) {
    Outcome outcome = Begin("thresholds", thresholds.sensor);
    const size_t mark = sim::Trace().size();
    char name[16] = {}; // not terminated when the name has 16 characters
    std::copy_n(thresholds.sensor.begin(), std::min(thresholds.sensor.size(), sizeof name), name);
    SaveSdrThresholdInfoInFile(name, thresholds.values, thresholds.mask);
    const SensorThreshTable table = sim::ThresholdTable();
    outcome.word = !TableHas(table, thresholds) ? "not-saved" : FileIs(table) ? "saved" : "not-stored";
    if (outcome.word == "not-stored")
        outcome.why = "the table has them, the file has not; ";
    if (outcome.word != "saved")
        outcome.why += ReasonBefore(mark, "\x01");
    outcome.log = LogSince(mark);
    return outcome;
}

Outcome StartLibrary() {
    Outcome outcome = Begin("restart", "profile id " + std::to_string(sim::CurrentBoard().custom_id));
    const size_t mark = sim::Trace().size();
    InitSdrThresholdInfoFromFile(sim::CurrentBoard().custom_id);
    outcome.word = Called(mark, "MW_SetSensorThreshInfo") ? "thresholds-loaded"
                   : Logged(mark, "delete sensor thread") ? "thresholds-discarded"
                                                          : "no-thresholds";
    if (outcome.word == "thresholds-loaded")
        outcome.why = "sensors with user thresholds: " + std::to_string(sim::ThresholdTable().wCount);
    if (outcome.word == "thresholds-discarded")
        outcome.why = ReasonBefore(mark, "\x01");
    outcome.log = LogSince(mark);
    return outcome;
}

Json OutcomeJson(const Outcome &outcome) {
    return {{"action", outcome.action},
            {"subject", outcome.subject},
            {"outcome", outcome.word},
            {"code", outcome.code},
            {"why", outcome.why},
            {"record", outcome.record ? RecordJson(*outcome.record) : Json(nullptr)},
            {"event", outcome.event.empty() ? Json(nullptr) : Json{{"bytes", outcome.event}}},
            {"recorded", outcome.recorded},
            {"log", outcome.log}};
}

std::string OutcomeLine(const Json &outcome) {
    const std::string word = outcome.at("outcome");
    const uint32_t code = outcome.at("code");
    const std::string why = outcome.at("why");
    std::string out = word;
    if (code != 0)
        out += ", result " + Hex(code, 4);
    if (!outcome.at("record").is_null())
        out += ": record " + std::to_string(outcome["record"]["record_id"].get<unsigned>()) + ", " +
               outcome["record"]["text"].get<std::string>();
    else if (!outcome.at("event").is_null())
        out += ": " + outcome["event"]["bytes"].get<std::string>();
    if (!why.empty())
        out += ": " + why;
    return out;
}

} // namespace workbench
