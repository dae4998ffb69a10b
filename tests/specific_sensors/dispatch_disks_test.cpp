// SPDX-License-Identifier: GPL-3.0-or-later
//
// Adding the sensors of disks: each once, as the disk registry remembers it.
#include "specific_sensors/dispatch_fixture.h"

namespace {

using namespace dispatch;

class DispatchOfDisks : public Dispatch {
protected:
    void SetUp() override {
        Dispatch::SetUp();
        Use(DiskBoard());
    }
    static Lines Asked(int slot, int kind, int count, const std::vector<HddRegisterEntry> &walked) {
        Lines lines = {"warn 42 isHasRegister: slotid:" + std::to_string(slot) +
                       ", type:" + std::to_string(kind) +
                       ", gRegisterInfo.registerSlotNum:" + std::to_string(count) + "!\n"};
        for (const HddRegisterEntry &entry : walked)
            lines.push_back("info 42 isHasRegister: gRegisterInfo.tHddInfo[index].slotNum:" +
                            std::to_string(entry.slotNum) +
                            ", gRegisterInfo.tHddInfo[index].hddType:" + std::to_string(entry.hddType) +
                            ", gRegisterInfo.tHddInfo[index].statusFlag:" + std::to_string(entry.statusFlag) +
                            ", gRegisterInfo.tHddInfo[index].tempFlag:" + std::to_string(entry.tempFlag) +
                            ".\n");
        return lines;
    }
    // Nothing but the registry's lines, no call that leads out of the library.
    static void ExpectSkippedSilently(const SpecificSensorParam &param, const Lines &lines) {
        const size_t before = sim::Repository().size();
        const std::vector<Bytes> registered = Registered();
        sim::ClearTrace();
        EXPECT_EQ(Add(param), 0xFFFFu);
        EXPECT_EQ(LinesOf(), lines);
        EXPECT_THAT(SessionCalls(), IsEmpty());
        EXPECT_EQ(sim::CountCalls("IPMI_LoadCustomID"), 0u);
        EXPECT_EQ(sim::Repository().size(), before);
        EXPECT_EQ(Registered(), registered);
    }
};

TEST_F(DispatchOfDisks, ATemperatureIsRegisteredWithTheSubTypeOfItsDescription) {
    EXPECT_EQ(Add(DiskTemperature(4)), 0u);
    EXPECT_THAT(Names(), ElementsAre("NVME4_Temp"));
    EXPECT_THAT(Registered(), ElementsAre(Bytes{4, 1, 1, 0})); // sub type 1, not the 4 of the front
    EXPECT_THAT(UnitLines(), ElementsAre(Adding(0x0100)));
    EXPECT_EQ(RegistryLines().size(), 3u); // asked once, set with its closing line
}

TEST_F(DispatchOfDisks, TheRegistryIsAskedBeforeTheFirstLineAndToldAfterTheSession) {
    Add(DiskTemperature(4));
    Lines order;
    for (const sim::Event &event : sim::Trace()) {
        const bool log = event.kind == sim::Kind::kLog;
        if (event.function == kClose || event.function == kSession ||
            (log && (event.file == kUnit || event.function == "isHasRegister" ||
                     event.function == "setHddRegisterInfo")))
            order.push_back(event.function);
    }
    EXPECT_THAT(order, ElementsAre("isHasRegister", "SDR_AddSpecificSensor", kSession, kClose,
                                   "setHddRegisterInfo", "setHddRegisterInfo"));
}

TEST_F(DispatchOfDisks, AStatusIsRegisteredWithTheLowByteOfItsBitmap) {
    EXPECT_EQ(Add(DiskStatus(4, 2, 0x0302)), 0u);
    EXPECT_THAT(Names(), ElementsAre("SATA4_Status"));
    EXPECT_THAT(Registered(), ElementsAre(Bytes{4, 2, 0, 1}));
    EXPECT_EQ(Add(DiskStatus(5, 1, 0x0001)), 0u);
    EXPECT_THAT(Registered(), ElementsAre(Bytes{4, 2, 0, 1}, Bytes{5, 1, 0, 1}));
    EXPECT_THAT(Names(), ElementsAre("SATA4_Status", "NVME5_Status"));
}

TEST_F(DispatchOfDisks, AStatusWhoseLowByteIsZeroIsNeverFree) {
    EXPECT_EQ(Add(DiskStatus(4, 3, 0x0300)), 0u);
    EXPECT_THAT(Registered(), ElementsAre(Bytes{4, 0, 0, 1}));
    EXPECT_EQ(Add(DiskStatus(4, 3, 0x0300)), 0xFFFFu);
}

TEST_F(DispatchOfDisks, BothSensorsOfADiskAreAddedOnce) {
    EXPECT_EQ(Add(DiskTemperature(3)), 0u);
    EXPECT_EQ(Add(DiskStatus(3, 1, 1)), 0u);
    EXPECT_THAT(Registered(), ElementsAre(Bytes{3, 1, 1, 1}));
    ExpectSkippedSilently(DiskTemperature(3), Asked(3, 1, 1, {Entry(3, 1, 1, 1)}));
    ExpectSkippedSilently(DiskStatus(3, 1, 1), Asked(3, 2, 1, {Entry(3, 1, 1, 1)}));
    EXPECT_THAT(Names(), ElementsAre("NVME3_Temp", "NVME3_Status"));
}

TEST_F(DispatchOfDisks, ADiskOfAnotherKindHidesTheTemperatureOfItsSlot) {
    EXPECT_EQ(Add(DiskStatus(6, 3, 3)), 0u);
    EXPECT_THAT(Names(), ElementsAre("SAS6_Status"));
    ExpectSkippedSilently(DiskTemperature(6), Asked(6, 1, 1, {Entry(6, 3, 0, 1)}));
}

TEST_F(DispatchOfDisks, WhatIsRegisteredAlreadyIsSkippedWithoutALine) {
    gRegisterInfo.registerSlotNum = 2;
    gRegisterInfo.tHddInfo[0] = Entry(9, 1, 0, 1);
    gRegisterInfo.tHddInfo[1] = Entry(3, 1, 1, 0);
    ExpectSkippedSilently(DiskTemperature(3), Asked(3, 1, 2, {Entry(9, 1, 0, 1), Entry(3, 1, 1, 0)}));
    ExpectSkippedSilently(DiskStatus(9, 1, 1), Asked(9, 2, 2, {Entry(9, 1, 0, 1)}));
}

TEST_F(DispatchOfDisks, TheRegistryKnowsTheSlotBeforeItsConversion) {
    sim::Board board = DiskBoard();
    board.disks.conversion = {{4, 12}};
    Use(board);
    SpecificSensorParam temperature = DiskTemperature(4);
    EXPECT_EQ(SDR_AddSpecificSensor(&temperature), 0u);
    EXPECT_EQ(temperature.SlotId, 12); // converted in place
    SpecificSensorParam status = DiskStatus(4, 1, 1);
    EXPECT_EQ(SDR_AddSpecificSensor(&status), 0u);
    EXPECT_EQ(status.SlotId, 12);
    EXPECT_THAT(Names(), ElementsAre("NVME12_Temp", "NVME12_Status")); // slot 4 is at the front
    EXPECT_THAT(Registered(), ElementsAre(Bytes{4, 1, 1, 1}));
    EXPECT_EQ(Add(DiskTemperature(4)), 0xFFFFu);
    EXPECT_EQ(Add(DiskTemperature(12)), 0u); // a disk of its own, at the rear
    EXPECT_THAT(Registered(), ElementsAre(Bytes{4, 1, 1, 1}, Bytes{12, 1, 1, 0}));
    EXPECT_EQ(Names().back(), "NVME12_R_Temp");
}

TEST_F(DispatchOfDisks, ARefusedRecordIsRegisteredAllTheSame) {
    Fail(kAdd, 0xC4);
    EXPECT_EQ(Add(DiskTemperature(3)), 0xC4u);
    EXPECT_THAT(Registered(), ElementsAre(Bytes{3, 1, 1, 0}));
    EXPECT_EQ(Add(DiskStatus(5, 2, 2)), 0xC4u);
    EXPECT_THAT(Registered(), ElementsAre(Bytes{3, 1, 1, 0}, Bytes{5, 2, 0, 1}));
    sim::ClearFaults();
    EXPECT_EQ(Add(DiskTemperature(3)), 0xFFFFu);
    EXPECT_THAT(sim::Repository(), IsEmpty());
}

TEST_F(DispatchOfDisks, ASensorWithoutASessionIsRegisteredAllTheSame) {
    sim::Board board = DiskBoard();
    board.disks.conversion = {{3, 30}, {5, 50}};
    Use(board);
    Fail(kSession);
    EXPECT_EQ(Add(DiskTemperature(3)), 0xC3u);
    EXPECT_EQ(Add(DiskStatus(5, 2, 2)), 0xC3u);
    EXPECT_THAT(Registered(), ElementsAre(Bytes{3, 1, 1, 0}, Bytes{5, 2, 0, 1}));
    sim::ClearFaults();
    EXPECT_EQ(Add(DiskStatus(5, 2, 2)), 0xFFFFu);
}

TEST_F(DispatchOfDisks, WhatTheGeneratorDeclinesIsNotRegistered) {
    EXPECT_EQ(Add(DiskTemperature(3, 2)), 0xFFFEu); // a temperature comes with sub type 1 only
    EXPECT_EQ(Add(DiskStatus(3, 9, 1)), 0xFFFEu);   // no such kind of disk
    EXPECT_THAT(Registered(), IsEmpty());
    EXPECT_THAT(UnitLines(), ElementsAre(Adding(0x0100), Declined(), Adding(0x0D00), Declined()));
    EXPECT_EQ(Add(DiskTemperature(3)), 0u);
}

TEST_F(DispatchOfDisks, OtherCardTypesPassByTheRegistry) {
    gRegisterInfo.registerSlotNum = 1;
    gRegisterInfo.tHddInfo[0] = Entry(3, 2, 1, 1);
    EXPECT_EQ(Add(Description(0x0100, 2, 3)), 0u); // a graphics card
    EXPECT_THAT(Names(), ElementsAre("GPU3_Temp"));
    for (const int device_type : {58, 60}) {
        Add(Description(0x0100, device_type, 3));
        Add(Description(0x0D00, device_type, 3));
    }
    EXPECT_THAT(RegistryLines(), IsEmpty());
    EXPECT_THAT(Registered(), ElementsAre(Bytes{3, 2, 1, 1}));
}

TEST_F(DispatchOfDisks, OtherClassesPassByTheRegistry) {
    gRegisterInfo.registerSlotNum = 1;
    gRegisterInfo.tHddInfo[0] = Entry(3, 2, 1, 1);
    for (const uint32_t sensor_class :
         {0x0803u, 0x0200u, 0x0C01u, 0x1501u, 0x00010100u, 0x00010D00u, 0x0D01u})
        Add(Description(sensor_class, kDisk, 3, 1));
    EXPECT_EQ(Add(Description(0x010B, kDisk, 3)), 0u);
    EXPECT_THAT(RegistryLines(), IsEmpty());
    EXPECT_THAT(Registered(), ElementsAre(Bytes{3, 2, 1, 1}));
}

TEST_F(DispatchOfDisks, ACaseOfMoreDisksThanTheRegistryHolds) {
    for (int slot = 0; slot < 100; ++slot)
        ASSERT_EQ(Add(DiskTemperature(slot)), 0u) << slot;
    EXPECT_EQ(gRegisterInfo.registerSlotNum, 100);
    EXPECT_EQ(Add(DiskTemperature(100)), 0u);
    EXPECT_EQ(gRegisterInfo.registerSlotNum, 100);
    EXPECT_EQ(Add(DiskTemperature(100)), 0u); // it cannot be remembered
    EXPECT_EQ(Add(DiskTemperature(99)), 0xFFFFu);
    EXPECT_EQ(sim::Repository().size(), 102u);
}

TEST_F(DispatchOfDisks, DeletingAndPullingADiskDoesNotFreeItsSlot) {
    EXPECT_EQ(Add(DiskTemperature(3)), 0u);
    sim::Repository().clear();
    EXPECT_EQ(Delete(DiskTemperature(3)), 1);
    EXPECT_EQ(Add(DiskTemperature(3)), 0xFFFFu);
    EXPECT_THAT(sim::Repository(), IsEmpty());
}

} // namespace
