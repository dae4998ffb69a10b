// SPDX-License-Identifier: GPL-3.0-or-later
//
// FRU device locators on their way into the repository, and with every platform call failing.
#include "specific_sensors/fru_records.h"

namespace {

using namespace fru;
using testing::AnyOf;
using testing::Contains;
using testing::Eq;
using testing::IsEmpty;

class FruLocators : public FruTest {};

// ---- through the dispatch -----------------------------------------------------------------------

struct Added {
    uint32_t result = 0;
    Bytes record;
};
Added Add(SpecificSensorParam param) {
    const size_t before = sim::Repository().size();
    Added added;
    added.result = SDR_AddSpecificSensor(&param);
    if (sim::Repository().size() == before + 1) {
        added.record = sim::Repository().back().bytes;
    }
    return added;
}

class EveryCatalogueCard : public FruTest, public testing::WithParamInterface<CatalogueCard> {};
INSTANTIATE_TEST_SUITE_P(FruLocators, EveryCatalogueCard, testing::ValuesIn(kCards),
                         [](const auto &info) { return std::string(info.param.label); });

TEST_P(EveryCatalogueCard, ComesIntoTheRepositoryThroughTheDispatch) {
    const Added added = Add(Card(GetParam().type, 3));
    EXPECT_EQ(added.result, 0u);
    EXPECT_TRUE(tests::SameSdr(GetParam().type == kSl200 ? kSl200Plain : GetParam().record, added.record));
}

TEST_F(FruLocators, ThePsuComesIntoTheRepositoryAndIsNotRecorded) {
    const Added added = Add(Psu(3));
    EXPECT_EQ(added.result, 0u);
    EXPECT_TRUE(tests::SameSdr(kPsu3, added.record));
    EXPECT_FALSE(sim::FileExists(kRecordFile));
}

TEST_F(FruLocators, TheSubCardComesIntoTheRepositoryWithAll27Bytes) {
    const Added added = Add(Card(kSubCardClass, 15));
    EXPECT_EQ(added.result, 0u);
    EXPECT_TRUE(tests::SameSdr(kSubCard, added.record));
}

TEST_F(FruLocators, TheSl200CardOfTheShiftedMachineComesIntoTheRepository) {
    StartClean(ShiftedMachine());
    EXPECT_TRUE(tests::SameSdr(kSl200Shifted, Add(Card(kSl200, 3)).record));
}

TEST_F(FruLocators, WhatIsRefusedFailsTheAdd) {
    Put(kRecordFile, "[PSU_3]\nsdrRecId=12\nPresence=1\n");
    const SpecificSensorParam kRefused[] = {Psu(3), Psu(0), Card(0x010B, 0), Card(kSl200, 0),
                                            Card(kSubCardClass, 3)};
    for (const SpecificSensorParam &param : kRefused) {
        sim::ClearTrace();
        EXPECT_EQ(Add(param).result, 0xFFFFu) << std::hex << param.dwSensorDevType;
        EXPECT_THAT(Lines(), Contains("error 42 SDR_AddSpecificSensor: Add SDR: GenSDRHndlr ucRecLen = 0."));
        EXPECT_EQ(sim::CountCalls("LIBIPMI_Create_IPMI_Local_Session"), 0u);
    }
    EXPECT_THAT(sim::Repository(), IsEmpty());
}

TEST_F(FruLocators, ACardTypeOutsideTheCatalogueIsNotDispatched) {
    EXPECT_EQ(Add(Card(kUnknownCard, 3)).result, 0xFFFEu);
    EXPECT_EQ(Add(Card(0x0001010B, 3)).result, 0xFFFEu);
    EXPECT_FALSE(sim::FileExists(kIdFile));
}

TEST_F(FruLocators, ACardThatTheRepositoryRefusesKeepsItsFruId) {
    Fail("IPMICMD_AddSDR");
    EXPECT_EQ(Add(Card(0x010B, 3)).result, 0xC3u);
    EXPECT_EQ(TextOf(kIdFile), "[HyperCard]\nHyperCard_FruId =36\nHyperCard_SlotId =3\n");
    sim::ClearFaults();
    EXPECT_TRUE(tests::SameSdr(WithFruId(kCards[0].record, 35), Add(Card(0x010B, 3)).record));
}

// ---- every platform call failing ----------------------------------------------------------------

// A record that could not be copied or printed whole is dropped.
TEST_F(FruLocators, AreNotBuiltWhenABoundedFunctionFails) {
    for (const Generator &generator : kGenerators) {
        Apart(generator.name, [&generator] {
            StartClean(PlainMachine());
            for (const char *call :
                 {"memcpy_s", "oxa_memcpy_s", "memset_s", "oxa_memset_s", "snprintf_s", "oxa_snprintf_s"}) {
                Fail(call);
            }
            EXPECT_EQ(Build(generator.run, generator.param).length, 0);
            EXPECT_FALSE(sim::FileExists(kIdFile));
        });
    }
}

// On the shifted machine: the whole record, or the one of offset 0, or none; never half a record.
void Sweep(const Generator &generator, const Bytes &shifted, const Bytes &plain) {
    for (const bool from_then_on : {false, true}) {
        bool hit = true;
        for (uint64_t k = 1; hit; ++k) {
            ASSERT_LT(k, 100u) << generator.name;
            StartClean(ShiftedMachine());
            const std::string what = std::string(generator.name) + " call " + std::to_string(k);
            int fds[2];
            ASSERT_EQ(pipe(fds), 0);
            Apart(what, [&] {
                sim::FailCall(k, from_then_on);
                const Built built = Build(generator.run, generator.param);
                const char reached = sim::FaultWasHit() ? 1 : 0;
                EXPECT_EQ(write(fds[1], &reached, 1), 1);
                EXPECT_THAT(built.record, AnyOf(Eq(shifted), Eq(plain), Eq(Bytes{})));
                sim::FailCall(0);
                EXPECT_THAT(sim::Violations(), IsEmpty()); // every handle is closed
                Build(generator.run, generator.param);     // and life goes on
            });
            char reached = 0;
            close(fds[1]);
            ASSERT_EQ(read(fds[0], &reached, 1), 1) << what;
            close(fds[0]);
            hit = reached != 0;
        }
    }
}

TEST_F(FruLocators, OfAPsuAreWholeOrNotThereWhicheverCallFails) {
    Sweep(kGenerators[0], kPsu3Shifted, kPsu3);
}
TEST_F(FruLocators, OfAPurchaseCardAreWholeOrNotThereWhicheverCallFails) {
    Sweep(kGenerators[1], WithFruId(kCards[0].record, 44), kCards[0].record);
}
TEST_F(FruLocators, OfAnSl200CardAreWholeOrNotThereWhicheverCallFails) {
    Sweep(kGenerators[2], kSl200Shifted, kSl200Plain);
}
TEST_F(FruLocators, OfASubCardAreWholeOrNotThereWhicheverCallFails) {
    Sweep(kGenerators[3], kSubCard, kSubCard);
}

} // namespace
