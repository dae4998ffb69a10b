// SPDX-License-Identifier: GPL-3.0-or-later
//
// What a simulated board is made of.  Every field has the value that an absent key of a board file stands
// for; README of boards/ documents the keys.  A Board is a plain value: tests fill one by hand, the workbench
// reads one from TOML (board_file.h).
#ifndef OXA_SIMULATOR_BOARD_H
#define OXA_SIMULATOR_BOARD_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace sim {

struct BusClient {
    uint8_t bus = 0;
    uint8_t address = 0;
};

struct CpuVoltage { // one voltage domain, 1..4
    uint8_t m = 1, b = 0, exponents = 0;
    uint8_t mask = 0;
    uint8_t unr = 0, uc = 0, unc = 0, lnr = 0, lc = 0, lnc = 0;
};

struct Cpus {
    bool service = true; // false: HalCpuInst() returns null
    uint8_t count = 0;
    uint8_t silk_start = 0;
    uint8_t type = 0;                        // CPU_TYPE_...
    uint8_t reduce_flag = 0;                 // 0: sensors for every socket
    std::vector<bool> online;                // per 0-based CPU; CPUs beyond its end are online
    std::map<uint8_t, BusClient> vr_clients; // per 0-based CPU; absent: bus = CPU number, address 0x60
    std::map<uint8_t, CpuVoltage> voltages;  // per voltage index; absent: a default CpuVoltage
};

struct Dimms {
    uint8_t count = 0;
    std::vector<std::string> names; // per DIMM; absent: DefaultDimmName
    uint32_t power_accuracy = 1;
};

std::string ChannelLetters(uint32_t channel); // 0 = "A", 25 = "Z", 26 = "AA"
// Channel letter and slot in the channel, two slots to a channel: "A0", "A1", "B0", ... "Z1", "AA0", ...
std::string DefaultDimmName(uint32_t dimm);
std::string DimmName(const Dimms &dimms, uint32_t dimm);

struct Psus {
    uint8_t count = 0;
    uint8_t group_count = 0;
    uint8_t count_per_group = 0;
    uint8_t power_manage = 0;
    bool alarm_config = true; // LoadPsuAlarmCfg() succeeds
};

struct Fans {
    bool service = true; // false: HalFanInst() returns null
    uint8_t count = 0;
    std::vector<uint8_t> silk; // per 0-based fan; absent: index + 1
    uint32_t power_accuracy = 1;
};

struct Backplane {
    uint8_t start_slot = 0;
    uint8_t disk_count = 0;
    std::string location = "Front"; // 32 characters fill the field, which has no NUL then
};

struct Disks {
    bool service = true;                    // false: HalHddBackpanelInst() returns null
    bool enabled = true;                    // FruSdrInitPathChoice() returns 1
    std::optional<uint32_t> reported_count; // count word of the list when it is not backplanes.size()
    std::optional<uint16_t> written_bytes;  // of the list; what is behind stays as the caller left it
    std::vector<Backplane> backplanes;
    std::vector<uint8_t> nvme_slots;
    std::map<uint8_t, uint8_t> conversion; // oxa_CustomSlotConversion; absent: unchanged
    std::map<uint8_t, uint8_t> silk;       // slots whose printed number differs (Kestrin)
    uint32_t power_accuracy = 1;
};

struct PcieSlot {
    uint8_t slot = 0;     // what Hal_GetPcieSlotByIndex gives
    uint8_t location = 0; // 1 = front
    std::string silk;     // e.g. "F-Slot2"
    bool present = true;  // false: this index answers -1
    bool silk_nul = true; // false: a text that does not fit is cut without a NUL
};

struct Pcie {
    std::optional<uint8_t> count;   // Hal_GetStandPcieSlotCounts when it is not slots.size()
    std::vector<PcieSlot> slots;    // index 1 first
    std::optional<uint8_t> s5_slot; // GetBlueFieldS5PcieSlotNum; absent: the call fails
};

struct Ocp {
    uint8_t count = 0;
    uint32_t present = 0;                // bit n = card n
    std::map<uint8_t, uint8_t> restored; // RestoreOcpSlot; absent: the index
};

struct Card { // switch-board cards 1 and 2
    bool online = false;
    uint16_t board_id = 0;
};

struct SwitchBoard {
    bool supported = false; // GetSwitchBoardSupportFlag
    std::map<uint8_t, Card> cards;
    std::map<uint8_t, BusClient> clients; // per instance; absent: bus = instance, address 0x40
    uint8_t chip_temp_count = 0;          // Hal_GetSwiTempSensorCnt
    uint8_t sensors_valid = 0;            // MW_GetSWSensorVail
};

struct Gpu {
    uint8_t slot = 0;
    uint32_t power_w = 0xFFFFFFFFu; // unknown
    uint16_t vendor = 0;
};

struct Support {
    bool all = true;                     // the flag of sensors that are not listed
    std::map<uint32_t, uint8_t> sensors; // HAL_GetSensorNotSupportFlagBySensor, by SENSOR_... number
    std::map<uint32_t, uint8_t> kinds;   // HAL_GetSensorSupportFlagBySensor, by kind; absent: 1
};

struct ThresholdEntry {
    std::string name;
    uint8_t unr = 0, uc = 0, unc = 0, lnr = 0, lc = 0, lnc = 0;
    uint16_t mask = 0;
};

struct SensorNumbers { // the middleware's sensor directory; absent keys make the lookup fail
    std::map<std::string, uint32_t> by_key; // "04 0D 6F 03 00" (upper case hex) -> number
    std::map<uint32_t, uint32_t> cpu, dimm, power_module;
    std::optional<uint32_t> power_fault;
};

struct Board {
    std::string name; // of the board file; only shown
    uint16_t board_id = 0;
    uint32_t inner_product_id = 0;
    uint32_t custom_id = 0;
    uint8_t liquid_cooling_mode = 0; // 0 none, 1 leak sensor, 2 no fans
    uint8_t cdu_enable = 0;          // first byte of the CDU configuration
    bool sensor_simplification = false;
    uint8_t inlet_temperature = 25;
    BusClient inlet_client{1, 0x48};
    std::map<uint32_t, uint8_t> power_registers; // epldio; absent registers read 0
    Cpus cpus;
    Dimms dimms;
    Psus psus;
    Fans fans;
    Disks disks;
    Pcie pcie;
    Ocp ocp;
    SwitchBoard switch_board;
    std::vector<Gpu> gpus;
    Support support;
    std::vector<ThresholdEntry> thresholds;
    SensorNumbers sensor_numbers;
    std::map<std::string, std::vector<uint8_t>> files; // library path -> content present at start
    uint32_t sel_limit = 1000;
    uint32_t sdr_limit = 1000;
};

} // namespace sim
#endif
