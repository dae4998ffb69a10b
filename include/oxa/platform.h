/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief Every function that liboxaspecificsensorinfo imports from the BMC firmware, for whoever implements them.
 *
 * The library is linked against none of them: they are found by name when it is loaded, so a stub may be the program
 * itself or another shared object.  All that it calls must be there (it binds at once), or the library does not load.
 * A program with the stub in it, linked against the library, needs nothing special; one that loads the library with
 * dlopen() must be linked with -rdynamic, or its functions are not seen:
 * \code
 *   cc -Iinclude program.c platform.c -L. -loxaspecificsensorinfo -Wl,-rpath,'$ORIGIN' -o program
 *   cc -Iinclude -rdynamic loader.c platform.c -ldl -o loader
 * \endcode
 *
 * What holds for every function
 *   - C linkage, fixed-width types; size_t only in the bounded memory and string functions.
 *   - Most return int32_t: 0 = success, anything else = failure.  Where only a negative result is a failure the
 *     function says so.  Some cannot fail: their result is the answer.
 *   - Out-parameters are marked so; they come last but where their size or an argument of the service follows them, and
 *     first in section 7 and in LIBIPMI_Create_IPMI_Local_Session().  None is ever null.  They count only after success
 *     (one exception: HAL_GetSensorNotSupportFlagBySensor()); after a failure the library puts its own default back, 0
 *     unless said otherwise, so a failing function may leave anything in them.  A record is to be filled whole as far
 *     as it is said to be read.
 *   - A service object (HalCpuInst(), HalFanInst(), HalHddBackpanelInst()) may be null, and so may an operation in it:
 *     either counts as a failed call with result -1, where nothing else is said.
 *   - Texts go out NUL-terminated within the size that is passed.
 *   - Each runs in the thread that called the library, and is called again for every question: answers are not kept
 *     (but for MW_GetInnerProductId() and IPMI_LoadCustomID() in GetSdrFruIdOffset()).
 *   - "Called by" names the functions of the library that call it: drivers are the nine OXA_Add<Profile>StaticSensor(),
 *     generators of a sensor are meant wherever they run, in a driver too.
 *
 * What the library never does
 *   - It starts no thread, takes no memory from the heap, and calls nothing when it is loaded or unloaded.
 *   - It keeps no pointer: not those that it gets from the platform (service objects, handles and sessions are used
 *     within one call) nor may the platform keep those that it is given.  Texts given to the logger are partly on the
 *     stack.
 *   - It holds at most one thing at a time: an IPMI session, an INI handle, the threshold file, or the semaphore (and
 *     under it one descriptor).  What it opened it closes before it returns, also when something fails in between;
 *     what it could not open it does not close.
 *   - While it holds the semaphore it calls only sigwrap_open_mode(), lseek, ftruncate, sigwrap_read(),
 *     sigwrap_write(), sigwrap_close(), oxa_strerror_s() and IDBG_LINUXAPP_DbgOut().
 *   - It is not prepared for being called back: a function of the platform must not call the library.
 *
 * Error lines of normal use, each counted by sspFailedStat() like any other; a stub must not take them for faults:
 *   - "assertion failed: GetLiquidCoolingFlag() == (1)", module 255, from the leakage generator on every machine
 *     without a leak sensor; "... != (2)" from fan redundancy and fan power on one without fans.
 *   - "assertion failed: halFan != 0" where there is no fan service.
 *   - addDiskSEL() traces each event that it looks at (module 67), SDR_DeleteSpecificSDR() each delete, also one that
 *     succeeded.
 *   - "Add SDR: GenSDRHndlr ucRecLen = 0." when a power supply is added that the record file has already.
 *
 * A stub of a board with nothing on it: what cannot fail answers 0, queries return -1 (but HAL_GetPsuMaxCount() and
 * get_default_board_id() must give something, or a static pass writes no count), service objects are null, the
 * semaphore, sessions and commands return 0, what opens a file (IniLoadFile(), OXA_IniLoadFile(), oxa_fopen_s(),
 * sigwrap_open_mode()) returns -1, the loggers are empty.  memcpy_s(), snprintf_s() and strnlen_s() must be real: every
 * record is built with them.  With two PSUs the Default driver then builds 22 records.
 *
 * From the C library come besides: lseek, ftruncate and errno (extended store), fread, fwrite and unlink (threshold
 * file), access (the marker of addDiskSEL()), and memcmp, memcpy, memset (bcmp with clang).  Files are opened through
 * the platform, which may keep them elsewhere; two calls go past it with the literal path:
 * unlink("/conf/BMC1/sensor_threshold.dat") and access("/var/test_disk_fault_predict", F_OK).  A stub that keeps files
 * elsewhere defines these two as well (the program's own win over the C library's).
 */
#ifndef OXA_PLATFORM_H
#define OXA_PLATFORM_H

#include <stddef.h>
#include <stdint.h>
#include <stdio.h>

/** Stops the compiler where a condition does not hold. */
#ifndef OXA_SASSERT
#ifdef __cplusplus
#define OXA_SASSERT(cond, text) static_assert(cond, text)
#else
#define OXA_SASSERT(cond, text) _Static_assert(cond, text)
#endif
#endif

/** Lets the compiler compare a format with its arguments. */
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

/** \name Board and cards */
/** @{ */

/**
 * Gives the id of the mainboard.
 * A failure ends a static pass without a count; everywhere else the board then has id 0, which is no known one.
 * Called by drivers; generators of powers, fans, CPUs and inlet temperatures; GenDevTable() (power);
 * modifySablinGpuSensorName().
 * \param[out] pwBoardId  board id, for example 0x5502
 * \return negative = failure, anything else = success
 */
int32_t get_default_board_id(uint16_t *pwBoardId);

/**
 * Tells whether the board takes a switch-board card.
 * Called by drivers.
 * \return 1 yes, anything else no; cannot fail
 */
uint8_t GetSwitchBoardSupportFlag(void);

/**
 * Tells whether a card is online.
 * Called by drivers (card 2), Kestrin_GenSwitchBoardPowerSDR() (1, 2).
 * \param[in] ucCard  1 or 2; 2 is the switch-board card
 * \return 1 online, anything else not; cannot fail
 */
uint8_t GetCardOnlineStatus(uint8_t ucCard);

/**
 * Tells the board id of a card; asked only about cards that are online.
 * Called by drivers (card 2), Kestrin_GenSwitchBoardPowerSDR() (1, 2).
 * \param[in] ucCard  1 or 2
 * \return its id: 0x5504, 0x5510, 0x5517 and 0x560A are known; cannot fail
 */
uint16_t GetCardBoardId(uint8_t ucCard);

/**
 * Tells the liquid-cooling mode.
 * Fan redundancy and fan power are not built in mode 2, leakage only in mode 1; a sensor that is not built for this
 * reason is an error line.
 * Called by generators of fan redundancy, fan power and leakage.
 * \return 0 none, 1 with a leak sensor, 2 no fans; cannot fail
 */
uint8_t GetLiquidCoolingFlag(void);

/**
 * Tells whether the static drivers build the disks.
 * Called by drivers.
 * \return 1 yes, anything else no; cannot fail
 */
int32_t FruSdrInitPathChoice(void);

/**
 * Turns a disk slot into the number that is printed at it; cannot fail.
 * Called by drivers (NVMe disks), GenSpecificTempSDR() and GenSpecificStatusSDR() (disks), the three disk-name
 * rewriters.
 * \param[in,out] pucSlot  slot, becomes the printed number; leave it alone where they are the same
 */
void oxa_CustomSlotConversion(uint8_t *pucSlot);

/** @} */

/** \name Bus clients */
/** @{ */

/** Where on a bus a sensor is, 2 bytes; both go into the device-table entry. */
typedef struct HalI2cClient {
    uint8_t ucBus;  /**< 0  byte 6 of the entry */
    uint8_t ucAddr; /**< 1  byte 7 of the entry */
} HalI2cClient;
OXA_SASSERT(sizeof(HalI2cClient) == 2, "HalI2cClient");

