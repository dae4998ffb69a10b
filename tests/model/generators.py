#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Every exported generator of one sensor: how it is called, what it asks the platform first, and the record that it
writes on a board that has everything.

Functions are typed in here profile by profile; names, records and entries come from the sets of the profiles.

    generators.py        one line per generator: function, shape, index, table, question, number, refused, name, record,
                         entry; "-" stands for nothing
"""
import os
import re
import sys
from dataclasses import dataclass

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import default_set as d  # noqa: E402
import profile_sets as p  # noqa: E402
from board import KINDS, SENSOR_NUMBERS, Board  # noqa: E402


@dataclass(frozen=True)
class Exported:
    """Functions by what stands between "Gen" and "SDR"; "(2)" is called with index 2, "(..2)" takes it last."""

    table: str      # in the order of the static table
    singles: str
    unit: str = ""  # in the order of the table of the liquid-cooling unit
    rack: str = ""  # in the order of the rack table


EXPORTED = {
    "Default": Exported(
        table="""
            FanRedundancy CPUPower MEMPower HDDPower BoardPower FANPower PCHTemp PowerButton EventLog OSBoot
            ACPIStatus SysRestart UIDButton BMCBootUp OSStop Intrusion Leakage INPUTTEMP ENVHUMI ME OUTPUTTEMP
            VCC12V PDBTEMP MiddlePDBTEMP NTPSyncFail PowerFault""",
        singles="""
            SwitchBoardVolts(2)=SW_VOLT_02 SwitchBoardCurrent(2)=SW_CURRENT_02 SwitchBoardTemp(2)=SW_TEMP_02
            CPUProchot(1)=CPU_PROCHOT CPUCOREVoltage(1)=CPU_VOLTS_01 InputVolts(1)=INPUT_VOLTS_01
            OutputVolts(1)=OUTPUT_VOLTS_01 PSUStatus(1)=PSU_STATUS_01 PSUTemp(1)=PSU_TEMP_01
            PSUPIn(1)=PSU_PIN_01 PSUPOut(1)=PSU_POUT_01 PSURedundant(0)=PSU_REDUNDANT
            PCIeStatus(5)=PCIE_STATUS_05 HDDStatus(3)=HDD_STATUS_03
            SwitchBoardInOROutletTemp(0)=SW_INPUT_TEMP_01 CDUFanSpeed(2)=CDU_FAN_SPD_02""",
        unit="""
            CDUInletTemp CDUDewTemp CDUSupplyTemp CDUDiffTemp CDUEnvHumi CDUISetFanSpd CDUSupplyPress
            CDUFlowRate CDUReturnTemp CDUReturnPress CDUDiffPress CDUEC""",
    ),
    "Kestrin": Exported(
        table="""
            CPUTjmax CPUTControl SYS12VStandby HDDTotalPower FanRedundancy CPUTotalPower FanTotalPower
            MEMTotalPower BoardPower PCHTemp UIDButton BMCBootUp PowerButton EventLog ACPIStatus
            RestartInitiated OSStop LanLeashLost SYSFWProgress SystemEvent CriticalINT Watchdog2 MotherBoard
            Intrusion BootError INLETTEMP ENVHUMI Leakage OutletTemp SYS12V PDBTEMP MiddlePDBTEMP NTPSyncFail
            SwitchBoardPower PowerFault SYS54Volt PDBBoardPower NICPower GPUBoardPower SwitchGTemp""",
        singles="""
            CPUCOREVoltage(1)=CPU1_Volts PSStatus(1)=PS1_Status PSVin(1)=PS1_Vin PSVout(1)=PS1_Vout
            PwrModuleTemp(2)=PWR_Mod2_Temp UBBRTTemp(2)=UBB_RT2_Temp GPU54Volt(..2)=GPU2_PWR_Volts
            CDUFanSpeed(2)=CDU_Fan2_Speed CDUPsVin(2)=CDU_PS2_Vin CDUPsVout(2)=CDU_PS2_Vout
            CDUPsIout(2)=CDU_PS2_Iout""",
        unit="""
            CDUInletTemp CDUCoolantTin CDUCoolantTout CDUFlowRate CDUSupplyPress CDUReturnPress CDUPsOutPower
            CDUFanPower CDUPumpPower CDULQDLeakage CDULQDLevel CDULQDFlow CDULQDPressH CDULQDPressL""",
        rack="ENTEMP RackPower",
    ),
    "Astrel": Exported(
        table="""
            FanRedundancy CPUTotalPower MEMTotalPower FanTotalPower HDDTotalPower BoardPower PCHTemp
            PowerButton ACPIStatus SysRestart BMCBootUp OSStop INLETTEMP ENVHUMI OutletTemp SYS12V PDBTEMP
            MiddlePDBTEMP Leakage NTPSyncFail PowerFault""",
        singles="""
            CPUCOREVoltage(1)=CPU1_Volts InputVolts(1)=PSU1_Vin OutputVolts(1)=PSU1_Vout
            PSUPower(1)=PSU1_Power PSUStatus(1)=PSU1_Status""",
    ),
    "Pellago": Exported(
        table="""
            CPUPower MEMPower FANPower HDDPower BoardPower PowerButton SELStatus ACPIStatus SysRestart OSStop
            PCHTemp Intrusion INLETTEMP ENVHUMI OutletTemp SYS12V PDBTEMP MiddlePDBTEMP Leakage NTPSyncFail
            PowerFault""",
        singles="""
            CPUCOREVoltage(1)=CPU1_Volts CPUSinglePower(..1)=CPU1_Power PSUPower(1)=PSU1_Power
            DiskStatus(3)=Disk3_Status""",
    ),
    "Vorana": Exported(
        table="""
            FanRedundancy CPUPower MEMPower BoardPower FANPower PCHTemp UIDButton BMCBootUp PowerButton
            SELStatus ACPIPWR SysRestart SysShutdown HDDTotalPower SysHealth INLETTEMP ENVHUMI OutletTemp
            SYS12V PDBTEMP MiddlePDBTEMP Leakage NTPSyncFail PowerFault""",
        singles="""
            CPUCOREVoltage(1)=CPU1_Volts CPUDTSTemp(1)=CPU1_DTS_Temp CPUVcoreCurrent(..1)=CPU1_Vcore_A
            CPUVcore1Current(..1)=CPU1_Vcore1_A CPUVSOCCurrent(..1)=CPU1_VSOC_A
            CPUDDRVdd1Current(..1)=CPU1_DDR_VDD1_A PSUVin(1)=PSU1_Vin PSUVout(1)=PSU1_Vout
            PSUStatus(1)=PSU1_Status PSUPin(1)=PSU1_Pin PSUPout(1)=PSU1_Pout""",
    ),
    "Lumora": Exported(
        table="""
            InletTemp OutletTemp PCHTemp TotalPower CPUPower MEMPower FANPower HDDPower SYS12V ENVHUMI
            UIDButton PowerButton SysBoot ACPIState OSBoot BMCBootUp EventLog FanRedundancy ME Leakage
            PcieStatus NTPSyncFail PDBTEMP MiddlePDBTEMP PowerFault BootError Intrusion BiosBootUp""",
        singles="""
            CPUCOREVoltage(1)=CPU1_Volts PSUPIn(1)=PSU1_Pin PSUPOut(1)=PSU1_Pout
            LanSwitchBoardTemp=LAN_SW_Temp""",
    ),
    "Quorral": Exported(
        table="""
            CPUPower MEMPower FANPower HDDPower BoardPower BMCBoot PowerButton EventLog SYSBoot ACPIStatus
            UIDButton PCIeStatus SYSProgress OSBoot BiosBootUp ME PCHTemp HDDTemp Leakage PowerFault FWUpdate
            INLETTEMP ENVHUMI OutletTemp SYS12V PDBTEMP MiddlePDBTEMP NTPSyncFail""",
        singles="""
            CPUCOREVoltage(1)=Cpu1_Volts CpuxMEMG0Hot(..1)=Cpu1_MEMG0_Hot CPUxVRPwr(1)=CPU1_VR_Pwr
            PxDIMMVRPwr(1)=P1_DIMM_VR_Pwr PSUSypply(1)=PSU1_Supply""",
    ),
    "Durnow": Exported(
        table="""
            HDDTotalPower FanRedundancy CPUTotalPower FANPower MEMTotalPower BoardPower PCHTemp PowerButton
            ACPIStatus SysRestart Intrusion INPUTTEMP OutletTemp SYS12V PDBTEMP MiddlePDBTEMP Leakage
            NTPSyncFail PowerFault""",
        singles="""
            CPUCOREVoltage(1)=CPU1_Volts InputVolts(1)=PSU1_Vin OutputVolts(1)=PSU1_Vout""",
    ),
    "Ferrisk": Exported(
        table="""
            CPUPower MEMPower FANPower HDDPower BoardPower FanRedundancy ACPIStatus Intrusion IPMIWatchdog
            PowerButton BiosBootUp OSBoot I2CStatus FWUpdate BMCStatus NTPSyncFail SELStatus FrontBp12V
            RearBp12V FrontBPTemp RearBPTemp PCIEStatus SysBootInit OSStop PowerFault""",
        singles="""
            CPUCOREVoltage(1)=CPU1_Volts PSUVin(1)=PSU1_Vin PSUVout(1)=PSU1_Vout PSUIIN(1)=PSU1_Iin
            PSUIOut(1)=PSU1_Iout PSUPIn(1)=PSU1_Pin PSUPOut(1)=PSU1_Pout PSUTemp(1)=PSU1_Temp
            PSUStatus(1)=PSU1_Status""",
    ),
}
DOMAINS = "CPU0D0N2(0)=CPU0_D0_N2 CPU0D1N2(0)=CPU0_D1_N2 CPU1D0N2(1)=CPU1_D0_N2 CPU1D1N2(1)=CPU1_D1_N2"
SWITCH = ("SwitchBoardVolts(2)=SW2_Volt SwitchBoardCurrent(2)=SW2_Current SwitchBoardTemp(2)=SW2_Temp "
          "SwitchBoardInOROutletTemp(0)=SW_Input_Temp_01")
MISSPELT = {"Quorral_GenPSUSypplySDR": "Quorral_GenPSUSypplyDR"}

# ---- what a generator asks before it builds -----------------------------------------------------------------------
FLAGS = {
    "PowerButton": "POWER_BUTTON", "UIDButton": "UID_BUTTON", "Intrusion": "INTRUSION", "ME": "ME",
    "INLETTEMP": "INPUT_TEMP", "InletTemp": "INPUT_TEMP", "INPUTTEMP": "INPUT_TEMP", "OutletTemp": "OUTPUT_TEMP",
    "OUTPUTTEMP": "OUTPUT_TEMP", "ENVHUMI": "ENV_HUMI", "SYS12V": "VCC12V", "VCC12V": "VCC12V", "PDBTEMP": "PDB_TEMP",
    "MiddlePDBTEMP": "PDB_TEMP", "PowerFault": "POWER_FAULT", "CPUCOREVoltage": "CPU_VOLTS",
    "CPUVcoreCurrent": "CPU_VCORE_CURRENT", "CPUVcore1Current": "CPU_VCORE1_CURRENT1",
    "CPUVSOCCurrent": "CPU_VSOC_CURRENT", "CPUDDRVdd1Current": "CPU_DDR_VDD1_CURRENT", "SYS54Volt": "SYS_54_VOLT",
    "GPU54Volt": "GPU_54_VOLT", "PDBBoardPower": "PDB_BOARD_POWER", "NICPower": "NIC_POWER",
    "GPUBoardPower": "GPU_BOARD_POWER", "PwrModuleTemp": "PWR_MODULE_TEMP", "UBBRTTemp": "UBB_RT_TEMP",
    "FrontBp12V": "BP_FRONT_12V", "RearBp12V": "BP_REAR_12V", "FrontBPTemp": "BP_FRONT_TEMP",
    "RearBPTemp": "BP_REAR_TEMP",
}
VOLTAGE_KINDS = {"PSVin": "INPUT_VOLTS", "PSUVin": "INPUT_VOLTS", "InputVolts": "INPUT_VOLTS", "PSVout": "OUTPUT_VOLTS",
                 "PSUVout": "OUTPUT_VOLTS", "OutputVolts": "OUTPUT_VOLTS"}
QUESTIONS = {
    "CPUTjmax": "intel", "CPUTControl": "intel", "PCHTemp": "pch", "FanRedundancy": "fans", "Leakage": "leakage",
    "MEMPower": "accuracy", "MEMTotalPower": "accuracy", "HDDPower": "accuracy", "HDDTotalPower": "accuracy",
    "PxDIMMVRPwr": "accuracy", "FANPower": "fans_and_accuracy", "FanTotalPower": "fans_and_accuracy",
    "BoardPower": "not_small_board", "SwitchBoardPower": "switch_power",
}


def question(function, sensor):
    """What is asked, its number, and how a refusal names the sensor."""
    numbered = sensor[:3] + "x" + sensor[4:] if re.match("C[Pp][Uu][0-9]", sensor) else re.sub("[0-9]_", "x_", sensor, count=1)
    if function in FLAGS:
        if sensor == "CPU_VOLTS_01":
            numbered = "CPU_VOLTS_0x"
        indexed = function in ("CPUCOREVoltage", "GPU54Volt", "PwrModuleTemp", "UBBRTTemp") or "Current" in function
        return "flag", SENSOR_NUMBERS[FLAGS[function]], numbered if indexed else sensor
    if function in VOLTAGE_KINDS:
        return "kind", KINDS[VOLTAGE_KINDS[function]], sensor.replace("_01", "1")
    asked = QUESTIONS.get(function, "nothing")
    refuses = asked in ("intel", "pch", "not_small_board", "switch_power")
    return asked, SENSOR_NUMBERS["PCH_TEMP"] if asked == "pch" else 0, sensor if refuses else "-"


# ---- boards on which every generator has its record ---------------------------------------------------------------
def boards():
    facts = {
        "board": {"id": 0x5502, "liquid_cooling_mode": 1, "cdu_enable": 1},
        "cpus": {"count": 2, "type": 1},
        "psus": {"count": 2, "group_count": 1, "count_per_group": 2},
        "pcie": {"slots": [5]},
        "disks": {"backplane": [{"start_slot": 3, "disk_count": 1}]},
        "switch_board": {"supported": True, "sensors_valid": 1, "card": {"2": {"online": True, "id": 0x5504}}},
    }
    yield Board(facts)
    yield Board({**facts, "cpus": {"count": 2, "type": 3}})
    for board, card in ((0x550F, 0x5510), (0x550F, 0x5517), (0x5605, 0)):
        switch = {"supported": True, "card": {"2": {"online": True, "id": card}}}
        yield Board({**facts, "board": {"id": board}, "switch_board": switch})


def records_of(profile):
    """Name and index of a record, to the record; the last one of a name without an index."""
    found = {}
    for board in boards():
        run = p.PROFILES[profile.lower()](board)
        run.run()
        for record in run.records:
            found.setdefault((record.name, record.entry[3]), record)
            found.setdefault(record.name, record)
    return found


def table_names(profile):
    if profile == "Default":
        run = d.Pass(next(boards()))
        run.psu_count = run.ocp_count = run.fan_count = run.pcie_count = 0
        run.static_table()
        return [record.name for record in run.records]
    return [row.name for row in p.PROFILES[profile.lower()].TABLE]


# ---- the list -----------------------------------------------------------------------------------------------------
def functions(profile):
    """(function, shape, index, table, sensor) of every generator."""
    exported = EXPORTED[profile]
    units = p.KESTRIN_CDU if profile == "Kestrin" else d.CDU
    for table, words, names in (("table", exported.table, table_names(profile)),
                                ("unit", exported.unit, [name for name, _ in units]),
                                ("rack", exported.rack, [row.name for row in p.KESTRIN_RACK_TABLE])):
        for function, name in zip(words.split(), names, strict=bool(words)):
            yield function, "static", "-", table, name
    more = ("" if profile == "Ferrisk" else DOMAINS) + " " + ("" if profile == "Default" else SWITCH)
    for word in (exported.singles + " " + more).split():
        call, _, sensor = word.partition("=")
        function, _, index = call.rstrip(")").partition("(")
        shape = "static" if not index else "indexed_last" if index.startswith("..") else "indexed"
        yield function, shape, index.removeprefix("..") or "-", "-", sensor


def text():
    lines = []
    for profile in EXPORTED:
        records = records_of(profile)
        for function, shape, index, table, sensor in functions(profile):
            record = records.get((sensor, int(index))) if index != "-" else None
            record = record or records[sensor]
            name = f"{profile}_Gen{function}SDR"
            asked = map(str, question(function, sensor))
            lines.append(" ".join((MISSPELT.get(name, name), shape, index, table, *asked, sensor, record.record.hex(),
                                   record.entry.hex())))
    return "\n".join(lines) + "\n"


if __name__ == "__main__":
    print(text(), end="")
