// The index that finds a dataref by its name, and the datarefs of each plugin. They stand beside the ordered
// map of all datarefs.
#include <algorithm>
#include <cstring>
#include <functional>
#include <utility>

#include "VYRADataAccessInternal.h"
#include "VYRAHashIndex.h"
#include "VYRAWatch.h"

std::map<std::string_view, VYRAData_t*> gDataRefs;
VYRAOwnedRecords<VYRAData_t, &VYRAData_t::owned> gOwnedDataRefs;

namespace {

// A record, and copies of what a search by name compares: a search need not read the record itself.
struct NameEntry {
  VYRAData_t* record = nullptr;
  const char* name = nullptr;
  std::uint32_t hash = 0;
  bool isOwned = false;

  bool IsUsed() const { return record != nullptr; }
  std::uint64_t Hash() const { return hash; }
};

VYRAHashIndex<NameEntry> gNames;

std::uint32_t HashOf(std::string_view name) {
  return static_cast<std::uint32_t>(std::hash<std::string_view>()(name));
}

// Copies a name into a block of names. It is never freed, as its record never is.
std::string_view KeepName(std::string_view name) {
  constexpr std::size_t kBlockSize = 65536;
  static char* next = nullptr;
  static std::size_t left = 0;
  const std::size_t needed = name.size() + 1;
  if (left < needed) {
    left = std::max(kBlockSize, needed);
    next = new char[left];
  }
  char* kept = std::exchange(next, next + needed);
  left -= needed;
  std::memcpy(kept, name.data(), name.size());
  kept[name.size()] = '\0';
  return {kept, name.size()};
}

NameEntry* Find(std::uint32_t hash, const char* name) {
  return gNames.Find(hash,
                     [&](const NameEntry& candidate) { return std::strcmp(candidate.name, name) == 0; });
}

}  // namespace

VYRAData_t* VYRADataAccessFindOwned(const char* name) {
  const NameEntry* entry = Find(HashOf(name), name);
  return entry != nullptr && entry->isOwned ? entry->record : nullptr;
}

VYRAData_t* VYRADataAccessFindOrAdd(const char* name) {
  const std::uint32_t hash = HashOf(name);
  if (const NameEntry* found = Find(hash, name)) return found->record;
  VYRAData_t* record = AllocDataRef();
  record->name = KeepName(name);
  gDataRefs.emplace(record->name, record);
  gNames.Add({record, record->name.data(), hash, false});
  return record;
}

void VYRADataAccessSetOwner(VYRAData_t* record, VYRAPluginID plugin) {
  const bool isOwned = plugin != VYRA_NO_PLUGIN;
  if (record->owner != VYRA_NO_PLUGIN) gOwnedDataRefs.Remove(record->owner, record);
  record->owner = plugin;
  if (isOwned) gOwnedDataRefs.AddFirst(plugin, record);
  VYRADataAccessNoteOwned(record, isOwned);
  Find(HashOf(record->name), record->name.data())->isOwned = isOwned;
}

int VYRAGetDataRefs(VYRADataRefInfo* outDataRefs, int capacity) {
  int count = 0;
  for (const auto& [name, record] : gDataRefs) {
    if (record->owner == VYRA_NO_PLUGIN || count++ >= capacity) continue;
    outDataRefs[count - 1] = {
        .name = name.data(), .types = record->types, .isWritable = record->writable, .owner = record->owner};
  }
  return count;
}