/**
 * Gives the bus client of a CPU's voltage regulator.
 * A failure is a warning, and the sensor is not built.
 * Called by generators of CPU regulator temperature, core voltage and voltage domains.
 * \param[in]  ucCpuNum  number of the CPU, from 0
 * \param[out] ptClient  the client
 * \return negative = failure, anything else = success
 */
int32_t HAL_CPUVRTempCoreVolts_GetI2cClientByInstance(uint8_t ucCpuNum, HalI2cClient *ptClient);

/**
 * Gives the bus client of the inlet sensor.
 * A failure is a warning, and the sensor is not built.
 * Called by generators of the inlet temperature and of the rack board temperature.
 * \param[out] ptClient  the client
 * \return negative = failure, anything else = success
 */
int32_t HAL_InputTemp_GetI2cClient(HalI2cClient *ptClient);

/**
 * Gives the bus client of a switch-board instance (the name is spelled so).
 * A failure is a warning, and the sensor is not built.
 * Called by generators of switch-board volts and current.
 * \param[in]  ucInstance  instance, from 1
 * \param[out] ptClient    the client
 * \return negative = failure, anything else = success
 */
int32_t HAL_SWTICH_GetI2cClientByInstance(uint8_t ucInstance, HalI2cClient *ptClient);

/** @} */

/** \name Processors */
/** @{ */

/** CPU types. */
enum {
    CPU_TYPE_UNKNOWN = 0,    /**< what a failed query leaves */
    CPU_TYPE_INTEL = 1,      /**< has a chipset, Tjmax and Tcontrol sensors */
    CPU_TYPE_DOMAIN_VOLT = 3 /**< the processor with voltage domains */
};

/**
 * Gives the number of CPU sockets.
 * A failure is a warning and counts as 0.  With the first printed number it must not exceed 255, or a static pass
 * ends without a count.
 * Called by drivers.
 * \param[out] pucCpuMaxCount  sockets, populated or not
 * \return 0, anything else = failure
 */
int32_t HAL_GetCpuMaxCount(uint8_t *pucCpuMaxCount);

/**
 * Gives the first printed CPU number.
 * A failure is a warning and counts as 0.
 * Called by drivers, and again every generator of a CPU sensor.
 * \param[out] pucCpuSilkStartIndex  0 or 1, as a rule
 * \return 0, anything else = failure
 */
int32_t HAL_GetCpuSilkScreenIndexFixValue(uint8_t *pucCpuSilkStartIndex);

/**
 * Gives the CPU type.
 * A failure is a warning and counts as CPU_TYPE_UNKNOWN.
 * Called by drivers; generators of the chipset temperature, Kestrin_GenCPUTjmaxSDR(), Kestrin_GenCPUTControlSDR().
 * \param[out] pucCpuType  CPU_TYPE_INTEL, CPU_TYPE_DOMAIN_VOLT or another
 * \return 0, anything else = failure
 */
int32_t HAL_GetCpuType(uint8_t *pucCpuType);

/**
 * Gives whether a CPU is online; asked only where the reduce flag is not 0.
 * A failure is a warning and counts as offline.
 * Called by OXA_CheckifAddCpuSensorByIndex(), and so the drivers.
 * \param[in]  ucCpuIndex        number of the CPU, from 0
 * \param[out] psdwOnlineStatus  1 online, anything else not
 * \return 0, anything else = failure
 */
int32_t HAL_GetCpuOnlineStatus(uint8_t ucCpuIndex, int32_t *psdwOnlineStatus);

/** Conversion and limits of a CPU voltage, 10 bytes. */
typedef struct HalCpuVoltSdrInfo {
    uint8_t ucM;    /**< 0  M, SDR byte 24 */
    uint8_t ucB;    /**< 1  B, SDR byte 26 */
    uint8_t ucExp;  /**< 2  SDR byte 29: R high nibble, B exponent low nibble */
    uint8_t ucMask; /**< 3  which limits there are: bit 0 LNC, 1 LC, 2 LNR, 3 UNC, 4 UC, 5 UNR */
    uint8_t ucUNR;  /**< 4  raw upper non-recoverable; these six in the order of SDR bytes 36 to 41 */
    uint8_t ucUC;   /**< 5  raw upper critical */
    uint8_t ucUNC;  /**< 6  raw upper non-critical */
    uint8_t ucLNR;  /**< 7  raw lower non-recoverable */
    uint8_t ucLC;   /**< 8  raw lower critical */
    uint8_t ucLNC;  /**< 9  raw lower non-critical */
} HalCpuVoltSdrInfo;
OXA_SASSERT(sizeof(HalCpuVoltSdrInfo) == 10, "HalCpuVoltSdrInfo");

/**
 * Gives how a CPU voltage domain is measured.
 * A failure is an error line, and the sensor is not built.
 * Called by generators of the voltage domains; the drivers run them only with CPU_TYPE_DOMAIN_VOLT.
 * \param[in]  ucVoltIndex  1, 2 the domains of CPU 0; 3, 4 those of CPU 1
 * \param[out] ptInfo       conversion and limits
 * \return 0, anything else = failure
 */
int32_t HAL_GetCpuVoltSdrInfoforSensor(uint8_t ucVoltIndex, HalCpuVoltSdrInfo *ptInfo);

/** CPU service. */
typedef struct HalCpuService {
    /**
     * Gives whether only CPUs that are online have sensors.
     * A failure is a warning and counts as 0.
     * \param[out] pucFlag  0 every socket has them, populated or not; anything else CPUs that are online
     * \return 0, anything else = failure
     */
    int32_t (*GetCpuReduceFlag)(uint8_t *pucFlag);
} HalCpuService;

/**
 * Tells the CPU service.
 * Called by OXA_CheckifAddCpuSensorByIndex(), and so the drivers.
 * \return the service, or null
 */
const HalCpuService *HalCpuInst(void);

/** @} */

/** \name Memory */
/** @{ */

/** Where a DIMM is, 4 bytes; the library hands it on and does not read it. */
typedef struct HalDimmDevInfo {
    uint8_t ucDimmNum;       /**< 0  number of the DIMM */
    uint8_t ucCpuNum;        /**< 1  its CPU */
    uint8_t ucChannel;       /**< 2  its channel */
    uint8_t ucSlotInChannel; /**< 3  its slot in the channel */
} HalDimmDevInfo;
OXA_SASSERT(sizeof(HalDimmDevInfo) == 4, "HalDimmDevInfo");

/**
 * Gives the number of DIMM slots.
 * A failure is a warning and counts as 0.
 * Called by drivers.
 * \param[out] pucDimmMaxCount  slots, up to 254; 255 ends a static pass without a count
 * \return 0, anything else = failure
 */
int32_t HAL_GetDimmMaxCount(uint8_t *pucDimmMaxCount);

/**
 * Gives where a DIMM is.
 * A failure is an error line, and the record is not built.
 * Called by drivers, for each record of a DIMM.
 * \param[in]  ucDimmNum  number of the DIMM, from 0
 * \param[out] ptInfo     where it is; zero before the call
 * \return 0, anything else = failure
 */
int32_t HAL_GetDimmDevInfoByDimmNum(uint8_t ucDimmNum, HalDimmDevInfo *ptInfo);

/**
 * Gives what a DIMM is called in sensor names.
 * A failure is an error line, and the record is not built.
 * Called by drivers, for each record of a DIMM.
 * \param[in]  ptInfo  what HAL_GetDimmDevInfoByDimmNum() gave
 * \param[out] pcName  the text, NUL-terminated, any characters; as a rule channel and slot: "A0" makes "MEM_TEMP_A0",
 *                     in other profiles "DIMMA0_Temp".  Up to 5 fit every name; a longer one loses its end
 * \param[in]  dwSize  room in pcName: 17
 * \return 0, anything else = failure
 */
int32_t HAL_GetDimmSensorNameIndex(const HalDimmDevInfo *ptInfo, char *pcName, uint32_t dwSize);

/**
 * Gives the watts a count of memory power.
 * A failure is a line on the debug channel, and the sensor is not built.
 * Called by generators of memory power, Quorral_GenPxDIMMVRPwrSDR().
 * \param[out] pdwAccuracy  1 to 255; 0 is written as 255
 * \return 0, anything else = failure
 */
