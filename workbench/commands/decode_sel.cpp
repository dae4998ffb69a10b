// SPDX-License-Identifier: GPL-3.0-or-later
//
// oxa-sensors decode-sel: from event records back to the calls that wrote them.
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>

#include <sys/stat.h>

#include "base/errors.h"
#include "base/input.h"
#include "base/json.h"
#include "base/output.h"
#include "base/table.h"
#include "base/text.h"
#include "commands/commands.h"
#include "events/sel_calls.h"
#include "events/sel_input.h"
#include "events/sel_words.h"
#include "sets/run_options.h"
#include "sets/static_set.h"

namespace workbench {
namespace {

struct DecodeOptions {
    std::vector<std::string> inputs;
    std::string profile; // empty: any
    bool json = false;
};

// A candidate that the library confirmed.
struct Answer {
    Candidate candidate;
    SelBytes bytes{}; // as composed; id and time stamp 0
    std::vector<std::string> profiles;
};

struct DecodedRecord {
    InputRecord input;
    std::vector<Answer> answers;
};

// ---- reading ---------------------------------------------------------------------------------------

// A file, "-", or bytes given on the command line.
std::vector<InputRecord> ReadInputs(const std::vector<std::string> &inputs) {
    if (inputs.empty() || (inputs.size() == 1 && inputs[0] == "-"))
        return ReadRecords(ReadAllOf(std::cin, "standard input"), "standard input");
    struct stat facts {};
    if (inputs.size() == 1 && stat(inputs[0].c_str(), &facts) == 0) {
        if (S_ISDIR(facts.st_mode))
            throw InputError(inputs[0] + ": " + std::strerror(EISDIR));
        std::ifstream file(inputs[0], std::ios::binary);
        if (!file)
            throw InputError(inputs[0] + ": " + std::strerror(errno));
        return ReadRecords(ReadAllOf(file, inputs[0]), inputs[0]);
    }
    const std::string text = Join(inputs, " ");
    if (text.find_first_not_of("0123456789abcdefABCDEFxXhH ,:-") != std::string::npos)
        throw InputError(inputs[0] + ": " + std::strerror(ENOENT));
    return ReadRecords(text, "'" + text + "'");
}

// ---- decoding --------------------------------------------------------------------------------------

// Arguments are bytes in words.  A word of which the record holds a byte and that is more than a byte is a
// reading only where there is no other.
bool NeedsMoreThanBytes(const Answer &answer) {
    const auto &values = answer.candidate.values;
    return std::any_of(values.begin(), values.end(),
                       [](const FoundValue &value) { return value.value > 0xFF && value.known <= 0xFF; });
}

std::vector<Answer> Answers(const SelRecord &record, const std::string &profile) {
    std::vector<Answer> out;
    for (Candidate &candidate : Decode(record)) {
        const SelBytes bytes = Composed(candidate);
        auto profiles = ProfilesThatWrite(candidate);
        const bool wanted =
            profile.empty() || std::find(profiles.begin(), profiles.end(), profile) != profiles.end();
        if (!profiles.empty() && wanted)
            out.push_back({std::move(candidate), bytes, std::move(profiles)});
    }
    if (!std::all_of(out.begin(), out.end(), NeedsMoreThanBytes))
        std::erase_if(out, NeedsMoreThanBytes);
    return out;
}

bool IsWholeDomain(const oxa::sel::Item &item, const FoundValue &value) {
    return value.possible.size() == 1 && value.possible[0].from == 0 &&
           value.possible[0].to == LargestValue(item);
}

std::vector<bool> Unknown(const Candidate &candidate) {
    std::vector<bool> out;
    for (size_t n = 0; n < candidate.values.size(); ++n)
        out.push_back(IsWholeDomain(candidate.builder->ptItem[n], candidate.values[n]));
    return out;
}

std::vector<uint32_t> Values(const Candidate &candidate) {
    std::vector<uint32_t> out;
    for (const FoundValue &value : candidate.values)
        out.push_back(value.value);
    return out;
}

std::string IntervalsText(const std::vector<Interval> &intervals, uint32_t largest) {
    std::vector<std::string> parts;
    for (const Interval &range : intervals)
        parts.push_back(std::to_string(range.from) + (range.from == range.to ? ""
                                                      : range.to == largest
                                                          ? " and more"
                                                          : " to " + std::to_string(range.to)));
    return Join(parts, " or ");
}

// What the record does not say about an argument; empty when it says what a byte can say.
std::string Loss(const oxa::sel::Item &item, const FoundValue &value) {
    const std::string name = ValueName(item.eValue);
    if (IsWholeDomain(item, value))
        return name + " is not in the record";
    if (value.possible.empty())
        return "";
    return name + " is " + IntervalsText(value.possible, LargestValue(item)) +
           ", the record does not tell which";
}

// Arguments of which the record has only some low bits.  A direction is a single bit anyway.
std::string CutArguments(const Candidate &candidate, unsigned bits) {
    std::vector<std::string> names;
    for (size_t n = 0; n < ArgumentCount(*candidate.builder); ++n)
        if ((candidate.values[n].known & 0xFF) == (1u << bits) - 1)
            names.push_back(ValueName(candidate.builder->ptItem[n].eValue));
    return names.empty() ? ""
                         : "only bits 0-" + std::to_string(bits - 1) + " of " + Join(names, ", ") +
                               " are in the record";
}

std::vector<std::string> Losses(const Candidate &candidate) {
    std::vector<std::string> out;
    for (size_t n = 0; n < ArgumentCount(*candidate.builder); ++n)
        out.push_back(Loss(candidate.builder->ptItem[n], candidate.values[n]));
    for (const unsigned bits : {2u, 4u, 7u})
        out.push_back(CutArguments(candidate, bits));
    std::erase(out, "");
    return out;
}

std::string ProfilesText(const std::vector<std::string> &profiles) {
    std::vector<std::string> others;
    for (const Profile *profile : AllProfiles())
        if (std::find(profiles.begin(), profiles.end(), profile->name) == profiles.end())
            others.push_back(profile->name);
    if (others.empty())
        return "";
    return others.size() < profiles.size() ? "not with profile " + Join(others, ", ")
                                           : "only with profile " + Join(profiles, ", ");
}

// Binary files have OEM records in one of two orders; the order in which more of them are somebody's is the
// file's.  When both are equally good (network ports alone), both are told.
void DecodeAll(const std::vector<InputRecord> &inputs, const std::string &profile,
               std::vector<DecodedRecord> &out) {
    std::vector<std::vector<Answer>> turned;
    size_t plain_count = 0, turned_count = 0;
    for (const InputRecord &input : inputs) {
        const SelRecord other = input.binary ? TurnedRound(input.record) : input.record;
        out.push_back({input, Answers(input.record, profile)});
        turned.emplace_back();
        if (other.bytes == input.record.bytes)
            continue;
        turned.back() = Answers(other, profile);
        plain_count += out.back().answers.empty() ? 0 : 1;
        turned_count += turned.back().empty() ? 0 : 1;
    }
    for (size_t n = 0; n < out.size() && turned_count >= plain_count && turned_count > 0; ++n) {
        const SelRecord other = TurnedRound(out[n].input.record);
        if (!out[n].input.binary || other.bytes == out[n].input.record.bytes)
            continue;
        if (turned_count > plain_count) {
            out[n].answers = std::move(turned[n]);
            out[n].input.record = other;
            out[n].input.where += ", bytes 7 to 9 turned round";
        } else
            std::move(turned[n].begin(), turned[n].end(), std::back_inserter(out[n].answers));
    }
}

// ---- output ----------------------------------------------------------------------------------------

std::string BytesText(const SelRecord &record) {
    std::vector<std::string> out;
    for (size_t n = 0; n < record.bytes.size(); ++n)
        out.push_back(record.known[n] == 0xFF ? Hex(record.bytes[n]).substr(2) : "??");
    return Join(out, " ");
}

std::string RenderAnswer(const Answer &answer, bool colour) {
    const Candidate &candidate = answer.candidate;
    const auto values = Values(candidate);
    const auto unknown = Unknown(candidate);
    std::string out =
        "  " + Paint(CallText(*candidate.builder, values, unknown), Style::kBold, colour) + "\n";
    out += "    " + Meaning(*candidate.builder, values, answer.bytes, unknown) + "\n";
    for (const std::string &loss : Losses(candidate))
        out += "    " + loss + "\n";
    if (const std::string text = ProfilesText(answer.profiles); !text.empty())
        out += "    " + text + "\n";
    return out;
}

std::string RenderRecord(const DecodedRecord &decoded, bool colour) {
    std::string out = decoded.input.where + ": " + BytesText(decoded.input.record) + "\n";
    if (decoded.answers.empty())
        return out + "  no event builder writes this record\n";
    if (decoded.answers.size() > 1)
        out += "  " + std::to_string(decoded.answers.size()) + " calls write this record:\n";
    for (const Answer &answer : decoded.answers)
        out += RenderAnswer(answer, colour);
    return out;
}

Json AnswerJson(const Answer &answer) {
    const Candidate &candidate = answer.candidate;
    const auto unknown = Unknown(candidate);
    Json arguments = Json::object(), looked_up = Json::object();
    for (size_t n = 0; n < candidate.values.size(); ++n) {
        const oxa::sel::Item &item = candidate.builder->ptItem[n];
        (oxa::sel::IsFound(item.eValue) ? looked_up : arguments)[ValueName(item.eValue)] =
            unknown[n] ? Json(nullptr) : Json(candidate.values[n].value);
    }
    return {{"builder", BuilderName(*candidate.builder)},
            {"arguments", arguments},
            {"call", CallText(*candidate.builder, Values(candidate), unknown)},
            {"meaning", Meaning(*candidate.builder, Values(candidate), answer.bytes, unknown)},
            {"looked_up", looked_up},
            {"losses", Losses(candidate)},
            {"profiles", answer.profiles}};
}

Json RecordJson(const DecodedRecord &decoded) {
    const SelRecord &record = decoded.input.record;
    const auto &bytes = record.bytes;
    Json out = {{"where", decoded.input.where},
                {"bytes", BytesText(record)},
                {"record_id", bytes[0] | bytes[1] << 8},
                {"candidates", Json::array()}};
    for (const Answer &answer : decoded.answers)
        out["candidates"].push_back(AnswerJson(answer));
    return out;
}

void RunDecode(const DecodeOptions &options) {
    const std::string profile = options.profile.empty() ? "" : NamedProfile(options.profile).name;
    std::vector<DecodedRecord> all;
    DecodeAll(ReadInputs(options.inputs), profile, all);
    const auto found = std::count_if(all.begin(), all.end(),
                                     [](const DecodedRecord &decoded) { return !decoded.answers.empty(); });
    if (options.json) {
        Json records = Json::array();
        for (const DecodedRecord &decoded : all)
            records.push_back(RecordJson(decoded));
        PrintOut(Dump({{"records", records}}));
    } else {
        std::string out;
        for (const DecodedRecord &decoded : all)
            out += (out.empty() ? "" : "\n") + RenderRecord(decoded, ColourWanted());
        PrintOut(out);
    }
    if (found == 0)
        throw SetError("no event builder wrote any of the " + std::to_string(all.size()) + " records");
}

} // namespace

void AddDecodeSelCommand(Command &program) {
    Command command =
        program.AddCommand("decode-sel", "Say which calls wrote event records, and what they mean");
    const auto options = std::make_shared<DecodeOptions>();
    command
        .AddOption("INPUT", options->inputs,
                   "A file, - (standard input, the default), or 16 bytes in hexadecimal")
        .Takes("");
    AddProfileOption(command, options->profile, "Only calls that write the record with this profile");
    command.AddFlag("--json", options->json, "JSON with all candidates");
    command.Footer("Reads 16-byte records (ipmitool sel writeraw), hexadecimal text, the output of\n"
                   "'ipmitool sel list -v' and 'sel elist -v', and of 'ipmi-sel --hex-dump'.\n"
                   "Exit status: 0 at least one record is an event builder's; 1 none is; 2 wrong input.");
    command.Example("oxa-sensors decode-sel 00 00 02 00 00 00 00 20 00 04 0F 00 6F 80 FA 00");
    command.Runs([options] { RunDecode(*options); });
}

} // namespace workbench
