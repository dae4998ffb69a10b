// SPDX-License-Identifier: GPL-3.0-or-later
//
// faults_gate [--part NAME] [--every N] [--crash]
//   Makes every platform call that can fail fail, once and from then on, in every function that the library exports and
//   in the pass of every profile over every board; in pairs on two small boards.  After each run nothing may be left
//   open, no guard byte overwritten, no rule of the platform broken, and what is returned must be what the header says.
//   --part: entry_points, generators, passes or pairs; all when absent.   --every: every N-th fault only.
//   --crash: ends itself in the middle, for the test that a crash is told with its case.
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "faults/cases.h"
#include "faults/workers.h"

namespace {

using namespace faults;

struct Options {
    std::vector<std::string> parts = {"entry_points", "generators", "passes", "pairs"};
    uint64_t every = 1;
    bool crash = false;
};

class Runner {
public:
    Runner(const Options &options, Desk &desk, size_t first) : options_(options), desk_(desk), turn_(first) {}

    void RunCase(const Case &one) {
        std::snprintf(desk_.name, sizeof(desk_.name), "%s", one.name.c_str());
        const uint64_t calls = Run(one, 0, 0, false);
        for (uint64_t k = 1; k <= calls; ++k) {
            if (one.in_pairs) {
                for (uint64_t l = k + 1; l <= calls; ++l)
                    RunInTurn(one, k, l, false);
                continue;
            }
            RunInTurn(one, k, 0, false);
            RunInTurn(one, k, 0, true);
        }
    }

private:
    void RunInTurn(const Case &one, uint64_t k, uint64_t l, bool from_then_on) {
        if (turn_++ % (options_.every * one.every) == 0)
            Run(one, k, l, from_then_on);
    }

    // The number of calls that can fail.
    uint64_t Run(const Case &one, uint64_t k, uint64_t l, bool from_then_on) {
        desk_.first = k;
        desk_.second = l;
        desk_.from_then_on = from_then_on;
        alarm(30); // a run that hangs is told like one that crashes
        sim::ForgetLibraryState();
        sim::RemoveMemoryFiles();
        sim::Start(*one.board);
        if (one.prepare)
            one.prepare();
        for (size_t rule = 0; one.rules != nullptr && rule < one.rules->size(); ++rule)
            sim::AddFault((*one.rules)[rule]);
        const uint64_t before = sim::FailableCalls();
        if (l != 0)
            sim::FailBothCalls(before + k, before + l);
        else
            sim::FailCall(k == 0 ? 0 : before + k, from_then_on);
        if (options_.crash && k == 7)
            raise(SIGSEGV);
        Judge(one);
        return sim::FailableCalls() - before;
    }

    void Judge(const Case &one) {
        ++desk_.runs;
        std::string wrong;
        try {
            one.run();
        } catch (const std::exception &error) {
            wrong = error.what();
        }
        desk_.hits += sim::FaultWasHit() ? 1 : 0;
        // the second of a pair is not reached when the first ends the pass
        if (wrong.empty() && desk_.first != 0 && !sim::FaultWasHit())
            wrong = "no call failed";
        const std::vector<std::string> violations = sim::Violations();
        if (wrong.empty() && violations.empty())
            return;
        if (++desk_.broken <= 20)
            std::printf("%s: %s\n", desk_.Told().c_str(),
                        (wrong.empty() ? violations.front() : wrong).c_str());
    }

    const Options &options_;
    Desk &desk_;
    uint64_t turn_;
};

void Work(const Options &options, const std::vector<Case> &cases, size_t worker, size_t workers, Desk &desk) {
    sim::SetTracing(false);
    sim::SetPrintingLines(true);
    Runner runner(options, desk, worker);
    for (size_t n = worker; n < cases.size(); n += workers)
        runner.RunCase(cases[n]);
}

bool RunPart(const Options &options, const std::string &part) {
    const auto began = std::chrono::steady_clock::now();
    const std::vector<Case> cases = CasesOf(part);
    const Total total = ShareOut(
        [&](size_t worker, size_t workers, Desk &desk) { Work(options, cases, worker, workers, desk); });
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - began;
    std::printf(
        "%s: %zu cases, %llu runs (%llu with a fault), %.1f s, %.0f runs a second; %llu broken, %llu crashes\n",
        part.c_str(), cases.size(), static_cast<unsigned long long>(total.runs),
        static_cast<unsigned long long>(total.hits), took.count(),
        static_cast<double>(total.runs) / took.count(), static_cast<unsigned long long>(total.broken),
        static_cast<unsigned long long>(total.crashes));
    std::fflush(stdout);
    return total.runs != 0 && total.broken == 0 && total.crashes == 0;
}

Options Parse(int count, char **words) {
    Options options;
    for (int n = 1; n < count; ++n) {
        const std::string word = words[n];
        if (word == "--crash") {
            options.crash = true;
            options.parts = {"passes"};
        } else if (word == "--part" && n + 1 < count) {
            options.parts = {words[++n]};
        } else if (word == "--every" && n + 1 < count) {
            options.every = std::strtoull(words[++n], nullptr, 10);
        } else {
            std::fprintf(stderr, "usage: faults_gate [--part NAME] [--every N] [--crash]\n");
            std::exit(2);
        }
    }
    if (options.every == 0)
        options.every = 1;
    return options;
}

} // namespace

int main(int count, char **words) {
    const Options options = Parse(count, words);
    sim::KeepFilesInMemory();
    bool well = true;
    for (const std::string &part : options.parts)
        well = RunPart(options, part) && well;
    return well ? 0 : 1;
}
