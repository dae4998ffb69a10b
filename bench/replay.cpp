// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/replay.h"

#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <deque>
#include <map>
#include <set>
#include <stdexcept>
#include <string_view>

#include "oxa/platform.h"

namespace bench {
namespace {

using Call = void (*)(const Step &);

constexpr size_t kDraftSize = 128;

// What a pass keeps between two calls.
int32_t g_fd = -1;
const HalFanService *g_fans = nullptr;
const HalCpuService *g_cpus = nullptr;
const HalHddBackpanelService *g_disks = nullptr;
HalHddBackpanelList g_backplanes;
HalCpuVoltSdrInfo g_voltage;
HalDimmDevInfo g_dimm;
HalI2cClient g_client;
IpmiCduManageConfig g_cdu;
int32_t g_online;
uint8_t g_byte;
uint16_t g_word;
uint32_t g_dword;
char g_dimm_name[SENSOR_NAME_SIZE];
char g_reason[64];

// The record and the entry in the making, and the caller's arrays.
const uint8_t g_template[kDraftSize] = {};
uint8_t g_draft[kDraftSize];
uint8_t g_entry[DEV_TAB_ENTRY_SIZE];
constexpr size_t kRecordsMax = 2048;
uint8_t g_slots[kRecordsMax * SDR_SLOT_SIZE];
uint8_t g_entries[kRecordsMax * DEV_TAB_ENTRY_SIZE];
uint8_t g_image[EXT_SLOT_MAX * SDR_SLOT_SIZE];

uint8_t First(const Step &step) {
    return static_cast<uint8_t>(step.first);
}

#define STEP(name, ...)                                                                                      \
    {                                                                                                        \
#name, [](const Step &s) {                                                                           \
            static_cast<void>(s);                                                                            \
            __VA_ARGS__;                                                                                     \
        }       \
    }
#define GIVES(name, out) STEP(name, name(&out))
#define SAYS(name) STEP(name, name())
#define SAYS_OF(name) STEP(name, name(First(s)))
#define GIVES_OF(name, out) STEP(name, name(First(s), &out))

const std::map<std::string_view, Call> kBoardCalls = {
    GIVES(get_default_board_id, g_word),
    SAYS(GetSwitchBoardSupportFlag),
    SAYS_OF(GetCardOnlineStatus),
    SAYS_OF(GetCardBoardId),
    SAYS(GetLiquidCoolingFlag),
    SAYS(FruSdrInitPathChoice),
    STEP(oxa_CustomSlotConversion, g_byte = First(s); oxa_CustomSlotConversion(&g_byte)),
    GIVES_OF(HAL_CPUVRTempCoreVolts_GetI2cClientByInstance, g_client),
    GIVES(HAL_InputTemp_GetI2cClient, g_client),
    GIVES_OF(HAL_SWTICH_GetI2cClientByInstance, g_client),
    GIVES(HAL_GetCpuMaxCount, g_byte),
    GIVES(HAL_GetCpuSilkScreenIndexFixValue, g_byte),
    GIVES(HAL_GetCpuType, g_byte),
    GIVES_OF(HAL_GetCpuOnlineStatus, g_online),
    GIVES_OF(HAL_GetCpuVoltSdrInfoforSensor, g_voltage),
    STEP(HalCpuInst, g_cpus = HalCpuInst()),
    STEP(HalCpuService.GetCpuReduceFlag, g_cpus->GetCpuReduceFlag(&g_byte)),
    GIVES(HAL_GetDimmMaxCount, g_byte),
    GIVES_OF(HAL_GetDimmDevInfoByDimmNum, g_dimm),
    STEP(HAL_GetDimmSensorNameIndex, HAL_GetDimmSensorNameIndex(&g_dimm, g_dimm_name, sizeof(g_dimm_name))),
    GIVES(HAL_GetDimmPowerAccuracy, g_dword),
    GIVES(HAL_IsNeedSensorSimplification, g_byte),
    GIVES(HAL_GetPsuMaxCount, g_byte),
    GIVES(HAL_GetIsSupportPowerManage, g_byte),
    GIVES(HAL_GetPsuGroupCount, g_byte),
    GIVES(HAL_GetPsuCountPerGroup, g_byte),
    GIVES_OF(HAL_GetSensorNotSupportFlagBySensor, g_byte),
    GIVES_OF(HAL_GetSensorSupportFlagBySensor, g_byte),
    STEP(HalFanInst, g_fans = HalFanInst()),
    STEP(HalFanService.GetFanMaxCount, g_fans->GetFanMaxCount(&g_byte)),
    STEP(HalFanService.GetFanSilkByIndex, g_fans->GetFanSilkByIndex(First(s), &g_byte)),
    GIVES(HAL_GetFanPowerAccuracy, g_dword),
    STEP(HalHddBackpanelInst, g_disks = HalHddBackpanelInst()),
    STEP(HalHddBackpanelService.GetBackPanelList, g_disks->GetBackPanelList(&g_backplanes)),
    STEP(HalHddBackpanelService.CheckHddIsSupportNvme, g_disks->CheckHddIsSupportNvme(First(s), &g_byte)),
    SAYS_OF(Hal_CheckHddSlotIsDiffHddSilk),
    GIVES_OF(Hal_GetHddSilkByHddSlot, g_byte),
    GIVES(HAL_GetHddPowerAccuracy, g_dword),
    SAYS(Hal_GetStandPcieSlotCounts),
    GIVES_OF(Hal_GetPcieSlotByIndex, g_byte),
    SAYS(GetOcpNetCardMaxCount),
    SAYS(GetOcpPresentStatus),
    SAYS_OF(RestoreOcpSlot),
    SAYS(Hal_GetSwiTempSensorCnt),
    GIVES(MW_GetInnerProductId, g_dword),
    GIVES(MW_GetSWSensorVail, g_byte),
    SAYS_OF(MW_SetPWRModuleOnlineNum),
    GIVES(IPMI_GetCduManageConfig, g_cdu),
    GIVES_OF(epldio_read, g_byte),
    STEP(epldio_write, epldio_write(s.first, static_cast<uint8_t>(s.second))),
    SAYS(LoadPsuAlarmCfg),
};

const std::map<std::string_view, Call> kTextCalls = {
    STEP(memcpy_s, memcpy_s(s.to, s.first, s.from, s.second)),
    STEP(strnlen_s, strnlen_s(static_cast<const char *>(s.from), s.first)),
    STEP(oxa_strerror_s, oxa_strerror_s(g_reason, s.first, static_cast<int>(s.second))),
    STEP(_ssp_debug, _ssp_debug(s.first, "", s.second, "", "%u", s.second)),
    STEP(_ssp_info, _ssp_info(s.first, "", s.second, "", "%u", s.second)),
    STEP(_ssp_warn, _ssp_warn(s.first, "", s.second, "", "%u", s.second)),
    STEP(_ssp_error, _ssp_error(s.first, "", s.second, "", "%u", s.second)),
    STEP(sspFailedStat, sspFailedStat("", s.first)),
    STEP(IDBG_LINUXAPP_DbgOut, IDBG_LINUXAPP_DbgOut(s.first, "%s", "")),
};

const std::map<std::string_view, Call> kStoreCalls = {
    STEP(OAL_SemCreate, OAL_SemCreate(s.first)),
    STEP(OAL_SemLockByKey, OAL_SemLockByKey(s.first, s.second)),
    STEP(OAL_SemUnLockByKey, OAL_SemUnLockByKey(s.first, s.second)),
    STEP(sigwrap_open_mode, g_fd = sigwrap_open_mode("", static_cast<int32_t>(s.first), s.second)),
    STEP(lseek, lseek(g_fd, 0, SEEK_SET)),
    STEP(sigwrap_read, sigwrap_read(g_fd, g_image, s.first)),
    STEP(sigwrap_close, sigwrap_close(g_fd)),
};

// ---- printing -----------------------------------------------------------------------------------

// Formats and texts live as long as the program: the steps point to them.
const char *Keep(const std::string &text) {
    static std::set<std::string> kept;
    return kept.insert(text).first->c_str();
}

struct Printed { // "%s" and its argument
    const char *format;
    const char *argument;
};
const Printed *Keep(const Printed &printed) {
    static std::deque<Printed> kept;
    return &kept.emplace_back(printed);
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat-security"

void PrintNumber(const Step &s) {
    snprintf_s(static_cast<char *>(s.to), s.first, static_cast<const char *>(s.from), s.second);
}

void PrintText(const Step &s) {
    const Printed *printed = static_cast<const Printed *>(s.from);
    snprintf_s(static_cast<char *>(s.to), s.first, printed->format, printed->argument);
}

#pragma GCC diagnostic pop

// The argument is what stands in the printed text in the place of the only conversion.
Step PrintStep(const RecordedCall &call) {
    const size_t start = call.format.find('%');
    const bool text = start != std::string::npos && call.format.compare(start, 2, "%s") == 0;
    Step step = {PrintNumber, call.first, 0, g_draft + FULL_SDR_NAME, Keep(call.format)};
    if (text) {
        const size_t behind = call.format.size() - start - 2;
        const std::string argument = call.text.substr(start, call.text.size() - start - behind);
        step.call = PrintText;
        step.from = Keep(Printed{Keep(call.format), Keep(argument)});
    } else if (start != std::string::npos) {
        const size_t letter = call.format.find_first_not_of("0123456789", start + 1);
        const bool hex = letter != std::string::npos && (call.format[letter] | 0x20) == 'x';
        step.second = static_cast<uint32_t>(std::stoul(call.text.substr(start), nullptr, hex ? 16 : 10));
    }
    step.call(step);
    if (call.text != static_cast<const char *>(step.to))
        throw std::runtime_error("the replay does not know how to print \"" + call.text + "\" by \"" +
                                 call.format + '"');
    return step;
}

// ---- steps --------------------------------------------------------------------------------------

// A whole slot or entry goes to its place in the caller's arrays, anything shorter into the draft.
Step CopyStep(const RecordedCall &call, size_t record) {
    Step step = {kTextCalls.at("memcpy_s"), call.first, call.second, g_draft, g_template};
    if (record >= kRecordsMax || call.first > kDraftSize || call.second > call.first)
        throw std::runtime_error("the replay has no room for this copy");
    if (call.second == SDR_SLOT_SIZE) {
        step.to = g_slots + record * SDR_SLOT_SIZE;
        step.from = g_draft;
    } else if (call.second == DEV_TAB_ENTRY_SIZE) {
        step.to = g_entries + record * DEV_TAB_ENTRY_SIZE;
        step.from = g_entry;
    }
    return step;
}

Step PlainStep(const RecordedCall &call) {
    for (const auto *calls : {&kBoardCalls, &kTextCalls, &kStoreCalls})
        if (const auto found = calls->find(call.function); found != calls->end())
            return {found->second, call.first, call.second, nullptr, g_draft + FULL_SDR_NAME};
    throw std::runtime_error("the replay does not know how to call " + call.function);
}

void Idle(const Step &) {}

} // namespace

std::vector<Step> StepsOf(const std::vector<RecordedCall> &calls) {
    std::vector<Step> steps;
    size_t record = 0;
    for (const RecordedCall &call : calls) {
        if (call.function == "memcpy_s") {
            steps.push_back(CopyStep(call, record));
            record += call.second == DEV_TAB_ENTRY_SIZE;
        } else {
            steps.push_back(call.function == "snprintf_s" ? PrintStep(call) : PlainStep(call));
        }
    }
    return steps;
}

std::vector<Step> IdleSteps(size_t count) {
    return std::vector<Step>(count, Step{Idle, 0, 0, nullptr, nullptr});
}

} // namespace bench
