// The parser calls back with each value, but not with its place. It reads its input character by character,
// though, so that the input knows how far it came: the place of a value is the first character behind the
// one before that neither is white space nor parts values.
#include "world/files/PlacedJson.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace sim::world {
namespace {

constexpr std::size_t kDeepest = 32;  // values within values

// Walks over a text, and notes how far it came.
struct NotingIterator {
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  const char* place;
  const char** noted;

  reference operator*() const { return *place; }
  NotingIterator& operator++() {
    *noted = ++place;
    return *this;
  }
  NotingIterator operator++(int) {
    const NotingIterator before = *this;
    ++*this;
    return before;
  }
  bool operator==(const NotingIterator& other) const { return place == other.place; }
};

// Lines and columns of a text, asked for from its start to its end.
class LineCounter {
 public:
  explicit LineCounter(std::string_view textToCount) : text(textToCount) {}

  JsonPosition At(std::size_t offset) {
    for (const std::size_t end = std::min(offset, text.size()); counted < end; ++counted) {
      if (text[counted] != '\n') continue;
      ++line;
      lineStart = counted + 1;
    }
    return {line, static_cast<int>(counted - lineStart) + 1};
  }

 private:
  std::string_view text;
  std::size_t counted = 0;
  std::size_t lineStart = 0;
  int line = 1;
};

}  // namespace

// Builds the document while the parser walks over the text.
class PlacedJsonBuilder : public nlohmann::json_sax<nlohmann::json> {
 public:
  PlacedJsonBuilder(PlacedJson& documentToBuild, std::string_view wholeText)
      : document(documentToBuild), text(wholeText), lines(text), end(wholeText.data()) {}

  void Build() {
    const char* const begin = text.data();
    nlohmann::json::sax_parse(NotingIterator{begin, &end}, NotingIterator{begin + text.size(), &end}, this);
  }

  bool null() override { return Add(nullptr); }
  bool boolean(bool value) override { return Add(value); }
  bool number_integer(number_integer_t value) override { return Add(value); }
  bool number_unsigned(number_unsigned_t value) override { return Add(value); }
  bool number_float(number_float_t value, const string_t& /*text*/) override { return Add(value); }
  bool string(string_t& value) override { return Add(value); }
  bool binary(binary_t& /*value*/) override { return false; }  // does not occur in text
  bool start_object(std::size_t /*size*/) override { return Open(nlohmann::json::object()); }
  bool start_array(std::size_t /*size*/) override { return Open(nlohmann::json::array()); }
  bool end_object() override { return Close(); }
  bool end_array() override { return Close(); }

  bool key(string_t& name) override {
    const JsonPosition position = NextPosition();
    nextKey = name;
    if (containers.back().value->contains(name))
      throw JsonError{position, "the key \"" + name + "\" stands here a second time"};
    document.keys[PlacedJson::PointerTo(containers.back().pointer, name)] = position;
    return true;
  }

  bool parse_error(std::size_t offset, const std::string& /*token*/,
                   const nlohmann::json::exception& error) override {
    // The text opens with the error's number in brackets, and says the position, which stands before it here.
    std::string_view reason = error.what();
    reason.remove_prefix(std::min(reason.find(']') + 2, reason.size()));
    if (reason.starts_with("parse error")) reason.remove_prefix(reason.find(": ") + 2);
    throw JsonError{lines.At(offset == 0 ? 0 : offset - 1), std::string(reason)};
  }

 private:
  struct Container {
    nlohmann::json* value;
    std::string pointer;
    std::size_t count = 0;
  };

  JsonPosition NextPosition() {
    const std::size_t start = text.find_first_not_of(" \t\r\n,:", behindLast);
    behindLast = static_cast<std::size_t>(end - text.data());
    return lines.At(start);
  }

  // The place of the next value in the container that is open, and its pointer.
  std::pair<nlohmann::json*, std::string> NextPlace() {
    if (containers.empty()) return {&document.root, ""};
    Container& container = containers.back();
    if (container.value->is_object())
      return {&(*container.value)[nextKey], PlacedJson::PointerTo(container.pointer, nextKey)};
    container.value->push_back(nullptr);
    return {&container.value->back(), PlacedJson::PointerTo(container.pointer, container.count++)};
  }

  bool Add(nlohmann::json value) {
    const auto [place, pointer] = NextPlace();
    document.values[pointer] = NextPosition();
    *place = std::move(value);
    return true;
  }

  bool Open(nlohmann::json value) {
    const auto [place, pointer] = NextPlace();
    const JsonPosition position = NextPosition();
    if (containers.size() == kDeepest) throw JsonError{position, "values lie too deep in each other"};
    document.values[pointer] = position;
    *place = std::move(value);
    containers.push_back({place, pointer});
    return true;
  }

  bool Close() {
    containers.pop_back();
    behindLast = static_cast<std::size_t>(end - text.data());
    return true;
  }

  PlacedJson& document;
  std::string_view text;
  LineCounter lines;
  const char* end;  // how far the parser read
  std::size_t behindLast = 0;
  std::string nextKey;
  std::vector<Container> containers;
};

PlacedJson::PlacedJson(std::string_view text) { PlacedJsonBuilder(*this, text).Build(); }

JsonPosition PlacedJson::KeyAt(const std::string& pointer) const {
  const auto found = keys.find(pointer);
  return found != keys.end() ? found->second : ValueAt(pointer);
}

std::string PlacedJson::PointerTo(const std::string& object, const std::string& key) {
  return object + (nlohmann::json::json_pointer() / key).to_string();
}

std::string PlacedJson::PointerTo(const std::string& array, std::size_t index) {
  return array + '/' + std::to_string(index);
}

}  // namespace sim::world
