// Reading a flight file.
#include "flight/Flight.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string_view>

#include "InputError.h"
#include "VYRAHost.h"
#include "flight/JsonObject.h"
#include "report/Moment.h"
#include "view/Screen.h"

namespace sim {
namespace {

constexpr std::size_t kModelPathBuffer = 256;  // as the library reads a model's path
constexpr int kAnyInt = std::numeric_limits<int>::max();

nlohmann::json ParseFile(const std::string& fileName) {
  std::ifstream file(fileName);
  if (!file) throw InputError("cannot read the flight " + fileName);
  try {
    return nlohmann::json::parse(file);
  } catch (const nlohmann::json::parse_error& error) {
    // The text opens with the error's number in brackets; the position and the reason come after it.
    const std::string_view text = error.what();
    throw InputError(fmt::format("{}: {}", fileName, text.substr(text.find(']') + 2)));
  }
}

int CheckedFrame(JsonObject& object, int frames) {
  const int frame = object.Int("frame", 1, kMaxFrames);
  if (frame > frames) object.Fail(fmt::format("frame {} lies behind the flight's last, {}", frame, frames));
  return frame;
}

std::string ModelPath(JsonObject& object, const std::string& systemPath) {
  std::string path = systemPath + object.Text("loadAircraft");
  if (!std::filesystem::is_regular_file(path)) object.Fail(fmt::format("there is no aircraft file {}", path));
  if (path.size() >= kModelPathBuffer)
    object.Fail(fmt::format("the path is longer than {} bytes: {}", kModelPathBuffer - 1, path));
  return path;
}

std::string SceneryFolder(JsonObject& object, const std::string& systemPath) {
  std::string folder = systemPath + object.Text("loadScenery");
  if (!std::filesystem::is_directory(folder)) object.Fail(fmt::format("there is no folder {}", folder));
  if (!folder.ends_with('/')) folder += '/';
  return folder;
}

SendMessage MessageOf(JsonObject object) {
  SendMessage send{
      .signature = object.Text("to"), .message = object.Int("message", -kAnyInt, kAnyInt), .text = {}};
  if (object.Has("text")) send.text = object.Text("text");
  object.RejectOtherKeys();
  return send;
}

BroadcastEvent BroadcastOf(JsonObject& object) {
  constexpr std::array kBroadcasts = {
      static_cast<int>(VYRA_EVENT_BROADCAST_101), static_cast<int>(VYRA_EVENT_BROADCAST_103),
      static_cast<int>(VYRA_EVENT_BROADCAST_104), static_cast<int>(VYRA_EVENT_BROADCAST_105),
      static_cast<int>(VYRA_EVENT_BROADCAST_107), static_cast<int>(VYRA_EVENT_BROADCAST_108)};
  const int event = object.Int("broadcastEvent", 0, kAnyInt);
  if (std::ranges::find(kBroadcasts, event) == kBroadcasts.end())
    object.Fail(fmt::format("event {} is no broadcast: 2, 4, 6, 7, 11 and 13 are", event));
  return {event};
}

WriteValue WriteOf(JsonObject object) {
  WriteValue write{object.Text("name"), object.Value("value")};
  object.RejectOtherKeys();
  return write;
}

Click ClickOf(JsonObject object) {
  const Click click{.x = object.Int("x", 0, kScreenWidth - 1), .y = object.Int("y", 0, kScreenHeight - 1)};
  object.RejectOtherKeys();
  return click;
}

// Of a letter or digit, whose virtual key is the character itself, in upper case.
PressKey KeyOf(JsonObject& object) {
  const std::string key = object.Text("key");
  if (key.size() != 1 || std::isalnum(static_cast<unsigned char>(key.front())) == 0)
    object.Fail("\"key\" must be one letter or digit");
  return {.key = key.front(), .flags = object.Has("flags") ? object.Int("flags", 0, kAnyInt) : 0};
}

UseCommand CommandOf(JsonObject object) {
  UseCommand use{.name = object.Text("name"), .passes = object.Int("passes", 1, kMaxFrames)};
  object.RejectOtherKeys();
  return use;
}

Action ActionOf(JsonObject& object, const std::string& systemPath) {
  if (object.Has("loadAircraft")) return LoadAircraft{ModelPath(object, systemPath)};
  if (object.Has("loadScenery")) return LoadScenery{SceneryFolder(object, systemPath)};
  if (object.Has("sendMessage")) return MessageOf(object.Object("sendMessage"));
  if (object.Has("broadcastEvent")) return BroadcastOf(object);
  if (object.Has("writeDataRef")) return WriteOf(object.Object("writeDataRef"));
  if (object.Has("click")) return ClickOf(object.Object("click"));
  if (object.Has("key")) return KeyOf(object);
  if (object.Has("pickMenuItem")) return PickItem{object.Text("pickMenuItem")};
  if (object.Has("command")) return CommandOf(object.Object("command"));
  object.True("unloadAircraft");
  return UnloadAircraft{};
}

DataRefIs DataRefClaim(JsonObject& object) {
  using enum DataRefIs::Comparison;
  DataRefIs claim{.dataRef = object.Text("dataRef"), .index = {}, .comparison = Absent, .value = {}};
  if (object.Has("index")) claim.index = object.Int("index", 0, kAnyInt);
  if (object.Has("absent")) {
    object.True("absent");
    return claim;
  }
  const char* const key = object.Has("atLeast") ? "atLeast" : object.Has("contains") ? "contains" : "equals";
  claim.comparison = object.Has("atLeast") ? AtLeast : object.Has("contains") ? Contains : Equals;
  claim.value = object.Value(key);
  if (claim.comparison == AtLeast && !std::holds_alternative<double>(claim.value))
    object.Fail("\"atLeast\" must be a number");
  if (claim.comparison == Contains && !std::holds_alternative<std::string>(claim.value))
    object.Fail("\"contains\" must be a text");
  return claim;
}

std::string OneOf(JsonObject& object, const char* key, const std::vector<std::string>& allowed) {
  std::string text = object.Text(key);
  if (std::ranges::find(allowed, text) == allowed.end())
    object.Fail(fmt::format("\"{}\" must be one of: {}", key, fmt::join(allowed, ", ")));
  return text;
}

PluginIs PluginClaim(JsonObject& object) {
  using enum PluginIs::State;
  std::string signature = object.Text("plugin");
  const std::string state = OneOf(object, "is", {"loaded", "enabled", "disabled", "absent"});
  if (state == "loaded") return {signature, Loaded};
  if (state == "enabled") return {signature, Enabled};
  if (state == "disabled") return {signature, Disabled};
  return {signature, Absent};
}

CameraIs CameraClaim(JsonObject& object) {
  CameraIs claim{.ofPlugin = OneOf(object, "camera", {"plugin", "simulator"}) == "plugin", .zoom = {}};
  if (!object.Has("zoom")) return claim;
  const DataRefValue zoom = object.Value("zoom");
  if (!std::holds_alternative<double>(zoom)) object.Fail("\"zoom\" must be a number");
  claim.zoom = std::get<double>(zoom);
  return claim;
}

PlanesHeldBy PlanesClaim(JsonObject& object) {
  const std::string owner = object.Text("planesHeldBy");
  return {owner == "simulator" ? "" : owner};
}

Claim ClaimOf(JsonObject& object) {
  if (object.Has("logLacks")) return LogLacks{object.Text("logLacks")};
  if (object.Has("dataRef")) return DataRefClaim(object);
  if (object.Has("pluginCount")) return PluginCount{object.Int("pluginCount", 0, kAnyInt)};
  if (object.Has("plugin")) return PluginClaim(object);
  if (object.Has("screenShows")) return ScreenHas{object.Text("screenShows"), true};
  if (object.Has("screenLacks")) return ScreenHas{object.Text("screenLacks"), false};
  if (object.Has("menuItem"))
    return MenuItemIs{object.Text("menuItem"),
                      OneOf(object, "is", {"absent", "disabled", "plain", "unchecked", "checked"})};
  if (object.Has("camera")) return CameraClaim(object);
  if (object.Has("planesHeldBy")) return PlanesClaim(object);
  if (object.Has("objectsLoaded")) return ObjectsLoaded{object.Int("objectsLoaded", 0, kAnyInt)};
  LogContains contains{object.Text("logContains"), {}};
  if (object.Has("times")) contains.times = object.Int("times", 1, kAnyInt);
  return contains;
}

int MomentOf(JsonObject& object, int frames) {
  if (!object.Has("after")) return CheckedFrame(object, frames);
  return OneOf(object, "after", {"end", "shutdown"}) == "end" ? kAtEnd : kAfterShutdown;
}

}  // namespace

Flight ReadFlight(const std::string& fileName, const std::string& systemPath, int frames) {
  const nlohmann::json document = ParseFile(fileName);
  JsonObject file(document, fileName);
  Flight flight;
  for (const nlohmann::json& element : file.Array("steps")) {
    JsonObject object(element, fmt::format("{}: steps[{}]", fileName, flight.steps.size()));
    const int frame = CheckedFrame(object, frames);
    flight.steps.push_back({frame, ActionOf(object, systemPath)});
    object.RejectOtherKeys();
  }
  for (const nlohmann::json& element : file.Array("expectations")) {
    JsonObject object(element, fmt::format("{}: expectations[{}]", fileName, flight.expectations.size()));
    const int moment = MomentOf(object, frames);
    flight.expectations.push_back({moment, ClaimOf(object)});
    object.RejectOtherKeys();
  }
  file.RejectOtherKeys();
  std::ranges::stable_sort(flight.steps, {}, &Step::frame);
  std::ranges::stable_sort(flight.expectations, {}, &Expectation::frame);
  return flight;
}

}  // namespace sim
