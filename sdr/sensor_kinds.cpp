// SPDX-License-Identifier: Apache-2.0
#include "sdr/sensor_kinds.h"

#include "oxa/platform.h"
#include "sdr/leakage_key.h"
#include "sdr/sdr_templates.h" // its checks are part of every build

namespace oxa {

// Compile-time faults.
void sensor_kind_without_definition();
void more_heads_than_a_kind_can_name();
void flag_of_a_device_or_a_sensor_that_is_not_stored();

namespace {

struct ListedKinds {
    SensorKind at[kKindCount];
};

// IPMI entity ids.
enum Entity : uint8_t {
    kEntityProcessor = 0x03,
    kEntityDisk = 0x04,
    kEntityManagementSoftware = 0x06,
    kEntitySystemBoard = 0x07,
    kEntityMemoryModule = 0x08,
    kEntityPowerSupply = 0x0A,
    kEntityAddInCard = 0x0B,
    kEntityFrontPanel = 0x0C,
    kEntitySwitchBoard = 0x10,
    kEntityPowerUnit = 0x13,
    kEntityPowerModule = 0x14,
    kEntityPowerBoard = 0x15,
    kEntityChassis = 0x17,
    kEntityFan = 0x1D,
    kEntityCoolingUnit = 0x1E,
    kEntityMemoryDevice = 0x20,
    kEntitySystemManagement = 0x21,
    kEntityBios = 0x22,
    kEntityOperatingSystem = 0x23,
    kEntityController = 0x2E,
    kEntitySystemBus = 0x31,
    kEntityAirInlet = 0x37,
    kEntityOcp = 0x97,
    kEntityGpuBoard = 0xE0, // this and the next are the maker's own
    kEntityCdu = 0xE4
};

constexpr uint8_t kDiskMark = 0x25;
constexpr uint8_t k54VMark = 0x28;
constexpr uint8_t kRelativeBase = kInstanceBase | kInstanceRelative;
static_assert(kRelativeBase == 0xE0);

constexpr uint8_t kOtherUnits = 0x0B; // sensor type: other units
// base and modifier units
constexpr uint8_t kKilopascal = 14;
constexpr uint8_t kLitre = 37;
constexpr uint8_t kMinute = 23;

// ---- shapes that several sensors share --------------------------------------------------------------------

constexpr SensorKind Discrete(uint8_t ucEntityId, uint8_t ucType, uint8_t ucEvent, uint16_t wMask,
                              const Behaviour &tDoes) {
    return Compact({.ucEntityId = ucEntityId,
                    .ucSensorType = ucType,
                    .ucEventType = ucEvent,
                    .wAssert = wMask,
                    .wDeassert = wMask,
                    .wReading = wMask},
                   tDoes);
}

// A discrete sensor of the system: one item of the event device, scanned.
constexpr SensorKind System(uint8_t ucItem, uint8_t ucEntityId, uint8_t ucType, uint8_t ucEvent,
                            uint16_t wMask, Gate eGate = Gate::kNone, uint8_t ucGateId = 0) {
    return Discrete(
        ucEntityId, ucType, ucEvent, wMask,
        {.tDevice = {0x55, ucItem, kScanned}, .eGate = eGate, .ucGateId = ucGateId, .eKnown = Known::kInfo});
}

// ---- the sensors ------------------------------------------------------------------------------------------

constexpr void Air(ListedKinds &t) {
    t.at[kInletTemp] = Full({.ucEntityId = kEntityAirInlet,
                             .tReading = kCelsius,
                             .tLimits = {.ucUNR = 52, .ucUC = 50, .ucUNC = 45}},
                            {.tDevice = {0x00, 0, kScanned},
                             .eGate = Gate::kBoardHas,
                             .ucGateId = SENSOR_INPUT_TEMP,
                             .eClient = Client::kInlet,
                             .eBoardLine = BoardLine::kInputTemp,
                             .eKnown = Known::kInfo});
    t.at[kOutletTemp] =
        Full({.ucEntityId = kEntitySystemBoard, .tReading = kCelsius}, {.tDevice = {0x40},
                                                                        .eGate = Gate::kBoardHas,
                                                                        .ucGateId = SENSOR_OUTPUT_TEMP,
                                                                        .eKnown = Known::kInfo});
    t.at[kEnvHumidity] =
        Full({.ucEntityId = kEntityAirInlet, .tReading = {.ucSensorType = 0x0B, .ucUnits1 = kUnitsPercent}},
             {.tDevice = {0x41, 0, kScanned},
              .eGate = Gate::kBoardHas,
              .ucGateId = SENSOR_ENV_HUMI,
              .eKnown = Known::kInfo});
}

constexpr void BoardTemps(ListedKinds &t) {
    t.at[kPchTemp] =
        Full({.ucEntityId = kEntitySystemBoard, .tReading = kCelsius},
             {.tDevice = {0x43}, .eGate = Gate::kPch, .ucGateId = SENSOR_PCH_TEMP, .eKnown = Known::kInfo});
    t.at[kPdbTemp] =
        Full({.ucEntityId = kEntityPowerBoard, .tReading = kCelsius}, {.tDevice = {0x42, 1, kScanned},
                                                                       .eGate = Gate::kBoardHas,
                                                                       .ucGateId = SENSOR_PDB_TEMP,
                                                                       .eKnown = Known::kInfo});
    t.at[kMiddlePdbTemp] =
        Full({.ucEntityId = kEntityPowerBoard, .ucEntityInstance = kInstanceBase + 1, .tReading = kCelsius},
             {.tDevice = {0x42, 2, kScanned},
              .eGate = Gate::kBoardHas,
              .ucGateId = SENSOR_PDB_TEMP,
              .eKnown = Known::kInfo});
}

constexpr void Rails(ListedKinds &t) {
    constexpr FullFields tRail = {.ucEntityId = kEntitySystemBoard,
                                  .tReading = Volts(100, -3),
                                  .tLimits = {.ucUC = 144, .ucUNC = 132, .ucLC = 96, .ucLNC = 108}};
    t.at[kRail12V] = Full(
        tRail,
        {.tDevice = {0x44, 1}, .eGate = Gate::kBoardHas, .ucGateId = SENSOR_VCC12V, .eKnown = Known::kFru});
    t.at[kRail12VStandby] = Full(tRail, {.tDevice = {0x44, 2, kScanned}, .eKnown = Known::kInfo});
}

constexpr void Powers(ListedKinds &t) {
    t.at[kBoardPower] =
        Full({.ucEntityId = kEntitySystemBoard, .tReading = Watts(17)},
             {.tDevice = {0x9E, 0, kScanned}, .eGate = Gate::kBoardPower, .eKnown = Known::kInfo});
    t.at[kCpuPower] = Full({.ucEntityId = kEntityProcessor, .tReading = Watts(6)},
                           {.tDevice = {0xD9, 1}, .eBoardLine = BoardLine::kPowerWatts});
    // The M of the other three is the accuracy that the platform tells.
    t.at[kMemPower] = Full({.ucEntityId = kEntityMemoryDevice, .tReading = Watts(0)},
                           {.tDevice = {0xD9, 2}, .eGate = Gate::kDimmAccuracy});
    t.at[kDiskPower] = Full({.ucEntityId = kEntityDisk, .tReading = Watts(0)},
                            {.tDevice = {0xD9, 4}, .eGate = Gate::kDiskAccuracy, .eKnown = Known::kInfo});
    t.at[kFanPower] = Full({.ucEntityId = kEntityFan, .tReading = Watts(0)},
                           {.tDevice = {0xD9, 5}, .eGate = Gate::kFanAccuracy, .eKnown = Known::kInfo});
}

constexpr void CpuTemps(ListedKinds &t) {
    constexpr FullFields tTemp = {.ucEntityId = kEntityProcessor, .tReading = kCelsius};
    t.at[kCpuTemp] = Full(tTemp, {.tDevice = {0x49, 1},
                                  .ePlace = Place::kCpu,
                                  .eBoardLine = BoardLine::kOwn,
                                  .eKnown = Known::kWarnNewline,
                                  .eNaming = Naming::kSmallBoard,
                                  .ucFlags = kSilkReread});
    t.at[kCpuTjmax] = Full(tTemp, {.tDevice = {0x49, 2}, .eGate = Gate::kCpuIntel});
    t.at[kCpuTcontrol] = Full(tTemp, {.tDevice = {0x49, 3}, .eGate = Gate::kCpuIntel});
    t.at[kCpuDtsTemp] = Full(tTemp, {.tDevice = {0x49, 4}, .ePlace = Place::kCpu, .ucFlags = kSilkReread});
    t.at[kCpuVrTemp] = Full(tTemp, {.tDevice = {0x4A},
                                    .eGate = Gate::kBoardHas,
                                    .ucGateId = SENSOR_CPU_VR_TEMP,
                                    .ePlace = Place::kCpu,
                                    .eClient = Client::kCpuRegulator,
                                    .eKnown = Known::kWarnNewline,
                                    .ucFlags = kSilkReread | kRefusalWarns});
}

constexpr void CpuVolts(ListedKinds &t) {
    t.at[kCpuCoreVolts] = Full({.ucEntityId = kEntityProcessor,
                                .tReading = Volts(100, -4),
                                .tLimits = {0xF0, 0xEB, 0xE6, 0x78, 0x7D, 0x82}},
                               {.tDevice = {0x4B},
                                .eGate = Gate::kBoardHas,
                                .ucGateId = SENSOR_CPU_VOLTS,
                                .ePlace = Place::kCpuIndexOnly,
                                .eClient = Client::kCpuRegulator,
                                .ucFlags = kSilkReread});
    // Conversion and limits of the voltage domains are described by the platform, by domain number.
    constexpr Kind aeDomain[] = {kCpu0Domain0Volts, kCpu0Domain1Volts, kCpu1Domain0Volts, kCpu1Domain1Volts};
    for (uint8_t ucDomain = 1; ucDomain <= 4; ++ucDomain)
        t.at[aeDomain[ucDomain - 1]] =
            Full({.ucEntityId = kEntityProcessor, .tReading = Volts(0, 0)}, {.tDevice = {0x4C, ucDomain},
                                                                             .eGate = Gate::kCpuVoltage,
                                                                             .ucGateId = ucDomain,
                                                                             .ePlace = Place::kCpuClientOnly,
                                                                             .eClient = Client::kCpuRegulator,
                                                                             .ucFlags = kSilkReread});
    Behaviour &tFirst = t.at[kCpu0Domain0Volts].tDoes;
    tFirst.eBoardLine = BoardLine::kOwn;
    tFirst.eNaming = Naming::kSmallBoard;
    tFirst.ucFlags = kSilkReread | kRelativeOnSmallBoard;
}

constexpr void CpuDiscrete(ListedKinds &t) {
    constexpr Behaviour tStatus = {.tDevice = {0x4D, 1},
                                   .ePlace = Place::kCpu,
                                   .eBoardLine = BoardLine::kOwn,
                                   .eKnown = Known::kInfoNewline,
                                   .eNaming = Naming::kSmallBoard,
                                   .ucFlags = kSilkReread};
    Behaviour tProchot = tStatus;
    tProchot.tDevice.ucItem = 2;
    tProchot.eNaming = Naming::kNumber;
    // thermal trip, internal error, configuration, presence, throttling, machine check
    t.at[kCpuStatus] = Discrete(kEntityProcessor, 0x07, 0x6F, 0x0CA3, tStatus);
    t.at[kCpuProchot] = Discrete(kEntityProcessor, 0x07, 0x6F, 0x0400, tProchot); // automatically throttled
}

constexpr void Memory(ListedKinds &t) {
    t.at[kDimmTemp] = Full(
        {.ucEntityId = kEntityMemoryDevice, .tReading = kCelsius},
        {.tDevice = {0x4E, 1}, .eGate = Gate::kDimmName, .ePlace = Place::kAdd, .eNaming = Naming::kText});
    t.at[kDimmStatus] = Compact({.ucEntityId = kEntityMemoryDevice,
                                 .ucInit = 0x7F,
                                 .ucSensorType = 0x0C,
                                 .wAssert = 0x0042,
                                 .wDeassert = 0x0042,
                                 .wReading = 0x0042},
                                {.tDevice = {0xA9},
                                 .eGate = Gate::kDimmName,
                                 .ePlace = Place::kAdd,
                                 .eKnown = Known::kCpuStatus,
                                 .eNaming = Naming::kText});
    t.at[kDimmGroupTemp] = Full({.ucEntityId = kEntityMemoryModule, .tReading = kCelsius},
                                {.tDevice = {0x4E, 2}, .ePlace = Place::kAdd});
}

constexpr void PsuReadings(ListedKinds &t) {
    Behaviour tDoes = {.tDevice = {0x4F, 1, kScanned},
                       .eGate = Gate::kKindWanted,
                       .ucGateId = SENSOR_KIND_INPUT_VOLTS,
                       .ePlace = Place::kIndexOnly,
                       .eKnown = Known::kWarnNewline,
                       .ucFlags = kRefusalWarns};
    t.at[kPsuInputVolts] = Full({.ucEntityId = kEntityPowerSupply, .tReading = Volts(200, -2)}, tDoes);
    tDoes.tDevice.ucItem = 2;
    tDoes.ucGateId = SENSOR_KIND_OUTPUT_VOLTS;
    t.at[kPsuOutputVolts] = Full({.ucEntityId = kEntityPowerSupply, .tReading = Volts(1, 0)}, tDoes);
    t.at[kPsuInputPower] =
        Full({.ucEntityId = kEntityPowerSupply, .tReading = Watts(14)},
             {.tDevice = {0x50, 1, kScanned}, .ePlace = Place::kAddOrKeep, .eKnown = Known::kInfo});
    t.at[kPsuOutputPower] =
        Full({.ucEntityId = kEntityPowerSupply, .tReading = Watts(13)},
             {.tDevice = {0x50, 2, kScanned}, .ePlace = Place::kAddOrKeep, .eKnown = Known::kInfo});
    t.at[kPsuTemp] =
        Full({.ucEntityId = kEntityPowerSupply, .tReading = kCelsius},
             {.tDevice = {0x52, 0, kScanned}, .ePlace = Place::kAddOrKeep, .eKnown = Known::kInfo});
}

constexpr void PsuOwn(ListedKinds &t) {
    t.at[kPsuPower] =
        Full({.ucEntityId = kEntityPowerSupply, .tReading = Watts(14)},
             {.tDevice = {0x50, 3, kScanned}, .ePlace = Place::kAddOrKeep, .eKnown = Known::kInfo});
    t.at[kPsuInputCurrent] =
        Full({.ucEntityId = kEntityPowerSupply, .tReading = Amperes(1, -1)},
             {.tDevice = {0x51, 1, kScanned}, .ePlace = Place::kAddOrKeep, .eKnown = Known::kInfo});
    t.at[kPsuOutputCurrent] =
        Full({.ucEntityId = kEntityPowerSupply, .tReading = Amperes(1)},
             {.tDevice = {0x51, 2, kScanned}, .ePlace = Place::kAddOrKeep, .eKnown = Known::kInfo});
    t.at[kPsuSupply] = Discrete(kEntityPowerSupply, 0x08, 0x6F, 0x004F,
                                {.tDevice = {0x53, 4, kScanned},
                                 .eGate = Gate::kPsuInRange,
                                 .ePlace = Place::kAdd,
                                 .eKnown = Known::kInfo});
    t.at[kPsuFanStatus] =
        Compact({.ucEntityId = kEntityPowerSupply,
                 .ucSensorType = 0x04,
                 .ucEventType = 0x03,
                 .wAssert = 0x0002,
                 .wDeassert = 0x0002,
                 .wReading = 0x0003},
                {.tDevice = {0x53, 3, kScanned}, .ePlace = Place::kAdd, .eKnown = Known::kInfo});
}

constexpr void PsuDiscrete(ListedKinds &t) {
    t.at[kPsuStatus] = Discrete(kEntityPowerSupply, 0x08, 0x6F, 0x004F,
                                {.tDevice = {0x53, 1, kScanned},
                                 .eGate = Gate::kPsuStatus,
                                 .ePlace = Place::kAdd,
                                 .eKnown = Known::kInfo});
    t.at[kPsuRedundancy] = Discrete(kEntityPowerUnit, 0x08, 0x0B, 0x0003,
                                    {.tDevice = {0x53, 2, kScanned},
                                     .ePlace = Place::kAdd,
                                     .eKnown = Known::kInfo,
                                     .eNaming = Naming::kSecondGroup});
}

constexpr void Fans(ListedKinds &t) {
    t.at[kFanStatus] = Compact({.ucEntityId = kEntityFan,
                                .ucSensorType = 0x04,
                                .ucEventType = 0x08, // device present
                                .wAssert = 0x0001,
                                .wDeassert = 0x0001,
                                .wReading = 0x0003},
                               {.tDevice = {0x54, 1, kScanned}, .ePlace = Place::kAdd});
    t.at[kFanStatusHex] = t.at[kFanStatus];
    t.at[kFanStatusHex].tDoes.eNaming = Naming::kLongNumber;
    t.at[kFanRedundancy] =
        Discrete(kEntityCoolingUnit, 0x04, 0x0B, 0x0003,
                 {.tDevice = {0x54, 2, kScanned}, .eGate = Gate::kLiquidNot2, .eKnown = Known::kInfo});
    t.at[kLeakage] =
        Compact({.ucEntityId = kLeakageEntityId,
                 .ucSensorType = kLeakageSensorType,
                 .ucEventType = kLeakageEventType,
                 .wAssert = 0x0002,
                 .wDeassert = 0x0002,
                 .wReading = 0x0003},
                {.tDevice = {0x5E, 0, kScanned}, .eGate = Gate::kLiquidIs1, .eKnown = Known::kInfo});
}

constexpr void Disks(ListedKinds &t) {
    t.at[kDiskStatus] =
        Compact({.ucEntityId = kEntityDisk,
                 .ucEntityInstance = 0,
                 .ucInit = 0x63,
                 .ucCaps = 0xC0,
                 .ucSensorType = 0x0D,
                 .wAssert = 0x0001,
                 .wDeassert = 0x0001,
                 .wReading = 0x0047,
                 .ucUnits1 = 0xC0, // no analog reading
                 .aucSharing = {0x01, 0x00},
                 .ucHysteresis = 0},
                {.tDevice = {0xF0, 0, 0, kDiskMark}, .ePlace = Place::kSlot, .ucFlags = kSlotInRecord});
    t.at[kNvmeTemp] = Full(
        {.ucEntityId = kEntityDisk, .ucEntityInstance = 0, .tReading = kCelsius, .tLimits = {.ucUC = 70}},
        {.tDevice = {0xF2, 0, 0, kDiskMark}, .ePlace = Place::kSlot});
    t.at[kDiskGroupTemp] = Full({.ucEntityId = kEntityDisk, .tReading = kCelsius},
                                {.tDevice = {0x56, 1}, .ePlace = Place::kAdd});
}

constexpr void Cards(ListedKinds &t) {
    t.at[kOcpTemp] = Full({.ucEntityId = kEntityOcp, .tReading = kCelsius},
                          {.tDevice = {0xCD, 0, kScanned}, .ePlace = Place::kAdd});
    t.at[kOcpError] = Compact({.ucEntityId = kEntityOcp,
                               .ucInit = 0x63,
                               .ucSensorType = 0x15,
                               .ucEventType = 0x07, // severity
                               .wAssert = 0x0006,
                               .wDeassert = 0x0006,
                               .wReading = 0x7FFF,
                               .aucSharing = {0x00, 0x01},
                               .ucHysteresis = 0},
                              {.tDevice = {0xAA}, .ePlace = Place::kAddOrKeep});
    t.at[kPcieStatus] = Discrete(kEntityAddInCard, 0x21, 0x6F,
                                 0x0005, // fault, installed
                                 {.tDevice = {0x57}, .ePlace = Place::kAdd, .eKnown = Known::kInfo});
}

constexpr void CardsOwn(ListedKinds &t) {
    t.at[kMotherBoard] = Compact({.ucEntityId = kEntitySystemBoard,
                                  .ucInit = 0x63,
                                  .ucSensorType = 0x15,
                                  .ucEventType = 0x07,
                                  .wAssert = 0x0006,
                                  .wDeassert = 0x0006,
                                  .wReading = 0x7FFF,
                                  .aucSharing = {0x00, 0x01},
                                  .ucHysteresis = 0},
                                 {.tDevice = {0x55, 0x40}, .eKnown = Known::kInfo});
    t.at[kDiskMaxTemp] = Full({.ucEntityId = kEntityDisk, .tReading = kCelsius},
                              {.tDevice = {0x56, 2}, .eKnown = Known::kInfo});
}

constexpr void SwitchBoard(ListedKinds &t) {
    t.at[kSwitchVolts] =
        Full({.ucEntityId = kEntitySwitchBoard, .tReading = Volts(200, -3)},
             {.tDevice = {0x45}, .ePlace = Place::kAdd, .eClient = Client::kSwitch, .eKnown = Known::kInfo});
    t.at[kSwitchCurrent] =
        Full({.ucEntityId = kEntitySwitchBoard, .tReading = Amperes(1)},
             {.tDevice = {0x46}, .ePlace = Place::kAdd, .eClient = Client::kSwitch, .eKnown = Known::kInfo});
    t.at[kSwitchTemp] = Full({.ucEntityId = kEntitySwitchBoard, .tReading = kCelsius},
                             {.tDevice = {0x47}, .ePlace = Place::kAdd, .eKnown = Known::kSwitchVoltsWarn});
    // Offset 1 of the entry is the index plus 1.
    t.at[kSwitchAirTemp] =
        Full({.ucEntityId = kEntitySwitchBoard, .tReading = kCelsius}, {.tDevice = {0x48, 1},
                                                                        .eGate = Gate::kAirIndex,
                                                                        .ePlace = Place::kAdd,
                                                                        .eKnown = Known::kInfo,
                                                                        .eNaming = Naming::kInletOutlet,
                                                                        .ucFlags = kIndexInItem});
}

constexpr void SwitchChips(ListedKinds &t) {
    constexpr FullFields tChip = {.ucEntityId = kEntitySwitchBoard, .tReading = kCelsius};
    t.at[kSwitchChipTemp] = Full(tChip, {.tDevice = {0x5A, 1}, .ePlace = Place::kAdd});
    t.at[kSwitchGroupTemp] = Full(tChip, {.tDevice = {0x5A, 2}});
    t.at[kLanSwitchTemp] =
        Full({.ucEntityId = kEntitySwitchBoard, .ucEntityInstance = kRelativeBase, .tReading = kCelsius},
             {.tDevice = {0x5B}, .eKnown = Known::kSwitchVolts});
}

constexpr void SystemEvents(ListedKinds &t) {
    t.at[kPowerButton] =
        System(1, kEntityFrontPanel, 0x14, 0x6F, 0x0001, Gate::kBoardHas, SENSOR_POWER_BUTTON);
    t.at[kUidButton] = System(2, kEntityFrontPanel, 0x14, 0x03, 0x0002, Gate::kBoardHas, SENSOR_UID_BUTTON);
    t.at[kEventLog] = System(3, kEntityManagementSoftware, 0x10, 0x6F, 0x0034); // cleared, full, almost full
    t.at[kOsBoot] = System(4, kEntityOperatingSystem, 0x1F, 0x6F, 0x007F);
    t.at[kAcpiState] = System(5, kEntitySystemBoard, 0x22, 0x6F, 0x0061); // S0, S5, S4/S5
    t.at[kSystemRestart] = System(6, kEntitySystemBoard, 0x1D, 0x6F, 0x00FF);
    t.at[kSystemBoot] = System(7, kEntityBios, 0x1D, 0x6F, 0x00FF);
    t.at[kBmcBootUp] = System(8, kEntityController, 0x28, 0x03, 0x0002);
    t.at[kOsStop] = System(9, kEntityOperatingSystem, 0x20, 0x6F, 0x003F);
    t.at[kIntrusion] = System(10, kEntityChassis, 0x05, 0x6F, 0x0001, Gate::kBoardHas, SENSOR_INTRUSION);
    t.at[kLanLeashLost] = System(11, kEntitySystemBoard, 0x05, 0x6F, 0x0010);
    t.at[kManagementEngine] = System(12, kEntityController, 0x28, 0x6F, 0x003F, Gate::kBoardHas, SENSOR_ME);
    t.at[kNtpSyncFail] = System(13, kEntitySystemManagement, 0x12, 0x6F, 0x0020);
    t.at[kPowerFault] =
        System(14, kEntityPowerUnit, 0x08, 0x6F, 0x0002, Gate::kPowerFault, SENSOR_POWER_FAULT);
}

constexpr void SystemEventsOwn(ListedKinds &t) {
    t.at[kFirmwareProgress] = System(15, kEntityBios, 0x0F, 0x6F, 0x0007); // error, hang, progress
    t.at[kBiosBootUp] = System(16, kEntityBios, 0x0F, 0x6F, 0x0004);
    t.at[kSystemEvent] = System(17, kEntitySystemBoard, 0x12, 0x6F, 0x001F);
    t.at[kCriticalInterrupt] = System(18, kEntitySystemBoard, 0x13, 0x6F, 0x0FFF);
    t.at[kWatchdog2] = System(19, kEntityManagementSoftware, 0x23, 0x6F, 0x010F);
    t.at[kBootError] = System(20, kEntityBios, 0x1E, 0x6F, 0x001F);
    t.at[kSystemHealth] = System(21, kEntitySystemBoard, 0x12, 0x07, 0x0006);
    SetWord(t.at[kSystemHealth].tHead, SDR_READING_MASK, 0x7FFF);
    t.at[kFirmwareUpdate] = System(22, kEntityController, 0x2B, 0x6F, 0x0082);
    t.at[kBmcStatus] = System(23, kEntityController, 0x28, 0x6F, 0x000F);
    t.at[kI2cStatus] = System(24, kEntitySystemBoard, 0x21, 0x6F, 0x0100); // what the bus status event sends
    t.at[kPcieAggregate] = System(25, kEntitySystemBus, 0x13, 0x6F, 0x05B0); // parity, system and bus errors
    t.at[kSystemShutdown] = System(26, kEntityOperatingSystem, 0x20, 0x6F, 0x000C);
}

// The same reading under the sensor type of other units.
constexpr void AsOtherUnits(ListedKinds &t) {
    constexpr Kind aePair[][2] = {
        {kCpuPower, kCpuPowerOther},           {kMemPower, kMemPowerOther},
        {kDiskPower, kDiskPowerOther},         {kFanPower, kFanPowerOther},
        {kPsuInputPower, kPsuInputPowerOther}, {kPsuOutputPower, kPsuOutputPowerOther}};
    for (const Kind(&aePowers)[2] : aePair) {
        t.at[aePowers[1]] = t.at[aePowers[0]];
        t.at[aePowers[1]].tHead.auc[SDR_SENSOR_TYPE] = kOtherUnits;
    }
}

constexpr void CpuOwn(ListedKinds &t) {
    t.at[kCpuSinglePower] =
        Full({.ucEntityId = kEntityProcessor, .ucEntityInstance = kRelativeBase, .tReading = Watts(3)},
             {.tDevice = {0xD9, 3}, .ePlace = Place::kCpuIndexOnly, .ucFlags = kSilkReread | kDropBelowSilk});
    constexpr Kind aeCurrent[] = {kCpuVcoreCurrent, kCpuVcore1Current, kCpuVsocCurrent, kCpuDdrVdd1Current};
    for (uint8_t uc = 0; uc < 4; ++uc)
        t.at[aeCurrent[uc]] =
            Full({.ucEntityId = kEntityProcessor, .ucEntityInstance = kRelativeBase, .tReading = Amperes(2)},
                 {.tDevice = {0x5C, static_cast<uint8_t>(uc + 1)},
                  .eGate = Gate::kBoardHas,
                  .ucGateId = static_cast<uint8_t>(SENSOR_CPU_VCORE_CURRENT + uc),
                  .ePlace = Place::kCpuIndexOnly,
                  .ucFlags = kSilkReread});
    t.at[kCpuVrPower] = Full({.ucEntityId = kEntityProcessor, .tReading = Watts(3)},
                             {.tDevice = {0x5D, 1}, .ePlace = Place::kCpu, .ucFlags = kSilkReread});
    t.at[kDimmVrPower] = Full(
        {.ucEntityId = kEntityMemoryDevice, .tReading = Watts(0)},
        {.tDevice = {0x5D, 2}, .eGate = Gate::kDimmAccuracy, .ePlace = Place::kCpu, .ucFlags = kSilkReread});
    // a discrete sensor in a full record
    t.at[kMemoryHot] = Full({.ucEntityId = kEntityMemoryModule,
                             .ucEntityInstance = kRelativeBase,
                             .tReading = {.ucSensorType = 0x0C, .ucUnits1 = 0xC0, .ucM = 0},
                             .ucEventType = 0x6F,
                             .ucHysteresis = 0,
                             .bRangeGiven = true,
                             .wDiscreteMask = 0x0400},
                            {.tDevice = {0x4D, 3}, .ePlace = Place::kCpuIndexOnly, .ucFlags = kSilkReread});
}

constexpr void BoardOwn(ListedKinds &t) {
    t.at[kTotalPower] = Full({.ucEntityId = kEntitySystemBoard,
                              .ucEntityInstance = kRelativeBase,
                              .tReading = Watts(17, kOtherUnits)},
                             {.tDevice = {0x9E, 0, kScanned}, .eGate = Gate::kProductLine});
    t.at[kPowerModuleTemp] =
        Full({.ucEntityId = kEntityPowerModule, .tReading = kCelsius}, {.tDevice = {0x58},
                                                                        .eGate = Gate::kBoardHas,
                                                                        .ucGateId = SENSOR_PWR_MODULE_TEMP,
                                                                        .ePlace = Place::kAdd});
    t.at[kUbbRetimerTemp] = Full(
        {.ucEntityId = kEntityGpuBoard, .tReading = kCelsius},
        {.tDevice = {0x59}, .eGate = Gate::kBoardHas, .ucGateId = SENSOR_UBB_RT_TEMP, .ePlace = Place::kAdd});
    t.at[kSwitchTotalPower] =
        Full({.ucEntityId = kEntitySwitchBoard, .ucEntityInstance = kRelativeBase, .tReading = Watts(1)},
             {.tDevice = {0x93, 4}, .eGate = Gate::kSwitchPower});
}

// Power of single boards, items of one device.
constexpr SensorKind BoardPowerItem(uint8_t ucItem, uint8_t ucEntityId, uint8_t ucM, uint8_t ucSensorId) {
    return Full({.ucEntityId = ucEntityId, .ucEntityInstance = kRelativeBase, .tReading = Watts(ucM)},
                {.tDevice = {0x93, ucItem}, .eGate = Gate::kBoardHas, .ucGateId = ucSensorId});
}

constexpr void PowerOwn(ListedKinds &t) {
    t.at[kNicPower] = BoardPowerItem(1, kEntityAddInCard, 2, SENSOR_NIC_POWER);
    t.at[kPdbBoardPower] = BoardPowerItem(2, kEntityPowerUnit, 9, SENSOR_PDB_BOARD_POWER);
    t.at[kGpuBoardPower] = BoardPowerItem(3, kEntityGpuBoard, 8, SENSOR_GPU_BOARD_POWER);

    constexpr Limits t54VLimits = {.ucUC = 235, .ucUNC = 233, .ucLC = 102, .ucLNC = 107};
    t.at[kRail54V] = Full(
        {.ucEntityId = kEntitySystemBoard,
         .ucEntityInstance = kRelativeBase,
         .tReading = Volts(30, -2),
         .tLimits = t54VLimits},
        {.tDevice = {0x95, 1, kScanned, k54VMark}, .eGate = Gate::kBoardHas, .ucGateId = SENSOR_SYS_54_VOLT});
    t.at[kGpuRail54V] =
        Full({.ucEntityId = kEntityGpuBoard, .tReading = Volts(30, -2), .tLimits = t54VLimits},
             {.tDevice = {0x95, 2, 0, k54VMark},
              .eGate = Gate::kBoardHas,
              .ucGateId = SENSOR_GPU_54_VOLT,
              .ePlace = Place::kIndexOnly});
}

// The rack management board: two sensors.
constexpr void Rack(ListedKinds &t) {
    t.at[kRackInletTemp] = Full({.ucEntityId = kEntityAirInlet,
                                 .ucEntityInstance = kRelativeBase,
                                 .tReading = kCelsius,
                                 .tLimits = {.ucUNR = 52, .ucUC = 50, .ucUNC = 45}},
                                {.tDevice = {0x00, 0, kScanned}, .eClient = Client::kInlet});
    t.at[kRackPower] =
        Full({.ucEntityId = kEntitySystemBoard,
              .ucEntityInstance = kRelativeBase,
              .tReading = {.ucSensorType = kOtherUnits, .ucBaseUnit = 9, .ucM = 236, .ucB = 118},
              .ucHysteresis = 0},
             {.tDevice = {0x3B, 0, kScanned}, .ePlace = Place::kAllOnes});
}

constexpr void Backplanes(ListedKinds &t) {
    FullFields tVolts = {.ucEntityId = kEntityAddInCard,
                         .ucEntityInstance = kRelativeBase,
                         .tReading = Volts(100, -3),
                         .tLimits = {.ucUC = 144, .ucUNC = 132, .ucLC = 96, .ucLNC = 108}};
    t.at[kFrontBackplane12V] =
        Full(tVolts, {.tDevice = {0x9A, 1}, .eGate = Gate::kBoardHas, .ucGateId = SENSOR_BP_FRONT_12V});
    t.at[kRearBackplane12V] =
        Full(tVolts, {.tDevice = {0x9A, 2}, .eGate = Gate::kBoardHas, .ucGateId = SENSOR_BP_REAR_12V});
    FullFields tTemp = {.ucEntityId = kEntityAddInCard,
                        .ucEntityInstance = kRelativeBase,
                        .tReading = kCelsius,
                        .tLimits = {.ucUC = 60, .ucUNC = 58},
                        .ucHysteresis = 2};
    t.at[kFrontBackplaneTemp] =
        Full(tTemp, {.tDevice = {0x99, 1}, .eGate = Gate::kBoardHas, .ucGateId = SENSOR_BP_FRONT_TEMP});
    t.at[kRearBackplaneTemp] =
        Full(tTemp, {.tDevice = {0x99, 2}, .eGate = Gate::kBoardHas, .ucGateId = SENSOR_BP_REAR_TEMP});
}

// ---- liquid-cooling units ----

constexpr Reading Pressure(uint8_t ucM, int sdwR = 0) {
    return {.ucSensorType = kOtherUnits, .ucBaseUnit = kKilopascal, .ucM = ucM, .sdwR = sdwR};
}
constexpr Reading LitresPerMinute(uint8_t ucM, int sdwR = 0) {
    return {.ucSensorType = kOtherUnits,
            .ucUnits1 = kUnitsRate,
            .ucBaseUnit = kLitre,
            .ucModifierUnit = kMinute,
            .ucM = ucM,
            .sdwR = sdwR};
}
constexpr Reading Percent(uint8_t ucSensorType) {
    return {.ucSensorType = ucSensorType, .ucUnits1 = kUnitsPercent};
}

// One reading of a unit: an item of its device; one of several moves the instance.
constexpr SensorKind Cdu(uint8_t ucCode, uint8_t ucItem, const Reading &tReading,
                         Place ePlace = Place::kNone) {
    return Full({.ucEntityId = kEntityCdu, .ucEntityInstance = kRelativeBase, .tReading = tReading},
                {.tDevice = {ucCode, ucItem, kScanned}, .ePlace = ePlace});
}

constexpr void DefaultCdu(ListedKinds &t) {
    constexpr uint8_t kCode = 0xA6;
    t.at[kCduInletTemp] = Cdu(kCode, 1, kCelsius);
    t.at[kCduDewTemp] = Cdu(kCode, 2, kCelsius);
    t.at[kCduSupplyTemp] = Cdu(kCode, 3, kCelsius);
    t.at[kCduDiffTemp] = Cdu(kCode, 4, kCelsius);
    t.at[kCduHumidity] = Cdu(kCode, 5, Percent(0x15));
    t.at[kCduFanSetting] = Cdu(kCode, 6, Percent(0x04));
    t.at[kCduSupplyPressure] = Cdu(kCode, 7, Pressure(100));
    t.at[kCduFlowRate] = Cdu(kCode, 8, LitresPerMinute(1));
    t.at[kCduFanSpeed] = Cdu(kCode, 9, Rpm(100), Place::kAddOnly);
    t.at[kCduReturnTemp] = Cdu(kCode, 10, kCelsius);
    t.at[kCduReturnPressure] = Cdu(kCode, 11, Pressure(4));
    t.at[kCduDiffPressure] = Cdu(kCode, 12, Pressure(4));
    t.at[kCduConductivity] =
        Cdu(kCode, 13, {.ucSensorType = kOtherUnits, .ucM = 8}); // the unit stands in its name
}

constexpr uint8_t kKestrinCduCode = 0x8F;

constexpr void KestrinCdu(ListedKinds &t) {
    constexpr uint8_t kCode = kKestrinCduCode;
    Reading tCoolant = kCelsius;
    tCoolant.ucM = 7;
    t.at[kCdu2InletTemp] = Full({.ucEntityId = kEntityCdu,
                                 .ucEntityInstance = kRelativeBase,
                                 .tReading = kCelsius,
                                 .bRangeGiven = true, // signed, and yet the range of an unsigned reading
                                 .ucMax = 0xFF,
                                 .ucMin = 0x00},
                                {.tDevice = {kCode, 1, kScanned}});
    t.at[kCdu2CoolantInTemp] = Cdu(kCode, 2, tCoolant);
    t.at[kCdu2CoolantOutTemp] = Cdu(kCode, 3, tCoolant);
    t.at[kCdu2FlowRate] = Cdu(kCode, 4, LitresPerMinute(5, -2));
    t.at[kCdu2SupplyPressure] = Cdu(kCode, 5, Pressure(5, -2));
    t.at[kCdu2ReturnPressure] = Cdu(kCode, 6, Pressure(5, -2));
    t.at[kCdu2OutputPower] = Cdu(kCode, 7, Watts(11));
    t.at[kCdu2FanPower] = Cdu(kCode, 8, Watts(6));
    t.at[kCdu2PumpPower] = Cdu(kCode, 9, Watts(4));
    t.at[kCdu2FanSpeed] = Cdu(kCode, 10, Rpm(28), Place::kAdd);
    t.at[kCdu2InputVolts] = Cdu(kCode, 11, Volts(1, 0), Place::kAdd);
    t.at[kCdu2OutputVolts] = Cdu(kCode, 12, Volts(25, -2), Place::kAdd);
    t.at[kCdu2OutputCurrent] = Cdu(kCode, 13, Amperes(2, -1), Place::kAdd);
}

// Leak detectors of the unit, items of the same device.
constexpr void KestrinCduDetectors(ListedKinds &t) {
    constexpr Kind aeDetector[] = {kCdu2Leakage, kCdu2Level, kCdu2Flow, kCdu2PressureHigh, kCdu2PressureLow};
    for (uint8_t uc = 0; uc < 5; ++uc)
        t.at[aeDetector[uc]] =
            Compact({.ucEntityId = kEntityCdu,
                     .ucEntityInstance = kRelativeBase,
                     .ucSensorType = 0x0A,
                     .ucEventType = 0x03,
                     .wReading = 0xFFFF},
                    {.tDevice = {kKestrinCduCode, static_cast<uint8_t>(14 + uc), kScanned}});
}

constexpr ListedKinds AllKinds() {
    ListedKinds t = {};
    Air(t);
    BoardTemps(t);
    Rails(t);
    Powers(t);
    CpuTemps(t);
    CpuVolts(t);
    CpuDiscrete(t);
    Memory(t);
    PsuReadings(t);
    PsuDiscrete(t);
    Fans(t);
    Disks(t);
    Cards(t);
    SwitchBoard(t);
    SystemEvents(t);
    PsuOwn(t);
    CardsOwn(t);
    SwitchChips(t);
    SystemEventsOwn(t);
    AsOtherUnits(t);
    CpuOwn(t);
    BoardOwn(t);
    PowerOwn(t);
    Rack(t);
    Backplanes(t);
    DefaultCdu(t);
    KestrinCdu(t);
    KestrinCduDetectors(t);
    for (const SensorKind &tKind : t.at)
        if (tKind.tHead.auc[SDR_VERSION] != kSdrVersion)
            sensor_kind_without_definition();
    return t;
}

constexpr ListedKinds kKinds = AllKinds();

// ---- the numbers as they stand in the printed tables ------------------------------------------------------

constexpr uint16_t Word(Kind eKind, uint8_t ucOffset) {
    const uint8_t *puc = kKinds.at[eKind].tHead.auc + ucOffset;
    return static_cast<uint16_t>(puc[0] | puc[1] << 8);
}
constexpr bool Masks(Kind eKind, uint16_t wAssert, uint16_t wDeassert, uint16_t wReading) {
    return Word(eKind, SDR_ASSERT_MASK) == wAssert && Word(eKind, SDR_DEASSERT_MASK) == wDeassert &&
           Word(eKind, SDR_READING_MASK) == wReading;
}

static_assert(Masks(kInletTemp, 0x0A80, 0x7A80, 0x3838));
static_assert(Masks(kRail12V, 0x3285, 0x3285, 0x1B1B));
static_assert(Masks(kCpuCoreVolts, 0x7A95, 0x7A95, 0x3F3F));
static_assert(Masks(kNvmeTemp, 0x0200, 0x2200, 0x1010));
static_assert(Masks(kCpu0Domain0Volts, 0, 0, 0));
static_assert(kKinds.at[kCpuCoreVolts].tHead.auc[FULL_SDR_EXPONENTS] == 0xC0);
static_assert(kKinds.at[kPsuInputVolts].tHead.auc[FULL_SDR_EXPONENTS] == 0xE0);
static_assert(kKinds.at[kNvmeTemp].tHead.auc[FULL_SDR_SENSOR_MAX] == 0x7F);
static_assert(kKinds.at[kNvmeTemp].tHead.auc[FULL_SDR_SENSOR_MIN] == 0x80);

// ---- the sensors as they are stored -----------------------------------------------------------------------

constexpr bool IsFull(const SensorKind &t) {
    return t.tHead.auc[SDR_RECORD_TYPE] == kRecordFull;
}
constexpr size_t HeadSize(const SensorKind &t) {
    return IsFull(t) ? kFullHeadSize : kCompactHeadSize;
}

// A head without what each kind says itself.
constexpr SdrHead SharedHead(const SensorKind &t) {
    SdrHead tHead = t.tHead;
    tHead.auc[SDR_ENTITY_ID] = tHead.auc[SDR_ENTITY_INSTANCE] = tHead.auc[FULL_SDR_M_VALUE_LS_8_BITS] = 0;
    return tHead;
}

// Heads behind one another, each once.
struct HeadPool {
    uint8_t auc[kKindCount * sizeof(SdrHead)] = {};
    size_t nUsed = 0;

