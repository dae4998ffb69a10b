// SPDX-License-Identifier: GPL-3.0-or-later
//
// Whether a disk slot lies at the front of the machine.
#include <cstring>

#include "oxa/store.h"
#include "support/lookup_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kGetter[] = "HalHddBackpanelInst";
constexpr char kGetList[] = "HalHddBackpanelService.GetBackPanelList";

std::string Looked(int index, int start, int count, const std::string &location) {
    return "info 42 getNvmeFrontInfo: register Disk Sensor: backPanelIndex = " + std::to_string(index) +
           ", startslt = " + std::to_string(start) + ", diskCnt = " + std::to_string(count) +
           ", Location = " + location;
}

class DiskPlace : public Lookup {
protected:
    static void Backplanes(const std::vector<sim::Backplane> &backplanes) {
        sim::Board board;
        board.disks.backplanes = backplanes;
        sim::Start(board);
    }
    static std::vector<int> FrontSlots(int from, int to) {
        std::vector<int> front;
        for (int slot = from; slot <= to; ++slot) {
            const int answer = getNvmeFrontInfo(slot);
            EXPECT_TRUE(answer == 4 || answer == 5) << slot;
            if (answer == 4)
                front.push_back(slot);
        }
        return front;
    }
    static std::vector<int> Range(int from, int to) {
        std::vector<int> range;
        for (int slot = from; slot <= to; ++slot)
            range.push_back(slot);
        return range;
    }
};

TEST_F(DiskPlace, ASlotOfAFrontBackplaneIsAtTheFront) {
    Backplanes({{4, 3, "Front"}});
    EXPECT_EQ(FrontSlots(-3, 600), Range(4, 6));
}

TEST_F(DiskPlace, ALineTellsEachBackplaneUpToTheOneThatHoldsTheSlot) {
    Backplanes({{0, 4, "Front"}, {4, 4, "Rear"}, {8, 4, "Front"}, {12, 4, "Front"}});
    EXPECT_EQ(getNvmeFrontInfo(9), 4);
    EXPECT_THAT(LogLines(),
                ElementsAre(Looked(0, 0, 4, "Front"), Looked(1, 4, 4, "Rear"), Looked(2, 8, 4, "Front")));
}

TEST_F(DiskPlace, ARearBackplaneHasItsLineAndTheOthersAreLookedAt) {
    Backplanes({{0, 8, "Rear"}, {4, 4, "Front"}});
    EXPECT_EQ(FrontSlots(0, 10), Range(4, 7)); // the second backplane holds the slot as well
    sim::ClearTrace();
    EXPECT_EQ(getNvmeFrontInfo(1), 5);
    EXPECT_THAT(LogLines(), ElementsAre(Looked(0, 0, 8, "Rear"), Looked(1, 4, 4, "Front")));
}

TEST_F(DiskPlace, WithoutBackplanesEverySlotIsAtTheRear) {
    Backplanes({});
    EXPECT_THAT(FrontSlots(0, 255), IsEmpty());
    EXPECT_THAT(LogLines(), IsEmpty());
}

TEST_F(DiskPlace, TheLastSlotIsReckonedInOneByte) {
    Backplanes({{250, 10, "Front"}}); // last slot 3
    EXPECT_THAT(FrontSlots(-10, 600), IsEmpty());
    Backplanes({{250, 6, "Front"}});
    EXPECT_EQ(FrontSlots(-10, 600), Range(250, 255));
    Backplanes({{1, 255, "Front"}});
    EXPECT_EQ(FrontSlots(-10, 600), Range(1, 255));
    Backplanes({{0, 255, "Front"}});
    EXPECT_EQ(FrontSlots(-10, 600), Range(0, 254));
    Backplanes({{255, 1, "Front"}});
    EXPECT_EQ(FrontSlots(-10, 600), Range(255, 255));
}

TEST_F(DiskPlace, ABackplaneWithoutDisksHoldsNoSlot) {
    for (const uint8_t start : {0, 5, 255}) {
        Backplanes({{start, 0, "Front"}});
        EXPECT_THAT(FrontSlots(-1, 256), IsEmpty()) << int{start};
        EXPECT_EQ(sim::Logs().size(), 258u); // and is told
    }
}

