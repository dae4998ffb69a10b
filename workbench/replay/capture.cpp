// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/capture.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <span>

#include "base/errors.h"
#include "base/input.h"
#include "base/text.h"
#include "capture/format.h"

namespace workbench {
namespace {

namespace format = oxa::capture;

// A file of a few bytes must not become gigabytes: a data block may be named many times, a call told once more by a word.
constexpr size_t kMostExpanded = size_t{256} << 20;

// What is wrong within a block; the file is read up to it.
struct Damage {
    std::string what;
};

uint32_t Word(const std::string &bytes, size_t at) {
    uint32_t word = 0;
    for (unsigned i = 0; i < 4; ++i)
        word |= uint32_t{static_cast<uint8_t>(bytes[at + i])} << (8 * i);
    return word;
}

struct Block {
    size_t offset = 0, size = 0; // of all of it, in the file
    uint8_t kind = 0, thread = 0;
    uint16_t number = 0;
    std::string payload;
};

// Reads items one behind the other.
class Items {
public:
    Items(const std::string &payload, const std::vector<std::shared_ptr<const std::string>> &data,
          size_t &expanded)
        : payload_(payload), data_(data), expanded_(expanded) {}
    bool More() const {
        return at_ < payload_.size();
    }
    // The kind on its own, without what marks a result.
    uint8_t Next(Item &item) {
        const uint8_t kind = Byte();
        const std::string content = Content(Length());
        const bool result = kind >= format::kResult;
        Fill(result ? static_cast<uint8_t>(kind - format::kResult) : kind, content, item);
        return kind;
    }

private:
    uint8_t Byte() {
        if (at_ == payload_.size())
            throw Damage{"an item ends behind its block"};
        return static_cast<uint8_t>(payload_[at_++]);
    }
    size_t Length() {
        size_t length = 0;
        for (unsigned shift = 0; shift < 35; shift += 7) {
            const uint8_t byte = Byte();
            length |= size_t{byte & 0x7Fu} << shift;
            if (byte < 0x80)
                return length;
        }
        throw Damage{"the length of an item does not end"};
    }
    void Count(size_t length) {
        expanded_ += length;
        if (expanded_ > kMostExpanded)
            throw Damage{"its blocks are longer than any capture's"};
    }
    std::string Content(size_t length) {
        if (length > payload_.size() - at_)
            throw Damage{"an item ends behind its block"};
        Count(length);
        at_ += length;
        return payload_.substr(at_ - length, length);
    }
    static int64_t Number(const std::string &content, bool has_sign) {
        if (content.empty() || content.size() > 8)
            throw Damage{"a number of " + std::to_string(content.size()) + " bytes"};
        const bool negative = has_sign && (content.back() & 0x80) != 0;
        uint64_t value = negative ? ~uint64_t{0} : 0;
        for (size_t i = content.size(); i-- > 0;)
            value = value << 8 | static_cast<uint8_t>(content[i]);
        return static_cast<int64_t>(value);
    }
    std::shared_ptr<const std::string> Named(const std::string &content) {
        if (content.empty() || content.size() % 4 != 0)
            throw Damage{"an item names data blocks with half a number"};
        std::string all;
        for (size_t at = 0; at < content.size(); at += 4) {
            const uint32_t number = Word(content, at);
            if (number == 0 || number > data_.size())
                throw Damage{"data block " + std::to_string(number) + " is named before it is there"};
            if (content.size() == 4)
                return data_[number - 1];
            all += *data_[number - 1];
            Count(data_[number - 1]->size());
        }
        return std::make_shared<const std::string>(std::move(all));
    }
    void Fill(uint8_t kind, const std::string &content, Item &item) {
        switch (kind) {
        case format::kUnsigned:
        case format::kUncounted:
            item = {Item::Kind::kNumber, Number(content, false), nullptr};
            return;
        case format::kRoom:
            item = {Item::Kind::kRoom, Number(content, false), nullptr};
            return;
        case format::kSigned:
        case format::kErrno:
            item = {Item::Kind::kNumber, Number(content, true), nullptr};
            return;
        case format::kText:
            item = {Item::Kind::kText, 0, std::make_shared<const std::string>(content)};
            return;
        case format::kBytes:
            item = {Item::Kind::kBytes, 0, std::make_shared<const std::string>(content)};
            return;
        case format::kDataNumbers:
            item = {Item::Kind::kBytes, 0, Named(content)};
            return;
        case format::kNull:
        case format::kReturned:
            item = {};
            return;
        default:
            throw Damage{"an item of the unknown kind " + std::to_string(kind)};
        }
    }

