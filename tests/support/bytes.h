// SPDX-License-Identifier: GPL-3.0-or-later
//
// Bytes as tests write and read them.
#ifndef OXA_TESTS_SUPPORT_BYTES_H
#define OXA_TESTS_SUPPORT_BYTES_H

#include <cctype>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace tests {

using Bytes = std::vector<uint8_t>;

// "00 51 FF": what the simulated platform's board files write, too.
inline std::string Hex(const Bytes &bytes) {
    static const char kDigits[] = "0123456789ABCDEF";
    std::string out;
    for (const uint8_t byte : bytes) {
        if (!out.empty())
            out += ' ';
        out += kDigits[byte >> 4];
        out += kDigits[byte & 15];
    }
    return out;
}

// The bytes of one word: hex pairs, the last of them repeated where "x5" follows.
inline Bytes LiteralWord(const std::string &word) {
    Bytes out;
    size_t at = 0;
    for (; at + 1 < word.size() && word[at] != 'x'; at += 2) {
        if (!std::isxdigit(static_cast<unsigned char>(word[at])) ||
            !std::isxdigit(static_cast<unsigned char>(word[at + 1])))
            throw std::invalid_argument("not a byte: " + word);
        out.push_back(static_cast<uint8_t>(std::stoul(word.substr(at, 2), nullptr, 16)));
    }
    if (at == word.size())
        return out;
    if (out.empty() || word[at] != 'x')
        throw std::invalid_argument("not a byte: " + word);
    out.insert(out.end(), std::stoul(word.substr(at + 1)) - 1, out.back());
    return out;
}

// Literal bytes: hex pairs, 'text' and FFx5 (a byte repeated), parted by blanks or, pairs only, not at all.
inline Bytes Literal(const std::string &text) {
    Bytes out;
    for (size_t at = 0; at < text.size();) {
        const bool quoted = text[at] == '\'';
        const size_t first = quoted ? at + 1 : at;
        const size_t end = std::min(text.find(quoted ? '\'' : ' ', first), text.size());
        const std::string word = text.substr(first, end - first);
        const Bytes bytes = quoted ? Bytes(word.begin(), word.end()) : LiteralWord(word);
        out.insert(out.end(), bytes.begin(), bytes.end());
        at = end + 1;
    }
    return out;
}

} // namespace tests
#endif
