#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cstddef>

#include "list/List.h"

namespace sim {
namespace {

constexpr std::size_t kWidest = 48;  // of a column but the last

std::string Dump(const Rows& value) { return value.dump(-1, ' ', false, Rows::error_handler_t::replace); }

std::string CellOf(const Rows& value) {
  if (value.is_boolean()) return value.get<bool>() ? "yes" : "no";
  if (value.is_null()) return "-";
  if (value.is_number_float()) return fmt::format("{:.9g}", value.get<double>());
  if (value.is_array()) {
    std::vector<std::string> parts;
    for (const Rows& part : value) parts.push_back(CellOf(part));
    return fmt::format("{}", fmt::join(parts, ", "));
  }
  if (!value.is_string()) return Dump(value);
  std::string text = value;
  std::ranges::replace_if(
      text, [](unsigned char byte) { return byte < ' '; }, ' ');
  return text;
}

using Line = std::vector<std::string>;

std::string Cut(const std::string& cell) {
  return cell.size() <= kWidest ? cell : cell.substr(0, kWidest - 3) + "...";
}

}  // namespace

std::string TableOf(const Rows& rows) {
  if (rows.empty()) return "none\n";
  std::vector<Line> lines(1);
  for (const auto& [name, value] : rows.front().items()) lines.front().push_back(name);
  for (const Rows& row : rows) {
    Line& line = lines.emplace_back();
    for (const auto& [name, value] : row.items()) line.push_back(CellOf(value));
  }
  const std::size_t last = lines.front().size() - 1;
  std::vector<std::size_t> widths(last, 0);
  for (Line& line : lines)
    for (std::size_t column = 0; column < last; ++column) {
      line[column] = Cut(line[column]);
      widths[column] = std::max(widths[column], line[column].size());
    }
  std::string text;
  for (const Line& line : lines) {
    for (std::size_t column = 0; column < last; ++column)
      text += fmt::format("{:<{}}  ", line[column], widths[column]);
    text += line[last] + '\n';
  }
  return text;
}

std::string JsonOf(const Rows& rows) {
  std::vector<std::string> lines;
  for (const Rows& row : rows) lines.push_back("\n  " + Dump(row));
  return fmt::format("[{}{}]\n", fmt::join(lines, ","), lines.empty() ? "" : "\n");
}

}  // namespace sim
