// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/board_file_rules.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <tuple>

namespace sim::rules {

// ---- messages
// ----------------------------------------------------------------------------------------------

std::string Where::Header() const {
    if (section.empty())
        return "the file";
    return listed ? "[[" + section + "]]" : "[" + section + "]";
}

std::string Where::Label() const {
    return key.empty() ? Header() : "'" + key + "' in " + Header();
}

Where Where::At(std::string_view new_key) const {
    return {path, section, listed, std::string(new_key)};
}

Where Where::Inside(bool list) const {
    return {path, section.empty() ? key : section + "." + key, list, ""};
}

Place PlaceOf(const toml::node &node) {
    return {node.source().begin.line, node.source().begin.column};
}

Place PlaceOf(const toml::table &table, std::string_view key) {
    const auto entry = table.find(key);
    if (entry == table.end())
        return PlaceOf(table);
    return {entry->first.source().begin.line, entry->first.source().begin.column};
}

static std::string WithoutControls(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return std::iscntrl(c) != 0; }, ' ');
    return text;
}

Mistake MakeMistake(const Where &where, const Place &place, std::string wrong, std::string right) {
    return {WithoutControls(where.path), place, WithoutControls(std::move(wrong)),
            WithoutControls(std::move(right))};
}

void Fail(const Where &where, const Place &place, const std::string &wrong, const std::string &right) {
    throw BoardError({MakeMistake(where, place, wrong, right)});
}

void Mistakes::Add(const BoardError &error) {
    all_.insert(all_.end(), error.Mistakes().begin(), error.Mistakes().end());
    if (all_.size() > kMostMistakes)
        ThrowIfAny();
}

void Mistakes::ThrowIfAny() {
    if (all_.empty())
        return;
    std::stable_sort(all_.begin(), all_.end(), [](const Mistake &a, const Mistake &b) {
        return std::tie(a.path, a.place.line, a.place.column) <
               std::tie(b.path, b.place.line, b.place.column);
    });
    throw BoardError(std::exchange(all_, {}));
}

// A text in quotes; a long one is cut, and says so.
static std::string Quoted(const std::string &text) {
    constexpr size_t kMost = 200;
    if (text.size() <= kMost)
        return "\"" + text + "\"";
    return "\"" + text.substr(0, kMost) + "...\" (" + std::to_string(text.size()) + " characters)";
}

static std::string Describe(const toml::node &node) {
    switch (node.type()) {
    case toml::node_type::integer:
        return std::to_string(node.as_integer()->get());
    case toml::node_type::string:
        return "the text " + Quoted(node.as_string()->get());
    case toml::node_type::boolean:
        return node.as_boolean()->get() ? "true" : "false";
    case toml::node_type::floating_point:
        return "a number with a fraction";
    case toml::node_type::array:
        return "a list of " + std::to_string(node.as_array()->size()) + " values";
    case toml::node_type::table:
        return "a table";
    default:
        return "a date or time";
    }
}

void Mismatch(const Where &where, const toml::node &node, const std::string &expected) {
    Fail(where, PlaceOf(node), where.Label() + " is " + Describe(node), "it must be " + expected);
}

// Edits (insert, drop, change, swap neighbours) that turn one word into the other, letter case aside.
static size_t EditDistance(std::string_view a, std::string_view b) {
    auto at = [](std::string_view text, size_t i) {
        return std::tolower(static_cast<unsigned char>(text[i]));
    };
    std::vector<std::vector<size_t>> d(a.size() + 1, std::vector<size_t>(b.size() + 1));
    for (size_t i = 0; i <= a.size(); ++i)
        for (size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                d[i][j] = i + j;
                continue;
            }
            const size_t change = at(a, i - 1) == at(b, j - 1) ? 0 : 1;
            d[i][j] = std::min({d[i - 1][j] + 1, d[i][j - 1] + 1, d[i - 1][j - 1] + change});
            if (i > 1 && j > 1 && at(a, i - 1) == at(b, j - 2) && at(a, i - 2) == at(b, j - 1))
                d[i][j] = std::min(d[i][j], d[i - 2][j - 2] + 1);
        }
    return d[a.size()][b.size()];
}

