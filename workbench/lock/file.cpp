// SPDX-License-Identifier: GPL-3.0-or-later
#include "lock/file.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string_view>

#include "base/errors.h"
#include "base/input.h"
#include "base/text.h"
#include "sets/board_files.h"

namespace workbench {
namespace {

constexpr char kHead[] =
    "# oxa-sensors lock 1: what is built for every board and profile. Written by 'oxa-sensors lock',\n"
    "# never by hand; after a merge write it again.\n";
constexpr size_t kMostFaults = 20; // a merge's conflicts can be thousands
constexpr char kFirstWords[] = "# oxa-sensors lock ";

// Words that are taken apart again, with one that is right.
constexpr struct {
    LockColumn column;
    const char *name;
    std::string_view example;
} kForms[] = {{kLockType, "sensor type and event/reading type", "01/6F"},
              {kLockEntity, "entity and instance", "37.60"},
              {kLockMasks, "masks", "8032.8018.1B1B"}};

bool IsHex(char c) {
    return std::isxdigit(static_cast<unsigned char>(c)) != 0;
}

bool HasForm(const std::string &word, std::string_view example) {
    return std::equal(
        word.begin(), word.end(), example.begin(), example.end(),
        [](char c, char right) { return IsHex(right) ? IsHex(c) : c == right; });
}

bool IsControl(char c) {
    return (c >= 0 && c < ' ') || c == 0x7F;
}

// Of the word of that number, in the line that the words are of.
size_t ColumnOf(const std::string &line, const std::vector<std::string> &words, size_t number) {
    size_t at = line.find(words[0]);
    for (size_t i = 1; i <= number; ++i)
        at = line.find(words[i], at + words[i - 1].size());
    return at + 1;
}

std::vector<std::string> WordsOf(const std::string &line) {
    std::istringstream in(line);
    std::vector<std::string> out;
    for (std::string word; in >> word;)
        out.push_back(word);
    return out;
}

// What a line is about: no two lines have the same.
std::string KeyOf(const SensorLine &line) {
    return Join({line.words.begin(), line.words.begin() + kLockFactor}, " ");
}

std::string TellSet(const StaticSet &set) {
    const std::string board = std::filesystem::path(set.board).stem().string();
    const Decoder decoder;
    std::map<std::string, int> alike;
    std::string out;
    for (const Sensor &sensor : set.sensors) {
        SensorLine line = LineOf(board, *set.profile, sensor, decoder.Decode(sensor));
        if (const int place = ++alike[KeyOf(line)]; place > 1)
            line.words[kLockName] += "#" + std::to_string(place);
        out += Text(line) + "\n";
    }
    return out;
}

class Reader {
public:
    Reader(const std::string &path, LockFaults &faults) : path_(path), faults_(faults) {}

    Lock Read(const std::string &text) {
        if (text.rfind(kFirstWords, 0) != 0)
            return Refused(1, std::string("no lock file: it does not begin with \"") + kFirstWords + "1\"");
        if (text.rfind(std::string(kFirstWords) + "1:", 0) != 0)
            return Refused(sizeof kFirstWords,
                           "a lock of another format than 1; write it again with this program");
        std::istringstream in(text);
        for (std::string line; faults_.lines.size() < kMostFaults && std::getline(in, line);)
            ReadLine(line);
        return std::move(lock_);
    }

private:
    Lock Refused(size_t column, const std::string &what) {
        number_ = 1;
        Fault(column, what);
        return {};
    }

    void Fault(size_t column, const std::string &what) {
        faults_.lines.push_back(path_ + ":" + std::to_string(number_) + ":" + std::to_string(column) + ": " +
                                what);
    }

