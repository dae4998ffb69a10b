// SPDX-License-Identifier: GPL-3.0-or-later
#include "events/sel_words.h"

#include <freeipmi/freeipmi.h>

#include "base/text.h"

namespace workbench {
namespace {

namespace tables = oxa::sel;

// {name} is an argument's number; {entityId} adds the entity's name, {eventNum} the event's where it has one.
struct BuilderWords {
    const char *name;
    const char *summary;
    const char *sentence;
};
constexpr BuilderWords kBuilderWords[] = {
    {"addMemPredictiveFault", "predicted fault of a memory module",
     "memory module {dimmNum}: fault predicted"},
    {"addPOSTErrorSel", "error in the power-on self-test", "power-on self-test: error"},
    {"addS0PowerButtonSel", "power button pressed while the host runs", "power button pressed in state S0"},
    {"addGpuSlotErrorSel", "error of a GPU's slot", "GPU in slot {slotNum}: error"},
    {"addMinorCDUFaultSel", "minor fault of the coolant distribution unit",
     "coolant distribution unit: minor fault, reason {reason}"},
    {"addMajorCDUFaultSel", "major fault of the coolant distribution unit",
     "coolant distribution unit in slot {slotNum}: major fault, reason {reason}"},
    {"addNETPortSEL", "event of a network port",
     "network card in slot {slotNum}, printed number {netPortSilkId}, device {deviceIndex}, port {port} "
     "(sub-interface type {subInterfaceType}, number {subIndex}) of entity {entityId}"},
    {"addControllerSEL", "event of a storage controller",
     "storage controller {controller} of entity {entityId}, event {eventNum}"},
    {"addDiskSEL", "event of a disk", "disk in slot {slotNum} of entity {entityId}, event {eventNum}"},
    {"addLDSEL", "event of a logical disk",
     "logical disk {targetId} of controller {ctrlIndex}, entity {entityId}, event {eventNum}"},
    {"addPEMSEL", "event of a power module", "power module at location {location}, event {eventNum}"},
    {"addUsageSEL", "usage of a processor, memory or disk at its limit",
     "entity {entityId} number {index}: usage {usage}, non-critical value {nonCritical}"},
    {"addSELAlarm", "alarm of a fan, cooling unit, air inlet or chassis",
     "alarm of entity {entityId}, reason {reason}"},
    {"addCPUError", "error of a processor",
     "processor {cpuNum}: state {offset}, bank {bankNum}, high bit {bankHighBit}"},
    {"addMemError", "error of a memory module", "memory module {dimmNum}: state {offset}, error {errorNum}"},
    {"addI2CStatusSel", "state of an I2C bus",
     "I2C bus, sensor {sensorNumber} on LUN {lun}: status {eventData3}"},
    {"addTrapSELAlarm", "alarm that is sent as a trap",
     "trap of entity {entityId}, reason {reason}, event {eventNum}"},
    {"addPowerDropSEL", "power drop of the machine or of a processor",
     "power drop of type {dropType}, processor {cpuIndex}, reasons {reasonMask}"},
    {"addLeakageSel", "leak, or the end of one", "leak of kind {kind} at position {position}"},
};

const BuilderWords &WordsOf(const BuilderView &builder) {
    for (const BuilderWords &words : kBuilderWords)
        if (std::string(words.name) == builder.ptHead->acName)
            return words;
    static constexpr BuilderWords kNone = {"", "", ""};
    return kNone;
}

// In the order of tables::Value.
constexpr const char *kArgumentWords[] = {
    "0 asserts the event, 1 takes it back",                                  // assertFlag
    "0 asserts the event, 1 takes it back",                                  // eventDir
    "high bit of the bank number, for offset 11",                            // bankHighBit
    "number of the bank; 255 takes no high bit",                             // bankNum
    "number of the controller",                                              // controller
    "number of the processor, bits 4-7 of a byte",                           // cpuIndex
    "number of the processor",                                               // cpuNum
    "number of the controller",                                              // ctrlIndex
    "number of the device on the card, 0 to 15",                             // deviceIndex
    "number of the memory module",                                           // dimmNum
    "type of the drop, 0 to 15",                                             // dropType
    "IPMI entity of the device",                                             // entityId
    "number of the error",                                                   // errorNum
    "third byte of event data",                                              // eventData3
    "number of the event",                                                   // eventNum
    "number of the device",                                                  // index
    "1 to 3: what leaks, with its position; other values: no more is known", // kind
    "place of the power module",                                             // location
    "LUN of the sensor, 0 to 3",                                             // lun
    "printed number of the port",                                            // netPortSilkId
    "non-critical value of the usage",                                       // nonCritical
    "state of the IPMI sensor type",                                         // offset
    "number of the port on the device, 0 to 15",                             // port
    "reason code",                                                           // reason
    "one bit per reason",                                                    // reasonMask
    "sensor number",                                                         // sensorNumber
    "number of the slot",                                                    // slotNum
    "number of the sub-interface, 0 to 15",                                  // subIndex
    "type of the sub-interface, 0 to 15",                                    // subInterfaceType
    "number of the logical disk",                                            // targetId
    "usage that was measured",                                               // usage
    "1: the leak is gone; any other value asserts it",                       // deassertFlag
    "position of the leak, 0 to 15",                                         // position
    "sensor number, looked up",
    "sensor type, looked up",
    "event type, looked up",
    "LUN, looked up",
    "inlet temperature in degrees C, read",
};
static_assert(std::size(kArgumentWords) == tables::kValueCount);

// Events that have a name.
std::string EventName(const BuilderView &builder, uint32_t event) {
    if (std::string(builder.ptHead->acName) != "addDiskSEL")
        return "";
    switch (event) {
    case 20:
    case 25:
        return " (temperature)";
    case tables::kDiskLife:
        return " (disk life)";
    case tables::kDiskPredicted:
    case 27:
    case 28:
    case 29:
        return " (predicted fault)";
    default:
        return "";
    }
}

std::string EntityName(uint32_t entity) {
    const char *name = entity <= 0xFF ? ipmi_get_entity_id_string(static_cast<uint8_t>(entity)) : nullptr;
    return name != nullptr && *name != '\0' ? std::string(" (") + name + ")" : "";
}

std::string ValueText(const BuilderView &builder, size_t position, const std::vector<uint32_t> &values,
                      const std::vector<bool> &unknown) {
    if (position < unknown.size() && unknown[position])
        return "?";
    const uint32_t value = values[position];
    switch (builder.ptItem[position].eValue) {
    case tables::kEntityId:
        return std::to_string(value) + EntityName(value);
    case tables::kEventNum:
        return std::to_string(value) + EventName(builder, value);
    case tables::kReasonMask:
    case tables::kEventData3:
    case tables::kSensorNumber:
        return Hex(value);
    default:
        return std::to_string(value);
    }
}

std::string Filled(const BuilderView &builder, std::string text, const std::vector<uint32_t> &values,
                   const std::vector<bool> &unknown) {
    for (size_t n = 0; n < builder.ucItems; ++n) {
        const std::string place = std::string("{") + ValueName(builder.ptItem[n].eValue) + "}";
        if (const size_t at = text.find(place); at != std::string::npos)
            text.replace(at, place.size(), ValueText(builder, n, values, unknown));
    }
    return text;
}

// The state that the record reports, in the words of the IPMI tables.
std::string IpmiState(uint8_t sensor_type, uint8_t event_type, uint8_t data1) {
    char text[256];
    const unsigned offset = data1 & 0x0Fu;
    const int size = event_type == oxa::kEventSpecific
                         ? ipmi_get_sensor_type_message(sensor_type, offset, text, sizeof text)
                         : ipmi_get_generic_event_message(event_type, offset, text, sizeof text);
    return size > 0 ? std::string(text, static_cast<size_t>(size))
                    : std::string("event type ") + Hex(event_type) + " state " + std::to_string(offset);
}

std::string AsIpmiEvent(const SelBytes &bytes) {
    const uint8_t type = bytes[SEL_SENSOR_TYPE], event = bytes[SEL_EVENT_DIR_TYPE] & 0x7F;
    if (event == 0)
        return "sent without types and direction";
    const char *name = ipmi_get_sensor_type_string(type);
    return "as an IPMI event: " +
           (name != nullptr ? std::string(name) : std::string("sensor type ") + Hex(type)) + ", " +
           IpmiState(type, event, bytes[SEL_EVENT_DATA_1]);
}

void AddLookedUp(const BuilderView &builder, const std::vector<uint32_t> &values, const SelBytes &bytes,
                 std::string &out) {
    for (size_t n = 0; n < builder.ucItems; ++n) {
        const tables::Value what = builder.ptItem[n].eValue;
        if (what == tables::kFoundNumber && bytes[SEL_SENSOR_NUM] != 0)
            out += std::string("; sensor ") + Hex(bytes[SEL_SENSOR_NUM]);
        if (what == tables::kFoundInletTemp && values[0] == tables::kAlarmAirInlet)
            out +=
                "; inlet at " + std::to_string(static_cast<int8_t>(bytes[SEL_EVENT_DATA_2])) + " degrees C";
    }
}

} // namespace

std::string BuilderSummary(const BuilderView &builder) {
    return WordsOf(builder).summary;
}

std::string ArgumentMeaning(const BuilderView &builder, size_t position) {
    return kArgumentWords[builder.ptItem[position].eValue];
}

std::string Meaning(const BuilderView &builder, const std::vector<uint32_t> &values, const SelBytes &bytes,
                    const std::vector<bool> &unknown) {
    std::string out = Filled(builder, WordsOf(builder).sentence, values, unknown);
    if (std::string(builder.ptHead->acName) == "addS0PowerButtonSel") // no IPMI layout behind the record type
        return out;
    const bool typed = (bytes[SEL_EVENT_DIR_TYPE] & 0x7F) != 0;
    if (typed)
        out += (bytes[SEL_EVENT_DIR_TYPE] & 0x80) != 0 ? ": deasserted" : ": asserted";
    out += std::string("; ") + AsIpmiEvent(bytes);
    AddLookedUp(builder, values, bytes, out);
    return out;
}

std::string StandardText(const SelBytes &bytes) {
    ipmi_sel_ctx_t context = ipmi_sel_ctx_create(nullptr, nullptr);
    if (context == nullptr)
        return "out of memory";
    const uint8_t type = bytes[SEL_RECORD_TYPE];
    const char *format = type < 0xC0 ? "%T | %s | %E | %k" : IsStamped(type) ? "%m | %o" : "%o";
    char text[1024] = {};
    const int size = ipmi_sel_parse_read_record_string(
        context, format, bytes.data(), SEL_RECORD_SIZE, text, sizeof text - 1,
        IPMI_SEL_STRING_FLAGS_IGNORE_UNAVAILABLE_FIELD | IPMI_SEL_STRING_FLAGS_OUTPUT_NOT_AVAILABLE);
    std::string out = size < 0 ? std::string("cannot decode: ") + ipmi_sel_ctx_errormsg(context) : text;
    ipmi_sel_ctx_destroy(context);
    return out;
}

} // namespace workbench
