// SPDX-License-Identifier: GPL-3.0-or-later
//
// The JSON form of rows and of questions to the platform.
#ifndef OXA_WORKBENCH_WHY_WHY_JSON_H
#define OXA_WORKBENCH_WHY_WHY_JSON_H

#include "base/json.h"
#include "why/why.h"

namespace workbench {

Json RowJson(const Row &row);
Json AskedJson(const Asked &asked); // the question and its answer; what hangs on it is added by the caller

} // namespace workbench
#endif
