// SPDX-License-Identifier: GPL-3.0-or-later
//
// A capture, read: what the firmware asked the library on a machine, and what the platform answered meanwhile
// (docs/capture.md).
#ifndef OXA_WORKBENCH_REPLAY_CAPTURE_H
#define OXA_WORKBENCH_REPLAY_CAPTURE_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace workbench {

// A parameter that went in or came out, or a result.
struct Item {
    enum class Kind { kNumber, kText, kBytes, kNull, kRoom };
    Kind kind = Kind::kNull;
    int64_t number = 0;                       // kNumber; of kRoom its size
    std::shared_ptr<const std::string> bytes; // kText, kBytes
    const std::string &Bytes() const;
    bool operator==(const Item &other) const;
};

struct CapturedCall {
    std::string name;
    unsigned thread = 0;
    size_t offset = 0;     // of its block in the file
    std::vector<Item> in;  // one for each parameter; kRoom where something comes out only
    std::vector<Item> out; // those that come out, in their order
    std::optional<Item> result;
    std::optional<int> error; // errno, where the call changed it; of an entry, before it
    uint64_t passed_over = 0; // bounded calls since the block before, none of which is told
    bool ended = false;       // false: the process died within it, or the capture ends
};

struct CapturedEntry : CapturedCall {
    std::vector<CapturedCall> calls;
};

struct Capture {
    std::string path;
    std::string version, library; // of the recorder, and where the library was
    uint32_t code = 0;            // checksum of the library's code and constants
    uint32_t process = 0;
    unsigned pointer_size = 0;
    unsigned threads = 0;
    size_t bytes = 0; // of the file that are understood
    std::vector<CapturedEntry> entries;
    std::vector<std::string> missing; // functions that the firmware does not have
    std::string stopped;              // why it is not whole; empty: it is
    bool ended = false;               // the process came to its end
    std::string torn;                 // where and how the file is damaged; empty: it is not

    size_t Calls() const;
    std::vector<std::string> Lacks() const; // why it tells less than there was, a line for each reason
};

// Reads as far as the file is sound.  InputError when it is no capture at all, or of a later format.
Capture ParseCapture(const std::string &path, const std::string &bytes);
Capture ReadCapture(const std::string &path);

std::string ItemText(const Item &item);           // "5", "\"A0\"", "00 51 20", "16320 bytes"
std::string CallText(const CapturedCall &call);   // "HAL_GetCpuOnlineStatus(1)"
std::string AnswerText(const CapturedCall &call); // "0, 1"

} // namespace workbench
#endif
