// SPDX-License-Identifier: GPL-3.0-or-later
//
// Runs a story: one process of the library per life between restarts, since the library's state has no reset.
// Files stay under one root directory; repository, event log and what is left of the faults are handed from one
// life to the next through the parent.
#include <algorithm>
#include <csignal>
#include <cstring>
#include <sys/wait.h>

#include "base/apart.h"
#include "base/errors.h"
#include "base/text.h"
#include "runtime/platform.h"
#include "scenario/scenario.h"

namespace workbench {
namespace {

// A rule of a step and how many calls it has seen in earlier lives.
struct ActiveFault {
    size_t step = 0, index = 0;
    uint64_t seen_before = 0; // in earlier lives
    uint64_t from = 0;        // in this life: calls before the rule, or trace size for rules with arguments
};

// What one life leaves to the next.
struct Carry {
    RepositoryState repository;
    std::vector<std::vector<uint8_t>> events;
    std::vector<ActiveFault> faults;
};

// ---- from one process to the other -----------------------------------------------------------------

Json CarryJson(const Carry &carry) {
    Json out = {{"next_id", carry.repository.next_id},
                {"records", Json::array()},
                {"events", carry.events},
                {"faults", Json::array()}};
    for (const sim::RepositoryRecord &record : carry.repository.records)
        out["records"].push_back({{"id", record.id}, {"bytes", record.bytes}});
    for (const ActiveFault &fault : carry.faults)
        out["faults"].push_back({fault.step, fault.index, fault.seen_before});
    return out;
}

Carry CarryFrom(const Json &json) {
    Carry carry;
    carry.repository.next_id = json.at("next_id");
    for (const Json &record : json.at("records"))
        carry.repository.records.push_back({record.at("id"), record.at("bytes")});
    carry.events = json.at("events");
    for (const Json &fault : json.at("faults"))
        carry.faults.push_back({fault.at(0), fault.at(1), fault.at(2), 0});
    return carry;
}

std::string OneLineJson(const Json &json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

Json StepJson(size_t number, const std::vector<Outcome> &outcomes) {
    Json told = {{"step", number},
                 {"outcomes", Json::array()},
                 {"records", sim::Repository().size()},
                 {"events", sim::EventLog().size()}};
    for (const Outcome &outcome : outcomes)
        told["outcomes"].push_back(OutcomeJson(outcome));
    return told;
}

// ---- in the life's own process ---------------------------------------------------------------------

class Life {
public:
    Life(const Scenario &scenario, Carry carry) : scenario_(scenario), carry_(std::move(carry)) {}

    void Start(const sim::Board &board, const std::optional<sim::Bmc> &bmc) {
        if (bmc)
            sim::UseBmc(*bmc);
        StartWith(board, scenario_.board_faults, carry_.repository);
        sim::EventLog() = carry_.events;
        std::vector<ActiveFault> faults;
        std::swap(faults, carry_.faults);
        for (ActiveFault &fault : faults)
            PutInForce(fault);
    }

    // From now on until the process dies in the step; then what came of it so far, and what is left, are said.
    void PrepareKill(size_t number, const Say &say) {
        const Kill &kill = *scenario_.steps[number].kill;
        if (kill.change != 0)
            sim::DieAtChange(sim::ChangesMade() + kill.change);
        else
            sim::DieInWrite(sim::WritesMade() + kill.write, kill.percent / 100.0);
        sim::BeforeDying([this, number, &say] {
            told_.push_back(Killed(scenario_.steps[number]));
            say(OneLineJson(StepJson(number, told_)));
            say(OneLineJson({{"carry", CarryJson(End())}, {"violations", Json::array()}}));
        });
    }

    const std::vector<Outcome> &Run(size_t number) {
        const Step &step = scenario_.steps[number];
        std::vector<Outcome> &out = told_;
        out.clear();
        for (uint32_t n = 0; n < step.repeat; ++n) {
            for (const SpecificSensorParam &param : step.params)
                out.push_back(step.action == "add" ? AddSensor(param, step.record) : RemoveSensor(param));
            for (const EventCall &event : step.events)
                out.push_back(WriteEvent(event.builder, event.arguments));
        }
        for (const UserThresholds &thresholds : step.thresholds)
            out.push_back(SaveThresholds(thresholds));
        if (step.action == "restart")
            out.push_back(StartLibrary());
        if (out.empty())
            out.push_back(ChangeWorld(number));
        return out;
    }

    Carry End() {
        carry_.repository = CurrentRepository();
        carry_.events = sim::EventLog();
        std::vector<ActiveFault> left;
        for (ActiveFault fault : carry_.faults) {
            fault.seen_before += Seen(fault);
            const sim::Fault &rule = RuleOf(fault);
            if (!rule.occurrence || rule.from_then_on || fault.seen_before < *rule.occurrence)
                left.push_back(fault);
        }
        carry_.faults = left;
        return carry_;
    }

private:
    const sim::Fault &RuleOf(const ActiveFault &fault) const {
        return scenario_.steps[fault.step].faults[fault.index];
    }

    // Calls that the rule has looked at in this life.
    uint64_t Seen(const ActiveFault &fault) const {
        const sim::Fault &rule = RuleOf(fault);
        if (!rule.args)
            return sim::CountCalls(rule.call) - fault.from;
        uint64_t seen = 0;
        const std::vector<sim::Event> &trace = sim::Trace();
        for (size_t i = fault.from; i < trace.size(); ++i)
            seen += trace[i].kind == sim::Kind::kCall && trace[i].function == rule.call &&
                    trace[i].args.find(*rule.args) != std::string::npos;
        return seen;
    }

    // Occurrences count from the step that set the rule; the platform counts from its start.
    void PutInForce(ActiveFault fault) {
        sim::Fault rule = RuleOf(fault);
        fault.from = rule.args ? sim::Trace().size() : sim::CountCalls(rule.call);
        if (rule.occurrence) {
            const uint64_t left =
                *rule.occurrence > fault.seen_before ? *rule.occurrence - fault.seen_before : 1;
            rule.occurrence = static_cast<uint32_t>(left + (rule.args ? 0 : fault.from));
        }
        sim::AddFault(rule);
        carry_.faults.push_back(fault);
    }

    Outcome ChangeWorld(size_t number) {
        const Step &step = scenario_.steps[number];
        Outcome outcome;
        outcome.action = step.action;
        outcome.word = "done";
        for (size_t i = 0; i < step.faults.size(); ++i)
            PutInForce({number, i, 0, 0});
        if (step.action == "fault")
            outcome.subject = std::to_string(step.faults.size()) +
                              (step.faults.size() == 1 ? " rule in force: " : " rules in force: ") +
                              step.faults.front().call;
        if (step.action == "clear_faults") {
            sim::ClearFaults();
            carry_.faults.clear();
            for (const sim::Fault &fault : scenario_.board_faults)
                sim::AddFault(fault);
            outcome.subject = "no rule of the story is in force";
        }
        if (step.action == "change") {
            sim::CurrentBoard() = step.board;
            for (const auto &[path, bytes] : step.files)
                sim::WriteFile(path, bytes);
            outcome.subject = "the board has changed";
        }
        return outcome;
    }

    static Outcome Killed(const Step &step) {
        Outcome outcome;
        outcome.action = step.action;
        outcome.word = "killed";
        outcome.why = step.kill->change != 0 ? "before change " + std::to_string(step.kill->change)
                                             : "in write " + std::to_string(step.kill->write) + ", after " +
                                                   std::to_string(step.kill->percent) + " % of it";
        return outcome;
    }

    const Scenario &scenario_;
    Carry carry_;
    std::vector<Outcome> told_; // of the step under way
};

// ---- one life after the other ----------------------------------------------------------------------

struct Stretch { // steps of one life
    size_t begin = 0, end = 0;
    bool first = false;
};

// One line per step, then what is left.  Every life but the first begins with the restart that made it.
void LiveHere(const Scenario &scenario, const Stretch &stretch, const Carry &carry,
              const std::optional<sim::Bmc> &bmc, const Say &say) {
    try {
        Life life(scenario, carry);
        life.Start(stretch.first ? scenario.board : scenario.steps[stretch.begin].board, bmc);
        if (stretch.first)
            StartLibrary();
        for (size_t number = stretch.begin; number < stretch.end; ++number) {
            const bool dies = scenario.steps[number].kill.has_value();
            if (dies)
                life.PrepareKill(number, say);
            const std::vector<Outcome> &told = life.Run(number);
            if (dies)
                throw SetError("the step is over and the process lives: it makes fewer changes");
            say(OneLineJson(StepJson(number, told)));
        }
        sim::CheckStorage();
        say(OneLineJson({{"carry", CarryJson(life.End())}, {"violations", sim::Violations()}}));
    } catch (const sim::StorageError &error) {
        say(OneLineJson({{"storage", error.what()}}));
    } catch (const std::exception &error) {
        say(OneLineJson({{"error", error.what()}}));
    }
}

// Only those that are complete: a process may have ended within one.
std::vector<std::string> WholeLines(const std::string &text) {
    std::vector<std::string> out;
    for (size_t at = 0, end; (end = text.find('\n', at)) != std::string::npos; at = end + 1)
        out.push_back(text.substr(at, end - at));
    return out;
}

std::string HowItEnded(int status) {
    if (WIFSIGNALED(status))
        return std::string("signal ") + std::to_string(WTERMSIG(status)) + " (" +
               strsignal(WTERMSIG(status)) + ")";
    return "status " + std::to_string(WEXITSTATUS(status));
}

std::string StepText(const Scenario &scenario, size_t number) {
    if (scenario.steps.empty())
        return scenario.path;
    number = std::min(number, scenario.steps.size() - 1);
    return scenario.path + ":" + std::to_string(scenario.steps[number].line) + ": step " +
           std::to_string(number + 1);
}

Carry TakeLife(const Scenario &scenario, const Stretch &stretch, const Apart &answer, StoryEnd &end) {
    size_t told = stretch.begin;
    std::optional<Carry> carry;
    for (const std::string &line : WholeLines(answer.said)) {
        const Json json = Json::parse(line);
        if (json.contains("storage"))
            throw sim::StorageError(scenario.path + ": " + json["storage"].get<std::string>());
        if (json.contains("error"))
            throw SetError(StepText(scenario, told) + ": " + OneLine(json["error"].get<std::string>()));
        if (json.contains("carry")) {
            for (const std::string violation : json.at("violations"))
                end.violations.push_back(violation);
            carry = CarryFrom(json["carry"]);
            continue;
        }
        end.steps.push_back(json);
        ++told;
    }
    const bool killed = WIFSIGNALED(answer.status) && WTERMSIG(answer.status) == SIGKILL &&
                        scenario.steps[stretch.end - 1].kill;
    if (carry && (answer.status == 0 || killed))
        return *carry;
    throw SetError(StepText(scenario, told) + ": the library's process ended with " +
                   HowItEnded(answer.status));
}

std::vector<Stretch> Lives(const Scenario &scenario) {
    std::vector<Stretch> out = {{0, 0, true}};
    for (size_t number = 0; number < scenario.steps.size(); ++number) {
        if (scenario.steps[number].action == "restart")
            out.push_back({number, number, false});
        out.back().end = number + 1;
    }
    return out;
}

} // namespace

StoryEnd RunScenario(const Scenario &scenario, const std::optional<sim::Bmc> &bmc) {
    StoryEnd end;
    Carry carry;
    sim::Root(); // made here, so that all lives have the same
    size_t life = 0;
    for (const Stretch &stretch : Lives(scenario)) {
        const size_t before = end.steps.size();
        const Apart answer = RunApart([&](const Say &say) { LiveHere(scenario, stretch, carry, bmc, say); });
        carry = TakeLife(scenario, stretch, answer, end);
        ++life;
        for (size_t i = before; i < end.steps.size(); ++i) {
            end.steps[i]["life"] = life;
            JudgeStep(scenario.steps[i], end.steps[i]);
        }
    }
    end.repository = carry.repository;
    end.events = carry.events;
    return end;
}

} // namespace workbench
