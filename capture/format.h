/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief How a capture is written down; docs/capture.md says the same in words.  Who writes it runs on the BMC, who reads
 * it on a desk.
 */
#ifndef OXA_CAPTURE_FORMAT_H
#define OXA_CAPTURE_FORMAT_H

#include <stdint.h>

namespace oxa::capture {

// ---- the file: a header of 16 bytes, the calls that run now, then blocks one behind the other ------------------

inline constexpr char kMagic[] = "OXACAPT\n"; // its 8 characters come first
inline constexpr uint16_t kFormat = 1;        // then this (2); a reader refuses a higher one
inline constexpr uint8_t kLittleEndian =
    1; // behind the size of a pointer: the only byte order that is written
inline constexpr uint32_t kFileHeaderSize = 16; // with the checksum of the 12 bytes before it
inline constexpr uint32_t kRunningSize =
    512; // of each thread the number of the call that it is in, and 1 (2)

// ---- a block: 12 bytes, then its payload, filled up with zeros to 4 bytes --------------------------------------
// payload size without filling (4), kind, thread (from 1), call (2), checksum of those 8 bytes and of the filled payload

inline constexpr uint32_t kBlockHeaderSize = 12;

enum BlockKind : uint8_t {
    kNothing = 0,    // no more was written: the file is still growing, or its process died
    kStart = 1,      // who wrote it; the first block
    kName = 2,       // the name behind a number, before the number is used
    kData = 3,       // bytes; counted from 1
    kEntryBegin = 4, // the firmware calls the library: what goes in
    kEntryEnd = 5,   // ... and what came out
    kCall = 6,       // the library called the firmware: what went in and what came out
    kMissing = 7,    // a function of the firmware is not there
    kStopped = 8,    // the file is full, or the disk
    kEnd = 9         // the process ended as it should
};

// Or a block of 4 bytes: the same once more as the last block of kind kCall for this function.  Its top bit is set, which
// no size has; 7 bits of checksum (the other 24 in groups of 7, xored, and 0x55), thread (8 bits), function (16).
inline constexpr uint32_t kAgainBit = 0x80000000u;
inline uint32_t AgainWord(uint8_t thread, uint16_t function) {
    const uint32_t word = static_cast<uint32_t>(thread) << 16 | function;
    const uint32_t check = (word ^ word >> 7 ^ word >> 14 ^ word >> 21 ^ 0x55) & 0x7F;
    return kAgainBit | check << 24 | word;
}

// ---- a payload: items one behind the other ----------------------------------------------------------------------
// kind, length of what follows (7 bits a byte, low ones first, the top bit says that more comes), then that many bytes

enum ItemKind : uint8_t {
    kUnsigned = 1, // little endian, without leading zero bytes
    kSigned = 2,   // little endian, as long as its type was; the top bit is the sign
    kText = 3,     // without its NUL
    kBytes = 4,
    kDataNumbers = 5, // 4 bytes each: bytes that stand in data blocks, one behind the other
    kNull = 6,        // a null pointer
    kRoom = 7,        // something comes out only; its size, as kUnsigned
    kErrno = 8,       // as kSigned: errno, where the call changed it; of an entry, what it was before
    kUncounted = 9,   // as kUnsigned: bounded calls of this thread since its block before that are not told
    kReturned = 10,   // nothing: what follows came out
    kResult = 16      // added to kUnsigned or kSigned: what the function returned
};

inline constexpr uint32_t kLeastData = 64;   // from this size on bytes stand in a data block
inline constexpr uint32_t kMostData = 16384; // longer ones stand in several

// FNV-1a over words of 32 bits: every changed word is seen.
inline constexpr uint32_t kChecksumStart = 0x811C9DC5u;
inline uint32_t Checksum(uint32_t sum, const void *words, uint32_t bytes) {
    for (uint32_t at = 0; at + 4 <= bytes; at += 4) {
        uint32_t word;
        __builtin_memcpy(&word, static_cast<const char *>(words) + at, 4);
        sum = (sum ^ word) * 0x01000193u;
    }
    return sum;
}

} // namespace oxa::capture
#endif
