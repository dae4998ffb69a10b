// SPDX-License-Identifier: GPL-3.0-or-later
//
// A machine that is served: a board's set, or an empty repository, behind a BMC simulator with readings.
#ifndef OXA_WORKBENCH_SERVE_MACHINE_H
#define OXA_WORKBENCH_SERVE_MACHINE_H

#include <ios>
#include <memory>
#include <string>
#include <vector>

#include "serve/bmc.h"
#include "serve/readings.h"
#include "serve/sensors.h"
#include "sets/static_set.h"

namespace workbench {

class ServedMachine {
public:
    // Starts it; `set` is that of the board, empty for an empty repository.  SetError with the simulator's own words.
    ServedMachine(const RunOptions &run, StaticSet set, uint16_t port);

    // Sensors that came since the last time get a reading; readings that people wrote are handed on.  SetError when the
    // simulator has ended.
    void Pass();

    bool IsEmpty() const { // at the start
        return run_.board.empty();
    }
    const RunOptions &run() const {
        return run_;
    }
    uint16_t port() const {
        return port_;
    }
    const std::string &folder() const {
        return folder_.path();
    }
    const std::string &readings() const {
        return files_.readings();
    }
    const std::vector<ServedSensor> &sensors() const {
        return sensors_;
    }

private:
    void WriteFiles();
    bool IsNewSensor(const Record &record) const;
    void ServeAdded();

    RunOptions run_;
    StaticSet set_;
    std::vector<ServedSensor> sensors_;
    const uint16_t port_;
    TemporaryFolder folder_;
    ReadingFiles files_;
    std::unique_ptr<SimulatorProcess> simulator_;
    std::streamoff fetched_ = 0; // of the records that were added
};

} // namespace workbench
#endif
