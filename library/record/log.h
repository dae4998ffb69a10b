// SPDX-License-Identifier: Apache-2.0
//
// The one way to write log lines.  Every line names its unit (unit_names.h) and a function, and every error is
// counted before it is written.
#ifndef OXA_RECORD_LOG_H
#define OXA_RECORD_LOG_H

#include "library/record/unit_names.h"
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

#define OXA_TRACE(module, unit, func, ...) _ssp_debug((module), (unit), __LINE__, (func), __VA_ARGS__)
#define OXA_INFO(module, unit, func, ...) _ssp_info((module), (unit), __LINE__, (func), __VA_ARGS__)
#define OXA_WARN(module, unit, func, ...) _ssp_warn((module), (unit), __LINE__, (func), __VA_ARGS__)
#define OXA_ERROR(module, unit, func, ...)                                                                   \
    do {                                                                                                     \
        sspFailedStat((unit), __LINE__);                                                                     \
        _ssp_error((module), (unit), __LINE__, (func), __VA_ARGS__);                                         \
    } while (0)
// Debug channel: the text starts with "[%s:%d]", unit and line.
#define OXA_DEBUG(level, unit, format, ...)                                                                  \
    IDBG_LINUXAPP_DbgOut((level), "[%s:%d]" format, (unit), __LINE__ __VA_OPT__(, ) __VA_ARGS__)

#endif
