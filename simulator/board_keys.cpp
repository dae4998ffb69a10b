// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/board_keys.h"

#include <optional>
#include <string_view>

#include "simulator/board_file_sections.h"
#include "simulator/board_file_toml.h"

namespace sim {
namespace {

struct CallKeys {
    std::string_view call, keys;
};
constexpr CallKeys kCallKeys[] = {
    {"get_default_board_id", "board.id"},
    {"GetSwitchBoardSupportFlag", "switch_board.supported"},
    {"GetCardOnlineStatus", "switch_board.card.{card}.online"},
    {"GetCardBoardId", "switch_board.card.{card}.id"},
    {"GetLiquidCoolingFlag", "board.liquid_cooling_mode"},
    {"FruSdrInitPathChoice", "disks.enabled"},
    {"oxa_CustomSlotConversion", "disks.conversion.{slot} disks.conversion"},
    {"HAL_CPUVRTempCoreVolts_GetI2cClientByInstance", "cpus.vr_client.{cpu} cpus.vr_client"},
    {"HAL_InputTemp_GetI2cClient", "board.inlet_client"},
    {"HAL_SWTICH_GetI2cClientByInstance", "switch_board.client.{instance} switch_board.client"},
    {"HAL_GetCpuMaxCount", "cpus.count"},
    {"HAL_GetCpuSilkScreenIndexFixValue", "cpus.silk_start"},
    {"HAL_GetCpuType", "cpus.type"},
    {"HAL_GetCpuOnlineStatus", "cpus.online"},
    {"HAL_GetCpuVoltSdrInfoforSensor", "cpus.voltage.{index} cpus.voltage"},
    {"HalCpuInst", "cpus.service"},
    {"HalCpuService.GetCpuReduceFlag", "cpus.reduce_flag"},
    {"HAL_GetDimmMaxCount", "dimms.count"},
    {"HAL_GetDimmDevInfoByDimmNum", "dimms.count"},
    {"HAL_GetDimmSensorNameIndex", "dimms.names"},
    {"HAL_GetDimmPowerAccuracy", "dimms.power_accuracy"},
    {"HAL_IsNeedSensorSimplification", "board.sensor_simplification"},
    {"HAL_GetPsuMaxCount", "psus.count"},
    {"HAL_GetIsSupportPowerManage", "psus.power_manage"},
    {"HAL_GetPsuGroupCount", "psus.group_count"},
    {"HAL_GetPsuCountPerGroup", "psus.count_per_group"},
    {"HAL_GetSensorNotSupportFlagBySensor", "support.sensors.{sensor} support.all"},
    {"HAL_GetSensorSupportFlagBySensor", "support.kinds.{kind} support.kinds"},
    {"HalFanInst", "fans.service"},
    {"HalFanService.GetFanMaxCount", "fans.count"},
    {"HalFanService.GetFanSilkByIndex", "fans.silk"},
    {"HAL_GetFanPowerAccuracy", "fans.power_accuracy"},
    {"HalHddBackpanelInst", "disks.service"},
    {"HalHddBackpanelService.GetBackPanelList", "disks.reported_count disks.backplane"},
    {"HalHddBackpanelService.CheckHddIsSupportNvme", "disks.nvme_slots"},
    {"Hal_CheckHddSlotIsDiffHddSilk", "disks.silk.{slot} disks.silk"},
    {"Hal_GetHddSilkByHddSlot", "disks.silk.{slot} disks.silk"},
    {"HAL_GetHddPowerAccuracy", "disks.power_accuracy"},
    {"Hal_GetStandPcieSlotCounts", "pcie.count pcie.slots pcie.slot"},
    {"Hal_GetPcieSlotByIndex", "pcie.slots pcie.slot"},
    {"Hal_GetPcieLocationByPcieSlot", "pcie.slot pcie.slots"},
    {"Hal_GetPcieSilkByPcieSlot", "pcie.slot pcie.slots"},
    {"GetBlueFieldS5PcieSlotNum", "pcie.s5_slot"},
    {"GetOcpNetCardMaxCount", "ocp.count"},
    {"GetOcpPresentStatus", "ocp.present"},
    {"RestoreOcpSlot", "ocp.restored.{index} ocp.restored"},
    {"Hal_GetSwiTempSensorCnt", "switch_board.chip_temp_count"},
    {"MW_GetCustomid", "board.custom_id"},
    {"MW_GetInnerProductId", "board.inner_product_id"},
    {"MW_GetGPUAssetInfo", "gpu"},
    {"MW_GetSensorThreshInfo", "threshold"},
    {"MW_GetSensorNumber", "sensor_numbers.by_key"},
    {"MW_GetSpecificSensorInfo", "sensor_numbers.by_key"},
    {"MW_GetCPUSensorNumber", "sensor_numbers.cpu.{cpu} sensor_numbers.cpu"},
    {"MW_GetMemSensorNumber", "sensor_numbers.dimm.{dimm} sensor_numbers.dimm"},
    {"MW_GetPemSensorNumber", "sensor_numbers.power_module.{location} sensor_numbers.power_module"},
    {"MW_GetPowerFaultSensorNum", "sensor_numbers.power_fault"},
    {"MW_GetInletTempInfo", "board.inlet_temperature"},
    {"MW_GetSWSensorVail", "switch_board.sensors_valid"},
    {"IPMI_GetCduManageConfig", "board.cdu_enable"},
    {"IPMICMD_AddSDR", "board.sdr_limit"},
    {"IPMICMD_AddSELEntry", "board.sel_limit"},
    {"epldio_read", "power_registers.{reg} power_registers"},
    {"LoadPsuAlarmCfg", "psus.alarm_config"},
    {"sigwrap_read", "files.{file} files"},
    {"fread", "files.{file} files"},
};

std::vector<std::string> Split(std::string_view text, char at) {
    std::vector<std::string> parts;
    for (size_t from = 0; from <= text.size();) {
        const size_t end = std::min(text.find(at, from), text.size());
        parts.emplace_back(text.substr(from, end - from));
        from = end + 1;
    }
    return parts;
}

// "22" for "sensor" in "sensor=22"; empty when it is not there.
std::string Argument(const std::string &args, std::string_view name) {
    for (const std::string &word : Split(args, ' '))
        if (word.size() > name.size() && word.starts_with(name) && word[name.size()] == '=')
            return word.substr(name.size() + 1);
    return "";
}

// "{sensor}" as the call gives it; any other part is itself.
std::string Filled(const std::string &part, const std::string &args) {
    if (part[0] != '{')
        return part;
    std::string word = Argument(args, part.substr(1, part.size() - 2));
    std::erase(word, '"');
    return word;
}

} // namespace

struct BoardLines::File {
    toml::table table;

