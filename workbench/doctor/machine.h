// SPDX-License-Identifier: GPL-3.0-or-later
//
// The files of a machine as they lie under a folder, whatever state they are in.
#ifndef OXA_WORKBENCH_DOCTOR_MACHINE_H
#define OXA_WORKBENCH_DOCTOR_MACHINE_H

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace workbench {

enum class FileKind { kAbsent, kRegular, kOther };

struct MachineFile {
    std::string path; // below the folder: "var/tmp/extSDR.dat"
    FileKind kind = FileKind::kAbsent;
    std::string what = {}; // of kOther: "a folder"
    std::vector<uint8_t> bytes = {};
    size_t unread = 0; // bytes of the file behind those
    size_t Size() const {
        return bytes.size() + unread;
    }
    bool Has() const {
        return kind == FileKind::kRegular;
    }
    void Put(std::vector<uint8_t> content) {
        kind = FileKind::kRegular;
        bytes = std::move(content);
        unread = 0;
    }
};

enum Which { kLimits, kStore, kEntries, kRecordFile, kFruIdFile, kRepository, kFiles };

struct Machine {
    Machine();
    std::array<MachineFile, kFiles> files;
    bool disk_fault_test = false; // /var/test_disk_fault_predict is there
    MachineFile &operator[](Which which) {
        return files[which];
    }
    const MachineFile &operator[](Which which) const {
        return files[which];
    }
};

// InputError: there is no such folder, none of the files is in it, or one of them cannot be read.
Machine ReadMachine(const std::string &folder);

// A folder that is not there yet gets the files; InputError.
void CheckNew(const std::string &folder);
void WriteMachine(const std::string &folder, const Machine &machine);

} // namespace workbench
#endif
