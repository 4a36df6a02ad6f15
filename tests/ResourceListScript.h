// Plays a script of bytes on a VYRAResourceList and on a plain model of its rules, with walks nested in
// walks, and says where the two part. The unit tests feed it random bytes, the fuzzer chosen ones; a record
// that is touched after it was freed is left to AddressSanitizer.
//
// ResourceListScript<VYRAResource_t> plays on a list that is only added to at the front and walked from
// there, ResourceListScript<VYRAStackedResource_t> on one that is walked from the back and reordered as well.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "VYRAResourceList.h"
#include "VYRAResourceWalk.h"

// What the list should be: the chain in its order, where the head stands, and who waits to be freed.
struct ResourceListModel {
  static constexpr int kOwners = 3;
  static int OwnerOf(int id) { return id % kOwners; }

  std::vector<int> chain;
  bool headOnLast = false;
  std::vector<int> deadChain;
  std::set<int> dead;
  std::set<int> hidden;  // by the moved anchor, not freed
  int depth = 0;
  bool needsClean = false;

  bool Has(int id) const { return std::find(chain.begin(), chain.end(), id) != chain.end(); }

  void Begin(bool reverse) {
    ++depth;
    headOnLast = reverse;
  }

  void Add(int id) {
    if (headOnLast && !chain.empty()) {
      hidden.insert(chain.begin(), chain.end() - 1);
      chain.erase(chain.begin(), chain.end() - 1);
    }
    chain.insert(chain.begin(), id);
    headOnLast = false;
  }

  void Unlink(int id) {
    hidden.erase(id);
    if (!Has(id)) return;
    const bool headLost = headOnLast && chain.back() == id;
    std::erase(chain, id);
    if (!headLost) return;
    hidden.insert(chain.begin(), chain.end());
    chain.clear();
    headOnLast = false;
  }

  void Free(int id) {
    Unlink(id);
    dead.erase(id);
  }

  void Remove(int id) {
    if (depth == 0) {
      Free(id);
      return;
    }
    needsClean = true;
    if (dead.insert(id).second && !IsOnDeadChain(id)) deadChain.insert(deadChain.begin(), id);
  }

  bool IsOnDeadChain(int id) const {
    return std::find(deadChain.begin(), deadChain.end(), id) != deadChain.end();
  }

  void RemoveAllOf(int owner) {
    Begin(false);
    for (const int id : chain) {
      if (OwnerOf(id) == owner) Remove(id);
    }
    for (const int id : std::set<int>(hidden)) {
      if (OwnerOf(id) == owner && !IsOnDeadChain(id)) Free(id);
    }
    End();
  }

  void MoveToFront(int id) {
    Unlink(id);
    Add(id);
    dead.erase(id);
    const auto place = std::find(deadChain.begin(), deadChain.end(), id);
    if (place != deadChain.end()) deadChain.erase(place + 1, deadChain.end());
  }

  void End() {
    depth = std::max(depth - 1, 0);
    if (!needsClean) return;
    for (const int id : std::exchange(deadChain, {})) Free(id);
    needsClean = false;
  }
};

template <template <class> class Resource>
class ResourceListScript {
 public:
  explicit ResourceListScript(std::span<const std::uint8_t> script) : bytes(script) {}

  // Plays the script to its end; what went wrong, or an empty text.
  std::string Run() {
    try {
      while (!bytes.empty() && failure.empty()) Step(0);
    } catch (const Thrown&) {
      Fail("an exception left the outermost walk");
    }
    while (list.IterationDepth() > 0) list.EndIterate();
    std::set<int> freed;
    for (const auto& [id, item] : items) freed.insert(id);
    for (const int id : freed) delete items.at(id);
    return failure;
  }

 private:
  struct Thrown {};

  struct Item : Resource<Item> {
    Item(std::map<int, Item*>& all, int number)
        : items(all), id(number), owner(ResourceListModel::OwnerOf(number)) {
      items[id] = this;
    }
    ~Item() { items.erase(id); }
    Item(const Item&) = delete;
    Item& operator=(const Item&) = delete;

    int Key() const { return owner; }

    std::map<int, Item*>& items;
    int id;
    int owner;
  };

  static constexpr int kDeepest = 4;
  static constexpr std::size_t kMostRecords = 12;

  static constexpr bool kIsStack = std::is_same_v<Resource<Item>, VYRAStackedResource_t<Item>>;

  using Walk = VYRAResourceWalk<Item>;

  int Byte() {
    if (bytes.empty()) return 0;
    const int byte = bytes.front();
    bytes = bytes.subspan(1);
    return byte;
  }

  void Fail(const std::string& what) {
    if (failure.empty()) failure = what;
  }

  // A record of the chain, or -1 when it is empty.
  int Pick() {
    return model.chain.empty() ? -1 : model.chain[static_cast<std::size_t>(Byte()) % model.chain.size()];
  }

  void Step(int depth) {
    const int operation = Byte() % 11;
    const int id = operation >= 3 && operation <= 5 ? Pick() : -1;
    if (operation <= 2 && items.size() < kMostRecords) {
      list.Add(new Item(items, nextId));
      model.Add(nextId++);
    } else if (operation <= 4 && id >= 0) {
      list.Remove(items.at(id));
      model.Remove(id);
    } else if (operation == 5 && id >= 0) {
      MoveToFront(id);
    } else if (operation == 6) {
      Compare();
    } else if (operation >= 7 && operation <= 9 && depth < kDeepest) {
      PlayWalk(kIsStack && operation == 9, depth);
    } else if (operation == 10) {
      const int owner = Byte() % ResourceListModel::kOwners;
      list.RemoveAllOf(owner);
      model.RemoveAllOf(owner);
    }
  }