    void ReadLine(std::string line) {
        ++number_;
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (line.empty() || line[0] == '#')
            return;
        if (const auto odd = std::find_if(line.begin(), line.end(), IsControl); odd != line.end())
            return Fault(static_cast<size_t>(odd - line.begin()) + 1, "a control character; a lock has none");
        for (const char *mark : {"<<<<<<<", "=======", ">>>>>>>", "|||||||"})
            if (line.rfind(mark, 0) == 0)
                return Fault(1, "a conflict that a merge left; write the lock again");
        if (line[0] == '@')
            return ReadTable(line);
        SensorLine sensor;
        const std::vector<std::string> words = WordsOf(line);
        if (words.size() != kLockColumns)
            return Fault(line.size() + 1, std::to_string(words.size()) + " words; a sensor's line has " +
                                              std::to_string(size_t{kLockColumns}));
        for (const auto &[column, name, example] : kForms)
            if (!HasForm(words[column], example))
                return Fault(ColumnOf(line, words, column), "'" + Printable(words[column]) + "': the " +
                                                                name + " are written as " +
                                                                std::string(example));
        std::copy(words.begin(), words.end(), sensor.words.begin());
        sensor.number = number_;
        Once(KeyOf(sensor));
        lock_.sensors.push_back(std::move(sensor));
    }

    void ReadTable(const std::string &line) {
        std::vector<std::string> words = WordsOf(line);
        const std::string tag = words[0];
        const size_t keys = KeyWords(tag);
        if (keys == 0)
            return Fault(1, "'" + Printable(tag) + "' is no table of a lock");
        if (words.size() < keys + 2)
            return Fault(line.size() + 1, "the line ends within " + tag);
        const auto value = words.begin() + static_cast<long>(keys) + 1;
        Once(Join({words.begin(), value}, " "));
        lock_.tables.push_back({tag, {words.begin() + 1, value}, {value, words.end()}, number_});
    }

    // Branches that change one record meet in a merge that keeps the lines of both.
    void Once(const std::string &key) {
        const auto [found, is_new] = lines_.emplace(key, number_);
        if (!is_new)
            Fault(
                1,
                "line " + std::to_string(found->second) +
                    " is about the same: two branches changed it, and a merge kept both; write the lock again");
    }

    const std::string &path_;
    LockFaults &faults_;
    Lock lock_;
    size_t number_ = 0;
    std::map<std::string, size_t> lines_;
};

void Append(Lock &to, Lock from) {
    std::move(from.sensors.begin(), from.sensors.end(), std::back_inserter(to.sensors));
}

} // namespace

Lock BuildLock(const std::string &folder, LockFaults &faults) {
    std::vector<RunOptions> runs;
    for (const std::string &board : BoardFilesOf(folder)) {
        if (const std::string fault = BoardFault(board); !fault.empty())
            faults.lines.push_back(fault);
        for (const Profile *profile : ProfilesWithDriver()) {
            runs.push_back({});
            runs.back().board = board;
            runs.back().profile = profile->name;
        }
    }
    Lock lock;
    if (!faults.lines.empty())
        return lock;
    BuildStaticSetsApart(std::move(runs), "building", [&](const RunOptions &run, const BuiltSet &built) {
        if (built.no_set.empty())
            Append(lock, Reader(run.board, faults).Read(kHead + TellSet(built.set)));
        else
            faults.lines.push_back(built.no_set);
    });
    lock.tables = RunTimeTables();
    return lock;
}

std::string Text(const Lock &lock) {
    std::string out = kHead;
    for (const TableLine &line : lock.tables)
        out += Text(line) + "\n";
    for (const SensorLine &line : lock.sensors)
        out += Text(line) + "\n";
    return out;
}

bool IsLock(const std::string &path) {
    std::string first(sizeof kFirstWords - 1, '\0');
    std::ifstream file(path, std::ios::binary);
    return file.read(first.data(), static_cast<std::streamsize>(first.size())) && first == kFirstWords;
}

Lock ReadLock(const std::string &path, LockFaults &faults) {
    std::ifstream file(path, std::ios::binary);
    if (!file || std::filesystem::is_directory(path))
        throw InputError(path + ": cannot read: " + (file ? "a folder" : std::strerror(errno)));
    return Reader(path, faults).Read(ReadAllOf(file, path));
}

} // namespace workbench
