#include "flight/Entry.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <sstream>
#include <utility>

#include "flight/JsonDocument.h"
#include "flight/Nearest.h"

namespace sim {
namespace {

constexpr double kFarthestPixel = 100'000.0;

bool IsText(const nlohmann::json& value) {
  return value.is_string() && !value.get_ref<const std::string&>().empty();
}

bool IsWholeNumber(const nlohmann::json& value, const Key& key) {
  // As a double, because a number beyond 63 bits would turn negative as an integer.
  const double wide =
      value.is_number_integer() ? value.get<double>() : std::numeric_limits<double>::quiet_NaN();
  return wide >= key.smallest && wide <= key.largest;
}

bool IsValue(const nlohmann::json& value) {
  if (value.is_array())
    return std::all_of(value.begin(), value.end(), [](const auto& element) { return element.is_number(); });
  return value.is_number() || value.is_string();
}

bool IsChoice(const nlohmann::json& value, const Key& key) {
  return value.is_string() &&
         std::ranges::find(key.choices, value.get_ref<const std::string&>()) != key.choices.end();
}

// Nothing but an array of two numbers, the smaller first.
bool IsRange(const nlohmann::json& value) {
  return value.is_array() && value.size() == 2 && value[0].is_number() && value[1].is_number() &&
         value[0].get<double>() <= value[1].get<double>();
}

bool IsPixel(const nlohmann::json& value) {
  const auto isCoordinate = [](const nlohmann::json& number) {
    return number.is_number_integer() && std::abs(number.get<double>()) <= kFarthestPixel;
  };
  return value.is_array() && value.size() == 2 && std::ranges::all_of(value, isCoordinate);
}

bool IsArrayOf(const nlohmann::json& value, std::size_t least, const auto& isElement) {
  return value.is_array() && value.size() >= least && std::ranges::all_of(value, isElement);
}

bool Fits(const nlohmann::json& value, const Key& key) {
  switch (key.kind) {
    case KeyKind::Text:
      return IsText(value);
    case KeyKind::WholeNumber:
      return IsWholeNumber(value, key);
    case KeyKind::Number:
      return value.is_number();
    case KeyKind::Amount:
      return value.is_number() && value.get<double>() >= 0.0;
    case KeyKind::Range:
      return IsRange(value);
    case KeyKind::Points:
      return IsArrayOf(value, 2, IsPixel);
    case KeyKind::Texts:
      return IsArrayOf(value, 1, [&key](const nlohmann::json& text) {
        return key.choices.empty() ? IsText(text) : IsChoice(text, key);
      });
    case KeyKind::Way:
      return IsText(value) || IsArrayOf(value, 1, IsText);
    case KeyKind::Value:
      return IsValue(value);
    case KeyKind::True:
      return value == true;
    case KeyKind::Choice:
      return IsChoice(value, key);
    case KeyKind::Object:
    case KeyKind::Expectation:
      break;
  }
  return value.is_object();
}

std::string WhatFits(const Key& key) {
  switch (key.kind) {
    case KeyKind::Text:
      return "must be a text";
    case KeyKind::WholeNumber:
      return fmt::format("must be a whole number from {} to {}", key.smallest, key.largest);
    case KeyKind::Number:
      return "must be a number";
    case KeyKind::Amount:
      return "must be a number from 0";
    case KeyKind::Range:
      return "must be an array of two numbers, the smaller first";
    case KeyKind::Points:
      return "must be an array of two pixels or more, each an array of two whole numbers";
    case KeyKind::Texts:
      if (key.choices.empty()) return "must be an array of texts";
      return fmt::format("must be an array of some of: {}", fmt::join(key.choices, ", "));
    case KeyKind::Way:
      return "must be a text or an array of texts";
    case KeyKind::Value:
      return "must be a number, an array of numbers or a text";
    case KeyKind::True:
      return "can only be true";
    case KeyKind::Choice:
      return fmt::format("must be one of: {}", fmt::join(key.choices, ", "));
    case KeyKind::Object:
    case KeyKind::Expectation:
      break;
  }
  return "must be an object";
}

std::string Suggestion(const nlohmann::json& value, const Key& key) {
  if (key.kind != KeyKind::Choice || !value.is_string()) return "";
  return DidYouMean(value.get_ref<const std::string&>(), key.choices);
}

}  // namespace

Entry::Entry(const JsonDocument& documentToRead, std::string pointerTo, std::string placeName)
    : document(documentToRead),
      pointer(std::move(pointerTo)),
      place(std::move(placeName)),
      value(document.Root().at(nlohmann::json::json_pointer(pointer))) {
  if (!value.is_object()) Fail("an object is needed here");
}

bool Entry::Has(std::string_view key) const { return value.contains(key); }

int Entry::Line() const { return document.ValueAt(pointer).line; }

std::string Entry::Json() const { return value.dump(); }

void Entry::Check(const std::vector<Key>& keys) const {
  std::vector<std::string_view> names(keys.size());
  std::ranges::transform(keys, names.begin(), &Key::name);
  for (const std::string_view written : Keys())
    if (std::ranges::find(names, written) == names.end())
      FailAtKey(written, fmt::format("unknown key \"{}\"{}", written, DidYouMean(written, names)));
  for (const Key& key : keys) {
    if (Has(key.name)) {
      CheckValue(key);
    } else if (key.isRequired) {
      Fail(fmt::format("the key \"{}\" is missing", key.name));
    }
  }
}

void Entry::CheckThose(const std::vector<Key>& keys) const {
  for (const Key& key : keys)
    if (Has(key.name)) CheckValue(key);
}

void Entry::CheckValue(const Key& key) const {
  const nlohmann::json& found = At(key.name);
  if (!Fits(found, key))
    FailAtValue(key.name, fmt::format("\"{}\" {}{}", key.name, WhatFits(key), Suggestion(found, key)));
  if (key.kind == KeyKind::Object) Object(key.name).Check(key.keys);
}

std::vector<std::string_view> Entry::Keys() const {
  std::vector<std::string_view> keys;
  for (const auto& [key, ignored] : value.items()) keys.push_back(key);
  return keys;
}

std::string Entry::Text(std::string_view key) const { return At(key).get<std::string>(); }

std::string Entry::Text(std::string_view key, const std::string& otherwise) const {
  return Has(key) ? Text(key) : otherwise;
}

int Entry::WholeNumber(std::string_view key) const { return At(key).get<int>(); }

int Entry::WholeNumber(std::string_view key, int otherwise) const {
  return Has(key) ? WholeNumber(key) : otherwise;
}

double Entry::Number(std::string_view key) const { return At(key).get<double>(); }

DataRefValue Entry::Value(std::string_view key) const {
  const nlohmann::json& found = At(key);
  if (found.is_number()) return found.get<double>();
  if (found.is_string()) return found.get<std::string>();
  return found.get<std::vector<double>>();
}

std::pair<double, double> Entry::Range(std::string_view key) const {
  return {At(key)[0].get<double>(), At(key)[1].get<double>()};
}

std::vector<Pixel> Entry::Points(std::string_view key) const {
  std::vector<Pixel> points;
  for (const nlohmann::json& point : At(key)) points.push_back({point[0].get<int>(), point[1].get<int>()});
  return points;
}

std::vector<std::string> Entry::Texts(std::string_view key) const {
  return Has(key) ? At(key).get<std::vector<std::string>>() : std::vector<std::string>{};
}

std::vector<std::string> Entry::Way(std::string_view key) const {
  if (At(key).is_array()) return Texts(key);
  std::vector<std::string> names;
  std::istringstream way(Text(key));
  for (std::string name; std::getline(way, name, '/');) names.push_back(name);
  return names;
}

Entry Entry::Object(std::string_view key) const {
  return {document, PointerTo(key), fmt::format("{}{}{}", place, place.empty() ? "" : ".", key)};
}

std::vector<Entry> Entry::Elements(std::string_view key) const {
  std::vector<Entry> elements;
  if (!Has(key)) return elements;
  if (!At(key).is_array()) FailAtValue(key, fmt::format("\"{}\" must be an array", key));
  for (std::size_t index = 0; index < At(key).size(); ++index)
    elements.emplace_back(document, fmt::format("{}/{}", PointerTo(key), index),
                          fmt::format("{}[{}]", key, index));
  return elements;
}

void Entry::Fail(const std::string& problem) const { FailAt(document.ValueAt(pointer), problem); }

void Entry::FailAtKey(std::string_view key, const std::string& problem) const {
  FailAt(document.KeyAt(PointerTo(key)), problem);
}

void Entry::FailAtValue(std::string_view key, const std::string& problem) const {
  FailAt(document.ValueAt(PointerTo(key)), problem);
}

const nlohmann::json& Entry::At(std::string_view key) const { return value.at(key); }

std::string Entry::PointerTo(std::string_view key) const {
  return (nlohmann::json::json_pointer(pointer) / std::string(key)).to_string();
}

void Entry::FailAt(JsonPosition position, const std::string& problem) const {
  document.Fail(position, place.empty() ? problem : fmt::format("{}: {}", place, problem));
}

}  // namespace sim
