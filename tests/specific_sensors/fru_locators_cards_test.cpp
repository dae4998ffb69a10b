// SPDX-License-Identifier: GPL-3.0-or-later
//
// FRU device locators of the catalogue cards: purchase cards and the SL200 card.
#include "specific_sensors/fru_records.h"

namespace {

using namespace fru;
using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;

class PurchaseCardLocator : public FruTest {};
class Sl200Locator : public FruTest {};

// ---- purchase cards -----------------------------------------------------------------------------

class EveryCatalogueCard : public FruTest, public testing::WithParamInterface<CatalogueCard> {};
INSTANTIATE_TEST_SUITE_P(PurchaseCardLocator, EveryCatalogueCard, testing::ValuesIn(kCards),
                         [](const auto &info) { return std::string(info.param.label); });

std::vector<std::string> CardLines(uint16_t type, int pool_id) {
    char text[64];
    std::snprintf(text, sizeof(text), "ptParam->dwDevType = 0x%x", type);
    const std::string generator = "info 42 GenFruOfPurchaseCardSpecificSDR: ";
    return {generator + "GenFruOfPurchaseCardSpecificSDR is exec!!!\n", generator + text,
            "info 42 GetNoUsedFruIdForPurchaseCard: FruId = " + std::to_string(pool_id) + " Is Allocated !",
            "info 42 SavePurchaseCardFruId: Ini Is Valid!"};
}

TEST_P(EveryCatalogueCard, HasThisRecord) {
    const Built built = BuildCard(GetParam().type, 3);
    EXPECT_EQ(built.length, GetParam().length);
    EXPECT_TRUE(tests::SameSdr(GetParam().record, built.record));
    EXPECT_THAT(Lines(), ElementsAreArray(CardLines(GetParam().type, 36)));
}

TEST_P(EveryCatalogueCard, HasFruId44OnTheShiftedMachine) {
    StartClean(ShiftedMachine());
    const Built built = BuildCard(GetParam().type, 3);
    EXPECT_EQ(built.length, GetParam().length);
    EXPECT_TRUE(tests::SameSdr(WithFruId(GetParam().record, 44), built.record));
    EXPECT_THAT(Lines(), ElementsAreArray(CardLines(GetParam().type, 36))); // the pool's own number
}

TEST_F(PurchaseCardLocator, OnTheShiftedMachineIsThisRecord) {
    StartClean(ShiftedMachine());
    const Built built = BuildCard(0x010B, 255);
    EXPECT_EQ(built.length, 25);
    EXPECT_EQ(built.record,
              (Bytes{0x00, 0x00, 0x51, 0x11, 0x14, 0x20, 0x2C, 0x80, 0x2C, 0x00, 0x10, 0x00, 0x0B,
                     0xFF, 0x01, 0xC9, 'H',  'y',  'p',  'e',  'r',  'C',  'a',  'r',  'd'}));
}

TEST_F(PurchaseCardLocator, OfTwoCardsIsEnteredInTheIdFile) {
    BuildCard(0x010B, 3);
    BuildCard(0x05E0, 255);
    EXPECT_EQ(TextOf(kIdFile), "[HyperCard]\nHyperCard_FruId =36\nHyperCard_SlotId =3\n"
                               "[OXA UBB1.5  ]\nOXA UBB1.5  _FruId =35\nOXA UBB1.5  _SlotId =255\n");
}

TEST_F(PurchaseCardLocator, TheIdFileHoldsTheShiftedFruId) {
    StartClean(ShiftedMachine());
    BuildCard(0x020B, 9);
    EXPECT_EQ(TextOf(kIdFile), "[NEO CARD]\nNEO CARD_FruId =44\nNEO CARD_SlotId =9\n");
}

TEST_F(PurchaseCardLocator, InSlot0IsNotBuiltAndTakesNoFruId) {
    EXPECT_EQ(BuildCard(0x010B, 0).length, 0);
    EXPECT_THAT(Lines(),
                ElementsAre("info 42 GenFruOfPurchaseCardSpecificSDR: GenFruOfPurchaseCardSpecificSDR is "
                            "exec!!!\n",
                            "info 42 GenFruOfPurchaseCardSpecificSDR: ptParam->dwDevType = 0x10b",
                            "info 42 GenFruOfPurchaseCardSpecificSDR: ucSlotId = 0 !"));
    EXPECT_FALSE(sim::FileExists(kIdFile));
    EXPECT_TRUE(tests::SameSdr(kCards[0].record, BuildCard(0x010B, 3).record)); // still the first of the pool
}

TEST_F(PurchaseCardLocator, ReadsTheLow16BitsOfTheClassWord) {
    EXPECT_TRUE(
        tests::SameSdr(kCards[0].record, Build(GenFruOfPurchaseCardSpecificSDR, Card(0xABCD010B, 3)).record));
    EXPECT_THAT(Lines(), ElementsAreArray(CardLines(0x010B, 36)));
}

TEST_F(PurchaseCardLocator, IsBuiltWhenTheIdFileCannotBeLoaded) {
    Fail("OXA_IniLoadFile");
    EXPECT_TRUE(tests::SameSdr(kCards[0].record, BuildCard(0x010B, 3).record));
    std::vector<std::string> lines = CardLines(0x010B, 36);
    lines.back() = "info 42 SavePurchaseCardFruId: OXA_IniLoadFile is fail!!!\n";
    EXPECT_THAT(Lines(), ElementsAreArray(lines));
    EXPECT_FALSE(sim::FileExists(kIdFile));
}

TEST_F(PurchaseCardLocator, IsBuiltWhenTheIdFileCannotBeWritten) {
    for (const char *call : {"IniSaveFile", "IniSetUInt"}) {
        Apart(call, [call] {
            StartClean(PlainMachine());
            Fail(call);
            EXPECT_TRUE(tests::SameSdr(kCards[0].record, BuildCard(0x010B, 3).record));
        });
    }
}

TEST_F(PurchaseCardLocator, IsBuiltBesideADamagedIdFile) {
    for (const std::string &text : {EveryByte(), std::string("[HyperCard\nHyperCard_FruId = x\n=\n]["),
                                    std::string("[HyperCard]\nHyperCard_FruId =99999999999999\n")}) {
        Apart("damaged", [&text] {
            StartClean(PlainMachine());
            Put(kIdFile, text);
            EXPECT_TRUE(tests::SameSdr(kCards[0].record, BuildCard(0x010B, 3).record));
            EXPECT_THAT(TextOf(kIdFile),
                        testing::HasSubstr("[HyperCard]\nHyperCard_FruId =36\nHyperCard_SlotId =3\n"));
        });
    }
}

TEST_F(PurchaseCardLocator, IsBuiltWithADirectoryInPlaceOfTheIdFile) {
    PutDirectory(kIdFile);
    EXPECT_TRUE(tests::SameSdr(kCards[0].record, BuildCard(0x010B, 3).record));
    EXPECT_THAT(Lines(), Contains("info 42 SavePurchaseCardFruId: OXA_IniLoadFile is fail!!!\n"));
    EXPECT_TRUE(std::filesystem::is_directory(sim::RealPath(kIdFile)));
}

// ---- the offset ---------------------------------------------------------------------------------

TEST_F(PurchaseCardLocator, TheOffsetNeedsSablinAndInnerProduct7) {
    const struct {
        uint32_t custom_id, product;
        uint8_t fru_id;
    } kRows[] = {{20, 7, 44}, {20, 6, 36}, {20, 8, 36}, {20, 0, 36}, {0, 7, 36}, {6, 7, 36}, {16, 7, 36}};
    for (const auto &row : kRows) {
        Apart(std::to_string(row.custom_id) + "/" + std::to_string(row.product), [&row] {
            StartClean(Machine(row.custom_id, row.product));
            EXPECT_TRUE(tests::SameSdr(WithFruId(kCards[0].record, row.fru_id), BuildCard(0x010B, 3).record));
        });
    }
}

TEST_F(PurchaseCardLocator, AFailedOffsetQueryMeansOffset0ForGood) {
    for (const char *call : {"IPMI_LoadCustomID", "MW_GetInnerProductId"}) {
        Apart(call, [call] {
            StartClean(ShiftedMachine());
            Fail(call);
            EXPECT_TRUE(tests::SameSdr(WithFruId(kCards[0].record, 36), BuildCard(0x010B, 3).record));
            sim::ClearFaults();
            EXPECT_TRUE(tests::SameSdr(WithFruId(kCards[0].record, 35), BuildCard(0x010B, 3).record))
                << "resolved once";
        });
    }
}

// ---- the SL200 card -----------------------------------------------------------------------------

TEST_F(Sl200Locator, TakesItsFruIdFromTheCardPoolOnAPlainMachine) {
    const Built built = BuildSl200(3);
    EXPECT_EQ(built.length, 29);
    EXPECT_TRUE(tests::SameSdr(kSl200Plain, built.record));
    EXPECT_THAT(Lines(), ElementsAre(kSl200Exec, kSl200Type,
                                     "info 42 GetNoUsedFruIdForPurchaseCard: FruId = 36 Is Allocated !",
                                     "info 42 SavePurchaseCardFruId: Ini Is Valid!"));
    EXPECT_EQ(TextOf(kIdFile), "[SL200 Card]\nSL200 Card 36_FruId =36\nSL200 Card 36_SlotId =3\n");
}

TEST_F(Sl200Locator, TakesItsFruIdFromItsSlotOnTheShiftedMachine) {
    StartClean(ShiftedMachine());
    const Built built = BuildSl200(3);
    EXPECT_EQ(built.length, 28);
    EXPECT_TRUE(tests::SameSdr(kSl200Shifted, built.record));
    EXPECT_THAT(Lines(), ElementsAre(kSl200Exec, kSl200Type,
                                     "info 42 GenFruOfSL200CardSpecificSDR: FruId = 1 Is Allocated !",
                                     "info 42 SavePurchaseCardFruId: Ini Is Valid!"));
    EXPECT_EQ(TextOf(kIdFile), "[SL200 Card]\nSL200 Card 1_FruId =1\nSL200 Card 1_SlotId =3\n");
}

TEST_F(Sl200Locator, InSlot0IsNotBuilt) {
    for (const bool shifted : {false, true}) {
        Apart(shifted ? "shifted" : "plain", [shifted] {
            StartClean(shifted ? ShiftedMachine() : PlainMachine());
            EXPECT_EQ(BuildSl200(0).length, 0);
            EXPECT_THAT(Lines(), ElementsAre(kSl200Exec, kSl200Type,
                                             "info 42 GenFruOfSL200CardSpecificSDR: ucSlotId = 0 !"));
            EXPECT_FALSE(sim::FileExists(kIdFile));
        });
    }
}

TEST_F(Sl200Locator, CarriesNameAndOemValueOfTheCardType) {
    const Built built = BuildSl200(4, 0x05E0);
    EXPECT_EQ(built.length, 31);
    EXPECT_EQ(built.record, (Bytes{0x00, 0x00, 0x51, 0x11, 0x1A, 0x20, 0x24, 0x80, 0x24, 0x00, 0x10,
                                   0x00, 0xE0, 0x04, 0x08, 0xCF, 'O',  'X',  'A',  ' ',  'U',  'B',
                                   'B',  '1',  '.',  '5',  ' ',  ' ',  ' ',  '3',  '6'}));
}

TEST_F(Sl200Locator, OfAnUnknownTypeHasAnEmptyNameAndKeepsItsFruId) {
    const Built built = BuildSl200(3, kUnknownCard);
    EXPECT_EQ(built.length, 16);
    EXPECT_EQ(built.record, (Bytes{0x00, 0x00, 0x51, 0x11, 0x0B, 0x20, 0x24, 0x80, 0x24, 0x00, 0x10, 0x00,
                                   0xE0, 0x03, 0x00, 0xC0}));
    EXPECT_THAT(Lines(),
                Contains("info 42 SavePurchaseCardFruId: GetPurchaseCardInfoSectionStr is fail!!\n"));
    EXPECT_FALSE(sim::FileExists(kIdFile));
    EXPECT_TRUE(tests::SameSdr(WithFruId(kCards[0].record, 35), BuildCard(0x010B, 3).record))
        << "36 stays used";
}

TEST_F(Sl200Locator, OfAnUnknownTypeOnTheShiftedMachineHasItsSlotsFruId) {
    StartClean(ShiftedMachine());
    const Built built = BuildSl200(5, kUnknownCard);
    EXPECT_EQ(built.length, 16);
    EXPECT_EQ(built.record, (Bytes{0x00, 0x00, 0x51, 0x11, 0x0B, 0x20, 0x03, 0x80, 0x03, 0x00, 0x10, 0x00,
                                   0xE0, 0x05, 0x00, 0xC0}));
    EXPECT_EQ(BuildSl200(5).length, 0) << "the slot stays used";
}

TEST_F(Sl200Locator, IsBuiltWhenTheIdFileCannotBeLoaded) {
    Fail("OXA_IniLoadFile");
    EXPECT_TRUE(tests::SameSdr(kSl200Plain, BuildSl200(3).record));
    EXPECT_THAT(Lines(), Contains("info 42 SavePurchaseCardFruId: OXA_IniLoadFile is fail!!!\n"));
}

} // namespace
