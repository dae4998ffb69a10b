// SPDX-License-Identifier: Apache-2.0
//
// The numbers that a sensor description and the name tables are keyed by.
#ifndef OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_KINDS_H
#define OXA_SDR_GEN_SPECIFIC_SENSOR_DATA_KINDS_H

#include "oxa/exports.h"

namespace oxa::snr {

constexpr uint16_t kKeepBitmap = 65535; // override of a table row: the description's threshold bitmap stands

// Sensor class words.
enum SensorClass : uint32_t {
    kTemp = 0x0100,
    kVolt = 0x0200,
    kFan = 0x0403,
    kPower = 0x0803,
    kMemStatus = 0x0C01,
    kDiskStatus = 0x0D00,
    kCardStatus = 0x1501,
    kGpuCard = 0x1700
};

// Device types: card families, and positions in the rows of class kFan.
enum DeviceType : uint8_t {
    kGpu = 2,
    kRaid = 3,
    kRaidSingle = 4,
    kNic = 5,
    kOcp = 6,
    kAic = 13,
    kHba = 15,
    kFc = 16,
    kBrenmor = 17,
    kGpuMem = 18,
    kSmartNic = 19,
    kHyper = 20,
    kBirenRetimer = 21,
    kHgxNswitchAll = 22,
    kHgxPswitch = 23,
    kHgxRetimerAll = 24,
    kHgxFpga = 25,
    kHgxHmc = 26,
    kHgxHscAll = 27,
    kSpnc50 = 28,
    kPcie = 29,
    kOam = 30,
    kSxm = 31,
    kOamMem = 32,
    kSxmMem = 33,
    kSmartNicCard = 34,
    kGigaHyper3 = 35,
    kNeo = 36,
    kOamMcd = 37,
    kMluPcieRetimer = 38,
    kMluSerdesRetimer = 39,
    kMluUbb = 40,
    kMluUbbSfp = 41,
    kX2000Box = 42,
    kNicHt = 43,
    kNicSw = 44,
    kMluInlet = 45,
    kHalvik = 46,
    kIluRetimer = 47,
    kMetaxRetimer = 48,
    kOamPcb = 49,
    kMgxNswitch = 50,
    kMgxPswitch = 51,
    kMgxFpga = 52,
    kMgxHmc = 53,
    kDs25Ge50 = 54,
    kCx6Net = 55,
    kGpuSlotPower = 56, // one slot's own power, unlike class kPower of kGpu, kOam and kSxm
    kOamSlotPower = 57,
    kSxmSlotPower = 58,
    kNvmeDisk = 59,
    kNebulaMatrix = 60,
    kSp925d = 61,
    kUbbPowerBrick = 62,
    kUbbInlet = 63,
    kUbbOutlet = 64,
    kMtRetimer = 65,
    kBr166Retimer = 66,
    kSxmMargin = 67,
    kHgxInlet = 68,
    kHgxOutlet = 69,
    kHgxNswitch = 70,
    kHgxRetimer = 71,
    kHgxHsc = 72,
    kHgxHscStandby = 73,

    kFanFront = 0,
    kFanRear = 1,
    kFanPlain = 255
};

// Sub device types.
enum SubDeviceType : uint8_t {
    kMain = 0,
    kPort = 1, // SFP or optical port
    kGpuMax = 9,
    kGpuAvg = 10,

    kFanVariant = 2, // class kFan

    kNvme = 1, // disks; where an NVMe disk is mounted decides between the last two
    kSata = 2,
    kSas = 3,
    kNvmeFront = 4,
    kNvmeRear = 5,

    kNeoCpu = 3, // NEO card
    kNeoInlet = 4,
    kNeoVr = 5,
    kNeoNic = 6,
    kNeoOpt = 7,
    kNeoDimm = 8
};

} // namespace oxa::snr
#endif
