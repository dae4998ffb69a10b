// SPDX-License-Identifier: GPL-3.0-or-later
//
// The builders' tables as other programs read them: they name the exported builders, their arguments and what a
// record takes from where.
#include <map>

#include "events/event_fixture.h"
#include "library/events/catalogue.h"

namespace {

using namespace seltest;
namespace tables = oxa::sel;

// ---- the language of the steps, as the compiler sees it ---------------------------------------------

constexpr auto kExampleValues = tables::List(tables::kEventNum, tables::kReason, tables::kAssertFlag);
constexpr auto kExample = tables::MakeBuilder(
    "example", tables::FailText::kFail, kExampleValues, tables::Set(10, 0x11),
    tables::Take(11, tables::kReason), tables::When(tables::kEventNum, {1, {5, 7}}), tables::Set(10, 0x22), //
    tables::When(tables::kEventNum, {2}), tables::Dir(0x6F),                                                //
    tables::And(tables::kReason, {3, 4}), tables::Set(13, 0x33),                                            //
    tables::And(tables::kReason, {5}), tables::Set(13, 0x55),                                               //
    tables::When(tables::kEventNum, {8}), tables::Unless(tables::kReason, 9), tables::Set(15, 0xF0, 0xF0));

constexpr std::array<uint8_t, 16> Composed(uint32_t event, uint32_t reason, uint32_t flag) {
    const uint32_t values[] = {event, reason, flag};
    uint8_t bytes[16] = {};
    tables::Compose(kExample.atStep, kExample.tHead.ucSteps, values, bytes);
    std::array<uint8_t, 16> record{};
    for (size_t n = 0; n < 16; ++n) {
        record[n] = bytes[n];
    }
    return record;
}
using Record = std::array<uint8_t, 16>;

TEST(Steps, PutsBeforeTheFirstTestAlwaysHold) {
    static_assert(Composed(0, 0xAB, 1) == Record{0, 0, 0, 0, 0, 0, 0, 0, 0, 4, 0x11, 0xAB, 0, 0, 0, 0});
}
TEST(Steps, ATestTakesSingleValuesAndRanges) {
    static_assert(Composed(1, 0, 0)[10] == 0x22 && Composed(5, 0, 0)[10] == 0x22);
    static_assert(Composed(6, 0, 0)[10] == 0x22 && Composed(7, 0, 0)[10] == 0x22);
    static_assert(Composed(4, 0, 0)[10] == 0x11 && Composed(8, 0, 0)[10] == 0x11);
}
TEST(Steps, TestsCompareWholeWords) {
    static_assert(Composed(257, 0, 0)[10] == 0x11);
}
TEST(Steps, TheDirectionGoesBesideTheEventType) {
    static_assert(Composed(2, 0, 0)[12] == 0x6F && Composed(2, 0, 1)[12] == 0xEF);
    static_assert(Composed(2, 0, 2)[12] == 0x6F && Composed(3, 0, 1)[12] == 0);
}
TEST(Steps, AndNarrowsTheLastWhenAndBeginsAnewEachTime) {
    static_assert(Composed(2, 3, 0)[13] == 0x33 && Composed(2, 4, 0)[13] == 0x33);
    static_assert(Composed(2, 5, 0)[13] == 0x55 && Composed(2, 6, 0)[13] == 0);
    static_assert(Composed(3, 3, 0)[13] == 0 && Composed(3, 5, 0)[13] == 0);
}
TEST(Steps, UnlessLeavesOneValueOut) {
    static_assert(Composed(8, 8, 0)[15] == 0xF0 && Composed(8, 9, 0)[15] == 0 && Composed(9, 8, 0)[15] == 0);
}

// ---- the catalogue ---------------------------------------------------------------------------------

template <class... A> constexpr size_t Arity(uint32_t (*)(A...)) {
    return sizeof...(A);
}

const std::map<std::string, size_t> kArguments = {
    {"addMemPredictiveFault", Arity(addMemPredictiveFault)},
    {"addPOSTErrorSel", Arity(addPOSTErrorSel)},
    {"addS0PowerButtonSel", Arity(addS0PowerButtonSel)},
    {"addGpuSlotErrorSel", Arity(addGpuSlotErrorSel)},
    {"addMinorCDUFaultSel", Arity(addMinorCDUFaultSel)},
    {"addMajorCDUFaultSel", Arity(addMajorCDUFaultSel)},
    {"addNETPortSEL", Arity(addNETPortSEL)},
    {"addControllerSEL", Arity(addControllerSEL)},
    {"addDiskSEL", Arity(addDiskSEL)},
    {"addLDSEL", Arity(addLDSEL)},
    {"addPEMSEL", Arity(addPEMSEL)},
    {"addUsageSEL", Arity(addUsageSEL)},
    {"addSELAlarm", Arity(addSELAlarm)},
    {"addCPUError", Arity(addCPUError)},
    {"addMemError", Arity(addMemError)},
    {"addI2CStatusSel", Arity(addI2CStatusSel)},
    {"addTrapSELAlarm", Arity(addTrapSELAlarm)},
    {"addPowerDropSEL", Arity(addPowerDropSEL)},
    {"addLeakageSel", Arity(addLeakageSel) + 1}, // the pointer stands for two numbers
};

// "eventNum:8" for a byte, "assertFlag!" for a checked word.
std::string Text(const tables::Item &item) {
    std::string text = tables::kValueNames[item.eValue].acName;
    if (item.ucBits != 32) {
        text += ":" + std::to_string(item.ucBits);
    }
    return item.bZeroOrOne ? text + "!" : text;
}
Lines Items(const tables::BuilderView &view, bool found) {
    Lines items;
    for (size_t n = 0; n < view.ucItems; ++n) {
        if (tables::IsFound(view.ptItem[n].eValue) == found) {
            items.push_back(Text(view.ptItem[n]));
        }
    }
    return items;
}
const tables::BuilderView &ViewOf(const std::string &name) {
    for (const tables::BuilderView &view : tables::kBuilders) {
        if (view.ptHead->acName == name) {
            return view;
        }
    }
    throw std::out_of_range(name);
}

TEST(Catalogue, ListsEveryBuilderWithAsManyArgumentsAsItsDeclaration) {
    std::map<std::string, size_t> listed;
    for (const tables::BuilderView &view : tables::kBuilders) {
        listed[view.ptHead->acName] = Items(view, false).size();
    }
    EXPECT_EQ(listed, kArguments);
}

TEST(Catalogue, NamesTheArgumentsInTheirOrder) {
    EXPECT_THAT(Items(ViewOf("addCPUError"), false),
                ElementsAre("cpuNum", "bankHighBit", "bankNum", "offset", "assertFlag!"));
    EXPECT_THAT(Items(ViewOf("addNETPortSEL"), false),
                ElementsAre("entityId", "slotNum", "netPortSilkId", "deviceIndex", "port:8",
                            "subInterfaceType:8", "subIndex:8", "eventNum:8", "eventDir:8"));
    EXPECT_THAT(Items(ViewOf("addLeakageSel"), false), ElementsAre("kind", "deassertFlag:8", "position:8"));
    EXPECT_THAT(Items(ViewOf("addLeakageSel"), true),
                ElementsAre("foundNumber", "foundSensorType", "foundEventType", "foundLun"));
    EXPECT_THAT(Items(ViewOf("addPowerDropSEL"), false),
                ElementsAre("dropType", "cpuIndex", "reasonMask", "eventDir!"));
}

// Whoever writes calls down (the workbench, a scenario) names the arguments; the flag is called as its builder does.
TEST(Catalogue, CallsEveryArgumentByItsOwnName) {
    const std::map<std::string, Lines> names = {
        {"addMemPredictiveFault", {"dimmNum", "assertFlag"}},
        {"addPOSTErrorSel", {}},
        {"addS0PowerButtonSel", {}},
        {"addGpuSlotErrorSel", {"slotNum"}},
        {"addMinorCDUFaultSel", {"reason", "assertFlag"}},
        {"addMajorCDUFaultSel", {"reason", "slotNum", "assertFlag"}},
        {"addNETPortSEL",
         {"entityId", "slotNum", "netPortSilkId", "deviceIndex", "port", "subInterfaceType", "subIndex",
          "eventNum", "eventDir"}},
        {"addControllerSEL", {"entityId", "controller", "eventNum", "eventDir"}},
        {"addDiskSEL", {"entityId", "slotNum", "eventNum", "eventDir"}},
        {"addLDSEL", {"entityId", "eventNum", "ctrlIndex", "targetId", "assertFlag"}},
        {"addPEMSEL", {"location", "eventNum", "eventDir"}},
        {"addUsageSEL", {"entityId", "usage", "nonCritical", "index", "eventDir"}},
        {"addSELAlarm", {"entityId", "reason", "eventDir"}},
        {"addCPUError", {"cpuNum", "bankHighBit", "bankNum", "offset", "assertFlag"}},
        {"addMemError", {"dimmNum", "offset", "errorNum", "assertFlag"}},
        {"addI2CStatusSel", {"eventData3", "assertFlag", "sensorNumber", "lun"}},
        {"addTrapSELAlarm", {"entityId", "reason", "eventNum", "eventDir"}},
        {"addPowerDropSEL", {"dropType", "cpuIndex", "reasonMask", "eventDir"}},
    };
    for (const auto &[builder, expected] : names) {
        Lines found;
        for (const std::string &item : Items(ViewOf(builder), false)) {
            found.push_back(item.substr(0, item.find_first_of(":!")));
        }
        EXPECT_EQ(found, expected) << builder;
    }
}

TEST(Catalogue, ArgumentsThatAreFoundFollowTheOthers) {
    for (const tables::BuilderView &view : tables::kBuilders) {
        bool found = false;
        for (size_t n = 0; n < view.ucItems; ++n) {
            EXPECT_TRUE(!found || tables::IsFound(view.ptItem[n].eValue)) << view.ptHead->acName;
            found = tables::IsFound(view.ptItem[n].eValue);
        }
    }
}

TEST(Catalogue, StepsKeepToTheRecordAndToTheValues) {
    for (const tables::BuilderView &view : tables::kBuilders) {
        for (size_t n = 0; n < view.ptHead->ucSteps; ++n) {
            const tables::Step &step = view.ptStep[n];
            EXPECT_LE(step.ucOp, tables::kUnless);
            EXPECT_TRUE(step.ucSource == tables::kLiteral || step.ucSource < view.ucItems);
            if (step.ucOp >= SEL_RECORD_SIZE) {
                EXPECT_LE(step.ucLow, step.ucHigh);
                EXPECT_NE(step.ucSource, tables::kLiteral);
            }
        }
    }
}

// The flag checked in the tables is the flag that the library refuses.
TEST_F(Sel, AFlagOf2IsRefusedByTheBuildersWhoseTableSaysSo) {
    Profile(3);
    const LeakageInfo leak = {2, 2};
    const std::map<std::string, uint32_t> results = {
        {"addMemPredictiveFault", addMemPredictiveFault(2, 2)},
        {"addPOSTErrorSel", addPOSTErrorSel()},
        {"addS0PowerButtonSel", addS0PowerButtonSel()},
        {"addGpuSlotErrorSel", addGpuSlotErrorSel(2)},
        {"addMinorCDUFaultSel", addMinorCDUFaultSel(2, 2)},
        {"addMajorCDUFaultSel", addMajorCDUFaultSel(2, 2, 2)},
        {"addNETPortSEL", addNETPortSEL(2, 2, 2, 2, 2, 2, 2, 2, 2)},
        {"addControllerSEL", addControllerSEL(2, 2, 2, 2)},
        {"addDiskSEL", addDiskSEL(2, 2, 2, 2)},
        {"addLDSEL", addLDSEL(2, 2, 2, 2, 2)},
        {"addPEMSEL", addPEMSEL(2, 2, 2)},
        {"addUsageSEL", addUsageSEL(2, 2, 2, 2, 2)},
        {"addSELAlarm", addSELAlarm(2, 2, 2)},
        {"addCPUError", addCPUError(2, 2, 2, 2, 2)},
        {"addMemError", addMemError(2, 2, 2, 2)},
        {"addI2CStatusSel", addI2CStatusSel(2, 2, 2, 2)},
        {"addTrapSELAlarm", addTrapSELAlarm(2, 2, 2, 2)},
        {"addPowerDropSEL", addPowerDropSEL(2, 2, 2, 2)},
        {"addLeakageSel", addLeakageSel(2, &leak)},
    };
    EXPECT_EQ(results.size(), std::size(tables::kBuilders));
    for (const auto &[name, result] : results) {
        bool checked = false;
        for (const std::string &item : Items(ViewOf(name), false)) {
            checked = checked || item.back() == '!';
        }
        EXPECT_EQ(result, checked ? 0xFFFFu : 0u) << name;
    }
}

// Composing from a table gives the bytes that the builder sends, so both read their values in one order.
TEST(Catalogue, TablesComposeWhatTheBuildersSend) {
    const std::map<std::string, std::vector<uint32_t>> values = {
        {"addMemPredictiveFault", {3, 1}},
        {"addPOSTErrorSel", {}},
        {"addS0PowerButtonSel", {}},
        {"addGpuSlotErrorSel", {9}},
        {"addMinorCDUFaultSel", {6, 1}},
        {"addMajorCDUFaultSel", {6, 2, 0}},
        {"addNETPortSEL", {0x2C, 4, 7, 2, 3, 5, 6, 40, 1}},
        {"addControllerSEL", {0x0B, 2, 18, 1}},
        {"addDiskSEL", {0x1A, 3, 19, 1, 0x43}},
        {"addLDSEL", {0x0B, 129, 2, 5, 1}},
        {"addPEMSEL", {1, 17, 1, 0x31}},
        {"addUsageSEL", {26, 91, 80, 4, 1}},
        {"addSELAlarm", {30, 14, 1, 0}},
        {"addCPUError", {1, 1, 4, 11, 1, 0x12}},
        {"addMemError", {7, 1, 9, 0, 0x27}},
        {"addI2CStatusSel", {0x33, 1, 0x44, 6}},
        {"addTrapSELAlarm", {0x2D, 8, 66, 1}},
        {"addPowerDropSEL", {2, 1, 0x81, 1, 0x77}},
        {"addLeakageSel", {2, 0, 5, 0x5E, 0x0A, 0x03, 0}},
    };
    for (const Sender &sender : Senders()) {
        const tables::BuilderView &view = ViewOf(sender.name);
        ASSERT_EQ(values.at(sender.name).size(), view.ucItems) << sender.name;
        uint8_t record[16];
        tables::Compose(view.ptStep, view.ptHead->ucSteps, values.at(sender.name).data(), record);
        EXPECT_EQ(Hex({record, record + 16}), Hex(sender.record)) << sender.name;
    }
}

} // namespace
