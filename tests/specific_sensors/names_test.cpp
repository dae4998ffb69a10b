// SPDX-License-Identifier: GPL-3.0-or-later
//
// From a description to a name: the lookup in the profile's table and the whole formation.
#include "profiles/expected_name_tables.h"
#include "specific_sensors/formed_names.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// ---- profile lookup ----------------------------------------------------------------------------

class ProfileLookup : public Lookup {};

TEST_F(ProfileLookup, CopiesThePatternOverALongerNameAndKeepsTheBitmap) {
    SnrQuery query = Query(kTemp, 4, 0, "LEFTOVER_NAME_16");
    getCustomSensorInfo(&query, CUSTOM_ID_DEFAULT);
    EXPECT_EQ(Name(query), "RAID_TEMP");
    EXPECT_EQ(query.wBitmap, 0x1234) << "an override of 65535 keeps the description's bitmap";
}

TEST_F(ProfileLookup, TheSubTypeIsPartOfTheKey) {
    SnrQuery query = Query(kTemp, 2, 1);
    getCustomSensorInfo(&query, CUSTOM_ID_DEFAULT);
    EXPECT_EQ(Name(query), "GPU_SFP#_TEMP_*");
}

TEST_F(ProfileLookup, EveryRowOfEveryProfileIsFound) {
    const std::pair<uint32_t, const std::vector<ExpectedRow> *> profiles[] = {
        {0, &kExpectedDefault}, {1, &kExpectedKestrin},  {2, &kExpectedPellago}, {3, &kExpectedVorana},
        {4, &kExpectedAstrel},  {6, &kExpectedQuorral},  {7, &kExpectedLumora},  {11, &kExpectedDurnow},
        {20, &kExpectedSablin}, {16, &kExpectedFerrisk},
    };
    for (const auto &[id, rows] : profiles) {
        for (const ExpectedRow &row : *rows) {
            SnrQuery query = Query(row.sensor_class, row.device_type, row.sub_type);
            getCustomSensorInfo(&query, id);
            EXPECT_EQ(Name(query), row.pattern) << "profile " << id;
        }
    }
    EXPECT_THAT(LogLines(), IsEmpty());
}

TEST_F(ProfileLookup, AMissLeavesTheQueryUntouched) {
    const struct {
        SnrQuery query;
        uint32_t profile;
    } misses[] = {
        {Query(kTemp, 2, 0, "KEPT"), 5},                // no such profile
        {Query(kTemp, 200, 0, "KEPT"), 0},              // no such device type
        {Query(kTemp, 2, 200, "KEPT"), 0},              // no such sub type
        {Query(0x0D00, 2, 0, "KEPT"), 0},               // no such class
        {Query(0x00010100, 2, 0, "KEPT"), 0},           // the class word counts as a whole
        {Query(kTemp, 34, 0, "KEPT"), CUSTOM_ID_DURNOW} // in Default only
    };
    for (const auto &miss : misses) {
        SnrQuery query = miss.query;
        getCustomSensorInfo(&query, miss.profile);
        EXPECT_EQ(memcmp(&query, &miss.query, sizeof(query)), 0);
    }
}

TEST_F(ProfileLookup, ANullQueryIsReported) {
    getCustomSensorInfo(nullptr, 0);
    EXPECT_THAT(LogLines(),
                ElementsAre("error 42 getCustomSensorInfo: getCustomSensorInfo failed! The input parameter "
                            "ptInfo is null."));
}

// ---- name formation ----------------------------------------------------------------------------

class NameFormation : public Lookup {};

TEST_F(NameFormation, ANullQueryIsReportedAndGivesZero) {
    EXPECT_EQ(getSensorInfo(nullptr, 1, 1), 0);
    EXPECT_THAT(LogLines(), ElementsAre("error 42 getSensorInfo: getSensorInfo failed! ptInfo == NULL."));
}

TEST_F(NameFormation, DefaultPadsTheSlotNumber) {
    EXPECT_EQ(Formed(kTemp, 2, 0, 3), "GPU_TEMP_03");
    EXPECT_EQ(Formed(kTemp, 2, 0, 12), "GPU_TEMP_12");
    EXPECT_EQ(Formed(kTemp, 2, 0, 255), "GPU_TEMP_255");
    EXPECT_EQ(Formed(kPower, 2, 0, 3), "GPU_TOTAL_POWER");
    EXPECT_EQ(Formed(kFan, 0, 0, 7), "FAN_F_SPEED_07");
    EXPECT_THAT(LogLines(), IsEmpty());
}

TEST_F(NameFormation, ADefaultNicPortStaysUnpadded) {
    EXPECT_EQ(Formed(kTemp, 5, 1, 3, 1), "NIC_SFP1_TEMP_03");
}

TEST_F(NameFormation, PortsOfOtherDefaultDeviceTypesArePadded) {
    EXPECT_EQ(Formed(kTemp, 34, 1, 3, 1), "N03_SFP_TEMP_01");
}

