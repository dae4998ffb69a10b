// SPDX-License-Identifier: GPL-3.0-or-later
//
// A pass as its trace shows it: where each record was begun, named and handed over, and what was asked for it.
#ifndef OXA_WORKBENCH_WHY_READING_H
#define OXA_WORKBENCH_WHY_READING_H

#include <cstddef>
#include <string>
#include <vector>

#include "sets/rows.h"
#include "simulator/simulator.h"

namespace workbench {

using Events = std::vector<sim::Event>;

// Places in the trace of one record that was handed over.
struct RecordMarks {
    size_t begun = 0; // the kind's bytes are copied
    size_t named = 0; // its name is printed
};
std::vector<RecordMarks> MarkRecords(const Events &trace); // in the order of the set

bool IsBegun(const sim::Event &event);
bool IsNamed(const sim::Event &event);
std::string FormatOf(const sim::Event &event); // the pattern of a name that is printed

// A question to the platform: not a bounded function, nothing that is told to it, nor the extended store, which every
// record reads.
bool IsQuestion(const sim::Event &event);
bool IsLine(const sim::Event &event); // of the log or of the debug channel

// The questions that were asked for the record alone, from the end of what was before it.
std::vector<size_t> OwnQuestions(const Events &trace, const RecordMarks &marks, const Row &row);
// Where what the event belongs to began: behind the last sign of another record or step.
size_t BeginOf(const Events &trace, size_t at, const std::string &function);

// The needs of the row's group, and the last answer to each before that place; trace.size() where it was not asked.
struct Answered {
    const oxa::Need *need;
    size_t at;
};
std::vector<Answered> AnswersToNeeds(const Events &trace, const Row &row, size_t before);
bool IsMet(const oxa::Need &need, const sim::Event &event);

} // namespace workbench
#endif
