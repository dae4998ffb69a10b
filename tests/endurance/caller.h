// SPDX-License-Identifier: GPL-3.0-or-later
//
// A process that has the library, as one runs on a BMC: sensors, power supplies and cards come and go, events and limits
// of users are reported, static passes run.  It does what the public headers tell a caller to do, knows what every file
// must hold, and holds the library to it.  All choices come from a seed.
#ifndef OXA_TESTS_ENDURANCE_CALLER_H
#define OXA_TESTS_ENDURANCE_CALLER_H

#include <array>
#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "endurance/journal.h"
#include "endurance/repository.h"
#include "runtime/stored.h"
#include "simulator/board.h"

namespace endurance {

using Slot = std::array<uint8_t, SDR_SLOT_SIZE>;

struct StoredSensor {
    Slot record = {};
    DevTabEntry entry = {};
    uint16_t id = 0; // in the repository
};

using workbench::EntryFits;
using workbench::IsLocatorOf;
using workbench::IsSensorRecord;
using workbench::kPsuEntity;
using workbench::TypeAndName;

class Caller {
public:
    // Starts the simulated platform under root and takes the saved limits in; fails (std::runtime_error) when the library
    // does not do what it must.
    Caller(uint64_t seed, const sim::Board &board, uint32_t profile, const std::string &root,
           Journal &journal, Repository &repository);

    void Step();
    void CheckEverything(); // files, repository, platform: throws at the first contradiction

    // After a kill: what the library makes of the files as they are, then everything put right from the repository.
    void CheckStart();
    void Repair();

    std::string Tally() const; // how often each step was taken, and how often it was declined

private:
    struct Kind {
        const char *name;
        unsigned per_mille;
        void (Caller::*run)();
    };
    struct Count {
        uint64_t taken = 0, declined = 0;
    };
    struct Card {
        size_t row = 0;
        uint8_t fru_id = 0;
        uint16_t id = 0;
    };
    static const std::vector<Kind> &Kinds();

    void AddSensor();
    void RemoveSensor();
    void SupplyComes();
    void SupplyGoes();
    void CardComes();
    void CardGoes();
    void SendEvent();
    void SaveThreshold();
    void Pass();
    void Ask();

    uint32_t Any(uint32_t below) {
        return static_cast<uint32_t>(random_() % below);
    }
    void Decline() {
        ++counts_[current_].declined;
    }
    void LearnStaticSets(const sim::Board &board, const std::string &root);
    SpecificSensorParam AnySensor();
    uint8_t FreeNumber() const;
    void Remember(const KeptRecord &record, uint8_t device_type, uint8_t number);
    void WriteStore();
    void CheckStoreIsAsWritten();
    void KeepThreshold(const char (&name)[17], const uint8_t (&info)[8], uint16_t mask);
    void CheckStore();
    void CheckSupplies();
    void CheckCards();
    void CheckThresholds();
    void CheckRunningTable();
    void CheckCount(uint32_t profile, size_t slots);
    bool FailOneCallSometimes();

    std::mt19937_64 random_;
    Journal &journal_;
    Repository &repository_;
    uint32_t profile_;
    std::map<uint32_t, std::vector<std::string>> static_names_; // by profile, of a pass with an empty store
    std::vector<StoredSensor> sensors_;
    std::vector<Card> cards_;
    std::vector<Count> counts_;
    size_t current_ = 0;
};

} // namespace endurance
#endif
