/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief Sensors that come and go at run time: adding and deleting them, their generators, names and device-table
 * entries.
 *
 * A program needs SDR_AddSpecificSensor(), SDR_DeleteSpecificSDR() and GenDevTable(); the rest is what they are made
 * of, exported for programs that want a part of it.
 *
 * Class words (dwSensorDevType) of sensors, IPMI sensor type in the high byte: 0x0100 temperature, 0x0200 voltage,
 * 0x0403 fan speed, 0x0803 power, 0x0C01 memory status, 0x0D00 disk status, 0x1501 card status, 0x1700 GPU card.
 * Of FRU locators, device class in the low byte: 0xFF0A power supply, 0x170B sub card, 0x010B 0x020B 0x030B cards,
 * 0x040B SL200 card, 0x01E0 to 0x07E0 GPU base boards.
 *
 * Card types (ucDeviceType): 2 GPU, 3 RAID card, 4 the only RAID card, 5 NIC, 6 OCP card, 13 AIC, 15 HBA, 16 FC, 17
 * Brenmor DPU, 18 GPU memory, 19 smart NIC, 20 Hyper, 21 Biren retimer, 22 to 27 HGX NVSwitches, PCIe switch, retimers,
 * FPGA, HMC, HSCs, 28 SPNC50, 29 PCIe card, 30 OAM, 31 SXM, 32 OAM memory, 33 SXM memory, 34 smart NIC card, 35
 * GigaHyper3, 36 NEO, 37 OAM MCD, 38 to 41 MLU PCIe retimer, serdes retimer, base board, its SFP, 42 X2000 box, 43, 44
 * NIC HT, SW, 45 MLU inlet, 46 Halvik, 47 ILU retimer, 48 METAX retimer, 49 OAM board, 50 to 53 MGX NVSwitch, PCIe
 * switch, FPGA, HMC, 54 DS25GE50, 55 CX6 NET, 56 to 58 power of one GPU, OAM, SXM slot, 59 disk, 60 NebulaMatrix DPU,
 * 61 SP925D, 62 to 64 GPU base board power brick, inlet, outlet, 65 MT retimer, 66 BR166 retimer, 67 SXM margin, 68 to
 * 73 HGX inlet, outlet, NVSwitch, retimer, HSC, standby HSC.  Of class 0x0403: 0 front fan, 1 rear fan, 255 fan.
 * Sub card types (SubDeviceType): 0 the card, 1 a port of it, 2 the other fan of class 0x0403, 3 to 8 NEO CPU, inlet,
 * regulator, NIC, optical port, DIMM, 9, 10 the highest and the mean of the GPUs.  Disk kinds: 1 NVMe, 2 SATA, 3 SAS;
 * names of disks are looked up under 4 front and 5 rear.
 */
#ifndef OXA_SPECIFIC_SENSORS_H
#define OXA_SPECIFIC_SENSORS_H

#include "oxa/records.h"

#include <stdint.h>
#ifndef __cplusplus
#include <stdbool.h>
#endif

#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif
#ifdef __cplusplus
extern "C" {
#endif

/**
 * \name Specific generators
 * What all of them do stands at #GenSpecificSDRFn.  Generators of sensors return #GEN_SDR_SKIPPED for a name that the
 * profile does not offer, #GEN_SDR_FAILED for one of more than 16 characters.
 * @{
 */

/**
 * Temperature, class word 0x0100: degrees C, signed, 1 a count.
 *
 * Limits and hysteresis are the description's, but for GPUs and NICs in profile 16 (Ferrisk), whose upper limits are
 * fixed.  A disk (card type 59) has one only when its kind is NVMe (else #GEN_SDR_SKIPPED); its name is looked up by
 * where it sits, front or rear, and its slot becomes the printed number, also in the description.
 * \param[in,out] ptParam  description
 * \param[out]    pucSDR   64 bytes, zero-filled
 * \param[in]     dwKey    not read
 * \return length, #GEN_SDR_FAILED or #GEN_SDR_SKIPPED
 */
uint8_t GenSpecificTempSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);

/**
 * Voltage, class word 0x0200: 2 V a count, of an SXM card (type 31) 0.01 V.
 * \param[in,out] ptParam  description; ucSecondPort is the port number of the name
 * \param[out]    pucSDR   64 bytes, zero-filled
 * \param[in]     dwKey    not read
 * \return length, #GEN_SDR_FAILED or #GEN_SDR_SKIPPED
 */
uint8_t GenSpecificVoltSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);

/**
 * Power, class word 0x0803: 5 W a count.
 *
 * Of Hyper, NEO and smart NIC cards (20, 36, 34) 1 W; of GPUs, OAMs, SXMs, all or a slot (2, 30, 31, 56 to 58), as
 * GetGpuPowerAccuracy() says.  Profile 7 (Lumora) gives it the sensor type of other units.
 * \param[in,out] ptParam  description
 * \param[out]    pucSDR   64 bytes, zero-filled
 * \param[in]     dwKey    not read
 * \return length, #GEN_SDR_FAILED or #GEN_SDR_SKIPPED
 */
uint8_t GenSpecificPowerSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);

