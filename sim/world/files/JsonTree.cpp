#include "world/files/JsonTree.h"

#include <algorithm>
#include <cmath>
#include <sstream>
#include <utility>

#include "world/files/TextFile.h"

namespace sim::world {

JsonValue::JsonValue(std::shared_ptr<const File> itsFile, const nlohmann::json& itsValue,
                     std::string pointerToIt)
    : file(std::move(itsFile)), value(&itsValue), pointer(std::move(pointerToIt)) {}

void JsonValue::Fail(const std::string& problem) const {
  throw FileError(file->name, file->json.ValueAt(pointer).line, problem);
}

void JsonValue::Expect(bool fits, const char* description) const {
  if (!fits) Fail(std::string("this must be ") + description);
}

double JsonValue::Number(double smallest, double largest) const {
  Expect(value->is_number(), "a number");
  const double number = value->get<double>();
  if (!(number >= smallest && number <= largest)) {
    std::ostringstream problem;
    problem << "this must be a number from " << smallest << " to " << largest;
    Fail(problem.str());
  }
  return number;
}

int JsonValue::WholeNumber(int smallest, int largest) const {
  const double number = Number(smallest, largest);
  if (number != std::floor(number)) Fail("this must be a whole number");
  return static_cast<int>(number);
}

bool JsonValue::YesOrNo() const {
  Expect(value->is_boolean(), "true or false");
  return value->get<bool>();
}

const std::string& JsonValue::Text() const {
  Expect(value->is_string(), "a text");
  return value->get_ref<const std::string&>();
}

std::vector<JsonValue> JsonValue::Elements() const {
  Expect(value->is_array(), "an array");
  std::vector<JsonValue> elements;
  for (const nlohmann::json& element : *value)
    elements.push_back({file, element, PlacedJson::PointerTo(pointer, elements.size())});
  return elements;
}

JsonValue JsonValue::Member(const std::string& name) const {
  return {file, value->at(name), PlacedJson::PointerTo(pointer, name)};
}

std::optional<JsonValue> JsonValue::Find(std::string_view name) const {
  Expect(value->is_object(), "an object");
  if (!value->contains(name)) return std::nullopt;
  return Member(std::string(name));
}

JsonValue JsonValue::operator[](std::string_view name) const {
  const std::optional<JsonValue> found = Find(name);
  if (!found) Fail("\"" + std::string(name) + "\" is missing");
  return *found;
}

void JsonValue::AllowOnly(std::initializer_list<std::string_view> allowed) const {
  AllowOnlyWhere([&](std::string_view name) { return std::ranges::find(allowed, name) != allowed.end(); });
}

void JsonValue::AllowOnlyWhere(const std::function<bool(std::string_view)>& isKnown) const {
  Expect(value->is_object(), "an object");
  for (const auto& [name, member] : value->items())
    if (!isKnown(name)) Member(name).Fail("there is no \"" + name + "\" here");
}

JsonValue ParseJson(std::string_view text, const std::string& fileName) {
  try {
    auto file = std::make_shared<const JsonValue::File>(JsonValue::File{fileName, PlacedJson(text)});
    const nlohmann::json& root = file->json.Root();
    return {std::move(file), root, ""};
  } catch (const JsonError& error) {
    throw FileError(fileName, error.position.line, error.problem);
  }
}

JsonValue ReadJsonFile(const std::string& fileName) { return ParseJson(ReadTextFile(fileName), fileName); }

}  // namespace sim::world
