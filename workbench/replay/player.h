// SPDX-License-Identifier: GPL-3.0-or-later
//
// One entry played: the library asks, the capture answers, and both are held against each other.
#ifndef OXA_WORKBENCH_REPLAY_PLAYER_H
#define OXA_WORKBENCH_REPLAY_PLAYER_H

#include <cstddef>
#include <string>
#include <vector>

#include "capture/parts.h"
#include "replay/capture.h"

namespace workbench {

namespace parts = oxa::capture;

// Where the library of this desk did something else than the one on the machine.
struct ReplayDifference {
    size_t entry = 0;  // from 1
    size_t call = 0;   // of the entry, from 1; 0: what the entry gave out
    std::string where; // "SDR_AddSpecificSensor(...)", "IPMICMD_AddSDR, parameter 2"
    std::string what;  // "byte 37: 55 recorded, 56 now"
};

class Player {
public:
    // `differences` gets at most a few of each entry; the first is the one that counts.
    Player(const CapturedEntry &entry, size_t number, std::vector<ReplayDifference> &differences);

    // The library called this; what was recorded is written into the parts that come out.  Returns the recorded
    // result; null: the call was not recorded, and answers that it failed.
    const Item *Answer(const char *name, const parts::Part *parts, unsigned count);
    // A bounded call: null unless it was recorded because it was not sound.
    const Item *AnswerBounded(const char *name, const parts::Part *parts, unsigned count);
    // The entry has returned.
    void Finish(const parts::Part *parts, unsigned count, const parts::Part *result);
    void FinishDriver(const parts::Part *parts, unsigned count); // slots, entries and their number

    size_t Asked() const {
        return at_;
    }
    size_t
    Moved() const { // log lines that stand on another line of the source, and are the same but for that
        return moved_;
    }

private:
    const CapturedCall *Find(const char *name, const parts::Part *parts, unsigned count);
    void Compare(size_t call, const std::string &where, const std::vector<Item> &recorded,
                 const std::vector<Item> &now);
    void CompareRows(const char *what, size_t size, const Item &recorded, const Item &now);
    bool Ended();
    void Tell(size_t call, const std::string &where, const std::string &what);

    const CapturedEntry &entry_;
    size_t number_, at_ = 0, told_ = 0, moved_ = 0;
    uint64_t passed_over_ = 0;
    std::vector<ReplayDifference> &differences_;
};

// What a recorder would tell of these parts, before a call or behind it.
std::vector<Item> ItemsIn(const parts::Part *parts, unsigned count);
std::vector<Item> ItemsOut(const parts::Part *parts, unsigned count, const parts::Part *result);
Item ItemOf(const parts::Part &part);

} // namespace workbench
#endif
