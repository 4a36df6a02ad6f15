#include "VYRAUtilitiesCommandTable.h"

#include <utility>

VYRACommandTable::~VYRACommandTable() {
  for (const Entry& entry : index.Entries()) {
    for (VYRACommandCB_t* next = entry.first; next != nullptr;) delete std::exchange(next, next->next);
  }
}

// Where the first handler of a command is or would be noted.
VYRACommandCB_t*& VYRACommandTable::FirstLink(VYRACommandRef command) {
  Entry* entry = Find(command);
  return entry != nullptr ? entry->first : index.Add({.command = command}).first;
}

void VYRACommandTable::AddAt(VYRACommandCB_t*& link, VYRACommandCB_t* handler) {
  handler->next = std::exchange(link, handler);
  owned.Add(handler->owner, handler);
}

void VYRACommandTable::AddFirst(VYRACommandCB_t* handler) { AddAt(FirstLink(handler->command), handler); }

void VYRACommandTable::AddLast(VYRACommandCB_t* handler) {
  VYRACommandCB_t** link = &FirstLink(handler->command);
  while (*link != nullptr) link = &(*link)->next;
  AddAt(*link, handler);
}

std::unique_ptr<VYRACommandCB_t> VYRACommandTable::Take(VYRACommandCB_t* handler) {
  Entry* entry = Find(handler->command);
  VYRACommandCB_t** link = &entry->first;
  while (*link != handler) link = &(*link)->next;
  *link = handler->next;
  if (entry->first == nullptr) index.Remove(entry);
  owned.Remove(handler->owner, handler);
  return std::unique_ptr<VYRACommandCB_t>(handler);
}
