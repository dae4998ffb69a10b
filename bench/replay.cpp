// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/replay.h"

#include <unistd.h>

#include <map>
#include <stdexcept>
#include <string_view>

#include "oxa/exports.h"
#include "oxa/platform.h"

namespace bench {
namespace {

constexpr char kStore[] = "/var/tmp/extSDR.dat";

// What a pass holds in its variables between two calls.
int32_t g_fd = -1;
const HalFanService *g_fans = nullptr;
const HalCpuService *g_cpus = nullptr;
const HalHddBackpanelService *g_disks = nullptr;
HalHddBackpanelList g_backplanes;
HalCpuVoltSdrInfo g_voltage;
HalDimmDevInfo g_dimm;
HalI2cClient g_client;
IpmiCduManageConfig g_cdu;
char g_text[64];
uint8_t g_byte, g_source[64], g_target[64];
uint16_t g_word;
uint32_t g_dword;
uint8_t g_image[EXT_SLOT_MAX * SDR_SLOT_SIZE];

uint8_t First(const Step &step) {
    return static_cast<uint8_t>(step.first);
}

const std::map<std::string_view, Action> kCalls = {
    {"FruSdrInitPathChoice", [](const Step &) { FruSdrInitPathChoice(); }},
    {"GetCardBoardId", [](const Step &s) { GetCardBoardId(First(s)); }},
    {"GetCardOnlineStatus", [](const Step &s) { GetCardOnlineStatus(First(s)); }},
    {"GetLiquidCoolingFlag", [](const Step &) { GetLiquidCoolingFlag(); }},
    {"GetOcpNetCardMaxCount", [](const Step &) { GetOcpNetCardMaxCount(); }},
    {"GetSwitchBoardSupportFlag", [](const Step &) { GetSwitchBoardSupportFlag(); }},
    {"HAL_CPUVRTempCoreVolts_GetI2cClientByInstance",
     [](const Step &s) { HAL_CPUVRTempCoreVolts_GetI2cClientByInstance(First(s), &g_client); }},
    {"HAL_GetCpuMaxCount", [](const Step &) { HAL_GetCpuMaxCount(&g_byte); }},
    {"HAL_GetCpuSilkScreenIndexFixValue", [](const Step &) { HAL_GetCpuSilkScreenIndexFixValue(&g_byte); }},
    {"HAL_GetCpuType", [](const Step &) { HAL_GetCpuType(&g_byte); }},
    {"HAL_GetCpuOnlineStatus",
     [](const Step &s) {
         int32_t online = 0;
         HAL_GetCpuOnlineStatus(First(s), &online);
     }},
    {"HAL_GetCpuVoltSdrInfoforSensor",
     [](const Step &s) { HAL_GetCpuVoltSdrInfoforSensor(First(s), &g_voltage); }},
    {"HAL_GetDimmDevInfoByDimmNum", [](const Step &s) { HAL_GetDimmDevInfoByDimmNum(First(s), &g_dimm); }},
    {"HAL_GetDimmMaxCount", [](const Step &) { HAL_GetDimmMaxCount(&g_byte); }},
    {"HAL_GetDimmPowerAccuracy", [](const Step &) { HAL_GetDimmPowerAccuracy(&g_dword); }},
    {"HAL_GetDimmSensorNameIndex",
     [](const Step &) { HAL_GetDimmSensorNameIndex(&g_dimm, g_text, SENSOR_NAME_SIZE); }},
    {"HAL_GetFanPowerAccuracy", [](const Step &) { HAL_GetFanPowerAccuracy(&g_dword); }},
    {"HAL_GetHddPowerAccuracy", [](const Step &) { HAL_GetHddPowerAccuracy(&g_dword); }},
    {"HAL_GetIsSupportPowerManage", [](const Step &) { HAL_GetIsSupportPowerManage(&g_byte); }},
    {"HAL_GetPsuCountPerGroup", [](const Step &) { HAL_GetPsuCountPerGroup(&g_byte); }},
    {"HAL_GetPsuGroupCount", [](const Step &) { HAL_GetPsuGroupCount(&g_byte); }},
    {"HAL_GetPsuMaxCount", [](const Step &) { HAL_GetPsuMaxCount(&g_byte); }},
    {"HAL_GetSensorNotSupportFlagBySensor",
     [](const Step &s) { HAL_GetSensorNotSupportFlagBySensor(s.first, &g_byte); }},
    {"HAL_GetSensorSupportFlagBySensor",
     [](const Step &s) { HAL_GetSensorSupportFlagBySensor(s.first, &g_byte); }},
    {"HAL_InputTemp_GetI2cClient", [](const Step &) { HAL_InputTemp_GetI2cClient(&g_client); }},
    {"HAL_IsNeedSensorSimplification", [](const Step &) { HAL_IsNeedSensorSimplification(&g_byte); }},
    {"HAL_SWTICH_GetI2cClientByInstance",
     [](const Step &s) { HAL_SWTICH_GetI2cClientByInstance(First(s), &g_client); }},
    {"HalCpuInst", [](const Step &) { g_cpus = HalCpuInst(); }},
    {"HalCpuService.GetCpuReduceFlag", [](const Step &) { g_cpus->GetCpuReduceFlag(&g_byte); }},
    {"HalFanInst", [](const Step &) { g_fans = HalFanInst(); }},
    {"HalFanService.GetFanMaxCount", [](const Step &) { g_fans->GetFanMaxCount(&g_byte); }},
    {"HalFanService.GetFanSilkByIndex", [](const Step &s) { g_fans->GetFanSilkByIndex(First(s), &g_byte); }},
    {"HalHddBackpanelInst", [](const Step &) { g_disks = HalHddBackpanelInst(); }},
    {"HalHddBackpanelService.CheckHddIsSupportNvme",
     [](const Step &s) { g_disks->CheckHddIsSupportNvme(First(s), &g_byte); }},
    {"HalHddBackpanelService.GetBackPanelList",
     [](const Step &) { g_disks->GetBackPanelList(&g_backplanes); }},
    {"Hal_CheckHddSlotIsDiffHddSilk", [](const Step &s) { Hal_CheckHddSlotIsDiffHddSilk(First(s)); }},
    {"Hal_GetHddSilkByHddSlot", [](const Step &s) { Hal_GetHddSilkByHddSlot(First(s), &g_byte); }},
    {"Hal_GetSwiTempSensorCnt", [](const Step &) { Hal_GetSwiTempSensorCnt(); }},
    {"Hal_GetPcieSlotByIndex", [](const Step &s) { Hal_GetPcieSlotByIndex(First(s), &g_byte); }},
    {"Hal_GetStandPcieSlotCounts", [](const Step &) { Hal_GetStandPcieSlotCounts(); }},
    {"IPMI_GetCduManageConfig", [](const Step &) { IPMI_GetCduManageConfig(&g_cdu); }},
    {"LoadPsuAlarmCfg", [](const Step &) { LoadPsuAlarmCfg(); }},
    {"GetOcpPresentStatus", [](const Step &) { GetOcpPresentStatus(); }},
    {"MW_GetSWSensorVail", [](const Step &) { MW_GetSWSensorVail(&g_byte); }},
    {"MW_SetPWRModuleOnlineNum", [](const Step &s) { MW_SetPWRModuleOnlineNum(First(s)); }},
    {"MW_GetInnerProductId", [](const Step &) { MW_GetInnerProductId(&g_dword); }},
    {"OAL_SemCreate", [](const Step &s) { OAL_SemCreate(s.first); }},
    {"OAL_SemLockByKey", [](const Step &s) { OAL_SemLockByKey(s.first, s.second); }},
    {"OAL_SemUnLockByKey", [](const Step &s) { OAL_SemUnLockByKey(s.first, s.second); }},
    {"RestoreOcpSlot", [](const Step &s) { RestoreOcpSlot(First(s)); }},
    {"epldio_read", [](const Step &s) { epldio_read(s.first, &g_byte); }},
    {"epldio_write", [](const Step &s) { epldio_write(s.first, static_cast<uint8_t>(s.second)); }},
    {"get_default_board_id", [](const Step &) { get_default_board_id(&g_word); }},
    {"lseek", [](const Step &) { lseek(g_fd, 0, SEEK_SET); }},
    {"memcpy_s", [](const Step &s) { memcpy_s(g_target, s.first, g_source, s.second); }},
    {"memset_s", [](const Step &s) { memset_s(g_target, s.first, 0, s.first); }},
    {"oxa_CustomSlotConversion",
     [](const Step &s) {
         g_byte = First(s);
         oxa_CustomSlotConversion(&g_byte);
     }},
    {"oxa_strerror_s", [](const Step &s) { oxa_strerror_s(g_text, s.first, static_cast<int>(s.second)); }},
    {"sigwrap_close", [](const Step &) { sigwrap_close(g_fd); }},
    {"sigwrap_open_mode",
     [](const Step &s) { g_fd = sigwrap_open_mode(kStore, static_cast<int32_t>(s.first), s.second); }},
    {"sigwrap_read", [](const Step &s) { sigwrap_read(g_fd, g_image, s.first); }},
    {"snprintf_s", [](const Step &s) { snprintf_s(g_text, s.first, "%s", s.event.text.c_str()); }},
    {"strnlen_s", [](const Step &s) { strnlen_s(g_text, s.first); }},
};

template <auto Log> void WriteLine(const Step &step) {
    const sim::Event &e = step.event;
    Log(e.number, e.file.c_str(), e.line, e.function.c_str(), "%s", e.text.c_str());
}

Action ActionOf(const sim::Event &event) {
    switch (event.kind) {
    case sim::Kind::kCall:
        if (const auto call = kCalls.find(event.function); call != kCalls.end()) {
            return call->second;
        }
        throw std::runtime_error("the replay does not know how to call " + event.function);
    case sim::Kind::kLog:
        switch (event.level) {
        case sim::Level::kDebug:
            return WriteLine<_ssp_debug>;
        case sim::Level::kInfo:
            return WriteLine<_ssp_info>;
        case sim::Level::kWarn:
            return WriteLine<_ssp_warn>;
        case sim::Level::kError:
            return WriteLine<_ssp_error>;
        }
        break;
    case sim::Kind::kDebug:
        return [](const Step &s) { IDBG_LINUXAPP_DbgOut(s.event.number, "%s", s.event.text.c_str()); };
    case sim::Kind::kStat:
        return [](const Step &s) { sspFailedStat(s.event.file.c_str(), s.event.line); };
    case sim::Kind::kAudit:
    case sim::Kind::kNote:
        break;
    }
    return nullptr;
}

// The n-th number (from 0) that follows a '=' in "slot=3 flags=66".
uint32_t Number(const std::string &args, int n) {
    size_t at = args.find('=');
    for (; at != std::string::npos; at = args.find('=', at + 1)) {
        const bool digit = at + 1 < args.size() && args[at + 1] >= '0' && args[at + 1] <= '9';
        if (digit && n-- == 0) {
            return static_cast<uint32_t>(std::stoul(args.substr(at + 1)));
        }
    }
    return 0;
}

} // namespace

std::vector<Step> StepsOf(const std::vector<sim::Event> &trace) {
    std::vector<Step> steps;
    for (const sim::Event &event : trace) {
        if (const Action action = ActionOf(event)) {
            steps.push_back({action, Number(event.args, 0), Number(event.args, 1), event});
        }
    }
    return steps;
}

void Run(const std::vector<Step> &steps) {
    for (const Step &step : steps) {
        step.action(step);
    }
}

} // namespace bench
