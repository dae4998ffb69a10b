# SPDX-License-Identifier: GPL-3.0-or-later
"""What a sensor is offered with, the machine it is offered to, and the name that comes of both."""
import pathlib
import re
from dataclasses import dataclass, field

TABLES = pathlib.Path(__file__).resolve().parents[1] / "profiles" / "expected_name_tables.h"
PROFILES = {0: "Default", 1: "Kestrin", 2: "Pellago", 3: "Vorana", 4: "Astrel", 6: "Quorral", 7: "Lumora",
            11: "Durnow", 20: "Sablin", 16: "Ferrisk"}
TEMP, VOLT, FAN, POWER, MEMORY, DISK, CARD, GPU_CARD = (0x0100, 0x0200, 0x0403, 0x0803, 0x0C01, 0x0D00, 0x1501,
                                                        0x1700)
NOT_OFFERED, REFUSED = 0xFFFE, 0xFFFF
NVME, FRONT, REAR = 59, 4, 5

# class, device type, entries table, number of entries
FAMILIES = [
    (TEMP, 17, "atBrenmorSensorInfo", 14), (TEMP, 20, "atHyperTempSensorInfo", 7),
    (POWER, 20, "atHyperPowerSensorInfo", 2), (TEMP, 21, "atBirenRetimerTempSensorInfo", 1),
    (TEMP, 22, "atHGXNSWITCHTempSensorInfo", 1), (TEMP, 23, "atHGXPSWITCHTempSensorInfo", 1),
    (TEMP, 24, "atHGXRETIMERTempSensorInfo", 1), (TEMP, 25, "atHGXFPGATempSensorInfo", 1),
    (TEMP, 26, "atHGXHMCTempSensorInfo", 1), (TEMP, 27, "atHGXHSCTempSensorInfo", 1),
    (TEMP, 35, "atGIGAHYPER3FPGATempSensorInfo", 4), (TEMP, 38, "atMLUPcieRetimerTempSensorInfo", 8),
    (TEMP, 39, "atMLUSdrdesRetimerTempSensorInfo", 4), (TEMP, 40, "atMLUUBBTempSensorInfo", 2),
    (TEMP, 41, "atMLUUBBSfpTempSensorInfo", 4), (TEMP, 45, "atMLUInletTempSensorInfo", 4),
    (CARD, 42, "atX2000BOXSensorInfo", 1), (TEMP, 46, "atHalvikTempSensorInfo", 8),
    (TEMP, 47, "atILURetimerTempSensorInfo", 1), (TEMP, 48, "atMETAXRetimerTempSensorInfo", 8),
    (TEMP, 50, "atMGXNSWITCHTempSensorInfo", 4), (TEMP, 51, "atMGXPSWITCHTempSensorInfo", 1),
    (TEMP, 52, "atMGXFPGATempSensorInfo", 1), (TEMP, 53, "atMGXHMCTempSensorInfo", 1),
    (TEMP, 60, "atNebulaMatrixSensorInfo", 17), (TEMP, 61, "atSP925DTempSensorInfo", 6),
    (TEMP, 62, "atOxaUbbPowerBrickTempSensorInfo", 1), (TEMP, 63, "atOxaUbbInletTempSensorInfo", 1),
    (TEMP, 64, "atOxaUbbOutletTempSensorInfo", 3), (TEMP, 65, "atMTRetimerTempSensorInfo", 8),
    (TEMP, 66, "atBR166RetimerTempSensorInfo", 12),
]
# The names that the rules spell or form; the others are the product's own choice, and "table[entry]" stands for them.
KNOWN_CARD_NAMES = {("atBrenmorSensorInfo", 0): "DPU_Cpu_Inlet1", ("atBrenmorSensorInfo", 13): "DPU_DIMMB",
                    ("atX2000BOXSensorInfo", 0): "BOX", ("atNebulaMatrixSensorInfo", 0): "DPU_CPU_Inlet1",
                    ("atNebulaMatrixSensorInfo", 16): "DPU_QSFP2"}
KNOWN_CARD_NAMES.update({("atMLUPcieRetimerTempSensorInfo", i): f"MLU_PRT{i}_TEMP" for i in range(8)})
KNOWN_CARD_NAMES.update({(f"atHGX{part}TempSensorInfo", 0): f"HGX_{part}_TEMP"
                         for part in ("NSWITCH", "PSWITCH", "RETIMER", "FPGA", "HMC", "HSC")})

