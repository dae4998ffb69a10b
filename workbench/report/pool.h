// SPDX-License-Identifier: GPL-3.0-or-later
//
// What many sensors have in common stands in a document once; they name its place.
#ifndef OXA_WORKBENCH_REPORT_POOL_H
#define OXA_WORKBENCH_REPORT_POOL_H

#include <map>
#include <string>
#include <utility>

#include "base/json.h"

namespace workbench {

class Pool {
public:
    size_t PlaceOf(const Json &value) {
        const auto [found, is_new] =
            places_.emplace(value.dump(-1, ' ', false, Json::error_handler_t::replace), all_.size());
        if (is_new)
            all_.push_back(value);
        return found->second;
    }
    Json Take() {
        return std::move(all_);
    }

private:
    Json all_ = Json::array();
    std::map<std::string, size_t> places_;
};

} // namespace workbench
#endif
