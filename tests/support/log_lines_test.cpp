// SPDX-License-Identifier: GPL-3.0-or-later
//
// How lines are written down.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/log_lines.h"

namespace {

using namespace tests;

sim::Event Log(const std::string &text) {
    sim::Event event;
    event.kind = sim::Kind::kLog;
    event.level = sim::Level::kWarn;
    event.number = 42;
    event.function = "f";
    event.file = "unit.c";
    event.line = 7;
    event.text = text;
    return event;
}
sim::Event Channel(sim::Kind kind, const std::string &text) {
    sim::Event event;
    event.kind = kind;
    event.number = 130;
    event.text = text;
    return event;
}

TEST(LogLine, HasLevelModuleFunctionAndText) {
    EXPECT_EQ(LineOf(Log("a\n")), "warn 42 f: a\n");
    EXPECT_EQ(LineOf(Log("failed, line=123\n")), "warn 42 f: failed, line=#\n");
    EXPECT_EQ(UnitOf(Log("a")), "unit.c");
}

TEST(LogLine, OfAChannelLosesItsPlace) {
    const sim::Event debug = Channel(sim::Kind::kDebug, "[unit_x.c:12]text]\n");
    EXPECT_EQ(LineOf(debug), "debug 130: text]\n");
    EXPECT_EQ(UnitOf(debug), "unit_x.c");
    EXPECT_EQ(LineOf(Channel(sim::Kind::kAudit, "[unit.c:1]")), "audit 130: ");
}

TEST(LogLine, TellsAPlaceFromOtherTexts) {
    EXPECT_TRUE(BeginsWithItsPlace("[a_b.c:1]"));
    for (const char *text :
         {"", "text", "[a.c]x", "[a.c:]x", "[a.c:x]", "[A.c:1]", "a.c:1]", "[a.c:1", "[]a.c:1"})
        EXPECT_FALSE(BeginsWithItsPlace(text)) << text;
}

} // namespace
