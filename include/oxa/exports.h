/* SPDX-License-Identifier: Apache-2.0 */
/*
 * Shared records and every function and data object that liboxaspecificsensorinfo exports, by source unit.
 *
 * Conventions
 *   - C linkage, default visibility, fixed-width types; the records have the same layout on the 32-bit target
 *     and on a 64-bit host, except rows that hold pointers.
 *   - Comments at fields give the byte offset.
 *   - Names that appear only in log lines stand in comments: they are internal, no program calls them.
 */
#ifndef OXA_EXPORTS_H
#define OXA_EXPORTS_H

#include <stddef.h>
#include <stdint.h>
#ifndef __cplusplus
#include <stdbool.h>
#endif

#ifndef OXA_SASSERT
#ifdef __cplusplus
#define OXA_SASSERT(cond, text) static_assert(cond, text)
#else
#define OXA_SASSERT(cond, text) _Static_assert(cond, text)
#endif
#endif
#define OXA_AT(type, field, offset) OXA_SASSERT(offsetof(type, field) == (offset), #type "." #field)
#define OXA_SIZE(type, size) OXA_SASSERT(sizeof(type) == (size), #type)

#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif
#ifdef __cplusplus
extern "C" {
#endif

/* ==================================================================================================
 * SHARED NUMBERS AND RECORDS
 * ================================================================================================== */

#define SDR_SLOT_SIZE 64u           /* one SDR slot */
#define DEV_TAB_ENTRY_SIZE 32u      /* one device-table entry */
#define SENSOR_NAME_SIZE 17u        /* 16 characters and a NUL */
#define EXT_SLOT_MAX 255u           /* slots of the extended store */
#define HDD_REGISTER_MAX 100u       /* entries of the disk registry */

/* Profile ids. */
enum {
    CUSTOM_ID_DEFAULT = 0,
    CUSTOM_ID_KESTRIN = 1,
    CUSTOM_ID_PELLAGO = 2,
    CUSTOM_ID_VORANA = 3,
    CUSTOM_ID_ASTREL = 4,
    CUSTOM_ID_QUORRAL = 6,
    CUSTOM_ID_LUMORA = 7,
    CUSTOM_ID_DURNOW = 11,
    CUSTOM_ID_FERRISK = 16,
    CUSTOM_ID_SABLIN = 20
};

/* Results. */
enum {
    OXA_OK = 0,
    OXA_NOT_SUPPORTED = 0xFFFE, /* sensor add */
    OXA_FAILED = 0xFFFF,        /* sensor add, event writer and builders */
    GEN_SDR_FAILED = 0,         /* specific generators: nothing to add */
    GEN_SDR_SKIPPED = 255       /* specific generators: not supported or already present */
};

/* Threshold bits of a description's bitmap, of SDR bytes 18 and 19 and of a stored mask. */
enum {
    THRESH_BIT_LNC = 0x01,
    THRESH_BIT_LC = 0x02,
    THRESH_BIT_LNR = 0x04,
    THRESH_BIT_UNC = 0x08,
    THRESH_BIT_UC = 0x10,
    THRESH_BIT_UNR = 0x20
};

/* Byte offsets of an SDR, at most 64 bytes, multi-byte fields little-endian. */
enum {
    SDR_RECORD_ID = 0,      /* 2 bytes */
    SDR_VERSION = 2,        /* 0x51 */
    SDR_RECORD_TYPE = 3,    /* 0x01 full, 0x02 compact, 0x11 FRU device locator */
    SDR_RECORD_LENGTH = 4,  /* bytes after byte 4 */
    /* full and compact */
    SDR_OWNER_ID = 5,
    SDR_OWNER_LUN = 6,
    SDR_SENSOR_NUM = 7,
    SDR_ENTITY_ID = 8,
    SDR_ENTITY_INSTANCE = 9,
    SDR_SENSOR_INIT = 10,
    SDR_SENSOR_CAPS = 11,
    SDR_SENSOR_TYPE = 12,
    SDR_EVENT_TYPE = 13,
    SDR_ASSERT_MASK = 14,   /* 2 bytes */
    SDR_DEASSERT_MASK = 16, /* 2 bytes */
    SDR_READING_MASK = 18,  /* 2 bytes; full: readable, then settable thresholds */
    SDR_UNITS_1 = 20,
    SDR_BASE_UNIT = 21,
    SDR_MODIFIER_UNIT = 22,
    /* full */
    FULL_SDR_LINEARIZATION = 23,
    FULL_SDR_M_VALUE_LS_8_BITS = 24,
    FULL_SDR_M_MS_TOLERANCE = 25,
    FULL_SDR_B_VALUE_LS_8_BITS = 26,
    FULL_SDR_B_MS_ACCURACY = 27,
    FULL_SDR_ACCURACY_DIRECTION = 28,
    FULL_SDR_EXPONENTS = 29, /* R high nibble, B low nibble */
    FULL_SDR_ANALOG_FLAGS = 30,
    FULL_SDR_NOMINAL = 31,
    FULL_SDR_NORMAL_MAX = 32,
    FULL_SDR_NORMAL_MIN = 33,
    FULL_SDR_SENSOR_MAX = 34,
    FULL_SDR_SENSOR_MIN = 35,
    FULL_SDR_UNR = 36,
    FULL_SDR_UC = 37,
    FULL_SDR_UNC = 38,
    FULL_SDR_LNR = 39,
    FULL_SDR_LC = 40,
    FULL_SDR_LNC = 41,
    FULL_SDR_HYST_POSITIVE = 42,
    FULL_SDR_HYST_NEGATIVE = 43,
    FULL_SDR_SENSOR_INDEX = 44,
    FULL_SDR_SLOT = 45,
    FULL_SDR_OEM = 46,
    FULL_SDR_ID_TYPE_LEN = 47,
    FULL_SDR_NAME = 48,      /* 16 bytes */
    /* compact */
    COMPACT_SDR_SHARING_1 = 23,
    COMPACT_SDR_SHARING_2 = 24,
    COMPACT_SDR_HYST_POSITIVE = 25,
    COMPACT_SDR_HYST_NEGATIVE = 26,
    COMPACT_SDR_SLOT = 29,
    COMPACT_SDR_OEM = 30,
    COMPACT_SDR_ID_TYPE_LEN = 31,
    COMPACT_SDR_NAME = 32,   /* 16 bytes */
    /* FRU device locator */
    FRU_SDR_ACCESS_ADDRESS = 5,
    FRU_SDR_FRU_ID = 6,
    FRU_SDR_LUN_BUS = 7,
    FRU_SDR_CHANNEL = 8,     /* the FRU id again */
    FRU_SDR_DEVICE_TYPE = 10,
    FRU_SDR_DEVICE_MODIFIER = 11,
    FRU_SDR_ENTITY_ID = 12,
    FRU_SDR_ENTITY_INSTANCE = 13,
    FRU_SDR_OEM = 14,
    FRU_SDR_ID_TYPE_LEN = 15,
    FRU_SDR_NAME = 16        /* 16 bytes */
};

/* Byte offsets of an event record, 16 bytes. */
enum {
    SEL_RECORD_ID = 0,       /* 2 bytes */
    SEL_RECORD_TYPE = 2,     /* 0x02, 0xC0, 0xCD, 0xE0 */
    SEL_TIMESTAMP = 3,       /* 4 bytes; disk records: slot number, most significant byte first */
    SEL_GENERATOR_ID = 7,    /* or the entity id */
    SEL_GENERATOR_ID_2 = 8,  /* or an event number, a LUN or a packed index */
    SEL_EVM_REV = 9,
    SEL_SENSOR_TYPE = 10,
    SEL_SENSOR_NUM = 11,
    SEL_EVENT_DIR_TYPE = 12, /* bit 7 direction, bits 0-6 event/reading type */
    SEL_EVENT_DATA_1 = 13,
    SEL_EVENT_DATA_2 = 14,
    SEL_EVENT_DATA_3 = 15,
    SEL_RECORD_SIZE = 16
};

/* Sensor description, 20 bytes.  The card FRU generators get the same record. */
typedef struct SpecificSensorParam {
    uint32_t dwSensorDevType;     /* 0  sensor class word; card device type in the low 16 bits */
    uint8_t ucDeviceType;         /* 4  card type (ucCardType); PSU index of the PSU FRU record */
    uint8_t SlotId;               /* 5  silk number, or PSU index when deleting; 255 none */
    uint16_t wBitmap;             /* 6  THRESH_BIT_...; low byte = disk kind of a disk status sensor */
    uint8_t ucUNR;                /* 8  */
    uint8_t ucUC;                 /* 9  */
    uint8_t ucUNC;                /* 10 */
    uint8_t ucLNC;                /* 11 lower thresholds in this order, unlike the SDR */
    uint8_t ucLC;                 /* 12 */
    uint8_t ucLNR;                /* 13 */
    uint8_t ucHysteresis;         /* 14 0 keeps the template's */
    uint8_t ucBrenmorSensorIndex; /* 15 fan speed: accuracy */
    uint8_t SubDeviceType;        /* 16 sub card type (ucSubCardType); disk kind of a disk temperature sensor */
    uint8_t ucSensorSeq;          /* 17 port number */
    uint8_t ucSecondPort;         /* 18 port number of voltage sensors */
    uint8_t ucReserved;           /* 19 */
} SpecificSensorParam;
OXA_AT(SpecificSensorParam, dwSensorDevType, 0);
OXA_AT(SpecificSensorParam, ucDeviceType, 4);
OXA_AT(SpecificSensorParam, SlotId, 5);
OXA_AT(SpecificSensorParam, wBitmap, 6);
OXA_AT(SpecificSensorParam, ucUNR, 8);
OXA_AT(SpecificSensorParam, ucUC, 9);
OXA_AT(SpecificSensorParam, ucUNC, 10);
OXA_AT(SpecificSensorParam, ucLNC, 11);
OXA_AT(SpecificSensorParam, ucLC, 12);
OXA_AT(SpecificSensorParam, ucLNR, 13);
OXA_AT(SpecificSensorParam, ucHysteresis, 14);
OXA_AT(SpecificSensorParam, ucBrenmorSensorIndex, 15);
OXA_AT(SpecificSensorParam, SubDeviceType, 16);
OXA_AT(SpecificSensorParam, ucSensorSeq, 17);
OXA_AT(SpecificSensorParam, ucSecondPort, 18);
OXA_AT(SpecificSensorParam, ucReserved, 19);
OXA_SIZE(SpecificSensorParam, 20);

/* Sensor information record: one row of a profile's table, 28 bytes. */
typedef struct SnrInfoRec {
    uint32_t dwSensorDevType;      /* 0 */
    uint8_t ucDeviceType;          /* 4 */
    uint8_t SubDeviceType;         /* 5 */
    uint16_t wBitmap;              /* 6 override; 65535 keeps the description's */
    char acName[SENSOR_NAME_SIZE]; /* 8 name pattern */
} SnrInfoRec;
OXA_AT(SnrInfoRec, ucDeviceType, 4);
OXA_AT(SnrInfoRec, SubDeviceType, 5);
OXA_AT(SnrInfoRec, wBitmap, 6);
OXA_AT(SnrInfoRec, acName, 8);
OXA_SIZE(SnrInfoRec, 28);

/* Sensor name query: what the lookups fill, 28 bytes. */
typedef struct SnrQuery {
    uint32_t dwSensorDevType;      /* 0 */
    uint8_t ucDeviceType;          /* 4 */
    uint8_t SubDeviceType;         /* 5 */
    uint16_t wBitmap;              /* 6 */
    char acName[SENSOR_NAME_SIZE]; /* 8 */
} SnrQuery;
OXA_AT(SnrQuery, ucDeviceType, 4);
OXA_AT(SnrQuery, SubDeviceType, 5);
OXA_AT(SnrQuery, wBitmap, 6);
OXA_AT(SnrQuery, acName, 8);
OXA_SIZE(SnrQuery, 28);

/* Profile row; a row with a null pointer is passed over. */
typedef struct SnrSpecificInfoRow {
    uint32_t dwCustomId;       /* 0 */
    const uint8_t *pucSnrCnt;  /* 4 on the target */
    const SnrInfoRec *ptInfo;  /* 8 on the target */
} SnrSpecificInfoRow;
OXA_AT(SnrSpecificInfoRow, pucSnrCnt, sizeof(void *));
OXA_AT(SnrSpecificInfoRow, ptInfo, 2 * sizeof(void *));

/* Card sensor name, 18 bytes. */
typedef struct CardSnrEntry {
    uint8_t ucSensorIndex;         /* 0 */
    char acName[SENSOR_NAME_SIZE]; /* 1 */
} CardSnrEntry;
OXA_AT(CardSnrEntry, acName, 1);
OXA_SIZE(CardSnrEntry, 18);

/* Card family row. */
typedef struct CardSnrRow {
    uint32_t dwSensorDevType;    /* 0 */
    uint8_t ucDeviceType;        /* 4 */
    uint8_t ucCnt;               /* 5 */
    const CardSnrEntry *ptEntry; /* 8 */
} CardSnrRow;
OXA_AT(CardSnrRow, ucDeviceType, 4);
OXA_AT(CardSnrRow, ucCnt, 5);
OXA_AT(CardSnrRow, ptEntry, 8);

/* Card catalogue row, 18 bytes. */
typedef struct PurchaseCardRow {
    uint16_t wDevType; /* 0 */
    char acName[15];   /* 2 */
    uint8_t ucOEM;     /* 17 */
} PurchaseCardRow;
OXA_AT(PurchaseCardRow, acName, 2);
OXA_AT(PurchaseCardRow, ucOEM, 17);
OXA_SIZE(PurchaseCardRow, 18);

/* Disk registry, 401 bytes. */
typedef struct HddRegisterEntry {
    uint8_t slotNum;    /* 0 */
    uint8_t hddType;    /* 1, 0 = unused */
    uint8_t tempFlag;   /* 2 */
    uint8_t statusFlag; /* 3 */
} HddRegisterEntry;
typedef struct HddRegisterInfo {
    uint8_t registerSlotNum;                     /* 0 */
    HddRegisterEntry tHddInfo[HDD_REGISTER_MAX]; /* 1 */
} HddRegisterInfo;
OXA_AT(HddRegisterEntry, hddType, 1);
OXA_AT(HddRegisterEntry, tempFlag, 2);
OXA_AT(HddRegisterEntry, statusFlag, 3);
OXA_SIZE(HddRegisterEntry, 4);
OXA_AT(HddRegisterInfo, tHddInfo, 1);
OXA_SIZE(HddRegisterInfo, 401);

/* Device-table entry, 32 unsigned bytes. */
typedef struct DevTabEntry {
    uint8_t ucDevCode;         /* 0  device code */
    uint8_t ucItem;            /* 1  SDR byte 44 high nibble, fixed channel, or data item number */
    uint8_t ucSubItem;         /* 2  SDR byte 44 low nibble */
    uint8_t ucIndex;           /* 3  SDR byte 45, SDR byte 44, slot, or index */
    uint8_t ucSensorNum;       /* 4  SDR byte 7 */
    uint8_t ucScanFlag;        /* 5  0x80 or 0 */
    uint8_t ucBus;             /* 6  bus of the bus client */
    uint8_t ucAddr;            /* 7  address of the bus client */
    uint8_t ucSubKind;         /* 8  sub-kind or flag */
    uint8_t aucReserved9[7];   /* 9  0 */
    uint8_t ucOwnerLun;        /* 16 SDR byte 6 */
    uint8_t aucReserved17[3];  /* 17 0 */
    uint8_t ucMark;            /* 20 0xFF; 0x25 disks; 0x28 54 V rails */
    uint8_t ucEntityId;        /* 21 SDR byte 8 */
    uint8_t ucEntityInstance;  /* 22 SDR byte 9 */
    uint8_t ucSensorInit;      /* 23 SDR byte 10 */
    uint8_t ucSensorType;      /* 24 SDR byte 12 */
    uint8_t ucEventType;       /* 25 SDR byte 13 */
    uint8_t ucM;               /* 26 SDR byte 24 */
    uint8_t aucReserved27[5];  /* 27 0 */
} DevTabEntry;
OXA_AT(DevTabEntry, ucDevCode, 0);
OXA_AT(DevTabEntry, ucItem, 1);
OXA_AT(DevTabEntry, ucSubItem, 2);
OXA_AT(DevTabEntry, ucIndex, 3);
OXA_AT(DevTabEntry, ucSensorNum, 4);
OXA_AT(DevTabEntry, ucScanFlag, 5);
OXA_AT(DevTabEntry, ucBus, 6);
OXA_AT(DevTabEntry, ucAddr, 7);
OXA_AT(DevTabEntry, ucSubKind, 8);
OXA_AT(DevTabEntry, aucReserved9, 9);
OXA_AT(DevTabEntry, ucOwnerLun, 16);
OXA_AT(DevTabEntry, aucReserved17, 17);
OXA_AT(DevTabEntry, ucMark, 20);
OXA_AT(DevTabEntry, ucEntityId, 21);
OXA_AT(DevTabEntry, ucEntityInstance, 22);
OXA_AT(DevTabEntry, ucSensorInit, 23);
OXA_AT(DevTabEntry, ucSensorType, 24);
OXA_AT(DevTabEntry, ucEventType, 25);
OXA_AT(DevTabEntry, ucM, 26);
OXA_AT(DevTabEntry, aucReserved27, 27);
OXA_SIZE(DevTabEntry, 32);

/* Leak report, 2 bytes. */
typedef struct LeakageInfo {
    uint8_t ucDeassertFlag; /* 0, 1 = the leak is gone */
    uint8_t ucPosition;     /* 1 */
} LeakageInfo;
OXA_AT(LeakageInfo, ucPosition, 1);
OXA_SIZE(LeakageInfo, 2);

/* Specific generator: description (bitmap and NVMe slot may be written back), 64-byte zero-filled buffer, key;
 * returns the SDR length, 0 = failed, 255 = not to be added. */
typedef uint8_t (*GenSpecificSDRFn)(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);

/* Device-table handler: SDR, entry; returns 0, or -1 = no entry for this record. */
typedef int32_t (*GenDevTableFn)(const uint8_t *pucSDR, DevTabEntry *ptEntry);

/* Static generator: next free SDR slot, its entry; returns (record length byte + 5) modulo 256 when it wrote
 * a record, else 0.  Generators for several records take the index first, seven of them last. */
typedef uint8_t (*StaticGenFn)(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
typedef uint8_t (*IndexedGenFn)(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);
typedef uint8_t (*IndexLastGenFn)(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint8_t ucIndex);

#define OXA_ARGS_STATIC (uint8_t * pucSDRRec, DevTabEntry * ptDEVTab)
#define OXA_ARGS_INDEXED (uint8_t ucIndex, uint8_t * pucSDRRec, DevTabEntry * ptDEVTab)
#define OXA_ARGS_INDEXLAST (uint8_t * pucSDRRec, DevTabEntry * ptDEVTab, uint8_t ucIndex)
#define OXA_GEN(shape, name) uint8_t name OXA_ARGS_##shape

/* Row of the add-handler table. */
typedef struct AddSDRHndlrRow {
    uint32_t dwSensorDevType;  /* 0, the whole word is compared */
    GenSpecificSDRFn pfnGen;   /* 4 on the target */
} AddSDRHndlrRow;
OXA_AT(AddSDRHndlrRow, pfnGen, sizeof(void *));

/* Row of the device-table handler table. */
typedef struct SensorDevTabRow {
    uint8_t ucSensorType;   /* 0 */
    uint8_t ucEventType;    /* 1 */
    uint8_t aucZero[2];     /* 2 */
    GenDevTableFn pfnGen;   /* 4 on the target */
} SensorDevTabRow;
OXA_AT(SensorDevTabRow, ucEventType, 1);
OXA_AT(SensorDevTabRow, aucZero, 2);
OXA_AT(SensorDevTabRow, pfnGen, sizeof(void *));

/* ==================================================================================================
 * sdr/gen_specific_sensor_data
 * ================================================================================================== */

/* Specific generators. */
uint8_t GenSpecificTempSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);
uint8_t GenSpecificVoltSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);
uint8_t GenSpecificPowerSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);
uint8_t GenSpecificFanSpeedSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);
uint8_t GenSpecificStatusSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);
uint8_t GenSpecificCardStatusSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);
uint8_t GenSablinGPUCardStatusSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);
uint8_t GenMEMStatusSpecificSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);
uint8_t GenFruOfPsuSpecificSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);
uint8_t GenFruOfSubCardSpecificSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);
uint8_t GenFruOfPurchaseCardSpecificSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);
uint8_t GenFruOfSL200CardSpecificSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);

