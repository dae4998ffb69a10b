#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""An independent model of the static sensor sets of the eight other profiles.

Templates, names and order are typed in here a second time, profile by profile; what a template has in common with the
Default set comes from default_set.py.

    profile_sets.py kestrin boards/fullest.toml        one line per record: name, record, entry
    profile_sets.py default boards/fullest.toml
"""
import os
import sys
from dataclasses import dataclass
from typing import Callable, Optional

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import default_set as d  # noqa: E402
from board import Board, load  # noqa: E402

SENSOR = {
    "BP_FRONT_12V": 19, "BP_REAR_12V": 20, "BP_FRONT_TEMP": 21, "BP_REAR_TEMP": 22, "SYS_54_VOLT": 25,
    "GPU_54_VOLT": 26, "PDB_BOARD_POWER": 27, "NIC_POWER": 28, "GPU_BOARD_POWER": 29, "CPU_VCORE_CURRENT": 109,
    "CPU_VCORE1_CURRENT1": 110, "CPU_VSOC_CURRENT": 111, "CPU_DDR_VDD1_CURRENT": 112, "PWR_MODULE_TEMP": 126,
    "UBB_RT_TEMP": 127,
}


def amperes(entity, m, r, code, item=0, flag=0):
    return d.Analog(entity, 0x03, 0x00, 5, m, r, 0xFF, 0x00, code, item, flag)


def other_watts(entity, m, code, item=0, flag=0):
    """Power as Lumora reports it: sensor type "other units"."""
    return d.Analog(entity, 0x0B, 0x00, 6, m, 0, 0xFF, 0x00, code, item, flag)


def rail54(entity, item, flag):
    return d.volts(entity, 30, -2, 0x95, item, flag, mark=0x28, thresholds=(0, 235, 233, 0, 102, 107),
                   masks=(0x3285, 0x3285, 0x1B1B))


def backplane12(item):
    return d.volts(0x0B, 100, -3, 0x9A, item, thresholds=(0, 144, 132, 0, 96, 108), masks=(0x3285, 0x3285, 0x1B1B))


def backplane_temp(item):
    return d.celsius(0x0B, 0x99, item, thresholds=(0, 60, 58, 0, 0, 0), masks=(0x0280, 0x3280, 0x1818), hysteresis=2)


# ---- templates that the Default set does not have -------------------------------------------------------------
TJMAX = d.celsius(0x03, 0x49, 2)
TCONTROL = d.celsius(0x03, 0x49, 3)
DTS = d.celsius(0x03, 0x49, 4)
STANDBY12 = d.volts(0x07, 100, -3, 0x44, 2, 0x80, thresholds=(0, 144, 132, 0, 96, 108), masks=(0x3285, 0x3285, 0x1B1B))
PSU_POWER = d.watts(0x0A, 14, 0x50, 3, 0x80)
PSU_IIN = amperes(0x0A, 1, -1, 0x51, 1, 0x80)
PSU_IOUT = amperes(0x0A, 1, 0, 0x51, 2, 0x80)
PSU_FAN = d.Discrete(0x0A, 0x04, 0x03, (0x0002, 0x0002, 0x0003), 0x53, 3, 0x80)
PSU_SUPPLY = d.Discrete(0x0A, 0x08, 0x6F, (0x004F, 0x004F, 0x004F), 0x53, 4, 0x80)
HDD_MAX_TEMP = d.celsius(0x04, 0x56, 2)
POWER_MODULE = d.celsius(0x14, 0x58)
RETIMER = d.celsius(0xE0, 0x59)
SWITCH_CHIP = d.celsius(0x10, 0x5A, 1)
SWITCH_G = d.celsius(0x10, 0x5A, 2)
LAN_SWITCH = d.celsius(0x10, 0x5B)
VCORE, VCORE1, VSOC, DDR_VDD1 = (amperes(0x03, 2, 0, 0x5C, item) for item in (1, 2, 3, 4))
CPU_VR_POWER = d.watts(0x03, 3, 0x5D, 1)
MEM_HOT = d.Analog(0x08, 0x0C, 0xC0, 0, 0, 0, 0x00, 0x00, 0x4D, 3, masks=(0x0400, 0x0400, 0x0400), event=0x6F,
                   hysteresis=0)
SINGLE_CPU_POWER = d.watts(0x03, 3, 0xD9, 3)
LUMORA_TOTAL = other_watts(0x07, 17, 0x9E, 0, 0x80)
RACK_POWER = d.Analog(0x07, 0x0B, 0x00, 9, 236, 0, 0xFF, 0x00, 0x3B, 0, 0x80, b=118, hysteresis=0)
EN_TEMP = d.celsius(0x37, 0x00, 0, 0x80, thresholds=(52, 50, 45, 0, 0, 0), masks=(0x0A80, 0x7A80, 0x3838))
GPU_BOARD, PDB_BOARD, NIC_BOARD = d.watts(0xE0, 8, 0x93, 3), d.watts(0x13, 9, 0x93, 2), d.watts(0x0B, 2, 0x93, 1)
SYS54, GPU54 = rail54(0x07, 1, 0x80), rail54(0xE0, 2, 0)
SWITCH_POWER = d.watts(0x10, 1, 0x93, 4)
FRONT_12V, REAR_12V, FRONT_TEMP, REAR_TEMP = backplane12(1), backplane12(2), backplane_temp(1), backplane_temp(2)
MOTHER_BOARD = d.Discrete(0x07, 0x15, 0x07, (0x0006, 0x0006, 0x7FFF), 0x55, 0x40, share=(0x00, 0x01), hysteresis=0)

SYS_BOOT = d.event(0x1D, 0x6F, 0x00FF, 0x22, 7)
LAN_LEASH = d.event(0x05, 0x6F, 0x0010, 0x07, 11)
FW_PROGRESS = d.event(0x0F, 0x6F, 0x0007, 0x22, 15)
BIOS_BOOT = d.event(0x0F, 0x6F, 0x0004, 0x22, 16)
SYSTEM_EVENT = d.event(0x12, 0x6F, 0x001F, 0x07, 17)
CRITICAL_INT = d.event(0x13, 0x6F, 0x0FFF, 0x07, 18)
WATCHDOG = d.event(0x23, 0x6F, 0x010F, 0x06, 19)
BOOT_ERROR = d.event(0x1E, 0x6F, 0x001F, 0x22, 20)
HEALTH = d.Discrete(0x07, 0x12, 0x07, (0x0006, 0x0006, 0x7FFF), 0x55, 21, 0x80)
FW_UPDATE = d.event(0x2B, 0x6F, 0x0082, 0x2E, 22)
BMC_STATUS = d.event(0x28, 0x6F, 0x000F, 0x2E, 23)
I2C = d.event(0x21, 0x6F, 0x0100, 0x07, 24)
PCIE_ALL = d.event(0x13, 0x6F, 0x05B0, 0x31, 25)
SHUTDOWN = d.event(0x20, 0x6F, 0x000C, 0x23, 26)


def kestrin_coolant(type_, units1, base, m, r, maximum, minimum, item, modifier=0):
    return d.coolant(type_, units1, base, m, r, maximum, minimum, 0x8F, item, modifier)


def leak_detector(item):
    return d.Discrete(0xE4, 0x0A, 0x03, (0x0000, 0x0000, 0xFFFF), 0x8F, item, 0x80)


KESTRIN_CDU = (
    ("CDU_Inlet_Temp", kestrin_coolant(0x01, 0x80, 1, 1, 0, 0xFF, 0x00, 1)),
    ("CDU_Coolant_Tin", kestrin_coolant(0x01, 0x80, 1, 7, 0, 0x7F, 0x80, 2)),
    ("CDU_Coolant_Tout", kestrin_coolant(0x01, 0x80, 1, 7, 0, 0x7F, 0x80, 3)),
    ("CDU_Flow_Rate", kestrin_coolant(0x0B, 0x02, 37, 5, -2, 0xFF, 0x00, 4, modifier=23)),
    ("CDU_Supply_Press", kestrin_coolant(0x0B, 0x00, 14, 5, -2, 0xFF, 0x00, 5)),
    ("CDU_Return_Press", kestrin_coolant(0x0B, 0x00, 14, 5, -2, 0xFF, 0x00, 6)),
    ("CDU_PS_Out_Power", kestrin_coolant(0x08, 0x00, 6, 11, 0, 0xFF, 0x00, 7)),
    ("CDU_Fan_Power", kestrin_coolant(0x08, 0x00, 6, 6, 0, 0xFF, 0x00, 8)),
    ("CDU_Pump_Power", kestrin_coolant(0x08, 0x00, 6, 4, 0, 0xFF, 0x00, 9)),
    ("CDU_LQD_Leakage", leak_detector(14)),
    ("CDU_LQD_Level", leak_detector(15)),
    ("CDU_LQD_Flow", leak_detector(16)),
    ("CDU_LQD_PRESS_H", leak_detector(17)),
    ("CDU_LQD_PRESS_L", leak_detector(18)),
)
KESTRIN_CDU_FAN = kestrin_coolant(0x04, 0x00, 18, 28, 0, 0xFF, 0x00, 10)
KESTRIN_CDU_PS = (
    ("CDU_PS{}_Vin", kestrin_coolant(0x02, 0x00, 4, 1, 0, 0xFF, 0x00, 11)),
    ("CDU_PS{}_Vout", kestrin_coolant(0x02, 0x00, 4, 25, -2, 0xFF, 0x00, 12)),
    ("CDU_PS{}_Iout", kestrin_coolant(0x03, 0x00, 5, 2, -1, 0xFF, 0x00, 13)),
)


# ---- what a row of a static table asks before it builds ---------------------------------------------------------
def has(sensor):
    return lambda b: b.supports(sensor)


def not_5497(b):
    return b.board_id != 0x5497


def fans_wanted(b):
    return b.liquid_mode != 2


def leak_sensor(b):
    return b.liquid_mode == 1


def intel(b):
    return b.cpu_type == d.CPU_TYPE_INTEL


def pch(b):
    return intel(b) and b.supports(d.SENSOR_PCH_TEMP)


def switch_power(b):
    if b.board_id == 0x5600:
        return b.card_online(1) and b.card_id(1) == 0x560A
    if b.board_id == 0x5502:
        return b.switch_sensors_valid
    if b.board_id in (0x55DE, 0x550F):
        return b.card_online(2) and b.card_id(2) == 0x5510
    return False


@dataclass(frozen=True)
class Row:
    name: str
    template: object = None
    gate: Callable[[Board], bool] = lambda b: True
    instance: int = 0x60
    inlet: bool = False
    index: int = 0
    make: Optional[Callable[[Board], object]] = None  # the template, where it depends on the board


def memory_power(name, power=d.watts):
    return Row(name, make=lambda b: power(0x20, d.to_byte(b.memory_accuracy), 0xD9, 2))


def disk_power(name, power=d.watts):
    return Row(name, gate=lambda b: b.disk_accuracy != 0,
               make=lambda b: power(0x04, d.to_byte(b.disk_accuracy), 0xD9, 4))


def fan_power(name, power=d.watts):
    return Row(name, gate=lambda b: fans_wanted(b) and b.fan_accuracy != 0,
               make=lambda b: power(0x1D, d.to_byte(b.fan_accuracy), 0xD9, 5))


def cpu_power(name):
    return Row(name, d.CPU_POWER)


def board_power(name):
    return Row(name, d.TOTAL_POWER, not_5497)


def pch_temp(name):
    return Row(name, d.PCH, pch)


def inlet(name):
    return Row(name, d.INLET, has(d.SENSOR_INPUT_TEMP), inlet=True)


def outlet(name):
    return Row(name, d.OUTLET, has(d.SENSOR_OUTPUT_TEMP))


def humidity(name):
    return Row(name, d.HUMIDITY, has(d.SENSOR_ENV_HUMI))


def main12(name):
    return Row(name, d.RAIL12, has(d.SENSOR_VCC12V))


def pdb(name):
    return Row(name, d.PDB, has(d.SENSOR_PDB_TEMP))


def middle_pdb(name):
    return Row(name, d.MIDDLE_PDB, has(d.SENSOR_PDB_TEMP), instance=0x61)


def fan_redundancy(name):
    return Row(name, d.FAN_REDUNDANCY, fans_wanted)


def leakage(name):
    return Row(name, d.LEAK, leak_sensor)


def power_button(name):
    return Row(name, d.POWER_BUTTON, has(d.SENSOR_POWER_BUTTON))


def uid_button(name):
    return Row(name, d.UID_BUTTON, has(d.SENSOR_UID_BUTTON))


def intrusion(name):
    return Row(name, d.INTRUSION, has(d.SENSOR_INTRUSION))


def engine(name):
    return Row(name, d.ME, has(d.SENSOR_ME))


def power_fault(name):
    return Row(name, d.POWER_FAULT, has(d.SENSOR_POWER_FAULT))


KESTRIN_TABLE = (
    Row("CPU_Tjmax", TJMAX, intel),
    Row("CPU_Tcontrol", TCONTROL, intel),
    Row("SYS_12V_Standby", STANDBY12),
    disk_power("HDD_Total_Power"),
    fan_redundancy("Fan_Redundancy"),
    cpu_power("CPU_Total_Power"),
    fan_power("Fan_Total_Power"),
    memory_power("MEM_Total_Power"),
    board_power("Board_Power"),
    pch_temp("PCH_Temp"),
    uid_button("UID_Button"),
    Row("BMC_Boot_Up", d.BMC_BOOT),
    power_button("Power_Button"),
    Row("Event_Log", d.EVENT_LOG),
    Row("ACPI_Status", d.ACPI),
    Row("Restart_Init", d.RESTART),
    Row("OS_Stop", d.OS_STOP),
    Row("LAN_Leash_Lost", LAN_LEASH),
    Row("SYS_FW_Progress", FW_PROGRESS),
    Row("System_Event", SYSTEM_EVENT),
    Row("Critical_INT", CRITICAL_INT),
    Row("Watchdog2", WATCHDOG),
    Row("Mother_Board", MOTHER_BOARD),
    intrusion("Intrusion"),
    Row("Boot_Error", BOOT_ERROR),
    inlet("Inlet_Temp"),
    humidity("ENV_Humi"),
    leakage("Leakage"),
    outlet("Outlet_Temp"),
    main12("SYS_12V"),
    pdb("PDB_Temp"),
    middle_pdb("Middle_PDB_Temp"),
    Row("NTP_Sync_Fail", d.NTP),
    Row("SW_Total_Power", SWITCH_POWER, switch_power, instance=0xE0),
    power_fault("Power_Fault"),
    Row("SYS_54V", SYS54, has(25), instance=0xE0),
    Row("PDB_Board_Power", PDB_BOARD, has(27), instance=0xE0),
    Row("NIC_Power", NIC_BOARD, has(28), instance=0xE0),
    Row("GPU_Board_Power", GPU_BOARD, has(29), instance=0xE0),
    Row("SwitchG_Temp", SWITCH_G),
)
KESTRIN_RACK_TABLE = (
    Row("EnTemp", EN_TEMP, instance=0xE0, inlet=True),
    Row("RackPower", RACK_POWER, instance=0xE0, index=0xFF),
)
PELLAGO_TABLE = (
    cpu_power("CPU_Power"),
    memory_power("MEM_Power"),
    fan_power("FAN_Power"),
    disk_power("HDD_Power"),
    board_power("Board_Power"),
    power_button("Power_Button"),
    Row("SEL_Status", d.EVENT_LOG),
    Row("ACPI_Status", d.ACPI),
    Row("Sys_Restart", d.RESTART),
    Row("OS_Stop", d.OS_STOP),
    pch_temp("PCH_Temp"),
    intrusion("Intrusion"),
    inlet("Inlet_Temp"),
    humidity("Env_Humi"),
    outlet("Outlet_Temp"),
    main12("SYS_12V"),
    pdb("PDB_Temp"),
    middle_pdb("Middle_PDB_Temp"),
    leakage("Leakage"),
    Row("NTP_Sync_Fail", d.NTP),
    power_fault("Power_Fault"),
)
VORANA_TABLE = (
    fan_redundancy("Fan_Redundancy"),
    cpu_power("CPU_Power"),
    memory_power("MEM_Power"),
    board_power("Board_Power"),
    fan_power("FAN_Power"),
    pch_temp("PCH_Temp"),
    uid_button("UID_Button"),
    Row("BMC_Boot_Up", d.BMC_BOOT),
    power_button("Power_Button"),
    Row("SEL_Status", d.EVENT_LOG),
    Row("ACPI_PWR", d.ACPI),
    Row("Sys_Restart", d.RESTART),
    Row("Sys_Shutdown", SHUTDOWN),
    disk_power("HDD_Total_Power"),
    Row("Sys_Health", HEALTH),
    inlet("Inlet_Temp"),
    humidity("Env_Humi"),
    outlet("Outlet_Temp"),
    main12("SYS_12V"),
    pdb("PDB_Temp"),
    middle_pdb("Middle_PDB_Temp"),
    leakage("Leakage"),
    Row("NTP_Sync_Fail", d.NTP),
    power_fault("Power_Fault"),
)
ASTREL_TABLE = (
    fan_redundancy("Fan_Redundancy"),
    cpu_power("CPU_Total_Power"),
    memory_power("MEM_Total_Power"),
    fan_power("Fan_Total_Power"),
    disk_power("HDD_Total_Power"),
    board_power("Board_Power"),
    pch_temp("PCH_Temp"),
    power_button("Power_Button"),
    Row("ACPI_Status", d.ACPI),
    Row("Sys_Restart", d.RESTART),
    Row("BMC_Boot_Up", d.BMC_BOOT),
    Row("OS_Stop", d.OS_STOP),
    inlet("Inlet_Temp"),
    humidity("Env_Humi"),
    outlet("Outlet_Temp"),
    main12("SYS_12V"),
    pdb("PDB_Temp"),
    middle_pdb("Middle_PDB_Temp"),
    leakage("Leakage"),
    Row("NTP_Sync_Fail", d.NTP),
    power_fault("Power_Fault"),
)
QUORRAL_TABLE = (
    cpu_power("CPU_Power"),
    memory_power("MEM_Power"),
    fan_power("FAN_Power"),
    disk_power("HDD_Power"),
    board_power("Board_Power"),
    Row("BMC_Boot", d.BMC_BOOT),
    power_button("Power_Button"),
    Row("Event_Log", d.EVENT_LOG),
    Row("SYS_Boot", SYS_BOOT),
    Row("ACPI_Status", d.ACPI),
    uid_button("UID_Button"),
    Row("PCIe_Status", PCIE_ALL),
    Row("SYS_Progress", FW_PROGRESS),
    Row("OS_Boot", d.OS_BOOT),
    Row("BIOS_Boot_Up", BIOS_BOOT),
    engine("ME"),
    pch_temp("PCH_Temp"),
    Row("HDD_Temp", HDD_MAX_TEMP),
    leakage("Leakage"),
    power_fault("Power_Fault"),
    Row("FW_Update", FW_UPDATE),
    inlet("Inlet_Temp"),
    humidity("Env_Humi"),
    outlet("Outlet_Temp"),
    main12("SYS_12V"),
    pdb("PDB_Temp"),
    middle_pdb("Middle_PDB_Temp"),
    Row("NTP_Sync_Fail", d.NTP),
)
LUMORA_TABLE = (
    inlet("Inlet_Temp"),
    outlet("Outlet_Temp"),
    pch_temp("PCH_Temp"),
    Row("Total_Power", LUMORA_TOTAL, instance=0xE0),
    Row("CPU_Power", other_watts(0x03, 6, 0xD9, 1)),
    memory_power("MEM_Power", other_watts),
    fan_power("FAN_Power", other_watts),
    disk_power("HDD_Power", other_watts),
    main12("SYS_12V"),
    humidity("Env_Humi"),
    uid_button("UID_Button"),
    power_button("Power_Button"),
    Row("Sys_Boot", SYS_BOOT),
    Row("ACPI_State", d.ACPI),
    Row("OS_Boot", d.OS_BOOT),
    Row("BMC_Boot_Up", d.BMC_BOOT),
    Row("Event_Log", d.EVENT_LOG),
    fan_redundancy("Fan_Redundancy"),
    engine("ME"),
    leakage("Leakage"),
    Row("PCIe_Status", PCIE_ALL),
    Row("NTP_Sync_Fail", d.NTP),
    pdb("PDB_Temp"),
    middle_pdb("Middle_PDB_Temp"),
    power_fault("Power_Fault"),
    Row("Boot_Error", BOOT_ERROR),
    intrusion("Intrusion"),
    Row("BIOS_Boot_Up", BIOS_BOOT),
)
DURNOW_TABLE = (
    disk_power("HDD_Total_Power"),
    fan_redundancy("Fan_Redundancy"),
    cpu_power("CPU_Total_Power"),
    fan_power("FAN_Power"),
    memory_power("MEM_Total_Power"),
    board_power("Board_Power"),
    pch_temp("PCH_Temp"),
    power_button("Power_Button"),
    Row("ACPI_Status", d.ACPI),
    Row("Sys_Restart", d.RESTART),
    intrusion("Intrusion"),
    inlet("Input_Temp"),
    outlet("Outlet_Temp"),
    main12("SYS_12V"),
    pdb("PDB_Temp"),
    middle_pdb("Middle_PDB_Temp"),
    leakage("Leakage"),
    Row("NTP_Sync_Fail", d.NTP),
    power_fault("Power_Fault"),
)
FERRISK_TABLE = (
    cpu_power("CPU_Power"),
    memory_power("MEM_Power"),
    fan_power("FAN_Power"),
    disk_power("HDD_Power"),
    board_power("Board_Power"),
    fan_redundancy("Fan_Redundancy"),
    Row("ACPI_Status", d.ACPI),
    intrusion("Intrusion"),
    Row("IPMI_Watchdog", WATCHDOG),
    power_button("Power_Button"),
    Row("BIOS_Boot_Up", BIOS_BOOT),
    Row("OS_Boot", d.OS_BOOT),
    Row("I2C_Status", I2C),
    Row("FW_Update", FW_UPDATE),
    Row("BMC_Status", BMC_STATUS),
    Row("NTP_Sync_Fail", d.NTP),
    Row("SEL_Status", d.EVENT_LOG),
    Row("Front_BP_12V", FRONT_12V, has(19), instance=0xE0),
    Row("Rear_BP_12V", REAR_12V, has(20), instance=0xE0),
    Row("BP_F_Temp_Max", FRONT_TEMP, has(21), instance=0xE0),
    Row("BP_R_Temp_Max", REAR_TEMP, has(22), instance=0xE0),
    Row("PCIE_Status", PCIE_ALL),
    Row("Sys_Boot_Init", SYS_BOOT),
    Row("OS_Stop", d.OS_STOP),
    power_fault("Power_Fault"),
)
for table, rows in ((KESTRIN_TABLE, 40), (KESTRIN_RACK_TABLE, 2), (PELLAGO_TABLE, 21), (VORANA_TABLE, 24),
                    (ASTREL_TABLE, 21), (QUORRAL_TABLE, 28), (LUMORA_TABLE, 28), (DURNOW_TABLE, 19),
                    (FERRISK_TABLE, 25)):
    assert len(table) == rows


# ---- the pass ---------------------------------------------------------------------------------------------------
class ProfilePass(d.Pass):
    """What the eight profiles have in common; a profile says where it differs."""

    TABLE = ()
    CPU = "CPU"              # how the names of the CPU family begin
    PSU = "PSU"
    PSU_RECORDS = ()         # method names without the leading psu_
    FAN = None               # name of the fan records, None when there is no fan pass
    DISK = "HDD{}_Status"
    NVME = "NVME{}_Temp"
    CARD = "OCP"
    DOMAINS = True
    PCIE = True

    def steps(self):
        b = self.board
        if b.fatal_fact_fails:
            raise d.EndOfPass
        self.psu_count, self.ocp_count = b.psu_count, b.ocp_count
        self.fan_count, self.pcie_count = b.fan_count, b.pcie_count
        if b.board_id in (0x558B, 0x5580):
            self.ocp_count = 0
        elif b.board_id == 0x5497:
            self.psu_count = self.ocp_count = self.fan_count = self.pcie_count = 0
        for step in (lambda: self.table(self.TABLE), self.cpus, self.memory, self.domains, self.psus, self.fans,
                     self.disks, self.ocp, self.pcie, self.switch_card, self.switch_temperatures, self.extras):
            step()

    def table(self, rows):
        for row in rows:
            if row.gate(self.board):
                template = row.make(self.board) if row.make else row.template
                self.add(template, row.name, instance=row.instance, index=row.index,
                         client=self.board.inlet_client if row.inlet else None)

    def cpus(self):
        b = self.board
        if b.cpu_silk + b.cpu_count > 255:
            raise d.EndOfPass
        small = b.board_id == 0x5497
        for number in range(b.cpu_silk, b.cpu_silk + b.cpu_count):
            n = number - b.cpu_silk
            if not b.cpu_wanted(n):
                continue
            client, name = b.vr_client(n), f"{self.CPU}{number}"
            self.before_cpu(number, n)
            self.add(d.CPU_TEMP, "CPU_Temp" if small else f"{name}_Temp", offset=n, index=n)
            if b.supports(d.SENSOR_CPU_VR_TEMP):
                self.add(d.CPU_VR_TEMP, f"{name}_VR_Temp", offset=n, index=n, client=client)
            if b.supports(d.SENSOR_CPU_VOLTS):
                self.add(d.CPU_CORE, f"{name}_Volts", index=n, client=client)
            self.add(d.CPU_STATUS, "CPU_Status" if small else f"{name}_Status", offset=n, index=n)
            self.after_cpu(number, n)

    def before_cpu(self, number, n):
        pass

    def after_cpu(self, number, n):
        pass

    def memory(self):
        b = self.board
        if b.dimm_count == 0xFF:
            raise d.EndOfPass
        if b.simplified:
            for group in range(b.cpu_count if b.dimm_count else 0):
                self.add(d.DIMM_GROUP, f"DIMMG{group}_Temp", offset=group, index=group)
            return
        for dimm in range(b.dimm_count):
            name = b.dimm_name(dimm)
            self.add(d.DIMM_TEMP, f"DIMM{name}_Temp", offset=dimm, index=dimm)
            self.add(d.MEM_STATUS, f"DIMM{name}_Status", offset=dimm, index=dimm)

    def domains(self):
        if self.DOMAINS:
            self.voltage_domains()

    def add(self, template, name, **more):
        # The small board's first voltage domain has no number: the profile's own spelling of Default's name.
        super().add(template, "CPU_Volts" if name == "CPU_VOLTS" else name, **more)

    def psus(self):
        b = self.board
        if self.psu_count == 0xFF:
            raise d.EndOfPass
        if self.psu_count == 0:
            return
        for i in range(1, self.psu_count + 1):
            for kind in self.PSU_RECORDS:
                self.psu(kind, i)
        if b.psu_groups <= 2 and b.psus_per_group != 0:
            for group, tail in zip(range(b.psu_groups), ("Redundant", "Redundant_M")):
                self.add(d.PSU_REDUNDANCY, f"{self.PSU}_{tail}", offset=group, index=group)

    VIN, VOUT, PIN, POUT = d.PSU_VIN, d.PSU_VOUT, d.PSU_PIN, d.PSU_POUT

    def psu(self, kind, i):
        b, name = self.board, f"{self.PSU}{i}_{kind}"
        kept = 0x60 + i if i <= 159 else 0x60
        if kind == "Vin":
            if b.supports_kind(d.KIND_INPUT_VOLTS):
                self.add(self.VIN, name, index=i)
        elif kind == "Vout":
            if b.supports_kind(d.KIND_OUTPUT_VOLTS):
                self.add(self.VOUT, name, index=i)
        elif kind in ("Status", "Supply"):
            self.add({"Status": d.PSU_STATUS, "Supply": PSU_SUPPLY}[kind], name, offset=i, index=i)
        elif kind == "Fan_Status":
            self.add(PSU_FAN, f"{self.PSU}{i:X}_Fan_Status", offset=i, index=i)
        else:
            self.add({"Temp": d.PSU_TEMP, "Pin": self.PIN, "Pout": self.POUT, "Power": PSU_POWER, "Iin": PSU_IIN,
                      "Iout": PSU_IOUT}[kind], name, instance=kept, index=i)

    def fans(self):
        if self.FAN is None:
            return
        if self.fan_count == 0xFF:
            raise d.EndOfPass
        for fan in range(self.fan_count):
            number = self.board.fan_number(fan)
            if number != 0xFF:
                self.add(d.FAN_STATUS, self.fan_name(number), offset=number, index=number)

    def fan_name(self, number):
        return self.FAN.format(number)

    def disks(self):
        b = self.board
        if not b.disks_enabled or not b.disk_service:
            return
        for plane in range(min(b.backplane_count, 32)):
            start, count = b.backplane(plane)
            if start + count > 255:
                raise d.EndOfPass
            for slot in range(start, start + count):
                silk = self.disk_silk(slot)
                printed = slot if silk is None else silk
                self.add(d.HDD_STATUS, self.DISK.format(printed), instance=slot, index=slot, slot=slot)
                if b.is_nvme(slot):
                    printed = b.converted(slot) if silk is None else silk
                    self.add(d.NVME_TEMP, self.NVME.format(printed), instance=slot, index=slot)
            if b.simplified and count:
                self.add(d.DISK_GROUP, f"DISKG{plane}_Temp", offset=plane, index=plane)

    def disk_silk(self, slot):
        return None

    def ocp(self):
        if self.ocp_count == 0xFF:
            raise d.EndOfPass
        for i in range(1, self.ocp_count + 1):
            if self.card_wanted(i):
                self.add(d.OCP_TEMP, f"{self.CARD}{i}_Temp", offset=i, index=i)
                self.add(d.OCP_ERR, f"{self.CARD}{i}_Err", instance=0x60 + i if i <= 159 else 0x60,
                         index=self.board.restored_ocp(i))

    def card_wanted(self, i):
        return True

    def pcie(self):
        if not self.PCIE:
            return
        if self.pcie_count == 0xFF:
            raise d.EndOfPass
        for index in range(1, self.pcie_count + 1):
            slot = self.board.pcie_slot(index)
            if slot is not None:
                self.add(d.PCIE_SLOT, f"PCIE{slot}_Status", offset=slot, index=slot)

    def switch_card(self):
        b = self.board
        if b.board_id not in (0x550F, 0x55DE, 0x55D8) or not b.switch_supported or not b.card_online(2):
            return
        if b.card_id(2) == 0x5510:
            for i in range(1, 5):
                self.add(d.SW_VOLT, f"SW{i}_Volt", offset=i, index=i, client=b.switch_client(i))
                self.add(d.SW_CURRENT, f"SW{i}_Current", offset=i, index=i, client=b.switch_client(i))
        elif b.card_id(2) == 0x5517:
            for i in range(1, 9):
                self.add(d.SW_TEMP, f"SW{i}_Temp", offset=i, index=i)

    def switch_temperatures(self):
        b = self.board
        if b.board_id == 0x5502 and b.switch_supported and b.card_online(2) and b.card_id(2) == 0x5504:
            for x, name in enumerate(("SW_Input_Temp_01", "SW_Input_Temp_02", "SW_Output_T_01", "SW_Output_T_02")):
                self.add(d.celsius(0x10, 0x48, x + 1), name, offset=x, index=x)

    def extras(self):
        pass


class Kestrin(ProfilePass):
    TABLE = KESTRIN_TABLE
    PSU = "PS"
    PSU_RECORDS = ("Status", "Fan_Status", "Iout", "Vin", "Vout", "Temp", "Pin", "Pout")
    FAN = "SYS_Fan"

    def steps(self):
        if self.board.board_id == 0x5605:
            self.table(KESTRIN_RACK_TABLE)
            return
        super().steps()

    def before_cpu(self, number, n):
        self.add(d.PROCHOT, f"CPU{number}_Prochot", offset=n, index=n)

    def fan_name(self, number):
        present = f"SYS_Fan{number:X}_Present"
        return present if len(present) <= 16 else f"SYS_Fan{number:X}_PRES"

    def disk_silk(self, slot):
        return self.board.disk_silk(slot)

    def extras(self):
        b = self.board
        if b.supports(SENSOR["PWR_MODULE_TEMP"]):
            for i in range(1, 5):
                self.add(POWER_MODULE, f"PWR_Mod{i}_Temp", offset=i, index=i)
        if b.supports(SENSOR["UBB_RT_TEMP"]):
            for i in range(1, 9):
                self.add(RETIMER, f"UBB_RT{i}_Temp", offset=i, index=i)
        for i in range(1, b.switch_chips + 1):
            self.add(SWITCH_CHIP, f"SWP65G50A{i}_Temp", offset=i, index=i)
        if b.supports(SENSOR["GPU_54_VOLT"]):
            for i in range(1, 9):
                self.add(GPU54, f"GPU{i}_PWR_Volts", instance=0x60, index=i)
        if b.cdu_managed:
            self.coolant_unit()

    def coolant_unit(self):
        for name, template in KESTRIN_CDU:
            self.add(template, name, instance=0xE0)
        for fan in range(1, 5):
            self.add(KESTRIN_CDU_FAN, f"CDU_Fan{fan}_Speed", instance=0xE0 + fan, index=fan)
        for supply in (1, 2):
            for name, template in KESTRIN_CDU_PS:
                self.add(template, name.format(supply), instance=0xE0 + supply, index=supply)


class Astrel(ProfilePass):
    TABLE = ASTREL_TABLE
    PSU_RECORDS = ("Vin", "Vout", "Power", "Status")
    FAN = "Fan{}_Status"
    DISK = "Disk{}_Status"
    NVME = "NVME_TEMP_{:02d}"


class Pellago(ProfilePass):
    TABLE = PELLAGO_TABLE
    PSU_RECORDS = ("Vin", "Vout", "Status", "Temp", "Power")
    FAN = "FAN{}_Status"
    DISK = "Disk{}_Status"
    NVME = "NVME_TEMP_{:02d}"

    def after_cpu(self, number, n):
        self.add(SINGLE_CPU_POWER, f"CPU{number}_Power", instance=0xE0, index=n)


class Vorana(ProfilePass):
    TABLE = VORANA_TABLE
    PSU_RECORDS = ("Vin", "Vout", "Status", "Temp", "Pin", "Pout")
    CARD = "NIC"

    def after_cpu(self, number, n):
        self.add(DTS, f"CPU{number}_DTS_Temp", offset=n, index=n)
        for sensor, template, tail in (("CPU_VCORE_CURRENT", VCORE, "Vcore_A"),
                                       ("CPU_VCORE1_CURRENT1", VCORE1, "Vcore1_A"),
                                       ("CPU_VSOC_CURRENT", VSOC, "VSOC_A"),
                                       ("CPU_DDR_VDD1_CURRENT", DDR_VDD1, "DDR_VDD1_A")):
            if self.board.supports(SENSOR[sensor]):
                self.add(template, f"CPU{number}_{tail}", instance=0xE0, index=n)


class Lumora(ProfilePass):
    TABLE = LUMORA_TABLE
    PSU_RECORDS = ("Vin", "Vout", "Status", "Temp", "Pin", "Pout")
    PCIE = False
    PIN, POUT = other_watts(0x0A, 14, 0x50, 1, 0x80), other_watts(0x0A, 13, 0x50, 2, 0x80)

    def extras(self):
        self.add(LAN_SWITCH, "LAN_SW_Temp", instance=0xE0)


class Quorral(ProfilePass):
    TABLE = QUORRAL_TABLE
    CPU = "Cpu"
    PSU_RECORDS = ("Vin", "Vout", "Supply", "Temp", "Pin", "Pout")
    FAN = "FAN{}_Status"
    NVME = "NVME_TEMP_{:02d}"

    def after_cpu(self, number, n):
        self.add(MEM_HOT, f"Cpu{number}_MEMG0_Hot", instance=0xE0, index=n)
        self.add(CPU_VR_POWER, f"CPU{number}_VR_Pwr", offset=n, index=n)
        self.add(d.watts(0x20, d.to_byte(self.board.memory_accuracy), 0x5D, 2), f"P{number}_DIMM_VR_Pwr", offset=n,
                 index=n)


class Durnow(ProfilePass):
    TABLE = DURNOW_TABLE
    PSU_RECORDS = ("Vin", "Vout", "Status", "Temp", "Pin", "Pout")
    FAN = "FAN_STATUS_{:02d}"


class Ferrisk(ProfilePass):
    TABLE = FERRISK_TABLE
    PSU_RECORDS = ("Vin", "Vout", "Iin", "Iout", "Pin", "Pout", "Temp", "Status")
    CARD = "NIC"
    DOMAINS = PCIE = False

    def card_wanted(self, i):
        return i <= 32 and self.board.ocp_present >> (i - 1) & 1 == 1


PROFILES = {
    "default": d.Pass, "kestrin": Kestrin, "astrel": Astrel, "pellago": Pellago, "vorana": Vorana, "lumora": Lumora,
    "quorral": Quorral, "durnow": Durnow, "ferrisk": Ferrisk,
}


def text_of(profile: str, board: Board) -> str:
    """What the checked-in files hold: the count, then one line per record."""
    run = PROFILES[profile](board, board.stored_names)
    count = run.run()
    head = f"count {count}" if count is not None else "no count"
    return "\n".join([head, *map(d.line, run.records)]) + "\n"


if __name__ == "__main__":
    if len(sys.argv) != 3 or sys.argv[1] not in PROFILES:
        raise SystemExit(__doc__)
    print(text_of(sys.argv[1], load(sys.argv[2])), end="")
