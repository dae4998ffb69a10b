// SPDX-License-Identifier: GPL-3.0-or-later
//
// A firmware for the recorder: the simulated platform is a shared object here, as the functions of a BMC are, so that
// liboxacapture.so can stand before it.
//   firmware passes BOARD PROFILE...    a static pass of each
//   firmware day BOARD                  thresholds, sensors that come and go, events
//   firmware threads BOARD              four threads that write events and look sensors up
//   firmware many BOARD                 three hundred threads one after the other, then four at once
//   firmware signals BOARD PROFILE      passes that signals interrupt, whose handler calls functions of the platform
//   firmware closes BOARD FILE          passes, in between every descriptor is closed and the file is written
//   firmware loop BOARD PROFILE         passes until it is killed
//   firmware time BOARD PROFILE TIMES   nanoseconds of the fastest pass
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <pthread.h>
#include <sys/time.h>
#include <unistd.h>

#include "oxa/exports.h"
#include "oxa/platform.h"
#include "oxa/simulator.h"

namespace {

[[noreturn]] void End(const char *why) {
    std::fprintf(stderr, "firmware: %s\n", why);
    std::exit(2);
}

// A pass without a count is an answer too.
void Pass(OxaSimulator *simulator, const char *profile) {
    if (oxa_simulator_run(simulator, profile) != 0)
        std::printf("%s: %s\n", profile, oxa_simulator_error());
    else
        std::printf("%s: %zu sensors\n", profile, oxa_simulator_count(simulator));
}

SpecificSensorParam Description(uint32_t kind, uint8_t device, uint8_t slot) {
    SpecificSensorParam param{};
    param.dwSensorDevType = kind;
    param.ucDeviceType = device;
    param.SlotId = slot;
    param.wBitmap = 0x0018;
    param.ucUNR = 110;
    param.ucUC = 100;
    param.ucUNC = 90;
    return param;
}

// Every row of the table of generators with a few device types, twice, so that the second time finds what it wrote.
void ComeAndGo() {
    constexpr uint8_t kDevices[] = {1, 9, 59};
    for (int again = 0; again < 2; ++again)
        for (uint32_t row = 0; row < g_dwAddSDRHndlrCnt; ++row)
            for (const uint8_t device : kDevices) {
                SpecificSensorParam param = Description(g_atAddSDRHndlrTab[row].dwSensorDevType, device, 3);
                const uint32_t result = SDR_AddSpecificSensor(&param);
                std::printf("add %u %u: %u\n", row, device, result);
            }
    SpecificSensorParam supply = Description(0xFF0A, 1, 1);
    std::printf("delete: %d\n", SDR_DeleteSpecificSDR(&supply));
    const uint8_t status[20] = {1, 2, 3};
    std::printf("sub card: %u\n", SendSubCardStatusToFRU(status));
}

void WriteStore() {
    uint8_t slots[3 * SDR_SLOT_SIZE] = {};
    for (size_t at = 0; at < sizeof slots; ++at)
        slots[at] = static_cast<uint8_t>(at * 7);
    std::printf("store: %d\n", writeExtSDRFile(slots, sizeof slots));
    uint8_t back[EXT_SLOT_MAX * SDR_SLOT_SIZE];
    std::printf("store: %d\n", readExtSDRFile(back, sizeof back));
    std::printf("entries: %u\n", getExtDevTabCount());
}

void WriteEvents() {
    const LeakageInfo leak{0, 1};
    const uint8_t record[16] = {0, 0, 2, 0, 0, 0, 0, 0x20, 0, 4, 1, 7, 1, 0x50};
    std::printf("events: %u %u %u %u %u %u\n", addPOSTErrorSel(), addMemPredictiveFault(1, 1),
                addCPUError(0, 1, 2, 3, 1), addDiskSEL(4, 2, 1, 0), addLeakageSel(1, &leak),
                ipmi_add_sel_entry(record));
    std::printf("power: %u\n", addPowerDropSEL(1, 0, 3, 0));
}

// The firmware's own: it is no entry's, and longer than anything that the library prints.
void PrintLong() {
    static char text[100000], to[sizeof text];
    std::memset(text, 'x', sizeof text - 1);
    const int length = snprintf_s(to, sizeof to, "%s", text);
    std::printf("printed: %d %zu\n", length, std::strlen(to));
}

void Day() {
    InitSdrThresholdInfoFromFile(0);
    const uint8_t limits[8] = {120, 110, 100, 1, 2, 3, 0, 0};
    SaveSdrThresholdInfoInFile("NIC_TEMP_03", limits, 0x3F);
    ComeAndGo();
    WriteStore();
    WriteEvents();
    std::printf("ids: %u %u\n", GetSdrFruIdOffset(), GetNoUsedFruIdForPurchaseCard());
    std::printf("registry: %u %d\n", isHasRegister(2, 1), isNeedRegisterHddSdr());
    PrintLong();
    SDR_AddSpecificSensor(nullptr);
    OXA_AddDefaultStaticSensor(nullptr, nullptr, nullptr);
}

void *WriteMany(void *) {
    for (int i = 0; i < 50; ++i) {
        addPOSTErrorSel();
        SnrQuery query{};
        query.dwSensorDevType = g_atAddSDRHndlrTab[0].dwSensorDevType;
        query.ucDeviceType = 1;
        getSensorInfo(&query, 3, 0);
    }
    return nullptr;
}

void Threads() {
    pthread_t threads[4];
    for (pthread_t &thread : threads)
        if (pthread_create(&thread, nullptr, WriteMany, nullptr) != 0)
            End("no thread");
    for (const pthread_t &thread : threads)
        pthread_join(thread, nullptr);
}

void *WriteOne(void *) {
    addPOSTErrorSel();
    return nullptr;
}

void ManyThreads() {
    for (int i = 0; i < 300; ++i) {
        pthread_t thread;
        if (pthread_create(&thread, nullptr, WriteOne, nullptr) != 0)
            End("no thread");
        pthread_join(thread, nullptr);
    }
    Threads();
}

void AskInBetween(int) {
    const int before = errno;
    access("/", F_OK);
    errno = before;
}

void PassesWithSignals(OxaSimulator *simulator, const char *profile) {
    std::signal(SIGALRM, AskInBetween);
    const itimerval often{{0, 100}, {0, 100}};
    setitimer(ITIMER_REAL, &often, nullptr);
    for (int i = 0; i < 100; ++i)
        oxa_simulator_run(simulator, profile);
    const itimerval never{};
    setitimer(ITIMER_REAL, &never, nullptr);
}

// Under the number of a descriptor that was closed stands a file of the program's own.
void CloseAll(OxaSimulator *simulator, const char *path) {
    Pass(simulator, "default");
    for (int fd = 3; fd < 100; ++fd)
        close(fd);
    const int fd = open(path, O_RDWR | O_CREAT | O_TRUNC, 0600);
    const char line[] = "the program's own\n";
    for (int i = 0; i < 10000; ++i)
        if (write(fd, line, sizeof line - 1) < 0)
            End("not written");
    for (int i = 0; i < 10; ++i)
        Pass(simulator, "kestrin");
}

double Now() {
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

void Time(OxaSimulator *simulator, const char *profile, int times) {
    double least = 1e18;
    for (int i = 0; i < times; ++i) {
        const double before = Now();
        if (oxa_simulator_run(simulator, profile) != 0)
            End(oxa_simulator_error());
        const double took = Now() - before;
        least = took < least ? took : least;
    }
    std::printf("%.0f\n", least);
}

} // namespace

int main(int argc, char **argv) {
    if (argc < 3)
        End("what, and which board?");
    const char *what = argv[1];
    OxaSimulator *simulator = oxa_simulator_open(argv[2]);
    if (simulator == nullptr)
        End(oxa_simulator_error());
    if (std::strcmp(what, "passes") == 0)
        for (int i = 3; i < argc; ++i)
            Pass(simulator, argv[i]);
    else if (std::strcmp(what, "day") == 0)
        Day();
    else if (std::strcmp(what, "threads") == 0)
        Threads();
    else if (std::strcmp(what, "many") == 0)
        ManyThreads();
    else if (std::strcmp(what, "signals") == 0 && argc == 4)
        PassesWithSignals(simulator, argv[3]);
    else if (std::strcmp(what, "closes") == 0 && argc == 4)
        CloseAll(simulator, argv[3]);
    else if (std::strcmp(what, "time") == 0 && argc == 5)
        Time(simulator, argv[3], std::atoi(argv[4]));
    else if (std::strcmp(what, "loop") == 0 && argc == 4)
        for (;;)
            oxa_simulator_run(simulator, argv[3]);
    else
        End("what?");
    oxa_simulator_close(simulator);
}
