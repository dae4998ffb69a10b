/* SPDX-License-Identifier: Apache-2.0 */
/*
 * Every function that liboxaspecificsensorinfo imports from the BMC firmware's own libraries, by owner.
 *
 * Conventions
 *   - C linkage, fixed-width types; size_t only in the bounded memory and string functions.
 *   - Unless its line says otherwise a function returns int32_t, 0 = success, anything else = failure, and
 *     out-pointers come last.  "gives" = what lands in the out-pointer; "returns" = the result itself.
 *   - After a failed call an out-parameter holds nothing to rely on: the caller puts its own default back
 *     (0 unless said otherwise).  One exception: the sensor support flag, see there.
 *   - A null service object, or a null operation in it, counts as a failed call with code -1.
 */
#ifndef OXA_PLATFORM_H
#define OXA_PLATFORM_H

#include <stddef.h>
#include <stdint.h>
#include <stdio.h>

#ifndef OXA_SASSERT
#ifdef __cplusplus
#define OXA_SASSERT(cond, text) static_assert(cond, text)
#else
#define OXA_SASSERT(cond, text) _Static_assert(cond, text)
#endif
#endif

#if defined(__GNUC__)
#define PLAT_PRINTF(fmt, first) __attribute__((format(printf, fmt, first)))
#else
#define PLAT_PRINTF(fmt, first)
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ==================================================================================================
 * 1. HARDWARE ABSTRACTION
 * ================================================================================================== */

/* ---- board and cards ----------------------------------------------------------------------------- */

/* gives the mainboard's 16-bit id; NEGATIVE = failure. Static drivers (fatal there), Sablin GPU rename,
 * power and fan generators, power device-table handler, log lines of the static generators. */
int32_t get_default_board_id(uint16_t *pwBoardId);

/* returns 1 when the board takes a switch-board card; cannot fail. Static drivers. */
uint8_t GetSwitchBoardSupportFlag(void);

/* returns 1 when card ucCard (1, 2) is online; cannot fail. Static drivers (card 2), switch total power (1, 2). */
uint8_t GetCardOnlineStatus(uint8_t ucCard);

/* returns the board id of card ucCard; cannot fail. Static drivers (card 2), switch total power (1, 2). */
uint16_t GetCardBoardId(uint8_t ucCard);

/* returns the liquid-cooling mode: 0 none, 1 leak sensor, 2 no fans; cannot fail. Fan redundancy and fan
 * power (not in mode 2), leakage (only in mode 1), every profile. */
uint8_t GetLiquidCoolingFlag(void);

/* returns 1 when the static drivers are to build the disk group. Static drivers. */
int32_t FruSdrInitPathChoice(void);

/* converts a disk slot in place into the printed number; cannot fail. NVMe temperature and disk status
 * generators, disk group of the static drivers, disk-name rewriters. */
void oxa_CustomSlotConversion(uint8_t *pucSlot);

/* ---- bus clients --------------------------------------------------------------------------------- */

typedef struct HalI2cClient { /* 2 bytes */
    uint8_t ucBus;            /* 0 goes to device-table byte 6 */
    uint8_t ucAddr;           /* 1 goes to device-table byte 7 */
} HalI2cClient;
OXA_SASSERT(sizeof(HalI2cClient) == 2, "HalI2cClient");

/* gives the voltage regulator's client of CPU ucCpuNum (0-based); NEGATIVE = failure. CPU VR temperature,
 * CPU core voltage. */
int32_t HAL_CPUVRTempCoreVolts_GetI2cClientByInstance(uint8_t ucCpuNum, HalI2cClient *ptClient);

/* gives the inlet sensor's client; NEGATIVE = failure. Inlet temperature, rack board temperature. */
int32_t HAL_InputTemp_GetI2cClient(HalI2cClient *ptClient);

/* gives the client of switch-board instance ucInstance (from 1); NEGATIVE = failure. Switch-board volts
 * and current. */
int32_t HAL_SWTICH_GetI2cClientByInstance(uint8_t ucInstance, HalI2cClient *ptClient);

/* ---- processors ---------------------------------------------------------------------------------- */

