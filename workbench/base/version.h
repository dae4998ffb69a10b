// SPDX-License-Identifier: GPL-3.0-or-later
//
// Which oxa-sensors this is.
#ifndef OXA_WORKBENCH_BASE_VERSION_H
#define OXA_WORKBENCH_BASE_VERSION_H

namespace workbench {

extern const char kVersion[];     // of the library, "MAJOR.MINOR.PATCH"
extern const char kVersionText[]; // with the commit: "oxa-sensors MAJOR.MINOR.PATCH (commit 0123456789ab)"

} // namespace workbench
#endif
