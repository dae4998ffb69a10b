// SPDX-License-Identifier: GPL-3.0-or-later
//
// One static pass over a board, for count_instructions.py: says where the library's code lies, runs the pass
// with tracing off and says how many records came out.
//     instruction_probe BOARD [--store FILE] [--records FILE]
// --store: content of the extended store; --records: where to write the records of the pass.
#include <link.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

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

} // namespace

int main(int argc, char **argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: instruction_probe BOARD [--store FILE] [--records FILE]\n");
        return 2;
    }
    std::string records_path;
    sim::Start(sim::LoadBoardFile(argv[1]));
    for (int i = 2; i + 1 < argc; i += 2) {
        if (!std::strcmp(argv[i], "--store"))
            sim::WriteFile(kStore, Contents(argv[i + 1]));
        if (!std::strcmp(argv[i], "--records"))
            records_path = argv[i + 1];
    }
    bool found = false;
    dl_iterate_phdr(PrintLoadAddress, &found);
    if (!found) {
        std::fprintf(stderr, "%s is not loaded\n", kLibrary);
        return 1;
    }
    sim::SetTracing(false);
    sim::StaticArrays &arrays = sim::CallerArrays();
    OXA_AddDefaultStaticSensor(arrays.slots, arrays.entries, &arrays.count);
    std::printf("records %u\n", arrays.count);
    if (!records_path.empty()) {
        std::ofstream out(records_path, std::ios::binary);
        out.write(reinterpret_cast<const char *>(arrays.slots), long{arrays.count} * SDR_SLOT_SIZE);
    }
    return 0;
}
