#include "flight/VocabularyPages.h"

#include <fmt/format.h>

#include <limits>
#include <nlohmann/json.hpp>

#include "flight/FlightKeys.h"
#include "flight/Vocabulary.h"

namespace sim {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view kIntroduction = R"(# Flight files

<!-- Made by `vyra-sim vocabulary` from the vocabulary in sim/flight/; a test holds it against that. -->

What happens in a flight of `vyra-sim run --flight FILE`, and what must be true then: a JSON object with two
arrays, `steps` and `expectations`. Each element is an object in which one key, the word, says what it is.
`plugins/demo-flight.json` is an example.

```json
{
  "frames": 600,
  "rate": 60,
  "steps": [
    { "frame": 10, "writeDataRef": { "name": "clock/rate_ratio", "value": 2 } },
    { "later": 0, "waitUntil": { "dataRef": "clock/time_s", "atLeast": 3 }, "limit": 300 },
    { "later": 5, "pickMenuItem": "Plugins/Clock/Set to zero" }
  ],
  "expectations": [
    { "after": "start", "plugin": "org.skyvora.clock", "is": "enabled" },
    { "frame": 10, "dataRef": "clock/rate_ratio", "equals": 2 },
    { "second": 1, "within": 120, "dataRef": "clock/time_s", "between": [0, 0.1] }
  ]
}
```

Paths are relative to the simulator folder. What is wrong in a file is told with line and column, and with the
word that was probably meant. Editors complete and check a flight file whose `$schema` names the path of
`share/vyra/flight.schema.json`, where the simulator is installed; `vyra-sim vocabulary --schema` prints it.
)";

constexpr std::string_view kStepsInARow = R"(
Steps of one moment are carried out in the order of the file. A step that goes on for some frames, such as
`waitUntil`, holds up those behind it that have `later`, and no others. One that was not done when the flight
ended counts as failed.
)";

constexpr std::string_view kAboutExpectations = R"(
The frames of `within`, `throughout` and `never` end with the flight at the latest. An expectation that failed
says what was found, after which frame it was true last, and its line in the file. One that was not reached,
because the flight ended before its moment, counts as failed.
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
    case KeyKind::Amount:
      return "number from 0";
    case KeyKind::Range:
      return "array of two numbers";
    case KeyKind::Points:
      return "array of pixels `[x, y]`";
    case KeyKind::Texts:
      if (key.choices.empty()) return "array of texts";
      return fmt::format("array of `\"{}\"`", fmt::join(key.choices, "\"`, `\""));
    case KeyKind::Way:
      return "text or array of texts";
    case KeyKind::Value:
      return "number, array of numbers or text";
    case KeyKind::True:
      return "`true`";
    case KeyKind::Choice:
      return fmt::format("`\"{}\"`", fmt::join(key.choices, "\"`, `\""));
    case KeyKind::Expectation:
      return "an expectation without its moment";
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

const Json& TextSchema() {
  static const Json kSchema = {{"type", "string"}, {"minLength", 1}};
  return kSchema;
}

Json ArrayOf(const Json& items, int least, int most = 0) {
  Json schema = {{"type", "array"}, {"items", items}, {"minItems", least}};
  if (most > 0) schema["maxItems"] = most;
  return schema;
}

Json ValueSchema(const Key& key) {
  switch (key.kind) {
    case KeyKind::Text:
      return TextSchema();
    case KeyKind::WholeNumber:
      return {{"type", "integer"}, {"minimum", key.smallest}, {"maximum", key.largest}};
    case KeyKind::Number:
      return {{"type", "number"}};
    case KeyKind::Amount:
      return {{"type", "number"}, {"minimum", 0}};
    case KeyKind::Range:
      return ArrayOf({{"type", "number"}}, 2, 2);
    case KeyKind::Points:
      return ArrayOf(ArrayOf({{"type", "integer"}}, 2, 2), 2);
    case KeyKind::Texts:
      return ArrayOf(key.choices.empty() ? TextSchema() : Json{{"enum", key.choices}}, 1);
    case KeyKind::Way:
      return {{"anyOf", {TextSchema(), ArrayOf(TextSchema(), 1)}}};
    case KeyKind::Value:
      return {{"type", {"number", "string", "array"}}, {"items", {{"type", "number"}}}};
    case KeyKind::True:
      return {{"const", true}};
    case KeyKind::Choice:
      return {{"enum", key.choices}};
    case KeyKind::Expectation:
      return {{"anyOf", {{{"$ref", "#/definitions/expectation"}}}}};
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

Json WordSchema(const Word& word, const MomentKeys& moments) {
  std::vector<Key> keys = moments.keys;
  keys.push_back(word.key);
  keys.insert(keys.end(), word.others.begin(), word.others.end());
  Json schema = {{"description", word.key.description}};
  schema.update(ObjectSchema(keys));
  if (!word.oneOf.empty()) schema.update(OneOfSchema(word.oneOf));
  return schema;
}

// Whatever the words are, each entry is one of them.
template <class Room>
Json WordsSchema(const std::vector<Room>& rooms, const MomentKeys& moments) {
  Json alternatives = Json::array();
  for (const Room& room : rooms) alternatives.push_back(WordSchema(room.word, moments));
  return {{"anyOf", alternatives}};
}

template <class Room>
Json ArraySchema(const std::vector<Room>& rooms, const MomentKeys& moments) {
  Json items = WordsSchema(rooms, moments);
  items.update(OneOfSchema(moments.oneOf));
  for (const std::string_view key : moments.atMostOneOf) {
    std::vector<std::string_view> others = moments.atMostOneOf;
    std::erase(others, key);
    Json anyOther = Json::array();
    for (const std::string_view other : others) anyOther.push_back({{"required", {other}}});
    items["dependencies"][std::string(key)] = {{"not", {{"anyOf", anyOther}}}};
  }
  return {{"type", "array"}, {"items", items}};
}

}  // namespace

std::string VocabularyPage() {
  std::string page(kIntroduction);
  page += "\n## The flight itself\n\nBeside `steps` and `expectations` there may be:\n\n";
  for (const Key& key : FlightKeys()) page += KeyLine(key, 0);
  page += "\n## Steps\n\nEvery step has one of these beside its word:\n\n";
  for (const Key& key : StepMoments().keys) page += KeyLine(key, 0);
  page += kStepsInARow;
  page += "\nThe words:\n\n";
  for (const StepWord& room : StepWords()) page += WordLines(room.word);
  page +=
      "\n## Expectations\n\nEvery expectation has beside its word one of the first three, and may have one "
      "of the others:\n\n";
  for (const Key& key : ExpectationMoments().keys) page += KeyLine(key, 0);
  page += kAboutExpectations;
  page += "\nThe words, each with what it holds for:\n\n";
  for (const ExpectationWord& room : ExpectationWords()) page += WordLines(room.word);
  return page;
}

std::string VocabularySchema() {
  Json properties = {{"$schema", {{"type", "string"}}}};
  for (const Key& key : FlightKeys()) properties[std::string(key.name)] = SchemaOf(key);
  properties["steps"] = ArraySchema(StepWords(), StepMoments());
  properties["expectations"] = ArraySchema(ExpectationWords(), ExpectationMoments());
  const Json schema = {{"$schema", "http://json-schema.org/draft-07/schema#"},
                       {"title", "Flight file of vyra-sim"},
                       {"type", "object"},
                       {"properties", properties},
                       {"additionalProperties", false},
                       {"definitions", {{"expectation", WordsSchema(ExpectationWords(), {})}}}};
  return schema.dump(2) + '\n';
}

}  // namespace sim
