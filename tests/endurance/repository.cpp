// SPDX-License-Identifier: GPL-3.0-or-later
#include "endurance/repository.h"

#include <cstring>

#include "simulator/bmc_session.h"

namespace endurance {
namespace {

constexpr uint8_t kAddSdr = 0x24;
constexpr uint8_t kDeleteSdr = 0x26;
constexpr uint8_t kFull = 0xC4;
constexpr uint8_t kNotPresent = 0xCB;

class Session : public sim::BmcSession {
public:
    explicit Session(Repository &repository) : repository_(repository) {}

    std::optional<std::vector<uint8_t>> Send(uint8_t, uint8_t command, std::span<const uint8_t> data,
                                             std::string &, uint8_t) override {
        uint16_t id = 0;
        uint8_t code = 0;
        if (command == kAddSdr) {
            id = repository_.Add(data.data(), data.size());
            code = id == 0 ? kFull : 0;
        } else if (command == kDeleteSdr) {
            id = static_cast<uint16_t>(data[2] | data[3] << 8);
            code = repository_.Remove(id) ? 0 : kNotPresent;
        }
        return std::vector<uint8_t>{code, static_cast<uint8_t>(id), static_cast<uint8_t>(id >> 8)};
    }

private:
    Repository &repository_;
};

} // namespace

void Repository::UseForSessions() {
    sim::UseSessions([this](std::string &) { return std::make_unique<Session>(*this); });
}

uint16_t Repository::Add(const uint8_t *bytes, size_t size) {
    uint16_t id = last_id_;
    do
        ++id;
    while (id == 0 || id == 0xFFFF || Find(id) != nullptr);
    for (KeptRecord &place : records_) {
        if (place.id != 0)
            continue;
        place.size = static_cast<uint8_t>(size);
        std::memcpy(place.bytes, bytes, size);
        place.id = id; // last: from here on it counts
        last_id_ = id;
        return id;
    }
    return 0;
}

bool Repository::Remove(uint16_t id) {
    for (KeptRecord &place : records_) {
        if (id != 0 && place.id == id) {
            place.id = 0;
            return true;
        }
    }
    return false;
}

const KeptRecord *Repository::Find(uint16_t id) const {
    for (const KeptRecord &place : records_)
        if (id != 0 && place.id == id)
            return &place;
    return nullptr;
}

std::vector<const KeptRecord *> Repository::All() const {
    std::vector<const KeptRecord *> out;
    for (const KeptRecord &place : records_)
        if (place.id != 0)
            out.push_back(&place);
    return out;
}

} // namespace endurance
