// SPDX-License-Identifier: GPL-3.0-or-later
//
// A BMC that answers within a session, and lies: the readers of its repository and its event log end, and say what is
// wrong.
#include <functional>

#include <gmock/gmock.h>

#include "base/errors.h"
#include "runtime/bmc.h"
#include "simulator/bmc_session_freeipmi.h"

namespace {

using Bytes = std::vector<uint8_t>;
using Answer = std::function<Bytes(uint8_t command, const Bytes &data)>;

Answer g_answer; // completion code and data
unsigned g_asked;

class Session : public sim::BmcSession {
public:
    std::optional<Bytes> Send(uint8_t, uint8_t command, std::span<const uint8_t> data,
                              std::string &) override {
        ++g_asked;
        return g_answer(command, {data.begin(), data.end()});
    }
};

constexpr uint8_t kReserve = 0x22, kGetSdr = 0x23;
const Bytes kReserved = {0, 1, 0};

// The id that is asked for.
unsigned IdIn(const Bytes &data) {
    return data[2] | data[3] << 8;
}

// Part of a record of 7 bytes with this id, and the id of the next one before it.
Bytes Part(unsigned next, unsigned id, const Bytes &data) {
    const Bytes record = {static_cast<uint8_t>(id), static_cast<uint8_t>(id >> 8), 0x51, 0xC0, 2, 0xAA, 0xBB};
    Bytes out = {0, static_cast<uint8_t>(next), static_cast<uint8_t>(next >> 8)};
    out.insert(out.end(), record.begin() + data[4], record.begin() + data[4] + data[5]);
    return out;
}

std::string Refusal(const Answer &answer, bool events = false) {
    g_answer = answer;
    g_asked = 0;
    try {
        if (events)
            workbench::ReadEventLogOf({});
        else
            workbench::ReadRepositoryOf({});
    } catch (const workbench::SetError &error) {
        return error.what();
    }
    return "none";
}

Bytes Walk(uint8_t command, const Bytes &data, const std::function<unsigned(unsigned)> &next) {
    if (command == kReserve)
        return kReserved;
    const unsigned id = IdIn(data) == 0 ? 1 : IdIn(data);
    return Part(next(id), id, data);
}

} // namespace

namespace sim {
OpenBmcSession SessionsWith(const Bmc &) {
    return [](std::string &) { return std::make_unique<Session>(); };
}
} // namespace sim

namespace {

using testing::HasSubstr;

TEST(HostileBmc, AnHonestOneIsRead) {
    g_answer = [](uint8_t command, const Bytes &data) {
        return Walk(command, data, [](unsigned id) { return id == 3 ? 0xFFFFU : id + 1; });
    };
    const auto records = workbench::ReadRepositoryOf({});
    ASSERT_EQ(records.size(), 3U);
    EXPECT_EQ(records[2].bytes, (Bytes{3, 0, 0x51, 0xC0, 2, 0xAA, 0xBB}));
}

TEST(HostileBmc, OneWithoutReservationIsRefused) {
    EXPECT_THAT(Refusal([](uint8_t, const Bytes &) { return Bytes{0xCB}; }), HasSubstr("no reservation"));
}

TEST(HostileBmc, AShortAnswerIsRefused) {
    EXPECT_THAT(Refusal([](uint8_t, const Bytes &) {
                    return Bytes{0, 1};
                }),
                HasSubstr("1 bytes instead of 2"));
    EXPECT_THAT(
        Refusal([](uint8_t command, const Bytes &) { return command == kReserve ? kReserved : Bytes{0}; }),
        HasSubstr("0 bytes instead of 7"));
    EXPECT_THAT(Refusal([](uint8_t, const Bytes &) { return Bytes(18); }, true),
                HasSubstr("17 bytes instead of 18"));
}

TEST(HostileBmc, BytesBehindTheAnswerAreNotBelieved) {
    g_answer = [](uint8_t command, const Bytes &data) {
        Bytes out = Walk(command, data, [](unsigned) { return 0xFFFFU; });
        out.resize(250, 0xEE);
        return out;
    };
    const auto records = workbench::ReadRepositoryOf({});
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].bytes, (Bytes{1, 0, 0x51, 0xC0, 2, 0xAA, 0xBB}));
}

TEST(HostileBmc, ARepositoryInACircleIsRefused) {
    EXPECT_THAT(Refusal([](uint8_t command, const Bytes &data) {
                    return Walk(command, data, [](unsigned id) { return id % 5 + 1; });
                }),
                HasSubstr("its repository runs in a circle at id 2"));
    EXPECT_LT(g_asked, 20U);
}

TEST(HostileBmc, AnEventLogInACircleIsRefused) {
    EXPECT_THAT(Refusal([](uint8_t, const Bytes &) { return Bytes(19); }, true),
                HasSubstr("runs in a circle at id 0"));
}

TEST(HostileBmc, TheLongestRepositoryEndsWithTheIds) {
    g_answer = [](uint8_t command, const Bytes &data) {
        return Walk(command, data, [](unsigned id) { return id + 1; });
    };
    EXPECT_EQ(workbench::ReadRepositoryOf({}).size(), 0xFFFEU);
}

TEST(HostileBmc, ARecordThatGoesWhileItIsReadIsTold) {
    EXPECT_THAT(Refusal([](uint8_t command, const Bytes &data) {
                    if (command == kGetSdr && data[4] != 0)
                        return Bytes{0xCB};
                    return Walk(command, data, [](unsigned) { return 0xFFFFU; });
                }),
                HasSubstr("went while it was read"));
}

} // namespace
