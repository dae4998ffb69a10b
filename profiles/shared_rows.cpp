// SPDX-License-Identifier: Apache-2.0
#include "profiles/shared_rows.h"

namespace oxa {

constexpr Rows<sizeof(kSharedRowsStored.auc)> kSharedRowData = kSharedRowsStored;

} // namespace oxa
