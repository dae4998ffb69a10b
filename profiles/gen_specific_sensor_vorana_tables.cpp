// SPDX-License-Identifier: Apache-2.0
//
// The Vorana profile's generator tables, in the order of their records.  A file of its own, so that a test
// can put others in their place.
#include <iterator>

#include "oxa/exports.h"

const StaticGenFn atGenVoranaStaticSDRTab[] = {
    Vorana_GenFanRedundancySDR, Vorana_GenCPUPowerSDR,      Vorana_GenMEMPowerSDR,    Vorana_GenBoardPowerSDR,
    Vorana_GenFANPowerSDR,      Vorana_GenPCHTempSDR,       Vorana_GenUIDButtonSDR,   Vorana_GenBMCBootUpSDR,
    Vorana_GenPowerButtonSDR,   Vorana_GenSELStatusSDR,     Vorana_GenACPIPWRSDR,     Vorana_GenSysRestartSDR,
    Vorana_GenSysShutdownSDR,   Vorana_GenHDDTotalPowerSDR, Vorana_GenSysHealthSDR,   Vorana_GenINLETTEMPSDR,
    Vorana_GenENVHUMISDR,       Vorana_GenOutletTempSDR,    Vorana_GenSYS12VSDR,      Vorana_GenPDBTEMPSDR,
    Vorana_GenMiddlePDBTEMPSDR, Vorana_GenLeakageSDR,       Vorana_GenNTPSyncFailSDR, Vorana_GenPowerFaultSDR,
};
const uint8_t ucVoranaStaticSDRCnt = std::size(atGenVoranaStaticSDRTab);
