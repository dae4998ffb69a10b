// SPDX-License-Identifier: GPL-3.0-or-later
//
// Calls of the library at run time on the simulated platform, which must have been started: what each came to,
// in words.
#ifndef OXA_WORKBENCH_RUNTIME_CALLS_H
#define OXA_WORKBENCH_RUNTIME_CALLS_H

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "runtime/description.h"
#include "runtime/records.h"

namespace workbench {

struct Outcome {
    std::string action;                // "add"
    std::string subject;               // what it was about: a description, a builder's call
    std::string word;                  // one of OutcomeWords(action)
    uint32_t code = 0;                 // what the library returned
    std::string why;                   // in words; may be empty
    std::optional<RecordView> record;  // added, removed
    std::string event;                 // bytes of an event record
    std::vector<std::string> recorded; // what the library's caller wrote down afterwards
    std::vector<std::string> log;      // lines of the library, from the call on
};

// Every word that an action can come to, the good one first.
std::vector<std::string> OutcomeWords(const std::string &action);

// `record`: afterwards do what the library's caller does on a BMC, see RecordAsCaller.
Outcome AddSensor(const SpecificSensorParam &param, bool record);
Outcome RemoveSensor(const SpecificSensorParam &param);

Outcome WriteEvent(const std::string &builder, const std::vector<uint32_t> &arguments);

struct UserThresholds {
    std::string sensor;
    uint8_t values[8] = {}; // UNR UC UNC LNR LC LNC and the two that are stored only
    uint16_t mask = 0;
};
Outcome SaveThresholds(const UserThresholds &thresholds);

// What a process of the library does first: hand the stored thresholds over, for the platform's profile.
Outcome StartLibrary();

// A record file entry for a FRU locator, a slot of the extended store and its device-table entry for a sensor:
// the library leaves both to its caller.  Says what was written.
std::vector<std::string> RecordAsCaller(const SpecificSensorParam &param, const RecordView &record);

// Lines that the library logged since the trace had that size.
std::vector<std::string> LogSince(size_t mark);

// "out of space" of an IPMI completion code.
std::string CompletionText(uint32_t code);

Json OutcomeJson(const Outcome &outcome);
// "added: record 1, NVME3_Temp: ..." from what OutcomeJson gave.
std::string OutcomeLine(const Json &outcome);

} // namespace workbench
#endif
