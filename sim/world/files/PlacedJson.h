// A JSON text of which every value knows where it stands, so that an error names line and column.
#pragma once

#include <cstddef>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace sim::world {

struct JsonPosition {
  int line = 1;  // both from 1; a column is a byte
  int column = 1;
};

// What is wrong with a text, thrown.
struct JsonError {
  JsonPosition position;
  std::string problem;
};

class PlacedJson {
 public:
  // Throws JsonError for a text that is no JSON, in which a key stands twice in one object, or whose values
  // lie more than 32 deep in each other.
  explicit PlacedJson(std::string_view text);

  const nlohmann::json& Root() const { return root; }

  // Where a value begins, or, for a value with a key, that key. `pointer` is "" for the root,
  // "/steps/2/frame" below it.
  JsonPosition ValueAt(const std::string& pointer) const { return values.at(pointer); }
  JsonPosition KeyAt(const std::string& pointer) const;

  // The pointer to a member of an object, and to an element of an array.
  static std::string PointerTo(const std::string& object, const std::string& key);
  static std::string PointerTo(const std::string& array, std::size_t index);

 private:
  friend class PlacedJsonBuilder;

  nlohmann::json root;
  std::map<std::string, JsonPosition> values;
  std::map<std::string, JsonPosition> keys;
};

}  // namespace sim::world