/**
 * Fan speed, class word 0x0403: 100 rpm a count; none (#GEN_SDR_FAILED) on board 0x5497.
 *
 * SDR byte 45 is ucBrenmorSensorIndex.  Profile 16 (Ferrisk) makes the described lower critical limit the non-critical
 * one and has the critical one two counts below.
 * \param[in,out] ptParam  description; SlotId is the number of the fan
 * \param[out]    pucSDR   64 bytes, zero-filled
 * \param[in]     dwKey    not read
 * \return length, #GEN_SDR_FAILED or #GEN_SDR_SKIPPED
 */
uint8_t GenSpecificFanSpeedSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);

/**
 * State of a disk, class word 0x0D00; a compact record.
 *
 * SDR byte 29 is the slot as it came, the name has the printed number.
 * \param[in,out] ptParam  description; SlotId becomes the printed number
 * \param[out]    pucSDR   64 bytes, zero-filled
 * \param[in]     dwKey    not read
 * \return length, #GEN_SDR_FAILED or #GEN_SDR_SKIPPED
 */
uint8_t GenSpecificStatusSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);

/**
 * State of a card, class word 0x1501; a compact record.  Only card families with such a sensor have it.
 * \param[in,out] ptParam  description
 * \param[out]    pucSDR   64 bytes, zero-filled
 * \param[in]     dwKey    not read
 * \return length, #GEN_SDR_FAILED or #GEN_SDR_SKIPPED
 */
uint8_t GenSpecificCardStatusSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);

/**
 * State of a GPU card, class word 0x1700; a compact record.
 * \param[in,out] ptParam  description
 * \param[out]    pucSDR   64 bytes, zero-filled
 * \param[in]     dwKey    not read
 * \return length, #GEN_SDR_FAILED or #GEN_SDR_SKIPPED
 */
uint8_t GenSablinGPUCardStatusSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);

/**
 * State of a card's memory, class word 0x0C01; a compact record.
 * \param[in,out] ptParam  description
 * \param[out]    pucSDR   64 bytes, zero-filled
 * \param[in]     dwKey    not read
 * \return length, #GEN_SDR_FAILED or #GEN_SDR_SKIPPED
 */
uint8_t GenMEMStatusSpecificSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);

/**
 * FRU locator of a power supply, class word 0xFF0A: "PSU#_FRU", in profile 6 (Quorral) "PS# FRU".
 *
 * The FRU id is the index + 16 + GetSdrFruIdOffset(), modulo 256.  #GEN_SDR_FAILED for index 0, and for a power supply
 * that the record file (store.h) says is present: the repository has it.
 * \param[in,out] ptParam  description; ucDeviceType is the index of the power supply, from 1
 * \param[out]    pucSDR   64 bytes, zero-filled
 * \param[in]     dwKey    not read
 * \return length or #GEN_SDR_FAILED
 */
uint8_t GenFruOfPsuSpecificSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);

/**
 * FRU locator of the sub card, class word 0x170B: "SUB CARD", FRU id 59.
 *
 * Only in slot 15, and only once in the life of the process; else #GEN_SDR_FAILED.  Handed on with three bytes more
 * than the record has.
 * \param[in,out] ptParam  description; SlotId 15
 * \param[out]    pucSDR   64 bytes, zero-filled
 * \param[in]     dwKey    not read
 * \return 27 or #GEN_SDR_FAILED
 */
uint8_t GenFruOfSubCardSpecificSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);

/**
 * FRU locator of a card or GPU base board of the catalogue (#gPurchaseCardInfo), under its name there.
 *
 * The FRU id is the next of the pool (GetNoUsedFruIdForPurchaseCard()) + GetSdrFruIdOffset() and is written to the FRU
 * id file (SavePurchaseCardFruId()).  #GEN_SDR_FAILED for slot 0, without a free id (but where the offset is 8, the
 * record then gets FRU id 7), and for a card that is not in the catalogue, which gives its id back.
 * \param[in,out] ptParam  description; the low 16 bits of dwSensorDevType are the card device type
 * \param[out]    pucSDR   64 bytes, zero-filled
 * \param[in]     dwKey    not read
 * \return length or #GEN_SDR_FAILED
 */
uint8_t GenFruOfPurchaseCardSpecificSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);

/**
 * FRU locator of an SL200 card, class word 0x040B: its catalogue name and its FRU id.
 *
 * As GenFruOfPurchaseCardSpecificSDR(); but without a FRU id offset the pool's id is taken as it is, and with one the
 * id is the slot - 2, for slots 3 to 10, each once in the life of the process.
 * \param[in,out] ptParam  description; SlotId from 1
 * \param[out]    pucSDR   64 bytes, zero-filled
 * \param[in]     dwKey    not read
 * \return length or #GEN_SDR_FAILED
 */
uint8_t GenFruOfSL200CardSpecificSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t dwKey);
/** @} */

/**
 * \name Names
 * A name has at most 16 characters.  Functions that return its length return 0 for a sensor that is not offered and
 * more than 16 for a name that is too long (of which 16 characters are stored, which nobody should use).
 * @{
 */