FRONT_NAMES = {
    "RAID_TEMP_*": "RAID_TEMP_F-*", "Raid*_Temp": "RaidF-*_Temp", "P*_Raid_Temp": "PF-*_Raid_Temp",
    "RAID*_Temp": "RAIDF-*_Temp", "HBA_TEMP_*": "HBA_TEMP_F-*", "HBA*_Temp": "HBAF-*_Temp",
    "P*_HBA_Temp": "PF-*_HBA_Temp", "NIC_SFP#_TEMP_*": "NIC_SFP#_T_F-*", "NIC*_SFP#_Temp": "NICF-*_SFP#_Temp",
    "P*_Net_SFP#_Temp": "PF-*_Net_SFP#_T", "P*_NIC_SFP#_Temp": "PF-*_NIC_SFP#_T", "NIC_TEMP_*": "NIC_TEMP_F-*",
    "NIC*_Temp": "NICF-*_Temp", "P*_Net_Temp": "PF-*_Net_Temp", "P*_NIC_Temp": "PF-*_NIC_Temp",
    "FC_TEMP_*": "FC_TEMP_F-*", "FC*_Temp": "FCF-*_Temp", "P*_FC_Temp": "PF-*_FC_Temp",
    "SNIC_NIC_TEMP_*": "SNIC_NIC_T_F-*", "SNIC*_NIC_Temp": "SNICF-*_NIC_Temp",
    "P*_SNIC_NIC_Temp": "PF-*_SNIC_NIC_T", "SNIC_SFP#_T_*": "SNIC_SFP#_T_F-*", "SNIC*_SFP#_Temp": "SNICF-*_SFP#_T",
    "P*_SNIC_SFP#_T": "PF-*_SNIC_SFP#_T",
}
RAX = [("GU05", "RA3"), ("GU04", "RA2"), ("GU03", "RA1"), ("GU08", "RB3"), ("GU07", "RB2"), ("GU06", "RB1"),
       ("GU10", "RC2"), ("GU09", "RC1")]
RAX_BOARD = 0x54E0


# ---- what is offered, and the machine it is offered to --------------------------------------------------------------
@dataclass(frozen=True)
class Offer:
    cls: int
    dev: int
    slot: int = 3
    bitmap: int = 0x3F
    unr: int = 110
    uc: int = 100
    unc: int = 90
    lnc: int = 10
    lc: int = 5
    lnr: int = 2
    hyst: int = 0
    brenmor: int = 0
    sub: int = 0
    seq: int = 1
    port2: int = 2

    def text(self):
        return (f"{self.cls:04X} dev={self.dev} sub={self.sub} slot={self.slot} bitmap={self.bitmap:04X} "
                f"thresholds={self.unr},{self.uc},{self.unc},{self.lnc},{self.lc},{self.lnr} hyst={self.hyst} "
                f"brenmor={self.brenmor} seq={self.seq} port2={self.port2}")


@dataclass
class Machine:
    custom: int
    board_id: int = 0x1234
    ocp_count: int = 4
    ocp_present: int = 0b0101
    slots: dict = field(default_factory=dict)        # PCIe slot -> location, silk
    backplanes: list = field(default_factory=list)   # start, disks, location
    conversion: dict = field(default_factory=dict)   # disk slot -> printed number
    gpus: list = field(default_factory=list)         # slot, watts or None, vendor
    thresholds: list = field(default_factory=list)   # name, mask, (UNR UC UNC LNR LC LNC)

    def lines(self):
        yield f"machine custom={self.custom} id={self.board_id:04X} ocp={self.ocp_count},{self.ocp_present}"
        for slot, (location, silk) in self.slots.items():
            yield f"pcie {slot} {location} {silk}"
        for start, disks, location in self.backplanes:
            yield f"backplane {start} {disks} {location}"
        for slot, number in self.conversion.items():
            yield f"conversion {slot} {number}"
        for slot, watts, vendor in self.gpus:
            yield f"gpu {slot} {0xFFFFFFFF if watts is None else watts} {vendor:04X}"
        for name, mask, values in self.thresholds:
            yield f"threshold {mask:02X} {' '.join(map(str, values))} {name}"


