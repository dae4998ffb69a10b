// SPDX-License-Identifier: Apache-2.0
//
// The Astrel profile's generator tables, in the order of their records.  A file of its own, so that a test
// can put others in their place.
#include <iterator>

#include "oxa/exports.h"

const StaticGenFn atGenAstrelStaticSDRTab[] = {
    Astrel_GenFanRedundancySDR, Astrel_GenCPUTotalPowerSDR, Astrel_GenMEMTotalPowerSDR,
    Astrel_GenFanTotalPowerSDR, Astrel_GenHDDTotalPowerSDR, Astrel_GenBoardPowerSDR,
    Astrel_GenPCHTempSDR,       Astrel_GenPowerButtonSDR,   Astrel_GenACPIStatusSDR,
    Astrel_GenSysRestartSDR,    Astrel_GenBMCBootUpSDR,     Astrel_GenOSStopSDR,
    Astrel_GenINLETTEMPSDR,     Astrel_GenENVHUMISDR,       Astrel_GenOutletTempSDR,
    Astrel_GenSYS12VSDR,        Astrel_GenPDBTEMPSDR,       Astrel_GenMiddlePDBTEMPSDR,
    Astrel_GenLeakageSDR,       Astrel_GenNTPSyncFailSDR,   Astrel_GenPowerFaultSDR,
};
const uint8_t ucAstrelStaticSDRCnt = std::size(atGenAstrelStaticSDRTab);
