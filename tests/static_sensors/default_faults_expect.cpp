// SPDX-License-Identifier: GPL-3.0-or-later
#include "static_sensors/default_faults_expect.h"

#include <set>

#include "simulator/calls.h"

namespace tests {
namespace {

constexpr char kDriver[] = "OXA_AddDefaultStaticSensor";

// Running counts differ between passes that differ in a record.
Line Masked(Line line) {
    static const std::string kCount = "ucCnt = ";
    for (size_t at = 0; (at = line.text.find(kCount, at)) != std::string::npos;) {
        at += kCount.size();
        const size_t end = std::min(line.text.find_first_not_of("0123456789", at), line.text.size());
        if (end > at)
            line.text.replace(at, end - at, "#");
    }
    return line;
}

bool IsEmptyStoreRemark(const Line &line) {
    return line.module == 132 && line.text.starts_with("NVRAccess.c: Error in reading the file");
}

std::string NumberAfter(const std::string &text, const std::string &key) {
    const size_t at = text.find(key);
    const size_t from = at + key.size();
    return at == std::string::npos ? ""
                                   : text.substr(from, text.find_first_not_of("0123456789", from) - from);
}

bool IsDomain(const std::string &name) {
    return name.starts_with("CPU") && name.ends_with("_N2");
}

const char *const kSensors[][2] = {
    {"101", "CPU_VR_TEMP"}, {"102", "CPU_VOLTS"},    {"103", "INPUT_TEMP"}, {"104", "OUTPUT_TEMP"},
    {"105", "ENV_HUMI"},    {"106", "PDB_TEMP"},     {"107", "VCC12V"},     {"108", "POWER_FAULT"},
    {"121", "PCH_TEMP"},    {"122", "POWER_BUTTON"}, {"123", "UID_BUTTON"}, {"124", "INTRUSION"},
    {"125", "ME"},
};

// The generator of a record that needs a bus client.
std::string ClientGenerator(const std::string &name) {
    if (name.starts_with("CPU_VR_TEMP"))
        return "Default_GenCPUVRTempSDR";
    if (name.starts_with("CPU_VOLTS"))
        return "Default_GenCPUCOREVoltageSDR";
    if (name.starts_with("SW_VOLT"))
        return "Default_GenSwitchBoardVoltsSDR";
    if (name.starts_with("SW_CURRENT"))
        return "Default_GenSwitchBoardCurrentSDR";
    if (name == "INPUT_TEMP")
        return "Default_GenINPUTTEMPSDR";
    return "Default_Gen" + name.substr(0, 4) + name.substr(5, 2) + "N2SDR"; // CPU0_D1_N2
}

class Judge {
public:
    Judge(const CleanPass &clean, const FailableCall &call) : clean_(clean), call_(call) {}

