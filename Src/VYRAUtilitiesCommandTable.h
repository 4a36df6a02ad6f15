// The handlers of all commands on one side of the host's own handling, found by command. The host looks here
// in every phase of every command, mostly for commands that few or no plugins handle.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "VYRAHashIndex.h"
#include "VYRAOwnedRecords.h"
#include "VYRARecordPool.h"
#include "VYRAUtilities.h"

struct VYRACommandCB_t : VYRAOwned_t<VYRACommandCB_t>, VYRAPooled_t<VYRACommandCB_t> {
  VYRACommandHandler_f callback = nullptr;  // null once it was removed
  VYRAPluginID owner = VYRA_NO_PLUGIN;
  void* refcon = nullptr;
  std::uint64_t serial = 0;         // rises with each registration
  VYRACommandCB_t* next = nullptr;  // stays as it was when the record is taken out of its list
  VYRACommandRef command = nullptr;
};

class VYRACommandTable {
 public:
  VYRACommandTable() = default;
  ~VYRACommandTable();
  VYRACommandTable(const VYRACommandTable&) = delete;
  VYRACommandTable& operator=(const VYRACommandTable&) = delete;

  // The handler of a command that is called first, or null.
  VYRACommandCB_t* First(VYRACommandRef command) {
    const Entry* entry = Find(command);
    return entry != nullptr ? entry->first : nullptr;
  }

  // The first of a plugin's handlers, of whichever command, or null.
  VYRACommandCB_t* FirstOf(VYRAPluginID plugin) const { return owned.First(plugin); }

  // Adds a handler in front of those of its command, or behind them. It belongs to the table from here on.
  void AddFirst(VYRACommandCB_t* handler);
  void AddLast(VYRACommandCB_t* handler);

  // Takes a handler of the table out, and with the last one its command.
  std::unique_ptr<VYRACommandCB_t> Take(VYRACommandCB_t* handler);

  // How many commands have handlers.
  std::size_t Count() const { return index.Count(); }

 private:
  struct Entry {
    // Any pointer may be a command, null too: an unused entry has one that nobody else can have.
    static constexpr char kUnused = 0;

    const void* command = &kUnused;
    VYRACommandCB_t* first = nullptr;  // in the order in which they are called

    bool IsUsed() const { return command != &kUnused; }
    std::uint64_t Hash() const { return reinterpret_cast<std::uintptr_t>(command); }
  };

  Entry* Find(VYRACommandRef command) {
    return index.Find(reinterpret_cast<std::uintptr_t>(command), [](const Entry&) { return true; });
  }
  void AddAt(VYRACommandCB_t*& link, VYRACommandCB_t* handler);
  VYRACommandCB_t*& FirstLink(VYRACommandRef command);

  VYRAHashIndex<Entry> index;
  VYRAOwnedRecords<VYRACommandCB_t> owned;
};
