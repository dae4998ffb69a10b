// SPDX-License-Identifier: GPL-3.0-or-later
//
// --bmc, --user, --password, --password-file and --cipher: where a command's sessions lead.
#ifndef OXA_WORKBENCH_RUNTIME_BMC_OPTIONS_H
#define OXA_WORKBENCH_RUNTIME_BMC_OPTIONS_H

#include <optional>
#include <string>

#include "base/command_line.h"
#include "simulator/bmc_session_freeipmi.h"

namespace workbench {

struct BmcOptions {
    std::string address; // "127.0.0.1:9001", as given; empty: sessions end in memory
    sim::Bmc login;      // what is not given keeps its default; address and password are settled by ChosenBmc
    std::optional<std::string> password;
    std::string password_file;
    bool Given() const {
        return !address.empty();
    }
};

// `help` is that of --bmc.
void AddBmcOptions(Command &command, BmcOptions &options, const std::string &help);

// nullopt without --bmc; InputError for an address or a password that is none.  The password is --password, else the
// first line of --password-file, else IPMI_PASSWORD of the environment, else test.
std::optional<sim::Bmc> ChosenBmc(const BmcOptions &options);

} // namespace workbench
#endif
