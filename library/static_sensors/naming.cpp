// SPDX-License-Identifier: Apache-2.0
//
// Names that are not simply printed with their number, and what is said about a name that is stored already.
#include "library/static_sensors/draft.h"

namespace oxa {

const char *PickName(Draft &tDraft, uint8_t &ucNumber) {
    const RowView &tRow = tDraft.tRow;
    const uint8_t ucIndex = tDraft.tAt.ucIndex;
    switch (tDraft.Does().eNaming) {
    case Naming::kSmallBoard:
        return tDraft.wBoardId == kBoardSmall ? tRow.Variant() : tRow.Name();
    case Naming::kSecondGroup:
        return ucIndex == 0 ? tRow.Name() : ucIndex == 1 ? tRow.Variant() : nullptr;
    case Naming::kInletOutlet:
        ucNumber = static_cast<uint8_t>('1' + ucIndex % 2);
        return ucIndex < 2 ? tRow.Name() : tRow.Variant();
    default: // kLongNumber; the others are printed straight
        return ucNumber > 0x0F ? tRow.Variant() : tRow.Name();
    }
}

void WriteDuplicateNotice(const Draft &tDraft) {
    const char *pcUnit = tDraft.Unit();
    const char *pcFunction = tDraft.Function();
    switch (tDraft.Does().eNotice) {
    case DuplicateNotice::kSilent:
        return;
    case DuplicateNotice::kInfo:
        OXA_INFO(kModuleSdr, pcUnit, pcFunction, "%s sensor already exist!", pcFunction);
        return;
    case DuplicateNotice::kInfoNewline:
        OXA_INFO(kModuleSdr, pcUnit, pcFunction, "%s sensor already exist!\n", pcFunction);
        return;
    case DuplicateNotice::kWarnNewline:
        OXA_WARN(kModuleSdr, pcUnit, pcFunction, "%s sensor already exist!\n", pcFunction);
        return;
    // Texts of another generator, kept as they are.
    case DuplicateNotice::kSwitchVoltsWarn:
        OXA_WARN(kModuleSdr, pcUnit, pcFunction, "%s_GenSwitchBoardVoltsSDR sensor already exist!",
                 tDraft.ProfileName());
        return;
    case DuplicateNotice::kSwitchVolts:
        OXA_INFO(kModuleSdr, pcUnit, pcFunction, "Default_GenSwitchBoardVoltsSDR sensor already exist!");
        return;
    case DuplicateNotice::kCpuStatus:
        OXA_INFO(kModuleSdr, pcUnit, pcFunction, "%s_GenCPUStatusSDR sensor already exist!\n",
                 tDraft.ProfileName());
        return;
    case DuplicateNotice::kFru:
        OXA_INFO(kModuleSdr, pcUnit, pcFunction, "The %s already exists in fru.", tDraft.tRow.Name());
        return;
    }
}

} // namespace oxa