std::string Suggestion(std::string_view word, const std::vector<std::string> &known,
                       const std::string &otherwise) {
    size_t best = std::max<size_t>(2, word.size() / 3) + 1;
    std::string nearest;
    for (const std::string &candidate : known) {
        const size_t distance = EditDistance(word, candidate);
        if (distance < best && distance < candidate.size()) {
            best = distance;
            nearest = candidate;
        }
    }
    return nearest.empty() ? otherwise : "did you mean '" + nearest + "'?";
}

// ---- numbers and readers
// -----------------------------------------------------------------------------------

std::optional<int64_t> ParseNumber(std::string_view text) {
    const bool hex = text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X";
    const std::string_view digits = hex ? text.substr(2) : text;
    if (digits.empty() || digits[0] == '-')
        return std::nullopt;
    int64_t value = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), value, hex ? 16 : 10);
    if (error != std::errc() || end != digits.data() + digits.size())
        return std::nullopt;
    return value;
}

std::string RangeText(int64_t min, int64_t max) {
    if (min == std::numeric_limits<int64_t>::min() && max == std::numeric_limits<int64_t>::max())
        return "a whole number";
    return "a number " + std::to_string(min) + " to " + std::to_string(max);
}

Reader<bool> Flag() {
    return {"true or false", [](const toml::node &node) { return node.value_exact<bool>(); },
            R"({"type": "boolean"})"};
}

Reader<uint8_t> FlagByte() {
    return {"true, false or a number 0 to 255",
            [](const toml::node &node) -> std::optional<uint8_t> {
                if (const auto *flag = node.as_boolean())
                    return static_cast<uint8_t>(flag->get());
                return Number<uint8_t>().parse(node);
            },
            schema::AnyOf({Flag().schema, schema::Integer(0, 255)})};
}

Reader<std::string> Text(size_t min, size_t max) {
    return {"a text of " + std::to_string(min) + " to " + std::to_string(max) + " printable ASCII characters",
            [=](const toml::node &node) -> std::optional<std::string> {
                const auto *text = node.as_string();
                auto printable = [](char c) { return c >= ' ' && c <= '~'; };
                if (text == nullptr || text->get().size() < min || text->get().size() > max ||
                    !std::all_of(text->get().begin(), text->get().end(), printable))
                    return std::nullopt;
                return text->get();
            },
            schema::Pattern("[ -~]{" + std::to_string(min) + "," + std::to_string(max) + "}")};
}

Reader<std::vector<bool>> Flags() {
    return {"a list of at most 255 times true or false",
            [](const toml::node &node) -> std::optional<std::vector<bool>> {
                const auto *list = node.as_array();
                if (list == nullptr || list->size() > 255)
                    return std::nullopt;
                std::vector<bool> flags;
                for (const toml::node &element : *list) {
                    if (!element.is_boolean())
                        return std::nullopt;
                    flags.push_back(element.as_boolean()->get());
                }
                return flags;
            },
            schema::ListOf(Flag().schema, 255)};
}

constexpr int64_t kMaxFile = 1 << 20; // bytes

static std::optional<std::vector<uint8_t>> HexBytes(std::string_view text) {
    std::vector<uint8_t> bytes;
    for (size_t i = 0; i < text.size();) {
        if (text[i] == ' ' || text[i] == '\n') {
            ++i;
            continue;
        }
        const auto value = ParseNumber("0x" + std::string(text.substr(i, 2)));
        if (i + 2 > text.size() || !value)
            return std::nullopt;
        bytes.push_back(static_cast<uint8_t>(*value));
        i += 2;
    }
    return bytes;
}

// { hex = "01 FF" } or { size = 64, fill = 0xEE }
static std::optional<std::vector<uint8_t>> TableBytes(const toml::table &table) {
    if (const auto *hex = table["hex"].as_string(); hex != nullptr && table.size() == 1)
        return HexBytes(hex->get());
    const auto size = table["size"].value_exact<int64_t>();
    if (!size || *size < 0 || *size > kMaxFile || table.size() > 2)
        return std::nullopt;
    if (table.size() == 1)
        return std::vector<uint8_t>(static_cast<size_t>(*size), 0);
    const auto fill = table["fill"].value_exact<int64_t>();
    if (!fill || *fill < 0 || *fill > 255)
        return std::nullopt;
    return std::vector<uint8_t>(static_cast<size_t>(*size), static_cast<uint8_t>(*fill));
}