enum {
    CPU_TYPE_UNKNOWN = 0,    /* what a failed query leaves */
    CPU_TYPE_INTEL = 1,      /* has Tjmax and Tcontrol sensors */
    CPU_TYPE_DOMAIN_VOLT = 3 /* the processor with voltage domains */
};

/* gives the number of CPU sockets. Static drivers. */
int32_t HAL_GetCpuMaxCount(uint8_t *pucCpuMaxCount);

/* gives the first printed CPU number. Static drivers, again before each CPU record; CPU core voltage,
 * Pellago single CPU power. */
int32_t HAL_GetCpuSilkScreenIndexFixValue(uint8_t *pucCpuSilkStartIndex);

/* gives the CPU type (CPU_TYPE_...). Voltage domain pass, PCH temperature, Kestrin Tjmax and Tcontrol. */
int32_t HAL_GetCpuType(uint8_t *pucCpuType);

/* gives 1 when the 0-based CPU ucCpuIndex is online. CPU presence test. */
int32_t HAL_GetCpuOnlineStatus(uint8_t ucCpuIndex, int32_t *psdwOnlineStatus);

typedef struct HalCpuVoltSdrInfo {                   /* 10 bytes */
    uint8_t ucM;                                     /* 0 SDR byte 24 */
    uint8_t ucB;                                     /* 1 SDR byte 26 */
    uint8_t ucExp;                                   /* 2 SDR byte 29: R high nibble, B low nibble */
    uint8_t ucMask;                                  /* 3 bit 0 LNC, 1 LC, 2 LNR, 3 UNC, 4 UC, 5 UNR */
    uint8_t ucUNR, ucUC, ucUNC, ucLNR, ucLC, ucLNC;  /* 4..9 raw values, order of SDR bytes 36..41 */
} HalCpuVoltSdrInfo;
OXA_SASSERT(sizeof(HalCpuVoltSdrInfo) == 10, "HalCpuVoltSdrInfo");

/* gives the description of CPU voltage ucVoltIndex (1..4). CPU voltage domain generators. */
int32_t HAL_GetCpuVoltSdrInfoforSensor(uint8_t ucVoltIndex, HalCpuVoltSdrInfo *ptInfo);

typedef struct HalCpuService {
    int32_t (*GetCpuReduceFlag)(uint8_t *pucFlag);   /* gives 0 = build for every socket. CPU presence test */
} HalCpuService;
/* returns the CPU service object, may be null. CPU presence test. */
const HalCpuService *HalCpuInst(void);

/* ---- memory -------------------------------------------------------------------------------------- */

typedef struct HalDimmDevInfo { /* 4 bytes, handed on unread */
    uint8_t ucDimmNum;          /* 0 */
    uint8_t ucCpuNum;           /* 1 */
    uint8_t ucChannel;          /* 2 */
    uint8_t ucSlotInChannel;    /* 3 */
} HalDimmDevInfo;
OXA_SASSERT(sizeof(HalDimmDevInfo) == 4, "HalDimmDevInfo");

/* gives the number of DIMM slots. Static drivers. */
int32_t HAL_GetDimmMaxCount(uint8_t *pucDimmMaxCount);

/* gives the facts of DIMM ucDimmNum (0 .. count - 1). Memory group of the static drivers. */
int32_t HAL_GetDimmDevInfoByDimmNum(uint8_t ucDimmNum, HalDimmDevInfo *ptInfo);

/* gives the DIMM's name, NUL-terminated within dwSize bytes. Memory group of the static drivers. */
int32_t HAL_GetDimmSensorNameIndex(const HalDimmDevInfo *ptInfo, char *pcName, uint32_t dwSize);

/* gives the watts per count of memory power. Memory power generators, Quorral DIMM VR power. */
int32_t HAL_GetDimmPowerAccuracy(uint32_t *pdwAccuracy);

/* gives 1 when group sensors replace the single ones. Static drivers. */
int32_t HAL_IsNeedSensorSimplification(uint8_t *pucSensorSimpleFlag);

/* ---- power supplies ------------------------------------------------------------------------------ */

/* gives the number of PSUs. Static drivers (fatal there), PSU status. */
int32_t HAL_GetPsuMaxCount(uint8_t *pucPsuCnt);