/* Names.  A length of 0 = not offered, above 16 = refused. */
void getCustomSensorInfo(SnrQuery *ptInfo, uint32_t dwCustomId);
uint8_t getSensorInfo(SnrQuery *ptInfo, uint8_t ucSlot, uint8_t ucPort);
uint8_t getPurchaseCardInfo(SnrQuery *ptInfo, const SpecificSensorParam *ptParam, uint8_t ucSensorIndex);
uint8_t getNameInfo(SnrQuery *ptInfo, uint8_t ucSensorIndex, const CardSnrRow *ptRow);
void getSilkInfo(const SnrQuery *ptInfo, char *pSilkInfo /* 17 */, uint8_t ucNumber, uint32_t dwCustomId,
                 uint8_t ucPlainFlag);
uint8_t strrpc(char *pcOut /* 17 */, const char *pcSrc, const char *pcPattern, const char *pcReplacement);
int32_t getFSlotInfo(uint8_t ucSlot, uint8_t *changedSlot); /* 0 = front slot, -1 = not */
void modifyPcieSlotName(uint8_t *ucInstance, SnrQuery *ptInfo);
uint8_t modifySablinGpuSensorName(SnrQuery *ptInfo);

/* Small lookups of the SDR bytes. */
uint8_t GetSdrFruIdOffset(void);
uint8_t SetSdrFruIdOffset(uint8_t ucOffset); /* returns its argument, changes nothing */
uint8_t getentityid(uint8_t ucDeviceType);
void modifyEntityInstance(uint8_t *entityInstance, uint8_t ucEntityId, uint8_t ucDeviceType);
bool useBrenmorSensorIndex(uint8_t ucDeviceType);
void GetVoltAccuracy(uint8_t ucDeviceType, uint8_t *pucM, uint8_t *pucExp);
void GetGpuPowerAccuracy(uint16_t wBoardId, uint8_t ucDeviceType, uint8_t ucSlot, uint8_t *ucSdrM, uint8_t *ucSdrB);
uint8_t ConvertIntToUnsignedChar(int32_t sdwValue);

