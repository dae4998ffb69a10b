// SPDX-License-Identifier: Apache-2.0
//
// The Ferrisk profile's generator tables, in the order of their records.  A file of its own, so that a test
// can put others in their place.
#include <iterator>

#include "oxa/exports.h"

const StaticGenFn atGenFerriskStaticSDRTab[] = {
    Ferrisk_GenCPUPowerSDR,    Ferrisk_GenMEMPowerSDR,    Ferrisk_GenFANPowerSDR,
    Ferrisk_GenHDDPowerSDR,    Ferrisk_GenBoardPowerSDR,  Ferrisk_GenFanRedundancySDR,
    Ferrisk_GenACPIStatusSDR,  Ferrisk_GenIntrusionSDR,   Ferrisk_GenIPMIWatchdogSDR,
    Ferrisk_GenPowerButtonSDR, Ferrisk_GenBiosBootUpSDR,  Ferrisk_GenOSBootSDR,
    Ferrisk_GenI2CStatusSDR,   Ferrisk_GenFWUpdateSDR,    Ferrisk_GenBMCStatusSDR,
    Ferrisk_GenNTPSyncFailSDR, Ferrisk_GenSELStatusSDR,   Ferrisk_GenFrontBp12VSDR,
    Ferrisk_GenRearBp12VSDR,   Ferrisk_GenFrontBPTempSDR, Ferrisk_GenRearBPTempSDR,
    Ferrisk_GenPCIEStatusSDR,  Ferrisk_GenSysBootInitSDR, Ferrisk_GenOSStopSDR,
    Ferrisk_GenPowerFaultSDR,
};
const uint8_t ucFerriskStaticSDRCnt = std::size(atGenFerriskStaticSDRTab);