    constexpr bool Stands(const SdrHead &tHead, size_t nSize, size_t nAt) const {
        for (size_t n = 0; n < nSize; ++n)
            if (auc[nAt + n] != tHead.auc[n])
                return false;
        return true;
    }
    constexpr size_t Put(const SdrHead &tHead, size_t nSize) {
        for (size_t nAt = 0; nAt + nSize <= nUsed; nAt += kHeadStep)
            if (Stands(tHead, nSize, nAt))
                return nAt;
        for (size_t n = 0; n < nSize; ++n)
            auc[nUsed++] = tHead.auc[n];
        return nUsed - nSize;
    }
};

constexpr StoredKind Store(const SensorKind &t, size_t nHead) {
    const Behaviour &tDoes = t.tDoes;
    const Device &tDevice = tDoes.tDevice;
    if (nHead / kHeadStep > 255)
        more_heads_than_a_kind_can_name();
    if ((tDevice.ucScanFlag != 0 && tDevice.ucScanFlag != kScanned) || tDoes.ucFlags >= kScanned)
        flag_of_a_device_or_a_sensor_that_is_not_stored();
    StoredKind tStored = {};
    tStored.ucHead = static_cast<uint8_t>(nHead / kHeadStep);
    tStored.ucByte24 = t.tHead.auc[FULL_SDR_M_VALUE_LS_8_BITS];
    tStored.aucEntity[0] = t.tHead.auc[SDR_ENTITY_ID];
    tStored.aucEntity[1] = t.tHead.auc[SDR_ENTITY_INSTANCE];
    tStored.aucDevice[0] = tDevice.ucCode;
    tStored.aucDevice[1] = tDevice.ucItem;
    tStored.ucMark = tDevice.ucMark;
    tStored.ucGateId = tDoes.ucGateId;
    tStored.eGate = tDoes.eGate;
    tStored.bAsks = Asks(tDoes);
    tStored.bChanges = Changes(tDoes);
    tStored.bFull = IsFull(t);
    tStored.ePlace = tDoes.ePlace;
    tStored.eClient = tDoes.eClient;
    tStored.eBoardLine = tDoes.eBoardLine;
    tStored.eNaming = tDoes.eNaming;
    tStored.eKnown = tDoes.eKnown;
    tStored.ucFlags = static_cast<uint8_t>(tDoes.ucFlags | tDevice.ucScanFlag);
    return tStored;
}

struct AllStored {
    StoredKind at[kKindCount] = {};
    HeadPool tHeads;
};
constexpr AllStored StoreAll() {
    AllStored t;
    for (size_t n = 0; n < kKindCount; ++n) {
        const SensorKind &tKind = kKinds.at[n];
        t.at[n] = Store(tKind, t.tHeads.Put(SharedHead(tKind), HeadSize(tKind)));
    }
    return t;
}
constexpr AllStored kStored = StoreAll();

// A full head's length is copied whatever the head is: behind the last one stands what a compact head lacks.
template <size_t kNeeded, size_t kGiven> constexpr bool RoomForHeads() {
    static_assert(kNeeded == kGiven,
                  "kHeadBytes in sensor_kinds.h is the second number and must be the first");
    return true;
}
static_assert(RoomForHeads<kStored.tHeads.nUsed + kFullHeadSize - kCompactHeadSize, kHeadBytes>());

constexpr KindTable StoredTable() {
    KindTable t = {};
    for (size_t n = 0; n < kKindCount; ++n)
        t.at[n] = kStored.at[n];
    for (size_t n = 0; n < kStored.tHeads.nUsed; ++n)
        t.aucHeads[n] = kStored.tHeads.auc[n];
    return t;
}

} // namespace

constinit const KindTable kSensorKinds = StoredTable();

} // namespace oxa
