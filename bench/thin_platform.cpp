// SPDX-License-Identifier: GPL-3.0-or-later
//
// The board's facts, from the tables.
#include "bench/thin_platform.h"

#include <cstring>

namespace bench {

Answers g_answers;
uint64_t g_calls[sim::kCallCount];

namespace {

template <class T> int32_t Give(const Answer<T> &answer, T *out) {
    if (answer.result == 0)
        *out = answer.value;
    return answer.result;
}

template <class T> int32_t GiveFrom(const Table<T> &table, uint32_t index, T *out) {
    return index < kIndexes ? Give(table[index], out) : -1;
}

int32_t GetCpuReduceFlag(uint8_t *out) {
    OXA_BENCH_COUNT("HalCpuService.GetCpuReduceFlag");
    return Give(g_answers.cpu_reduce_flag, out);
}

int32_t GetFanMaxCount(uint8_t *out) {
    OXA_BENCH_COUNT("HalFanService.GetFanMaxCount");
    return Give(g_answers.fan_count, out);
}

int32_t GetFanSilkByIndex(uint8_t index, uint8_t *out) {
    OXA_BENCH_COUNT("HalFanService.GetFanSilkByIndex");
    return Give(g_answers.fan_silk[index], out);
}

int32_t GetBackPanelList(HalHddBackpanelList *out) {
    OXA_BENCH_COUNT("HalHddBackpanelService.GetBackPanelList");
    return Give(g_answers.backplanes, out);
}

int32_t CheckHddIsSupportNvme(uint8_t slot, uint8_t *out) {
    OXA_BENCH_COUNT("HalHddBackpanelService.CheckHddIsSupportNvme");
    return Give(g_answers.nvme[slot], out);
}

constexpr HalCpuService kCpuService = {GetCpuReduceFlag};
constexpr HalFanService kFanService = {GetFanMaxCount, GetFanSilkByIndex};
constexpr HalHddBackpanelService kDiskService = {GetBackPanelList, CheckHddIsSupportNvme};

} // namespace
} // namespace bench

using namespace bench;

