// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/sdr_compiler.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>

#include "bench/measure.h"
#include "bench/sdr_text.h"

extern char **environ;

namespace bench {
namespace {

constexpr int kRepetitions = 9;

class Directory {
public:
    Directory() {
        std::string pattern = (std::filesystem::temp_directory_path() / "oxa-bench-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("no directory for sdrcomp");
        path_ = pattern;
    }
    ~Directory() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    Directory(const Directory &) = delete;
    Directory &operator=(const Directory &) = delete;

    std::string File(const char *name) const {
        return path_ + "/" + name;
    }

private:
    std::string path_;
};

double Seconds(const timeval &time) {
    return double(time.tv_sec) + 1e-6 * double(time.tv_usec);
}

// CPU time of the compiler's process, nothing when it cannot be run or refuses the text.
std::optional<double> Compile(const std::string &source, const std::string &target) {
    std::string words[] = {"sdrcomp", "-r", "-o", target, source};
    char *arguments[] = {words[0].data(), words[1].data(), words[2].data(),
                         words[3].data(), words[4].data(), nullptr};
    pid_t child = 0;
    if (posix_spawnp(&child, "sdrcomp", nullptr, nullptr, arguments, environ) != 0)
        return std::nullopt;
    int status = 0;
    rusage used = {};
    if (wait4(child, &status, 0, &used) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return std::nullopt;
    return Seconds(used.ru_utime) + Seconds(used.ru_stime);
}

bool IsInstalled() {
    const char *path = std::getenv("PATH");
    for (std::string rest = path != nullptr ? path : ""; !rest.empty();) {
        const size_t colon = rest.find(':');
        if (access((rest.substr(0, colon) + "/sdrcomp").c_str(), X_OK) == 0)
            return true;
        rest = colon == std::string::npos ? "" : rest.substr(colon + 1);
    }
    return false;
}

Bytes ReadAll(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Type to the last byte before the length of the name, without what the text has no word for.
Bytes Comparable(const uint8_t *record) {
    const bool full = record[SDR_RECORD_TYPE] == 1;
    Bytes bytes(record, record + NameOffset(record) - 1);
    memset(bytes.data(), 0, SDR_VERSION); // id
    bytes[SDR_RECORD_LENGTH] = 0;
    for (const size_t mask : {SDR_ASSERT_MASK, SDR_DEASSERT_MASK, SDR_READING_MASK})
        bytes[mask + 1] &= 0x7F;
    if (full) {
        bytes[FULL_SDR_SENSOR_INDEX] = bytes[FULL_SDR_SLOT] = 0;
    } else {
        bytes[COMPACT_SDR_SLOT] = 0;
        bytes[SDR_UNITS_1] &= 0x3F; // sdrcomp always says "no analog reading"
    }
    return bytes;
}

// How many of our records came back, byte for byte but for what Comparable leaves out and the name.
size_t CountEqual(const Bytes &slots, const Bytes &compiled) {
    size_t equal = 0, at = 0;
    for (size_t slot = 0; slot < slots.size() && at + NameOffset(&compiled[at]) <= compiled.size();
         slot += SDR_SLOT_SIZE) {
        equal += Comparable(&slots[slot]) == Comparable(&compiled[at]);
        at += SDR_RECORD_LENGTH + 1u + compiled[at + SDR_RECORD_LENGTH];
        if (at >= compiled.size())
            break;
    }
    return equal;
}

void Compare(const OurPass &ours, const Directory &directory) {
    const std::string source = directory.File("set.sdrs"), target = directory.File("set.bin");
    std::ofstream text(source);
    for (size_t at = 0; at < ours.slots.size(); at += SDR_SLOT_SIZE)
        text << RecordText(&ours.slots[at]);
    text.close();
    std::vector<double> times;
    for (int repetition = 0; repetition < kRepetitions; ++repetition) {
        const std::optional<double> time = Compile(source, target);
        if (!time) {
            std::printf("%-8s sdrcomp refuses the text\n", ours.profile);
            return;
        }
        times.push_back(*time);
    }
    const Spread compiler = SpreadOf(times);
    const double records = double(ours.slots.size() / SDR_SLOT_SIZE);
    std::printf("%-8s %7.0f %9.0f %10.0f %9.0f [%6.0f %6.0f] %8zu\n", ours.profile, records,
                records / ours.seconds, records / ours.memory_seconds, records / compiler.median,
                records / compiler.max, records / compiler.min, CountEqual(ours.slots, ReadAll(target)));
}

} // namespace

void CompareWithCompiler(const std::vector<OurPass> &passes) {
    if (!IsInstalled()) {
        std::printf("\nno comparison with sdrcomp: it is not installed (package openipmi)\n");
        return;
    }
    std::printf(
        "\nBeside it, records per second of CPU time, the same sets made by OpenIPMI's sdrcomp.\n"
        "It is other work: sdrcomp reads a text file and writes a binary one at a desk, its start\n"
        "included; a pass builds in place, device-table entries too, asks the platform, and looks up\n"
        "every record in the (empty) store.  In memory: the pass without the operating system.\n"
        "The text has no word for the reserved bytes where a sensor's index and slot stand, for the\n"
        "coding of the name, for bit 15 of a mask and for the number format of a compact record; the\n"
        "last column counts the records that are the same but for these.\n\n");
    std::printf("%-8s %7s %9s %10s %9s %15s %8s\n", "profile", "records", "pass", "in memory", "sdrcomp",
                "[min max]", "the same");
    const Directory directory;
    for (const OurPass &ours : passes)
        Compare(ours, directory);
}

} // namespace bench
