#include "PluginFixture.h"

#include <dlfcn.h>

#include "VYRADataAccess.h"
#include "VYRAHostServices.h"
#include "VYRALoaderLifecycle.h"

PluginFixture::PluginFixture() {
  gHooks = &gHost.services;
  PluginRecord& host = VYRARegistryAppend({});
  host.path = "brelund.skyvora.skyvora";
  host.receiveMessage = gHost.services.HostReceiveMessage;
  VYRARegistrySetEnabled(VYRA_HOST_PLUGIN, true);
}

PluginFixture::~PluginFixture() { VYRAUnloadPlugins(); }

VYRAPluginID PluginFixture::AddPlugin(const std::string& signature) {
  PluginRecord& record = VYRARegistryAppend({});
  record.moduleHandle = dlopen(nullptr, RTLD_NOW);
  record.name = "The " + signature;
  record.signature = signature;
  record.error = [](const char* message) {
    errors.push_back(std::to_string(gDispatchedPlugin) + ": " + message);
  };
  VYRARegistrySetEnabled(VYRACountPlugins() - 1, true);
  return VYRACountPlugins() - 1;
}

VYRADataRef PluginFixture::PublishInt(const char* name, int* value) {
  const auto read = [](void* refcon) { return *static_cast<int*>(refcon); };
  const auto write = [](void* refcon, int written) { *static_cast<int*>(refcon) = written; };
  return VYRARegisterDataAccessor(name, VYRA_TYPE_INT, 1, read, write, nullptr, nullptr, nullptr, nullptr,
                                  nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, value, value);
}
