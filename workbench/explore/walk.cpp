// SPDX-License-Identifier: GPL-3.0-or-later
//
// A process walks some states of a level: it goes their story again from the beginning, then forks for every step that can
// follow, and tells of each what it came to.
#include "explore/walk.h"

#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>
#include <unordered_set>

#include "base/apart.h"
#include "base/errors.h"
#include "base/json.h"
#include "base/progress.h"
#include "base/text.h"
#include "explore/state.h"
#include "runtime/stored.h"

namespace workbench {
namespace {

using Rules = std::set<std::string>;

struct Node {
    size_t parent = 0;
    Move move;
    uint64_t digest = 0;
    Rules broken; // in this state
};

// ---- from one process to the other -----------------------------------------------------------------

Json MoveJson(const Move &move) {
    return {static_cast<int>(move.what),
            move.part,
            move.fault,
            move.occurrence,
            move.kill.change,
            move.kill.write,
            move.kill.percent};
}

Move MoveFrom(const Json &json) {
    Move move{static_cast<What>(json.at(0).get<int>()), json.at(1), json.at(2), json.at(3)};
    move.kill = {json.at(4), json.at(5), json.at(6)};
    return move;
}

// The answer of a forked step, in memory that is shared with it.
class Answer {
public:
    Answer()
        : begin_(static_cast<char *>(
              mmap(nullptr, kSize, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))) {
        if (begin_ == MAP_FAILED)
            throw SetError("no shared memory");
    }
    ~Answer() {
        munmap(begin_, kSize);
    }
    Answer(const Answer &) = delete;
    Answer &operator=(const Answer &) = delete;
    void Give(const std::string &text) {
        const size_t size = std::min(text.size(), kSize - 1);
        std::copy_n(text.begin(), size, begin_);
        begin_[size] = '\0';
    }
    std::string Take() const {
        return begin_;
    }

private:
    static constexpr size_t kSize = 1 << 18;
    char *begin_;
};

// Digest and what is broken, a line each: quicker than JSON, and nearly every answer is thrown away.
std::string StateText(const WalkState &state) {
    std::string out = std::to_string(state.digest) + "\n";
    for (const Broken &broken : state.broken)
        out += broken.rule + "\t" + broken.text + "\n";
    return out;
}

WalkState StateFrom(const std::string &text) {
    std::istringstream lines(text);
    WalkState state;
    std::string line;
    std::getline(lines, line);
    state.digest = std::stoull(line);
    while (std::getline(lines, line))
        state.broken.push_back({line.substr(0, line.find('\t')), line.substr(line.find('\t') + 1)});
    return state;
}

// ---- one step --------------------------------------------------------------------------------------

constexpr int kNoMove = 3; // exit status of a process whose move is none here

// In a process of its own; nothing: the move is none here.
std::optional<WalkState> Try(const World &world, Life &life, const Move &move, Answer &answer) {
    const pid_t process = fork();
    if (process < 0)
        throw SetError("no process");
    if (process == 0) {
        int status = 0;
        try {
            if (life.Make(move))
                answer.Give(StateText(Judge(world, life)));
            else
                status = kNoMove;
        } catch (const std::exception &error) {
            answer.Give(std::string("0\nplatform\t") + OneLine(error.what()) + "\n");
        }
        _exit(status);
    }
    int status = 0;
    waitpid(process, &status, 0);
    if (WIFEXITED(status) && WEXITSTATUS(status) == kNoMove)
        return std::nullopt;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return WalkState{
            0, {{"platform", "the process ended by itself: wait status " + std::to_string(status)}}};
    return StateFrom(answer.Take());
}

// Calls `take` with every move from here and what it comes to.
class Moves {
public:
    using Take = std::function<void(const Move &, const WalkState &)>;
    Moves(const World &world, Life &life, Take take) : world_(world), life_(life), take_(std::move(take)) {}

