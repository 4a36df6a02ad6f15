// The bar is menu 0. Items are known to the library by a number, and by their place in their menu.
#include "host/MenuServices.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <span>
#include <vector>

#include "host/FlightBoard.h"
#include "host/PluginList.h"
#include "report/Activity.h"

namespace sim {
namespace {

constexpr int kNone = kNoMenu;

struct MenuItem {
  int number;
  std::string name;
  std::string ownerPath;
  int subMenu = kNone;
};

using Menu = std::vector<MenuItem>;

std::map<int, Menu> gMenus{{kMenuBar, {}}};
int gLastNumber = 0;  // of a menu or an item

struct Place {
  int menu;
  int position;
};

MenuItem* ItemAt(Place place) {
  const auto menu = gMenus.find(place.menu);
  if (menu == gMenus.end() || place.position < 0 || place.position >= std::ssize(menu->second))
    return nullptr;
  return &menu->second[static_cast<std::size_t>(place.position)];
}

int AppendItem(int menu, int /*position*/, const char* name, int /*flag*/) {
  const auto found = gMenus.find(menu);
  if (found == gMenus.end()) return kNone;
  found->second.push_back({++gLastNumber, name, CallerPath()});
  return gLastNumber;
}

// A menu whose parent item does not exist hangs nowhere: it can be filled, and never be seen.
int CreateMenu(int parentMenu, int parentItem, const char* name) {
  const int number = ++gLastNumber;
  gMenus[number];
  if (parentMenu == kMenuBar) {
    AppendItem(kMenuBar, 0, name, 0);
    gMenus[kMenuBar].back().subMenu = number;
  } else if (MenuItem* const parent = ItemAt({parentMenu, parentItem})) {
    parent->subMenu = number;
  }
  return number;
}

void DestroyMenu(int menu) {
  if (menu == kMenuBar) return;
  gMenus.erase(menu);
  std::erase_if(gMenus[kMenuBar], [menu](const MenuItem& title) { return title.subMenu == menu; });
  for (auto& [number, other] : gMenus)
    for (MenuItem& item : other)
      if (item.subMenu == menu) item.subMenu = kNone;
}

void RemoveItem(int menu, int item) {
  if (ItemAt({menu, item}) != nullptr) gMenus[menu].erase(gMenus[menu].begin() + item);
}

// Adds the places of the items with this way through a menu, in their order.
void FindIn(int menu, std::span<const std::string> way, std::vector<Place>& places) {
  const auto found = gMenus.find(menu);
  if (found == gMenus.end() || way.empty()) return;
  for (int position = 0; const MenuItem& item : found->second) {
    const Place place{menu, position++};
    if (item.name != way.front()) continue;
    if (way.size() == 1) places.push_back(place);
    if (item.subMenu != kNone) FindIn(item.subMenu, way.subspan(1), places);
  }
}

std::vector<Place> Find(const std::vector<std::string>& way) {
  std::vector<Place> places;
  FindIn(kMenuBar, way, places);
  return places;
}

std::string StateAt(Place place) {
  if (VYRAMenuItemEnabled(place.menu, place.position) == 0) return "disabled";
  int mark = kNone;
  if (VYRACheckMenuHook(place.menu, place.position, &mark) != 0 || mark == kNone) return "plain";
  return mark == 0 ? "unchecked" : "checked";
}

// A menu whose items lead back to it is shown no deeper than this.
constexpr std::size_t kDeepestMenu = 16;

void AddItems(int menu, const std::vector<std::string>& way, std::vector<MenuItemInfo>& list) {
  const auto found = gMenus.find(menu);
  if (found == gMenus.end() || way.size() == kDeepestMenu) return;
  for (int position = 0; const MenuItem& item : found->second) {
    std::vector<std::string> itemWay = way;
    itemWay.push_back(item.name);
    list.push_back({itemWay, StateAt({menu, position++}), item.ownerPath});
    if (item.subMenu != kNone) AddItems(item.subMenu, itemWay, list);
  }
}

}  // namespace

void FillMenuServices(VYRAHostServices& services) {
  services.CreateMenu = CreateMenu;
  services.AppendMenuItem = AppendItem;
  services.SetMenuItemName = [](int menu, int item, const char* name, int /*flag*/) {
    if (MenuItem* const found = ItemAt({menu, item})) found->name = name;
  };
  services.RemoveMenuItem = RemoveItem;
  services.DestroyMenu = DestroyMenu;
}

std::string PickMenuItem(const std::vector<std::string>& way, int number) {
  const std::vector<Place> places = Find(way);
  if (number < 1 || number > std::ssize(places)) return "there is no such item";
  const Place place = places[static_cast<std::size_t>(number - 1)];
  if (VYRAMenuItemEnabled(place.menu, place.position) == 0) return "it is disabled";
  if (CallHook("VYRAMenuHook", VYRAMenuHook, ItemAt(place)->number) != 0) return "no plugin knows it";
  ++gActivity.menuPicks;
  return "";
}

std::vector<MenuLine> MenuLines(int menu) {
  std::vector<MenuLine> lines;
  const auto found = gMenus.find(menu);
  if (found == gMenus.end()) return lines;
  for (int position = 0; const MenuItem& item : found->second) {
    const std::string state = StateAt({menu, position++});
    lines.push_back({item.name, item.subMenu, state != "disabled", state == "checked"});
  }
  return lines;
}

int NumberOfMenuItem(const std::vector<std::string>& way, int menu, int position) {
  const std::vector<Place> places = Find(way);
  const auto found = std::ranges::find_if(
      places, [&](Place place) { return place.menu == menu && place.position == position; });
  return static_cast<int>(found - places.begin()) + 1;
}

std::vector<MenuItemInfo> ListMenuItems() {
  std::vector<MenuItemInfo> list;
  AddItems(kMenuBar, {}, list);
  return list;
}

std::string MenuItemState(const std::vector<std::string>& way) {
  const std::vector<Place> places = Find(way);
  return places.empty() ? "absent" : StateAt(places.front());
}

}  // namespace sim
