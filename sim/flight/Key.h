// The keys that an object of a flight file may have. What is declared here is what a reader checks, what an
// error says, and what the page and the schema of flight files show.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sim {

enum class KeyKind {
  Text,
  WholeNumber,
  Number,
  Amount,
  Range,
  Points,
  Texts,
  Way,
  Value,
  True,
  Choice,
  Object,
  Expectation
};

struct Key {
  std::string_view name;
  KeyKind kind;
  std::string_view description;
  bool isRequired = true;
  int smallest = 0;  // of a whole number
  int largest = 0;
  std::vector<std::string_view> choices;  // of a choice, or of each text of texts; none for any text
  std::vector<Key> keys;                  // of an object
};

// A text with something in it.
Key TextKey(std::string_view name, std::string_view description);
Key WholeNumberKey(std::string_view name, int smallest, int largest, std::string_view description);
Key NumberKey(std::string_view name, std::string_view description);
// A number that is not below 0.
Key AmountKey(std::string_view name, std::string_view description);
// An array of two numbers, the smaller first.
Key RangeKey(std::string_view name, std::string_view description);
// An array of two pixels or more, each an array of two whole numbers.
Key PointsKey(std::string_view name, std::string_view description);
// An array of texts with something in them; with choices, of these alone.
Key TextsKey(std::string_view name, std::string_view description, std::vector<std::string_view> choices = {});
// A way through menus: a text with "/" between the names, or an array of the names.
Key WayKey(std::string_view name, std::string_view description);
// A number, an array of numbers or a text.
Key ValueKey(std::string_view name, std::string_view description);
// Can only be true: the key stands for itself.
Key TrueKey(std::string_view name, std::string_view description);
Key ChoiceKey(std::string_view name, std::vector<std::string_view> choices, std::string_view description);
Key ObjectKey(std::string_view name, std::vector<Key> keys, std::string_view description);
// An expectation without its moment.
Key ExpectationKey(std::string_view name, std::string_view description);

Key Optional(Key key);

}  // namespace sim
