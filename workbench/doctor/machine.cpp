// SPDX-License-Identifier: GPL-3.0-or-later
#include "doctor/machine.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>

#include "base/errors.h"
#include "base/output.h"
#include "base/text.h"

namespace workbench {
namespace {

constexpr size_t kMost = 1 << 20; // more is read of no file: the longest that is right has not a tenth of it

std::string KindText(const std::string &path, mode_t mode) {
    if (S_ISLNK(mode)) {
        std::error_code ignored;
        return "a link to " + Printable(std::filesystem::read_symlink(path, ignored).string());
    }
    return S_ISDIR(mode)                    ? "a folder"
           : S_ISFIFO(mode)                 ? "a pipe"
           : S_ISCHR(mode) || S_ISBLK(mode) ? "a device"
                                            : "a socket";
}

// Links are not followed: on a machine they lead to its own root, not to that of the desk.
void Read(const std::string &path, MachineFile &file) {
    struct stat facts {};
    if (lstat(path.c_str(), &facts) != 0) {
        if (errno == ENOENT || errno == ENOTDIR)
            return;
        throw InputError(path + ": cannot read: " + std::strerror(errno));
    }
    if (!S_ISREG(facts.st_mode)) {
        file.kind = FileKind::kOther;
        file.what = KindText(path, facts.st_mode);
        return;
    }
    std::ifstream stream(path, std::ios::binary);
    std::vector<uint8_t> bytes(std::min<size_t>(kMost, static_cast<size_t>(facts.st_size)));
    if (!stream.read(reinterpret_cast<char *>(bytes.data()), static_cast<std::streamsize>(bytes.size())))
        throw InputError(path + ": cannot read: " + std::strerror(errno));
    file.Put(std::move(bytes));
}

} // namespace

Machine::Machine()
    : files{{{"conf/BMC1/sensor_threshold.dat"},
             {"var/tmp/extSDR.dat"},
             {"var/tmp/extDevTab.dat"},
             {"var/SpecificSDRRec"},
             {"var/tmp/purchaseCardFruId"},
             {"repository.sdr"}}} {}

Machine ReadMachine(const std::string &folder) {
    std::error_code error;
    if (!std::filesystem::is_directory(folder, error))
        throw InputError("--root " + folder + ": " + (error ? error.message() : "no folder"));
    Machine machine;
    std::vector<std::string> paths;
    bool any = false;
    for (MachineFile &file : machine.files) {
        Read(folder + "/" + file.path, file);
        any = any || file.kind != FileKind::kAbsent;
        paths.push_back(file.path);
    }
    if (!any)
        throw InputError("--root " + folder + ": no file of a machine is in it; there would be " +
                         Join(paths, ", "));
    machine.disk_fault_test = std::filesystem::exists(folder + "/var/test_disk_fault_predict", error);
    return machine;
}

void CheckNew(const std::string &folder) {
    std::error_code ignored;
    if (std::filesystem::symlink_status(folder, ignored).type() != std::filesystem::file_type::not_found)
        throw InputError("--repair " + folder + ": is there already; name a folder that is not");
}

void WriteMachine(const std::string &folder, const Machine &machine) {
    CheckNew(folder);
    for (const MachineFile &file : machine.files) {
        if (!file.Has())
            continue;
        const std::string path = folder + "/" + file.path;
        std::error_code error;
        std::filesystem::create_directories(std::filesystem::path(path).parent_path(), error);
        if (error)
            throw InputError("--repair " + folder + ": " + error.message());
        WriteFileAtomically(path, {file.bytes.begin(), file.bytes.end()});
    }
}

} // namespace workbench
