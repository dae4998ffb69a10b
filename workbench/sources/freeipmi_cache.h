// SPDX-License-Identifier: GPL-3.0-or-later
//
// The file in which FreeIPMI's tools remember a BMC's repository.
#ifndef OXA_WORKBENCH_SOURCES_FREEIPMI_CACHE_H
#define OXA_WORKBENCH_SOURCES_FREEIPMI_CACHE_H

#include <string>

#include "sources/source.h"

namespace workbench {

// `records` are `count` records back to back.  The tools take a cache whose stamps are those of the BMC they talk to.
std::string FreeIpmiCache(const std::string &records, size_t count, const RepositoryStamps &stamps);

} // namespace workbench
#endif
