// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/freeipmi_cache.h"

namespace workbench {
namespace {

constexpr unsigned char kBegin[] = {0x72, 0x8C, 0x9D, 0x1F,
                                    0x00, 0x01, 0x00, 0x02}; // what it is, and its version

void Add(std::string &out, uint32_t value, unsigned bytes) { // lowest first
    for (unsigned i = 0; i < bytes; ++i)
        out += static_cast<char>(value >> 8 * i & 0xFF);
}

// The byte that makes the sum of all of them 0.
void AddSum(std::string &out) {
    unsigned sum = 0;
    for (const char c : out)
        sum += static_cast<uint8_t>(c);
    out += static_cast<char>(-sum & 0xFF);
}

} // namespace

std::string FreeIpmiCache(const std::string &records, size_t count, const RepositoryStamps &stamps) {
    std::string out(reinterpret_cast<const char *>(kBegin), sizeof kBegin);
    Add(out, static_cast<uint8_t>(stamps.version >> 4 | stamps.version << 4), 1); // as the tools keep it
    Add(out, static_cast<uint32_t>(count), 2);
    Add(out, stamps.added_at, 4);
    Add(out, stamps.erased_at, 4);
    AddSum(out);
    out += records;
    Add(out, static_cast<uint32_t>(out.size() + 5), 4); // of the whole file, with this and the sum
    AddSum(out);
    return out;
}

} // namespace workbench
