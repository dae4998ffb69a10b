// SPDX-License-Identifier: GPL-3.0-or-later
//
// Input: event records as decode-sel takes them.  Each is sent by the event writer and decoded; what decode-sel finds has
// to compose the record again.
#include "base/errors.h"
#include "events/sel_calls.h"
#include "events/sel_input.h"
#include "fuzz/entry_points.h"
#include "fuzz/platform.h"
#include "oxa/events.h"
#include "simulator/simulator.h"

namespace {

using fuzz::Require;

constexpr size_t kMostRecords = 4;

void Send(const workbench::SelBytes &bytes) {
    const size_t before = sim::EventLog().size();
    Require(ipmi_add_sel_entry(bytes.data()) == OXA_OK, "the writer fails");
    Require(sim::EventLog().size() == before + 1, "no event in the log");
}

// Every known bit of the record, but for id and time stamp.
void CheckComposed(const workbench::Candidate &candidate, const workbench::SelRecord &record) {
    const workbench::SelBytes composed = workbench::Composed(candidate);
    for (size_t at = SEL_RECORD_TYPE; at < SEL_RECORD_SIZE; ++at) {
        const bool stamp = at >= SEL_TIMESTAMP && at < SEL_GENERATOR_ID;
        if (stamp && workbench::IsStamped(record.bytes[SEL_RECORD_TYPE]))
            continue;
        Require(((composed[at] ^ record.bytes[at]) & record.known[at]) == 0,
                workbench::BuilderName(*candidate.builder) + " composes another byte " + std::to_string(at));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    fuzz::Restart(sim::Board{});
    fuzz::Judge([&] {
        std::vector<workbench::InputRecord> records;
        try {
            records = workbench::ReadRecords({reinterpret_cast<const char *>(data), size}, "input");
        } catch (const workbench::InputError &) {
            return;
        }
        if (records.size() > kMostRecords)
            records.resize(kMostRecords);
        for (const workbench::InputRecord &input : records) {
            Send(input.record.bytes);
            for (const auto &record : {input.record, workbench::TurnedRound(input.record)})
                for (const workbench::Candidate &candidate : workbench::Decode(record))
                    CheckComposed(candidate, record);
        }
    });
    return 0;
}
