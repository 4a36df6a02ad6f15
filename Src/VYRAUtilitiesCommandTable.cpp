#include "VYRAUtilitiesCommandTable.h"

#include <utility>

VYRACommandTable::~VYRACommandTable() {
  for (const Entry& entry : index.Entries()) {
    for (VYRACommandCB_t* next = entry.first; next != nullptr;) delete std::exchange(next, next->next);
  }
}

VYRACommandTable::Entry& VYRACommandTable::At(VYRACommandRef command) {
  Entry* entry = Find(command);
  return entry != nullptr ? *entry : index.Add({.command = command});
}