/**
 * Looks a sensor's name pattern up in a profile's table.
 *
 * Fills acName and, where the row has an override, wBitmap; leaves both alone when the profile or the sensor is not
 * there. Put an empty acName in to tell.
 * \param[in,out] ptInfo      what is wanted, and what was found; a null pointer is an error line
 * \param[in]     dwCustomId  profile id; the platform is not asked
 *
 * From any thread; silent otherwise.
 */
void getCustomSensorInfo(SnrQuery *ptInfo, uint32_t dwCustomId);

/**
 * Makes a sensor's name from its profile's pattern.
 *
 * Asks the platform for the profile (unreadable: 0); renames cards in front slots (modifyPcieSlotName()), puts the slot
 * in for '*' and the port for '#' (getSilkInfo()), in profile 20 (Sablin) renames GPUs (modifySablinGpuSensorName()).
 * \param[in,out] ptInfo  what is wanted, acName empty; gets bitmap and name.  A null pointer is an error line and 0.
 * \param[in]     ucSlot  slot number
 * \param[in]     ucPort  port number
 * \return length of the name; 0 not offered (warning) or a number that could not be printed; above 16 too long
 *
 * One thread at a time.
 */
uint8_t getSensorInfo(SnrQuery *ptInfo, uint8_t ucSlot, uint8_t ucPort);

/**
 * Makes the name of a described sensor: the card family's, else the profile's.
 *
 * A family (#g_atPurchaseCardSnrInfo) is found by class word and card type.  Else the port number of getSensorInfo() is
 * ucSensorSeq of temperatures, ucSecondPort of voltages, 0 of powers and of memory, disk and GPU card states; other
 * classes have no name.
 * \param[in,out] ptInfo         what is wanted, acName empty; gets the name
 * \param[in]     ptParam        the description
 * \param[in]     ucSensorIndex  which sensor of the family, from 0
 * \return as getSensorInfo(); 0 (error line) for a null pointer
 *
 * One thread at a time.
 */
uint8_t getPurchaseCardInfo(SnrQuery *ptInfo, const SpecificSensorParam *ptParam, uint8_t ucSensorIndex);

/**
 * Copies the name of one sensor of a card family.
 * \param[in,out] ptInfo         gets the name; left alone when there is none
 * \param[in]     ucSensorIndex  which sensor
 * \param[in]     ptRow          the family
 * \return length of the name; 0 when the family has no such sensor, or (error line) a pointer is null
 *
 * From any thread.
 */
uint8_t getNameInfo(SnrQuery *ptInfo, uint8_t ucSensorIndex, const CardSnrRow *ptRow);

/**
 * Prints a slot or port number the way a profile writes it.
 *
 * Fans: hexadecimal in profile 1 (Kestrin), two digits in 11 (Durnow).  Else, unless plain: two digits in profiles 0
 * and 20 (Default, Sablin); NICs of profile 16 (Ferrisk) get the number of OCP cards present plus a count that goes on
 * with every call for as long as the library is loaded, whatever ucNumber is.  Else decimal.  A number that cannot be
 * printed leaves an empty text.
 * \param[in]  ptInfo       the sensor: class word and card type are read
 * \param[out] pSilkInfo    17 bytes for the text and a NUL
 * \param[in]  ucNumber     the number
 * \param[in]  dwCustomId   profile id
 * \param[in]  ucPlainFlag  1 plain: without leading zero or counting
 *
 * A null pointer is an error line, and nothing is written.  Asks the platform for the OCP cards each time.  One thread
 * at a time.
 */
void getSilkInfo(const SnrQuery *ptInfo, char *pSilkInfo /* 17 */, uint8_t ucNumber, uint32_t dwCustomId,
                 uint8_t ucPlainFlag);

/**
 * Replaces every occurrence of a pattern in a name.
 * \param[out] pcOut          17 bytes for the new name, at most 16 characters and a NUL; not the source
 * \param[in]  pcSrc          the name, NUL-terminated; 16 characters of it count
 * \param[in]  pcPattern      what is replaced, NUL-terminated; an empty one stands nowhere
 * \param[in]  pcReplacement  what comes in its place, NUL-terminated
 * \return length that the new name has or would have if it is cut, at most 255; 0 (error line) for a null pointer
 *
 * From any thread; silent otherwise.
 */
uint8_t strrpc(char *pcOut /* 17 */, const char *pcSrc, const char *pcPattern, const char *pcReplacement);

/**
 * Tells the number of a front slot, from the silk text "F-Slot<number>" of the platform.
 * \param[in]  ucSlot       PCIe slot
 * \param[out] changedSlot  the front slot's number (low byte); left alone when it is none.  Null: error line, -1.
 * \return 0 a front slot; -1 not one, or the platform cannot tell
 *
 * From any thread.
 */
int32_t getFSlotInfo(uint8_t ucSlot, uint8_t *changedSlot);

/**
 * Renames a card in a front slot: '*' of its pattern becomes "F-*", where that is too long "Temp" becomes "T".
 *
 * Only RAID cards, NICs, HBAs, FC cards and smart NICs (3, 5, 15, 16, 19), and only the 24 patterns that are known.
 * \param[in,out] ucInstance  PCIe slot; becomes the number of the front slot when the name was changed
 * \param[in,out] ptInfo      card type, and the pattern to change
 *
 * A null pointer is an error line, and nothing is changed.  From any thread; silent otherwise.
 */
