// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/log_places.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "support/build_facts.h"
#include "support/log_lines.h"

namespace tests {

namespace {

// ---- the sources ----------------------------------------------------------------------------------------------------

std::string ReadWhole(const std::filesystem::path &path) {
    std::ifstream in(path);
    std::stringstream whole;
    whole << in.rdbuf();
    return whole.str();
}

// Comments become blanks, so that numbers and places stay.
std::string WithoutComments(std::string text) {
    static const std::regex kComment(R"re("(?:\\.|[^"\\\n])*"|//[^\n]*)re");
    for (std::sregex_iterator at(text.begin(), text.end(), kComment), end; at != end; ++at)
        if (at->str().starts_with("//"))
            std::fill_n(text.begin() + at->position(), at->length(), ' ');
    return text;
}

// kFileUnit and its like, to the names that they stand for.
const std::map<std::string, std::string> &UnitNames() {
    static const std::map<std::string, std::string> kUnits = [] {
        std::map<std::string, std::string> units;
        const std::string text = ReadWhole(InSource("library/record/unit_names.h"));
        static const std::regex kUnit(R"re((k\w+Unit) = "([^"]+)")re");
        for (std::sregex_iterator at(text.begin(), text.end(), kUnit), end; at != end; ++at)
            units[(*at)[1]] = (*at)[2];
        return units;
    }();
    return kUnits;
}

size_t EndOfCall(const std::string &text, size_t open) {
    bool quoted = false;
    for (int depth = 0; open < text.size(); ++open) {
        if (quoted && text[open] == '\\')
            ++open;
        else if (text[open] == '"')
            quoted = !quoted;
        else if (!quoted && text[open] == '(')
            ++depth;
        else if (!quoted && text[open] == ')' && --depth == 0)
            return open;
    }
    return text.size();
}

// Literals that stand side by side are one.
std::vector<std::string> LiteralsIn(const std::string &call) {
    static const std::regex kLiterals(R"re("(?:\\.|[^"\\])*"(?:\s*"(?:\\.|[^"\\])*")*)re");
    static const std::regex kSeam(R"re("\s*")re");
    std::vector<std::string> literals;
    for (std::sregex_iterator at(call.begin(), call.end(), kLiterals), end; at != end; ++at) {
        const std::string joined = std::regex_replace(at->str(), kSeam, "");
        literals.push_back(joined.substr(1, joined.size() - 2));
    }
    return literals;
}

// The texts that a format gives; escapes stand in it as they stand in the source.
std::regex TextsOf(const std::string &format) {
    static const std::regex kPart(R"re(%[-0-9.*]*(?:l|ll|z)?([a-zA-Z%])|\\n|\\"|[\s\S])re");
    std::string pattern;
    for (std::sregex_iterator at(format.begin(), format.end(), kPart), end; at != end; ++at) {
        const std::string part = at->str(), kind = (*at)[1];
        if (kind == "s")
            pattern += R"([\s\S]*)";
        else if (kind == "x" || kind == "X")
            pattern += "[0-9a-fA-F]+";
        else if (kind == "%")
            pattern += "%";
        else if (!kind.empty())
            pattern += "-?[0-9]+";
        else if (part.starts_with('\\') && part.size() == 2)
            pattern += part;
        else
            pattern += std::isalnum(static_cast<unsigned char>(part[0])) || part == "_" || part == " "
                           ? part
                           : "\\" + part;
    }
    return std::regex(pattern);
}

uint32_t LineAt(const std::string &text, size_t at) {
    return 1 + static_cast<uint32_t>(std::count(text.begin(), text.begin() + static_cast<long>(at), '\n'));
}

LogPlace PlaceOf(const std::string &source, const std::string &text, size_t begin, size_t end) {
    LogPlace place;
    place.source = source;
    place.first = LineAt(text, begin);
    place.last = LineAt(text, end);
    const std::string call = text.substr(begin, end - begin);
    for (const auto &[constant, unit] : UnitNames())
        if (call.find(constant) != std::string::npos)
            place.unit = unit;
    if (call.starts_with("SEL_"))
        place.unit = UnitNames().at("kEventUnit");
    for (std::string literal : LiteralsIn(call)) {
        if (literal.starts_with("[%s:%d]"))
            literal.erase(0, 7);
        place.texts.push_back(TextsOf(literal));
    }
    return place;
}

void AddPlaces(std::vector<LogPlace> &places, const std::filesystem::path &path) {
    static const std::regex kCall(
        R"re(\b(?:OXA_(?:TRACE|INFO|WARN|ERROR|DEBUG)|SEL_(?:INFO|ERROR)|IDBG_LINUXAPP_\w+)\()re");
    const std::string text = WithoutComments(ReadWhole(path));
    const std::string source = std::filesystem::relative(path, InSource("")).string();
    for (std::sregex_iterator at(text.begin(), text.end(), kCall), end; at != end; ++at) {
        const size_t begin = static_cast<size_t>(at->position());
        if (text.rfind("#define", begin) != std::string::npos && // the macros themselves
            text.find('\n', text.rfind("#define", begin)) > begin)
            continue;
        places.push_back(PlaceOf(source, text, begin, EndOfCall(text, begin)));
    }
}

// ---- an event -------------------------------------------------------------------------------------------------------

struct Spoken {
    std::string unit, text;
    uint32_t number = 0;
};

std::optional<Spoken> LineIn(const sim::Event &event) {
    if (event.kind == sim::Kind::kLog)
        return Spoken{event.file, event.text, event.line};
    if ((event.kind != sim::Kind::kDebug && event.kind != sim::Kind::kAudit) || IsBareAssertion(event))
        return std::nullopt;
    const size_t colon = event.text.find(':'), end = event.text.find(']');
    return Spoken{UnitOf(event), event.text.substr(end + 1),
                  static_cast<uint32_t>(std::stoul(event.text.substr(colon + 1, end - colon - 1)))};
}

bool Wrote(const LogPlace &place, const Spoken &line) {
    if (line.number < place.first || line.number > place.last)
        return false;
    if (place.unit.empty() ? !line.unit.starts_with("gen_specific_sensor_") : place.unit != line.unit)
        return false;
    return place.texts.empty() ||
           std::any_of(place.texts.begin(), place.texts.end(),
                       [&](const std::regex &text) { return std::regex_match(line.text, text); });
}

} // namespace

std::vector<LogPlace> &LogPlaces() {
    static std::vector<LogPlace> places = [] {
        std::vector<LogPlace> all;
        for (const auto &file : std::filesystem::recursive_directory_iterator(InSource("library")))
            if (file.path().extension() == ".cpp" || file.path().extension() == ".h")
                AddPlaces(all, file.path());
        return all;
    }();
    return places;
}

std::string WrongPlace(const sim::Event &event) {
    const std::optional<Spoken> line = LineIn(event);
    if (!line)
        return "";
    static std::set<std::string> known; // most lines come again and again
    const std::string key = line->unit + ":" + std::to_string(line->number) + " " + line->text;
    if (known.contains(key))
        return "";
    bool found = false;
    for (LogPlace &place : LogPlaces())
        if (Wrote(place, *line))
            found = place.reached = true;
    const size_t inside = line->text.find("line="); // the number once more
    if (inside != std::string::npos &&
        line->text.substr(inside + 5, line->text.find_first_not_of("0123456789", inside + 5) - inside - 5) !=
            std::to_string(line->number))
        return key + ": two numbers";
    if (!found)
        return key + ": no call of the library";
    known.insert(key);
    return "";
}

std::vector<std::string> WrongPlaces() {
    std::vector<std::string> wrong;
    const sim::Event *before = nullptr;
    for (const sim::Event &event : sim::Trace()) {
        const std::string why = WrongPlace(event);
        if (!why.empty())
            wrong.push_back(why);
        const bool error = event.kind == sim::Kind::kLog && event.level == sim::Level::kError;
        if (error && before != nullptr && before->kind == sim::Kind::kStat &&
            (before->file != event.file || before->line != event.line))
            wrong.push_back(event.text + ": counted at " + before->file + ":" + std::to_string(before->line));
        before = &event;
    }
    return wrong;
}

std::vector<std::string> PlacesNotReached() {
    std::vector<std::string> open;
    for (const LogPlace &place : LogPlaces())
        if (!place.reached)
            open.push_back(place.source + ":" + std::to_string(place.first));
    std::sort(open.begin(), open.end());
    return open;
}

} // namespace tests
