// SPDX-License-Identifier: Apache-2.0
//
// The Kestrin profile's generator tables, in the order of their records.  A file of its own, so that a test
// can put others in their place.
#include <iterator>

#include "oxa/exports.h"

const StaticGenFn atGenKestrinStaticSDRTab[] = {
    Kestrin_GenCPUTjmaxSDR,         Kestrin_GenCPUTControlSDR,   Kestrin_GenSYS12VStandbySDR,
    Kestrin_GenHDDTotalPowerSDR,    Kestrin_GenFanRedundancySDR, Kestrin_GenCPUTotalPowerSDR,
    Kestrin_GenFanTotalPowerSDR,    Kestrin_GenMEMTotalPowerSDR, Kestrin_GenBoardPowerSDR,
    Kestrin_GenPCHTempSDR,          Kestrin_GenUIDButtonSDR,     Kestrin_GenBMCBootUpSDR,
    Kestrin_GenPowerButtonSDR,      Kestrin_GenEventLogSDR,      Kestrin_GenACPIStatusSDR,
    Kestrin_GenRestartInitiatedSDR, Kestrin_GenOSStopSDR,        Kestrin_GenLanLeashLostSDR,
    Kestrin_GenSYSFWProgressSDR,    Kestrin_GenSystemEventSDR,   Kestrin_GenCriticalINTSDR,
    Kestrin_GenWatchdog2SDR,        Kestrin_GenMotherBoardSDR,   Kestrin_GenIntrusionSDR,
    Kestrin_GenBootErrorSDR,        Kestrin_GenINLETTEMPSDR,     Kestrin_GenENVHUMISDR,
    Kestrin_GenLeakageSDR,          Kestrin_GenOutletTempSDR,    Kestrin_GenSYS12VSDR,
    Kestrin_GenPDBTEMPSDR,          Kestrin_GenMiddlePDBTEMPSDR, Kestrin_GenNTPSyncFailSDR,
    Kestrin_GenSwitchBoardPowerSDR, Kestrin_GenPowerFaultSDR,    Kestrin_GenSYS54VoltSDR,
    Kestrin_GenPDBBoardPowerSDR,    Kestrin_GenNICPowerSDR,      Kestrin_GenGPUBoardPowerSDR,
    Kestrin_GenSwitchGTempSDR,
};
const uint8_t ucKestrinStaticSDRCnt = std::size(atGenKestrinStaticSDRTab);

const StaticGenFn atGenKestrinRMCStaticSDRTab[] = {
    Kestrin_GenENTEMPSDR,
    Kestrin_GenRackPowerSDR,
};
const uint8_t ucKestrinRMCStaticSDRCnt = std::size(atGenKestrinRMCStaticSDRTab);

const StaticGenFn atKestrinCDUSDRTab[] = {
    Kestrin_GenCDUInletTempSDR,  Kestrin_GenCDUCoolantTinSDR,  Kestrin_GenCDUCoolantToutSDR,
    Kestrin_GenCDUFlowRateSDR,   Kestrin_GenCDUSupplyPressSDR, Kestrin_GenCDUReturnPressSDR,
    Kestrin_GenCDUPsOutPowerSDR, Kestrin_GenCDUFanPowerSDR,    Kestrin_GenCDUPumpPowerSDR,
    Kestrin_GenCDULQDLeakageSDR, Kestrin_GenCDULQDLevelSDR,    Kestrin_GenCDULQDFlowSDR,
    Kestrin_GenCDULQDPressHSDR,  Kestrin_GenCDULQDPressLSDR,
};
const uint8_t ucKestrinCDUSDRCnt = std::size(atKestrinCDUSDRTab);
