// Finding datarefs by name and by owner, beside the ordered map of them all.
#include <functional>

#include "VYRADataAccessRegistry.h"
#include "VYRADataAccessShared.h"
#include "VYRAHashIndex.h"

std::map<std::string_view, VYRAData_t*> gDataRefs;

namespace {

struct NameEntry {
  std::uint64_t hash = 0;
  VYRAData_t* record = nullptr;

  bool IsUsed() const { return record != nullptr; }
  std::uint64_t Hash() const { return hash; }
};

VYRAHashIndex<NameEntry> gNames;

std::uint64_t HashOf(std::string_view name) { return std::hash<std::string_view>()(name); }

VYRAOwnedRecords<VYRAData_t> gOwnedDataRefs;

VYRAData_t* Find(std::uint64_t hash, std::string_view name) {
  const NameEntry* entry =
      gNames.Find(hash, [&](const NameEntry& candidate) { return candidate.record->name == name; });
  return entry != nullptr ? entry->record : nullptr;
}

}  // namespace

VYRAData_t* FindDataRecord(std::string_view name) { return Find(HashOf(name), name); }

VYRAData_t* FindOrAddDataRecord(std::string_view name) {
  const std::uint64_t hash = HashOf(name);
  if (VYRAData_t* found = Find(hash, name)) return found;
  VYRAData_t* record = AllocDataRef();
  record->name = name;
  gDataRefs.emplace(record->name, record);
  gNames.Add({hash, record});
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
