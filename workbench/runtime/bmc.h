// SPDX-License-Identifier: GPL-3.0-or-later
//
// What a BMC holds, read back over RMCP+ with libfreeipmi.
#ifndef OXA_WORKBENCH_RUNTIME_BMC_H
#define OXA_WORKBENCH_RUNTIME_BMC_H

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "sets/static_set.h"
#include "simulator/bmc_session_freeipmi.h"
#include "simulator/simulator.h"

namespace workbench {

struct BmcEvent {
    uint16_t id = 0;
    std::vector<uint8_t> bytes; // 16
};

// In the order of the BMC; SetError when it does not answer or refuses.
std::vector<sim::RepositoryRecord> ReadRepositoryOf(const sim::Bmc &bmc);
std::vector<BmcEvent> ReadEventLogOf(const sim::Bmc &bmc);

using SensorPlace = std::pair<uint8_t, uint8_t>; // LUN and number
using RecordBytes = std::vector<uint8_t>;

// The thresholds in force of the full sensors among these records that have readable ones and belong to the BMC itself.
// A sensor for which the BMC does not tell them is left out.
std::map<SensorPlace, ActiveLimits> ReadThresholdsOf(const sim::Bmc &bmc,
                                                     const std::vector<RecordBytes> &records);

// A repository, as caches of it remember it, and the thresholds in force when they were asked for.
struct LiveRepository {
    uint8_t version = 0x51;               // of the SDR commands
    uint32_t added_at = 0, erased_at = 0; // the last time
    std::vector<sim::RepositoryRecord> records;
    std::map<SensorPlace, ActiveLimits> thresholds;
};
LiveRepository ReadLiveRepositoryOf(const sim::Bmc &bmc, bool thresholds);

} // namespace workbench
#endif