void modifyPcieSlotName(uint8_t *ucInstance, SnrQuery *ptInfo);

/**
 * Renames a GPU by its row and place, as board 0x54E0 has them: "GU05" becomes "RA3", and so on.
 *
 * Any sensor that is no GPU's keeps its name.  Asks the platform for the board id and logs it.
 * \param[in,out] ptInfo  the sensor and its name
 * \return length of the name; 0 for a GPU's sensor on another board (info line), and (error line) for a null pointer
 *
 * From any thread.
 */
uint8_t modifySablinGpuSensorName(SnrQuery *ptInfo);
/** @} */

/** \name Small lookups of the SDR bytes */
/** @{ */

/**
 * Tells what is added to FRU ids on this machine: 8 on a Sablin machine (profile 20) with inner product id 7, else 0.
 * \return 0 or 8; asked of the platform once and kept for the life of the process, also when the platform failed (0)
 *
 * Silent.  Call it first in one thread.
 */
uint8_t GetSdrFruIdOffset(void);

/**
 * Returns its argument and changes nothing.
 * \param[in] ucOffset  any
 * \return ucOffset
 */
uint8_t SetSdrFruIdOffset(uint8_t ucOffset);

/**
 * Tells the IPMI entity id of a card type.
 * \param[in] ucDeviceType  card type; one that is not known counts as an add-in card
 * \return 0x0B add-in card, 0x97 OCP card, 0x96 smart NIC card, 0xE0 part of a card, 0xE1 part of a module, 0xE2 port
 *
 * From any thread; silent.
 */
uint8_t getentityid(uint8_t ucDeviceType);

/**
 * Sets bit 7 of an entity instance where sensors are counted relative to their own controller.
 *
 * That is entity 0xE0, and card types 28, 35, 37 and 55.
 * \param[in,out] entityInstance  entity instance; null is an error line
 * \param[in]     ucEntityId      its entity id
 * \param[in]     ucDeviceType    its card type
 *
 * From any thread.
 */
void modifyEntityInstance(uint8_t *entityInstance, uint8_t ucEntityId, uint8_t ucDeviceType);

/**
 * Tells whether SDR byte 44 of a card type is the sensor's index (ucBrenmorSensorIndex), not sub card type and port.
 * \param[in] ucDeviceType  card type
 * \return true for 17, 20, 35, 38 to 41, 45, 46, 48, 50, 60 to 64 and 66
 *
 * From any thread; silent.
 */
bool useBrenmorSensorIndex(uint8_t ucDeviceType);

/**
 * Gives the conversion of a card type's voltages, where it is not the template's.
 * \param[in]  ucDeviceType  card type
 * \param[out] pucM          SDR byte 24: 100 of card type 31 (SXM), else left alone
 * \param[out] pucExp        SDR byte 29: 0xC0 (10^-4, that is 0.01 V a count) of card type 31, else left alone
 *
 * With a null pointer neither is written, without a line.  From any thread.
 */
void GetVoltAccuracy(uint8_t ucDeviceType, uint8_t *pucM, uint8_t *pucExp);

/**
 * Gives the conversion of GPU power, from the rated power that the platform's inventory tells (MW_GetGPUAssetInfo()).
 *
 * M is the fewest watts a count with which 255 counts reach the power, B half of it, rounded up, and 0 where M is 1;
 * both are 0 for a power of 0.  Of one slot (card types 56 to 58) the power of its GPUs counts, 0 without an inventory.
 * Else that of all counts; without a usable inventory (none, or more than #MW_GPU_ASSET_MAX GPUs) 17 and 9 on board
 * 0x5502, 22 and 11 on 0x550F, 4 and 2 on others; above 65,024 W 255 and 128 (error line).  GPUs of unknown power or in
 * slots above 81 do not count; of vendor 0xCABC a slot counts once.
 * \param[in]  wBoardId      board id
 * \param[in]  ucDeviceType  card type
 * \param[in]  ucSlot        slot, where it is about one
 * \param[out] ucSdrM        SDR byte 24
 * \param[out] ucSdrB        SDR byte 26
 *
 * With a null pointer there is an error line and neither is written.  From any thread.
 */
void GetGpuPowerAccuracy(uint16_t wBoardId, uint8_t ucDeviceType, uint8_t ucSlot, uint8_t *ucSdrM, uint8_t *ucSdrB);

/**
 * Makes a byte of an accuracy.
 * \param[in] sdwValue  accuracy
 * \return 255 for 0 and below, else the low byte
 *
 * From any thread; silent.
 */
uint8_t ConvertIntToUnsignedChar(int32_t sdwValue);
/** @} */

/**
 * \name Card FRU ids and catalogue
 * Ids are given out for as long as the library is loaded, and the pools are not read back from the file
 * /var/tmp/purchaseCardFruId, which is there for other programs: an INI file with a section per card (its catalogue
 * name) and the keys "<name>_FruId " and "<name>_SlotId " (each with a blank at the end).
 * @{
 */

