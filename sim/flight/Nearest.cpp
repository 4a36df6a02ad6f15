#include "flight/Nearest.h"

#include <fmt/core.h>

#include <algorithm>
#include <cctype>
#include <limits>

namespace sim {
namespace {

bool SameLetter(char left, char right) {
  return std::tolower(static_cast<unsigned char>(left)) == std::tolower(static_cast<unsigned char>(right));
}

// How many letters must be changed, added, left out, or swapped with their neighbour, to make one of the
// other.
std::size_t Distance(std::string_view left, std::string_view right) {
  std::vector<std::vector<std::size_t>> table(left.size() + 1, std::vector<std::size_t>(right.size() + 1));
  for (std::size_t row = 0; row <= left.size(); ++row) table[row][0] = row;
  for (std::size_t column = 0; column <= right.size(); ++column) table[0][column] = column;
  for (std::size_t row = 1; row <= left.size(); ++row) {
    for (std::size_t column = 1; column <= right.size(); ++column) {
      const std::size_t change = SameLetter(left[row - 1], right[column - 1]) ? 0 : 1;
      std::size_t& cell = table[row][column];
      cell = std::min(
          {table[row - 1][column] + 1, table[row][column - 1] + 1, table[row - 1][column - 1] + change});
      const bool isSwapped = row > 1 && column > 1 && SameLetter(left[row - 1], right[column - 2]) &&
                             SameLetter(left[row - 2], right[column - 1]);
      if (isSwapped) cell = std::min(cell, table[row - 2][column - 2] + 1);
    }
  }
  return table[left.size()][right.size()];
}

}  // namespace

std::string_view NearestWord(std::string_view written, const std::vector<std::string_view>& words) {
  std::string_view nearest;
  std::size_t smallest = std::numeric_limits<std::size_t>::max();
  for (const std::string_view word : words) {
    const std::size_t most = std::max<std::size_t>(1, std::max(written.size(), word.size()) / 3);
    const std::size_t distance = Distance(written, word);
    if (distance > most || distance >= smallest) continue;
    nearest = word;
    smallest = distance;
  }
  return nearest;
}

std::string DidYouMean(std::string_view written, const std::vector<std::string_view>& words) {
  const std::string_view word = NearestWord(written, words);
  return word.empty() ? "" : fmt::format("; did you mean \"{}\"?", word);
}

}  // namespace sim
