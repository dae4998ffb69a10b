// SPDX-License-Identifier: Apache-2.0
//
// Which generator builds the record of which sensor class word.  The whole word is compared, the first
// equal key wins.  Sensors: IPMI sensor type in the high byte, a variant in the low one.  FRU locators:
// device class in the low byte (0Ah power supply, 0Bh card, E0h base board), its kind in the high one.
#include "oxa/exports.h"

const AddSDRHndlrRow g_atAddSDRHndlrTab[21] = {
    {0x0100, GenSpecificTempSDR},
    {0x0803, GenSpecificPowerSDR},
    {0x0403, GenSpecificFanSpeedSDR},
    {0x1501, GenSpecificCardStatusSDR},
    {0xFF0A, GenFruOfPsuSpecificSDR},
    {0x010B, GenFruOfPurchaseCardSpecificSDR},
    {0x01E0, GenFruOfPurchaseCardSpecificSDR},
    {0x02E0, GenFruOfPurchaseCardSpecificSDR},
    {0x020B, GenFruOfPurchaseCardSpecificSDR},
    {0x03E0, GenFruOfPurchaseCardSpecificSDR},
    {0x04E0, GenFruOfPurchaseCardSpecificSDR},
    {0x0C01, GenMEMStatusSpecificSDR},
    {0x030B, GenFruOfPurchaseCardSpecificSDR},
    {0x170B, GenFruOfSubCardSpecificSDR},
    {0x05E0, GenFruOfPurchaseCardSpecificSDR},
    {0x06E0, GenFruOfPurchaseCardSpecificSDR},
    {0x0D00, GenSpecificStatusSDR},
    {0x07E0, GenFruOfPurchaseCardSpecificSDR},
    {0x1700, GenSablinGPUCardStatusSDR},
    {0x0200, GenSpecificVoltSDR},
    {0x040B, GenFruOfSL200CardSpecificSDR},
};
const uint32_t g_dwAddSDRHndlrCnt = sizeof(g_atAddSDRHndlrTab) / sizeof(g_atAddSDRHndlrTab[0]);