/**
 * Takes a FRU id of the card pool: 36, 35, 34, 33 in this order, without any offset.
 * \return the id; 255 = none left
 *
 * One thread at a time.
 */
uint8_t GetNoUsedFruIdForPurchaseCard(void);

/**
 * Gives a FRU id back to the card pool.
 * \param[in] ucFruId  33 to 36; any other is an error line and a line of the security channel
 *
 * One thread at a time.
 */
void SetFruValidState(uint8_t ucFruId);

/**
 * Tells the catalogue name of a card.
 * \param[in] wDevType  card device type
 * \return the name, the library's own constant text; null = not in the catalogue
 *
 * From any thread; silent.
 */
const char *GetPurchaseCardName(uint16_t wDevType);

/**
 * Writes the section name of a card in the FRU id file.
 * \param[in]  wDevType   card device type
 * \param[out] pcSection  32 bytes for the name and a NUL; null is an error line and -1
 * \return 0, or -1 = not in the catalogue
 *
 * From any thread.
 */
int32_t GetPurchaseCardInfoSectionStr(uint16_t wDevType, char *pcSection /* 32 */);

/**
 * Gives the OEM byte of a card's FRU locator.
 * \param[in]  wDevType  card device type
 * \param[out] pucOEM    1 to 11; left alone when the card is not in the catalogue.  Null is an error line.
 *
 * From any thread.
 */
void FillSdrOEMValue(uint16_t wDevType, uint8_t *pucOEM);

/**
 * Writes the FRU id and slot of a card into the FRU id file.
 * \param[in] wDevType  card device type, picks the section
 * \param[in] pcName    name of the card's record, at most 39 characters, picks the keys; null is an error line and -1
 * \param[in] ucSlotId  slot of the card
 * \param[in] ucFruId   its FRU id
 * \return 0 (a save that failed is not noticed), or -1: not in the catalogue, or the file cannot be loaded
 *
 * Loads, changes and saves the whole file: one writer at a time over all processes.
 */
int32_t SavePurchaseCardFruId(uint16_t wDevType, const char *pcName, uint8_t ucSlotId, uint8_t ucFruId);

/**
 * Reads the FRU id and slot of a card from the FRU id file.
 * \param[in]  wDevType  card device type
 * \param[in]  pcName    name of the card's record
 * \param[out] slotId    slot; 0 when the file has none
 * \param[out] fruId     FRU id, low byte; 0 when the file has none
 * \return 0, or -1 (a line on the debug channel): a null pointer, not in the catalogue, or the file cannot be loaded;
 *         then neither is written
 */
int32_t LoadPurchaseCardFruId(uint16_t wDevType, const char *pcName, uint8_t *slotId, uint8_t *fruId);
/** @} */

/**
 * \name Disk registry
 * SDR_AddSpecificSensor() asks and fills it for descriptions with card type 59.  Nothing is ever taken out.  Kind: 1
 * temperature, 2 status.  One thread at a time.
 * @{
 */

/**
 * Tells whether a disk's record need not be added again.
 * \param[in] sdwSlot  disk slot
 * \param[in] sdwKind  1 temperature, 2 status
 * \return 1 the disk in this slot has that record, or is no NVMe disk, or the kind is another; 0 else, and for a slot
 *         that is not registered
 */
uint32_t isHasRegister(int32_t sdwSlot, int32_t sdwKind);

/**
 * Registers that a disk's record was added.
 *
 * A registry with #HDD_REGISTER_MAX disks takes no new ones, without a word.
 * \param[in] dwSlot     disk slot, 0 to 255
 * \param[in] dwKind     1 temperature, 2 status; another registers the disk alone
 * \param[in] dwHddType  disk kind (1 NVMe, 2 SATA, 3 SAS), kept from the first time; never 0
 * \return 0
 */
uint32_t setHddRegisterInfo(uint32_t dwSlot, uint32_t dwKind, uint32_t dwHddType);

/**
 * Tells whether disks are to be registered at all on this machine.
 * \return 1 in profile 16 (Ferrisk), 0 in others, -1 when the profile cannot be read
 *
 * From any thread; silent.
 */
int32_t isNeedRegisterHddSdr(void);

/**
 * Tells where a disk sits, from the platform's backplanes: one whose location is "Front", or elsewhere.
 * \param[in] sdwSlot  disk slot
 * \return 4 front; 5 rear, or no backplane list.  The sub card type of an NVMe disk's name.
 *
 * Borrows #g_extSdrData: one thread at a time.
 */
uint8_t getNvmeFrontInfo(int32_t sdwSlot);
/** @} */

