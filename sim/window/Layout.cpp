#include "window/Layout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <system_error>

namespace sim {

NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(PanelPlace, isShown, left, top, width, height)

namespace {

namespace fs = std::filesystem;

constexpr float kMenuBar = 24.0F;
constexpr float kGap = 6.0F;
constexpr float kSmallest = 80.0F;
constexpr float kLargestWidth = 760.0F;
constexpr float kLargestHeight = 560.0F;

// Shares of the window below the menu bar.
struct Share {
  std::string_view panel;
  float left;
  float top;
  float width;
  float height;
};

constexpr std::array<Share, 7> kShares{{
    {"Plugins", 0.0F, 0.0F, 0.42F, 0.48F},
    {"Frame", 0.0F, 0.48F, 0.42F, 0.52F},
    {"Datarefs", 0.42F, 0.0F, 0.30F, 0.44F},
    {"Flight", 0.42F, 0.44F, 0.30F, 0.24F},
    {"Commands", 0.72F, 0.0F, 0.28F, 0.34F},
    {"Windows and keys", 0.72F, 0.34F, 0.28F, 0.34F},
    {"Log", 0.42F, 0.68F, 0.58F, 0.32F},
}};

fs::path FileIn(const std::string& stateFolder) { return fs::path(stateFolder) / "window-layout.json"; }

bool IsUsable(const PanelPlace& place) {
  return std::ranges::all_of(std::array{place.left, place.top, place.width, place.height},
                             [](float edge) { return std::isfinite(edge); });
}

}  // namespace

PanelPlace FirstPlace(std::string_view panel, float width, float height, float density) {
  const auto found = std::ranges::find(kShares, panel, &Share::panel);
  const Share share = found != kShares.end() ? *found : Share{panel, 0.3F, 0.2F, 0.4F, 0.5F};
  const float bar = kMenuBar * density;
  const float across = width - kGap;
  const float down = height - bar - kGap;
  // Whole pixels, so that letters are as sharp as they can be.
  const float left = std::floor(share.left * across) + kGap;
  const float top = std::floor(bar + share.top * down) + kGap;
  const float right = std::floor((share.left + share.width) * across);
  const float bottom = std::floor(bar + (share.top + share.height) * down);
  return {.isShown = false,
          .left = left,
          .top = top,
          .width = std::min(right - left, kLargestWidth * density),
          .height = std::min(bottom - top, kLargestHeight * density)};
}

PanelPlace Within(PanelPlace place, float width, float height) {
  place.width = std::clamp(place.width, std::min(kSmallest, width), width);
  place.height = std::clamp(place.height, std::min(kSmallest, height), height);
  place.left = std::clamp(place.left, 0.0F, width - place.width);
  place.top = std::clamp(place.top, 0.0F, height - place.height);
  return place;
}

Layout ReadLayout(const std::string& stateFolder) {
  if (stateFolder.empty()) return {};
  std::ifstream file(FileIn(stateFolder));
  if (!file) return {};
  try {
    auto layout = nlohmann::json::parse(file).get<Layout>();
    std::erase_if(layout, [](const auto& entry) { return !IsUsable(entry.second); });
    return layout;
  } catch (const nlohmann::json::exception&) {
    return {};  // somebody else's, or cut short: the first places do as well
  }
}

bool WriteLayout(const std::string& stateFolder, const Layout& layout) {
  if (stateFolder.empty()) return true;
  std::error_code error;
  fs::create_directories(stateFolder, error);
  // Put in place whole, as the flight's process may end at any moment.
  const fs::path written = FileIn(stateFolder).concat(".new");
  std::ofstream file(written);
  file << nlohmann::json(layout).dump(2) << '\n';
  file.close();
  if (file.fail()) return false;
  fs::rename(written, FileIn(stateFolder), error);
  return !error;
}

}  // namespace sim
