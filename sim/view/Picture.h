// A picture in memory, and as a PNG file.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace sim {

struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> bytes;  // red, green and blue of each pixel; rows from the bottom up

  std::array<int, 3> At(int x, int y) const {
    const std::size_t first =
        3 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x));
    return {bytes[first], bytes[first + 1], bytes[first + 2]};
  }
};

// Throws InputError when the file cannot be written.
void WritePng(const Picture& picture, const std::string& fileName);

// Throws InputError when the file cannot be read.
Picture ReadPng(const std::string& fileName);

}  // namespace sim