    Expectation Decide() {
        static const std::map<std::string, void (Judge::*)()> kRules = {
            {"HAL_GetCpuMaxCount", &Judge::CpuCount},
            {"HAL_GetCpuSilkScreenIndexFixValue", &Judge::CpuSilk},
            {"HAL_GetDimmMaxCount", &Judge::DimmCount},
            {"HAL_GetCpuType", &Judge::CpuType},
            {"HalFanInst", &Judge::FanService},
            {"HalFanService.GetFanMaxCount", &Judge::FanCount},
            {"HalFanService.GetFanSilkByIndex", &Judge::FanSilk},
            {"HAL_IsNeedSensorSimplification", &Judge::Simplification},
            {"HAL_GetPsuMaxCount", &Judge::PsuCount},
            {"HAL_GetIsSupportPowerManage", &Judge::Nothing},
            {"get_default_board_id", &Judge::BoardId},
            {"HalCpuInst", &Judge::ReduceFlag},
            {"HalCpuService.GetCpuReduceFlag", &Judge::ReduceFlag},
            {"HAL_GetCpuOnlineStatus", &Judge::OnlineStatus},
            {"HAL_GetSensorNotSupportFlagBySensor", &Judge::SupportFlag},
            {"HAL_GetSensorSupportFlagBySensor", &Judge::Nothing},
            {"HAL_CPUVRTempCoreVolts_GetI2cClientByInstance", &Judge::Client},
            {"HAL_InputTemp_GetI2cClient", &Judge::Client},
            {"HAL_SWTICH_GetI2cClientByInstance", &Judge::Client},
            {"HAL_GetCpuVoltSdrInfoforSensor", &Judge::VoltageDescription},
            {"HAL_GetDimmDevInfoByDimmNum", &Judge::DimmName},
            {"HAL_GetDimmSensorNameIndex", &Judge::DimmName},
            {"HAL_GetDimmPowerAccuracy", &Judge::MemoryAccuracy},
            {"HAL_GetHddPowerAccuracy", &Judge::DiskAccuracy},
            {"HAL_GetFanPowerAccuracy", &Judge::FanAccuracy},
            {"HAL_GetPsuGroupCount", &Judge::PsuGroups},
            {"HAL_GetPsuCountPerGroup", &Judge::PsuGroups},
            {"FruSdrInitPathChoice", &Judge::NoDisks},
            {"HalHddBackpanelInst", &Judge::DiskService},
            {"HalHddBackpanelService.GetBackPanelList", &Judge::NoDisks},
            {"HalHddBackpanelService.CheckHddIsSupportNvme", &Judge::NvmeQuestion},
            {"Hal_GetPcieSlotByIndex", &Judge::PcieSlot},
            {"IPMI_GetCduManageConfig", &Judge::CduConfig},
            {"LoadPsuAlarmCfg", &Judge::AlarmConfig},
            {"MW_GetInnerProductId", &Judge::ProductId},
            {"epldio_read", &Judge::RegisterRead},
            {"epldio_write", &Judge::Nothing},
            {"memcpy_s", &Judge::Bounded},
            {"memset_s", &Judge::Bounded},
            {"snprintf_s", &Judge::Bounded},
            {"OAL_SemCreate", &Judge::SemaphoreCreate},
            {"OAL_SemLockByKey", &Judge::SemaphoreLock},
            {"OAL_SemUnLockByKey", &Judge::SemaphoreUnlock},
            {"sigwrap_open_mode", &Judge::StoreOpen},
            {"lseek", &Judge::StoreSeek},
            {"sigwrap_read", &Judge::Nothing},
            {"oxa_strerror_s", &Judge::Nothing},
            {"sigwrap_close", &Judge::Nothing},
        };
        const auto rule = kRules.find(call_.name);
        result_.known = rule != kRules.end();
        if (result_.known)
            (this->*rule->second)();
        return std::move(result_);
    }

private:
    const std::string &NameOf(size_t record) const {
        return names_[record];
    }
    bool First() const {
        return call_.occurrence == 1;
    }
    void More(char level, uint32_t module, const std::string &text) {
        result_.more.push_back(Masked({level, module, text}));
    }
    void Fewer(char level, uint32_t module, const std::string &text) {
        result_.fewer.push_back(Masked({level, module, text}));
    }
    void Warn(const std::string &query) {
        More('W', 255, query + " = [FFFFFFFF]");
    }
    void Drop(size_t record) {
        result_.missing.push_back(record);
        if (IsDomain(NameOf(record)))
            Fewer('I', 42, std::string(kDriver) + " for CPU Voltage:  ucCnt = #!");
    }
    void Drop() {
        Drop(call_.record);
    }
    template <class Test> void DropIf(Test test) {
        for (size_t i = 0; i < names_.size(); ++i)
            if (test(NameOf(i)))
                Drop(i);
    }
    // The next line of the clean pass that holds `part` goes, and comes again with `after` in place of what
    // follows.
    void ChangeLine(const std::string &part, const std::string &after) {
        for (size_t at = call_.event; at < clean_.trace.size(); ++at) {
            const sim::Event &event = clean_.trace[at];
            const size_t found = event.text.find(part);
            if (event.kind != sim::Kind::kLog || found == std::string::npos)
                continue;
            Fewer(Letter(event.level), event.number, event.text);
            More(Letter(event.level), event.number, event.text.substr(0, found) + after);
            return;
        }
    }

