// SPDX-License-Identifier: GPL-3.0-or-later
#include "fleet/hosts.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "base/errors.h"
#include "base/input.h"
#include "base/text.h"
#include "runtime/bmc_options.h"

namespace workbench {
namespace {

constexpr size_t kMostFaults = 20;

struct Word {
    std::string text;
    size_t column = 0; // from 1
};

std::vector<Word> WordsOf(const std::string &line) {
    constexpr const char *kBlanks = " \t\r";
    std::vector<Word> out;
    for (size_t at = line.find_first_not_of(kBlanks); at != std::string::npos;) {
        if (line[at] == '#')
            break;
        const size_t end = std::min(line.find_first_of(kBlanks, at), line.size());
        out.push_back({line.substr(at, end - at), at + 1});
        at = line.find_first_not_of(kBlanks, end);
    }
    return out;
}

class Reader {
public:
    Reader(const std::string &path, const Lock &lock) : path_(path) {
        for (const SensorLine &line : lock.sensors)
            profiles_[line.Board()].insert(line.Profile());
    }

    std::vector<Host> Read(const std::string &text) {
        std::istringstream in(text);
        for (std::string line; faults_.size() < kMostFaults && std::getline(in, line);)
            ReadLine(line);
        if (faults_.empty() && hosts_.empty())
            throw InputError(path_ + ": no hosts in it; a line for each: HOST[:PORT] BOARD PROFILE");
        if (!faults_.empty())
            throw InputError(Join(faults_, "\n"));
        return std::move(hosts_);
    }

private:
    void Fault(size_t column, const std::string &what) {
        faults_.push_back(path_ + ":" + std::to_string(number_) + ":" + std::to_string(column) + ": " + what);
    }

    void ReadLine(const std::string &line) {
        ++number_;
        const std::vector<Word> words = WordsOf(line);
        if (words.empty())
            return;
        if (words.size() != 3)
            return Fault(words.size() > 3 ? words[3].column : line.size() + 1,
                         "a line is HOST[:PORT] BOARD PROFILE; this one has " + std::to_string(words.size()) +
                             (words.size() == 1 ? " word" : " words"));
        if (CheckAddress(words[0]) && CheckMachine(words[1], words[2]))
            hosts_.push_back({words[0].text, words[1].text, words[2].text, number_});
    }

    bool CheckAddress(const Word &word) {
        const std::string shown = "'" + Printable(word.text) + "'";
        sim::Bmc bmc;
        try {
            SetAddress(bmc, word.text, shown);
            if (Printable(word.text) != word.text) // a byte order mark in front of the list
                throw InputError(shown + ": no host; its characters are printable ASCII");
        } catch (const InputError &error) {
            Fault(word.column, error.what());
            return false;
        }
        const auto [known, is_new] = lines_.emplace(bmc.host + ":" + std::to_string(bmc.port), number_);
        if (!is_new)
            Fault(word.column, "line " + std::to_string(known->second) + " is the same host");
        return is_new;
    }

    bool CheckMachine(const Word &board, const Word &profile) {
        const auto known = profiles_.find(board.text);
        if (known == profiles_.end()) {
            std::vector<std::string> names;
            for (const auto &one : profiles_)
                names.push_back(one.first);
            Unknown(board, "the lock has no board", names);
            return false;
        }
        if (known->second.contains(profile.text))
            return true;
        Unknown(profile, "of " + board.text + " the lock has no profile",
                {known->second.begin(), known->second.end()});
        return false;
    }

    void Unknown(const Word &word, const std::string &what, const std::vector<std::string> &names) {
        const auto nearest = NearestNames(word.text, names, 1);
        Fault(word.column, what + " '" + Printable(word.text) + "'" +
                               (nearest.empty() ? "; there are " + NamesText(names, 6)
                                                : "; did you mean " + nearest[0] + "?"));
    }

    const std::string &path_;
    std::map<std::string, std::set<std::string>> profiles_; // by board
    std::vector<Host> hosts_;
    std::map<std::string, size_t> lines_; // of hosts, with their ports
    std::vector<std::string> faults_;
    size_t number_ = 0;
};

} // namespace

std::vector<Host> ReadHosts(const std::string &path, const Lock &lock) {
    std::ifstream file(path, std::ios::binary);
    if (!file || std::filesystem::is_directory(path))
        throw InputError(path + ": cannot read: " + (file ? "a folder" : std::strerror(errno)));
    return Reader(path, lock).Read(ReadAllOf(file, path));
}

} // namespace workbench
