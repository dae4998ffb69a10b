// SPDX-License-Identifier: GPL-3.0-or-later
#include "runtime/bmc_options.h"

#include "base/errors.h"

namespace workbench {

void AddBmcOptions(Command &command, BmcOptions &options, const std::string &help) {
    command.AddOption("--bmc", options.address, help).Takes("HOST:PORT");
    command.AddOption("--user", options.login.user, "User at the BMC").Takes("NAME").ShowsDefault();
    command.AddOption("--password", options.login.password, "Password at the BMC; default: test")
        .Takes("TEXT");
}

std::optional<sim::Bmc> ChosenBmc(const BmcOptions &options) {
    if (!options.Given())
        return std::nullopt;
    sim::Bmc bmc = options.login;
    const size_t colon = options.address.rfind(':');
    bmc.host = options.address.substr(0, colon);
    if (colon != std::string::npos) {
        const std::string port = options.address.substr(colon + 1);
        const bool number =
            !port.empty() && port.size() <= 5 && port.find_first_not_of("0123456789") == std::string::npos;
        const unsigned long value = number ? std::stoul(port) : 0;
        if (value == 0 || value > 65535)
            throw InputError("--bmc " + options.address + ": '" + port + "' is no port");
        bmc.port = static_cast<uint16_t>(value);
    }
    if (bmc.host.empty())
        throw InputError("--bmc " + options.address + ": no host; write HOST:PORT");
    return bmc;
}

} // namespace workbench
