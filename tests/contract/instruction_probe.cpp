// SPDX-License-Identifier: GPL-3.0-or-later
//
// One static pass over a board, for count_instructions.py: says where the library's code lies, runs the pass
// with tracing off and says how many records came out.
//     instruction_probe BOARD [--store FILE] [--records FILE] [--events 1] [--adds 1]
// --store: content of the extended store; --records: where to write the records of the pass; --events: every event
// builder once in place of the pass, counted as a record each; --adds: sensors that come at run time likewise.
#include <link.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "oxa/exports.h"
#include "simulator/board_file.h"
#include "simulator/simulator.h"

namespace {

constexpr char kLibrary[] = "liboxaspecificsensorinfo.so";
constexpr char kStore[] = "/var/tmp/extSDR.dat";

int PrintLoadAddress(dl_phdr_info *info, size_t, void *found) {
    if (std::strstr(info->dlpi_name, kLibrary)) {
        std::printf("base %lx\n", static_cast<unsigned long>(info->dlpi_addr));
        *static_cast<bool *>(found) = true;
    }
    return 0;
}

std::vector<uint8_t> Contents(const std::string &path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        std::fprintf(stderr, "cannot read %s\n", path.c_str());
        std::exit(2);
    }
    return {std::istreambuf_iterator<char>(in), {}};
}

// Each of the nineteen once, so that it writes its event.
unsigned RunEvents() {
    const LeakageInfo leak = {0, 1};
    sim::CurrentBoard().custom_id = CUSTOM_ID_VORANA;                // the one that reports power drops
    sim::CurrentBoard().sensor_numbers.by_key["1E 0A 03 00 00"] = 9; // the leak sensor
    const uint32_t failed =
        addMemPredictiveFault(1, 1) | addPOSTErrorSel() | addS0PowerButtonSel() | addGpuSlotErrorSel(3) |
        addMinorCDUFaultSel(1, 1) | addMajorCDUFaultSel(1, 2, 1) | addNETPortSEL(11, 1, 2, 1, 2, 1, 1, 1, 0) |
        addControllerSEL(11, 1, 18, 0) | addDiskSEL(4, 3, 21, 0) | addLDSEL(4, 130, 0, 1, 1) |
        addPEMSEL(1, 18, 0) | addUsageSEL(26, 90, 80, 0, 0) | addSELAlarm(30, 12, 0) |
        addCPUError(0, 1, 3, 11, 1) | addMemError(2, 1, 5, 1) | addI2CStatusSel(1, 1, 20, 0) |
        addTrapSELAlarm(30, 1, 2, 0) | addPowerDropSEL(1, 0, 2, 0) | addLeakageSel(1, &leak);
    if (failed != 0)
        std::fprintf(stderr, "an event was not written\n");
    return failed == 0 ? 19 : 0;
}

// One of each kind that this board can have; a disk has two.
unsigned RunAdds() {
    const SpecificSensorParam descriptions[] = {
        {.dwSensorDevType = 0x0100,
         .ucDeviceType = 2,
         .SlotId = 3,
         .wBitmap = 0x38,
         .ucUNR = 100,
         .ucUC = 95,
         .ucUNC = 90},
        {.dwSensorDevType = 0x0100, .ucDeviceType = 17, .SlotId = 4, .ucBrenmorSensorIndex = 3},
        {.dwSensorDevType = 0x0100,
         .ucDeviceType = 59,
         .SlotId = 5,
         .wBitmap = 0x10,
         .ucUC = 70,
         .SubDeviceType = 1},
        {.dwSensorDevType = 0x0D00, .ucDeviceType = 59, .SlotId = 5, .wBitmap = 1, .SubDeviceType = 1},
        {.dwSensorDevType = 0x0803, .ucDeviceType = 2, .SlotId = 255},
        {.dwSensorDevType = 0x0403, .ucDeviceType = 255, .SlotId = 6, .wBitmap = 0x02, .ucLC = 10},
        {.dwSensorDevType = 0x1501, .ucDeviceType = 42, .SlotId = 7},
        {.dwSensorDevType = 0xFF0A, .ucDeviceType = 1, .SlotId = 1},
        {.dwSensorDevType = 0x02E0, .SlotId = 2},
    };
    unsigned added = 0;
    for (SpecificSensorParam description : descriptions) {
        // one profile only has disks in its tables
        sim::CurrentBoard().custom_id =
            description.ucDeviceType == 59 ? CUSTOM_ID_FERRISK : CUSTOM_ID_DEFAULT;
        added += SDR_AddSpecificSensor(&description) == OXA_OK;
    }
    if (added != std::size(descriptions))
        std::fprintf(stderr, "%u of %zu sensors were added\n", added, std::size(descriptions));
    return added == std::size(descriptions) ? added : 0;
}

} // namespace

int main(int argc, char **argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: instruction_probe BOARD [--store FILE] [--records FILE]\n");
        return 2;
    }
    std::string records_path;
    bool events = false;
    bool adds = false;
    sim::Start(sim::LoadBoard(argv[1]).board);
    for (int i = 2; i + 1 < argc; i += 2) {
        if (!std::strcmp(argv[i], "--store"))
            sim::WriteFile(kStore, Contents(argv[i + 1]));
        if (!std::strcmp(argv[i], "--records"))
            records_path = argv[i + 1];
        events |= !std::strcmp(argv[i], "--events");
        adds |= !std::strcmp(argv[i], "--adds");
    }
    bool found = false;
    dl_iterate_phdr(PrintLoadAddress, &found);
    if (!found) {
        std::fprintf(stderr, "%s is not loaded\n", kLibrary);
        return 1;
    }
    sim::SetTracing(false);
    if (events) {
        std::printf("records %u\n", RunEvents());
        return 0;
    }
    if (adds) {
        std::printf("records %u\n", RunAdds());
        return 0;
    }
    sim::StaticArrays &arrays = sim::CallerArrays();
    OXA_AddDefaultStaticSensor(arrays.slots, arrays.entries, &arrays.count);
    std::printf("records %u\n", arrays.count);
    if (!records_path.empty()) {
        std::ofstream out(records_path, std::ios::binary);
        out.write(reinterpret_cast<const char *>(arrays.slots), long{arrays.count} * SDR_SLOT_SIZE);
    }
    return 0;
}
