// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/board_text.h"

#include <algorithm>

#include "base/text.h"
#include "simulator/board_file.h"

namespace workbench {
namespace {

std::string Quoted(const std::string &text) {
    std::string out = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\')
            out += '\\';
        out += byte < 0x20 || byte == 0x7F ? "\\u00" + Hex(byte).substr(2) : std::string(1, c);
    }
    return out + "\"";
}

std::string ValueText(bool value) {
    return value ? "true" : "false";
}
std::string ValueText(const std::string &value) {
    return Quoted(value);
}
template <class T>
requires std::is_integral_v<T> std::string ValueText(T value) {
    return std::to_string(value);
}
std::string ValueText(const sim::BusClient &client) {
    return "{ bus = " + std::to_string(client.bus) + ", address = " + Hex(client.address) + " }";
}

// [0, 1, 2, 5] as ["0-2", 5].
std::string Ranges(const std::vector<uint8_t> &numbers) {
    std::vector<std::string> parts;
    for (size_t at = 0; at < numbers.size();) {
        size_t end = at + 1;
        while (end < numbers.size() && numbers[end] == numbers[end - 1] + 1)
            ++end;
        if (end - at > 2)
            parts.push_back("\"" + std::to_string(numbers[at]) + "-" + std::to_string(numbers[end - 1]) +
                            "\"");
        else
            for (size_t i = at; i < end; ++i)
                parts.push_back(std::to_string(numbers[i]));
        at = end;
    }
    return "[" + Join(parts, ", ") + "]";
}

// A table of the file; its header stands only over lines.
class Section {
public:
    explicit Section(std::string header) : header_(std::move(header)) {}
    void Line(const std::string &key, const std::string &value) {
        lines_ += key + " = " + value + "\n";
    }
    template <class T> Section &Value(const std::string &key, const T &value, const T &standard) {
        if (value != standard)
            Line(key, ValueText(value));
        return *this;
    }
    template <class K, class V> Section &Table(const std::string &key, const std::map<K, V> &map) {
        std::vector<std::string> parts;
        for (const auto &[k, v] : map)
            parts.push_back(KeyText(k) + " = " + ValueText(v));
        if (!parts.empty())
            Line(key, "{ " + Join(parts, ", ") + " }");
        return *this;
    }
    template <class T> Section &Optional(const std::string &key, const std::optional<T> &value) {
        if (value)
            Line(key, ValueText(*value));
        return *this;
    }
    std::string Text(bool even_empty = false) const {
        return lines_.empty() && !even_empty ? "" : "\n" + header_ + "\n" + lines_;
    }

private:
    static std::string KeyText(const std::string &key) {
        return Quoted(key);
    }
    template <class K> static std::string KeyText(K key) {
        return std::to_string(key);
    }
    std::string header_, lines_;
};

const sim::Board kStandard;

std::string BoardSection(const sim::Board &board) {
    Section out("[board]");
    if (board.board_id != kStandard.board_id)
        out.Line("id", Hex(board.board_id, 4));
    out.Value("inner_product_id", board.inner_product_id, kStandard.inner_product_id)
        .Value("custom_id", board.custom_id, kStandard.custom_id)
        .Value("liquid_cooling_mode", board.liquid_cooling_mode, kStandard.liquid_cooling_mode)
        .Value("cdu_enable", board.cdu_enable, kStandard.cdu_enable)
        .Value("sensor_simplification", board.sensor_simplification, kStandard.sensor_simplification)
        .Value("inlet_temperature", board.inlet_temperature, kStandard.inlet_temperature);
    const sim::BusClient &inlet = board.inlet_client;
    if (inlet.bus != kStandard.inlet_client.bus || inlet.address != kStandard.inlet_client.address)
        out.Line("inlet_client", ValueText(inlet));
    return out.Text();
}

std::string VoltageSection(uint8_t number, const sim::CpuVoltage &v) {
    const sim::CpuVoltage standard;
    return Section("[cpus.voltage." + std::to_string(number) + "]")
        .Value("m", v.m, standard.m)
        .Value("b", v.b, standard.b)
        .Value("exponents", v.exponents, standard.exponents)
        .Value("mask", v.mask, standard.mask)
        .Value("unr", v.unr, standard.unr)
        .Value("uc", v.uc, standard.uc)
        .Value("unc", v.unc, standard.unc)
        .Value("lnr", v.lnr, standard.lnr)
        .Value("lc", v.lc, standard.lc)
        .Value("lnc", v.lnc, standard.lnc)
        .Text();
}

std::string CpuSections(const sim::Cpus &cpus) {
    const sim::Cpus &standard = kStandard.cpus;
    Section out("[cpus]");
    out.Value("service", cpus.service, standard.service)
        .Value("count", cpus.count, standard.count)
        .Value("silk_start", cpus.silk_start, standard.silk_start)
        .Value("type", cpus.type, standard.type)
        .Value("reduce_flag", cpus.reduce_flag, standard.reduce_flag);
    std::vector<std::string> online;
    for (const bool one : cpus.online)
        online.push_back(ValueText(one));
    while (!online.empty() && online.back() == "true")
        online.pop_back();
    if (!online.empty())
        out.Line("online", "[" + Join(online, ", ") + "]");
    out.Table("vr_client", cpus.vr_clients);
    std::string text = out.Text();
    for (const auto &[number, voltage] : cpus.voltages)
        text += VoltageSection(number, voltage);
    return text;
}

// Boards name their DIMMs by places, often after a word that is the same for all ("DIMM000").
struct DimmPattern {
    std::string text;
    sim::DimmPlaces places;

