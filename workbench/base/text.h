// SPDX-License-Identifier: GPL-3.0-or-later
//
// Small text helpers: numbers, hex, globs, the nearest of several names.
#ifndef OXA_WORKBENCH_BASE_TEXT_H
#define OXA_WORKBENCH_BASE_TEXT_H

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace workbench {

// A text of foreign bytes as it may go to a terminal or into JSON: what is not printable ASCII is a question mark.
std::string Printable(std::string text);

// One line without line ends.
std::string OneLine(std::string text);

std::string Pattern(const std::string &name); // every number in it as "*"

// Names that are alike but for their numbers are one: "FAN_STATUS_* (8), VCC12V"; beyond `most` of them "3 more".
std::string NamesText(const std::vector<std::string> &names, size_t most);

std::string FormatNumber(double value);               // "2.35", "-40", "12000"
std::string Hex(unsigned value, unsigned digits = 2); // "0x0B"
std::string HexBytes(std::span<const uint8_t> bytes); // "00 00 51"
double Rounded(double value); // without the digits that binary fractions add: 2.55, not 2.5500000000000003
std::vector<std::string> Wrap(const std::string &text, size_t width); // at blanks
std::string Join(const std::vector<std::string> &parts, const std::string &separator);

bool SameName(const std::string &a, const std::string &b); // upper and lower case alike
bool HasWildcard(const std::string &pattern);
bool MatchesGlob(const std::string &name,
                 const std::string &pattern); // shell glob, upper and lower case alike

// At most `limit` candidates that a person may have meant, the closest first; far-off ones are left out.
std::vector<std::string> NearestNames(const std::string &wanted, const std::vector<std::string> &candidates,
                                      size_t limit = 3);

} // namespace workbench
#endif
