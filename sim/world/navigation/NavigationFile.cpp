// libcsv splits a line into columns; a navaid never goes over the end of its line. What the columns mean is
// checked here.
#include "world/navigation/NavigationFile.h"

#include <csv.h>

#include <algorithm>
#include <array>
#include <charconv>

#include "world/files/TextFile.h"

namespace sim::world {
namespace {

enum Column { kType, kIdent, kName, kLatitude, kLongitude, kElevation, kFrequency, kHeading, kColumns };
constexpr std::array<std::string_view, kColumns> kColumnNames{
    "type", "ident", "name", "latitude_deg", "longitude_deg", "elevation_m", "frequency_khz", "heading_deg"};

constexpr double kLowest = -500.0;
constexpr double kHighest = 9'000.0;
constexpr int kHighestFrequency = 1'000'000;

// Splits lines; the memory in which it does so is kept from one to the next.
class Splitter {
 public:
  Splitter() { csv_init(&parser, CSV_STRICT | CSV_STRICT_FINI); }
  ~Splitter() { csv_free(&parser); }
  Splitter(const Splitter&) = delete;
  Splitter& operator=(const Splitter&) = delete;

  // False when quotes do not stand as they should.
  bool Split(std::string_view line) {
    columns.clear();
    const auto takeColumn = [](void* text, size_t length, void* self) {
      static_cast<Splitter*>(self)->columns.emplace_back(static_cast<const char*>(text), length);
    };
    const auto endLine = [](int /*character*/, void* /*self*/) {};
    const bool isSplit =
        csv_parse(&parser, line.data(), line.size(), takeColumn, endLine, this) == line.size();
    return csv_fini(&parser, takeColumn, endLine, this) == 0 && isSplit;
  }

  const std::vector<std::string>& Columns() const { return columns; }

 private:
  csv_parser parser{};
  std::vector<std::string> columns;
};

// One line of the file, and its place for errors.
class Line {
 public:
  Line(const std::string& file, int number) : fileName(file), lineNumber(number) {}

  [[noreturn]] void Fail(const std::string& problem) const { throw FileError(fileName, lineNumber, problem); }

  std::vector<std::string> Split(Splitter& splitter, std::string_view text) const {
    if (!splitter.Split(text)) Fail("a quote is not closed, or stands inside a text");
    if (splitter.Columns().size() != kColumns)
      Fail("there are " + std::to_string(splitter.Columns().size()) + " columns, not " +
           std::to_string(kColumns));
    return splitter.Columns();
  }

  std::string Text(Column column, const std::string& text, std::size_t longest) const {
    const std::string name(kColumnNames[column]);
    if (text.empty()) Fail(name + " is empty");
    if (text.size() > longest) Fail(name + " is longer than " + std::to_string(longest) + " characters");
    // It is copied to plugins as a terminated text.
    if (text.find('\0') != std::string::npos) Fail(name + " is no text");
    return text;
  }

  template <class Value>
  Value Number(Column column, const std::string& text, Value smallest, Value largest) const {
    Value value{};
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end || !(value >= smallest && value <= largest))
      Fail(std::string(kColumnNames[column]) + " must be a number from " + Short(smallest) + " to " +
           Short(largest));
    return value;
  }

 private:
  static std::string Short(double value) { return std::to_string(static_cast<int>(value)); }

  const std::string& fileName;
  int lineNumber;
};

// For each column, where it stands in a line.
std::array<std::size_t, kColumns> FindColumns(const std::vector<std::string>& header, const Line& line) {
  std::array<std::size_t, kColumns> places{};
  for (std::size_t column = 0; column < kColumns; ++column) {
    const auto found = std::ranges::find(header, kColumnNames[column]);
    if (found == header.end()) line.Fail("the column " + std::string(kColumnNames[column]) + " is missing");
    places[column] = static_cast<std::size_t>(found - header.begin());
  }
  return places;
}

NavAid Understand(const std::vector<std::string>& texts, const std::array<std::size_t, kColumns>& places,
                  const Line& line) {
  const auto at = [&](Column column) -> const std::string& { return texts[places[column]]; };
  NavAid navAid;
  navAid.type = TypeOf(at(kType));
  if (navAid.type == kNoType || navAid.type == kPosition)
    line.Fail("type must be one of airport, ndb, vor, ils, fix");
  navAid.ident = line.Text(kIdent, at(kIdent), kLongestIdent);
  navAid.name = line.Text(kName, at(kName), kLongestName);
  navAid.place.latitude = line.Number(kLatitude, at(kLatitude), -90.0, 90.0);
  navAid.place.longitude = line.Number(kLongitude, at(kLongitude), -180.0, 180.0);
  navAid.place.altitude = line.Number(kElevation, at(kElevation), kLowest, kHighest);
  navAid.frequency = line.Number(kFrequency, at(kFrequency), 0, kHighestFrequency);
  navAid.heading = line.Number(kHeading, at(kHeading), 0.0, 360.0);
  return navAid;
}

// Takes a line from the front of the text, without its end.
std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = std::min(text.find('\n'), text.size());
  std::string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

}  // namespace

std::vector<NavAid> ParseNavigation(std::string_view text, const std::string& fileName) {
  std::vector<NavAid> navAids;
  std::array<std::size_t, kColumns> places{};
  Splitter splitter;
  bool hasHeader = false;
  for (int number = 1; !text.empty(); ++number) {
    const std::string_view content = TakeLine(text);
    if (content.empty() || content.starts_with('#')) continue;
    const Line line(fileName, number);
    const std::vector<std::string> texts = line.Split(splitter, content);
    if (hasHeader)
      navAids.push_back(Understand(texts, places, line));
    else
      places = FindColumns(texts, line);
    hasHeader = true;
  }
  if (!hasHeader) throw FileError(fileName, 0, "there is no header");
  return navAids;
}

}  // namespace sim::world