    bool Gives(const std::vector<std::string> &names) const {
        for (uint32_t dimm = 0; dimm < names.size(); ++dimm)
            if (sim::DimmNameByPattern(text, dimm, places) != names[dimm])
                return false;
        return true;
    }
};

std::optional<DimmPattern> PatternWith(const std::string &before, const std::vector<std::string> &names) {
    constexpr const char *kPatterns[] = {"{n}", "{letter}{slot}", "{channel}{slot}", "{cpu}{letter}{slot}",
                                         "{cpu}{channel}{slot}"};
    const auto count = static_cast<uint8_t>(names.size());
    for (const char *pattern : kPatterns)
        for (uint8_t per_cpu = 0; per_cpu < count; ++per_cpu)
            for (const uint8_t per_channel : {2, 1, 3, 4}) {
                const DimmPattern found = {before + pattern, {per_cpu, per_channel}};
                if (found.Gives(names))
                    return found;
            }
    return std::nullopt;
}

std::optional<DimmPattern> PatternOf(const std::vector<std::string> &names) {
    constexpr size_t kLongest = 63; // name in a board file; a capture may hold a megabyte
    size_t same = std::min(names.front().size(), kLongest);
    for (const std::string &name : names)
        while (name.compare(0, same, names.front(), 0, same) != 0)
            --same;
    for (size_t length = 0; length <= same; ++length)
        if (const auto found = PatternWith(names.front().substr(0, length), names))
            return found;
    return std::nullopt;
}

void AddDimmNames(Section &out, const sim::Dimms &dimms) {
    std::vector<std::string> names = dimms.names;
    while (!names.empty() && names.back() == sim::DefaultDimmName(static_cast<uint32_t>(names.size() - 1)))
        names.pop_back();
    const bool all = dimms.names.size() == dimms.count;
    if (const auto pattern = all && names.size() > 2 ? PatternOf(dimms.names) : std::nullopt) {
        const sim::DimmPlaces standard;
        out.Line("names", Quoted(pattern->text));
        out.Value("dimms_per_cpu", pattern->places.per_cpu, standard.per_cpu)
            .Value("slots_per_channel", pattern->places.per_channel, standard.per_channel);
        return;
    }
    for (std::string &name : names)
        name = Quoted(name);
    if (!names.empty())
        out.Line("names", "[" + Join(names, ", ") + "]");
}

std::string DimmSection(const sim::Dimms &dimms) {
    Section out("[dimms]");
    out.Value("count", dimms.count, kStandard.dimms.count);
    AddDimmNames(out, dimms);
    out.Value("power_accuracy", dimms.power_accuracy, kStandard.dimms.power_accuracy);
    return out.Text();
}

std::string PsuSection(const sim::Psus &psus) {
    const sim::Psus &standard = kStandard.psus;
    return Section("[psus]")
        .Value("count", psus.count, standard.count)
        .Value("group_count", psus.group_count, standard.group_count)
        .Value("count_per_group", psus.count_per_group, standard.count_per_group)
        .Value("power_manage", psus.power_manage, standard.power_manage)
        .Value("alarm_config", psus.alarm_config, standard.alarm_config)
        .Text();
}

std::string FanSection(const sim::Fans &fans) {
    Section out("[fans]");
    out.Value("service", fans.service, kStandard.fans.service)
        .Value("count", fans.count, kStandard.fans.count);
    std::vector<uint8_t> silk = fans.silk;
    while (!silk.empty() && silk.back() == silk.size())
        silk.pop_back();
    if (!silk.empty())
        out.Line("silk", Ranges(silk));
    return out.Value("power_accuracy", fans.power_accuracy, kStandard.fans.power_accuracy).Text();
}

std::string DiskSections(const sim::Disks &disks) {
    const sim::Disks &standard = kStandard.disks;
    Section out("[disks]");
    out.Value("service", disks.service, standard.service)
        .Value("enabled", disks.enabled, standard.enabled)
        .Optional("reported_count", disks.reported_count);
    if (!disks.nvme_slots.empty())
        out.Line("nvme_slots", Ranges(disks.nvme_slots));
    out.Value("power_accuracy", disks.power_accuracy, standard.power_accuracy)
        .Table("conversion", disks.conversion)
        .Table("silk", disks.silk);
    std::string text = out.Text();
    for (const sim::Backplane &backplane : disks.backplanes)
        text += Section("[[disks.backplane]]")
                    .Value("start_slot", backplane.start_slot, uint8_t{0})
                    .Value("disk_count", backplane.disk_count, uint8_t{0})
                    .Value("location", backplane.location, sim::Backplane{}.location)
                    .Text(true);
    return text;
}

bool IsPlain(const sim::PcieSlot &slot) {
    return slot.present && slot.silk_nul && slot.location == 0 && slot.silk.empty();
}

// The plain list gives the order; what is more than plain is said of its number.
std::string PcieSections(const sim::Pcie &pcie) {
    Section out("[pcie]");
    out.Optional("count", pcie.count);
    std::vector<uint8_t> numbers;
    for (const sim::PcieSlot &slot : pcie.slots)
        numbers.push_back(slot.slot);
    if (std::any_of(pcie.slots.begin(), pcie.slots.end(), IsPlain))
        out.Line("slots", Ranges(numbers));
    std::string text = out.Optional("s5_slot", pcie.s5_slot).Text();
    for (const sim::PcieSlot &slot : pcie.slots) {
        if (IsPlain(slot))
            continue;
        Section one("[[pcie.slot]]");
        one.Line("slot", std::to_string(slot.slot));
        text += one.Value("location", slot.location, uint8_t{0})
                    .Value("silk", slot.silk, std::string())
                    .Value("silk_nul", slot.silk_nul, true)
                    .Value("present", slot.present, true)
                    .Text();
    }
    return text;
}

std::string SwitchBoardSections(const sim::SwitchBoard &board) {
    Section out("[switch_board]");
    out.Value("supported", board.supported, false)
        .Value("chip_temp_count", board.chip_temp_count, uint8_t{0})
        .Value("sensors_valid", board.sensors_valid, uint8_t{0})
        .Table("client", board.clients);
    std::string text = out.Text();
    for (const auto &[number, card] : board.cards) {
        Section one("[switch_board.card." + std::to_string(number) + "]");
        one.Value("online", card.online, false);
        if (card.board_id != 0)
            one.Line("id", Hex(card.board_id, 4));
        text += one.Text();
    }
    return text;
}

std::string GpuSections(const std::vector<sim::Gpu> &gpus) {
    std::string text;
    for (const sim::Gpu &gpu : gpus) {
        Section one("[[gpu]]");
        one.Line("slot", std::to_string(gpu.slot));
        text += one.Value("power_w", gpu.power_w, sim::Gpu{}.power_w)
                    .Value("vendor", gpu.vendor, uint16_t{0})
                    .Text();
    }
    return text;
}

std::string ThresholdSections(const std::vector<sim::ThresholdEntry> &entries) {
    std::string text;
    for (const sim::ThresholdEntry &entry : entries) {
        Section one("[[threshold]]");
        one.Line("name", Quoted(entry.name));
        text += one.Value("unr", entry.unr, uint8_t{0})
                    .Value("uc", entry.uc, uint8_t{0})
                    .Value("unc", entry.unc, uint8_t{0})
                    .Value("lnr", entry.lnr, uint8_t{0})
                    .Value("lc", entry.lc, uint8_t{0})
                    .Value("lnc", entry.lnc, uint8_t{0})
                    .Value("mask", entry.mask, uint16_t{0})
                    .Text();
    }
    return text;
}

std::string FileText(const std::vector<uint8_t> &bytes) {
    if (bytes.empty())
        return "\"\"";
    if (std::all_of(bytes.begin(), bytes.end(), [&bytes](uint8_t byte) { return byte == bytes[0]; }))
        return "{ size = " + std::to_string(bytes.size()) + ", fill = " + std::to_string(bytes[0]) + " }";
    return "{ hex = \"" + HexBytes(bytes) + "\" }";
}

std::string OtherSections(const sim::Board &board) {
    Section files("[files]");
    for (const auto &[path, bytes] : board.files)
        files.Line(Quoted(path), FileText(bytes));
    Section registers("[power_registers]");
    for (const auto &[number, value] : board.power_registers)
        registers.Line(std::to_string(number), ValueText(value));
    return Section("[support]")
               .Value("all", board.support.all, true)
               .Table("sensors", board.support.sensors)
               .Table("kinds", board.support.kinds)
               .Text() +
           ThresholdSections(board.thresholds) +
           Section("[sensor_numbers]")
               .Table("by_key", board.sensor_numbers.by_key)
               .Table("cpu", board.sensor_numbers.cpu)
               .Table("dimm", board.sensor_numbers.dimm)
               .Table("power_module", board.sensor_numbers.power_module)
               .Optional("power_fault", board.sensor_numbers.power_fault)
               .Text() +
           registers.Text() + files.Text();
}

std::string FaultSection(const sim::Fault &fault) {
    Section out("[[fault]]");
    out.Line("call", Quoted(fault.call));
    return out.Optional("occurrence", fault.occurrence)
        .Value("from_then_on", fault.from_then_on, false)
        .Optional("args", fault.args)
        .Optional("result", fault.result)
        .Optional("output", fault.output)
        .Value("succeed", fault.succeed, false)
        .Value("null_object", fault.null_object, false)
        .Value("null_operation", fault.null_operation, false)
        .Value("errno_value", fault.errno_value, 0)
        .Text();
}

} // namespace

std::string BoardText(const sim::Board &board, const std::vector<sim::Fault> &faults) {
    std::string text =
        BoardSection(board) + CpuSections(board.cpus) + DimmSection(board.dimms) + PsuSection(board.psus) +
        FanSection(board.fans) + DiskSections(board.disks) + PcieSections(board.pcie) +
        Section("[ocp]")
            .Value("count", board.ocp.count, uint8_t{0})
            .Value("present", board.ocp.present, uint32_t{0})
            .Table("restored", board.ocp.restored)
            .Text() +
        SwitchBoardSections(board.switch_board) + GpuSections(board.gpus) + OtherSections(board);
    for (const sim::Fault &fault : faults)
        text += FaultSection(fault);
    return text.empty() ? text : text.substr(1);
}

} // namespace workbench
