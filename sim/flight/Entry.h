// An object of a flight file, held against the keys that it may have: what is read through it is as it was
// declared. Every problem is an InputError with file, line and column.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "flight/Key.h"
#include "host/DataRefValue.h"

namespace sim {

class JsonDocument;

namespace world {
struct JsonPosition;
}

struct Pixel {
  int x;
  int y;
};

class Entry {
 public:
  // The value at a pointer of the document. `place` is what an error calls it, "steps[2]"; the root has none.
  // The document must outlive this.
  Entry(const JsonDocument& documentToRead, std::string pointerTo, std::string placeName);

  // Throws unless the object has the keys that are required, no others than these, and fitting values.
  void Check(const std::vector<Key>& keys) const;

  // Likewise of the keys that are there, whatever other keys there are.
  void CheckThose(const std::vector<Key>& keys) const;

  bool Has(std::string_view key) const;
  std::vector<std::string_view> Keys() const;
  int Line() const;
  // As JSON, in one line.
  std::string Json() const;

  // Of a key that was declared of this kind and is there. Without a second argument, that is the caller's to
  // know; with it, a missing key has that value.
  std::string Text(std::string_view key) const;
  std::string Text(std::string_view key, const std::string& otherwise) const;
  int WholeNumber(std::string_view key) const;
  int WholeNumber(std::string_view key, int otherwise) const;
  double Number(std::string_view key) const;
  DataRefValue Value(std::string_view key) const;
  std::pair<double, double> Range(std::string_view key) const;
  std::vector<Pixel> Points(std::string_view key) const;
  // None when the key is missing.
  std::vector<std::string> Texts(std::string_view key) const;
  // The names of a way through menus.
  std::vector<std::string> Way(std::string_view key) const;
  Entry Object(std::string_view key) const;
  // An array's elements, each an object; none when the key is missing.
  std::vector<Entry> Elements(std::string_view key) const;

  // Throw with the place of this object, of a key of it, or of a key's value.
  [[noreturn]] void Fail(const std::string& problem) const;
  [[noreturn]] void FailAtKey(std::string_view key, const std::string& problem) const;
  [[noreturn]] void FailAtValue(std::string_view key, const std::string& problem) const;

 private:
  void CheckValue(const Key& key) const;
  const nlohmann::json& At(std::string_view key) const;
  std::string PointerTo(std::string_view key) const;
  [[noreturn]] void FailAt(world::JsonPosition position, const std::string& problem) const;

  const JsonDocument& document;
  std::string pointer;
  std::string place;
  const nlohmann::json& value;
};

}  // namespace sim
