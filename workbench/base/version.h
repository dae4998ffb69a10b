// SPDX-License-Identifier: GPL-3.0-or-later
//
// Which oxa-sensors this is.
#ifndef OXA_WORKBENCH_BASE_VERSION_H
#define OXA_WORKBENCH_BASE_VERSION_H

namespace workbench {

extern const char kVersion[];     // of the library, "1.0.0"
extern const char kVersionText[]; // "oxa-sensors 1.0.0 (commit 0123456789ab)"

} // namespace workbench
#endif
