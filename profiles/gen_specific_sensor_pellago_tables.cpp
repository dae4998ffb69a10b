// SPDX-License-Identifier: Apache-2.0
//
// The Pellago profile's generator tables, in the order of their records.  A file of its own, so that a test
// can put others in their place.
#include <iterator>

#include "oxa/exports.h"

const StaticGenFn atGenPellagoStaticSDRTab[] = {
    Pellago_GenCPUPowerSDR,  Pellago_GenMEMPowerSDR,    Pellago_GenFANPowerSDR,
    Pellago_GenHDDPowerSDR,  Pellago_GenBoardPowerSDR,  Pellago_GenPowerButtonSDR,
    Pellago_GenSELStatusSDR, Pellago_GenACPIStatusSDR,  Pellago_GenSysRestartSDR,
    Pellago_GenOSStopSDR,    Pellago_GenPCHTempSDR,     Pellago_GenIntrusionSDR,
    Pellago_GenINLETTEMPSDR, Pellago_GenENVHUMISDR,     Pellago_GenOutletTempSDR,
    Pellago_GenSYS12VSDR,    Pellago_GenPDBTEMPSDR,     Pellago_GenMiddlePDBTEMPSDR,
    Pellago_GenLeakageSDR,   Pellago_GenNTPSyncFailSDR, Pellago_GenPowerFaultSDR,
};
const uint8_t ucPellagoStaticSDRCnt = std::size(atGenPellagoStaticSDRTab);
