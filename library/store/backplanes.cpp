// SPDX-License-Identifier: Apache-2.0
#include "library/store/backplanes.h"

#include <cstddef>
#include <cstring>

#include "oxa/store.h"

namespace oxa {

static_assert(sizeof(HalHddBackpanelList) <= sizeof(g_extSdrData));

Backplanes::Backplanes() : bRead(false) {
    memset(g_extSdrData, 0, sizeof(HalHddBackpanelList));
    const HalHddBackpanelService *ptService = HalHddBackpanelInst();
    if (ptService != nullptr && ptService->GetBackPanelList != nullptr)
        bRead = ptService->GetBackPanelList(reinterpret_cast<HalHddBackpanelList *>(g_extSdrData)) == 0;
}

Backplanes::~Backplanes() {
    memset(g_extSdrData, 0, sizeof(HalHddBackpanelList));
}

uint32_t Backplanes::Reported() const {
    uint32_t dwCount = 0;
    if (bRead)
        memcpy(&dwCount, g_extSdrData + offsetof(HalHddBackpanelList, count), sizeof(dwCount));
    return dwCount;
}

const uint8_t *Backplanes::Record(uint32_t dwIndex) const {
    return g_extSdrData + offsetof(HalHddBackpanelList, atRec) + dwIndex * sizeof(HalHddBackpanelRec);
}

} // namespace oxa