/* Card FRU ids and catalogue.  int32_t results: 0 or -1. */
uint8_t GetNoUsedFruIdForPurchaseCard(void); /* 255 = none left */
void SetFruValidState(uint8_t ucFruId);
const char *GetPurchaseCardName(uint16_t wDevType); /* null = not in the catalogue */
int32_t GetPurchaseCardInfoSectionStr(uint16_t wDevType, char *pcSection /* 32 */);
void FillSdrOEMValue(uint16_t wDevType, uint8_t *pucOEM);
int32_t SavePurchaseCardFruId(uint16_t wDevType, const char *pcName, uint8_t ucSlotId, uint8_t ucFruId);
int32_t LoadPurchaseCardFruId(uint16_t wDevType, const char *pcName, uint8_t *slotId, uint8_t *fruId);

/* Disk registry; kind 1 = temperature, 2 = status. */
uint32_t isHasRegister(int32_t sdwSlot, int32_t sdwKind); /* 1 = need not be added again */
uint32_t setHddRegisterInfo(uint32_t dwSlot, uint32_t dwKind, uint32_t dwHddType); /* 0 */
int32_t isNeedRegisterHddSdr(void); /* 1 in profile 16, else 0; -1 = profile id unreadable */
uint8_t getNvmeFrontInfo(int32_t sdwSlot); /* 4 front, 5 otherwise */

/* Profile table and sensor information tables. */
extern const SnrSpecificInfoRow g_atSnrSpecificInfo[10];
extern const uint32_t g_dwSdrCustomCnt; /* 10 */
extern const SnrInfoRec g_atDefaultSnrInfo[48];
extern const SnrInfoRec g_atKestrinSnrInfo[48];
extern const SnrInfoRec g_atPellagoSnrInfo[48];
extern const SnrInfoRec g_atVoranaSnrInfo[56];
extern const SnrInfoRec g_atAstrelSnrInfo[45];
extern const SnrInfoRec g_atQuorralSnrInfo[45];
extern const SnrInfoRec g_atLmSnrInfo[39];
extern const SnrInfoRec g_atDurnowSnrInfo[44];
extern const SnrInfoRec g_atSablinSnrInfo[51];
extern const SnrInfoRec g_atFerriskSnrInfo[14];
extern const uint8_t g_ucSnrDefaultCnt; /* 48 */
extern const uint8_t g_ucSnrKestrinCnt; /* 48 */
extern const uint8_t g_ucSnrPellagoCnt; /* 48 */
extern const uint8_t g_ucSnrVoranaCnt;  /* 56 */
extern const uint8_t g_ucSnrAstrelCnt;  /* 45 */
extern const uint8_t g_ucSnrQuorralCnt; /* 45 */
extern const uint8_t g_ucSnrLmCnt;      /* 39 */
extern const uint8_t g_ucSnrDurnowCnt;  /* 44 */
extern const uint8_t g_ucSnrSablinCnt;  /* 51 */
extern const uint8_t g_ucSnrFerriskCnt; /* 14 */

/* Card sensor names: 31 family rows, then their entry tables in row order. */
extern const CardSnrRow g_atPurchaseCardSnrInfo[31];
extern const CardSnrEntry atBrenmorSensorInfo[14];
extern const CardSnrEntry atHyperTempSensorInfo[7];
extern const CardSnrEntry atHyperPowerSensorInfo[2];
extern const CardSnrEntry atBirenRetimerTempSensorInfo[1];
extern const CardSnrEntry atHGXNSWITCHTempSensorInfo[1];
extern const CardSnrEntry atHGXPSWITCHTempSensorInfo[1];
extern const CardSnrEntry atHGXRETIMERTempSensorInfo[1];
extern const CardSnrEntry atHGXFPGATempSensorInfo[1];
extern const CardSnrEntry atHGXHMCTempSensorInfo[1];
extern const CardSnrEntry atHGXHSCTempSensorInfo[1];
extern const CardSnrEntry atGIGAHYPER3FPGATempSensorInfo[4];
extern const CardSnrEntry atMLUPcieRetimerTempSensorInfo[8];
extern const CardSnrEntry atMLUSdrdesRetimerTempSensorInfo[4];
extern const CardSnrEntry atMLUUBBTempSensorInfo[2];
extern const CardSnrEntry atMLUUBBSfpTempSensorInfo[4];
extern const CardSnrEntry atMLUInletTempSensorInfo[4];
extern const CardSnrEntry atX2000BOXSensorInfo[1];
extern const CardSnrEntry atHalvikTempSensorInfo[8];
extern const CardSnrEntry atILURetimerTempSensorInfo[1];
extern const CardSnrEntry atMETAXRetimerTempSensorInfo[8];
extern const CardSnrEntry atMGXNSWITCHTempSensorInfo[4];
extern const CardSnrEntry atMGXPSWITCHTempSensorInfo[1];
extern const CardSnrEntry atMGXFPGATempSensorInfo[1];
extern const CardSnrEntry atMGXHMCTempSensorInfo[1];
extern const CardSnrEntry atNebulaMatrixSensorInfo[17];
extern const CardSnrEntry atSP925DTempSensorInfo[6];
extern const CardSnrEntry atOxaUbbPowerBrickTempSensorInfo[1];
extern const CardSnrEntry atOxaUbbInletTempSensorInfo[1];
extern const CardSnrEntry atOxaUbbOutletTempSensorInfo[3];
extern const CardSnrEntry atMTRetimerTempSensorInfo[8];
extern const CardSnrEntry atBR166RetimerTempSensorInfo[12];

extern const PurchaseCardRow gPurchaseCardInfo[11]; /* card catalogue */
extern HddRegisterInfo gRegisterInfo;               /* disk registry, writable, zero at load */

