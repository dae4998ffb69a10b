// SPDX-License-Identifier: Apache-2.0
//
// The kinds by name and, for the compiler, what each looks like.  Names and descriptions are one list
// (kinds.def), so that they cannot fall out of step.
#ifndef OXA_STATIC_SENSORS_KINDS_KINDS_H
#define OXA_STATIC_SENSORS_KINDS_KINDS_H

#include "library/static_sensors/kinds/shapes.h"

namespace oxa {

#define KIND(name, ...) name,
enum Kind : uint8_t {
#include "library/static_sensors/kinds/kinds.def"
    kKindCount
};
#undef KIND

// For rows that depart from their kind.  (Not inline: a constant that is inline is reached through the offset
// table.  Nothing of this one is stored where only the compiler reads it.)
#define KIND(name, ...) __VA_ARGS__,
constexpr SensorKind kKinds[] = {
#include "library/static_sensors/kinds/kinds.def"
};
#undef KIND

// The same for the engine.
const SensorKind &KindOf(uint8_t ucKind);

} // namespace oxa
#endif
