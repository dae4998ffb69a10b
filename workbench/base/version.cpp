// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/version.h"

#include "base/version_text.h"

namespace workbench {

const char kVersion[] = OXA_VERSION;
const char kVersionText[] = "oxa-sensors " OXA_VERSION " (commit " OXA_COMMIT ")";

} // namespace workbench
