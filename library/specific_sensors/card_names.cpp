// SPDX-License-Identifier: Apache-2.0
//
// Names of the sensors on add-in card families: entry tables by sensor index, and the 31 family rows.
//
// The rows reach the entries by hidden second names, since a pointer at an exported name could be preempted
// and would cost a symbol lookup when the library is loaded.
#include <iterator>

#include "library/specific_sensors/name_tables.h"

using namespace oxa::snr;

namespace {
constexpr bool SameName(const char *pcA, const char *pcB) {
    for (size_t n = 0; n < SENSOR_NAME_SIZE; ++n)
        if (pcA[n] != pcB[n])
            return false;
    return true;
}

// Sensor indexes count from 0 without a gap, every name is good and stands once.
template <size_t N> consteval bool GoodEntries(const CardSnrEntry (&atEntry)[N]) {
    for (size_t i = 0; i < N; ++i) {
        if (atEntry[i].ucSensorIndex != i || !GoodName(atEntry[i].acName))
            return false;
        for (size_t k = 0; k < i; ++k)
            if (SameName(atEntry[i].acName, atEntry[k].acName))
                return false;
    }
    return true;
}
} // namespace

extern "C" {

constexpr CardSnrEntry atBrenmorSensorInfo[14] = {
    {0, "DPU_Cpu_Inlet1"}, {1, "DPU_Cpu_Inlet2"}, {2, "DPU_Cpu_Outlet1"}, {3, "DPU_Cpu_Outlet2"},
    {4, "DPU_Cpu_Core"},   {5, "DPU_Cpu_VR"},     {6, "DPU_Fpga_Inlet"},  {7, "DPU_Fpga_Outlet"},
    {8, "DPU_Fpga_Core"},  {9, "DPU_Fpga_VR"},    {10, "DPU_QSFP1"},      {11, "DPU_QSFP2"},
    {12, "DPU_DIMMA"},     {13, "DPU_DIMMB"},
};

constexpr CardSnrEntry atHyperTempSensorInfo[7] = {
    {0, "HYPER_CORE_TEMP"}, {1, "HYPER_MEM_TEMP"},  {2, "HYPER_VR_TEMP"},   {3, "HYPER_INLET_TEMP"},
    {4, "HYPER_OUTLET_T"},  {5, "HYPER_SFP0_TEMP"}, {6, "HYPER_SFP1_TEMP"},
};

constexpr CardSnrEntry atHyperPowerSensorInfo[2] = {
    {0, "HYPER_POWER"},
    {1, "HYPER_CORE_POWER"},
};

constexpr CardSnrEntry atBirenRetimerTempSensorInfo[1] = {
    {0, "BR_RETIMER_TEMP"},
};

constexpr CardSnrEntry atHGXNSWITCHTempSensorInfo[1] = {
    {0, "HGX_NSWITCH_TEMP"},
};

constexpr CardSnrEntry atHGXPSWITCHTempSensorInfo[1] = {
    {0, "HGX_PSWITCH_TEMP"},
};

constexpr CardSnrEntry atHGXRETIMERTempSensorInfo[1] = {
    {0, "HGX_RETIMER_TEMP"},
};

constexpr CardSnrEntry atHGXFPGATempSensorInfo[1] = {
    {0, "HGX_FPGA_TEMP"},
};

constexpr CardSnrEntry atHGXHMCTempSensorInfo[1] = {
    {0, "HGX_HMC_TEMP"},
};

constexpr CardSnrEntry atHGXHSCTempSensorInfo[1] = {
    {0, "HGX_HSC_TEMP"},
};

constexpr CardSnrEntry atGIGAHYPER3FPGATempSensorInfo[4] = {
    {0, "GH3_FPGA0_TEMP"},
    {1, "GH3_FPGA1_TEMP"},
    {2, "GH3_FPGA2_TEMP"},
    {3, "GH3_FPGA3_TEMP"},
};

constexpr CardSnrEntry atMLUPcieRetimerTempSensorInfo[8] = {
    {0, "MLU_PRT0_TEMP"}, {1, "MLU_PRT1_TEMP"}, {2, "MLU_PRT2_TEMP"}, {3, "MLU_PRT3_TEMP"},
    {4, "MLU_PRT4_TEMP"}, {5, "MLU_PRT5_TEMP"}, {6, "MLU_PRT6_TEMP"}, {7, "MLU_PRT7_TEMP"},
};

constexpr CardSnrEntry atMLUSdrdesRetimerTempSensorInfo[4] = {
    {0, "MLU_SRT0_TEMP"},
    {1, "MLU_SRT1_TEMP"},
    {2, "MLU_SRT2_TEMP"},
    {3, "MLU_SRT3_TEMP"},
};

constexpr CardSnrEntry atMLUUBBTempSensorInfo[2] = {
    {0, "MLU_UBB0_TEMP"},
    {1, "MLU_UBB1_TEMP"},
};

constexpr CardSnrEntry atMLUUBBSfpTempSensorInfo[4] = {
    {0, "MLU_SFP0_TEMP"},
    {1, "MLU_SFP1_TEMP"},
    {2, "MLU_SFP2_TEMP"},
    {3, "MLU_SFP3_TEMP"},
};

constexpr CardSnrEntry atMLUInletTempSensorInfo[4] = {
    {0, "MLU_INLET0_TEMP"},
    {1, "MLU_INLET1_TEMP"},
    {2, "MLU_INLET2_TEMP"},
    {3, "MLU_INLET3_TEMP"},
};

constexpr CardSnrEntry atX2000BOXSensorInfo[1] = {
    {0, "BOX"},
};

constexpr CardSnrEntry atHalvikTempSensorInfo[8] = {
    {0, "HALVIK_RT0_TEMP"}, {1, "HALVIK_RT1_TEMP"}, {2, "HALVIK_RT2_TEMP"}, {3, "HALVIK_RT3_TEMP"},
    {4, "HALVIK_RT4_TEMP"}, {5, "HALVIK_RT5_TEMP"}, {6, "HALVIK_RT6_TEMP"}, {7, "HALVIK_RT7_TEMP"},
};

constexpr CardSnrEntry atILURetimerTempSensorInfo[1] = {
    {0, "ILU_RETIMER_TEMP"},
};

constexpr CardSnrEntry atMETAXRetimerTempSensorInfo[8] = {
    {0, "METAX_RT0_TEMP"}, {1, "METAX_RT1_TEMP"}, {2, "METAX_RT2_TEMP"}, {3, "METAX_RT3_TEMP"},
    {4, "METAX_RT4_TEMP"}, {5, "METAX_RT5_TEMP"}, {6, "METAX_RT6_TEMP"}, {7, "METAX_RT7_TEMP"},
};

constexpr CardSnrEntry atMGXNSWITCHTempSensorInfo[4] = {
    {0, "MGX_NSW0_TEMP"},
    {1, "MGX_NSW1_TEMP"},
    {2, "MGX_NSW2_TEMP"},
    {3, "MGX_NSW3_TEMP"},
};

constexpr CardSnrEntry atMGXPSWITCHTempSensorInfo[1] = {
    {0, "MGX_PSWITCH_TEMP"},
};

constexpr CardSnrEntry atMGXFPGATempSensorInfo[1] = {
    {0, "MGX_FPGA_TEMP"},
};

constexpr CardSnrEntry atMGXHMCTempSensorInfo[1] = {
    {0, "MGX_HMC_TEMP"},
};

constexpr CardSnrEntry atNebulaMatrixSensorInfo[17] = {
    {0, "DPU_CPU_Inlet1"}, {1, "DPU_CPU_Inlet2"}, {2, "DPU_CPU_Outlet1"}, {3, "DPU_CPU_Outlet2"},
    {4, "DPU_CPU_Core"},   {5, "DPU_CPU_VR"},     {6, "DPU_NP_Inlet1"},   {7, "DPU_NP_Inlet2"},
    {8, "DPU_NP_Outlet1"}, {9, "DPU_NP_Outlet2"}, {10, "DPU_NP_Core"},    {11, "DPU_NP_VR"},
    {12, "DPU_DIMMA"},     {13, "DPU_DIMMB"},     {14, "DPU_SSD"},        {15, "DPU_QSFP1"},
    {16, "DPU_QSFP2"},
};

constexpr CardSnrEntry atSP925DTempSensorInfo[6] = {
    {0, "SP925D_CORE_TEMP"}, {1, "SP925D_VR_TEMP"},   {2, "SP925D_INLET_T"},
    {3, "SP925D_OUTLET_T"},  {4, "SP925D_SFP0_TEMP"}, {5, "SP925D_SFP1_TEMP"},
};

constexpr CardSnrEntry atOxaUbbPowerBrickTempSensorInfo[1] = {
    {0, "UBB_BRICK_TEMP"},
};

constexpr CardSnrEntry atOxaUbbInletTempSensorInfo[1] = {
    {0, "UBB_INLET_TEMP"},
};

constexpr CardSnrEntry atOxaUbbOutletTempSensorInfo[3] = {
    {0, "UBB_OUTLET0_TEMP"},
    {1, "UBB_OUTLET1_TEMP"},
    {2, "UBB_OUTLET2_TEMP"},
};

constexpr CardSnrEntry atMTRetimerTempSensorInfo[8] = {
    {0, "MT_RT0_TEMP"}, {1, "MT_RT1_TEMP"}, {2, "MT_RT2_TEMP"}, {3, "MT_RT3_TEMP"},
    {4, "MT_RT4_TEMP"}, {5, "MT_RT5_TEMP"}, {6, "MT_RT6_TEMP"}, {7, "MT_RT7_TEMP"},
};

constexpr CardSnrEntry atBR166RetimerTempSensorInfo[12] = {
    {0, "BR166_RT0_TEMP"}, {1, "BR166_RT1_TEMP"}, {2, "BR166_RT2_TEMP"},   {3, "BR166_RT3_TEMP"},
    {4, "BR166_RT4_TEMP"}, {5, "BR166_RT5_TEMP"}, {6, "BR166_RT6_TEMP"},   {7, "BR166_RT7_TEMP"},
    {8, "BR166_RT8_TEMP"}, {9, "BR166_RT9_TEMP"}, {10, "BR166_RT10_TEMP"}, {11, "BR166_RT11_TEMP"},
};

// Search order: class word, device type, entries.
#define OXA_CARD_FAMILIES(ROW)                                                                               \
    ROW(kClassTemp, kBrenmor, atBrenmorSensorInfo)                                                           \
    ROW(kClassTemp, kHyper, atHyperTempSensorInfo)                                                           \
    ROW(kClassPower, kHyper, atHyperPowerSensorInfo)                                                         \
    ROW(kClassTemp, kBirenRetimer, atBirenRetimerTempSensorInfo)                                             \
    ROW(kClassTemp, kHgxNswitchAll, atHGXNSWITCHTempSensorInfo)                                              \
    ROW(kClassTemp, kHgxPswitch, atHGXPSWITCHTempSensorInfo)                                                 \
    ROW(kClassTemp, kHgxRetimerAll, atHGXRETIMERTempSensorInfo)                                              \
    ROW(kClassTemp, kHgxFpga, atHGXFPGATempSensorInfo)                                                       \
    ROW(kClassTemp, kHgxHmc, atHGXHMCTempSensorInfo)                                                         \
    ROW(kClassTemp, kHgxHscAll, atHGXHSCTempSensorInfo)                                                      \
    ROW(kClassTemp, kGigaHyper3, atGIGAHYPER3FPGATempSensorInfo)                                             \
    ROW(kClassTemp, kMluPcieRetimer, atMLUPcieRetimerTempSensorInfo)                                         \
    ROW(kClassTemp, kMluSerdesRetimer, atMLUSdrdesRetimerTempSensorInfo)                                     \
    ROW(kClassTemp, kMluUbb, atMLUUBBTempSensorInfo)                                                         \
    ROW(kClassTemp, kMluUbbSfp, atMLUUBBSfpTempSensorInfo)                                                   \
    ROW(kClassTemp, kMluInlet, atMLUInletTempSensorInfo)                                                     \
    ROW(kClassCardStatus, kX2000Box, atX2000BOXSensorInfo)                                                   \
    ROW(kClassTemp, kHalvik, atHalvikTempSensorInfo)                                                         \
    ROW(kClassTemp, kIluRetimer, atILURetimerTempSensorInfo)                                                 \
    ROW(kClassTemp, kMetaxRetimer, atMETAXRetimerTempSensorInfo)                                             \
    ROW(kClassTemp, kMgxNswitch, atMGXNSWITCHTempSensorInfo)                                                 \
    ROW(kClassTemp, kMgxPswitch, atMGXPSWITCHTempSensorInfo)                                                 \
    ROW(kClassTemp, kMgxFpga, atMGXFPGATempSensorInfo)                                                       \
    ROW(kClassTemp, kMgxHmc, atMGXHMCTempSensorInfo)                                                         \
    ROW(kClassTemp, kNebulaMatrix, atNebulaMatrixSensorInfo)                                                 \
    ROW(kClassTemp, kSp925d, atSP925DTempSensorInfo)                                                         \
    ROW(kClassTemp, kUbbPowerBrick, atOxaUbbPowerBrickTempSensorInfo)                                        \
    ROW(kClassTemp, kUbbInlet, atOxaUbbInletTempSensorInfo)                                                  \
    ROW(kClassTemp, kUbbOutlet, atOxaUbbOutletTempSensorInfo)                                                \
    ROW(kClassTemp, kMtRetimer, atMTRetimerTempSensorInfo)                                                   \
    ROW(kClassTemp, kBr166Retimer, atBR166RetimerTempSensorInfo)

#define OXA_ALIAS(type, device, table)                                                                       \
    static_assert(GoodEntries(table));                                                                       \
    extern const CardSnrEntry own_##table[std::size(table)]                                                  \
        __attribute__((alias(#table), visibility("hidden")));
OXA_CARD_FAMILIES(OXA_ALIAS)
#undef OXA_ALIAS

#define OXA_ROW(type, device, table) {type, device, static_cast<uint8_t>(std::size(table)), own_##table},
constinit const CardSnrRow g_atPurchaseCardSnrInfo[31] = {OXA_CARD_FAMILIES(OXA_ROW)};
#undef OXA_ROW

} // extern "C"
