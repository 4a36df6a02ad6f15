// Plugins that live in the test program itself: records of the registry whose callbacks are functions of the
// test, with the recording host as plugin 0. For everything that needs no module on disk.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "RecordingHost.h"
#include "VYRALoaderDispatch.h"

class PluginFixture : public ::testing::Test {
 protected:
  PluginFixture();
  ~PluginFixture() override;

  // Adds an enabled plugin with an error callback that collects into `errors`. Its module is the test
  // program, so that it counts as loaded and can be unloaded.
  static VYRAPluginID AddPlugin(const std::string& signature);

  static PluginRecord& Record(VYRAPluginID plugin) { return VYRARegistryRecord(plugin); }

  // Runs code of the test as code of a plugin.
  template <class Code>
  static auto RunAs(VYRAPluginID plugin, Code code) {
    const StDispatchCallback dispatch(plugin, VYRA_CALL_MESSAGE);
    return code();
  }

  // Adds an int dataref of the dispatched plugin that reads as `*value`.
  static VYRADataRef PublishInt(const char* name, int* value);

  using Lines = std::vector<std::string>;
  static inline Lines errors;  // "1: message", by plugin
  static inline Lines trace;   // for the tests' own callbacks
};