int32_t HAL_GetDimmPowerAccuracy(uint32_t *pdwAccuracy);

/**
 * Gives whether groups of DIMMs and disks have temperatures.
 * Then no DIMM has a record of its own, neither temperature nor state; instead each CPU socket has a temperature of its
 * DIMMs, if there are any.  Disks keep theirs, and each backplane with disk slots has a temperature besides.
 * A failure is a warning and counts as 0.
 * Called by drivers.
 * \param[out] pucSensorSimpleFlag  1 yes, anything else no
 * \return 0, anything else = failure
 */
int32_t HAL_IsNeedSensorSimplification(uint8_t *pucSensorSimpleFlag);

/** @} */

/** \name Power supplies */
/** @{ */

/**
 * Gives the number of PSUs.
 * A failure ends a static pass without a count; for a PSU's state the number is then 0, and it is not built.
 * Called by drivers; generators of PSU states.
 * \param[out] pucPsuCnt  PSUs, up to 254; 255 ends a static pass without a count
 * \return 0, anything else = failure
 */
int32_t HAL_GetPsuMaxCount(uint8_t *pucPsuCnt);

/**
 * Gives whether power is managed; asked, and not used by anything yet.
 * Called by drivers.
 * \param[out] pucFlag  1 yes
 * \return 0, anything else = failure
 */
int32_t HAL_GetIsSupportPowerManage(uint8_t *pucFlag);

/**
 * Gives the number of PSU groups.
 * After a failure there is no redundancy sensor.
 * Called by drivers, with at least one PSU.
 * \param[out] pucGroupCnt  0 to 2: as many redundancy sensors; more than 2 none
 * \return 0, anything else = failure
 */
int32_t HAL_GetPsuGroupCount(uint8_t *pucGroupCnt);

/**
 * Gives the number of PSUs in a group.
 * After a failure there is no redundancy sensor.
 * Called by drivers, after HAL_GetPsuGroupCount().
 * \param[out] pucPsuPerGroup  0: no redundancy sensor
 * \return 0, anything else = failure
 */
int32_t HAL_GetPsuCountPerGroup(uint8_t *pucPsuPerGroup);

/** @} */

/** \name Sensor support flags */
/** @{ */

/** Sensor identifiers.  The nine numbers below 101 are fixed by the firmware, the others belong to this library. */
enum {
    SENSOR_BP_FRONT_12V = 19,          /**< 12 V of the front backplane (Ferrisk) */
    SENSOR_BP_REAR_12V = 20,           /**< 12 V of the rear backplane (Ferrisk) */
    SENSOR_BP_FRONT_TEMP = 21,         /**< temperature of the front backplane (Ferrisk) */
    SENSOR_BP_REAR_TEMP = 22,          /**< temperature of the rear backplane (Ferrisk) */
    SENSOR_SYS_54_VOLT = 25,           /**< 54 V supply of the system (Kestrin) */
    SENSOR_GPU_54_VOLT = 26,           /**< 54 V supplies of the GPUs (Kestrin) */
    SENSOR_PDB_BOARD_POWER = 27,       /**< power of the power distribution board (Kestrin) */
    SENSOR_NIC_POWER = 28,             /**< power of the network cards (Kestrin) */
    SENSOR_GPU_BOARD_POWER = 29,       /**< power of the GPU board (Kestrin) */
    SENSOR_CPU_VR_TEMP = 101,          /**< regulator temperature of every CPU, which drivers build themselves */
    SENSOR_CPU_VOLTS = 102,            /**< core voltage of every CPU */
    SENSOR_INPUT_TEMP = 103,           /**< air inlet temperature */
    SENSOR_OUTPUT_TEMP = 104,          /**< air outlet temperature */
    SENSOR_ENV_HUMI = 105,             /**< humidity */
    SENSOR_PDB_TEMP = 106,             /**< both power distribution board temperatures */
    SENSOR_VCC12V = 107,               /**< 12 V supply of the board */
    SENSOR_POWER_FAULT = 108,          /**< power fault */
    SENSOR_CPU_VCORE_CURRENT = 109,    /**< core rail current of every CPU (Vorana) */
    SENSOR_CPU_VCORE1_CURRENT1 = 110,  /**< second core rail current (Vorana) */
    SENSOR_CPU_VSOC_CURRENT = 111,     /**< SoC rail current (Vorana) */
    SENSOR_CPU_DDR_VDD1_CURRENT = 112, /**< memory rail current (Vorana) */
    /* sensors whose refusal text exists and whose identifier is not named */
    SENSOR_PCH_TEMP = 121,             /**< chipset temperature, with Intel processors */
    SENSOR_POWER_BUTTON = 122,         /**< power button */
    SENSOR_UID_BUTTON = 123,           /**< button of the identification light */
    SENSOR_INTRUSION = 124,            /**< chassis intrusion */
    SENSOR_ME = 125,                   /**< management engine */
    SENSOR_PWR_MODULE_TEMP = 126,      /**< Kestrin power modules */
    SENSOR_UBB_RT_TEMP = 127           /**< Kestrin UBB retimers */
};

/**
 * Gives whether the board HAS a sensor, despite the name.
 * The flag is read after a failure as well, which is only a warning: leave it alone, and the sensor is not built.
 * Called by all static generators and driver-built sensors whose comment in the profile's header says "where the board
 * has SENSOR_..."; a sensor without these words asks no flag.
 * \param[in]     dwSensorId      SENSOR_BP_FRONT_12V and its like
 * \param[in,out] pucSupportFlag  0 before the call; anything else = the board has the sensor
 * \return 0, anything else = failure
 */
int32_t HAL_GetSensorNotSupportFlagBySensor(uint32_t dwSensorId, uint8_t *pucSupportFlag);

/** Kinds of sensors that can be refused; the numbers are fixed by the firmware. */
enum {
    SENSOR_KIND_INPUT_VOLTS = 3, /**< voltage into a PSU */
    SENSOR_KIND_OUTPUT_VOLTS = 4 /**< voltage out of a PSU */
};

/**
 * Gives whether the board has a kind of sensor.
 * Only success together with 0 refuses the sensor; after a failure it is built.
 * Called by generators of PSU input and output voltage.
 * \param[in]     dwSensorKind    SENSOR_KIND_INPUT_VOLTS, SENSOR_KIND_OUTPUT_VOLTS
 * \param[in,out] pucSupportFlag  1 before the call; 0 refuses the sensor
 * \return 0, anything else = failure
 */
int32_t HAL_GetSensorSupportFlagBySensor(uint32_t dwSensorKind, uint8_t *pucSupportFlag);

/** @} */

/** \name Fans */
/** @{ */

/** Fan service. */
typedef struct HalFanService {
    /**
     * Gives the number of fans.
     * A failure is an error line and counts as 0.
     * \param[out] pucFanCnt  fans, up to 254 (255 ends a static pass without a count)
     * \return 0, anything else = failure
     */
    int32_t (*GetFanMaxCount)(uint8_t *pucFanCnt);
    /**
     * Gives the printed number of a fan.
     * A failure is a warning and leaves the fan out.
     * \param[in]  ucFanIndex  which fan, from 0
     * \param[out] pucSilk     its number; 0xFF leaves the fan out
     * \return 0, anything else = failure
     */
    int32_t (*GetFanSilkByIndex)(uint8_t ucFanIndex, uint8_t *pucSilk);
} HalFanService;

/**
 * Tells the fan service.
 * Called by drivers: once for the count, then for each fan.
 * \return the service, or null (error line): then there are no fans; a fan whose number is asked of a service that
 *         has gone meanwhile is built as number 0
 */
const HalFanService *HalFanInst(void);

/**
 * Gives the watts a count of fan power.
 * A failure is a warning, and the sensor is not built.
 * Called by generators of fan power.
 * \param[out] pdwAccuracy  1 to 255; 0 counts as a failure
 * \return 0, anything else = failure
 */
int32_t HAL_GetFanPowerAccuracy(uint32_t *pdwAccuracy);

/** @} */

/** \name Disks */
/** @{ */

