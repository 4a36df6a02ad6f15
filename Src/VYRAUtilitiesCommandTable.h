// The handlers of all commands on one side of the host's own handling, found by command. The host looks here
// in every phase of every command, mostly for commands that few or no plugins handle.
#pragma once

#include <cstdint>

#include "VYRAHashIndex.h"
#include "VYRAOwnedRecords.h"
#include "VYRARecordPool.h"
#include "VYRAUtilities.h"

struct VYRACommandCB_t : VYRAOwned_t<VYRACommandCB_t>, VYRAPooled_t<VYRACommandCB_t> {
  VYRACommandHandler_f callback = nullptr;  // null once it was removed
  VYRAPluginID owner = VYRA_NO_PLUGIN;
  void* refcon = nullptr;
  std::uint64_t serial = 0;         // rises with each registration
  VYRACommandCB_t* next = nullptr;  // stays as it was when the record is removed
  VYRACommandRef command = nullptr;
};

class VYRACommandTable {
 public:
  struct Entry {
    // Any pointer may be a command, null too: an unused entry has one that nobody else can have.
    static constexpr char kUnused = 0;

    const void* command = &kUnused;
    VYRACommandCB_t* first = nullptr;  // in the order in which they are called

    bool IsUsed() const { return command != &kUnused; }
    std::uint64_t Hash() const { return reinterpret_cast<std::uintptr_t>(command); }
  };

  VYRACommandTable() = default;
  ~VYRACommandTable();
  VYRACommandTable(const VYRACommandTable&) = delete;
  VYRACommandTable& operator=(const VYRACommandTable&) = delete;

  // The first handler of a command, or null.
  VYRACommandCB_t* First(VYRACommandRef command) {
    const Entry* entry = Find(command);
    return entry != nullptr ? entry->first : nullptr;
  }

  // The entry of a command, made when there is none. Good until the next is made. Entries of commands whose
  // handlers all went stay.
  Entry& At(VYRACommandRef command);

  // The handlers of a plugin.
  VYRAOwnedRecords<VYRACommandCB_t> owned;

 private:
  Entry* Find(VYRACommandRef command) {
    return index.Find(reinterpret_cast<std::uintptr_t>(command), [](const Entry&) { return true; });
  }

  VYRAHashIndex<Entry> index;
};
