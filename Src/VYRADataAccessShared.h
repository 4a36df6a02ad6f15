// Shared data: values that the library stores for plugins to exchange, published as datarefs of the host.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "VYRAChain.h"
#include "VYRADataAccess.h"
#include "VYRARecordPool.h"

struct VYRASharedDataRecord;

struct VYRASharedDataSubscriber : VYRAPooled_t<VYRASharedDataSubscriber> {
  VYRADataChanged_f callback = nullptr;  // null once it has left
  void* refcon = nullptr;
  VYRAPluginID owner = VYRA_NO_PLUGIN;
  VYRALinks<VYRASharedDataSubscriber> ofItem;  // the next one to be told stays known after it has left
  std::uint64_t serial = 0;                    // rises with each subscription
  VYRASharedDataRecord* item = nullptr;
  VYRALinks<VYRASharedDataSubscriber> alike;
  VYRALinks<VYRASharedDataSubscriber> owned;

  // What a subscription is known by.
  auto Key() const { return std::tuple(item, callback, refcon, owner); }
};

struct VYRASharedDataRecord {
  std::string name;
  int type = 0;
  std::vector<unsigned char> buffer;
  VYRAChain<VYRASharedDataSubscriber, &VYRASharedDataSubscriber::ofItem> subscribers;
  VYRALinks<VYRASharedDataRecord> alike;

  std::string_view Key() const { return name; }
};

// A plugin leaves: its subscriptions end.
void VYRASharedDataForget(VYRAPluginID plugin);
