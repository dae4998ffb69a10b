/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief The file of a capture: mapped into memory, so that what was written is there when the process dies, and nothing is
 * held back.  Its blocks are on the disk before they are written to, so that a full disk is noticed in time.
 */
#ifndef OXA_CAPTURE_FILE_H
#define OXA_CAPTURE_FILE_H

#include <stdint.h>

namespace oxa::capture {

// Opens what OXA_CAPTURE names; false: no capture.  One process writes a file; what was there before is kept beside it.
bool OpenFile();
bool IsOurProcess(); // false in a child that was forked afterwards: the file is its parent's

// Room for `size` more bytes, 4-byte aligned; null: the capture is full, which is told in the room that is kept for it.
uint8_t *Room(uint32_t size);
void Take(uint32_t size); // of the room, now written
void CloseFile();         // cuts off what was made ready and not taken

uint8_t *RunningCalls(); // kRunningSize bytes

enum class Full : uint8_t { kNo, kLimit, kDisk, kClosed };
Full WhyFull();
uint8_t *LastRoom(); // kept back for kLastRoom bytes
inline constexpr uint32_t kLastRoom = 128;

} // namespace oxa::capture
#endif
