// SPDX-License-Identifier: GPL-3.0-or-later
//
// Every board's set, record and entry byte for byte, against what the independent model (tests/model) says.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "static_sensors/default_support.h"

namespace {

using namespace default_set;
namespace fs = std::filesystem;

std::vector<std::string> BoardNames() {
    std::vector<std::string> names;
    const fs::path boards = OXA_SOURCE_DIR "/boards";
    for (const auto &file : fs::recursive_directory_iterator(boards))
        if (file.path().extension() == ".toml")
            names.push_back(fs::relative(file.path(), boards).string());
    std::sort(names.begin(), names.end());
    return names;
}

std::string Dashed(std::string name) {
    name.resize(name.size() - std::strlen(".toml"));
    std::replace(name.begin(), name.end(), '/', '-');
    return name;
}

struct Model {
    bool found = false;
    bool written = false;
    uint16_t count = 0;
    std::vector<std::string> lines; // name, record, entry
};

Model ReadModel(const std::string &board) {
    std::ifstream file(OXA_SOURCE_DIR "/tests/model/expected/" + Dashed(board) + ".txt");
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

class DefaultSetOfBoard : public testing::TestWithParam<std::string> {};

TEST_P(DefaultSetOfBoard, EqualsTheModelByteForByte) {
    const Model model = ReadModel(GetParam());
    ASSERT_TRUE(model.found) << "tests/model/make_expected.py writes the file";
    const std::string path = OXA_SOURCE_DIR "/boards/" + GetParam();
    sim::Start(sim::LoadBoardFile(path));
    for (const sim::Fault &fault : sim::LoadBoardFaults(path))
        sim::AddFault(fault);
    const Outcome outcome = RunPass();
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

std::string TestName(const testing::TestParamInfo<std::string> &info) {
    std::string name = Dashed(info.param);
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}
INSTANTIATE_TEST_SUITE_P(Boards, DefaultSetOfBoard, testing::ValuesIn(BoardNames()), TestName);

TEST(DefaultSetOfBoards, TheNumbersOfTheBaseBoard) {
    sim::Board board = BaseBoard();
    EXPECT_EQ(RunPass(board).count, 48);
    board.liquid_cooling_mode = 1;
    EXPECT_EQ(RunPass(board).count, 49);
    board.liquid_cooling_mode = 2;
    EXPECT_EQ(RunPass(board).count, 46);
    board.liquid_cooling_mode = 0;
    board.cpus.type = 3;
    EXPECT_EQ(RunPass(board).count, 51);
}

} // namespace