// A call whose answer is one table entry; the last one is what a call returns that cannot fail.
#define GIVE(name, type, answer)                                                                             \
    int32_t name(type *out) {                                                                                \
        OXA_BENCH_COUNT(#name);                                                                              \
        return Give(g_answers.answer, out);                                                                  \
    }
#define GIVE_BY_INDEX(name, index_type, type, table)                                                         \
    int32_t name(index_type index, type *out) {                                                              \
        OXA_BENCH_COUNT(#name);                                                                              \
        return GiveFrom(g_answers.table, index, out);                                                        \
    }
#define SAY(type, name, answer)                                                                              \
    type name(void) {                                                                                        \
        OXA_BENCH_COUNT(#name);                                                                              \
        return g_answers.answer;                                                                             \
    }
#define SAY_BY_INDEX(type, name, table)                                                                      \
    type name(uint8_t index) {                                                                               \
        OXA_BENCH_COUNT(#name);                                                                              \
        return g_answers.table[index];                                                                       \
    }

extern "C" {

GIVE(get_default_board_id, uint16_t, board_id)
SAY(uint8_t, GetSwitchBoardSupportFlag, switch_board)
SAY_BY_INDEX(uint8_t, GetCardOnlineStatus, card_online)
SAY_BY_INDEX(uint16_t, GetCardBoardId, card_board_id)
SAY(uint8_t, GetLiquidCoolingFlag, liquid_cooling)
SAY(int32_t, FruSdrInitPathChoice, disk_group)

void oxa_CustomSlotConversion(uint8_t *slot) {
    OXA_BENCH_COUNT("oxa_CustomSlotConversion");
    *slot = g_answers.converted_slot[*slot];
}

GIVE_BY_INDEX(HAL_CPUVRTempCoreVolts_GetI2cClientByInstance, uint8_t, HalI2cClient, cpu_vr_client)
GIVE(HAL_InputTemp_GetI2cClient, HalI2cClient, inlet_client)
GIVE_BY_INDEX(HAL_SWTICH_GetI2cClientByInstance, uint8_t, HalI2cClient, switch_client)

GIVE(HAL_GetCpuMaxCount, uint8_t, cpu_count)
GIVE(HAL_GetCpuSilkScreenIndexFixValue, uint8_t, cpu_silk_start)
GIVE(HAL_GetCpuType, uint8_t, cpu_type)
GIVE_BY_INDEX(HAL_GetCpuOnlineStatus, uint8_t, int32_t, cpu_online)
GIVE_BY_INDEX(HAL_GetCpuVoltSdrInfoforSensor, uint8_t, HalCpuVoltSdrInfo, cpu_voltage)

const HalCpuService *HalCpuInst(void) {
    OXA_BENCH_COUNT("HalCpuInst");
    return g_answers.has_cpu_service != 0 ? &kCpuService : nullptr;
}

GIVE(HAL_GetDimmMaxCount, uint8_t, dimm_count)
GIVE_BY_INDEX(HAL_GetDimmDevInfoByDimmNum, uint8_t, HalDimmDevInfo, dimm)

int32_t HAL_GetDimmSensorNameIndex(const HalDimmDevInfo *info, char *out, uint32_t size) {
    OXA_BENCH_COUNT("HAL_GetDimmSensorNameIndex");
    const Answer<DimmName> &name = g_answers.dimm_name[info->ucDimmNum];
    if (name.result == 0)
        memcpy(out, name.value.text, size < sizeof(name.value.text) ? size : sizeof(name.value.text));
    return name.result;
}

GIVE(HAL_GetDimmPowerAccuracy, uint32_t, dimm_accuracy)
GIVE(HAL_IsNeedSensorSimplification, uint8_t, simplified)

GIVE(HAL_GetPsuMaxCount, uint8_t, psu_count)
GIVE(HAL_GetIsSupportPowerManage, uint8_t, power_manage)
GIVE(HAL_GetPsuGroupCount, uint8_t, psu_groups)
GIVE(HAL_GetPsuCountPerGroup, uint8_t, psus_per_group)
GIVE_BY_INDEX(HAL_GetSensorNotSupportFlagBySensor, uint32_t, uint8_t, sensor_support)
GIVE_BY_INDEX(HAL_GetSensorSupportFlagBySensor, uint32_t, uint8_t, kind_support)

const HalFanService *HalFanInst(void) {
    OXA_BENCH_COUNT("HalFanInst");
    return g_answers.has_fan_service != 0 ? &kFanService : nullptr;
}

GIVE(HAL_GetFanPowerAccuracy, uint32_t, fan_accuracy)

const HalHddBackpanelService *HalHddBackpanelInst(void) {
    OXA_BENCH_COUNT("HalHddBackpanelInst");
    return g_answers.has_disk_service != 0 ? &kDiskService : nullptr;
}

SAY_BY_INDEX(uint8_t, Hal_CheckHddSlotIsDiffHddSilk, silk_differs)
GIVE_BY_INDEX(Hal_GetHddSilkByHddSlot, uint8_t, uint8_t, disk_silk)
GIVE(HAL_GetHddPowerAccuracy, uint32_t, disk_accuracy)

SAY(uint8_t, Hal_GetStandPcieSlotCounts, pcie_count)
GIVE_BY_INDEX(Hal_GetPcieSlotByIndex, uint8_t, uint8_t, pcie_slot)
SAY(uint8_t, GetOcpNetCardMaxCount, ocp_count)
SAY(uint32_t, GetOcpPresentStatus, ocp_present)
SAY_BY_INDEX(uint8_t, RestoreOcpSlot, restored_ocp)
SAY(uint8_t, Hal_GetSwiTempSensorCnt, switch_temps)

GIVE(MW_GetInnerProductId, uint32_t, product_id)
GIVE(MW_GetSWSensorVail, uint8_t, switch_sensors_valid)

int32_t MW_SetPWRModuleOnlineNum(uint8_t) {
    OXA_BENCH_COUNT("MW_SetPWRModuleOnlineNum");
    return g_answers.module_count_set;
}

GIVE(IPMI_GetCduManageConfig, IpmiCduManageConfig, cdu)
GIVE_BY_INDEX(epldio_read, uint32_t, uint8_t, power_register)

int32_t epldio_write(uint32_t reg, uint8_t value) {
    OXA_BENCH_COUNT("epldio_write");
    if (reg < kIndexes)
        g_answers.power_register[reg].value = value;
    return 0;
}

SAY(int32_t, LoadPsuAlarmCfg, psu_alarms_loaded)

} // extern "C"