/* ==================================================================================================
 * sdr/oxa_specific_sdr
 * ================================================================================================== */

/* 16-bit status in a 32-bit word: 0, 0xFFFE, 0xFFFF, or the IPMI library's code; 0 for a null argument. */
uint32_t SDR_AddSpecificSensor(SpecificSensorParam *ptParam);

/* 0 deleted or nothing to delete, 1 other class word, -1 null argument, or the IPMI library's code. */
int32_t SDR_DeleteSpecificSDR(SpecificSensorParam *ptParam);

/* 20-byte status block; 0 (also for null) or the IPMI library's code. */
uint32_t SendSubCardStatusToFRU(const uint8_t *pSubCardInfo);

extern const AddSDRHndlrRow g_atAddSDRHndlrTab[21];
extern const uint32_t g_dwAddSDRHndlrCnt; /* 21 */

/* internal: addSDRtoIPMI, deleteSDRFromIPMI */

/* ==================================================================================================
 * sdr/specific_sdr_file
 * ================================================================================================== */

/* Record file: device class (10, 11, 224), index, record id, presence. */
void SDR_UpdateSpecificSDRRecFile(uint32_t dwEntityID, uint32_t dwEntityInstance, uint32_t dwRecID,
                                  uint32_t dwPresence);
uint16_t SDR_GetSepcificFruSDRRecID(uint8_t ucEntityID, uint8_t ucEntityInstance); /* 0 = none; spelled so */

/* Extended store.  Read: byte count, write: 0; both -1 without the semaphore, 0 for a null pData or no file. */
int32_t readExtSDRFile(uint8_t *pData, uint32_t dwLen);
int32_t writeExtSDRFile(const uint8_t *pData, uint32_t dwLen);
int32_t readExtDevTabFile(uint8_t *pData, uint32_t dwLen);
int32_t writeExtDevTabFile(const uint8_t *pData, uint32_t dwLen);
int32_t checkSensorExist(const uint8_t *pSDRData); /* 1 = a record of this type and name is stored */
uint32_t getExtDevTabCount(void);

extern uint8_t g_extSdrData[16320]; /* image of the extended SDR file, writable */
OXA_SASSERT(16320 == EXT_SLOT_MAX * SDR_SLOT_SIZE, "g_extSdrData");

/* CPU presence test: 1 = add the sensors of the 0-based CPU. */
uint8_t OXA_CheckifAddCpuSensorByIndex(uint8_t ucCpuIndex);

/* ==================================================================================================
 * sdr/NVRAccess: nothing exported.  Whole-file reading and writing for the extended store;
 * internal: ReadWriteExtSDRFile, extSDRFileSemLock, extSDRFileSemUnLock
 * ================================================================================================== */

/* ==================================================================================================
 * sdr/gen_specific_sensor_devtab
 * ================================================================================================== */

int32_t GenDevTable(const uint8_t *pucSDR, DevTabEntry *ptEntry); /* 0 or -1 */

extern const SensorDevTabRow g_atSensorDevTab[9];
extern const uint32_t g_dwDevTabCnt; /* 9 */

/* internal, reached through the table, all GenDevTableFn: genTempSensorDevTable, genPowerSensorDevTable (two
 * rows), genFanSpeedDevTable, genCardStatusDevTable, genGpuCardStatusDevTable, genMemStatusDevTable,
 * genDiskStatusDevTable, genCardVoltDevTable; internal besides: getSNICGpioCtrlStatus */

/* ==================================================================================================
 * profiles/: one unit per profile
 *
 * Driver: array of 64-byte slots, array of 32-byte entries, count, written once at the very end.
 * Labels of records that a driver builds itself, no functions: Default_GenCPUTempSDR,
 * Default_GenCPUVRTempSDR, Default_GenCPUStatusSDR, Default_GenDIMMTempSDR, Default_GenMEMStatusSDR.
 * ================================================================================================== */

/* ---- profiles/gen_specific_sensor_default ------------------------------------------------------- */

void OXA_AddDefaultStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt);

/* static table: 26 rows, in this order */
OXA_GEN(STATIC, Default_GenFanRedundancySDR);
OXA_GEN(STATIC, Default_GenCPUPowerSDR);
OXA_GEN(STATIC, Default_GenMEMPowerSDR);
OXA_GEN(STATIC, Default_GenHDDPowerSDR);
OXA_GEN(STATIC, Default_GenBoardPowerSDR);
OXA_GEN(STATIC, Default_GenFANPowerSDR);
OXA_GEN(STATIC, Default_GenPCHTempSDR);
OXA_GEN(STATIC, Default_GenPowerButtonSDR);
OXA_GEN(STATIC, Default_GenEventLogSDR);
OXA_GEN(STATIC, Default_GenOSBootSDR);
OXA_GEN(STATIC, Default_GenACPIStatusSDR);
OXA_GEN(STATIC, Default_GenSysRestartSDR);
OXA_GEN(STATIC, Default_GenUIDButtonSDR);
OXA_GEN(STATIC, Default_GenBMCBootUpSDR);
OXA_GEN(STATIC, Default_GenOSStopSDR);
OXA_GEN(STATIC, Default_GenIntrusionSDR);
OXA_GEN(STATIC, Default_GenLeakageSDR);
OXA_GEN(STATIC, Default_GenINPUTTEMPSDR);
OXA_GEN(STATIC, Default_GenENVHUMISDR);
OXA_GEN(STATIC, Default_GenMESDR);
OXA_GEN(STATIC, Default_GenOUTPUTTEMPSDR);
OXA_GEN(STATIC, Default_GenVCC12VSDR);
OXA_GEN(STATIC, Default_GenPDBTEMPSDR);
OXA_GEN(STATIC, Default_GenMiddlePDBTEMPSDR);
OXA_GEN(STATIC, Default_GenNTPSyncFailSDR);
OXA_GEN(STATIC, Default_GenPowerFaultSDR);
extern const StaticGenFn atGenDefaultStaticSDRTab[26];
extern const uint8_t ucDefaultStaticSDRCnt; /* 26 */

/* liquid-cooling table: 12 rows, in this order */
OXA_GEN(STATIC, Default_GenCDUInletTempSDR);
OXA_GEN(STATIC, Default_GenCDUDewTempSDR);
OXA_GEN(STATIC, Default_GenCDUSupplyTempSDR);
OXA_GEN(STATIC, Default_GenCDUDiffTempSDR);
OXA_GEN(STATIC, Default_GenCDUEnvHumiSDR);
OXA_GEN(STATIC, Default_GenCDUISetFanSpdSDR);
OXA_GEN(STATIC, Default_GenCDUSupplyPressSDR);
OXA_GEN(STATIC, Default_GenCDUFlowRateSDR);
OXA_GEN(STATIC, Default_GenCDUReturnTempSDR);
OXA_GEN(STATIC, Default_GenCDUReturnPressSDR);
OXA_GEN(STATIC, Default_GenCDUDiffPressSDR);
OXA_GEN(STATIC, Default_GenCDUECSDR);
extern const StaticGenFn atGenDefaultCDUSDRTab[12];
extern const uint8_t ucDefaultCDUSDRCnt; /* 12 */

/* one record per index */
OXA_GEN(INDEXED, Default_GenSwitchBoardVoltsSDR);                  /* instance 1..4 */
OXA_GEN(INDEXED, Default_GenSwitchBoardCurrentSDR);                /* instance 1..4 */
OXA_GEN(INDEXED, Default_GenSwitchBoardTempSDR);                   /* instance 1..8 */
OXA_GEN(INDEXED, Default_GenCPUProchotSDR);                        /* CPU number, counted from the silk start */
OXA_GEN(INDEXED, Default_GenCPUCOREVoltageSDR);                    /* CPU number, counted from the silk start */
OXA_GEN(INDEXED, Default_GenInputVoltsSDR);                        /* PSU from 1 */
OXA_GEN(INDEXED, Default_GenOutputVoltsSDR);                       /* PSU from 1 */
OXA_GEN(INDEXED, Default_GenPSUStatusSDR);                         /* PSU from 1 */
OXA_GEN(INDEXED, Default_GenPSUTempSDR);                           /* PSU from 1 */
OXA_GEN(INDEXED, Default_GenPSUPInSDR);                            /* PSU from 1 */
OXA_GEN(INDEXED, Default_GenPSUPOutSDR);                           /* PSU from 1 */
OXA_GEN(INDEXED, Default_GenPSURedundantSDR);                      /* PSU group 0, 1 */
OXA_GEN(INDEXED, Default_GenPCIeStatusSDR);                        /* PCIe slot */
OXA_GEN(INDEXED, Default_GenHDDStatusSDR);                         /* disk slot */
OXA_GEN(INDEXED, Default_GenCPU0D0N2SDR);                          /* CPU number to print */
OXA_GEN(INDEXED, Default_GenCPU0D1N2SDR);                          /* CPU number to print */
OXA_GEN(INDEXED, Default_GenCPU1D0N2SDR);                          /* CPU number to print */
OXA_GEN(INDEXED, Default_GenCPU1D1N2SDR);                          /* CPU number to print */
OXA_GEN(INDEXED, Default_GenCDUFanSpeedSDR);                       /* fan 1..6 */
OXA_GEN(INDEXED, Default_GenSwitchBoardInOROutletTempSDR);         /* 0..3 */

/* ---- profiles/gen_specific_sensor_kestrin ------------------------------------------------------- */

void OXA_AddKestrinStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt);

