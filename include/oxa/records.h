/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief What all other headers share: numbers, results, byte offsets, records and function types.
 *
 * Conventions of the whole interface
 *   - C linkage and default visibility; fixed-width types, multi-byte fields of IPMI records little-endian.
 *   - The records have the same layout on the 32-bit target and on a 64-bit host, except rows that hold pointers.
 *     Numbers at fields are byte offsets.
 *   - No function allocates memory or keeps a pointer that it was given.  Texts and tables that it hands out are
 *     its own, constant and valid as long as the library is loaded.
 *   - A pointer argument may be null where its function says what happens then.  Nothing else about a pointer is
 *     tested: the memory behind it must be as large as its function says.
 *   - Unless a function says that it is silent it writes log lines through the platform's logger (platform.h).
 *     A null argument that is refused is an error line, counted by sspFailedStat(), unless its function says otherwise
 *     (a few say nothing, warn, or write to the debug channel).
 *
 * Threads.  The library starts no thread and has no lock within the process.  Three groups:
 *   - One thread of the process at a time: the static drivers, all generators (static and specific),
 *     SDR_AddSpecificSensor(), checkSensorExist(), getNvmeFrontInfo(), the disk registry and the card FRU ids.
 *     They share #g_extSdrData, #gRegisterInfo, the FRU id pools and the NIC counter of profile 16, all unguarded.
 *   - Any thread at any time: the event writer and builders, GenDevTable(), the reads and writes of the extended
 *     store into the caller's own memory, getExtDevTabCount(), OXA_CheckifAddCpuSensorByIndex(), and the lookups
 *     that touch nothing but their arguments and constant tables.
 *   - One at a time over all processes, or an update is lost: what reads a whole file and writes it back, that is
 *     SDR_UpdateSpecificSDRRecFile(), SavePurchaseCardFruId() and SaveSdrThresholdInfoInFile(); and the pair of
 *     readExt...File() and writeExt...File() of a caller that changes the extended store.
 *   None of the functions may be called from a signal handler, or from within a platform function that the library
 *   is calling at that moment.
 *
 * Stack.  A call needs up to 1 KB of the library's own, the platform's functions not counted; with exceptions:
 *   2 KB for a static pass, getNvmeFrontInfo() and the specific generators of states, 14.5 KB for the three functions of
 *   thresholds.h, 15.5 KB for the specific generators of full records and SDR_AddSpecificSensor(), 8.2 KB for
 *   getExtDevTabCount().
 *
 * A static pass, in short:
 * \code
 *   static uint8_t aucSlots[STATIC_SLOT_MAX * SDR_SLOT_SIZE];
 *   static DevTabEntry atEntries[STATIC_SLOT_MAX];
 *   uint16_t wCount = 0;
 *   InitSdrThresholdInfoFromFile(CUSTOM_ID_DEFAULT);
 *   OXA_AddDefaultStaticSensor(aucSlots, atEntries, &wCount);
 *   // slots 0 to wCount - 1 hold records, entries 0 to wCount - 1 how to read them; number both:
 *   for (uint16_t w = 0; w < wCount; ++w)
 *       aucSlots[w * SDR_SLOT_SIZE + SDR_SENSOR_NUM] = atEntries[w].ucSensorNum = numberOf(w); // the caller's
 * \endcode
 * A sensor at run time, in short:
 * \code
 *   SpecificSensorParam tParam = {0};
 *   tParam.dwSensorDevType = 0x0100; // temperature
 *   tParam.ucDeviceType = 5;         // of a NIC
 *   tParam.SlotId = 3;
 *   tParam.wBitmap = THRESH_BIT_UC;
 *   tParam.ucUC = 100;               // raw; of a temperature degrees C
 *   uint32_t dwStatus = SDR_AddSpecificSensor(&tParam);
 * \endcode
 * What follows it (extended store, device-table entry, sensor number) stands at GenDevTable(), the coming and going of
 * a power supply at SDR_DeleteSpecificSDR().
 *
 * \section static_pass What all static drivers do
 * OXA_Add<Profile>StaticSensor() walks the facts of the board once and fills two arrays of the caller: slots of 64
 * bytes, an SDR in each, and entries of 32 bytes; entry n belongs to slot n.
 *   - The caller picks the driver by the profile id that it knows; the driver does not ask for it.  Profile 20
 *     has no driver.
 *   - Counting starts at 0 whatever the count holds, and the count is written once, at the very end.
 *   - The size of the arrays is not tested.  #STATIC_SLOT_MAX slots and entries are enough for every profile; a program
 *     that knows its board may work out fewer from "Records at most" in the driver's comment (a machine with 8 CPUs,
 *     128 DIMMs, 12 PSUs and 96 disk slots has 562 to 703 records, by profile).  Slots and entries behind the last
 *     record stay as they were.
 *   - Nothing is added to a repository or to the extended store, sensors are not numbered, and the user's thresholds
 *     are not laid over the records (ModifySensorThresholdByFile()): that is the caller's work.  A sensor's number
 *     stands twice, in byte 7 of the record and in byte 4 of its entry (its LUN in bytes 6 and 16): write both.  The
 *     platform's directory must tell the same number to the event builders (MW_GetSensorNumber() and its like).
 *   - A record that is not wanted, cannot be built or is already in the extended store leaves no gap: the next one
 *     takes its slot.
 *   - A fact that cannot be read is a warning and counts as 0.  Two are fatal: without the number of PSUs or the
 *     board id (on Kestrin besides: the board id before everything else) the pass ends and writes no count.
 *   - A count of 255 for PSUs, DIMMs, PCIe slots, fans or OCP cards, a first printed CPU number that gives
 *     more than 255 with the CPU count, or a backplane that runs beyond slot 255 ends the pass at
 *     once and writes no count, although slots may be filled.
 *   - Boards 0x558B and 0x5580 have no OCP cards; board 0x5497 has no PSUs, OCP cards, fans or PCIe slots and names
 *     temperature, state and first voltage domain of a processor without a number.
 *   - For each record the extended store is read anew (semaphore, open, seek, read, close, semaphore).  Records of the
 *     pass are not compared with each other.
 *
 * \section static_instances Entity instances of static records
 * Entity instances (SDR byte 9) begin at 0x60, some at 0xE0 (bit 7 set).  What the index adds, and what stands in byte
 * 3 of the entry:
 *   - Sensors of the static tables: nothing, byte 3 is 0 (of the rack's power 0xFF).  They have 0x60, but the middle
 *     power distribution board 0x61, and 0xE0: the 54 V supply of the system, backplanes, powers of single boards (NIC,
 *     GPU, power distribution, switch board), Lumora's total power and LAN switch board, the rack management board, the
 *     liquid cooling.
 *   - CPUs: the CPU counted from 0 (printed number less the first printed one), also in byte 3.  Core volts keep 0x60;
 *     rail currents, the power of a single CPU and hot memory keep 0xE0: byte 3 alone tells the CPU.  Voltage domains
 *     keep 0x60 (the first one 0xE0 on board 0x5497) with byte 3 = 0: the item (byte 1) tells the domain, 1 to 4.
 *   - PSUs: the PSU from 1, also in byte 3.  Volts keep 0x60.  PSU groups: the group, 0 or 1.
 *   - DIMMs: the DIMM from 0.  DIMM groups: the group from 0.  PCIe slots: the slot.  Fans: the printed number.
 *   - Disks: no 0x60, the instance is the disk slot from 0 (of a state also byte 29).  Disk groups: the backplane from
 *     0.
 *   - OCP cards: the position from 1; byte 3 of the error sensor is what RestoreOcpSlot() says.
 *   - Switch board, switch chips, power modules, retimers: which of them from 1; switch-board air 0 to 3.  GPU supplies
 *     keep 0x60, byte 3 is the GPU from 1.
 *   - Fans and power supplies of a liquid-cooling unit: 0xE0 and which from 1; byte 3 of Default's fans is 0.
 *
 * \section specific_generators What all specific generators do
 * See #GenSpecificSDRFn.
 */
#ifndef OXA_RECORDS_H
#define OXA_RECORDS_H

#include <stddef.h>
#include <stdint.h>

/** Stops the compiler where a condition does not hold. */
#ifndef OXA_SASSERT
#ifdef __cplusplus
#define OXA_SASSERT(cond, text) static_assert(cond, text)
#else
#define OXA_SASSERT(cond, text) _Static_assert(cond, text)
#endif
#endif
/** Asserts where a field of a record stands. */
#define OXA_AT(type, field, offset) OXA_SASSERT(offsetof(type, field) == (offset), #type "." #field)
/** Asserts how large a record is. */
#define OXA_SIZE(type, size) OXA_SASSERT(sizeof(type) == (size), #type)

#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif
#ifdef __cplusplus
extern "C" {
#endif

#define SDR_SLOT_SIZE 64u      /**< one SDR slot, in bytes */
#define DEV_TAB_ENTRY_SIZE 32u /**< one device-table entry, in bytes */
/**
 * Slots and entries that hold every static set, 550,080 bytes together.
 *
 * It is "Records at most" of the Kestrin driver, whose sum is the largest, with every count at its limit: 255 CPUs, 254
 * DIMMs, PSUs, fans, PCIe slots and OCP cards, 255 disk slots on 32 backplanes, 255 switch chips.  A platform whose
 * backplanes share disk slots has each shared slot built again: then it is not enough.
 */
#define STATIC_SLOT_MAX 5730u
#define SENSOR_NAME_SIZE 17u   /**< room for a sensor name: 16 characters and a NUL */
#define EXT_SLOT_MAX 255u      /**< slots of the extended store */
#define HDD_REGISTER_MAX 100u  /**< entries of the disk registry */

/** Profile ids: which customer's set a machine has.  The platform tells it (IPMI_LoadCustomID(), MW_GetCustomid()). */
enum {
    CUSTOM_ID_DEFAULT = 0, /**< the profile of machines without one */
    CUSTOM_ID_KESTRIN = 1,
    CUSTOM_ID_PELLAGO = 2,
    CUSTOM_ID_VORANA = 3,
    CUSTOM_ID_ASTREL = 4,
    CUSTOM_ID_QUORRAL = 6,
    CUSTOM_ID_LUMORA = 7,
    CUSTOM_ID_DURNOW = 11,
    CUSTOM_ID_FERRISK = 16,
    CUSTOM_ID_SABLIN = 20 /**< has run-time sensors only, no driver */
};

/** Results.  Functions that return uint32_t or int32_t for "did it work" say which of these they give. */
enum {
    OXA_OK = 0,                 /**< done */
    OXA_NOT_SUPPORTED = 0xFFFE, /**< sensor add: no generator for the class word, or the generator declined */
    OXA_FAILED = 0xFFFF,        /**< sensor add, event writer and builders: failed */
    GEN_SDR_FAILED = 0,         /**< specific generators: failed, nothing to add */
    GEN_SDR_SKIPPED = 255       /**< specific generators: not supported or already present */
};

/** Threshold bits of a description's bitmap, of SDR bytes 18 and 19 and of a stored mask. */
enum {
    THRESH_BIT_LNC = 0x01, /**< lower non-critical */
    THRESH_BIT_LC = 0x02,  /**< lower critical */
    THRESH_BIT_LNR = 0x04, /**< lower non-recoverable */
    THRESH_BIT_UNC = 0x08, /**< upper non-critical */
    THRESH_BIT_UC = 0x10,  /**< upper critical */
    THRESH_BIT_UNR = 0x20  /**< upper non-recoverable */
};

/**
 * Byte offsets of an SDR.  A record is at most 64 bytes long: 32 to 48 of a compact one, 48 to 64 of a full one, 16 to
 * 32 of a FRU device locator, the name last.  A static record fills its slot to byte 63: behind the name 0xFF up to the
 * end of the 16 bytes of the name, then 0.
 */
enum {
    SDR_RECORD_ID = 0,      /**< 2 bytes; 0 in what this library builds, the repository assigns it */
    SDR_VERSION = 2,        /**< 0x51 */
    SDR_RECORD_TYPE = 3,    /**< 0x01 full, 0x02 compact, 0x11 FRU device locator */
    SDR_RECORD_LENGTH = 4,  /**< bytes after byte 4 */
    /* full and compact */
    SDR_OWNER_ID = 5,       /**< 0x20, the BMC */
    SDR_OWNER_LUN = 6, /**< 0 */
    SDR_SENSOR_NUM = 7,     /**< 0 in what this library builds: whoever takes the records over numbers them */
    SDR_ENTITY_ID = 8, /**< what the sensor belongs to, IPMI entity */
    SDR_ENTITY_INSTANCE = 9, /**< which of them; 0x60 and up is counted within the controller */
    SDR_SENSOR_INIT = 10,
    SDR_SENSOR_CAPS = 11,
    SDR_SENSOR_TYPE = 12, /**< IPMI sensor type */
    SDR_EVENT_TYPE = 13, /**< 0x01 threshold, else the kind of states */
    SDR_ASSERT_MASK = 14,   /**< 2 bytes */
    SDR_DEASSERT_MASK = 16, /**< 2 bytes */
    SDR_READING_MASK = 18,  /**< 2 bytes; full: readable, then settable thresholds */
    SDR_UNITS_1 = 20, /**< 0x80 two's complement, 0x01 percentage, 0x02 rate */
    SDR_BASE_UNIT = 21,
    SDR_MODIFIER_UNIT = 22,
    /* full */
    FULL_SDR_LINEARIZATION = 23,
    FULL_SDR_M_VALUE_LS_8_BITS = 24, /**< M: value = (M x raw + B) x 10^R */
    FULL_SDR_M_MS_TOLERANCE = 25,
    FULL_SDR_B_VALUE_LS_8_BITS = 26, /**< B */
    FULL_SDR_B_MS_ACCURACY = 27,
    FULL_SDR_ACCURACY_DIRECTION = 28,
    FULL_SDR_EXPONENTS = 29, /**< R high nibble, B low nibble */
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
    FULL_SDR_SENSOR_INDEX = 44, /**< which sensor of its device, for the scanner */
    FULL_SDR_SLOT = 45, /**< slot, for the scanner */
    FULL_SDR_OEM = 46, /**< card type, for the scanner */
    FULL_SDR_ID_TYPE_LEN = 47, /**< 0xC0 + length of the name */
    FULL_SDR_NAME = 48,      /**< 16 bytes */
    /* compact */
    COMPACT_SDR_SHARING_1 = 23,
    COMPACT_SDR_SHARING_2 = 24,
    COMPACT_SDR_HYST_POSITIVE = 25,
    COMPACT_SDR_HYST_NEGATIVE = 26,
    COMPACT_SDR_SLOT = 29, /**< disk slot, for the scanner */
    COMPACT_SDR_OEM = 30, /**< card type, for the scanner */
    COMPACT_SDR_ID_TYPE_LEN = 31, /**< 0xC0 + length of the name */
    COMPACT_SDR_NAME = 32,   /**< 16 bytes */
    /* FRU device locator */
    FRU_SDR_ACCESS_ADDRESS = 5, /**< 0x20 */
    FRU_SDR_FRU_ID = 6, /**< FRU id */
    FRU_SDR_LUN_BUS = 7,
    FRU_SDR_CHANNEL = 8,     /**< the FRU id again */
    FRU_SDR_DEVICE_TYPE = 10,
    FRU_SDR_DEVICE_MODIFIER = 11,
    FRU_SDR_ENTITY_ID = 12, /**< 0x0A power supply, 0x0B card, 0xE0 base board */
    FRU_SDR_ENTITY_INSTANCE = 13, /**< PSU index or slot */
    FRU_SDR_OEM = 14, /**< OEM byte of the card catalogue */
    FRU_SDR_ID_TYPE_LEN = 15, /**< 0xC0 + length of the name */
    FRU_SDR_NAME = 16        /**< 16 bytes */
};

/** Byte offsets of an event record, #SEL_RECORD_SIZE bytes. */
enum {
    SEL_RECORD_ID = 0,       /**< 2 bytes; 0, the event log assigns it */
    SEL_RECORD_TYPE = 2,     /**< 0x02, 0xC0, 0xCD, 0xE0 */
    SEL_TIMESTAMP = 3,       /**< 4 bytes; 0, the event log fills it; disk records: slot, highest byte first */
    SEL_GENERATOR_ID = 7,    /**< or the entity id */
    SEL_GENERATOR_ID_2 = 8,  /**< or an event number, a LUN or a packed index */
    SEL_EVM_REV = 9, /**< 0x04, but for two builders */
    SEL_SENSOR_TYPE = 10, /**< IPMI sensor type */
    SEL_SENSOR_NUM = 11, /**< from the platform's sensor directory, or 0 */
    SEL_EVENT_DIR_TYPE = 12, /**< bit 7 direction, bits 0-6 event/reading type */
    SEL_EVENT_DATA_1 = 13, /**< first byte of event data */
    SEL_EVENT_DATA_2 = 14, /**< second */
    SEL_EVENT_DATA_3 = 15, /**< third */
    SEL_RECORD_SIZE = 16     /**< bytes of an event record */
};

/**
 * Sensor description: what a sensor that comes or goes at run time is, 20 bytes.
 *
 * It goes into SDR_AddSpecificSensor() and the specific generators.  Thresholds and hysteresis are raw readings.  Zero
 * the record first: a field that a sensor does not use is not looked at, except that bits of the bitmap take thresholds
 * along.  A specific generator may write #wBitmap (the profile's override) and, for disks, #SlotId (the printed number)
 * back: fill the record afresh for the next call.
 */
typedef struct SpecificSensorParam {
    uint32_t dwSensorDevType;     /**< 0  sensor class word, see #g_atAddSDRHndlrTab; of a card FRU its device type */
    uint8_t ucDeviceType;         /**< 4  card type, see specific_sensors.h; of a PSU's FRU the PSU to add, from 1 */
    uint8_t SlotId;               /**< 5  slot number as printed, may be 0; disk slot; PSU to delete; 255 none */
    uint16_t wBitmap;             /**< 6  its thresholds (THRESH_BIT_...); of a disk status: low byte = disk kind */
    uint8_t ucUNR;                /**< 8  upper non-recoverable */
    uint8_t ucUC;                 /**< 9  upper critical */
    uint8_t ucUNC;                /**< 10 upper non-critical */
    uint8_t ucLNC;                /**< 11 lower non-critical; these three in this order, unlike in the SDR */
    uint8_t ucLC;                 /**< 12 lower critical */
    uint8_t ucLNR;                /**< 13 lower non-recoverable */
    uint8_t ucHysteresis;         /**< 14 both hystereses; 0 keeps the template's */
    uint8_t ucBrenmorSensorIndex; /**< 15 which sensor of a card family; of a fan: accuracy, SDR byte 45 */
    uint8_t SubDeviceType;        /**< 16 sub card type, see specific_sensors.h; disk kind of a disk temperature */
    uint8_t ucSensorSeq;          /**< 17 port number of a temperature: '#' of its name, low nibble of SDR byte 44 */
    uint8_t ucSecondPort;         /**< 18 port number of a voltage: '#' of its name */
    uint8_t ucReserved;           /**< 19 not read */
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

/**
 * Sensor information record: one row of a profile's table of run-time sensors, 28 bytes.
 * The first row whose class word, card type and sub card type agree gives the name.
 */
typedef struct SnrInfoRec {
    uint32_t dwSensorDevType;      /**< 0  class word */
    uint8_t ucDeviceType;          /**< 4  card type */
    uint8_t SubDeviceType;         /**< 5  sub card type */
    uint16_t wBitmap;              /**< 6  threshold bitmap that replaces the description's; 65535 keeps it */
    char acName[SENSOR_NAME_SIZE]; /**< 8  name pattern: '*' becomes the slot number, '#' the port number */
} SnrInfoRec;
OXA_AT(SnrInfoRec, ucDeviceType, 4);
OXA_AT(SnrInfoRec, SubDeviceType, 5);
OXA_AT(SnrInfoRec, wBitmap, 6);
OXA_AT(SnrInfoRec, acName, 8);
OXA_SIZE(SnrInfoRec, 28);

/** Sensor name query: the lookups read its first three fields and fill the last two, 28 bytes. */
typedef struct SnrQuery {
    uint32_t dwSensorDevType;      /**< 0  wanted: class word */
    uint8_t ucDeviceType;          /**< 4  wanted: card type */
    uint8_t SubDeviceType;         /**< 5  wanted: sub card type */
    uint16_t wBitmap;              /**< 6  found: the row's override, else what the caller put in */
    char acName[SENSOR_NAME_SIZE]; /**< 8  found: the name pattern, later the name, NUL-terminated */
} SnrQuery;
OXA_AT(SnrQuery, ucDeviceType, 4);
OXA_AT(SnrQuery, SubDeviceType, 5);
OXA_AT(SnrQuery, wBitmap, 6);
OXA_AT(SnrQuery, acName, 8);
OXA_SIZE(SnrQuery, 28);

/** Row of the profile table: which table of run-time sensors a profile has.  One with a null pointer is passed over. */
typedef struct SnrSpecificInfoRow {
    uint32_t dwCustomId;       /**< 0  profile id */
    const uint8_t *pucSnrCnt;  /**< 4 on the target: how many rows */
    const SnrInfoRec *ptInfo;  /**< 8 on the target: the rows */
} SnrSpecificInfoRow;
OXA_AT(SnrSpecificInfoRow, pucSnrCnt, sizeof(void *));
OXA_AT(SnrSpecificInfoRow, ptInfo, 2 * sizeof(void *));

/** One sensor of a card family and its name, 18 bytes. */
typedef struct CardSnrEntry {
    uint8_t ucSensorIndex;         /**< 0  ucBrenmorSensorIndex of the description */
    char acName[SENSOR_NAME_SIZE]; /**< 1  the name as it is, nothing is put into it */
} CardSnrEntry;
OXA_AT(CardSnrEntry, acName, 1);
OXA_SIZE(CardSnrEntry, 18);

/** Row of the card families: sensors with names of their own, whatever the profile. */
typedef struct CardSnrRow {
    uint32_t dwSensorDevType;    /**< 0  class word */
    uint8_t ucDeviceType;        /**< 4  card type */
    uint8_t ucCnt;               /**< 5  how many entries */
    const CardSnrEntry *ptEntry; /**< 8  the entries */
} CardSnrRow;
OXA_AT(CardSnrRow, ucDeviceType, 4);
OXA_AT(CardSnrRow, ucCnt, 5);
OXA_AT(CardSnrRow, ptEntry, 8);

/** Row of the card catalogue: cards that get a FRU locator, 18 bytes. */
typedef struct PurchaseCardRow {
    uint16_t wDevType; /**< 0  card device type = class word; its low byte is the FRU entity id */
    char acName[15];   /**< 2  name of the card, NUL-terminated */
    uint8_t ucOEM;     /**< 17 OEM byte of its locator */
} PurchaseCardRow;
OXA_AT(PurchaseCardRow, acName, 2);
OXA_AT(PurchaseCardRow, ucOEM, 17);
OXA_SIZE(PurchaseCardRow, 18);

/** One disk of the registry, 4 bytes. */
typedef struct HddRegisterEntry {
    uint8_t slotNum;    /**< 0  disk slot */
    uint8_t hddType;    /**< 1  disk kind (1 NVMe, 2 SATA, 3 SAS); 0 = unused */
    uint8_t tempFlag;   /**< 2  1 once the temperature record was added */
    uint8_t statusFlag; /**< 3  1 once the status record was added */
} HddRegisterEntry;
/** Disk registry: which disks have their run-time records already, 401 bytes. */
typedef struct HddRegisterInfo {
    uint8_t registerSlotNum;                     /**< 0  entries in use */
    HddRegisterEntry tHddInfo[HDD_REGISTER_MAX]; /**< 1  the disks, in the order they came */
} HddRegisterInfo;
OXA_AT(HddRegisterEntry, hddType, 1);
OXA_AT(HddRegisterEntry, tempFlag, 2);
OXA_AT(HddRegisterEntry, statusFlag, 3);
OXA_SIZE(HddRegisterEntry, 4);
OXA_AT(HddRegisterInfo, tHddInfo, 1);
OXA_SIZE(HddRegisterInfo, 401);

/**
 * Device-table entry: how the sensor scanner reads the sensor of one SDR, 32 unsigned bytes.
 *
 * Static generators and drivers write it beside their record, GenDevTable() fills that of a run-time sensor and says
 * there which bytes it uses.  Of a static record:
 *   - ucSubItem and ucSubKind are 0, ucSensorNum and ucOwnerLun too, bus and address are those of the platform's bus
 *     client where the sensor asks for one, else 0.
 *   - ucIndex is which of several, see "Entity instances of static records"; 0 where there is one.
 *   - ucM is SDR byte 24 of a full record, 0 of a compact one.
 *   - ucDevCode and ucItem say what is read.  The numbers belong to the scanner, and 0 is one of them (the air inlet):
 *     the count alone tells which entries are in use.
 *
 * Device codes of static records; in brackets items, where a device has several, and an s where ucScanFlag is 0x80:
 *   - Air and board: 0x00 inlet s; 0x40 outlet; 0x41 humidity s; 0x42 power distribution board (1), middle one (2) s;
 *     0x43 chipset; 0x44 12 V supply (1), its standby (2, s); 0x95 54 V supply of the system (1, s), of a GPU (2);
 *     0x99 backplane temperature, 0x9A backplane 12 V, front (1), rear (2).
 *   - Power: 0x3B rack s; 0x9E machine s; 0xD9 all CPUs (1), memory (2), one CPU (3), disks (4), fans (5); 0x93 NIC
 *     (1), power distribution board (2), GPU board (3), switch board (4); 0x5D regulator of a CPU (1), of DIMMs (2);
 *     0x58 temperature of a power module.
 *   - CPUs: 0x49 temperature (1), Tjmax (2), Tcontrol (3), DTS (4); 0x4A regulator temperature; 0x4B core volts;
 *     0x4C voltage domain (1 to 4); 0x5C rail current (1 to 4); 0x4D state (1), throttling (2), hot memory (3).
 *   - Memory: 0x4E temperature of a DIMM (1), of a group (2); 0xA9 state of a DIMM.
 *   - PSUs, all s: 0x4F volts in (1), out (2); 0x50 power in (1), out (2), the only one (3); 0x51 current in (1),
 *     out (2); 0x52 temperature; 0x53 state (1), redundancy (2), fan (3), supply (4).
 *   - Fans, all s: 0x54 presence (1), redundancy (2).
 *   - Disks: 0x56 temperature of a group (1), the highest (2); 0xF0 state; 0xF2 temperature of an NVMe disk.
 *   - Cards: 0x57 state of a PCIe slot; 0xCD temperature of an OCP card s; 0xAA its error; 0x59 retimer of the GPU base
 *     board; 0x5B LAN switch board.
 *   - Switch board: 0x45 volts; 0x46 current; 0x47 temperature; 0x48 air (index + 1); 0x5A switch chip (1), group (2).
 *   - Liquid cooling, all s: 0x5E leak; 0xA6 Default's unit (1 to 13); 0x8F Kestrin's (1 to 18).
 *   - System: 0x55 a state each (1 to 26) s, the mainboard's (64).
 */
typedef struct DevTabEntry {
    uint8_t ucDevCode;         /**< 0  device code: which reader of the scanner; 0 is one */
    uint8_t ucItem;            /**< 1  item: which of the device's readings */
    uint8_t ucSubItem;         /**< 2  low nibble of SDR byte 44 (port), of some run-time sensors */
    uint8_t ucIndex;           /**< 3  which of several devices: number, slot or sensor index */
    uint8_t ucSensorNum;       /**< 4  sensor number, SDR byte 7; whoever numbers the record writes it here too */
    uint8_t ucScanFlag;        /**< 5  0x80 or 0: a flag of the scanner, given by the kind of sensor */
    uint8_t ucBus;             /**< 6  bus of the bus client */
    uint8_t ucAddr;            /**< 7  address of the bus client */
    uint8_t ucSubKind;         /**< 8  run-time sensors: card type, or 1 of NICs; else 0 */
    uint8_t aucReserved9[7];   /**< 9  always 0 */
    uint8_t ucOwnerLun;        /**< 16 SDR byte 6 */
    uint8_t aucReserved17[3];  /**< 17 always 0 */
    uint8_t ucMark;            /**< 20 0xFF; 0x25 disks; 0x28 54 V rails */
    uint8_t ucEntityId;        /**< 21 SDR byte 8 */
    uint8_t ucEntityInstance;  /**< 22 SDR byte 9 */
    uint8_t ucSensorInit;      /**< 23 SDR byte 10 */
    uint8_t ucSensorType;      /**< 24 SDR byte 12 */
    uint8_t ucEventType;       /**< 25 SDR byte 13 */
    uint8_t ucM;               /**< 26 SDR byte 24, M, or 0: GenDevTable() copies it for some kinds only */
    uint8_t aucReserved27[5];  /**< 27 always 0 */
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

/** Leak report, 2 bytes: what addLeakageSel() is told. */
typedef struct LeakageInfo {
    uint8_t ucDeassertFlag; /**< 0  1 = the leak is gone, any other value = it is there */
    uint8_t ucPosition;     /**< 1  where; the low 4 bits go into the record */
} LeakageInfo;
OXA_AT(LeakageInfo, ucPosition, 1);
OXA_SIZE(LeakageInfo, 2);

/**
 * Specific generator: turns a sensor description into an SDR.
 *
 * All of them: a null description or buffer is an error line and #GEN_SDR_FAILED.  The buffer is written only when a
 * length is returned, and only the length's bytes of it; a FRU locator whose last copy fails may leave anything in it
 * and returns #GEN_SDR_FAILED.  The platform is asked for the profile id, except by the sub
 * card's; generators of sensors ask the extended store whether a record of this type and name is stored already
 * (semaphore, /var/tmp/extSDR.dat), generators of full records lay the user's thresholds over the record.  One thread
 * at a time.  A generator does not add its record anywhere: SDR_AddSpecificSensor() does.
 *
 * Entity (byte 8): getentityid() of the card type, of fans 0x1D, of disk states 4, of memory states 0x0B.  Instance
 * (byte 9): 0x60 + SlotId, modulo 256 (GPU in slot 1: 0x0B, 0x61), with bit 7 where modifyEntityInstance() sets it, but
 * not of powers.  Slot 255, the only RAID card (type 4) and memory states keep 0x60 (a fan adds 255 too), a disk
 * temperature has the printed number without 0x60, a disk state 0; an SFP of the MLU base board (41) adds its sensor
 * index as well, ports of OCP cards in profile 7 (Lumora) have bit 7 too.
 *
 * \param[in,out] ptParam  description; wBitmap may be replaced by the profile's override, SlotId of a disk by the
 *                         number that is printed at it
 * \param[out]    pucSDR   64 bytes for the record, zero-filled by the caller
 * \param[in]     dwKey    class word of the table's row; no generator reads it
 * \return length of the record (32 to 64 of a sensor, 16 to 32 of a FRU locator), #GEN_SDR_FAILED (0) or
 *         #GEN_SDR_SKIPPED (255): not offered on this board or profile, or already stored
 */
typedef uint8_t (*GenSpecificSDRFn)(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);

/**
 * Device-table handler: fills the device-table entry of an SDR of its kind.
 *
 * The handlers do not test for null: GenDevTable() does.
 * \param[in]     pucSDR   the record, 64 bytes
 * \param[in,out] ptEntry  the entry, 32 bytes, filled even when -1 is returned; an entry of a power sensor that carries
 *                         a device code already is left as it is
 * \return 0, or -1 = no entry for a record with this OEM byte
 */
typedef int32_t (*GenDevTableFn)(const uint8_t *pucSDR, DevTabEntry *ptEntry);

/**
 * Static generator: builds one sensor's record and its device-table entry.
 *
 * All static generators, also those with an index: each asks the platform whether the board has its sensor, and builds
 * the record under its profile's name for it.  It does not ask for the profile id.  A null pointer is an error line and
 * 0.  It asks the extended store whether a record of this type and name is stored already (semaphore,
 * /var/tmp/extSDR.dat).  One thread at a time.  With the result 0 both targets are as they were (unless the platform's
 * memcpy_s() fails on the entry after it took the record).
 *
 * \param[out] pucSDRRec  slot for the record, 64 bytes, written whole
 * \param[out] ptDEVTab   its device-table entry, written whole
 * \return length of the record, that is record length byte + 5 (32 to 48 compact, 48 to 64 full), when both were
 *         written; 0 when not: not supported, not present, already stored, no name, or failed
 */
typedef uint8_t (*StaticGenFn)(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);

/**
 * Static generator of one record per index; otherwise as #StaticGenFn.
 *
 * The range of the index stands at each generator.  Where the index moves the entity instance (byte 9) and that would
 * pass 255, there is no record (of a PSU's volts, power, current and temperature the instance then stays).  CPUs go by
 * their printed number; the platform is asked for the first one each time, and a number below it counts as the first.
 *
 * \param[in]  ucIndex    which of the parts: number of the PSU, CPU, slot, ...
 * \param[out] pucSDRRec  slot for the record, 64 bytes
 * \param[out] ptDEVTab   its device-table entry
 * \return as #StaticGenFn
 */
typedef uint8_t (*IndexedGenFn)(uint8_t ucIndex, uint8_t *pucSDRRec, DevTabEntry *ptDEVTab);

/**
 * The same with the index last, as seven generators of single profiles take it.
 * \param[out] pucSDRRec  slot for the record, 64 bytes
 * \param[out] ptDEVTab   its device-table entry
 * \param[in]  ucIndex    which of the parts
 * \return as #StaticGenFn
 */
typedef uint8_t (*IndexLastGenFn)(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint8_t ucIndex);

/** Row of the add-handler table: which generator builds the record of which class word. */
typedef struct AddSDRHndlrRow {
    uint32_t dwSensorDevType;  /**< 0  class word, compared whole: with one of the upper 16 bits set nothing is found */
    GenSpecificSDRFn pfnGen;   /**< 4 on the target: the generator; null answers OXA_FAILED */
} AddSDRHndlrRow;
OXA_AT(AddSDRHndlrRow, pfnGen, sizeof(void *));

/** Row of the device-table handler table: which handler fills the entry of which kind of sensor. */
typedef struct SensorDevTabRow {
    uint8_t ucSensorType;   /**< 0  compared with SDR byte 12 */
    uint8_t ucEventType;    /**< 1  compared with SDR byte 13 */
    uint8_t aucZero[2];     /**< 2  always 0 */
    GenDevTableFn pfnGen;   /**< 4 on the target: the handler */
} SensorDevTabRow;
OXA_AT(SensorDevTabRow, ucEventType, 1);
OXA_AT(SensorDevTabRow, aucZero, 2);
OXA_AT(SensorDevTabRow, pfnGen, sizeof(void *));

#ifdef __cplusplus
}
#endif
#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#endif
