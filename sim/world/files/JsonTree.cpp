// The parser tells what it meets; its place is where the stream that it reads from then is.
#include "world/files/JsonTree.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <sstream>

#include "world/files/TextFile.h"

namespace sim::world {
namespace {

constexpr std::size_t kDeepest = 32;          // values within values
constexpr std::size_t kMostMembers = 10'000;  // of one object

// "[json.exception...] parse error at line 3, column 6: syntax error ..." without what stands before.
std::string ProblemOf(const std::string& message) {
  const std::size_t place = message.find("column ");
  const std::size_t colon = message.find(": ", place == std::string::npos ? 0 : place);
  return colon == std::string::npos ? message : message.substr(colon + 2);
}

}  // namespace

class JsonTreeMaker : public nlohmann::json_sax<nlohmann::json> {
 public:
  JsonTreeMaker(std::string_view jsonText, const std::string& file)
      : stream(std::string(jsonText)),
        wholeText(jsonText),
        fileName(std::make_shared<const std::string>(file)) {}

  JsonValue Make() {
    nlohmann::json::sax_parse(stream, this);
    return std::move(root);
  }

  bool null() override {
    Add(JsonValue::Kind::Null);
    return true;
  }
  bool boolean(bool value) override {
    Add(JsonValue::Kind::YesOrNo).yes = value;
    return true;
  }
  bool number_integer(number_integer_t value) override { return AddNumber(static_cast<double>(value)); }
  bool number_unsigned(number_unsigned_t value) override { return AddNumber(static_cast<double>(value)); }
  bool number_float(number_float_t value, const string_t& /*digits*/) override { return AddNumber(value); }
  bool string(string_t& value) override {
    Add(JsonValue::Kind::Text).text = std::move(value);
    return true;
  }
  bool binary(binary_t& /*value*/) override { return false; }  // JSON texts have none
  bool start_object(std::size_t /*size*/) override { return Open(JsonValue::Kind::Object); }
  bool start_array(std::size_t /*size*/) override { return Open(JsonValue::Kind::Array); }
  bool key(string_t& value) override {
    const std::vector<std::string>& names = open.back()->names;
    if (std::ranges::find(names, value) != names.end())
      throw FileError(*fileName, LineHere(), "\"" + value + "\" stands here twice");
    if (names.size() == kMostMembers) throw FileError(*fileName, LineHere(), "there are too many names");
    open.back()->names.push_back(std::move(value));
    return true;
  }
  bool end_object() override { return Close(); }
  bool end_array() override { return Close(); }
  bool parse_error(std::size_t position, const std::string& /*token*/,
                   const nlohmann::json::exception& error) override {
    const std::size_t end = std::min(position, wholeText.size());
    // The position is that after the character that is wrong.
    throw FileError(*fileName, LineAt(end > 0 ? end - 1 : 0), ProblemOf(error.what()));
  }

 private:
  int LineAt(std::size_t end) const {
    return 1 +
           static_cast<int>(std::count(wholeText.begin(), wholeText.begin() + static_cast<long>(end), '\n'));
  }

  // The line of what was read last. Asked in the order of the text, so that lines are counted once.
  int LineHere(std::size_t charactersTooFar = 0) {
    const auto position =
        static_cast<std::size_t>(stream.rdbuf()->pubseekoff(0, std::ios::cur, std::ios::in));
    const std::size_t end = std::min(position, wholeText.size()) - charactersTooFar;
    for (; counted < end; ++counted)
      if (wholeText[counted] == '\n') ++lines;
    return lines;
  }

  JsonValue& Add(JsonValue::Kind kind, std::size_t charactersTooFar = 0) {
    JsonValue value;
    value.fileName = fileName;
    value.line = LineHere(charactersTooFar);
    value.kind = kind;
    if (open.empty()) return root = std::move(value);
    return open.back()->elements.emplace_back(std::move(value));
  }

  // A number's end is known only from the character behind it, if there is one.
  bool AddNumber(double value) {
    const bool isAtEnd = stream.rdbuf()->in_avail() <= 0;
    Add(JsonValue::Kind::Number, isAtEnd ? 0 : 1).number = value;
    return true;
  }

  // Addresses of open values stay: a value is added only to the innermost one.
  bool Open(JsonValue::Kind kind) {
    if (open.size() == kDeepest) throw FileError(*fileName, LineHere(), "values lie too deep in each other");
    open.push_back(&Add(kind));
    return true;
  }
  bool Close() {
    open.pop_back();
    return true;
  }

  std::istringstream stream;
  std::string_view wholeText;
  std::shared_ptr<const std::string> fileName;
  JsonValue root;
  std::vector<JsonValue*> open;
  std::size_t counted = 0;
  int lines = 1;
};

void JsonValue::Fail(const std::string& problem) const { throw FileError(*fileName, line, problem); }

void JsonValue::Expect(Kind wanted, const char* description) const {
  if (kind != wanted) Fail(std::string("this must be ") + description);
}

double JsonValue::Number(double smallest, double largest) const {
  Expect(Kind::Number, "a number");
  if (!(number >= smallest && number <= largest)) {
    std::ostringstream problem;
    problem << "this must be a number from " << smallest << " to " << largest;
    Fail(problem.str());
  }
  return number;
}

int JsonValue::WholeNumber(int smallest, int largest) const {
  const double value = Number(smallest, largest);
  if (value != std::floor(value)) Fail("this must be a whole number");
  return static_cast<int>(value);
}

bool JsonValue::YesOrNo() const {
  Expect(Kind::YesOrNo, "true or false");
  return yes;
}

const std::string& JsonValue::Text() const {
  Expect(Kind::Text, "a text");
  return text;
}

const std::vector<JsonValue>& JsonValue::Elements() const {
  Expect(Kind::Array, "an array");
  return elements;
}

const JsonValue* JsonValue::Find(std::string_view name) const {
  Expect(Kind::Object, "an object");
  const auto found = std::ranges::find(names, name);
  return found == names.end() ? nullptr : &elements[static_cast<std::size_t>(found - names.begin())];
}

const JsonValue& JsonValue::operator[](std::string_view name) const {
  const JsonValue* const found = Find(name);
  if (found == nullptr) Fail("\"" + std::string(name) + "\" is missing");
  return *found;
}

void JsonValue::AllowOnly(std::initializer_list<std::string_view> allowed) const {
  AllowOnlyWhere([&](std::string_view name) { return std::ranges::find(allowed, name) != allowed.end(); });
}

void JsonValue::AllowOnlyWhere(const std::function<bool(std::string_view)>& isKnown) const {
  Expect(Kind::Object, "an object");
  for (std::size_t index = 0; index < names.size(); ++index)
    if (!isKnown(names[index])) elements[index].Fail("there is no \"" + names[index] + "\" here");
}

JsonValue ParseJson(std::string_view text, const std::string& fileName) {
  return JsonTreeMaker(text, fileName).Make();
}

JsonValue ReadJsonFile(const std::string& fileName) { return ParseJson(ReadTextFile(fileName), fileName); }

}  // namespace sim::world
