// SPDX-License-Identifier: GPL-3.0-or-later
//
// The parts of a name: numbers, replacement, and, beside them, the FRU id offset.
#include "specific_sensors/formed_names.h"

namespace {

using testing::ElementsAre;

std::string Silk(int device, uint32_t sensor_class, uint8_t number, uint32_t profile, uint8_t plain) {
    const SnrQuery query = Query(sensor_class, device, 0);
    char text[17];
    memset(text, 'x', sizeof(text));
    getSilkInfo(&query, text, number, profile, plain);
    EXPECT_NE(memchr(text, 0, sizeof(text)), nullptr);
    return std::string(text, strnlen(text, sizeof(text)));
}

// ---- numbers -----------------------------------------------------------------------------------

class Numbers : public Lookup {};

TEST_F(Numbers, EitherNullPointerIsReported) {
    const SnrQuery query = Query(kTemp, 2, 0);
    char text[17] = "kept";
    getSilkInfo(nullptr, text, 1, 0, 0);
    getSilkInfo(&query, nullptr, 1, 0, 0);
    const std::string line = "error 42 getSilkInfo: getSilkInfo failed! ptInfo == NULL || pSilkInfo == NULL.";
    EXPECT_THAT(LogLines(), ElementsAre(line, line));
    EXPECT_STREQ(text, "kept");
    EXPECT_EQ(sim::CountCalls("GetOcpNetCardMaxCount"), 0u);
}

TEST_F(Numbers, ThePlainFlagTurnsPaddingOff) {
    EXPECT_EQ(Silk(2, kTemp, 3, 0, 0), "03");
    EXPECT_EQ(Silk(2, kTemp, 3, 0, 1), "3");
    EXPECT_EQ(Silk(2, kTemp, 3, 20, 0), "03");
    EXPECT_EQ(Silk(2, kTemp, 3, 20, 1), "3");
    EXPECT_EQ(Silk(2, kTemp, 3, 2, 0), "3");
}

TEST_F(Numbers, TheFanRulesComeBeforeThePlainFlag) {
    EXPECT_EQ(Silk(255, kFan, 10, 1, 1), "A");
    EXPECT_EQ(Silk(255, kFan, 3, 11, 1), "03");
}

TEST_F(Numbers, FansOfOtherProfilesFallThrough) {
    EXPECT_EQ(Silk(255, kFan, 10, 0, 0), "10");
    EXPECT_EQ(Silk(255, kFan, 3, 0, 0), "03");
    EXPECT_EQ(Silk(255, kFan, 3, 0, 1), "3");
    EXPECT_EQ(Silk(255, kFan, 3, 4, 0), "3");
}

TEST_F(Numbers, TheOcpCardsAreCountedOnEveryCallAlsoForFans) {
    Silk(255, kFan, 10, 1, 0);
    EXPECT_EQ(sim::CountCalls("GetOcpNetCardMaxCount"), 1u);
    EXPECT_EQ(sim::CountCalls("GetOcpPresentStatus"), 1u);
    Silk(2, kTemp, 10, 0, 1);
    EXPECT_EQ(sim::CountCalls("GetOcpNetCardMaxCount"), 2u);
    EXPECT_EQ(sim::CountCalls("GetOcpPresentStatus"), 2u);
}

TEST_F(Numbers, FerriskNicsNumberOnFromThePresentOcpCards) {
    sim::CurrentBoard().ocp.count = 4;
    sim::CurrentBoard().ocp.present = 0b0110;
    EXPECT_EQ(Silk(5, kTemp, 9, 16, 0), "2");
    EXPECT_EQ(Silk(5, kTemp, 9, 16, 0), "3");
    EXPECT_EQ(Silk(5, kTemp, 1, 16, 0), "4") << "whatever slot it sits in";
    sim::CurrentBoard().ocp.present = 0b1111;
    EXPECT_EQ(Silk(5, kTemp, 1, 16, 0), "7") << "4 cards and the fourth NIC";
}

TEST_F(Numbers, OnlyNicsOfFerriskAdvanceItsCounter) {
    EXPECT_EQ(Silk(6, kTemp, 9, 16, 0), "9");
    EXPECT_EQ(Silk(5, kTemp, 9, 16, 1), "9") << "the plain flag passes the counter by";
    EXPECT_EQ(Silk(5, kTemp, 9, 2, 0), "9");
    EXPECT_EQ(Silk(5, kTemp, 9, 0, 0), "09");
    EXPECT_EQ(Silk(5, kTemp, 9, 16, 0), "0") << "no card is present and no NIC was numbered yet";
}

TEST_F(Numbers, OnlyPresenceBitsBelowTheCardCountCount) {
    sim::CurrentBoard().ocp.count = 2;
    sim::CurrentBoard().ocp.present = 0xFFFFFFFF;
    EXPECT_EQ(Silk(5, kTemp, 9, 16, 0), "2");
    sim::CurrentBoard().ocp.present = 0xFFFFFFFC;
    EXPECT_EQ(Silk(5, kTemp, 9, 16, 0), "1") << "no card below the count, second NIC";
}

TEST_F(Numbers, CardsFrom32UpCountAsAbsent) {
    sim::CurrentBoard().ocp.count = 40;
    sim::CurrentBoard().ocp.present = 0xFFFFFFFF;
    EXPECT_EQ(Silk(5, kTemp, 9, 16, 0), "32");
}

TEST_F(Numbers, TheFerriskCounterRunsThroughWholeNames) {
    Board(CUSTOM_ID_FERRISK);
    sim::CurrentBoard().ocp.count = 2;
    sim::CurrentBoard().ocp.present = 1;
    EXPECT_EQ(Formed(kTemp, 5, 0, 7), "NIC1_Temp");
    EXPECT_EQ(Formed(kTemp, 6, 0, 7), "NIC7_Temp") << "an OCP card keeps its slot";
    EXPECT_EQ(Formed(kTemp, 5, 0, 7), "NIC2_Temp");
    SnrQuery refused = Query(0x0D00, 5, 0, "0123456789ABCDE*");
    sim::CurrentBoard().ocp.count = 32;
    sim::CurrentBoard().ocp.present = 0x3FF;
    EXPECT_EQ(getSensorInfo(&refused, 7, 0), 17) << "number 12 makes it too long";
    sim::CurrentBoard().ocp.present = 1;
    EXPECT_EQ(Formed(kTemp, 5, 0, 7), "NIC4_Temp") << "the third number was used up";
}

// ---- replacement -------------------------------------------------------------------------------

class Replacement : public Lookup {
protected:
    static std::string Replaced(const char *source, const char *pattern, const char *with, uint8_t length) {
        char guarded[17 + 4];
        memset(guarded, '!', sizeof(guarded));
        EXPECT_EQ(strrpc(guarded, source, pattern, with), length) << source;
        EXPECT_EQ(std::string(guarded + 17, 4), "!!!!") << source;
        EXPECT_NE(memchr(guarded, 0, 17), nullptr) << source;
        return std::string(guarded, strnlen(guarded, 17));
    }
};

TEST_F(Replacement, EveryOccurrenceIsReplaced) {
    EXPECT_EQ(Replaced("a*b*c", "*", "07", 7), "a07b07c");
    EXPECT_EQ(Replaced("*", "*", "7", 1), "7");
    EXPECT_EQ(Replaced("abcabc", "bc", "X", 4), "aXaX");
    EXPECT_EQ(Replaced("plain", "*", "7", 5), "plain");
    EXPECT_EQ(Replaced("", "*", "7", 0), "");
}

TEST_F(Replacement, AnEmptyReplacementDeletes) {
    EXPECT_EQ(Replaced("a*b*", "*", "", 2), "ab");
}

TEST_F(Replacement, TheReplacementIsNotScannedAgain) {
    EXPECT_EQ(Replaced("a*", "*", "**", 3), "a**");
    EXPECT_EQ(Replaced("aab", "ab", "b", 2), "ab");
}

TEST_F(Replacement, APatternThatRunsPastTheSourceDoesNotMatch) {
    EXPECT_EQ(Replaced("ab", "abc", "X", 2), "ab");
}

TEST_F(Replacement, AnEmptyPatternCopiesTheSource) {
    EXPECT_EQ(Replaced("abc", "", "X", 3), "abc");
}

TEST_F(Replacement, AtMost16CharactersAreStoredAndTheWholeLengthIsReturned) {
    EXPECT_EQ(Replaced("0123456789ABCDE*", "*", "07", 17), "0123456789ABCDE0");
    EXPECT_EQ(Replaced("0123456789ABCDEF", "*", "07", 16), "0123456789ABCDEF");
}

TEST_F(Replacement, OnlyTheFirst16CharactersOfTheSourceAreRead) {
    EXPECT_EQ(Replaced("0123456789ABCDEF*tail", "*", "X", 16), "0123456789ABCDEF");
    const char unterminated[16] = {'0', '1', '2', '3', '4', '5', '6', '7',
                                   '8', '9', 'A', 'B', 'C', 'D', 'E', '*'};
    EXPECT_EQ(Replaced(unterminated, "*", "X", 16), "0123456789ABCDEX");
}

TEST_F(Replacement, TheLengthStopsAt255) {
    EXPECT_EQ(Replaced("****************", "*", "0123456789ABCDEF", 255), "0123456789ABCDEF");
}

TEST_F(Replacement, EveryNullPointerIsReportedOnceTheOutputOnALineOfItsOwn) {
    char out[17] = "kept";
    EXPECT_EQ(strrpc(nullptr, "a", "b", "c"), 0);
    EXPECT_EQ(strrpc(out, nullptr, "b", "c"), 0);
    EXPECT_EQ(strrpc(out, "a", nullptr, "c"), 0);
    EXPECT_EQ(strrpc(out, "a", "b", nullptr), 0);
    EXPECT_EQ(strrpc(nullptr, nullptr, nullptr, nullptr), 0);
    const std::string line = "error 42 strrpc: strrpc failed! The input parameter is null.";
    EXPECT_THAT(LogLines(), ElementsAre(line, line, line, line, line));
    const std::vector<sim::Event> logs = sim::Logs();
    EXPECT_NE(logs[0].line, logs[1].line);
    EXPECT_EQ(logs[1].line, logs[2].line);
    EXPECT_EQ(logs[1].line, logs[3].line);
    EXPECT_EQ(logs[0].line, logs[4].line);
}

// ---- FRU id offset -----------------------------------------------------------------------------

class FruIdOffset : public Lookup {
protected:
    void Machine(uint32_t custom_id, uint32_t product) {
        Board(custom_id);
        sim::CurrentBoard().inner_product_id = product;
    }
    static void ExpectCached(uint8_t offset) {
        const size_t custom = sim::CountCalls("IPMI_LoadCustomID"),
                     product = sim::CountCalls("MW_GetInnerProductId");
        sim::ClearFaults();
        sim::CurrentBoard().custom_id = offset == 0 ? CUSTOM_ID_SABLIN : CUSTOM_ID_DEFAULT;
        sim::CurrentBoard().inner_product_id = 7;
        EXPECT_EQ(GetSdrFruIdOffset(), offset);
        EXPECT_EQ(sim::CountCalls("IPMI_LoadCustomID"), custom);
        EXPECT_EQ(sim::CountCalls("MW_GetInnerProductId"), product);
    }
};

TEST_F(FruIdOffset, Is8OnASablinMachineOfProduct7AndIsAskedOnce) {
    Machine(CUSTOM_ID_SABLIN, 7);
    EXPECT_EQ(GetSdrFruIdOffset(), 8);
    ExpectCached(8);
}

TEST_F(FruIdOffset, Is0OnAnotherSablinProduct) {
    Machine(CUSTOM_ID_SABLIN, 6);
    EXPECT_EQ(GetSdrFruIdOffset(), 0);
    EXPECT_EQ(sim::CountCalls("MW_GetInnerProductId"), 1u);
    ExpectCached(0);
}

TEST_F(FruIdOffset, Is0InOtherProfilesWithoutAskingForTheProduct) {
    Machine(CUSTOM_ID_FERRISK, 7);
    EXPECT_EQ(GetSdrFruIdOffset(), 0);
    EXPECT_EQ(sim::CountCalls("MW_GetInnerProductId"), 0u);
    ExpectCached(0);
}

TEST_F(FruIdOffset, AnUnreadableProfileIdIsCachedAs0) {
    Machine(CUSTOM_ID_SABLIN, 7);
    sim::Fault fault;
    fault.call = "IPMI_LoadCustomID";
    fault.output = CUSTOM_ID_SABLIN; // what a failed call leaves is not to be trusted
    sim::AddFault(fault);
    EXPECT_EQ(GetSdrFruIdOffset(), 0);
    ExpectCached(0);
}

TEST_F(FruIdOffset, AnUnreadableProductIsCachedAs0) {
    Machine(CUSTOM_ID_SABLIN, 7);
    sim::Fault fault;
    fault.call = "MW_GetInnerProductId";
    fault.output = 7;
    sim::AddFault(fault);
    EXPECT_EQ(GetSdrFruIdOffset(), 0);
    ExpectCached(0);
}

TEST_F(FruIdOffset, TheHookReturnsItsArgumentAndChangesNothing) {
    Machine(CUSTOM_ID_SABLIN, 7);
    for (int offset = 0; offset < 256; ++offset) {
        EXPECT_EQ(SetSdrFruIdOffset(static_cast<uint8_t>(offset)), offset);
    }
    EXPECT_EQ(GetSdrFruIdOffset(), 8);
    EXPECT_EQ(SetSdrFruIdOffset(3), 3);
    EXPECT_EQ(GetSdrFruIdOffset(), 8);
}

} // namespace
