// A JSON text whose values know the line on which they stand, so that whatever is wrong with a file can be
// told with its place.
#pragma once

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sim::world {

class JsonValue {
 public:
  // Each throws FileError, which names this value's line, when the value is of another kind or outside of
  // its bounds.
  double Number(double smallest, double largest) const;
  int WholeNumber(int smallest, int largest) const;
  bool YesOrNo() const;
  const std::string& Text() const;
  const std::vector<JsonValue>& Elements() const;

  // The member of an object, or null where there is none.
  const JsonValue* Find(std::string_view name) const;
  // Throws where there is none.
  const JsonValue& operator[](std::string_view name) const;

  // Each throws at the first member that has none of these names.
  void AllowOnly(std::initializer_list<std::string_view> allowed) const;
  void AllowOnlyWhere(const std::function<bool(std::string_view)>& isKnown) const;

  [[noreturn]] void Fail(const std::string& problem) const;

 private:
  friend class JsonTreeMaker;
  enum class Kind { Null, YesOrNo, Number, Text, Array, Object };

  void Expect(Kind wanted, const char* description) const;

  std::shared_ptr<const std::string> fileName;
  int line = 0;
  Kind kind = Kind::Null;
  bool yes = false;
  double number = 0.0;
  std::string text;
  std::vector<JsonValue> elements;  // of an array, or an object's values
  std::vector<std::string> names;   // of an object's values
};

// Reads a text whose place is called by fileName. Throws FileError.
JsonValue ParseJson(std::string_view text, const std::string& fileName);

// The same of a file.
JsonValue ReadJsonFile(const std::string& fileName);

}  // namespace sim::world
