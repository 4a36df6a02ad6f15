// A JSON file whose errors name file, line and column.
#pragma once

#include <string>
#include <string_view>

#include "world/files/PlacedJson.h"

namespace sim {

using JsonPosition = world::JsonPosition;

class JsonDocument {
 public:
  // Reads the file. Throws InputError: for a file that cannot be read, that is no JSON, or in which a key
  // stands twice in one object.
  explicit JsonDocument(const std::string& fileToRead);
  // Likewise of a text, by the name that its errors go by.
  JsonDocument(std::string name, std::string_view text);

  const nlohmann::json& Root() const { return json.Root(); }

  // As of PlacedJson.
  JsonPosition ValueAt(const std::string& pointer) const { return json.ValueAt(pointer); }
  JsonPosition KeyAt(const std::string& pointer) const { return json.KeyAt(pointer); }

  // Throws the InputError "file:line:column: problem".
  [[noreturn]] void Fail(JsonPosition position, const std::string& problem) const;

 private:
  world::PlacedJson Parse(std::string_view text) const;

  std::string fileName;
  world::PlacedJson json;
};

}  // namespace sim