static std::optional<std::vector<uint8_t>> ListedBytes(const toml::array &list) {
    std::vector<uint8_t> bytes;
    for (const toml::node &element : list) {
        const std::optional<uint8_t> byte = Number<uint8_t>().parse(element);
        if (!byte)
            return std::nullopt;
        bytes.push_back(*byte);
    }
    return bytes;
}

// "0G": which pair of digits is none.
static void ExplainHex(const Where &where, const toml::node &node) {
    const std::string &text = node.as_string()->get();
    const std::string right = "write two digits 0-9 or A-F for each byte, as in { hex = \"01 FF\" }";
    for (size_t i = 0; i < text.size();) {
        const std::string pair = text.substr(i, 2);
        const bool gap = text[i] == ' ' || text[i] == '\n';
        if (!gap && (pair.size() < 2 || !HexBytes(pair)))
            Fail(where, PlaceOf(node),
                 where.Label() + " has a hex text with " + Quoted(pair) + " at character " +
                     std::to_string(i + 1),
                 right);
        i += gap ? 1 : 2;
    }
}

static void ExplainTable(const Where &where, const toml::table &table) {
    for (const auto &[key, node] : table) {
        const Where at = where.At(where.key + "." + std::string(key.str()));
        if (key != "hex" && key != "size" && key != "fill")
            Fail(at, PlaceOf(table, key.str()), "unknown key " + at.Label(),
                 "write { hex = \"01 FF\" } or { size = 64, fill = 0 }");
        if (key == "hex" && node.is_string())
            ExplainHex(where, node);
        if (key == "size")
            Number<uint32_t>(0, kMaxFile).Get(at, node);
        if (key == "fill")
            Number<uint8_t>().Get(at, node);
    }
}

// What is wrong within a content of the right form.
static void ExplainBytes(const Where &where, const toml::node &node) {
    if (const auto *table = node.as_table())
        ExplainTable(where, *table);
    if (const auto *list = node.as_array())
        for (const toml::node &element : *list)
            if (!Number<uint8_t>().parse(element))
                Fail(where, PlaceOf(element), where.Label() + " holds " + Describe(element),
                     "it must be " + Number<uint8_t>().expected);
}

Reader<std::vector<uint8_t>> Bytes() {
    return {
        "a text, a list of numbers 0 to 255, { hex = \"01 FF\" } or { size = 64, fill = 0 }",
        [](const toml::node &node) -> std::optional<std::vector<uint8_t>> {
            if (const auto *text = node.as_string())
                return std::vector<uint8_t>(text->get().begin(), text->get().end());
            if (const auto *list = node.as_array())
                return ListedBytes(*list);
            if (const auto *table = node.as_table())
                return TableBytes(*table);
            return std::nullopt;
        },
        schema::AnyOf(
            {R"({"type": "string"})", schema::ListOf(schema::Integer(0, 255)),
             R"({"type": "object", "required": ["hex"], "additionalProperties": false, "properties": {"hex": )" +
                 schema::Pattern("([ \\n]*[0-9a-fA-F]{2})*[ \\n]*") + "}}",
             R"({"type": "object", "required": ["size"], "additionalProperties": false, "properties": {"size": )" +
                 schema::Integer(0, kMaxFile) + R"(, "fill": )" + schema::Integer(0, 255) + "}}"}),
        ExplainBytes};
}

// ---- lists of numbers
// --------------------------------------------------------------------------------------

std::string NumberListText(const std::string &noun) {
    return "a list of " + noun + " numbers 0 to 255 and ranges such as \"0-7\"";
}

// 12 or "0-7": first and last number.
static std::optional<std::pair<int64_t, int64_t>> Range(const toml::node &node) {
    std::optional<int64_t> first = node.value_exact<int64_t>();
    std::optional<int64_t> last = first;
    if (const auto *text = node.as_string()) {
        const std::string_view range = text->get();
        const size_t dash = range.find('-');
        first = ParseNumber(range.substr(0, dash));
        last = dash == range.npos ? first : ParseNumber(range.substr(dash + 1));
    }
    if (!first || !last || *first < 0 || *first > *last || *last > 255)
        return std::nullopt;
    return std::pair(*first, *last);
}

