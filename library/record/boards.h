// SPDX-License-Identifier: Apache-2.0
//
// Ids of mainboards and of cards that change a sensor set, by what is special about them.
#ifndef OXA_RECORD_BOARDS_H
#define OXA_RECORD_BOARDS_H

#include <cstdint>

namespace oxa {

enum BoardId : uint16_t {
    kBoardSmall = 0x5497,       // no power supplies, fans, OCP and PCIe cards of its own; short CPU names
    kBoardGpuPlaces = 0x54E0,   // GPU units are named by row and place
    kBoardSwitchAir = 0x5502,   // its switch card has inlets and outlets; measures switch power by itself
    kBoardSwitchCardA = 0x550F, // these three take a switch card that measures power or temperatures
    kBoardSwitchCardB = 0x55DE,
    kBoardSwitchCardC = 0x55D8,
    kBoardNoOcpA = 0x5580, // these two have no OCP cards, whatever is reported
    kBoardNoOcpB = 0x558B,
    kBoardSwitchPower = 0x5600, // measures switch power with card 1
    kBoardRack = 0x5605         // the rack management board
};

enum CardId : uint16_t {
    kCardSwitchAir = 0x5504,   // inlets and outlets
    kCardSwitchPower = 0x5510, // volts and currents
    kCardSwitchTemp = 0x5517,  // temperatures
    kCardTotalPower = 0x560A   // total power, in place 1
};

} // namespace oxa
#endif
