// What hostile plugins do: a row for each, and throwing at any call.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>
#include <string_view>

#include "EverythingPlugin.h"
#include "VYRACamera.h"
#include "VYRADataAccess.h"
#include "VYRADisplay.h"
#include "VYRAMenus.h"
#include "VYRAPlanes.h"
#include "VYRAPlugin.h"
#include "VYRAProcessing.h"
#include "VYRAScenery.h"
#include "VYRAUtilities.h"

namespace {

// Of this module: its type and its text are gone with it.
class Failure : public std::exception {
 public:
  const char* what() const noexcept override { return gName; }
};

int FillWith(const char* signature, std::size_t size) {
  std::memset(gStartTexts.name, 'n', size);
  std::memset(gStartTexts.description, 'd', size);
  std::memcpy(gStartTexts.signature, signature, size);
  gStartTexts = {};
  return 1;
}

int FillNothing(int result) {
  gStartTexts = {};
  return result;
}

int FillToTheBrim(int) {
  const std::string signature(VYRA_PLUGIN_INFO_SIZE, 's');
  return FillWith(signature.data(), signature.size());
}

int TakeSignatureOfFirst(int) {
  std::strcpy(gStartTexts.name, gName);
  std::strcpy(gStartTexts.signature, "test.0-first");
  gStartTexts = {};
  return 1;
}

int LeaveSignatureEmpty(int) {
  *gStartTexts.signature = '\0';
  gStartTexts = {};
  return 1;
}

int Refuse(int) { return 0; }

int RegisterOnceMore(int result) {
  RegisterEverything();
  return result;
}

int Unregister(int result) {
  UnregisterEverything();
  return result;
}

int DisableItself(int result) {
  VYRADisablePlugin(VYRAGetMyID());
  return result;
}

int EnableItself(int result) {
  VYRAEnablePlugin(VYRAGetMyID());
  return result;
}

int TakePlanesAndCamera(int result) {
  const auto keep = [](VYRACameraPosition*, int, void*) { return 1; };
  VYRAAcquirePlanes(nullptr, nullptr, nullptr);
  VYRAControlCamera(VYRA_CAMERA_UNTIL_VIEW_CHANGES, keep, nullptr);
  return result;
}

int ReloadOnce(int result) {
  // In the host's memory, as the reload closes this module.
  const VYRADataRef reloads = VYRAFindDataRef("test/reloads");
  if (VYRAGetDatai(reloads) == 0) {
    VYRASetDatai(reloads, 1);
    VYRAReloadPlugins();
  }
  return result;
}

int Misuse(int result) {
  VYRADestroyFlightLoop(nullptr);
  VYRAUnloadObject(nullptr);
  return result;
}

int PassJunk(int result) {
  int junk[32] = {};
  VYRADestroyWindow(reinterpret_cast<VYRAWindowID>(junk));
  VYRAUnregisterHotKey(reinterpret_cast<VYRAHotKeyID>(junk));
  VYRADestroyMenu(reinterpret_cast<VYRAMenuID>(junk));
  VYRADestroyProbe(reinterpret_cast<VYRAProbeRef>(junk));
  VYRADestroyFlightLoop(reinterpret_cast<VYRAFlightLoopID>(junk));
  VYRASendMessageToPlugin(123456, 1, junk);
  VYRADisablePlugin(-7);
  VYRAEnableFeature("NO_SUCH_FEATURE", 1);
  return result;
}

int RegisterThousands(int result) {
  constexpr int kCount = 10000;
  static char places[kCount];
  const VYRACommandRef command = VYRACreateCommand("test/command", "");
  const VYRAMenuID menu = VYRACreateMenu("Thousands", nullptr, 0, nullptr, nullptr);
  for (char& place : places) {
    const std::string name = "test/thousands/" + std::to_string(&place - places);
    VYRARegisterFlightLoopCallback([](float, float, int, void*) { return -1.0F; }, -1, &place);
    VYRARegisterDataAccessor(name.c_str(), VYRA_TYPE_INT, 0, nullptr, nullptr, nullptr, nullptr, nullptr,
                             nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    VYRAShareData(
        "test/shared", VYRA_TYPE_INT, [](void*) {}, &place);
    VYRARegisterDrawCallback([](int, int, void*) { return 1; }, 5, 1, &place);
    VYRARegisterKeySniffer([](char, int, char, void*) { return 1; }, 1, &place);
    VYRARegisterHotKey(0, 1, "", nullptr, &place);
    VYRACreateWindow(-2, 2, -1, 1, 1, nullptr, nullptr, nullptr, &place);
    VYRARegisterCommandHandler(
        command, [](VYRACommandRef, int, void*) { return 1; }, 1, &place);
    VYRAAppendMenuItem(menu, "One", &place, 0);
    VYRACreateProbe(VYRA_PROBE_VERTICAL);
    VYRALoadObject("test.obj");
  }
  return result;
}

struct Fault {
  const char* name;
  Call at;
  int (*commit)(int result);
};

constexpr Fault kFaults[] = {
    {"constructor-registers", Call::construct, RegisterOnceMore},
    {"constructor-misuses", Call::construct, PassJunk},
    {"destructor-registers", Call::destroy, RegisterOnceMore},
    {"destructor-misuses", Call::destroy, PassJunk},
    {"start-refuses", Call::start, Refuse},
    {"start-fills-nothing", Call::start, FillNothing},
    {"start-fills-to-the-brim", Call::start, FillToTheBrim},
    {"start-takes-a-signature", Call::start, TakeSignatureOfFirst},
    {"start-leaves-signature-empty", Call::start, LeaveSignatureEmpty},
    {"start-enables-itself", Call::start, EnableItself},
    {"enable-refuses", Call::enable, Refuse},
    {"enable-disables-itself", Call::enable, DisableItself},
    {"enable-takes-planes-and-camera", Call::enable, TakePlanesAndCamera},
    {"enable-registers-thousands", Call::enable, RegisterThousands},
    {"disable-unregisters", Call::disable, Unregister},
    {"disable-enables-itself", Call::disable, EnableItself},
    {"stop-registers", Call::stop, RegisterOnceMore},
    {"stop-enables-itself", Call::stop, EnableItself},
    {"error-misuses", Call::error, Misuse},
    {"loop-misuses", Call::loop, PassJunk},
    {"loop-disables-itself", Call::loop, DisableItself},
    {"loop-unregisters", Call::loop, Unregister},
    {"loop-registers", Call::loop, RegisterOnceMore},
    {"loop-reloads", Call::loop, ReloadOnce},
    {"draw-unregisters", Call::draw, Unregister},
    {"draw-registers", Call::draw, RegisterOnceMore},
    {"draw-reloads", Call::draw, ReloadOnce},
    {"window-unregisters", Call::drawWindow, Unregister},
    {"changed-unregisters", Call::changed, Unregister},
    {"command-unregisters", Call::command, Unregister},
};

constexpr std::string_view kThrows = "throws-";

// A file that is named after no fault would be a test of nothing.
void RequireFault() {
  const auto isNamed = [](const Fault& fault) { return std::strcmp(fault.name, gName) == 0; };
  if (std::ranges::none_of(kFaults, isNamed) && !std::string_view(gName).starts_with(kThrows)) std::abort();
}

// "throws-loop-once", "throws-loop-always".
void ThrowAt(Call call) {
  static bool hasThrown = false;
  const std::string once =
      std::string(kThrows) + std::string(kCallNames[static_cast<std::size_t>(call)]) + "-once";
  const std::string always = once.substr(0, once.size() - 4) + "always";
  if (gName != always && (gName != once || hasThrown)) return;
  hasThrown = true;
  throw Failure();
}

}  // namespace

int CommitFault(Call call, int result) {
  RequireFault();
  ThrowAt(call);
  for (const Fault& fault : kFaults) {
    if (call == fault.at && std::strcmp(gName, fault.name) == 0) result = fault.commit(result);
  }
  return result;
}
