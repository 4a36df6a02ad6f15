// The menus that plugins created, each a mirror of a menu of the host, and what the host asks about them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>

#include "VYRAChain.h"
#include "VYRAMenus.h"
#include "VYRARecordPool.h"
#include "VYRASequence.h"

struct VYRAMenuInfo_t;

struct VYRAMenuItem : VYRAPooled_t<VYRAMenuItem> {
  VYRAMenuInfo_t* menu = nullptr;
  int hostItem = 0;  // the host's number of it
  void* ref = nullptr;
  int check = VYRA_MENU_NO_CHECK;
  int enabled = 1;
  VYRAPluginID owner = VYRA_NO_PLUGIN;   // who appended it
  bool isDisowned = false;               // by the end of that plugin
  std::size_t slot = 0;                  // in the menu's items
  std::size_t slotOfOwner = 0;           // in those of its owner
  VYRALinks<VYRAMenuItem> sameHostItem;  // among those with the host's number
  VYRALinks<VYRAMenuItem> owned;         // among those of its owner, of any menu
};

// In the host's order: an item's place is the host's position.
using VYRAMenuItems = VYRASequence<VYRAMenuItem, &VYRAMenuItem::slot>;

// In the same order: an item's place is the number by which its owner knows it.
using VYRAMenuItemsOfOwner = VYRASequence<VYRAMenuItem, &VYRAMenuItem::slotOfOwner>;

// A handle, which is a record's address, is good while the menu is listed.
struct VYRAMenuInfo_t : VYRAPooled_t<VYRAMenuInfo_t> {
  VYRAMenuInfo_t() = default;
  ~VYRAMenuInfo_t() { RemoveAllItems(); }
  VYRAMenuInfo_t(const VYRAMenuInfo_t&) = delete;
  VYRAMenuInfo_t& operator=(const VYRAMenuInfo_t&) = delete;

  int hostMenu = 0;  // the host's number of it
  void* refcon = nullptr;
  VYRAMenuHandler_f handler = nullptr;    // null: picks are swallowed
  VYRAPluginID owner = VYRA_HOST_PLUGIN;  // who created it
  std::uint64_t serial = 0;               // rises with each menu: a later one may have the same address
  bool isListed = false;
  VYRAMenuItems items;
  std::map<VYRAPluginID, VYRAMenuItemsOfOwner> itemsOf;
  VYRALinks<VYRAMenuInfo_t> listed;        // among all
  VYRALinks<VYRAMenuInfo_t> owned;         // among those of its owner
  VYRALinks<VYRAMenuInfo_t> sameHostMenu;  // among those with the host's number

  // The item at a position, or null.
  VYRAMenuItem* ItemAt(int position) const;

  // A plugin's item by the plugin's own number, or null.
  VYRAMenuItem* ItemOf(VYRAPluginID plugin, int number) const;
  int CountItemsOf(VYRAPluginID plugin) const;

  void Append(int hostItem, void* ref, VYRAPluginID plugin);

  // Removes an item from its menu, and all of a menu.
  static void Remove(VYRAMenuItem* item);
  void RemoveAllItems();
};

// Every menu, in the order of creation, and those of each plugin and of each number of the host in that
// order.
extern VYRAChain<VYRAMenuInfo_t, &VYRAMenuInfo_t::listed> gMenus;
VYRAMenuInfo_t* VYRAFirstMenuOf(VYRAPluginID plugin);
VYRAMenuInfo_t* VYRAFirstMenuOfHost(int hostMenu);

// Lists a menu, and takes it out again, so that its handle is good for nothing any more.
void VYRAListMenu(VYRAMenuInfo_t* menu);
void VYRAUnlistMenu(VYRAMenuInfo_t* menu);

// The menu that a handle, which may be any pointer, is good for, or null.
VYRAMenuInfo_t* VYRAGetMenu(VYRAMenuID handle);

// The item with a number of the host: of several, the one that stands first in the earliest menu. Or null.
VYRAMenuItem* VYRAFindHostItem(int hostItem);

// Leaves a plugin's items where they are, as nobody's: a later plugin with the same ID is not to count them
// among its own.
void VYRADisownMenuItems(VYRAPluginID plugin);

// The menu "Plugins"; null before the start.
extern VYRAMenuInfo_t* gPluginMenu;

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