    void All() {
        for (const Move &plain : PlainMoves(world_)) {
            Go(plain);
            if (life_.FaultsUsed() >= world_.faults || plain.what == What::kFails)
                continue;
            Failing(plain);
            if (plain.what != What::kRestart)
                Dying(plain);
        }
    }

private:
    bool Go(const Move &move) {
        const std::optional<WalkState> state = Try(world_, life_, move, answer_);
        if (state)
            take_(move, *state);
        return state.has_value();
    }
    // Every call of every kind.
    void Failing(Move move) {
        for (size_t fault = 0; fault < FaultKinds().size(); ++fault) {
            move.fault = static_cast<uint8_t>(fault + 1);
            for (move.occurrence = 1; Go(move);)
                ++move.occurrence;
        }
    }
    // Before each change but the first, which is a restart, and in each write.
    void Dying(Move move) {
        for (move.kill = {2, 0, 0}; Go(move);)
            ++move.kill.change;
        for (move.kill = {0, 1, 0}; Go(move); ++move.kill.write) {
            move.kill.percent = 50;
            Go(move);
            move.kill.percent = 0;
        }
    }

    const World &world_;
    Life &life_;
    Take take_;
    Answer answer_;
};

// ---- the walk --------------------------------------------------------------------------------------

class Walker {
public:
    explicit Walker(const World &world) : world_(world) {}

    WalkResult Run(unsigned depth) {
        Begin();
        size_t begin = 0;
        for (unsigned level = 1; level <= depth && begin < nodes_.size(); ++level) {
            const size_t end = nodes_.size();
            Level(level, begin, end);
            out_.levels.push_back(nodes_.size() - end);
            begin = end;
        }
        out_.states = nodes_.size();
        return std::move(out_);
    }

private:
    static constexpr size_t kAtOnce = 16; // states that a process walks

    // What is made once and for all is made here, not in every process that is forked.
    void WarmUp() {
        Life life(world_);
        life.Begin();
        for (const Move &move : PlainMoves(world_))
            if (move.what == What::kComes)
                life.Make(move);
        Judge(world_, life);
    }

    void Begin() {
        WarmUp();
        const Apart apart = RunApart([this](const Say &say) {
            Life life(world_);
            life.Begin();
            say(StateText(Judge(world_, life)));
        });
        if (apart.said.empty())
            throw SetError("the library's process ended by itself before the first step");
        const WalkState first = StateFrom(apart.said);
        nodes_.push_back({0, {}, first.digest, RulesOf(first)});
        seen_.insert(first.digest);
    }

    static Rules RulesOf(const WalkState &state) {
        Rules out;
        for (const Broken &broken : state.broken)
            out.insert(broken.rule);
        return out;
    }

    std::vector<Move> StoryOf(size_t node) const {
        std::vector<Move> out;
        for (; node != 0; node = nodes_[node].parent)
            out.push_back(nodes_[node].move);
        return {out.rbegin(), out.rend()};
    }

    void Level(unsigned level, size_t begin, size_t end) {
        const size_t works = (end - begin + kAtOnce - 1) / kAtOnce;
        Progress progress("level " + std::to_string(level) + ": going on from", end - begin, "states");
        RunManyApart(
            works,
            [&](size_t work, const Say &say) {
                const size_t first = begin + work * kAtOnce;
                try {
                    for (size_t node = first; node < std::min(first + kAtOnce, end); ++node)
                        From(node, say);
                } catch (const std::exception &error) {
                    say(Json{{"error", error.what()}}.dump() + "\n");
                }
            },
            [&](size_t work, const Apart &apart) {
                Take(apart);
                progress.Done(std::min((work + 1) * kAtOnce, end - begin));
            });
    }