/* gives the power-management support flag. Static drivers. */
int32_t HAL_GetIsSupportPowerManage(uint8_t *pucFlag);

/* gives the number of PSU groups. PSU redundancy (at most 2 groups). */
int32_t HAL_GetPsuGroupCount(uint8_t *pucGroupCnt);

/* gives the number of PSUs in a group. PSU redundancy (non-zero). */
int32_t HAL_GetPsuCountPerGroup(uint8_t *pucPsuPerGroup);

/* ---- sensor support flags ------------------------------------------------------------------------ */

/* Sensor identifiers.  The nine numbers below 101 are fixed by the firmware, the others belong to this library. */
enum {
    SENSOR_BP_FRONT_12V = 19,
    SENSOR_BP_REAR_12V = 20,
    SENSOR_BP_FRONT_TEMP = 21,
    SENSOR_BP_REAR_TEMP = 22,
    SENSOR_SYS_54_VOLT = 25,
    SENSOR_GPU_54_VOLT = 26,
    SENSOR_PDB_BOARD_POWER = 27,
    SENSOR_NIC_POWER = 28,
    SENSOR_GPU_BOARD_POWER = 29,
    SENSOR_CPU_VR_TEMP = 101,
    SENSOR_CPU_VOLTS = 102,
    SENSOR_INPUT_TEMP = 103,
    SENSOR_OUTPUT_TEMP = 104,
    SENSOR_ENV_HUMI = 105,
    SENSOR_PDB_TEMP = 106, /* both power distribution board temperatures */
    SENSOR_VCC12V = 107,
    SENSOR_POWER_FAULT = 108,
    SENSOR_CPU_VCORE_CURRENT = 109,
    SENSOR_CPU_VCORE1_CURRENT1 = 110,
    SENSOR_CPU_VSOC_CURRENT = 111,
    SENSOR_CPU_DDR_VDD1_CURRENT = 112,
    /* sensors whose refusal text exists and whose identifier is not named */
    SENSOR_PCH_TEMP = 121,
    SENSOR_POWER_BUTTON = 122,
    SENSOR_UID_BUTTON = 123,
    SENSOR_INTRUSION = 124,
    SENSOR_ME = 125,
    SENSOR_PWR_MODULE_TEMP = 126, /* Kestrin power modules */
    SENSOR_UBB_RT_TEMP = 127      /* Kestrin UBB retimers */
};

/* gives the SUPPORT flag of sensor dwSensorId, despite the name: non-zero = the board has it. The caller
 * presets 0, and reads the flag also after a failed call (a failure is only a warning). All gated static
 * generators. */
int32_t HAL_GetSensorNotSupportFlagBySensor(uint32_t dwSensorId, uint8_t *pucSupportFlag);

enum { SENSOR_KIND_INPUT_VOLTS = 3, SENSOR_KIND_OUTPUT_VOLTS = 4 }; /* numbers fixed, names */

/* gives the support flag of sensor kind dwSensorKind. The caller presets 1; only success together with 0
 * refuses the sensor. PSU input and output voltage. */
int32_t HAL_GetSensorSupportFlagBySensor(uint32_t dwSensorKind, uint8_t *pucSupportFlag);

/* ---- fans ---------------------------------------------------------------------------------------- */

typedef struct HalFanService {
    int32_t (*GetFanMaxCount)(uint8_t *pucFanCnt);                         /* gives the number of fans */
    int32_t (*GetFanSilkByIndex)(uint8_t ucFanIndex, uint8_t *pucSilk);    /* index from 0; gives the printed
                                                                              number, 0xFF = leave the fan out */
} HalFanService;
/* returns the fan service object, may be null. Static drivers: fan count and fan status pass (which, with no
 * service, still builds its record, with number 0). */
const HalFanService *HalFanInst(void);

/* gives the watts per count of fan power; a value of 0 is unusable too. Fan power generators. */
int32_t HAL_GetFanPowerAccuracy(uint32_t *pdwAccuracy);

/* ---- disks --------------------------------------------------------------------------------------- */

#define HAL_HDD_BACKPANEL_MAX 32u /* at most 32 backplanes are looked at */
#define HAL_HDD_LOCATION_LEN 32u

