// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/bmc_session_freeipmi.h"

#include <freeipmi/freeipmi.h>

namespace sim {
namespace {

constexpr unsigned kMsOfASecond = 1000, kTries = 10; // for an answer

struct Close {
    void operator()(ipmi_ctx_t context) const {
        ipmi_ctx_close(context);
        ipmi_ctx_destroy(context);
    }
};
using Context = std::unique_ptr<struct ipmi_ctx, Close>;

class Session : public BmcSession {
public:
    explicit Session(Context context) : context_(std::move(context)) {}

    std::optional<std::vector<uint8_t>> Send(uint8_t network_function, uint8_t command,
                                             std::span<const uint8_t> data, std::string &reason,
                                             uint8_t lun) override {
        std::vector<uint8_t> request = {command};
        request.insert(request.end(), data.begin(), data.end());
        uint8_t answer[256]; // command, completion code, data
        const int size =
            ipmi_cmd_raw(context_.get(), lun, network_function, request.data(),
                         static_cast<unsigned>(request.size()), answer, static_cast<unsigned>(sizeof answer));
        if (size < 2) {
            reason = size < 0 ? ipmi_ctx_errormsg(context_.get()) : "short answer";
            return std::nullopt;
        }
        return std::vector<uint8_t>(answer + 1, answer + size);
    }

private:
    Context context_;
};

} // namespace

OpenBmcSession SessionsWith(const Bmc &bmc) {
    return [bmc](std::string &reason) -> std::unique_ptr<BmcSession> {
        Context context(ipmi_ctx_create());
        if (context == nullptr) {
            reason = "out of memory";
            return nullptr;
        }
        const unsigned timeout = bmc.timeout_seconds * kMsOfASecond;
        const std::string address = bmc.host + ":" + std::to_string(bmc.port);
        const int opened = ipmi_ctx_open_outofband_2_0(
            context.get(), address.c_str(), bmc.user.c_str(), bmc.password.c_str(), nullptr, 0,
            IPMI_PRIVILEGE_LEVEL_ADMIN, bmc.cipher_suite, timeout, timeout / kTries,
            IPMI_WORKAROUND_FLAGS_OUTOFBAND_2_0_OPEN_SESSION_PRIVILEGE, IPMI_FLAGS_DEFAULT);
        if (opened < 0) {
            reason = address + ": " + ipmi_ctx_errormsg(context.get());
            if (bmc.cipher_suite != Bmc().cipher_suite) // ipmi_sim's refusal comes out as an internal error
                reason += "; cipher suite " + std::to_string(bmc.cipher_suite) +
                          " is not known to every BMC (ipmi_sim knows 3 only)";
            return nullptr;
        }
        return std::make_unique<Session>(std::move(context));
    };
}

} // namespace sim
