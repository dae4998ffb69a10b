// SPDX-License-Identifier: GPL-3.0-or-later
//
// oxa-sensors add and remove: one call of the library for one sensor description.
#include <algorithm>
#include <map>
#include <memory>
#include <optional>

#include "base/errors.h"
#include "base/notes.h"
#include "base/output.h"
#include "base/table.h"
#include "base/text.h"
#include "commands/commands.h"
#include "runtime/bmc_options.h"
#include "runtime/calls.h"
#include "runtime/platform.h"
#include "runtime/root.h"
#include "sets/board.h"
#include "sets/run_options.h"
#include "sets/set_json.h"
#include "sets/static_set.h"

namespace workbench {
namespace {

struct CallOptions {
    bool adds = true;
    std::string board, profile;
    std::string description_path;
    std::map<std::string, std::string> words; // option values by key, as given
    std::string root;
    BmcOptions bmc;
    bool record = true, list = false;
    bool json = false, trace = false, log = false;
};

// The file first, options over it.
DescriptionDraft Described(const CallOptions &options) {
    DescriptionDraft draft;
    if (!options.description_path.empty())
        draft = LoadDescription(options.description_path);
    for (const DescriptionKey &key : DescriptionKeys())
        if (const auto found = options.words.find(key.key); found != options.words.end())
            SetFromWord(draft, key.key, found->second);
    if (!options.adds && !draft.sensor_class)
        draft.sensor_class = kPsuFruClass; // nothing else can be removed
    if (!options.adds && !NamesWhatGoes(draft))
        throw InputError("no power supply: give --slot or a --description with the key 'slot'");
    return draft;
}

bool OnlyLists(const CallOptions &options) {
    return options.list && options.description_path.empty() && options.words.empty();
}

// ---- the platform ----------------------------------------------------------------------------------

// The first call on a root directory lays the board's files down, later ones find what the library made of them.
void StartPlatform(const CallOptions &options, std::optional<Root> &root) {
    const std::optional<sim::Bmc> bmc = ChosenBmc(options.bmc);
    sim::Board board = LoadBoardFor(options.board, options.profile);
    RepositoryState repository;
    if (root && root->Used()) {
        board.files.clear();
        repository = root->Repository();
    }
    if (root)
        root->Remember(board);
    if (bmc)
        sim::UseBmc(*bmc);
    StartWith(std::move(board), BoardOf(options.board).faults, repository);
}

// ---- the result ------------------------------------------------------------------------------------

std::string Line(const std::string &label, const std::string &text) {
    std::string out = "  " + label;
    out.append(16 - std::min<size_t>(label.size(), 15), ' ');
    return out + text + "\n";
}

std::string RenderOutcome(const CallOptions &options, const Outcome &outcome, bool colour) {
    std::string out = Paint(OutcomeLine(OutcomeJson(outcome)), Style::kBold, colour) + "\n";
    out +=
        Line("machine", "board " + options.board + ", profile " + ProfileName(sim::CurrentBoard().custom_id));
    out += Line("description", outcome.subject);
    for (const std::string &recorded : outcome.recorded) {
        const size_t colon = recorded.find(": ");
        out += Line(recorded.substr(0, colon), recorded.substr(colon + 2));
    }
    if (outcome.record)
        for (size_t at = 0; at < outcome.record->bytes.size(); at += 16)
            out += Line(at == 0 ? "record" : "",
                        HexBytes(std::span(outcome.record->bytes)
                                     .subspan(at, std::min<size_t>(16, outcome.record->bytes.size() - at))));
    return out;
}

std::string RenderRepository(bool colour) {
    const std::vector<RecordView> records = ViewRecords(sim::Repository());
    return "Repository: " + CountText(records) + ", profile " + ProfileName(sim::CurrentBoard().custom_id) +
           "\n" + (records.empty() ? "" : RecordTable(records, colour));
}

std::string Render(const CallOptions &options, const std::optional<Outcome> &outcome) {
    const bool colour = ColourWanted();
    std::string out = outcome ? RenderOutcome(options, *outcome, colour) : "";
    if (options.list)
        out += (out.empty() ? "" : "\n") + RenderRepository(colour);
    return out;
}

std::string RenderJson(const CallOptions &options, const std::optional<Outcome> &outcome,
                       const SpecificSensorParam &param) {
    Json out = {{"board", options.board},
                {"profile", ProfileJson(sim::CurrentBoard().custom_id)},
                {"bmc", options.bmc.Given() ? Json(options.bmc.address) : Json(nullptr)}};
    if (outcome) {
        out["description"] = DescriptionJson(param);
        out.update(OutcomeJson(*outcome));
    }
    if (options.list) {
        out["repository"] = Json::array();
        for (const RecordView &record : ViewRecords(sim::Repository()))
            out["repository"].push_back(RecordJson(record));
    }
    return Dump(out);
}

bool Good(const Outcome &outcome) {
    return outcome.word == OutcomeWords(outcome.action).front();
}

// "UC 90 is above UNR 80": the library takes limits as they come.  Bytes are compared as numbers with and without a sign,
// since what is read decides; limits that rise as either are let through.
std::string WhereLimitsFall(const SpecificSensorParam &param) {
    const struct {
        const char *name;
        unsigned bit;
        uint8_t raw;
    } limits[] = {{"LNR", THRESH_BIT_LNR, param.ucLNR}, {"LC", THRESH_BIT_LC, param.ucLC},
                  {"LNC", THRESH_BIT_LNC, param.ucLNC}, {"UNC", THRESH_BIT_UNC, param.ucUNC},
                  {"UC", THRESH_BIT_UC, param.ucUC},    {"UNR", THRESH_BIT_UNR, param.ucUNR}};
    std::string plain, with_sign;
    auto last = std::end(limits);
    for (auto limit = std::begin(limits); limit != std::end(limits); ++limit) {
        if (!(param.wBitmap & limit->bit))
            continue;
        if (last != std::end(limits)) {
            const std::string text = std::string(last->name) + " " + std::to_string(last->raw) +
                                     " is above " + limit->name + " " + std::to_string(limit->raw);
            if (last->raw > limit->raw && plain.empty())
                plain = text;
            if (static_cast<int8_t>(last->raw) > static_cast<int8_t>(limit->raw) && with_sign.empty())
                with_sign = text;
        }
        last = limit;
    }
    return with_sign.empty() ? "" : plain;
}

std::optional<Outcome> Call(const CallOptions &options, const SpecificSensorParam &param,
                            std::optional<Root> &root) {
    StartPlatform(options, root);
    StartLibrary();
    std::optional<Outcome> outcome;
    if (!OnlyLists(options))
        outcome = options.adds ? AddSensor(param, options.record) : RemoveSensor(param);
    PrintPlatformTrace(options.trace, options.log);
    sim::CheckStorage();
    if (const auto violations = sim::Violations(); !violations.empty())
        throw SetError("the call broke a rule: " + OneLine(Join(violations, "; ")));
    if (root)
        root->Save(CurrentRepository());
    return outcome;
}

void RunCall(const CallOptions &options) {
    if (options.list && ChosenBmc(options.bmc))
        throw InputError("--list shows the repository in memory, not the BMC's (ipmitool ... sdr elist all)");
    SpecificSensorParam param{};
    if (!OnlyLists(options))
        param = Finish(Described(options));
    if (const std::string where = WhereLimitsFall(param); !where.empty())
        TellNote("the limits do not rise: " + where);
    LoadBoardFor(options.board, options.profile); // what is wrong there is told before a folder is made
    std::optional<Root> root;
    if (!options.root.empty())
        root.emplace(options.root, options.bmc.Given());
    std::optional<Outcome> outcome;
    try {
        outcome = Call(options, param, root);
    } catch (const std::exception &) {
        if (root)
            root->PutBack();
        throw;
    }
    PrintOut(options.json ? RenderJson(options, outcome, param) : Render(options, outcome));
    if (outcome && !Good(*outcome))
        throw ExitStatus(1);
}

// ---- the command line ------------------------------------------------------------------------------

void AddDescriptionOptions(Command &command, const std::shared_ptr<CallOptions> &options) {
    command
        .AddOption("--description", options->description_path,
                   "Take the description from a TOML table; options go over it")
        .Takes("FILE")
        .InGroup("Sensor description");
    for (const DescriptionKey &key : DescriptionKeys()) {
        std::string name = "--" + key.key;
        std::replace(name.begin(), name.end(), '_', '-');
        const std::string type = key.key == "class" || key.key == "device_type" ? "WORD|N"
                                 : key.key == "bitmap"                          ? "LIST|N"
                                                                                : "N";
        command
            .AddOption(
                name, [options, key = key.key](const std::string &word) { options->words[key] = word; },
                key.meaning)
            .Takes(type)
            .InGroup("Sensor description")
            .Completes([key = key.key](const GivenWords &) {
                return key == "class"         ? ClassWords()
                       : key == "device_type" ? DeviceTypeWords()
                                              : std::vector<std::string>{};
            });
    }
}

std::string Footer(bool adds) {
    std::string out;
    const auto words = [&](const std::string &title, const std::vector<std::string> &list) {
        out += title + "\n";
        for (const std::string &line : Wrap(Join(list, ", "), 100))
            out += "  " + line + "\n";
    };
    words("Words for --class:", ClassWords());
    words("Words for --device-type:", DeviceTypeWords());
    return out + (adds ? "Exit status: 0 added; 1 the library did not add it; 2 wrong input."
                       : "Exit status: 0 removed; 1 the library did not remove it; 2 wrong input.");
}

void AddCall(Command &program, bool adds) {
    Command command = program.AddCommand(adds ? "add" : "remove",
                                         adds ? "Add one sensor at run time and show what came of it"
                                              : "Remove the FRU locator of a power supply");
    const auto options = std::make_shared<CallOptions>();
    options->adds = adds;
    AddBoardOption(command, options->board, "Board description (TOML)").Required();
    AddProfileOption(command, options->profile, "Customer profile; default: the board's");
    AddDescriptionOptions(command, options);
    command
        .AddOption("--root", options->root,
                   "Keep the library's files and the repository in DIR between calls")
        .Takes("DIR");
    if (adds)
        command.AddFlag("--record,!--no-record", options->record,
                        "Do what the library's caller does after an add: write the record file or the "
                        "extended store (default)");
    command.AddFlag("--list", options->list,
                    "Show the repository afterwards; without a description only that");
    AddBmcOptions(command, options->bmc, "The session leads to a BMC over RMCP+");
    AddTraceOptions(command, options->trace, options->log);
    command.AddFlag("--json", options->json, "JSON with outcome, record and log lines");
    command.Footer(Footer(adds));
    command.Example(
        adds
            ? "oxa-sensors add --board boards/base_48.toml --class temperature --device-type gpu --slot 1 --uc 90"
            : "oxa-sensors add --board boards/base_48.toml --class psu-fru --slot 1 --root bmc && "
              "oxa-sensors remove --board boards/base_48.toml --slot 1 --root bmc");
    command.Runs([options] { RunCall(*options); });
}

} // namespace

void AddAddRemoveCommands(Command &program) {
    AddCall(program, true);
    AddCall(program, false);
}

} // namespace workbench
