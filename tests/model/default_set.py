#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""An independent model of the Default profile's static sensor set.

Reads a board file and prints the complete set: every 64-byte record with its 32-byte device-table entry, in the order
in which the driver appends them, and the count that the driver reports (null when the pass ends without a count).
Every platform call is taken to succeed, but for the two whose failure ends the pass.  Nothing here is shared with
the library: the templates are typed in as data a second time, so that two transcriptions have to meet.

    default_set.py boards/fullest.toml
    default_set.py --stored full:CPU_POWER --stored compact:OS_BOOT boards/fullest.toml
    default_set.py --lines boards/fullest.toml        one line per record: name, record, entry
"""
import argparse
import json
import os
import sys
from dataclasses import dataclass
from typing import Optional

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from board import Board, CpuVoltage, load  # noqa: E402

# ---- sensor identifiers of the support flags ----------------------------------------------------------------
SENSOR_CPU_VR_TEMP, SENSOR_CPU_VOLTS, SENSOR_INPUT_TEMP, SENSOR_OUTPUT_TEMP = 101, 102, 103, 104
SENSOR_ENV_HUMI, SENSOR_PDB_TEMP, SENSOR_VCC12V, SENSOR_POWER_FAULT = 105, 106, 107, 108
SENSOR_PCH_TEMP, SENSOR_POWER_BUTTON, SENSOR_UID_BUTTON, SENSOR_INTRUSION, SENSOR_ME = 121, 122, 123, 124, 125
KIND_INPUT_VOLTS, KIND_OUTPUT_VOLTS = 3, 4
CPU_TYPE_INTEL, CPU_TYPE_DOMAIN_VOLT = 1, 3


# ---- templates ------------------------------------------------------------------------------------------------
@dataclass(frozen=True)
class Analog:
    """A full sensor record.  Thresholds in the order of the record: UNR UC UNC LNR LC LNC."""

    entity: int
    type: int
    units1: int
    base: int
    m: int
    r: int
    maximum: int
    minimum: int
    code: int
    item: int = 0
    flag: int = 0
    mark: int = 0xFF
    thresholds: tuple = (0, 0, 0, 0, 0, 0)
    masks: tuple = (0, 0, 0)
    event: int = 0x01
    modifier: int = 0
    b: int = 0
    hysteresis: int = 3


@dataclass(frozen=True)
class Discrete:
    """A compact sensor record."""

    entity: int
    type: int
    event: int
    masks: tuple
    code: int
    item: int = 0
    flag: int = 0
    mark: int = 0xFF
    init: int = 0x67
    caps: int = 0x40
    share: tuple = (0x11, 0x00)
    hysteresis: int = 1
    units1: int = 0x00


def celsius(entity, code, item=0, flag=0, **more):
    return Analog(entity, 0x01, 0x80, 1, 1, 0, 0x7F, 0x80, code, item, flag, **more)


def volts(entity, m, r, code, item=0, flag=0, **more):
    return Analog(entity, 0x02, 0x00, 4, m, r, 0xFF, 0x00, code, item, flag, **more)


def watts(entity, m, code, item=0, flag=0):
    return Analog(entity, 0x08, 0x00, 6, m, 0, 0xFF, 0x00, code, item, flag)


def event(type_, reading, mask, entity, item):
    """The family of system event sensors: device code 55h, one item each."""
    return Discrete(entity, type_, reading, (mask, mask, mask), 0x55, item, 0x80)


INLET = celsius(0x37, 0x00, 0, 0x80, thresholds=(52, 50, 45, 0, 0, 0), masks=(0x0A80, 0x7A80, 0x3838))
OUTLET = celsius(0x07, 0x40)
PCH = celsius(0x07, 0x43)
HUMIDITY = Analog(0x37, 0x0B, 0x01, 0, 1, 0, 0xFF, 0x00, 0x41, 0, 0x80)
PDB = celsius(0x15, 0x42, 1, 0x80)
MIDDLE_PDB = celsius(0x15, 0x42, 2, 0x80)
RAIL12 = volts(0x07, 100, -3, 0x44, 1, thresholds=(0, 144, 132, 0, 96, 108), masks=(0x3285, 0x3285, 0x1B1B))
TOTAL_POWER = watts(0x07, 17, 0x9E, 0, 0x80)
CPU_POWER = watts(0x03, 6, 0xD9, 1)
CPU_TEMP = celsius(0x03, 0x49, 1)
CPU_VR_TEMP = celsius(0x03, 0x4A)
CPU_CORE = volts(0x03, 100, -4, 0x4B, thresholds=(0xF0, 0xEB, 0xE6, 0x78, 0x7D, 0x82), masks=(0x7A95, 0x7A95, 0x3F3F))
DIMM_TEMP = celsius(0x20, 0x4E, 1)
DIMM_GROUP = celsius(0x08, 0x4E, 2)
PSU_VIN = volts(0x0A, 200, -2, 0x4F, 1, 0x80)
PSU_VOUT = volts(0x0A, 1, 0, 0x4F, 2, 0x80)
PSU_PIN = watts(0x0A, 14, 0x50, 1, 0x80)
PSU_POUT = watts(0x0A, 13, 0x50, 2, 0x80)
PSU_TEMP = celsius(0x0A, 0x52, 0, 0x80)
NVME_TEMP = celsius(0x04, 0xF2, mark=0x25, thresholds=(0, 70, 0, 0, 0, 0), masks=(0x0200, 0x2200, 0x1010))
DISK_GROUP = celsius(0x04, 0x56, 1)
OCP_TEMP = celsius(0x97, 0xCD, 0, 0x80)
SW_VOLT = volts(0x10, 200, -3, 0x45)
SW_CURRENT = Analog(0x10, 0x03, 0x00, 5, 1, 0, 0xFF, 0x00, 0x46)
SW_TEMP = celsius(0x10, 0x47)

FAN_STATUS = Discrete(0x1D, 0x04, 0x08, (0x0001, 0x0001, 0x0003), 0x54, 1, 0x80)
FAN_REDUNDANCY = Discrete(0x1E, 0x04, 0x0B, (0x0003, 0x0003, 0x0003), 0x54, 2, 0x80)
LEAK = Discrete(0x1E, 0x0A, 0x03, (0x0002, 0x0002, 0x0003), 0x5E, 0, 0x80)
CPU_STATUS = Discrete(0x03, 0x07, 0x6F, (0x0CA3, 0x0CA3, 0x0CA3), 0x4D, 1)
PROCHOT = Discrete(0x03, 0x07, 0x6F, (0x0400, 0x0400, 0x0400), 0x4D, 2)
MEM_STATUS = Discrete(0x20, 0x0C, 0x6F, (0x0042, 0x0042, 0x0042), 0xA9, init=0x7F)
HDD_STATUS = Discrete(0x04, 0x0D, 0x6F, (0x0001, 0x0001, 0x0047), 0xF0, mark=0x25, init=0x63, caps=0xC0,
                      share=(0x01, 0x00), hysteresis=0, units1=0xC0)
OCP_ERR = Discrete(0x97, 0x15, 0x07, (0x0006, 0x0006, 0x7FFF), 0xAA, init=0x63, share=(0x00, 0x01), hysteresis=0)
PCIE_SLOT = Discrete(0x0B, 0x21, 0x6F, (0x0005, 0x0005, 0x0005), 0x57)
PSU_STATUS = Discrete(0x0A, 0x08, 0x6F, (0x004F, 0x004F, 0x004F), 0x53, 1, 0x80)
PSU_REDUNDANCY = Discrete(0x13, 0x08, 0x0B, (0x0003, 0x0003, 0x0003), 0x53, 2, 0x80)

POWER_BUTTON = event(0x14, 0x6F, 0x0001, 0x0C, 1)
UID_BUTTON = event(0x14, 0x03, 0x0002, 0x0C, 2)
EVENT_LOG = event(0x10, 0x6F, 0x0034, 0x06, 3)
OS_BOOT = event(0x1F, 0x6F, 0x007F, 0x23, 4)
ACPI = event(0x22, 0x6F, 0x0061, 0x07, 5)
RESTART = event(0x1D, 0x6F, 0x00FF, 0x07, 6)
BMC_BOOT = event(0x28, 0x03, 0x0002, 0x2E, 8)
OS_STOP = event(0x20, 0x6F, 0x003F, 0x23, 9)
INTRUSION = event(0x05, 0x6F, 0x0001, 0x17, 10)
ME = event(0x28, 0x6F, 0x003F, 0x2E, 12)
NTP = event(0x12, 0x6F, 0x0020, 0x21, 13)
POWER_FAULT = event(0x08, 0x6F, 0x0002, 0x13, 14)


def coolant(type_, units1, base, m, r, maximum, minimum, code, item, modifier=0):
    """A reading of the coolant distribution unit."""
    return Analog(0xE4, type_, units1, base, m, r, maximum, minimum, code, item, 0x80, modifier=modifier)


# Name and template by row of the table, then the six fans.
CDU = (
    ("CDU_INLET_TEMP", coolant(0x01, 0x80, 1, 1, 0, 0x7F, 0x80, 0xA6, 1)),
    ("CDU_DEW_TEMP", coolant(0x01, 0x80, 1, 1, 0, 0x7F, 0x80, 0xA6, 2)),
    ("CDU_SUPPLY_TEMP", coolant(0x01, 0x80, 1, 1, 0, 0x7F, 0x80, 0xA6, 3)),
    ("CDU_DIFF_TEMP", coolant(0x01, 0x80, 1, 1, 0, 0x7F, 0x80, 0xA6, 4)),
    ("CDU_ENV_HUMI", coolant(0x15, 0x01, 0, 1, 0, 0xFF, 0x00, 0xA6, 5)),
    ("CDU_SET_FAN_SPD", coolant(0x04, 0x01, 0, 1, 0, 0xFF, 0x00, 0xA6, 6)),
    ("CDU_SUPPLY_PRESS", coolant(0x0B, 0x00, 14, 100, 0, 0xFF, 0x00, 0xA6, 7)),
    ("CDU_FLOW_RATE", coolant(0x0B, 0x02, 37, 1, 0, 0xFF, 0x00, 0xA6, 8, modifier=23)),
    ("CDU_RETURN_TEMP", coolant(0x01, 0x80, 1, 1, 0, 0x7F, 0x80, 0xA6, 10)),
    ("CDU_RETURN_PRESS", coolant(0x0B, 0x00, 14, 4, 0, 0xFF, 0x00, 0xA6, 11)),
    ("CDU_DIFF_PRESS", coolant(0x0B, 0x00, 14, 4, 0, 0xFF, 0x00, 0xA6, 12)),
    ("CDU_EC_us/cm", coolant(0x0B, 0x00, 0, 8, 0, 0xFF, 0x00, 0xA6, 13)),
)
CDU_FAN = coolant(0x04, 0x00, 18, 100, 0, 0xFF, 0x00, 0xA6, 9)


# ---- building -------------------------------------------------------------------------------------------------
def word(value):
    return bytes((value & 0xFF, value >> 8))


def full_record(t: Analog, name: str, instance: int, m: int, thresholds, masks, exponents: int, b: int) -> bytes:
    text = name.encode("latin-1")
    out = bytes((0, 0, 0x51, 0x01, 43 + len(text), 0x20, 0, 0, t.entity, instance, 0x7F, 0x68, t.type, t.event))
    out += b"".join(word(mask) for mask in masks)
    out += bytes((t.units1, t.base, t.modifier, 0, m, 0, b, 0, 0, exponents, 0, 0, 0, 0, t.maximum, t.minimum))
    out += bytes(thresholds) + bytes((t.hysteresis, t.hysteresis, 0, 0, 0, 0xC0 + len(text))) + text.ljust(16, b"\xff")
    assert len(out) == 64
    return out


def compact_record(t: Discrete, name: str, instance: int, slot: int) -> bytes:
    text = name.encode("latin-1")
    out = bytes((0, 0, 0x51, 0x02, 27 + len(text), 0x20, 0, 0, t.entity, instance, t.init, t.caps, t.type, t.event))
    out += b"".join(word(mask) for mask in t.masks)
    out += bytes((t.units1, 0, 0, *t.share, t.hysteresis, t.hysteresis, 0, 0, slot, 0, 0xC0 + len(text)))
    out += text.ljust(16, b"\xff") + bytes(16)
    assert len(out) == 64
    return out


def device_entry(t, record: bytes, index: int, client, m: int) -> bytes:
    out = bytearray(32)
    out[0], out[1], out[3], out[5], out[20] = t.code, t.item, index, t.flag, t.mark
    if client is not None:
        out[6], out[7] = client
    out[21:26] = bytes((record[8], record[9], record[10], record[12], record[13]))
    out[26] = m
    return bytes(out)


class EndOfPass(Exception):
    """A guard ended the pass: no count is written."""


@dataclass
class Record:
    name: str
    record: bytes
    entry: bytes


class Pass:
    def __init__(self, board: Board, stored=()):
        self.board = board
        self.stored = set(stored)  # (record type, name)
        self.records: list[Record] = []

    def add(self, template, name: str, *, offset: int = 0, instance: Optional[int] = None, index: int = 0, client=None,
            m: Optional[int] = None, b: Optional[int] = None, exponents: Optional[int] = None, thresholds=None, masks=None,
            slot: int = 0) -> None:
        """Appends one record.  `offset` is added to instance 60h and drops the record when it would wrap."""
        if instance is None:
            if 0xFF - offset < 0x60:
                return
            instance = 0x60 + offset
        name = name[:16]
        if isinstance(template, Analog):
            m = template.m if m is None else m
            record = full_record(template, name, instance, m, thresholds or template.thresholds,
                                 masks or template.masks, (template.r & 0xF) << 4 if exponents is None else exponents,
                                 template.b if b is None else b)
            kind = 1
        else:
            record, m, kind = compact_record(template, name, instance, slot), 0, 2
        if (kind, name) in self.stored:
            return
        self.records.append(Record(name, record, device_entry(template, record, index, client, m)))

    # -- the driver's steps ------------------------------------------------------------------------------------
    def run(self) -> Optional[int]:
        try:
            self.steps()
        except EndOfPass:
            return None
        return len(self.records) & 0xFFFF

    def steps(self):
        b = self.board
        if b.fatal_fact_fails:
            raise EndOfPass
        self.psu_count, self.ocp_count = b.psu_count, b.ocp_count
        self.fan_count, self.pcie_count = b.fan_count, b.pcie_count
        if b.board_id in (0x558B, 0x5580):
            self.ocp_count = 0
        elif b.board_id == 0x5497:
            self.psu_count = self.ocp_count = self.fan_count = self.pcie_count = 0
        elif b.board_id in (0x550F, 0x55DE, 0x55D8) and b.switch_supported and b.card_online(2):
            self.switch_card()
        for step in (self.cpus, self.psus, self.memory, self.pcie, self.fans, self.disks, self.ocp, self.static_table,
                     self.voltage_domains, self.liquid_cooling, self.switch_temperatures):
            step()

    def switch_card(self):
        card = self.board.card_id(2)
        if card == 0x5510:
            for i in range(1, 5):
                client = self.board.switch_client(i)
                self.add(SW_VOLT, f"SW_VOLT_{i:02d}", offset=i, index=i, client=client)
                self.add(SW_CURRENT, f"SW_CURRENT_{i:02d}", offset=i, index=i, client=client)
        elif card == 0x5517:
            for i in range(1, 9):
                self.add(SW_TEMP, f"SW_TEMP_{i:02d}", offset=i, index=i)

    def cpus(self):
        b = self.board
        if b.cpu_silk + b.cpu_count > 255:
            raise EndOfPass
        small = b.board_id == 0x5497
        for number in range(b.cpu_silk, b.cpu_silk + b.cpu_count):
            n = number - b.cpu_silk
            if not b.cpu_wanted(n):
                continue
            client = b.vr_client(n)
            self.add(PROCHOT, "CPU_PROCHOT", offset=n, index=n)
            self.add(CPU_TEMP, "CPU_TEMP" if small else f"CPU_TEMP_{number:02d}", offset=n, index=n)
            if b.supports(SENSOR_CPU_VR_TEMP):
                self.add(CPU_VR_TEMP, f"CPU_VR_TEMP_{number:02d}", offset=n, index=n, client=client)
            if b.supports(SENSOR_CPU_VOLTS):
                self.add(CPU_CORE, f"CPU_VOLTS_{number:02d}", index=n, client=client)
            self.add(CPU_STATUS, "CPU_STATUS" if small else f"CPU_STATUS_{number:02d}", offset=n, index=n)

    def psus(self):
        b = self.board
        if self.psu_count == 0xFF:
            raise EndOfPass
        if self.psu_count == 0:
            return
        for i in range(1, self.psu_count + 1):
            kept = 0x60 + i if i <= 159 else 0x60
            if b.supports_kind(KIND_INPUT_VOLTS):
                self.add(PSU_VIN, f"INPUT_VOLTS_{i:02d}", index=i)
            if b.supports_kind(KIND_OUTPUT_VOLTS):
                self.add(PSU_VOUT, f"OUTPUT_VOLTS_{i:02d}", index=i)
            self.add(PSU_STATUS, f"PSU_STATUS_{i:02d}", offset=i, index=i)
            self.add(PSU_TEMP, f"PSU_TEMP_{i:02d}", instance=kept, index=i)
            self.add(PSU_PIN, f"PSU_PIN_{i:02d}", instance=kept, index=i)
            self.add(PSU_POUT, f"PSU_POUT_{i:02d}", instance=kept, index=i)
        if b.psu_groups <= 2 and b.psus_per_group != 0:
            for group, name in zip(range(b.psu_groups), ("PSU_REDUNDANT", "PSU_REDUNDANT_M")):
                self.add(PSU_REDUNDANCY, name, offset=group, index=group)

    def memory(self):
        b = self.board
        if b.dimm_count == 0xFF:
            raise EndOfPass
        if b.simplified:
            for group in range(b.cpu_count if b.dimm_count else 0):
                self.add(DIMM_GROUP, f"DIMMG{group}_TEMP", offset=group, index=group)
            return
        for d in range(b.dimm_count):
            name = b.dimm_name(d)
            self.add(DIMM_TEMP, f"MEM_TEMP_{name}", offset=d, index=d)
            self.add(MEM_STATUS, f"MEM_STATUS_{name}", offset=d, index=d)

    def pcie(self):
        if self.pcie_count == 0xFF:
            raise EndOfPass
        for index in range(1, self.pcie_count + 1):
            slot = self.board.pcie_slot(index)
            if slot is not None:
                self.add(PCIE_SLOT, f"PCIE_STATUS_{slot:02d}", offset=slot, index=slot)

    def fans(self):
        if self.fan_count == 0xFF:
            raise EndOfPass
        for fan in range(self.fan_count):
            number = self.board.fan_number(fan)
            if number != 0xFF:
                self.add(FAN_STATUS, f"FAN_STATUS_{number:02d}", offset=number, index=number)

    def disks(self):
        b = self.board
        if not b.disks_enabled or not b.disk_service:
            return
        for plane in range(min(b.backplane_count, 32)):
            start, count = b.backplane(plane)
            if start + count > 255:
                raise EndOfPass
            for slot in range(start, start + count):
                self.add(HDD_STATUS, f"HDD_STATUS_{slot:02d}", instance=slot, index=slot, slot=slot)
                if b.is_nvme(slot):
                    self.add(NVME_TEMP, f"NVME_TEMP_{b.converted(slot):02d}", instance=slot, index=slot)
            if b.simplified and count:
                self.add(DISK_GROUP, f"DISKG{plane}_TEMP", offset=plane, index=plane)

    def ocp(self):
        if self.ocp_count == 0xFF:
            raise EndOfPass
        for i in range(1, self.ocp_count + 1):
            self.add(OCP_TEMP, f"OCP_TEMP_{i:02d}", offset=i, index=i)
            self.add(OCP_ERR, f"OCP_ERR_{i:02d}", instance=0x60 + i if i <= 159 else 0x60,
                     index=self.board.restored_ocp(i))

    def static_table(self):
        b = self.board

        def gated(sensor, *args, **more):
            if b.supports(sensor):
                self.add(*args, **more)

        if b.liquid_mode != 2:
            self.add(FAN_REDUNDANCY, "FAN_REDUNDANCY")
        self.add(CPU_POWER, "CPU_POWER")
        self.add(watts(0x20, to_byte(b.memory_accuracy), 0xD9, 2), "MEM_POWER")
        if b.disk_accuracy != 0:
            self.add(watts(0x04, to_byte(b.disk_accuracy), 0xD9, 4), "HDD_POWER")
        if b.board_id != 0x5497:
            self.add(TOTAL_POWER, "POWER_WATTS")
        if b.liquid_mode != 2 and b.fan_accuracy != 0:
            self.add(watts(0x1D, to_byte(b.fan_accuracy), 0xD9, 5), "FAN_POWER")
        if b.cpu_type == CPU_TYPE_INTEL:
            gated(SENSOR_PCH_TEMP, PCH, "PCH_TEMP")
        gated(SENSOR_POWER_BUTTON, POWER_BUTTON, "POWER_BUTTON")
        self.add(EVENT_LOG, "EVENT_LOG")
        self.add(OS_BOOT, "OS_BOOT")
        self.add(ACPI, "ACPI_STATUS")
        self.add(RESTART, "SYS_RESTART")
        gated(SENSOR_UID_BUTTON, UID_BUTTON, "UID_BUTTON")
        self.add(BMC_BOOT, "BMC_BOOT_UP")
        self.add(OS_STOP, "OS_STOP")
        gated(SENSOR_INTRUSION, INTRUSION, "INTRUSION")
        if b.liquid_mode == 1:
            self.add(LEAK, "LEAKAGE")
        gated(SENSOR_INPUT_TEMP, INLET, "INPUT_TEMP", client=b.inlet_client)
        gated(SENSOR_ENV_HUMI, HUMIDITY, "ENV_HUMI")
        gated(SENSOR_ME, ME, "ME")
        gated(SENSOR_OUTPUT_TEMP, OUTLET, "OUTPUT_TEMP")
        gated(SENSOR_VCC12V, RAIL12, "VCC12V")
        gated(SENSOR_PDB_TEMP, PDB, "PDB_TEMP")
        gated(SENSOR_PDB_TEMP, MIDDLE_PDB, "MIDDLEPDB_TEMP", instance=0x61)
        self.add(NTP, "NTP_SYNC_FAIL")
        gated(SENSOR_POWER_FAULT, POWER_FAULT, "POWER_FAULT")

    def voltage_domains(self):
        b = self.board
        if b.cpu_type != CPU_TYPE_DOMAIN_VOLT:
            return
        for cpu in (0, 1):
            if not b.cpu_wanted(cpu):
                continue
            printed = (b.cpu_silk + cpu) & 0xFF
            for domain in (0, 1):
                voltage = 2 * cpu + domain + 1
                name, instance = f"CPU{printed}_D{domain}_N2", 0x60
                if voltage == 1 and b.board_id == 0x5497:
                    name, instance = "CPU_VOLTS", 0xE0
                client = b.vr_client(printed - b.cpu_silk) if printed >= b.cpu_silk else None
                self.add_domain(b.voltage(voltage), voltage, name, instance, client)

    def add_domain(self, v: CpuVoltage, voltage, name, instance, client):
        # bit of the mask, position in the record's order UNR UC UNC LNR LC LNC, bits of bytes 14, 15, 16, 17
        rules = ((0x01, 5, 0x01, 0x10, 0x01, 0x00), (0x02, 4, 0x04, 0x20, 0x04, 0x00), (0x04, 3, 0x10, 0x40, 0x10, 0x00),
                 (0x08, 2, 0x80, 0x00, 0x80, 0x10), (0x10, 1, 0x00, 0x02, 0x00, 0x22), (0x20, 0, 0x00, 0x08, 0x00, 0x48))
        given = (v.unr, v.uc, v.unc, v.lnr, v.lc, v.lnc)
        thresholds, mask_bytes = [0] * 6, [0] * 4
        for bit, position, *widen in rules:
            if v.mask & bit:
                thresholds[position] = given[position]
                mask_bytes = [have | more for have, more in zip(mask_bytes, widen)]
        masks = (mask_bytes[0] | mask_bytes[1] << 8, mask_bytes[2] | mask_bytes[3] << 8, v.mask | v.mask << 8)
        self.add(volts(0x03, v.m, 0, 0x4C, voltage), name, instance=instance, client=client, b=v.b,
                 exponents=v.exponents, thresholds=tuple(thresholds), masks=masks)

    def liquid_cooling(self):
        if not self.board.cdu_managed:
            return
        for name, template in CDU:
            self.add(template, name, instance=0xE0)
        for fan in range(1, 7):
            self.add(CDU_FAN, f"CDU_FAN_SPD_{fan:02d}", instance=0xE0 + fan)

    def switch_temperatures(self):
        b = self.board
        if b.board_id == 0x5502 and b.switch_supported and b.card_online(2) and b.card_id(2) == 0x5504:
            names = ("SW_INPUT_TEMP_01", "SW_INPUT_TEMP_02", "SW_OUTPUT_T_01", "SW_OUTPUT_T_02")
            for x, name in enumerate(names):
                self.add(celsius(0x10, 0x48, x + 1), name, offset=x, index=x)


def to_byte(value: int) -> int:
    """A configured number as a record byte: a signed value below 1 means "not set"."""
    signed = value - (1 << 32) if value & 0x80000000 else value
    return 255 if signed < 1 else signed & 0xFF


# ---- output ---------------------------------------------------------------------------------------------------
def line(record: Record) -> str:
    return f"{record.name} {record.record.hex()} {record.entry.hex()}"


def compute(board: Board, stored=()):
    run = Pass(board, list(stored) + board.stored_names)
    return run.run(), run.records


def text_of(board: Board) -> str:
    """What the checked-in files hold: the count, then one line per record."""
    count, records = compute(board)
    head = f"count {count}" if count is not None else "no count"
    return "\n".join([head, *map(line, records)]) + "\n"


def parse_stored(values):
    kinds = {"full": 1, "compact": 2}
    for value in values:
        kind, _, name = value.partition(":")
        yield kinds[kind], name


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("board")
    parser.add_argument("--stored", action="append", default=[], metavar="full|compact:NAME",
                        help="a sensor that the extended store holds already")
    parser.add_argument("--lines", action="store_true", help="the form of the checked-in files")
    args = parser.parse_args()
    board = load(args.board)
    if args.lines:
        print(text_of(board), end="")
        return
    count, records = compute(board, parse_stored(args.stored))
    print(json.dumps({"count": count, "written": count is not None,
                      "records": [f"{r.record.hex()} {r.entry.hex()}" for r in records],
                      "names": [r.name for r in records]}))


if __name__ == "__main__":
    main()