TEST_F(NameFormation, SevenDeviceTypesHavePlainPortsInProfiles0And20) {
    for (const uint32_t profile : {0u, 20u}) {
        Board(profile);
        for (int device = 0; device < 256; ++device) {
            const bool plain = device == 2 || device == 5 || device == 6 || device == 19 || device == 36 ||
                               device == 43 || device == 44;
            SnrQuery query = Query(0x0D00, device, 0, "*-#"); // no table has this key: the pattern stays
            EXPECT_EQ(getSensorInfo(&query, 4, 7), plain ? 4 : 5) << device;
            EXPECT_EQ(Name(query), plain ? "04-7" : "04-07") << device;
        }
    }
}

TEST_F(NameFormation, KestrinFansAreHexadecimal) {
    Board(CUSTOM_ID_KESTRIN);
    EXPECT_EQ(Formed(kFan, 255, 0, 10), "SYS_FanA_Speed");
    EXPECT_EQ(Formed(kFan, 255, 0, 9), "SYS_Fan9_Speed");
    EXPECT_EQ(Formed(kFan, 0, 2, 31), "SYS_Fan1F_SPD_F");
    EXPECT_EQ(Formed(kTemp, 2, 0, 10), "GPU10_Temp") << "fans only";
}

TEST_F(NameFormation, DurnowFansArePadded) {
    Board(CUSTOM_ID_DURNOW);
    EXPECT_EQ(Formed(kFan, 0, 0, 3), "FAN_SPEED_03F");
    EXPECT_EQ(Formed(kFan, 255, 0, 3), "FAN_SPEED_03");
    EXPECT_EQ(Formed(kTemp, 2, 0, 3), "GPU3_Temp") << "fans only";
}

TEST_F(NameFormation, OtherProfilesPrintPlainNumbers) {
    for (const uint32_t profile : {2u, 3u, 4u, 6u, 7u}) {
        Board(profile);
        SnrQuery query = Query(0x0D00, 5, 0, "*/#");
        EXPECT_EQ(getSensorInfo(&query, 4, 7), 3) << profile;
        EXPECT_EQ(Name(query), "4/7") << profile;
    }
    Board(CUSTOM_ID_VORANA);
    EXPECT_EQ(Formed(kFan, 255, 0, 3), "FAN3 Speed");
}

TEST_F(NameFormation, EveryStarAndEveryHashIsReplaced) {
    Board(CUSTOM_ID_PELLAGO);
    SnrQuery query = Query(0x0D00, 200, 0, "*a*#b#");
    EXPECT_EQ(getSensorInfo(&query, 1, 2), 6);
    EXPECT_EQ(Name(query), "1a12b2");
}

TEST_F(NameFormation, AnUnreadableProfileIdMeansProfile0) {
    Board(CUSTOM_ID_KESTRIN);
    Fail("IPMI_LoadCustomID");
    EXPECT_EQ(Formed(kTemp, 2, 0, 3), "GPU_TEMP_03");
}

TEST_F(NameFormation, AnEmptyNameIsNotOffered) {
    Board(5); // no such profile
    SnrQuery query = Query(kTemp, 2, 0);
    EXPECT_EQ(getSensorInfo(&query, 3, 1), 0);
    EXPECT_THAT(LogLines(), ElementsAre("warn 42 getSensorInfo: this sensor is not support custom id 5 !"));
}

TEST_F(NameFormation, ANameThatBeginsWithNullIsNotOffered) {
    Board(CUSTOM_ID_FERRISK);
    SnrQuery query = Query(kTemp, 200, 0, "null");
    EXPECT_EQ(getSensorInfo(&query, 3, 1), 0);
    query = Query(kTemp, 200, 0, "nullified_*");
    EXPECT_EQ(getSensorInfo(&query, 3, 1), 0);
    const std::string line = "warn 42 getSensorInfo: this sensor is not support custom id 16 !";
    EXPECT_THAT(LogLines(), ElementsAre(line, line));
}

TEST_F(NameFormation, AMissUsesTheNameThatTheQueryCameWith) {
    for (const std::string name : {"nul", "n", "NULL", "Xnull"}) {
        SnrQuery query = Query(kTemp, 200, 0, name);
        EXPECT_EQ(getSensorInfo(&query, 3, 1), name.size());
        EXPECT_EQ(Name(query), name);
    }
}

TEST_F(NameFormation, ANameIsEmptyWhenItsFirstCharacterIsMissing) {
    SnrQuery query = Query(kTemp, 200, 0, "?rest");
    query.acName[0] = 0;
    EXPECT_EQ(getSensorInfo(&query, 3, 1), 0);
}

TEST_F(NameFormation, ALengthAbove16IsReturnedAndTheNameIsCut) {
    Board(CUSTOM_ID_QUORRAL);
    SnrQuery query = Query(kTemp, 19, 0); // P*_SNIC_NIC_Temp: 15 characters besides the number
    EXPECT_EQ(getSensorInfo(&query, 9, 0), 16);
    EXPECT_EQ(Name(query), "P9_SNIC_NIC_Temp");
    query = Query(kTemp, 19, 0);
    EXPECT_EQ(getSensorInfo(&query, 10, 0), 17);
    query = Query(kTemp, 19, 0);
    EXPECT_EQ(getSensorInfo(&query, 100, 0), 18);
}

