// SPDX-License-Identifier: GPL-3.0-or-later
//
// Where log lines come from: the calls in the library's sources that write them, and whether a line that was written
// names one of them.
//
// A line tells a unit and a number.  The number must lie within a call that writes under this unit, in whichever source
// that stands, and the text must be one of that call's.  What this cannot tell: which of two calls of one unit wrote,
// where both write the same text and stand at the same numbers of two sources; and nothing is said of calls that no test
// reaches.
#ifndef OXA_TESTS_SUPPORT_LOG_PLACES_H
#define OXA_TESTS_SUPPORT_LOG_PLACES_H

#include <optional>
#include <regex>
#include <string>
#include <vector>

#include "simulator/simulator.h"

namespace tests {

struct LogPlace {
    std::string source;            // "library/store/whole_file.cpp"
    uint32_t first = 0, last = 0;  // the numbers of its lines
    std::string unit;              // "specific_sdr_file.c"; empty: the unit of a profile
    std::vector<std::regex> texts; // none: the text is not written where it is logged
    bool reached = false;          // by a line that SourceOfLine was asked for
};

// All that the library has, read once.
std::vector<LogPlace> &LogPlaces();

// Why the event's place is not one of the library's; empty when it is, or when the event is no line.
std::string WrongPlace(const sim::Event &event);

// The events of the trace whose place is wrong, and errors that were counted at another place than they name.
std::vector<std::string> WrongPlaces();

// "library/store/whole_file.cpp:19": the calls that WrongPlace has not met yet.
std::vector<std::string> PlacesNotReached();

} // namespace tests
#endif
