// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the sets of the page differ from: another set, or what a lock remembers of them.
#ifndef OXA_WORKBENCH_REPORT_AGAINST_H
#define OXA_WORKBENCH_REPORT_AGAINST_H

#include <optional>
#include <string>
#include <vector>

#include "base/json.h"
#include "compare/sensor_source.h"
#include "lock/file.h"

namespace workbench {

class Against {
public:
    // PROFILE (on the board of each run), PROFILE@BOARD, a file of export, or a lock.  InputError for anything else.
    Against(const std::string &text, const std::vector<RunOptions> &runs);

    // {"label": ..., "removed": [{"name", "what"}], "sensors": [null or {"what": "changed", "lines": [...]}, ...]}, and
    // "nothing" with the reason where there is nothing to compare with; the lines are {"text"} or {"where", "offset",
    // "field", "was", "now"}.
    Json Of(size_t run, const std::string &board, const SensorSource &set) const;

private:
    Json OfLock(const std::string &board, const SensorSource &set) const;
    Json OfSource(const SensorSource &was, const SensorSource &set) const;

    std::string text_;
    std::optional<Lock> lock_;
    std::vector<SensorSource> sources_; // one for each run, or one for all
};

} // namespace workbench
#endif
