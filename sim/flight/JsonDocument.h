// A JSON file of which every value knows where it stands, so that an error names line and column.
#pragma once

#include <map>
#include <nlohmann/json.hpp>
#include <string>

namespace sim {

struct JsonPosition {
  int line = 1;  // both from 1; a column is a byte
  int column = 1;
};

class JsonDocument {
 public:
  // Reads the file. Throws InputError: for a file that cannot be read, that is no JSON, or in which a key
  // stands twice in one object.
  explicit JsonDocument(const std::string& fileToRead);

  const nlohmann::json& Root() const { return root; }

  // Where a value begins, or, for a value with a key, that key. `pointer` is "" for the root,
  // "/steps/2/frame" below it.
  JsonPosition ValueAt(const std::string& pointer) const;
  JsonPosition KeyAt(const std::string& pointer) const;

  // Throws the InputError "file:line:column: problem".
  [[noreturn]] void Fail(JsonPosition position, const std::string& problem) const;

 private:
  friend class JsonDocumentBuilder;

  std::string fileName;
  nlohmann::json root;
  std::map<std::string, JsonPosition> values;
  std::map<std::string, JsonPosition> keys;
};

}  // namespace sim