std::vector<uint8_t> ReadNumberList(const Where &where, const toml::node &node, const std::string &noun,
                                    std::optional<uint8_t> repeatable) {
    const auto *list = node.as_array();
    if (list == nullptr)
        Mismatch(where, node, NumberListText(noun));
    std::vector<uint8_t> numbers;
    for (const toml::node &element : *list) {
        const auto range = Range(element);
        if (!range)
            Fail(where, PlaceOf(element), where.Label() + " holds " + Describe(element),
                 "it must be " + NumberListText(noun));
        for (int64_t n = range->first; n <= range->second; ++n) {
            const auto number = static_cast<uint8_t>(n);
            if (number != repeatable && std::count(numbers.begin(), numbers.end(), number) != 0)
                Fail(where, PlaceOf(element),
                     where.Label() + " holds " + noun + " " + std::to_string(n) + " twice",
                     "list every " + noun + " once");
            numbers.push_back(number);
        }
    }
    return numbers;
}

Rule NumberList(const std::string &key, std::vector<uint8_t> &target, const std::string &noun,
                std::optional<uint8_t> repeatable) {
    return {.key = key,
            .expected = NumberListText(noun),
            .read =
                [=, &target](const Where &where, const toml::node &node) {
                    target = ReadNumberList(where, node, noun, repeatable);
                },
            .schema = [] { return schema::NumberList(255); }};
}

// ---- tables
// ------------------------------------------------------------------------------------------------

// The parser keeps keys sorted by name; a reader of messages wants the first fault of the file first.
std::vector<std::pair<std::string, const toml::node *>> InFileOrder(const toml::table &table) {
    std::vector<std::pair<toml::source_position, std::pair<std::string, const toml::node *>>> entries;
    for (const auto &[key, node] : table)
        entries.push_back({key.source().begin, {std::string(key.str()), &node}});
    std::stable_sort(entries.begin(), entries.end(),
                     [](const auto &a, const auto &b) { return a.first < b.first; });
    std::vector<std::pair<std::string, const toml::node *>> sorted;
    for (auto &entry : entries)
        sorted.push_back(std::move(entry.second));
    return sorted;
}

const toml::table &NeedTable(const Where &where, const toml::node &node) {
    if (!node.is_table())
        Mismatch(where, node, "a table " + where.Inside().Header());
    return *node.as_table();
}

void ReadTable(const Where &section, const toml::table &table, const Rules &rules) {
    std::vector<std::string> known;
    for (const Rule &rule : rules)
        known.push_back(rule.key);
    bool misspelled = false; // a key that is missing may be there under another name
    const auto read_key = [&](const std::string &key, const toml::node &node) {
        const auto rule =
            std::find_if(rules.begin(), rules.end(), [&](const Rule &r) { return r.key == key; });
        misspelled = misspelled || rule == rules.end();
        if (rule == rules.end()) {
            std::string all = "known keys are";
            for (const std::string &name : known)
                all += " '" + name + "'";
            Fail(section, PlaceOf(table, key), "unknown key '" + key + "' in " + section.Header(),
                 Suggestion(key, known, all));
        }
        rule->read(section.At(key), node);
    };
    Mistakes mistakes;
    for (const auto &entry : InFileOrder(table))
        mistakes.Try([&] { read_key(entry.first, *entry.second); });
    for (const Rule &rule : rules)
        mistakes.Try([&] {
            if (rule.required && !misspelled && !table.contains(rule.key))
                Fail(section, PlaceOf(table), section.Header() + " has no key '" + rule.key + "'",
                     "it must be " + rule.expected);
        });
    mistakes.ThrowIfAny();
}

Rule Section(const std::string &key, Rules rules, Finish finish) {
    auto read = [=](const Where &where, const toml::node &node) {
        const toml::table &table = NeedTable(where, node);
        ReadTable(where.Inside(), table, rules);
        if (finish)
            finish(where.Inside(), table);
    };
    return {.key = key, .expected = "table", .read = read, .inside = rules, .schema = [rules] {
                return schema::Table(rules);
            }};
}

void ListKeys(const std::string &section, const Rules &rules, std::vector<BoardKey> &keys) {
    for (const Rule &rule : rules)
        keys.push_back({section, rule.key, rule.expected});
    for (const Rule &rule : rules)
        ListKeys(section.empty() ? rule.key : section + "." + rule.key, rule.inside, keys);
}

} // namespace sim::rules
