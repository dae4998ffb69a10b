// SPDX-License-Identifier: Apache-2.0
//
// The way of an event record into the event log: one local session per record.
#include "library/events/frame.h"
#include "library/record/local_session.h"

namespace oxa::sel {
namespace {

constexpr uint32_t kLogArg = 100; // of the session and of the command
constexpr size_t kResponseSize = 3;
constexpr uint8_t kTries = 2;

void DumpRecord(const char *pcFunction, const uint8_t *pucRecord) {
    OXA_ERROR(kModuleSel, kEventUnit, pcFunction,
              "Error when send add sel entry cmd to Local BMC, Sel Data(HEX):");
    for (uint8_t uc = 0; uc < SEL_RECORD_SIZE; ++uc)
        OXA_WARN(kModuleSel, kEventUnit, pcFunction, "0x%x ", static_cast<unsigned>(pucRecord[uc]));
}

} // namespace

bool IsLegal(const Head &tHead, uint32_t dwFlag) {
    if (dwFlag <= 1)
        return true;
    OXA_ERROR(kModuleSel, kEventUnit, tHead.acName, "assertFlag %u is illegal", dwFlag);
    return false;
}

uint32_t ReadCustomId() {
    uint32_t dwCustomId = kProfileWhenUnreadable;
    return MW_GetCustomid(&dwCustomId) == 0 ? dwCustomId : kProfileWhenUnreadable;
}

void CheckNumber(const Head &tHead, int32_t sdwRet, uint32_t &dwSensorNum) {
    if (sdwRet == 0)
        return;
    OXA_ERROR(kModuleSel, kEventUnit, tHead.acName, "get sensor number fail");
    dwSensorNum = 0;
}

uint32_t ComposeAndSend(const Head &tHead, const Step *ptStep, const uint32_t *pdwValue) {
    uint8_t aucRecord[SEL_RECORD_SIZE];
    Compose(ptStep, tHead.ucSteps, pdwValue, aucRecord);
    for (uint8_t ucTry = 0; ucTry < kTries; ++ucTry)
        if (ipmi_add_sel_entry(aucRecord) == OXA_OK)
            return OXA_OK;
    if (tHead.eFailText == FailText::kNamedFailed)
        OXA_ERROR(kModuleSel, kEventUnit, tHead.acName, "%s ipmi_add_sel_entry failed", tHead.acName);
    else if (tHead.eFailText == FailText::kFailed)
        OXA_ERROR(kModuleSel, kEventUnit, tHead.acName, "ipmi_add_sel_entry failed");
    else
        OXA_ERROR(kModuleSel, kEventUnit, tHead.acName, "ipmi_add_sel_entry fail");
    return OXA_FAILED;
}

} // namespace oxa::sel

using namespace oxa;
using namespace oxa::sel;

uint32_t ipmi_add_sel_entry(const uint8_t *SelRec) {
    if (SelRec == nullptr) {
        OXA_ERROR(kModuleAssert, kEventUnit, __func__, "assertion failed: SelRec != 0");
        return OXA_FAILED;
    }
    IpmiLocalSession tSession;
    if (OpenLocalSession(tSession, kLogArg) != 0) {
        OXA_ERROR(kModuleSel, kEventUnit, __func__, "Failed to create IPMI Session !!!");
        return OXA_FAILED;
    }
    uint8_t aucResponse[kResponseSize] = {};
    const bool bAdded = IPMICMD_AddSELEntry(&tSession, SelRec, aucResponse, kLogArg) == 0;
    if (!bAdded)
        DumpRecord(__func__, SelRec);
    LIBIPMI_CloseSession(&tSession);
    return bAdded ? OXA_OK : OXA_FAILED;
}
