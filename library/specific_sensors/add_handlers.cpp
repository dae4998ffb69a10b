// SPDX-License-Identifier: Apache-2.0
//
// Which generator builds the record of which sensor class word.  The whole word is compared, the first
// equal key wins.  Sensors: IPMI sensor type in the high byte, a variant in the low one.  FRU locators:
// device class in the low byte (0Ah power supply, 0Bh card, E0h base board), its kind in the high one.
#include "library/specific_sensors/device_types.h"
#include "oxa/specific_sensors.h"

using namespace oxa::snr;

const AddSDRHndlrRow g_atAddSDRHndlrTab[21] = {
    {kClassTemp, GenSpecificTempSDR},           {kClassPower, GenSpecificPowerSDR},
    {kClassFan, GenSpecificFanSpeedSDR},        {kClassCardStatus, GenSpecificCardStatusSDR},
    {0xFF0A, GenFruOfPsuSpecificSDR},           {0x010B, GenFruOfPurchaseCardSpecificSDR},
    {0x01E0, GenFruOfPurchaseCardSpecificSDR},  {0x02E0, GenFruOfPurchaseCardSpecificSDR},
    {0x020B, GenFruOfPurchaseCardSpecificSDR},  {0x03E0, GenFruOfPurchaseCardSpecificSDR},
    {0x04E0, GenFruOfPurchaseCardSpecificSDR},  {kClassMemStatus, GenMEMStatusSpecificSDR},
    {0x030B, GenFruOfPurchaseCardSpecificSDR},  {0x170B, GenFruOfSubCardSpecificSDR},
    {0x05E0, GenFruOfPurchaseCardSpecificSDR},  {0x06E0, GenFruOfPurchaseCardSpecificSDR},
    {kClassDiskStatus, GenSpecificStatusSDR},   {0x07E0, GenFruOfPurchaseCardSpecificSDR},
    {kClassGpuCard, GenSablinGPUCardStatusSDR}, {kClassVolt, GenSpecificVoltSDR},
    {0x040B, GenFruOfSL200CardSpecificSDR},
};
const uint32_t g_dwAddSDRHndlrCnt = sizeof(g_atAddSDRHndlrTab) / sizeof(g_atAddSDRHndlrTab[0]);
