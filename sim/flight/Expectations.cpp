// What each kind of claim means.
#include "flight/Expectations.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <string_view>

#include "VYRAPlugin.h"
#include "host/CameraServices.h"
#include "host/MenuServices.h"
#include "host/PlaneServices.h"
#include "report/Log.h"
#include "view/Screen.h"
#include "world/Objects.h"

namespace sim {
namespace {

// In single precision, so that a file may say 0.8 of a dataref that holds a float.
bool SameNumber(double left, double right) { return static_cast<float>(left) == static_cast<float>(right); }

bool Equal(const DataRefValue& found, const DataRefValue& wanted) {
  const auto* const number = std::get_if<double>(&found);
  const auto* const wantedNumber = std::get_if<double>(&wanted);
  if (number != nullptr && wantedNumber != nullptr) return SameNumber(*number, *wantedNumber);
  const auto* const numbers = std::get_if<std::vector<double>>(&found);
  const auto* const wantedNumbers = std::get_if<std::vector<double>>(&wanted);
  if (numbers != nullptr && wantedNumbers != nullptr)
    return std::ranges::equal(*numbers, *wantedNumbers, SameNumber);
  return found == wanted;
}

bool Compare(DataRefIs::Comparison comparison, const DataRefValue& found, const DataRefValue& wanted) {
  if (comparison == DataRefIs::Comparison::Equals) return Equal(found, wanted);
  if (comparison == DataRefIs::Comparison::AtLeast) {
    const auto* const number = std::get_if<double>(&found);
    return number != nullptr && *number >= std::get<double>(wanted);
  }
  const auto* const text = std::get_if<std::string>(&found);
  return text != nullptr && text->find(std::get<std::string>(wanted)) != std::string::npos;
}

std::string_view Verb(DataRefIs::Comparison comparison) {
  switch (comparison) {
    case DataRefIs::Comparison::Equals:
      return "equals";
    case DataRefIs::Comparison::AtLeast:
      return "is at least";
    case DataRefIs::Comparison::Contains:
      return "contains";
    case DataRefIs::Comparison::Absent:
      break;
  }
  return "is absent";
}

std::string_view Name(PluginIs::State state) {
  switch (state) {
    case PluginIs::State::Loaded:
      return "loaded";
    case PluginIs::State::Enabled:
      return "enabled";
    case PluginIs::State::Disabled:
      return "disabled";
    case PluginIs::State::Absent:
      break;
  }
  return "absent";
}

// The value, or an array's element; nothing when there is neither.
std::optional<DataRefValue> ReadAt(const std::string& dataRef, std::optional<int> index) {
  std::optional<DataRefValue> value = ReadDataRef(dataRef);
  if (!index || !value) return value;
  const auto* const numbers = std::get_if<std::vector<double>>(&*value);
  const auto position = static_cast<std::size_t>(*index);
  if (numbers == nullptr || position >= numbers->size()) return std::nullopt;
  return (*numbers)[position];
}

std::string Times(int count) { return count == 1 ? "once" : fmt::format("{} times", count); }

std::string_view CameraOwner(bool isPlugin) { return isPlugin ? "a plugin's" : "the simulator's"; }

std::string_view PlanesOwner(std::string_view signature) {
  return signature.empty() ? "the simulator" : signature;
}

struct Judge {
  const Log& log;

  Verdict operator()(const LogContains& claim) const {
    const int count = log.Count(claim.text);
    const std::string times = claim.times ? Times(*claim.times) : "at least once";
    return {claim.times ? count == *claim.times : count > 0,
            fmt::format("log contains \"{}\" {}", claim.text, times), Times(count)};
  }

  Verdict operator()(const LogLacks& claim) const {
    const int count = log.Count(claim.text);
    return {count == 0, fmt::format("log does not contain \"{}\"", claim.text), Times(count)};
  }

  Verdict operator()(const DataRefIs& claim) const {
    const std::string name = claim.index ? fmt::format("{}[{}]", claim.dataRef, *claim.index) : claim.dataRef;
    const std::optional<DataRefValue> value = ReadAt(claim.dataRef, claim.index);
    const std::string found = value ? ToText(*value) : "nothing";
    if (claim.comparison == DataRefIs::Comparison::Absent) return {!value, name + " is absent", found};
    return {value && Compare(claim.comparison, *value, claim.value),
            fmt::format("{} {} {}", name, Verb(claim.comparison), ToText(claim.value)), found};
  }

  Verdict operator()(const PluginCount& claim) const {
    const int count = VYRACountPlugins();
    return {count == claim.count, fmt::format("there are {} plugins", claim.count), std::to_string(count)};
  }

  Verdict operator()(const PluginIs& claim) const {
    using enum PluginIs::State;
    const VYRAPluginID plugin = VYRAFindPluginBySignature(claim.signature.c_str());
    const PluginIs::State state = plugin == VYRA_NO_PLUGIN           ? Absent
                                  : VYRAIsPluginEnabled(plugin) != 0 ? Enabled
                                                                     : Disabled;
    const bool holds = claim.state == Loaded ? state != Absent : state == claim.state;
    return {holds, fmt::format("plugin {} is {}", claim.signature, Name(claim.state)),
            std::string(Name(state))};
  }

  Verdict operator()(const ScreenHas& claim) const {
    const std::vector<std::string>& texts = gScreen.texts;
    const bool shows = std::ranges::any_of(
        texts, [&](const std::string& text) { return text.find(claim.text) != std::string::npos; });
    return {shows == claim.wanted,
            fmt::format("screen {} \"{}\"", claim.wanted ? "shows" : "does not show", claim.text),
            texts.empty() ? "no text" : fmt::format("\"{}\"", fmt::join(texts, "\", \""))};
  }

  Verdict operator()(const MenuItemIs& claim) const {
    const std::string state = MenuItemState(claim.way);
    return {state == claim.state, fmt::format("menu item {} is {}", claim.way, claim.state), state};
  }

  Verdict operator()(const CameraIs& claim) const {
    const auto zoom = static_cast<double>(Camera().zoom);
    const bool zoomHolds = !claim.zoom || SameNumber(zoom, *claim.zoom);
    const std::string wantedZoom = claim.zoom ? fmt::format(" at zoom {:.9g}", *claim.zoom) : "";
    return {PluginHasCamera() == claim.ofPlugin && zoomHolds,
            fmt::format("camera is {}{}", CameraOwner(claim.ofPlugin), wantedZoom),
            fmt::format("{} at zoom {:.9g}", CameraOwner(PluginHasCamera()), zoom)};
  }

  Verdict operator()(const PlanesHeldBy& claim) const {
    const std::string owner = AiPlanesOwner();
    return {owner == claim.owner, fmt::format("AI planes are held by {}", PlanesOwner(claim.owner)),
            std::string(PlanesOwner(owner))};
  }

  Verdict operator()(const ObjectsLoaded& claim) const {
    const int count = LoadedObjects();
    return {count == claim.count, fmt::format("number of objects loaded is {}", claim.count),
            std::to_string(count)};
  }
};

}  // namespace

Verdict Check(const Claim& claim, const Log& log) { return std::visit(Judge{log}, claim); }

}  // namespace sim
