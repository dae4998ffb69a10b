// SPDX-License-Identifier: GPL-3.0-or-later
//
// ipmi_sim as a BMC on loopback: its files in a folder of their own, its process, its end.
#ifndef OXA_WORKBENCH_SERVE_BMC_H
#define OXA_WORKBENCH_SERVE_BMC_H

#include <cstdint>
#include <string>
#include <sys/types.h>

namespace workbench {

// A folder that goes with everything in it.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;
    const std::string &path() const {
        return path_;
    }
    static std::string Pattern(); // of its path, as mkdtemp takes it

private:
    std::string path_;
};

// What there must be; SetError with the package when it is not there.
std::string FindSimulator(); // ipmi_sim
std::string FindPlugin();    // its SDR repository, oxa_ipmi_sim_plugin.so

// Port 0: one that is free.  InputError for one that is in use.
uint16_t SettlePort(uint16_t port);

// The process.  Starts when it is made (SetError with the simulator's own words), is gone when it is destroyed,
// also when this process is killed.
class SimulatorProcess {
public:
    SimulatorProcess(const std::string &program, const std::string &folder, uint16_t port);
    ~SimulatorProcess();
    SimulatorProcess(const SimulatorProcess &) = delete;
    SimulatorProcess &operator=(const SimulatorProcess &) = delete;

    bool IsRunning();                       // reaps it when it is not
    void Command(const std::string &lines); // in the simulator's own language
    std::string LastWords() const;

private:
    void End();

    std::string folder_;
    pid_t process_ = -1;
    int input_ = -1; // the simulator's standard input
};

// The configuration of the LAN, with the records that the repository begins with.
std::string LanConfiguration(const std::string &plugin, const std::string &records_file, uint16_t port);

// How many records the BMC's repository says it has; sets the clock of its event log.  SetError when it does not
// answer.
unsigned CountRecordsAndSetClock(uint16_t port);

} // namespace workbench
#endif
