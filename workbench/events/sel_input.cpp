// SPDX-License-Identifier: GPL-3.0-or-later
#include "events/sel_input.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <optional>
#include <sstream>

#include "base/errors.h"
#include "base/text.h"

namespace workbench {
namespace {

using Bytes = std::vector<uint8_t>;

std::string Trim(const std::string &text) {
    const size_t from = text.find_first_not_of(" \t\r");
    return from == std::string::npos ? "" : text.substr(from, text.find_last_not_of(" \t\r") - from + 1);
}

bool IsHex(const std::string &text) {
    return !text.empty() &&
           std::all_of(
               text.begin(), text.end(), [](unsigned char c) { return std::isxdigit(c) != 0; });
}

std::optional<Bytes> FromDigits(const std::string &digits) {
    if (!IsHex(digits) || digits.size() % 2 != 0)
        return std::nullopt;
    Bytes out;
    for (size_t at = 0; at < digits.size(); at += 2)
        out.push_back(static_cast<uint8_t>(std::stoul(digits.substr(at, 2), nullptr, 16)));
    return out;
}

// ---- parts of a record that is not told whole ------------------------------------------------------

void Know(SelRecord &record, unsigned byte, uint8_t value, uint8_t bits = 0xFF) {
    record.bytes[byte] = static_cast<uint8_t>((record.bytes[byte] & ~bits) | (value & bits));
    record.known[byte] |= bits;
}

void Know(SelRecord &record, unsigned byte, const Bytes &values) {
    for (const uint8_t value : values)
        Know(record, byte++, value);
}

bool KnowDigits(SelRecord &record, unsigned byte, const std::string &digits, size_t count) {
    const auto values = FromDigits(digits);
    if (!values || values->size() != count)
        return false;
    Know(record, byte, *values);
    return true;
}

bool KnowDigitsBackwards(SelRecord &record, unsigned byte, const std::string &digits, size_t count) {
    auto values = FromDigits(digits);
    if (!values || values->size() != count)
        return false;
    std::reverse(values->begin(), values->end());
    Know(record, byte, *values);
    return true;
}

// ---- ipmitool, one field a line --------------------------------------------------------------------

// The sensor types in ipmitool's words, in the order of their codes from 0.
constexpr const char *kSensorTypes[] = {
    "reserved",
    "Temperature",
    "Voltage",
    "Current",
    "Fan",
    "Physical Security",
    "Platform Security",
    "Processor",
    "Power Supply",
    "Power Unit",
    "Cooling Device",
    "Other",
    "Memory",
    "Drive Slot / Bay",
    "POST Memory Resize",
    "System Firmwares",
    "Event Logging Disabled",
    "Watchdog1",
    "System Event",
    "Critical Interrupt",
    "Button",
    "Module / Board",
    "Microcontroller",
    "Add-in Card",
    "Chassis",
    "Chip Set",
    "Other FRU",
    "Cable / Interconnect",
    "Terminator",
    "System Boot Initiated",
    "Boot Error",
    "OS Boot",
    "OS Critical Stop",
    "Slot / Connector",
    "System ACPI Power State",
    "Watchdog2",
    "Platform Alert",
    "Entity Presence",
    "Monitor ASIC",
    "LAN",
    "Management Subsys Health",
    "Battery",
    "Session Audit",
    "Version Change",
    "FRU State",
};

using Fields = std::map<std::string, std::string>;

std::string FieldOf(const Fields &fields, const std::string &name) {
    const auto found = fields.find(name);
    return found == fields.end() ? "" : found->second;
}

std::string FirstWord(const std::string &text) {
    return text.substr(0, text.find(' '));
}

// Types are told in words: a sensor type's word is exact, an event type's only in part.
void KnowTypes(SelRecord &record, const Fields &fields) {
    const auto *const type =
        std::find(std::begin(kSensorTypes), std::end(kSensorTypes), FieldOf(fields, "Sensor Type"));
    if (type != std::end(kSensorTypes))
        Know(record, SEL_SENSOR_TYPE, static_cast<uint8_t>(type - std::begin(kSensorTypes)));
    const std::string event = FieldOf(fields, "Event Type");
    if (event == "Sensor-specific Discrete")
        Know(record, SEL_EVENT_DIR_TYPE, 0x6F, 0x7F);
    else if (event == "Threshold")
        Know(record, SEL_EVENT_DIR_TYPE, 0x01, 0x7F);
    else if (event == "Generic Discrete")
        Know(record, SEL_EVENT_DIR_TYPE, 0x00, 0x70); // 02h to 0Bh
    const std::string direction = FieldOf(fields, "Event Direction");
    Know(record, SEL_EVENT_DIR_TYPE, direction.rfind("Deassertion", 0) == 0 ? 0x80 : 0x00, 0x80);
}

bool KnowSystemEvent(SelRecord &record, const Fields &fields) {
    KnowTypes(record, fields);
    return KnowDigitsBackwards(record, SEL_GENERATOR_ID, FieldOf(fields, "Generator ID"), 2) &&
           KnowDigits(record, SEL_EVM_REV, FieldOf(fields, "EvM Revision"), 1) &&
           KnowDigits(record, SEL_SENSOR_NUM, FieldOf(fields, "Sensor Number"), 1) &&
           KnowDigits(record, SEL_EVENT_DATA_1, FieldOf(fields, "Event Data"), 3);
}

bool KnowOem(SelRecord &record, const std::string &manufacturer, const std::string &data) {
    if (!IsStamped(record.bytes[SEL_RECORD_TYPE]))
        return KnowDigits(record, SEL_TIMESTAMP, data, 13);
    return KnowDigitsBackwards(record, SEL_GENERATOR_ID, manufacturer, 3) &&
           KnowDigits(record, SEL_SENSOR_TYPE, data, 6);
}

std::optional<SelRecord> FromFields(const Fields &fields) {
    SelRecord record;
    if (!KnowDigitsBackwards(record, SEL_RECORD_ID, FieldOf(fields, "SEL Record ID"), 2) ||
        !KnowDigits(record, SEL_RECORD_TYPE, FirstWord(FieldOf(fields, "Record Type")), 1))
        return std::nullopt;
    const bool good = record.bytes[SEL_RECORD_TYPE] < 0xC0
                          ? KnowSystemEvent(record, fields)
                          : KnowOem(record, FieldOf(fields, "Manufactacturer ID"), // its own spelling
                                    FirstWord(FieldOf(fields, "OEM Defined")));
    return good ? std::optional(record) : std::nullopt;
}

// ---- single lines ----------------------------------------------------------------------------------

// "RID:[02][00] RT:[C0] TS:[89][12][00][00] ..."
std::optional<SelRecord> FromHexDump(const std::string &line) {
    std::string digits;
    for (size_t open = line.find('['); open != std::string::npos; open = line.find('[', open + 1))
        digits += line.substr(open + 1, line.find(']', open) - open - 1);
    SelRecord record;
    return KnowDigits(record, 0, digits, SEL_RECORD_SIZE) ? std::optional(record) : std::nullopt;
}

// "   2 | 04/01/26 | 12:00:00 | OEM record c0 | 0400e4 | 150087a105ff"
std::optional<SelRecord> FromListLine(const std::string &line) {
    std::vector<std::string> cells;
    std::istringstream parts(line);
    for (std::string cell; std::getline(parts, cell, '|');)
        cells.push_back(Trim(cell));
    static const std::string kOem = "OEM record ";
    for (size_t n = 1; n + 1 < cells.size(); ++n) {
        SelRecord record;
        if (cells[n].rfind(kOem, 0) != 0 ||
            !KnowDigits(record, SEL_RECORD_TYPE, cells[n].substr(kOem.size()), 1))
            continue;
        const std::string id = std::string(4 - std::min<size_t>(4, cells[0].size()), '0') + cells[0];
        if (KnowDigitsBackwards(record, SEL_RECORD_ID, id, 2) && KnowOem(record, cells[n + 1], cells.back()))
            return record;
    }
    return std::nullopt;
}

// The digits of bytes in any usual spelling.
std::string HexDigitsOf(std::string line) {
    const size_t colon = line.find(": ");
    const bool dump = colon != std::string::npos && colon >= 4 && IsHex(line.substr(0, colon)); // xxd
    if (dump) {
        line = line.substr(colon + 2);
        line = line.substr(0, line.find("  "));
    }
    for (size_t at = 0; at < line.size(); ++at)
        if (line[at] == ',' || line[at] == ':' || line[at] == ';' || line[at] == '-')
            line[at] = ' ';
        else if (line[at] == '0' && at + 1 < line.size() && (line[at + 1] == 'x' || line[at + 1] == 'X'))
            line[at] = line[at + 1] = ' ';
    std::string digits;
    std::istringstream words(line);
    for (std::string word; words >> word;) {
        if (word.size() == 3 && (word[2] == 'h' || word[2] == 'H'))
            word.pop_back();
        digits += word.size() == 1 ? "0" + word : word;
    }
    return digits;
}

std::optional<SelRecord> FromHexLine(const std::string &line) {
    SelRecord record;
    return KnowDigits(record, 0, HexDigitsOf(line), SEL_RECORD_SIZE) ? std::optional(record) : std::nullopt;
}

// What keeps a line from being a record.
std::string WhyNoRecord(const std::string &line) {
    const std::string digits = HexDigitsOf(line);
    if (!IsHex(digits))
        return "is neither 16 bytes in hexadecimal nor a record of 'ipmitool sel list -v'";
    if (digits.size() % 2 != 0)
        return "has " + std::to_string(digits.size()) + " hexadecimal digits; a record has 32, for 16 bytes";
    return "has " + std::to_string(digits.size() / 2) + (digits.size() == 2 ? " byte" : " bytes") +
           (digits.size() / 2 > SEL_RECORD_SIZE ? "; a record has 16, and a line of its own"
                                                : "; a record has 16");
}

// ---- whole inputs ----------------------------------------------------------------------------------

bool IsBinary(const std::string &content) {
    return std::any_of(
        content.begin(), content.end(),
        [](unsigned char c) { return (c < 0x20 && c != '\n' && c != '\r' && c != '\t') || c >= 0x7F; });
}

std::vector<InputRecord> FromBinary(const std::string &content, const std::string &shown_name) {
    if (content.size() % SEL_RECORD_SIZE != 0)
        throw InputError(shown_name + ": " + std::to_string(content.size()) +
                         " bytes are no whole number of 16-byte records");
    std::vector<InputRecord> out;
    for (size_t at = 0; at < content.size(); at += SEL_RECORD_SIZE) {
        SelBytes bytes;
        std::copy_n(content.begin() + static_cast<long>(at), SEL_RECORD_SIZE, bytes.begin());
        out.push_back({WholeRecord(bytes), "record " + std::to_string(out.size() + 1), true});
    }
    return out;
}

class TextReader {
public:
    explicit TextReader(std::string shown_name) : shown_name_(std::move(shown_name)) {}

