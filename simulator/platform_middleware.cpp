// SPDX-License-Identifier: GPL-3.0-or-later
//
// Middleware: identity of the machine, GPU inventory, threshold table, sensor directory.
#include <algorithm>
#include <cstring>

#include "simulator/platform_call.h"

namespace {

using namespace sim;

template <class T> Bytes BytesOf(const T *object) {
    return {reinterpret_cast<const uint8_t *>(object), sizeof(T)};
}

// The directory's key: "04 0D 6F 03 00".
std::string DirectoryKey(const MwSensorKey *key) {
    return key != nullptr ? Hex(reinterpret_cast<const uint8_t *>(key), sizeof(*key)) : "";
}

int32_t GiveNumber(Call &call, const std::map<uint32_t, uint32_t> &numbers, uint32_t key, uint32_t *out) {
    const auto found = numbers.find(key);
    return GiveIf(call, found != numbers.end(), out, found != numbers.end() ? found->second : 0);
}

void FillThresholdEntry(SensorThreshEntry &entry, const ThresholdEntry &from) {
    std::memcpy(entry.acName, from.name.data(), std::min<size_t>(from.name.size(), 16));
    entry.ucUNR = from.unr;
    entry.ucUC = from.uc;
    entry.ucUNC = from.unc;
    entry.ucLNR = from.lnr;
    entry.ucLC = from.lc;
    entry.ucLNC = from.lnc;
    entry.wMask = from.mask;
}

SensorThreshTable LiveTable(const State &state) {
    if (state.thresholds)
        return *state.thresholds;
    SensorThreshTable table{};
    table.dwCustomId = state.board.custom_id;
    table.wCount = static_cast<uint16_t>(state.board.thresholds.size());
    for (size_t at = 0; at < std::min<size_t>(state.board.thresholds.size(), SENSOR_MAX_COUNT); ++at)
        FillThresholdEntry(table.atEntry[at], state.board.thresholds[at]);
    return table;
}

} // namespace

namespace sim {

SensorThreshTable ThresholdTable() {
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    return LiveTable(state);
}

} // namespace sim

extern "C" {

int32_t MW_GetCustomid(uint32_t *pdwCustomId) {
    Call call(Id("MW_GetCustomid"));
    return Give(call, pdwCustomId, TheBoard().custom_id);
}

int32_t MW_GetInnerProductId(uint32_t *pdwInnerProductId) {
    Call call(Id("MW_GetInnerProductId"));
    return Give(call, pdwInnerProductId, TheBoard().inner_product_id);
}

int32_t MW_GetGPUAssetInfo(GpuAssetInfo *ptInfo) {
    Call call(Id("MW_GetGPUAssetInfo"));
    const std::vector<Gpu> &gpus = TheBoard().gpus;
    GpuAssetInfo info{};
    info.dwCount = static_cast<uint32_t>(gpus.size());
    for (size_t at = 0; at < std::min<size_t>(gpus.size(), MW_GPU_ASSET_MAX); ++at) {
        info.atGpu[at].ucSlot = gpus[at].slot;
        info.atGpu[at].dwPowerW = gpus[at].power_w;
        info.atGpu[at].wVendorId = gpus[at].vendor;
    }
    return Give(call, ptInfo, info);
}

int32_t MW_GetSensorThreshInfo(SensorThreshTable *ptTable) {
    Call call(Id("MW_GetSensorThreshInfo"));
    return Give(call, ptTable, LiveTable(call.state()));
}

int32_t MW_SetSensorThreshInfo(const SensorThreshTable *ptTable) {
    Call call(Id("MW_SetSensorThreshInfo"), "customid", ptTable != nullptr ? ptTable->dwCustomId : 0u,
              "count", ptTable != nullptr ? ptTable->wCount : 0u);
    if (call.FailsOrNull({ptTable}))
        return call.Return<int32_t>(-1);
    call.state().thresholds = *ptTable;
    return call.Return<int32_t>(0);
}

int32_t MW_GetSensorNumber(const MwSensorKey *ptKey, uint32_t *pdwSensorNum) {
    Call call(Id("MW_GetSensorNumber"), "key", BytesOf(ptKey));
    const std::map<std::string, uint32_t> &numbers = TheBoard().sensor_numbers.by_key;
    const auto found = numbers.find(DirectoryKey(ptKey));
    const bool present = !call.FailsOrNull({ptKey}) && found != numbers.end();
    return GiveIf(call, present, pdwSensorNum, present ? found->second : 0);
}

int32_t MW_GetCPUSensorNumber(uint32_t dwCpuNum, uint32_t *pdwSensorNum) {
    Call call(Id("MW_GetCPUSensorNumber"), "cpu", dwCpuNum);
    return GiveNumber(call, TheBoard().sensor_numbers.cpu, dwCpuNum, pdwSensorNum);
}

int32_t MW_GetMemSensorNumber(uint32_t dwDimmNum, uint32_t *pdwSensorNum) {
    Call call(Id("MW_GetMemSensorNumber"), "dimm", dwDimmNum);
    return GiveNumber(call, TheBoard().sensor_numbers.dimm, dwDimmNum, pdwSensorNum);
}

int32_t MW_GetPemSensorNumber(uint32_t dwLocation, uint32_t *pdwSensorNum) {
    Call call(Id("MW_GetPemSensorNumber"), "location", dwLocation);
    return GiveNumber(call, TheBoard().sensor_numbers.power_module, dwLocation, pdwSensorNum);
}

int32_t MW_GetPowerFaultSensorNum(uint32_t *pdwSensorNum) {
    Call call(Id("MW_GetPowerFaultSensorNum"));
    const std::optional<uint32_t> number = TheBoard().sensor_numbers.power_fault;
    return GiveIf(call, number.has_value(), pdwSensorNum, number.value_or(0));
}

int32_t MW_GetSpecificSensorInfo(const MwSensorKey *ptKey, MwSpecificSensorInfo *ptInfo) {
    Call call(Id("MW_GetSpecificSensorInfo"), "key", BytesOf(ptKey));
    const std::map<std::string, uint32_t> &numbers = TheBoard().sensor_numbers.by_key;
    const auto found = numbers.find(DirectoryKey(ptKey));
    const bool present = !call.FailsOrNull({ptKey}) && found != numbers.end();
    MwSpecificSensorInfo info{};
    if (present) {
        info.ucSensorNum = static_cast<uint8_t>(found->second);
        info.ucSensorType = ptKey->ucSensorType;
        info.ucEventType = ptKey->ucEventType;
    }
    return GiveIf(call, present, ptInfo, info);
}

int32_t MW_GetInletTempInfo(uint8_t *pucInletTemp) {
    Call call(Id("MW_GetInletTempInfo"));
    return Give(call, pucInletTemp, TheBoard().inlet_temperature);
}

int32_t MW_SetMemPredictiveFailureState(uint32_t dwDimmNum, uint32_t dwState) {
    Call call(Id("MW_SetMemPredictiveFailureState"), "dimm", dwDimmNum, "state", dwState);
    return Plain(call);
}

int32_t MW_SetPWRModuleOnlineNum(uint8_t ucNum) {
    Call call(Id("MW_SetPWRModuleOnlineNum"), "num", ucNum);
    return Plain(call);
}

int32_t MW_GetSWSensorVail(uint8_t *pucValid) {
    Call call(Id("MW_GetSWSensorVail"));
    return Give(call, pucValid, TheBoard().switch_board.sensors_valid);
}

} // extern "C"