TEST_F(DiskPlace, OnlyTheWholeWordFrontIsTheFront) {
    for (const char *location : {"front", "FRONT", "Fron", "Front ", " Front", "FrontLeft", "Rear", ""}) {
        Backplanes({{0, 4, location}});
        EXPECT_EQ(getNvmeFrontInfo(1), 5) << location;
        EXPECT_THAT(LogLines(), ElementsAre(Looked(0, 0, 4, location)));
    }
}

TEST_F(DiskPlace, AtMost32BackplanesAreLookedAt) {
    std::vector<sim::Backplane> backplanes(31, sim::Backplane{100, 1, "Rear"});
    backplanes.push_back({40, 1, "Front"});
    for (const uint32_t count : {32u, 33u, 255u, 256u, 0x80000001u, 0xFFFFFFFFu}) {
        sim::Board board;
        board.disks.backplanes = backplanes;
        board.disks.reported_count = count;
        sim::Start(board);
        EXPECT_EQ(getNvmeFrontInfo(40), 4) << count;
        EXPECT_EQ(getNvmeFrontInfo(41), 5) << count;
        EXPECT_EQ(sim::Logs().size(), 64u) << count;
        EXPECT_EQ(LogLines().back(), Looked(31, 40, 1, "Front"));
    }
    sim::CurrentBoard().disks.reported_count = 31;
    EXPECT_EQ(getNvmeFrontInfo(40), 5);
}

TEST_F(DiskPlace, IsTheRearWhenTheListCannotBeHad) {
    Backplanes({{0, 4, "Front"}});
    EXPECT_EQ(getNvmeFrontInfo(1), 4);
    sim::ClearTrace();
    for (const int32_t result : {-1, 1, -100}) {
        sim::ClearFaults();
        sim::AddFault({.call = kGetList, .result = result, .output = 1});
        EXPECT_EQ(getNvmeFrontInfo(1), 5) << result;
    }
    sim::ClearFaults();
    sim::AddFault({.call = kGetter, .null_operation = true});
    EXPECT_EQ(getNvmeFrontInfo(1), 5);
    sim::ClearFaults();
    sim::AddFault({.call = kGetter, .null_object = true});
    EXPECT_EQ(getNvmeFrontInfo(1), 5);
    EXPECT_THAT(LogLines(), IsEmpty());
}

TEST_F(DiskPlace, AsksForTheListOncePerQuestion) {
    Backplanes({{0, 4, "Front"}, {4, 4, "Front"}});
    getNvmeFrontInfo(6);
    EXPECT_EQ(sim::CountCalls(kGetList), 1u);
    EXPECT_EQ(sim::CountCalls("HalHddBackpanelService.CheckHddIsSupportNvme"), 0u);
}

TEST_F(DiskPlace, TheQuestionLeavesTheImageOfTheStoreAlone) {
    Backplanes({{0, 4, "Front"}, {4, 4, "Rear"}});
    std::memset(g_extSdrData, 0x5A, sizeof(g_extSdrData));
    EXPECT_EQ(getNvmeFrontInfo(1), 4);
    EXPECT_EQ(getNvmeFrontInfo(5), 5);
    for (const uint8_t byte : g_extSdrData)
        ASSERT_EQ(byte, 0x5A);
}

// 32 characters fill the platform's field; the line tells those that a NUL leaves room for.
TEST_F(DiskPlace, ALocationWithoutNulIsToldToItsLastCharacterButOneAndIsTheRear) {
    Backplanes({{0, 4, "Front_of_a_name_that_has_no_end!"}});
    EXPECT_EQ(getNvmeFrontInfo(1), 5);
    EXPECT_THAT(LogLines(), ElementsAre(Looked(0, 0, 4, "Front_of_a_name_that_has_no_end")));
}

TEST_F(DiskPlace, ABackplaneThatIsCountedButNotWrittenHoldsNoSlot) {
    sim::Board board;
    board.disks.backplanes = {{4, 2, "Front"}, {8, 2, "Front"}};
    board.disks.written_bytes = 4 + 34;
    sim::Start(board);
    EXPECT_EQ(FrontSlots(0, 20), Range(4, 5));
}

} // namespace
