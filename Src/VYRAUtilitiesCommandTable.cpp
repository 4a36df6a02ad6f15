#include "VYRAUtilitiesCommandTable.h"

#include <utility>

VYRACommandTable::~VYRACommandTable() {
  for (const Entry& entry : entries) {
    for (VYRACommandCB_t* next = entry.first; next != nullptr;) delete std::exchange(next, next->next);
  }
}

VYRACommandTable::Entry& VYRACommandTable::At(VYRACommandRef command) {
  Entry* entry = &entries[PlaceOf(command)];
  if (entry->used) return *entry;
  if (2 * ++count > entries.size()) {
    const std::vector<Entry> old = std::exchange(entries, std::vector<Entry>(2 * entries.size()));
    --shift;
    for (const Entry& moved : old) {
      if (moved.used) entries[PlaceOf(moved.command)] = moved;
    }
    entry = &entries[PlaceOf(command)];
  }
  entry->command = command;
  entry->used = true;
  return *entry;
}