    void Line(const std::string &raw) {
        ++number_;
        const std::string line = Trim(raw);
        const size_t colon = line.find(" : ");
        if (line.rfind("SEL Record ID", 0) == 0)
            StartBlock();
        if (line.empty())
            return EndBlock();
        if (in_block_) {
            if (colon != std::string::npos)
                fields_[Trim(line.substr(0, colon))] = Trim(line.substr(colon + 3));
            return;
        }
        if (line[0] == '#')
            return;
        if (auto record = OneLine(line))
            out_.push_back({*record, Where(number_), false});
        else
            KeepOther(line);
    }

    std::vector<InputRecord> Finish() {
        EndBlock();
        const bool raw = !out_.empty() && !printed_;
        if (!other_.empty() && (raw || out_.empty()))
            throw InputError(shown_name_ + ": " + other_);
        if (out_.empty())
            throw InputError(shown_name_ + ": no event record");
        return std::move(out_);
    }

private:
    static std::string Where(size_t line) {
        return "line " + std::to_string(line);
    }
    // Printed by a program that also says other things: lines that are no record are passed over.
    std::optional<SelRecord> OneLine(const std::string &line) {
        std::optional<SelRecord> record;
        if (line.rfind("RID:[", 0) == 0)
            record = FromHexDump(line);
        else if (line.find('|') != std::string::npos)
            record = FromListLine(line);
        else
            return FromHexLine(line);
        printed_ = printed_ || record;
        return record;
    }
    void KeepOther(const std::string &line) {
        if (other_.empty())
            other_ = Where(number_) + " " + WhyNoRecord(line);
    }
    void StartBlock() {
        EndBlock();
        in_block_ = true;
        printed_ = true;
        block_line_ = number_;
    }
    void EndBlock() {
        if (!in_block_)
            return;
        in_block_ = false;
        const auto record = FromFields(fields_);
        fields_.clear();
        if (!record)
            throw InputError(shown_name_ + ": the record that begins in " + Where(block_line_) +
                             " is not whole");
        out_.push_back({*record, Where(block_line_), false});
    }

    std::string shown_name_;
    size_t number_ = 0, block_line_ = 0;
    bool in_block_ = false, printed_ = false;
    Fields fields_;
    std::string other_; // what is said of the first line that is no record
    std::vector<InputRecord> out_;
};

} // namespace

std::vector<InputRecord> ReadRecords(const std::string &content, const std::string &shown_name) {
    if (IsBinary(content))
        return FromBinary(content, shown_name);
    TextReader reader(shown_name);
    std::istringstream lines(content);
    for (std::string line; std::getline(lines, line);)
        reader.Line(line);
    return reader.Finish();
}

SelRecord TurnedRound(const SelRecord &record) {
    SelRecord out = record;
    if (const uint8_t type = record.bytes[SEL_RECORD_TYPE]; type >= 0xC0 && IsStamped(type))
        std::reverse(out.bytes.begin() + SEL_GENERATOR_ID, out.bytes.begin() + SEL_SENSOR_TYPE);
    return out;
}

} // namespace workbench