/* static table: 40 rows, in this order */
OXA_GEN(STATIC, Kestrin_GenCPUTjmaxSDR);
OXA_GEN(STATIC, Kestrin_GenCPUTControlSDR);
OXA_GEN(STATIC, Kestrin_GenSYS12VStandbySDR);
OXA_GEN(STATIC, Kestrin_GenHDDTotalPowerSDR);
OXA_GEN(STATIC, Kestrin_GenFanRedundancySDR);
OXA_GEN(STATIC, Kestrin_GenCPUTotalPowerSDR);
OXA_GEN(STATIC, Kestrin_GenFanTotalPowerSDR);
OXA_GEN(STATIC, Kestrin_GenMEMTotalPowerSDR);
OXA_GEN(STATIC, Kestrin_GenBoardPowerSDR);
OXA_GEN(STATIC, Kestrin_GenPCHTempSDR);
OXA_GEN(STATIC, Kestrin_GenUIDButtonSDR);
OXA_GEN(STATIC, Kestrin_GenBMCBootUpSDR);
OXA_GEN(STATIC, Kestrin_GenPowerButtonSDR);
OXA_GEN(STATIC, Kestrin_GenEventLogSDR);
OXA_GEN(STATIC, Kestrin_GenACPIStatusSDR);
OXA_GEN(STATIC, Kestrin_GenRestartInitiatedSDR);
OXA_GEN(STATIC, Kestrin_GenOSStopSDR);
OXA_GEN(STATIC, Kestrin_GenLanLeashLostSDR);
OXA_GEN(STATIC, Kestrin_GenSYSFWProgressSDR);
OXA_GEN(STATIC, Kestrin_GenSystemEventSDR);
OXA_GEN(STATIC, Kestrin_GenCriticalINTSDR);
OXA_GEN(STATIC, Kestrin_GenWatchdog2SDR);
OXA_GEN(STATIC, Kestrin_GenMotherBoardSDR);
OXA_GEN(STATIC, Kestrin_GenIntrusionSDR);
OXA_GEN(STATIC, Kestrin_GenBootErrorSDR);
OXA_GEN(STATIC, Kestrin_GenINLETTEMPSDR);
OXA_GEN(STATIC, Kestrin_GenENVHUMISDR);
OXA_GEN(STATIC, Kestrin_GenLeakageSDR);
OXA_GEN(STATIC, Kestrin_GenOutletTempSDR);
OXA_GEN(STATIC, Kestrin_GenSYS12VSDR);
OXA_GEN(STATIC, Kestrin_GenPDBTEMPSDR);
OXA_GEN(STATIC, Kestrin_GenMiddlePDBTEMPSDR);
OXA_GEN(STATIC, Kestrin_GenNTPSyncFailSDR);
OXA_GEN(STATIC, Kestrin_GenSwitchBoardPowerSDR);
OXA_GEN(STATIC, Kestrin_GenPowerFaultSDR);
OXA_GEN(STATIC, Kestrin_GenSYS54VoltSDR);
OXA_GEN(STATIC, Kestrin_GenPDBBoardPowerSDR);
OXA_GEN(STATIC, Kestrin_GenNICPowerSDR);
OXA_GEN(STATIC, Kestrin_GenGPUBoardPowerSDR);
OXA_GEN(STATIC, Kestrin_GenSwitchGTempSDR);
extern const StaticGenFn atGenKestrinStaticSDRTab[40];
extern const uint8_t ucKestrinStaticSDRCnt; /* 40 */

/* static table of the rack management board: 2 rows, in this order */
OXA_GEN(STATIC, Kestrin_GenENTEMPSDR);
OXA_GEN(STATIC, Kestrin_GenRackPowerSDR);
extern const StaticGenFn atGenKestrinRMCStaticSDRTab[2];
extern const uint8_t ucKestrinRMCStaticSDRCnt; /* 2 */

/* liquid-cooling table: 14 rows, in this order */
OXA_GEN(STATIC, Kestrin_GenCDUInletTempSDR);
OXA_GEN(STATIC, Kestrin_GenCDUCoolantTinSDR);
OXA_GEN(STATIC, Kestrin_GenCDUCoolantToutSDR);
OXA_GEN(STATIC, Kestrin_GenCDUFlowRateSDR);
OXA_GEN(STATIC, Kestrin_GenCDUSupplyPressSDR);
OXA_GEN(STATIC, Kestrin_GenCDUReturnPressSDR);
OXA_GEN(STATIC, Kestrin_GenCDUPsOutPowerSDR);
OXA_GEN(STATIC, Kestrin_GenCDUFanPowerSDR);
OXA_GEN(STATIC, Kestrin_GenCDUPumpPowerSDR);
OXA_GEN(STATIC, Kestrin_GenCDULQDLeakageSDR);
OXA_GEN(STATIC, Kestrin_GenCDULQDLevelSDR);
OXA_GEN(STATIC, Kestrin_GenCDULQDFlowSDR);
OXA_GEN(STATIC, Kestrin_GenCDULQDPressHSDR);
OXA_GEN(STATIC, Kestrin_GenCDULQDPressLSDR);
extern const StaticGenFn atKestrinCDUSDRTab[14];
extern const uint8_t ucKestrinCDUSDRCnt; /* 14 */

/* one record per index */
OXA_GEN(INDEXED, Kestrin_GenPSStatusSDR);                          /* PSU from 1 */
OXA_GEN(INDEXED, Kestrin_GenPSVinSDR);                             /* PSU from 1 */
OXA_GEN(INDEXED, Kestrin_GenPSVoutSDR);                            /* PSU from 1 */
OXA_GEN(INDEXED, Kestrin_GenPwrModuleTempSDR);                     /* power module from 1 */
OXA_GEN(INDEXED, Kestrin_GenUBBRTTempSDR);                         /* retimer from 1 */
OXA_GEN(INDEXED, Kestrin_GenCDUFanSpeedSDR);                       /* fan 1..4 */
OXA_GEN(INDEXED, Kestrin_GenCDUPsVinSDR);                          /* CDU power supply 1, 2 */
OXA_GEN(INDEXED, Kestrin_GenCDUPsVoutSDR);                         /* CDU power supply 1, 2 */
OXA_GEN(INDEXED, Kestrin_GenCDUPsIoutSDR);                         /* CDU power supply 1, 2 */

/* one record per index, index last */
OXA_GEN(INDEXLAST, Kestrin_GenGPU54VoltSDR);                       /* GPU */

/* the profile's own copies of the Default generators of the same suffix */
OXA_GEN(INDEXED, Kestrin_GenCPU0D0N2SDR);                          /* CPU number to print */
OXA_GEN(INDEXED, Kestrin_GenCPU0D1N2SDR);                          /* CPU number to print */
OXA_GEN(INDEXED, Kestrin_GenCPU1D0N2SDR);                          /* CPU number to print */
OXA_GEN(INDEXED, Kestrin_GenCPU1D1N2SDR);                          /* CPU number to print */
OXA_GEN(INDEXED, Kestrin_GenCPUCOREVoltageSDR);                    /* CPU number, counted from the silk start */
OXA_GEN(INDEXED, Kestrin_GenSwitchBoardVoltsSDR);                  /* instance 1..4 */
OXA_GEN(INDEXED, Kestrin_GenSwitchBoardCurrentSDR);                /* instance 1..4 */
OXA_GEN(INDEXED, Kestrin_GenSwitchBoardTempSDR);                   /* instance 1..8 */
OXA_GEN(INDEXED, Kestrin_GenSwitchBoardInOROutletTempSDR);         /* 0..3 */

/* ---- profiles/gen_specific_sensor_astrel -------------------------------------------------------- */

void OXA_AddAstrelStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt);
/* renames a disk record by its instance plus ucSlotOffset; the result has no meaning beyond the argument check. */
int32_t Astrel_ModifyDiskSensorName(uint8_t *pucSDRRec, uint8_t ucSlotOffset);

/* static table: 21 rows, in this order */
OXA_GEN(STATIC, Astrel_GenFanRedundancySDR);
OXA_GEN(STATIC, Astrel_GenCPUTotalPowerSDR);
OXA_GEN(STATIC, Astrel_GenMEMTotalPowerSDR);
OXA_GEN(STATIC, Astrel_GenFanTotalPowerSDR);
OXA_GEN(STATIC, Astrel_GenHDDTotalPowerSDR);
OXA_GEN(STATIC, Astrel_GenBoardPowerSDR);
OXA_GEN(STATIC, Astrel_GenPCHTempSDR);
OXA_GEN(STATIC, Astrel_GenPowerButtonSDR);
OXA_GEN(STATIC, Astrel_GenACPIStatusSDR);
OXA_GEN(STATIC, Astrel_GenSysRestartSDR);
OXA_GEN(STATIC, Astrel_GenBMCBootUpSDR);
OXA_GEN(STATIC, Astrel_GenOSStopSDR);
OXA_GEN(STATIC, Astrel_GenINLETTEMPSDR);
OXA_GEN(STATIC, Astrel_GenENVHUMISDR);
OXA_GEN(STATIC, Astrel_GenOutletTempSDR);
OXA_GEN(STATIC, Astrel_GenSYS12VSDR);
OXA_GEN(STATIC, Astrel_GenPDBTEMPSDR);
OXA_GEN(STATIC, Astrel_GenMiddlePDBTEMPSDR);
OXA_GEN(STATIC, Astrel_GenLeakageSDR);
OXA_GEN(STATIC, Astrel_GenNTPSyncFailSDR);
OXA_GEN(STATIC, Astrel_GenPowerFaultSDR);
extern const StaticGenFn atGenAstrelStaticSDRTab[21];
extern const uint8_t ucAstrelStaticSDRCnt; /* 21 */

