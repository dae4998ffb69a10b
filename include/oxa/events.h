/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief Events: the writer of the event log and nineteen builders, one per kind of event.
 *
 * A builder turns its arguments into one record of 16 bytes and writes it with ipmi_add_sel_entry().
 *
 * What holds for every builder
 *   - Values are numbers of a byte passed in words: into the record goes their low byte (or the bits that are named).
 *     Rules compare the whole word.  Nothing is tested but what is said to be.
 *   - Numbers of devices (dimmNum, cpuNum, slotNum, location, index and their like) go into the record, and into the
 *     question to the platform's directory, as they came: nothing is converted, and whether they begin at 0 or 1 is
 *     not known here: count as the directory of the platform does (MW_GetMemSensorNumber() and its like).
 *   - assertFlag and eventDir: 0 the event happened, 1 it is over; the lowest bit goes to bit 7 of byte 12, where the
 *     record has an event type.  Where the flag is checked, any other value is an error line and #OXA_FAILED, and
 *     nothing is sent.
 *   - "type" is the record type (byte 2): 0x02 a system event of generator 0x20, 0xC0 and 0xCD time-stamped OEM
 *     records, 0xE0 an OEM record without a time stamp.  "sensor type" is byte 10, "event type" bits 0 to 6 of byte 12,
 *     "data" bytes 13 to 15.  Byte 9 is 0x04 where nothing else is said, bytes that are not named are 0.
 *   - Sending is tried twice with the same record, then it is an error line and #OXA_FAILED.
 *   - A sensor number that the platform's directory cannot tell is an error line and 0; the event is sent all the same.
 *   - The profile is read (MW_GetCustomid()) only where a rule needs it; unreadable it counts as 0.
 *   - \b Result: #OXA_OK (0) or #OXA_FAILED (0xFFFF).
 *   - An info line names the arguments, but for addI2CStatusSel() and addLeakageSel().
 *   - From any thread; nothing is kept, no file or semaphore is touched (but for the marker of addDiskSEL()).
 */
#ifndef OXA_EVENTS_H
#define OXA_EVENTS_H

#include "oxa/records.h"

#include <stdint.h>