/**
 * \name Profile table and sensor information tables
 * Which sensors can come at run time in which profile, and their name patterns.  getCustomSensorInfo() reads them: the
 * profile is searched in the order of #g_atSnrSpecificInfo, the sensor in the order of its table.  Read-only.
 *
 * What the tables offer, by class word: card types, in brackets sub card types other than 0 alone.
 *   - All but 16 (Ferrisk): 0x0100: 2 (0, 1), 3, 4, 5 (0, 1), 6 (1), 13, 15, 16, 18, 19 (0, 1), 28 to 33, 37,
 *     43 (0, 1), 44 (0, 1), 49, 54, 55; 0x0403: 0 (0, 2), 1 (0, 2), 255 (0, 2); 0x0803: 30, 31.
 *   - All but 16 and 20 (Sablin): 0x0803: 2.
 *   - All but 16 and 7 (Lumora): 0x0100: 36 (3 to 8); 0x0803: 36 (3, 6).
 *   - All but 16, 7 and 11 (Durnow): 0x0100: 6.
 *   - 0 (Default) and 20: 0x0100: 34 (0, 1); 0x0803: 34.
 *   - 1 (Kestrin), 3 (Vorana) and 7: 0x0C01: 18, 32, 33.
 *   - 2 (Pellago): 0x0803: 56 to 58.
 *   - 3: 0x0100: 67 to 73; 0x0200: 31.
 *   - 20: 0x0100: 2 (9, 10); 0x0803: 56; 0x1700: 2.
 *   - 16: 0x0100: 2, 3, 5, 6, 59 (4, 5); 0x0403: 0, 1, 255; 0x0803: 56; 0x0D00: 59 (2 to 5).
 *
 * All profiles have besides the card families below.  Whatever is not here is not offered: SXM voltage in 3 alone,
 * disks in 16 alone, GPU card states in 20 alone, memory states in 1, 3 and 7 alone, so none of them in Default.
 * @{
 */
extern const SnrSpecificInfoRow g_atSnrSpecificInfo[10]; /**< a row for each profile, by id */
extern const uint32_t g_dwSdrCustomCnt;                  /**< rows of the profile table: 10 */
extern const SnrInfoRec g_atDefaultSnrInfo[48];          /**< sensors of profile 0 */
extern const SnrInfoRec g_atKestrinSnrInfo[48];          /**< sensors of profile 1 */
extern const SnrInfoRec g_atPellagoSnrInfo[48];          /**< sensors of profile 2 */
extern const SnrInfoRec g_atVoranaSnrInfo[56];           /**< sensors of profile 3 */
extern const SnrInfoRec g_atAstrelSnrInfo[45];           /**< sensors of profile 4 */
extern const SnrInfoRec g_atQuorralSnrInfo[45];          /**< sensors of profile 6 */
extern const SnrInfoRec g_atLmSnrInfo[39];               /**< sensors of profile 7, Lumora */
extern const SnrInfoRec g_atDurnowSnrInfo[44];           /**< sensors of profile 11 */
extern const SnrInfoRec g_atSablinSnrInfo[51];           /**< sensors of profile 20 */
extern const SnrInfoRec g_atFerriskSnrInfo[14];          /**< sensors of profile 16 */
extern const uint8_t g_ucSnrDefaultCnt;                  /**< rows: 48 */
extern const uint8_t g_ucSnrKestrinCnt;                  /**< rows: 48 */
extern const uint8_t g_ucSnrPellagoCnt;                  /**< rows: 48 */
extern const uint8_t g_ucSnrVoranaCnt;                   /**< rows: 56 */
extern const uint8_t g_ucSnrAstrelCnt;                   /**< rows: 45 */
extern const uint8_t g_ucSnrQuorralCnt;                  /**< rows: 45 */
extern const uint8_t g_ucSnrLmCnt;                       /**< rows: 39 */
extern const uint8_t g_ucSnrDurnowCnt;                   /**< rows: 44 */
extern const uint8_t g_ucSnrSablinCnt;                   /**< rows: 51 */
extern const uint8_t g_ucSnrFerriskCnt;                  /**< rows: 14 */
/** @} */

/**
 * \name Card families
 * Sensors of cards that have names of their own in every profile: the families, searched in their order by
 * getPurchaseCardInfo(), then the sensors of each in the order of the families.  An entry's index is its place.
 * Read-only. @{
 */
