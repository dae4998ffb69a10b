// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the readers of board files and descriptions take, as text of JSON Schema without the keys' meanings.
#ifndef OXA_WORKBENCH_RUNTIME_SCHEMA_H
#define OXA_WORKBENCH_RUNTIME_SCHEMA_H

#include <string>

namespace workbench {

std::string BoardSchema();
std::string DescriptionSchema();

} // namespace workbench
#endif
