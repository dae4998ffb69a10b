// SPDX-License-Identifier: Apache-2.0
//
// The CPU presence test that every static pass asks before it adds a CPU's sensors.
#include "library/record/log.h"
#include "oxa/store.h"

namespace oxa {
namespace {

constexpr int32_t kCpuOnline = 1;

int32_t GetCpuReduceFlag(uint8_t *pucFlag) {
    const HalCpuService *ptCpu = HalCpuInst();
    if (ptCpu == nullptr || ptCpu->GetCpuReduceFlag == nullptr)
        return -1;
    return ptCpu->GetCpuReduceFlag(pucFlag);
}

} // namespace
} // namespace oxa

using namespace oxa;

// A board whose reduce flag is 0 shows the sensors of every socket, populated or not.
uint8_t OXA_CheckifAddCpuSensorByIndex(uint8_t ucCpuIndex) {
    uint8_t ucReduceFlag = 0;
    int32_t sdwRet = GetCpuReduceFlag(&ucReduceFlag);
    if (sdwRet != 0) {
        OXA_WARN(kModuleQuery, kFileUnit, __func__, "HalCpuInst()->GetCpuReduceFlag(&message) = [%X]",
                 static_cast<uint32_t>(sdwRet));
        return 1;
    }
    if (ucReduceFlag == 0)
        return 1;
    int32_t sdwOnlineStatus = 0;
    sdwRet = HAL_GetCpuOnlineStatus(ucCpuIndex, &sdwOnlineStatus);
    if (sdwRet != 0) {
        OXA_WARN(kModuleQuery, kFileUnit, __func__,
                 "HAL_GetCpuOnlineStatus(ucCpuIndex, &sdwOnlineStatus) = [%X]",
                 static_cast<uint32_t>(sdwRet));
        sdwOnlineStatus = 0;
    }
    if (sdwOnlineStatus == kCpuOnline)
        return 1;
    OXA_INFO(kModuleSdr, kFileUnit, __func__, "%s CPU %d is offline", __func__, ucCpuIndex);
    return 0;
}
