// SPDX-License-Identifier: GPL-3.0-or-later
//
// The machinery of the board file reader: a section is a table of rules, a rule is a key with what is
// expected of its value and where the value goes.  Only board_file*.cpp and the workbench's readers of stories and
// descriptions (workbench/runtime/toml_file.h) include this.
#ifndef OXA_SIMULATOR_BOARD_FILE_RULES_H
#define OXA_SIMULATOR_BOARD_FILE_RULES_H

#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "simulator/board_file.h"
#include "simulator/toml_text.h"

namespace sim::rules {

// A key of the file, or a whole section when the key is empty; knows how messages call it.
struct Where {
    std::string path;
    std::string section; // dotted: "disks.backplane"; empty: top level
    bool listed = false; // the section is one of several: [[disks.backplane]]
    std::string key;

    std::string Header() const; // "[cpus]", "[[disks.backplane]]", "the file"
    std::string Label() const;  // "'count' in [cpus]"
    Where At(std::string_view new_key) const;
    Where Inside(bool list = false) const; // the section that the key opens
};

Place PlaceOf(const toml::node &node);
Place PlaceOf(const toml::table &table, std::string_view key); // of the key, else of the table
Mistake MakeMistake(const Where &where, const Place &place, std::string wrong, std::string right);
[[noreturn]] void Fail(const Where &where, const Place &place, const std::string &wrong,
                       const std::string &right);
[[noreturn]] void Mismatch(const Where &where, const toml::node &node, const std::string &expected);

// Gathers what is wrong in several places of a file, so that one run tells all of it.
class Mistakes {
public:
    // Goes on after a BoardError, but not beyond what is told.
    template <class Read> void Try(Read read) {
        try {
            read();
        } catch (const BoardError &error) {
            Add(error);
        }
    }
    void Add(const BoardError &error);
    bool None() const {
        return all_.empty();
    }
    void ThrowIfAny(); // in the order of the file

private:
    std::vector<Mistake> all_;
};

// "did you mean 'count'?" when a known word is near, else `otherwise`.
std::string Suggestion(std::string_view word, const std::vector<std::string> &known,
                       const std::string &otherwise);

std::optional<int64_t> ParseNumber(std::string_view text); // whole text, decimal or 0x...
std::string RangeText(int64_t min, int64_t max);           // "a number 0 to 255"

// How a value is read: nothing when it is not what is expected.
template <class T> struct Reader {
    std::string expected;
    std::function<std::optional<T>(const toml::node &)> parse;
    std::string schema{}; // the same as JSON Schema
    std::function<void(const Where &, const toml::node &)>
        explain{}; // fails where more can be said of a value

    T Get(const Where &where, const toml::node &node) const {
        std::optional<T> value = parse(node);
        if (!value && explain)
            explain(where, node);
        if (!value)
            Mismatch(where, node, expected);
        return std::move(*value);
    }
};

// The same for the key of a table whose keys are data.
template <class K> struct KeyReader {
    std::string expected;
    std::function<std::optional<K>(std::string_view)> parse;
    std::vector<std::string> known{}; // names worth a suggestion
    std::string pattern{};            // a regular expression that its texts match
};

struct Rule {
    std::string key{};
    std::string expected{};
    std::function<void(const Where &, const toml::node &)> read{};
    bool required = false;
    std::vector<Rule> inside{}; // rules of the section that this key opens
    std::function<std::string()> schema{};
};
using Rules = std::vector<Rule>;

// ---- the same rules as JSON Schema, for editors
// ------------------------------------------------------------------------

namespace schema {
std::string Quoted(const std::string &text);
std::string Integer(int64_t min, int64_t max);
std::string Pattern(const std::string &pattern); // a text that matches as a whole
std::string Enumeration(const std::vector<std::string> &words);
std::string AnyOf(const std::vector<std::string> &schemas);
std::string ListOf(const std::string &schema, std::optional<size_t> most = std::nullopt);
std::string Table(const Rules &rules);
std::string Keyed(const std::string &key_pattern, const std::string &value); // keys that are data
std::string NumberPattern(int64_t min, int64_t max); // of a number as a text, decimal or 0x...
std::string NumberList(int64_t max);                 // numbers from 0 and ranges of them
} // namespace schema
using Finish = std::function<void(const Where &, const toml::table &)>; // checks that look at several keys

void ReadTable(const Where &section, const toml::table &table, const Rules &rules);
std::vector<std::pair<std::string, const toml::node *>> InFileOrder(const toml::table &table);
const toml::table &NeedTable(const Where &where, const toml::node &node);
void ListKeys(const std::string &section, const Rules &rules, std::vector<BoardKey> &keys);

// ---- readers
// -----------------------------------------------------------------------------------------------

template <class T>
Reader<T> Number(int64_t min = std::numeric_limits<T>::min(), int64_t max = std::numeric_limits<T>::max()) {
    return {RangeText(min, max),
            [=](const toml::node &node) -> std::optional<T> {
                const auto *number = node.as_integer();
                if (number == nullptr || number->get() < min || number->get() > max)
                    return std::nullopt;
                return static_cast<T>(number->get());
            },
            schema::Integer(min, max)};
}

template <class T> using Words = std::vector<std::pair<std::string, T>>;

// A number or one of several words that stand for one.
template <class T> Reader<T> NumberOr(const Words<T> &words) {
    const Reader<T> number = Number<T>();
    std::string expected = number.expected;
    const char *before = " or ";
    std::vector<std::string> names;
    for (const auto &[word, value] : words) {
        names.push_back(word);
        expected += before + ("\"" + word + "\"");
        before = ", ";
    }
    return {expected,
            [=](const toml::node &node) -> std::optional<T> {
                if (const auto *text = node.as_string())
                    for (const auto &[word, value] : words)
                        if (word == text->get())
                            return value;
                return number.parse(node);
            },
            schema::AnyOf({number.schema, schema::Enumeration(names)})};
}

Reader<bool> Flag();
Reader<uint8_t> FlagByte();                       // true, false, or the byte itself
Reader<std::string> Text(size_t min, size_t max); // printable characters of ASCII
Reader<std::vector<bool>> Flags();
Reader<std::vector<uint8_t>> Bytes(); // content of a file

template <class K> KeyReader<K> NumberKey(int64_t min, int64_t max, const Words<K> &words = {}) {
    KeyReader<K> reader{RangeText(min, max), nullptr, {}, {}};
    for (const auto &[word, value] : words)
        reader.known.push_back(word);
    if (!words.empty())
        reader.expected += " or a name such as " + words.back().first;
    reader.parse = [=](std::string_view text) -> std::optional<K> {
        for (const auto &[word, value] : words)
            if (word == text)
                return value;
        const std::optional<int64_t> number = ParseNumber(text);
        if (!number || *number < min || *number > max)
            return std::nullopt;
        return static_cast<K>(*number);
    };
    reader.pattern = schema::NumberPattern(min, max);
    for (const std::string &word : reader.known)
        reader.pattern += "|" + word;
    return reader;
}

// ---- rules
// -------------------------------------------------------------------------------------------------

template <class T, class V> Rule Value(const std::string &key, T &target, const Reader<V> &reader) {
    return {.key = key,
            .expected = reader.expected,
            .read = [=, &target](const Where &where,
                                 const toml::node &node) { target = reader.Get(where, node); },
            .schema = [text = reader.schema] { return text; }};
}

template <class T> Rule Value(const std::string &key, T &target) {
    return Value(key, target, Number<T>());
}
template <class T> Rule Value(const std::string &key, std::optional<T> &target) {
    return Value(key, target, Number<T>());
}
inline Rule Value(const std::string &key, bool &target) {
    return Value(key, target, Flag());
}

inline Rule Required(Rule rule) {
    rule.required = true;
    return rule;
}

// Numbers 0 to 255 and ranges "0-7"; a number given twice is refused, but for `repeatable`.
Rule NumberList(const std::string &key, std::vector<uint8_t> &target, const std::string &noun,
                std::optional<uint8_t> repeatable = std::nullopt);
std::vector<uint8_t> ReadNumberList(const Where &where, const toml::node &node, const std::string &noun,
                                    std::optional<uint8_t> repeatable);
std::string NumberListText(const std::string &noun); // what such a list is expected to be

Rule Section(const std::string &key, Rules rules, Finish finish = nullptr);

// [[key]]: one element per table.
template <class T>
Rule List(const std::string &key, std::vector<T> &target, Rules (*element_rules)(T &), size_t most) {
    T sample{};
    auto read = [=, &target](const Where &where, const toml::node &node) {
        const Where inside = where.Inside(true);
        const std::string expected =
            "one or more " + inside.Header() + " tables, at most " + std::to_string(most);
        const auto *list = node.as_array();
        if (list == nullptr || list->size() > most)
            Mismatch(where, node, expected);
        Mistakes mistakes;
        for (const toml::node &element : *list)
            mistakes.Try([&] {
                if (!element.is_table())
                    Mismatch(where, element, expected);
                target.emplace_back();
                ReadTable(inside, *element.as_table(), element_rules(target.back()));
            });
        mistakes.ThrowIfAny();
    };
    const Rules inside = element_rules(sample);
    return {.key = key, .expected = "tables", .read = read, .inside = inside, .schema = [=] {
                return schema::ListOf(schema::Table(inside), most);
            }};
}

// A table whose keys are data; `store` reads one value.
template <class K, class V>
void ReadKeyed(const Where &where, const toml::node &node, std::map<K, V> &target,
               const KeyReader<K> &key_reader,
               const std::function<V(const Where &, const toml::node &)> &read_value) {
    const Where inside = where.Inside();
    const toml::table &table = NeedTable(where, node);
    const auto read_entry = [&](const std::string &text, const toml::node &value) {
        const std::optional<K> key = key_reader.parse(text);
        const Place place = PlaceOf(table, text);
        if (!key)
            Fail(inside, place, "unknown key '" + text + "' in " + inside.Header(),
                 Suggestion(text, key_reader.known, "a key must be " + key_reader.expected));
        if (target.count(*key) != 0)
            Fail(inside, place,
                 "key '" + text + "' in " + inside.Header() + " names the same thing as an earlier one",
                 "give every key once");
        target.emplace(*key, read_value(inside.At(text), value));
    };
    Mistakes mistakes;
    for (const auto &entry : InFileOrder(table))
        mistakes.Try([&] { read_entry(entry.first, *entry.second); });
    mistakes.ThrowIfAny();
}

template <class K, class V>
Rule Map(const std::string &key, std::map<K, V> &target, const KeyReader<K> &key_reader,
         const Reader<V> &reader) {
    auto read = [=, &target](const Where &where, const toml::node &node) {
        ReadKeyed<K, V>(where, node, target, key_reader,
                        [&](const Where &at, const toml::node &value) { return reader.Get(at, value); });
    };
    Rule any{.key = "*", .expected = key_reader.expected + " = " + reader.expected};
    return {
        .key = key,
        .expected = "table",
        .read = read,
        .inside = {any},
        .schema = [keys = key_reader.pattern, value = reader.schema] { return schema::Keyed(keys, value); }};
}

// [key.1], [key.2], ...
template <class K, class V>
Rule Numbered(const std::string &key, std::map<K, V> &target, const KeyReader<K> &key_reader,
              Rules (*element_rules)(V &)) {
    V sample{};
    auto read_one = [=](const Where &where, const toml::node &node) {
        V element{};
        ReadTable(where.Inside(), NeedTable(where, node), element_rules(element));
        return element;
    };
    auto read = [=, &target](const Where &where, const toml::node &node) {
        ReadKeyed<K, V>(where, node, target, key_reader, read_one);
    };
    Rule any{.key = "*", .expected = key_reader.expected, .inside = element_rules(sample)};
    return {.key = key,
            .expected = "table",
            .read = read,
            .inside = {any},
            .schema = [keys = key_reader.pattern, any] {
                return schema::Keyed(keys, schema::Table(any.inside));
            }};
}

} // namespace sim::rules
#endif
