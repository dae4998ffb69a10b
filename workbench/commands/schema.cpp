// SPDX-License-Identifier: GPL-3.0-or-later
//
// oxa-sensors schema: the rules of the readers of TOML files as JSON Schema, for editors.
#include <map>
#include <memory>

#include "base/json.h"
#include "base/output.h"
#include "commands/commands.h"
#include "runtime/description.h"
#include "runtime/schema.h"
#include "scenario/schema.h"

namespace workbench {
namespace {

struct KeyMeaning {
    const char *file, *key, *meaning;
};
constexpr KeyMeaning kMeanings[] = {
#define MEANING(file, key, meaning) {file, key, meaning},
#include "commands/schema_meanings.def"
#undef MEANING
};

using Meanings = std::map<std::string, std::string>; // by dotted key; "*" for keys that are data

Meanings MeaningsOf(const std::string &file, const std::string &prefix) {
    Meanings out;
    for (const KeyMeaning &meaning : kMeanings)
        if (meaning.file == file)
            out[prefix + meaning.key] = meaning.meaning;
    return out;
}

void AddDescriptions(const std::string &prefix, Meanings &out) {
    for (const DescriptionKey &key : DescriptionKeys())
        out[prefix + key.key] = key.meaning;
}

// Lists and alternatives leave the key as it is.
void Describe(const std::string &path, const Meanings &meanings, Json &node) {
    if (!node.is_object())
        return;
    const auto describe_key = [&](const std::string &key, Json &value) {
        const std::string inner = path.empty() ? key : path + "." + key;
        if (const auto found = meanings.find(inner); found != meanings.end())
            value["description"] = found->second;
        Describe(inner, meanings, value);
    };
    if (node.contains("properties"))
        for (auto &[key, value] : node["properties"].items())
            describe_key(key, value);
    if (node.contains("additionalProperties") && node["additionalProperties"].is_object())
        describe_key("*", node["additionalProperties"]);
    if (node.contains("items"))
        Describe(path, meanings, node["items"]);
    if (node.contains("anyOf"))
        for (Json &alternative : node["anyOf"])
            Describe(path, meanings, alternative);
}

std::string Document(const std::string &title, const std::string &schema, const Meanings &meanings) {
    Json out{{"$schema", "http://json-schema.org/draft-07/schema#"},
             {"title", title},
             {"$comment", "Printed by oxa-sensors schema; the rules are those of its reader."}};
    out.update(Json::parse(schema));
    Describe("", meanings, out);
    return out.dump(1) + "\n";
}

std::string SchemaOf(const std::string &file) {
    if (file == "board")
        return Document("Board description of oxa-sensors", BoardSchema(), MeaningsOf("board", ""));
    Meanings meanings;
    if (file == "description") {
        AddDescriptions("", meanings);
        return Document("Sensor description of oxa-sensors add", DescriptionSchema(), meanings);
    }
    meanings = MeaningsOf("story", "");
    meanings.merge(MeaningsOf("board", "step.change."));
    meanings.merge(MeaningsOf("board", "step."));
    AddDescriptions("step.add.", meanings);
    AddDescriptions("step.remove.", meanings);
    return Document("Story of oxa-sensors scenario", StorySchema(), meanings);
}

} // namespace

void AddSchemaCommand(Command &program) {
    Command command = program.AddCommand("schema", "JSON Schema of a TOML file, for editors");
    const auto file = std::make_shared<std::string>();
    command.AddOption("KIND", *file, "Of which file: board, story or description")
        .Required()
        .Takes("")
        .OneOf({"board", "story", "description"});
    command.Footer("Exit status: 0 done; 2 wrong input.");
    command.Example("oxa-sensors schema board");
    command.Runs([file] { PrintOut(SchemaOf(*file)); });
}

} // namespace workbench
