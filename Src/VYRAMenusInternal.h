// The menus that plugins created, each a mirror of a menu of the host, and what the host asks about them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "VYRAMenus.h"
#include "VYRARecordPool.h"

struct VYRAMenuItem {
  int hostItem;  // the host's number of it
  void* ref;
  int check;
  int enabled;
  VYRAPluginID owner;  // who appended it; VYRA_NO_PLUGIN once that plugin is gone
};

struct VYRAMenuInfo_t : VYRAPooled_t<VYRAMenuInfo_t> {
  int hostMenu = 0;  // the host's number of it
  void* refcon = nullptr;
  VYRAMenuHandler_f handler = nullptr;    // null: picks are swallowed
  VYRAPluginID owner = VYRA_HOST_PLUGIN;  // who created it
  std::uint64_t serial = 0;               // rises with each menu: a later one may have the same address
  std::vector<VYRAMenuItem> items;        // in the host's order: an index is the host's position
};

// Every menu, in the order of creation. A handle, which is a record's address, is good while it stands here.
extern std::vector<std::unique_ptr<VYRAMenuInfo_t>> gMenus;

// The menu "Plugins"; null before the start.
extern VYRAMenuInfo_t* gPluginMenu;

// The position, among all items of the menu, of the item that a plugin knows by this number; -1 when it has
// no such item.
int VYRAItemPluginToGlobal(const VYRAMenuInfo_t& menu, VYRAPluginID plugin, int pluginIndex);

// The number by which a plugin knows its item at a position; -1 when the item there is not its own.
int VYRAItemGlobalToPlugin(const VYRAMenuInfo_t& menu, VYRAPluginID plugin, int position);

// Starts with no menu but a new "Plugins". Menus of an earlier start are forgotten without a word to the
// host, whose numbers may mean something else by now.
void VYRAInitMenus();

// An item was picked. 0: it is ours, whether or not a handler was called; else 1.
int VYRAHandleMenuItemPick(int hostItem);

// The check mark of an item: 1 set, 0 not set, -1 none, in *outState. 0: answered; 1: not ours, and
// *outState is untouched.
int VYRAHandleMenuItemCheck(int hostMenu, int position, int* outState);

// Whether an item is enabled; 1 when it is not ours.
int VYRAHandleMenuItemEnable(int hostMenu, int position);

// A plugin leaves: its menus go, and its items in the menu "Plugins". Those in other menus stay.
void VYRAMenuCleanupHook(VYRAPluginID plugin);
