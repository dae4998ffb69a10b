// SPDX-License-Identifier: GPL-3.0-or-later
//
// Every builder beside a second description of its record, over many arguments, whole words included.
#include <functional>
#include <optional>
#include <random>

#include "events/event_fixture.h"

namespace {

using namespace seltest;

using Args = std::array<uint32_t, 9>;

struct World { // what the model knows of the platform
    uint32_t profile = 0;
    bool marker = false;
};

// What comes out: the result, and the bytes where a record is sent.
struct Outcome {
    uint32_t result = 0;
    std::string record;

    bool operator==(const Outcome &) const = default;
};
std::ostream &operator<<(std::ostream &out, const Outcome &outcome) {
    return out << outcome.result << " [" << outcome.record << "]";
}

// ---- the second description ------------------------------------------------------------------------

struct Fields {
    uint32_t type = 0x02, b7 = 0x20, b8 = 0, b9 = 0x04, b10 = 0, b11 = 0, b12 = 0, b13 = 0, b14 = 0, b15 = 0;
    uint32_t stamp = 0;
};

Outcome Sent(const Fields &f) {
    std::vector<uint8_t> record = {0, 0, static_cast<uint8_t>(f.type)};
    for (int shift = 24; shift >= 0; shift -= 8) {
        record.push_back(static_cast<uint8_t>(f.stamp >> shift));
    }
    for (const uint32_t field : {f.b7, f.b8, f.b9, f.b10, f.b11, f.b12, f.b13, f.b14, f.b15}) {
        record.push_back(static_cast<uint8_t>(field));
    }
    return {0, Hex(record)};
}
const Outcome kRefused = {0xFFFF, ""};
const Outcome kNothing = {0, ""};

uint32_t Toward(uint32_t direction, uint32_t type) {
    return direction % 2 == 1 ? type + 128 : type;
}
uint32_t Found(const std::map<uint32_t, uint32_t> &numbers, uint32_t key) {
    const auto found = numbers.find(key);
    return found == numbers.end() ? 0 : found->second;
}
bool Among(uint32_t value, std::initializer_list<uint32_t> set) {
    return std::find(set.begin(), set.end(), value) != set.end();
}

Outcome Disk(const Args &a, const World &world) {
    const uint32_t slot = a[1];
    const bool predicted = Among(a[2], {27, 28, 29});
    if (world.marker && !predicted) {
        return kNothing;
    }
    const uint32_t event = predicted ? 24 : a[2];
    if (event == 21 && world.profile == 1) {
        return kNothing;
    }
    Fields f = {.type = 0xE0, .b7 = a[0], .b10 = 0x0D, .b12 = Toward(a[3], 0x6F), .b13 = 0xA1, .b15 = event};
    f.stamp = slot;
    if (Among(event, {20, 25})) {
        f.b10 = 0x01;
        f.b12 = Toward(a[3], 0x07);
        f.b13 = event == 20 ? 0xA1 : 0xA2;
    }
    if (Among(event, {21, 22, 31})) {
        f.b13 = 0xA2;
    }
    if (Among(event, {19, 21, 24, 30, 31})) {
        f.b7 = 4;
        f.b11 = slot < 256 ? 0x40 + slot : 0;
    }
    return Sent(f);
}

Outcome PowerModule(const Args &a, const World &world) {
    const uint32_t event = a[1];
    Fields f = {.type = 0xC0, .b7 = 0x0A, .b10 = 0x08, .b14 = a[0], .b15 = event};
    f.b11 = Found(sim::CurrentBoard().sensor_numbers.power_module, a[0]);
    if (Among(event, {17, 19, 21, 23, 25, 26, 28})) {
        f.b12 = Toward(a[2], 0x6F);
        f.b13 = 0xA1;
    } else if (Among(event, {18, 20, 22, 24, 27, 29})) {
        f.b12 = Toward(a[2], 0x6F);
        f.b13 = 0xA2;
    } else if (Among(event, {30, 31, 32, 33})) {
        if (world.profile == 1) {
            return kRefused;
        }
        f.b10 = 0x04;
        f.b11 = 0;
        f.b12 = Toward(a[2], 0x04);
        f.b13 = 0xA1;
    } else if (event == 34) {
        f.b10 = 0x09;
        f.b12 = Toward(a[2], 0x05);
        f.b13 = 0xA1;
    }
    return Sent(f);
}

Outcome Alarm(const Args &a, const World &) {
    Fields f = {.type = 0xC0, .b7 = a[0], .b8 = a[1]};
    const uint32_t entity = a[0], reason = a[1], direction = a[2];
    if (entity == 29) {
        f.b10 = 0x04, f.b12 = Toward(direction, 0x0A), f.b13 = 0x04;
    } else if (entity == 30) {
        f.b10 = 0x21, f.b12 = Toward(direction, 0x6F);
        if (Among(reason, {9, 10, 11, 20})) {
            f.b13 = 0xA0, f.b14 = 0x79;
        } else if (Among(reason, {12, 13})) {
            f.b13 = 0xA9, f.b14 = 0x78, f.b15 = 1;
        } else if (reason == 14) {
            f.b13 = 0xA4, f.b14 = 0x78;
        } else if (Among(reason, {15, 16, 17, 18})) {
            f.b13 = 0xA9, f.b14 = 0x79, f.b15 = 2;
        }
    } else if (entity == 55) {
        f.b10 = 0x28, f.b12 = Toward(direction, 0x6F), f.b13 = 0xE4, f.b14 = 31;
    } else if (entity == 144 && reason < 2) {
        f.b10 = 0x18, f.b12 = Toward(direction, 0x0A), f.b13 = 0x02;
    } else if (entity == 144 && reason == 32) {
        f.b10 = 0x21, f.b12 = Toward(direction, 0x6F), f.b13 = 0xA8, f.b14 = 0x7A;
    }
    return Sent(f);
}

Outcome NetPort(const Args &a, const World &) {
    return Sent({.type = 0xC0,
                 .b7 = a[0],
                 .b8 = a[5] % 16 * 16 + a[6] % 16,
                 .b9 = a[3] % 16 * 16 + a[4] % 16,
                 .b10 = 0x27,
                 .b12 = Toward(a[8], 0x6F),
                 .b14 = a[1],
                 .b15 = a[2]});
}

Outcome Controller(const Args &a, const World &) {
    Fields f = {.type = 0xC0, .b7 = a[0], .b8 = a[2], .b14 = a[1]};
    if (a[2] == 18) {
        f.b10 = 0x01, f.b12 = Toward(a[3], 0x07), f.b13 = 0xA2;
    } else if (a[2] == 19) {
        f.b10 = 0x29, f.b12 = Toward(a[3], 0x6F), f.b13 = 0xA0;
    }
    return Sent(f);
}

Outcome LogicalDisk(const Args &a, const World &) {
    return Sent({.type = 0xC0,
                 .b7 = a[1] == 131 ? 4 : a[0],
                 .b8 = a[1],
                 .b10 = 0x0D,
                 .b12 = Toward(a[4], a[1] == 131 ? 0x6F : 0x0B),
                 .b13 = a[1] == 130 ? 0xA2u : 0xA6u,
                 .b14 = a[2],
                 .b15 = a[3]});
}

Outcome Usage(const Args &a, const World &) {
    const uint32_t type = a[0] == 26 ? 0x0D : a[0] == 32 ? 0x0C : a[0] == 3 ? 0x07 : 0;
    return Sent({.type = 0xC0,
                 .b7 = a[0],
                 .b8 = a[1],
                 .b10 = type,
                 .b12 = Toward(a[4], 0x05),
                 .b13 = 0xA1,
                 .b14 = a[3],
                 .b15 = a[2]});
}

Outcome CpuError(const Args &a, const World &) {
    if (a[4] > 1) {
        return kRefused;
    }
    uint32_t bank = a[2];
    if (a[3] == 11 && a[2] != 0xFF) {
        bank = bank % 128 + a[1] % 2 * 128;
    }
    return Sent({.b10 = 0x07,
                 .b11 = Found(sim::CurrentBoard().sensor_numbers.cpu, a[0]),
                 .b12 = Toward(a[4], 0x6F),
                 .b13 = a[3],
                 .b14 = a[0],
                 .b15 = bank});
}

Outcome MemError(const Args &a, const World &world) {
    if (a[3] > 1) {
        return kRefused;
    }
    if (a[1] == 14 && world.profile != 1) {
        return kNothing;
    }
    return Sent({.b10 = 0x0C,
                 .b11 = Found(sim::CurrentBoard().sensor_numbers.dimm, a[0]),
                 .b12 = Toward(a[3], 0x6F),
                 .b13 = a[1],
                 .b14 = a[0],
                 .b15 = a[2]});
}

Outcome MemPredictive(const Args &a, const World &world) {
    if (a[1] > 1) {
        return kRefused;
    }
    if (world.profile == 1) {
        return kNothing;
    }
    return Sent({.b10 = 0x0C, .b12 = Toward(a[1], 0x04), .b13 = 0x01, .b14 = a[0]});
}

Outcome PowerDrop(const Args &a, const World &world) {
    if (world.profile != 3 || a[3] > 1) {
        return kRefused;
    }
    return Sent({.b8 = 3,
                 .b10 = 0x08,
                 .b11 = 0x77,
                 .b12 = Toward(a[3], 0x6F),
                 .b13 = 0x01,
                 .b14 = a[1] % 16 * 16 + a[0] % 16,
                 .b15 = a[2]});
}

Outcome I2cStatus(const Args &a, const World &) {
    if (a[1] > 1) {
        return kRefused;
    }
    return Sent({.b8 = a[3] % 4,
                 .b10 = 0x21,
                 .b11 = a[2],
                 .b12 = Toward(a[1], 0x6F),
                 .b13 = 0xB8,
                 .b14 = 0x7B,
                 .b15 = a[0]});
}

Outcome Leakage(const Args &a, const World &world) {
    const bool gone = static_cast<uint8_t>(a[1]) == 1;
    if (gone && world.profile != 7) {
        return kRefused;
    }
    Fields f = {.b10 = 0x0A, .b11 = 0x5E, .b12 = gone ? 0x83u : 0x03u, .b13 = 0x01, .b14 = 0xFF};
    if (a[0] >= 1 && a[0] <= 3) {
        f.b13 = 0x81;
        f.b14 = a[2] % 16 * 16 + a[0];
    }
    return Sent(f);
}

// ---- beside the builders ---------------------------------------------------------------------------

uint8_t Low(uint32_t value) {
    return static_cast<uint8_t>(value);
}

struct Pair {
    const char *name;
    std::function<uint32_t(const Args &)> build;
    std::function<Outcome(const Args &, const World &)> model;
};

void PrintTo(const Pair &pair, std::ostream *out) {
    *out << pair.name;
}

const Pair kPairs[] = {
    {"addMemPredictiveFault", [](const Args &a) { return addMemPredictiveFault(a[0], a[1]); }, MemPredictive},
    {"addPOSTErrorSel", [](const Args &) { return addPOSTErrorSel(); },
     [](const Args &, const World &) { return Sent({.b10 = 0x0F, .b12 = 0x6F, .b13 = 0x80, .b14 = 0xFA}); }},
    {"addS0PowerButtonSel", [](const Args &) { return addS0PowerButtonSel(); },
     [](const Args &, const World &) {
         return Sent({.type = 0xCD, .b7 = 0xDD, .b8 = 0xB3, .b9 = 0, .b10 = 0xBA, .b11 = 0xCB, .b12 = 0x02});
     }},
    {"addGpuSlotErrorSel", [](const Args &a) { return addGpuSlotErrorSel(a[0]); },
     [](const Args &a, const World &) { return Sent({.b10 = 0x1B, .b12 = 0x6F, .b13 = 0x01, .b14 = a[0]}); }},
    {"addMinorCDUFaultSel", [](const Args &a) { return addMinorCDUFaultSel(a[0], a[1]); },
     [](const Args &a, const World &) {
         return Sent({.type = 0xC0,
                      .b7 = 0xE4,
                      .b10 = 0x15,
                      .b12 = Toward(a[1], 0x07),
                      .b13 = 0xA1,
                      .b14 = a[0],
                      .b15 = 0xFF});
     }},
    {"addMajorCDUFaultSel", [](const Args &a) { return addMajorCDUFaultSel(a[0], a[1], a[2]); },
     [](const Args &a, const World &) {
         return Sent({.type = 0xC0,
                      .b7 = 0xE4,
                      .b10 = 0x15,
                      .b12 = Toward(a[2], 0x07),
                      .b13 = 0xA2,
                      .b14 = a[0],
                      .b15 = a[1]});
     }},
    {"addNETPortSEL",
     [](const Args &a) {
         return addNETPortSEL(a[0], a[1], a[2], a[3], Low(a[4]), Low(a[5]), Low(a[6]), Low(a[7]), Low(a[8]));
     },
     NetPort},
    {"addControllerSEL", [](const Args &a) { return addControllerSEL(a[0], a[1], a[2], a[3]); }, Controller},
    {"addDiskSEL", [](const Args &a) { return addDiskSEL(a[0], a[1], a[2], a[3]); }, Disk},
    {"addLDSEL", [](const Args &a) { return addLDSEL(a[0], a[1], a[2], a[3], a[4]); }, LogicalDisk},
    {"addPEMSEL", [](const Args &a) { return addPEMSEL(a[0], a[1], a[2]); }, PowerModule},
    {"addUsageSEL", [](const Args &a) { return addUsageSEL(a[0], a[1], a[2], a[3], a[4]); }, Usage},
    {"addSELAlarm", [](const Args &a) { return addSELAlarm(a[0], a[1], a[2]); }, Alarm},
    {"addCPUError", [](const Args &a) { return addCPUError(a[0], a[1], a[2], a[3], a[4]); }, CpuError},
    {"addMemError", [](const Args &a) { return addMemError(a[0], a[1], a[2], a[3]); }, MemError},
    {"addI2CStatusSel", [](const Args &a) { return addI2CStatusSel(a[0], a[1], a[2], a[3]); }, I2cStatus},
    {"addTrapSELAlarm", [](const Args &a) { return addTrapSELAlarm(a[0], a[1], a[2], a[3]); },
     [](const Args &a, const World &) {
         return Sent({.type = 0xC0,
                      .b7 = a[0],
                      .b8 = a[2],
                      .b10 = 0x24,
                      .b12 = Toward(a[3], 0x6F),
                      .b13 = 0x03,
                      .b14 = a[1]});
     }},
    {"addPowerDropSEL", [](const Args &a) { return addPowerDropSEL(a[0], a[1], a[2], a[3]); }, PowerDrop},
    {"addLeakageSel",
     [](const Args &a) {
         const LeakageInfo info = {Low(a[1]), Low(a[2])};
         return addLeakageSel(a[0], &info);
     },
     Leakage},
};

// Small numbers, numbers that rules name, neighbours of byte and word limits, anything.
uint32_t Pick(std::mt19937 &random) {
    static constexpr uint32_t kNamed[] = {3, 11, 14, 26, 29, 30, 32, 55, 130, 131, 144, 255, 256, 300};
    switch (random() % 8) {
    case 0:
    case 1:
        return random() % 3;
    case 2:
    case 3:
        return random() % 40;
    case 4:
        return kNamed[random() % std::size(kNamed)];
    case 5:
        return random() % 256;
    case 6:
        return 256 + random() % 40;
    default:
        return static_cast<uint32_t>(random());
    }
}

class BesideTheModel : public Sel, public testing::WithParamInterface<Pair> {};

TEST_P(BesideTheModel, ResultAndBytesAgree) {
    constexpr uint32_t kProfiles[] = {0, 1, 3, 7};
    constexpr int kRuns = 4000;
    std::mt19937 random(20240607);
    size_t sent = 0;
    for (int run = 0; run < kRuns; ++run) {
        const World world = {kProfiles[random() % 4], run >= kRuns * 9 / 10};
        if (world.marker) {
            sim::WriteFile(kMarker, {});
        }
        Profile(world.profile);
        Args args;
        for (uint32_t &arg : args) {
            arg = Pick(random);
        }
        const Outcome expected = GetParam().model(args, world);
        const uint32_t result = GetParam().build(args);
        const Lines records = Records();
        ASSERT_LE(records.size(), 1u);
        const Outcome got = {result, records.empty() ? "" : records[0]};
        ASSERT_EQ(got, expected) << testing::PrintToString(args) << " profile " << world.profile << " marker "
                                 << world.marker;
        sent += records.size();
        Forget();
    }
    EXPECT_GT(sent, 100u);
}

INSTANTIATE_TEST_SUITE_P(Sel, BesideTheModel, testing::ValuesIn(kPairs),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace
