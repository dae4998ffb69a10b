// SPDX-License-Identifier: GPL-3.0-or-later
//
// duplicate_scan FILE [Google Benchmark options]: every record of the Default set looked up in a full store, by the
// library and by a plain comparison of names.  Reading the store is the same on both sides and is shown alone, too.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>

#include "bench/recording.h"
#include "bench/thin_platform.h"
#include "oxa/store.h"

namespace {

bench::Bytes g_records;
uint8_t g_image[EXT_SLOT_MAX * SDR_SLOT_SIZE];

bool PlainlyExists(const uint8_t *record) {
    const int32_t bytes = readExtSDRFile(g_image, sizeof(g_image));
    for (int32_t at = 0; at + int32_t{SDR_SLOT_SIZE} <= bytes; at += SDR_SLOT_SIZE) {
        const uint8_t *slot = g_image + at;
        if (slot[SDR_RECORD_TYPE] != record[SDR_RECORD_TYPE])
            continue;
        const size_t length = std::max(bench::NameLength(slot), bench::NameLength(record));
        if (memcmp(slot + bench::NameOffset(slot), record + bench::NameOffset(record), length) == 0)
            return true;
    }
    return false;
}

template <typename Lookup> void LookUpAll(benchmark::State &state, Lookup lookup) {
    size_t found = 0;
    for (auto _ : state)
        for (size_t at = 0; at < g_records.size(); at += SDR_SLOT_SIZE)
            found += lookup(&g_records[at]);
    if (found != 0)
        state.SkipWithError("a record of the pass is in the store");
}

void ReadStore(benchmark::State &state) {
    LookUpAll(
        state, [](const uint8_t *) { return readExtSDRFile(g_image, sizeof(g_image)) <= 0; });
}

void DuplicateScan(benchmark::State &state) {
    LookUpAll(
        state, [](const uint8_t *record) { return checkSensorExist(record) != 0; });
}

void PlainScan(benchmark::State &state) {
    LookUpAll(state, PlainlyExists);
}

BENCHMARK(ReadStore)->Name("look_up_all/read_only");
BENCHMARK(DuplicateScan)->Name("look_up_all/library");
BENCHMARK(PlainScan)->Name("look_up_all/plain");

} // namespace

int main(int argc, char **argv) {
    benchmark::Initialize(&argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: duplicate_scan FILE [Google Benchmark options]\n");
        return 2;
    }
    try {
        g_records = bench::Load(argv[1]).passes.at("default").slots;
        bench::Store store;
        store.Fill(bench::FullStore(g_records));
        benchmark::RunSpecifiedBenchmarks();
    } catch (const std::exception &error) {
        std::fprintf(stderr, "duplicate_scan: %s\n", error.what());
        return 1;
    }
    return 0;
}
