// SPDX-License-Identifier: Apache-2.0
//
// The static driver: one pass over a board's facts that fills the caller's slots and entries.  All profiles
// run on it; what differs stands in the profile's constant.
#ifndef OXA_PROFILES_STATIC_PASS_H
#define OXA_PROFILES_STATIC_PASS_H

#include "profiles/profile.h"

namespace oxa {

// The profile's exported generator tables; read at every pass.
struct StaticTables {
    const StaticGenFn *ptTable = nullptr;
    uint8_t ucTableCnt = 0;
    const StaticGenFn *ptCdu = nullptr;
    uint8_t ucCduCnt = 0;
    const StaticGenFn *ptRack = nullptr; // of the rack management board
    uint8_t ucRackCnt = 0;
};

struct StaticFacts {
    uint8_t ucCpuMaxCount = 0;
    uint8_t ucCpuSilkStartIndex = 0;
    uint8_t ucDimmMaxCount = 0;
    uint8_t ucPcieCnt = 0;
    uint8_t ucCpuType = 0;
    uint8_t ucFanCnt = 0;
    uint8_t ucOCPCnt = 0;
    uint8_t SensorSimpleFlag = 0;
    uint8_t ucSwitchBoardFlag = 0;
    uint8_t ucPSUCnt = 0;
    uint8_t ucPowerManage = 0; // gathered, read by nothing
    uint16_t wBoardId = 0;
};

enum class Outcome : uint8_t { kGoOn, kEndWithoutCount, kEndWithCount };

struct StaticPass {
    const ProfileBase &tBase;
    const ProfileHead &tProfile;
    const StaticTables &tTables;
    uint8_t *pucSDRRec = nullptr;
    DevTabEntry *ptDEVTab = nullptr;
    uint16_t wCnt = 0; // wraps at 16 bits
    StaticFacts tFacts = {};

    StaticPass(const ProfileBase &t, const StaticTables &tGenerators)
        : tBase(t), tProfile(t.tHead), tTables(tGenerators) {}

    // The whole pass: null check, the profile's steps, count.
    void Run(uint8_t *pucSlots, DevTabEntry *ptEntries, uint16_t *pucSensorCnt);

    uint8_t *Slot() const {
        return pucSDRRec + SDR_SLOT_SIZE * wCnt;
    }
    DevTabEntry *Entry() const {
        return ptDEVTab + wCnt;
    }
    // A generator's answer: a record that was written stays, anything else leaves its place to the next one.
    bool Count(uint8_t ucGenerated) {
        if (ucGenerated == 0)
            return false;
        ++wCnt;
        return true;
    }

    RowView First(Group eGroup) const; // of the group, or the end row
    bool Add(RowView tRow, At tAt) {
        return Count(BuildSensor(tProfile.tName, tRow, tAt, Slot(), Entry()));
    }
    void AddGroup(RowView tFirst, At tAt);         // it and the rest of its group, in order
    uint8_t AddEach(Group eGroup, uint8_t ucLast); // the group for index 1 to ucLast; how many were added
    void Announce(RowView tRow, At tAt) const;
    bool Has(ProfileFlag eFlag) const {
        return (tProfile.ucFlags & eFlag) != 0;
    }
};

// A whole pass over a profile.  One place for what all profiles' drivers have in common.
void RunStaticPass(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt,
                   const ProfileBase &tProfile, const StaticTables &tTables);

// The steps, in files by what they are about.  GatherFacts applies the rules of single boards as well.
Outcome AddRackBoard(StaticPass &tPass);
Outcome GatherFacts(StaticPass &tPass);
Outcome AddCpus(StaticPass &tPass);
Outcome AddCpuDomains(StaticPass &tPass);
Outcome AddMemory(StaticPass &tPass);
Outcome AddPsus(StaticPass &tPass);
Outcome AddPcie(StaticPass &tPass);
Outcome AddFans(StaticPass &tPass);
Outcome AddDisks(StaticPass &tPass);
Outcome AddOcp(StaticPass &tPass);
Outcome AddTable(StaticPass &tPass);
Outcome AddLiquidCooling(StaticPass &tPass);
Outcome AddSwitchCard(StaticPass &tPass);
Outcome AddSwitchAir(StaticPass &tPass);
Outcome AddPowerModules(StaticPass &tPass);
Outcome AddUbbRetimers(StaticPass &tPass);
Outcome AddSwitchChips(StaticPass &tPass);
Outcome AddGpuRails(StaticPass &tPass);
Outcome AddLanSwitch(StaticPass &tPass);

// Lines under the driver's name, and such that begin with it.  (Few arguments: all of them go in registers.)
void Say(const StaticPass &tPass, Remark tRemark, const char *pcFormat, int sdw = 0);
void SayNamed(const StaticPass &tPass, Remark tRemark, const char *pcFormat, int sdw = 0);
void SayNamed(const StaticPass &tPass, Remark tRemark, const char *pcFormat, int sdwA, int sdwB, int sdwC = 0,
              int sdwD = 0);
#define PASS_SPEAKER(tPass) (tPass).tProfile.tName, ""
#define PASS_INFO(tPass, ...) Say(tPass, OXA_REMARK(kInfo, kModuleSdr), __VA_ARGS__)
#define PASS_WARN(module, tPass, ...) Say(tPass, OXA_REMARK(kWarn, module), __VA_ARGS__)
#define PASS_ERROR(tPass, ...) Say(tPass, OXA_REMARK(kError, kModuleSdr), __VA_ARGS__)
#define PASS_NAMED(severity, module, tPass, ...) SayNamed(tPass, OXA_REMARK(severity, module), __VA_ARGS__)

} // namespace oxa
#endif
