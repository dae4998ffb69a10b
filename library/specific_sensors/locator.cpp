// SPDX-License-Identifier: Apache-2.0
//
// FRU locators of power supplies and cards: what lets other programs find their inventory.
#include <cstring>

#include "library/record/log.h"
#include "library/specific_sensors/fru_ids.h"
#include "library/specific_sensors/generator.h"
#include "library/specific_sensors/templates.h"
#include "library/store/record_file.h"
#include "oxa/store.h"

using namespace oxa;

namespace {

constexpr uint8_t kPsuFirstFruId = 16; // of a power supply 0, which there is not
constexpr uint8_t kSubCardSlot = 15;
constexpr char kSubCardName[] = "SUB CARD";
constexpr uint8_t kSubCardLength = 27; // handed on with three bytes more than the record has

struct LocatorDraft {
    uint8_t auc[SDR_SLOT_SIZE];

    LocatorDraft(uint8_t ucEntityId, uint8_t ucInstance) {
        memset(auc, kNameFill, sizeof(auc));
        memcpy(auc, kFruLocatorTemplate.auc, sizeof(kFruLocatorTemplate.auc));
        auc[FRU_SDR_ENTITY_ID] = ucEntityId;
        auc[FRU_SDR_ENTITY_INSTANCE] = ucInstance;
    }
    void SetFruId(uint8_t ucFruId) {
        auc[FRU_SDR_FRU_ID] = ucFruId;
        auc[FRU_SDR_CHANNEL] = ucFruId; // kept so: readers take the id from either byte
    }
    // Gives the length of record and name.
    uint8_t SetName(const char *pcName) {
        const size_t nLen = strnlen_s(pcName, kNameMax);
        const uint8_t ucLen = nLen < kNameMax ? static_cast<uint8_t>(nLen) : kNameMax;
        memcpy(auc + FRU_SDR_NAME, pcName, ucLen);
        auc[SDR_RECORD_LENGTH] = static_cast<uint8_t>(kFruLocatorBaseLength + ucLen);
        auc[FRU_SDR_ID_TYPE_LEN] = static_cast<uint8_t>(kIdTypeAscii | ucLen);
        return static_cast<uint8_t>(FRU_SDR_NAME + ucLen);
    }
    uint8_t Publish(uint8_t *pucSDR, uint8_t ucLen) const {
        return memcpy_s(pucSDR, SDR_SLOT_SIZE, auc, ucLen) == 0 ? ucLen
                                                                : static_cast<uint8_t>(GEN_SDR_FAILED);
    }
};

uint8_t WithOffset(uint8_t ucFruId) {
    return static_cast<uint8_t>(ucFruId + GetSdrFruIdOffset());
}

// A purchase card's and an SL200 card's way: they differ in where the id comes from and in the name.
struct CardModel {
    char acGenerator[36];
    bool bSL200;
};
constexpr CardModel kPurchaseCard = {"GenFruOfPurchaseCardSpecificSDR", false};
constexpr CardModel kSL200Card = {"GenFruOfSL200CardSpecificSDR", true};

// On machines with a FRU id offset an SL200 card has an id by its slot, without the offset.
uint8_t TakeFruId(const CardModel &tModel, uint8_t ucSlotId) {
    if (tModel.bSL200 && GetSdrFruIdOffset() != 0)
        return TakeSL200FruId(tModel.acGenerator, ucSlotId);
    const uint8_t ucFruId = GetNoUsedFruIdForPurchaseCard();
    return tModel.bSL200 ? ucFruId : WithOffset(ucFruId);
}

// False when the card gets no name, and so no record.  Only a purchase card that the catalogue does not
// know gives its id back.
bool PrintName(const CardModel &tModel, uint16_t wDevType, uint8_t ucFruId,
               char (&acName)[SENSOR_NAME_SIZE]) {
    acName[0] = '\0';
    const char *pcName = GetPurchaseCardName(wDevType);
    if (tModel.bSL200)
        return pcName == nullptr || snprintf_s(acName, sizeof(acName), "%s %u", pcName, ucFruId) >= 0;
    if (pcName != nullptr)
        return snprintf_s(acName, sizeof(acName), "%s", pcName) >= 0;
    OXA_INFO(kModuleSdr, kSensorDataUnit, tModel.acGenerator, "Get Device Type Name Fail!");
    SetFruValidState(ucFruId);
    return false;
}

uint8_t GenFruOfCard(const CardModel &tModel, const SpecificSensorParam *ptParam, uint8_t *pucSDR) {
    OXA_INFO(kModuleSdr, kSensorDataUnit, tModel.acGenerator, "%s is exec!!!\n", tModel.acGenerator);
    if (ReportNull(tModel.acGenerator, ptParam, pucSDR))
        return GEN_SDR_FAILED;
    const uint16_t wDevType = static_cast<uint16_t>(ptParam->dwSensorDevType);
    OXA_INFO(kModuleSdr, kSensorDataUnit, tModel.acGenerator, "ptParam->dwDevType = 0x%x", wDevType);
    LocatorDraft tDraft(static_cast<uint8_t>(wDevType), ptParam->SlotId);
    FillSdrOEMValue(wDevType, &tDraft.auc[FRU_SDR_OEM]);
    if (ptParam->SlotId == 0) {
        OXA_INFO(kModuleSdr, kSensorDataUnit, tModel.acGenerator, "ucSlotId = %u !", ptParam->SlotId);
        return GEN_SDR_FAILED;
    }
    const uint8_t ucFruId = TakeFruId(tModel, ptParam->SlotId);
    if (ucFruId == kNoFruId) {
        OXA_INFO(kModuleSdr, kSensorDataUnit, tModel.acGenerator, "PurchaseCard Get Valid FruId Fail!");
        return GEN_SDR_FAILED;
    }
    tDraft.SetFruId(ucFruId);
    char acName[SENSOR_NAME_SIZE];
    if (!PrintName(tModel, wDevType, ucFruId, acName))
        return GEN_SDR_FAILED;
    SavePurchaseCardFruId(wDevType, acName, ptParam->SlotId, ucFruId);
    return tDraft.Publish(pucSDR, tDraft.SetName(acName));
}

} // namespace

uint8_t GenFruOfPsuSpecificSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t) {
    if (ReportNull(__func__, ptParam, pucSDR))
        return GEN_SDR_FAILED;
    const uint8_t ucIndex = ptParam->ucDeviceType;
    OXA_INFO(kModuleSdr, kSensorDataUnit, __func__, "%s: index=%d\n", __func__, ucIndex);
    if (ucIndex == 0) {
        OXA_WARN(kModuleSdr, kSensorDataUnit, __func__,
                 "Add SDR: GenFruOfPsuSpecificSDR: index %d out of range(1~99)\n", ucIndex);
        return GEN_SDR_FAILED;
    }
    LocatorDraft tDraft(kDeviceClassPsu, ucIndex);
    tDraft.SetFruId(WithOffset(static_cast<uint8_t>(ucIndex + kPsuFirstFruId)));
    char acName[SENSOR_NAME_SIZE];
    if (snprintf_s(acName, sizeof(acName), TraitsOf(ReadProfile()).acPsuLocator, ucIndex) < 0)
        return GEN_SDR_FAILED;
    const uint8_t ucLen = tDraft.SetName(acName);
    if (SDR_GetSepcificFruSDRRecID(kDeviceClassPsu, ucIndex) != 0) // the repository has it already
        return GEN_SDR_FAILED;
    return tDraft.Publish(pucSDR, ucLen);
}

uint8_t GenFruOfPurchaseCardSpecificSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t) {
    return GenFruOfCard(kPurchaseCard, ptParam, pucSDR);
}

uint8_t GenFruOfSL200CardSpecificSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t) {
    return GenFruOfCard(kSL200Card, ptParam, pucSDR);
}

uint8_t GenFruOfSubCardSpecificSDR(SpecificSensorParam *ptParam, uint8_t *pucSDR, uint32_t) {
    if (ReportNull(__func__, ptParam, pucSDR))
        return GEN_SDR_FAILED;
    const uint8_t ucSlotId = ptParam->SlotId;
    OXA_INFO(kModuleSdr, kSensorDataUnit, __func__, "ucSlotId = %u !", ucSlotId);
    if (ucSlotId != kSubCardSlot) {
        OXA_WARN(kModuleSdr, kSensorDataUnit, __func__,
                 "Add SDR: GenFruOfSubCardSpecificSDR: index %d out of range(1~99)\n", ucSlotId);
        return GEN_SDR_FAILED;
    }
    if (!TakeSubCardFruId(__func__)) {
        OXA_ERROR(kModuleSdr, kSensorDataUnit, __func__, "SubCard Get Valid FruId Fail, ucSlotId:%u!",
                  ucSlotId);
        return GEN_SDR_FAILED;
    }
    LocatorDraft tDraft(kDeviceClassCard, ucSlotId);
    tDraft.SetFruId(kSubCardFruId);
    tDraft.SetName(kSubCardName);
    return tDraft.Publish(pucSDR, kSubCardLength);
}
