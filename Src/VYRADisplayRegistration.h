// What registering draw callbacks and key sniffers has in common: a registration is known by its values,
// whoever made it.
#pragma once

#include "VYRAResourceList.h"

// Gives a record up for good, and names it to a leak checker that is there, so that the checker goes on to
// find every other leak.
//
// Kept: registering a second time abandons its record, and so does every unregistration. Nothing but memory
// depends on it.
void VYRADisplayAbandon(const void* record);

// Adds a new record in front unless its like is there; 1, or 0 then.
template <class Record>
int VYRADisplayRegister(VYRAResourceList<Record>& list, Record* record) {
  list.BeginIterate();
  const bool isThere = list.FirstLike(record->Key()) != nullptr;
  list.EndIterate();
  if (isThere) {
    VYRADisplayAbandon(record);
    return 0;
  }
  list.Add(record);
  return 1;
}

// Removes the record like the probe; 1, or 0 when there is none.
template <class Record>
int VYRADisplayUnregister(VYRAResourceList<Record>& list, const Record* probe) {
  VYRADisplayAbandon(probe);
  list.BeginIterate();
  Record* const record = list.FirstLike(probe->Key());
  if (record != nullptr) list.Remove(record);
  list.EndIterate();
  return record != nullptr ? 1 : 0;
}
