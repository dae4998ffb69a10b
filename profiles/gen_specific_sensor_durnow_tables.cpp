// SPDX-License-Identifier: Apache-2.0
//
// The Durnow profile's generator tables, in the order of their records.  A file of its own, so that a test
// can put others in their place.
#include <iterator>

#include "oxa/exports.h"

const StaticGenFn atGenDurnowStaticSDRTab[] = {
    Durnow_GenHDDTotalPowerSDR, Durnow_GenFanRedundancySDR, Durnow_GenCPUTotalPowerSDR,
    Durnow_GenFANPowerSDR,      Durnow_GenMEMTotalPowerSDR, Durnow_GenBoardPowerSDR,
    Durnow_GenPCHTempSDR,       Durnow_GenPowerButtonSDR,   Durnow_GenACPIStatusSDR,
    Durnow_GenSysRestartSDR,    Durnow_GenIntrusionSDR,     Durnow_GenINPUTTEMPSDR,
    Durnow_GenOutletTempSDR,    Durnow_GenSYS12VSDR,        Durnow_GenPDBTEMPSDR,
    Durnow_GenMiddlePDBTEMPSDR, Durnow_GenLeakageSDR,       Durnow_GenNTPSyncFailSDR,
    Durnow_GenPowerFaultSDR,
};
const uint8_t ucDurnowStaticSDRCnt = std::size(atGenDurnowStaticSDRTab);
