// The menus as they are to be: what the driver notes of them, by the host's numbers.
#pragma once

#include <map>
#include <vector>

#include "Book.h"

namespace calls {

struct MenuItem {
  int hostItem;
  void* ref;
  int check;
  int enabled;
  const Plugin* owner;  // null once that is gone
};

struct MenuState {
  const Registration* record;  // null for the menu "Plugins"
  const Plugin* owner;
  bool hasHandler;
  bool known = true;  // false once the host, asked for a change of it, led to other calls
  std::vector<MenuItem> items;

  // The position of a plugin's item, or -1.
  int PositionOf(const Plugin& plugin, int number) const;
  int CountOf(const Plugin& plugin) const;
};

struct Menus {
  MenuState* At(int hostMenu);
  // The menu that has this handle; null when it has none, or is not known.
  MenuState* Of(VYRAMenuID menu);
  int NumberOf(VYRAMenuID menu) const;
  // Of a menu that is there and that a plugin made; null when there is none. With a plugin, one in which that
  // has items.
  VYRAMenuID AnyHandle(const Plugin* owner) const;
  // Its plugin leaves.
  void Forget(const Plugin& plugin);

  std::map<int, MenuState> states;
  int plugins = 0;  // the menu "Plugins", or 0
};

extern Menus gMenuBook;

}  // namespace calls
