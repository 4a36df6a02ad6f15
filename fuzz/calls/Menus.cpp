#include "Menus.h"

#include "Input.h"

namespace calls {

Menus gMenuBook;

int MenuState::PositionOf(const Plugin& plugin, int number) const {
  if (number < 0) return -1;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (items[i].owner == &plugin && number-- == 0) return static_cast<int>(i);
  }
  return -1;
}

int MenuState::CountOf(const Plugin& plugin) const {
  int count = 0;
  for (const MenuItem& item : items) count += item.owner == &plugin ? 1 : 0;
  return count;
}

MenuState* Menus::At(int hostMenu) {
  const auto found = states.find(hostMenu);
  return found != states.end() ? &found->second : nullptr;
}

int Menus::NumberOf(VYRAMenuID menu) const {
  if (menu == nullptr) return 0;
  if (menu == VYRAFindPluginsMenu()) return plugins;
  const Registration* const r = gBook.Find(Family::menu, menu);
  return r != nullptr ? r->which : 0;
}

MenuState* Menus::Of(VYRAMenuID menu) {
  MenuState* const state = At(NumberOf(menu));
  // That of a plugin which is being stopped goes at a moment of which the driver does not hear.
  return state != nullptr && state->known && !state->owner->stopping ? state : nullptr;
}

VYRAMenuID Menus::AnyHandle(const Plugin* owner) const {
  std::vector<const void*> handles;
  for (const auto& [number, state] : states) {
    if (state.record == nullptr || (owner != nullptr && state.CountOf(*owner) == 0)) continue;
    handles.push_back(state.record->handle);
  }
  if (handles.empty()) return nullptr;
  return static_cast<VYRAMenuID>(const_cast<void*>(gInput.OneOf(handles)));
}

void Menus::Forget(const Plugin& plugin) {
  std::erase_if(states, [&](const auto& entry) { return entry.second.owner == &plugin; });
  for (auto& [number, state] : states) {
    if (number == plugins) continue;  // of this one they are removed
    for (MenuItem& item : state.items) {
      if (item.owner == &plugin) item.owner = nullptr;
    }
  }
}

}  // namespace calls
