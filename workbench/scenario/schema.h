// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the reader of stories takes, as text of JSON Schema without the keys' meanings.
#ifndef OXA_WORKBENCH_SCENARIO_SCHEMA_H
#define OXA_WORKBENCH_SCENARIO_SCHEMA_H

#include <string>

namespace workbench {

std::string StorySchema();

} // namespace workbench
#endif
