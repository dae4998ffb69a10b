// SPDX-License-Identifier: GPL-3.0-or-later
//
// oxa-sensors event: calls an event builder and shows the record that it writes.
#include <algorithm>
#include <memory>

#include "base/errors.h"
#include "base/json.h"
#include "base/output.h"
#include "base/table.h"
#include "base/text.h"
#include "commands/commands.h"
#include "events/sel_calls.h"
#include "events/sel_words.h"
#include "explain/explain.h"
#include "runtime/bmc_options.h"
#include "runtime/platform.h"
#include "sets/board.h"
#include "sets/run_options.h"
#include "sets/set_json.h"
#include "sets/static_set.h"
#include "simulator/simulator.h"

namespace workbench {
namespace {

struct EventOptions {
    std::vector<std::string> words; // builder, arguments
    bool list = false;
    std::string board, profile;
    uint32_t count = 1;
    BmcOptions bmc;
    bool trace = false, log = false, json = false;
};

struct Sent {
    const BuilderView *builder = nullptr;
    std::vector<uint32_t> arguments;
    bool written = false;
    SelBytes record{};
    std::vector<uint16_t> ids; // that the log gave
};

// ---- the list of builders --------------------------------------------------------------------------

std::string RenderBuilder(const BuilderView &builder) {
    std::string out = Signature(builder) + "\n    " + BuilderSummary(builder) + "\n";
    for (size_t n = 0; n < ArgumentCount(builder); ++n) {
        const auto &item = builder.ptItem[n];
        const char *range = item.ucBits == 8 ? " (0 to 255)" : item.bZeroOrOne ? " (others are refused)" : "";
        out += "      " + ValueName(item.eValue);
        out.append(std::max<size_t>(18 - ValueName(item.eValue).size(), 1), ' ');
        out += ArgumentMeaning(builder, n) + range + "\n";
    }
    return out;
}

std::string ListBuilders(const std::vector<std::string> &names) {
    std::string out;
    for (const std::string &name : names.empty() ? BuilderNames() : names)
        out += RenderBuilder(FindBuilder(name));
    return out;
}

std::string ListBuildersJson(const std::vector<std::string> &names) {
    Json out = Json::array();
    for (const std::string &name : names.empty() ? BuilderNames() : names) {
        const BuilderView &builder = FindBuilder(name);
        Json arguments = Json::array();
        for (size_t n = 0; n < ArgumentCount(builder); ++n)
            arguments.push_back({{"name", ValueName(builder.ptItem[n].eValue)},
                                 {"meaning", ArgumentMeaning(builder, n)},
                                 {"largest", LargestValue(builder.ptItem[n])}});
        out.push_back({{"name", name}, {"summary", BuilderSummary(builder)}, {"arguments", arguments}});
    }
    return Dump({{"builders", out}});
}

// ---- the platform ----------------------------------------------------------------------------------

// A board of which nothing is told has no sensor directory: lookups fail.
void StartPlatform(const EventOptions &options) {
    sim::Board board = options.board.empty() ? sim::Board{} : LoadBoardFor(options.board, "");
    const auto faults = options.board.empty() ? std::vector<sim::Fault>{} : BoardOf(options.board).faults;
    if (!options.profile.empty())
        board.custom_id = NamedProfile(options.profile).id;
    StartWith(std::move(board), faults, {});
}

// ---- the call --------------------------------------------------------------------------------------

// The line that says why, and what the BMC had to say.
std::string WhyItFailed() {
    std::string line, remark;
    for (const sim::Event &event : sim::Trace()) {
        if (event.kind == sim::Kind::kLog)
            line = OneLine(event.text);
        if (event.kind == sim::Kind::kNote && event.text.rfind("BMC: ", 0) == 0)
            remark = "; " + event.text;
    }
    return (line.empty() ? "it logged nothing" : "its last line: " + line) + remark;
}

Sent SendEvent(const EventOptions &options, const BuilderView &builder) {
    Sent sent;
    sent.builder = &builder;
    sent.arguments = ParseArguments(builder, {options.words.begin() + 1, options.words.end()});
    StartPlatform(options);
    uint32_t result = OXA_OK;
    for (uint32_t n = 0; n < options.count && result == OXA_OK; ++n)
        result = CallBuilder(builder, sent.arguments);
    PrintPlatformTrace(options.trace, options.log);
    sim::CheckStorage();
    sent.ids = sim::EventRecordIds();
    if (result != OXA_OK)
        throw SetError(CallText(builder, sent.arguments) + ": result " + Hex(result, 4) +
                       (sent.ids.empty() ? "" : " after " + std::to_string(sent.ids.size()) + " records") +
                       "; " + WhyItFailed());
    if (const auto violations = sim::Violations(); !violations.empty())
        throw SetError(BuilderName(builder) + " broke a rule: " + OneLine(Join(violations, "; ")));
    sent.written = !sim::EventLog().empty();
    if (sent.written)
        std::copy_n(sim::EventLog().front().begin(), SEL_RECORD_SIZE, sent.record.begin());
    return sent;
}

// What the builder asked of the platform, beside the session.
std::vector<std::string> Questions() {
    std::vector<std::string> out;
    for (const sim::Event &event : sim::Trace()) {
        if (event.kind != sim::Kind::kCall || event.function.rfind("MW_", 0) != 0)
            continue;
        const std::string line = sim::Format(event).substr(std::string("call ").size());
        if (std::find(out.begin(), out.end(), line) == out.end())
            out.push_back(line);
    }
    return out;
}

// ---- the result ------------------------------------------------------------------------------------

struct ByteGroup {
    unsigned offset, size;
    const char *name;
    const char *oem_name; // in records that begin with an OEM type
};
constexpr ByteGroup kGroups[] = {
    {0, 2, "record id", "record id"},
    {2, 1, "record type", "record type"},
    {3, 4, "time stamp", "time stamp"},
    {7, 1, "generator", "entity"},
    {8, 1, "generator LUN", "number"},
    {9, 1, "message revision", "message revision"},
    {10, 1, "sensor type", "sensor type"},
    {11, 1, "sensor number", "sensor number"},
    {12, 1, "direction, type", "direction, type"},
    {13, 1, "event data 1", "event data 1"},
    {14, 1, "event data 2", "event data 2"},
    {15, 1, "event data 3", "event data 3"},
};

std::vector<uint32_t> AllValues(const Sent &sent) {
    std::vector<uint32_t> values = sent.arguments;
    values.resize(sent.builder->ucItems, 0);
    return values;
}

std::vector<Field> RecordFields(const Sent &sent) {
    const auto origins = Origins(*sent.builder, AllValues(sent));
    const uint8_t type = sent.record[SEL_RECORD_TYPE];
    std::vector<Field> out;
    for (const ByteGroup &group : kGroups) {
        Field field{group.offset, group.size, type < 0xC0 ? group.name : group.oem_name, {}, ""};
        if (group.offset == SEL_RECORD_ID)
            field.set_by = "the event log";
        else if (group.offset == SEL_TIMESTAMP && !IsStamped(type)) {
            field.name = "slot, high first";
            field.set_by = "slotNum";
        } else if (group.offset == SEL_TIMESTAMP)
            field.set_by = "the event log";
        else
            field.set_by = origins[group.offset];
        out.push_back(field);
    }
    return out;
}

std::string RenderRecord(const Sent &sent, bool colour) {
    Table table({{"BYTE", true}, {"HEX"}, {"FIELD"}, {"SET BY"}});
    for (const Field &field : RecordFields(sent)) {
        const std::string last = field.size > 1 ? "-" + std::to_string(field.offset + field.size - 1) : "";
        table.Add({{std::to_string(field.offset) + last, Style::kDim},
                   {HexBytes(std::span(sent.record).subspan(field.offset, field.size))},
                   {field.name, Style::kBold},
                   {field.set_by}});
    }
    return table.Render(colour);
}

std::string WhereItWent(const EventOptions &options, const Sent &sent) {
    if (!sent.written)
        return "result 0, nothing is written: this machine does not report the event, profile " +
               ProfileName(sim::CurrentBoard().custom_id);
    std::string out = sent.ids.size() == 1
                          ? "sent, record " + std::to_string(sent.ids.front())
                          : "sent " + std::to_string(sent.ids.size()) + " times, records " +
                                std::to_string(sent.ids.front()) + " to " + std::to_string(sent.ids.back());
    return out + (options.bmc.Given() ? " of the BMC at " + options.bmc.address : "") + ", profile " +
           ProfileName(sim::CurrentBoard().custom_id);
}

std::string Render(const EventOptions &options, const Sent &sent, bool colour) {
    std::string out = Paint(CallText(*sent.builder, sent.arguments), Style::kBold, colour) + "\n" +
                      WhereItWent(options, sent) + "\n";
    if (const auto questions = Questions(); !questions.empty())
        out += "\nAsked\n  " + Join(questions, "\n  ") + "\n";
    if (!sent.written)
        return out;
    out += "\nRecord " + HexBytes(sent.record) + "\n" + RenderRecord(sent, colour);
    out += "\nStandard decoder  " + StandardText(sent.record) + "\n";
    out += "Meaning           " + Meaning(*sent.builder, AllValues(sent), sent.record) + "\n";
    return out;
}

Json RecordJson(const Sent &sent) {
    Json fields = Json::array();
    for (const Field &field : RecordFields(sent))
        fields.push_back({{"offset", field.offset},
                          {"size", field.size},
                          {"bytes", HexBytes(std::span(sent.record).subspan(field.offset, field.size))},
                          {"field", field.name},
                          {"set_by", field.set_by.empty() ? Json(nullptr) : Json(field.set_by)}});
    return {{"bytes", HexBytes(sent.record)},
            {"fields", fields},
            {"standard", StandardText(sent.record)},
            {"meaning", Meaning(*sent.builder, AllValues(sent), sent.record)}};
}

std::string RenderJson(const EventOptions &options, const Sent &sent) {
    Json arguments = Json::object();
    for (size_t n = 0; n < sent.arguments.size(); ++n)
        arguments[ValueName(sent.builder->ptItem[n].eValue)] = sent.arguments[n];
    Json out = {{"builder", BuilderName(*sent.builder)},
                {"arguments", arguments},
                {"profile", ProfileJson(sim::CurrentBoard().custom_id)},
                {"bmc", options.bmc.Given() ? Json(options.bmc.address) : Json(nullptr)},
                {"result", 0},
                {"record_ids", sent.ids},
                {"asked", Questions()},
                {"log", Json::array()},
                {"record", nullptr}};
    for (const sim::Event &event : sim::Logs())
        out["log"].push_back(OneLine(sim::Format(event)));
    if (sent.written)
        out["record"] = RecordJson(sent);
    return Dump(out);
}

void RunEvent(const EventOptions &options) {
    if (options.list)
        return PrintOut(options.json ? ListBuildersJson(options.words) : ListBuilders(options.words));
    if (options.words.empty())
        throw InputError("event: which builder? 'oxa-sensors event --list' names them");
    const BuilderView &builder = FindBuilder(options.words.front());
    if (const auto bmc = ChosenBmc(options.bmc))
        sim::UseBmc(*bmc);
    const Sent sent = SendEvent(options, builder);
    PrintOut(options.json ? RenderJson(options, sent) : Render(options, sent, ColourWanted()));
}

// A builder, then its arguments by name.
std::vector<std::string> CompleteCall(const GivenWords &given) {
    if (given.arguments.empty())
        return BuilderNames();
    const BuilderView &builder = FindBuilder(given.arguments.front());
    std::vector<std::string> out;
    for (size_t n = 0; n < ArgumentCount(builder); ++n)
        out.push_back(ValueName(builder.ptItem[n].eValue) + "=");
    return out;
}

std::string Footer() {
    std::string out = "Builders and their arguments, by position or as name=value, decimal or 0x...\n"
                      "(event --list [BUILDER] says what each is for):\n";
    for (const std::string &name : BuilderNames())
        out += "  " + Signature(FindBuilder(name)) + "\n";
    return out +
           "Exit status: 0 done, also when the machine does not report the event; 1 the builder failed; 2 "
           "wrong input.";
}

} // namespace

void AddEventCommand(Command &program) {
    Command command = program.AddCommand("event", "Call an event builder and show the record it writes");
    const auto options = std::make_shared<EventOptions>();
    command.AddOption("BUILDER ARGS", options->words, "Builder and its arguments")
        .Takes("")
        .Completes(CompleteCall);
    command.AddFlag("--list", options->list, "Say what builders and arguments are for, of all or of BUILDER");
    AddBoardOption(command, options->board,
                   "Board description (TOML); default: a board of which nothing is known");
    AddProfileOption(command, options->profile, "Customer profile; default: the board's");
    command.AddOption("--count", options->count, "Call the builder N times").Takes("N").Between(1, 1000000);
    AddBmcOptions(command, options->bmc, "Send to a BMC over RMCP+ (see scripts/try-bmc)");
    AddTraceOptions(command, options->trace, options->log);
    command.AddFlag("--json", options->json, "JSON with bytes, fields and log lines");
    command.Footer(Footer());
    command.Example("oxa-sensors event addDiskSEL 4 3 22 0 --board boards/base_48.toml");
    command.Runs([options] { RunEvent(*options); });
}

} // namespace workbench
