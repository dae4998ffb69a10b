/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief What goes into a call and what comes out of it: a part for each parameter, in their order.  The lists (calls.def,
 * entries.def) are written in these words; the recorder tells the parts, a replay compares and fills them.
 */
#ifndef OXA_CAPTURE_PARTS_H
#define OXA_CAPTURE_PARTS_H

#include <stddef.h>
#include <stdint.h>
#include <string.h>
#include <type_traits>

namespace oxa::capture {

enum class Shape : uint8_t { kUnsigned, kSigned, kText, kBytes };

enum Direction : uint8_t {
    kIn = 1,
    kOut = 2,
    kOutUpToResult = 4, // with kOut: as many units as the function returned
    kOutOnSuccess = 8   // with kOut: only where it returned 0
};

struct Part {
    Shape shape;
    uint8_t way;      // Direction, added up; 0: not told
    uint16_t unit;    // of kOutUpToResult, in bytes
    uint32_t size;    // in bytes
    const void *data; // null: a null pointer
};

template <class T> constexpr Shape kShapeOf = std::is_signed_v<T> ? Shape::kSigned : Shape::kUnsigned;

// Parameters that are values.
template <class T> Part Number(const T &value) {
    return {kShapeOf<T>, kIn, 1, sizeof(T), &value};
}
// What the platform gave out to be handed back: its value is told, what is behind it is not.
template <class T> Part Handle(T *const &handle) {
    return {Shape::kUnsigned, kIn, 1, sizeof(handle), &handle};
}

// Parameters that point.
inline Part Text(const char *text) {
    return {Shape::kText, kIn, 1, text != nullptr ? static_cast<uint32_t>(strlen(text)) : 0, text};
}
inline Part Bytes(const void *bytes, uint32_t size) {
    return {Shape::kBytes, kIn, 1, size, bytes};
}
template <class T> Part Bytes(const T *object) {
    return {Shape::kBytes, kIn, 1, sizeof(T), object};
}
inline Part Out(void *bytes, uint32_t size) {
    return {Shape::kBytes, kOut, 1, size, bytes};
}
// A number that comes out is told as one: it may have another width where it is read.
template <class T> Part Out(T *object) {
    if constexpr (std::is_arithmetic_v<T>)
        return {kShapeOf<T>, kOut, 1, sizeof(T), object};
    else if constexpr (std::is_pointer_v<T>)
        return {Shape::kUnsigned, kOut, 1, sizeof(T), object};
    else
        return {Shape::kBytes, kOut, 1, sizeof(T), object};
}
inline Part OutText(char *text, uint32_t room) { // up to its NUL
    return {Shape::kText, kOut, 1, room, text};
}
inline Part OutRead(void *bytes, uint32_t room, uint32_t unit = 1) {
    return {Shape::kBytes, kOut | kOutUpToResult, static_cast<uint16_t>(unit), room, bytes};
}
inline Part OutOnSuccess(void *bytes, uint32_t room) {
    return {Shape::kBytes, kOut | kOutOnSuccess, 1, room, bytes};
}
inline Part InOut(void *bytes, uint32_t size) {
    return {Shape::kBytes, kIn | kOut, 1, size, bytes};
}
template <class T> Part InOut(T *object) {
    return {Shape::kBytes, kIn | kOut, 1, sizeof(T), object};
}
// A record, as long as its length byte says and a slot has room.
inline uint32_t RecordSize(const uint8_t *record) {
    constexpr uint32_t kHeader = 5, kSlot = 64;
    const uint32_t size = record != nullptr ? record[4] + kHeader : 0;
    return size < kSlot ? size : kSlot;
}
inline Part Record(const uint8_t *record) {
    return {Shape::kBytes, kIn, 1, RecordSize(record), record};
}
inline Part InOutRecord(uint8_t *record) {
    return {Shape::kBytes, kIn | kOut, 1, RecordSize(record), record};
}
// Nobody's business: an open session, a password.
inline Part Untold(const void *pointer) {
    return {Shape::kBytes, 0, 1, 0, pointer};
}

// The parts of a row, which may have none.
template <unsigned N> struct Parts {
    static constexpr unsigned kCount = N;
    Part at[N];
};
template <> struct Parts<0> {
    static constexpr unsigned kCount = 0;
    Part at[1];
};
template <class... P> Parts<sizeof...(P)> Gather(const P &...parts) {
    return {{parts...}};
}
inline Parts<0> Gather() {
    return {};
}

} // namespace oxa::capture
#endif
