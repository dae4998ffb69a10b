// SPDX-License-Identifier: GPL-3.0-or-later
//
// Event records in words: what builders and their arguments are for, what a record means, and what a standard
// decoder makes of it.
#ifndef OXA_WORKBENCH_EVENTS_SEL_WORDS_H
#define OXA_WORKBENCH_EVENTS_SEL_WORDS_H

#include <string>
#include <vector>

#include "events/sel_inverse.h"

namespace workbench {

std::string BuilderSummary(const BuilderView &builder); // "event of a disk"
std::string ArgumentMeaning(const BuilderView &builder,
                            size_t position); // "0 asserts the event, 1 takes it back"

// "disk in slot 3 of entity 4 (Disk), event 21 (disk life): asserted; as an IPMI event: Drive Slot, Drive
// Fault"
std::string Meaning(const BuilderView &builder, const std::vector<uint32_t> &values, const SelBytes &bytes,
                    const std::vector<bool> &unknown = {});

// What libfreeipmi's event log decoder says: "Memory | Sensor #0 | ... | Assertion Event".
std::string StandardText(const SelBytes &bytes);

} // namespace workbench
#endif