typedef struct HalHddBackpanelRec {          /* 34 bytes */
    uint8_t ucStartSlot;                     /* 0 first disk slot */
    uint8_t ucDiskCnt;                       /* 1 number of disk slots */
    char acLocation[HAL_HDD_LOCATION_LEN];   /* 2 NUL-terminated; "Front" is compared whole */
} HalHddBackpanelRec;
OXA_SASSERT(sizeof(HalHddBackpanelRec) == 34, "HalHddBackpanelRec");

typedef struct HalHddBackpanelList {         /* 1092 bytes */
    uint32_t count;                          /* 0 may exceed the array; the caller clamps */
    HalHddBackpanelRec atRec[HAL_HDD_BACKPANEL_MAX]; /* 4 */
} HalHddBackpanelList;
OXA_SASSERT(offsetof(HalHddBackpanelList, atRec) == 4, "HalHddBackpanelList");
OXA_SASSERT(sizeof(HalHddBackpanelList) == 1092, "HalHddBackpanelList");

typedef struct HalHddBackpanelService {
    int32_t (*GetBackPanelList)(HalHddBackpanelList *ptList);              /* gives all backplanes */
    int32_t (*CheckHddIsSupportNvme)(uint8_t ucSlot, uint8_t *pucIsNvme);  /* gives 1 = NVMe disk in the slot */
} HalHddBackpanelService;
/* returns the disk backplane service object, may be null. Front/rear question of a disk slot, disk group of
 * the static drivers. */
const HalHddBackpanelService *HalHddBackpanelInst(void);

/* returns 1 when the printed number of disk slot ucSlot differs from the slot; cannot fail. Kestrin disks. */
uint8_t Hal_CheckHddSlotIsDiffHddSilk(uint8_t ucSlot);

/* gives the printed number of disk slot ucSlot. Kestrin disks. */
int32_t Hal_GetHddSilkByHddSlot(uint8_t ucSlot, uint8_t *pucSilk);

/* gives the watts per count of disk power. Disk power generators. */
int32_t HAL_GetHddPowerAccuracy(uint32_t *pdwAccuracy);

/* ---- PCIe and OCP slots, switch chips ------------------------------------------------------------ */

/* returns the number of standard PCIe slots; cannot fail. Static drivers. */
uint8_t Hal_GetStandPcieSlotCounts(void);

/* gives the slot of the 1-based index ucIndex; -1 = the index has no slot. PCIe status pass. */
int32_t Hal_GetPcieSlotByIndex(uint8_t ucIndex, uint8_t *pucSlot);

/* gives the location of slot ucSlot, 1 = front. Front-slot rename. */
int32_t Hal_GetPcieLocationByPcieSlot(uint8_t ucSlot, uint8_t *pucLocation);

/* gives the silk text of slot ucSlot, NUL-terminated within dwSize bytes. Front-slot rename. */
int32_t Hal_GetPcieSilkByPcieSlot(uint8_t ucSlot, char *pcSilk, uint32_t dwSize);

/* gives the slot of the card that stays powered in S5. Smart NIC temperature device-table entry. */
int32_t GetBlueFieldS5PcieSlotNum(uint8_t *pucSlot);

/* returns the number of OCP card positions; cannot fail. Number formatting of names, static drivers. */
uint8_t GetOcpNetCardMaxCount(void);

/* returns the presence bitmap, bit n = OCP position n + 1; cannot fail. Number formatting of names, Ferrisk driver. */
uint32_t GetOcpPresentStatus(void);

/* returns the restored slot of the 1-based OCP index ucIndex; cannot fail. OCP records of the static drivers. */
uint8_t RestoreOcpSlot(uint8_t ucIndex);

/* returns the number of switch-chip temperature sensors; cannot fail. Kestrin switch temperatures. */
uint8_t Hal_GetSwiTempSensorCnt(void);

/* ==================================================================================================
 * 2. MIDDLEWARE
 * ================================================================================================== */

/* gives the profile id, the same fact as IPMI_LoadCustomID; failure = profile 0. Event builders. */
int32_t MW_GetCustomid(uint32_t *pdwCustomId);

/* gives the inner product id ("productId" of the power generators). FRU id offset, board power, Lumora total power. */
int32_t MW_GetInnerProductId(uint32_t *pdwInnerProductId);

