// SPDX-License-Identifier: GPL-3.0-or-later
//
// What a BMC holds, read back over RMCP+ with libfreeipmi.
#ifndef OXA_WORKBENCH_RUNTIME_BMC_H
#define OXA_WORKBENCH_RUNTIME_BMC_H

#include <cstdint>
#include <vector>

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

} // namespace workbench
#endif
