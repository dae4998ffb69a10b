// SPDX-License-Identifier: Apache-2.0
//
// The Quorral profile's generator tables, in the order of their records.  A file of its own, so that a test
// can put others in their place.
#include <iterator>

#include "oxa/exports.h"

const StaticGenFn atGenQuorralStaticSDRTab[] = {
    Quorral_GenCPUPowerSDR,    Quorral_GenMEMPowerSDR,   Quorral_GenFANPowerSDR,
    Quorral_GenHDDPowerSDR,    Quorral_GenBoardPowerSDR, Quorral_GenBMCBootSDR,
    Quorral_GenPowerButtonSDR, Quorral_GenEventLogSDR,   Quorral_GenSYSBootSDR,
    Quorral_GenACPIStatusSDR,  Quorral_GenUIDButtonSDR,  Quorral_GenPCIeStatusSDR,
    Quorral_GenSYSProgressSDR, Quorral_GenOSBootSDR,     Quorral_GenBiosBootUpSDR,
    Quorral_GenMESDR,          Quorral_GenPCHTempSDR,    Quorral_GenHDDTempSDR,
    Quorral_GenLeakageSDR,     Quorral_GenPowerFaultSDR, Quorral_GenFWUpdateSDR,
    Quorral_GenINLETTEMPSDR,   Quorral_GenENVHUMISDR,    Quorral_GenOutletTempSDR,
    Quorral_GenSYS12VSDR,      Quorral_GenPDBTEMPSDR,    Quorral_GenMiddlePDBTEMPSDR,
    Quorral_GenNTPSyncFailSDR,
};
const uint8_t ucQuorralStaticSDRCnt = std::size(atGenQuorralStaticSDRTab);
