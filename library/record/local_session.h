// SPDX-License-Identifier: Apache-2.0
#ifndef OXA_RECORD_LOCAL_SESSION_H
#define OXA_RECORD_LOCAL_SESSION_H

#include "oxa/platform.h"

namespace oxa {

// Opens a session with the BMC's own IPMI service, as administrator, with no name and no password.  The
// last word is the service's: 10 for records and messages, 100 for events.  0, or the service's code: then
// there is nothing to close.
uint16_t OpenLocalSession(IpmiLocalSession &tSession, uint32_t dwLastWord);

} // namespace oxa
#endif