    const std::string &payload_;
    const std::vector<std::shared_ptr<const std::string>> &data_;
    size_t &expanded_;
    size_t at_ = 0;
};

class Reader {
public:
    Reader(const std::string &path, const std::string &bytes) : bytes_(bytes) {
        out_.path = path;
    }
    Capture Read() {
        ReadHeader();
        size_t at = format::kFileHeaderSize + format::kRunningSize;
        try {
            for (Block block; !out_.ended && out_.stopped.empty() && ReadBlock(at, block); at += block.size)
                Take(block);
        } catch (const Damage &damage) {
            out_.torn = "byte " + std::to_string(at) + ": " + damage.what;
        }
        out_.bytes = at;
        if (!out_.ended && out_.stopped.empty() && out_.torn.empty())
            TakeRunning();
        out_.threads = static_cast<unsigned>(open_.size());
        return std::move(out_);
    }

private:
    void ReadHeader() {
        const std::string magic = format::kMagic;
        if (!bytes_.starts_with(magic))
            throw InputError(out_.path + ": no capture (it does not begin with " + magic.substr(0, 7) + ")");
        if (bytes_.size() < format::kFileHeaderSize + format::kRunningSize)
            throw InputError(out_.path + ": the capture ends within its header");
        if (format::Checksum(format::kChecksumStart, bytes_.data(), 12) != Word(bytes_, 12))
            throw InputError(out_.path +
                             ": byte 12: the header of the capture is damaged (its checksum is another)");
        const unsigned format = Word(bytes_, 8) & 0xFFFF;
        if (format > format::kFormat)
            throw InputError(out_.path + ": a capture of format " + std::to_string(format) +
                             "; this program reads up to " + std::to_string(format::kFormat));
        out_.pointer_size = static_cast<uint8_t>(bytes_[10]);
        if (bytes_[11] != format::kLittleEndian)
            throw InputError(out_.path + ": byte 11: a capture of a machine with another byte order");
    }

    // False at the end of what was written.
    bool ReadBlock(size_t at, Block &block) const {
        if (at == bytes_.size())
            return false;
        if (bytes_.size() - at < sizeof(uint32_t))
            throw Damage{"the file ends within a block"};
        const uint32_t size = Word(bytes_, at);
        if ((size & format::kAgainBit) != 0)
            return ReadAgain(at, size, block);
        if (bytes_.size() - at < format::kBlockHeaderSize)
            throw Damage{"the file ends within a block"};
        const uint32_t rest = Word(bytes_, at + 4);
        if (rest == 0)
            return false;
        const size_t filled = (size_t{size} + 3) / 4 * 4;
        if (filled > bytes_.size() - at - format::kBlockHeaderSize)
            throw Damage{"the file ends within a block of " + std::to_string(size) + " bytes"};
        uint32_t sum = format::Checksum(format::kChecksumStart, bytes_.data() + at, 8);
        sum = format::Checksum(sum, bytes_.data() + at + format::kBlockHeaderSize,
                               static_cast<uint32_t>(filled));
        if (sum != Word(bytes_, at + 8))
            throw Damage{"the checksum of the block is another"};
        block = {at,
                 format::kBlockHeaderSize + filled,
                 static_cast<uint8_t>(rest),
                 static_cast<uint8_t>(rest >> 8),
                 static_cast<uint16_t>(rest >> 16),
                 bytes_.substr(at + format::kBlockHeaderSize, size)};
        return true;
    }

