# SPDX-License-Identifier: GPL-3.0-or-later
"""The facts of a board file that the static sensor set depends on, with the defaults that absent keys stand for."""
import tomllib
from dataclasses import dataclass, field
from typing import Optional

SENSOR_NUMBERS = {
    "CPU_VR_TEMP": 101, "CPU_VOLTS": 102, "INPUT_TEMP": 103, "OUTPUT_TEMP": 104, "ENV_HUMI": 105, "PDB_TEMP": 106,
    "VCC12V": 107, "POWER_FAULT": 108, "PCH_TEMP": 121, "POWER_BUTTON": 122, "UID_BUTTON": 123, "INTRUSION": 124,
    "ME": 125, "BP_FRONT_12V": 19, "BP_REAR_12V": 20, "BP_FRONT_TEMP": 21, "BP_REAR_TEMP": 22, "SYS_54_VOLT": 25,
    "GPU_54_VOLT": 26, "PDB_BOARD_POWER": 27, "NIC_POWER": 28, "GPU_BOARD_POWER": 29, "CPU_VCORE_CURRENT": 109,
    "CPU_VCORE1_CURRENT1": 110, "CPU_VSOC_CURRENT": 111, "CPU_DDR_VDD1_CURRENT": 112, "PWR_MODULE_TEMP": 126,
    "UBB_RT_TEMP": 127,
}
KINDS = {"INPUT_VOLTS": 3, "OUTPUT_VOLTS": 4}
STORE = "/var/tmp/extSDR.dat"


@dataclass
class CpuVoltage:
    m: int = 1
    b: int = 0
    exponents: int = 0
    mask: int = 0
    unr: int = 0
    uc: int = 0
    unc: int = 0
    lnr: int = 0
    lc: int = 0
    lnc: int = 0


