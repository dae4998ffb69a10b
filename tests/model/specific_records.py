# SPDX-License-Identifier: GPL-3.0-or-later
"""The record that a generator makes of an offer, byte by byte."""
from dataclasses import replace

from specific_names import (CARD, DISK, FAN, FRONT, GPU_CARD, MEMORY, NOT_OFFERED, NVME, POWER, REAR, REFUSED, TEMP,
                            VOLT, Declined, Namer)


# ---- bytes ----------------------------------------------------------------------------------------------------------
def entity_id(dev):
    ranges = [(6, 6, 0x97), (21, 27, 0xE0), (30, 33, 0xE1), (34, 34, 0x96), (37, 37, 0xE1), (38, 40, 0xE0),
              (41, 41, 0xE2), (42, 42, 0xE0), (45, 45, 0xE0), (47, 48, 0xE0), (49, 49, 0xE1), (50, 53, 0xE0),
              (55, 55, 0x96), (62, 64, 0xE0), (66, 66, 0xE0), (67, 67, 0xE1), (68, 73, 0xE0)]
    return next((entity for low, high, entity in ranges if low <= dev <= high), 0x0B)


def device_relative(instance, dev):
    return 0x80 | (instance & 0x7F) if dev in (28, 35, 37, 55) or entity_id(dev) == 0xE0 else instance


def index_byte(offer, sub):
    by_brenmor = (17, 20, 35, 38, 39, 40, 41, 45, 46, 48, 50, 60, 61, 62, 63, 64, 66)
    return offer.brenmor if offer.dev in by_brenmor else (sub << 4 | offer.seq & 0x0F) & 0xFF


def full_record(sensor_type, units1, base_unit, m, exponents, limits):
    sdr = bytearray(48)
    sdr[2:4] = 0x51, 0x01
    sdr[5] = 0x20
    sdr[9:14] = 0x60, 0x7F, 0x68, sensor_type, 0x01
    sdr[20:22] = units1, base_unit
    sdr[24], sdr[29] = m, exponents
    sdr[34:36] = limits
    sdr[42:44] = 3, 3
    return sdr


def put_thresholds(sdr, offer):
    # bit: byte of the threshold, its value, and what it adds to bytes 14..17
    rules = [(41, offer.lnc, (0x01, 0x10, 0x01, 0)), (40, offer.lc, (0x04, 0x20, 0x04, 0)),
             (39, offer.lnr, (0x10, 0x40, 0x10, 0)), (38, offer.unc, (0x80, 0, 0x80, 0x10)),
             (37, offer.uc, (0, 0x02, 0, 0x22)), (36, offer.unr, (0, 0x08, 0, 0x48))]
    for bit, (at, value, masks) in enumerate(rules):
        if offer.bitmap >> bit & 1:
            sdr[at] = value
            for byte, mask in enumerate(masks, 14):
                sdr[byte] |= mask
    if offer.bitmap:
        sdr[18] = sdr[19] = offer.bitmap & 0xFF
    if offer.hyst:
        sdr[42] = sdr[43] = offer.hyst


def in_order(mask, unr, uc, unc, lnr, lc, lnc):
    lower = {7: lnc > lc > lnr, 5: lnc > lnr, 3: lnc > lc, 6: lnr < lc}
    upper = {7: unc < uc < unr, 5: unc < unr, 6: unr > uc, 3: unc < uc}
    return lower.get(mask & 7, True) and upper.get(mask >> 3 & 7, True)


def overlay(sdr, name, machine):
    """The thresholds that a user set: they win when they were set under this record's mask and stand in order."""
    found = next((entry for entry in machine.thresholds if entry[0] == name), None)
    if found is None or found[1] != sdr[18]:
        return
    bits = (5, 4, 3, 2, 1, 0)
    merged = [new if found[1] >> bit & 1 else old for bit, old, new in zip(bits, sdr[36:42], found[2])]
    if in_order(found[1], *merged):
        sdr[36:42] = merged


def named(sdr, name):
    """A record with its name; "table[entry]" leaves name, length and type byte to whoever knows the catalogue."""
    at = len(sdr)
    if "[" in name:
        return bytes(sdr)
    sdr[4] = at - 5 + len(name)
    sdr[at - 1] = 0xC0 + len(name)
    return bytes(sdr) + name.encode()


