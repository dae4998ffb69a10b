// SPDX-License-Identifier: GPL-3.0-or-later
//
// What others can put in the place of the library's files, where they may write to the folder: links, pipes, folders,
// devices, content.  These tests say what happens, not what should: docs/security.md draws the conclusions.
#include <csignal>
#include <cstring>
#include <filesystem>
#include <random>
#include <sys/stat.h>
#include <unistd.h>

#include "oxa/events.h"
#include "oxa/specific_sensors.h"
#include "oxa/thresholds.h"
#include "store/store_fixture.h"
#include "support/static_pass.h"

namespace {

using namespace store;
using testing::IsEmpty;
namespace fs = std::filesystem;

constexpr size_t kWholeStore = 16320;

class PlantedFiles : public StoreTest {
protected:
    void SetUp() override {
        StoreTest::SetUp();
        fs::remove_all(sim::RealPath("/conf")); // also when the tests share a process
        fs::create_directories(sim::RealPath("/var/tmp"));
        sim::WriteFile("/etc/other", Bytes(200, 0x77));
    }
    static std::string Real(const char *path) {
        return sim::RealPath(path);
    }
    // Nothing of the store is read or written, nobody waits and nothing stays open.
    static void ExpectDeadStore() {
        Bytes room(kWholeStore);
        EXPECT_EQ(readExtSDRFile(room.data(), kWholeStore), 0);
        EXPECT_EQ(writeExtSDRFile(room.data(), 64), 0); // success is reported all the same
        EXPECT_EQ(checkSensorExist(room.data()), 0);
    }
};

TEST_F(PlantedFiles, ASymbolicLinkIsFollowedAndItsTargetReplaced) {
    fs::create_symlink(Real("/etc/other"), Real(kSdrFile));
    Bytes room(kWholeStore);
    EXPECT_EQ(readExtSDRFile(room.data(), kWholeStore), 200);
    writeExtSDRFile(Bytes(64, 0x11).data(), 64);
    EXPECT_EQ(sim::ReadFile("/etc/other"), Bytes(64, 0x11));
    EXPECT_TRUE(fs::is_symlink(Real(kSdrFile)));
}

TEST_F(PlantedFiles, ADanglingLinkMakesItsTargetEvenByARead) {
    fs::create_symlink(Real("/etc/new"), Real(kDevTabFile));
    EXPECT_EQ(getExtDevTabCount(), 0U);
    EXPECT_TRUE(sim::FileExists("/etc/new"));
}

TEST_F(PlantedFiles, AHardLinkIsWrittenUnderBothNames) {
    fs::create_hard_link(Real("/etc/other"), Real(kSdrFile));
    writeExtSDRFile(Bytes(64, 0x11).data(), 64);
    EXPECT_EQ(sim::ReadFile("/etc/other"), Bytes(64, 0x11));
}

TEST_F(PlantedFiles, APipeInPlaceOfTheStoreIsAnEmptyStore) {
    alarm(20); // a wait would be without end
    ASSERT_EQ(mkfifo(Real(kSdrFile).c_str(), 0666), 0);
    ExpectDeadStore();
    alarm(0);
}

TEST_F(PlantedFiles, AFolderInPlaceOfTheStoreIsAnEmptyStore) {
    fs::create_directory(Real(kSdrFile));
    ExpectDeadStore();
    EXPECT_TRUE(fs::is_directory(Real(kSdrFile)));
}

TEST_F(PlantedFiles, ALoopOfLinksIsAnEmptyStore) {
    fs::create_symlink(Real(kSdrFile), Real(kSdrFile));
    ExpectDeadStore();
}

TEST_F(PlantedFiles, OfAHugeFileTheStoreSizeIsRead) {
    sim::WriteFile(kSdrFile, {});
    fs::resize_file(Real(kSdrFile), uintmax_t{1} << 33); // no blocks
    fs::create_hard_link(Real(kSdrFile), Real(kDevTabFile));
    Bytes record(64);
    record[SDR_RECORD_TYPE] = 1;
    EXPECT_EQ(checkSensorExist(record.data()), 0);
    EXPECT_EQ(getExtDevTabCount(), 255U);
}

TEST_F(PlantedFiles, ADeviceWithoutEndIsReadOnceAndHasNoSensors) {
    fs::create_symlink("/dev/zero", Real(kSdrFile));
    Bytes record(64);
    record[SDR_RECORD_TYPE] = 1;
    EXPECT_EQ(checkSensorExist(record.data()), 0);
}

// Lengths round every border, bytes of every kind: the answer comes, and only whole slots count.
TEST_F(PlantedFiles, ContentOfEveryLengthClassIsSurvived) {
    std::mt19937 random(20261122);
    for (const size_t size : {0,   1,   31,   32,   47,   48,    63,    64,    65,    127,
                              128, 129, 8159, 8160, 8161, 16319, 16320, 16321, 16384, 70000}) {
        Bytes content(size);
        for (uint8_t &byte : content)
            byte = static_cast<uint8_t>(random() % 4 == 0 ? random() : 1 + random() % 2);
        sim::WriteFile(kSdrFile, content);
        sim::WriteFile(kDevTabFile, content);
        EXPECT_EQ(getExtDevTabCount(), std::min<size_t>(size / 32, 255)) << size;
        for (size_t slot = 0; slot < std::min<size_t>(size / 64, 255); ++slot) {
            Bytes wanted(content.begin() + static_cast<long>(64 * slot),
                         content.begin() + static_cast<long>(64 * slot + 64));
            const bool sensor = wanted[SDR_RECORD_TYPE] == 1 || wanted[SDR_RECORD_TYPE] == 2;
            EXPECT_EQ(checkSensorExist(wanted.data()), sensor ? 1 : 0) << size << " slot " << slot;
        }
    }
}

// Whoever can write the store decides which sensors the machine has.
TEST_F(PlantedFiles, ARecordOfTheSameNameKeepsASensorFromBeingBuilt) {
    const sim::Board board = tests::BaseBoard();
    const tests::Outcome clean = tests::RunPass(board);
    tests::Store({*clean.Find("CPU_TEMP_00")});
    const tests::Outcome robbed = tests::RunPass();
    EXPECT_EQ(robbed.Find("CPU_TEMP_00"), nullptr);
    EXPECT_EQ(robbed.count, clean.count - 1);
}

// ---- the other files ---------------------------------------------------------------------------------

TEST_F(PlantedFiles, APlantedRecordIdDeletesWhateverRecordItNames) {
    sim::WriteFile("/var/SpecificSDRRec", [] {
        const std::string text = "[PSU_1]\nsdrRecId=5\nPresence=1\n";
        return Bytes(text.begin(), text.end());
    }());
    sim::Repository().push_back({5, Bytes(48, 0x01)}); // a sensor, no power supply
    SpecificSensorParam supply = {};
    supply.dwSensorDevType = 0xFF0A;
    supply.SlotId = 1;
    EXPECT_EQ(SDR_DeleteSpecificSDR(&supply), 0);
    EXPECT_THAT(sim::Repository(), IsEmpty());
}

TEST_F(PlantedFiles, APlantedFruIdIsToldToReadersAndGivenToNoCard) {
    const std::string text = "[HyperCard]\nHyperCard_FruId =511\nHyperCard_SlotId =3\n";
    sim::WriteFile("/var/tmp/purchaseCardFruId", Bytes(text.begin(), text.end()));
    uint8_t slot = 0, id = 0;
    EXPECT_EQ(LoadPurchaseCardFruId(0x010B, "HyperCard", &slot, &id), 0);
    EXPECT_EQ(id, 255);
    EXPECT_EQ(GetNoUsedFruIdForPurchaseCard(), 36);
}

TEST_F(PlantedFiles, AnythingUnderTheMarkersNameSilencesDisks) {
    fs::create_directory(Real("/var/test_disk_fault_predict"));
    EXPECT_EQ(addDiskSEL(4, 1, 17, 0), uint32_t{OXA_OK});
    EXPECT_THAT(sim::EventLog(), IsEmpty());
    fs::remove(Real("/var/test_disk_fault_predict"));
    fs::create_symlink("/nowhere", Real("/var/test_disk_fault_predict")); // leads nowhere: no marker
    EXPECT_EQ(addDiskSEL(4, 1, 17, 0), uint32_t{OXA_OK});
    EXPECT_EQ(sim::EventLog().size(), 1U);
}

TEST_F(PlantedFiles, AThresholdFileThatIsALinkLeadsTheSaveToItsTarget) {
    fs::create_directories(Real("/conf/BMC1"));
    fs::create_symlink(Real("/etc/other"), Real("/conf/BMC1/sensor_threshold.dat"));
    const uint8_t info[8] = {};
    const char name[17] = "CPU_TEMP_00";
    SaveSdrThresholdInfoInFile(name, info, 0);
    EXPECT_EQ(sim::ReadFile("/etc/other").size(), sizeof(SensorThreshTable));
    InitSdrThresholdInfoFromFile(7); // another profile: the link goes, its target stays
    EXPECT_FALSE(fs::is_symlink(Real("/conf/BMC1/sensor_threshold.dat")));
    EXPECT_TRUE(sim::FileExists("/etc/other"));
}

// An "rb+" stream holds the writing end itself: with a plain fopen() behind it the start waits for ever.
TEST_F(PlantedFiles, APipeInPlaceOfTheThresholdFileStopsTheStart) {
    fs::create_directories(Real("/conf/BMC1"));
    ASSERT_EQ(mkfifo(Real("/conf/BMC1/sensor_threshold.dat").c_str(), 0666), 0);
    EXPECT_EXIT((alarm(1), InitSdrThresholdInfoFromFile(0)), testing::KilledBySignal(SIGALRM), "");
}

// ---- what a kill between two calls of a caller leaves ------------------------------------------------

SpecificSensorParam Supply() {
    SpecificSensorParam supply = {};
    supply.dwSensorDevType = 0xFF0A;
    supply.ucDeviceType = supply.SlotId = 1;
    return supply;
}

TEST_F(PlantedFiles, ALocatorThatWasDeletedButIsStillRecordedComesBackOnceItsEntryIsCleared) {
    SDR_UpdateSpecificSDRRecFile(10, 1, 5, 1); // the repository has no record 5 any more
    SpecificSensorParam supply = Supply();
    EXPECT_NE(SDR_DeleteSpecificSDR(&supply), 0); // not found: the entry stays
    EXPECT_EQ(SDR_GetSepcificFruSDRRecID(10, 1), 5);
    EXPECT_EQ(SDR_AddSpecificSensor(&supply), uint32_t{OXA_FAILED});
    SDR_UpdateSpecificSDRRecFile(10, 1, 0, 0);
    EXPECT_EQ(SDR_AddSpecificSensor(&supply), uint32_t{OXA_OK});
}

TEST_F(PlantedFiles, ALocatorThatWasAddedButIsNotRecordedIsAddedTwice) {
    SpecificSensorParam supply = Supply();
    EXPECT_EQ(SDR_AddSpecificSensor(&supply), uint32_t{OXA_OK});
    EXPECT_EQ(SDR_AddSpecificSensor(&supply), uint32_t{OXA_OK});
    EXPECT_EQ(sim::Repository().size(), 2U);
}

TEST_F(PlantedFiles, AnEmptyThresholdFileIsAnEmptyTableOfTheDefaultProfileAndIsDeletedByAnyOther) {
    sim::WriteFile("/conf/BMC1/sensor_threshold.dat", {}); // opened for writing, and killed
    InitSdrThresholdInfoFromFile(0);
    EXPECT_EQ(sim::ThresholdTable().wCount, 0);
    EXPECT_TRUE(sim::FileExists("/conf/BMC1/sensor_threshold.dat"));
    InitSdrThresholdInfoFromFile(3);
    EXPECT_FALSE(sim::FileExists("/conf/BMC1/sensor_threshold.dat"));
}

} // namespace
