// SPDX-License-Identifier: GPL-3.0-or-later
//
// Runs every test of the program in a child of its own: the library's state has no reset.  With an option of
// GoogleTest (--gtest_filter=...) the tests named run in this one process, as a debugger likes it.
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>

namespace {

constexpr int kSkipped = 77;
constexpr unsigned kMostSeconds = 600; // a test that hangs ends by SIGALRM

// What the children write, shown only when one fails.
std::FILE *g_output = nullptr;

[[noreturn]] void RunAlone(const std::string &name) {
    alarm(kMostSeconds);
    dup2(fileno(g_output), STDOUT_FILENO);
    dup2(fileno(g_output), STDERR_FILENO);
    GTEST_FLAG_SET(filter, name);
    const int status = RUN_ALL_TESTS();
    const auto &all = *testing::UnitTest::GetInstance();
    if (status == 0 && all.test_to_run_count() != 1) {
        std::printf("%d tests are named %s\n", all.test_to_run_count(), name.c_str());
        std::exit(1);
    }
    std::exit(status == 0 && all.skipped_test_count() == 1 ? kSkipped : status);
}

std::string Ending(int status) {
    if (WIFSIGNALED(status))
        return WTERMSIG(status) == SIGALRM ? "takes more than " + std::to_string(kMostSeconds) + " s"
                                           : std::string("ended by ") + strsignal(WTERMSIG(status));
    return "exit status " + std::to_string(WEXITSTATUS(status));
}

void ShowFailure(const std::string &name, int status) {
    std::rewind(g_output);
    char part[4096];
    for (size_t got = 0; (got = std::fread(part, 1, sizeof part, g_output)) > 0;)
        std::fwrite(part, 1, got, stdout);
    std::printf("[  FAILED  ] %s: %s\n", name.c_str(), Ending(status).c_str());
}

// The exit status of the child.
int RunInChild(const std::string &name) {
    if (ftruncate(fileno(g_output), 0) != 0 || lseek(fileno(g_output), 0, SEEK_SET) != 0)
        return -1;
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0)
        RunAlone(name);
    int status = -1;
    if (child < 0 || waitpid(child, &status, 0) != child)
        return -1;
    if (status != 0 && !(WIFEXITED(status) && WEXITSTATUS(status) == kSkipped))
        ShowFailure(name, status);
    return status;
}

int RunEachInAChild() {
    int passed = 0, failed = 0, skipped = 0;
    const auto &all = *testing::UnitTest::GetInstance();
    for (int s = 0; s < all.total_test_suite_count(); ++s) {
        const testing::TestSuite &suite = *all.GetTestSuite(s);
        for (int t = 0; t < suite.total_test_count(); ++t) {
            const int status = RunInChild(std::string(suite.name()) + "." + suite.GetTestInfo(t)->name());
            int &count = status == 0                                            ? passed
                         : WIFEXITED(status) && WEXITSTATUS(status) == kSkipped ? skipped
                                                                                : failed;
            ++count;
        }
    }
    std::printf("cases: %d passed, %d failed, %d skipped\n", passed, failed, skipped);
    return failed == 0 && passed + skipped > 0 ? 0 : 1;
}

} // namespace

int main(int argc, char **argv) {
    const bool asked = argc > 1;
    testing::InitGoogleMock(&argc, argv);
    if (asked)
        return RUN_ALL_TESTS();
    g_output = std::tmpfile();
    if (g_output == nullptr)
        return 1;
    return RunEachInAChild();
}
