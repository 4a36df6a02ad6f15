// Finding datarefs by name and by owner, beside the ordered map of them all.
#include <algorithm>
#include <cstring>
#include <functional>
#include <utility>

#include "VYRADataAccessRegistry.h"
#include "VYRADataAccessShared.h"
#include "VYRAHashIndex.h"

std::map<std::string_view, VYRAData_t*> gDataRefs;

namespace {

// The name is that of the record, to be compared while the record itself is still on its way from memory.
struct NameEntry {
  std::uint64_t hash = 0;
  VYRAData_t* record = nullptr;
  const char* name = nullptr;

  bool IsUsed() const { return record != nullptr; }
  std::uint64_t Hash() const { return hash; }
};

VYRAHashIndex<NameEntry> gNames;

std::uint64_t HashOf(std::string_view name) { return std::hash<std::string_view>()(name); }

VYRAOwnedRecords<VYRAData_t> gOwnedDataRefs;

// Names are never given up, so they lie end to end in blocks.
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

VYRAData_t* Find(std::uint64_t hash, const char* name) {
  const NameEntry* entry =
      gNames.Find(hash, [&](const NameEntry& candidate) { return std::strcmp(candidate.name, name) == 0; });
  return entry != nullptr ? entry->record : nullptr;
}

}  // namespace

VYRAData_t* FindDataRecord(const char* name) { return Find(HashOf(name), name); }

VYRAData_t* FindOrAddDataRecord(const char* name) {
  const std::uint64_t hash = HashOf(name);
  if (VYRAData_t* found = Find(hash, name)) return found;
  VYRAData_t* record = AllocDataRef();
  record->name = KeepName(name);
  gDataRefs.emplace(record->name, record);
  gNames.Add({hash, record, record->name.data()});
  return record;
}

void SetDataRefOwner(VYRAData_t* record, int plugin) {
  if (record->owner != VYRA_NO_PLUGIN) gOwnedDataRefs.Remove(record->owner, record);
  record->owner = plugin;
  if (plugin != VYRA_NO_PLUGIN) gOwnedDataRefs.Add(plugin, record);
  NoteDataIsOwned(record, plugin != VYRA_NO_PLUGIN);
}

void VYRADataRefsCleanupHook(int plugin) {
  while (VYRAData_t* record = gOwnedDataRefs.First(plugin)) SetDataRefOwner(record, VYRA_NO_PLUGIN);
  VYRASharedDataForget(plugin);
}
