// ModuleTest: a simulator's folders in a fresh temporary place, and the host that flies them. Plugins are
// copies of scripted.vyp that do what the test's On(...) says; Trace() tells which calls they got.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <map>
#include <string>

#include "../RecordingHost.h"
#include "Moment.h"
#include "VYRAHost.h"

class ModuleTest : public testing::Test {
 protected:
  ModuleTest();
  ~ModuleTest() override;

  using Script = std::function<void(Moment&)>;

  // Copies a module, or writes a text file where `module` is null, and returns its path.
  static std::string Add(const std::string& path, const char* module = SCRIPTED_MODULE);

  // Makes plugin folders with the module at 64/lin.vyp.
  static void AddFolders(const std::string& below, std::initializer_list<const char*> names);

  // What a plugin does at a call, named as in the trace: On("fuel.loop", [](Moment&) { ... }).
  void On(const std::string& moment, Script script) { scripts[moment] = std::move(script); }

  // Has the host do something while the plugin that asks is still being called.
  static void AskHost(const std::function<void()>& what);

  // The calls that plugins got since the last Trace(), in order: "fuel.start fuel.enable"; a message is
  // shown with its sender, number and parameter, as "fuel.message(0,102,3)".
  std::string Trace();

  // Starts the library with everything added so far, and forgets the trace up to its end.
  int Start();
  int StartTraced() { return VYRAInitializePlugins(root.c_str(), &gHost.services, nullptr); }

  static int Event(int event, const void* param = nullptr);
  static void Pass() { Event(VYRA_EVENT_FLIGHT_LOOPS_0); }
  static void LoadPlane() { Event(VYRA_EVENT_PLANE_LOADED); }
  static void UnloadPlane() { Event(VYRA_EVENT_PLANE_UNLOADED); }
  void LoadScenery() { Event(VYRA_EVENT_SCENERY_PACKAGE, (root + "Scenery/").c_str()); }

  // The ID of the scripted plugin of this name, or -1.
  static VYRAPluginID Id(const std::string& name) {
    return VYRAFindPluginBySignature(("test." + name).c_str());
  }

  // What the library tells of a plugin: "name|path|signature|description".
  static std::string InfoOf(VYRAPluginID plugin);

  // Whether the module is in memory.
  static bool IsMapped(const std::string& path);

  // How often `part` stands in the text.
  static int CountOf(const std::string& text, const std::string& part);

  const std::string root;  // the system path, ending in "/"
  const std::string main = root + "Resources/plugins/";
  const std::string aircraft = root + "Aircraft/plugins/";  // the folder of plane 0
  const std::string scenery = root + "Scenery/plugins/";

 private:
  void ReceiveMessage(int message, void* param);

  std::map<std::string, Script> scripts;
  std::string callTrace;
};

// Registers what calls its plugin back: a flight loop for every pass, the dataref "test/<plugin>" and a
// subscription to the shared item "test/shared".
void RegisterAll(Moment& moment);
