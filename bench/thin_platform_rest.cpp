// SPDX-License-Identifier: GPL-3.0-or-later
//
// What no static pass calls.  Sessions open and take every record, so that events can be timed; everything else
// fails.
#include "bench/thin_platform.h"

#define FAIL(name, ...)                                                                                      \
    int32_t name(__VA_ARGS__) {                                                                              \
        OXA_BENCH_COUNT(#name);                                                                              \
        return -1;                                                                                           \
    }
#define TAKE(name, ...)                                                                                      \
    uint16_t name(__VA_ARGS__) {                                                                             \
        OXA_BENCH_COUNT(#name);                                                                              \
        return 0;                                                                                            \
    }

extern "C" {

FAIL(Hal_GetPcieLocationByPcieSlot, uint8_t, uint8_t *)
FAIL(Hal_GetPcieSilkByPcieSlot, uint8_t, char *, uint32_t)
FAIL(GetBlueFieldS5PcieSlotNum, uint8_t *)

FAIL(MW_GetCustomid, uint32_t *)
FAIL(MW_GetGPUAssetInfo, GpuAssetInfo *)
FAIL(MW_GetSensorThreshInfo, SensorThreshTable *)
FAIL(MW_SetSensorThreshInfo, const SensorThreshTable *)
FAIL(MW_GetSensorNumber, const MwSensorKey *, uint32_t *)
FAIL(MW_GetCPUSensorNumber, uint32_t, uint32_t *)
FAIL(MW_GetMemSensorNumber, uint32_t, uint32_t *)
FAIL(MW_GetPemSensorNumber, uint32_t, uint32_t *)
FAIL(MW_GetPowerFaultSensorNum, uint32_t *)
FAIL(MW_GetSpecificSensorInfo, const MwSensorKey *, MwSpecificSensorInfo *)
FAIL(MW_GetInletTempInfo, uint8_t *)
FAIL(MW_SetMemPredictiveFailureState, uint32_t, uint32_t)

FAIL(IPMI_LoadCustomID, uint32_t *)
TAKE(LIBIPMI_Create_IPMI_Local_Session, IpmiLocalSession *, const char *, const char *, uint8_t *, uint32_t,
     uint32_t, uint32_t)
TAKE(LIBIPMI_CloseSession, IpmiLocalSession *)
TAKE(IPMICMD_AddSDR, IpmiLocalSession *, const uint8_t *, uint8_t, uint8_t *, uint32_t)
TAKE(IPMICMD_DeleteSDR, IpmiLocalSession *, const uint8_t *, uint8_t *, uint32_t)
TAKE(IPMICMD_AddSELEntry, IpmiLocalSession *, const uint8_t *, uint8_t *, uint32_t)
TAKE(LIBIPMI_HL_SendMsgToFRU, IpmiLocalSession *, const uint8_t *, uint32_t)

FAIL(IniLoadFile, const char *, IniFile **)
FAIL(OXA_IniLoadFile, const char *, IniFile **)
FAIL(IniSetUInt, IniFile *, const char *, const char *, uint32_t)
FAIL(IniSaveFile, IniFile *, const char *)

uint32_t IniGetUInt(IniFile *, const char *, const char *, uint32_t usual) {
    OXA_BENCH_COUNT("IniGetUInt");
    return usual;
}

void IniCloseFile(IniFile *) {
    OXA_BENCH_COUNT("IniCloseFile");
}

int oxa_fopen_s(FILE **, const char *, const char *) {
    OXA_BENCH_COUNT("oxa_fopen_s");
    return -1;
}

int oxa_fclose_s(FILE *) {
    OXA_BENCH_COUNT("oxa_fclose_s");
    return -1;
}

} // extern "C"
