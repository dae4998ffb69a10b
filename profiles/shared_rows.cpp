// SPDX-License-Identifier: Apache-2.0
#include "profiles/shared_rows.h"

namespace oxa {

constexpr Rows<sizeof(kSharedRows.auc)> kSharedRowData = kSharedRows;

} // namespace oxa
