// SPDX-License-Identifier: GPL-3.0-or-later
//
// Every function that crosses the border, with the one fact that the fault sweep needs: can it fail at all?
// A function that "cannot fail" still obeys a fault rule that sets what it returns; it is just not counted.
// The index of a name in this table identifies the function everywhere else; a name that is not in it does
// not compile.
#ifndef OXA_SIMULATOR_CALLS_H
#define OXA_SIMULATOR_CALLS_H

#include <cstddef>
#include <string_view>

namespace sim {

enum class Nature {
    kFails,  // counted as a call that can fail
    kSteady, // cannot fail
    kGetter, // gives a service object: fails with a null object
    kVoid,   // returns nothing and obeys no rule
    kLine    // logging: as kVoid, and an event of its own kind
};

struct CallFacts {
    std::string_view name;
    Nature nature = Nature::kFails;
    bool bounded = false; // traced only on request
    bool changes = false; // it can change a file, the repository or the event log
};

inline constexpr CallFacts kCalls[] = {
    // board and cards
    {"get_default_board_id"},
    {"GetSwitchBoardSupportFlag", Nature::kSteady},
    {"GetCardOnlineStatus", Nature::kSteady},
    {"GetCardBoardId", Nature::kSteady},
    {"GetLiquidCoolingFlag", Nature::kSteady},
    {"FruSdrInitPathChoice"},
    {"oxa_CustomSlotConversion", Nature::kSteady},
    // bus clients
    {"HAL_CPUVRTempCoreVolts_GetI2cClientByInstance"},
    {"HAL_InputTemp_GetI2cClient"},
    {"HAL_SWTICH_GetI2cClientByInstance"},
    // processors
    {"HAL_GetCpuMaxCount"},
    {"HAL_GetCpuSilkScreenIndexFixValue"},
    {"HAL_GetCpuType"},
    {"HAL_GetCpuOnlineStatus"},
    {"HAL_GetCpuVoltSdrInfoforSensor"},
    {"HalCpuInst", Nature::kGetter},
    {"HalCpuService.GetCpuReduceFlag"},
    // memory
    {"HAL_GetDimmMaxCount"},
    {"HAL_GetDimmDevInfoByDimmNum"},
    {"HAL_GetDimmSensorNameIndex"},
    {"HAL_GetDimmPowerAccuracy"},
    {"HAL_IsNeedSensorSimplification"},
    // power supplies
    {"HAL_GetPsuMaxCount"},
    {"HAL_GetIsSupportPowerManage"},
    {"HAL_GetPsuGroupCount"},
    {"HAL_GetPsuCountPerGroup"},
    // support flags
    {"HAL_GetSensorNotSupportFlagBySensor"},
    {"HAL_GetSensorSupportFlagBySensor"},
    // fans
    {"HalFanInst", Nature::kGetter},
    {"HalFanService.GetFanMaxCount"},
    {"HalFanService.GetFanSilkByIndex"},
    {"HAL_GetFanPowerAccuracy"},
    // disks
    {"HalHddBackpanelInst", Nature::kGetter},
    {"HalHddBackpanelService.GetBackPanelList"},
    {"HalHddBackpanelService.CheckHddIsSupportNvme"},
    {"Hal_CheckHddSlotIsDiffHddSilk", Nature::kSteady},
    {"Hal_GetHddSilkByHddSlot"},
    {"HAL_GetHddPowerAccuracy"},
    // PCIe and OCP slots, switch chips
    {"Hal_GetStandPcieSlotCounts", Nature::kSteady},
    {"Hal_GetPcieSlotByIndex"},
    {"Hal_GetPcieLocationByPcieSlot"},
    {"Hal_GetPcieSilkByPcieSlot"},
    {"GetBlueFieldS5PcieSlotNum"},
    {"GetOcpNetCardMaxCount", Nature::kSteady},
    {"GetOcpPresentStatus", Nature::kSteady},
    {"RestoreOcpSlot", Nature::kSteady},
    {"Hal_GetSwiTempSensorCnt", Nature::kSteady},
    // middleware
    {"MW_GetCustomid"},
    {"MW_GetInnerProductId"},
    {"MW_GetGPUAssetInfo"},
    {"MW_GetSensorThreshInfo"},
    {"MW_SetSensorThreshInfo"},
    {"MW_GetSensorNumber"},
    {"MW_GetCPUSensorNumber"},
    {"MW_GetMemSensorNumber"},
    {"MW_GetPemSensorNumber"},
    {"MW_GetPowerFaultSensorNum"},
    {"MW_GetSpecificSensorInfo"},
    {"MW_GetInletTempInfo"},
    {"MW_SetMemPredictiveFailureState"},
    {"MW_SetPWRModuleOnlineNum"},
    {"MW_GetSWSensorVail"},
    // IPMI service library
    {"IPMI_LoadCustomID"},
    {"IPMI_GetCduManageConfig"},
    {"LIBIPMI_Create_IPMI_Local_Session"},
    {"LIBIPMI_CloseSession"},
    {"IPMICMD_AddSDR", Nature::kFails, false, true},
    {"IPMICMD_DeleteSDR", Nature::kFails, false, true},
    {"IPMICMD_AddSELEntry", Nature::kFails, false, true},
    {"LIBIPMI_HL_SendMsgToFRU"},
    // INI files
    {"IniLoadFile"},
    {"OXA_IniLoadFile"},
    {"IniGetUInt", Nature::kSteady},
    {"IniSetUInt"},
    {"IniSaveFile", Nature::kFails, false, true},
    {"IniCloseFile", Nature::kVoid},
    // operating system
    {"OAL_SemCreate"},
    {"OAL_SemLockByKey"},
    {"OAL_SemUnLockByKey"},
    {"sigwrap_open_mode"},
    {"sigwrap_read"},
    {"sigwrap_write", Nature::kFails, false, true},
    {"sigwrap_close"},
    // logging
    {"_ssp_debug", Nature::kLine},
    {"_ssp_info", Nature::kLine},
    {"_ssp_warn", Nature::kLine},
    {"_ssp_error", Nature::kLine},
    {"sspFailedStat", Nature::kLine},
    {"IDBG_LINUXAPP_DbgOut", Nature::kLine},
    {"IDBG_LINUXAPP_AuditOut", Nature::kLine},
    // bounded memory, string and file functions
    {"memcpy_s", Nature::kFails, true},
    {"oxa_memcpy_s", Nature::kFails, true},
    {"memset_s", Nature::kFails, true},
    {"oxa_memset_s", Nature::kFails, true},
    {"snprintf_s", Nature::kFails, true},
    {"oxa_snprintf_s", Nature::kFails, true},
    {"strnlen_s", Nature::kSteady, true},
    {"oxa_strnlen_s", Nature::kSteady, true},
    {"oxa_fopen_s", Nature::kFails, false, true},
    {"oxa_fclose_s"},
    {"oxa_strerror_s"},
    // power management
    {"epldio_read"},
    {"epldio_write"},
    {"LoadPsuAlarmCfg"},
    // the C library, on the library's own files only
    {"lseek"},
    {"ftruncate", Nature::kFails, false, true},
    {"fread"},
    {"fwrite", Nature::kFails, false, true},
    {"unlink", Nature::kFails, false, true},
    {"access"},
};
inline constexpr size_t kCallCount = sizeof(kCalls) / sizeof(kCalls[0]);

constexpr size_t FindCall(std::string_view name) {
    for (size_t id = 0; id < kCallCount; ++id)
        if (kCalls[id].name == name)
            return id;
    return kCallCount;
}

// Not constexpr on purpose: reaching it during constant evaluation is the compile error.
inline void ThisNameIsNotInTheTableOfCalls() {}

consteval size_t Id(std::string_view name) {
    const size_t id = FindCall(name);
    if (id == kCallCount)
        ThisNameIsNotInTheTableOfCalls();
    return id;
}

} // namespace sim
#endif