@dataclass
class Board:
    facts: dict = field(default_factory=dict)  # the parsed file

    def __post_init__(self):
        get = lambda section, key, default: self.facts.get(section, {}).get(key, default)  # noqa: E731
        word = lambda value, words: words.get(value, value)  # noqa: E731
        self.board_id = get("board", "id", 0)
        self.cdu_managed = int(get("board", "cdu_enable", 0)) == 1
        self.liquid_mode = word(get("board", "liquid_cooling_mode", 0), {"none": 0, "leak_sensor": 1, "no_fans": 2})
        self.simplified = get("board", "sensor_simplification", False)
        inlet = get("board", "inlet_client", {})
        self.inlet_client = inlet.get("bus", 1), inlet.get("address", 0x48)
        self.cpu_count = get("cpus", "count", 0)
        self.cpu_silk = get("cpus", "silk_start", 0)
        self.cpu_type = word(get("cpus", "type", 0), {"unknown": 0, "intel": 1, "domain_volt": 3})
        self.reduce_flag = int(get("cpus", "reduce_flag", 0)) if get("cpus", "service", True) else 0
        self.psu_count = get("psus", "count", 0)
        self.psu_groups = get("psus", "group_count", 0)
        self.psus_per_group = get("psus", "count_per_group", 0)
        self.dimm_count = get("dimms", "count", 0)
        self.memory_accuracy = get("dimms", "power_accuracy", 1)
        self.fan_count = get("fans", "count", 0) if get("fans", "service", True) else 0
        self.fan_accuracy = get("fans", "power_accuracy", 1)
        self.ocp_count = get("ocp", "count", 0)
        present = get("ocp", "present", 0)
        self.ocp_present = present if isinstance(present, int) else sum(1 << card for card in numbers(present))
        self.disk_service = get("disks", "service", True)
        self.disks_enabled = get("disks", "enabled", True)
        self.disk_accuracy = get("disks", "power_accuracy", 1)
        self.backplanes = get("disks", "backplane", [])
        self.backplane_count = get("disks", "reported_count", len(self.backplanes))
        self.nvme = set(numbers(get("disks", "nvme_slots", [])))
        self.switch_supported = get("switch_board", "supported", False)
        self.switch_chips = get("switch_board", "chip_temp_count", 0)
        self.switch_sensors_valid = int(get("switch_board", "sensors_valid", 0)) != 0
        self.pcie_slots = self._pcie_slots()
        self.pcie_count = get("pcie", "count", len(self.pcie_slots))
        self.stored_names = self._stored_names()
        self.fatal_fact_fails = self._fatal_fact_fails()

    def _section(self, section, key):
        """A table whose keys are numbers."""
        table = self.facts.get(section, {}).get(key, {})
        return {int(number, 0): value for number, value in table.items()}

    def _fatal_fact_fails(self):
        """Whether the board lets one of the two facts fail without which there is no pass; other faults are refused."""
        calls = {fault["call"] for fault in self.facts.get("fault", [])}
        if not calls <= {"HAL_GetPsuMaxCount", "get_default_board_id"}:
            raise SystemExit(f"the model knows nothing of failing {', '.join(sorted(calls))}")
        return bool(calls)

    # -- processors --------------------------------------------------------------------------------------------
    def cpu_wanted(self, cpu):
        if self.reduce_flag == 0:
            return True
        online = self.facts.get("cpus", {}).get("online", [])
        return online[cpu] if cpu < len(online) else True

    def vr_client(self, cpu):
        return client(self._section("cpus", "vr_client").get(cpu), cpu, 0x60)

    def voltage(self, index):
        return CpuVoltage(**self._section("cpus", "voltage").get(index, {}))

    # -- memory ------------------------------------------------------------------------------------------------
    def dimm_name(self, dimm):
        dimms = self.facts.get("dimms", {})
        names = dimms.get("names", [])
        if isinstance(names, list):
            return names[dimm] if dimm < len(names) else f"{letters(dimm // 2)}{dimm % 2}"
        per_cpu, per_channel = dimms.get("dimms_per_cpu", 0), dimms.get("slots_per_channel", 2)
        in_cpu = dimm % per_cpu if per_cpu else dimm
        values = {"n": dimm, "cpu": dimm // per_cpu if per_cpu else 0, "channel": in_cpu // per_channel,
                  "slot": in_cpu % per_channel, "letter": letters(in_cpu // per_channel)}
        out, rest = "", names
        while "{" in rest:
            before, _, rest = rest.partition("{")
            inside, _, rest = rest.partition("}")
            name, _, width = inside.partition(":")
            value = values[name]
            out += before + (value if name == "letter" else str(value).zfill(int(width or 0)))
        return out + rest

    # -- slots -------------------------------------------------------------------------------------------------
    def _pcie_slots(self):
        pcie = self.facts.get("pcie", {})
        slots = {number: True for number in numbers(pcie.get("slots", []))}
        for described in pcie.get("slot", []):
            slots[described["slot"]] = described.get("present", True)
        return list(slots.items())

    def pcie_slot(self, index):
        """The slot of a 1-based index, None when the index has no slot."""
        if index > len(self.pcie_slots):
            return None
        slot, present = self.pcie_slots[index - 1]
        return slot if present else None

    def fan_number(self, fan):
        silk = numbers(self.facts.get("fans", {}).get("silk", []))
        return silk[fan] if fan < len(silk) else fan + 1

    def backplane(self, plane):
        if plane >= len(self.backplanes):
            return 0, 0
        return self.backplanes[plane].get("start_slot", 0), self.backplanes[plane].get("disk_count", 0)

    def is_nvme(self, slot):
        return slot in self.nvme

    def converted(self, slot):
        return self._section("disks", "conversion").get(slot, slot)

    def disk_silk(self, slot):
        """The printed number of a slot where it differs from the slot, else None."""
        return self._section("disks", "silk").get(slot)

    def restored_ocp(self, index):
        return self._section("ocp", "restored").get(index, index)

    # -- switch board ------------------------------------------------------------------------------------------
    def card_online(self, card):
        return self._section("switch_board", "card").get(card, {}).get("online", False)

    def card_id(self, card):
        return self._section("switch_board", "card").get(card, {}).get("id", 0)

    def switch_client(self, instance):
        return client(self._section("switch_board", "client").get(instance), instance, 0x40)

    # -- support flags -------------------------------------------------------------------------------------------
    def supports(self, sensor):
        support = self.facts.get("support", {})
        return self._flag(support.get("sensors", {}), SENSOR_NUMBERS, "SENSOR_", sensor, support.get("all", True))

    def supports_kind(self, kind):
        return self._flag(self.facts.get("support", {}).get("kinds", {}), KINDS, "SENSOR_KIND_", kind, True)

    @staticmethod
    def _flag(table, names, prefix, wanted, default):
        for key, value in table.items():
            short = key.removeprefix(prefix)
            number = names[short] if short in names else int(key, 0) if key[:1].isdigit() else None
            if number == wanted:
                return int(value) != 0
        return bool(default)

    # -- the store of run-time records ---------------------------------------------------------------------------
    def _stored_names(self):
        """(record type, name) of every slot of the store's file, when the board brings one."""
        content = file_bytes(self.facts.get("files", {}).get(STORE, ""))
        slots = [content[at:at + 64] for at in range(0, len(content) - 63, 64)]
        places = {1: 47, 2: 31}
        return [(slot[3], slot[places[slot[3]] + 1:][:min(slot[places[slot[3]]] & 0x3F, 16)].decode("latin-1"))
                for slot in slots if slot[3] in places]


def client(table, bus, address):
    """Bus and address: those given when the board names no client, else what it names (0 where it leaves one out)."""
    return (bus, address) if table is None else (table.get("bus", 0), table.get("address", 0))


def numbers(values):
    """A list of numbers and ranges such as "0-7"."""
    out = []
    for value in values:
        if isinstance(value, str):
            first, _, last = value.partition("-")
            out += range(int(first, 0), int(last or first, 0) + 1)
        else:
            out.append(value)
    return out


def letters(channel):
    """0 = A, 25 = Z, 26 = AA."""
    text, rest = "", channel + 1
    while rest:
        rest, digit = divmod(rest - 1, 26)
        text = chr(ord("A") + digit) + text
    return text


def file_bytes(value):
    if isinstance(value, str):
        return value.encode("latin-1")
    if isinstance(value, list):
        return bytes(value)
    if "hex" in value:
        return bytes.fromhex(value["hex"])
    return bytes([value.get("fill", 0)]) * value["size"]


def load(path) -> Board:
    with open(path, "rb") as file:
        return Board(tomllib.load(file))
