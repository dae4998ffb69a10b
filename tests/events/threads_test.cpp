// SPDX-License-Identifier: GPL-3.0-or-later
//
// Builders have no state: eight threads call all of them at once.  The same tests run once more in a program that
// is built with the thread sanitizer, library included.
#include <map>
#include <thread>

#include "events/event_fixture.h"

namespace {

using namespace seltest;

constexpr size_t kThreads = 8;
constexpr size_t kRounds = 20;

class Threads : public Sel {
protected:
    Threads() {
        Profile(3); // the one in which all of them send
    }

    // Every thread calls every builder, each beginning with another one.
    static std::map<uint32_t, size_t> CallAll() {
        std::array<std::map<uint32_t, size_t>, kThreads> results;
        std::vector<std::thread> threads;
        const std::vector<Sender> &senders = Senders();
        for (size_t thread = 0; thread < kThreads; ++thread) {
            threads.emplace_back([thread, &results, &senders] {
                for (size_t n = 0; n < kRounds * senders.size(); ++n) {
                    ++results[thread][senders[(n + 2 * thread) % senders.size()].call()];
                }
            });
        }
        std::map<uint32_t, size_t> all;
        for (size_t thread = 0; thread < kThreads; ++thread) {
            threads[thread].join();
            for (const auto &[result, count] : results[thread]) {
                all[result] += count;
            }
        }
        return all;
    }
    static std::map<std::string, size_t> Counted(const Lines &texts) {
        std::map<std::string, size_t> counted;
        for (const std::string &text : texts) {
            ++counted[text];
        }
        return counted;
    }
};

constexpr size_t kEach = kThreads * kRounds;

TEST_F(Threads, EveryRecordArrivesWholeAndOnce) {
    sim::CurrentBoard().sel_limit = 1000000;
    EXPECT_EQ(CallAll(), (std::map<uint32_t, size_t>{{0, kEach * Senders().size()}}));
    std::map<std::string, size_t> records, lines;
    for (const Sender &sender : Senders()) {
        records[Hex(sender.record)] += kEach;
        for (const std::string &line : sender.before) {
            lines[line] += kEach;
        }
    }
    EXPECT_EQ(Counted(seltest::Records()), records);
    EXPECT_EQ(Counted(WrittenLines()), lines);
}

TEST_F(Threads, EveryFailureIsSaidInFull) {
    sim::CurrentBoard().sel_limit = 0;
    EXPECT_EQ(CallAll(), (std::map<uint32_t, size_t>{{0xFFFF, kEach * Senders().size()}}));
    std::map<std::string, size_t> lines;
    for (const Sender &sender : Senders()) {
        for (const std::string &line :
             sender.before + Dump(sender.record) + Dump(sender.record) + Error(sender.name, sender.failure)) {
            lines[line] += kEach;
        }
    }
    EXPECT_EQ(Counted(WrittenLines()), lines);
    EXPECT_THAT(seltest::Records(), IsEmpty());
}

} // namespace
