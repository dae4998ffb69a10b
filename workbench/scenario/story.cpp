// SPDX-License-Identifier: GPL-3.0-or-later
//
// What a story came to: judged against what it expects, and told in words.
#include <algorithm>

#include "base/table.h"
#include "base/text.h"
#include "scenario/scenario.h"

namespace workbench {
namespace {

std::string Text(const Json &json, const char *key) {
    return json.at(key).get<std::string>();
}

// ---- expectations ----------------------------------------------------------------------------------

class Judge {
public:
    Judge(const Expectation &expect, const Json &told) : expect_(expect), told_(told) {}

    std::vector<std::string> Differences() {
        const Json &outcomes = told_.at("outcomes");
        for (size_t i = 0; i < outcomes.size(); ++i)
            JudgeOutcome(i, outcomes[i]);
        JudgeCount("records", expect_.records);
        JudgeCount("events", expect_.events);
        std::vector<std::string> out;
        for (const Difference &difference : differences_)
            out.push_back((difference.subject.empty() ? "" : difference.subject + ": ") + difference.text +
                          (difference.times > 1 ? " (" + std::to_string(difference.times) + " times)" : ""));
        return out;
    }

private:
    struct Difference {
        std::string subject, text; // subject: of the first of its kind
        size_t times = 1;
    };

    void Differ(const std::string &subject, const std::string &is, const std::string &expected) {
        const std::string text = is + ", expected " + expected;
        for (Difference &known : differences_)
            if (known.text == text) {
                ++known.times;
                return;
            }
        differences_.push_back({subject, text});
    }

    void JudgeOutcome(size_t i, const Json &outcome) {
        const std::vector<std::string> &words = expect_.words;
        const std::string subject = Text(outcome, "subject");
        const std::string word = words.empty()       ? ""
                                 : words.size() == 1 ? words[0]
                                 : i < words.size()  ? words[i]
                                                     : "";
        if (!word.empty() && Text(outcome, "outcome") != word)
            return Differ(subject, Text(outcome, "outcome") + ", result " + Hex(outcome.at("code"), 4), word);
        if (expect_.code && outcome.at("code") != *expect_.code)
            Differ(subject, "result " + Hex(outcome.at("code"), 4), Hex(*expect_.code, 4));
        if (expect_.name)
            JudgeName(subject, outcome);
        for (const auto &[key, raw] : expect_.thresholds)
            JudgeThreshold(subject, outcome, key, raw);
        if (expect_.log)
            JudgeLog(subject, outcome);
    }

    void JudgeCount(const char *what, const std::optional<uint32_t> &expected) {
        if (expected && told_.at(what) != *expected)
            Differ("", told_.at(what).dump() + " " + what, std::to_string(*expected));
    }

    void JudgeName(const std::string &subject, const Json &outcome) {
        const bool has = !outcome.at("record").is_null();
        const std::string name = has ? Text(outcome["record"], "name") : "no record";
        if (name != *expect_.name)
            Differ(subject, name, *expect_.name);
    }

    void JudgeThreshold(const std::string &subject, const Json &outcome, const std::string &key,
                        uint8_t raw) {
        const Json &record = outcome.at("record");
        const bool may = !record.is_null() && !record.at("thresholds").is_null();
        const Json threshold = may ? record["thresholds"].at(key) : Json();
        const std::string is = threshold.is_null() ? "none" : threshold["raw"].dump();
        if (is != std::to_string(raw))
            Differ(subject, "threshold " + key + " " + is, std::to_string(raw));
    }

    void JudgeLog(const std::string &subject, const Json &outcome) {
        for (const Json &line : outcome.at("log"))
            if (line.get<std::string>().find(*expect_.log) != std::string::npos)
                return;
        Differ(subject, "no such line in the log", "\"" + *expect_.log + "\"");
    }

    const Expectation &expect_;
    const Json &told_;
    std::vector<Difference> differences_;
};

// ---- words -----------------------------------------------------------------------------------------

// Outcomes of one kind that follow each other are told as one.
bool Alike(const Json &a, const Json &b) {
    return a.at("outcome") == b.at("outcome") && a.at("code") == b.at("code") && a.at("why") == b.at("why") &&
           a.at("record").is_null() == b.at("record").is_null();
}

std::string FirstToLast(const Json &first, const Json &last, const char *key) {
    const std::string a = first.at(key).is_string() ? Text(first, key) : first.at(key).dump();
    const std::string b = last.at(key).is_string() ? Text(last, key) : last.at(key).dump();
    return a == b ? a : a + " to " + b;
}

std::string GroupText(std::span<const Json> group) {
    const Json &first = group.front(), &last = group.back();
    if (group.size() == 1) {
        std::string out;
        if (const std::string subject = Text(first, "subject"); !subject.empty())
            out += "    " + subject + "\n";
        if (Text(first, "outcome") != "done")
            out += "    " + OutcomeLine(first) + "\n";
        return out;
    }
    std::string out = "    " + Text(first, "subject") + "\n    to " + Text(last, "subject") + "\n    " +
                      std::to_string(group.size()) + " times " + Text(first, "outcome");
    if (first.at("code") != 0)
        out += ", result " + Hex(first.at("code"), 4);
    if (!first.at("record").is_null())
        out += ": records " + FirstToLast(first["record"], last["record"], "record_id") + ", " +
               FirstToLast(first["record"], last["record"], "name");
    if (const std::string why = Text(first, "why"); !why.empty())
        out += ": " + why;
    return out + "\n";
}

std::string LogText(const Json &outcome) {
    std::string out;
    for (const Json &line : outcome.at("recorded"))
        out += "      " + line.get<std::string>() + "\n";
    for (const Json &line : outcome.at("log"))
        out += "      | " + line.get<std::string>() + "\n";
    return out;
}

std::string OutcomesText(const Json &outcomes, bool log) {
    const std::vector<Json> all(outcomes.begin(), outcomes.end());
    std::string out;
    for (size_t begin = 0, end; begin < all.size(); begin = end) {
        end = begin + 1;
        while (!log && end < all.size() && Alike(all[begin], all[end]))
            ++end;
        out += GroupText(std::span(all).subspan(begin, end - begin));
        if (log)
            out += LogText(all[begin]);
    }
    return out;
}

std::string Heading(const Step &step, const Json &told, bool colour) {
    const std::string number = std::to_string(told.at("step").get<size_t>() + 1);
    std::string action = step.action;
    std::replace(action.begin(), action.end(), '_', ' ');
    const std::string what = step.name.empty() ? action : step.name;
    std::string out = Paint("step " + number + ": " + what, Style::kBold, colour);
    if (told.at("expected").is_boolean())
        out += told["expected"].get<bool>() ? "  [as expected]"
                                            : "  " + Paint("[NOT as expected]", Style::kHot, colour);
    return out + "\n";
}

} // namespace

void JudgeStep(const Step &step, Json &told) {
    told["expected"] = nullptr;
    told["unexpected"] = Json::array();
    if (!step.expect)
        return;
    told["unexpected"] = Judge(*step.expect, told).Differences();
    told["expected"] = told["unexpected"].empty();
}

std::string StepsText(const Scenario &scenario, const Json &steps, bool log, bool colour) {
    std::string out;
    for (size_t i = 0; i < steps.size(); ++i) {
        out += Heading(scenario.steps[i], steps[i], colour) + OutcomesText(steps[i].at("outcomes"), log);
        for (const Json &text : steps[i].at("unexpected"))
            out += "    ! " + text.get<std::string>() + "\n";
        out += "\n";
    }
    return out;
}

} // namespace workbench
