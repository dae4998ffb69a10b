// SPDX-License-Identifier: Apache-2.0
#include "library/record/local_session.h"

#include <cstring>

namespace oxa {
namespace {

constexpr uint8_t kPrivilegeAdmin = 4;
constexpr uint32_t kSessionArg5 = 0;
constexpr uint32_t kSessionArg6 = 2;

} // namespace

uint16_t OpenLocalSession(IpmiLocalSession &tSession, uint32_t dwLastWord) {
    memset(&tSession, 0, sizeof(tSession));
    const char acUser[8] = {};
    const char acPassword[8] = {};
    uint8_t ucPrivilege = kPrivilegeAdmin;
    return LIBIPMI_Create_IPMI_Local_Session(&tSession, acUser, acPassword, &ucPrivilege, kSessionArg5,
                                             kSessionArg6, dwLastWord);
}

} // namespace oxa
