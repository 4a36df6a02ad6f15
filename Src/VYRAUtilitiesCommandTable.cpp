#include "VYRAUtilitiesCommandTable.h"

void VYRACommandTable::AddFirst(Handler* handler) {
  byCommand.AddFirst(handler);
  byRegistration.AddFirst(handler);
  owned.AddFirst(handler->owner, handler);
}

void VYRACommandTable::AddLast(Handler* handler) {
  byCommand.AddLast(handler);
  byRegistration.AddLast(handler);
  owned.AddFirst(handler->owner, handler);
}

std::unique_ptr<VYRACommandCB_t> VYRACommandTable::Take(Handler* handler) {
  byCommand.Remove(handler);
  byRegistration.Remove(handler);
  owned.Remove(handler->owner, handler);
  return std::unique_ptr<Handler>(handler);
}
