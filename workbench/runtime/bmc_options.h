// SPDX-License-Identifier: GPL-3.0-or-later
//
// --bmc, --user, --password, --password-file, --cipher and --timeout: where a command's sessions lead.
#ifndef OXA_WORKBENCH_RUNTIME_BMC_OPTIONS_H
#define OXA_WORKBENCH_RUNTIME_BMC_OPTIONS_H

#include <optional>
#include <string>

#include "base/command_line.h"
#include "simulator/bmc_session_freeipmi.h"

namespace workbench {

struct LoginOptions {
    sim::Bmc login; // what is not given keeps its default; address and password are settled by BmcAt
    std::optional<std::string> password;
    std::string password_file;
};

struct BmcOptions : LoginOptions {
    std::string address; // "127.0.0.1:9001", as given; empty: sessions end in memory
    bool Given() const {
        return !address.empty();
    }
};

void AddLoginOptions(Command &command, LoginOptions &options);

// The same and --bmc, with this help.
void AddBmcOptions(Command &command, BmcOptions &options, const std::string &help);

// "HOST", "HOST:PORT", "[ADDRESS]:PORT".  InputError, beginning with `what`, for an address that is none.
void SetAddress(sim::Bmc &bmc, const std::string &address, const std::string &what);

// InputError for an address or a password that is none.  The password is --password, else the first line of
// --password-file, else IPMI_PASSWORD of the environment, else test.
sim::Bmc BmcAt(const std::string &address, const LoginOptions &options, const std::string &what);

std::optional<sim::Bmc> ChosenBmc(const BmcOptions &options); // nullopt without --bmc

} // namespace workbench
#endif