/* one record per index */
OXA_GEN(INDEXED, Astrel_GenInputVoltsSDR);                         /* PSU from 1 */
OXA_GEN(INDEXED, Astrel_GenOutputVoltsSDR);                        /* PSU from 1 */
OXA_GEN(INDEXED, Astrel_GenPSUPowerSDR);                           /* PSU from 1 */
OXA_GEN(INDEXED, Astrel_GenPSUStatusSDR);                          /* PSU from 1 */

/* the profile's own copies of the Default generators of the same suffix */
OXA_GEN(INDEXED, Astrel_GenCPU0D0N2SDR);                           /* CPU number to print */
OXA_GEN(INDEXED, Astrel_GenCPU0D1N2SDR);                           /* CPU number to print */
OXA_GEN(INDEXED, Astrel_GenCPU1D0N2SDR);                           /* CPU number to print */
OXA_GEN(INDEXED, Astrel_GenCPU1D1N2SDR);                           /* CPU number to print */
OXA_GEN(INDEXED, Astrel_GenCPUCOREVoltageSDR);                     /* CPU number, counted from the silk start */
OXA_GEN(INDEXED, Astrel_GenSwitchBoardVoltsSDR);                   /* instance 1..4 */
OXA_GEN(INDEXED, Astrel_GenSwitchBoardCurrentSDR);                 /* instance 1..4 */
OXA_GEN(INDEXED, Astrel_GenSwitchBoardTempSDR);                    /* instance 1..8 */
OXA_GEN(INDEXED, Astrel_GenSwitchBoardInOROutletTempSDR);          /* 0..3 */

/* ---- profiles/gen_specific_sensor_pellago ------------------------------------------------------- */

void OXA_AddPellagoStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt);
/* renames a disk record by its instance plus ucSlotOffset; the result has no meaning beyond the argument check. */
int32_t Pellago_ModifyDiskSensorName(uint8_t *pucSDRRec, uint8_t ucSlotOffset);

/* static table: 21 rows, in this order */
OXA_GEN(STATIC, Pellago_GenCPUPowerSDR);
OXA_GEN(STATIC, Pellago_GenMEMPowerSDR);
OXA_GEN(STATIC, Pellago_GenFANPowerSDR);
OXA_GEN(STATIC, Pellago_GenHDDPowerSDR);
OXA_GEN(STATIC, Pellago_GenBoardPowerSDR);
OXA_GEN(STATIC, Pellago_GenPowerButtonSDR);
OXA_GEN(STATIC, Pellago_GenSELStatusSDR);
OXA_GEN(STATIC, Pellago_GenACPIStatusSDR);
OXA_GEN(STATIC, Pellago_GenSysRestartSDR);
OXA_GEN(STATIC, Pellago_GenOSStopSDR);
OXA_GEN(STATIC, Pellago_GenPCHTempSDR);
OXA_GEN(STATIC, Pellago_GenIntrusionSDR);
OXA_GEN(STATIC, Pellago_GenINLETTEMPSDR);
OXA_GEN(STATIC, Pellago_GenENVHUMISDR);
OXA_GEN(STATIC, Pellago_GenOutletTempSDR);
OXA_GEN(STATIC, Pellago_GenSYS12VSDR);
OXA_GEN(STATIC, Pellago_GenPDBTEMPSDR);
OXA_GEN(STATIC, Pellago_GenMiddlePDBTEMPSDR);
OXA_GEN(STATIC, Pellago_GenLeakageSDR);
OXA_GEN(STATIC, Pellago_GenNTPSyncFailSDR);
OXA_GEN(STATIC, Pellago_GenPowerFaultSDR);
extern const StaticGenFn atGenPellagoStaticSDRTab[21];
extern const uint8_t ucPellagoStaticSDRCnt; /* 21 */

/* one record per index */
OXA_GEN(INDEXED, Pellago_GenPSUPowerSDR);                          /* PSU from 1 */
OXA_GEN(INDEXED, Pellago_GenDiskStatusSDR);                        /* disk slot */

/* one record per index, index last */
OXA_GEN(INDEXLAST, Pellago_GenCPUSinglePowerSDR);                  /* CPU number, counted from the silk start */

/* the profile's own copies of the Default generators of the same suffix */
OXA_GEN(INDEXED, Pellago_GenCPU0D0N2SDR);                          /* CPU number to print */
OXA_GEN(INDEXED, Pellago_GenCPU0D1N2SDR);                          /* CPU number to print */
OXA_GEN(INDEXED, Pellago_GenCPU1D0N2SDR);                          /* CPU number to print */
OXA_GEN(INDEXED, Pellago_GenCPU1D1N2SDR);                          /* CPU number to print */
OXA_GEN(INDEXED, Pellago_GenCPUCOREVoltageSDR);                    /* CPU number, counted from the silk start */
OXA_GEN(INDEXED, Pellago_GenSwitchBoardVoltsSDR);                  /* instance 1..4 */
OXA_GEN(INDEXED, Pellago_GenSwitchBoardCurrentSDR);                /* instance 1..4 */
OXA_GEN(INDEXED, Pellago_GenSwitchBoardTempSDR);                   /* instance 1..8 */
OXA_GEN(INDEXED, Pellago_GenSwitchBoardInOROutletTempSDR);         /* 0..3 */

/* ---- profiles/gen_specific_sensor_vorana -------------------------------------------------------- */

void OXA_AddVoranaStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt);

/* static table: 24 rows, in this order */
OXA_GEN(STATIC, Vorana_GenFanRedundancySDR);
OXA_GEN(STATIC, Vorana_GenCPUPowerSDR);
OXA_GEN(STATIC, Vorana_GenMEMPowerSDR);
OXA_GEN(STATIC, Vorana_GenBoardPowerSDR);
OXA_GEN(STATIC, Vorana_GenFANPowerSDR);
OXA_GEN(STATIC, Vorana_GenPCHTempSDR);
OXA_GEN(STATIC, Vorana_GenUIDButtonSDR);
OXA_GEN(STATIC, Vorana_GenBMCBootUpSDR);
OXA_GEN(STATIC, Vorana_GenPowerButtonSDR);
OXA_GEN(STATIC, Vorana_GenSELStatusSDR);
OXA_GEN(STATIC, Vorana_GenACPIPWRSDR);
OXA_GEN(STATIC, Vorana_GenSysRestartSDR);
OXA_GEN(STATIC, Vorana_GenSysShutdownSDR);
OXA_GEN(STATIC, Vorana_GenHDDTotalPowerSDR);
OXA_GEN(STATIC, Vorana_GenSysHealthSDR);
OXA_GEN(STATIC, Vorana_GenINLETTEMPSDR);
OXA_GEN(STATIC, Vorana_GenENVHUMISDR);
OXA_GEN(STATIC, Vorana_GenOutletTempSDR);
OXA_GEN(STATIC, Vorana_GenSYS12VSDR);
OXA_GEN(STATIC, Vorana_GenPDBTEMPSDR);
OXA_GEN(STATIC, Vorana_GenMiddlePDBTEMPSDR);
OXA_GEN(STATIC, Vorana_GenLeakageSDR);
OXA_GEN(STATIC, Vorana_GenNTPSyncFailSDR);
OXA_GEN(STATIC, Vorana_GenPowerFaultSDR);
extern const StaticGenFn atGenVoranaStaticSDRTab[24];
extern const uint8_t ucVoranaStaticSDRCnt; /* 24 */

/* one record per index */
OXA_GEN(INDEXED, Vorana_GenCPUDTSTempSDR);                         /* CPU number, counted from the silk start */
OXA_GEN(INDEXED, Vorana_GenPSUPinSDR);                             /* PSU from 1 */
OXA_GEN(INDEXED, Vorana_GenPSUPoutSDR);                            /* PSU from 1 */
OXA_GEN(INDEXED, Vorana_GenPSUVinSDR);                             /* PSU from 1 */
OXA_GEN(INDEXED, Vorana_GenPSUVoutSDR);                            /* PSU from 1 */
OXA_GEN(INDEXED, Vorana_GenPSUStatusSDR);                          /* PSU from 1 */

/* one record per index, index last */
OXA_GEN(INDEXLAST, Vorana_GenCPUVcoreCurrentSDR);                  /* CPU number, counted from the silk start */
OXA_GEN(INDEXLAST, Vorana_GenCPUVcore1CurrentSDR);                 /* CPU number, counted from the silk start */
OXA_GEN(INDEXLAST, Vorana_GenCPUVSOCCurrentSDR);                   /* CPU number, counted from the silk start */
OXA_GEN(INDEXLAST, Vorana_GenCPUDDRVdd1CurrentSDR);                /* CPU number, counted from the silk start */

/* the profile's own copies of the Default generators of the same suffix */
OXA_GEN(INDEXED, Vorana_GenCPU0D0N2SDR);                           /* CPU number to print */
OXA_GEN(INDEXED, Vorana_GenCPU0D1N2SDR);                           /* CPU number to print */
OXA_GEN(INDEXED, Vorana_GenCPU1D0N2SDR);                           /* CPU number to print */
OXA_GEN(INDEXED, Vorana_GenCPU1D1N2SDR);                           /* CPU number to print */
OXA_GEN(INDEXED, Vorana_GenCPUCOREVoltageSDR);                     /* CPU number, counted from the silk start */
OXA_GEN(INDEXED, Vorana_GenSwitchBoardVoltsSDR);                   /* instance 1..4 */
OXA_GEN(INDEXED, Vorana_GenSwitchBoardCurrentSDR);                 /* instance 1..4 */
OXA_GEN(INDEXED, Vorana_GenSwitchBoardTempSDR);                    /* instance 1..8 */
OXA_GEN(INDEXED, Vorana_GenSwitchBoardInOROutletTempSDR);          /* 0..3 */

