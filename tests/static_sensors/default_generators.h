// SPDX-License-Identifier: GPL-3.0-or-later
//
// Every exported generator of the Default set behind one shape, with the index that the tests call it with.
#ifndef OXA_TESTS_STATIC_SENSORS_DEFAULT_GENERATORS_H
#define OXA_TESTS_STATIC_SENSORS_DEFAULT_GENERATORS_H

#include <functional>
#include <vector>

#include "static_sensors/default_support.h"

namespace default_set {

struct Generator {
    const char *name;
    const char *sensor; // the record that it writes on GeneratorBoard()
    std::function<uint8_t(uint8_t *, DevTabEntry *)> call;
};

#define PLAIN(function, sensor)                                                                              \
    Generator {                                                                                              \
#function, sensor, [](uint8_t * slot, DevTabEntry * entry) { return function(slot, entry); }         \
    }
#define INDEXED(function, index, sensor)                                                                     \
    Generator {                                                                                              \
#function, sensor, [](uint8_t * slot, DevTabEntry * entry) { return function(index, slot, entry); }  \
    }

inline const std::vector<Generator> &Generators() {
    static const std::vector<Generator> kAll = {
        PLAIN(Default_GenFanRedundancySDR, "FAN_REDUNDANCY"),
        PLAIN(Default_GenCPUPowerSDR, "CPU_POWER"),
        PLAIN(Default_GenMEMPowerSDR, "MEM_POWER"),
        PLAIN(Default_GenHDDPowerSDR, "HDD_POWER"),
        PLAIN(Default_GenBoardPowerSDR, "POWER_WATTS"),
        PLAIN(Default_GenFANPowerSDR, "FAN_POWER"),
        PLAIN(Default_GenPCHTempSDR, "PCH_TEMP"),
        PLAIN(Default_GenPowerButtonSDR, "POWER_BUTTON"),
        PLAIN(Default_GenEventLogSDR, "EVENT_LOG"),
        PLAIN(Default_GenOSBootSDR, "OS_BOOT"),
        PLAIN(Default_GenACPIStatusSDR, "ACPI_STATUS"),
        PLAIN(Default_GenSysRestartSDR, "SYS_RESTART"),
        PLAIN(Default_GenUIDButtonSDR, "UID_BUTTON"),
        PLAIN(Default_GenBMCBootUpSDR, "BMC_BOOT_UP"),
        PLAIN(Default_GenOSStopSDR, "OS_STOP"),
        PLAIN(Default_GenIntrusionSDR, "INTRUSION"),
        PLAIN(Default_GenLeakageSDR, "LEAKAGE"),
        PLAIN(Default_GenINPUTTEMPSDR, "INPUT_TEMP"),
        PLAIN(Default_GenENVHUMISDR, "ENV_HUMI"),
        PLAIN(Default_GenMESDR, "ME"),
        PLAIN(Default_GenOUTPUTTEMPSDR, "OUTPUT_TEMP"),
        PLAIN(Default_GenVCC12VSDR, "VCC12V"),
        PLAIN(Default_GenPDBTEMPSDR, "PDB_TEMP"),
        PLAIN(Default_GenMiddlePDBTEMPSDR, "MIDDLEPDB_TEMP"),
        PLAIN(Default_GenNTPSyncFailSDR, "NTP_SYNC_FAIL"),
        PLAIN(Default_GenPowerFaultSDR, "POWER_FAULT"),
        INDEXED(Default_GenSwitchBoardVoltsSDR, 2, "SW_VOLT_02"),
        INDEXED(Default_GenSwitchBoardCurrentSDR, 2, "SW_CURRENT_02"),
        INDEXED(Default_GenSwitchBoardTempSDR, 2, "SW_TEMP_02"),
        INDEXED(Default_GenCPUProchotSDR, 1, "CPU_PROCHOT"),
        INDEXED(Default_GenCPUCOREVoltageSDR, 1, "CPU_VOLTS_01"),
        INDEXED(Default_GenInputVoltsSDR, 1, "INPUT_VOLTS_01"),
        INDEXED(Default_GenOutputVoltsSDR, 1, "OUTPUT_VOLTS_01"),
        INDEXED(Default_GenPSUStatusSDR, 1, "PSU_STATUS_01"),
        INDEXED(Default_GenPSUTempSDR, 1, "PSU_TEMP_01"),
        INDEXED(Default_GenPSUPInSDR, 1, "PSU_PIN_01"),
        INDEXED(Default_GenPSUPOutSDR, 1, "PSU_POUT_01"),
        INDEXED(Default_GenPSURedundantSDR, 0, "PSU_REDUNDANT"),
        INDEXED(Default_GenPCIeStatusSDR, 5, "PCIE_STATUS_05"),
        INDEXED(Default_GenHDDStatusSDR, 3, "HDD_STATUS_03"),
        INDEXED(Default_GenCPU0D0N2SDR, 0, "CPU0_D0_N2"),
        INDEXED(Default_GenCPU0D1N2SDR, 0, "CPU0_D1_N2"),
        INDEXED(Default_GenCPU1D0N2SDR, 1, "CPU1_D0_N2"),
        INDEXED(Default_GenCPU1D1N2SDR, 1, "CPU1_D1_N2"),
        INDEXED(Default_GenSwitchBoardInOROutletTempSDR, 0, "SW_INPUT_TEMP_01"),
    };
    return kAll;
}

#undef PLAIN
#undef INDEXED

inline const Generator &FindGenerator(const std::string &name) {
    for (const Generator &generator : Generators())
        if (name == generator.name)
            return generator;
    std::abort();
}

// A board on which every generator writes its record.
inline sim::Board GeneratorBoard() {
    sim::Board board = BaseBoard();
    board.liquid_cooling_mode = 1;
    return board;
}

// One call of a generator over fresh memory.
struct Built {
    uint8_t result = 0;
    Record record;
    bool Untouched() const {
        return record.sdr == Bytes(64, kUntouched) && record.entry == Bytes(32, kUntouched);
    }
};
inline Built Build(const std::function<uint8_t(uint8_t *, DevTabEntry *)> &call) {
    Built built;
    built.record = {Bytes(64, kUntouched), Bytes(32, kUntouched)};
    DevTabEntry entry;
    std::memcpy(&entry, built.record.entry.data(), 32);
    built.result = call(built.record.sdr.data(), &entry);
    std::memcpy(built.record.entry.data(), &entry, 32);
    return built;
}
inline Built Build(const Generator &generator) {
    return Build(generator.call);
}
template <class Function> Built BuildIndexed(Function function, uint8_t index) {
    return Build([=](uint8_t *slot, DevTabEntry *entry) { return function(index, slot, entry); });
}

} // namespace default_set

#endif
