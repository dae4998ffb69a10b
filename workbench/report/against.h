// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the sets of the page differ from: another set, or what a lock remembers of them.
#ifndef OXA_WORKBENCH_REPORT_AGAINST_H
#define OXA_WORKBENCH_REPORT_AGAINST_H

#include <optional>
#include <string>
#include <vector>

#include "base/json.h"
#include "compare/set_compare.h"
#include "lock/file.h"
#include "sources/source.h"

namespace workbench {

class Against {
public:
    // A source (a profile alone: on the board of each run), or a lock.  InputError for anything else.
    Against(const std::string &text, const std::vector<RunOptions> &runs, const LoginOptions &login);

    // {"label": ..., "removed": [{"name", "what"}], "sensors": [null or {"what": "changed", "lines": [...]}, ...]}, and
    // "nothing" with the reason where there is nothing to compare with; the lines are {"text"} or {"where", "offset",
    // "field", "was", "now"}.
    Json Of(size_t run, const std::string &board, const Side &side) const;

private:
    Json OfLock(const std::string &board, const Side &side) const;
    Json OfSource(const Side &was, const Side &side) const;

    std::string text_;
    std::optional<Lock> lock_;
    std::vector<Side> sources_; // one for each run, or one for all
};

} // namespace workbench
#endif
