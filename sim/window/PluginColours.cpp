#include "window/PluginColours.h"

#include <imgui.h>

#include <array>
#include <functional>
#include <map>
#include <string>

namespace sim {
namespace {

constexpr std::array<std::uint32_t, 14> kColours{
    IM_COL32(98, 160, 220, 255),  IM_COL32(232, 163, 82, 255),  IM_COL32(124, 190, 108, 255),
    IM_COL32(206, 108, 118, 255), IM_COL32(160, 134, 210, 255), IM_COL32(94, 190, 184, 255),
    IM_COL32(222, 196, 92, 255),  IM_COL32(214, 136, 186, 255), IM_COL32(150, 168, 92, 255),
    IM_COL32(176, 138, 110, 255), IM_COL32(112, 130, 226, 255), IM_COL32(236, 132, 106, 255),
    IM_COL32(86, 158, 128, 255),  IM_COL32(190, 190, 150, 255),
};

// FNV-1a: the same in each run.
std::size_t Hash(std::string_view text) {
  std::uint64_t hash = 14695981039346656037U;
  for (const char letter : text) hash = (hash ^ static_cast<unsigned char>(letter)) * 1099511628211U;
  return hash ^ (hash >> 32U);
}

}  // namespace

std::uint32_t PluginColour(std::string_view signature) {
  static std::map<std::string, std::size_t, std::less<>> given;
  static std::array<bool, kColours.size()> isTaken{};
  const auto found = given.find(signature);
  if (found != given.end()) return kColours[found->second];
  const std::size_t wanted = Hash(signature) % kColours.size();
  std::size_t colour = wanted;
  for (std::size_t step = 0; step < kColours.size() && isTaken[colour]; ++step)
    colour = (wanted + step + 1) % kColours.size();
  isTaken[colour] = true;
  given.emplace(signature, colour);
  return kColours[colour];
}

}  // namespace sim
