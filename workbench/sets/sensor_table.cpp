// SPDX-License-Identifier: GPL-3.0-or-later
#include "sets/sensor_table.h"

namespace workbench {

void AddLimitColumns(std::vector<Column> &columns) {
    for (const char *limit : {"LNR", "LC", "LNC", "UNC", "UC", "UNR"})
        columns.push_back({limit, true});
}

std::vector<Column> SensorColumns(const std::string &number) {
    std::vector<Column> columns = {{number, true}};
    for (const char *header : {"NAME", "KIND", "TYPE", "ENTITY", "INST", "READING"})
        columns.push_back({header});
    AddLimitColumns(columns);
    return columns;
}

std::string ReadingText(const Decoded &decoded) {
    if (decoded.reading)
        return decoded.reading->formula;
    if (decoded.IsThreshold())
        return "-"; // no analog reading, or one whose factors are not in the record
    const size_t states = decoded.readable.size();
    return std::to_string(states) + (states == 1 ? " state" : " states");
}

} // namespace workbench
