// What one thing of each kind costs among 10, 1,000 and 100,000: to make it, to look it up, to take it back,
// and to unload the plugin that made it. Nothing walks here: the other measures grow for that.
#include <VYRADataAccess.h>
#include <VYRADisplay.h>
#include <VYRAMenus.h>
#include <VYRAPlugin.h>
#include <VYRAProcessing.h>
#include <VYRAScenery.h>
#include <VYRAUtilities.h>

#include <algorithm>
#include <ctime>
#include <numeric>
#include <regex>
#include <string>
#include <vector>

#include "../HostedLibrary.h"
#include "DataRefPopulation.h"
#include "Measures.h"

namespace bench {

namespace {

using Numbers = std::vector<std::size_t>;

constexpr std::size_t kMany = 1'000;
constexpr std::size_t kPlugins = 2;  // few: closing their modules is part of what an unload takes
constexpr const char* kItem = "bench/growth/subscribed";

// What the library gave for each thing that was made.
std::vector<void*> gHandles;
int gNamesUsed = 0;  // the registry keeps every name, so that each run needs new ones

// Of the plugin that is at work.
std::size_t gFirst = 0;  // the number of its first thing
std::size_t gLeft = 0;   // how many things it is still to be asked for, this one included

// The refcon tells one thing from the next. As a command it is the host's own, which no one looks into.
void* Refcon(std::size_t i) { return reinterpret_cast<void*>(i + 1); }
const auto kCommand = reinterpret_cast<VYRACommandRef>(&gNamesUsed);

int Draw(int /*phase*/, int /*isBefore*/, void* /*refcon*/) { return 1; }
int SniffKey(char /*key*/, int /*flags*/, char /*virtualKey*/, void* /*refcon*/) { return 1; }
void DrawWindow(VYRAWindowID /*window*/, void* /*refcon*/) {}
void PressHotKey(void* /*refcon*/) {}
void Changed(void* /*refcon*/) {}
float Fly(float /*sinceLastCall*/, float /*now*/, int /*counter*/, void* /*refcon*/) { return 0; }
int HandleCommand(VYRACommandRef /*command*/, int /*phase*/, void* /*refcon*/) { return 1; }

std::string NameOf(std::size_t i) {
  return "bench/growth/" + std::to_string(gNamesUsed) + "/" + std::to_string(i);
}

template <int before>
void AddHandler(std::size_t i) {
  VYRARegisterCommandHandler(kCommand, HandleCommand, before, Refcon(i));
}
template <int before>
void RemoveHandler(std::size_t i) {
  VYRAUnregisterCommandHandler(kCommand, HandleCommand, before, Refcon(i));
}

// One kind of thing. Without a function to look up or to take back there is nothing of that sort to measure.
struct Kind {
  const char* name;
  void (*make)(std::size_t i);
  void (*lookUp)(std::size_t i);
  void (*takeBack)(std::size_t i);
  bool leavesName = false;  // in the registry: made again, it would not be made anew
};

const Kind kKinds[] = {
    {"draw callback", [](std::size_t i) { VYRARegisterDrawCallback(Draw, 50, 1, Refcon(i)); }, nullptr,
     [](std::size_t i) { VYRAUnregisterDrawCallback(Draw, 50, 1, Refcon(i)); }},
    {"key sniffer", [](std::size_t i) { VYRARegisterKeySniffer(SniffKey, 1, Refcon(i)); }, nullptr,
     [](std::size_t i) { VYRAUnregisterKeySniffer(SniffKey, 1, Refcon(i)); }},
    {"window",
     [](std::size_t i) {
       gHandles[i] = VYRACreateWindow(0, 9, 9, 0, 1, DrawWindow, nullptr, nullptr, nullptr);
     },
     [](std::size_t i) {
       int left = 0;
       VYRAGetWindowGeometry(static_cast<VYRAWindowID>(gHandles[i]), &left, nullptr, nullptr, nullptr);
     },
     [](std::size_t i) { VYRADestroyWindow(static_cast<VYRAWindowID>(gHandles[i])); }},
    {"hot key", [](std::size_t i) { gHandles[i] = VYRARegisterHotKey('A', 8, "", PressHotKey, Refcon(i)); },
     [](std::size_t i) {
       int flags = 0;
       VYRAGetHotKeyInfo(VYRAGetNthHotKey(static_cast<int>(i)), nullptr, &flags, nullptr, nullptr);
     },
     [](std::size_t i) { VYRAUnregisterHotKey(static_cast<VYRAHotKeyID>(gHandles[i])); }},
    {"flight loop", [](std::size_t i) { VYRARegisterFlightLoopCallback(Fly, 0, Refcon(i)); },
     [](std::size_t i) { VYRASetFlightLoopCallbackInterval(Fly, 0, 0, Refcon(i)); },
     [](std::size_t i) { VYRAUnregisterFlightLoopCallback(Fly, Refcon(i)); }},
    {"dataref",
     [](std::size_t i) {
       gHandles[i] = VYRARegisterDataAccessor(
           NameOf(i).c_str(), VYRA_TYPE_INT, 0, [](void*) { return 0; }, nullptr, nullptr, nullptr, nullptr,
           nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
     },
     [](std::size_t i) { VYRAFindDataRef(NameOf(i).c_str()); },
     [](std::size_t i) { VYRAUnregisterDataAccessor(static_cast<VYRADataRef>(gHandles[i])); }, true},
    {"shared item", [](std::size_t i) { VYRAShareData(NameOf(i).c_str(), VYRA_TYPE_INT, nullptr, nullptr); },
     [](std::size_t i) { VYRAShareData(NameOf(i).c_str(), VYRA_TYPE_INT, nullptr, nullptr); }, nullptr},
    {"subscriber of one item", [](std::size_t i) { VYRAShareData(kItem, VYRA_TYPE_INT, Changed, Refcon(i)); },
     nullptr, [](std::size_t i) { VYRAUnshareData(kItem, VYRA_TYPE_INT, Changed, Refcon(i)); }},
    {"handler before the host, of one command", AddHandler<1>, nullptr, RemoveHandler<1>},
    {"handler after the host, of one command", AddHandler<0>, nullptr, RemoveHandler<0>},
    {"command held", [](std::size_t i) { VYRACommandBegin(static_cast<VYRACommandRef>(Refcon(i))); }, nullptr,
     [](std::size_t i) { VYRACommandEnd(static_cast<VYRACommandRef>(Refcon(i))); }},
    {"menu", [](std::size_t i) { gHandles[i] = VYRACreateMenu("Menu", nullptr, 0, nullptr, nullptr); },
     [](std::size_t i) { VYRASetMenuItemName(static_cast<VYRAMenuID>(gHandles[i]), 0, "", 0); },
     [](std::size_t i) { VYRADestroyMenu(static_cast<VYRAMenuID>(gHandles[i])); }},
    {"item of one menu",
     [](std::size_t i) {
       VYRAAppendMenuItem(VYRAFindPluginsMenu(), "Item", nullptr, 0);
       gHandles[i] = Refcon(static_cast<std::size_t>(gLastHostItem));
     },
     // By the plugin, and by the host when the user picks it.
     [](std::size_t i) {
       VYRACheckMenuItem(VYRAFindPluginsMenu(), static_cast<int>(i - gFirst), VYRA_MENU_CHECKED);
       VYRAMenuHook(static_cast<int>(reinterpret_cast<std::size_t>(gHandles[i]) - 1));
     },
     // The numbers of those behind an item that goes move up.
     [](std::size_t i) {
       VYRARemoveMenuItem(VYRAFindPluginsMenu(), static_cast<int>((i - gFirst) % gLeft));
     }},
    {"object", [](std::size_t i) { gHandles[i] = VYRALoadObject("object"); },
     [](std::size_t i) { VYRADrawObjects(static_cast<VYRAObjectRef>(gHandles[i]), 0, nullptr, 0, 0); },
     [](std::size_t i) { VYRAUnloadObject(static_cast<VYRAObjectRef>(gHandles[i])); }},
    {"probe", [](std::size_t i) { gHandles[i] = VYRACreateProbe(VYRA_PROBE_VERTICAL); },
     [](std::size_t i) {
       VYRAProbeInfo info{};
       info.size = sizeof info;
       VYRAProbeTerrainXYZ(static_cast<VYRAProbeRef>(gHandles[i]), 0, 0, 0, &info);
     },
     [](std::size_t i) { VYRADestroyProbe(static_cast<VYRAProbeRef>(gHandles[i])); }},
};

// What the processor worked for this program, in nanoseconds: others on the machine do not count in it.
double Now() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

// What it takes to do a thing, less what it takes to ask for the time.
template <class Work>
double TimeOf(Work work) {
  static const double asking = [] {
    std::vector<double> times;
    for (int i = 0; i < 101; ++i) {
      const double begin = Now();
      times.push_back(Now() - begin);
    }
    return Median(times);
  }();
  const double begin = Now();
  work();
  return std::max(0.0, Now() - begin - asking);
}

// The numbers of the things that a plugin has among those of all, in an order that nobody can foresee.
Numbers NumbersOf(std::size_t plugin, std::size_t size) {
  Numbers numbers((plugin + 1) * size / kPlugins - plugin * size / kPlugins);
  std::iota(numbers.begin(), numbers.end(), plugin * size / kPlugins);
  return Shuffled(numbers);
}

// Does one thing to all: what each took.
double Time(const std::vector<Numbers>& numbers, std::size_t size, void (*action)(std::size_t)) {
  double sum = 0;
  for (std::size_t plugin = 0; plugin < kPlugins; ++plugin) {
    HostedLibrary::RunAs(static_cast<VYRAPluginID>(plugin + 1), [&] {
      gFirst = plugin * size / kPlugins;
      gLeft = numbers[plugin].size();
      VYRASetErrorCallback([](const char*) {});  // so that objects are looked up when they are drawn
      sum += TimeOf([&] {
        for (const std::size_t i : numbers[plugin]) {
          action(i);
          --gLeft;
        }
      });
    });
  }
  return sum / static_cast<double>(size);
}

struct Costs {
  std::vector<double> made;
  std::vector<double> lookedUp;
  std::vector<double> takenBack;
  std::vector<double> unloaded;
};

void RunOnce(const Kind& kind, std::size_t size, Costs& costs) {
  const HostedLibrary library(kPlugins);
  gHandles.assign(size, nullptr);
  ++gNamesUsed;
  std::vector<Numbers> shuffled;
  std::vector<Numbers> inOrder;
  for (std::size_t plugin = 0; plugin < kPlugins; ++plugin) {
    shuffled.push_back(NumbersOf(plugin, size));
    inOrder.push_back(shuffled.back());
    std::sort(inOrder.back().begin(), inOrder.back().end());
  }
  // What can be taken back is made again and again: a few are made too fast for one round to tell.
  const int rounds = kind.takeBack != nullptr && !kind.leavesName && size < kMany ? 11 : 1;
  for (int round = 0; round < rounds; ++round) {
    costs.made.push_back(Time(inOrder, size, kind.make));
    if (kind.lookUp != nullptr) costs.lookedUp.push_back(Time(shuffled, size, kind.lookUp));
    if (kind.takeBack != nullptr) costs.takenBack.push_back(Time(shuffled, size, kind.takeBack));
  }
  if (kind.takeBack != nullptr) Time(inOrder, size, kind.make);
  costs.unloaded.push_back(TimeOf(VYRAShutdownPlugins));
}

// What it takes to unload the plugins alone.
double EmptyUnload() {
  std::vector<double> times;
  for (int repetition = 0; repetition < 21; ++repetition) {
    const HostedLibrary library(kPlugins);
    times.push_back(TimeOf(VYRAShutdownPlugins));
  }
  return Median(times);
}

}  // namespace

void MeasureGrowth(Session& session, std::size_t size, const std::regex& wanted) {
  // The more there are, the less one time differs from the next.
  const int most = size >= 100'000 ? 3 : size >= kMany ? 11 : 51;
  const int repetitions = std::min(most, session.Options().repetitions);
  const double empty = EmptyUnload();
  for (const Kind& kind : kKinds) {
    if (!std::regex_search(kind.name, wanted)) continue;
    Costs costs;
    for (int repetition = 0; repetition < repetitions; ++repetition) RunOnce(kind, size, costs);
    for (double& time : costs.unloaded) time = std::max(0.0, time - empty) / static_cast<double>(size);
    session.Keep(kind.name, size, "made", costs.made);
    if (kind.lookUp != nullptr) session.Keep(kind.name, size, "looked up", costs.lookedUp);
    if (kind.takeBack != nullptr) session.Keep(kind.name, size, "taken back", costs.takenBack);
    // What a few take cannot be told from what closing the modules takes more one time than another.
    if (kind.takeBack != nullptr && size >= kMany) {
      session.Keep(kind.name, size, "unloaded", costs.unloaded);
    }
  }
}

}  // namespace bench
