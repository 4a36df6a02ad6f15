#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <optional>

#include "VYRAPlugin.h"
#include "flight/expectations/Expectations.h"
#include "host/Inventory.h"

namespace sim {
namespace {

struct Window {
  VYRAWindowInfo info;
  bool isFront;  // of those that are shown
};

std::vector<Window> WindowsOf(const std::string& signature) {
  const std::vector<VYRAWindowInfo> all = PluginWindows();
  const VYRAPluginID plugin = VYRAFindPluginBySignature(signature.c_str());
  const auto front =
      std::ranges::find_if(all, [](const VYRAWindowInfo& window) { return window.isShown != 0; });
  std::vector<Window> windows;
  for (auto window = all.begin(); window != all.end(); ++window)
    if (window->plugin == plugin) windows.push_back({*window, window == front});
  return windows;
}

bool IsIn(const Window& window, const std::string& state) {
  if (state == "shown") return window.info.isShown != 0;
  if (state == "hidden") return window.info.isShown == 0;
  if (state == "front") return window.isFront;
  return window.info.hasKeyboardFocus != 0;
}

// As far as each is said.
struct Edges {
  std::optional<int> left;
  std::optional<int> bottom;
  std::optional<int> right;
  std::optional<int> top;

  bool Fit(const VYRAWindowInfo& window) const {
    return left.value_or(window.left) == window.left && bottom.value_or(window.bottom) == window.bottom &&
           right.value_or(window.right) == window.right && top.value_or(window.top) == window.top;
  }
};

Edges ReadEdges(const Entry& entry) {
  const auto edge = [&entry](std::string_view key) {
    return entry.Has(key) ? std::optional(entry.WholeNumber(key)) : std::nullopt;
  };
  return {.left = edge("left"), .bottom = edge("bottom"), .right = edge("right"), .top = edge("top")};
}

std::string Describe(const std::vector<Window>& windows) {
  if (windows.empty()) return "no window";
  std::vector<std::string> texts;
  texts.reserve(windows.size());
  for (const auto& [info, isFront] : windows)
    texts.push_back(fmt::format("a {}{}{} one at {}, {} to {}, {}", info.isShown != 0 ? "shown" : "hidden",
                                isFront ? ", front" : "", info.hasKeyboardFocus != 0 ? ", focused" : "",
                                info.left, info.bottom, info.right, info.top));
  return fmt::format("{}", fmt::join(texts, "; "));
}

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const std::string signature = entry.Text("window");
  const std::string state = entry.Text("is");
  Edges edges;
  if (entry.Has("at")) edges = ReadEdges(entry.Object("at"));
  return {.text = fmt::format("a window of {} is {}{}", signature, state, entry.Has("at") ? " there" : ""),
          .check = [signature, state, edges]() -> Finding {
            const std::vector<Window> windows = WindowsOf(signature);
            const bool isThere = std::ranges::any_of(windows, [&](const Window& window) {
              return edges.Fit(window.info) && (state == "absent" || IsIn(window, state));
            });
            return {isThere != (state == "absent"), Describe(windows)};
          }};
}

}  // namespace

ExpectationWord WindowIsExpectation() {
  constexpr int kFarthest = 100'000;
  const auto edge = [](std::string_view name, std::string_view description) {
    return Optional(WholeNumberKey(name, -kFarthest, kFarthest, description));
  };
  return {
      {.key = TextKey("window", "a window of the plugin with this signature is in this state"),
       .others = {ChoiceKey("is", {"shown", "hidden", "front", "focused", "absent"},
                            "`front`: the front-most of all that are shown; `absent`: it has none, or none "
                            "there"),
                  Optional(ObjectKey(
                      "at",
                      {edge("left", "pixels from the screen's left edge"),
                       edge("bottom", "pixels from its bottom"), edge("right", "pixels from its left edge"),
                       edge("top", "pixels from its bottom")},
                      "only windows with these edges count"))}},
      Read};
}

}  // namespace sim
