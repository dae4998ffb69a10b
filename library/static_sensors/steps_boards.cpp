// SPDX-License-Identifier: Apache-2.0
//
// The steps for the switch board and for parts that only some machines have.
#include "library/record/boards.h"
#include "library/record/log.h"
#include "library/static_sensors/pass.h"

namespace oxa {

namespace {

constexpr uint8_t kSwitchCard = 2; // the card that is the switch board
constexpr uint8_t kOnline = 1;
constexpr uint8_t kPowerModules = 4;
constexpr uint8_t kUbbRetimers = 8;
constexpr uint8_t kGpuRails = 8;
constexpr uint8_t kSwitchPowerPlaces = 4;
constexpr uint8_t kSwitchTempPlaces = 8;
constexpr uint8_t kSwitchAirPlaces = 4;

bool SwitchCardOnline(const StaticFacts &tFacts) {
    return tFacts.ucSwitchBoardFlag == 1 && GetCardOnlineStatus(kSwitchCard) == kOnline;
}

bool TakesSwitchCard(uint16_t wBoardId) {
    return wBoardId == kBoardSwitchCardA || wBoardId == kBoardSwitchCardB || wBoardId == kBoardSwitchCardC;
}

} // namespace

// Volts and currents, or temperatures, by what card it is.
StepResult AddSwitchCard(StaticPass &tPass) {
    if (!TakesSwitchCard(tPass.tFacts.wBoardId) || !SwitchCardOnline(tPass.tFacts))
        return StepResult::kGoOn;
    const uint16_t wCardId = GetCardBoardId(kSwitchCard);
    const bool bPower = wCardId == kCardSwitchPower;
    if (!bPower && wCardId != kCardSwitchTemp)
        return StepResult::kGoOn;
    OXA_INFO(kModuleSdr, tPass.Unit(), tPass.Driver(), "%s for SwitchBoard!", tPass.Driver());
    tPass.AddEach(bPower ? Group::kSwitchPower : Group::kSwitchTemp,
                  bPower ? kSwitchPowerPlaces : kSwitchTempPlaces);
    return StepResult::kGoOn;
}

StepResult AddSwitchAir(StaticPass &tPass) {
    if (tPass.tFacts.wBoardId != kBoardSwitchAir || !SwitchCardOnline(tPass.tFacts) ||
        GetCardBoardId(kSwitchCard) != kCardSwitchAir)
        return StepResult::kGoOn;
    OXA_INFO(kModuleSdr, tPass.Unit(), tPass.Driver(), "%s for SwitchBoard Temp!", tPass.Driver());
    const RowView tFirst = tPass.tProfile.FirstRow(Group::kSwitchAir);
    for (uint8_t ucIndex = 0; ucIndex < kSwitchAirPlaces; ++ucIndex)
        tPass.AddGroup(tFirst, At(ucIndex));
    return StepResult::kGoOn;
}

// Their number is reported, also when there is none.
StepResult AddPowerModules(StaticPass &tPass) {
    MW_SetPWRModuleOnlineNum(tPass.AddEach(Group::kPowerModule, kPowerModules));
    return StepResult::kGoOn;
}

StepResult AddUbbRetimers(StaticPass &tPass) {
    tPass.AddEach(Group::kUbbRetimer, kUbbRetimers);
    return StepResult::kGoOn;
}

StepResult AddSwitchChips(StaticPass &tPass) {
    tPass.AddEach(Group::kSwitchChip, Hal_GetSwiTempSensorCnt());
    return StepResult::kGoOn;
}

StepResult AddGpuRails(StaticPass &tPass) {
    tPass.AddEach(Group::kGpuRail, kGpuRails);
    return StepResult::kGoOn;
}

StepResult AddLanSwitch(StaticPass &tPass) {
    tPass.AddGroup(tPass.tProfile.FirstRow(Group::kLanSwitch), At());
    return StepResult::kGoOn;
}

} // namespace oxa
