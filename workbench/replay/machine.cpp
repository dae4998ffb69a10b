// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/machine.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <map>

#include "base/text.h"
#include "library/profiles/catalogue.h"
#include "oxa/platform.h"
#include "simulator/calls.h"

namespace workbench {
namespace {

using Call = CapturedCall;

// Gathers what several questions tell of one thing.
struct Gathered {
    CapturedMachine machine;
    std::map<uint8_t, uint8_t> pcie_index; // index -> slot
    std::map<uint8_t, sim::PcieSlot> pcie; // by slot
    std::vector<uint8_t> pcie_empty;       // indexes without a slot
    std::optional<uint8_t> pcie_count;
    std::map<uint8_t, bool> cpu_online;
    std::map<uint8_t, uint8_t> fan_silk;
    std::map<uint8_t, std::string> dimm_names;
};

enum class Good { kZero, kNotNegative, kAlways }; // which results are no failure

struct Question {
    std::string_view call;
    Good good;
    const char *argument; // the simulator's name for the first parameter; null: none
    void (*take)(Gathered &, const Call &);
};

uint8_t Out8(const Call &call) {
    return static_cast<uint8_t>(OutNumber(call, 0));
}
uint8_t In8(const Call &call) {
    return static_cast<uint8_t>(InNumber(call, 0));
}
sim::BusClient Client(const Call &call) {
    return {ByteAt(OutBytes(call, 0), 0), ByteAt(OutBytes(call, 0), 1)};
}

// An answer of a function that cannot fail, where no key gives this value.
void SayResult(Gathered &to, const Call &call, const char *argument = nullptr) {
    sim::Fault fault{.call = call.name};
    if (argument != nullptr)
        fault.args = std::string(argument) + "=" + std::to_string(InNumber(call, 0));
    fault.result = ResultOf(call);
    fault.succeed = true;
    to.machine.faults.push_back(std::move(fault));
}

// ---- answers of several bytes ----------------------------------------------------------------------------------

std::string TextAt(const std::string &bytes, size_t at, size_t most) {
    const std::string text = bytes.substr(std::min(at, bytes.size()), most);
    return text.substr(0, text.find('\0'));
}

void TakeNothing(Gathered &, const Call &) {} // the simulator works it out, and the library does not read it

void TakeVoltage(Gathered &to, const Call &call) {
    const auto byte = [&call](size_t at) { return ByteAt(OutBytes(call, 0), at); };
    to.machine.board.cpus.voltages[In8(call)] = {byte(0), byte(1), byte(2), byte(3), byte(4),
                                                 byte(5), byte(6), byte(7), byte(8), byte(9)};
}

void TakeBackplanes(Gathered &to, const Call &call) {
    const std::string &list = OutBytes(call, 0);
    const uint32_t count = WordAt(list, 0, 4);
    sim::Disks &disks = to.machine.board.disks;
    for (size_t i = 0; i < std::min<size_t>(count, HAL_HDD_BACKPANEL_MAX); ++i) {
        const size_t at = offsetof(HalHddBackpanelList, atRec) + i * sizeof(HalHddBackpanelRec);
        disks.backplanes.push_back(
            {ByteAt(list, at), ByteAt(list, at + 1), TextAt(list, at + 2, HAL_HDD_LOCATION_LEN)});
    }
    if (count > HAL_HDD_BACKPANEL_MAX)
        disks.reported_count = count;
}

void TakeGpus(Gathered &to, const Call &call) {
    const std::string &info = OutBytes(call, 0);
    for (size_t i = 0; i < std::min<size_t>(WordAt(info, 0, 4), MW_GPU_ASSET_MAX); ++i) {
        const size_t at = offsetof(GpuAssetInfo, atGpu) + i * sizeof(GpuAssetRec);
        to.machine.board.gpus.push_back(
            {ByteAt(info, at), WordAt(info, at + offsetof(GpuAssetRec, dwPowerW), 4),
             static_cast<uint16_t>(WordAt(info, at + offsetof(GpuAssetRec, wVendorId), 2))});
    }
}

void TakeThresholds(Gathered &to, const Call &call) {
    const std::string &table = OutBytes(call, 0);
    const size_t count =
        std::min<size_t>(WordAt(table, offsetof(SensorThreshTable, wCount), 2), SENSOR_MAX_COUNT);
    for (size_t i = 0; i < count; ++i) {
        const std::string entry = table.substr(
            std::min(table.size(), offsetof(SensorThreshTable, atEntry) + i * sizeof(SensorThreshEntry)),
            sizeof(SensorThreshEntry));
        const auto byte = [&entry](size_t at) { return ByteAt(entry, at); };
        to.machine.board.thresholds.push_back({TextAt(entry, 0, 16), byte(17), byte(18), byte(19), byte(20),
                                               byte(21), byte(22),
                                               static_cast<uint16_t>(WordAt(entry, 26, 2))});
    }
}

std::string DirectoryKey(const Call &call) {
    const std::string &key = InBytes(call, 0);
    return HexBytes({reinterpret_cast<const uint8_t *>(key.data()), key.size()});
}

// ---- services --------------------------------------------------------------------------------------------------

void TakeService(Gathered &to, const Call &call, bool &service, uint32_t all) {
    constexpr uint32_t kThere = 4; // and a bit for each operation
    const auto told = static_cast<uint32_t>(ResultOf(call));
    service = told != 0;
    if (told == kThere)
        to.machine.faults.push_back({.call = call.name, .null_operation = true});
    else if (told != 0 && told != kThere + all)
        to.machine.unsaid.push_back(CallText(call) + ": an object that has only some of its operations");
}

// ---- the list of questions that a board answers ----------------------------------------------------------------

#define TAKES(...) [](Gathered &to, [[maybe_unused]] const Call &call) { __VA_ARGS__; }
#define BOARD to.machine.board

constexpr Question kQuestions[] = {
    {"get_default_board_id", Good::kNotNegative, nullptr,
     TAKES(BOARD.board_id = static_cast<uint16_t>(OutNumber(call, 0)))},
    {"GetSwitchBoardSupportFlag", Good::kAlways, nullptr,
     TAKES(BOARD.switch_board.supported = ResultOf(call) == 1; if (ResultOf(call) > 1) SayResult(to, call))},
    {"GetCardOnlineStatus", Good::kAlways, "card",
     TAKES(BOARD.switch_board.cards[In8(call)].online = ResultOf(call) == 1;
           if (ResultOf(call) > 1) SayResult(to, call, "card"))},
    {"GetCardBoardId", Good::kAlways, "card",
     TAKES(BOARD.switch_board.cards[In8(call)].board_id = static_cast<uint16_t>(ResultOf(call)))},
    {"GetLiquidCoolingFlag", Good::kAlways, nullptr,
     TAKES(BOARD.liquid_cooling_mode = static_cast<uint8_t>(ResultOf(call)))},
    {"FruSdrInitPathChoice", Good::kAlways, nullptr,
     TAKES(BOARD.disks.enabled = ResultOf(call) == 1;
           if (ResultOf(call) != 1 && ResultOf(call) != 0) SayResult(to, call))},
    {"oxa_CustomSlotConversion", Good::kAlways, nullptr,
     TAKES(BOARD.disks.conversion[ByteAt(InBytes(call, 0), 0)] = ByteAt(OutBytes(call, 0), 0))},
    {"HAL_CPUVRTempCoreVolts_GetI2cClientByInstance", Good::kNotNegative, "cpu",
     TAKES(BOARD.cpus.vr_clients[In8(call)] = Client(call))},
    {"HAL_InputTemp_GetI2cClient", Good::kNotNegative, nullptr, TAKES(BOARD.inlet_client = Client(call))},
    {"HAL_SWTICH_GetI2cClientByInstance", Good::kNotNegative, "instance",
     TAKES(BOARD.switch_board.clients[In8(call)] = Client(call))},
    {"HAL_GetCpuMaxCount", Good::kZero, nullptr, TAKES(BOARD.cpus.count = Out8(call))},
    {"HAL_GetCpuSilkScreenIndexFixValue", Good::kZero, nullptr, TAKES(BOARD.cpus.silk_start = Out8(call))},
    {"HAL_GetCpuType", Good::kZero, nullptr, TAKES(BOARD.cpus.type = Out8(call))},
    {"HAL_GetCpuOnlineStatus", Good::kZero, "index",
     TAKES(to.cpu_online[In8(call)] = OutNumber(call, 0) == 1)},
    {"HAL_GetCpuVoltSdrInfoforSensor", Good::kZero, "index", TakeVoltage},
    {"HalCpuInst", Good::kAlways, nullptr, TAKES(TakeService(to, call, BOARD.cpus.service, 1))},
    {"HalCpuService.GetCpuReduceFlag", Good::kZero, nullptr, TAKES(BOARD.cpus.reduce_flag = Out8(call))},
    {"HAL_GetDimmMaxCount", Good::kZero, nullptr, TAKES(BOARD.dimms.count = Out8(call))},
    {"HAL_GetDimmDevInfoByDimmNum", Good::kZero, "dimm", TakeNothing},
    {"HAL_GetDimmSensorNameIndex", Good::kZero, nullptr,
     TAKES(to.dimm_names[ByteAt(InBytes(call, 0), 0)] = OutBytes(call, 0))},
    {"HAL_GetDimmPowerAccuracy", Good::kZero, nullptr,
     TAKES(BOARD.dimms.power_accuracy = OutNumber(call, 0))},
    {"HAL_IsNeedSensorSimplification", Good::kZero, nullptr,
     TAKES(BOARD.sensor_simplification = Out8(call) != 0)},
    {"HAL_GetPsuMaxCount", Good::kZero, nullptr, TAKES(BOARD.psus.count = Out8(call))},
    {"HAL_GetIsSupportPowerManage", Good::kZero, nullptr, TAKES(BOARD.psus.power_manage = Out8(call))},
    {"HAL_GetPsuGroupCount", Good::kZero, nullptr, TAKES(BOARD.psus.group_count = Out8(call))},
    {"HAL_GetPsuCountPerGroup", Good::kZero, nullptr, TAKES(BOARD.psus.count_per_group = Out8(call))},
    {"LoadPsuAlarmCfg", Good::kAlways, nullptr, TAKES(BOARD.psus.alarm_config = ResultOf(call) == 0)},
    {"HAL_GetSensorNotSupportFlagBySensor", Good::kZero, "sensor",
     TAKES(BOARD.support.sensors[InNumber(call, 0)] = Out8(call))},
    {"HAL_GetSensorSupportFlagBySensor", Good::kZero, "kind",
     TAKES(BOARD.support.kinds[InNumber(call, 0)] = Out8(call))},
    {"HalFanInst", Good::kAlways, nullptr, TAKES(TakeService(to, call, BOARD.fans.service, 3))},
    {"HalFanService.GetFanMaxCount", Good::kZero, nullptr, TAKES(BOARD.fans.count = Out8(call))},
    {"HalFanService.GetFanSilkByIndex", Good::kZero, "index", TAKES(to.fan_silk[In8(call)] = Out8(call))},
    {"HAL_GetFanPowerAccuracy", Good::kZero, nullptr, TAKES(BOARD.fans.power_accuracy = OutNumber(call, 0))},
    {"HalHddBackpanelInst", Good::kAlways, nullptr, TAKES(TakeService(to, call, BOARD.disks.service, 3))},
    {"HalHddBackpanelService.GetBackPanelList", Good::kZero, nullptr, TakeBackplanes},
    {"HalHddBackpanelService.CheckHddIsSupportNvme", Good::kZero, "slot",
     TAKES(if (Out8(call) != 0) BOARD.disks.nvme_slots.push_back(In8(call)))},
    {"Hal_CheckHddSlotIsDiffHddSilk", Good::kAlways, "slot",
     TAKES(if (ResultOf(call) != 0)
               BOARD.disks.silk.emplace(In8(call), static_cast<uint8_t>(In8(call) + 1)))},
    {"Hal_GetHddSilkByHddSlot", Good::kZero, "slot", TAKES(BOARD.disks.silk[In8(call)] = Out8(call))},
    {"HAL_GetHddPowerAccuracy", Good::kZero, nullptr, TAKES(BOARD.disks.power_accuracy = OutNumber(call, 0))},
    {"Hal_GetStandPcieSlotCounts", Good::kAlways, nullptr,
     TAKES(to.pcie_count = static_cast<uint8_t>(ResultOf(call)))},
    {"Hal_GetPcieSlotByIndex", Good::kAlways, nullptr,
     TAKES(if (ResultOf(call) == 0) to.pcie_index[In8(call)] = Out8(call);
           else to.pcie_empty.push_back(In8(call)))},
    {"Hal_GetPcieLocationByPcieSlot", Good::kZero, "slot", TAKES(to.pcie[In8(call)].location = Out8(call))},
    {"Hal_GetPcieSilkByPcieSlot", Good::kZero, "slot", TAKES(to.pcie[In8(call)].silk = OutBytes(call, 0))},
    {"GetBlueFieldS5PcieSlotNum", Good::kAlways, nullptr,
     TAKES(if (ResultOf(call) == 0) BOARD.pcie.s5_slot = Out8(call))},
    {"GetOcpNetCardMaxCount", Good::kAlways, nullptr,
     TAKES(BOARD.ocp.count = static_cast<uint8_t>(ResultOf(call)))},
    {"GetOcpPresentStatus", Good::kAlways, nullptr,
     TAKES(BOARD.ocp.present = static_cast<uint32_t>(ResultOf(call)))},
    {"RestoreOcpSlot", Good::kAlways, "index",
     TAKES(BOARD.ocp.restored[In8(call)] = static_cast<uint8_t>(ResultOf(call)))},
    {"Hal_GetSwiTempSensorCnt", Good::kAlways, nullptr,
     TAKES(BOARD.switch_board.chip_temp_count = static_cast<uint8_t>(ResultOf(call)))},
    {"MW_GetCustomid", Good::kZero, nullptr, TAKES(BOARD.custom_id = OutNumber(call, 0))},
    {"MW_GetInnerProductId", Good::kZero, nullptr, TAKES(BOARD.inner_product_id = OutNumber(call, 0))},
    {"MW_GetGPUAssetInfo", Good::kZero, nullptr, TakeGpus},
    {"MW_GetSensorThreshInfo", Good::kZero, nullptr, TakeThresholds},
    {"MW_GetSensorNumber", Good::kAlways, nullptr,
     TAKES(if (ResultOf(call) == 0) BOARD.sensor_numbers.by_key[DirectoryKey(call)] = OutNumber(call, 0))},
    {"MW_GetCPUSensorNumber", Good::kAlways, nullptr,
     TAKES(if (ResultOf(call) == 0) BOARD.sensor_numbers.cpu[InNumber(call, 0)] = OutNumber(call, 0))},
    {"MW_GetMemSensorNumber", Good::kAlways, nullptr,
     TAKES(if (ResultOf(call) == 0) BOARD.sensor_numbers.dimm[InNumber(call, 0)] = OutNumber(call, 0))},
    {"MW_GetPemSensorNumber", Good::kAlways, nullptr,
     TAKES(if (ResultOf(call) == 0) BOARD.sensor_numbers.power_module[InNumber(call, 0)] =
               OutNumber(call, 0))},
    {"MW_GetPowerFaultSensorNum", Good::kAlways, nullptr,
     TAKES(if (ResultOf(call) == 0) BOARD.sensor_numbers.power_fault = OutNumber(call, 0))},
    {"MW_GetSpecificSensorInfo", Good::kAlways, nullptr,
     TAKES(if (ResultOf(call) == 0) BOARD.sensor_numbers.by_key[DirectoryKey(call)] =
               ByteAt(OutBytes(call, 0), 0))},
    {"MW_GetInletTempInfo", Good::kZero, nullptr, TAKES(BOARD.inlet_temperature = Out8(call))},
    {"MW_GetSWSensorVail", Good::kZero, nullptr, TAKES(BOARD.switch_board.sensors_valid = Out8(call))},
    {"IPMI_LoadCustomID", Good::kZero, nullptr, TAKES(BOARD.custom_id = OutNumber(call, 0))},
    {"IPMI_GetCduManageConfig", Good::kZero, nullptr, TAKES(BOARD.cdu_enable = ByteAt(OutBytes(call, 0), 0))},
    {"epldio_read", Good::kZero, "reg", TAKES(BOARD.power_registers[InNumber(call, 0)] = Out8(call))},
};

const Question *QuestionOf(const Call &call) {
    const auto found = std::find_if(std::begin(kQuestions), std::end(kQuestions),
                                    [&call](const Question &question) { return question.call == call.name; });
    return found == std::end(kQuestions) ? nullptr : &*found;
}

bool IsFailure(const Question &question, const Call &call) {
    const int64_t result = ResultOf(call);
    return question.good == Good::kAlways ? false : question.good == Good::kZero ? result != 0 : result < 0;
}

// ---- failures --------------------------------------------------------------------------------------------------

constexpr int64_t kUsualFailure = -1;

sim::Fault Failure(const Question &question, const Call &call) {
    sim::Fault fault{.call = call.name};
    if (call.name == "HAL_GetDimmSensorNameIndex")
        fault.args = "dimm=" + std::to_string(ByteAt(InBytes(call, 0), 0));
    else if (question.argument != nullptr)
        fault.args = std::string(question.argument) + "=" + std::to_string(InNumber(call, 0));
    if (ResultOf(call) != kUsualFailure)
        fault.result = ResultOf(call);
    if (call.name == "HAL_GetSensorNotSupportFlagBySensor") // read after a failure too
        fault.output = OutNumber(call, 0);
    return fault;
}

bool SameButForArguments(const sim::Fault &a, const sim::Fault &b) {
    return a.call == b.call && a.result == b.result && a.output == b.output && a.succeed == b.succeed &&
           a.null_operation == b.null_operation;
}

// A call that failed in the same way whatever it was asked needs one rule.
void JoinFailures(std::vector<sim::Fault> &faults, const std::map<std::string, size_t> &asked) {
    std::vector<sim::Fault> joined;
    for (const sim::Fault &fault : faults) {
        const auto alike = [&fault](const sim::Fault &other) { return SameButForArguments(fault, other); };
        if (fault.args && !fault.succeed &&
            static_cast<size_t>(std::count_if(faults.begin(), faults.end(), alike)) == asked.at(fault.call)) {
            if (std::any_of(joined.begin(), joined.end(), alike))
                continue;
            joined.push_back(fault);
            joined.back().args.reset();
            continue;
        }
        joined.push_back(fault);
    }
    faults = std::move(joined);
}

// ---- what several questions tell -------------------------------------------------------------------------------

uint8_t UnusedSlot(const Gathered &from, const std::vector<sim::PcieSlot> &slots) {
    uint8_t slot = 255;
    const auto used = [&](uint8_t number) {
        return std::any_of(slots.begin(), slots.end(),
                           [&](const sim::PcieSlot &s) { return s.slot == number; }) ||
               std::any_of(from.pcie_index.begin(), from.pcie_index.end(),
                           [&](const auto &known) { return known.second == number; });
    };
    while (slot != 0 && used(slot))
        --slot;
    return slot;
}

void PlacePcieSlots(Gathered &from) {
    sim::Pcie &pcie = from.machine.board.pcie;
    uint8_t last = 0; // index
    for (const auto &[index, slot] : from.pcie_index)
        last = std::max(last, index);
    for (const uint8_t index : from.pcie_empty)
        if (!from.pcie_count || index <= *from.pcie_count)
            last = std::max(last, index);
    for (unsigned index = 1; index <= last; ++index) {
        const auto found = from.pcie_index.find(static_cast<uint8_t>(index));
        sim::PcieSlot slot = found != from.pcie_index.end() ? from.pcie[found->second] : sim::PcieSlot{};
        slot.present = found != from.pcie_index.end();
        slot.slot = slot.present ? found->second : UnusedSlot(from, pcie.slots);
        slot.silk_nul = slot.silk.size() < 32;
        pcie.slots.push_back(slot);
    }
    for (const auto &[number, described] : from.pcie) { // asked for by number alone
        const auto same = [number = number](const sim::PcieSlot &slot) { return slot.slot == number; };
        if (std::none_of(pcie.slots.begin(), pcie.slots.end(), same)) {
            pcie.slots.push_back(described);
            pcie.slots.back().slot = number;
            pcie.count = from.pcie_count.value_or(0);
        }
    }
    if (from.pcie_count && *from.pcie_count != pcie.slots.size())
        pcie.count = from.pcie_count;
}

template <class T>
void FillList(const std::map<uint8_t, T> &known, std::vector<T> &list, T (*standard)(size_t)) {
    for (const auto &[at, value] : known) {
        while (list.size() < at)
            list.push_back(standard(list.size()));
        list.push_back(value);
    }
}

// What has its default need not be said.
void ForgetDefaults(sim::Board &board) {
    std::erase_if(
        board.disks.conversion, [](const auto &at) { return at.first == at.second; });
    std::erase_if(
        board.disks.silk, [](const auto &at) { return at.first == at.second; });
    std::erase_if(
        board.ocp.restored, [](const auto &at) { return at.first == at.second; });
    std::erase_if(
        board.cpus.vr_clients,
        [](const auto &at) { return at.second.bus == at.first && at.second.address == 0x60; });
    std::erase_if(
        board.switch_board.clients,
        [](const auto &at) { return at.second.bus == at.first && at.second.address == 0x40; });
    std::erase_if(
        board.support.kinds, [](const auto &at) { return at.second == 1; });
    std::erase_if(board.power_registers, [](const auto &at) { return at.second == 0; });
    auto &sensors = board.support.sensors;
    const auto off = std::count_if(
        sensors.begin(), sensors.end(), [](const auto &at) { return at.second == 0; });
    const auto on =
        std::count_if(sensors.begin(), sensors.end(), [](const auto &at) { return at.second == 1; });
    board.support.all = off <= on + 1; // saying so takes a line too
    std::erase_if(sensors,
                  [&board](const auto &at) { return at.second == static_cast<uint8_t>(board.support.all); });
}

void Place(Gathered &from) {
    sim::Board &board = from.machine.board;
    PlacePcieSlots(from);
    std::map<uint8_t, std::string> names = from.dimm_names;
    FillList<std::string>(
        names, board.dimms.names, [](size_t at) { return sim::DefaultDimmName(static_cast<uint32_t>(at)); });
    FillList<uint8_t>(from.fan_silk, board.fans.silk, [](size_t at) { return static_cast<uint8_t>(at + 1); });
    for (const auto &[cpu, online] : from.cpu_online) {
        board.cpus.online.resize(std::max<size_t>(board.cpus.online.size(), cpu + size_t{1}), true);
        board.cpus.online[cpu] = online;
    }
    std::sort(board.disks.nvme_slots.begin(), board.disks.nvme_slots.end());
    ForgetDefaults(board);
}

uint32_t ProfileOfPasses(const Capture &capture) {
    for (auto entry = capture.entries.rbegin(); entry != capture.entries.rend(); ++entry)
        for (const oxa::ProfileView &profile : oxa::kProfiles)
            if (ProfileOfDriver(entry->name) == profile.pcName)
                return profile.dwCustomId;
    return 0;
}

} // namespace

CapturedMachine MachineOf(const Capture &capture, const std::vector<AskedOnce> &questions) {
    Gathered gathered;
    gathered.machine.board.custom_id = ProfileOfPasses(capture);
    std::map<std::string, size_t> asked;
    for (const AskedOnce &one : questions) {
        const Question *question = QuestionOf(*one.call);
        if (question == nullptr)
            continue;
        ++asked[one.call->name];
        if (IsFailure(*question, *one.call))
            gathered.machine.faults.push_back(Failure(*question, *one.call));
        else
            question->take(gathered, *one.call);
        const bool failed_alike = one.otherwise != nullptr && IsFailure(*question, *one.call) &&
                                  one.otherwise->result == one.call->result; // what it leaves is rubbish
        if (one.otherwise != nullptr && !failed_alike)
            gathered.machine.unsaid.push_back(CallText(*one.call) + ": answered " + AnswerText(*one.call) +
                                              " first, " + AnswerText(*one.otherwise) + " later");
    }
    Place(gathered);
    JoinFailures(gathered.machine.faults, asked);
    return std::move(gathered.machine);
}

} // namespace workbench
