// SPDX-License-Identifier: GPL-3.0-or-later
//
// Hardware abstraction and power management: the board's facts as the firmware tells them.
#include <algorithm>
#include <cstring>

#include "simulator/platform_call.h"

namespace {

using namespace sim;

HalI2cClient Client(const BusClient &client) {
    return {client.bus, client.address};
}

// A text within `size` bytes, cut when it does not fit; without `nul` the cut text fills the buffer.
int32_t GiveText(Call &call, bool present, char *out, uint32_t size, const std::string &text,
                 bool nul = true) {
    if (call.FailsOrNull({out}) || !present || size == 0) {
        if (out != nullptr)
            call.SpoilBuffer(out, size);
        return call.Return<int32_t>(-1);
    }
    const size_t length = std::min<size_t>(text.size(), nul ? size - 1 : size);
    std::memcpy(out, text.data(), length);
    if (length < size)
        out[length] = '\0';
    call.Override(out);
    call.SetText(std::string(out, strnlen(out, size)));
    return call.Return<int32_t>(0);
}

const PcieSlot *FindSlot(uint8_t slot) {
    for (const PcieSlot &candidate : TheBoard().pcie.slots)
        if (candidate.slot == slot && candidate.present)
            return &candidate;
    return nullptr;
}

HalDimmDevInfo DimmInfo(const Board &board, uint8_t dimm) {
    const uint32_t cpus = std::max<uint32_t>(board.cpus.count, 1);
    const uint32_t per_cpu = std::max<uint32_t>((board.dimms.count + cpus - 1) / cpus, 1);
    const uint32_t within = dimm % per_cpu;
    return {dimm, static_cast<uint8_t>(dimm / per_cpu), static_cast<uint8_t>(within / 2),
            static_cast<uint8_t>(within % 2)};
}

} // namespace