    bool ReadAgain(size_t at, uint32_t word, Block &block) const {
        const auto function = static_cast<uint16_t>(word);
        const auto thread = static_cast<uint8_t>(word >> 16);
        const auto before = last_.find(function);
        if (word != format::AgainWord(thread, function) || before == last_.end())
            throw Damage{"the checksum of the block is another"};
        block = {at, sizeof(word), format::kCall, thread, function, before->second};
        return true;
    }

    const std::string &NameOf(const Block &block) const {
        const auto found = names_.find(block.number);
        if (found == names_.end())
            throw Damage{"function " + std::to_string(block.number) + " has no name"};
        return found->second;
    }

    void Take(const Block &block) {
        switch (block.kind) {
        case format::kStart:
            return TakeStart(block);
        case format::kName:
            names_[block.number] = OneText(block);
            return;
        case format::kData:
            data_.push_back(std::make_shared<const std::string>(block.payload));
            return;
        case format::kEntryBegin:
            return Begin(block);
        case format::kEntryEnd:
            return End(block);
        case format::kCall:
            return TakeCall(block);
        case format::kMissing:
            out_.missing.push_back(NameOf(block));
            return;
        case format::kStopped:
            out_.stopped = OneText(block);
            return;
        case format::kEnd:
            out_.ended = true;
            return;
        default:
            throw Damage{"a block of the unknown kind " + std::to_string(block.kind)};
        }
    }

    std::string OneText(const Block &block) {
        Items items(block.payload, data_, expanded_);
        Item item;
        if (!items.More() || items.Next(item) != format::kText)
            throw Damage{"a block without its text"};
        return Printable(item.Bytes());
    }

    void TakeStart(const Block &block) {
        Items items(block.payload, data_, expanded_);
        Item found[4];
        for (Item &item : found)
            items.Next(item);
        if (found[0].kind != Item::Kind::kText || found[1].kind != Item::Kind::kText)
            throw Damage{"the first block has no version"};
        out_.version = Printable(found[0].Bytes());
        out_.library = Printable(found[1].Bytes());
        out_.code = static_cast<uint32_t>(found[2].number);
        out_.process = static_cast<uint32_t>(found[3].number);
    }

    CapturedCall CallOf(const Block &block) const {
        CapturedCall call;
        call.name = NameOf(block);
        call.thread = block.thread;
        call.offset = block.offset;
        return call;
    }

    void Begin(const Block &block) {
        CapturedEntry entry;
        static_cast<CapturedCall &>(entry) = CallOf(block);
        FillItems(block, entry, entry.in);
        out_.entries.push_back(std::move(entry));
        open_[block.thread] = out_.entries.size() - 1;
    }

    // The entry that runs in the thread of a block.
    CapturedEntry &EntryOf(const Block &block) {
        const std::optional<size_t> entry = open_[block.thread];
        if (!entry)
            throw Damage{NameOf(block) + " stands outside an entry of its thread"};
        return out_.entries[*entry];
    }

    void End(const Block &block) {
        CapturedEntry &entry = EntryOf(block);
        if (entry.name != NameOf(block))
            throw Damage{NameOf(block) + " ends where " + entry.name + " had begun"};
        FillItems(block, entry, entry.out);
        entry.ended = true;
        open_[block.thread].reset();
    }

    void TakeCall(const Block &block) {
        CapturedCall call = CallOf(block);
        FillItems(block, call, call.in);
        if (!call.ended)
            throw Damage{call.name + " did not return"};
        EntryOf(block).calls.push_back(std::move(call));
        last_[block.number] = block.payload;
    }

