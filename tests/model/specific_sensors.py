#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Single sensors: which record a description gives, or that it gives none.

A model of its own of the eight generators behind the add entry point, of the names, and of what they ask the board.
It writes offers and outcomes into expected/specific/, one file per profile and one for the card families; every row of
every information table is offered. The card names that are the catalogue's own are written as "table[entry]".

    specific_sensors.py            writes
    specific_sensors.py --check    changes nothing; exit 1 and a list when a file is missing, stale or left over
"""
import pathlib
import sys
from dataclasses import replace

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))
from specific_names import (DISK, FAMILIES, FRONT, GPU_CARD, NVME, PROFILES, RAX_BOARD, REAR, TEMP, VOLT,  # noqa: E402
                            Life, Machine, Offer, read_tables)
from specific_records import Generators, add  # noqa: E402

TARGET = HERE / "expected" / "specific"


# ---- offers ---------------------------------------------------------------------------------------------------------
class Dice:
    def __init__(self, seed):
        self.state = seed

    def below(self, n):
        self.state = (self.state * 6364136223846793005 + 1442695040888963407) % 2**64
        return (self.state >> 33) % n


def thrown(offer, dice):
    """The same sensor with everything thrown that the row leaves open; a card family needs its index."""
    slot = dice.below(12) if dice.below(3) else (dice.below(256), 255, 159, 160, 200)[dice.below(5)]
    keep_index = any((cls, dev) == (offer.cls, offer.dev) for cls, dev, _, _ in FAMILIES)
    return replace(offer, slot=slot, bitmap=dice.below(64), unr=dice.below(256), uc=dice.below(256),
                   unc=dice.below(256), lnc=dice.below(256), lc=dice.below(256), lnr=dice.below(256),
                   hyst=(0, dice.below(256))[dice.below(2)], brenmor=offer.brenmor if keep_index else dice.below(256),
                   seq=dice.below(20), port2=dice.below(10))


def of_row(key, slot):
    cls, dev, sub = key
    disk_sub = {(TEMP, FRONT): 1, (TEMP, REAR): 1}.get((cls, sub), sub) if dev == NVME else sub
    if dev == NVME:  # a disk slot of its own for every row
        slot += {(TEMP, REAR): 24}.get((cls, sub), 40 + 4 * sub if cls == DISK else 0)
    return Offer(cls, dev, slot=slot, sub=disk_sub, bitmap=sub if cls == DISK else 0x3F)


def stored_thresholds(table, machine, keys):
    """One stored entry per name that the rows give: applied, out of order, of another mask, in turn."""
    entries = []
    for number, key in enumerate(keys):
        status, _, name, _ = add(of_row(key, 3), machine, Life(), table)
        if status or any(entry[0] == name for entry in entries):
            continue
        values = [(120, 111, 99, 1, 6, 12), (120, 111, 99, 1, 6, 12), (120, 99, 111, 1, 6, 12)][number % 3]
        entries.append((name, 0x38 if number % 4 == 3 else 0x3F, values))
    return entries


def machines_of(custom, table):
    board_id = RAX_BOARD if custom == 20 else 0x1234
    disks = {"backplanes": [(0, 8, "Rear"), (0, 16, "Front"), (24, 16, "Rear"), (250, 10, "Front")],
             "conversion": {3: 7, 5: 105, 27: 3, 8: 8, 51: 90}}
    gpus = [(3, 350, 0x10DE), (4, None, 0x10DE), (5, 600, 0xCABC), (5, 600, 0xCABC), (90, 100, 0x10DE),
            (6, 0, 0x10DE), (7, 255, 0x1002), (8, 256, 0x1002), (3, 40, 0x10DE)]
    plain = Machine(custom, board_id, gpus=gpus, **disks)
    front = Machine(custom, board_id, ocp_count=2, ocp_present=0b1111, gpus=[(3, 65025, 0x10DE)],
                    slots={3: (1, "F-Slot2"), 4: (1, "F-Slot2a"), 5: (0, "F-Slot5"), 6: (1, "F-Slot")}, **disks)
    front.thresholds = stored_thresholds(table, front, table)
    other = Machine(custom, 0x550F, ocp_count=0, slots={3: (1, "Slot3")}, **disks)
    return plain, front, other


def offers_to(machine_number, table, extra, dice):
    for key in table:
        if machine_number < 2:
            yield of_row(key, 3)
        if machine_number != 1:
            yield thrown(of_row(key, 0), dice)
    for key in extra:
        yield of_row(key, 2)


def disk_story():
    """Disks come and come again: the registry and the two kinds of record."""
    for slot, sub in ((1, 1), (1, 1), (30, 1), (4, 2), (4, 1), (200, 1), (251, 1), (250, 1), (255, 1)):
        yield Offer(TEMP, NVME, slot=slot, sub=sub)
    for slot, sub, bitmap in ((1, 1, 1), (1, 1, 1), (30, 1, 1), (31, 5, 1), (32, 4, 1), (2, 2, 2), (2, 2, 2),
                              (12, 3, 3), (13, 1, 0), (13, 1, 1), (5, 6, 1), (255, 3, 1)):
        yield Offer(DISK, NVME, slot=slot, sub=sub, bitmap=bitmap)
    yield Offer(TEMP, NVME, slot=2, sub=1)  # registered with kind 2: counts as registered for both


def line_of(key, offer, outcome):
    status, slot, name, record = outcome
    row = "-" if key is None else "/".join((f"{key[0]:04X}", str(key[1]), str(key[2])))
    text = f"offer {offer.text()} | {row} | {status:04X} slot={slot}"
    return text + (f" | {name} | {record.hex()}" if status == 0 else "")


def row_of(offer, table, machine, outcome):
    """The row that the name came from."""
    if outcome[0] != 0:
        return None
    sub = offer.sub
    if offer.dev == NVME and sub == 1:
        sub = Generators(machine, Life(), table).front_or_rear(offer.slot)
    key = offer.cls, offer.dev, sub
    return key if key in table else None


def profile_text(custom, tables):
    table, life, dice = tables[custom], Life(), Dice(custom + 1)
    extra = [key for key in tables[0] if key not in table] + [(GPU_CARD, 2, 0), (VOLT, 31, 0), (DISK, 58, 2)]
    lines = []
    for number, machine in enumerate(machines_of(custom, table)):
        lines += machine.lines()
        offers = list(offers_to(number, table, extra if number == 0 else (), dice))
        for offer in offers + (list(disk_story()) if number == 0 else []):
            outcome = add(offer, machine, life, table)
            lines.append(line_of(row_of(offer, table, machine, outcome), offer, outcome))
    return "\n".join(lines) + "\n"


def card_text(tables):
    lines, life, dice = [], Life(), Dice(77)
    for custom in (0, 7, 16, 20):
        machine = Machine(custom)
        lines += machine.lines()
        for cls, dev, _, count in FAMILIES:
            wanted = [Offer(cls, dev, brenmor=index) for index in range(count if custom == 0 else 1)]
            wanted += [thrown(offer, dice) for offer in wanted]
            wanted += [Offer(cls, dev, brenmor=count)] if custom == 0 else []  # one past the end
            for offer in wanted:
                lines.append(line_of(None, offer, add(offer, machine, life, tables[custom])))
    return "\n".join(lines) + "\n"


def wanted_files():
    tables = read_tables()
    for custom, name in PROFILES.items():
        yield TARGET / f"{name.lower()}.offers", profile_text(custom, tables)
    yield TARGET / "cards.offers", card_text(tables)


def main():
    files = dict(wanted_files())
    present = set(TARGET.glob("*"))
    if "--check" in sys.argv[1:]:
        wrong = [f"missing or stale: {path.name}" for path, text in files.items()
                 if not path.exists() or path.read_text() != text]
        wrong += [f"left over: {path.name}" for path in sorted(present - set(files))]
        print("\n".join(wrong or [f"{len(files)} files are as the model says"]))
        sys.exit(1 if wrong or not files else 0)
    TARGET.mkdir(parents=True, exist_ok=True)
    for path in present - set(files):
        path.unlink()
    for path, text in files.items():
        path.write_text(text)
    print(f"{len(files)} files written")


if __name__ == "__main__":
    main()