class Life:
    """What lives as long as the library is loaded."""

    def __init__(self):
        self.nic_names = 0
        self.disks = []  # [slot, kind, temperature added, status added]

    def registered(self, slot, kind):
        for entry in self.disks:
            if entry[0] == slot:
                return entry[1] != 1 or bool(entry[1 + kind])
        return False

    def register(self, slot, kind, disk_kind):
        entry = next((e for e in self.disks if e[0] == slot), None)
        if entry is None:
            entry = [0, 0, 0, 0]
            self.disks.append(entry)
        if entry[1] == 0:
            entry[0], entry[1] = slot, disk_kind
        entry[1 + kind] = 1


class Declined(Exception):
    """The generator's 255 or 0, as the add entry point returns it."""

    def __init__(self, status):
        super().__init__()
        self.status = status


# ---- tables ---------------------------------------------------------------------------------------------------------
def read_tables():
    text, tables = TABLES.read_text(), {}
    for name, body in re.findall(r"kExpected(\w+) = \{(.*?)\n\};", text, re.S):
        rows = re.findall(r'\{(0x\w+), (\d+), (\d+), "([^"]*)"\}', body)
        tables[name] = {(int(cls, 16), int(dev), int(sub)): pattern for cls, dev, sub, pattern in rows}
    return {profile: tables[name] for profile, name in PROFILES.items()}


# ---- names ----------------------------------------------------------------------------------------------------------
class Namer:
    def __init__(self, machine, life, table):
        self.machine, self.life, self.table = machine, life, table

    def card(self, offer, sub, index):
        """A card family decides alone; None when there is none for the class and the device type."""
        for cls, dev, entries, count in FAMILIES:
            if (cls, dev) == (offer.cls, offer.dev):
                if index >= count:
                    raise Declined(NOT_OFFERED)
                return KNOWN_CARD_NAMES.get((entries, index), f"{entries}[{index}]")
        ports = {TEMP: offer.seq, VOLT: offer.port2, POWER: 0, MEMORY: 0, DISK: 0, GPU_CARD: 0}
        if offer.cls not in ports:
            raise Declined(NOT_OFFERED)
        return self.generic(offer, sub, ports[offer.cls])

    def generic(self, offer, sub, port):
        custom, slot = self.machine.custom, offer.slot
        name = self.table.get((offer.cls, offer.dev, sub), "")
        if not name or name.startswith("null"):
            raise Declined(NOT_OFFERED)
        if offer.dev in (3, 5, 15, 16, 19) and name in FRONT_NAMES and self.front_number(slot) is not None:
            name, slot = FRONT_NAMES[name], self.front_number(slot)
        if "*" in name:
            name = fitting(name.replace("*", self.number(offer, slot, False)))
        if "#" in name:
            plain = custom in (0, 20) and offer.dev in (2, 5, 6, 19, 36, 43, 44)
            name = fitting(name.replace("#", self.number(offer, port, plain)))
        return self.rax(offer, sub, name) if custom == 20 else fitting(name)

    def front_number(self, slot):
        location, silk = self.machine.slots.get(slot, (0, ""))
        match = re.fullmatch(r"F-Slot(\d*)", silk)
        return int(match[1] or 0) if location == 1 and match else None

    def number(self, offer, value, plain):
        custom = self.machine.custom
        if offer.cls == FAN and custom == 1:
            return f"{value:X}"
        if offer.cls == FAN and custom == 11:
            return f"{value:02}"
        if not plain and custom in (0, 20):
            return f"{value:02}"
        if not plain and custom == 16 and offer.dev == 5:
            present = self.machine.ocp_present & ((1 << self.machine.ocp_count) - 1)
            self.life.nic_names += 1
            return str(bin(present).count("1") + self.life.nic_names - 1)
        return str(value)

    def rax(self, offer, sub, name):
        key = offer.cls, offer.dev, sub
        if key not in ((TEMP, 2, 9), (TEMP, 2, 10), (POWER, 56, 0), (GPU_CARD, 2, 0)):
            return name
        if self.machine.board_id != RAX_BOARD:
            raise Declined(NOT_OFFERED)
        for needle, partner in RAX:
            if needle in name:
                return name.replace(needle, partner, 1)
        return name


def fitting(name):
    if len(name) > 16:
        raise Declined(REFUSED)
    return name
