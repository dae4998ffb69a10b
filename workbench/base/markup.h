// SPDX-License-Identifier: GPL-3.0-or-later
//
// Texts within other people's formats.
#ifndef OXA_WORKBENCH_BASE_MARKUP_H
#define OXA_WORKBENCH_BASE_MARKUP_H

#include <string>

namespace workbench {

// A workflow command's message; a property of one besides holds no ":" and ",".
std::string GithubText(const std::string &text, bool property = false);

std::string MarkdownText(const std::string &text); // within a cell of a table
std::string XmlText(const std::string &text);      // within an element or a quoted attribute

} // namespace workbench
#endif
