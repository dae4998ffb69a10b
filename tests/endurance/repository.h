// SPDX-License-Identifier: GPL-3.0-or-later
//
// The SDR repository as a service of its own: the process that adds records with the library may die, the repository
// lives on.  Plain memory in a page that the processes share; local sessions lead to it.
#ifndef OXA_TESTS_ENDURANCE_REPOSITORY_H
#define OXA_TESTS_ENDURANCE_REPOSITORY_H

#include <cstdint>
#include <vector>

#include "oxa/records.h"

namespace endurance {

struct KeptRecord {
    uint16_t id = 0; // 0: this place is free
    uint8_t size = 0;
    uint8_t bytes[SDR_SLOT_SIZE] = {};
};

class Repository {
public:
    void UseForSessions();                           // of this process
    uint16_t Add(const uint8_t *bytes, size_t size); // 0: full
    bool Remove(uint16_t id);
    const KeptRecord *Find(uint16_t id) const;
    uint16_t last_id() const { // of the record that was added last
        return last_id_;
    }
    std::vector<const KeptRecord *> All() const;
    size_t Count() const {
        return All().size();
    }

private:
    static constexpr size_t kCapacity = 1024;
    KeptRecord records_[kCapacity];
    uint16_t last_id_ = 0;
};

} // namespace endurance
#endif
