#include "flight/VocabularyPages.h"

#include <fmt/format.h>

#include <limits>
#include <nlohmann/json.hpp>

#include "flight/Vocabulary.h"

namespace sim {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view kIntroduction = R"(# Flight files

<!-- Made by `vyra-sim vocabulary` from the vocabulary in sim/flight/; a test holds it against that. -->

What happens in a flight of `vyra-sim run --flight FILE`, and what must be true then: a JSON object with two
arrays, `steps` and `expectations`. Each element is an object in which one key, the word, says what it is.
`plugins/demo-flight.json` uses nearly all of them.

```json
{
  "steps": [{ "frame": 10, "writeDataRef": { "name": "clock/rate_ratio", "value": 2 } }],
  "expectations": [
    { "after": "start", "plugin": "org.skyvora.clock", "is": "enabled" },
    { "frame": 10, "dataRef": "clock/rate_ratio", "equals": 2 }
  ]
}
```

Paths are relative to the simulator folder. What is wrong in a file is told with line and column, and with the
word that was probably meant. Editors complete and check a flight file whose `$schema` names the path of
`share/vyra/flight.schema.json`, where the simulator is installed; `vyra-sim vocabulary --schema` prints it.
)";

std::string WholeNumberName(const Key& key) {
  constexpr int kLargest = std::numeric_limits<int>::max();
  if (key.largest == kLargest)
    return key.smallest == -kLargest ? "whole number" : fmt::format("whole number from {}", key.smallest);
  return fmt::format("whole number from {} to {}", key.smallest, key.largest);
}

std::string KindName(const Key& key) {
  switch (key.kind) {
    case KeyKind::Text:
      return "text";
    case KeyKind::WholeNumber:
      return WholeNumberName(key);
    case KeyKind::Number:
      return "number";
    case KeyKind::Value:
      return "number, array of numbers or text";
    case KeyKind::True:
      return "`true`";
    case KeyKind::Choice:
      return fmt::format("`\"{}\"`", fmt::join(key.choices, "\"`, `\""));
    case KeyKind::Object:
      break;
  }
  return "object";
}

std::string KeyLine(const Key& key, int depth) {
  std::string text = fmt::format("{:{}}- `{}` ({}{}): {}\n", "", 2 * depth, key.name, KindName(key),
                                 key.isRequired ? "" : ", may be left out", key.description);
  for (const Key& inner : key.keys) text += KeyLine(inner, depth + 1);
  return text;
}

std::string WordLines(const Word& word) {
  std::string text = KeyLine(word.key, 0);
  for (const Key& key : word.others) text += KeyLine(key, 1);
  return text;
}

Json SchemaOf(const Key& key);

// An object with these keys and no others.
Json ObjectSchema(const std::vector<Key>& keys) {
  Json schema = {{"type", "object"}, {"properties", Json::object()}, {"required", Json::array()}};
  for (const Key& key : keys) {
    schema["properties"][std::string(key.name)] = SchemaOf(key);
    if (key.isRequired) schema["required"].push_back(key.name);
  }
  schema["additionalProperties"] = false;
  return schema;
}

Json ValueSchema(const Key& key) {
  switch (key.kind) {
    case KeyKind::Text:
      return {{"type", "string"}, {"minLength", 1}};
    case KeyKind::WholeNumber:
      return {{"type", "integer"}, {"minimum", key.smallest}, {"maximum", key.largest}};
    case KeyKind::Number:
      return {{"type", "number"}};
    case KeyKind::Value:
      return {{"type", {"number", "string", "array"}}, {"items", {{"type", "number"}}}};
    case KeyKind::True:
      return {{"const", true}};
    case KeyKind::Choice:
      return {{"enum", key.choices}};
    case KeyKind::Object:
      break;
  }
  return ObjectSchema(key.keys);
}

Json SchemaOf(const Key& key) {
  Json schema = {{"description", key.description}};
  schema.update(ValueSchema(key));
  return schema;
}

// Exactly one of these keys is there.
Json OneOfSchema(const std::vector<std::string_view>& keys) {
  Json schema = Json::array();
  for (const std::string_view key : keys) schema.push_back({{"required", {key}}});
  return {{"oneOf", schema}};
}

Json WordSchema(const Word& word, const std::vector<Key>& momentKeys) {
  std::vector<Key> keys = momentKeys;
  keys.push_back(word.key);
  keys.insert(keys.end(), word.others.begin(), word.others.end());
  Json schema = {{"description", word.key.description}};
  schema.update(ObjectSchema(keys));
  if (!word.oneOf.empty()) schema.update(OneOfSchema(word.oneOf));
  return schema;
}

template <class Room>
Json ArraySchema(const std::vector<Room>& rooms, const std::vector<Key>& momentKeys) {
  Json alternatives = Json::array();
  for (const Room& room : rooms) alternatives.push_back(WordSchema(room.word, momentKeys));
  return {{"type", "array"}, {"items", {{"anyOf", alternatives}}}};
}

}  // namespace

std::string VocabularyPage() {
  std::string page(kIntroduction);
  page += "\n## Steps\n\nEvery step has beside its word:\n\n";
  for (const Key& key : StepMomentKeys()) page += KeyLine(key, 0);
  page += "\nThe words:\n\n";
  for (const StepWord& room : StepWords()) page += WordLines(room.word);
  page += "\n## Expectations\n\nEvery expectation has beside its word either `frame` or `after`:\n\n";
  for (const Key& key : ExpectationMomentKeys()) page += KeyLine(key, 0);
  page +=
      "\nOne that was not reached, because the flight ended before its moment, counts as failed. The words, "
      "each "
      "with what it\nholds for:\n\n";
  for (const ExpectationWord& room : ExpectationWords()) page += WordLines(room.word);
  return page;
}

std::string VocabularySchema() {
  Json expectations = ArraySchema(ExpectationWords(), ExpectationMomentKeys());
  std::vector<std::string_view> moments;
  for (const Key& key : ExpectationMomentKeys()) moments.push_back(key.name);
  expectations["items"].update(OneOfSchema(moments));
  const Json schema = {{"$schema", "http://json-schema.org/draft-07/schema#"},
                       {"title", "Flight file of vyra-sim"},
                       {"type", "object"},
                       {"properties",
                        {{"$schema", {{"type", "string"}}},
                         {"steps", ArraySchema(StepWords(), StepMomentKeys())},
                         {"expectations", expectations}}},
                       {"additionalProperties", false}};
  return schema.dump(2) + '\n';
}

}  // namespace sim
