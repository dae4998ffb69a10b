// SPDX-License-Identifier: GPL-3.0-or-later
//
// What a board answers to every platform call of a static pass, one table per call.
#ifndef OXA_BENCH_ANSWERS_H
#define OXA_BENCH_ANSWERS_H

#include <cstdint>
#include <type_traits>

#include "oxa/platform.h"
#include "oxa/records.h"

namespace bench {

inline constexpr uint32_t kIndexes = 256; // an index or slot is a byte

template <class T> struct Answer {
    int32_t result;
    T value;
};
template <class T> using Table = Answer<T>[kIndexes];

struct DimmName {
    char text[SENSOR_NAME_SIZE];
};

struct Answers {
    // board and cards
    Answer<uint16_t> board_id;
    uint8_t switch_board;
    uint8_t card_online[kIndexes];
    uint16_t card_board_id[kIndexes];
    uint8_t liquid_cooling;
    int32_t disk_group;
    uint8_t converted_slot[kIndexes];
    // bus clients
    Table<HalI2cClient> cpu_vr_client;
    Answer<HalI2cClient> inlet_client;
    Table<HalI2cClient> switch_client;
    // processors
    Answer<uint8_t> cpu_count, cpu_silk_start, cpu_type;
    Table<int32_t> cpu_online;
    Table<HalCpuVoltSdrInfo> cpu_voltage;
    uint8_t has_cpu_service;
    Answer<uint8_t> cpu_reduce_flag;
    // memory
    Answer<uint8_t> dimm_count;
    Table<HalDimmDevInfo> dimm;
    Table<DimmName> dimm_name;
    Answer<uint32_t> dimm_accuracy;
    Answer<uint8_t> simplified;
    // power supplies, support flags
    Answer<uint8_t> psu_count, power_manage, psu_groups, psus_per_group;
    Table<uint8_t> sensor_support, kind_support;
    // fans
    uint8_t has_fan_service;
    Answer<uint8_t> fan_count;
    Table<uint8_t> fan_silk;
    Answer<uint32_t> fan_accuracy;
    // disks
    uint8_t has_disk_service;
    Answer<HalHddBackpanelList> backplanes;
    Table<uint8_t> nvme;
    uint8_t silk_differs[kIndexes];
    Table<uint8_t> disk_silk;
    Answer<uint32_t> disk_accuracy;
    // slots and switch chips
    uint8_t pcie_count;
    Table<uint8_t> pcie_slot;
    uint8_t ocp_count;
    uint32_t ocp_present;
    uint8_t restored_ocp[kIndexes];
    uint8_t switch_temps;
    // middleware, IPMI service, power management
    Answer<uint32_t> product_id;
    Answer<uint8_t> switch_sensors_valid;
    int32_t module_count_set;
    Answer<IpmiCduManageConfig> cdu;
    Table<uint8_t> power_register;
    int32_t psu_alarms_loaded;
};
static_assert(std::is_trivially_copyable_v<Answers>);

} // namespace bench
#endif
