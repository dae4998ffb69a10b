// SPDX-License-Identifier: GPL-3.0-or-later
//
// The parts of a diagnosis.  Only doctor/ includes this.
#ifndef OXA_WORKBENCH_DOCTOR_PARTS_H
#define OXA_WORKBENCH_DOCTOR_PARTS_H

#include "doctor/doctor.h"
#include "doctor/ini_file.h"

namespace workbench {

// A record of the repository in a slot of its own, zeros behind it.
struct KeptRecord {
    uint16_t id = 0;
    size_t size = 0;
    Record slot{};
};

struct Examination {
    const Patient &patient;
    Diagnosis &out;
    bool has_repository = false;
    std::vector<KeptRecord> repository;

    const MachineFile &File(Which which) const {
        return patient.machine[which];
    }
    void Add(Which file, const std::string &rule, const std::string &place, const std::string &text,
             const std::string &then, const std::string &mend = "") {
        out.findings.push_back({rule, file, place, text, then, mend});
    }
    // False, with a finding where something else is in its place, when there is no file to look into.
    bool IsThere(Which file, const std::string &then);
    // A finding where only the beginning of the file was read.  Of limits and store the library reads less itself.
    void TellUnread(Which file, const std::string &then);
    // An INI file, with findings for lines that do not belong there; `then_torn`: what a cut number does.
    IniText ReadLines(Which file, const std::string &then_torn);
    const KeptRecord *Find(uint16_t id) const;
    bool IsStatic(const uint8_t *record) const; // one of the board's static set
};

void ExamineRepository(Examination &about); // before all others
void ExamineLimits(Examination &about);
void ExamineStore(Examination &about); // records and entries
void ExamineRecordFile(Examination &about);
void ExamineFruIdFile(Examination &about);

// What keeps these bytes, a slot, from being a record that the library or its platform writes; empty: nothing.
std::string RecordFault(const uint8_t *slot);
std::string Quoted(const uint8_t *record);   // "'CPU1_TEMP'", printable
std::string Shown(const KeptRecord &record); // "record 3 ('PSU1_FRU')"

constexpr char kLeftOut[] = "left out"; // what a mended copy does with a key
constexpr uint8_t kFirstPsuFruId = 16;  // of a power supply 0, which there is not

} // namespace workbench
#endif
