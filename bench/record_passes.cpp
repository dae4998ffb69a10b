// SPDX-License-Identifier: GPL-3.0-or-later
//
// record_passes FILE: asks the simulated platform for everything that it knows of the fullest board, runs a pass of every
// profile over it, and takes down what was built and which platform calls were made.
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>

#include "bench/profiles.h"
#include "bench/recording.h"
#include "simulator/board_file.h"

namespace {

using bench::Answer;
using bench::Answers;
using bench::kIndexes;

constexpr char kBoard[] = OXA_SOURCE_DIR "/boards/fullest.toml";
constexpr char kStore[] = "/var/tmp/extSDR.dat";

// ---- answers ------------------------------------------------------------------------------------

template <class T> void Ask(int32_t (*call)(T *), Answer<T> &answer) {
    answer.result = call(&answer.value);
}

template <class I, class T> void AskAll(int32_t (*call)(I, T *), bench::Table<T> &table) {
    for (uint32_t index = 0; index < kIndexes; ++index)
        table[index].result = call(static_cast<I>(index), &table[index].value);
}

template <class T> void AskAll(T (*call)(uint8_t), T (&table)[kIndexes]) {
    for (uint32_t index = 0; index < kIndexes; ++index)
        table[index] = call(static_cast<uint8_t>(index));
}

void AskBoard(Answers &a) {
    Ask(get_default_board_id, a.board_id);
    a.switch_board = GetSwitchBoardSupportFlag();
    AskAll(GetCardOnlineStatus, a.card_online);
    AskAll(GetCardBoardId, a.card_board_id);
    a.liquid_cooling = GetLiquidCoolingFlag();
    a.disk_group = FruSdrInitPathChoice();
    for (uint32_t slot = 0; slot < kIndexes; ++slot) {
        a.converted_slot[slot] = static_cast<uint8_t>(slot);
        oxa_CustomSlotConversion(&a.converted_slot[slot]);
    }
    AskAll(HAL_CPUVRTempCoreVolts_GetI2cClientByInstance, a.cpu_vr_client);
    Ask(HAL_InputTemp_GetI2cClient, a.inlet_client);
    AskAll(HAL_SWTICH_GetI2cClientByInstance, a.switch_client);
}

void AskProcessorsAndMemory(Answers &a) {
    Ask(HAL_GetCpuMaxCount, a.cpu_count);
    Ask(HAL_GetCpuSilkScreenIndexFixValue, a.cpu_silk_start);
    Ask(HAL_GetCpuType, a.cpu_type);
    AskAll(HAL_GetCpuOnlineStatus, a.cpu_online);
    AskAll(HAL_GetCpuVoltSdrInfoforSensor, a.cpu_voltage);
    const HalCpuService *cpus = HalCpuInst();
    a.has_cpu_service = cpus != nullptr;
    if (cpus != nullptr)
        Ask(cpus->GetCpuReduceFlag, a.cpu_reduce_flag);
    Ask(HAL_GetDimmMaxCount, a.dimm_count);
    AskAll(HAL_GetDimmDevInfoByDimmNum, a.dimm);
    for (uint32_t dimm = 0; dimm < kIndexes; ++dimm) {
        const HalDimmDevInfo info = {static_cast<uint8_t>(dimm), 0, 0, 0};
        Answer<bench::DimmName> &name = a.dimm_name[dimm];
        name.result = HAL_GetDimmSensorNameIndex(&info, name.value.text, sizeof(name.value.text));
    }
    Ask(HAL_GetDimmPowerAccuracy, a.dimm_accuracy);
    Ask(HAL_IsNeedSensorSimplification, a.simplified);
}

void AskPowerAndFans(Answers &a) {
    Ask(HAL_GetPsuMaxCount, a.psu_count);
    Ask(HAL_GetIsSupportPowerManage, a.power_manage);
    Ask(HAL_GetPsuGroupCount, a.psu_groups);
    Ask(HAL_GetPsuCountPerGroup, a.psus_per_group);
    AskAll(HAL_GetSensorNotSupportFlagBySensor, a.sensor_support);
    AskAll(HAL_GetSensorSupportFlagBySensor, a.kind_support);
    const HalFanService *fans = HalFanInst();
    a.has_fan_service = fans != nullptr;
    if (fans != nullptr) {
        Ask(fans->GetFanMaxCount, a.fan_count);
        AskAll(fans->GetFanSilkByIndex, a.fan_silk);
    }
    Ask(HAL_GetFanPowerAccuracy, a.fan_accuracy);
    AskAll(epldio_read, a.power_register);
    a.psu_alarms_loaded = LoadPsuAlarmCfg();
}

void AskDisksAndSlots(Answers &a) {
    const HalHddBackpanelService *disks = HalHddBackpanelInst();
    a.has_disk_service = disks != nullptr;
    if (disks != nullptr) {
        Ask(disks->GetBackPanelList, a.backplanes);
        AskAll(disks->CheckHddIsSupportNvme, a.nvme);
    }
    AskAll(Hal_CheckHddSlotIsDiffHddSilk, a.silk_differs);
    AskAll(Hal_GetHddSilkByHddSlot, a.disk_silk);
    Ask(HAL_GetHddPowerAccuracy, a.disk_accuracy);
    a.pcie_count = Hal_GetStandPcieSlotCounts();
    AskAll(Hal_GetPcieSlotByIndex, a.pcie_slot);
    a.ocp_count = GetOcpNetCardMaxCount();
    a.ocp_present = GetOcpPresentStatus();
    AskAll(RestoreOcpSlot, a.restored_ocp);
    a.switch_temps = Hal_GetSwiTempSensorCnt();
    Ask(MW_GetInnerProductId, a.product_id);
    Ask(MW_GetSWSensorVail, a.switch_sensors_valid);
    a.module_count_set = 0;
    Ask(IPMI_GetCduManageConfig, a.cdu);
}

// ---- calls --------------------------------------------------------------------------------------

// The n-th number (from 0) that follows a '=' in "slot=3 flags=66".
uint32_t Number(const std::string &args, int n) {
    size_t at = args.find('=');
    for (; at != std::string::npos; at = args.find('=', at + 1)) {
        const bool digit = at + 1 < args.size() && args[at + 1] >= '0' && args[at + 1] <= '9';
        if (digit && n-- == 0)
            return static_cast<uint32_t>(std::stoul(args.substr(at + 1)));
    }
    return 0;
}

const char *LogFunction(sim::Level level) {
    switch (level) {
    case sim::Level::kDebug:
        return "_ssp_debug";
    case sim::Level::kInfo:
        return "_ssp_info";
    case sim::Level::kWarn:
        return "_ssp_warn";
    case sim::Level::kError:
        break;
    }
    return "_ssp_error";
}

bench::RecordedCall PlatformCall(const sim::Event &event) {
    bench::RecordedCall call = {event.function, Number(event.args, 0), Number(event.args, 1), "", ""};
    if (event.function != "snprintf_s")
        return call;
    const size_t open = event.args.find('"');
    call.format = event.args.substr(open + 1, event.args.rfind('"') - open - 1);
    call.text = event.text;
    return call;
}

std::vector<bench::RecordedCall> CallsOf(const std::vector<sim::Event> &trace) {
    std::vector<bench::RecordedCall> calls;
    for (const sim::Event &event : trace) {
        switch (event.kind) {
        case sim::Kind::kCall:
            calls.push_back(PlatformCall(event));
            break;
        case sim::Kind::kLog:
            calls.push_back({LogFunction(event.level), event.number, event.line, "", ""});
            break;
        case sim::Kind::kStat:
            calls.push_back({"sspFailedStat", event.line, 0, "", ""});
            break;
        case sim::Kind::kDebug:
            calls.push_back({"IDBG_LINUXAPP_DbgOut", event.number, 0, "", ""});
            break;
        case sim::Kind::kAudit:
        case sim::Kind::kNote:
            throw std::runtime_error("a static pass does not do this: " + sim::Format(event));
        }
    }
    return calls;
}

// ---- passes -------------------------------------------------------------------------------------

void RunPass(const bench::Profile &profile, bench::RecordedPass &pass, bench::StoreKind store) {
    sim::WriteFile(kStore, store == bench::kFull ? bench::FullStore(pass.slots) : bench::Bytes());
    sim::ClearTrace();
    sim::StaticArrays &arrays = sim::CallerArrays();
    profile.driver(arrays.slots, arrays.entries, &arrays.count);
    pass.calls[store] = CallsOf(sim::Trace());
    const uint8_t *entries = reinterpret_cast<const uint8_t *>(arrays.entries);
    pass.slots.assign(arrays.slots, arrays.slots + arrays.count * SDR_SLOT_SIZE);
    pass.entries.assign(entries, entries + arrays.count * DEV_TAB_ENTRY_SIZE);
    if (profile.records != 0 && arrays.count != profile.records)
        throw std::runtime_error(std::string(profile.name) + ": " + std::to_string(arrays.count) +
                                 " records instead of " + std::to_string(profile.records));
}

bench::Recording Record() {
    bench::Recording recording;
    sim::Start(sim::LoadBoard(kBoard).board);
    AskBoard(recording.answers);
    AskProcessorsAndMemory(recording.answers);
    AskPowerAndFans(recording.answers);
    AskDisksAndSlots(recording.answers);
    sim::SetTraceBounded(true);
    for (const bench::Profile &profile : bench::Profiles()) {
        bench::RecordedPass &pass = recording.passes[profile.name];
        RunPass(profile, pass, bench::kEmpty);
        RunPass(profile, pass, bench::kFull);
    }
    return recording;
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: record_passes FILE\n");
        return 2;
    }
    try {
        bench::Save(Record(), argv[1]);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "record_passes: %s\n", error.what());
        return 1;
    }
    return 0;
}
