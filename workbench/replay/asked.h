// SPDX-License-Identifier: GPL-3.0-or-later
//
// The questions of a capture, each once, and how to look at their answers.
#ifndef OXA_WORKBENCH_REPLAY_ASKED_H
#define OXA_WORKBENCH_REPLAY_ASKED_H

#include <string>
#include <vector>

#include "replay/capture.h"

namespace workbench {

struct AskedOnce {
    const CapturedCall *call = nullptr;      // with its first answer
    const CapturedCall *otherwise = nullptr; // the same question, answered otherwise later
};

// In the order of their first answers; what did not return was not answered.
std::vector<AskedOnce> AskedOnceIn(const Capture &capture);

// Of a static pass the name of its profile; empty for other entries.
std::string ProfileOfDriver(const std::string &entry);

// Numbers and bytes of a call; 0 and empty where the capture has none of that kind.
uint32_t InNumber(const CapturedCall &call, size_t parameter);
uint32_t OutNumber(const CapturedCall &call, size_t place);
int64_t ResultOf(const CapturedCall &call);
const std::string &InBytes(const CapturedCall &call, size_t parameter);
const std::string &OutBytes(const CapturedCall &call, size_t place);
uint8_t ByteAt(const std::string &bytes, size_t at);
uint32_t WordAt(const std::string &bytes, size_t at, unsigned size);

} // namespace workbench
#endif
