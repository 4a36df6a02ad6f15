// What registering draw callbacks and key sniffers has in common: a registration is known by its values,
// whoever made it.
#pragma once

#include "VYRAResourceList.h"
#include "VYRAResourceWalk.h"

// Gives a record up for good, and names it to a leak checker that is there, so that the checker goes on to
// find every other leak.
//
// Kept: registering a second time abandons its record, and so does every unregistration. Nothing but memory
// depends on it.
void VYRADisplayAbandon(const void* record);

// Adds a new record in front unless its like is there; 1, or 0 then.
template <class Record, class Same>
int VYRADisplayRegister(VYRAResourceList<Record>& list, Record* record, Same same) {
  {
    VYRAResourceWalk<Record> walk(list);
    while (const Record* other = walk.Next()) {
      if (!same(*other, *record)) continue;
      VYRADisplayAbandon(record);
      return 0;
    }
  }
  list.Add(record);
  return 1;
}

// Removes the first record like the probe; 1, or 0 when there is none.
template <class Record, class Same>
int VYRADisplayUnregister(VYRAResourceList<Record>& list, const Record* probe, Same same) {
  VYRADisplayAbandon(probe);
  VYRAResourceWalk<Record> walk(list);
  while (Record* record = walk.Next()) {
    if (!same(*record, *probe)) continue;
    list.Remove(record);
    return 1;
  }
  return 0;
}
