// SPDX-License-Identifier: GPL-3.0-or-later
//
// Local sessions that lead to a BMC elsewhere: what is sent, what comes back, and what happens when nothing
// does.
#include <gmock/gmock.h>

#include "simulator/bmc_session.h"
#include "simulator/simulator.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;
using Bytes = std::vector<uint8_t>;

// A BMC that writes down what it is asked and answers as it is told.
struct FakeBmc {
    int open = 0, opened = 0;
    bool reachable = true;
    std::optional<Bytes> answer = Bytes{0x00, 0x34, 0x12};
    std::vector<Bytes> requests; // network function, command, data
};

class FakeSession : public sim::BmcSession {
public:
    explicit FakeSession(FakeBmc &bmc) : bmc_(bmc) {
        ++bmc_.open;
        ++bmc_.opened;
    }
    ~FakeSession() override {
        --bmc_.open;
    }
    std::optional<Bytes> Send(uint8_t network_function, uint8_t command, std::span<const uint8_t> data,
                              std::string &reason, uint8_t) override {
        Bytes request = {network_function, command};
        request.insert(request.end(), data.begin(), data.end());
        bmc_.requests.push_back(request);
        reason = "the wire is cut";
        return bmc_.answer;
    }

private:
    FakeBmc &bmc_;
};

class BackEnd : public testing::Test {
protected:
    BackEnd() {
        sim::Start({});
        sim::UseSessions([this](std::string &reason) -> std::unique_ptr<sim::BmcSession> {
            reason = "nobody answers";
            return bmc.reachable ? std::make_unique<FakeSession>(bmc) : nullptr;
        });
    }
    ~BackEnd() override {
        sim::UseSessions({});
    }
    uint16_t Open() {
        uint8_t privilege = 4;
        return LIBIPMI_Create_IPMI_Local_Session(&session, "", "", &privilege, 0, 2, 100);
    }
    static std::vector<std::string> Notes() {
        std::vector<std::string> notes;
        for (const sim::Event &event : sim::Trace())
            if (event.kind == sim::Kind::kNote)
                notes.push_back(event.text);
        return notes;
    }

    FakeBmc bmc;
    IpmiLocalSession session = {};
    uint8_t response[4] = {9, 9, 9, 9};
    const uint8_t event[16] = {0, 0, 2, 0, 0, 0, 0, 0x20, 0, 4, 0x0F, 0, 0x6F, 0x80, 0xFA, 0};
};

TEST_F(BackEnd, ALocalSessionIsASessionWithTheBmcUntilItIsClosed) {
    EXPECT_EQ(Open(), 0);
    EXPECT_EQ(bmc.open, 1);
    EXPECT_EQ(LIBIPMI_CloseSession(&session), 0);
    EXPECT_EQ(bmc.open, 0);
    EXPECT_EQ(bmc.opened, 1);
    EXPECT_THAT(sim::Violations(), IsEmpty());
}

TEST_F(BackEnd, AddSelEntryIsStorageCommand44hAndTheIdIsTheBmcs) {
    Open();
    EXPECT_EQ(IPMICMD_AddSELEntry(&session, event, response, 100), 0);
    LIBIPMI_CloseSession(&session);
    ASSERT_THAT(bmc.requests, SizeIs(1));
    EXPECT_THAT(bmc.requests[0],
                ElementsAre(0x0A, 0x44, 0, 0, 2, 0, 0, 0, 0, 0x20, 0, 4, 0x0F, 0, 0x6F, 0x80, 0xFA, 0));
    EXPECT_THAT(response, ElementsAre(0x00, 0x34, 0x12, 9));
    EXPECT_THAT(sim::EventRecordIds(), ElementsAre(0x1234));
    ASSERT_THAT(sim::EventLog(), SizeIs(1));
    EXPECT_THAT(sim::EventLog()[0], ElementsAreArray(event));
}

