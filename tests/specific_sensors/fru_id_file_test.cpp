// SPDX-License-Identifier: GPL-3.0-or-later
//
// The file of card FRU ids: what is saved, to the letter, and what is read back.
#include "support/fru_fixture.h"

namespace {

using namespace fru;
using testing::ElementsAre;
using testing::IsEmpty;

class SavingTheFruId : public FruTest {};
class LoadingTheFruId : public FruTest {};

const char kLoadCall[] = "OXA_IniLoadFile(path=\"/var/tmp/purchaseCardFruId\")";
const char kCloseCall[] = "IniCloseFile(file=\"/var/tmp/purchaseCardFruId\")";
const char kSaveCall[] =
    "IniSaveFile(file=\"/var/tmp/purchaseCardFruId\" path=\"/var/tmp/purchaseCardFruId\")";
const char kSaved[] = "info 42 SavePurchaseCardFruId: Ini Is Valid!";

std::string SetCall(const std::string &section, const std::string &key, int value) {
    return "IniSetUInt(file=\"/var/tmp/purchaseCardFruId\" section=\"" + section + "\" key=\"" + key +
           "\" value=" + std::to_string(value) + ")";
}

// ---- saving -------------------------------------------------------------------------------------

TEST_F(SavingTheFruId, WritesBothKeysWithTheirTrailingBlanks) {
    EXPECT_EQ(SavePurchaseCardFruId(0x010B, "HyperCard", 3, 36), 0);
    EXPECT_EQ(TextOf(kIdFile), "[HyperCard]\nHyperCard_FruId =36\nHyperCard_SlotId =3\n");
    EXPECT_THAT(Lines(), ElementsAre(kSaved));
    EXPECT_THAT(IniCalls(), ElementsAre(kLoadCall, SetCall("HyperCard", "HyperCard_FruId ", 36),
                                        SetCall("HyperCard", "HyperCard_SlotId ", 3), kSaveCall, kCloseCall));
}

TEST_F(SavingTheFruId, TheSectionIsTheCataloguesNameTheKeysHaveTheGivenOne) {
    EXPECT_EQ(SavePurchaseCardFruId(kSl200, "SL200 Card 8", 10, 8), 0);
    EXPECT_EQ(SavePurchaseCardFruId(0x05E0, "", 255, 0), 0);
    EXPECT_EQ(TextOf(kIdFile), "[SL200 Card]\nSL200 Card 8_FruId =8\nSL200 Card 8_SlotId =10\n"
                               "[OXA UBB1.5  ]\n_FruId =0\n_SlotId =255\n");
}

TEST_F(SavingTheFruId, EveryCardHasItsSection) {
    const struct {
        uint16_t type;
        const char *section;
    } kRows[] = {{0x010B, "HyperCard"},  {0x01E0, "Biren UBB"},    {0x02E0, "HGX UBB"},
                 {0x020B, "NEO CARD"},   {0x03E0, "P800 UBB"},     {0x04E0, "HBB-M9D"},
                 {0x030B, "HalvikCard"}, {0x05E0, "OXA UBB1.5  "}, {0x06E0, "METAX UBB"},
                 {0x07E0, "MT UBB"},     {0x040B, "SL200 Card"}};
    std::string expected;
    for (const auto &row : kRows) {
        EXPECT_EQ(SavePurchaseCardFruId(row.type, "x", 1, 2), 0);
        expected += std::string("[") + row.section + "]\nx_FruId =2\nx_SlotId =1\n";
    }
    EXPECT_EQ(TextOf(kIdFile), expected);
}

TEST_F(SavingTheFruId, ReplacesItsOwnEntryAndKeepsAllOthers) {
    Put(kIdFile, "[Other]\nkey=7\n[HyperCard]\nHyperCard_SlotId =9\nOld_FruId =1\n");
    EXPECT_EQ(SavePurchaseCardFruId(0x010B, "HyperCard", 3, 36), 0);
    EXPECT_EQ(TextOf(kIdFile),
              "[Other]\nkey=7\n[HyperCard]\nHyperCard_SlotId =3\nOld_FruId =1\nHyperCard_FruId =36\n");
}

TEST_F(SavingTheFruId, ANullNameIsAnError) {
    EXPECT_EQ(SavePurchaseCardFruId(0x010B, nullptr, 3, 36), -1);
    EXPECT_THAT(Lines(),
                ElementsAre("error 42 SavePurchaseCardFruId: SavePurchaseCardFruId failed! The input "
                            "parameter is null."));
    EXPECT_THAT(IniCalls(), IsEmpty());
}

TEST_F(SavingTheFruId, AFileThatCannotBeLoadedGivesMinusOne) {
    Fail("OXA_IniLoadFile");
    EXPECT_EQ(SavePurchaseCardFruId(0x010B, "HyperCard", 3, 36), -1);
    EXPECT_THAT(Lines(), ElementsAre("info 42 SavePurchaseCardFruId: OXA_IniLoadFile is fail!!!\n"));
    EXPECT_THAT(IniCalls(), ElementsAre(kLoadCall));
    EXPECT_FALSE(sim::FileExists(kIdFile));
}

TEST_F(SavingTheFruId, ASuccessWithoutAHandleGivesMinusOne) {
    sim::AddFault({.call = "OXA_IniLoadFile", .output = 0, .succeed = true});
    EXPECT_EQ(SavePurchaseCardFruId(0x010B, "HyperCard", 3, 36), -1);
    EXPECT_THAT(Lines(), ElementsAre("info 42 SavePurchaseCardFruId: OXA_IniLoadFile is fail!!!\n"));
    EXPECT_THAT(IniCalls(), ElementsAre(kLoadCall));
}

TEST_F(SavingTheFruId, AnUnknownTypeGivesMinusOneAndWritesNothing) {
    EXPECT_EQ(SavePurchaseCardFruId(kUnknownCard, "HyperCard", 3, 36), -1);
    EXPECT_THAT(Lines(),
                ElementsAre("info 42 SavePurchaseCardFruId: GetPurchaseCardInfoSectionStr is fail!!\n"));
    EXPECT_THAT(IniCalls(), ElementsAre(kLoadCall, kCloseCall));
    EXPECT_FALSE(sim::FileExists(kIdFile));
}

TEST_F(SavingTheFruId, ResultsOfSettingAreNotLookedAt) {
    Fail("IniSetUInt", "_FruId ");
    EXPECT_EQ(SavePurchaseCardFruId(0x010B, "HyperCard", 3, 36), 0);
    EXPECT_EQ(TextOf(kIdFile), "[HyperCard]\nHyperCard_SlotId =3\n");
    EXPECT_THAT(Lines(), ElementsAre(kSaved));
    sim::ClearFaults();
    Fail("IniSetUInt", "_SlotId ");
    EXPECT_EQ(SavePurchaseCardFruId(0x020B, "NEO CARD", 4, 35), 0);
    EXPECT_EQ(TextOf(kIdFile), "[HyperCard]\nHyperCard_SlotId =3\n[NEO CARD]\nNEO CARD_FruId =35\n");
}

TEST_F(SavingTheFruId, TheResultOfWritingIsNotLookedAt) {
    Put(kIdFile, "[HyperCard]\nHyperCard_FruId =1\n");
    Fail("IniSaveFile");
    EXPECT_EQ(SavePurchaseCardFruId(0x010B, "HyperCard", 3, 36), 0);
    EXPECT_THAT(Lines(), ElementsAre(kSaved));
    EXPECT_EQ(sim::CountCalls("IniCloseFile"), 1u);
    EXPECT_EQ(TextOf(kIdFile), "[HyperCard]\nHyperCard_FruId =1\n");
}

TEST_F(SavingTheFruId, ADamagedFileIsReplacedByWhatCouldBeRead) {
    const struct {
        std::string before, after;
    } kRows[] = {
        {"", ""},
        {"no section here\n[", ""},
        {"[HyperCard\nHyperCard_FruId =5x\n", ""},
        {"[A]\nkey=99999999999999\n", "[A]\nkey=4294967295\n"},
        {std::string(100000, '='), ""},
        {std::string(1000, '\0'), ""},
    };
    for (const auto &row : kRows) {
        Put(kIdFile, row.before);
        EXPECT_EQ(SavePurchaseCardFruId(0x010B, "HyperCard", 3, 36), 0);
        EXPECT_EQ(TextOf(kIdFile), row.after + "[HyperCard]\nHyperCard_FruId =36\nHyperCard_SlotId =3\n");
    }
}

TEST_F(SavingTheFruId, ABinaryFileTakesTheEntryAndIsReadBack) {
    Put(kIdFile, EveryByte() + EveryByte());
    EXPECT_EQ(SavePurchaseCardFruId(0x010B, "HyperCard", 3, 36), 0);
    uint8_t slot = 0, id = 0;
    EXPECT_EQ(LoadPurchaseCardFruId(0x010B, "HyperCard", &slot, &id), 0);
    EXPECT_EQ(slot, 3);
    EXPECT_EQ(id, 36);
}

TEST_F(SavingTheFruId, ADirectoryInPlaceOfTheFileGivesMinusOne) {
    PutDirectory(kIdFile);
    EXPECT_EQ(SavePurchaseCardFruId(0x010B, "HyperCard", 3, 36), -1);
    EXPECT_THAT(Lines(), ElementsAre("info 42 SavePurchaseCardFruId: OXA_IniLoadFile is fail!!!\n"));
    EXPECT_TRUE(std::filesystem::is_directory(sim::RealPath(kIdFile)));
}

TEST_F(SavingTheFruId, AnEndlessNameOverflowsNothing) {
    const std::string name(4000, 'N');
    SavePurchaseCardFruId(0x010B, name.c_str(), 3, 36);
    uint8_t slot = 0, id = 0;
    LoadPurchaseCardFruId(0x010B, name.c_str(), &slot, &id);
    EXPECT_EQ(sim::CountCalls("IniCloseFile"), sim::CountCalls("OXA_IniLoadFile"));
}

TEST_F(SavingTheFruId, WhicheverCallFailsTheFileHoldsRightEntriesOnly) {
    const std::string kWhole = "[HyperCard]\nHyperCard_FruId =36\nHyperCard_SlotId =3\n";
    uint64_t k = 1;
    for (bool hit = true; hit; ++k) {
        ASSERT_LT(k, 100u);
        StartClean(PlainMachine());
        sim::FailCall(k);
        const int32_t result = SavePurchaseCardFruId(0x010B, "HyperCard", 3, 36);
        hit = sim::FaultWasHit();
        EXPECT_THAT(result, testing::AnyOf(0, -1)) << k;
        EXPECT_THAT(TextOf(kIdFile), testing::AnyOf("", "[HyperCard]\nHyperCard_FruId =36\n",
                                                    "[HyperCard]\nHyperCard_SlotId =3\n", kWhole))
            << k;
        EXPECT_TRUE(hit || (result == 0 && TextOf(kIdFile) == kWhole));
        EXPECT_THAT(sim::Violations(), IsEmpty()) << k;
    }
    EXPECT_GT(k, 5u) << "load, two values and the write can fail";
}

// ---- loading ------------------------------------------------------------------------------------

// Both numbers, or -1 and -1.
struct Loaded {
    int32_t result = 0;
    int slot = -1, id = -1;
    bool operator==(const Loaded &) const = default;
};
void PrintTo(const Loaded &loaded, std::ostream *out) {
    *out << "result " << loaded.result << " slot " << loaded.slot << " id " << loaded.id;
}
Loaded Load(uint16_t type, const char *name) {
    uint8_t area[6] = {0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE};
    Loaded loaded;
    loaded.result = LoadPurchaseCardFruId(type, name, &area[1], &area[4]);
    EXPECT_TRUE(area[0] == 0xEE && area[2] == 0xEE && area[3] == 0xEE && area[5] == 0xEE);
    if (loaded.result == 0) {
        loaded.slot = area[1];
        loaded.id = area[4];
    }
    return loaded;
}
const Loaded kFailed = {-1, -1, -1};

std::string Debug(const std::string &text) {
    return "debug 130: LoadPurchaseCardFruId : " + text;
}

TEST_F(LoadingTheFruId, GivesSlotAndFruIdAndSaysNothing) {
    Put(kIdFile, "[HyperCard]\nHyperCard_FruId =36\nHyperCard_SlotId =3\n");
    EXPECT_EQ(Load(0x010B, "HyperCard"), (Loaded{0, 3, 36}));
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_THAT(IniCalls(), testing::UnorderedElementsAre(
                                kLoadCall,
                                "IniGetUInt(file=\"/var/tmp/purchaseCardFruId\" section=\"HyperCard\" "
                                "key=\"HyperCard_FruId \" default=0)",
                                "IniGetUInt(file=\"/var/tmp/purchaseCardFruId\" section=\"HyperCard\" "
                                "key=\"HyperCard_SlotId \" default=0)",
                                kCloseCall));
    EXPECT_EQ(TextOf(kIdFile), "[HyperCard]\nHyperCard_FruId =36\nHyperCard_SlotId =3\n");
}

TEST_F(LoadingTheFruId, ReadsBackWhatTheGeneratorsSaved) {
    BuildCard(0x05E0, 6);
    BuildSl200(9);
    EXPECT_EQ(Load(0x05E0, "OXA UBB1.5  "), (Loaded{0, 6, 36}));
    EXPECT_EQ(Load(kSl200, "SL200 Card 35"), (Loaded{0, 9, 35}));
}

TEST_F(LoadingTheFruId, AMissingKeySectionOrFileReadsAs0) {
    EXPECT_EQ(Load(0x010B, "HyperCard"), (Loaded{0, 0, 0}));
    EXPECT_FALSE(sim::FileExists(kIdFile));
    Put(kIdFile, "[HyperCard]\nHyperCard_FruId =36\n");
    EXPECT_EQ(Load(0x010B, "HyperCard"), (Loaded{0, 0, 36}));
    Put(kIdFile, "[HyperCard]\nHyperCard_SlotId =3\n");
    EXPECT_EQ(Load(0x010B, "HyperCard"), (Loaded{0, 3, 0}));
    EXPECT_EQ(Load(0x020B, "HyperCard"), (Loaded{0, 0, 0})) << "another section";
    EXPECT_EQ(Load(0x010B, "NEO CARD"), (Loaded{0, 0, 0})) << "other keys";
}

TEST_F(LoadingTheFruId, TheTrailingBlanksCount) {
    Put(kIdFile, "[HyperCard]\nHyperCard_FruId=36\nHyperCard_SlotId=3\n"
                 "[OXA UBB1.5]\nx_FruId =36\nx_SlotId =3\n");
    EXPECT_EQ(Load(0x010B, "HyperCard"), (Loaded{0, 0, 0}));
    EXPECT_EQ(Load(0x05E0, "x"), (Loaded{0, 0, 0}));
}

TEST_F(LoadingTheFruId, ALargeNumberIsCutToEightBits) {
    Put(kIdFile, "[HyperCard]\nHyperCard_FruId =292\nHyperCard_SlotId =65539\n");
    EXPECT_EQ(Load(0x010B, "HyperCard"), (Loaded{0, 3, 36}));
    Put(kIdFile, "[HyperCard]\nHyperCard_FruId =99999999999999999999\nHyperCard_SlotId =4294967295\n");
    EXPECT_EQ(Load(0x010B, "HyperCard"), (Loaded{0, 255, 255}));
}

TEST_F(LoadingTheFruId, ADamagedFileReadsAs0) {
    for (const std::string &text :
         {std::string(), EveryByte(), std::string("[HyperCard\nHyperCard_FruId =36\n"),
          std::string(5000, '['),
          std::string("[HyperCard]\nHyperCard_FruId =-1\nHyperCard_SlotId =3 slots\n"),
          std::string("[HyperCard]\nHyperCard_FruId 36\nHyperCard_SlotId =\n"),
          std::string("HyperCard_FruId =36\nHyperCard_SlotId =3\n")}) {
        Put(kIdFile, text);
        EXPECT_EQ(Load(0x010B, "HyperCard"), (Loaded{0, 0, 0})) << text;
        EXPECT_EQ(TextOf(kIdFile), text);
    }
    EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(LoadingTheFruId, ANullNameGivesMinusOne) {
    EXPECT_EQ(Load(0x010B, nullptr), kFailed);
    EXPECT_THAT(Lines(), ElementsAre(Debug("purchase card Info is null!!!\n")));
    EXPECT_THAT(IniCalls(), IsEmpty());
}

TEST_F(LoadingTheFruId, ANullOutputGivesMinusOne) {
    uint8_t byte = 0;
    EXPECT_EQ(LoadPurchaseCardFruId(0x010B, "HyperCard", nullptr, &byte), -1);
    EXPECT_THAT(Lines(), ElementsAre("debug 130: assertion failed: slotId != 0"));
    sim::ClearTrace();
    EXPECT_EQ(LoadPurchaseCardFruId(0x010B, "HyperCard", &byte, nullptr), -1);
    EXPECT_THAT(Lines(), ElementsAre("debug 130: assertion failed: fruId != 0"));
    EXPECT_THAT(IniCalls(), IsEmpty());
}

TEST_F(LoadingTheFruId, AMissingOutputIsToldWithoutUnitAndLine) {
    uint8_t byte = 0;
    EXPECT_EQ(LoadPurchaseCardFruId(0x010B, "HyperCard", nullptr, &byte), -1);
    EXPECT_EQ(LoadPurchaseCardFruId(0x010B, "HyperCard", &byte, nullptr), -1);
    ASSERT_EQ(sim::Trace().size(), 2u);
    EXPECT_EQ(sim::Trace()[0].text, "assertion failed: slotId != 0");
    EXPECT_EQ(sim::Trace()[1].text, "assertion failed: fruId != 0");
    for (const sim::Event &event : sim::Trace()) {
        EXPECT_EQ(event.kind, sim::Kind::kDebug);
        EXPECT_EQ(event.number, 130u);
    }
}

TEST_F(LoadingTheFruId, OfSeveralNullArgumentsTheFirstIsTold) {
    EXPECT_EQ(LoadPurchaseCardFruId(0x010B, nullptr, nullptr, nullptr), -1);
    EXPECT_THAT(Lines(), ElementsAre(Debug("purchase card Info is null!!!\n")));
    sim::ClearTrace();
    EXPECT_EQ(LoadPurchaseCardFruId(0x010B, "HyperCard", nullptr, nullptr), -1);
    EXPECT_THAT(Lines(), ElementsAre("debug 130: assertion failed: slotId != 0"));
}

TEST_F(LoadingTheFruId, AFileThatCannotBeLoadedGivesMinusOne) {
    Fail("OXA_IniLoadFile");
    EXPECT_EQ(Load(0x010B, "HyperCard"), kFailed);
    EXPECT_THAT(Lines(), ElementsAre(Debug("LoadIniFile is fail!!!\n")));
    EXPECT_THAT(IniCalls(), ElementsAre(kLoadCall));
}

TEST_F(LoadingTheFruId, ASuccessWithoutAHandleGivesMinusOne) {
    sim::AddFault({.call = "OXA_IniLoadFile", .output = 0, .succeed = true});
    EXPECT_EQ(Load(0x010B, "HyperCard"), kFailed);
    EXPECT_THAT(Lines(), ElementsAre(Debug("LoadIniFile is fail!!!\n")));
    EXPECT_THAT(IniCalls(), ElementsAre(kLoadCall));
}

TEST_F(LoadingTheFruId, ADirectoryInPlaceOfTheFileGivesMinusOne) {
    PutDirectory(kIdFile);
    EXPECT_EQ(Load(0x010B, "HyperCard"), kFailed);
    EXPECT_THAT(Lines(), ElementsAre(Debug("LoadIniFile is fail!!!\n")));
}

TEST_F(LoadingTheFruId, AnUnknownTypeGivesMinusOne) {
    EXPECT_EQ(Load(kUnknownCard, "HyperCard"), kFailed);
    EXPECT_THAT(Lines(), ElementsAre(Debug("GetPurchaseCardInfoSectionStr is fail!!!\n")));
    EXPECT_THAT(IniCalls(), ElementsAre(kLoadCall, kCloseCall));
}

TEST_F(LoadingTheFruId, WhicheverCallFailsTheNumbersAreTheFilesOrTheLoadFails) {
    uint64_t k = 1;
    for (bool hit = true; hit; ++k) {
        ASSERT_LT(k, 100u);
        StartClean(PlainMachine());
        Put(kIdFile, "[HyperCard]\nHyperCard_FruId =36\nHyperCard_SlotId =3\n");
        sim::FailCall(k);
        const Loaded loaded = Load(0x010B, "HyperCard");
        hit = sim::FaultWasHit();
        EXPECT_EQ(loaded, hit ? kFailed : (Loaded{0, 3, 36})) << k;
        EXPECT_THAT(sim::Violations(), IsEmpty()) << k;
    }
    EXPECT_GT(k, 2u);
}

} // namespace
