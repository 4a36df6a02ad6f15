// A JSON text whose values know the line on which they stand, so that whatever is wrong with a file can be
// told with its place.
#pragma once

#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "world/files/PlacedJson.h"

namespace sim::world {

class JsonValue {
 public:
  // Each throws FileError, which names this value's line, when the value is of another kind or outside of
  // its bounds.
  double Number(double smallest, double largest) const;
  int WholeNumber(int smallest, int largest) const;
  bool YesOrNo() const;
  const std::string& Text() const;
  std::vector<JsonValue> Elements() const;

  // The member of an object, or nothing where there is none.
  std::optional<JsonValue> Find(std::string_view name) const;
  // Throws where there is none.
  JsonValue operator[](std::string_view name) const;

  // Each throws at the first member that has none of these names.
  void AllowOnly(std::initializer_list<std::string_view> allowed) const;
  void AllowOnlyWhere(const std::function<bool(std::string_view)>& isKnown) const;

  [[noreturn]] void Fail(const std::string& problem) const;

 private:
  friend JsonValue ParseJson(std::string_view text, const std::string& fileName);
  struct File {
    std::string name;
    PlacedJson json;
  };

  JsonValue(std::shared_ptr<const File> itsFile, const nlohmann::json& itsValue, std::string pointerToIt);
  void Expect(bool fits, const char* description) const;
  JsonValue Member(const std::string& name) const;

  std::shared_ptr<const File> file;  // kept for as long as one of its values is
  const nlohmann::json* value;
  std::string pointer;
};

// Reads a text whose place is called by fileName. Throws FileError.
JsonValue ParseJson(std::string_view text, const std::string& fileName);

// The same of a file.
JsonValue ReadJsonFile(const std::string& fileName);

}  // namespace sim::world