    // In a process of its own.
    void From(size_t node, const Say &say) {
        Life life(world_);
        life.Begin();
        for (const Move &move : StoryOf(node))
            life.Make(move);
        if (Judge(world_, life).digest != nodes_[node].digest)
            throw SetError("a story that is walked again comes to another state: " +
                           MoveText(world_, nodes_[node].move));
        size_t steps = 0;
        std::string told;
        Moves(world_, life, [&](const Move &move, const WalkState &state) {
            ++steps;
            const bool fresh = state.digest != 0 && seen_.insert(state.digest).second;
            const bool breaks =
                std::any_of(state.broken.begin(), state.broken.end(), [&](const Broken &broken) {
                    return nodes_[node].broken.count(broken.rule) == 0;
                });
            if (!fresh && !breaks)
                return;
            Json broken = Json::array();
            for (const Broken &one : state.broken)
                broken.push_back({one.rule, one.text});
            told += Json{node, MoveJson(move), state.digest, broken}.dump() + "\n";
        }).All();
        say(told + Json{steps}.dump() + "\n");
    }

    void Take(const Apart &apart) {
        if (apart.status != 0)
            throw SetError("a process of the walk ended by itself: wait status " +
                           std::to_string(apart.status));
        std::istringstream lines(apart.said);
        for (std::string line; std::getline(lines, line);) {
            const Json json = Json::parse(line);
            if (json.is_object())
                throw SetError(json.at("error").get<std::string>());
            if (json.size() == 1)
                out_.steps += json[0].get<size_t>();
            else
                TakeStep(json);
        }
    }

    void TakeStep(const Json &json) {
        Node node{json.at(0), MoveFrom(json.at(1)), json.at(2), {}};
        const Rules before = nodes_[node.parent].broken;
        std::map<std::string, std::string> broken; // rule, text
        for (const Json &one : json.at(3))
            broken.emplace(one.at(0), one.at(1));
        for (const auto &[rule, text] : broken) {
            node.broken.insert(rule);
            if (before.count(rule) == 0)
                TakeBroken(rule, text, before, node);
        }
        if (node.digest != 0 && seen_.insert(node.digest).second)
            nodes_.push_back(std::move(node));
    }

    // Only what is not told already: of this step, or of the same without a fault, with as much broken before it or less.
    void TakeBroken(const std::string &rule, const std::string &text, const Rules &before, const Node &node) {
        const std::string what = MoveClass(world_, node.move);
        Move plain = node.move;
        plain.fault = 0;
        plain.kill = {};
        for (const std::string &step : {what, MoveClass(world_, plain)})
            for (const Rules &less : told_[rule + "\t" + step])
                if (std::includes(before.begin(), before.end(), less.begin(), less.end()))
                    return;
        told_[rule + "\t" + what].push_back(before);
        std::vector<Move> moves = StoryOf(node.parent);
        moves.push_back(node.move);
        const std::string after =
            before.empty() ? "" : "; after " + Join({before.begin(), before.end()}, ", ");
        out_.broken.push_back({rule, what + after, text, std::move(moves)});
    }

    const World &world_;
    std::vector<Node> nodes_;
    std::unordered_set<uint64_t> seen_;
    std::map<std::string, std::vector<Rules>> told_; // what was broken before, by rule and last step
    WalkResult out_;
};

} // namespace

void LearnNames(World &world) {
    for (Part &part : world.parts) {
        const Apart apart = RunApart([&](const Say &say) {
            Life(world).Begin();
            for (const SpecificSensorParam &param : part.params) {
                const Outcome outcome = AddSensor(param, false);
                std::vector<uint8_t> slot = outcome.record ? outcome.record->bytes : Bytes{};
                slot.resize(SDR_SLOT_SIZE);
                say((outcome.record ? "+" + TypeAndName(slot.data()) : outcome.word + ": " + outcome.why) +
                    "\n");
            }
        });
        std::istringstream lines(apart.said);
        for (std::string line; std::getline(lines, line);)
            if (line.starts_with("+"))
                part.names.push_back(line.substr(1));
            else
                throw InputError("--parts: " + part.Text() + " is not added on this board: " + line);
    }
}

WalkResult Walk(const World &world, unsigned depth) {
    return Walker(world).Run(depth);
}

} // namespace workbench
