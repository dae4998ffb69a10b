// SPDX-License-Identifier: Apache-2.0
//
// The static driver: one pass over a board's facts that fills the caller's slots and entries.  All profiles
// run on it; what differs stands in the profile's constant.
#ifndef OXA_STATIC_SENSORS_PASS_H
#define OXA_STATIC_SENSORS_PASS_H

#include "library/static_sensors/engine.h"

namespace oxa {

// An exported generator table.  (Filled at every pass: as a constant it would be a relocation by name.)
struct GeneratorTable {
    const StaticGenFn *ptGenerators;
    uint8_t ucCnt;
    GeneratorTable(const StaticGenFn *pt, uint8_t uc) : ptGenerators(pt), ucCnt(uc) {}
};

// A table that is shorter than declared ends in null, which the driver would call.
template <size_t N> constexpr bool IsAsLongAsDeclared(const StaticGenFn (&atTable)[N]) {
    return atTable[N - 1] != nullptr;
}

// The profile's exported generator tables.
struct StaticTables {
    GeneratorTable tStatic;
    GeneratorTable tCdu = {nullptr, 0};
    GeneratorTable tRack = {nullptr, 0}; // of the rack management board
};

// What the board is made of.
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

// Whether a pass goes on behind a step.
enum class StepResult : uint8_t { kGoOn, kEndWithoutCount, kEndWithCount };

struct StaticPass {
    const StaticProfile &tProfile;
    const StaticTables &tTables;
    uint8_t *pucSDRRec;    // the caller's slots
    DevTabEntry *ptDEVTab; // and entries
    uint16_t wCnt = 0;     // wraps at 16 bits
    StaticFacts tFacts = {};

    StaticPass(const StaticProfile &tWhose, const StaticTables &tGenerators, uint8_t *pucSlots,
               DevTabEntry *ptEntries)
        : tProfile(tWhose), tTables(tGenerators), pucSDRRec(pucSlots), ptDEVTab(ptEntries) {}

    const PassOrder &Order() const {
        return tProfile.tPass;
    }
    // For log lines.
    const char *Unit() const {
        return tProfile.tNames.acUnit;
    }
    const char *Driver() const {
        return tProfile.tNames.acDriver;
    }
    const char *ProfileName() const {
        return tProfile.tNames.acName;
    }

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
    bool Add(RowView tRow, const At &tAt) {
        return Count(BuildSensor(tProfile, tRow, tAt, Slot(), Entry()));
    }
    void AddGroup(RowView tFirst, const At &tAt);  // it and the rest of its group, in order
    uint8_t AddEach(Group eGroup, uint8_t ucLast); // the group for index 1 to ucLast; how many were added
    void Announce(RowView tRow, uint8_t ucIndex) const;
};

// A whole pass: null check, the profile's steps, count.
void RunStaticPass(uint8_t *pucSDRRec, DevTabEntry *ptDEVTab, uint16_t *pucSensorCnt,
                   const StaticProfile &tProfile, const StaticTables &tTables);

// The steps, in files by what they are about.  GatherFacts applies the rules of single boards as well.
StepResult GatherFacts(StaticPass &tPass);

StepResult AddCpus(StaticPass &tPass);
StepResult AddCpuDomains(StaticPass &tPass);
StepResult AddMemory(StaticPass &tPass);
StepResult AddPsus(StaticPass &tPass);
StepResult AddPcie(StaticPass &tPass);
StepResult AddFans(StaticPass &tPass);
StepResult AddOcp(StaticPass &tPass);

StepResult AddDisks(StaticPass &tPass);

StepResult AddTable(StaticPass &tPass);
StepResult AddRackBoard(StaticPass &tPass);
StepResult AddLiquidCooling(StaticPass &tPass);

StepResult AddSwitchCard(StaticPass &tPass);
StepResult AddSwitchAir(StaticPass &tPass);
StepResult AddPowerModules(StaticPass &tPass);
StepResult AddUbbRetimers(StaticPass &tPass);
StepResult AddSwitchChips(StaticPass &tPass);
StepResult AddGpuRails(StaticPass &tPass);
StepResult AddLanSwitch(StaticPass &tPass);

} // namespace oxa
#endif