#define MW_GPU_ASSET_MAX 29u               /* a count above it makes the inventory unusable */
#define MW_GPU_POWER_UNKNOWN 0xFFFFFFFFu
typedef struct GpuAssetRec {               /* 12 bytes */
    uint8_t ucSlot;                        /* 0 */
    uint32_t dwPowerW;                     /* 4 rated watts, or MW_GPU_POWER_UNKNOWN */
    uint16_t wVendorId;                    /* 8 PCI vendor id */
} GpuAssetRec;
OXA_SASSERT(offsetof(GpuAssetRec, dwPowerW) == 4 && offsetof(GpuAssetRec, wVendorId) == 8, "GpuAssetRec");
OXA_SASSERT(sizeof(GpuAssetRec) == 12, "GpuAssetRec");

typedef struct GpuAssetInfo {              /* 352 bytes */
    uint32_t dwCount;                      /* 0 may exceed the array; the caller checks */
    GpuAssetRec atGpu[MW_GPU_ASSET_MAX];   /* 4 */
} GpuAssetInfo;
OXA_SASSERT(offsetof(GpuAssetInfo, atGpu) == 4 && sizeof(GpuAssetInfo) == 352, "GpuAssetInfo");

/* gives the GPU inventory. GPU power factors. */
int32_t MW_GetGPUAssetInfo(GpuAssetInfo *ptInfo);

/* Threshold table: the platform's live table and the file image are the same bytes, natural layout. */
#define SENSOR_MAX_COUNT 512u
typedef struct SensorThreshEntry {                   /* 28 bytes */
    char acName[17];                                 /* 0  ID string of up to 16 characters; byte 16 is zero */
    uint8_t ucUNR, ucUC, ucUNC, ucLNR, ucLC, ucLNC;  /* 17..22 raw, order of SDR bytes 36..41 */
    uint8_t aucExtra[2];                             /* 23 stored, not applied */
    uint8_t ucZero;                                  /* 25 zero */
    uint16_t wMask;                                  /* 26 low byte: bits LNC LC LNR UNC UC UNR from bit 0 */
} SensorThreshEntry;
OXA_SASSERT(offsetof(SensorThreshEntry, ucUNR) == 17 && offsetof(SensorThreshEntry, ucLNC) == 22, "SensorThreshEntry");
OXA_SASSERT(offsetof(SensorThreshEntry, aucExtra) == 23, "SensorThreshEntry");
OXA_SASSERT(offsetof(SensorThreshEntry, ucZero) == 25 && offsetof(SensorThreshEntry, wMask) == 26, "SensorThreshEntry");
OXA_SASSERT(sizeof(SensorThreshEntry) == 28, "SensorThreshEntry");

typedef struct SensorThreshTable {                   /* 14,344 bytes */
    uint32_t dwCustomId;                             /* 0 profile id it was saved under */
    uint16_t wCount;                                 /* 4 number of entries in use */
    SensorThreshEntry atEntry[SENSOR_MAX_COUNT];     /* 6 */
    uint16_t wUnused;                                /* 14342 zero */
} SensorThreshTable;
OXA_SASSERT(offsetof(SensorThreshTable, wCount) == 4 && offsetof(SensorThreshTable, atEntry) == 6, "SensorThreshTable");
OXA_SASSERT(offsetof(SensorThreshTable, wUnused) == 14342, "SensorThreshTable");
OXA_SASSERT(sizeof(SensorThreshTable) == 14344, "SensorThreshTable");

/* gives the live threshold table, all 14,344 bytes. Threshold save and overlay. */
int32_t MW_GetSensorThreshInfo(SensorThreshTable *ptTable);

/* replaces the live threshold table. Threshold start and save, result not looked at. */
int32_t MW_SetSensorThreshInfo(const SensorThreshTable *ptTable);

/* Sensor directory.  A failed lookup makes the builder use sensor number 0 (leakage stops instead). */
typedef struct MwSensorKey {  /* 5 bytes; the disk key is 04 0D 6F slot 00 */
    uint8_t ucEntityId;       /* 0 */
    uint8_t ucSensorType;     /* 1 */
    uint8_t ucEventType;      /* 2 */
    uint8_t ucInstance;       /* 3 */
    uint8_t ucReserved;       /* 4 */
} MwSensorKey;
OXA_SASSERT(sizeof(MwSensorKey) == 5, "MwSensorKey");

