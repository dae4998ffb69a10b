// SPDX-License-Identifier: Apache-2.0
//
// The platform's list of disk backplanes, asked afresh whenever it is needed.  It is a kilobyte: who holds one is a
// leaf, so that it is off the stack before anything else is built.
#ifndef OXA_STORE_BACKPLANES_H
#define OXA_STORE_BACKPLANES_H

#include "oxa/platform.h"

namespace oxa {

class Backplanes {
public:
    Backplanes(); // asks the platform

    bool IsRead() const {
        return bRead;
    }
    uint32_t Reported() const { // the platform's own count
        return bRead ? tList.count : 0;
    }
    uint32_t Usable() const { // as many as the list can hold
        return Reported() < HAL_HDD_BACKPANEL_MAX ? Reported() : HAL_HDD_BACKPANEL_MAX;
    }
    const HalHddBackpanelRec &Record(uint32_t dwIndex) const {
        return tList.atRec[dwIndex];
    }

private:
    HalHddBackpanelList tList;
    bool bRead = false;
};

} // namespace oxa
#endif
