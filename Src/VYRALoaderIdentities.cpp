#include "VYRALoaderIdentities.h"

#include <atomic>
#include <cstddef>
#include <string>
#include <unordered_set>

unsigned gIdentityChanges = 0;

namespace {

struct Slot {
  std::atomic<const char*> name = "";
  std::atomic<const char*> signature = "";
  std::atomic<const char*> path = "";
};

// The slots stand in blocks that are made when first needed and never given back. IDs beyond the last block
// go without a name; no process has room for as many modules.
constexpr std::size_t kSlotsPerBlock = 256;
constexpr std::size_t kBlocks = 4096;
std::atomic<Slot*> gBlocks[kBlocks];

bool HasSlot(VYRAPluginID plugin) {
  return plugin >= 0 && static_cast<std::size_t>(plugin) / kSlotsPerBlock < kBlocks;
}

std::atomic<Slot*>& BlockOf(VYRAPluginID plugin) {
  return gBlocks[static_cast<std::size_t>(plugin) / kSlotsPerBlock];
}

std::size_t PlaceOf(VYRAPluginID plugin) { return static_cast<std::size_t>(plugin) % kSlotsPerBlock; }

}  // namespace

const char* VYRAIdentityKeepText(std::string_view text) {
  // Never destroyed: a handler may ask while the process ends.
  static auto& kept = *new std::unordered_set<std::string>;
  return kept.emplace(text).first->c_str();
}

void VYRAIdentitySet(VYRAPluginID plugin, std::string_view name, std::string_view signature,
                     std::string_view path) {
  ++gIdentityChanges;
  if (!HasSlot(plugin)) return;
  std::atomic<Slot*>& block = BlockOf(plugin);
  if (block.load() == nullptr) block.store(new Slot[kSlotsPerBlock]);
  Slot& slot = block.load()[PlaceOf(plugin)];
  slot.name.store(VYRAIdentityKeepText(name));
  slot.signature.store(VYRAIdentityKeepText(signature));
  slot.path.store(VYRAIdentityKeepText(path));
}

VYRAIdentity VYRAIdentityOf(VYRAPluginID plugin) {
  const Slot* block = HasSlot(plugin) ? BlockOf(plugin).load() : nullptr;
  if (block == nullptr) return {};
  const Slot& slot = block[PlaceOf(plugin)];
  return {slot.name.load(), slot.signature.load(), slot.path.load()};
}
