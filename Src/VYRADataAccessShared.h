// Shared data: values that the library stores for plugins to exchange, published as datarefs of the host.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "VYRADataAccess.h"

struct VYRASharedDataSubscriber {
  VYRADataChanged_f callback;  // null once it has left while the item was notifying
  void* refcon;
  VYRAPluginID owner;

  bool operator==(const VYRASharedDataSubscriber&) const = default;
};

struct VYRASharedDataRecord {
  std::string name;
  int type = 0;
  std::vector<unsigned char> buffer;
  std::vector<VYRASharedDataSubscriber> subscribers;
  int notifying = 0;  // notifications in progress: departures wait until there are none
};

// Every item, in the order of creation. None is ever removed.
extern std::vector<std::unique_ptr<VYRASharedDataRecord>> gSharedData;

// A plugin leaves: its subscriptions end.
void VYRASharedDataForget(VYRAPluginID plugin);
