// SPDX-License-Identifier: GPL-3.0-or-later
#include "runtime/bmc_options.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "base/errors.h"
#include "base/text.h"

namespace workbench {
namespace {

constexpr size_t kLongestPassword = 20; // bytes of IPMI 2.0

std::string FirstLineOf(const std::string &path) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored))
        throw InputError("--password-file " + path + ": is a folder");
    std::ifstream file(path);
    if (!file)
        throw InputError("--password-file " + path + ": " + std::strerror(errno));
    std::string line(kLongestPassword + 2, '\0'); // no more than a password: a device has no end
    file.read(line.data(), static_cast<std::streamsize>(line.size()));
    line.resize(static_cast<size_t>(file.gcount()));
    line.resize(std::min(line.find('\n'), line.size()));
    if (line.ends_with('\r'))
        line.pop_back();
    if (line.empty())
        throw InputError("--password-file " + path + ": its first line, the password, is empty");
    return line;
}

std::string Password(const LoginOptions &options) {
    if (options.password && !options.password_file.empty())
        throw InputError("--password contradicts --password-file");
    const char *variable = std::getenv("IPMI_PASSWORD");
    const std::string out = options.password                 ? *options.password
                            : !options.password_file.empty() ? FirstLineOf(options.password_file)
                            : variable != nullptr            ? variable
                                                             : options.login.password;
    if (out.size() > kLongestPassword)
        throw InputError("the password has more than 20 bytes; IPMI has no longer ones");
    return out;
}

} // namespace

void AddLoginOptions(Command &command, LoginOptions &options) {
    command.AddOption("--user", options.login.user, "User at the BMC").Takes("NAME").ShowsDefault();
    command
        .AddOption(
            "--password", [&options](const std::string &word) { options.password = word; },
            "Password at the BMC, for all to see in the list of processes; default: --password-file, else "
            "IPMI_PASSWORD of the environment, else test")
        .Takes("TEXT");
    command.AddOption("--password-file", options.password_file, "File whose first line is the password")
        .Takes("FILE");
    command
        .AddOption(
            "--cipher",
            [&options](const std::string &word) {
                options.login.cipher_suite = static_cast<uint8_t>(std::stoul(word));
            },
            "Cipher suite: 3 (SHA1, the default; the only one that ipmi_sim knows) or 17 (SHA256)")
        .Takes("3|17")
        .OneOf({"3", "17"});
    command
        .AddOption("--timeout", options.login.timeout_seconds,
                   "Seconds in which a BMC must answer, first asked again after a tenth of it")
        .Takes("N")
        .Between(1, 600)
        .ShowsDefault();
}

void AddBmcOptions(Command &command, BmcOptions &options, const std::string &help) {
    command.AddOption("--bmc", options.address, help).Takes("HOST:PORT");
    AddLoginOptions(command, options);
}

void SetAddress(sim::Bmc &bmc, const std::string &address, const std::string &what) {
    const size_t bracket = address.starts_with('[') ? address.find(']') : 0; // of a version 6 address
    const size_t colon = bracket == std::string::npos ? bracket : address.find(':', bracket);
    bmc.host = address.substr(0, colon);
    if (bmc.host.empty() || bracket == std::string::npos)
        throw InputError(what + ": no host; write HOST:PORT");
    if (colon == std::string::npos)
        return;
    const std::string port = address.substr(colon + 1);
    const bool number =
        !port.empty() && port.size() <= 5 && port.find_first_not_of("0123456789") == std::string::npos;
    const unsigned long value = number ? std::stoul(port) : 0;
    if (value == 0 || value > 65535)
        throw InputError(what + ": '" + Printable(port) + "' is no port");
    bmc.port = static_cast<uint16_t>(value);
}

sim::Bmc BmcAt(const std::string &address, const LoginOptions &options, const std::string &what) {
    sim::Bmc bmc = options.login;
    bmc.password = Password(options);
    SetAddress(bmc, address, what);
    return bmc;
}

std::optional<sim::Bmc> ChosenBmc(const BmcOptions &options) {
    if (!options.Given())
        return std::nullopt;
    return BmcAt(options.address, options, "--bmc " + options.address);
}

} // namespace workbench