#define HAL_HDD_BACKPANEL_MAX 32u /**< at most 32 backplanes are looked at */
#define HAL_HDD_LOCATION_LEN 32u  /**< room for a location and a NUL */

/** A disk backplane, 34 bytes.  A slot that is on two of them gets its records twice. */
typedef struct HalHddBackpanelRec {
    uint8_t ucStartSlot;                   /**< 0  first disk slot */
    uint8_t ucDiskCnt;                     /**< 1  number of disk slots; with the first one at most 255 */
    char acLocation[HAL_HDD_LOCATION_LEN]; /**< 2  NUL-terminated; "Front", compared whole, or anything else */
} HalHddBackpanelRec;
OXA_SASSERT(sizeof(HalHddBackpanelRec) == 34, "HalHddBackpanelRec");

/** All disk backplanes, 1,092 bytes. */
typedef struct HalHddBackpanelList {
    uint32_t count;                                  /**< 0  may exceed the array: the library looks at 32 */
    HalHddBackpanelRec atRec[HAL_HDD_BACKPANEL_MAX]; /**< 4  the backplanes */
} HalHddBackpanelList;
OXA_SASSERT(offsetof(HalHddBackpanelList, atRec) == 4, "HalHddBackpanelList");
OXA_SASSERT(sizeof(HalHddBackpanelList) == 1092, "HalHddBackpanelList");

/** Disk backplane service. */
typedef struct HalHddBackpanelService {
    /**
     * Gives all backplanes.
     * After a failure every disk sits in the rear, and a static pass builds no disks.
     * \param[out] ptList  the backplanes; zero before the call
     * \return 0, anything else = failure
     */
    int32_t (*GetBackPanelList)(HalHddBackpanelList *ptList);
    /**
     * Gives whether there is an NVMe disk in a slot.
     * A failure is an error line and counts as no.
     * \param[in]  ucSlot     disk slot
     * \param[out] pucIsNvme  1 yes, anything else no
     * \return 0, anything else = failure
     */
    int32_t (*CheckHddIsSupportNvme)(uint8_t ucSlot, uint8_t *pucIsNvme);
} HalHddBackpanelService;

/**
 * Tells the disk backplane service.
 * Called by drivers: for the list, then for each disk slot; getNvmeFrontInfo(), and so the specific generators of
 * disks.
 * \return the service, or null
 */
const HalHddBackpanelService *HalHddBackpanelInst(void);

/**
 * Tells whether the printed number of a disk slot differs from the slot.
 * Called by the Kestrin driver.
 * \param[in] ucSlot  disk slot
 * \return 1 yes, anything else no; cannot fail
 */
uint8_t Hal_CheckHddSlotIsDiffHddSilk(uint8_t ucSlot);

/**
 * Gives the printed number of a disk slot.
 * After a failure the slot is printed.
 * Called by the Kestrin driver, where the two differ.
 * \param[in]  ucSlot   disk slot
 * \param[out] pucSilk  printed number
 * \return 0, anything else = failure
 */
int32_t Hal_GetHddSilkByHddSlot(uint8_t ucSlot, uint8_t *pucSilk);

/**
 * Gives the watts a count of disk power.
 * A failure is a warning, and the sensor is not built.
 * Called by generators of disk power.
 * \param[out] pdwAccuracy  1 to 255; 0 counts as a failure
 * \return 0, anything else = failure
 */
int32_t HAL_GetHddPowerAccuracy(uint32_t *pdwAccuracy);

/** @} */

/** \name PCIe and OCP slots, switch chips */
/** @{ */

/**
 * Tells the number of standard PCIe slots.
 * Called by drivers.
 * \return slots, up to 254 (255 ends the static pass of a profile that builds PCIe slots, without a count); cannot
 *         fail
 */
uint8_t Hal_GetStandPcieSlotCounts(void);

/**
 * Gives the slot number of a PCIe slot.
 * A failure is a warning, and the index is passed over.
 * Called by drivers.
 * \param[in]  ucIndex  which of the slots, from 1
 * \param[out] pucSlot  its number
 * \return 0; -1 or anything else = the index has no slot
 */
int32_t Hal_GetPcieSlotByIndex(uint8_t ucIndex, uint8_t *pucSlot);

/**
 * Gives where a PCIe slot is.
 * After a failure the slot is not a front slot.
 * Called by getFSlotInfo(), and so the names of RAID, HBA, FC cards and NICs.
 * \param[in]  ucSlot       slot number
 * \param[out] pucLocation  1 front, anything else not
 * \return 0, anything else = failure
 */
int32_t Hal_GetPcieLocationByPcieSlot(uint8_t ucSlot, uint8_t *pucLocation);

/**
 * Gives the text that is printed at a PCIe slot; asked of front slots.
 * After a failure the slot is not a front slot.
 * Called by getFSlotInfo().
 * \param[in]  ucSlot  slot number
 * \param[out] pcSilk  the text, NUL-terminated; "F-Slot" and a number where the card is to be renamed
 * \param[in]  dwSize  room in pcSilk: 32
 * \return 0, anything else = failure
 */
int32_t Hal_GetPcieSilkByPcieSlot(uint8_t ucSlot, char *pcSilk, uint32_t dwSize);

/**
 * Gives the slot of the card that stays powered in S5.
 * A failure is a warning, and no card gets the flag.
 * Called by GenDevTable() (temperature of a smart NIC).
 * \param[out] pucSlot  its slot; its sensor gets the scan flag
 * \return 0, anything else = failure
 */
int32_t GetBlueFieldS5PcieSlotNum(uint8_t *pucSlot);

/**
 * Tells the number of OCP card positions.
 * Called by drivers; getSilkInfo(), and so every run-time name with a number.
 * \return positions, up to 254 (255 ends a static pass without a count); cannot fail
 */
uint8_t GetOcpNetCardMaxCount(void);

/**
 * Tells which OCP positions have a card.
 * Called by the Ferrisk driver; getSilkInfo().
 * \return bit n = position n + 1; cannot fail
 */
uint32_t GetOcpPresentStatus(void);

/**
 * Tells the slot of an OCP position.
 * Called by drivers.
 * \param[in] ucIndex  position, from 1
 * \return the slot, goes to byte 3 of the device-table entry of the card's error sensor; cannot fail
 */
uint8_t RestoreOcpSlot(uint8_t ucIndex);

/**
 * Tells the number of switch-chip temperature sensors.
 * Called by the Kestrin driver.
 * \return sensors; cannot fail
 */
uint8_t Hal_GetSwiTempSensorCnt(void);

/** @} */

/* ==================================================================================================
 * 2. MIDDLEWARE
 * ================================================================================================== */

/** \name Identity */
/** @{ */

/**
 * Gives the profile id, the same fact as IPMI_LoadCustomID().
 * After a failure it is profile 0.
 * Called by addMemPredictiveFault(), addMemError(), addPEMSEL(), addPowerDropSEL(), addDiskSEL(), addLeakageSel(),
 * where a rule needs it.
 * \param[out] pdwCustomId  CUSTOM_ID_DEFAULT (0) and its like, see records.h
 * \return 0, anything else = failure
 */
int32_t MW_GetCustomid(uint32_t *pdwCustomId);

/**
 * Gives the inner product id.
 * After a failure there is no FRU id offset.
 * Called by GetSdrFruIdOffset() (once, in profile 20); generators of board power, for a line of the log.
 * \param[out] pdwInnerProductId  7 on machines with a FRU id offset
 * \return 0, anything else = failure
 */
int32_t MW_GetInnerProductId(uint32_t *pdwInnerProductId);

/** @} */

/** \name GPU inventory */
/** @{ */

#define MW_GPU_ASSET_MAX 29u             /**< a count above it makes the inventory unusable */
#define MW_GPU_POWER_UNKNOWN 0xFFFFFFFFu /**< a rated power that is not known */