/* ---- profiles/gen_specific_sensor_lumora -------------------------------------------------------- */

void OXA_AddLumoraStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt);

/* static table: 28 rows, in this order */
OXA_GEN(STATIC, Lumora_GenInletTempSDR);
OXA_GEN(STATIC, Lumora_GenOutletTempSDR);
OXA_GEN(STATIC, Lumora_GenPCHTempSDR);
OXA_GEN(STATIC, Lumora_GenTotalPowerSDR);
OXA_GEN(STATIC, Lumora_GenCPUPowerSDR);
OXA_GEN(STATIC, Lumora_GenMEMPowerSDR);
OXA_GEN(STATIC, Lumora_GenFANPowerSDR);
OXA_GEN(STATIC, Lumora_GenHDDPowerSDR);
OXA_GEN(STATIC, Lumora_GenSYS12VSDR);
OXA_GEN(STATIC, Lumora_GenENVHUMISDR);
OXA_GEN(STATIC, Lumora_GenUIDButtonSDR);
OXA_GEN(STATIC, Lumora_GenPowerButtonSDR);
OXA_GEN(STATIC, Lumora_GenSysBootSDR);
OXA_GEN(STATIC, Lumora_GenACPIStateSDR);
OXA_GEN(STATIC, Lumora_GenOSBootSDR);
OXA_GEN(STATIC, Lumora_GenBMCBootUpSDR);
OXA_GEN(STATIC, Lumora_GenEventLogSDR);
OXA_GEN(STATIC, Lumora_GenFanRedundancySDR);
OXA_GEN(STATIC, Lumora_GenMESDR);
OXA_GEN(STATIC, Lumora_GenLeakageSDR);
OXA_GEN(STATIC, Lumora_GenPcieStatusSDR);
OXA_GEN(STATIC, Lumora_GenNTPSyncFailSDR);
OXA_GEN(STATIC, Lumora_GenPDBTEMPSDR);
OXA_GEN(STATIC, Lumora_GenMiddlePDBTEMPSDR);
OXA_GEN(STATIC, Lumora_GenPowerFaultSDR);
OXA_GEN(STATIC, Lumora_GenBootErrorSDR);
OXA_GEN(STATIC, Lumora_GenIntrusionSDR);
OXA_GEN(STATIC, Lumora_GenBiosBootUpSDR);
extern const StaticGenFn atGenLumoraStaticSDRTab[28];
extern const uint8_t ucLumoraStaticSDRCnt; /* 28 */

/* not a table row, no index */
OXA_GEN(STATIC, Lumora_GenLanSwitchBoardTempSDR);

/* one record per index */
OXA_GEN(INDEXED, Lumora_GenPSUPInSDR);                             /* PSU from 1 */
OXA_GEN(INDEXED, Lumora_GenPSUPOutSDR);                            /* PSU from 1 */

/* the profile's own copies of the Default generators of the same suffix */
OXA_GEN(INDEXED, Lumora_GenCPU0D0N2SDR);                           /* CPU number to print */
OXA_GEN(INDEXED, Lumora_GenCPU0D1N2SDR);                           /* CPU number to print */
OXA_GEN(INDEXED, Lumora_GenCPU1D0N2SDR);                           /* CPU number to print */
OXA_GEN(INDEXED, Lumora_GenCPU1D1N2SDR);                           /* CPU number to print */
OXA_GEN(INDEXED, Lumora_GenCPUCOREVoltageSDR);                     /* CPU number, counted from the silk start */
OXA_GEN(INDEXED, Lumora_GenSwitchBoardVoltsSDR);                   /* instance 1..4 */
OXA_GEN(INDEXED, Lumora_GenSwitchBoardCurrentSDR);                 /* instance 1..4 */
OXA_GEN(INDEXED, Lumora_GenSwitchBoardTempSDR);                    /* instance 1..8 */
OXA_GEN(INDEXED, Lumora_GenSwitchBoardInOROutletTempSDR);          /* 0..3 */

/* ---- profiles/gen_specific_sensor_quorral ------------------------------------------------------- */

void OXA_AddQuorralStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt);
/* renames a disk record by its instance plus ucSlotOffset; the result has no meaning beyond the argument check. */
int32_t Quorral_ModifyDiskSensorName(uint8_t *pucSDRRec, uint8_t ucSlotOffset);

/* static table: 28 rows, in this order */
OXA_GEN(STATIC, Quorral_GenCPUPowerSDR);
OXA_GEN(STATIC, Quorral_GenMEMPowerSDR);
OXA_GEN(STATIC, Quorral_GenFANPowerSDR);
OXA_GEN(STATIC, Quorral_GenHDDPowerSDR);
OXA_GEN(STATIC, Quorral_GenBoardPowerSDR);
OXA_GEN(STATIC, Quorral_GenBMCBootSDR);
OXA_GEN(STATIC, Quorral_GenPowerButtonSDR);
OXA_GEN(STATIC, Quorral_GenEventLogSDR);
OXA_GEN(STATIC, Quorral_GenSYSBootSDR);
OXA_GEN(STATIC, Quorral_GenACPIStatusSDR);
OXA_GEN(STATIC, Quorral_GenUIDButtonSDR);
OXA_GEN(STATIC, Quorral_GenPCIeStatusSDR);
OXA_GEN(STATIC, Quorral_GenSYSProgressSDR);
OXA_GEN(STATIC, Quorral_GenOSBootSDR);
OXA_GEN(STATIC, Quorral_GenBiosBootUpSDR);
OXA_GEN(STATIC, Quorral_GenMESDR);
OXA_GEN(STATIC, Quorral_GenPCHTempSDR);
OXA_GEN(STATIC, Quorral_GenHDDTempSDR);
OXA_GEN(STATIC, Quorral_GenLeakageSDR);
OXA_GEN(STATIC, Quorral_GenPowerFaultSDR);
OXA_GEN(STATIC, Quorral_GenFWUpdateSDR);
OXA_GEN(STATIC, Quorral_GenINLETTEMPSDR);
OXA_GEN(STATIC, Quorral_GenENVHUMISDR);
OXA_GEN(STATIC, Quorral_GenOutletTempSDR);
OXA_GEN(STATIC, Quorral_GenSYS12VSDR);
OXA_GEN(STATIC, Quorral_GenPDBTEMPSDR);
OXA_GEN(STATIC, Quorral_GenMiddlePDBTEMPSDR);
OXA_GEN(STATIC, Quorral_GenNTPSyncFailSDR);
extern const StaticGenFn atGenQuorralStaticSDRTab[28];
extern const uint8_t ucQuorralStaticSDRCnt; /* 28 */

/* one record per index */
OXA_GEN(INDEXED, Quorral_GenCPUxVRPwrSDR);                         /* CPU number, counted from the silk start */
OXA_GEN(INDEXED, Quorral_GenPxDIMMVRPwrSDR);                       /* CPU number, counted from the silk start */
OXA_GEN(INDEXED, Quorral_GenPSUSypplyDR);                          /* PSU from 1 */

/* one record per index, index last */
OXA_GEN(INDEXLAST, Quorral_GenCpuxMEMG0HotSDR);                    /* CPU number, counted from the silk start */

/* the profile's own copies of the Default generators of the same suffix */
OXA_GEN(INDEXED, Quorral_GenCPU0D0N2SDR);                          /* CPU number to print */
OXA_GEN(INDEXED, Quorral_GenCPU0D1N2SDR);                          /* CPU number to print */
OXA_GEN(INDEXED, Quorral_GenCPU1D0N2SDR);                          /* CPU number to print */
OXA_GEN(INDEXED, Quorral_GenCPU1D1N2SDR);                          /* CPU number to print */
OXA_GEN(INDEXED, Quorral_GenCPUCOREVoltageSDR);                    /* CPU number, counted from the silk start */
OXA_GEN(INDEXED, Quorral_GenSwitchBoardVoltsSDR);                  /* instance 1..4 */
OXA_GEN(INDEXED, Quorral_GenSwitchBoardCurrentSDR);                /* instance 1..4 */
OXA_GEN(INDEXED, Quorral_GenSwitchBoardTempSDR);                   /* instance 1..8 */
OXA_GEN(INDEXED, Quorral_GenSwitchBoardInOROutletTempSDR);         /* 0..3 */

/* ---- profiles/gen_specific_sensor_durnow -------------------------------------------------------- */

void OXA_AddDurnowStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt);

