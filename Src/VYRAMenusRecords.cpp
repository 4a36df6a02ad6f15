// The records of menus and items, and what finds them.
#include <memory>
#include <utility>

#include "VYRAKeyedRecords.h"
#include "VYRAMenusInternal.h"
#include "VYRANeverDestroyed.h"
#include "VYRAOwnedRecords.h"

VYRAChain<VYRAMenuInfo_t, &VYRAMenuInfo_t::listed> gMenus;

namespace {

using Menu = VYRAMenuInfo_t;
using Item = VYRAMenuItem;

VYRANeverDestroyed<VYRAOwnedRecords<Menu, &Menu::owned>> gMenusOf;
VYRANeverDestroyed<VYRAKeyedRecords<Menu, &Menu::hostMenu, &Menu::sameHostMenu>> gMenusByHostMenu;
VYRANeverDestroyed<VYRAOwnedRecords<Item, &Item::owned>> gItemsOf;
VYRANeverDestroyed<VYRAKeyedRecords<Item, &Item::hostItem, &Item::sameHostItem>> gItemsByHostItem;

void TakeFromOwner(Item* item) {
  gItemsOf->Remove(item->owner, item);
  const auto ofOwner = item->menu->itemsOf.find(item->owner);
  ofOwner->second.Remove(item);
  if (ofOwner->second.Count() == 0) item->menu->itemsOf.erase(ofOwner);
}

bool StandsBefore(const Item& left, const Item& right) {
  return std::pair(left.menu->serial, left.slot) < std::pair(right.menu->serial, right.slot);
}

}  // namespace

Item* VYRAMenuInfo_t::ItemAt(int position) const {
  const auto place = static_cast<std::size_t>(position);
  return position >= 0 && place < items.Count() ? items.At(place) : nullptr;
}

Item* VYRAMenuInfo_t::ItemOf(VYRAPluginID plugin, int number) const {
  if (number < 0 || number >= CountItemsOf(plugin)) return nullptr;
  return itemsOf.at(plugin).At(static_cast<std::size_t>(number));
}

int VYRAMenuInfo_t::CountItemsOf(VYRAPluginID plugin) const {
  const auto ofPlugin = itemsOf.find(plugin);
  return ofPlugin != itemsOf.end() ? static_cast<int>(ofPlugin->second.Count()) : 0;
}

void VYRAMenuInfo_t::Append(int hostItem, void* ref, VYRAPluginID plugin) {
  auto* item = new Item;
  item->menu = this;
  item->hostItem = hostItem;
  item->ref = ref;
  item->owner = plugin;
  items.Append(item);
  itemsOf[plugin].Append(item);
  gItemsOf->AddFirst(plugin, item);
  gItemsByHostItem->AddLast(item);
}

void VYRAMenuInfo_t::Remove(Item* item) {
  const std::unique_ptr<Item> removed(item);
  if (!item->isDisowned) TakeFromOwner(item);
  gItemsByHostItem->Remove(item);
  item->menu->items.Remove(item);
}

// NOLINTNEXTLINE(readability-make-member-function-const): it changes what the menu has
void VYRAMenuInfo_t::RemoveAllItems() {
  while (items.Count() > 0) Remove(items.At(items.Count() - 1));
}

Menu* VYRAFirstMenuOf(VYRAPluginID plugin) { return gMenusOf->First(plugin); }

Menu* VYRAFirstMenuOfHost(int hostMenu) { return gMenusByHostMenu->First(hostMenu); }

void VYRAListMenu(Menu* menu) {
  menu->isListed = true;
  gMenus.AddLast(menu);
  gMenusOf->AddLast(menu->owner, menu);
  gMenusByHostMenu->AddLast(menu);
}

void VYRAUnlistMenu(Menu* menu) {
  menu->isListed = false;
  gMenus.Remove(menu);
  gMenusOf->Remove(menu->owner, menu);
  gMenusByHostMenu->Remove(menu);
}

Menu* VYRAGetMenu(VYRAMenuID handle) {
  return Menu::Pool::Holds(handle) && handle->isListed ? handle : nullptr;
}

Item* VYRAFindHostItem(int hostItem) {
  Item* first = gItemsByHostItem->First(hostItem);
  if (first == nullptr) return nullptr;
  for (Item* other = first->sameHostItem.next; other != nullptr; other = other->sameHostItem.next) {
    if (StandsBefore(*other, *first)) first = other;
  }
  return first;
}

void VYRADisownMenuItems(VYRAPluginID plugin) {
  while (Item* item = gItemsOf->First(plugin)) {
    TakeFromOwner(item);
    item->owner = VYRA_NO_PLUGIN;
    item->isDisowned = true;
  }
}
