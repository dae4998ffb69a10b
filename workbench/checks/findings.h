// SPDX-License-Identifier: GPL-3.0-or-later
//
// What a check can find in sets and in the library's name tables, and which of it is known.
#ifndef OXA_WORKBENCH_CHECKS_FINDINGS_H
#define OXA_WORKBENCH_CHECKS_FINDINGS_H

#include <string>
#include <vector>

#include "sets/decode.h"
#include "sets/static_set.h"

namespace workbench {

struct Finding {
    std::string rule;    // "name-unique"
    std::string profile; // "all" where it concerns every one
    std::string subject; // a name; "*" for the numbers in it where several are meant
    std::string text;
    std::vector<std::string> boards; // empty: the library's tables
    std::string reason;              // why it is known; empty: it is not
    bool IsKnown() const {
        return !reason.empty();
    }
};

// "-" where it is not known whose the set is.
std::string ProfileWord(const StaticSet &set);

// Rules over one set.
std::vector<Finding> CheckSet(const StaticSet &set, const std::vector<Decoded> &decoded);

// Rules over the tables that sensors are named from at run time, and over FRU ids.  Starts the simulated
// platform in this process: to be called when all sets are built.
std::vector<Finding> CheckTables(const Profile &profile);
std::vector<Finding> CheckFruIds(const Profile &profile);

// A static sensor and one that is added at run time for another device can have one name.
std::vector<Finding> CheckMeetings(const StaticSet &set, const std::vector<Decoded> &decoded);

// Gives findings that workbench/known_findings.toml lists their reason.
class KnownFindings {
public:
    KnownFindings();
    void Explain(Finding &finding);
    std::vector<std::string> Unused() const; // entries that explained nothing so far

private:
    struct Entry {
        std::string rule, profile, subject, reason;
        bool used = false;
    };
    std::vector<Entry> entries_;
};

} // namespace workbench
#endif