/* static table: 19 rows, in this order */
OXA_GEN(STATIC, Durnow_GenHDDTotalPowerSDR);
OXA_GEN(STATIC, Durnow_GenFanRedundancySDR);
OXA_GEN(STATIC, Durnow_GenCPUTotalPowerSDR);
OXA_GEN(STATIC, Durnow_GenFANPowerSDR);
OXA_GEN(STATIC, Durnow_GenMEMTotalPowerSDR);
OXA_GEN(STATIC, Durnow_GenBoardPowerSDR);
OXA_GEN(STATIC, Durnow_GenPCHTempSDR);
OXA_GEN(STATIC, Durnow_GenPowerButtonSDR);
OXA_GEN(STATIC, Durnow_GenACPIStatusSDR);
OXA_GEN(STATIC, Durnow_GenSysRestartSDR);
OXA_GEN(STATIC, Durnow_GenIntrusionSDR);
OXA_GEN(STATIC, Durnow_GenINPUTTEMPSDR);
OXA_GEN(STATIC, Durnow_GenOutletTempSDR);
OXA_GEN(STATIC, Durnow_GenSYS12VSDR);
OXA_GEN(STATIC, Durnow_GenPDBTEMPSDR);
OXA_GEN(STATIC, Durnow_GenMiddlePDBTEMPSDR);
OXA_GEN(STATIC, Durnow_GenLeakageSDR);
OXA_GEN(STATIC, Durnow_GenNTPSyncFailSDR);
OXA_GEN(STATIC, Durnow_GenPowerFaultSDR);
extern const StaticGenFn atGenDurnowStaticSDRTab[19];
extern const uint8_t ucDurnowStaticSDRCnt; /* 19 */

/* one record per index */
OXA_GEN(INDEXED, Durnow_GenInputVoltsSDR);                         /* PSU from 1 */
OXA_GEN(INDEXED, Durnow_GenOutputVoltsSDR);                        /* PSU from 1 */

/* the profile's own copies of the Default generators of the same suffix */
OXA_GEN(INDEXED, Durnow_GenCPU0D0N2SDR);                           /* CPU number to print */
OXA_GEN(INDEXED, Durnow_GenCPU0D1N2SDR);                           /* CPU number to print */
OXA_GEN(INDEXED, Durnow_GenCPU1D0N2SDR);                           /* CPU number to print */
OXA_GEN(INDEXED, Durnow_GenCPU1D1N2SDR);                           /* CPU number to print */
OXA_GEN(INDEXED, Durnow_GenCPUCOREVoltageSDR);                     /* CPU number, counted from the silk start */
OXA_GEN(INDEXED, Durnow_GenSwitchBoardVoltsSDR);                   /* instance 1..4 */
OXA_GEN(INDEXED, Durnow_GenSwitchBoardCurrentSDR);                 /* instance 1..4 */
OXA_GEN(INDEXED, Durnow_GenSwitchBoardTempSDR);                    /* instance 1..8 */
OXA_GEN(INDEXED, Durnow_GenSwitchBoardInOROutletTempSDR);          /* 0..3 */

/* ---- profiles/gen_specific_sensor_ferrisk ------------------------------------------------------- */

void OXA_AddFerriskStaticSensor(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt);

/* static table: 25 rows, in this order */
OXA_GEN(STATIC, Ferrisk_GenCPUPowerSDR);
OXA_GEN(STATIC, Ferrisk_GenMEMPowerSDR);
OXA_GEN(STATIC, Ferrisk_GenFANPowerSDR);
OXA_GEN(STATIC, Ferrisk_GenHDDPowerSDR);
OXA_GEN(STATIC, Ferrisk_GenBoardPowerSDR);
OXA_GEN(STATIC, Ferrisk_GenFanRedundancySDR);
OXA_GEN(STATIC, Ferrisk_GenACPIStatusSDR);
OXA_GEN(STATIC, Ferrisk_GenIntrusionSDR);
OXA_GEN(STATIC, Ferrisk_GenIPMIWatchdogSDR);
OXA_GEN(STATIC, Ferrisk_GenPowerButtonSDR);
OXA_GEN(STATIC, Ferrisk_GenBiosBootUpSDR);
OXA_GEN(STATIC, Ferrisk_GenOSBootSDR);
OXA_GEN(STATIC, Ferrisk_GenI2CStatusSDR);
OXA_GEN(STATIC, Ferrisk_GenFWUpdateSDR);
OXA_GEN(STATIC, Ferrisk_GenBMCStatusSDR);
OXA_GEN(STATIC, Ferrisk_GenNTPSyncFailSDR);
OXA_GEN(STATIC, Ferrisk_GenSELStatusSDR);
OXA_GEN(STATIC, Ferrisk_GenFrontBp12VSDR);
OXA_GEN(STATIC, Ferrisk_GenRearBp12VSDR);
OXA_GEN(STATIC, Ferrisk_GenFrontBPTempSDR);
OXA_GEN(STATIC, Ferrisk_GenRearBPTempSDR);
OXA_GEN(STATIC, Ferrisk_GenPCIEStatusSDR);
OXA_GEN(STATIC, Ferrisk_GenSysBootInitSDR);
OXA_GEN(STATIC, Ferrisk_GenOSStopSDR);
OXA_GEN(STATIC, Ferrisk_GenPowerFaultSDR);
extern const StaticGenFn atGenFerriskStaticSDRTab[25];
extern const uint8_t ucFerriskStaticSDRCnt; /* 25 */

/* one record per index */
OXA_GEN(INDEXED, Ferrisk_GenPSUVinSDR);                            /* PSU from 1 */
OXA_GEN(INDEXED, Ferrisk_GenPSUVoutSDR);                           /* PSU from 1 */
OXA_GEN(INDEXED, Ferrisk_GenPSUIINSDR);                            /* PSU from 1 */
OXA_GEN(INDEXED, Ferrisk_GenPSUIOutSDR);                           /* PSU from 1 */
OXA_GEN(INDEXED, Ferrisk_GenPSUPInSDR);                            /* PSU from 1 */
OXA_GEN(INDEXED, Ferrisk_GenPSUPOutSDR);                           /* PSU from 1 */
OXA_GEN(INDEXED, Ferrisk_GenPSUTempSDR);                           /* PSU from 1 */
OXA_GEN(INDEXED, Ferrisk_GenPSUStatusSDR);                         /* PSU from 1 */

/* the profile's own copies of the Default generators of the same suffix */
OXA_GEN(INDEXED, Ferrisk_GenCPUCOREVoltageSDR);                    /* CPU number, counted from the silk start */
OXA_GEN(INDEXED, Ferrisk_GenSwitchBoardVoltsSDR);                  /* instance 1..4 */
OXA_GEN(INDEXED, Ferrisk_GenSwitchBoardCurrentSDR);                /* instance 1..4 */
OXA_GEN(INDEXED, Ferrisk_GenSwitchBoardTempSDR);                   /* instance 1..8 */
OXA_GEN(INDEXED, Ferrisk_GenSwitchBoardInOROutletTempSDR);         /* 0..3 */

/* ==================================================================================================
 * threshold/modify_sensor_threshold
 * ================================================================================================== */

/* once at start, with the current profile id */
void InitSdrThresholdInfoFromFile(uint32_t customId);

/* 16-byte name field; 8 bytes: UNR UC UNC LNR LC LNC and two more; mask */
void SaveSdrThresholdInfoInFile(const char *sensorName, const uint8_t *thresholdInfo, uint16_t mask);

/* changes SDR bytes 36..41 in place */
void ModifySensorThresholdByFile(uint8_t *pucSDR);

/* internal: WriteSdrThresholdInfoToFile, updateSdrThreshold */

/* ==================================================================================================
 * sel/oxa_specific_sel (results: 0 or 0xFFFF)
 * ================================================================================================== */

uint32_t ipmi_add_sel_entry(const uint8_t *SelRec /* 16 */);

uint32_t addMemPredictiveFault(uint32_t dimmNum, uint32_t assertFlag);
uint32_t addPOSTErrorSel(void);
uint32_t addS0PowerButtonSel(void);
uint32_t addGpuSlotErrorSel(uint32_t slotNum);
uint32_t addMinorCDUFaultSel(uint32_t reason, uint32_t assertFlag);
uint32_t addMajorCDUFaultSel(uint32_t reason, uint32_t slotNum, uint32_t assertFlag);
uint32_t addNETPortSEL(uint32_t entityId, uint32_t slotNum, uint32_t netPortSilkId, uint32_t deviceIndex, uint8_t port,
                       uint8_t subInterfaceType, uint8_t subIndex, uint8_t eventNum, uint8_t eventDir);
uint32_t addControllerSEL(uint32_t entityId, uint32_t controller, uint32_t eventNum, uint32_t eventDir);
uint32_t addDiskSEL(uint32_t entityId, uint32_t slotNum, uint32_t eventNum, uint32_t eventDir);
uint32_t addLDSEL(uint32_t entityId, uint32_t eventNum, uint32_t ctrlIndex, uint32_t targetId, uint32_t assertFlag);
uint32_t addPEMSEL(uint32_t location, uint32_t eventNum, uint32_t eventDir);
uint32_t addUsageSEL(uint32_t entityId, uint32_t usage, uint32_t nonCritical, uint32_t index, uint32_t eventDir);
uint32_t addSELAlarm(uint32_t entityId, uint32_t reason, uint32_t eventDir);
uint32_t addCPUError(uint32_t cpuNum, uint32_t bankHighBit, uint32_t bankNum, uint32_t offset, uint32_t assertFlag);
uint32_t addMemError(uint32_t dimmNum, uint32_t offset, uint32_t errorNum, uint32_t assertFlag);
uint32_t addI2CStatusSel(uint32_t eventData3, uint32_t assertFlag, uint32_t sensorNumber, uint32_t lun);
uint32_t addTrapSELAlarm(uint32_t entityId, uint32_t reason, uint32_t eventNum, uint32_t eventDir);
uint32_t addPowerDropSEL(uint32_t dropType, uint32_t cpuIndex, uint32_t reasonMask, uint32_t eventDir);
uint32_t addLeakageSel(uint32_t kind, const LeakageInfo *ptLeakageInfo);

#ifdef __cplusplus
}
#endif
#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#endif
