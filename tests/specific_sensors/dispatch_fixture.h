// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the tests of the dispatch share: descriptions of sensors that a board has, the lines that the dispatch
// and the disk registry write, the calls of a session, and the record file.
#ifndef OXA_TESTS_SPECIFIC_SENSORS_DISPATCH_FIXTURE_H
#define OXA_TESTS_SPECIFIC_SENSORS_DISPATCH_FIXTURE_H

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "oxa/specific_sensors.h"
#include "oxa/store.h"
#include "oxa/thresholds.h"
#include "simulator/simulator.h"
#include "support/bytes.h"
#include "support/log_lines.h"
#include "support/record_differ.h"

namespace dispatch {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using tests::Bytes;
using Lines = tests::LineList;

inline constexpr char kUnit[] = "oxa_specific_sdr.c";
inline constexpr char kSession[] = "LIBIPMI_Create_IPMI_Local_Session";
inline constexpr char kClose[] = "LIBIPMI_CloseSession";
inline constexpr char kAdd[] = "IPMICMD_AddSDR";
inline constexpr char kDelete[] = "IPMICMD_DeleteSDR";
inline constexpr char kSend[] = "LIBIPMI_HL_SendMsgToFRU";
inline constexpr char kRecordFile[] = "/var/SpecificSDRRec";
inline constexpr char kFruIdFile[] = "/var/tmp/purchaseCardFruId";
inline constexpr char kStoreFile[] = "/var/tmp/extSDR.dat";
inline constexpr uint8_t kDisk = 0x3B;

// ---- descriptions ----------------------------------------------------------------------------------

inline SpecificSensorParam Description(uint32_t sensor_class, int device_type, int slot, int sub_type = 0) {
    SpecificSensorParam param = {};
    param.dwSensorDevType = sensor_class;
    param.ucDeviceType = static_cast<uint8_t>(device_type);
    param.SlotId = static_cast<uint8_t>(slot);
    param.SubDeviceType = static_cast<uint8_t>(sub_type);
    param.wBitmap = THRESH_BIT_UNC | THRESH_BIT_UC | THRESH_BIT_UNR;
    param.ucUNR = 100;
    param.ucUC = 95;
    param.ucUNC = 90;
    return param;
}
inline SpecificSensorParam GpuTemperature(int slot = 3) {
    return Description(0x0100, 2, slot);
}
inline SpecificSensorParam Psu(int index) {
    return Description(0xFF0A, index, index); // adding reads the one, deleting the other
}
// Sub type 1 is the only one that a disk's temperature comes with.
inline SpecificSensorParam DiskTemperature(int slot, int sub_type = 1) {
    return Description(0x0100, kDisk, slot, sub_type);
}
// Sub type: 1 NVMe, 2 SATA, 3 SAS; the low byte of the bitmap is the kind that the registry keeps.
inline SpecificSensorParam DiskStatus(int slot, int sub_type, int bitmap) {
    SpecificSensorParam param = Description(0x0D00, kDisk, slot, sub_type);
    param.wBitmap = static_cast<uint16_t>(bitmap);
    return param;
}
// A machine whose profile names disks: eight slots at the front, eight at the rear.
inline sim::Board DiskBoard() {
    sim::Board board;
    board.custom_id = CUSTOM_ID_FERRISK;
    board.disks.backplanes = {{0, 8, "Front"}, {8, 8, "Rear"}};
    return board;
}

// GPU_TEMP_03 of that description, byte by byte.
inline Bytes GpuTemperatureRecord() {
    return {0x00, 0x00, 0x51, 0x01, 0x36, 0x20, 0x00, 0x00, 0x0B, 0x63, 0x7F, 0x68, // up to capabilities
            0x01, 0x01, 0x80, 0x0A, 0x80, 0x7A, 0x38, 0x38,                         // type, masks
            0x80, 0x01, 0x00, 0x00, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,       // units, factors
            0x00, 0x00, 0x00, 0x7F, 0x80,                                           // nominal to minimum
            0x64, 0x5F, 0x5A, 0x00, 0x00, 0x00, 0x03, 0x03,                         // thresholds, hysteresis
            0x00, 0x03, 0x02, // index, slot, device type
            0xCB, 'G',  'P',  'U',  '_',  'T',  'E',  'M',  'P',  '_',  '0',  '3'};
}

// ---- lines -------------------------------------------------------------------------------------------

inline Lines LinesOf() {
    return tests::LogLines();
}
inline Lines UnitLines() {
    return tests::LogLinesFrom(kUnit);
}
inline Lines RegistryLines() { // of the functions that the dispatch calls
    Lines lines;
    for (const std::string &line : tests::LogLinesFrom("gen_specific_sensor_data.c")) {
        if (line.find(" isHasRegister: ") != std::string::npos ||
            line.find(" setHddRegisterInfo: ") != std::string::npos)
            lines.push_back(line);
    }
    return lines;
}

inline std::string HexNumber(uint32_t value) {
    char text[16];
    std::snprintf(text, sizeof(text), "0x%x", value);
    return text;
}
inline std::string Info(const std::string &text, const std::string &function = "SDR_AddSpecificSensor") {
    return "info 42 " + function + ": " + text;
}
inline std::string Error(const std::string &text, const std::string &function = "SDR_AddSpecificSensor") {
    return "error 42 " + function + ": " + text;
}
inline std::string Adding(uint32_t sensor_class) {
    return Info("Add SDR: sensor device type: " + HexNumber(sensor_class));
}
inline std::string NotInTable(uint32_t sensor_class) {
    return Info("Device type " + HexNumber(sensor_class) + " is not supported to add SDR.");
}
inline std::string Failed() {
    return Error("Add SDR: GenSDRHndlr ucRecLen = 0.");
}
inline std::string Declined() {
    return Info("Add SDR: GenSDRHndlr. This sensor is not support.");
}
inline std::string NoSession(uint32_t code, const std::string &function = "addSDRtoIPMI") {
    return Error("Failed to create IPMI Session wRet(" + HexNumber(code) + ") !!!\n", function);
}
inline std::string NotAdded(uint32_t code) {
    return Error("Failed to add SDR to IPMI: " + HexNumber(code) + "\n", "addSDRtoIPMI");
}
inline std::string AddFailed(uint32_t code) {
    return Error("Add SDR Record failed for retCode = " + HexNumber(code));
}

// ---- calls, records, files ---------------------------------------------------------------------------

// "LIBIPMI_CloseSession(session=1) = 0" of the session and the commands in it, in order.
inline Lines SessionCalls() {
    Lines calls;
    for (const sim::Event &event : sim::Trace()) {
        if (event.kind == sim::Kind::kCall && event.function.find("IPMI") != std::string::npos &&
            !event.function.starts_with("IPMI_"))
            calls.push_back(event.function + "(" + event.args + ") = " + std::to_string(event.result));
    }
    return calls;
}
inline std::string Opened(int result = 0) {
    return std::string(kSession) +
           "(user=\"\" password=\"\" privilege=4 arg5=0 arg6=2 arg7=10) = " + std::to_string(result);
}
inline std::string Added(int session, int length, int result = 0) {
    return std::string(kAdd) + "(session=" + std::to_string(session) + " len=" + std::to_string(length) +
           " arg=20) = " + std::to_string(result);
}
inline std::string Closed(int session, int result = 0) {
    return std::string(kClose) + "(session=" + std::to_string(session) + ") = " + std::to_string(result);
}

inline std::string NameOf(const Bytes &record) {
    if (record.size() < 5)
        return "(" + std::to_string(record.size()) + " bytes)";
    const size_t at = record[SDR_RECORD_TYPE] == 1   ? FULL_SDR_NAME
                      : record[SDR_RECORD_TYPE] == 2 ? COMPACT_SDR_NAME
                                                     : FRU_SDR_NAME;
    const size_t length = record.size() < at ? 0 : record[at - 1] & 0x3F;
    return record.size() != at + length ? "(cut)" : std::string(record.begin() + at, record.end());
}
inline Lines Names() {
    Lines names;
    for (const sim::RepositoryRecord &record : sim::Repository())
        names.push_back(NameOf(record.bytes));
    return names;
}

inline std::string Text(const std::string &library_path) {
    const Bytes bytes = sim::ReadFile(library_path);
    return {bytes.begin(), bytes.end()};
}
inline void Write(const std::string &library_path, const std::string &text) {
    sim::WriteFile(library_path, {text.begin(), text.end()});
}
inline std::string Section(const std::string &name, uint32_t record_id, uint32_t presence) {
    return "[" + name + "]\nsdrRecId=" + std::to_string(record_id) +
           "\nPresence=" + std::to_string(presence) + "\n";
}

inline HddRegisterEntry Entry(int slot, int hdd_type, int temperature, int status) {
    return {static_cast<uint8_t>(slot), static_cast<uint8_t>(hdd_type), static_cast<uint8_t>(temperature),
            static_cast<uint8_t>(status)};
}
inline std::vector<Bytes> Registered() {
    std::vector<Bytes> entries;
    for (size_t i = 0; i < std::min<size_t>(gRegisterInfo.registerSlotNum, HDD_REGISTER_MAX); ++i) {
        const HddRegisterEntry &entry = gRegisterInfo.tHddInfo[i];
        entries.push_back({entry.slotNum, entry.hddType, entry.tempFlag, entry.statusFlag});
    }
    return entries;
}

class Dispatch : public testing::Test {
protected:
    static void Use(const sim::Board &board) {
        sim::Start(board);
        std::error_code ignored;
        std::filesystem::remove_all(sim::RealPath("/var"), ignored);
    }
    void SetUp() override {
        gRegisterInfo = {}; // also when the tests share a process
        Use(sim::Board{});
    }
    void TearDown() override {
        EXPECT_THAT(sim::Violations(), IsEmpty());
    }
    static void Fail(const std::string &call, std::optional<int64_t> result = {}) {
        sim::AddFault({.call = call, .result = result});
    }
    static uint32_t Add(SpecificSensorParam param) {
        return SDR_AddSpecificSensor(&param);
    }
    static int32_t Delete(SpecificSensorParam param) {
        return SDR_DeleteSpecificSDR(&param);
    }
};

} // namespace dispatch
#endif
