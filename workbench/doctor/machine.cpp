// SPDX-License-Identifier: GPL-3.0-or-later
#include "doctor/machine.h"

#include <cerrno>
#include <cstring>
#include <deque>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>

#include "base/errors.h"
#include "base/output.h"
#include "base/text.h"

namespace workbench {
namespace {

constexpr char kDiskFaultTest[] = "var/test_disk_fault_predict";
constexpr int kMostLinks = 40;    // as many as the kernel follows
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

// The folder of a file as the machine finds it: links on the way lead to its own root, not to that of the desk.
std::filesystem::path FolderOf(const std::filesystem::path &root, const std::string &file) {
    const std::filesystem::path folder = std::filesystem::path(file).parent_path();
    std::deque<std::filesystem::path> steps(folder.begin(), folder.end());
    std::filesystem::path at; // below the root
    for (int links = 0; !steps.empty();) {
        const std::filesystem::path step = steps.front();
        steps.pop_front();
        if (step.empty() || step == ".")
            continue;
        std::error_code no_link;
        const std::filesystem::path target = std::filesystem::read_symlink(root / at / step, no_link);
        if (step == "..") {
            at = at.parent_path();
        } else if (no_link) {
            at /= step;
        } else {
            if (++links > kMostLinks)
                throw InputError((root / file).string() + ": cannot read: " + std::strerror(ELOOP));
            at = target.is_absolute() ? std::filesystem::path() : at;
            const std::filesystem::path way = target.relative_path();
            steps.insert(steps.begin(), way.begin(), way.end());
        }
    }
    return root / at;
}

// A link in the place of the file itself is a finding.
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
    file.unread = static_cast<size_t>(facts.st_size) - file.bytes.size();
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
        const std::filesystem::path name = std::filesystem::path(file.path).filename();
        Read((FolderOf(folder, file.path) / name).string(), file);
        any = any || file.kind != FileKind::kAbsent;
        paths.push_back(file.path);
    }
    if (!any)
        throw InputError("--root " + folder + ": no file of a machine is in it; there would be " +
                         Join(paths, ", "));
    const std::filesystem::path test =
        FolderOf(folder, kDiskFaultTest) / std::filesystem::path(kDiskFaultTest).filename();
    machine.disk_fault_test = std::filesystem::exists(std::filesystem::symlink_status(test, error));
    return machine;
}

void CheckNew(const std::string &folder) {
    std::error_code error;
    const std::filesystem::file_type type = std::filesystem::symlink_status(folder, error).type();
    if (type == std::filesystem::file_type::none)
        throw InputError("--repair " + folder + ": " + error.message());
    if (type != std::filesystem::file_type::not_found)
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