#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif
#ifdef __cplusplus
extern "C" {
#endif

/**
 * Writes a finished record into the event log, over a local IPMI session of its own.
 *
 * Tries once.  A session that cannot be opened is an error line; a record that is refused is one too, and 16 warnings
 * follow it, a byte each.
 *
 * \param[in] SelRec  the record, #SEL_RECORD_SIZE bytes, sent as it is; a null pointer is an error line and #OXA_FAILED
 * \return #OXA_OK, or #OXA_FAILED when the session or the command failed
 */
uint32_t ipmi_add_sel_entry(const uint8_t *SelRec /* 16 */);

/** \name Memory, processors, firmware */
/** @{ */

/**
 * A memory module whose fault is predicted.
 *
 * Record: type 0x02, sensor type 0x0C memory, sensor number 0, event type 0x04, data 0x01, dimmNum.  Profile 1
 * (Kestrin) keeps a state instead: MW_SetMemPredictiveFailureState() is given the inverted flag, nothing is sent, and
 * the result is #OXA_OK.
 * \param[in] dimmNum     number of the memory module
 * \param[in] assertFlag  0 predicted, 1 no longer; checked
 * \return #OXA_OK or #OXA_FAILED
 */
uint32_t addMemPredictiveFault(uint32_t dimmNum, uint32_t assertFlag);

/**
 * An error in the power-on self-test.
 *
 * Record: type 0x02, sensor type 0x0F firmware progress, sensor number 0, event type 0x6F, data 0x80, 0xFA.
 * \return #OXA_OK or #OXA_FAILED
 */
uint32_t addPOSTErrorSel(void);

/**
 * The power button was pressed while the host runs (state S0).
 *
 * Record: type 0xCD with fixed bytes 7 to 12: DD B3 00 BA CB 02; byte 9 is 0 here.
 * \return #OXA_OK or #OXA_FAILED
 */
uint32_t addS0PowerButtonSel(void);
/** @} */

/** \name Slots and liquid cooling */
/** @{ */

/**
 * An error of a GPU's slot.
 *
 * Record: type 0x02, sensor type 0x1B cable, sensor number 0, event type 0x6F, data 0x01, slotNum.
 * \param[in] slotNum  number of the slot
 * \return #OXA_OK or #OXA_FAILED
 */
uint32_t addGpuSlotErrorSel(uint32_t slotNum);

/**
 * A minor fault of the coolant distribution unit.
 *
 * Record: type 0xC0, entity 0xE4, sensor type 0x15 module, event type 0x07, data 0xA1, reason, 0xFF.
 * \param[in] reason      reason code, 0 to 255
 * \param[in] assertFlag  0 fault, 1 over; not checked
 * \return #OXA_OK or #OXA_FAILED
 */
uint32_t addMinorCDUFaultSel(uint32_t reason, uint32_t assertFlag);

/**
 * A major fault of the coolant distribution unit.
 *
 * Record: type 0xC0, entity 0xE4, sensor type 0x15 module, event type 0x07, data 0xA2, reason, slotNum.
 * \param[in] reason      reason code, 0 to 255
 * \param[in] slotNum     number of the slot
 * \param[in] assertFlag  0 fault, 1 over; not checked
 * \return #OXA_OK or #OXA_FAILED
 */
uint32_t addMajorCDUFaultSel(uint32_t reason, uint32_t slotNum, uint32_t assertFlag);
/** @} */

/** \name Network and storage */
/** @{ */

/**
 * An event of a network port.
 *
 * Record: type 0xC0, sensor type 0x27 LAN, event type 0x6F, byte 8 sub-interface type and number, byte 9 device and
 * port, data 0, slotNum, netPortSilkId.
 * \param[in] entityId          IPMI entity of the device
 * \param[in] slotNum           slot of the card
 * \param[in] netPortSilkId     printed number of the port
 * \param[in] deviceIndex       number of the device on the card, 0 to 15 (low 4 bits, to bits 4-7 of byte 9)
 * \param[in] port              port on the device, 0 to 15 (low 4 bits, to bits 0-3 of byte 9)
 * \param[in] subInterfaceType  type of the sub-interface, 0 to 15 (to bits 4-7 of byte 8)
 * \param[in] subIndex          number of the sub-interface, 0 to 15 (to bits 0-3 of byte 8)
 * \param[in] eventNum          number of the event: logged only, not in the record
 * \param[in] eventDir          0 event, 1 over; not checked
 * \return #OXA_OK or #OXA_FAILED
 */
uint32_t addNETPortSEL(uint32_t entityId, uint32_t slotNum, uint32_t netPortSilkId, uint32_t deviceIndex, uint8_t port,
                       uint8_t subInterfaceType, uint8_t subIndex, uint8_t eventNum, uint8_t eventDir);

/**
 * An event of a storage controller.
 *
 * Record: type 0xC0, byte 8 eventNum, byte 14 controller.  Event 18 (temperature): sensor type 0x01, event type 0x07,
 * data 0xA2; event 19 (battery): sensor type 0x29, event type 0x6F, data 0xA0; any other is sent without types and
 * direction.
 * \param[in] entityId    IPMI entity of the controller
 * \param[in] controller  number of the controller
 * \param[in] eventNum    number of the event
 * \param[in] eventDir    0 event, 1 over; not checked
 * \return #OXA_OK or #OXA_FAILED
 */
uint32_t addControllerSEL(uint32_t entityId, uint32_t controller, uint32_t eventNum, uint32_t eventDir);

/**
 * An event of a disk.
 *
 * Record: type 0xE0, bytes 3 to 6 slotNum (highest byte first), event type 0x6F, sensor type 0x0D drive slot, data
 * 0xA1, 0, eventNum; with departures:
 *   - 20 and 25 (temperature): sensor type 0x01, event type 0x07.
 *   - 21 (disk life), 22, 25, 31: first data byte 0xA2.  Profile 1 (Kestrin) does not report disk life: nothing is
 *     sent, #OXA_OK.
 *   - 27, 28, 29 (predicted faults): written as event 24.
 *   - 19, 21, 24, 27 to 31: entity 4 whatever was given, and the sensor number of the slot (MW_GetSensorNumber()); 0
 *     for a slot above 255.
 *
 * While the file /var/test_disk_fault_predict exists only events 27 to 29 are sent; any other does nothing, #OXA_OK.
 * Each event that is looked at is traced by an error line of module 67, although nothing is wrong.
 * \param[in] entityId  IPMI entity of the disk
 * \param[in] slotNum   slot of the disk, all 32 bits, as MW_GetSensorNumber() counts
 * \param[in] eventNum  number of the event
 * \param[in] eventDir  0 event, 1 over; not checked
 * \return #OXA_OK or #OXA_FAILED
 */
uint32_t addDiskSEL(uint32_t entityId, uint32_t slotNum, uint32_t eventNum, uint32_t eventDir);

/**
 * An event of a logical disk.
 *
 * Record: type 0xC0, byte 8 eventNum, sensor type 0x0D drive slot, event type 0x0B, data 0xA6, ctrlIndex, targetId.
 * Event 130 has 0xA2 as first data byte, event 131 entity 4 and event type 0x6F.
 * \param[in] entityId    IPMI entity of the disk
 * \param[in] eventNum    number of the event
 * \param[in] ctrlIndex   number of the controller
 * \param[in] targetId    number of the logical disk
 * \param[in] assertFlag  0 event, 1 over; not checked
 * \return #OXA_OK or #OXA_FAILED
 */
uint32_t addLDSEL(uint32_t entityId, uint32_t eventNum, uint32_t ctrlIndex, uint32_t targetId, uint32_t assertFlag);
/** @} */

/** \name Power modules, usage, alarms */
/** @{ */

/**
 * An event of a power module.
 *
 * Record: type 0xC0, entity 0x0A, the module's sensor number (MW_GetPemSensorNumber()), byte 14 location, byte 15
 * eventNum, and by event:
 *   - 17, 19, 21, 23, 25, 26, 28: sensor type 0x08, event type 0x6F, data 0xA1;
 *   - 18, 20, 22, 24, 27, 29: the same with data 0xA2;
 *   - 30 to 33 (forecasts): sensor type 0x04 fan, sensor number 0, event type 0x04, data 0xA1; profile 1 (Kestrin)
 *     sends nothing, #OXA_FAILED;
 *   - 34: sensor type 0x09 power unit, event type 0x05, data 0xA1;
 *   - any other: sensor type 0x08, sent without event type and direction.
 * \param[in] location  place of the power module, as MW_GetPemSensorNumber() counts
 * \param[in] eventNum  number of the event
 * \param[in] eventDir  0 event, 1 over; not checked
 * \return #OXA_OK or #OXA_FAILED
 */
uint32_t addPEMSEL(uint32_t location, uint32_t eventNum, uint32_t eventDir);

/**
 * The usage of a processor, of memory or of a disk is at its limit.
 *
 * Record: type 0xC0, byte 8 usage, event type 0x05, data 0xA1, index, nonCritical; sensor type by entity: 3 processor
 * 0x07, 26 disk 0x0D, 32 memory 0x0C, any other 0.
 * \param[in] entityId     IPMI entity: 3, 26, 32
 * \param[in] usage        usage that was measured, 0 to 255
 * \param[in] nonCritical  limit of the usage, 0 to 255
 * \param[in] index        number of the device
 * \param[in] eventDir     0 event, 1 over; not checked
 * \return #OXA_OK or #OXA_FAILED
 */
uint32_t addUsageSEL(uint32_t entityId, uint32_t usage, uint32_t nonCritical, uint32_t index, uint32_t eventDir);

/**
 * An alarm of a fan, a cooling unit, the air inlet or the chassis.
 *
 * Record: type 0xC0, byte 8 reason, and by entity:
 *   - 29 (fan cooling): sensor type 0x04, event type 0x0A, data 0x04;
 *   - 30 (cooling unit): sensor type 0x21, event type 0x6F; data by reason 9, 10, 11, 20: A0 79; 12, 13: A9 78 01;
 *     14: A4 78; 15 to 18: A9 79 02; any other: 0;
 *   - 55 (air inlet): sensor type 0x28, event type 0x6F, data 0xE4 and the inlet temperature in degrees C
 *     (MW_GetInletTempInfo(); 0 when unreadable);
 *   - 144 (chassis): reason 0, 1: sensor type 0x18, event type 0x0A, data 0x02; reason 32: sensor type 0x21, event type
 *     0x6F, data A8 7A;
 *   - any other entity or reason of the chassis: sent without types and direction.
 * \param[in] entityId  IPMI entity
 * \param[in] reason    reason code, 0 to 255
 * \param[in] eventDir  0 alarm, 1 over; not checked
 * \return #OXA_OK or #OXA_FAILED
 */
uint32_t addSELAlarm(uint32_t entityId, uint32_t reason, uint32_t eventDir);
/** @} */

/** \name Errors that are found on a sensor */
/** @{ */

/**
 * An error of a processor.
 *
 * Record: type 0x02, sensor type 0x07, the processor's sensor number (MW_GetCPUSensorNumber()), event type 0x6F, data
 * offset, cpuNum, bankNum.
 * \param[in] cpuNum       number of the processor, as MW_GetCPUSensorNumber() counts
 * \param[in] bankHighBit  lowest bit goes to bit 7 of the third data byte, when offset is 11 and bankNum is not 255
 * \param[in] bankNum      number of the bank; 255 none
 * \param[in] offset       state of the processor's sensor by IPMI's list for type 0x07: 0 internal error, 1 thermal
 *                         trip, ..., 11 machine check; not checked
 * \param[in] assertFlag   0 error, 1 over; checked
 * \return #OXA_OK or #OXA_FAILED
 */
uint32_t addCPUError(uint32_t cpuNum, uint32_t bankHighBit, uint32_t bankNum, uint32_t offset, uint32_t assertFlag);

/**
 * An error of a memory module.
 *
 * Record: type 0x02, sensor type 0x0C, the module's sensor number (MW_GetMemSensorNumber()), event type 0x6F, data
 * offset, dimmNum, errorNum.
 * \param[in] dimmNum     number of the memory module, 0 to 255, as MW_GetMemSensorNumber() counts
 * \param[in] offset      state of the memory's sensor by IPMI's list for type 0x0C: 0 correctable, 1 uncorrectable ECC
 *                        error, ..., 6 presence, 7 configuration error; not checked.  14 exists in profile 1 (Kestrin)
 *                        only: elsewhere nothing is sent, #OXA_OK
 * \param[in] errorNum    number of the error, 0 to 255; the caller's own, not looked at
 * \param[in] assertFlag  0 error, 1 over; checked
 * \return #OXA_OK or #OXA_FAILED
 */
uint32_t addMemError(uint32_t dimmNum, uint32_t offset, uint32_t errorNum, uint32_t assertFlag);

/**
 * The state of an I2C bus.
 *
 * Record: type 0x02, byte 8 the LUN, sensor type 0x21, sensorNumber, event type 0x6F, data 0xB8, 0x7B, eventData3.
 * \param[in] eventData3    third byte of event data
 * \param[in] assertFlag    0 event, 1 over; checked
 * \param[in] sensorNumber  sensor number, as it goes into the record
 * \param[in] lun           LUN of the sensor, 0 to 3 (low 2 bits)
 * \return #OXA_OK or #OXA_FAILED
 */
uint32_t addI2CStatusSel(uint32_t eventData3, uint32_t assertFlag, uint32_t sensorNumber, uint32_t lun);

/**
 * An alarm that is sent as a trap.
 *
 * Record: type 0xC0, byte 8 eventNum, sensor type 0x24 platform alert, event type 0x6F, data 0x03, reason.
 * \param[in] entityId  IPMI entity of the device
 * \param[in] reason    reason code, 0 to 255
 * \param[in] eventNum  number of the event
 * \param[in] eventDir  0 alarm, 1 over; not checked
 * \return #OXA_OK or #OXA_FAILED
 */
uint32_t addTrapSELAlarm(uint32_t entityId, uint32_t reason, uint32_t eventNum, uint32_t eventDir);

/**
 * A power drop of the machine or of a processor; profile 3 (Vorana) only.
 *
 * Any other profile is an error line and #OXA_FAILED, before the flag is looked at.  Record: type 0x02, sensor type
 * 0x08, the power-fault sensor's number (MW_GetPowerFaultSensorNum()), its low 2 bits in byte 8 as well, event type
 * 0x6F, data 0x01, drop type and processor, reasonMask.
 * \param[in] dropType    type of the drop, 0 to 15 (bits 0-3 of the second data byte)
 * \param[in] cpuIndex    number of the processor, 0 to 15 (bits 4-7)
 * \param[in] reasonMask  one bit per reason, 0 to 255
 * \param[in] eventDir    0 drop, 1 over; checked
 * \return #OXA_OK or #OXA_FAILED
 */
uint32_t addPowerDropSEL(uint32_t dropType, uint32_t cpuIndex, uint32_t reasonMask, uint32_t eventDir);

/**
 * A leak, or (profile 7, Lumora, only) the end of one.
 *
 * Record: type 0x02; LUN, sensor type, sensor number and event type are those of the leak sensor
 * (MW_GetSpecificSensorInfo(); when that fails nothing is sent, error line, #OXA_FAILED); data 0x81, position (bits
 * 4-7) and kind (bits 0-3) for the kinds 1 to 3, else 0x01, 0xFF.  The end of a leak in another profile: nothing is
 * sent, #OXA_FAILED.
 * \param[in] kind           what leaks, 1 to 3 with its position; other values: no more is known
 * \param[in] ptLeakageInfo  position 0 to 15, and 1 in ucDeassertFlag when the leak is gone; a null pointer is an error
 *                           line and #OXA_FAILED
 * \return #OXA_OK or #OXA_FAILED
 */
uint32_t addLeakageSel(uint32_t kind, const LeakageInfo *ptLeakageInfo);
/** @} */

#ifdef __cplusplus
}
#endif
#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#endif
