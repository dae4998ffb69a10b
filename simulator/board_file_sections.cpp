// SPDX-License-Identifier: GPL-3.0-or-later
//
// One table of rules per section of a board file, and the few checks that look at several keys at once.
#include "simulator/board_file_sections.h"

#include <algorithm>
#include <cctype>

#include "library/profiles/catalogue.h"
#include "oxa/platform.h"
#include "simulator/calls.h"

namespace sim::rules {
namespace {

// ---- words that stand for numbers
// --------------------------------------------------------------------------

Words<uint32_t> ProfileWords() {
    Words<uint32_t> words;
    for (const oxa::ProfileView &profile : oxa::kProfiles)
        words.emplace_back(profile.pcName, profile.dwCustomId);
    std::sort(words.begin(), words.end(), [](const auto &a, const auto &b) { return a.second < b.second; });
    return words;
}
const Words<uint32_t> kProfiles = ProfileWords();
const Words<uint8_t> kCpuTypes = {
    {"unknown", CPU_TYPE_UNKNOWN}, {"intel", CPU_TYPE_INTEL}, {"domain_volt", CPU_TYPE_DOMAIN_VOLT}};
const Words<uint8_t> kLiquidCooling = {{"none", 0}, {"leak_sensor", 1}, {"no_fans", 2}};
const Words<uint8_t> kPcieLocations = {{"rear", 0}, {"front", 1}};
const Words<uint32_t> kGpuPowers = {{"unknown", MW_GPU_POWER_UNKNOWN}};
const Words<uint32_t> kKinds = {{"SENSOR_KIND_INPUT_VOLTS", SENSOR_KIND_INPUT_VOLTS},
                                {"SENSOR_KIND_OUTPUT_VOLTS", SENSOR_KIND_OUTPUT_VOLTS},
                                {"INPUT_VOLTS", SENSOR_KIND_INPUT_VOLTS},
                                {"OUTPUT_VOLTS", SENSOR_KIND_OUTPUT_VOLTS}};
const Words<uint32_t> kPowerRegisters = {{"PMIC_POWER_FAULT_REG_5350", PMIC_POWER_FAULT_REG_5350},
                                         {"PMIC_POWER_FAULT_REG_6900G5", PMIC_POWER_FAULT_REG_6900G5}};

const Words<uint32_t> kSensors = {
    {"BP_FRONT_12V", SENSOR_BP_FRONT_12V},
    {"BP_REAR_12V", SENSOR_BP_REAR_12V},
    {"BP_FRONT_TEMP", SENSOR_BP_FRONT_TEMP},
    {"BP_REAR_TEMP", SENSOR_BP_REAR_TEMP},
    {"SYS_54_VOLT", SENSOR_SYS_54_VOLT},
    {"GPU_54_VOLT", SENSOR_GPU_54_VOLT},
    {"PDB_BOARD_POWER", SENSOR_PDB_BOARD_POWER},
    {"NIC_POWER", SENSOR_NIC_POWER},
    {"GPU_BOARD_POWER", SENSOR_GPU_BOARD_POWER},
    {"CPU_VOLTS", SENSOR_CPU_VOLTS},
    {"INPUT_TEMP", SENSOR_INPUT_TEMP},
    {"OUTPUT_TEMP", SENSOR_OUTPUT_TEMP},
    {"ENV_HUMI", SENSOR_ENV_HUMI},
    {"PDB_TEMP", SENSOR_PDB_TEMP},
    {"VCC12V", SENSOR_VCC12V},
    {"POWER_FAULT", SENSOR_POWER_FAULT},
    {"CPU_VCORE_CURRENT", SENSOR_CPU_VCORE_CURRENT},
    {"CPU_VCORE1_CURRENT1", SENSOR_CPU_VCORE1_CURRENT1},
    {"CPU_VSOC_CURRENT", SENSOR_CPU_VSOC_CURRENT},
    {"CPU_DDR_VDD1_CURRENT", SENSOR_CPU_DDR_VDD1_CURRENT},
    {"PCH_TEMP", SENSOR_PCH_TEMP},
    {"POWER_BUTTON", SENSOR_POWER_BUTTON},
    {"UID_BUTTON", SENSOR_UID_BUTTON},
    {"INTRUSION", SENSOR_INTRUSION},
    {"ME", SENSOR_ME},
    {"PWR_MODULE_TEMP", SENSOR_PWR_MODULE_TEMP},
    {"UBB_RT_TEMP", SENSOR_UBB_RT_TEMP},
    {"CPU_VR_TEMP", SENSOR_CPU_VR_TEMP},
};

// "SENSOR_CPU_VR_TEMP" and "CPU_VR_TEMP", the short ones last.
Words<uint32_t> SensorWords() {
    Words<uint32_t> words;
    for (const auto &[name, number] : kSensors)
        words.emplace_back("SENSOR_" + name, number);
    words.insert(words.end(), kSensors.begin(), kSensors.end());
    return words;
}

// ---- keys that are texts
// -----------------------------------------------------------------------------------

// "/var/x": files of the board's own file system.
KeyReader<std::string> PathKey() {
    return {"an absolute path without \"..\"",
            [](std::string_view text) -> std::optional<std::string> {
                if (text.size() < 2 || text[0] != '/' || text.find("..") != text.npos)
                    return std::nullopt;
                return std::string(text);
            },
            {},
            "/(?!.*\\.\\.).+"};
}

// "04 0D 6F 03 00": entity, sensor type, event type, instance, reserved.
KeyReader<std::string> DirectoryKey() {
    return {"five bytes such as \"04 0D 6F 03 00\"",
            [](std::string_view text) -> std::optional<std::string> {
                constexpr std::string_view kForm = "xx xx xx xx xx";
                if (text.size() != kForm.size())
                    return std::nullopt;
                std::string key;
                for (size_t i = 0; i < text.size(); ++i) {
                    const auto c = static_cast<unsigned char>(text[i]);
                    if (kForm[i] == 'x' ? std::isxdigit(c) == 0 : c != ' ')
                        return std::nullopt;
                    key += static_cast<char>(std::toupper(c));
                }
                return key;
            },
            {},
            "[0-9a-fA-F]{2}( [0-9a-fA-F]{2}){4}"};
}

// ---- sections
// ----------------------------------------------------------------------------------------------

Rules ClientRules(BusClient &client) {
    return {Value("bus", client.bus), Value("address", client.address)};
}

Rules BoardRules(Board &board) {
    return {
        Value("name", board.name, Text(0, 63)),
        Value("id", board.board_id),
        Value("inner_product_id", board.inner_product_id),
        Value("custom_id", board.custom_id, NumberOr(kProfiles)),
        Value("liquid_cooling_mode", board.liquid_cooling_mode, NumberOr(kLiquidCooling)),
        Value("cdu_enable", board.cdu_enable, FlagByte()),
        Value("sensor_simplification", board.sensor_simplification),
        Value("inlet_temperature", board.inlet_temperature),
        Section("inlet_client", ClientRules(board.inlet_client)),
        Value("sel_limit", board.sel_limit),
        Value("sdr_limit", board.sdr_limit),
    };
}

Rules CpuVoltageRules(CpuVoltage &voltage) {
    return {
        Value("m", voltage.m),
        Value("b", voltage.b),
        Value("exponents", voltage.exponents),
        Value("mask", voltage.mask, Number<uint8_t>(0, 63)),
        Value("unr", voltage.unr),
        Value("uc", voltage.uc),
        Value("unc", voltage.unc),
        Value("lnr", voltage.lnr),
        Value("lc", voltage.lc),
        Value("lnc", voltage.lnc),
    };
}

Rules CpuRules(Cpus &cpus) {
    return {
        Value("service", cpus.service),
        Value("count", cpus.count),
        Value("silk_start", cpus.silk_start),
        Value("type", cpus.type, NumberOr(kCpuTypes)),
        Value("reduce_flag", cpus.reduce_flag, FlagByte()),
        Value("online", cpus.online, Flags()),
        Numbered("vr_client", cpus.vr_clients, NumberKey<uint8_t>(0, 255), ClientRules),
        Numbered("voltage", cpus.voltages, NumberKey<uint8_t>(1, 4), CpuVoltageRules),
    };
}

Rules PsuRules(Psus &psus) {
    return {
        Value("count", psus.count),
        Value("group_count", psus.group_count),
        Value("count_per_group", psus.count_per_group),
        Value("power_manage", psus.power_manage, FlagByte()),
        Value("alarm_config", psus.alarm_config),
    };
}

constexpr uint8_t kFanLeftOut = 0xFF; // any number of fans may be left out

Rules FanRules(Fans &fans) {
    return {
        Value("service", fans.service),
        Value("count", fans.count),
        NumberList("silk", fans.silk, "fan", kFanLeftOut),
        Value("power_accuracy", fans.power_accuracy),
    };
}

void CheckFans(const Fans &fans, const Where &where, const toml::table &table) {
    if (fans.silk.size() > fans.count)
        Fail(where, PlaceOf(table, "silk"),
             where.At("silk").Label() + " numbers " + std::to_string(fans.silk.size()) + " fans",
             "'count' is " + std::to_string(fans.count));
}

Rules BackplaneRules(Backplane &backplane) {
    return {
        Value("start_slot", backplane.start_slot),
        Value("disk_count", backplane.disk_count),
        Value("location", backplane.location, Text(0, HAL_HDD_LOCATION_LEN)),
    };
}

Rules DiskRules(Disks &disks) {
    return {
        Value("service", disks.service),
        Value("enabled", disks.enabled),
        Value("reported_count", disks.reported_count),
        Value("written_bytes", disks.written_bytes, Number<uint16_t>(0, sizeof(HalHddBackpanelList))),
        NumberList("nvme_slots", disks.nvme_slots, "slot"),
        Value("power_accuracy", disks.power_accuracy),
        Map("conversion", disks.conversion, NumberKey<uint8_t>(0, 255), Number<uint8_t>()),
        Map("silk", disks.silk, NumberKey<uint8_t>(0, 255), Number<uint8_t>()),
        List("backplane", disks.backplanes, BackplaneRules, HAL_HDD_BACKPANEL_MAX),
    };
}

// A slot belongs to one backplane.  Slots beyond 255 are let through: the overflow guard is worth teaching.
void CheckBackplanes(const Disks &disks, const Where &where, const toml::table &table) {
    std::vector<uint32_t> taken;
    for (size_t i = 0; i < disks.backplanes.size(); ++i) {
        const Backplane &backplane = disks.backplanes[i];
        const uint32_t end = backplane.start_slot + uint32_t{backplane.disk_count};
        for (uint32_t slot = backplane.start_slot; slot < end; ++slot) {
            if (std::count(taken.begin(), taken.end(), slot) != 0)
                Fail(where, PlaceOf(*table.get_as<toml::array>("backplane")->get(i)),
                     "slot " + std::to_string(slot) + " is on an earlier [[disks.backplane]] too",
                     "backplanes must not overlap");
            taken.push_back(slot);
        }
    }
}

bool IsOnBackplane(const Disks &disks, uint8_t slot) {
    return std::any_of(
        disks.backplanes.begin(), disks.backplanes.end(),
        [slot](const Backplane &b) { return slot >= b.start_slot && slot < b.start_slot + b.disk_count; });
}

// What a list that is cut or counted otherwise holds is not known here.
void NoteNvmeSlots(Draft &draft, const Where &where, const toml::table &table) {
    const Disks &disks = draft.board.disks;
    if (disks.reported_count || disks.written_bytes)
        return;
    std::vector<uint8_t> lost = disks.nvme_slots;
    std::erase_if(lost, [&](uint8_t slot) { return IsOnBackplane(disks, slot); });
    if (!lost.empty())
        draft.notes.push_back(
            MakeMistake(where, PlaceOf(table, "nvme_slots"),
                        where.At("nvme_slots").Label() + " holds slot " + std::to_string(lost.front()) +
                            (lost.size() == 1 ? "" : " and " + std::to_string(lost.size() - 1) + " more") +
                            ", which no [[disks.backplane]] has",
                        "nothing asks for the disk there"));
}

// "front" is a place like any other to the firmware.
void NoteLocations(Draft &draft, const Where &where, const toml::table &table) {
    const std::vector<Backplane> &backplanes = draft.board.disks.backplanes;
    const Where at = where.At("backplane").Inside(true).At("location");
    for (size_t i = 0; i < backplanes.size(); ++i) {
        std::string lower = backplanes[i].location;
        std::transform(lower.begin(), lower.end(), lower.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        if (lower == "front" && backplanes[i].location != "Front")
            draft.notes.push_back(MakeMistake(
                at, PlaceOf(*table.get_as<toml::array>("backplane")->get_as<toml::table>(i), "location"),
                at.Label() + " is \"" + backplanes[i].location + "\", which is not \"Front\"",
                "its disks are not in front"));
    }
}

void CheckDisks(Draft &draft, const Where &where, const toml::table &table) {
    CheckBackplanes(draft.board.disks, where, table);
    NoteNvmeSlots(draft, where, table);
    NoteLocations(draft, where, table);
}

Rules PcieSlotRules(PcieSlot &slot) {
    return {
        Required(Value("slot", slot.slot)),    Value("location", slot.location, NumberOr(kPcieLocations)),
        Value("silk", slot.silk, Text(0, 63)), Value("silk_nul", slot.silk_nul),
        Value("present", slot.present),
    };
}

Rules PcieRules(Draft &draft) {
    Pcie &pcie = draft.board.pcie;
    return {
        Value("count", pcie.count),
        NumberList("slots", draft.plain_pcie_slots, "slot"),
        Value("s5_slot", pcie.s5_slot),
        List("slot", draft.pcie_slots, PcieSlotRules, 255),
    };
}

// The plain slots first, in their order; a [[pcie.slot]] describes the plain slot of its number or is one
// more.
void JoinPcieSlots(Draft &draft, const Where &where, const toml::table &table) {
    std::vector<PcieSlot> &slots = draft.board.pcie.slots;
    for (uint8_t number : draft.plain_pcie_slots)
        slots.push_back({.slot = number, .location = 0, .silk = "", .present = true, .silk_nul = true});
    std::vector<uint8_t> described;
    for (size_t i = 0; i < draft.pcie_slots.size(); ++i) {
        const PcieSlot &slot = draft.pcie_slots[i];
        if (std::count(described.begin(), described.end(), slot.slot) != 0)
            Fail(where, PlaceOf(*table.get_as<toml::array>("slot")->get(i)),
                 "slot " + std::to_string(slot.slot) + " has an earlier [[pcie.slot]] too",
                 "describe every slot once");
        described.push_back(slot.slot);
        auto plain =
            std::find_if(slots.begin(), slots.end(), [&](const PcieSlot &s) { return s.slot == slot.slot; });
        if (plain == slots.end())
            slots.push_back(slot);
        else
            *plain = slot;
    }
}

// The number of a front slot comes from its silk text.
bool NamesFrontSlot(const std::string &silk) {
    constexpr std::string_view kFront = "F-Slot";
    return silk.starts_with(kFront) && silk.find_first_not_of("0123456789", kFront.size()) == silk.npos;
}

void NoteFrontSlots(Draft &draft, const Where &where, const toml::table &table) {
    for (size_t i = 0; i < draft.pcie_slots.size(); ++i) {
        const PcieSlot &slot = draft.pcie_slots[i];
        const toml::table &entry = *table.get_as<toml::array>("slot")->get_as<toml::table>(i);
        if (slot.location == 1 && !NamesFrontSlot(slot.silk))
            draft.notes.push_back(MakeMistake(where, PlaceOf(entry, "location"),
                                              "slot " + std::to_string(slot.slot) +
                                                  " is in front, but its 'silk' is not \"F-Slot\" and digits",
                                              "its sensors keep the names and the number of a rear slot"));
    }
}

void CheckPcie(Draft &draft, const Where &where, const toml::table &table) {
    JoinPcieSlots(draft, where, table);
    NoteFrontSlots(draft, where, table);
}

// A bitmap, or the list of the cards that are there.
Rule CardBitmap(const std::string &key, uint32_t &target) {
    const std::string expected = "a bitmap 0 to 4294967295 or a list of card numbers 0 to 31";
    return {.key = key,
            .expected = expected,
            .read =
                [=, &target](const Where &where, const toml::node &node) {
                    if (!node.is_array()) {
                        target = Reader<uint32_t>{expected, Number<uint32_t>().parse}.Get(where, node);
                        return;
                    }
                    for (uint8_t card : ReadNumberList(where, node, "card", std::nullopt)) {
                        if (card > 31)
                            Fail(where, PlaceOf(node), where.Label() + " holds card " + std::to_string(card),
                                 "it must be " + expected);
                        target |= uint32_t{1} << card;
                    }
                },
            .schema =
                [] {
                    return schema::AnyOf({schema::Integer(0, UINT32_MAX), schema::NumberList(31)});
                }};
}

Rules OcpRules(Ocp &ocp) {
    return {
        Value("count", ocp.count),
        CardBitmap("present", ocp.present),
        Map("restored", ocp.restored, NumberKey<uint8_t>(0, 255), Number<uint8_t>()),
    };
}

Rules CardRules(Card &card) {
    return {Value("online", card.online), Value("id", card.board_id)};
}

Rules SwitchBoardRules(SwitchBoard &board) {
    return {
        Value("supported", board.supported),
        Value("chip_temp_count", board.chip_temp_count),
        Value("sensors_valid", board.sensors_valid, FlagByte()),
        Numbered("card", board.cards, NumberKey<uint8_t>(1, 2), CardRules),
        Numbered("client", board.clients, NumberKey<uint8_t>(0, 255), ClientRules),
    };
}

Rules GpuRules(Gpu &gpu) {
    return {
        Required(Value("slot", gpu.slot)),
        Value("power_w", gpu.power_w, NumberOr(kGpuPowers)),
        Value("vendor", gpu.vendor),
    };
}

Rules SupportRules(Support &support) {
    return {
        Value("all", support.all),
        Map("sensors", support.sensors, NumberKey<uint32_t>(0, UINT32_MAX, SensorWords()), FlagByte()),
        Map("kinds", support.kinds, NumberKey<uint32_t>(0, UINT32_MAX, kKinds), FlagByte()),
    };
}

Rules ThresholdRules(ThresholdEntry &entry) {
    return {
        Required(Value("name", entry.name, Text(1, 16))),
        Value("unr", entry.unr),
        Value("uc", entry.uc),
        Value("unc", entry.unc),
        Value("lnr", entry.lnr),
        Value("lc", entry.lc),
        Value("lnc", entry.lnc),
        Value("mask", entry.mask),
    };
}

Rules SensorNumberRules(SensorNumbers &numbers) {
    const KeyReader<uint32_t> any = NumberKey<uint32_t>(0, UINT32_MAX);
    return {
        Map("by_key", numbers.by_key, DirectoryKey(), Number<uint32_t>()),
        Map("cpu", numbers.cpu, any, Number<uint32_t>()),
        Map("dimm", numbers.dimm, any, Number<uint32_t>()),
        Map("power_module", numbers.power_module, any, Number<uint32_t>()),
        Value("power_fault", numbers.power_fault),
    };
}

std::vector<std::string> FaultedCalls() {
    std::vector<std::string> known;
    for (const CallFacts &call : kCalls)
        if (call.nature != Nature::kVoid && call.nature != Nature::kLine)
            known.emplace_back(call.name);
    return known;
}

// A misspelled name would never be hit, so only names of calls that obey a fault are taken.
Rule FaultedCall(std::string &target) {
    const std::string expected = "the name of a platform call";
    auto read = [=, &target](const Where &where, const toml::node &node) {
        const std::string name = Reader<std::string>{expected, Text(1, 63).parse}.Get(where, node);
        const std::vector<std::string> known = FaultedCalls();
        if (std::count(known.begin(), known.end(), name) == 0)
            Fail(where, PlaceOf(node), "unknown call '" + name + "' in " + where.Header(),
                 Suggestion(name, known, "it must be " + expected + " such as '" + known.front() + "'"));
        target = name;
    };
    return {.key = "call", .expected = expected, .read = read, .required = true, .schema = [] {
                return schema::Enumeration(FaultedCalls());
            }};
}

Rules FaultRules(Fault &fault) {
    return {
        FaultedCall(fault.call),
        Value("occurrence", fault.occurrence, Number<uint32_t>(1)),
        Value("from_then_on", fault.from_then_on),
        Value("args", fault.args, Text(1, 255)),
        Value("result", fault.result),
        Value("output", fault.output, Number<int64_t>()),
        Value("succeed", fault.succeed),
        Value("null_object", fault.null_object),
        Value("null_operation", fault.null_operation),
        Value("errno_value", fault.errno_value, Number<int>(0, 4095)),
    };
}

// What looks at a section as a whole once it is read.  (By pointer: for the sanitizer of undefined behaviour a reference
// to Thumb code is misaligned.)
template <class T>
auto After(void (*look)(T &, const Where &, const toml::table &), std::remove_const_t<T> &subject) {
    return [look, &subject](const Where &where, const toml::table &table) { look(subject, where, table); };
}

} // namespace

std::optional<uint32_t> KeyNumber(const std::string &section, std::string_view key) {
    const Words<uint32_t> none;
    const Words<uint32_t> words = section == "support.sensors"   ? SensorWords()
                                  : section == "support.kinds"   ? kKinds
                                  : section == "power_registers" ? kPowerRegisters
                                                                 : none;
    return NumberKey<uint32_t>(0, UINT32_MAX, words).parse(key);
}

Rules FileRules(Draft &draft) {
    Board &board = draft.board;
    return {
        Section("board", BoardRules(board)),
        Section("cpus", CpuRules(board.cpus)),
        Section("dimms", DimmRules(draft), After(NameDimms, draft)),
        Section("psus", PsuRules(board.psus)),
        Section("fans", FanRules(board.fans), After(CheckFans, board.fans)),
        Section("disks", DiskRules(board.disks), After(CheckDisks, draft)),
        Section("pcie", PcieRules(draft), After(CheckPcie, draft)),
        Section("ocp", OcpRules(board.ocp)),
        Section("switch_board", SwitchBoardRules(board.switch_board)),
        List("gpu", board.gpus, GpuRules, 255),
        Section("support", SupportRules(board.support)),
        List("threshold", board.thresholds, ThresholdRules, SENSOR_MAX_COUNT),
        Section("sensor_numbers", SensorNumberRules(board.sensor_numbers)),
        Map("power_registers", board.power_registers, NumberKey<uint32_t>(0, UINT32_MAX, kPowerRegisters),
            Number<uint8_t>()),
        Map("files", board.files, PathKey(), Bytes()),
        List("fault", draft.faults, FaultRules, 255),
    };
}

} // namespace sim::rules