typedef struct MwSpecificSensorInfo { /* 16 bytes */
    uint8_t ucSensorNum;              /* 0 */
    uint8_t ucSensorType;             /* 1 */
    uint8_t ucEventType;              /* 2 */
    uint8_t ucOwnerLun;               /* 3 */
    uint8_t aucReserved[12];          /* 4 */
} MwSpecificSensorInfo;
OXA_SASSERT(sizeof(MwSpecificSensorInfo) == 16, "MwSpecificSensorInfo");

/* gives the sensor number of a 5-byte key. Disk event builder. */
int32_t MW_GetSensorNumber(const MwSensorKey *ptKey, uint32_t *pdwSensorNum);

/* gives the sensor number of CPU dwCpuNum. CPU error builder. */
int32_t MW_GetCPUSensorNumber(uint32_t dwCpuNum, uint32_t *pdwSensorNum);

/* gives the sensor number of DIMM dwDimmNum. Memory error builder. */
int32_t MW_GetMemSensorNumber(uint32_t dwDimmNum, uint32_t *pdwSensorNum);

/* gives the sensor number of the power module at dwLocation. Power module event builder. */
int32_t MW_GetPemSensorNumber(uint32_t dwLocation, uint32_t *pdwSensorNum);

/* gives the power-fault sensor's number. Power drop builder. */
int32_t MW_GetPowerFaultSensorNum(uint32_t *pdwSensorNum);

/* gives number, types and LUN of the sensor with a 5-byte key. Leakage builder (failure ends it). */
int32_t MW_GetSpecificSensorInfo(const MwSensorKey *ptKey, MwSpecificSensorInfo *ptInfo);

/* gives the inlet temperature in degrees C; failure = 0. Alarm builder, inlet temperature. */
int32_t MW_GetInletTempInfo(uint8_t *pucInletTemp);

/* sets the predictive-failure state (0, 1) of DIMM dwDimmNum. Memory predictive fault builder in profile 1, result
 * not looked at. */
int32_t MW_SetMemPredictiveFailureState(uint32_t dwDimmNum, uint32_t dwState);

/* reports the number of power modules. Kestrin power modules, result not looked at. */
int32_t MW_SetPWRModuleOnlineNum(uint8_t ucNum);

/* gives 1 when the switch sensors are valid; spelled so. Kestrin switch total power. */
int32_t MW_GetSWSensorVail(uint8_t *pucValid);

/* ==================================================================================================
 * 3. IPMI SERVICE LIBRARY
 * ================================================================================================== */

/* gives the profile id; failure = profile 0 (the disk registration question alone answers -1). Names, generators,
 * FRU id offset, FRU names, disk registration. */
int32_t IPMI_LoadCustomID(uint32_t *pdwCustomId);

typedef struct IpmiCduManageConfig { /* 1 byte */
    uint8_t ucEnable;                /* 0 1 = a CDU is managed */
} IpmiCduManageConfig;
OXA_SASSERT(sizeof(IpmiCduManageConfig) == 1, "IpmiCduManageConfig");

/* gives the liquid-cooling configuration. CDU pass of the Default and Kestrin drivers. */
int32_t IPMI_GetCduManageConfig(IpmiCduManageConfig *ptConfig);

typedef struct IpmiLocalSession { /* 42 bytes, zero-filled by the caller */
    uint8_t aucRaw[42];
} IpmiLocalSession;
OXA_SASSERT(sizeof(IpmiLocalSession) == 42, "IpmiLocalSession");

/* All six below: uint16_t result, 0 = success, printed as the code on failure. */

/* opens a session: block, user "", password "", privilege byte 4, then 0, 2 and 10 (repository) or 100 (event log).
 * Sensor add and delete, sub-card status, event writer. */
uint16_t LIBIPMI_Create_IPMI_Local_Session(IpmiLocalSession *ptSession, const char *pcUser, const char *pcPassword,
                                           uint8_t *pucPrivilege, uint32_t dwArg5, uint32_t dwArg6, uint32_t dwArg7);