    // -- facts ----------------------------------------------------------------------------------------------
    void Nothing() {}
    void CpuCount() {
        result_.like = [](sim::Board &board) { board.cpus.count = 0; };
        Warn("HAL_GetCpuMaxCount(&ucCpuMaxCount)");
    }
    void CpuSilk() { // the boards here start at 0, what a failed read counts as
        Warn("HAL_GetCpuSilkScreenIndexFixValue(&ucCpuSilkStartIndex)");
    }
    void DimmCount() {
        result_.like = [](sim::Board &board) { board.dimms.count = 0; };
        Warn("HAL_GetDimmMaxCount(&ucDimmMaxCount)");
    }
    void CpuType() {
        Warn("HAL_GetCpuType(&ucCpuType)");
        if (First()) {
            DropIf(IsDomain);
            if (!result_.missing.empty())
                DomainLines();
        } else if (clean_.board.cpus.type == 1) {
            DropIf([](const std::string &name) { return name == "PCH_TEMP"; });
            More('I', 42, "The board has no pch");
        }
    }
    void DomainLines() { // what the domain records say and ask besides
        for (size_t at = 0; at < clean_.trace.size(); ++at)
            if (clean_.trace[at].kind == sim::Kind::kLog &&
                clean_.trace[at].text.starts_with("Default_GenCPU0D0N2SDR:"))
                Fewer('I', 42, clean_.trace[at].text);
    }
    void FanService() {
        More('E', 255, "assertion failed: halFan != 0");
        if (First()) {
            result_.like = [](sim::Board &board) { board.fans.count = 0; };
            return;
        }
        Record record = clean_.outcome.records[call_.record];
        record.sdr[4] = 27 + 13; // "FAN_STATUS_00"
        record.sdr[9] = record.entry[22] = 0x60;
        record.sdr[31] = 0xC0 + 13;
        record.entry[3] = 0;
        std::memcpy(&record.sdr[32], "FAN_STATUS_00\xFF\xFF\xFF", 16);
        result_.changed[call_.record] = record;
    }
    void FanCount() {
        result_.like = [](sim::Board &board) { board.fans.count = 0; };
        More('E', 42, "Get fan max count failed, result:4294967295!");
    }
    void FanSilk() {
        Drop();
        More('W', 255,
             "Default_GetFanSilkByIndexByHal FanIndex[" + std::to_string(call_.occurrence - 1) +
                 "] failed,result:4294967295!");
    }
    void CduConfig() { // not logged
        result_.like = [](sim::Board &board) { board.cdu_enable = 0; };
    }
    void Simplification() {
        result_.like = [](sim::Board &board) { board.sensor_simplification = false; };
        Warn("HAL_IsNeedSensorSimplification(&SensorSimpleFlag)");
    }
    void PsuCount() {
        if (First()) {
            Fatal("get pem max count failed\n");
            return;
        }
        Drop();
        More('I', 42, "pem ucInstance large max pem num!");
    }
    void BoardId() {
        if (First())
            Fatal("get Board Id failed\n");
        else
            ChangeLine("sdwRet = 0 wBoardId = ", "sdwRet = -1 wBoardId = 0!");
    }
    void Fatal(const std::string &text) {
        result_.written = false;
        More('E', 42, text);
    }

    // -- processors -----------------------------------------------------------------------------------------
    void ReduceFlag() { // counts as 0: the CPU is wanted, and on these boards it was
        Warn("HalCpuInst()->GetCpuReduceFlag(&message)");
    }
    void OnlineStatus() {
        const std::string cpu = NumberAfter(call_.args, "index=");
        Warn("HAL_GetCpuOnlineStatus(ucCpuIndex, &sdwOnlineStatus)");
        More('I', 42, "OXA_CheckifAddCpuSensorByIndex CPU " + cpu + " is offline");
        if (IsDomain(NameOf(std::min(call_.record, names_.size() - 1)))) {
            DropIf([&](const std::string &name) { return IsDomain(name) && name[3] == cpu[0]; });
            if (cpu == "0")
                DomainLines();
            return;
        }
        const auto number = static_cast<uint8_t>(std::stoul(cpu));
        for (size_t i = 0; i < names_.size(); ++i) {
            const Record &record = clean_.outcome.records[i];
            const bool processor = record.entry[0] == 0x49 || record.entry[0] == 0x4A ||
                                   record.entry[0] == 0x4B || record.entry[0] == 0x4D;
            if (processor && record.entry[3] == number)
                Drop(i);
        }
        const std::string board = CpuLineOfBoard();
        for (const char *label :
             {"Default_GenCPUProchotSDR", "Default_GenCPUTempSDR", "Default_GenCPUStatusSDR"})
            Fewer('I', 42, label + board);
    }
    std::string CpuLineOfBoard() const {
        char text[64];
        std::snprintf(text, sizeof text, ": sdwRet = 0 wBoardId = %x!", clean_.board.board_id);
        return text;
    }
    void SupportFlag() { // rubbish is not zero: the record stays
        for (const auto &[number, name] : kSensors)
            if (NumberAfter(call_.args, "sensor=") == number)
                Warn("HAL_GetSensorNotSupportFlagBySensor(SENSOR_" + std::string(name) + ", &ucSupportFlag)");
    }
    void Client() {
        Drop();
        std::string call = call_.name;
        call.erase(0, call.find("HAL_") + 4);
        More('W', 255, ClientGenerator(NameOf(call_.record)) + " " + call + " failed!");
    }
    void VoltageDescription() { // read before the first domain tells the board id
        Drop();
        if (First())
            DomainLines();
        More('E', 42, "Get Cpu Voltage Sensor SDR Info fail!");
    }

