// SPDX-License-Identifier: GPL-3.0-or-later
//
// Which key of a board file answers a platform call, and on which line of a file it stands.
#ifndef OXA_SIMULATOR_BOARD_KEYS_H
#define OXA_SIMULATOR_BOARD_KEYS_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace sim {

// Where an answer stands.  Line 0: the file does not say it and the key's default answers.
struct AnswerPlace {
    std::string section; // "psus", "support.sensors"; empty: the key opens a section itself
    std::string key;     // "count", "NIC_POWER"; empty: no key answers this call
    uint32_t line = 0;
};

// The keys of one board file with their lines; LoadBoard makes it.
class BoardLines {
public:
    struct File;
    explicit BoardLines(std::unique_ptr<File> file);
    ~BoardLines();
    BoardLines(const BoardLines &) = delete;
    BoardLines &operator=(const BoardLines &) = delete;

    // `args` as the trace shows them: "sensor=22".
    AnswerPlace Of(const std::string &call, const std::string &args) const;
    uint32_t FaultLine(size_t number) const; // of the [[fault]] table, counted from 0

private:
    std::unique_ptr<File> file_;
};

// Keys that some call answers from, first the one that decides: "support.sensors.{sensor} support.all"; a part in
// braces is an argument of the call.  Empty: none, the simulator knows the answer by itself.
std::string KeysOfCall(const std::string &call);

} // namespace sim
#endif
