/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief The names of all functions that a capture tells of; the place of a name is its number in this build.
 */
#ifndef OXA_CAPTURE_NAMES_H
#define OXA_CAPTURE_NAMES_H

#include <stddef.h>
#include <stdint.h>
#include <string.h>

namespace oxa::capture {

inline constexpr const char *kNames[] = {
#define CALL(result, name, ...) #name,
#define BOUNDED(result, name, ...) #name,
#define PRINT(name) #name,
#define LINE(name) #name,
#define CHANNEL(name) #name,
#define SERVICE(type, name, ...) #name,
#define OPERATION(service, operation, ...) #service "." #operation,
#include "capture/calls.def"
#define DRIVER(name) #name,
#define ENTRY(result, name, ...) #name,
#include "capture/entries.def"
};
inline constexpr uint16_t kNameCount = sizeof(kNames) / sizeof(kNames[0]);

constexpr bool SameText(const char *a, const char *b) {
    for (; *a != '\0' && *a == *b; ++a, ++b) {
    }
    return *a == *b;
}

// The same one behind the other: a table of pointers would be a relocation each.
template <size_t kSize> struct PackedNames {
    char acText[kSize] = {};
};
consteval size_t PackedSize() {
    size_t size = 0;
    for (const char *name : kNames) {
        for (; *name != '\0'; ++name)
            ++size;
        ++size;
    }
    return size;
}
consteval PackedNames<PackedSize()> Packed() {
    PackedNames<PackedSize()> packed;
    size_t at = 0;
    for (const char *name : kNames) {
        for (; *name != '\0'; ++name)
            packed.acText[at++] = *name;
        ++at;
    }
    return packed;
}
inline constexpr PackedNames<PackedSize()> kPackedNames = Packed();
// Asked once or twice for each function: where they begin need not be kept.
inline const char *NameOf(uint16_t id) {
    const char *name = kPackedNames.acText;
    for (; id != 0; --id)
        name += strlen(name) + 1;
    return name;
}

// Not constexpr on purpose: reaching it during constant evaluation is the compile error.
inline void ThisNameIsNotInTheLists() {}

consteval uint16_t Id(const char *name) {
    for (uint16_t id = 0; id < kNameCount; ++id)
        if (SameText(kNames[id], name))
            return id;
    ThisNameIsNotInTheLists();
    return kNameCount;
}

} // namespace oxa::capture
#endif