extern const CardSnrRow g_atPurchaseCardSnrInfo[31]; /**< the families */
extern const CardSnrEntry atBrenmorSensorInfo[14]; /**< temperatures of a Brenmor DPU, card type 17 */
extern const CardSnrEntry atHyperTempSensorInfo[7]; /**< temperatures of a Hyper card, card type 20 */
extern const CardSnrEntry atHyperPowerSensorInfo[2]; /**< powers of a Hyper card, card type 20 */
extern const CardSnrEntry atBirenRetimerTempSensorInfo[1]; /**< Biren retimer, card type 21 */
extern const CardSnrEntry atHGXNSWITCHTempSensorInfo[1]; /**< HGX NVSwitches, card type 22 */
extern const CardSnrEntry atHGXPSWITCHTempSensorInfo[1]; /**< HGX PCIe switch, card type 23 */
extern const CardSnrEntry atHGXRETIMERTempSensorInfo[1]; /**< HGX retimers, card type 24 */
extern const CardSnrEntry atHGXFPGATempSensorInfo[1]; /**< HGX FPGA, card type 25 */
extern const CardSnrEntry atHGXHMCTempSensorInfo[1]; /**< HGX management controller, card type 26 */
extern const CardSnrEntry atHGXHSCTempSensorInfo[1]; /**< HGX hot-swap controllers, card type 27 */
extern const CardSnrEntry atGIGAHYPER3FPGATempSensorInfo[4]; /**< FPGAs of a GigaHyper3, card type 35 */
extern const CardSnrEntry atMLUPcieRetimerTempSensorInfo[8]; /**< PCIe retimers of an MLU board, card type 38 */
extern const CardSnrEntry atMLUSdrdesRetimerTempSensorInfo[4]; /**< serdes retimers of an MLU board, card type 39 */
extern const CardSnrEntry atMLUUBBTempSensorInfo[2]; /**< MLU base board, card type 40 */
extern const CardSnrEntry atMLUUBBSfpTempSensorInfo[4]; /**< SFP ports of an MLU base board, card type 41 */
extern const CardSnrEntry atMLUInletTempSensorInfo[4]; /**< inlets of an MLU board, card type 45 */
extern const CardSnrEntry atX2000BOXSensorInfo[1]; /**< state of an X2000 box, card type 42 */
extern const CardSnrEntry atHalvikTempSensorInfo[8]; /**< retimers of a Halvik card, card type 46 */
extern const CardSnrEntry atILURetimerTempSensorInfo[1]; /**< ILU retimer, card type 47 */
extern const CardSnrEntry atMETAXRetimerTempSensorInfo[8]; /**< METAX retimers, card type 48 */
extern const CardSnrEntry atMGXNSWITCHTempSensorInfo[4]; /**< MGX NVSwitches, card type 50 */
extern const CardSnrEntry atMGXPSWITCHTempSensorInfo[1]; /**< MGX PCIe switch, card type 51 */
extern const CardSnrEntry atMGXFPGATempSensorInfo[1]; /**< MGX FPGA, card type 52 */
extern const CardSnrEntry atMGXHMCTempSensorInfo[1]; /**< MGX management controller, card type 53 */
extern const CardSnrEntry atNebulaMatrixSensorInfo[17]; /**< temperatures of a NebulaMatrix DPU, card type 60 */
extern const CardSnrEntry atSP925DTempSensorInfo[6]; /**< temperatures of an SP925D, card type 61 */
extern const CardSnrEntry atOxaUbbPowerBrickTempSensorInfo[1]; /**< power brick of a GPU base board, card type 62 */
extern const CardSnrEntry atOxaUbbInletTempSensorInfo[1]; /**< inlet of a GPU base board, card type 63 */
extern const CardSnrEntry atOxaUbbOutletTempSensorInfo[3]; /**< outlets of a GPU base board, card type 64 */
extern const CardSnrEntry atMTRetimerTempSensorInfo[8]; /**< MT retimers, card type 65 */
extern const CardSnrEntry atBR166RetimerTempSensorInfo[12]; /**< BR166 retimers, card type 66 */
/** @} */

/** Card catalogue: cards that get a FRU locator, in the order they are searched.  Read-only. */
extern const PurchaseCardRow gPurchaseCardInfo[11];

/**
 * Disk registry of this process; zero when the library is loaded, never cleared or stored by it.
 *
 * A program may zero it to have all disks added again.  One thread at a time.
 */
extern HddRegisterInfo gRegisterInfo;

/** \name Adding and deleting */
/** @{ */

/**
 * Builds the record of a described sensor or FRU and adds it to the SDR repository.
 *
 * The class word picks the generator (#g_atAddSDRHndlrTab); its record is added over a local IPMI session of its own,
 * once. A disk (card type 59) whose temperature or status record was added before is refused without a line; it counts
 * as added also when the repository refused the record.  The record id that the repository gives is not told, and
 * neither the record file nor the extended store is written: see SDR_UpdateSpecificSDRRecFile() and writeExtSDRFile().
 *
 * \param[in,out] ptParam  description; the generator may change wBitmap and SlotId.  A null pointer is an error line
 *                         and 0.
 * \return #OXA_OK; #OXA_NOT_SUPPORTED when the class word has no generator or the generator declined (not offered,
 *         already stored); #OXA_FAILED when the generator failed or the disk is registered; else the IPMI library's
 *         16-bit code for the session or the add
 *
 * One thread at a time; 15.5 KB of stack.  Reads the extended store under its semaphore, which is not held during the
 * session.
 */
uint32_t SDR_AddSpecificSensor(SpecificSensorParam *ptParam);

/**
 * Deletes the FRU locator of a power supply from the SDR repository; nothing else can be deleted.
 *
 * The record id comes from the record file, whose entry is cleared when the delete succeeded.  After every delete, also
 * one that succeeded, there is an error line with the result.
 *
 * \param[in] ptParam  class word 0xFF0A and in SlotId the index of the power supply; not changed
 * \return 0 deleted, or nothing to delete; 1 another class word (warning); -1 a null pointer (warning); else the IPMI
 *         library's code, and the record file keeps its entry
 *
 * One writer of the record file at a time.  Power supply 1 comes and goes, its index in two different fields:
 * \code
 *   SpecificSensorParam tParam = {0};
 *   tParam.dwSensorDevType = 0xFF0A;
 *   tParam.ucDeviceType = 1;                               // to add: here
 *   if (SDR_AddSpecificSensor(&tParam) == OXA_OK)
 *       SDR_UpdateSpecificSDRRecFile(10, 1, wRecordId, 1); // tells where wRecordId comes from
 *   // ... and when it was pulled
 *   tParam.SlotId = 1;                                     // to delete: here
 *   SDR_DeleteSpecificSDR(&tParam);                        // clears the entry in the record file
 * \endcode
 */
