// A JSON object that is read key by key: every problem is an InputError that names the place, and a key that
// nobody asked for is one of them.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>

#include "host/DataRefValue.h"

namespace sim {

class JsonObject {
 public:
  // `place` stands in front of every error, as in "demo.json: steps[2]". The value must outlive this.
  JsonObject(const nlohmann::json& objectValue, std::string objectPlace);

  bool Has(const char* key) const { return value.contains(key); }

  // Each throws when the key is missing or has another kind of value. A text must not be empty.
  std::string Text(const char* key);
  int Int(const char* key, int smallest, int largest);
  DataRefValue Value(const char* key);
  void True(const char* key);
  JsonObject Object(const char* key);

  // The array's elements; none when the key is missing.
  const nlohmann::json::array_t& Array(const char* key);

  // To be called last.
  void RejectOtherKeys() const;

  [[noreturn]] void Fail(const std::string& problem) const;

 private:
  const nlohmann::json& Get(const char* key);

  const nlohmann::json& value;
  std::string place;
  std::set<std::string> known;
};

}  // namespace sim
