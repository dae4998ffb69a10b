// SPDX-License-Identifier: Apache-2.0
//
// The platform's list of disk backplanes.  It is a kilobyte, more than a caller may take from the stack, so
// it is borrowed from the image of the extended store, which is read afresh before each use; the bytes are
// zero afterwards.
#ifndef OXA_SDR_BACKPANELS_H
#define OXA_SDR_BACKPANELS_H

#include "oxa/platform.h"

namespace oxa {

class Backpanels {
public:
    Backpanels(); // asks the platform
    ~Backpanels();
    Backpanels(const Backpanels &) = delete;
    Backpanels &operator=(const Backpanels &) = delete;

    bool IsRead() const {
        return bRead;
    }
    uint32_t Told() const; // the platform's own count
    uint32_t Walked() const {
        return Told() < HAL_HDD_BACKPANEL_MAX ? Told() : HAL_HDD_BACKPANEL_MAX;
    }
    const uint8_t *Record(uint32_t dwIndex) const; // bytes of a HalHddBackpanelRec

private:
    bool bRead;
};

} // namespace oxa
#endif
