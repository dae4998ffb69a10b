// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/player.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "base/text.h"
#include "oxa/records.h"

namespace workbench {
namespace {

constexpr size_t kMostTold = 20; // of one entry

std::string ByteText(const std::string &bytes, size_t at) {
    return at < bytes.size() ? Hex(static_cast<uint8_t>(bytes[at])) : "nothing";
}

// The first byte in which they differ.
std::string BytesText(const std::string &recorded, const std::string &now, bool text) {
    const size_t most = std::min(recorded.size(), now.size());
    size_t at = 0;
    while (at < most && recorded[at] == now[at])
        ++at;
    if (text)
        return "character " + std::to_string(at) + ": \"" + Printable(OneLine(recorded)) + "\" recorded, \"" +
               Printable(OneLine(now)) + "\" now";
    return "byte " + std::to_string(at) + ": " + ByteText(recorded, at) + " recorded, " + ByteText(now, at) +
           " now";
}

std::string ItemDifference(const Item &recorded, const Item &now) {
    const bool text = recorded.kind == Item::Kind::kText;
    if (recorded.kind == now.kind && (text || recorded.kind == Item::Kind::kBytes))
        return BytesText(recorded.Bytes(), now.Bytes(), text);
    return ItemText(recorded) + " recorded, " + ItemText(now) + " now";
}

int64_t NumberOf(const parts::Part &part) {
    uint64_t value = 0;
    std::memcpy(&value, part.data, part.size); // the desk is little endian, as every capture is
    const unsigned shift = 64 - 8 * part.size;
    if (part.shape == parts::Shape::kSigned)
        return static_cast<int64_t>(value << shift) >> shift;
    return static_cast<int64_t>(value);
}

// As far as there is room for it.
void Write(const Item &item, const parts::Part &part) {
    if (part.data == nullptr || item.kind == Item::Kind::kNull)
        return;
    auto *to = static_cast<char *>(const_cast<void *>(part.data));
    if (item.kind == Item::Kind::kNumber) {
        std::memcpy(to, &item.number, std::min<size_t>(part.size, sizeof(item.number)));
        return;
    }
    const std::string &bytes = item.Bytes();
    const size_t size = std::min<size_t>(bytes.size(), part.size);
    std::memcpy(to, bytes.data(), size);
    if (part.shape == parts::Shape::kText && size < part.size)
        to[size] = '\0';
}

// "[unit.c:120]" in front of a text, without the number.
std::string WithoutLine(const std::string &text) {
    const size_t colon = text.find(':'), close = text.find(']');
    const bool place = text.starts_with("[") && colon < close && close != std::string::npos;
    return place ? text.substr(0, colon) + text.substr(close) : text;
}

// The number of a source line, which every change of the source above it changes.
bool OnlyMoved(const std::string &call, size_t parameter, const Item &recorded, const Item &now) {
    if (recorded.kind == Item::Kind::kNumber)
        return (call.starts_with("_ssp_") && parameter == 2) || (call == "sspFailedStat" && parameter == 1);
    return call.starts_with("IDBG_") && WithoutLine(recorded.Bytes()) == WithoutLine(now.Bytes());
}

std::string ParameterText(const std::string &where, size_t parameter) {
    return where + ", parameter " + std::to_string(parameter + 1);
}

} // namespace

Item ItemOf(const parts::Part &part) {
    if (part.data == nullptr)
        return {};
    if (part.shape == parts::Shape::kUnsigned || part.shape == parts::Shape::kSigned)
        return {Item::Kind::kNumber, NumberOf(part), nullptr};
    const char *const bytes = static_cast<const char *>(part.data);
    const bool text = part.shape == parts::Shape::kText;
    const size_t size = text ? strnlen(bytes, part.size) : part.size;
    return {text ? Item::Kind::kText : Item::Kind::kBytes, 0,
            std::make_shared<const std::string>(bytes, size)};
}

std::vector<Item> ItemsIn(const parts::Part *parts, unsigned count) {
    std::vector<Item> items;
    for (unsigned i = 0; i < count; ++i) {
        const bool room = (parts[i].way & parts::kIn) == 0 && parts[i].data != nullptr;
        items.push_back(room ? Item{Item::Kind::kRoom, parts[i].size, nullptr} : ItemOf(parts[i]));
    }
    return items;
}

std::vector<Item> ItemsOut(const parts::Part *parts, unsigned count, const parts::Part *result) {
    const int64_t value = result != nullptr ? NumberOf(*result) : 0;
    std::vector<Item> items;
    for (unsigned i = 0; i < count; ++i) {
        parts::Part part = parts[i];
        if ((part.way & parts::kOut) == 0)
            continue;
        if ((part.way & parts::kOutUpToResult) != 0)
            part.size =
                static_cast<uint32_t>(std::clamp<int64_t>(value, 0, part.size / part.unit) * part.unit);
        if ((part.way & parts::kOutOnSuccess) != 0 && value != 0)
            part.size = 0;
        items.push_back(ItemOf(part));
    }
    return items;
}

Player::Player(const CapturedEntry &entry, size_t number, std::vector<ReplayDifference> &differences)
    : entry_(entry), number_(number), differences_(differences) {}

void Player::Tell(size_t call, const std::string &where, const std::string &what) {
    if (++told_ <= kMostTold)
        differences_.push_back({number_, call, where, what});
}

void Player::Compare(size_t call, const std::string &where, const std::vector<Item> &recorded,
                     const std::vector<Item> &now) {
    if (recorded.size() != now.size())
        return Tell(call, where,
                    std::to_string(recorded.size()) + " parameters recorded, " + std::to_string(now.size()) +
                        " now");
    for (size_t i = 0; i < now.size(); ++i)
        if (recorded[i] != now[i] && OnlyMoved(where, i, recorded[i], now[i]))
            ++moved_;
        else if (recorded[i] != now[i])
            Tell(call, ParameterText(where, i), ItemDifference(recorded[i], now[i]));
}

// The next call that was recorded; where that is another one, a later one that asks the same.
const CapturedCall *Player::Find(const char *name, const parts::Part *parts, unsigned count) {
    const std::vector<CapturedCall> &calls = entry_.calls;
    if (at_ < calls.size() && calls[at_].name == name)
        return &calls[at_++];
    if (at_ == calls.size() && !entry_.ended) // beyond what the machine came to
        return nullptr;
    Tell(at_ + 1, name,
         "called now; recorded is " +
             (at_ < calls.size() ? CallText(calls[at_]) : std::string("that the entry returns")));
    const std::vector<Item> in = ItemsIn(parts, count);
    const auto later =
        std::find_if(calls.begin() + static_cast<long>(at_), calls.end(),
                     [&](const CapturedCall &call) { return call.name == name && call.in == in; });
    if (later == calls.end())
        return nullptr;
    at_ = static_cast<size_t>(later - calls.begin()) + 1;
    return &*later;
}

const Item *Player::Answer(const char *name, const parts::Part *parts, unsigned count) {
    static const Item none;
    passed_over_ = 0;
    const CapturedCall *const call = Find(name, parts, count);
    if (call == nullptr || !call->ended)
        return nullptr;
    Compare(at_, name, call->in, ItemsIn(parts, count));
    size_t out = 0;
    for (unsigned i = 0; i < count; ++i)
        if ((parts[i].way & parts::kOut) != 0 && out < call->out.size())
            Write(call->out[out++], parts[i]);
    if (call->error)
        errno = *call->error;
    return call->result ? &*call->result : &none;
}

const Item *Player::AnswerBounded(const char *name, const parts::Part *parts, unsigned count) {
    const std::vector<CapturedCall> &calls = entry_.calls;
    if (at_ < calls.size() && calls[at_].name == name && calls[at_].passed_over == passed_over_)
        return Answer(name, parts, count);
    ++passed_over_;
    return nullptr;
}

bool Player::Ended() {
    if (at_ < entry_.calls.size())
        Tell(at_ + 1, CallText(entry_), "returns now; recorded is " + CallText(entry_.calls[at_]));
    return entry_.ended;
}

void Player::Finish(const parts::Part *parts, unsigned count, const parts::Part *result) {
    if (!Ended())
        return;
    const std::string where = CallText(entry_);
    if (result != nullptr && entry_.result && *entry_.result != ItemOf(*result))
        Tell(0, where,
             "returned " + ItemText(*entry_.result) + ", returns " + ItemText(ItemOf(*result)) + " now");
    Compare(0, where, entry_.out, ItemsOut(parts, count, result));
}

// Which sensor of the set, and which byte of it.
void Player::CompareRows(const char *what, size_t size, const Item &recorded, const Item &now) {
    const std::string &before = recorded.Bytes(), &after = now.Bytes();
    for (size_t at = 0; at < std::min(before.size(), after.size()); at += size) {
        const std::string one = before.substr(at, size), other = after.substr(at, size);
        if (one != other)
            Tell(0, entry_.name + ", sensor " + std::to_string(at / size + 1) + ", " + what,
                 BytesText(one, other, false));
    }
}

void Player::FinishDriver(const parts::Part *parts, unsigned count) {
    if (!Ended())
        return;
    const std::vector<Item> now = ItemsOut(parts, count, nullptr);
    if (entry_.out.size() != now.size())
        return Compare(0, entry_.name, entry_.out, now);
    if (entry_.out[2] != now[2])
        Tell(0, entry_.name,
             "built " + ItemText(entry_.out[2]) + " sensors, builds " + ItemText(now[2]) + " now");
    else
        for (size_t i = 0; i < 2; ++i)
            if (entry_.out[i].Bytes().size() != now[i].Bytes().size())
                Tell(0, ParameterText(entry_.name, i),
                     std::to_string(entry_.out[i].Bytes().size()) + " bytes recorded, " +
                         std::to_string(now[i].Bytes().size()) + " now");
    CompareRows("record", SDR_SLOT_SIZE, entry_.out[0], now[0]);
    CompareRows("device-table entry", DEV_TAB_ENTRY_SIZE, entry_.out[1], now[1]);
}

} // namespace workbench