TEST_F(BackEnd, TheLimitOfTheBoardIsNotTheBmcs) {
    sim::CurrentBoard().sel_limit = 0;
    Open();
    EXPECT_EQ(IPMICMD_AddSELEntry(&session, event, response, 100), 0);
    LIBIPMI_CloseSession(&session);
}

TEST_F(BackEnd, AddSdrIsStorageCommand24h) {
    Open();
    const uint8_t sdr[5] = {0, 0, 0x51, 0x02, 0x00};
    EXPECT_EQ(IPMICMD_AddSDR(&session, sdr, 5, response, 20), 0);
    LIBIPMI_CloseSession(&session);
    EXPECT_THAT(bmc.requests, ElementsAre(ElementsAre(0x0A, 0x24, 0, 0, 0x51, 0x02, 0x00)));
    ASSERT_THAT(sim::Repository(), SizeIs(1));
    EXPECT_EQ(sim::Repository()[0].id, 0x1234);
}

TEST_F(BackEnd, DeleteSdrIsStorageCommand26h) {
    Open();
    const uint8_t sdr[5] = {0, 0, 0x51, 0x02, 0x00}, request[4] = {0x77, 0x66, 0x34, 0x12};
    IPMICMD_AddSDR(&session, sdr, 5, response, 20);
    EXPECT_EQ(IPMICMD_DeleteSDR(&session, request, response, 20), 0);
    LIBIPMI_CloseSession(&session);
    EXPECT_THAT(bmc.requests.back(), ElementsAre(0x0A, 0x26, 0x77, 0x66, 0x34, 0x12));
    EXPECT_THAT(sim::Repository(), IsEmpty());
}

TEST_F(BackEnd, ACompletionCodeIsTheResultAndNothingIsStored) {
    Open();
    bmc.answer = Bytes{0xC4};
    EXPECT_EQ(IPMICMD_AddSELEntry(&session, event, response, 100), 0xC4);
    EXPECT_EQ(response[0], 0xC4);
    EXPECT_THAT(sim::EventLog(), IsEmpty());
    EXPECT_THAT(Notes(), Contains("BMC: refused with C4h"));
    LIBIPMI_CloseSession(&session);
}

TEST_F(BackEnd, NoAnswerIsAFailedCommand) {
    Open();
    bmc.answer.reset();
    EXPECT_NE(IPMICMD_AddSELEntry(&session, event, response, 100), 0);
    EXPECT_THAT(sim::EventLog(), IsEmpty());
    EXPECT_THAT(Notes(), Contains("BMC: no answer: the wire is cut"));
    LIBIPMI_CloseSession(&session);
}

TEST_F(BackEnd, ABmcThatIsNotReachedIsASessionThatDoesNotOpen) {
    bmc.reachable = false;
    EXPECT_NE(Open(), 0);
    EXPECT_THAT(Notes(), Contains("BMC: no session: nobody answers"));
    EXPECT_THAT(sim::Violations(), IsEmpty()); // nothing to close
}

TEST_F(BackEnd, FaultsComeFirst) {
    sim::AddFault({.call = "IPMICMD_AddSELEntry", .occurrence = 1});
    Open();
    EXPECT_NE(IPMICMD_AddSELEntry(&session, event, response, 100), 0);
    EXPECT_THAT(bmc.requests, IsEmpty());
    EXPECT_EQ(IPMICMD_AddSELEntry(&session, event, response, 100), 0);
    EXPECT_THAT(bmc.requests, SizeIs(1));
    LIBIPMI_CloseSession(&session);
}

TEST_F(BackEnd, WithoutABmcTheIdsCountFrom1) {
    sim::UseSessions({});
    Open();
    IPMICMD_AddSELEntry(&session, event, response, 100);
    IPMICMD_AddSELEntry(&session, event, response, 100);
    LIBIPMI_CloseSession(&session);
    EXPECT_THAT(sim::EventRecordIds(), ElementsAre(1, 2));
    EXPECT_EQ(bmc.opened, 0);
    sim::Start({});
    EXPECT_THAT(sim::EventRecordIds(), IsEmpty());
}

} // namespace
