// ModuleTest: folders, the trace, and the answering of the plugins' moments.
#include "ModuleTest.h"

#include <dlfcn.h>
#include <stdlib.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace fs = std::filesystem;

namespace {

enum { kAskHostMessage = 9002 };  // to the host, with a function as parameter

// The scripts of the one running test, for plugins to run through a plain function pointer.
std::map<std::string, std::function<void(Moment&)>>* gScripts;

std::string NameOf(const Moment& moment) { return std::string(moment.plugin) + "." + moment.call; }

void RunScript(Moment& moment) {
  const auto script = gScripts->at(NameOf(moment));  // a copy, as a script may replace itself
  script(moment);
}

std::string MakeRoot() {
  std::string pattern = (fs::temp_directory_path() / "vyra-tests-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("No temporary folder: " + pattern);
  return pattern + "/";
}

}  // namespace

ModuleTest::ModuleTest() : root(MakeRoot()) {
  gScripts = &scripts;
  gHost = RecordingHost();
  gHost.systemPath = root;
  gHost.planePath = root + "Aircraft/wing.acf";
  gHost.onMessage = [this](VYRAPluginID, int message, void* param) { ReceiveMessage(message, param); };
  fs::create_directories(main);
}

ModuleTest::~ModuleTest() {
  scripts.clear();
  gHost.onCall = nullptr;
  VYRAShutdownPlugins();
  gHost.onMessage = nullptr;
  fs::remove_all(root);
}

std::string ModuleTest::Add(const std::string& path, const char* module) {
  fs::create_directories(fs::path(path).parent_path());
  if (module != nullptr) {
    fs::copy_file(module, path);
  } else {
    std::ofstream(path) << "This is no library.\n";
  }
  return path;
}

void ModuleTest::AddFolders(const std::string& below, std::initializer_list<const char*> names) {
  for (const char* name : names) Add(below + name + "/64/lin.vyp");
}

void ModuleTest::AskHost(const std::function<void()>& what) {
  VYRASendMessageToPlugin(VYRA_HOST_PLUGIN, kAskHostMessage, const_cast<std::function<void()>*>(&what));
}

std::string ModuleTest::Trace() { return std::exchange(callTrace, ""); }

int ModuleTest::Start() {
  const int result = StartTraced();
  callTrace.clear();
  return result;
}

int ModuleTest::Event(int event, const void* param) {
  return VYRAEventHook(event, const_cast<void*>(param), nullptr, 0, 0);
}

std::string ModuleTest::InfoOf(VYRAPluginID plugin) {
  char texts[4][VYRA_PLUGIN_INFO_SIZE] = {"?", "?", "?", "?"};
  VYRAGetPluginInfo(plugin, texts[0], texts[1], texts[2], texts[3]);
  return std::string(texts[0]) + "|" + texts[1] + "|" + texts[2] + "|" + texts[3];
}

bool ModuleTest::IsMapped(const std::string& path) {
  void* const handle = dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD);
  if (handle != nullptr) dlclose(handle);
  return handle != nullptr;
}

int ModuleTest::CountOf(const std::string& text, const std::string& part) {
  int count = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

void ModuleTest::ReceiveMessage(int message, void* param) {
  if (message == kAskHostMessage) (*static_cast<std::function<void()>*>(param))();
  if (message != kMomentMessage) return;
  Moment& moment = *static_cast<Moment*>(param);
  if (!callTrace.empty()) callTrace += ' ';
  callTrace += NameOf(moment);
  if (std::strcmp(moment.call, "message") == 0) {
    callTrace += '(';
    callTrace += std::to_string(moment.from) + "," + std::to_string(moment.message) + "," +
                 std::to_string(reinterpret_cast<std::intptr_t>(moment.param)) + ")";
  }
  if (scripts.contains(NameOf(moment))) moment.act = RunScript;
}

void RegisterAll(Moment& moment) {
  VYRARegisterFlightLoopCallback(moment.flightLoop, -1, nullptr);
  VYRARegisterDataAccessor(("test/" + std::string(moment.plugin)).c_str(), VYRA_TYPE_INT, 0, moment.readInt,
                           nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                           nullptr, nullptr, nullptr, nullptr);
  VYRAShareData("test/shared", VYRA_TYPE_INT, moment.changed, nullptr);
}
