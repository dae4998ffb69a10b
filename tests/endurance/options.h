// SPDX-License-Identifier: GPL-3.0-or-later
//
// The few options of the programs of this folder: a name and a number each.
#ifndef OXA_TESTS_ENDURANCE_OPTIONS_H
#define OXA_TESTS_ENDURANCE_OPTIONS_H

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>

namespace endurance {

struct Options {
    uint64_t seed = 20261122;
    uint64_t steps = 1000000;
    uint64_t kills = 1000;
};

inline Options ReadOptions(int argc, char **argv, std::initializer_list<const char *> known) {
    Options out;
    for (int i = 1; i < argc; i += 2) {
        char *end = nullptr;
        const uint64_t value = i + 1 < argc ? std::strtoull(argv[i + 1], &end, 10) : 0;
        const char *found = nullptr;
        for (const char *name : known)
            found = std::strcmp(name, argv[i]) == 0 ? name : found;
        if (found == nullptr || end == nullptr || end == argv[i + 1] || *end != '\0') {
            std::fprintf(stderr, "usage: %s", argv[0]);
            for (const char *name : known)
                std::fprintf(stderr, " [%s NUMBER]", name);
            std::fprintf(stderr, "\n");
            std::exit(2);
        }
        (std::strcmp(found, "--seed") == 0    ? out.seed
         : std::strcmp(found, "--steps") == 0 ? out.steps
                                              : out.kills) = value;
    }
    return out;
}

} // namespace endurance
#endif
