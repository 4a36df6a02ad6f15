// The checks of a JSON object's keys.
#include "flight/JsonObject.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <utility>

#include "InputError.h"

namespace sim {

JsonObject::JsonObject(const nlohmann::json& objectValue, std::string objectPlace)
    : value(objectValue), place(std::move(objectPlace)) {
  if (!value.is_object()) Fail("an object is needed here");
}

void JsonObject::Fail(const std::string& problem) const {
  throw InputError(fmt::format("{}: {}", place, problem));
}

const nlohmann::json& JsonObject::Get(const char* key) {
  const auto found = value.find(key);
  if (found == value.end()) Fail(fmt::format("the key \"{}\" is missing", key));
  known.insert(key);
  return *found;
}

std::string JsonObject::Text(const char* key) {
  const nlohmann::json& text = Get(key);
  if (!text.is_string() || text.get_ref<const std::string&>().empty())
    Fail(fmt::format("\"{}\" must be a text", key));
  return text.get<std::string>();
}

int JsonObject::Int(const char* key, int smallest, int largest) {
  const nlohmann::json& number = Get(key);
  // As a double, because a number beyond 63 bits would turn negative as an integer.
  const double wide =
      number.is_number_integer() ? number.get<double>() : std::numeric_limits<double>::quiet_NaN();
  if (wide >= smallest && wide <= largest) return number.get<int>();
  Fail(fmt::format("\"{}\" must be a whole number from {} to {}", key, smallest, largest));
}

DataRefValue JsonObject::Value(const char* key) {
  const nlohmann::json& found = Get(key);
  if (found.is_number()) return found.get<double>();
  if (found.is_string()) return found.get<std::string>();
  const auto isNumber = [](const nlohmann::json& element) { return element.is_number(); };
  if (!found.is_array() || !std::all_of(found.begin(), found.end(), isNumber))
    Fail(fmt::format("\"{}\" must be a number, an array of numbers or a text", key));
  return found.get<std::vector<double>>();
}

void JsonObject::True(const char* key) {
  if (Get(key) != true) Fail(fmt::format("\"{}\" can only be true", key));
}

JsonObject JsonObject::Object(const char* key) { return {Get(key), fmt::format("{}.{}", place, key)}; }

const nlohmann::json::array_t& JsonObject::Array(const char* key) {
  static const nlohmann::json::array_t kNone;
  if (!Has(key)) return kNone;
  const nlohmann::json& array = Get(key);
  if (!array.is_array()) Fail(fmt::format("\"{}\" must be an array", key));
  return array.get_ref<const nlohmann::json::array_t&>();
}

void JsonObject::RejectOtherKeys() const {
  for (const auto& [key, ignored] : value.items())
    if (!known.contains(key)) Fail(fmt::format("unknown key \"{}\"", key));
}

}  // namespace sim
