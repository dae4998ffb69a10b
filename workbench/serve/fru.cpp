// SPDX-License-Identifier: GPL-3.0-or-later
#include "serve/fru.h"

#include <cstdint>
#include <numeric>
#include <vector>

#include "base/text.h"

namespace workbench {
namespace {

using Bytes = std::vector<uint8_t>;

constexpr unsigned kIds = 255; // 0 to 254; 255 is no device
constexpr size_t kUnit = 8;    // lengths and places are counted in these
constexpr uint8_t kEnglish = 25;
constexpr uint8_t kAscii = 0xC0; // type in the upper bits, length in the lower six
constexpr size_t kLongestText = 63;
constexpr uint8_t kEndOfFields = 0xC1;

// Fills up to whole units; the last byte makes the sum 0.
void Close(Bytes &area) {
    while ((area.size() + 1) % kUnit != 0)
        area.push_back(0);
    if (area.size() > kUnit)
        area[1] = static_cast<uint8_t>((area.size() + 1) / kUnit);
    area.push_back(static_cast<uint8_t>(-std::accumulate(area.begin(), area.end(), 0)));
}

// A common header and a product area: manufacturer, name, part number; the other four fields are empty.
Bytes FruData(const std::string &maker, const std::string &name, const std::string &part) {
    Bytes out = {1, 0, 0, 0, 1, 0, 0}; // the product area follows the header
    Close(out);
    Bytes product = {1, 0, kEnglish};
    for (const std::string &text :
         {maker, name, part, std::string(), std::string(), std::string(), std::string()}) {
        const std::string field = text.substr(0, kLongestText);
        product.push_back(static_cast<uint8_t>(kAscii | field.size()));
        product.insert(product.end(), field.begin(), field.end());
    }
    product.push_back(kEndOfFields);
    Close(product);
    out.insert(out.end(), product.begin(), product.end());
    return out;
}

} // namespace

std::string FruCommands(const std::string &machine, const std::string &customer) {
    std::string out;
    for (unsigned id = 0; id < kIds; ++id) {
        const Bytes data = id == 0 ? FruData("oxa-sensors", machine, customer)
                                   : FruData("oxa-sensors", "simulated device " + std::to_string(id), "");
        std::vector<std::string> words = {"mc_add_fru_data", "0x20", std::to_string(id),
                                          std::to_string(data.size()), "data"};
        for (const uint8_t byte : data)
            words.push_back(Hex(byte));
        out += Join(words, " ") + "\n";
    }
    return out;
}

} // namespace workbench
