// SPDX-License-Identifier: GPL-3.0-or-later
//
// Passes of one profile's driver over one board, each with answers of the platform changed: what a set would be if the
// board had said something else.
#ifndef OXA_WORKBENCH_WHY_TRIALS_H
#define OXA_WORKBENCH_WHY_TRIALS_H

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sets/static_set.h"
#include "simulator/board_keys.h"
#include "simulator/simulator.h"

namespace workbench {

struct Trial {
    bool counted = false; // the pass ended with a count; else it left no set
    std::vector<Sensor> sensors;
    std::vector<sim::Event> trace;
};

class Trials {
public:
    explicit Trials(const RunOptions &options); // InputError for a board or profile that cannot be used

    const Trial &AsItIs() const { // with everything that crossed the border
        return as_it_is_;
    }
    // What they give lives until the next one is asked for.
    const Trial &With(const std::vector<sim::Fault> &answers) const;
    const Trial &WithoutFault(size_t number) const; // without one [[fault]] of the board

    const Profile &profile() const {
        return profile_;
    }
    const std::string &board() const {
        return path_;
    }
    // "boards/x.toml:12: [psus] count", "default of [psus] count", or the [[fault]] that answered; empty: nothing of the board.
    std::string PlaceOf(const sim::Event &event) const;

private:
    Trial Run(const std::vector<sim::Fault> &answers, std::optional<size_t> left_out, bool traced) const;

    std::string path_;
    const Profile &profile_;
    sim::Board board_;
    std::vector<sim::Fault> faults_;
    std::shared_ptr<const sim::BoardLines> lines_;
    Trial as_it_is_;
    mutable Trial latest_;
    mutable std::map<std::string, Trial> tried_; // those that many sensors have in common
};

// As Trials::PlaceOf, for the board of that file.
std::string PlaceOf(const std::string &path, const sim::BoardLines &lines, const sim::Event &event);

// What the call handed out: its output, else its result.
uint64_t ValueOf(const sim::Event &event);
std::string ValueText(const sim::Event &event);
std::string ValueText(const sim::Event &event, uint64_t value); // of another value that it might have given
std::string CallText(const sim::Event &event);                  // "HAL_GetCpuOnlineStatus(index=1)"

// Rules that make this call, with these arguments, answer otherwise; nothing where it obeys none.
std::optional<sim::Fault> Answering(const sim::Event &event, uint64_t value);
std::optional<sim::Fault> Failing(const sim::Event &event);

// Answers worth trying, in words, with the rule that gives them: `also`, one less, nothing, one more, other bytes, a failure.
struct OtherAnswer {
    std::string words;
    sim::Fault rule;
};
std::vector<OtherAnswer> OtherAnswers(const sim::Event &event, std::vector<uint64_t> also = {});

} // namespace workbench
#endif