/** A GPU, 12 bytes. */
typedef struct GpuAssetRec {
    uint8_t ucSlot;     /**< 0  slot, up to 81 */
    uint32_t dwPowerW;  /**< 4  rated power in watts, or #MW_GPU_POWER_UNKNOWN */
    uint16_t wVendorId; /**< 8  PCI vendor id */
} GpuAssetRec;
OXA_SASSERT(offsetof(GpuAssetRec, dwPowerW) == 4 && offsetof(GpuAssetRec, wVendorId) == 8, "GpuAssetRec");
OXA_SASSERT(sizeof(GpuAssetRec) == 12, "GpuAssetRec");

/** All GPUs, 352 bytes. */
typedef struct GpuAssetInfo {
    uint32_t dwCount;                    /**< 0  how many; may exceed the array: the library checks */
    GpuAssetRec atGpu[MW_GPU_ASSET_MAX]; /**< 4  the GPUs */
} GpuAssetInfo;
OXA_SASSERT(offsetof(GpuAssetInfo, atGpu) == 4 && sizeof(GpuAssetInfo) == 352, "GpuAssetInfo");

/**
 * Gives the GPU inventory.
 * After a failure there are no GPUs.
 * Called by GetGpuPowerAccuracy(), and so GenSpecificPowerSDR() of GPUs.
 * \param[out] ptInfo  count and as many GPUs
 * \return 0, anything else = failure
 */
int32_t MW_GetGPUAssetInfo(GpuAssetInfo *ptInfo);

/** @} */

/** \name Thresholds */
/** @{ */

#define SENSOR_MAX_COUNT 512u /**< sensors that have thresholds of the user */

/** Thresholds of a sensor, 28 bytes. */
typedef struct SensorThreshEntry {
    char acName[17];     /**< 0  name of up to 16 characters, NUL-terminated */
    uint8_t ucUNR;       /**< 17 raw upper non-recoverable; these six in the order of SDR bytes 36 to 41 */
    uint8_t ucUC;        /**< 18 raw upper critical */
    uint8_t ucUNC;       /**< 19 raw upper non-critical */
    uint8_t ucLNR;       /**< 20 raw lower non-recoverable */
    uint8_t ucLC;        /**< 21 raw lower critical */
    uint8_t ucLNC;       /**< 22 raw lower non-critical */
    uint8_t aucExtra[2]; /**< 23 stored, not applied */
    uint8_t ucZero;      /**< 25 zero */
    uint16_t wMask;      /**< 26 low byte: which thresholds, bits LNC LC LNR UNC UC UNR from bit 0 */
} SensorThreshEntry;
OXA_SASSERT(offsetof(SensorThreshEntry, ucUNR) == 17 && offsetof(SensorThreshEntry, ucLNC) == 22, "SensorThreshEntry");
OXA_SASSERT(offsetof(SensorThreshEntry, aucExtra) == 23, "SensorThreshEntry");
OXA_SASSERT(offsetof(SensorThreshEntry, ucZero) == 25 && offsetof(SensorThreshEntry, wMask) == 26, "SensorThreshEntry");
OXA_SASSERT(sizeof(SensorThreshEntry) == 28, "SensorThreshEntry");

/** Threshold table, 14,344 bytes: the platform's live table and the file's image are the same bytes. */
typedef struct SensorThreshTable {
    uint32_t dwCustomId;                         /**< 0  profile id it was saved under */
    uint16_t wCount;                             /**< 4  number of entries in use; above 512 counts as 512 */
    SensorThreshEntry atEntry[SENSOR_MAX_COUNT]; /**< 6  the sensors */
    uint16_t wUnused;                            /**< 14342 zero */
} SensorThreshTable;
OXA_SASSERT(offsetof(SensorThreshTable, wCount) == 4 && offsetof(SensorThreshTable, atEntry) == 6, "SensorThreshTable");
OXA_SASSERT(offsetof(SensorThreshTable, wUnused) == 14342, "SensorThreshTable");
OXA_SASSERT(sizeof(SensorThreshTable) == 14344, "SensorThreshTable");

/**
 * Gives the live threshold table.
 * A failure is an error line: nothing is saved, or no thresholds are laid over a record.
 * Called by SaveSdrThresholdInfoInFile(); ModifySensorThresholdByFile(), and so every specific generator of a full
 * record.
 * \param[out] ptTable  all 14,344 bytes (they are saved as they are), on the stack of the library
 * \return 0, anything else = failure
 */
int32_t MW_GetSensorThreshInfo(SensorThreshTable *ptTable);

/**
 * Replaces the live threshold table; copy it, it does not outlive the call.
 * Called by InitSdrThresholdInfoFromFile(), SaveSdrThresholdInfoInFile().
 * \param[in] ptTable  the whole table
 * \return not looked at
 */
int32_t MW_SetSensorThreshInfo(const SensorThreshTable *ptTable);

/** @} */

/**
 * \name Sensor directory
 * Numbers that whoever took the records over gave to the sensors.  A failed lookup is an error line, and the event is
 * sent with sensor number 0 (a leak is not sent).
 * @{
 */
/** Which sensor is meant, 5 bytes. */
typedef struct MwSensorKey {
    uint8_t ucEntityId;   /**< 0  IPMI entity */
    uint8_t ucSensorType; /**< 1  IPMI sensor type */
    uint8_t ucEventType;  /**< 2  IPMI event type */
    uint8_t ucInstance;   /**< 3  which of them: the slot of a disk, 0 of the leak sensor */
    uint8_t ucReserved;   /**< 4  0 */
} MwSensorKey;
OXA_SASSERT(sizeof(MwSensorKey) == 5, "MwSensorKey");

/** What the directory knows of a sensor, 16 bytes. */
typedef struct MwSpecificSensorInfo {
    uint8_t ucSensorNum;     /**< 0  sensor number */
    uint8_t ucSensorType;    /**< 1  IPMI sensor type */
    uint8_t ucEventType;     /**< 2  IPMI event type */
    uint8_t ucOwnerLun;      /**< 3  LUN, 0 to 3 */
    uint8_t aucReserved[12]; /**< 4  not read */
} MwSpecificSensorInfo;
OXA_SASSERT(sizeof(MwSpecificSensorInfo) == 16, "MwSpecificSensorInfo");

/**
 * Gives the number of a disk's status sensor.
 * Called by addDiskSEL().
 * \param[in]  ptKey         04 0D 6F, the slot, 00
 * \param[out] pdwSensorNum  sensor number; its low byte goes into the event
 * \return 0, anything else = failure
 */
int32_t MW_GetSensorNumber(const MwSensorKey *ptKey, uint32_t *pdwSensorNum);

/**
 * Gives the number of a CPU's status sensor.
 * Called by addCPUError().
 * \param[in]  dwCpuNum      number of the CPU, as addCPUError() was told
 * \param[out] pdwSensorNum  sensor number; its low byte goes into the event
 * \return 0, anything else = failure
 */
int32_t MW_GetCPUSensorNumber(uint32_t dwCpuNum, uint32_t *pdwSensorNum);

/**
 * Gives the number of a DIMM's status sensor.
 * Called by addMemError().
 * \param[in]  dwDimmNum     number of the DIMM, as addMemError() was told
 * \param[out] pdwSensorNum  sensor number; its low byte goes into the event
 * \return 0, anything else = failure
 */
int32_t MW_GetMemSensorNumber(uint32_t dwDimmNum, uint32_t *pdwSensorNum);

/**
 * Gives the number of a power module's sensor.
 * Called by addPEMSEL().
 * \param[in]  dwLocation    place of the module, as addPEMSEL() was told
 * \param[out] pdwSensorNum  sensor number; its low byte goes into the event
 * \return 0, anything else = failure
 */
int32_t MW_GetPemSensorNumber(uint32_t dwLocation, uint32_t *pdwSensorNum);

/**
 * Gives the number of the power-fault sensor.
 * Called by addPowerDropSEL().
 * \param[out] pdwSensorNum  sensor number; its low byte goes into the event, its low 2 bits as LUN besides
 * \return 0, anything else = failure
 */
int32_t MW_GetPowerFaultSensorNum(uint32_t *pdwSensorNum);

/**
 * Gives number, types and LUN of the leak sensor.
 * A failure is an error line, and the event is not sent.
 * Called by addLeakageSel().
 * \param[in]  ptKey   1E 0A 03 00 00
 * \param[out] ptInfo  the sensor; zero before the call
 * \return 0, anything else = failure
 */
