// SPDX-License-Identifier: GPL-3.0-or-later
#include "serve/bmc.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "base/errors.h"
#include "base/output.h"
#include "base/text.h"
#include "simulator/bmc_session_freeipmi.h"
#include "simulator/temporary_folder.h"

namespace workbench {
namespace {

namespace fs = std::filesystem;

constexpr const char *kPluginName = "oxa_ipmi_sim_plugin.so";
constexpr int kStartSeconds = 10;
constexpr int kPingMs = 20;  // between two questions whether it listens
constexpr int kEndMs = 2000; // to end by itself

constexpr uint8_t kGetRepositoryInfo = 0x20;
constexpr uint8_t kSetSelTime = 0x49;

[[noreturn]] void FailWithErrno(const std::string &what) {
    throw SetError(what + ": " + std::strerror(errno));
}

sockaddr_in Loopback(uint16_t port) {
    sockaddr_in out{};
    out.sin_family = AF_INET;
    out.sin_port = htons(port);
    out.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return out;
}

// A datagram socket that closes itself.
class Socket {
public:
    Socket() : fd_(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
        if (fd_ < 0)
            FailWithErrno("no socket");
    }
    ~Socket() {
        close(fd_);
    }
    Socket(const Socket &) = delete;
    Socket &operator=(const Socket &) = delete;
    int fd() const {
        return fd_;
    }

private:
    int fd_;
};

// An RMCP presence ping; whoever listens on the port answers it.
bool AnswersPing(const Socket &socket, uint16_t port) {
    static constexpr uint8_t kPing[] = {0x06, 0x00, 0xFF, 0x06, 0x00, 0x00,
                                        0x11, 0xBE, 0x80, 0x00, 0x00, 0x00};
    const sockaddr_in to = Loopback(port);
    sendto(socket.fd(), kPing, sizeof kPing, 0, reinterpret_cast<const sockaddr *>(&to), sizeof to);
    pollfd wait{socket.fd(), POLLIN, 0};
    uint8_t answer[64];
    return poll(&wait, 1, kPingMs) > 0 && recv(socket.fd(), answer, sizeof answer, 0) > 0;
}

// In the child: nothing of the parent's but its commands, and no life of its own.
[[noreturn]] void BecomeSimulator(const std::string &program, const std::string &folder, int input,
                                  pid_t parent) {
    setpgid(0, 0); // Ctrl-C is for the parent, which ends it
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    std::signal(SIGPIPE, SIG_DFL);
    const int talk = open("/dev/null", O_WRONLY | O_CLOEXEC); // every message of every session
    const int errors = open((folder + "/log").c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (getppid() != parent || dup2(input, 0) < 0 || dup2(talk, 1) < 0 || dup2(errors, 2) < 0)
        _exit(127);
    execl(program.c_str(), "ipmi_sim", "-p", "-c", (folder + "/lan.conf").c_str(), "-f",
          (folder + "/sim.emu").c_str(), "-s", (folder + "/state").c_str(), nullptr);
    _exit(127);
}

} // namespace

std::string TemporaryFolder::Pattern() {
    const char *given = std::getenv("TMPDIR");
    const std::string above = given != nullptr && given[0] != '\0' ? given : "/tmp";
    return above + "/oxa-bmc.XXXXXX";
}

TemporaryFolder::TemporaryFolder() : path_(Pattern()) {
    const std::string above = fs::path(path_).parent_path().string();
    if (path_.find('"') != std::string::npos)
        throw InputError(above + ": ipmi_sim takes no path with quotes");
    if (!sim::MakeTemporaryFolder(path_))
        throw InputError(above + ": cannot make a folder: " + std::strerror(errno));
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string FindSimulator() {
    const char *path = std::getenv("PATH");
    std::string rest = path != nullptr ? path : "";
    while (!rest.empty()) {
        const size_t end = std::min(rest.find(':'), rest.size());
        const std::string candidate = rest.substr(0, end) + "/ipmi_sim";
        if (end > 0 && access(candidate.c_str(), X_OK) == 0)
            return candidate;
        rest.erase(0, end + 1);
    }
    throw SetError("ipmi_sim is not installed (package openipmi)");
}

std::string FindPlugin() {
    const char *given = std::getenv("OXA_IPMI_SIM_PLUGIN");
    std::error_code ignored;
    const fs::path folder = fs::read_symlink("/proc/self/exe", ignored).parent_path();
    const fs::path installed = folder / OXA_INSTALLED_PLUGINS / kPluginName;
    const std::string path = given != nullptr                 ? std::string(given)
                             : fs::exists(installed, ignored) ? installed.string()
                                                              : (folder / kPluginName).string();
    if (access(path.c_str(), R_OK) != 0)
        throw SetError(path +
                       " is missing: ipmi_sim's SDR repository, built where the package libopenipmi-dev is "
                       "installed");
    return path;
}

uint16_t SettlePort(uint16_t port) {
    const Socket socket;
    sockaddr_in address = Loopback(port);
    if (bind(socket.fd(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
        throw InputError("--port " + std::to_string(port) + ": " + std::strerror(errno));
    socklen_t size = sizeof address;
    getsockname(socket.fd(), reinterpret_cast<sockaddr *>(&address), &size);
    return ntohs(address.sin_port);
}

SimulatorProcess::SimulatorProcess(const std::string &program, const std::string &folder, uint16_t port)
    : folder_(folder) {
    const pid_t parent = getpid();
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        FailWithErrno("no pipe");
    process_ = fork();
    if (process_ == 0)
        BecomeSimulator(program, folder, ends[0], parent);
    close(ends[0]);
    input_ = ends[1];
    if (process_ < 0)
        FailWithErrno("no process");
    const Socket socket;
    for (int tries = kStartSeconds * 1000 / kPingMs; IsRunning() && tries > 0; --tries)
        if (AnswersPing(socket, port))
            return;
    End();
    throw SetError("ipmi_sim does not start: " + LastWords());
}

SimulatorProcess::~SimulatorProcess() {
    End();
}

void SimulatorProcess::End() {
    if (input_ >= 0)
        close(input_);
    input_ = -1;
    if (process_ <= 0)
        return;
    kill(process_, SIGTERM);
    for (int waited = 0; waited < kEndMs && IsRunning(); waited += kPingMs)
        usleep(kPingMs * 1000);
    if (!IsRunning())
        return;
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
    process_ = -1;
}

bool SimulatorProcess::IsRunning() {
    if (process_ > 0 && waitpid(process_, nullptr, WNOHANG) == process_)
        process_ = -1;
    return process_ > 0;
}

void SimulatorProcess::Command(const std::string &lines) {
    WriteAll(input_, lines); // its end is noticed elsewhere
}

std::string SimulatorProcess::LastWords() const {
    std::ifstream log(folder_ + "/log");
    std::string last = "it says nothing";
    for (std::string line; std::getline(log, line);)
        if (!line.empty() && !line.starts_with("IPMI Simulator version"))
            last = OneLine(line);
    return last;
}

std::string LanConfiguration(const std::string &plugin, const std::string &records_file, uint16_t port) {
    return "name \"oxa\"\n"
           "loadlib \"" +
           plugin + "\" \"" + records_file +
           "\"\n"
           "set_working_mc 0x20\n"
           "  startlan 1\n"
           "    addr 127.0.0.1 " +
           std::to_string(port) +
           "\n"
           "    priv_limit admin\n"
           "    allowed_auths_callback none md2 md5 straight\n"
           "    allowed_auths_user none md2 md5 straight\n"
           "    allowed_auths_operator none md2 md5 straight\n"
           "    allowed_auths_admin none md2 md5 straight\n"
           "    guid a123456789abcdefa123456789abcdef\n"
           "  endlan\n"
           "  user 2 true \"ipmiusr\" \"test\" admin 10 none md2 md5 straight\n";
}

unsigned CountRecordsAndSetClock(uint16_t port) {
    std::string reason;
    const auto session = sim::SessionsWith({.port = port})(reason);
    if (session == nullptr)
        throw SetError("ipmi_sim gives no session: " + reason);
    const auto info = session->Send(sim::kStorage, kGetRepositoryInfo, {}, reason);
    if (!info || info->size() < 4 || (*info)[0] != 0)
        throw SetError("ipmi_sim does not answer for its repository: " + (info ? "refused" : reason));
    const auto now = static_cast<uint32_t>(std::time(nullptr));
    const uint8_t stamp[] = {static_cast<uint8_t>(now), static_cast<uint8_t>(now >> 8),
                             static_cast<uint8_t>(now >> 16), static_cast<uint8_t>(now >> 24)};
    session->Send(sim::kStorage, kSetSelTime, stamp, reason); // without it events have no date
    return (*info)[2] | (*info)[3] << 8;
}

} // namespace workbench