  void MoveToFront(int id) {
    if constexpr (kIsStack) {
      ++moves;
      list.MoveToFront(items.at(id));
      model.MoveToFront(id);
    }
  }

  Walk BeginWalk([[maybe_unused]] bool reverse) {
    if constexpr (kIsStack) {
      return Walk(list, reverse ? Walk::Order::reverse : Walk::Order::forward);
    } else {
      return Walk(list);
    }
  }

  void PlayWalk(bool reverse, int depth) {
    const int style = Byte();
    const bool leaveOpen = style % 16 == 15;
    try {
      Walk walk = BeginWalk(reverse);
      model.Begin(reverse);
      if (leaveOpen) walk.LeaveOpen();
      Visit(walk, reverse, depth);
      if (style % 8 == 7) throw Thrown();
    } catch (const Thrown&) {
    }
    if (!leaveOpen) model.End();
    if (list.IterationDepth() != model.depth) Fail("the depth differs");
  }

  // Walks to the end, or leaves early, and holds the walk to its promises.
  void Visit(Walk& walk, bool reverse, int depth) {
    std::vector<int> expected = model.chain;
    if (reverse) std::reverse(expected.begin(), expected.end());
    const bool choosy = !reverse && Byte() % 2 == 1;
    const auto isWanted = [choosy](int id) { return !choosy || id % 3 != 0; };
    std::erase_if(expected, [&](int id) { return !isWanted(id); });
    const int firstNewId = nextId;
    const int movesBefore = moves;
    std::vector<int> visited;
    // Whether the walk goes on.
    const auto visit = [&](Item& item) {
      const int id = item.id;
      if (!isWanted(id)) Fail("a record came that was not wanted");
      if (std::find(visited.begin(), visited.end(), id) != visited.end()) Fail("a record came twice");
      if (id >= firstNewId) Fail("the walk reached a record added during it");
      visited.push_back(id);
      PlayCallback(item, depth);
      if (walk.HoldsRecord() != items.contains(id)) Fail("the walk is wrong about its record");
      return Byte() % 32 != 31 && failure.empty();
    };
    if (choosy) {
      for (Item& item : walk.Where([&](const Item& it) { return isWanted(it.id); })) {
        if (!visit(item)) return;
      }
    } else {
      while (Item* item = walk.Next()) {
        if (!visit(*item)) return;
      }
    }
    for (const int id : expected) {
      const bool seen = std::find(visited.begin(), visited.end(), id) != visited.end();
      if (model.Has(id) && !seen) Fail("a record that is still there was skipped");
    }
    if (moves != movesBefore) return;
    std::erase_if(expected,
                  [&](int id) { return std::find(visited.begin(), visited.end(), id) == visited.end(); });
    if (visited != expected) Fail("the order differs");
  }

  // What a walk's callback does with the list, the record that it is called for included.
  void PlayCallback(Item& item, int depth) {
    const int id = item.id;
    if (item.is_dead() != model.dead.contains(id)) Fail("the dead flag differs");
    if (Byte() % 8 == 7 && model.hidden.contains(id)) {
      list.Remove(&item);
      model.Remove(id);
    }
    const int heldId = Pick();
    const VYRAResourceHold<Item> hold = list.Hold(heldId >= 0 ? items.at(heldId) : nullptr);
    for (int steps = Byte() % 4; steps > 0 && failure.empty(); --steps) Step(depth + 1);
    const bool isThere = items.contains(heldId) && !model.dead.contains(heldId);
    if (hold.Get() != (isThere ? items.at(heldId) : nullptr)) Fail("the hold is wrong about its record");
  }

  // The chain as its own links tell it, against the model's.
  void Compare() {
    std::vector<int> chain;
    model.Begin(false);
    Item* last = nullptr;
    for (Item* item = list.BeginIterate(); item != nullptr; item = item->get_next()) {
      chain.push_back(item->id);
      if (item->get_prev() != last) Fail("a link back is wrong");
      last = item;
    }
    if (chain != model.chain) Fail("the chain differs");
    list.EndIterate();
    model.End();
    for (const int id : model.chain) {
      if (!items.contains(id)) Fail("a record of the chain was freed");
    }
    if (items.size() != model.chain.size() + model.hidden.size())
      Fail("a record is neither linked nor freed");
    CompareIndex();
  }

  // What is found without a walk, against the chain.
  void CompareIndex() {
    for (const auto& [id, item] : items) {
      if ((list.Get(item) != nullptr) != model.Has(id)) Fail("a handle is judged wrongly");
    }
    if (list.Get(nullptr) != nullptr || list.Get(reinterpret_cast<Item*>(this)) != nullptr)
      Fail("a handle of nothing is good");
    if constexpr (!kIsStack) {
      for (int key = 0; key < ResourceListModel::kOwners; ++key) {
        Item* alike = list.FirstLike(key);
        for (const int id : model.chain) {
          if (ResourceListModel::OwnerOf(id) != key) continue;
          if (alike == nullptr || alike->id != id) return Fail("the order of those with a key differs");
          alike = list.NextLike(alike);
        }
        if (alike != nullptr) Fail("a record is found that is not in the list");
      }
    }
  }

  std::span<const std::uint8_t> bytes;
  VYRAResourceList<Item> list;
  ResourceListModel model;
  std::map<int, Item*> items;
  int nextId = 0;
  int moves = 0;
  std::string failure;
};
