// SPDX-License-Identifier: GPL-3.0-or-later
//
// The sets of the eight other profiles, record and entry byte for byte, against what the independent model
// (tests/model) says; order and count with them.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <tuple>

#include "static_sensors/profiles_support.h"

namespace {

using namespace profile_sets;
namespace fs = std::filesystem;

struct Model {
    bool found = false;
    bool written = false;
    uint16_t count = 0;
    std::vector<std::string> lines; // name, record, entry
};

Model ReadModel(const std::string &path) {
    std::ifstream file(path);
    Model model;
    std::string line;
    model.found = static_cast<bool>(std::getline(file, line));
    model.written = line.starts_with("count ");
    if (model.written)
        model.count = static_cast<uint16_t>(std::stoul(line.substr(6)));
    while (std::getline(file, line))
        model.lines.push_back(line);
    return model;
}

std::string ExpectedFolder(const Profile &profile) {
    return OXA_SOURCE_DIR "/tests/model/expected/" + profile.folder;
}

std::vector<std::tuple<Profile, std::string>> Sets() {
    std::vector<std::tuple<Profile, std::string>> sets;
    for (const Profile &profile : OtherProfiles())
        for (const auto &file : fs::directory_iterator(ExpectedFolder(profile)))
            sets.emplace_back(profile, file.path().stem().string());
    std::sort(sets.begin(), sets.end(), [](const auto &a, const auto &b) {
        return std::pair(std::get<0>(a).name, std::get<1>(a)) <
               std::pair(std::get<0>(b).name, std::get<1>(b));
    });
    return sets;
}

std::string BoardFile(const std::string &dashed) {
    return (dashed.starts_with("guards-") ? "guards/" + dashed.substr(7) : dashed) + ".toml";
}

class ProfileSetOfBoard : public testing::TestWithParam<std::tuple<Profile, std::string>> {};

TEST_P(ProfileSetOfBoard, EqualsTheModelByteForByte) {
    const auto &[profile, board] = GetParam();
    const Model model = ReadModel(ExpectedFolder(profile) + "/" + board + ".txt");
    ASSERT_TRUE(model.found) << "tests/model/make_expected.py writes the file";
    const std::string path = OXA_SOURCE_DIR "/boards/" + BoardFile(board);
    sim::Start(sim::LoadBoardFile(path));
    for (const sim::Fault &fault : sim::LoadBoardFaults(path))
        sim::AddFault(fault);
    const Outcome outcome = RunPass(profile.driver);
    EXPECT_EQ(outcome.written, model.written);
    EXPECT_EQ(outcome.count, model.written ? model.count : kCallersCount);
    for (size_t i = 0; i < std::max(outcome.records.size(), model.lines.size()); ++i) {
        std::ostringstream ours;
        if (i < outcome.records.size())
            ours << outcome.records[i];
        ASSERT_EQ(ours.str(), i < model.lines.size() ? model.lines[i] : "") << "record " << i;
    }
    EXPECT_TRUE(sim::Violations().empty()) << testing::PrintToString(sim::Violations());
}

std::string SetName(const testing::TestParamInfo<std::tuple<Profile, std::string>> &info) {
    return std::get<0>(info.param).name + "_on_" + Replace(std::get<1>(info.param), "-", "_");
}
INSTANTIATE_TEST_SUITE_P(Sets, ProfileSetOfBoard, testing::ValuesIn(Sets()), SetName);

TEST(ProfileSets, EveryProfileHasTenBoardsAndNineGuards) {
    EXPECT_EQ(Sets().size(), 8u * (10 + 9));
}

} // namespace
