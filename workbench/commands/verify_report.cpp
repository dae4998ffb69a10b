// SPDX-License-Identifier: GPL-3.0-or-later
//
// verify: a line for each machine, then what several of them have in common.
#include <algorithm>

#include "base/json.h"
#include "base/markup.h"
#include "base/table.h"
#include "base/text.h"
#include "commands/verify.h"

namespace workbench {
namespace {

constexpr size_t kHostsTold = 3, kNamesTold = 4;

std::string Count(size_t count, const std::string &noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

const char *StatusText(const HostResult &result) {
    return !result.machine ? "not read" : result.machine->differences.empty() ? "as locked" : "different";
}

std::string WhatText(const HostResult &result) {
    if (!result.machine)
        return result.why + (result.tries > 1 ? " (tried " + Count(result.tries, "time") + ")" : "");
    const MachineResult &m = *result.machine;
    std::vector<std::string> parts;
    if (!m.differences.empty())
        parts.push_back(Count(m.differences.size(), "difference"));
    parts.push_back(Count(m.sensors, "sensor"));
    if (m.run_time != 0)
        parts.push_back(std::to_string(m.run_time) + " of run time");
    if (m.aside != 0)
        parts.push_back(std::to_string(m.aside) + " set aside");
    if (!m.active.empty())
        parts.push_back(Count(m.active.size(), "threshold") + " set by users");
    return Join(parts, ", ");
}

// "212 machines", "1 machine (10.1.0.7)".
std::string MachinesText(const FleetReport &report, const Group &group) {
    std::vector<std::string> hosts;
    for (const size_t i : group.machines)
        hosts.push_back(report.results[i].host.address);
    const std::string count = Count(hosts.size(), "machine");
    return hosts.size() > kHostsTold ? count : count + " (" + Join(hosts, ", ") + ")";
}

std::string Sentence(const FleetReport &report, const Group &group) {
    const std::string names =
        group.what == "unread" ? "not read: " : NamesText(group.names, kNamesTold) + " ";
    return MachinesText(report, group) + ": " + names + group.text;
}

std::string Summary(const FleetReport &report) {
    const size_t all = report.results.size();
    return Count(all, "machine") + ": " + std::to_string(all - report.Different() - report.Unread()) +
           " as locked, " + std::to_string(report.Different()) + " different, " +
           std::to_string(report.Unread()) + " not read";
}

std::vector<std::string> Sentences(const FleetReport &report, const std::vector<Group> &groups) {
    std::vector<std::string> out;
    for (const Group &group : groups)
        out.push_back(Sentence(report, group));
    return out;
}

// Everything that makes the exit status 1.
std::vector<std::string> Faults(const FleetReport &report) {
    std::vector<std::string> out = Sentences(report, DifferenceGroups(report.results));
    const std::vector<std::string> unread = Sentences(report, UnreadGroups(report.results));
    out.insert(out.end(), unread.begin(), unread.end());
    return out;
}

std::string Lines(const std::vector<std::string> &lines, const std::string &before) {
    std::string out;
    for (const std::string &line : lines)
        out.append(before).append(line).append("\n");
    return out;
}

Json GroupsJson(const FleetReport &report, const std::vector<Group> &groups) {
    Json out = Json::array();
    for (const Group &group : groups) {
        Json hosts = Json::array();
        for (const size_t i : group.machines)
            hosts.push_back(report.results[i].host.address);
        out.push_back({{"what", group.what}, {"names", group.names}, {"text", group.text}, {"hosts", hosts}});
    }
    return out;
}

Json DifferencesJson(const std::vector<Difference> &differences) {
    Json out = Json::array();
    for (const Difference &one : differences)
        out.push_back({{"what", one.what}, {"name", one.name}, {"text", one.text}});
    return out;
}

Json MachineJson(const FleetReport &report, const HostResult &result) {
    Json out{{"host", result.host.address},
             {"board", result.host.board},
             {"profile", result.host.profile},
             {"line", result.host.line},
             {"status", StatusText(result)},
             {"tries", result.tries},
             {"why", result.machine ? Json(nullptr) : Json(result.why)}};
    if (!result.machine)
        return out;
    out["sensors"] = result.machine->sensors;
    out["run_time"] = result.machine->run_time;
    out["set_aside"] = result.machine->aside;
    out["differences"] = DifferencesJson(result.machine->differences);
    out["active"] = report.active ? DifferencesJson(result.machine->active) : Json(nullptr);
    return out;
}

std::string JunitCase(const HostResult &result) {
    const Host &host = result.host;
    const std::string head = "  <testcase classname=\"" + XmlText(host.board + "." + host.profile) +
                             "\" name=\"" + XmlText(host.address) + "\"";
    if (!result.machine)
        return head + ">\n    <error message=\"" + XmlText(result.why) + "\"/>\n  </testcase>\n";
    if (result.machine->differences.empty())
        return head + "/>\n";
    std::string lines;
    for (const Difference &one : result.machine->differences)
        lines += XmlText(one.name + " " + one.text) + "\n";
    return head + ">\n    <failure message=\"" + Count(result.machine->differences.size(), "difference") +
           "\">" + lines + "</failure>\n  </testcase>\n";
}

} // namespace

size_t FleetReport::Different() const {
    return static_cast<size_t>(std::count_if(
        results.begin(), results.end(),
        [](const HostResult &one) { return one.machine && !one.machine->differences.empty(); }));
}

size_t FleetReport::Unread() const {
    return static_cast<size_t>(std::count_if(
        results.begin(), results.end(), [](const HostResult &one) { return !one.machine; }));
}

std::string FleetAsText(const FleetReport &report) {
    Table table({{"HOST"}, {"BOARD"}, {"PROFILE"}, {"STATUS"}, {"WHAT"}});
    for (const HostResult &one : report.results)
        table.Add({{one.host.address, Style::kBold},
                   {one.host.board},
                   {one.host.profile},
                   {StatusText(one), !one.machine                       ? Style::kHot
                                     : one.machine->differences.empty() ? Style::kPlain
                                                                        : Style::kWarm},
                   {WhatText(one)}});
    const std::vector<std::string> faults = Faults(report);
    const std::vector<std::string> active = Sentences(report, ActiveGroups(report.results));
    return table.Render(ColourWanted()) + "\n" + (faults.empty() ? "" : Lines(faults, "") + "\n") +
           (active.empty() ? "" : Lines(active, "") + "\n") + Summary(report) + "\n";
}

std::string FleetForGithub(const FleetReport &report) {
    std::string out;
    for (const std::string &fault : Faults(report))
        out += "::error title=Sensors of the fleet::" + GithubText(fault) + "\n";
    for (const std::string &line : Sentences(report, ActiveGroups(report.results)))
        out += "::notice title=Sensors of the fleet::" + GithubText(line) + "\n";
    return out + Summary(report) + "\n";
}

std::string FleetAsMarkdown(const FleetReport &report) {
    std::string out = "### Sensors of the fleet\n\n" + MarkdownText(Summary(report)) + "\n";
    for (const std::string &fault : Faults(report))
        out += "\n- " + MarkdownText(fault);
    for (const std::string &line : Sentences(report, ActiveGroups(report.results)))
        out += "\n- " + MarkdownText(line);
    out += "\n\n| host | board | profile | status | what |\n|---|---|---|---|---|\n";
    for (const HostResult &one : report.results)
        out += "| " + MarkdownText(one.host.address) + " | " + MarkdownText(one.host.board) + " | " +
               MarkdownText(one.host.profile) + " | " + StatusText(one) + " | " +
               MarkdownText(WhatText(one)) + " |\n";
    return out;
}

std::string FleetAsJunit(const FleetReport &report) {
    std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuite name=\"" +
                      XmlText(report.lock) + "\" tests=\"" + std::to_string(report.results.size()) +
                      "\" failures=\"" + std::to_string(report.Different()) + "\" errors=\"" +
                      std::to_string(report.Unread()) + "\">\n";
    for (const HostResult &one : report.results)
        out += JunitCase(one);
    return out + "</testsuite>\n";
}

std::string FleetAsJson(const FleetReport &report) {
    Json out{{"lock", report.lock},
             {"hosts", report.hosts},
             {"as_locked", report.results.size() - report.Different() - report.Unread()},
             {"different", report.Different()},
             {"not_read", report.Unread()},
             {"machines", Json::array()}};
    for (const HostResult &one : report.results)
        out["machines"].push_back(MachineJson(report, one));
    out["differences"] = GroupsJson(report, DifferenceGroups(report.results));
    out["unread"] = GroupsJson(report, UnreadGroups(report.results));
    out["active"] = report.active ? GroupsJson(report, ActiveGroups(report.results)) : Json(nullptr);
    return Dump(out);
}

} // namespace workbench
