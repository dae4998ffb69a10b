// SPDX-License-Identifier: Apache-2.0
//
// The Default profile's generator tables, in the order of their records.  A file of its own, so that a test
// can put others in their place.
#include <iterator>

#include "oxa/exports.h"

const StaticGenFn atGenDefaultStaticSDRTab[] = {
    Default_GenFanRedundancySDR, Default_GenCPUPowerSDR,    Default_GenMEMPowerSDR,
    Default_GenHDDPowerSDR,      Default_GenBoardPowerSDR,  Default_GenFANPowerSDR,
    Default_GenPCHTempSDR,       Default_GenPowerButtonSDR, Default_GenEventLogSDR,
    Default_GenOSBootSDR,        Default_GenACPIStatusSDR,  Default_GenSysRestartSDR,
    Default_GenUIDButtonSDR,     Default_GenBMCBootUpSDR,   Default_GenOSStopSDR,
    Default_GenIntrusionSDR,     Default_GenLeakageSDR,     Default_GenINPUTTEMPSDR,
    Default_GenENVHUMISDR,       Default_GenMESDR,          Default_GenOUTPUTTEMPSDR,
    Default_GenVCC12VSDR,        Default_GenPDBTEMPSDR,     Default_GenMiddlePDBTEMPSDR,
    Default_GenNTPSyncFailSDR,   Default_GenPowerFaultSDR,
};
const uint8_t ucDefaultStaticSDRCnt = std::size(atGenDefaultStaticSDRTab);

const StaticGenFn atGenDefaultCDUSDRTab[] = {
    Default_GenCDUInletTempSDR,   Default_GenCDUDewTempSDR,   Default_GenCDUSupplyTempSDR,
    Default_GenCDUDiffTempSDR,    Default_GenCDUEnvHumiSDR,   Default_GenCDUISetFanSpdSDR,
    Default_GenCDUSupplyPressSDR, Default_GenCDUFlowRateSDR,  Default_GenCDUReturnTempSDR,
    Default_GenCDUReturnPressSDR, Default_GenCDUDiffPressSDR, Default_GenCDUECSDR,
};
const uint8_t ucDefaultCDUSDRCnt = std::size(atGenDefaultCDUSDRTab);
