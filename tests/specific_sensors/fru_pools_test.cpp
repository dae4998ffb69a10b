// SPDX-License-Identifier: GPL-3.0-or-later
//
// Where FRU ids come from and go back to: the purchase-card pool, the slots of the SL200 card, the sub card's
// single id, and the card catalogue.
#include "specific_sensors/fru_records.h"

namespace {

using namespace fru;
using testing::ElementsAre;
using testing::IsEmpty;

class PurchaseCardPool : public FruTest {};
class Sl200Pool : public FruTest {};
class SubCardPool : public FruTest {};
class CardCatalogue : public FruTest {};

const char kAllocated36[] = "info 42 GetNoUsedFruIdForPurchaseCard: FruId = 36 Is Allocated !";
const char kAllocated35[] = "info 42 GetNoUsedFruIdForPurchaseCard: FruId = 35 Is Allocated !";
const char kAllocated34[] = "info 42 GetNoUsedFruIdForPurchaseCard: FruId = 34 Is Allocated !";
const char kAllocated33[] = "info 42 GetNoUsedFruIdForPurchaseCard: FruId = 33 Is Allocated !";
const char kUsed36[] = "info 42 GetNoUsedFruIdForPurchaseCard: FruId = 36 Has Been Used !";
const char kUsed35[] = "info 42 GetNoUsedFruIdForPurchaseCard: FruId = 35 Has Been Used !";
const char kUsed34[] = "info 42 GetNoUsedFruIdForPurchaseCard: FruId = 34 Has Been Used !";
const char kUsed33[] = "info 42 GetNoUsedFruIdForPurchaseCard: FruId = 33 Has Been Used !";

void UseUpThePool() {
    for (int i = 0; i < 4; ++i) {
        GetNoUsedFruIdForPurchaseCard();
    }
    sim::ClearTrace();
}

// FRU id of a record, 0 when there is none.
int FruIdOf(const Built &built) {
    return built.length > 8 ? built.record[6] : 0;
}

// ---- the purchase-card pool ---------------------------------------------------------------------

TEST_F(PurchaseCardPool, Gives36Then35Then34Then33Then255) {
    EXPECT_EQ(GetNoUsedFruIdForPurchaseCard(), 36);
    EXPECT_THAT(Lines(), ElementsAre(kAllocated36));
    sim::ClearTrace();
    EXPECT_EQ(GetNoUsedFruIdForPurchaseCard(), 35);
    EXPECT_THAT(Lines(), ElementsAre(kUsed36, kAllocated35));
    sim::ClearTrace();
    EXPECT_EQ(GetNoUsedFruIdForPurchaseCard(), 34);
    EXPECT_THAT(Lines(), ElementsAre(kUsed36, kUsed35, kAllocated34));
    sim::ClearTrace();
    EXPECT_EQ(GetNoUsedFruIdForPurchaseCard(), 33);
    EXPECT_THAT(Lines(), ElementsAre(kUsed36, kUsed35, kUsed34, kAllocated33));
    for (int again = 0; again < 2; ++again) {
        sim::ClearTrace();
        EXPECT_EQ(GetNoUsedFruIdForPurchaseCard(), 255);
        EXPECT_THAT(Lines(), ElementsAre(kUsed36, kUsed35, kUsed34, kUsed33));
    }
}

TEST_F(PurchaseCardPool, GivesItsOwnNumbersOnTheShiftedMachineToo) {
    StartClean(ShiftedMachine());
    EXPECT_EQ(GetNoUsedFruIdForPurchaseCard(), 36);
    EXPECT_EQ(GetNoUsedFruIdForPurchaseCard(), 35);
}

TEST_F(PurchaseCardPool, AnIdGivenBackIsGivenOutAgain) {
    UseUpThePool();
    for (const uint8_t id : {34, 36, 33, 35}) {
        SetFruValidState(id);
        EXPECT_EQ(GetNoUsedFruIdForPurchaseCard(), id);
        EXPECT_EQ(GetNoUsedFruIdForPurchaseCard(), 255);
    }
    SetFruValidState(33);
    SetFruValidState(35);
    EXPECT_EQ(GetNoUsedFruIdForPurchaseCard(), 35) << "the higher one first";
    EXPECT_EQ(GetNoUsedFruIdForPurchaseCard(), 33);
}

TEST_F(PurchaseCardPool, GivingBackIsSilent) {
    UseUpThePool();
    for (const uint8_t id : {33, 34, 35, 36}) {
        SetFruValidState(id);
        SetFruValidState(id); // a free one stays free
    }
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_EQ(GetNoUsedFruIdForPurchaseCard(), 36);
}

TEST_F(PurchaseCardPool, AnIdOutsideThePoolIsAnErrorAndAnAuditLine) {
    UseUpThePool();
    for (const int id : {0, 1, 7, 8, 32, 37, 41, 44, 59, 254, 255}) {
        sim::ClearTrace();
        SetFruValidState(static_cast<uint8_t>(id));
        EXPECT_THAT(Lines(), ElementsAre("error 42 SetFruValidState: SetFruValidState is fail!fruId:" +
                                             std::to_string(id),
                                         "audit 191: SetFruValidState is fail!!!"));
    }
    EXPECT_EQ(GetNoUsedFruIdForPurchaseCard(), 255);
}

TEST_F(PurchaseCardPool, TheFifthCardOfARunGetsNoRecord) {
    EXPECT_EQ(FruIdOf(BuildCard(0x010B, 1)), 36);
    EXPECT_EQ(FruIdOf(BuildCard(0x01E0, 2)), 35);
    EXPECT_EQ(FruIdOf(BuildCard(0x010B, 3)), 34);
    EXPECT_EQ(FruIdOf(BuildCard(0x07E0, 4)), 33);
    const Bytes before = sim::ReadFile(kIdFile);
    sim::ClearTrace();
    EXPECT_EQ(BuildCard(0x020B, 5).length, 0);
    EXPECT_THAT(Lines(),
                ElementsAre("info 42 GenFruOfPurchaseCardSpecificSDR: GenFruOfPurchaseCardSpecificSDR is "
                            "exec!!!\n",
                            "info 42 GenFruOfPurchaseCardSpecificSDR: ptParam->dwDevType = 0x20b", kUsed36,
                            kUsed35, kUsed34, kUsed33,
                            "info 42 GenFruOfPurchaseCardSpecificSDR: PurchaseCard Get Valid FruId Fail!"));
    EXPECT_EQ(sim::ReadFile(kIdFile), before);
}

TEST_F(PurchaseCardPool, TheFourCardsOfARunAreInTheIdFile) {
    BuildCard(0x010B, 1);
    BuildCard(0x01E0, 2);
    BuildCard(0x010B, 3); // the same card type again: its entry is replaced
    BuildCard(0x07E0, 4);
    EXPECT_EQ(TextOf(kIdFile), "[HyperCard]\nHyperCard_FruId =34\nHyperCard_SlotId =3\n"
                               "[Biren UBB]\nBiren UBB_FruId =35\nBiren UBB_SlotId =2\n"
                               "[MT UBB]\nMT UBB_FruId =33\nMT UBB_SlotId =4\n");
}

TEST_F(PurchaseCardPool, OnTheShiftedMachineGives44DownTo41AndThenFruId7) {
    StartClean(ShiftedMachine());
    for (const int expected : {44, 43, 42, 41, 7, 7}) {
        EXPECT_EQ(FruIdOf(BuildCard(0x010B, 1)), expected);
    }
    const Built built = BuildCard(0x010B, 1);
    EXPECT_EQ(built.length, 25);
    EXPECT_EQ(built.record,
              (Bytes{0x00, 0x00, 0x51, 0x11, 0x14, 0x20, 0x07, 0x80, 0x07, 0x00, 0x10, 0x00, 0x0B,
                     0x01, 0x01, 0xC9, 'H',  'y',  'p',  'e',  'r',  'C',  'a',  'r',  'd'}));
    EXPECT_EQ(TextOf(kIdFile), "[HyperCard]\nHyperCard_FruId =7\nHyperCard_SlotId =1\n");
    EXPECT_EQ(sim::CountText("PurchaseCard Get Valid FruId Fail!"), 0u);
}

TEST_F(PurchaseCardPool, IsNotRefilledFromTheIdFile) {
    Put(kIdFile, "[HyperCard]\nHyperCard_FruId =36\nHyperCard_SlotId =3\n");
    EXPECT_EQ(FruIdOf(BuildCard(0x010B, 4)), 36);
    uint8_t slot = 0, id = 0;
    EXPECT_EQ(LoadPurchaseCardFruId(0x010B, "HyperCard", &slot, &id), 0);
    EXPECT_EQ(GetNoUsedFruIdForPurchaseCard(), 35);
}

TEST_F(PurchaseCardPool, IsSharedWithTheSl200CardOnAPlainMachine) {
    EXPECT_EQ(FruIdOf(BuildSl200(1)), 36);
    EXPECT_EQ(FruIdOf(BuildCard(0x010B, 2)), 35);
    EXPECT_EQ(FruIdOf(BuildSl200(200)), 34) << "no slot range here";
    EXPECT_EQ(FruIdOf(BuildSl200(1)), 33) << "nor one card a slot";
    sim::ClearTrace();
    EXPECT_EQ(BuildSl200(5).length, 0);
    EXPECT_THAT(Lines(),
                ElementsAre("info 42 GenFruOfSL200CardSpecificSDR: GenFruOfSL200CardSpecificSDR is exec!!!\n",
                            "info 42 GenFruOfSL200CardSpecificSDR: ptParam->dwDevType = 0x40b", kUsed36,
                            kUsed35, kUsed34, kUsed33,
                            "info 42 GenFruOfSL200CardSpecificSDR: PurchaseCard Get Valid FruId Fail!"));
}

// ---- a card without a name ----------------------------------------------------------------------

const char kExec[] = "info 42 GenFruOfPurchaseCardSpecificSDR: GenFruOfPurchaseCardSpecificSDR is exec!!!\n";
const char kUnknownType[] = "info 42 GenFruOfPurchaseCardSpecificSDR: ptParam->dwDevType = 0x9e0";
const char kNoName[] = "info 42 GenFruOfPurchaseCardSpecificSDR: Get Device Type Name Fail!";

TEST_F(PurchaseCardPool, ACardWithoutANameGivesItsFruIdBack) {
    EXPECT_EQ(BuildCard(kUnknownCard, 3).length, 0);
    EXPECT_THAT(Lines(), ElementsAre(kExec, kUnknownType, kAllocated36, kNoName));
    EXPECT_FALSE(sim::FileExists(kIdFile));
    EXPECT_EQ(GetNoUsedFruIdForPurchaseCard(), 36);
}

TEST_F(PurchaseCardPool, OnTheShiftedMachineACardWithoutANameLosesItsFruId) {
    StartClean(ShiftedMachine());
    EXPECT_EQ(BuildCard(kUnknownCard, 3).length, 0);
    EXPECT_THAT(Lines(), ElementsAre(kExec, kUnknownType, kAllocated36, kNoName,
                                     "error 42 SetFruValidState: SetFruValidState is fail!fruId:44",
                                     "audit 191: SetFruValidState is fail!!!"));
    EXPECT_FALSE(sim::FileExists(kIdFile));
    EXPECT_EQ(GetNoUsedFruIdForPurchaseCard(), 35) << "36 stays used";
}

TEST_F(PurchaseCardPool, OnTheShiftedMachineFruId7IsGivenBackInVainToo) {
    StartClean(ShiftedMachine());
    UseUpThePool();
    EXPECT_EQ(BuildCard(kUnknownCard, 3).length, 0);
    EXPECT_THAT(Lines(), ElementsAre(kExec, kUnknownType, kUsed36, kUsed35, kUsed34, kUsed33, kNoName,
                                     "error 42 SetFruValidState: SetFruValidState is fail!fruId:7",
                                     "audit 191: SetFruValidState is fail!!!"));
}

TEST_F(PurchaseCardPool, AnExhaustedPoolIsSeenBeforeTheMissingName) {
    UseUpThePool();
    EXPECT_EQ(BuildCard(kUnknownCard, 3).length, 0);
    EXPECT_THAT(Lines(),
                ElementsAre(kExec, kUnknownType, kUsed36, kUsed35, kUsed34, kUsed33,
                            "info 42 GenFruOfPurchaseCardSpecificSDR: PurchaseCard Get Valid FruId Fail!"));
}

TEST_F(PurchaseCardPool, ACardWithoutANameInSlot0StopsAtTheSlot) {
    EXPECT_EQ(BuildCard(kUnknownCard, 0).length, 0);
    EXPECT_THAT(Lines(),
                ElementsAre(kExec, kUnknownType, "info 42 GenFruOfPurchaseCardSpecificSDR: ucSlotId = 0 !"));
}

// ---- the SL200 card's slots ---------------------------------------------------------------------

const char kSl200Fail[] = "info 42 GenFruOfSL200CardSpecificSDR: PurchaseCard Get Valid FruId Fail!";

TEST_F(Sl200Pool, GivesSlots3To10TheFruIds1To8) {
    StartClean(ShiftedMachine());
    for (uint8_t slot = 10; slot >= 3; --slot) {
        const Built built = BuildSl200(slot);
        const auto digit = static_cast<uint8_t>('0' + slot - 2);
        EXPECT_EQ(built.length, 28);
        EXPECT_EQ(built.record.at(6), slot - 2);
        EXPECT_EQ(built.record.at(8), slot - 2);
        EXPECT_EQ(built.record.at(13), slot);
        EXPECT_EQ(built.record.back(), digit);
    }
    EXPECT_EQ(GetNoUsedFruIdForPurchaseCard(), 36) << "the card pool was not touched";
}

TEST_F(Sl200Pool, EightCardsStandInTheIdFileSideBySide) {
    StartClean(ShiftedMachine());
    BuildSl200(3);
    BuildSl200(10);
    EXPECT_EQ(TextOf(kIdFile), "[SL200 Card]\nSL200 Card 1_FruId =1\nSL200 Card 1_SlotId =3\n"
                               "SL200 Card 8_FruId =8\nSL200 Card 8_SlotId =10\n");
}

TEST_F(Sl200Pool, RefusesAnyOtherSlot) {
    StartClean(ShiftedMachine());
    for (const int slot : {1, 2, 11, 12, 127, 254, 255}) {
        sim::ClearTrace();
        EXPECT_EQ(BuildSl200(static_cast<uint8_t>(slot)).length, 0);
        EXPECT_THAT(Lines(), ElementsAre(kSl200Exec, kSl200Type,
                                         "error 42 GenFruOfSL200CardSpecificSDR: slotId:" +
                                             std::to_string(slot) + " Is invalid !",
                                         kSl200Fail));
    }
    EXPECT_FALSE(sim::FileExists(kIdFile));
    EXPECT_EQ(BuildSl200(3).length, 28);
}

TEST_F(Sl200Pool, RefusesASlotThatIsTaken) {
    StartClean(ShiftedMachine());
    EXPECT_EQ(BuildSl200(7).length, 28);
    const Bytes before = sim::ReadFile(kIdFile);
    sim::ClearTrace();
    EXPECT_EQ(BuildSl200(7).length, 0);
    EXPECT_THAT(Lines(),
                ElementsAre(kSl200Exec, kSl200Type,
                            "info 42 GenFruOfSL200CardSpecificSDR: FruId = 5 Has Been Used !", kSl200Fail));
    EXPECT_EQ(sim::ReadFile(kIdFile), before);
    EXPECT_EQ(BuildSl200(8).length, 28) << "its neighbour is free";
}

TEST_F(Sl200Pool, AFruIdIsNeverGivenBack) {
    StartClean(ShiftedMachine());
    EXPECT_EQ(BuildSl200(3).length, 28);
    SetFruValidState(1); // knows the purchase-card pool alone
    EXPECT_EQ(BuildSl200(3).length, 0);
}

// ---- the sub card -------------------------------------------------------------------------------

TEST_F(SubCardPool, IsApartFromTheCardPool) {
    UseUpThePool();
    EXPECT_EQ(FruIdOf(BuildSubCard(15)), 59);
    SetFruValidState(59); // not an id of the card pool
    EXPECT_EQ(BuildSubCard(15).length, 0);
}

// ---- the catalogue ------------------------------------------------------------------------------

struct Row {
    uint16_t type;
    const char *name;
    uint8_t oem;
};
constexpr Row kRows[] = {{0x010B, "HyperCard", 1},  {0x01E0, "Biren UBB", 2},    {0x02E0, "HGX UBB", 3},
                         {0x020B, "NEO CARD", 4},   {0x03E0, "P800 UBB", 5},     {0x04E0, "HBB-M9D", 6},
                         {0x030B, "HalvikCard", 7}, {0x05E0, "OXA UBB1.5  ", 8}, {0x06E0, "METAX UBB", 9},
                         {0x07E0, "MT UBB", 10},    {0x040B, "SL200 Card", 11}};

TEST_F(CardCatalogue, HasThese11RowsInThisOrder) {
    ASSERT_EQ(std::size(gPurchaseCardInfo), std::size(kRows));
    for (size_t i = 0; i < std::size(kRows); ++i) {
        EXPECT_EQ(gPurchaseCardInfo[i].wDevType, kRows[i].type);
        EXPECT_STREQ(gPurchaseCardInfo[i].acName, kRows[i].name);
        EXPECT_EQ(gPurchaseCardInfo[i].ucOEM, kRows[i].oem);
    }
}

TEST_F(CardCatalogue, AnswersForEveryRow) {
    for (const Row &row : kRows) {
        EXPECT_STREQ(GetPurchaseCardName(row.type), row.name);
        char section[32 + 1];
        std::memset(section, 0x7E, sizeof(section));
        EXPECT_EQ(GetPurchaseCardInfoSectionStr(row.type, section), 0);
        EXPECT_STREQ(section, row.name);
        EXPECT_EQ(section[32], 0x7E);
        uint8_t oem = 0xEE;
        FillSdrOEMValue(row.type, &oem);
        EXPECT_EQ(oem, row.oem);
    }
    EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(CardCatalogue, KnowsNothingElse) {
    for (const uint16_t type :
         {0x0000, 0x000B, 0x00E0, 0x050B, 0x08E0, 0x09E0, 0x170B, 0x0B01, 0xE001, 0xFF0A}) {
        EXPECT_EQ(GetPurchaseCardName(type), nullptr) << type;
        char section[32] = "";
        EXPECT_EQ(GetPurchaseCardInfoSectionStr(type, section), -1) << type;
        uint8_t oem = 0xEE;
        FillSdrOEMValue(type, &oem);
        EXPECT_EQ(oem, 0xEE) << "unchanged";
    }
}

TEST_F(CardCatalogue, ANullArgumentIsAnError) {
    EXPECT_EQ(GetPurchaseCardInfoSectionStr(0x010B, nullptr), -1);
    FillSdrOEMValue(0x010B, nullptr);
    EXPECT_THAT(Lines(), ElementsAre("error 42 GetPurchaseCardInfoSectionStr: GetPurchaseCardInfoSectionStr "
                                     "failed! The input parameter is null.",
                                     "error 42 FillSdrOEMValue: FillSdrOEMValue failed! The input parameter "
                                     "is null."));
}

TEST_F(CardCatalogue, AFailedCopyGivesNoSection) {
    sim::FailCall(1);
    char section[32] = "";
    const int32_t result = GetPurchaseCardInfoSectionStr(0x07E0, section);
    EXPECT_EQ(result, sim::FaultWasHit() ? -1 : 0);
}

} // namespace
