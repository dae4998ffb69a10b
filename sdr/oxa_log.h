// SPDX-License-Identifier: Apache-2.0
//
// Log lines.  Every line names the unit's file as the firmware knows it (a constant, not __FILE__), and every
// error is counted first.  A unit defines its file name once:
//     namespace { constexpr const char *kFile = "specific_sdr_file.c"; }
// (a pointer, so that units of one name share its letters)
#ifndef OXA_SDR_LOG_H
#define OXA_SDR_LOG_H

#include "oxa/platform.h"

namespace oxa {

enum Module : uint32_t {
    kModuleSdr = 42,
    kModuleSubCard = 43,
    kModuleSel = 52,
    kModuleDiskTrace = 67,
    kModuleAssert = 255, // assertion texts
    kModuleQuery = 255   // static sensors: warnings about failed platform calls
};

// Channel levels of IDBG_LINUXAPP_DbgOut.
enum DebugLevel : uint32_t { kDebugChannel = 130, kStoreDebugChannel = 132 };

} // namespace oxa

#define OXA_TRACE(module, file, func, ...) _ssp_debug((module), (file), __LINE__, (func), __VA_ARGS__)
#define OXA_INFO(module, file, func, ...) _ssp_info((module), (file), __LINE__, (func), __VA_ARGS__)
#define OXA_WARN(module, file, func, ...) _ssp_warn((module), (file), __LINE__, (func), __VA_ARGS__)
#define OXA_ERROR(module, file, func, ...)                                                                   \
    do {                                                                                                     \
        sspFailedStat((file), __LINE__);                                                                     \
        _ssp_error((module), (file), __LINE__, (func), __VA_ARGS__);                                         \
    } while (0)
// Debug channel: the text starts with "[%s:%d]", source file and line.
#define OXA_DEBUG(level, file, format, ...)                                                                  \
    IDBG_LINUXAPP_DbgOut((level), "[%s:%d]" format, (file), __LINE__ __VA_OPT__(, ) __VA_ARGS__)

#endif
