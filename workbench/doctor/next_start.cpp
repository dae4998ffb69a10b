// SPDX-License-Identifier: GPL-3.0-or-later
//
// The library is started on the files and asked.
#include "doctor/doctor.h"

#include "base/text.h"
#include "oxa/specific_sensors.h"
#include "oxa/store.h"
#include "runtime/calls.h"
#include "runtime/platform.h"
#include "runtime/stored.h"
#include "simulator/simulator.h"
#include "thresholds/image.h"

namespace workbench {
namespace {

constexpr uint8_t kFirstCardFruId = 33, kLastCardFruId = 36; // given out from the highest down

std::string Limits(uint32_t custom_id) {
    const Outcome started = StartLibrary();
    if (started.word == "thresholds-loaded")
        return "takes the user thresholds of " + std::to_string(sim::ThresholdTable().wCount) + " sensors";
    return started.word == "no-thresholds"
               ? "finds no user thresholds"
               : "deletes the user thresholds: they are not of " + SavedUnder(custom_id);
}

std::string Store(const Machine &machine) {
    const std::vector<uint8_t> &bytes = machine[kStore].bytes;
    size_t known = 0;
    for (size_t at = 0; at + SDR_SLOT_SIZE <= bytes.size() && at < size_t{EXT_SLOT_MAX} * SDR_SLOT_SIZE;
         at += SDR_SLOT_SIZE)
        known += IsSensorRecord(&bytes[at]) && checkSensorExist(&bytes[at]) == 1;
    return "knows " + std::to_string(known) + " stored sensors, which it does not add again, and counts " +
           std::to_string(getExtDevTabCount()) + " device-table entries";
}

std::string Supplies() {
    std::vector<std::string> out;
    for (unsigned index = 1; index <= 0xFF; ++index)
        if (const uint16_t id = SDR_GetSepcificFruSDRRecID(kPsuEntity, static_cast<uint8_t>(index)); id != 0)
            out.push_back(std::to_string(index) + " (record " + std::to_string(id) + ")");
    return out.empty() ? "takes no power supply for recorded"
                       : "takes these power supplies for recorded: " + Join(out, ", ");
}

// The pools begin anew with the process, whatever the repository holds.
std::string NextCard(const Machine &machine) {
    std::vector<std::string> held;
    const std::vector<uint8_t> &bytes = machine[kRepository].bytes;
    for (const sim::RepositoryRecord &record : ReadRecords({bytes.begin(), bytes.end()}).state.records) {
        Record slot{};
        std::copy(record.bytes.begin(), record.bytes.end(), slot.begin());
        const uint8_t id = slot[FRU_SDR_FRU_ID];
        if (slot[SDR_RECORD_TYPE] == kLocatorRecord && id >= kFirstCardFruId && id <= kLastCardFruId)
            held.push_back(std::to_string(id) + " (record " + std::to_string(record.id) + ", '" +
                           Printable(NameOf(slot.data())) + "')");
    }
    return "gives cards the FRU ids " + std::to_string(kLastCardFruId) + " down to " +
           std::to_string(kFirstCardFruId) + (held.empty() ? "" : "; in use by now: " + Join(held, ", "));
}

} // namespace

std::vector<std::string> NextStart(const Machine &machine, uint32_t custom_id) {
    sim::Board board;
    board.custom_id = custom_id;
    StartWith(board, {}, {});
    for (const MachineFile &file : machine.files)
        if (file.Has())
            sim::WriteFile("/" + file.path, file.bytes);
    std::vector<std::string> out = {Limits(custom_id), Store(machine), Supplies(), NextCard(machine)};
    if (machine.disk_fault_test)
        out.push_back("drops all disk events but predicted faults: /var/test_disk_fault_predict is there");
    return out;
}

} // namespace workbench
