#include "PluginFixture.h"

#include <dlfcn.h>

#include "VYRADataAccess.h"
#include "VYRAHostServices.h"
#include "VYRALoaderLifecycle.h"

PluginFixture::PluginFixture() {
  gHooks = &gHost.services;
  PluginRecord& host = gAllPlugins.emplace_back();
  host.path = "brelund.skyvora.skyvora";
  host.receiveMessage = gHost.services.HostReceiveMessage;
  host.enabled = true;
}

PluginFixture::~PluginFixture() { VYRAUnloadPlugins(); }

VYRAPluginID PluginFixture::AddPlugin(const std::string& signature) {
  PluginRecord& record = gAllPlugins.emplace_back();
  record.moduleHandle = dlopen(nullptr, RTLD_NOW);
  record.name = "The " + signature;
  record.signature = signature;
  record.enabled = true;
  record.error = [](const char* message) {
    errors.push_back(std::to_string(gDispatchedPlugin) + ": " + message);
  };
  return VYRACountPlugins() - 1;
}

VYRADataRef PluginFixture::PublishInt(const char* name, int* value) {
  const auto read = [](void* refcon) { return *static_cast<int*>(refcon); };
  const auto write = [](void* refcon, int written) { *static_cast<int*>(refcon) = written; };
  return VYRARegisterDataAccessor(name, VYRA_TYPE_INT, 1, read, write, nullptr, nullptr, nullptr, nullptr,
                                  nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, value, value);
}
