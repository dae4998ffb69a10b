// SPDX-License-Identifier: GPL-3.0-or-later
//
// Every byte of a record and of its device-table entry in words: what libfreeipmi does not offer.
#ifndef OXA_WORKBENCH_EXPLAIN_EXPLAIN_H
#define OXA_WORKBENCH_EXPLAIN_EXPLAIN_H

#include <string>
#include <vector>

#include "sets/decode.h"
#include "sets/rows.h"

namespace workbench {

struct Field {
    unsigned offset = 0;
    unsigned size = 1;
    std::string name;
    std::vector<std::string> meaning; // one or more lines
    std::string set_by; // what gave the byte its value; empty where it is fixed by the sensor's kind
};

// Fields in the order of their offsets; together they cover every byte exactly once.
std::vector<Field> ExplainRecord(const Sensor &sensor, const Decoded &decoded);
std::vector<Field> ExplainEntry(const Sensor &sensor);

// What gives a byte of the record ('S') or of the entry ('E') of the row's sensors its value, where it differs among them;
// empty where it does not, and without a row.
std::string Origin(const Row *row, char where, unsigned offset);

} // namespace workbench
#endif
