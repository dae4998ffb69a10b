// SPDX-License-Identifier: GPL-3.0-or-later
//
// How tests write bytes down.
#include <gtest/gtest.h>

#include "support/bytes.h"

namespace {

using namespace tests;

TEST(LiteralBytes, ArePairsTextAndRepeatedBytes) {
    EXPECT_EQ(Literal("00 5a FF"), (Bytes{0x00, 0x5A, 0xFF}));
    EXPECT_EQ(Literal("C3 'A b' 00"), (Bytes{0xC3, 'A', ' ', 'b', 0x00}));
    EXPECT_EQ(Literal("FFx3 00x16"),
              (Bytes{0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(Literal("00 0102AB"), (Bytes{0x00, 0x01, 0x02, 0xAB}));
    EXPECT_EQ(Literal(""), Bytes());
}

TEST(LiteralBytes, RefuseWhatIsNoByte) {
    for (const char *text : {"0", "000", "0G", "00 0x12 3", "x5", "00x"})
        EXPECT_THROW(Literal(text), std::invalid_argument) << text;
}

TEST(HexText, IsUpperCaseWithBlanksBetween) {
    EXPECT_EQ(Hex({0x00, 0x5A, 0xFF}), "00 5A FF");
    EXPECT_EQ(Hex({}), "");
}

} // namespace
