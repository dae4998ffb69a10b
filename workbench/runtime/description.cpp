// SPDX-License-Identifier: GPL-3.0-or-later
#include "runtime/description.h"

#include <algorithm>
#include <sstream>

#include "base/text.h"
#include "runtime/description_rules.h"
#include "runtime/schema.h"

namespace workbench {
namespace {

using sim::rules::Reader;
using sim::rules::Rules;
namespace schema = sim::rules::schema;
using sim::rules::Where;

template <class T> T Taken(const std::optional<T> &said, T otherwise = 0) {
    return said.value_or(otherwise);
}

std::optional<uint16_t> BitsOf(const std::string &text) {
    unsigned bits = 0;
    std::istringstream parts(text);
    for (std::string part; std::getline(parts, part, ',');) {
        const std::span<const Word> words = ThresholdTable();
        const auto found =
            std::find_if(words.begin(), words.end(), [&](const Word &w) { return part == w.word; });
        if (found == words.end())
            return std::nullopt;
        bits |= found->value;
    }
    return text.empty() || text.back() == ',' ? std::nullopt : std::optional(static_cast<uint16_t>(bits));
}

// A number or a word; an unknown word is answered with the nearest one.
template <class T>
sim::rules::Rule Worded(const std::string &key, std::optional<T> &target, std::span<const Word> words,
                        const std::string &example) {
    const Reader<T> number = sim::rules::Number<T>();
    const std::string expected = number.expected + " or a word such as \"" + example + "\"";
    auto read = [=, &target](const Where &where, const toml::node &node) {
        const auto *text = node.as_string();
        if (text == nullptr) {
            target = Reader<T>{expected, number.parse}.Get(where, node);
            return;
        }
        std::vector<std::string> known;
        for (const Word &word : words) {
            known.push_back(word.word);
            if (text->get() == word.word) {
                target = static_cast<T>(word.value);
                return;
            }
        }
        sim::rules::Fail(where, sim::rules::PlaceOf(node),
                         where.Label() + " is the text \"" + text->get() + "\"",
                         sim::rules::Suggestion(text->get(), known, "it must be " + expected));
    };
    return {.key = key, .expected = expected, .read = read, .schema = [=] {
                std::vector<std::string> known;
                for (const Word &word : words)
                    known.push_back(word.word);
                return schema::AnyOf({number.schema, schema::Enumeration(known)});
            }};
}

std::string BitsSchema() {
    std::string words;
    for (const Word &word : ThresholdTable())
        words += (words.empty() ? "" : "|") + std::string(word.word);
    const std::string text = schema::Pattern("(" + words + ")(,(" + words + "))*");
    return schema::AnyOf({schema::Integer(0, 65535), text, schema::ListOf(text)});
}

struct Meaning {
    const char *key, *meaning;
};
constexpr Meaning kMeanings[] = {
    {"class", "sensor class: what kind of record is built"},
    {"device_type", "card or device type; index of a power supply"},
    {"slot", "printed number of the slot; index of a power supply; 255 (none) if not given"},
    {"sub_type", "sub device type; 1 for NVMe disks"},
    {"index", "sensor index on the card (Brenmor index); accuracy of a fan"},
    {"seq", "port number"},
    {"second_port", "port number of a voltage sensor"},
    {"bitmap", "thresholds that exist, of a disk status sensor the disk kind; default: the thresholds given"},
    {"unr", "upper non-recoverable threshold, raw"},
    {"uc", "upper critical threshold, raw"},
    {"unc", "upper non-critical threshold, raw"},
    {"lnc", "lower non-critical threshold, raw"},
    {"lc", "lower critical threshold, raw"},
    {"lnr", "lower non-recoverable threshold, raw"},
    {"hysteresis", "raw; 0 keeps the kind's own"},
};

uint16_t SaidThresholds(const DescriptionDraft &draft) {
    const std::pair<bool, unsigned> all[] = {
        {draft.unr.has_value(), THRESH_BIT_UNR}, {draft.uc.has_value(), THRESH_BIT_UC},
        {draft.unc.has_value(), THRESH_BIT_UNC}, {draft.lnr.has_value(), THRESH_BIT_LNR},
        {draft.lc.has_value(), THRESH_BIT_LC},   {draft.lnc.has_value(), THRESH_BIT_LNC},
    };
    unsigned bits = 0;
    for (const auto &[said, bit] : all)
        bits |= said ? bit : 0;
    return static_cast<uint16_t>(bits);
}

} // namespace

Reader<uint16_t> ThresholdBits() {
    return {"a number 0 to 65535 or thresholds such as \"uc,unr\"",
            [](const toml::node &node) -> std::optional<uint16_t> {
                if (const auto *text = node.as_string())
                    return BitsOf(text->get());
                const auto *list = node.as_array();
                if (list == nullptr)
                    return sim::rules::Number<uint16_t>().parse(node);
                unsigned bits = 0;
                for (const toml::node &element : *list) {
                    const auto *text = element.as_string();
                    const auto bit = text != nullptr ? BitsOf(text->get()) : std::nullopt;
                    if (!bit)
                        return std::nullopt;
                    bits |= *bit;
                }
                return static_cast<uint16_t>(bits);
            },
            BitsSchema()};
}

Rules DescriptionRules(DescriptionDraft &draft) {
    using sim::rules::Value;
    return {
        Worded("class", draft.sensor_class, ClassTable(), "temperature"),
        Worded("device_type", draft.device_type, DeviceTypeTable(), "nvme-disk"),
        Value("slot", draft.slot),
        Value("sub_type", draft.sub_type),
        Value("index", draft.index),
        Value("seq", draft.seq),
        Value("second_port", draft.second_port),
        Value("bitmap", draft.bitmap, ThresholdBits()),
        Value("unr", draft.unr),
        Value("uc", draft.uc),
        Value("unc", draft.unc),
        Value("lnc", draft.lnc),
        Value("lc", draft.lc),
        Value("lnr", draft.lnr),
        Value("hysteresis", draft.hysteresis),
    };
}

std::string BoardSchema() {
    sim::rules::Draft draft; // only its keys are looked at, here and below
    return schema::Table(sim::rules::FileRules(draft));
}

std::string DescriptionSchema() {
    DescriptionDraft draft;
    return schema::Table(DescriptionRules(draft));
}

std::vector<DescriptionKey> DescriptionKeys() {
    DescriptionDraft draft; // only its keys are looked at
    std::vector<DescriptionKey> keys;
    for (const sim::rules::Rule &rule : DescriptionRules(draft))
        for (const Meaning &meaning : kMeanings)
            if (rule.key == meaning.key)
                keys.push_back({rule.key, rule.expected, meaning.meaning});
    return keys;
}

void SetFromWord(DescriptionDraft &draft, const std::string &key, const std::string &word) {
    std::string option = "--" + key;
    std::replace(option.begin(), option.end(), '_', '-');
    for (const sim::rules::Rule &rule : DescriptionRules(draft)) {
        if (rule.key != key)
            continue;
        try {
            AsNode(
                word, [&](const toml::node &node) { rule.read({}, node); });
        } catch (const sim::BoardError &error) {
            throw InputError(option + " " + word + ": " + error.Mistakes().front().right);
        }
    }
}

DescriptionDraft LoadDescription(const std::string &path) {
    return AsInput([&] {
        const toml::table table =
            sim::LoadToml(path, "a file such as description.toml with class = \"temperature\"");
        DescriptionDraft draft;
        sim::rules::ReadTable({.path = path, .section = "", .key = ""}, table, DescriptionRules(draft));
        return draft;
    });
}

bool NamesWhatGoes(const DescriptionDraft &draft) {
    return draft.sensor_class != kPsuFruClass || draft.slot || draft.device_type;
}

SpecificSensorParam Finish(const DescriptionDraft &draft) {
    if (!draft.sensor_class)
        throw InputError("no sensor class: give --class or a --description with the key 'class'");
    SpecificSensorParam param{};
    param.dwSensorDevType = *draft.sensor_class;
    param.ucDeviceType = Taken(draft.device_type);
    param.SlotId = Taken(draft.slot, kNoSlot);
    if (param.dwSensorDevType == kPsuFruClass) {
        param.ucDeviceType = draft.device_type.value_or(Taken(draft.slot));
        param.SlotId = draft.slot.value_or(param.ucDeviceType);
    }
    param.wBitmap = draft.bitmap.value_or(SaidThresholds(draft));
    param.ucUNR = Taken(draft.unr);
    param.ucUC = Taken(draft.uc);
    param.ucUNC = Taken(draft.unc);
    param.ucLNC = Taken(draft.lnc);
    param.ucLC = Taken(draft.lc);
    param.ucLNR = Taken(draft.lnr);
    param.ucHysteresis = Taken(draft.hysteresis);
    param.ucBrenmorSensorIndex = Taken(draft.index);
    param.SubDeviceType = Taken(draft.sub_type);
    param.ucSensorSeq = Taken(draft.seq);
    param.ucSecondPort = Taken(draft.second_port);
    return param;
}

} // namespace workbench