int32_t MW_GetSpecificSensorInfo(const MwSensorKey *ptKey, MwSpecificSensorInfo *ptInfo);

/** @} */

/** \name Readings and states */
/** @{ */

/**
 * Gives the inlet temperature.
 * A failure counts as 0.
 * Called by addSELAlarm() (air inlet).
 * \param[out] pucInletTemp  degrees C
 * \return 0, anything else = failure
 */
int32_t MW_GetInletTempInfo(uint8_t *pucInletTemp);

/**
 * Sets the predictive-failure state of a DIMM.
 * Called by addMemPredictiveFault() in profile 1.
 * \param[in] dwDimmNum  number of the DIMM
 * \param[in] dwState    the inverted assertFlag of addMemPredictiveFault(): 1 when it was 0, 0 when it was 1
 * \return not looked at
 */
int32_t MW_SetMemPredictiveFailureState(uint32_t dwDimmNum, uint32_t dwState);

/**
 * Takes the number of power modules that got a record.
 * Called by the Kestrin driver, once a pass.
 * \param[in] ucNum  0 to 4
 * \return not looked at
 */
int32_t MW_SetPWRModuleOnlineNum(uint8_t ucNum);

/**
 * Gives whether the switch sensors are valid (the name is spelled so).
 * After a failure the sensor is not built.
 * Called by Kestrin_GenSwitchBoardPowerSDR() on board 0x5502.
 * \param[out] pucValid  anything but 0 = valid
 * \return 0, anything else = failure
 */
int32_t MW_GetSWSensorVail(uint8_t *pucValid);

/** @} */

/* ==================================================================================================
 * 3. IPMI SERVICE LIBRARY
 * ================================================================================================== */

/** \name Configuration */
/** @{ */

/**
 * Gives the profile id, the same fact as MW_GetCustomid().
 * After a failure it is profile 0; only isNeedRegisterHddSdr() answers -1.
 * Called by specific generators, getSensorInfo(), GetSdrFruIdOffset(), isNeedRegisterHddSdr(); the drivers do not
 * ask.
 * \param[out] pdwCustomId  CUSTOM_ID_DEFAULT (0) and its like, see records.h
 * \return 0, anything else = failure
 */
int32_t IPMI_LoadCustomID(uint32_t *pdwCustomId);

/** Liquid-cooling configuration, 1 byte. */
typedef struct IpmiCduManageConfig {
    uint8_t ucEnable; /**< 0  1 = a CDU is managed */
} IpmiCduManageConfig;
OXA_SASSERT(sizeof(IpmiCduManageConfig) == 1, "IpmiCduManageConfig");

/**
 * Gives the liquid-cooling configuration.
 * After a failure there are no CDU sensors.
 * Called by the Default and Kestrin drivers.
 * \param[out] ptConfig  the configuration
 * \return 0, anything else = failure
 */
int32_t IPMI_GetCduManageConfig(IpmiCduManageConfig *ptConfig);

/** @} */

/**
 * \name Sessions and commands
 * Each returns uint16_t: 0 = success, anything else is the code that the library prints, and that
 * SDR_AddSpecificSensor(), SDR_DeleteSpecificSDR() and SendSubCardStatusToFRU() return.  A session is opened, used for
 * one command and closed.
 *
 * Responses are zero before the call and not read, so the result must tell how IPMI completed the command: return 0
 * only for completion code 0, else a code other than 0, as a rule the completion code itself (0x00C4, ...).  0xFFFE and
 * 0xFFFF would look like #OXA_NOT_SUPPORTED and #OXA_FAILED.
 *
 * dwArg5 to dwArg7 and dwArg are constants of the service that the library hands on unchanged; what they mean is known
 * to the service alone, and a stub may ignore them.
 * @{
 */
/** Session block, 42 bytes, the platform's own; zero-filled before it is opened. */
typedef struct IpmiLocalSession {
    uint8_t aucRaw[42]; /**< not read by the library */
} IpmiLocalSession;
OXA_SASSERT(sizeof(IpmiLocalSession) == 42, "IpmiLocalSession");

/**
 * Opens a local session.
 * A failure is an error line, and the caller fails with the code (the event writer with 0xFFFF).
 * Called by SDR_AddSpecificSensor(), SDR_DeleteSpecificSDR(), SendSubCardStatusToFRU(), ipmi_add_sel_entry() and so
 * all event builders.
 * \param[out]    ptSession     session block, zero-filled
 * \param[in]     pcUser        "" in a buffer of 8 zero bytes
 * \param[in]     pcPassword    "" in a buffer of 8 zero bytes
 * \param[in,out] pucPrivilege  4, administrator
 * \param[in]     dwArg5        constant 0
 * \param[in]     dwArg6        constant 2
 * \param[in]     dwArg7        constant: 10 for the repository and the FRU service, 100 for the event log
 * \return 0, else a code
 */
uint16_t LIBIPMI_Create_IPMI_Local_Session(IpmiLocalSession *ptSession, const char *pcUser, const char *pcPassword,
                                           uint8_t *pucPrivilege, uint32_t dwArg5, uint32_t dwArg6, uint32_t dwArg7);

/**
 * Closes a session; called after every open that succeeded, never after one that failed.
 * Called by whoever opened it.
 * \param[in,out] ptSession  the session
 * \return not looked at
 */
uint16_t LIBIPMI_CloseSession(IpmiLocalSession *ptSession);

/**
 * Adds a record to the SDR repository.
 * A failure is an error line.
 * Called by SDR_AddSpecificSensor().
 * \param[in,out] ptSession  the session
 * \param[in]     pucSDR     the record, header included, record id 0
 * \param[in]     ucLen      its length: 16 to 64
 * \param[out]    pucRes     room for 3 bytes: completion code and the new record id, least significant byte first
 * \param[in]     dwArg      constant 20
 * \return 0, else a code
 */
uint16_t IPMICMD_AddSDR(IpmiLocalSession *ptSession, const uint8_t *pucSDR, uint8_t ucLen, uint8_t *pucRes /* 3 */,
                        uint32_t dwArg);

/**
 * Deletes a record from the SDR repository.
 * Called by SDR_DeleteSpecificSDR().
 * \param[in,out] ptSession  the session
 * \param[in]     pucReq     4 bytes: reservation id 0, then the record id, least significant byte first
 * \param[out]    pucRes     room for 4 bytes
 * \param[in]     dwArg      constant 20
 * \return 0, else a code
 */
uint16_t IPMICMD_DeleteSDR(IpmiLocalSession *ptSession, const uint8_t *pucReq /* 4 */, uint8_t *pucRes /* 4 */,
                           uint32_t dwArg);

/**
 * Adds a record to the event log.
 * A failure is an error line, and a dump of the record; a builder tries once more in a new session.
 * Called by ipmi_add_sel_entry(), and so all event builders.
 * \param[in,out] ptSession  the session
 * \param[in]     pucRecord  16 bytes; record id and, of stamped types, time stamp are 0
 * \param[out]    pucRes     room for 3 bytes: completion code and the new record id
 * \param[in]     dwArg      constant 100
 * \return 0, else a code
 */
uint16_t IPMICMD_AddSELEntry(IpmiLocalSession *ptSession, const uint8_t *pucRecord /* 16 */, uint8_t *pucRes /* 3 */,
                             uint32_t dwArg);

/**
 * Sends a message to the FRU service.
 * A failure is an error line.
 * Called by SendSubCardStatusToFRU().
 * \param[in,out] ptSession  the session
 * \param[in]     pucMsg     25 bytes: 12 00 8E 01, the 20 bytes of the status, 00
 * \param[in]     dwArg      constant 20
 * \return 0, else a code
 */
uint16_t LIBIPMI_HL_SendMsgToFRU(IpmiLocalSession *ptSession, const uint8_t *pucMsg /* 25 */, uint32_t dwArg);

/** @} */

/* ==================================================================================================
 * 4. INI FILE LIBRARY
 * ================================================================================================== */

