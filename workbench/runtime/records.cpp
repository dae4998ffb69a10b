// SPDX-License-Identifier: GPL-3.0-or-later
#include "runtime/records.h"

#include <algorithm>
#include <freeipmi/freeipmi.h>
#include <memory>

#include "base/errors.h"
#include "base/text.h"
#include "sets/sensor_table.h"
#include "sets/set_json.h"

namespace workbench {
namespace {

constexpr uint8_t kLocator = 0x11;

struct DestroyContext {
    void operator()(ipmi_sdr_ctx_t context) const {
        ipmi_sdr_ctx_destroy(context);
    }
};
using Context = std::unique_ptr<struct ipmi_sdr_ctx, DestroyContext>;

[[noreturn]] void Refuse(const RecordView &view, const std::string &why) {
    throw SetError("record " + std::to_string(view.id) + ": " + why);
}

void ReadLocator(RecordView &view) {
    const Context context(ipmi_sdr_ctx_create());
    if (context == nullptr)
        Refuse(view, "libfreeipmi gives no SDR context");
    const unsigned size = static_cast<unsigned>(view.bytes.size());
    uint8_t address = 0, bus = 0, lun = 0, logical = 0, channel = 0;
    char name[IPMI_SDR_MAX_DEVICE_ID_STRING_LENGTH + 1] = {};
    const bool read =
        ipmi_sdr_parse_fru_device_locator_parameters(context.get(), view.bytes.data(), size, &address,
                                                     &view.fru_id, &bus, &lun, &logical, &channel) == 0 &&
        ipmi_sdr_parse_fru_entity_id_and_instance(context.get(), view.bytes.data(), size, &view.entity_id,
                                                  &view.entity_instance) == 0 &&
        ipmi_sdr_parse_device_id_string(context.get(), view.bytes.data(), size, name, sizeof name - 1) >= 0;
    if (!read)
        Refuse(view, std::string("libfreeipmi: ") + ipmi_sdr_ctx_errormsg(context.get()));
    view.name = Printable(name);
}

void ReadSensor(RecordView &view) {
    static const Decoder decoder;
    Sensor sensor;
    sensor.ordinal = view.id;
    std::copy(view.bytes.begin(), view.bytes.end(), sensor.record.begin());
    view.decoded = decoder.Decode(sensor);
    view.name = view.decoded->name;
    view.entity_id = view.decoded->entity_id;
    view.entity_instance = view.bytes[SDR_ENTITY_INSTANCE];
}

std::string EntityAndInstance(const RecordView &view) {
    return EntityText(view.entity_id) + " " + Hex(view.entity_instance);
}

std::string ReadingText(const RecordView &view) {
    if (view.IsLocator())
        return "FRU id " + std::to_string(view.fru_id);
    return ReadingText(*view.decoded);
}

std::vector<const Threshold *> SetThresholds(const RecordView &view) {
    std::vector<const Threshold *> out;
    if (view.decoded)
        for (const Threshold &threshold : view.decoded->thresholds)
            if (threshold.readable)
                out.push_back(&threshold);
    return out;
}

std::vector<Cell> Row(const RecordView &view) {
    std::vector<Cell> row = {{std::to_string(view.id), Style::kDim},
                             {view.name, Style::kBold},
                             {KindText(view)},
                             {view.IsLocator() ? "-" : view.decoded->sensor_type_text},
                             {EntityText(view.entity_id)},
                             {Hex(view.entity_instance)},
                             {ReadingText(view)}};
    for (size_t i = 0; i < 6; ++i) {
        const bool has =
            view.decoded && i < view.decoded->thresholds.size() && view.decoded->thresholds[i].readable;
        row.push_back(has ? Cell{FormatNumber(view.decoded->thresholds[i].value), Style::kHot}
                          : Cell{"-", Style::kDim});
    }
    return row;
}

} // namespace

size_t RecordSize(const Bytes &bytes) {
    return bytes.size() < kRecordHeader ? 0 : bytes[SDR_RECORD_LENGTH] + kRecordHeader;
}

RecordView ViewRecord(const sim::RepositoryRecord &record) {
    RecordView view;
    view.id = record.id;
    const size_t size = RecordSize(record.bytes);
    if (size == 0 || size > record.bytes.size() || size > SDR_SLOT_SIZE)
        Refuse(view, "its length byte does not fit its " + std::to_string(record.bytes.size()) + " bytes");
    view.bytes.assign(record.bytes.begin(), record.bytes.begin() + static_cast<long>(size));
    view.extra = record.bytes.size() - size;
    view.bytes[SDR_RECORD_ID] = static_cast<uint8_t>(record.id);
    view.bytes[SDR_RECORD_ID + 1] = static_cast<uint8_t>(record.id >> 8);
    if (view.bytes[SDR_RECORD_TYPE] == kLocator)
        ReadLocator(view);
    else
        ReadSensor(view);
    return view;
}

std::vector<RecordView> ViewRecords(const std::vector<sim::RepositoryRecord> &records) {
    std::vector<RecordView> out;
    for (const sim::RepositoryRecord &record : records)
        out.push_back(ViewRecord(record));
    return out;
}

std::string KindText(const RecordView &view) {
    return view.IsLocator() ? "FRU locator" : KindText(view.decoded->kind);
}

std::string RecordText(const RecordView &view) {
    if (view.IsLocator())
        return view.name + ": FRU locator of " + EntityAndInstance(view) + ", " + ReadingText(view) +
               (view.extra == 0 ? "" : ", " + std::to_string(view.extra) + " bytes behind it");
    std::string out = view.name + ": " + view.decoded->sensor_type_text + " of " + EntityAndInstance(view) +
                      ", " + ReadingText(view);
    for (const Threshold *threshold : SetThresholds(view)) {
        const std::string &unit = view.decoded->reading->unit;
        out += std::string(", ") + threshold->key + " " + FormatNumber(threshold->value) +
               (unit.empty() ? "" : " " + unit);
    }
    return out;
}

std::string RecordTable(const std::vector<RecordView> &views, bool colour) {
    Table table(SensorColumns("ID"));
    for (const RecordView &view : views)
        table.Add(Row(view));
    return table.Render(colour);
}

Json RecordJson(const RecordView &view) {
    return {
        {"record_id", view.id},
        {"name", view.name},
        {"kind", KindText(view)},
        {"entity",
         {{"id", view.entity_id}, {"instance", view.entity_instance}, {"text", EntityText(view.entity_id)}}},
        {"text", RecordText(view)},
        {"fru_id", view.IsLocator() ? Json(view.fru_id) : Json(nullptr)},
        {"thresholds", view.decoded ? ThresholdsJson(*view.decoded) : Json(nullptr)},
        {"record", HexBytes(view.bytes)},
        {"bytes_behind", view.extra}};
}

std::string CountText(const std::vector<RecordView> &views) {
    size_t locators = 0, full = 0;
    for (const RecordView &view : views) {
        locators += view.IsLocator();
        full += view.decoded && view.decoded->kind == RecordKind::kFull;
    }
    const auto count = [](size_t n, const std::string &noun) { return std::to_string(n) + " " + noun; };
    return count(views.size(), views.size() == 1 ? "record (" : "records (") + count(full, "full, ") +
           count(views.size() - full - locators, "compact, ") +
           count(locators, locators == 1 ? "FRU locator)" : "FRU locators)");
}

} // namespace workbench
