// SPDX-License-Identifier: GPL-3.0-or-later
#include "why/why_json.h"

namespace workbench {

Json RowJson(const Row &row) {
    return {{"pattern", row.name},
            {"file", row.file},
            {"line", row.line},
            {"place", row.place},
            {"group", row.Words().pcName},
            {"group_words", row.Words().pcWords},
            {"function", row.function},
            {"kind", {{"name", KindName(row)}, {"place", KindPlace(row)}}}};
}

Json AskedJson(const Asked &asked) {
    return {{"call", asked.event.function},
            {"args", asked.event.args},
            {"answer", ValueText(asked.event)},
            {"failed", asked.event.failed},
            {"from", asked.from}};
}

} // namespace workbench