/**
 * \name INI files
 * Section and key texts are to be kept as given, trailing blanks included.  A handle is opened, used and closed within
 * one call of the library, and only one is open at a time.
 * @{
 */
/** An open INI file, the platform's own. */
typedef struct IniFile IniFile;

/**
 * Opens the record file; a missing file is to load as an empty one.
 * A failure is an error line: nothing is written, or the record id is 0.
 * Called by SDR_UpdateSpecificSDRRecFile(), SDR_GetSepcificFruSDRRecID(), and so GenFruOfPsuSpecificSDR() and
 * SDR_DeleteSpecificSDR().
 * \param[in]  pcPath  "/var/SpecificSDRRec"
 * \param[out] pptIni  the handle; null before the call, and null counts as a failure
 * \return 0, anything else = failure
 */
int32_t IniLoadFile(const char *pcPath, IniFile **pptIni);

/**
 * The same for the FRU id file.
 * A failure is a line, and the result -1; the record of the card is built all the same.
 * Called by SavePurchaseCardFruId(), and so the locators of cards; LoadPurchaseCardFruId().
 * \param[in]  pcPath  "/var/tmp/purchaseCardFruId"
 * \param[out] pptIni  the handle; null counts as a failure
 * \return 0, anything else = failure
 */
int32_t OXA_IniLoadFile(const char *pcPath, IniFile **pptIni);

/**
 * Tells a value.
 * Called by as the two above, on reading.
 * \param[in] ptIni      the handle
 * \param[in] pcSection  section, for example "PSU_1"
 * \param[in] pcKey      key, for example "sdrRecId" or "HyperCard_FruId "
 * \param[in] dwDefault  0
 * \return the value, or dwDefault when section or key is missing
 */
uint32_t IniGetUInt(IniFile *ptIni, const char *pcSection, const char *pcKey, uint32_t dwDefault);

/**
 * Sets a value, making section and key when missing.
 * Called by as the two above, on writing.
 * \param[in,out] ptIni      the handle
 * \param[in]     pcSection  section
 * \param[in]     pcKey      key
 * \param[in]     dwValue    value
 * \return not looked at
 */
int32_t IniSetUInt(IniFile *ptIni, const char *pcSection, const char *pcKey, uint32_t dwValue);

/**
 * Writes everything to a file.
 * Called by as the two above, on writing.
 * \param[in] ptIni   the handle
 * \param[in] pcPath  the path that it was loaded from
 * \return not looked at
 */
int32_t IniSaveFile(IniFile *ptIni, const char *pcPath);

/**
 * Gives the handle back, without saving; called after every load that succeeded.
 * Called by whoever loaded it.
 * \param[in] ptIni  the handle
 */
void IniCloseFile(IniFile *ptIni);

/** @} */

/* ==================================================================================================
 * 5. OPERATING-SYSTEM ABSTRACTION
 * ================================================================================================== */

/**
 * \name Semaphore and files of the extended store
 * Called in this order by everything that reads or writes the extended store, that is checkSensorExist() and so every
 * generator, getExtDevTabCount() and the four functions for whole files: create, lock, open, (lseek), read or
 * (ftruncate) write, close, unlock.
 * @{
 */
/**
 * Creates a semaphore of the whole system, or opens it where it exists.
 * Called before every lock: it must not reset a semaphore that exists.  A failure is an error line; the file is left
 * alone.
 * \param[in] dwKey  12313
 * \return 0, anything else = failure
 */
int32_t OAL_SemCreate(uint32_t dwKey);

/**
 * Locks the semaphore.
 * One thread never locks it twice: it need not be recursive.  A failure is an error line; the file is left alone, and
 * the semaphore is not unlocked.
 * \param[in] dwKey   12313
 * \param[in] dwWait  longest wait: 2000, a constant; its unit is the platform's and not known here, a stub may take
 *                    milliseconds
 * \return 0, anything else = failure
 */
int32_t OAL_SemLockByKey(uint32_t dwKey, uint32_t dwWait);

/**
 * Unlocks the semaphore.
 * A failure is an error line, and the result of the access stands.
 * \param[in] dwKey   12313
 * \param[in] dwWait  2000
 * \return 0, anything else = failure
 */
int32_t OAL_SemUnLockByKey(uint32_t dwKey, uint32_t dwWait);

/**
 * Opens a file, signals notwithstanding; the directory is there.
 * \param[in] pcPath    "/var/tmp/extSDR.dat" or "/var/tmp/extDevTab.dat"
 * \param[in] sdwFlags  O_RDWR | O_CREAT of the system's open()
 * \param[in] dwMode    0775
 * \return a descriptor that lseek and ftruncate understand; negative = failure, a line on the debug channel: the
 *         store counts as empty
 */
int32_t sigwrap_open_mode(const char *pcPath, int32_t sdwFlags, uint32_t dwMode);

/**
 * Reads from a file, signals notwithstanding.
 * \param[in]  sdwFd  descriptor
 * \param[out] pvBuf  room for dwLen bytes; what a failed read leaves there is not looked at
 * \param[in]  dwLen  up to 16,320; the file may be shorter
 * \return number of bytes read; 0 or less = nothing read, and a line on the debug channel with the text of errno, which
 *         is 0 before the call.  An empty store reads 0 bytes: until somebody has written it every record that is built
 *         leaves the line "Error in reading the file ... due to error: Success", and nothing is wrong
 */
int32_t sigwrap_read(int32_t sdwFd, void *pvBuf, uint32_t dwLen);

/**
 * Writes all of a buffer to a file, signals notwithstanding.
 * \param[in] sdwFd  descriptor
 * \param[in] pvBuf  dwLen bytes
 * \param[in] dwLen  number of bytes
 * \return 0 when all bytes were written (not their number); anything else is a line on the debug channel, with errno
 */
int32_t sigwrap_write(int32_t sdwFd, const void *pvBuf, uint32_t dwLen);

/**
 * Closes a descriptor.
 * \param[in] sdwFd  descriptor
 * \return not looked at
 */
int32_t sigwrap_close(int32_t sdwFd);

/** @} */

/* ==================================================================================================
 * 6. LOGGING
 * ================================================================================================== */

/**
 * \name Logging
 * Everything that the library says; all functions log unless their comment says that they are silent.  Modules: 42 SDR,
 * 43 sub card, 52 event builders, 67 disk events, 255 assertions, and warnings about failed queries of static sensors.
 * The formats take %d, %u, %x, %X, %s and %.*s, some with a width of 2, and end with or without a newline.  All texts,
 * file and function name included, hold during the call only.  The trap alarm's info line passes one argument more than
 * its format takes: a wrapper that counts must bear with that.  _ssp_debug() gets one line only: a disk without a
 * temperature. @{
 */
/**
 * Writes a debug line.
 * \param[in] dwModule  42, 43, 52, 67 or 255
 * \param[in] pcFile    source file as the firmware knows it, for example "oxa_specific_sel.c"
 * \param[in] dwLine    line
 * \param[in] pcFunc    function, or the generator in whose name it speaks
 * \param[in] pcFmt     format of printf, and its arguments
 */
void _ssp_debug(uint32_t dwModule, const char *pcFile, uint32_t dwLine, const char *pcFunc, const char *pcFmt, ...)
    PLAT_PRINTF(5, 6);

/**
 * Writes an info line.
 * \param[in] dwModule  42, 43, 52, 67 or 255
 * \param[in] pcFile    source file as the firmware knows it, for example "oxa_specific_sel.c"
 * \param[in] dwLine    line
 * \param[in] pcFunc    function, or the generator in whose name it speaks
 * \param[in] pcFmt     format of printf, and its arguments
 */
void _ssp_info(uint32_t dwModule, const char *pcFile, uint32_t dwLine, const char *pcFunc, const char *pcFmt, ...)
    PLAT_PRINTF(5, 6);

/**
 * Writes a warning.
 * \param[in] dwModule  42, 43, 52, 67 or 255
 * \param[in] pcFile    source file as the firmware knows it, for example "oxa_specific_sel.c"
 * \param[in] dwLine    line
 * \param[in] pcFunc    function, or the generator in whose name it speaks
 * \param[in] pcFmt     format of printf, and its arguments
 */
