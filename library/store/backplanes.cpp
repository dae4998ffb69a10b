// SPDX-License-Identifier: Apache-2.0
#include "library/store/backplanes.h"

#include <cstring>

namespace oxa {

Backplanes::Backplanes() {
    memset(&tList, 0, sizeof(tList));
    const HalHddBackpanelService *ptService = HalHddBackpanelInst();
    if (ptService != nullptr && ptService->GetBackPanelList != nullptr)
        bRead = ptService->GetBackPanelList(&tList) == 0;
}

} // namespace oxa
