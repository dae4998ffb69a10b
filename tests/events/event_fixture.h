// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the tests of the event builders share: a board whose sensor directory answers everything, the bytes that
// arrived in the event log, and the lines that were written, statistics included.
#ifndef OXA_TESTS_EVENTS_EVENT_FIXTURE_H
#define OXA_TESTS_EVENTS_EVENT_FIXTURE_H

#include <array>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "oxa/events.h"
#include "simulator/simulator.h"
#include "support/bytes.h"
#include "support/log_lines.h"

namespace seltest {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using Lines = tests::LineList;

constexpr char kSession[] = "LIBIPMI_Create_IPMI_Local_Session";
constexpr char kAdd[] = "IPMICMD_AddSELEntry";
constexpr char kClose[] = "LIBIPMI_CloseSession";
constexpr char kMarker[] = "/var/test_disk_fault_predict";
constexpr char kUnit[] = "oxa_specific_sel.c";

using tests::Hex;

// ---- lines as they are expected ------------------------------------------------------------------

inline std::string Line(const std::string &level, int module, const std::string &function,
                        const std::string &text) {
    return level + " " + std::to_string(module) + " " + function + ": " + text;
}
inline Lines Info(const std::string &function, const std::string &text) {
    return {Line("info", 52, function, text)};
}
inline Lines Error(const std::string &function, const std::string &text, int module = 52) {
    return {"stat", Line("error", module, function, text)};
}
inline Lines Dump(const std::vector<uint8_t> &record) {
    Lines lines =
        Error("ipmi_add_sel_entry", "Error when send add sel entry cmd to Local BMC, Sel Data(HEX):");
    for (const uint8_t byte : record) {
        char text[8];
        std::snprintf(text, sizeof(text), "0x%x ", byte);
        lines.push_back(Line("warn", 52, "ipmi_add_sel_entry", text));
    }
    return lines;
}
inline Lines NoSession() {
    return Error("ipmi_add_sel_entry", "Failed to create IPMI Session !!!");
}
inline Lines operator+(Lines left, const Lines &right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

// ---- what happened ---------------------------------------------------------------------------------

inline Lines WrittenLines() {
    return tests::LinesOf({sim::Kind::kLog, sim::Kind::kStat}, kUnit);
}
inline Lines Calls() {
    Lines calls;
    for (const sim::Event &event : sim::Trace()) {
        if (event.kind == sim::Kind::kCall) {
            calls.push_back(event.function);
        }
    }
    return calls;
}
inline Lines CallArguments(const std::string &function) {
    Lines arguments;
    for (const sim::Event &event : sim::Trace()) {
        if (event.kind == sim::Kind::kCall && event.function == function) {
            arguments.push_back(event.args);
        }
    }
    return arguments;
}
inline Lines Records() {
    Lines records;
    for (const std::vector<uint8_t> &record : sim::EventLog()) {
        records.push_back(Hex(record));
    }
    return records;
}

inline sim::Board BoardWithDirectory() {
    sim::Board board;
    for (uint32_t slot = 0; slot < 256; ++slot) {
        const std::vector<uint8_t> key = {0x04, 0x0D, 0x6F, static_cast<uint8_t>(slot), 0x00};
        board.sensor_numbers.by_key[Hex(key)] = 0x40 + slot;
    }
    board.sensor_numbers.by_key["1E 0A 03 00 00"] = 0x5E;
    board.sensor_numbers.cpu = {{0, 0x11}, {1, 0x12}, {300, 0x1234}};
    board.sensor_numbers.dimm = {{0, 0x21}, {7, 0x27}, {300, 0x2345}};
    board.sensor_numbers.power_module = {{1, 0x31}, {2, 0x80000032u}};
    board.sensor_numbers.power_fault = 0x77;
    board.inlet_temperature = 31;
    return board;
}

class Sel : public testing::Test {
protected:
    Sel() {
        std::remove(sim::RealPath(kMarker).c_str()); // of a test before, where one process runs several
        sim::Start(BoardWithDirectory());
    }
    void TearDown() override {
        EXPECT_THAT(sim::Violations(), IsEmpty());
    }
    static void Profile(uint32_t custom_id) {
        sim::CurrentBoard().custom_id = custom_id;
    }
    static void Forget() {
        sim::ClearTrace();
        sim::EventLog().clear();
    }
    static void FailAlways(const std::string &call) {
        sim::AddFault({.call = call});
    }

    // The call succeeds with one session and one record, these 16 bytes.
    static void ExpectSent(uint32_t result, const std::string &bytes) {
        EXPECT_EQ(result, 0u);
        EXPECT_THAT(Records(), ElementsAre(bytes));
        EXPECT_EQ(sim::CountCalls(kSession), 1u);
        EXPECT_EQ(sim::CountCalls(kAdd), 1u);
        EXPECT_EQ(sim::CountCalls(kClose), 1u);
        Forget();
    }
    static void ExpectNothingSent(uint32_t result, uint32_t wanted) {
        EXPECT_EQ(result, wanted);
        EXPECT_THAT(Records(), IsEmpty());
        EXPECT_EQ(sim::CountCalls(kSession), 0u);
        EXPECT_EQ(sim::CountCalls(kAdd), 0u);
    }
    static void ExpectLines(const Lines &lines) {
        EXPECT_THAT(WrittenLines(), ElementsAreArray(lines));
    }
};

// ---- every builder ---------------------------------------------------------------------------------

// A builder with arguments that make it send on the board above in its profile.
struct Sender {
    std::string name;
    uint32_t custom_id;
    std::function<uint32_t()> call;
    Lines before; // lines until it sends
    std::vector<uint8_t> record;
    std::string failure;
};

inline void PrintTo(const Sender &sender, std::ostream *out) {
    *out << sender.name;
}

inline const std::vector<Sender> &Senders() {
    static const LeakageInfo leak = {0, 5};
    static const std::vector<Sender> senders = {
        {"addMemPredictiveFault",
         0,
         [] { return addMemPredictiveFault(3, 1); },
         Info("addMemPredictiveFault", "addMemPredictiveFault dimmNum:3, assertFlag:1"),
         {0, 0, 0x02, 0, 0, 0, 0, 0x20, 0, 0x04, 0x0C, 0, 0x84, 0x01, 0x03, 0},
         "ipmi_add_sel_entry fail"},
        {"addPOSTErrorSel",
         0,
         [] { return addPOSTErrorSel(); },
         Info("addPOSTErrorSel", "addPOSTErrorSel"),
         {0, 0, 0x02, 0, 0, 0, 0, 0x20, 0, 0x04, 0x0F, 0, 0x6F, 0x80, 0xFA, 0},
         "ipmi_add_sel_entry fail"},
        {"addS0PowerButtonSel",
         0,
         [] { return addS0PowerButtonSel(); },
         Info("addS0PowerButtonSel", "addS0PowerButtonSel"),
         {0, 0, 0xCD, 0, 0, 0, 0, 0xDD, 0xB3, 0, 0xBA, 0xCB, 0x02, 0, 0, 0},
         "ipmi_add_sel_entry fail"},
        {"addGpuSlotErrorSel",
         0,
         [] { return addGpuSlotErrorSel(9); },
         Info("addGpuSlotErrorSel", "addGpuSlotErrorSel slotNum:9"),
         {0, 0, 0x02, 0, 0, 0, 0, 0x20, 0, 0x04, 0x1B, 0, 0x6F, 0x01, 0x09, 0},
         "ipmi_add_sel_entry fail"},
        {"addMinorCDUFaultSel",
         0,
         [] { return addMinorCDUFaultSel(6, 1); },
         Info("addMinorCDUFaultSel", "addMinorCDUFaultSel ucReason[6], ucAssertFlag[1]."),
         {0, 0, 0xC0, 0, 0, 0, 0, 0xE4, 0, 0x04, 0x15, 0, 0x87, 0xA1, 0x06, 0xFF},
         "ipmi_add_sel_entry failed"},
        {"addMajorCDUFaultSel",
         0,
         [] { return addMajorCDUFaultSel(6, 2, 0); },
         Info("addMajorCDUFaultSel", "addMajorCDUFaultSel Reason[6], SlotNum[2], AssertFlag[0]."),
         {0, 0, 0xC0, 0, 0, 0, 0, 0xE4, 0, 0x04, 0x15, 0, 0x07, 0xA2, 0x06, 0x02},
         "ipmi_add_sel_entry failed"},
        {"addNETPortSEL",
         0,
         [] { return addNETPortSEL(0x2C, 4, 7, 2, 3, 5, 6, 40, 1); },
         Info("addNETPortSEL", "addNETPortSEL EntityID[44], SlotNum[4], NetPortSilkId[7], DeviceIndex[2], "
                               "Port[3], NetPortSubinterfacetype[5], NetPortSubindex[6], EventNum[40], "
                               "EventDir[1]."),
         {0, 0, 0xC0, 0, 0, 0, 0, 0x2C, 0x56, 0x23, 0x27, 0, 0xEF, 0, 0x04, 0x07},
         "addNETPortSEL ipmi_add_sel_entry failed"},
        {"addControllerSEL",
         0,
         [] { return addControllerSEL(0x0B, 2, 18, 1); },
         Info("addControllerSEL", "addControllerSEL EntityID[11], Controller[2], EventNum[18], EventDir[1]."),
         {0, 0, 0xC0, 0, 0, 0, 0, 0x0B, 0x12, 0x04, 0x01, 0, 0x87, 0xA2, 0x02, 0},
         "addControllerSEL ipmi_add_sel_entry failed"},
        {"addDiskSEL",
         0,
         [] { return addDiskSEL(0x1A, 3, 19, 1); },
         Info("addDiskSEL", "addDiskSEL EntityID[26], SlotNum[3], EventNum[19], EventDir[1].") +
             Error("addDiskSEL", "dwSlotNum: 3 ucEventNum: 0x13", 67),
         {0, 0, 0xE0, 0, 0, 0, 3, 0x04, 0, 0x04, 0x0D, 0x43, 0xEF, 0xA1, 0, 0x13},
         "addDiskSEL ipmi_add_sel_entry failed"},
        {"addLDSEL",
         0,
         [] { return addLDSEL(0x0B, 129, 2, 5, 1); },
         Info("addLDSEL", "addLDSEL EntityID[11], EventNum[129], ctrlIndex[2], targetId[5], AssertFlag[1]."),
         {0, 0, 0xC0, 0, 0, 0, 0, 0x0B, 0x81, 0x04, 0x0D, 0, 0x8B, 0xA6, 0x02, 0x05},
         "addLDSEL ipmi_add_sel_entry failed"},
        {"addPEMSEL",
         0,
         [] { return addPEMSEL(1, 17, 1); },
         Info("addPEMSEL", "addPEMSEL uclocation:1, ucEventNum:17, ucEventDir:1") +
             Info("addPEMSEL", "addPEMSEL dwSensorNum:49"),
         {0, 0, 0xC0, 0, 0, 0, 0, 0x0A, 0, 0x04, 0x08, 0x31, 0xEF, 0xA1, 0x01, 0x11},
         "ipmi_add_sel_entry failed"},
        {"addUsageSEL",
         0,
         [] { return addUsageSEL(26, 91, 80, 4, 1); },
         Info("addUsageSEL", "addUsageSEL ucEntityID:26, ucUsage:91, ucNonCritical:80, ucIndex:4, "
                             "ucEventDir:1"),
         {0, 0, 0xC0, 0, 0, 0, 0, 0x1A, 0x5B, 0x04, 0x0D, 0, 0x85, 0xA1, 0x04, 0x50},
         "ipmi_add_sel_entry failed"},
        {"addSELAlarm",
         0,
         [] { return addSELAlarm(30, 14, 1); },
         Info("addSELAlarm", "addSELAlarm EntityID[30], Reason[14], EventDir[1]."),
         {0, 0, 0xC0, 0, 0, 0, 0, 0x1E, 0x0E, 0x04, 0x21, 0, 0xEF, 0xA4, 0x78, 0},
         "ipmi_add_sel_entry failed"},
        {"addCPUError",
         0,
         [] { return addCPUError(1, 1, 4, 11, 1); },
         Info("addCPUError", "addCPUError ucCPUNum:1, ucOffset:11, ucBankNum:4,assertFlag:1") +
             Info("addCPUError", "ucCPUNum:1, dwSensorNum:18"),
         {0, 0, 0x02, 0, 0, 0, 0, 0x20, 0, 0x04, 0x07, 0x12, 0xEF, 0x0B, 0x01, 0x84},
         "ipmi_add_sel_entry fail"},
        {"addMemError",
         0,
         [] { return addMemError(7, 1, 9, 0); },
         Info("addMemError", "addMemrror dimmNum:7, ucOffset:1, ucErrorNum:9,assertFlag:0") +
             Info("addMemError", "dimmNum:7, dwSensorNum:39"),
         {0, 0, 0x02, 0, 0, 0, 0, 0x20, 0, 0x04, 0x0C, 0x27, 0x6F, 0x01, 0x07, 0x09},
         "ipmi_add_sel_entry fail"},
        {"addI2CStatusSel",
         0,
         [] { return addI2CStatusSel(0x33, 1, 0x44, 6); },
         {},
         {0, 0, 0x02, 0, 0, 0, 0, 0x20, 0x02, 0x04, 0x21, 0x44, 0xEF, 0xB8, 0x7B, 0x33},
         "ipmi_add_sel_entry fail"},
        {"addTrapSELAlarm",
         0,
         [] { return addTrapSELAlarm(0x2D, 8, 66, 1); },
         Info("addTrapSELAlarm", "addTrapSELAlarm EntityID[45], Reason[8], EventDir[66]."),
         {0, 0, 0xC0, 0, 0, 0, 0, 0x2D, 0x42, 0x04, 0x24, 0, 0xEF, 0x03, 0x08, 0},
         "ipmi_add_sel_entry failed"},
        {"addPowerDropSEL",
         3,
         [] { return addPowerDropSEL(2, 1, 0x81, 1); },
         Info("addPowerDropSEL", "addPowerDropSEL ucDropType:2, ucCpuIndex:1, ucReasonMask:129,ucEventDir:1"),
         {0, 0, 0x02, 0, 0, 0, 0, 0x20, 0x03, 0x04, 0x08, 0x77, 0xEF, 0x01, 0x12, 0x81},
         "ipmi_add_sel_entry fail"},
        {"addLeakageSel",
         0,
         [] { return addLeakageSel(2, &leak); },
         {},
         {0, 0, 0x02, 0, 0, 0, 0, 0x20, 0, 0x04, 0x0A, 0x5E, 0x03, 0x81, 0x52, 0},
         "ipmi_add_sel_entry fail"},
    };
    return senders;
}

} // namespace seltest
#endif
