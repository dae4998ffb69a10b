// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/answers.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <unistd.h>

#include "oxa/platform.h"
#include "replay/redirect.h"

namespace workbench {
namespace {

using namespace oxa::capture; // the words of the lists

Player *g_player;

// What is said where nothing was recorded: the call failed.
template <class R> R Failed() {
    if constexpr (std::is_signed_v<R> || sizeof(R) == 2) // 2 bytes: a completion code
        return static_cast<R>(-1);
    else
        return R{};
}

template <class R, size_t N> R Ask(const char *name, const Part (&parts)[N]) {
    const Item *const result = g_player->Answer(name, parts, N - 1);
    if constexpr (!std::is_same_v<R, void>)
        return result != nullptr ? static_cast<R>(result->number) : Failed<R>();
}

uint32_t Least(size_t a, size_t b) {
    return static_cast<uint32_t>(std::min(a, b));
}

size_t Length(const char *text, size_t most) {
    return text != nullptr ? strnlen(text, most) : 0;
}

std::string Printed(const char *format, va_list list) {
    va_list again;
    va_copy(again, list);
    std::string text(static_cast<size_t>(std::max(std::vsnprintf(nullptr, 0, format, list), 0)) + 1, '\0');
    std::vsnprintf(text.data(), text.size(), format, again);
    va_end(again);
    text.pop_back();
    return text;
}

// ---- bounded calls that were sound ------------------------------------------------------------------------------

void Do(void *to, size_t, const void *from, size_t count) { // a copy
    std::memmove(to, from, count);
}
void Do(void *to, size_t, int byte, size_t count) {
    std::memset(to, byte, count);
}
void Do(const char *, size_t) {} // a length

int Print(const char *name, char *to, size_t room, const std::string &text) {
    const char *const printed = text.c_str();
    const Part parts[] = {Out(to, static_cast<uint32_t>(room)), Number(room), Text(printed), {}};
    if (const Item *const result = g_player->AnswerBounded(name, parts, 3))
        return static_cast<int>(result->number);
    return std::snprintf(to, room, "%s", printed);
}

// ---- lines ------------------------------------------------------------------------------------------------------

void Line(const char *name, uint32_t module, const char *file, uint32_t line, const char *function,
          const std::string &text) {
    const Part parts[] = {Number(module), Text(file), Number(line), Text(function), Text(text.c_str()), {}};
    Ask<void>(name, parts);
}

void Channel(const char *name, uint32_t level, const std::string &text) {
    const Part parts[] = {Number(level), Text(text.c_str()), {}};
    Ask<void>(name, parts);
}

// ---- service objects --------------------------------------------------------------------------------------------

template <class T, auto... kOperation> const T *Service(const char *name) {
    const Part parts[] = {Part{}};
    const uint32_t told = Ask<uint32_t>(name, parts); // 0: none; else a bit for each operation
    if (told == 0)
        return nullptr;
    static T object;
    unsigned bit = 1;
    const auto choose = [&](auto operation) {
        const bool has = (told & bit) != 0;
        bit <<= 1;
        return has ? operation : nullptr;
    };
    object = T{choose(kOperation)...};
    return &object;
}

// ---- one function for each row of the list ----------------------------------------------------------------------

namespace answering {

#define OPERATION(service, operation, parameters, arguments, ...)                                            \
    int32_t operation parameters {                                                                           \
        const Part parts[] = {__VA_ARGS__ __VA_OPT__(, ) Part{}};                                            \
        return Ask<int32_t>(#service "." #operation, parts);                                                 \
    }
#include "capture/calls.def"

#define CALL(result, name, parameters, arguments, ...)                                                       \
    result name parameters {                                                                                 \
        const Part parts[] = {__VA_ARGS__ __VA_OPT__(, ) Part{}};                                            \
        return Ask<result>(#name, parts);                                                                    \
    }
#define BOUNDED(result, name, parameters, arguments, sound, ...)                                             \
    result name parameters {                                                                                 \
        const Part parts[] = {__VA_ARGS__, Part{}};                                                          \
        if (const Item *const told = g_player->AnswerBounded(#name, parts, std::size(parts) - 1))            \
            return static_cast<result>(told->number);                                                        \
        Do arguments;                                                                                        \
        return static_cast<result>(sound);                                                                   \
    }
#define PRINT(name)                                                                                          \
    int name(char *to, size_t room, const char *format, ...) {                                               \
        va_list list;                                                                                        \
        va_start(list, format);                                                                              \
        const std::string text = Printed(format, list);                                                      \
        va_end(list);                                                                                        \
        return Print(#name, to, room, text);                                                                 \
    }
#define LINE(name)                                                                                           \
    void name(uint32_t module, const char *file, uint32_t line, const char *function, const char *format,    \
              ...) {                                                                                         \
        va_list list;                                                                                        \
        va_start(list, format);                                                                              \
        const std::string text = Printed(format, list);                                                      \
        va_end(list);                                                                                        \
        Line(#name, module, file, line, function, text);                                                     \
    }
#define CHANNEL(name)                                                                                        \
    void name(uint32_t level, const char *format, ...) {                                                     \
        va_list list;                                                                                        \
        va_start(list, format);                                                                              \
        const std::string text = Printed(format, list);                                                      \
        va_end(list);                                                                                        \
        Channel(#name, level, text);                                                                         \
    }
#define SERVICE(type, name, ...)                                                                             \
    const type *name() {                                                                                     \
        return Service<type, __VA_ARGS__>(#name);                                                            \
    }
#include "capture/calls.def"

} // namespace answering

template <class F> void *Address(F *function) {
    return reinterpret_cast<void *>(function);
}

const Redirection kRedirections[] = {
#define CALL(result, name, ...) {#name, Address(&answering::name)},
#define BOUNDED(result, name, ...) {#name, Address(&answering::name)},
#define PRINT(name) {#name, Address(&answering::name)},
#define LINE(name) {#name, Address(&answering::name)},
#define CHANNEL(name) {#name, Address(&answering::name)},
#define SERVICE(type, name, ...) {#name, Address(&answering::name)},
#include "capture/calls.def"
};

} // namespace

void LetPlayersAnswer() {
    RedirectLibrary(std::begin(kRedirections), std::end(kRedirections));
}

void UsePlayer(Player *player) {
    g_player = player;
}

} // namespace workbench