TEST_F(NameFormation, ATooLongNameIsReturnedBeforeTheHashIsLookedAt) {
    Board(CUSTOM_ID_VORANA);
    SnrQuery query = Query(kTemp, 6, 1); // P*_OCP_SFP#_Temp
    EXPECT_EQ(getSensorInfo(&query, 10, 2), 17);
    EXPECT_EQ(sim::CountCalls("GetOcpNetCardMaxCount"), 1u) << "only the slot was formatted";
}

TEST_F(NameFormation, ATooLongNameIsReturnedBeforeTheSablinRename) {
    Board(CUSTOM_ID_SABLIN, 0x54E0);
    SnrQuery query = Query(kTemp, 200, 0, "0123456789ABCDE*"); // 15 + two digits
    EXPECT_EQ(getSensorInfo(&query, 3, 0), 17);
    EXPECT_EQ(sim::CountCalls("get_default_board_id"), 0u);
}

// Independent model of every name that a table can give, for slots and ports of one and two digits.
std::string ModelName(uint32_t profile, const ExpectedRow &row, int slot, int port) {
    const auto number = [&](int value, bool plain) {
        char text[16];
        const char *format = "%d";
        if (row.sensor_class == kFan && profile == 1) {
            format = "%X";
        } else if (row.sensor_class == kFan && profile == 11) {
            format = "%02d";
        } else if (!plain && (profile == 0 || profile == 20)) {
            format = "%02d";
        }
        snprintf(text, sizeof(text), format, value);
        return std::string(text);
    };
    const bool plain_port = row.device_type == 2 || row.device_type == 5 || row.device_type == 6 ||
                            row.device_type == 19 || row.device_type == 36 || row.device_type == 43 ||
                            row.device_type == 44;
    std::string name;
    for (const char *at = row.pattern; *at != 0; ++at) {
        if (*at == '*') {
            name += number(slot, false);
        } else if (*at == '#') {
            name += number(port, plain_port && (profile == 0 || profile == 20));
        } else {
            name += *at;
        }
    }
    return name;
}

TEST_F(NameFormation, EveryRowOfEveryProfileGivesItsName) {
    const std::pair<uint32_t, const std::vector<ExpectedRow> *> profiles[] = {
        {0, &kExpectedDefault}, {1, &kExpectedKestrin}, {2, &kExpectedPellago}, {3, &kExpectedVorana},
        {4, &kExpectedAstrel},  {6, &kExpectedQuorral}, {7, &kExpectedLumora},  {11, &kExpectedDurnow},
    };
    for (const auto &[id, rows] : profiles) {
        Board(id);
        for (const ExpectedRow &row : *rows) {
            for (const auto &[slot, port] : {std::pair{3, 1}, std::pair{12, 2}}) {
                SnrQuery query = Query(row.sensor_class, row.device_type, row.sub_type);
                const std::string model = ModelName(id, row, slot, port);
                const uint8_t length =
                    getSensorInfo(&query, static_cast<uint8_t>(slot), static_cast<uint8_t>(port));
                if (model.size() <= 16) {
                    EXPECT_EQ(Name(query), model) << "profile " << id;
                    EXPECT_EQ(length, model.size()) << model;
                } else {
                    EXPECT_GT(length, 16) << model;
                }
            }
        }
    }
    EXPECT_THAT(LogLines(), IsEmpty());
}

TEST_F(NameFormation, WhicheverPlatformCallFailsAWrongNameIsNeverOffered) {
    for (const uint32_t profile : {0u, 2u}) {
        const std::string names[] = {profile == 0 ? "NIC_SFP2_T_F-07" : "NICF-7_SFP2_Temp",
                                     profile == 0 ? "NIC_SFP2_TEMP_03"
                                                  : "NIC3_SFP2_Temp",        // location or silk unknown
                                     "NIC_SFP2_T_F-07", "NIC_SFP2_TEMP_03"}; // profile unknown
        uint64_t calls = 1;
        for (uint64_t k = 0; k <= calls; ++k) {
            Board(profile);
            AddSlot(3, "F-Slot7");
            if (k > 0) {
                sim::FailCall(k);
            }
            SnrQuery query = Query(kTemp, 5, 1);
            const uint8_t length = getSensorInfo(&query, 3, 2);
            if (k == 0) {
                calls = sim::FailableCalls();
                EXPECT_EQ(Name(query), names[0]);
            } else if (length != 0 && length <= 16) {
                EXPECT_THAT(names, testing::Contains(Name(query))) << "profile " << profile << " call " << k;
                EXPECT_EQ(length, Name(query).size());
            }
            EXPECT_THAT(sim::Violations(), IsEmpty());
        }
        EXPECT_GT(calls, 0u);
    }
}

} // namespace
