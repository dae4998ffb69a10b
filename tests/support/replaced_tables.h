// SPDX-License-Identifier: GPL-3.0-or-later
//
// For a test program that brings an exported table of its own: the table is there twice on purpose, once in the program
// and once in the library, which the address sanitizer would refuse.  Include it in one unit of the program.
#ifndef OXA_TESTS_SUPPORT_REPLACED_TABLES_H
#define OXA_TESTS_SUPPORT_REPLACED_TABLES_H

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define OXA_WITH_ASAN
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define OXA_WITH_ASAN
#endif

#ifdef OXA_WITH_ASAN
extern "C" const char *__asan_default_options() {
    return "detect_odr_violation=0";
}
#endif

#endif
