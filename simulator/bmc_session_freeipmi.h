// SPDX-License-Identifier: GPL-3.0-or-later
//
// Local sessions as real RMCP+ sessions (IPMI 2.0) with a BMC on the network, such as
// ipmi_sim on loopback.  Only where libfreeipmi is installed.
#ifndef OXA_SIMULATOR_BMC_SESSION_FREEIPMI_H
#define OXA_SIMULATOR_BMC_SESSION_FREEIPMI_H

#include <cstdint>
#include <string>

#include "simulator/bmc_session.h"

namespace sim {

struct Bmc {
    std::string host = "127.0.0.1";
    uint16_t port = 623;
    std::string user = "ipmiusr";
    std::string password = "test";
    uint8_t cipher_suite = 3;     // HMAC-SHA1, HMAC-SHA1-96, AES-CBC-128; 17: the same with SHA256
    uint16_t timeout_seconds = 5; // until an answer must have come; it is asked for again ten times meanwhile
};

OpenBmcSession SessionsWith(const Bmc &bmc);

inline void UseBmc(const Bmc &bmc) {
    UseSessions(SessionsWith(bmc));
}

} // namespace sim
#endif
