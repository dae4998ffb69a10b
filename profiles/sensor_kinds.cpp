// SPDX-License-Identifier: Apache-2.0
#include "profiles/sensor_kinds.h"

#include "oxa/platform.h"
#include "sdr/sdr_templates.h" // its checks are part of every build

namespace oxa {

// Compile-time fault: a kind of the list has no definition.
void sensor_kind_without_definition();

namespace {

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
    kEntityPowerBoard = 0x15,
    kEntityChassis = 0x17,
    kEntityFan = 0x1D,
    kEntityCoolingUnit = 0x1E,
    kEntityMemoryDevice = 0x20,
    kEntitySystemManagement = 0x21,
    kEntityBios = 0x22,
    kEntityOperatingSystem = 0x23,
    kEntityController = 0x2E,
    kEntityAirInlet = 0x37,
    kEntityOcp = 0x97
};

constexpr uint8_t kScanned = 0x80;
constexpr uint8_t kDiskMark = 0x25;

// ---- shapes that several sensors share
// ------------------------------------------------------------------------

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

// ---- the sensors
// ----------------------------------------------------------------------------------------------

constexpr void Air(KindTable &t) {
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

constexpr void BoardTemps(KindTable &t) {
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

constexpr void Rails(KindTable &t) {
    constexpr FullFields tRail = {.ucEntityId = kEntitySystemBoard,
                                  .tReading = Volts(100, -3),
                                  .tLimits = {.ucUC = 144, .ucUNC = 132, .ucLC = 96, .ucLNC = 108}};
    t.at[kVcc12V] = Full(
        tRail,
        {.tDevice = {0x44, 1}, .eGate = Gate::kBoardHas, .ucGateId = SENSOR_VCC12V, .eKnown = Known::kFru});
}

constexpr void Powers(KindTable &t) {
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

constexpr void CpuTemps(KindTable &t) {
    constexpr FullFields tTemp = {.ucEntityId = kEntityProcessor, .tReading = kCelsius};
    t.at[kCpuTemp] = Full(tTemp, {.tDevice = {0x49, 1},
                                  .ePlace = Place::kCpu,
                                  .eBoardLine = BoardLine::kOwn,
                                  .eKnown = Known::kWarnNewline,
                                  .eNaming = Naming::kSmallBoard,
                                  .ucFlags = kSilkReread});
    t.at[kCpuVrTemp] = Full(tTemp, {.tDevice = {0x4A},
                                    .eGate = Gate::kBoardHas,
                                    .ucGateId = SENSOR_CPU_VR_TEMP,
                                    .ePlace = Place::kCpu,
                                    .eClient = Client::kCpuRegulator,
                                    .eKnown = Known::kWarnNewline,
                                    .ucFlags = kSilkReread | kRefusalWarns});
}

constexpr void CpuVolts(KindTable &t) {
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
    Behaviour &tFirst = t.at[kCpu0Domain0Volts].tBehaviour;
    tFirst.eBoardLine = BoardLine::kOwn;
    tFirst.eNaming = Naming::kSmallBoard;
    tFirst.ucFlags = kSilkReread | kRelativeOnSmallBoard;
}

constexpr void CpuDiscrete(KindTable &t) {
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

constexpr void Memory(KindTable &t) {
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

constexpr void PsuReadings(KindTable &t) {
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

constexpr void PsuDiscrete(KindTable &t) {
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

constexpr void Fans(KindTable &t) {
    t.at[kFanStatus] = Compact({.ucEntityId = kEntityFan,
                                .ucSensorType = 0x04,
                                .ucEventType = 0x08, // device present
                                .wAssert = 0x0001,
                                .wDeassert = 0x0001,
                                .wReading = 0x0003},
                               {.tDevice = {0x54, 1, kScanned}, .ePlace = Place::kAdd});
    t.at[kFanRedundancy] =
        Discrete(kEntityCoolingUnit, 0x04, 0x0B, 0x0003,
                 {.tDevice = {0x54, 2, kScanned}, .eGate = Gate::kLiquidNot2, .eKnown = Known::kInfo});
    t.at[kLeakage] = Compact({.ucEntityId = kEntityCoolingUnit,
                              .ucSensorType = 0x0A,
                              .ucEventType = 0x03,
                              .wAssert = 0x0002,
                              .wDeassert = 0x0002,
                              .wReading = 0x0003},
                             {.tDevice = {0x5E}, .eGate = Gate::kLiquidIs1, .eKnown = Known::kInfo});
}

constexpr void Disks(KindTable &t) {
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

constexpr void Cards(KindTable &t) {
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
    t.at[kPcieStatus] = Discrete(kEntityAddInCard, 0x21, 0x6F, 0x0005, // fault, installed
                                 {.tDevice = {0x57}, .ePlace = Place::kAdd, .eKnown = Known::kInfo});
}

constexpr void SwitchBoard(KindTable &t) {
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

constexpr void SystemEvents(KindTable &t) {
    t.at[kPowerButton] =
        System(1, kEntityFrontPanel, 0x14, 0x6F, 0x0001, Gate::kBoardHas, SENSOR_POWER_BUTTON);
    t.at[kUidButton] = System(2, kEntityFrontPanel, 0x14, 0x03, 0x0002, Gate::kBoardHas, SENSOR_UID_BUTTON);
    t.at[kEventLog] = System(3, kEntityManagementSoftware, 0x10, 0x6F, 0x0034); // cleared, full, almost full
    t.at[kOsBoot] = System(4, kEntityOperatingSystem, 0x1F, 0x6F, 0x007F);
    t.at[kAcpiState] = System(5, kEntitySystemBoard, 0x22, 0x6F, 0x0061); // S0, S5, S4/S5
    t.at[kSystemRestart] = System(6, kEntitySystemBoard, 0x1D, 0x6F, 0x00FF);
    t.at[kBmcBootUp] = System(8, kEntityController, 0x28, 0x03, 0x0002);
    t.at[kOsStop] = System(9, kEntityOperatingSystem, 0x20, 0x6F, 0x003F);
    t.at[kIntrusion] = System(10, kEntityChassis, 0x05, 0x6F, 0x0001, Gate::kBoardHas, SENSOR_INTRUSION);
    t.at[kManagementEngine] = System(12, kEntityController, 0x28, 0x6F, 0x003F, Gate::kBoardHas, SENSOR_ME);
    t.at[kNtpSyncFail] = System(13, kEntitySystemManagement, 0x12, 0x6F, 0x0020);
    t.at[kPowerFault] =
        System(14, kEntityPowerUnit, 0x08, 0x6F, 0x0002, Gate::kPowerFault, SENSOR_POWER_FAULT);
}

constexpr KindTable AllKinds() {
    KindTable t = {};
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
    for (const SensorKind &tKind : t.at)
        if (tKind.tHead.auc[SDR_VERSION] != kSdrVersion)
            sensor_kind_without_definition();
    return t;
}

} // namespace

constexpr KindTable kSensorKinds = AllKinds();

namespace {

// ---- the numbers as they stand in the printed tables
// ----------------------------------------------------------

constexpr uint16_t Word(Kind eKind, uint8_t ucOffset) {
    const uint8_t *puc = kSensorKinds.at[eKind].tHead.auc + ucOffset;
    return static_cast<uint16_t>(puc[0] | puc[1] << 8);
}
constexpr bool Masks(Kind eKind, uint16_t wAssert, uint16_t wDeassert, uint16_t wReading) {
    return Word(eKind, SDR_ASSERT_MASK) == wAssert && Word(eKind, SDR_DEASSERT_MASK) == wDeassert &&
           Word(eKind, SDR_READING_MASK) == wReading;
}

static_assert(Masks(kInletTemp, 0x0A80, 0x7A80, 0x3838));
static_assert(Masks(kVcc12V, 0x3285, 0x3285, 0x1B1B));
static_assert(Masks(kCpuCoreVolts, 0x7A95, 0x7A95, 0x3F3F));
static_assert(Masks(kNvmeTemp, 0x0200, 0x2200, 0x1010));
static_assert(Masks(kCpu0Domain0Volts, 0, 0, 0));
static_assert(kSensorKinds.at[kCpuCoreVolts].tHead.auc[FULL_SDR_EXPONENTS] == 0xC0);
static_assert(kSensorKinds.at[kPsuInputVolts].tHead.auc[FULL_SDR_EXPONENTS] == 0xE0);
static_assert(kSensorKinds.at[kNvmeTemp].tHead.auc[FULL_SDR_SENSOR_MAX] == 0x7F);
static_assert(kSensorKinds.at[kNvmeTemp].tHead.auc[FULL_SDR_SENSOR_MIN] == 0x80);

} // namespace
} // namespace oxa
