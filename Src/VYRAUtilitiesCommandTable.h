// The handlers of all commands on one side of the host's own handling, found by command. The host looks here
// in every phase of every command, mostly for commands that few or no plugins handle, so a look-up is a
// multiplication and, nearly always, one place in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "VYRAUtilities.h"

struct VYRACommandCB_t {
  VYRACommandHandler_f callback;  // null once it was removed
  int plugin;
  void* refcon;
  std::uint64_t serial;   // rises with each registration
  VYRACommandCB_t* next;  // stays as it was when the record is removed
};

class VYRACommandTable {
 public:
  struct Entry {
    VYRACommandRef command = nullptr;
    bool used = false;
    VYRACommandCB_t* first = nullptr;  // in the order in which they are called
  };

  VYRACommandTable() = default;
  ~VYRACommandTable();
  VYRACommandTable(const VYRACommandTable&) = delete;
  VYRACommandTable& operator=(const VYRACommandTable&) = delete;

  // The first handler of a command, or null.
  VYRACommandCB_t* First(VYRACommandRef command) const { return entries[PlaceOf(command)].first; }

  // The entry of a command, made when there is none. Good until the next is made.
  Entry& At(VYRACommandRef command);

  // Every entry, unused ones too.
  std::vector<Entry>& Entries() { return entries; }

 private:
  std::size_t PlaceOf(VYRACommandRef command) const {
    // Commands are mostly addresses; the product's upper bits depend on all of theirs.
    std::size_t place = (reinterpret_cast<std::uintptr_t>(command) * 0x9E3779B97F4A7C15U) >> shift;
    while (entries[place].used && entries[place].command != command)
      place = (place + 1) & (entries.size() - 1);
    return place;
  }

  // At most half of them are used: entries of commands whose handlers all went stay.
  std::vector<Entry> entries = std::vector<Entry>(2);
  std::size_t count = 0;
  int shift = 63;  // 64 less the bits of a place
};
