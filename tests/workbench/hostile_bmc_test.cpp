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
uint8_t g_lun;

class Session : public sim::BmcSession {
public:
    std::optional<Bytes> Send(uint8_t, uint8_t command, std::span<const uint8_t> data, std::string &,
                              uint8_t lun) override {
        ++g_asked;
        g_lun = lun;
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

TEST(HostileBmc, AReservationThatSomebodyElseTookIsMadeAnew) {
    unsigned reservation = 1;
    g_answer = [&reservation](uint8_t command, const Bytes &data) {
        if (command == kReserve)
            return Bytes{0, static_cast<uint8_t>(++reservation), 0};
        if (data[4] != 0 && data[0] < 5) // the first ones are lost by the time the body is asked for
            return Bytes{0xC5};
        return Walk(command, data, [](unsigned) { return 0xFFFFU; });
    };
    EXPECT_EQ(workbench::ReadRepositoryOf({}).size(), 1U);
    EXPECT_EQ(reservation, 5U);
}

TEST(HostileBmc, OneThatTakesEveryReservationAwayIsGivenUp) {
    EXPECT_THAT(
        Refusal([](uint8_t command, const Bytes &) { return command == kReserve ? kReserved : Bytes{0xC5}; }),
        HasSubstr("command 0x23 is answered with code 0xC5"));
    EXPECT_LT(g_asked, 1000U);
}

// A record of 48 bytes, answered with so many bytes at most.
Bytes LongPart(const Bytes &data, size_t most) {
    Bytes record = {1, 0, 0x51, 0xC0, 43};
    for (uint8_t i = 0; i < 43; ++i)
        record.push_back(i);
    if (data[5] > most)
        return {0xCA};
    Bytes out = {0, 0xFF, 0xFF};
    out.insert(out.end(), record.begin() + data[4], record.begin() + data[4] + data[5]);
    return out;
}

TEST(HostileBmc, OneThatAnswersWithFewBytesIsReadInSmallPieces) {
    g_answer = [](uint8_t command, const Bytes &data) {
        return command == kReserve ? kReserved : LongPart(data, 10);
    };
    const auto records = workbench::ReadRepositoryOf({});
    ASSERT_EQ(records.size(), 1U);
    ASSERT_EQ(records[0].bytes.size(), 48U);
    for (uint8_t i = 0; i < 43; ++i)
        EXPECT_EQ(records[0].bytes[5 + i], i);
}

TEST(HostileBmc, OneThatAnswersWithTooLittleIsGivenUp) {
    EXPECT_THAT(Refusal([](uint8_t command, const Bytes &data) {
                    return command == kReserve ? kReserved : LongPart(data, 5);
                }),
                HasSubstr("code 0xCA"));
}

TEST(HostileBmc, ALiveRepositoryWithoutInfoIsRefused) {
    g_answer = [](uint8_t, const Bytes &) { return Bytes{0xC1}; };
    EXPECT_THROW(workbench::ReadLiveRepositoryOf({}, true), workbench::SetError);
}

// A full record of a sensor with this owner, LUN, number and capabilities, of threshold type.
Bytes FullRecord(uint8_t owner, uint8_t lun, uint8_t number, uint8_t capabilities) {
    Bytes out(48, 0);
    out[3] = 1;
    out[4] = 43;
    out[5] = owner;
    out[6] = lun;
    out[7] = number;
    out[11] = capabilities;
    out[13] = 1;
    out[18] = 0x3F;
    return out;
}

TEST(HostileBmc, ThresholdsAreAskedForOnTheSensorsLunAndPutInTheRecordsOrder) {
    g_answer = [](uint8_t command, const Bytes &data) {
        EXPECT_EQ(command, 0x27);
        EXPECT_EQ(data, Bytes{9});
        return Bytes{0, 0x3F, 1, 2, 3, 4, 5, 6}; // mask, then LNC LC LNR UNC UC UNR
    };
    const auto told = workbench::ReadThresholdsOf({}, {FullRecord(0x20, 3, 9, 0x08)});
    EXPECT_EQ(g_lun, 3);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told.begin()->first, (workbench::SensorPlace{3, 9}));
    EXPECT_EQ(told.begin()->second.mask, 0x3F);
    EXPECT_THAT(told.begin()->second.raw, testing::ElementsAre(6, 5, 4, 3, 2, 1)); // UNR UC UNC LNR LC LNC
}

TEST(HostileBmc, OnlyItsOwnSensorsWithReadableThresholdsAreAsked) {
    g_asked = 0;
    g_answer = [](uint8_t, const Bytes &) { return Bytes{0, 0x3F, 1, 2, 3, 4, 5, 6}; };
    Bytes compact = FullRecord(0x20, 0, 1, 0x08), none = compact, cut = compact;
    compact[3] = 2;
    none[18] = 0;
    cut.resize(10);
    EXPECT_TRUE(workbench::ReadThresholdsOf({}, {FullRecord(0x22, 0, 1, 0x08), FullRecord(0x20, 0, 1, 0x00),
                                                 FullRecord(0x20, 0, 1, 0x0C), compact, none, cut})
                    .empty());
    EXPECT_EQ(g_asked, 0U);
}

TEST(HostileBmc, ASensorWhoseThresholdsAreNotToldIsLeftOut) {
    for (const Bytes &answer : {Bytes{0xCB}, Bytes{0, 0x3F, 1, 2}}) {
        g_answer = [&answer](uint8_t, const Bytes &) { return answer; };
        EXPECT_TRUE(workbench::ReadThresholdsOf({}, {FullRecord(0x20, 0, 1, 0x04)}).empty());
    }
}

} // namespace
