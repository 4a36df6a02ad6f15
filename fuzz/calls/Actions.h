// What plugins do: any function of the interface, with arguments good and bad.
#pragma once

#include <cstddef>

#include "Book.h"

namespace calls {

// Makes one call into the library as a plugin.
void Act(Plugin& self);

using Action = void (*)(Plugin& self);

struct ActionList {
  const Action* first;
  std::size_t count;
};

// The actions of each area.
extern const ActionList kDisplayActions;
extern const ActionList kDataActions;
extern const ActionList kManagerActions;
extern const ActionList kSceneActions;

// Makes the shared items that the actions know.
void MakeItems();

}  // namespace calls
