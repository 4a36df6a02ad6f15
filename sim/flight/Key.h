// The keys that an object of a flight file may have. What is declared here is what a reader checks, what an
// error says, and what the page and the schema of flight files show.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sim {

enum class KeyKind { Text, WholeNumber, Number, Value, True, Choice, Object };

struct Key {
  std::string_view name;
  KeyKind kind;
  std::string_view description;
  bool isRequired = true;
  int smallest = 0;  // of a whole number
  int largest = 0;
  std::vector<std::string_view> choices;  // of a choice
  std::vector<Key> keys;                  // of an object
};

// A text with something in it.
Key TextKey(std::string_view name, std::string_view description);
Key WholeNumberKey(std::string_view name, int smallest, int largest, std::string_view description);
Key NumberKey(std::string_view name, std::string_view description);
// A number, an array of numbers or a text.
Key ValueKey(std::string_view name, std::string_view description);
// Can only be true: the key stands for itself.
Key TrueKey(std::string_view name, std::string_view description);
Key ChoiceKey(std::string_view name, std::vector<std::string_view> choices, std::string_view description);
Key ObjectKey(std::string_view name, std::vector<Key> keys, std::string_view description);

Key Optional(Key key);

}  // namespace sim