    // -- power and memory -----------------------------------------------------------------------------------
    void DimmName() {
        Drop();
        More('E', 42, "Get mem sensor name index fail\n");
    }
    void MemoryAccuracy() {
        Drop();
        More('C', 130, "get mem power accuracy failed\n");
    }
    void DiskAccuracy() {
        Drop();
        More('W', 255, "get hdd power accuracy failed or dwHDDPowerAccuracy = 0.\n");
    }
    void FanAccuracy() {
        Drop();
        More('W', 255, "get fan power accuracy failed or Accuracy is 0.");
    }
    void PsuGroups() {
        DropIf([](const std::string &name) { return name.starts_with("PSU_REDUNDANT"); });
    }
    void AlarmConfig() {
        More('W', 255, "LoadPsuAlarmCfg failed!");
    }
    void ProductId() {
        ChangeLine("sdwRet = 0 productId = ", "sdwRet = -1 productId = 0!");
    }
    void RegisterRead() {
        More('W', 255,
             std::string("epldio_read PMIC_POWER_FAULT_REG_") + (First() ? "5350" : "6900G5") + " failed.\n");
    }

    // -- disks and slots ------------------------------------------------------------------------------------
    void NoDisks() {
        DropIf([](const std::string &name) {
            return name.starts_with("HDD_STATUS") || name.starts_with("NVME_TEMP") ||
                   name.starts_with("DISKG");
        });
        for (const Line &line : clean_.lines)
            if (line.text.starts_with(std::string(kDriver) + " for Disk Sensor:"))
                result_.fewer.push_back(line);
    }
    void DiskService() {
        if (First())
            NoDisks();
        else
            NvmeQuestion();
    }
    void NvmeQuestion() {
        size_t at = call_.event;
        while (clean_.trace[at].function != "HalHddBackpanelService.CheckHddIsSupportNvme")
            ++at;
        const std::string slot = NumberAfter(clean_.trace[at].args, "slot=");
        More('E', 42, "Quorral_CheckHddIsSupportNvmeByHal failed, slot:" + slot + ", result:4294967295!");
        for (size_t i = 0; i < names_.size(); ++i)
            if (NameOf(i).starts_with("NVME_TEMP") && clean_.outcome.records[i].entry[3] == std::stoul(slot))
                Drop(i);
    }
    void PcieSlot() {
        Drop();
        More('W', 255,
             std::string(kDriver) +
                 " for Pcie Status Sensor failed! ucIndex = " + std::to_string(call_.occurrence) + "!");
    }

    // -- bounded functions and the store --------------------------------------------------------------------
    // The two copies into the caller's slot and entry come right after the look into the store; any other
    // call belongs to the record that is looked up next.
    void Bounded() {
        size_t copies = 0;
        size_t at = call_.event;
        while (at > 0 && clean_.trace[at - 1].function == "memcpy_s") {
            --at;
            ++copies;
        }
        const bool copies_out = call_.name == "memcpy_s" && copies < 2 && at > 0 &&
                                clean_.trace[at - 1].function == "OAL_SemUnLockByKey";
        Drop(copies_out ? call_.record - 1 : call_.record);
    }
    void SemaphoreCreate() {
        More('E', 42, "sem create failed, line=#\n");
        More('C', 132, "Get Sem Lock Failed!\n");
    }
    void SemaphoreLock() {
        More('E', 42, "sem lock failed, line=#\n");
        More('C', 132, "Get Sem Lock Failed!\n");
    }
    void SemaphoreUnlock() {
        More('E', 42, "sem lock failed, line=#\n");
    }
    void StoreOpen() {
        More('C', 132, "open /var/tmp/extSDR.dat failed!");
    }
    void StoreSeek() {
        More('C', 132, "lseek function getting failed\n");
    }

    const CleanPass &clean_;
    const FailableCall &call_;
    const std::vector<std::string> names_ = clean_.outcome.Names();
    Expectation result_;
};

} // namespace

std::vector<Line> ComparableLines() {
    std::vector<Line> lines;
    for (const Line &line : Lines(true))
        if (!IsEmptyStoreRemark(line))
            lines.push_back(Masked(line));
    std::sort(lines.begin(), lines.end());
    return lines;
}

CleanPass RunCleanPass(const sim::Board &board) {
    CleanPass clean;
    clean.board = board;
    sim::Start(board);
    std::filesystem::remove(sim::RealPath(kStorePath));
    sim::SetTraceBounded(true);
    clean.outcome = RunPass();
    sim::SetTraceBounded(false);
    clean.trace = sim::Trace();
    clean.lines = ComparableLines();
    std::map<std::string, size_t> occurrences;
    size_t looked_up = 0;
    for (size_t at = 0; at < clean.trace.size(); ++at) {
        const sim::Event &event = clean.trace[at];
        if (event.kind != sim::Kind::kCall)
            continue;
        const sim::Nature nature = sim::kCalls[sim::FindCall(event.function)].nature;
        if (nature == sim::Nature::kFails || nature == sim::Nature::kGetter)
            clean.calls.push_back({event.function, event.args, ++occurrences[event.function], at, looked_up});
        looked_up += event.function == "OAL_SemCreate" ? 1 : 0;
    }
    return clean;
}

Expectation Expect(const CleanPass &clean, const FailableCall &call) {
    return Judge(clean, call).Decide();
}

} // namespace tests
