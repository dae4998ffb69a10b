// SPDX-License-Identifier: GPL-3.0-or-later
//
// Which key of a board file answers a platform call, and where it stands.
#include <set>
#include <sstream>

#include <gmock/gmock.h>

#include "simulator/board_file.h"
#include "simulator/board_keys.h"
#include "simulator/calls.h"

namespace {

sim::AnswerPlace Place(const std::string &text, const std::string &call, const std::string &args = "") {
    return sim::LoadBoardText(text, "boards/test.toml").lines->Of(call, args);
}

std::pair<std::string, uint32_t> Found(const sim::AnswerPlace &place) {
    return {place.section + "." + place.key, place.line};
}

using Pair = std::pair<std::string, uint32_t>;

TEST(BoardLines, AKeyStandsOnItsLine) {
    const std::string text = "[psus]\n\ncount = 2\n";
    EXPECT_EQ(Found(Place(text, "HAL_GetPsuMaxCount")), Pair("psus.count", 3));
}

TEST(BoardLines, WhatTheFileDoesNotSayHasNoLine) {
    EXPECT_EQ(Found(Place("", "HAL_GetPsuMaxCount")), Pair("psus.count", 0));
}

TEST(BoardLines, AnArgumentIsPartOfTheKeyInAnySpelling) {
    EXPECT_EQ(Found(Place("[support.sensors]\nPCH_TEMP = false\nSENSOR_ME = false\n",
                          "HAL_GetSensorNotSupportFlagBySensor", "sensor=" + std::to_string(SENSOR_ME))),
              Pair("support.sensors.SENSOR_ME", 3));
    EXPECT_EQ(Found(Place("[disks]\nsilk = { 1 = 4, 0x02 = 7 }\n", "Hal_GetHddSilkByHddSlot", "slot=2")),
              Pair("disks.silk.0x02", 2));
    EXPECT_EQ(Found(Place("[switch_board.card.2]\nonline = true\nid = 5\n", "GetCardBoardId", "card=2")),
              Pair("switch_board.card.2.id", 3));
}

TEST(BoardLines, ASensorThatIsNotListedFollowsTheFlagForAll) {
    EXPECT_EQ(
        Found(Place("[support]\nall = false\nsensors = { ME = true }\n",
                    "HAL_GetSensorNotSupportFlagBySensor", "sensor=" + std::to_string(SENSOR_INTRUSION))),
        Pair("support.all", 2));
}

TEST(BoardLines, OfAListOfTablesTheFirstOneIsThePlace) {
    EXPECT_EQ(
        Found(Place("[disks]\n[[disks.backplane]]\nstart_slot = 0\ndisk_count = 1\n[[disks.backplane]]\n"
                    "start_slot = 1\ndisk_count = 1\n",
                    "HalHddBackpanelService.GetBackPanelList")),
        Pair("disks.backplane", 2));
}

TEST(BoardLines, FaultsAreCountedInTheOrderOfTheFile) {
    const auto file = sim::LoadBoardText("[[fault]]\ncall = \"fread\"\n\n[[fault]]\ncall = \"fwrite\"\n",
                                         "boards/test.toml");
    EXPECT_EQ(file.lines->FaultLine(0), 1u);
    EXPECT_EQ(file.lines->FaultLine(1), 4u);
    EXPECT_EQ(file.lines->FaultLine(2), 0u);
}

// Every key that is named is one that a board file may hold.
TEST(KeysOfCalls, AreKeysOfABoardFile) {
    std::set<std::string> known;
    for (const sim::BoardKey &key : sim::BoardKeys())
        known.insert(key.section.empty() ? key.key : key.section + "." + key.key);
    for (const sim::CallFacts &call : sim::kCalls) {
        std::istringstream all(sim::KeysOfCall(std::string(call.name)));
        for (std::string keys; all >> keys;) {
            const size_t open = keys.find('{');
            if (open != std::string::npos)
                keys = keys.substr(0, open) + "*" + keys.substr(keys.find('}') + 1);
            EXPECT_EQ(known.count(keys), 1u) << call.name << " answers from " << keys;
        }
    }
}

// What has no key is not the board's to say: writes, the library's own files, lines, copies, sessions.
TEST(KeysOfCalls, EveryQuestionAboutTheBoardHasOne) {
    for (const sim::CallFacts &call : sim::kCalls) {
        const std::string name(call.name);
        const bool asks = name.starts_with("HAL_Get") || name.starts_with("Hal_Get") ||
                          name.starts_with("Get") || name.starts_with("MW_Get") || name.starts_with("Hal");
        if (asks) {
            EXPECT_NE(sim::KeysOfCall(name), "") << name;
        }
    }
}

} // namespace
