// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the answers of why have in common, of sensors that are in a set and of those that come at run time.
#ifndef OXA_WORKBENCH_COMMANDS_WHY_TEXT_H
#define OXA_WORKBENCH_COMMANDS_WHY_TEXT_H

#include <set>
#include <string>
#include <vector>

#include "base/json.h"
#include "explain/explain.h"
#include "sets/run_options.h"
#include "why/why.h"

namespace workbench {

struct WhyOptions {
    RunOptions run;
    std::vector<std::string> names;
    std::string description; // a file; empty: none
    bool dropped = false;
    bool json = false;
};

void WhyDescription(const WhyOptions &options); // of a sensor that comes at run time

struct NamedByte {
    unsigned offset;
    unsigned size;
    std::string field;
};

// Fields of a record and of its entry that hold one of the bytes.
struct NamedBytes {
    std::vector<NamedByte> record, entry;
};
NamedBytes Named(const std::set<unsigned> &record, const std::set<unsigned> &entry,
                 const std::vector<Field> &record_fields, const std::vector<Field> &entry_fields);
std::string SetsText(const NamedBytes &bytes); // "record 9 entity instance, entry 3 index"
Json BytesJson(const std::vector<NamedByte> &bytes);

std::string WordLine(const std::string &word, const std::string &text); // wrapped; nothing for an empty text
std::string AskedText(const Asked &asked, const std::string &sets);
std::string OrText(const std::vector<std::string> &parts); // "a, b or c"

} // namespace workbench
#endif