    // The calls that ran when the file was copied, or when the process died.
    void TakeRunning() {
        for (const auto &[thread, entry] : open_) {
            const size_t at = format::kFileHeaderSize + 2 * size_t{thread};
            const unsigned number = Word(bytes_, at) & 0xFFFF;
            const auto name = names_.find(static_cast<uint16_t>(number - 1));
            if (!entry || number == 0 || name == names_.end())
                continue;
            CapturedCall call;
            call.name = name->second;
            call.thread = thread;
            out_.entries[*entry].calls.push_back(std::move(call));
        }
    }

    // What goes in, and behind a mark what came out.
    void FillItems(const Block &block, CapturedCall &call, std::vector<Item> &first) {
        Items items(block.payload, data_, expanded_);
        std::vector<Item> *places = &first;
        while (items.More()) {
            Item item;
            const uint8_t kind = items.Next(item);
            if (kind == format::kReturned) {
                places = &call.out;
                call.ended = true;
            } else if (kind >= format::kResult) {
                call.result = item;
            } else if (kind == format::kErrno) {
                call.error = static_cast<int>(item.number);
            } else if (kind == format::kUncounted) {
                call.passed_over += static_cast<uint64_t>(item.number);
            } else {
                places->push_back(item);
            }
        }
    }

    const std::string &bytes_;
    Capture out_;
    std::map<uint16_t, std::string> names_;
    std::vector<std::shared_ptr<const std::string>> data_;
    std::map<uint16_t, std::string> last_;          // the last call of each function, as it was told
    std::map<uint8_t, std::optional<size_t>> open_; // of each thread the entry that runs
    size_t expanded_ = 0;
};

} // namespace

const std::string &Item::Bytes() const {
    static const std::string none;
    return bytes != nullptr ? *bytes : none;
}

bool Item::operator==(const Item &other) const {
    if (kind == Kind::kRoom && other.kind == Kind::kRoom) // a pointer's is another on another machine
        return true;
    return kind == other.kind && number == other.number && Bytes() == other.Bytes();
}

size_t Capture::Calls() const {
    size_t calls = 0;
    for (const CapturedEntry &entry : entries)
        calls += entry.calls.size();
    return calls;
}

std::vector<std::string> Capture::Lacks() const {
    std::vector<std::string> out;
    if (!torn.empty())
        out.push_back("the file is damaged at " + torn + "; what stands before it is used");
    if (!stopped.empty())
        out.push_back("the capture is not whole: " + stopped);
    return out;
}

Capture ParseCapture(const std::string &path, const std::string &bytes) {
    return Reader(path, bytes).Read();
}

Capture ReadCapture(const std::string &path) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored))
        throw InputError(path + ": " + std::strerror(EISDIR));
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw InputError(path + ": " + std::strerror(errno));
    return ParseCapture(path, ReadAllOf(file, path));
}

std::string ItemText(const Item &item) {
    constexpr size_t kMostShown = 32;
    switch (item.kind) {
    case Item::Kind::kNumber:
        return std::to_string(item.number);
    case Item::Kind::kText:
        return "\"" + Printable(OneLine(item.Bytes())) + "\"";
    case Item::Kind::kBytes:
        if (item.Bytes().size() > kMostShown)
            return std::to_string(item.Bytes().size()) + " bytes";
        return HexBytes({reinterpret_cast<const uint8_t *>(item.Bytes().data()), item.Bytes().size()});
    case Item::Kind::kRoom:
        return "-";
    case Item::Kind::kNull:
        break;
    }
    return "null";
}

namespace {
std::string ItemsText(const std::vector<Item> &items) {
    std::vector<std::string> words;
    for (const Item &item : items)
        if (item.kind != Item::Kind::kRoom)
            words.push_back(ItemText(item));
    return Join(words, ", ");
}
} // namespace

std::string CallText(const CapturedCall &call) {
    return Printable(call.name) + "(" + ItemsText(call.in) + ")";
}

std::string AnswerText(const CapturedCall &call) {
    if (!call.ended)
        return "did not return";
    std::vector<Item> items;
    if (call.result)
        items.push_back(*call.result);
    items.insert(items.end(), call.out.begin(), call.out.end());
    return ItemsText(items);
}

} // namespace workbench