    // The key that means the wanted number, however it is written.
    static const toml::key *FindNumber(const toml::table &table, const std::string &section,
                                       const std::string &number) {
        for (const auto &entry : table)
            if (const auto meant = rules::KeyNumber(section, entry.first.str());
                meant && std::to_string(*meant) == number)
                return &entry.first;
        return nullptr;
    }

    // The line of the key that this path leads to, and how the file spells it; nothing when it is not there.
    std::optional<AnswerPlace> Find(const std::string &keys, const std::string &args) const {
        const toml::table *at = &table;
        std::string section;
        const std::vector<std::string> parts = Split(keys, '.');
        for (size_t i = 0; i < parts.size(); ++i) {
            const std::string word = Filled(parts[i], args);
            const toml::key *numbered = word == parts[i] ? nullptr : FindNumber(*at, section, word);
            const auto found = at->find(numbered != nullptr ? numbered->str() : std::string_view(word));
            if (found == at->end())
                return std::nullopt;
            if (i + 1 == parts.size())
                return AnswerPlace{section, std::string(found->first.str()),
                                   Line(found->first, found->second)};
            if (!found->second.is_table())
                return std::nullopt;
            at = found->second.as_table();
            section += (section.empty() ? "" : ".") + std::string(found->first.str());
        }
        return std::nullopt;
    }

    // Of a list of tables the first one: the key itself has no place of its own.
    static uint32_t Line(const toml::key &key, const toml::node &node) {
        const auto *list = node.as_array();
        if (list != nullptr && !list->empty() && list->front().is_table())
            return list->front().source().begin.line;
        const uint32_t line = key.source().begin.line;
        return line != 0 ? line : node.source().begin.line;
    }
};

BoardLines::BoardLines(std::unique_ptr<File> file) : file_(std::move(file)) {}

BoardLines::~BoardLines() = default;

AnswerPlace BoardLines::Of(const std::string &call, const std::string &args) const {
    const std::string all = KeysOfCall(call);
    if (all.empty())
        return {};
    const std::vector<std::string> candidates = Split(all, ' ');
    for (const std::string &keys : candidates)
        if (const auto found = file_->Find(keys, args))
            return *found;
    AnswerPlace standard;
    for (const std::string &part : Split(candidates.back(), '.')) {
        if (!standard.key.empty())
            standard.section += (standard.section.empty() ? "" : ".") + standard.key;
        standard.key = Filled(part, args);
    }
    return standard;
}

uint32_t BoardLines::FaultLine(size_t number) const {
    const auto *list = file_->table["fault"].as_array();
    return list == nullptr || number >= list->size() ? 0 : (*list)[number].source().begin.line;
}

std::string KeysOfCall(const std::string &call) {
    for (const CallKeys &row : kCallKeys)
        if (row.call == call)
            return std::string(row.keys);
    return "";
}

std::shared_ptr<const BoardLines> LinesOf(toml::table &&table) {
    return std::make_shared<const BoardLines>(
        std::make_unique<BoardLines::File>(BoardLines::File{std::move(table)}));
}

} // namespace sim