/* closes an opened session, result not looked at. Same callers; never after a failed open. */
uint16_t LIBIPMI_CloseSession(IpmiLocalSession *ptSession);

/* adds ucLen bytes of an SDR; 3-byte response, unread; last word 20. Sensor add. */
uint16_t IPMICMD_AddSDR(IpmiLocalSession *ptSession, const uint8_t *pucSDR, uint8_t ucLen, uint8_t *pucRes /* 3 */,
                        uint32_t dwArg);

/* deletes the SDR named in a 4-byte request; 4-byte response, unread; last word 20. Sensor delete. */
uint16_t IPMICMD_DeleteSDR(IpmiLocalSession *ptSession, const uint8_t *pucReq /* 4 */, uint8_t *pucRes /* 4 */,
                           uint32_t dwArg);

/* adds a 16-byte event record; 3-byte response, unread; last word 100. Event writer. */
uint16_t IPMICMD_AddSELEntry(IpmiLocalSession *ptSession, const uint8_t *pucRecord /* 16 */, uint8_t *pucRes /* 3 */,
                             uint32_t dwArg);

/* sends a 25-byte message to the FRU service; last word 20. Sub-card status. */
uint16_t LIBIPMI_HL_SendMsgToFRU(IpmiLocalSession *ptSession, const uint8_t *pucMsg /* 25 */, uint32_t dwArg);

/* ==================================================================================================
 * 4. INI FILE LIBRARY (keeps section and key texts as given, trailing blanks included)
 * ================================================================================================== */

typedef struct IniFile IniFile; /* opaque handle */

/* opens the INI file pcPath; a missing file loads as an empty one. Specific SDR record file. */
int32_t IniLoadFile(const char *pcPath, IniFile **pptIni);

/* the same for the card FRU id file, on save and on load. */
int32_t OXA_IniLoadFile(const char *pcPath, IniFile **pptIni);

/* returns the value, or dwDefault when section or key is missing. Record file, card FRU id file. */
uint32_t IniGetUInt(IniFile *ptIni, const char *pcSection, const char *pcKey, uint32_t dwDefault);

/* sets the value, making section and key when missing. Record file, card FRU id file. */
int32_t IniSetUInt(IniFile *ptIni, const char *pcSection, const char *pcKey, uint32_t dwValue);

/* writes everything to pcPath, result not looked at. Record file, card FRU id file. */
int32_t IniSaveFile(IniFile *ptIni, const char *pcPath);

/* gives the handle back, without saving. Every load that succeeded. */
void IniCloseFile(IniFile *ptIni);

/* ==================================================================================================
 * 5. OPERATING-SYSTEM ABSTRACTION (all: extended SDR store)
 * ================================================================================================== */

/* creates or opens the system semaphore of key dwKey (12313). */
int32_t OAL_SemCreate(uint32_t dwKey);

/* locks it, waiting at most dwWait (2000). */
int32_t OAL_SemLockByKey(uint32_t dwKey, uint32_t dwWait);

/* unlocks it (2000 again). */
int32_t OAL_SemUnLockByKey(uint32_t dwKey, uint32_t dwWait);

/* returns a file descriptor, NEGATIVE = failure; flags of open(), mode 0775. */
int32_t sigwrap_open_mode(const char *pcPath, int32_t sdwFlags, uint32_t dwMode);

/* returns the number of bytes read; 0 or less = nothing read. */
int32_t sigwrap_read(int32_t sdwFd, void *pvBuf, uint32_t dwLen);

/* returns 0 when all bytes were written; anything else is reported as an error. */
int32_t sigwrap_write(int32_t sdwFd, const void *pvBuf, uint32_t dwLen);

/* closes the descriptor, result not looked at. */
int32_t sigwrap_close(int32_t sdwFd);

/* ==================================================================================================
 * 6. LOGGING (all: everywhere)
 * ================================================================================================== */

/* Arguments: module (42 SDR, 43 sub card, 52 event builders, 67 disk events, 255 assertions
 * and the static drivers' warnings about failed queries), source file name as a text of its own, line, function name, format.  The trap alarm's info
 * line passes one argument more than its format takes: silence the warning at that one call. */
