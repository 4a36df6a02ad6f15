#include "flight/Key.h"

#include <utility>

namespace sim {
namespace {

Key KeyOf(std::string_view name, KeyKind kind, std::string_view description) {
  Key key{};
  key.name = name;
  key.kind = kind;
  key.description = description;
  key.isRequired = true;
  return key;
}

}  // namespace

Key TextKey(std::string_view name, std::string_view description) {
  return KeyOf(name, KeyKind::Text, description);
}

Key WholeNumberKey(std::string_view name, int smallest, int largest, std::string_view description) {
  Key key = KeyOf(name, KeyKind::WholeNumber, description);
  key.smallest = smallest;
  key.largest = largest;
  return key;
}

Key NumberKey(std::string_view name, std::string_view description) {
  return KeyOf(name, KeyKind::Number, description);
}

Key AmountKey(std::string_view name, std::string_view description) {
  return KeyOf(name, KeyKind::Amount, description);
}

Key RangeKey(std::string_view name, std::string_view description) {
  return KeyOf(name, KeyKind::Range, description);
}

Key PointsKey(std::string_view name, std::string_view description) {
  return KeyOf(name, KeyKind::Points, description);
}

Key TextsKey(std::string_view name, std::string_view description, std::vector<std::string_view> choices) {
  Key key = KeyOf(name, KeyKind::Texts, description);
  key.choices = std::move(choices);
  return key;
}

Key WayKey(std::string_view name, std::string_view description) {
  return KeyOf(name, KeyKind::Way, description);
}

Key ExpectationKey(std::string_view name, std::string_view description) {
  return KeyOf(name, KeyKind::Expectation, description);
}

Key ValueKey(std::string_view name, std::string_view description) {
  return KeyOf(name, KeyKind::Value, description);
}

Key TrueKey(std::string_view name, std::string_view description) {
  return KeyOf(name, KeyKind::True, description);
}

Key ChoiceKey(std::string_view name, std::vector<std::string_view> choices, std::string_view description) {
  Key key = KeyOf(name, KeyKind::Choice, description);
  key.choices = std::move(choices);
  return key;
}

Key ObjectKey(std::string_view name, std::vector<Key> keys, std::string_view description) {
  Key key = KeyOf(name, KeyKind::Object, description);
  key.keys = std::move(keys);
  return key;
}

Key Optional(Key key) {
  key.isRequired = false;
  return key;
}

}  // namespace sim
