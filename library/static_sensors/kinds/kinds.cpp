// SPDX-License-Identifier: Apache-2.0
#include "library/static_sensors/kinds/kinds.h"

namespace oxa {

namespace {

// ---- the numbers as they stand in the printed tables ------------------------------------------------------

constexpr uint16_t Word(Kind eKind, uint8_t ucOffset) {
    const uint8_t *puc = kKinds[eKind].tHead.auc + ucOffset;
    return static_cast<uint16_t>(puc[0] | puc[1] << 8);
}
constexpr bool HasMasks(Kind eKind, uint16_t wAssert, uint16_t wDeassert, uint16_t wReading) {
    return Word(eKind, SDR_ASSERT_MASK) == wAssert && Word(eKind, SDR_DEASSERT_MASK) == wDeassert &&
           Word(eKind, SDR_READING_MASK) == wReading;
}
constexpr uint8_t Byte(Kind eKind, uint8_t ucOffset) {
    return kKinds[eKind].tHead.auc[ucOffset];
}

static_assert(HasMasks(kInletTemp, 0x0A80, 0x7A80, 0x3838));
static_assert(HasMasks(kRail12V, 0x3285, 0x3285, 0x1B1B));
static_assert(HasMasks(kCpuCoreVolts, 0x7A95, 0x7A95, 0x3F3F));
static_assert(HasMasks(kNvmeTemp, 0x0200, 0x2200, 0x1010));
static_assert(HasMasks(kCpu0Domain0Volts, 0, 0, 0));
static_assert(Byte(kCpuCoreVolts, FULL_SDR_EXPONENTS) == 0xC0);
static_assert(Byte(kPsuInputVolts, FULL_SDR_EXPONENTS) == 0xE0);
static_assert(Byte(kNvmeTemp, FULL_SDR_SENSOR_MAX) == 0x7F && Byte(kNvmeTemp, FULL_SDR_SENSOR_MIN) == 0x80);
static_assert(Byte(kInletTemp, FULL_SDR_UNC) == 45 && Byte(kInletTemp, FULL_SDR_UC) == 50 &&
              Byte(kInletTemp, FULL_SDR_UNR) == 52);
static_assert(Byte(kRail12V, FULL_SDR_LC) == 96 && Byte(kRail12V, FULL_SDR_LNC) == 108 &&
              Byte(kRail12V, FULL_SDR_UNC) == 132 && Byte(kRail12V, FULL_SDR_UC) == 144);
static_assert(Byte(kRail54V, FULL_SDR_LC) == 102 && Byte(kRail54V, FULL_SDR_LNC) == 107 &&
              Byte(kRail54V, FULL_SDR_UNC) == 233 && Byte(kRail54V, FULL_SDR_UC) == 235);
static_assert(Byte(kCpuCoreVolts, FULL_SDR_LNR) == 0x78 && Byte(kCpuCoreVolts, FULL_SDR_LC) == 0x7D &&
              Byte(kCpuCoreVolts, FULL_SDR_LNC) == 0x82 && Byte(kCpuCoreVolts, FULL_SDR_UNC) == 0xE6 &&
              Byte(kCpuCoreVolts, FULL_SDR_UC) == 0xEB && Byte(kCpuCoreVolts, FULL_SDR_UNR) == 0xF0);

} // namespace

const SensorKind &KindOf(uint8_t ucKind) {
    return kKinds[ucKind];
}

} // namespace oxa
