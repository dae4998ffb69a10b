// SPDX-License-Identifier: GPL-3.0-or-later
//
// oxa-sensors doctor: what is wrong with the files of a machine.
#include "doctor/doctor.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string_view>

#include "base/errors.h"
#include "base/input.h"
#include "base/json.h"
#include "base/output.h"
#include "base/table.h"
#include "base/text.h"
#include "commands/commands.h"
#include "runtime/bmc.h"
#include "runtime/bmc_options.h"
#include "runtime/platform.h"
#include "runtime/records.h"
#include "sets/run_options.h"
#include "sets/set_json.h"
#include "sets/static_set.h"
#include "thresholds/image.h"

namespace workbench {
namespace {

constexpr size_t kFindingWidth = 100;

struct DoctorOptions {
    std::string root, repair, repository;
    LoginOptions login;
    std::string board, profile;
    bool json = false;
};

struct DoctorReport {
    Diagnosis diagnosis;
    std::vector<std::string> next_start;
    uint32_t custom_id = 0;
};

// The static set of the board, under the profile that is given or the board's own.
void AddStaticSet(const DoctorOptions &options, Patient &patient) {
    const std::string profile = SettledProfile(options.profile, options.board);
    patient.custom_id = NamedProfile(profile).id;
    patient.static_set.emplace();
    if (NamedProfile(profile).driver == nullptr)
        return; // all its sensors are added at run time
    try {
        for (const Sensor &sensor : BuildStaticSetApart({options.board, profile}).sensors)
            patient.static_set->push_back(sensor.record);
    } catch (const SetError &error) { // nothing to hold the files against
        throw InputError(error.what());
    }
}

// What a BMC holds, as a file of records.
std::string RecordsOfBmc(const DoctorOptions &options, const std::string &address) {
    RepositoryState held;
    try {
        held.records = ReadRepositoryOf(BmcAt(address, options.login, options.repository));
    } catch (const SetError &error) { // nothing to hold the files against
        throw InputError(options.repository + ": " + error.what());
    }
    std::erase_if(held.records,
                  [](const sim::RepositoryRecord &record) { // others' may be longer than any of ours
                      return RecordSize(record.bytes) == 0 || RecordSize(record.bytes) > SDR_SLOT_SIZE;
                  });
    return RecordsBytes(held);
}

// A file of records, or what a BMC holds, in place of repository.sdr.
void TakeRepository(const DoctorOptions &options, Machine &machine) {
    constexpr std::string_view kScheme = "bmc://";
    const std::string &from = options.repository;
    std::string records;
    if (from.starts_with(kScheme)) {
        records = RecordsOfBmc(options, from.substr(kScheme.size()));
    } else {
        std::error_code ignored;
        std::ifstream file(from, std::ios::binary);
        if (!std::filesystem::is_regular_file(from, ignored) || !file)
            throw InputError("--repository " + from + ": no file that can be read, nor bmc://HOST[:PORT]");
        records = ReadAllOf(file, from);
    }
    machine[kRepository].path = from;
    machine[kRepository].Put({records.begin(), records.end()});
}

Patient Take(const DoctorOptions &options) {
    Patient patient{ReadMachine(options.root)};
    if (!options.repository.empty())
        TakeRepository(options, patient.machine);
    if (!options.repair.empty())
        CheckNew(options.repair);
    if (!options.board.empty())
        AddStaticSet(options, patient);
    else if (!options.profile.empty())
        patient.custom_id = NamedProfile(options.profile).id;
    return patient;
}

DoctorReport Examine(const Patient &patient) {
    sim::KeepFilesInMemory(); // nothing is written beside the copy
    StartWith({}, {}, {});
    sim::SetTracing(false);
    DoctorReport report{Diagnose(patient), {}, 0};
    sim::SetTracing(true);
    report.custom_id =
        patient.custom_id.value_or(ViewThresholdImage(patient.machine[kLimits].bytes).custom_id);
    report.next_start = NextStart(patient.machine, report.custom_id);
    return report;
}

// ---- telling it ------------------------------------------------------------------------------------

std::string FilesText(const Patient &patient, const Diagnosis &diagnosis) {
    Table table({{"FILE"}, {"BYTES", true}, {"HOLDS"}});
    for (size_t i = 0; i < kFiles; ++i) {
        const MachineFile &file = patient.machine.files[i];
        table.Add({{file.path, Style::kBold},
                   {file.Has() ? std::to_string(file.Size()) : "-"},
                   {diagnosis.holds[i]}});
    }
    return table.Render(ColourWanted());
}

void AddLine(std::string &out, const std::string &label, const std::string &text) {
    std::string head = "    " + label + ": ";
    for (const std::string &line : Wrap(text, kFindingWidth - head.size())) {
        out += head + line + "\n";
        head = std::string(head.size(), ' ');
    }
}

std::string FindingText(const Patient &patient, const FileFinding &finding) {
    std::string out = Paint(finding.rule, Style::kHot, ColourWanted()) + "  " +
                      patient.machine.files[finding.file].path +
                      (finding.place.empty() ? "" : ", " + finding.place) + ": " + finding.text + "\n";
    AddLine(out, "library", finding.then);
    AddLine(out, "mended", finding.mend.empty() ? "as it is" : finding.mend);
    return out;
}

std::string Count(const DoctorReport &report) {
    const size_t found = report.diagnosis.findings.size();
    const auto left = std::count_if(report.diagnosis.findings.begin(), report.diagnosis.findings.end(),
                                    [](const FileFinding &finding) { return finding.mend.empty(); });
    if (found == 0)
        return "nothing found";
    return std::to_string(found) + (found == 1 ? " finding" : " findings") +
           (left == 0 ? "" : ", " + std::to_string(left) + " of them cannot be mended in the files");
}

std::string Text(const DoctorOptions &options, const Patient &patient, const DoctorReport &report) {
    std::string out = FilesText(patient, report.diagnosis) + "\n";
    for (const FileFinding &finding : report.diagnosis.findings)
        out += FindingText(patient, finding) + "\n";
    out += "At its next start, under " + SavedUnder(report.custom_id) + ", the library\n";
    for (const std::string &line : report.next_start) {
        std::string head = "- ";
        for (const std::string &part : Wrap(line, kFindingWidth)) {
            out += head + part + "\n";
            head = "  ";
        }
    }
    return out + "\n" + options.root + ": " + Count(report) +
           (patient.machine[kRepository].Has()
                ? ""
                : "; no repository.sdr, so nothing is held against the repository") +
           (options.repair.empty() ? "" : "; a mended copy is in " + options.repair) + "\n";
}

Json TextOrNull(const std::string &text) {
    return text.empty() ? Json(nullptr) : Json(text);
}

std::string JsonText(const DoctorOptions &options, const Patient &patient, const DoctorReport &report) {
    Json out{{"root", options.root},
             {"profile", ProfileJson(report.custom_id)},
             {"board", TextOrNull(options.board)},
             {"files", Json::array()},
             {"findings", Json::array()},
             {"next_start", report.next_start},
             {"repaired", TextOrNull(options.repair)}};
    for (size_t i = 0; i < kFiles; ++i) {
        const MachineFile &file = patient.machine.files[i];
        out["files"].push_back({{"file", file.path},
                                {"bytes", file.Has() ? Json(file.Size()) : Json(nullptr)},
                                {"holds", report.diagnosis.holds[i]}});
    }
    for (const FileFinding &finding : report.diagnosis.findings)
        out["findings"].push_back({{"rule", finding.rule},
                                   {"file", patient.machine.files[finding.file].path},
                                   {"place", TextOrNull(finding.place)},
                                   {"text", finding.text},
                                   {"library", finding.then},
                                   {"mended", TextOrNull(finding.mend)}});
    return Dump(out);
}

void RunDoctor(const DoctorOptions &options) {
    const Patient patient = Take(options);
    const DoctorReport report = Examine(patient);
    if (!options.repair.empty())
        WriteMachine(options.repair, report.diagnosis.mended);
    PrintOut(options.json ? JsonText(options, patient, report) : Text(options, patient, report));
    if (!report.diagnosis.findings.empty())
        throw ExitStatus(1);
}

std::string DoctorFooter() {
    std::string out = "What can be found:\n";
    for (const auto &[rule, meaning] : FileRules())
        out += "  " + rule + std::string(10 - rule.size(), ' ') + meaning + "\n";
    return out + "Exit status: 0 nothing found; 1 findings; 2 wrong input (nothing is written).";
}

} // namespace

void AddDoctorCommand(Command &program) {
    Command command =
        program.AddCommand("doctor", "What is wrong with the files of a machine, and a mended copy of them");
    const auto options = std::make_shared<DoctorOptions>();
    command
        .AddOption("--root", options->root,
                   "Folder that stands for / of the machine, with repository.sdr in it where there is one")
        .Required()
        .Takes("DIR");
    AddBoardOption(command, options->board, "Board of the machine (TOML): its static sensors are known then");
    AddProfileOption(
        command, options->profile,
        "Customer profile of the machine; default: the board's, else the one that user thresholds were "
        "saved under");
    command
        .AddOption("--repository", options->repository,
                   "Another repository than repository.sdr: a file of records, or bmc://HOST[:PORT]")
        .Takes("SOURCE");
    command
        .AddOption("--repair", options->repair,
                   "Write a mended copy of the files to a new folder; what is in --root stays as it is")
        .Takes("NEWDIR");
    AddLoginOptions(command, options->login);
    command.AddFlag("--json", options->json, "JSON");
    command.Footer(DoctorFooter());
    command.Example("oxa-sensors add --board boards/base_48.toml --class psu-fru --slot 1 --root machine && "
                    "oxa-sensors doctor --root machine --repair mended");
    command.Runs([options] { RunDoctor(*options); });
}

} // namespace workbench
