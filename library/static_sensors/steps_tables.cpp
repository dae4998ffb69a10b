// SPDX-License-Identifier: Apache-2.0
//
// The steps that walk generator tables: the board's, the rack management board's, the liquid-cooling unit's.
#include "library/record/boards.h"
#include "library/record/log.h"
#include "library/static_sensors/pass.h"

namespace oxa {

namespace {

// The indexed sensors of the liquid-cooling unit; one profile announces them by their generators' names.
void AddCduEach(StaticPass &tPass, Group eGroup, uint8_t ucLast) {
    const RowView tFirst = tPass.tProfile.FirstRow(eGroup);
    for (uint8_t ucIndex = 1; ucIndex <= ucLast; ++ucIndex)
        for (RowView tRow = tFirst;; tRow = tRow.Next()) {
            OXA_INFO(kModuleSdr, tPass.Unit(), tPass.Driver(), "%s for CDU: ucIndex = %d, ucCnt = %d!",
                     tPass.Order().bCduNamesGenerators ? tRow.Function() : tPass.Driver(), ucIndex,
                     tPass.wCnt);
            tPass.Add(tRow, At(ucIndex));
            if (tRow.IsLastOfGroup())
                break;
        }
}

} // namespace

StepResult AddTable(StaticPass &tPass) {
    const StaticTables &tTables = tPass.tTables;
    for (uint8_t ucIndex = 0; ucIndex < tTables.tStatic.ucCnt; ++ucIndex) {
        OXA_INFO(kModuleSdr, tPass.Unit(), tPass.Driver(), "OXA_Add%sStaticSensor: ucIndex = %d, ucCnt = %d!",
                 tPass.ProfileName(), ucIndex, tPass.wCnt);
        tPass.Count(tTables.tStatic.ptGenerators[ucIndex](tPass.Slot(), tPass.Entry()));
    }
    return StepResult::kGoOn;
}

StepResult AddLiquidCooling(StaticPass &tPass) {
    IpmiCduManageConfig tConfig = {0};
    if (IPMI_GetCduManageConfig(&tConfig) != 0 || tConfig.ucEnable != 1)
        return StepResult::kGoOn;
    const StaticTables &tTables = tPass.tTables;
    for (uint8_t ucIndex = 0; ucIndex < tTables.tCdu.ucCnt; ++ucIndex) {
        OXA_INFO(kModuleSdr, tPass.Unit(), tPass.Driver(), "OXA_Add%sCDUSensor: ucIndex = %d, ucCnt = %d!",
                 tPass.ProfileName(), ucIndex, tPass.wCnt);
        tPass.Count(tTables.tCdu.ptGenerators[ucIndex](tPass.Slot(), tPass.Entry()));
    }
    AddCduEach(tPass, Group::kCduFan, tPass.Order().ucCduFans);
    AddCduEach(tPass, Group::kCduSupply, tPass.Order().ucCduSupplies);
    return StepResult::kGoOn;
}

// The rack management board has two sensors and asks the board for nothing but its id.
StepResult AddRackBoard(StaticPass &tPass) {
    uint16_t wBoardId = 0;
    if (get_default_board_id(&wBoardId) < 0) {
        OXA_ERROR(kModuleSdr, tPass.Unit(), tPass.Driver(), "get Board Id failed\n");
        return StepResult::kEndWithoutCount;
    }
    if (wBoardId != kBoardRack)
        return StepResult::kGoOn;
    const StaticTables &tTables = tPass.tTables;
    for (uint8_t ucIndex = 0; ucIndex < tTables.tRack.ucCnt; ++ucIndex) {
        OXA_INFO(kModuleSdr, tPass.Unit(), tPass.Driver(),
                 "OXA_Add%sRMCStaticSensor: ucIndex = %d, ucCnt = %d, uc%sRMCStaticSDRCnt = %d!",
                 tPass.ProfileName(), ucIndex, tPass.wCnt, tPass.ProfileName(), tTables.tRack.ucCnt);
        tPass.Count(tTables.tRack.ptGenerators[ucIndex](tPass.Slot(), tPass.Entry()));
    }
    return StepResult::kEndWithCount;
}

} // namespace oxa
