// SPDX-License-Identifier: GPL-3.0-or-later
//
// Bytes of an input, taken one after the other; behind the end they are zero.
#ifndef OXA_FUZZ_READER_H
#define OXA_FUZZ_READER_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace fuzz {

class Reader {
public:
    Reader(const uint8_t *data, size_t size) : at_(data), left_(size) {}

    bool Empty() const {
        return left_ == 0;
    }
    template <class T> T Take() {
        T value{};
        Fill(&value, sizeof(value));
        return value;
    }
    uint8_t Byte() {
        return Take<uint8_t>();
    }
    void Fill(void *out, size_t size) {
        const size_t got = std::min(size, left_);
        if (size == 0)
            return;
        std::memset(out, 0, size);
        if (got != 0)
            std::memcpy(out, at_, got);
        at_ += got;
        left_ -= got;
    }
    std::vector<uint8_t> Bytes(size_t most) {
        std::vector<uint8_t> out(std::min(most, left_));
        Fill(out.data(), out.size());
        return out;
    }
    std::vector<uint8_t> Rest() {
        return Bytes(left_);
    }
    std::string Text(size_t size) { // exactly as many characters, none of them 0, as a heap block of its own
        std::string text(size, '\0');
        Fill(text.data(), size);
        return text.substr(0, text.find('\0'));
    }

private:
    const uint8_t *at_;
    size_t left_;
};

} // namespace fuzz
#endif