int32_t SDR_DeleteSpecificSDR(SpecificSensorParam *ptParam);

/**
 * Sends a sub card's status to the FRU service, over a local IPMI session of its own.
 * \param[in] pSubCardInfo  20 bytes, sent as they are; a null pointer is an error line and 0
 * \return 0, or the IPMI library's code for the session or the message
 *
 * From any thread.  Logs under module 43.
 */
uint32_t SendSubCardStatusToFRU(const uint8_t *pSubCardInfo);

/** Class words and their generators, in the order that SDR_AddSpecificSensor() searches them.  Read-only. */
extern const AddSDRHndlrRow g_atAddSDRHndlrTab[21];
/** Rows of #g_atAddSDRHndlrTab: 21. */
extern const uint32_t g_dwAddSDRHndlrCnt;
/** @} */

/** \name Device table */
/** @{ */

/**
 * Fills the device-table entry of a run-time sensor's record: how the sensor scanner reads it.
 *
 * The handler is found by sensor type and event type, bytes 12 and 13 (#g_atSensorDevTab).  Records of the static
 * drivers come with their entries and do not need it.
 *
 * The entry is zeroed (bus and address stay 0), gets sensor number, LUN and bytes 21 to 25 from the record, 0xFF as
 * mark, and:
 *   - ucDevCode by class and card type, never 0.
 *   - ucItem and ucSubItem: the nibbles of SDR byte 44, sub card type and port, of temperatures and of NEO powers (36).
 *     ucItem 3 of card types 62 to 64, 5 of 66, 8 of 67, 1 of SXM voltages.
 *   - ucIndex: SDR byte 45 (slot; of a fan ucBrenmorSensorIndex); SDR byte 44 of card types 17, 20 to 27, 35, 38 to 41,
 *     45 to 48, 50 to 53, 60 to 66, 68 to 73; byte 29 of disk states; the instance less 0x60 of GPU card and memory
 *     states; 0 of card states and of voltages but SXM's.
 *   - ucScanFlag 0x80 of fans and of card types 6, 17, 20, 35, 36, 46, 60, 61, and of the smart NIC (19) that stays
 *     powered in S5.
 *   - ucSubKind: the card type of 22 to 27, 38 to 41, 45, 50 to 53, 62 to 65, 68 to 73; 1 of NICs (5, 19, 43, 44).
 *   - ucMark 0x25 of disks.
 *   - ucM: SDR byte 24 of fans, of powers of card types 2, 30, 31, 34, 36, 56 to 58, and of NEO temperatures (36); of
 *     all others 0, whatever the record says.
 *
 * A disk state needs card type 59 in SDR byte 30, and has it as built.  A memory state needs 18, 32 or 33 there and is
 * built with 0: it gets -1 unless the caller writes the card type first.
 *
 * From the description to the scanner, as the caller does it:
 * \code
 *   uint32_t dwStatus = SDR_AddSpecificSensor(&tParam); // 1. the record goes to the repository
 *   // 2. if OXA_OK take it from there: the platform's IPMICMD_AddSDR() saw it, or read it back (IPMI Get SDR)
 *   uint8_t aucSlot[SDR_SLOT_SIZE] = {0};
 *   memcpy(aucSlot, pucRecord, ucLen);
 *   aucSlot[SDR_SENSOR_NUM] = ucNumber;                 // 3. number it, before 4.
 *   DevTabEntry tEntry = {0};
 *   int32_t sdwRet = GenDevTable(aucSlot, &tEntry);     // 4. copies the number to byte 4; -1: nothing to scan
 *   // 5. read both files of the extended store (store.h), append slot and entry at the same place, write both
 * \endcode
 * After step 5 the library refuses another sensor of this record type and name (#OXA_NOT_SUPPORTED).  Before it nothing
 * is refused but a registered disk and a power supply of the record file.
 *
 * \param[in]     pucSDR   the record, 64 bytes
 * \param[in,out] ptEntry  the entry; zero it first: one of a power sensor (type 0x08, 0x0B) that carries a device code
 *                         already is left as it is, with result 0.  Filled in part also when the result is -1.
 * \return 0; -1 no handler (warning), no entry for a record with this OEM byte (error line), or a null pointer (error
 *         line)
 *
 * From any thread.  Asks the platform for the board id of power sensors and, of smart NICs (type 19), for the card that
 * stays powered in S5.
 */
int32_t GenDevTable(const uint8_t *pucSDR, DevTabEntry *ptEntry);

/** Handlers by sensor type and event type, in the order that GenDevTable() searches them.  Read-only. */
extern const SensorDevTabRow g_atSensorDevTab[9];
/** Rows of #g_atSensorDevTab: 9. */
extern const uint32_t g_dwDevTabCnt;
/** @} */

#ifdef __cplusplus
}
#endif
#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#endif
