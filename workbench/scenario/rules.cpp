// SPDX-License-Identifier: GPL-3.0-or-later
#include "scenario/rules.h"

#include <algorithm>

#include "runtime/description_rules.h"
#include "scenario/schema.h"

namespace workbench {
namespace {

using namespace sim::rules;

constexpr size_t kMostSteps = 10000;
constexpr size_t kMostInStep = 255;
constexpr char kTrueSchema[] = R"({"const": true})";

Reader<uint32_t> ProfileReader() {
    Words<uint32_t> words;
    for (const Profile *profile : AllProfiles())
        words.emplace_back(profile->name, profile->id);
    return NumberOr(words);
}

// "1-24", 3, or a list of such.
Rule Slots(std::optional<std::vector<uint8_t>> &target) {
    auto read = [&target](const Where &where, const toml::node &node) {
        if (node.is_array()) {
            target = ReadNumberList(where, node, "slot", std::nullopt);
            return;
        }
        toml::array list;
        node.visit([&](const auto &value) { list.push_back(value); });
        try {
            target = ReadNumberList(where, list, "slot", std::nullopt);
        } catch (const sim::BoardError &) { // the copy has no line
            Mismatch(where, node, "a slot number, \"1-24\", or " + NumberListText("slot"));
        }
    };
    return {.key = "slots", .expected = NumberListText("slot"), .read = read, .schema = [] {
                const std::string number = "(" + schema::NumberPattern(0, 255) + ")";
                return schema::AnyOf({schema::Integer(0, 255), schema::Pattern(number + "(-" + number + ")?"),
                                      schema::NumberList(255)});
            }};
}

std::string TextsSchema() {
    const std::string text = Text(1, 255).schema;
    return schema::AnyOf({text, R"({"type": "array", "minItems": 1, "items": )" + text + "}"});
}

Rule Texts(const std::string &key, std::vector<std::string> &target, const std::string &expected) {
    auto read = [=, &target](const Where &where, const toml::node &node) {
        const Reader<std::string> text{expected, Text(1, 255).parse};
        const auto *list = node.as_array();
        if (list == nullptr)
            target.push_back(text.Get(where, node));
        else
            for (const toml::node &element : *list)
                target.push_back(text.Get(where, element));
        if (target.empty())
            Mismatch(where, node, expected);
    };
    return {.key = key, .expected = expected, .read = read, .schema = TextsSchema};
}

// ---- what happens ----------------------------------------------------------------------------------

std::string ChangeSchema() {
    sim::rules::Draft sample;
    Rules rules = FileRules(sample);
    std::erase_if(rules, [](const Rule &rule) { return rule.key == "fault"; });
    for (Rule &rule : rules)
        if (rule.key == "board") {
            std::erase_if(
                rule.inside, [](const Rule &inner) { return inner.key == "custom_id"; });
            rule.schema = [inside = rule.inside] { return schema::Table(inside); };
        }
    return schema::Table(rules);
}

// The keys of a board file; what the story itself decides is not among them.
Rule Change(StepDraft &draft) {
    auto read = [&draft](const Where &where, const toml::node &node) {
        const toml::table &table = NeedTable(where, node);
        ReadTable(where.Inside(), table, FileRules(draft.change_draft));
        if (table.contains("fault"))
            Fail(where, PlaceOf(table, "fault"), "a change sets no faults", "give a step with 'fault'");
        const auto *board = table.get_as<toml::table>("board");
        if (board != nullptr && board->contains("custom_id"))
            Fail(where, PlaceOf(*board, "custom_id"), "a running machine does not change its profile",
                 "give a step with restart = { profile = \"...\" }");
        draft.change = &table;
    };
    return {.key = "change", .expected = "tables of a board file", .read = read, .schema = ChangeSchema};
}

Rule Restart(StepDraft &draft) {
    auto read = [&draft](const Where &where, const toml::node &node) {
        if (const auto *flag = node.as_boolean(); flag != nullptr && flag->get())
            return;
        if (!node.is_table())
            Mismatch(where, node, "true or { profile = \"...\" }");
        ReadTable(where.Inside(), *node.as_table(), {Value("profile", draft.profile, ProfileReader())});
    };
    return {
        .key = "restart", .expected = "true or { profile = \"...\" }", .read = read, .schema = [] {
            std::optional<uint32_t> sample;
            return schema::AnyOf({kTrueSchema, schema::Table({Value("profile", sample, ProfileReader())})});
        }};
}

Rules KillRules(Kill &kill) {
    return {Value("change", kill.change, Number<uint32_t>(1, 1000000)),
            Value("write", kill.write, Number<uint32_t>(1, 1000000)),
            Value("percent", kill.percent, Number<uint32_t>(0, 100))};
}

Rule KillIn(std::optional<Kill> &target) {
    const std::string expected = "{ change = N } or { write = N, percent = N }";
    auto read = [=, &target](const Where &where, const toml::node &node) {
        Kill kill;
        ReadTable(where.Inside(), NeedTable(where, node), KillRules(kill));
        if ((kill.change == 0) == (kill.write == 0) ||
            (kill.change != 0 && node.as_table()->contains("percent")))
            Mismatch(where, node, expected);
        target = kill;
    };
    Kill sample;
    return {.key = "kill", .expected = expected, .read = read, .inside = KillRules(sample), .schema = [] {
                Kill any;
                return schema::Table(KillRules(any));
            }};
}

Rule OnlyTrue(const std::string &key) {
    return {.key = key,
            .expected = "true",
            .read =
                [](const Where &where, const toml::node &node) {
                    if (const auto *flag = node.as_boolean(); flag == nullptr || !flag->get())
                        Mismatch(where, node, "true");
                },
            .schema = [] { return kTrueSchema; }};
}

// Faults have the keys that they have in a board file.
Rule FaultRule(Draft &draft) {
    Rules rules = FileRules(draft);
    const auto found =
        std::find_if(rules.begin(), rules.end(), [](const Rule &rule) { return rule.key == "fault"; });
    return {.key = "fault",
            .expected = found->expected,
            .read = found->read,
            .inside = found->inside,
            .schema = found->schema};
}

Rules ThresholdsRules(ThresholdsDraft &draft) {
    return {
        Required(Value("sensor", draft.sensor, Text(1, 16))),
        Value("unr", draft.unr),
        Value("uc", draft.uc),
        Value("unc", draft.unc),
        Value("lnr", draft.lnr),
        Value("lc", draft.lc),
        Value("lnc", draft.lnc),
        Value("mask", draft.mask, ThresholdBits()),
    };
}

// ---- what is expected ------------------------------------------------------------------------------

Rule RawThreshold(const std::string &key, Expectation &expect) {
    auto read = [=, &expect](const Where &where, const toml::node &node) {
        expect.thresholds.emplace_back(key, Number<uint8_t>().Get(where, node));
    };
    return {.key = key, .expected = Number<uint8_t>().expected, .read = read, .schema = [] {
                return schema::Integer(0, 255);
            }};
}

Rules ExpectationRules(Expectation &expect) {
    Rules rules = {
        Texts("outcome", expect.words, "an outcome such as \"added\", or a list of them"),
        Value("code", expect.code),
        Value("name", expect.name, Text(1, 16)),
        Value("records", expect.records),
        Value("events", expect.events),
        Value("log", expect.log, Text(1, 255)),
    };
    for (const char *key : {"unr", "uc", "unc", "lnr", "lc", "lnc"})
        rules.push_back(RawThreshold(key, expect));
    return rules;
}

Rule Expect(std::optional<Expectation> &target) {
    const std::string expected = "an outcome such as \"added\", a list of them, or a table";
    auto read = [=, &target](const Where &where, const toml::node &node) {
        Expectation expect;
        if (const auto *table = node.as_table())
            ReadTable(where.Inside(), *table, ExpectationRules(expect));
        else
            Texts("expect", expect.words, expected).read(where, node);
        target = expect;
    };
    return {.key = "expect", .expected = expected, .read = read, .schema = [] {
                Expectation sample;
                return schema::AnyOf({TextsSchema(), schema::Table(ExpectationRules(sample))});
            }};
}

} // namespace

constexpr const char *kListed[] = {"add", "remove", "fault", "thresholds"};

std::vector<std::string> ActionKeys() {
    return {"add", "remove", "change", "thresholds", "restart", "fault", "clear_faults", "event"};
}

Rules StepRules(StepDraft &draft) {
    return {
        Value("name", draft.name, Text(0, 255)),
        List("add", draft.add, DescriptionRules, kMostInStep),
        List("remove", draft.remove, DescriptionRules, kMostInStep),
        Slots(draft.slots),
        Value("repeat", draft.repeat, Number<uint32_t>(1, 10000)),
        Value("record", draft.record, Flag()),
        Change(draft),
        List("thresholds", draft.thresholds, ThresholdsRules, kMostInStep),
        Restart(draft),
        FaultRule(draft.fault_draft),
        OnlyTrue("clear_faults"),
        Texts("event", draft.events, "a builder and its arguments, or a list of such texts"),
        KillIn(draft.kill),
        Expect(draft.expect),
    };
}

// One action in every step; where several tables may stand, a single one may stand too (see ListSingleTables).
static std::string StepsSchema() {
    StepDraft sample;
    Rules rules = StepRules(sample);
    for (Rule &rule : rules)
        if (std::find(std::begin(kListed), std::end(kListed), rule.key) != std::end(kListed))
            rule.schema = [list = rule.schema, one = schema::Table(rule.inside)] {
                return schema::AnyOf({one, list()});
            };
    std::string step = schema::Table(rules), actions;
    for (const std::string &action : ActionKeys())
        actions += (actions.empty() ? "" : ", ") + (R"({"required": [)" + schema::Quoted(action) + "]}");
    step.insert(step.size() - 1, R"(, "oneOf": [)" + actions + "]");
    return schema::ListOf(step, kMostSteps);
}

Rules ScenarioRules(ScenarioDraft &draft) {
    auto read = [&draft](const Where &where, const toml::node &node) {
        const std::string expected = "[[step]] tables, at most " + std::to_string(kMostSteps);
        const auto *list = node.as_array();
        if (list == nullptr || list->size() > kMostSteps)
            Mismatch(where, node, expected);
        for (const toml::node &element : *list) {
            if (!element.is_table())
                Mismatch(where, element, expected);
            draft.steps.push_back(element.as_table());
        }
    };
    return {
        Value("name", draft.name, Text(0, 255)),
        Required(Value("board", draft.board, Text(1, 4095))),
        Value("profile", draft.profile, ProfileReader()),
        Value("record", draft.record),
        Required({.key = "step", .expected = "[[step]] tables", .read = read, .schema = StepsSchema}),
    };
}

std::string StorySchema() {
    ScenarioDraft draft; // only its keys are looked at
    return schema::Table(ScenarioRules(draft));
}

std::vector<UserThresholds> Settled(const std::vector<ThresholdsDraft> &drafts) {
    std::vector<UserThresholds> out;
    for (const ThresholdsDraft &draft : drafts) {
        UserThresholds thresholds;
        thresholds.sensor = draft.sensor;
        const std::pair<const std::optional<uint8_t> *, unsigned> all[] = {
            {&draft.unr, THRESH_BIT_UNR}, {&draft.uc, THRESH_BIT_UC}, {&draft.unc, THRESH_BIT_UNC},
            {&draft.lnr, THRESH_BIT_LNR}, {&draft.lc, THRESH_BIT_LC}, {&draft.lnc, THRESH_BIT_LNC},
        };
        unsigned given = 0;
        for (size_t i = 0; i < std::size(all); ++i) {
            thresholds.values[i] = all[i].first->value_or(0);
            given |= all[i].first->has_value() ? all[i].second : 0;
        }
        thresholds.mask = draft.mask.value_or(static_cast<uint16_t>(given));
        out.push_back(thresholds);
    }
    return out;
}

void ListSingleTables(toml::table &file) {
    auto *steps = file.get_as<toml::array>("step");
    if (steps == nullptr)
        return;
    for (toml::node &step : *steps)
        for (const char *key : kListed) {
            auto *table = step.is_table() ? step.as_table()->get_as<toml::table>(key) : nullptr;
            if (table == nullptr)
                continue;
            toml::array list;
            list.push_back(std::move(*table));
            step.as_table()->insert_or_assign(step.as_table()->find(key)->first, std::move(list));
        }
}

void Merge(toml::table &into, const toml::table &from) {
    for (const auto &[key, node] : from) {
        auto *inner = into.get_as<toml::table>(key.str());
        if (inner != nullptr && node.is_table())
            Merge(*inner, *node.as_table());
        else
            node.visit([&, &name = key](const auto &value) { into.insert_or_assign(name.str(), value); });
    }
}

} // namespace workbench
