// SPDX-License-Identifier: GPL-3.0-or-later
#include "fleet/fleet.h"

#include <algorithm>
#include <csignal>
#include <functional>
#include <map>
#include <sys/wait.h>
#include <unistd.h>

#include "base/apart.h"
#include "base/errors.h"
#include "base/json.h"
#include "base/progress.h"
#include "base/text.h"
#include "sources/source.h"

namespace workbench {
namespace {

constexpr unsigned kPauseSeconds = 1; // before a retry

// ---- in the child ----------------------------------------------------------------------------------------

Json DifferencesJson(const std::vector<Difference> &differences) {
    Json out = Json::array();
    for (const Difference &one : differences)
        out.push_back({one.what, one.name, one.text});
    return out;
}

// Who is refused is refused again, and locked out in the end.
bool IsFinal(const std::string &why) {
    for (const char *word : {"password", "username", "user name", "privilege", "authentication", "k_g"})
        if (why.find(word) != std::string::npos)
            return true;
    return false;
}

// "BMC 10.0.0.1:623: ..." and "...: 10.0.0.1:623: ...": the address stands in the machine's line.
std::string WithoutAddress(std::string why, const sim::Bmc &bmc) {
    const std::string address = " " + bmc.host + ":" + std::to_string(bmc.port) + ":";
    if (why.starts_with("BMC" + address))
        return "BMC:" + why.substr(3 + address.size());
    if (const size_t at = why.find(address); at != std::string::npos)
        why.erase(at, address.size());
    return why;
}

class Child {
public:
    Child(const Host &host, const LockedMachine &locked, const FleetOptions &options)
        : host_(host), locked_(locked), options_(options),
          bmc_(BmcAt(host.address, options.login, host.address)) {}

    std::string Answer() {
        for (unsigned tries = 1;; ++tries) {
            try {
                return Read(tries);
            } catch (const std::exception &error) {
                const std::string why = WithoutAddress(error.what(), bmc_);
                if (tries > options_.retries || IsFinal(why))
                    return Json{{"tries", tries}, {"why", why}}.dump();
            }
            sleep(kPauseSeconds);
        }
    }

private:
    std::string Read(unsigned tries) {
        const SourceSet source = ReadBmc(bmc_, host_.address, options_.active);
        const MachineResult result = CompareMachine(locked_, source.set);
        return Json{{"tries", tries},
                    {"differences", DifferencesJson(result.differences)},
                    {"active", DifferencesJson(result.active)},
                    {"sensors", result.sensors},
                    {"run_time", result.run_time},
                    {"aside", result.aside}}
            .dump(-1, ' ', false, Json::error_handler_t::replace);
    }

    const Host &host_;
    const LockedMachine &locked_;
    const FleetOptions &options_;
    const sim::Bmc bmc_;
};

// ---- in the parent ---------------------------------------------------------------------------------------

std::vector<Difference> DifferencesOf(const Json &json) {
    std::vector<Difference> out;
    for (const Json &one : json)
        out.push_back({one[0], one[1], one[2]});
    return out;
}

std::string WhyEnded(int status, const FleetOptions &options) {
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM)
        return "not read within " + std::to_string(options.limit) + " s";
    return WIFSIGNALED(status) ? "reading it ended with signal " + std::to_string(WTERMSIG(status))
                               : "reading it ended with status " + std::to_string(WEXITSTATUS(status));
}

HostResult ResultOf(const Host &host, const Apart &answer, const FleetOptions &options) {
    HostResult out{host, {}, {}, 1};
    if (!WIFEXITED(answer.status) || WEXITSTATUS(answer.status) != 0) {
        out.why = WhyEnded(answer.status, options);
        return out;
    }
    const Json json = Json::parse(answer.said);
    out.tries = json.at("tries");
    if (json.contains("why")) {
        out.why = json.at("why");
        return out;
    }
    out.machine = {DifferencesOf(json.at("differences")), DifferencesOf(json.at("active")),
                   json.at("sensors"), json.at("run_time"), json.at("aside")};
    return out;
}

// ---- groups ----------------------------------------------------------------------------------------------

using Told = std::vector<Difference>; // of a machine

void Once(auto &list, const auto &item) {
    if (std::find(list.begin(), list.end(), item) == list.end())
        list.push_back(item);
}

std::vector<Group> GroupsOf(const std::vector<HostResult> &results,
                            const std::function<Told(const HostResult &)> &told) {
    std::vector<Group> out;
    std::map<std::string, size_t> places;
    for (size_t i = 0; i < results.size(); ++i)
        for (const Difference &one : told(results[i])) {
            const std::string text = one.what == "renamed" ? Pattern(one.text) : one.text;
            const auto [found, is_new] =
                places.emplace(Join({one.what, Pattern(one.name), text}, "\n"), out.size());
            if (is_new)
                out.push_back({one.what, {}, one.text, {}});
            Group &group = out[found->second];
            if (group.text != one.text)
                group.text = text;
            if (!one.name.empty())
                Once(group.names, one.name);
            if (group.machines.empty() || group.machines.back() != i)
                group.machines.push_back(i);
        }
    std::stable_sort(out.begin(), out.end(),
                     [](const Group &a, const Group &b) { return a.machines.size() > b.machines.size(); });
    return out;
}

} // namespace

std::vector<HostResult> VerifyFleet(const std::vector<Host> &hosts, const Lock &lock,
                                    const FleetOptions &options) {
    std::map<std::string, LockedMachine> locked; // before the children: they share it
    for (const Host &host : hosts)
        if (!locked.contains(host.Machine()))
            locked[host.Machine()] = MachineOf(lock, host.board, host.profile);
    std::vector<HostResult> out;
    Progress progress("verified", hosts.size(), "machines");
    RunManyApart(
        hosts.size(),
        [&](size_t index, const Say &say) {
            alarm(options.limit); // ends the child, whatever it waits for
            KeepProgressBack();
            say(Child(hosts[index], locked.at(hosts[index].Machine()), options).Answer());
        },
        [&](size_t index, const Apart &answer) {
            out.push_back(ResultOf(hosts[index], answer, options));
            progress.Done(index + 1);
        },
        options.at_once);
    return out;
}

std::vector<Group> DifferenceGroups(const std::vector<HostResult> &results) {
    return GroupsOf(
        results, [](const HostResult &one) { return one.machine ? one.machine->differences : Told(); });
}

std::vector<Group> ActiveGroups(const std::vector<HostResult> &results) {
    return GroupsOf(
        results, [](const HostResult &one) { return one.machine ? one.machine->active : Told(); });
}

std::vector<Group> UnreadGroups(const std::vector<HostResult> &results) {
    return GroupsOf(
        results,
        [](const HostResult &one) {
            return one.machine ? Told() : Told{{"unread", "", one.why}};
        });
}

} // namespace workbench