# ---- the generators -------------------------------------------------------------------------------------------------
class Generators:
    def __init__(self, machine, life, table):
        self.machine, self.namer = machine, Namer(machine, life, table)

    def run(self, offer):
        """Name and record, and the slot as the description holds it afterwards."""
        makers = {TEMP: self.temperature, VOLT: self.voltage, POWER: self.power, FAN: self.fan, DISK: self.disk,
                  CARD: self.card, GPU_CARD: self.gpu_card, MEMORY: self.memory}
        self.slot_after = offer.slot
        return makers[offer.cls](offer)

    def front_or_rear(self, slot):
        for start, disks, location in self.machine.backplanes:
            if location == "Front" and start <= slot <= (start + disks - 1) % 256 and disks:
                return FRONT
        return REAR

    def convert(self, offer):
        self.slot_after = self.machine.conversion.get(offer.slot, offer.slot)
        return replace(offer, slot=self.slot_after)

    def nvme_step(self, offer):
        if offer.dev != NVME:
            return offer, offer.sub
        if offer.sub != 1:
            raise Declined(NOT_OFFERED)
        return self.convert(offer), self.front_or_rear(offer.slot)

    def sensor(self, sdr, given):
        """The model that temperature and voltage share."""
        offer, sub = self.nvme_step(given)
        name = self.namer.card(offer, sub, offer.brenmor)
        sdr[8], sdr[45], sdr[46] = entity_id(offer.dev), given.slot, offer.dev
        if offer.dev == NVME:
            sdr[9] = offer.slot
        elif offer.dev != 4 and offer.slot < 255:
            sdr[9] = (sdr[9] + offer.slot) & 0xFF
        if self.machine.custom == 7 and (offer.dev, offer.sub) == (6, 1):
            sdr[9], sdr[45] = 0x80 | sdr[9] & 0x7F, 0xFF
        if offer.dev == 41:
            sdr[9] = (sdr[9] + offer.brenmor) & 0xFF
        sdr[9] = device_relative(sdr[9], offer.dev)
        put_thresholds(sdr, offer)
        if self.machine.custom == 16 and offer.cls == TEMP and sdr[8] == 0x0B:
            self.fixed_thresholds(sdr, offer.dev)
        overlay(sdr, name, self.machine)
        sdr[44] = index_byte(offer, sub)
        return name, named(sdr, name)

    @staticmethod
    def fixed_thresholds(sdr, dev):
        fixed = {2: (90, 88, 85), 5: (110, 105, 100)}
        if dev in fixed:
            sdr[36:39] = fixed[dev]
            sdr[18] = sdr[19] = 0x38
            for at, mask in zip(range(14, 18), (0x80, 0x0A, 0x80, 0x7A)):
                sdr[at] |= mask

    def temperature(self, offer):
        return self.sensor(full_record(0x01, 0x80, 0x01, 1, 0x00, (0x7F, 0x80)), offer)

    def voltage(self, offer):
        m, exponents = (100, 0xC0) if offer.dev == 31 else (200, 0xE0)
        return self.sensor(full_record(0x02, 0x00, 0x04, m, exponents, (0xFF, 0x00)), offer)

    def power(self, given):
        offer, sub = self.nvme_step(given)
        name = self.namer.card(offer, sub, offer.brenmor)
        sdr = full_record(0x0B if self.machine.custom == 7 else 0x08, 0x00, 0x06, 5, 0x00, (0xFF, 0x00))
        sdr[8], sdr[45], sdr[46] = entity_id(offer.dev), given.slot, offer.dev
        if offer.slot < 255:
            sdr[9] = (0x60 + offer.slot) & 0xFF
        put_thresholds(sdr, offer)
        overlay(sdr, name, self.machine)
        if offer.dev in (2, 30, 31, 56, 57, 58):
            sdr[24], sdr[26] = self.gpu_factors(offer)
        elif offer.dev in (20, 34, 36):
            sdr[24] = 1
        if offer.dev == 20:
            sdr[44] = offer.brenmor
        elif offer.dev == 36:
            sdr[44] = (offer.sub * 16 + (offer.seq & 0x0F)) & 0xFF
        return name, named(sdr, name)

    def gpu_factors(self, offer):
        watts = self.gpu_watts(offer)
        if watts is None:
            return {0x5502: (17, 9), 0x550F: (22, 11)}.get(self.machine.board_id, (4, 2))
        if watts > 0xFE00:
            return 255, 128
        m = (watts - 1) // 255 + 1 if watts else 0
        return m, ((m - 1) >> 1) + 1 if m > 1 else 0

    def gpu_watts(self, offer):
        """Rated watts of one slot or of the whole board; None when the inventory is unusable."""
        single, total, seen = offer.dev in (56, 57, 58), 0, set()
        if not single and not 0 < len(self.machine.gpus) <= 29:
            return None
        for slot, watts, vendor in self.machine.gpus[:29]:
            if watts is None or slot > 81 or (single and slot != offer.slot):
                continue
            if vendor == 0xCABC and slot in seen:  # reported twice
                if single:
                    break
                continue
            total += watts
            seen.add(slot)
            if not single and total > 0xFE00:
                break
        return total

    def fan(self, given):
        if self.machine.board_id == 0x5497:
            raise Declined(REFUSED)
        offer, sub = self.nvme_step(given)
        name = self.namer.generic(offer, sub, 0)
        sdr = full_record(0x04, 0x00, 0x12, 100, 0x00, (0xFF, 0x00))
        sdr[8], sdr[45], sdr[46] = 0x1D, offer.brenmor, offer.dev
        sdr[9] = (0x60 + offer.slot) & 0xFF
        put_thresholds(sdr, offer)
        if self.machine.custom == 16 and offer.dev in (255, 0, 1):
            sdr[18] = sdr[19] = 0x13
            sdr[14:18] = 0x05, 0x02, 0x05, 0x02
            sdr[41], sdr[40] = offer.lc, (offer.lc - 2) & 0xFF
        overlay(sdr, name, self.machine)
        return name, named(sdr, name)

    def compact(self, name, ent, inst, init, caps, kind, masks, rest):
        sdr = bytearray(32)
        sdr[2:4] = 0x51, 0x02
        sdr[5] = 0x20
        sdr[8:14] = ent, inst, init, caps, *kind
        for at, mask in zip((14, 16, 18), masks):
            sdr[at:at + 2] = mask.to_bytes(2, "little")
        for at, value in rest.items():
            sdr[at] = value
        return name, named(sdr, name)

    def disk(self, given):
        offer = self.convert(given) if given.dev == NVME else given
        sub = self.front_or_rear(given.slot) if given.dev == NVME and given.sub == 1 else given.sub
        name = self.namer.card(offer, sub, offer.brenmor)
        return self.compact(name, 0x04, 0x00, 0x63, 0xC0, (0x0D, 0x6F), (0x0001, 0x0001, 0x0047),
                            {20: 0xC0, 23: 0x01, 29: given.slot, 30: given.dev})

    def card(self, offer, kind=(0x15, 0x07)):
        name = self.namer.card(offer, offer.sub, offer.brenmor)
        instance = (0x60 + offer.slot) & 0xFF if offer.slot < 255 else 0x60
        return self.compact(name, entity_id(offer.dev), device_relative(instance, offer.dev), 0x63, 0x40, kind,
                            (0x0006, 0x0006, 0x7FFF), {24: 0x01})

    def gpu_card(self, offer):
        return self.card(offer, (0x17, 0x6F))

    def memory(self, offer):
        name = self.namer.card(offer, offer.sub, offer.brenmor)
        return self.compact(name, 0x0B, 0x60, 0x7F, 0x40, (0x0C, 0x6F), (0x0042, 0x0042, 0x0042),
                            {23: 0x11, 25: 0x01, 26: 0x01})


def add(offer, machine, life, table):
    """Status, slot afterwards, name and record of one offer through the add entry point."""
    kind = {TEMP: 1, DISK: 2}.get(offer.cls) if offer.dev == NVME else None
    if kind and life.registered(offer.slot, kind):
        return REFUSED, offer.slot, "", b""
    generators = Generators(machine, life, table)
    try:
        name, record = generators.run(offer)
    except Declined as declined:
        return declined.status, generators.slot_after, "", b""
    if kind:
        life.register(offer.slot, kind, offer.sub if kind == 1 else offer.bitmap & 0xFF)
    return 0, generators.slot_after, name, record