extern "C" {

// ---- board and cards ----------------------------------------------------------------------------

int32_t get_default_board_id(uint16_t *pwBoardId) {
    Call call(Id("get_default_board_id"));
    return Give(call, pwBoardId, TheBoard().board_id);
}

uint8_t GetSwitchBoardSupportFlag(void) {
    Call call(Id("GetSwitchBoardSupportFlag"));
    return call.Value<uint8_t>(TheBoard().switch_board.supported);
}

uint8_t GetCardOnlineStatus(uint8_t ucCard) {
    Call call(Id("GetCardOnlineStatus"), "card", ucCard);
    return call.Value<uint8_t>(Lookup(TheBoard().switch_board.cards, ucCard, {}).online);
}

uint16_t GetCardBoardId(uint8_t ucCard) {
    Call call(Id("GetCardBoardId"), "card", ucCard);
    return call.Value<uint16_t>(Lookup(TheBoard().switch_board.cards, ucCard, {}).board_id);
}

uint8_t GetLiquidCoolingFlag(void) {
    Call call(Id("GetLiquidCoolingFlag"));
    return call.Value<uint8_t>(TheBoard().liquid_cooling_mode);
}

int32_t FruSdrInitPathChoice(void) {
    Call call(Id("FruSdrInitPathChoice"));
    return call.Return<int32_t>(call.Fails() ? -1 : (TheBoard().disks.enabled ? 1 : 0));
}

void oxa_CustomSlotConversion(uint8_t *pucSlot) {
    Call call(Id("oxa_CustomSlotConversion"), "slot", pucSlot != nullptr ? *pucSlot : -1);
    if (!call.FailsOrNull({pucSlot}))
        *pucSlot = call.Value<uint8_t>(Lookup(TheBoard().disks.conversion, *pucSlot, *pucSlot));
}

// ---- bus clients --------------------------------------------------------------------------------

int32_t HAL_CPUVRTempCoreVolts_GetI2cClientByInstance(uint8_t ucCpuNum, HalI2cClient *ptClient) {
    Call call(Id("HAL_CPUVRTempCoreVolts_GetI2cClientByInstance"), "cpu", ucCpuNum);
    return Give(call, ptClient, Client(Lookup(TheBoard().cpus.vr_clients, ucCpuNum, {ucCpuNum, 0x60})));
}

int32_t HAL_InputTemp_GetI2cClient(HalI2cClient *ptClient) {
    Call call(Id("HAL_InputTemp_GetI2cClient"));
    return Give(call, ptClient, Client(TheBoard().inlet_client));
}

int32_t HAL_SWTICH_GetI2cClientByInstance(uint8_t ucInstance, HalI2cClient *ptClient) {
    Call call(Id("HAL_SWTICH_GetI2cClientByInstance"), "instance", ucInstance);
    return Give(call, ptClient,
                Client(Lookup(TheBoard().switch_board.clients, ucInstance, {ucInstance, 0x40})));
}

// ---- processors ---------------------------------------------------------------------------------

int32_t HAL_GetCpuMaxCount(uint8_t *pucCpuMaxCount) {
    Call call(Id("HAL_GetCpuMaxCount"));
    return Give(call, pucCpuMaxCount, TheBoard().cpus.count);
}

int32_t HAL_GetCpuSilkScreenIndexFixValue(uint8_t *pucCpuSilkStartIndex) {
    Call call(Id("HAL_GetCpuSilkScreenIndexFixValue"));
    return Give(call, pucCpuSilkStartIndex, TheBoard().cpus.silk_start);
}

int32_t HAL_GetCpuType(uint8_t *pucCpuType) {
    Call call(Id("HAL_GetCpuType"));
    return Give(call, pucCpuType, TheBoard().cpus.type);
}

int32_t HAL_GetCpuOnlineStatus(uint8_t ucCpuIndex, int32_t *psdwOnlineStatus) {
    Call call(Id("HAL_GetCpuOnlineStatus"), "index", ucCpuIndex);
    const std::vector<bool> &online = TheBoard().cpus.online;
    return Give(call, psdwOnlineStatus, ucCpuIndex >= online.size() || online[ucCpuIndex] ? 1 : 0);
}

int32_t HAL_GetCpuVoltSdrInfoforSensor(uint8_t ucVoltIndex, HalCpuVoltSdrInfo *ptInfo) {
    Call call(Id("HAL_GetCpuVoltSdrInfoforSensor"), "index", ucVoltIndex);
    const CpuVoltage v = Lookup(TheBoard().cpus.voltages, ucVoltIndex, {});
    return Give(call, ptInfo, {v.m, v.b, v.exponents, v.mask, v.unr, v.uc, v.unc, v.lnr, v.lc, v.lnc});
}

static int32_t GetCpuReduceFlag(uint8_t *pucFlag) {
    Call call(Id("HalCpuService.GetCpuReduceFlag"));
    return Give(call, pucFlag, TheBoard().cpus.reduce_flag);
}

const HalCpuService *HalCpuInst(void) {
    static constexpr HalCpuService kService{GetCpuReduceFlag};
    Call call(Id("HalCpuInst"));
    return GiveService(call, TheBoard().cpus.service, kService);
}

// ---- memory -------------------------------------------------------------------------------------

int32_t HAL_GetDimmMaxCount(uint8_t *pucDimmMaxCount) {
    Call call(Id("HAL_GetDimmMaxCount"));
    return Give(call, pucDimmMaxCount, TheBoard().dimms.count);
}

int32_t HAL_GetDimmDevInfoByDimmNum(uint8_t ucDimmNum, HalDimmDevInfo *ptInfo) {
    Call call(Id("HAL_GetDimmDevInfoByDimmNum"), "dimm", ucDimmNum);
    return GiveIf(call, ucDimmNum < TheBoard().dimms.count, ptInfo, DimmInfo(TheBoard(), ucDimmNum));
}

int32_t HAL_GetDimmSensorNameIndex(const HalDimmDevInfo *ptInfo, char *pcName, uint32_t dwSize) {
    Call call(Id("HAL_GetDimmSensorNameIndex"), "dimm", ptInfo != nullptr ? ptInfo->ucDimmNum : -1, "size",
              dwSize);
    const uint32_t dimm = !call.FailsOrNull({ptInfo, pcName}) ? ptInfo->ucDimmNum : 0;
    const bool present = ptInfo != nullptr && dimm < TheBoard().dimms.count;
    return GiveText(call, present, pcName, dwSize, DimmName(TheBoard().dimms, dimm));
}

int32_t HAL_GetDimmPowerAccuracy(uint32_t *pdwAccuracy) {
    Call call(Id("HAL_GetDimmPowerAccuracy"));
    return Give(call, pdwAccuracy, TheBoard().dimms.power_accuracy);
}

int32_t HAL_IsNeedSensorSimplification(uint8_t *pucSensorSimpleFlag) {
    Call call(Id("HAL_IsNeedSensorSimplification"));
    return Give(call, pucSensorSimpleFlag, TheBoard().sensor_simplification);
}

// ---- power supplies -----------------------------------------------------------------------------

int32_t HAL_GetPsuMaxCount(uint8_t *pucPsuCnt) {
    Call call(Id("HAL_GetPsuMaxCount"));
    return Give(call, pucPsuCnt, TheBoard().psus.count);
}

int32_t HAL_GetIsSupportPowerManage(uint8_t *pucFlag) {
    Call call(Id("HAL_GetIsSupportPowerManage"));
    return Give(call, pucFlag, TheBoard().psus.power_manage);
}

int32_t HAL_GetPsuGroupCount(uint8_t *pucGroupCnt) {
    Call call(Id("HAL_GetPsuGroupCount"));
    return Give(call, pucGroupCnt, TheBoard().psus.group_count);
}

int32_t HAL_GetPsuCountPerGroup(uint8_t *pucPsuPerGroup) {
    Call call(Id("HAL_GetPsuCountPerGroup"));
    return Give(call, pucPsuPerGroup, TheBoard().psus.count_per_group);
}

// ---- sensor support flags -----------------------------------------------------------------------

int32_t HAL_GetSensorNotSupportFlagBySensor(uint32_t dwSensorId, uint8_t *pucSupportFlag) {
    Call call(Id("HAL_GetSensorNotSupportFlagBySensor"), "sensor", dwSensorId);
    const Support &support = TheBoard().support;
    return Give(call, pucSupportFlag, Lookup(support.sensors, dwSensorId, static_cast<uint8_t>(support.all)));
}

int32_t HAL_GetSensorSupportFlagBySensor(uint32_t dwSensorKind, uint8_t *pucSupportFlag) {
    Call call(Id("HAL_GetSensorSupportFlagBySensor"), "kind", dwSensorKind);
    return Give(call, pucSupportFlag, Lookup(TheBoard().support.kinds, dwSensorKind, uint8_t{1}));
}

// ---- fans ---------------------------------------------------------------------------------------

static int32_t GetFanMaxCount(uint8_t *pucFanCnt) {
    Call call(Id("HalFanService.GetFanMaxCount"));
    return Give(call, pucFanCnt, TheBoard().fans.count);
}

static int32_t GetFanSilkByIndex(uint8_t ucFanIndex, uint8_t *pucSilk) {
    Call call(Id("HalFanService.GetFanSilkByIndex"), "index", ucFanIndex);
    const std::vector<uint8_t> &silk = TheBoard().fans.silk;
    return Give(call, pucSilk,
                ucFanIndex < silk.size() ? silk[ucFanIndex] : static_cast<uint8_t>(ucFanIndex + 1));
}

const HalFanService *HalFanInst(void) {
    static constexpr HalFanService kService{GetFanMaxCount, GetFanSilkByIndex};
    Call call(Id("HalFanInst"));
    return GiveService(call, TheBoard().fans.service, kService);
}

int32_t HAL_GetFanPowerAccuracy(uint32_t *pdwAccuracy) {
    Call call(Id("HAL_GetFanPowerAccuracy"));
    return Give(call, pdwAccuracy, TheBoard().fans.power_accuracy);
}

// ---- disks --------------------------------------------------------------------------------------

static int32_t GetBackPanelList(HalHddBackpanelList *ptList) {
    Call call(Id("HalHddBackpanelService.GetBackPanelList"));
    const Disks &disks = TheBoard().disks;
    HalHddBackpanelList list{};
    list.count = disks.reported_count.value_or(static_cast<uint32_t>(disks.backplanes.size()));
    for (size_t at = 0; at < std::min<size_t>(disks.backplanes.size(), HAL_HDD_BACKPANEL_MAX); ++at) {
        const Backplane &backplane = disks.backplanes[at];
        list.atRec[at].ucStartSlot = backplane.start_slot;
        list.atRec[at].ucDiskCnt = backplane.disk_count;
        const size_t length = std::min<size_t>(backplane.location.size(), HAL_HDD_LOCATION_LEN);
        std::memcpy(list.atRec[at].acLocation, backplane.location.data(), length);
    }
    if (disks.written_bytes && ptList != nullptr) {
        HalHddBackpanelList part = *ptList;
        std::memcpy(&part, &list, std::min<size_t>(*disks.written_bytes, sizeof(list)));
        list = part;
    }
    return Give(call, ptList, list);
}

static int32_t CheckHddIsSupportNvme(uint8_t ucSlot, uint8_t *pucIsNvme) {
    Call call(Id("HalHddBackpanelService.CheckHddIsSupportNvme"), "slot", ucSlot);
    const std::vector<uint8_t> &slots = TheBoard().disks.nvme_slots;
    return Give(call, pucIsNvme, std::find(slots.begin(), slots.end(), ucSlot) != slots.end());
}

const HalHddBackpanelService *HalHddBackpanelInst(void) {
    static constexpr HalHddBackpanelService kService{GetBackPanelList, CheckHddIsSupportNvme};
    Call call(Id("HalHddBackpanelInst"));
    return GiveService(call, TheBoard().disks.service, kService);
}

uint8_t Hal_CheckHddSlotIsDiffHddSilk(uint8_t ucSlot) {
    Call call(Id("Hal_CheckHddSlotIsDiffHddSilk"), "slot", ucSlot);
    return call.Value<uint8_t>(Lookup(TheBoard().disks.silk, ucSlot, ucSlot) != ucSlot);
}

int32_t Hal_GetHddSilkByHddSlot(uint8_t ucSlot, uint8_t *pucSilk) {
    Call call(Id("Hal_GetHddSilkByHddSlot"), "slot", ucSlot);
    return Give(call, pucSilk, Lookup(TheBoard().disks.silk, ucSlot, ucSlot));
}

int32_t HAL_GetHddPowerAccuracy(uint32_t *pdwAccuracy) {
    Call call(Id("HAL_GetHddPowerAccuracy"));
    return Give(call, pdwAccuracy, TheBoard().disks.power_accuracy);
}

// ---- PCIe and OCP slots, switch chips -----------------------------------------------------------

uint8_t Hal_GetStandPcieSlotCounts(void) {
    Call call(Id("Hal_GetStandPcieSlotCounts"));
    const Pcie &pcie = TheBoard().pcie;
    return call.Value<uint8_t>(pcie.count.value_or(static_cast<uint8_t>(pcie.slots.size())));
}

int32_t Hal_GetPcieSlotByIndex(uint8_t ucIndex, uint8_t *pucSlot) {
    Call call(Id("Hal_GetPcieSlotByIndex"), "index", ucIndex);
    const std::vector<PcieSlot> &slots = TheBoard().pcie.slots;
    const bool present = ucIndex >= 1 && ucIndex <= slots.size() && slots[ucIndex - 1u].present;
    return GiveIf(call, present, pucSlot, present ? slots[ucIndex - 1u].slot : uint8_t{0});
}

int32_t Hal_GetPcieLocationByPcieSlot(uint8_t ucSlot, uint8_t *pucLocation) {
    Call call(Id("Hal_GetPcieLocationByPcieSlot"), "slot", ucSlot);
    const PcieSlot *slot = FindSlot(ucSlot);
    return GiveIf(call, slot != nullptr, pucLocation, slot != nullptr ? slot->location : uint8_t{0});
}

int32_t Hal_GetPcieSilkByPcieSlot(uint8_t ucSlot, char *pcSilk, uint32_t dwSize) {
    Call call(Id("Hal_GetPcieSilkByPcieSlot"), "slot", ucSlot, "size", dwSize);
    const PcieSlot *slot = FindSlot(ucSlot);
    return GiveText(call, slot != nullptr, pcSilk, dwSize, slot != nullptr ? slot->silk : "",
                    slot == nullptr || slot->silk_nul);
}

int32_t GetBlueFieldS5PcieSlotNum(uint8_t *pucSlot) {
    Call call(Id("GetBlueFieldS5PcieSlotNum"));
    const std::optional<uint8_t> slot = TheBoard().pcie.s5_slot;
    return GiveIf(call, slot.has_value(), pucSlot, slot.value_or(0));
}

uint8_t GetOcpNetCardMaxCount(void) {
    Call call(Id("GetOcpNetCardMaxCount"));
    return call.Value<uint8_t>(TheBoard().ocp.count);
}

uint32_t GetOcpPresentStatus(void) {
    Call call(Id("GetOcpPresentStatus"));
    return call.Value<uint32_t>(TheBoard().ocp.present);
}

uint8_t RestoreOcpSlot(uint8_t ucIndex) {
    Call call(Id("RestoreOcpSlot"), "index", ucIndex);
    return call.Value<uint8_t>(Lookup(TheBoard().ocp.restored, ucIndex, ucIndex));
}

uint8_t Hal_GetSwiTempSensorCnt(void) {
    Call call(Id("Hal_GetSwiTempSensorCnt"));
    return call.Value<uint8_t>(TheBoard().switch_board.chip_temp_count);
}

// ---- power management ---------------------------------------------------------------------------

int32_t epldio_read(uint32_t dwReg, uint8_t *pucValue) {
    Call call(Id("epldio_read"), "reg", dwReg);
    return Give(call, pucValue, Lookup(TheBoard().power_registers, dwReg, uint8_t{0}));
}

int32_t epldio_write(uint32_t dwReg, uint8_t ucValue) {
    Call call(Id("epldio_write"), "reg", dwReg, "value", ucValue);
    if (!call.Fails())
        TheBoard().power_registers[dwReg] = ucValue;
    return Plain(call);
}

int32_t LoadPsuAlarmCfg(void) {
    Call call(Id("LoadPsuAlarmCfg"));
    const bool loaded = TheBoard().psus.alarm_config || (call.rule() != nullptr && call.rule()->succeed);
    return call.Return<int32_t>(call.Fails() || !loaded ? -1 : 0);
}

} // extern "C"