void _ssp_debug(uint32_t dwModule, const char *pcFile, uint32_t dwLine, const char *pcFunc, const char *pcFmt, ...)
    PLAT_PRINTF(5, 6);
void _ssp_info(uint32_t dwModule, const char *pcFile, uint32_t dwLine, const char *pcFunc, const char *pcFmt, ...)
    PLAT_PRINTF(5, 6);
void _ssp_warn(uint32_t dwModule, const char *pcFile, uint32_t dwLine, const char *pcFunc, const char *pcFmt, ...)
    PLAT_PRINTF(5, 6);
void _ssp_error(uint32_t dwModule, const char *pcFile, uint32_t dwLine, const char *pcFunc, const char *pcFmt, ...)
    PLAT_PRINTF(5, 6);

/* counts a failure; called once just before every _ssp_error. */
void sspFailedStat(const char *pcFile, uint32_t dwLine);

/* debug channel: level 130, or 132 in the extended store; format. */
void IDBG_LINUXAPP_DbgOut(uint32_t dwLevel, const char *pcFmt, ...) PLAT_PRINTF(2, 3);

/* security channel: level 191; format. FRU id given back in vain. */
void IDBG_LINUXAPP_AuditOut(uint32_t dwLevel, const char *pcFmt, ...) PLAT_PRINTF(2, 3);

/* ==================================================================================================
 * 7. BOUNDED MEMORY, STRING AND FILE FUNCTIONS
 *    Shapes of ISO C11 Annex K, for the plain and the oxa_ names alike.  int results: 0 = success;
 *    a broken bound gives non-zero and the caller drops the record.
 * ================================================================================================== */

/* copies nCount bytes; destination, its size, source, count. */
int memcpy_s(void *pvDst, size_t nDstMax, const void *pvSrc, size_t nCount);
int oxa_memcpy_s(void *pvDst, size_t nDstMax, const void *pvSrc, size_t nCount);

/* fills nCount bytes; destination, its size, byte, count. */
int memset_s(void *pvDst, size_t nDstMax, int nByte, size_t nCount);
int oxa_memset_s(void *pvDst, size_t nDstMax, int nByte, size_t nCount);

/* prints at most nDstMax - 1 characters and a NUL, a longer text is cut; returns the uncut length, NEGATIVE = error. */
int snprintf_s(char *pcDst, size_t nDstMax, const char *pcFmt, ...) PLAT_PRINTF(3, 4);
int oxa_snprintf_s(char *pcDst, size_t nDstMax, const char *pcFmt, ...) PLAT_PRINTF(3, 4);

/* returns the length, at most nMax; a null text has length 0. */
size_t strnlen_s(const char *pcStr, size_t nMax);
size_t oxa_strnlen_s(const char *pcStr, size_t nMax);

/* opens pcPath in mode pcMode ("rb+", "wb"). Threshold file. */
int oxa_fopen_s(FILE **pptFile, const char *pcPath, const char *pcMode);

/* closes the file. Threshold file. */
int oxa_fclose_s(FILE *ptFile);

/* gives the text of error number nErrnum within nBufMax bytes. Extended store. */
int oxa_strerror_s(char *pcBuf, size_t nBufMax, int nErrnum);

/* ==================================================================================================
 * 8. POWER MANAGEMENT
 * ================================================================================================== */

enum { PMIC_POWER_FAULT_REG_5350 = 1, PMIC_POWER_FAULT_REG_6900G5 = 2 };

/* gives the byte of register dwReg. Power-fault generator of every profile. */
int32_t epldio_read(uint32_t dwReg, uint8_t *pucValue);

/* writes a byte into register dwReg. Power-fault generator of every profile. */
int32_t epldio_write(uint32_t dwReg, uint8_t ucValue);

/* loads the PSU alarm configuration. PSU status generators, Astrel, Pellago and Durnow drivers. */
int32_t LoadPsuAlarmCfg(void);

/* From the language's and the system's standard library come besides: lseek and ftruncate (extended store),
 * fread, fwrite and unlink (threshold file), access (test marker of the disk event builder). */

#ifdef __cplusplus
}
#endif
#endif
