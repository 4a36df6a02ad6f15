// RecordingHost: a recorder for each service, generated from the type of its slot.
#include "RecordingHost.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <type_traits>

#include "ForEachService.h"

RecordingHost gHost;

namespace {

#define COUNT_SERVICE(service) +1
static_assert(FOR_EACH_SERVICE(COUNT_SERVICE) == 70);

template <class Argument>
void AppendArgument(std::ostringstream& line, Argument argument, const char*& separator, bool barred) {
  if constexpr (std::is_pointer_v<Argument> && !std::is_same_v<Argument, const char*> &&
                !std::is_same_v<Argument, void*>) {
    return;
  } else {
    line << separator;
    separator = barred ? "|" : ",";
    if constexpr (std::is_same_v<Argument, const char*>) {
      line << (argument != nullptr ? argument : "null");
    } else if constexpr (std::is_same_v<Argument, void*>) {
      line << reinterpret_cast<std::uintptr_t>(argument);
    } else {
      line << argument;
    }
  }
}

void TellOfCall(const std::string& call) {
  // A copy, as the receiver may put another function in its place.
  if (const auto receive = gHost.onCall) receive(call);
}

template <class... Arguments>
void NoteCall(const char* service, Arguments... arguments) {
  [[maybe_unused]] constexpr bool barred = (std::is_same_v<Arguments, const char*> || ...);
  std::ostringstream line;
  [[maybe_unused]] const char* separator = "";
  line << service << '(';
  (AppendArgument(line, arguments, separator, barred), ...);
  line << ')';
  gHost.calls.push_back(line.str());
  TellOfCall(line.str());
}

template <auto Slot, class Result, class... Arguments>
void FillSlot(Result (*&slot)(Arguments...), const char* name) {
  static const char* const service = name;
  slot = [](Arguments... arguments) -> Result {
    NoteCall(service, arguments...);
    [[maybe_unused]] const double answer = gHost.answers.at(service);
    if constexpr (std::is_pointer_v<Result>) {
      return reinterpret_cast<Result>(static_cast<std::uintptr_t>(answer));
    } else {
      return static_cast<Result>(answer);
    }
  };
}

}  // namespace

RecordingHost::RecordingHost() {
#define FILL_SLOT(service)                                          \
  FillSlot<&VYRAHostServices::service>(services.service, #service); \
  answers.emplace(#service, 0);
  FOR_EACH_SERVICE(FILL_SLOT)

  services.serviceTableRevision = 4;
  services.hostVersion = 568;
  services.DebugString = [](const char* text) {
    gHost.log += text;
    if (gHost.onCall) TellOfCall(std::string("DebugString(") + text + ")");
  };
  services.GetSystemPath = [](char* outPath) {
    NoteCall("GetSystemPath");
    std::strcpy(outPath, gHost.systemPath.c_str());
  };
  services.GetNthAircraftModel = [](int planeIndex, char* outPath, char* outFileName) {
    NoteCall("GetNthAircraftModel", planeIndex);
    std::snprintf(outPath, 256, "%s", planeIndex == 0 ? gHost.planePath.c_str() : "");
    std::snprintf(outFileName, 256, "%s", planeIndex == 0 ? gHost.planeFileName.c_str() : "");
  };
  services.HostReceiveMessage = [](VYRAPluginID fromPlugin, int message, void* param) {
    NoteCall("HostReceiveMessage", fromPlugin, message);
    // A copy, as the receiver may put another function in its place.
    if (const auto receive = gHost.onMessage) receive(fromPlugin, message, param);
  };
}

void RecordingHost::Answer(std::string_view service, double result) {
  answers.at(std::string(service)) = result;
}

std::vector<std::string> RecordingHost::CallsOf(std::string_view service) const {
  std::vector<std::string> found;
  for (const std::string& call : calls) {
    if (std::string_view(call).substr(0, call.find('(')) == service) found.push_back(call);
  }
  return found;
}
