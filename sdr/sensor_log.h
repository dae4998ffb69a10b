// SPDX-License-Identifier: Apache-2.0
//
// Log lines of sensors and drivers.  They carry a function name that is put together from the profile and the
// generator; that is done in here, so that neither its cost nor its room is paid where nothing is written.
#ifndef OXA_SDR_SENSOR_LOG_H
#define OXA_SDR_SENSOR_LOG_H

#include "oxa/platform.h"
#include "sdr/oxa_log.h"
#include "sdr/sensor_row_stored.h"

namespace oxa {

// How a profile calls itself in function names and log lines.
struct ProfileName {
    char acName[8];  // "Default"
    char acFile[34]; // "gen_specific_sensor_default.c"
};

// "<Profile>_<generator>", or the profile's driver where the generator is empty.
struct Label {
    char ac[40];
    Label(const ProfileName &tProfile, const char *pcGenerator);
};

enum Severity : uint32_t { kInfo, kWarn, kError };

// How, for whom and from where, in one word; an error is counted first.
using Remark = uint32_t;
#define OXA_REMARK(severity, module)                                                                         \
    (static_cast<oxa::Remark>(severity) | static_cast<oxa::Remark>(module) << 8 |                            \
     static_cast<oxa::Remark>(__LINE__) << 16)

// The speaker is a profile and one of its generators.  (Two words rather than a record of two: each call that
// passes a record keeps a copy of it on the stack.)  A format with numbers; with the speaker's name in front
// of them; with a text in front of them.
void Say(const ProfileName &tProfile, const char *pcGenerator, Remark tRemark, const char *pcFormat,
         int sdwA = 0, int sdwB = 0);
void SayNamed(const ProfileName &tProfile, const char *pcGenerator, Remark tRemark, const char *pcFormat,
              int sdwA = 0, int sdwB = 0, int sdwC = 0, int sdwD = 0);
void SayText(const ProfileName &tProfile, const char *pcGenerator, Remark tRemark, const char *pcFormat,
             const char *pcText, int sdwA = 0, int sdwB = 0);
// The speaker's name, a text, numbers.
void SayNamedText(const ProfileName &tProfile, const char *pcGenerator, Remark tRemark, const char *pcFormat,
                  const char *pcText, int sdwA, int sdwB);
// The speaker's name in the text of a line of the driver.
void SayAsDriver(const ProfileName &tProfile, const char *pcGenerator, Remark tRemark, const char *pcFormat,
                 int sdwA, int sdwB);
// A row of the rack management board's table.
void SayRackRow(const ProfileName &tProfile, const char *pcGenerator, Remark tRemark, int sdwIndex,
                int sdwCnt, int sdwRows);
// The profile's name and a text.
void SayProfileText(const ProfileName &tProfile, const char *pcGenerator, Remark tRemark,
                    const char *pcFormat, const char *pcText);
// "The board does not support adding sensor <text>.": the row's variant or name, which may hold one "%d" for
// the index.
void SayRefusal(const ProfileName &tProfile, RowView tRow, Remark tRemark, uint8_t ucIndex);

} // namespace oxa
#endif