void _ssp_warn(uint32_t dwModule, const char *pcFile, uint32_t dwLine, const char *pcFunc, const char *pcFmt, ...)
    PLAT_PRINTF(5, 6);

/**
 * Writes an error line; sspFailedStat() was called just before.
 * \param[in] dwModule  42, 43, 52, 67 or 255
 * \param[in] pcFile    source file as the firmware knows it, for example "oxa_specific_sel.c"
 * \param[in] dwLine    line
 * \param[in] pcFunc    function, or the generator in whose name it speaks
 * \param[in] pcFmt     format of printf, and its arguments
 */
void _ssp_error(uint32_t dwModule, const char *pcFile, uint32_t dwLine, const char *pcFunc, const char *pcFmt, ...)
    PLAT_PRINTF(5, 6);

/**
 * Counts a failure; called once just before every _ssp_error(), and nowhere else.
 * \param[in] pcFile  source file of the line
 * \param[in] dwLine  its line
 */
void sspFailedStat(const char *pcFile, uint32_t dwLine);

/**
 * Writes to the debug channel; also called while the semaphore is held.
 * \param[in] dwLevel  130, or 132 in the extended store
 * \param[in] pcFmt    format of printf, and its arguments
 */
void IDBG_LINUXAPP_DbgOut(uint32_t dwLevel, const char *pcFmt, ...) PLAT_PRINTF(2, 3);

/**
 * Writes to the security channel.
 * Called by SetFruValidState(), for a FRU id that is not of the pool.
 * \param[in] dwLevel  191
 * \param[in] pcFmt    format of printf, and its arguments
 */
void IDBG_LINUXAPP_AuditOut(uint32_t dwLevel, const char *pcFmt, ...) PLAT_PRINTF(2, 3);

/** @} */

/* ==================================================================================================
 * 7. BOUNDED MEMORY, STRING AND FILE FUNCTIONS
 * ================================================================================================== */

/**
 * \name Bounded memory and strings
 * Shapes of ISO C11 Annex K, for the plain and the oxa_ names alike.  The library keeps the bounds itself, and sources
 * and destinations do not overlap; a result that is not success drops the record.  memset_s(), oxa_memset_s(),
 * oxa_memcpy_s() and oxa_snprintf_s() belong to the interface and are not called by this version.
 * @{
 */
/**
 * Copies bytes.
 * Called by every generator, the disk-name rewriters.
 * \param[out] pvDst    destination
 * \param[in]  nDstMax  its size
 * \param[in]  pvSrc    source
 * \param[in]  nCount   how many bytes
 * \return 0, anything else = failure
 */
int memcpy_s(void *pvDst, size_t nDstMax, const void *pvSrc, size_t nCount);

/**
 * Copies bytes.
 * \param[out] pvDst    destination
 * \param[in]  nDstMax  its size
 * \param[in]  pvSrc    source
 * \param[in]  nCount   how many bytes
 * \return 0, anything else = failure
 */
int oxa_memcpy_s(void *pvDst, size_t nDstMax, const void *pvSrc, size_t nCount);

/**
 * Fills bytes.
 * \param[out] pvDst    destination
 * \param[in]  nDstMax  its size
 * \param[in]  nByte    the byte
 * \param[in]  nCount   how many bytes
 * \return 0, anything else = failure
 */
int memset_s(void *pvDst, size_t nDstMax, int nByte, size_t nCount);

/**
 * Fills bytes.
 * \param[out] pvDst    destination
 * \param[in]  nDstMax  its size
 * \param[in]  nByte    the byte
 * \param[in]  nCount   how many bytes
 * \return 0, anything else = failure
 */
int oxa_memset_s(void *pvDst, size_t nDstMax, int nByte, size_t nCount);

/**
 * Prints a text and a NUL; a text that is too long is cut, not refused.
 * Called by every generator, the disk-name rewriters, and for section and key texts the record file and the FRU id
 * file.
 * \param[out] pcDst    destination
 * \param[in]  nDstMax  its size: 17 for names; at most one character less is printed
 * \param[in]  pcFmt    format of printf: %d, %u, %X (some as %02d, %02u, %1X), %s and %c
 * \return length of the uncut text; negative = failure
 */
int snprintf_s(char *pcDst, size_t nDstMax, const char *pcFmt, ...) PLAT_PRINTF(3, 4);

/**
 * Prints a text and a NUL; a text that is too long is cut, not refused.
 * \param[out] pcDst    destination
 * \param[in]  nDstMax  its size: 17 for names; at most one character less is printed
 * \param[in]  pcFmt    format of printf: %d, %u, %X (some as %02d, %02u, %1X), %s and %c
 * \return length of the uncut text; negative = failure
 */
int oxa_snprintf_s(char *pcDst, size_t nDstMax, const char *pcFmt, ...) PLAT_PRINTF(3, 4);

/**
 * Tells the length of a text.
 * Called by every generator and name lookup.
 * \param[in] pcStr  the text; null has length 0
 * \param[in] nMax   how many characters are looked at
 * \return the length, at most nMax
 */
size_t strnlen_s(const char *pcStr, size_t nMax);

/**
 * Tells the length of a text.
 * Called by the functions of thresholds.h.
 * \param[in] pcStr  the text; null has length 0
 * \param[in] nMax   how many characters are looked at
 * \return the length, at most nMax
 */
size_t oxa_strnlen_s(const char *pcStr, size_t nMax);

/** @} */

/** \name Threshold file and error texts */
/** @{ */

/**
 * Opens the threshold file, as fopen() does.
 * A failure is an error line: nothing is loaded, or saved.
 * Called by InitSdrThresholdInfoFromFile(), SaveSdrThresholdInfoInFile().
 * \param[out] pptFile  a stream that fread and fwrite understand
 * \param[in]  pcPath   "/conf/BMC1/sensor_threshold.dat"
 * \param[in]  pcMode   "rb+" or "wb"
 * \return 0, anything else = failure
 */
int oxa_fopen_s(FILE **pptFile, const char *pcPath, const char *pcMode);

/**
 * Closes the threshold file.
 * Called by whoever opened it.
 * \param[in] ptFile  the stream
 * \return not looked at
 */
int oxa_fclose_s(FILE *ptFile);

/**
 * Gives the text of an error number; also called while the semaphore is held.
 * After a failure the line has no text.
 * Called by the extended store.
 * \param[out] pcBuf    the text, NUL-terminated
 * \param[in]  nBufMax  room in pcBuf: 48
 * \param[in]  nErrnum  errno
 * \return 0, anything else = failure
 */
int oxa_strerror_s(char *pcBuf, size_t nBufMax, int nErrnum);

/** @} */

/* ==================================================================================================
 * 8. POWER MANAGEMENT
 * ================================================================================================== */

/** \name Power faults and PSU alarms */
/** @{ */

/** Power-fault registers. */
enum {
    PMIC_POWER_FAULT_REG_5350 = 1,  /**< the one */
    PMIC_POWER_FAULT_REG_6900G5 = 2 /**< the other */
};

/**
 * Gives the byte of a register.
 * A failure is a warning, and nothing is written back; the sensor is built all the same.
 * Called by generators of the power fault.
 * \param[in]  dwReg     PMIC_POWER_FAULT_REG_5350 or PMIC_POWER_FAULT_REG_6900G5
 * \param[out] pucValue  the byte
 * \return 0, anything else = failure
 */
int32_t epldio_read(uint32_t dwReg, uint8_t *pucValue);

/**
 * Writes a byte into a register: what was read from it just before.
 * Called by generators of the power fault.
 * \param[in] dwReg    the register
 * \param[in] ucValue  the byte
 * \return not looked at
 */
int32_t epldio_write(uint32_t dwReg, uint8_t ucValue);

/**
 * Loads the PSU alarm configuration.
 * A failure is a warning, and the sensor is built all the same.
 * Called by generators of PSU states, each time; not Quorral_GenPSUSypplyDR().
 * \return 0, anything else = failure
 */
int32_t LoadPsuAlarmCfg(void);

/** @} */

#ifdef __cplusplus
}
#endif
#endif
