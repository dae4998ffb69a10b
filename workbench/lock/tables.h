// SPDX-License-Identifier: GPL-3.0-or-later
//
// What sensors are called and how they are read that come at run time: the library's tables as lines of a lock file.
#ifndef OXA_WORKBENCH_LOCK_TABLES_H
#define OXA_WORKBENCH_LOCK_TABLES_H

#include <vector>

#include "lock/line.h"

namespace workbench {

//     @name   PROFILE CLASS TYPE SUB-TYPE | PATTERN BITMAP     a profile's name of a sensor; "-": the description's bitmap
//     @front  PROFILE CLASS TYPE SUB-TYPE | PATTERN            what it becomes when the card sits in a front slot
//     @family CLASS TYPE INDEX            | NAME               a card family's names, the same in every profile
//     @type   NUMBER                      | WORD ENTITY TEMP POWER TRAITS    what follows from a device type
//     @card   CLASS                       | NAME OEM           a card that gets a FRU locator
// Starts the simulated platform.
std::vector<TableLine> RunTimeTables();

bool OfProfile(const TableLine &line); // the first word of its key is one

// How many words of a line are its key; 0: there is no such tag.
size_t KeyWords(const std::string &tag);

} // namespace workbench
#endif
