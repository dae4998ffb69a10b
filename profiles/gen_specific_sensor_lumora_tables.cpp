// SPDX-License-Identifier: Apache-2.0
//
// The Lumora profile's generator tables, in the order of their records.  A file of its own, so that a test
// can put others in their place.
#include <iterator>

#include "oxa/exports.h"

const StaticGenFn atGenLumoraStaticSDRTab[] = {
    Lumora_GenInletTempSDR,  Lumora_GenOutletTempSDR,    Lumora_GenPCHTempSDR,   Lumora_GenTotalPowerSDR,
    Lumora_GenCPUPowerSDR,   Lumora_GenMEMPowerSDR,      Lumora_GenFANPowerSDR,  Lumora_GenHDDPowerSDR,
    Lumora_GenSYS12VSDR,     Lumora_GenENVHUMISDR,       Lumora_GenUIDButtonSDR, Lumora_GenPowerButtonSDR,
    Lumora_GenSysBootSDR,    Lumora_GenACPIStateSDR,     Lumora_GenOSBootSDR,    Lumora_GenBMCBootUpSDR,
    Lumora_GenEventLogSDR,   Lumora_GenFanRedundancySDR, Lumora_GenMESDR,        Lumora_GenLeakageSDR,
    Lumora_GenPcieStatusSDR, Lumora_GenNTPSyncFailSDR,   Lumora_GenPDBTEMPSDR,   Lumora_GenMiddlePDBTEMPSDR,
    Lumora_GenPowerFaultSDR, Lumora_GenBootErrorSDR,     Lumora_GenIntrusionSDR, Lumora_GenBiosBootUpSDR,
};
const uint8_t ucLumoraStaticSDRCnt = std::size(atGenLumoraStaticSDRTab);
