// SPDX-License-Identifier: GPL-3.0-or-later
//
// The sets of the nine profiles, record and entry byte for byte, against what the independent model
// (tests/model) says; order and count with them.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <tuple>

#include "support/boards.h"
#include "support/build_facts.h"
#include "support/static_pass.h"

namespace {

using namespace tests;

struct Model {
    bool written = false;
    uint16_t count = 0;
    std::vector<Record> records;
};

std::string ModelFile(const Profile &profile, const std::string &board) {
    return tests::InSource(std::string("tests/model/expected/") + profile.folder + "/" + board + ".txt");
}

Model ReadModel(const std::string &path) {
    std::ifstream file(path);
    Model model;
    std::string line;
    EXPECT_TRUE(std::getline(file, line)) << "tests/model/make_expected.py writes the file";
    model.written = line.starts_with("count ");
    if (model.written)
        model.count = static_cast<uint16_t>(std::stoul(line.substr(6)));
    while (std::getline(file, line)) { // name, which may hold blanks, record, entry
        const size_t entry = line.rfind(' '), sdr = line.rfind(' ', entry - 1);
        model.records.push_back(
            {Literal(line.substr(sdr + 1, entry - sdr - 1)), Literal(line.substr(entry + 1))});
        EXPECT_EQ(model.records.back().Name(), line.substr(0, sdr));
    }
    return model;
}

using Set = std::tuple<Profile, std::string>;

std::vector<Set> Sets() {
    std::vector<Set> sets;
    for (const Profile &profile : Profiles())
        for (const std::string &board : BoardNames())
            if (std::filesystem::exists(ModelFile(profile, board)))
                sets.emplace_back(profile, board);
    return sets;
}

class SetOnBoard : public testing::TestWithParam<Set> {};

TEST_P(SetOnBoard, EqualsTheModelByteForByte) {
    const auto &[profile, board] = GetParam();
    const Model model = ReadModel(ModelFile(profile, board));
    StartBoard(board);
    const Outcome outcome = RunPass(profile.driver);
    EXPECT_EQ(outcome.written, model.written);
    EXPECT_EQ(outcome.count, model.written ? model.count : kCallersCount);
    EXPECT_TRUE(SameRecords(model.records, outcome.records));
    EXPECT_TRUE(sim::Violations().empty()) << testing::PrintToString(sim::Violations());
}

std::string SetName(const testing::TestParamInfo<Set> &info) {
    return std::get<0>(info.param).name + "_on_" + Replace(std::get<1>(info.param), "-", "_");
}
INSTANTIATE_TEST_SUITE_P(Sets, SetOnBoard, testing::ValuesIn(Sets()), SetName);

size_t SetsOf(const Profile &profile) {
    const std::vector<Set> sets = Sets();
    return static_cast<size_t>(std::count_if(
        sets.begin(), sets.end(), [&](const Set &set) { return std::get<0>(set).folder == profile.folder; }));
}

TEST(Sets, AreOfDefaultOnEveryBoardAndOfTheOthersOnTenBoardsAndNineGuardsAtLeast) {
    const Profile &usual = *std::find_if(Profiles().begin(), Profiles().end(),
                                         [](const Profile &profile) { return profile.folder == "default"; });
    for (const std::string &board : BoardNames())
        EXPECT_TRUE(std::filesystem::exists(ModelFile(usual, board)))
            << board << " was added: run tests/model/make_expected.py (docs/adding-a-board.md)";
    for (const Profile &profile : Profiles())
        EXPECT_GE(SetsOf(profile), 10u + 9) << profile.name;
}

} // namespace
