// SPDX-License-Identifier: GPL-3.0-or-later
//
// The rows of the profiles' lists as they are written down: what a sensor's line says and where it stands.
#ifndef OXA_WORKBENCH_SETS_ROWS_H
#define OXA_WORKBENCH_SETS_ROWS_H

#include <string>
#include <vector>

#include "library/static_sensors/catalogue.h"
#include "sets/static_set.h"

namespace workbench {

struct Row {
    oxa::Group group;
    oxa::Kind kind;
    std::string function; // of its log lines; empty: the driver's own name
    std::string name;     // pattern
    std::string variant;  // a second pattern, or what a refusal calls it; may be empty
    std::string file;     // "library/profiles/default.def"
    int line = 0;
    unsigned place = 0; // from 1, in the list

    const oxa::SensorKind &Kind() const {
        return oxa::kKinds[kind];
    }
    const oxa::GroupWords &Words() const;
};

const std::vector<Row> &RowsOf(const Profile &profile);

std::string KindName(const Row &row);
std::string KindPlace(const Row &row); // "library/static_sensors/kinds/psu.def:21"
std::string RowPlace(const Row &row);

// Whether the row can give a sensor this name, printed with some number or text.
bool MakesName(const Row &row, const std::string &name);
bool HasNumber(const Row &row); // or a text: the row stands for several sensors
// Whether the record came from this row.
bool Built(const Row &row, const Sensor &sensor);
// The row of some profile that gives such a record; null: none, as for records of other makes.
const Row *RowThatBuilt(const Sensor &sensor);
std::string NameOf(const Sensor &sensor);

} // namespace workbench
#endif
