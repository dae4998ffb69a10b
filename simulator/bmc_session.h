// SPDX-License-Identifier: GPL-3.0-or-later
//
// Where local IPMI sessions lead: into the simulator's own memory, or to a BMC that runs somewhere else.
#ifndef OXA_SIMULATOR_BMC_SESSION_H
#define OXA_SIMULATOR_BMC_SESSION_H

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace sim {

constexpr uint8_t kStorage = 0x0A; // network function of repository and event log

// An open session with a BMC; destroying it closes it.
class BmcSession {
public:
    virtual ~BmcSession() = default;
    // Completion code and data of the answer; nothing (and the reason) when no answer came.
    virtual std::optional<std::vector<uint8_t>> Send(uint8_t network_function, uint8_t command,
                                                     std::span<const uint8_t> data, std::string &reason,
                                                     uint8_t lun = 0) = 0;
};

// Opens a session, or gives null and the reason.
using OpenBmcSession = std::function<std::unique_ptr<BmcSession>(std::string &reason)>;

// From now on every local session opens one of these, and Add SEL Entry, Add SDR and Delete SDR go through
// it; an empty function leads back to memory.  Faults come first: a call that a rule fails never leaves.
// What the BMC took stands in EventLog() and Repository() as well.  Outlives Start.
void UseSessions(OpenBmcSession open);

// Record ids that the event log gave to the records of EventLog(), in its order.
const std::vector<uint16_t> &EventRecordIds();

} // namespace sim
#endif
