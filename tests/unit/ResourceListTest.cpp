// The callback list: its stated rules one by one, and a long random play against a model of them.
#include "VYRAResourceList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <random>
#include <set>
#include <vector>

#include "ResourceListScript.h"

namespace {

struct Item : VYRAStackedResource_t<Item> {
  explicit Item(char itemName, int itemOwner = 0) : name(itemName), owner(itemOwner) { ++alive; }
  ~Item() { --alive; }
  Item(const Item&) = delete;
  Item& operator=(const Item&) = delete;

  char name;
  int owner;
  static inline int alive = 0;
};

class ResourceList : public ::testing::Test {
 protected:
  // Leaves the records in the order a, b, c.
  ResourceList() {
    for (Item* item : {c, b, a}) list.Add(item);
  }
  ~ResourceList() override {
    while (list.IterationDepth() > 0) list.EndIterate();
    while (Item* first = list.BeginIterate()) {
      list.EndIterate();
      list.Remove(first);
    }
  }

  std::string Chain() {
    std::string names;
    for (Item* item = list.BeginIterate(); item != nullptr; item = item->get_next()) names += item->name;
    list.EndIterate();
    return names;
  }

  Item* a = new Item('a');
  Item* b = new Item('b');
  Item* c = new Item('c');
  VYRAResourceList<Item> list;
};

TEST_F(ResourceList, RemovalDuringWalkWaitsForTheNextEndEvenAnInnerOne) {
  list.BeginIterate();
  list.BeginIterate();
  list.Remove(b);
  list.Remove(b);
  EXPECT_EQ(a->get_next(), b);
  EXPECT_TRUE(b->is_dead());
  list.EndIterate();
  EXPECT_EQ(list.IterationDepth(), 1);
  EXPECT_EQ(a->get_next(), c);
  EXPECT_EQ(Item::alive, 2);
}

TEST_F(ResourceList, RemovalOutsideWalksFreesAtOnceAndEndWithoutBeginStaysAtZero) {
  list.EndIterate();
  EXPECT_EQ(list.IterationDepth(), 0);
  for (Item* item : {b, a, c}) list.Remove(item);
  EXPECT_EQ(Item::alive, 0);
  EXPECT_EQ(list.BeginIterate(), nullptr);
  EXPECT_EQ(list.IterationDepth(), 1);
}

TEST_F(ResourceList, HeadStaysOnLastRecordAfterReverseBeginSoThatAnAdditionHidesTheOthers) {
  EXPECT_EQ(list.BeginReverseIterate(), c);
  list.EndIterate();
  auto* added = new Item('n');
  list.Add(added);
  EXPECT_EQ(Chain(), "nc");
  // A walk that stands on a hidden record goes on to what it names, so that must not be freed memory.
  list.Remove(c);
  EXPECT_EQ(b->get_next(), nullptr);
  for (Item* hidden : {b, a}) list.Remove(hidden);
  EXPECT_EQ(Item::alive, 1);
}

TEST_F(ResourceList, ForwardBeginBringsTheHeadBack) {
  list.BeginReverseIterate();
  list.EndIterate();
  EXPECT_EQ(list.BeginIterate(), a);
  list.EndIterate();
  list.Add(new Item('n'));
  EXPECT_EQ(Chain(), "nabc");
}

TEST_F(ResourceList, MoveToFrontRevivesADeadRecordThatTheNextEndFreesNevertheless) {
  list.MoveToFront(a);
  EXPECT_EQ(Chain(), "abc");
  list.BeginIterate();
  list.Remove(b);
  list.Remove(c);  // the chain of dead ones: c, b
  list.MoveToFront(c);
  EXPECT_FALSE(c->is_dead());
  EXPECT_EQ(list.BeginIterate(), c);
  list.EndIterate();
  EXPECT_EQ(Chain(), "ab") << "c is freed, b stays linked and dead";
  EXPECT_TRUE(b->is_dead());
  list.Remove(b);
  EXPECT_EQ(Item::alive, 2) << "a dead record is not put up for freeing again";
}

TEST_F(ResourceList, RevivedRecordThatIsRemovedAgainIsFreedOnce) {
  list.BeginIterate();
  list.Remove(b);
  list.MoveToFront(b);
  list.Remove(b);
  list.EndIterate();
  EXPECT_EQ(Chain(), "ac");
}

TEST_F(ResourceList, WalkStepsOffARecordThatAnInnerEndFrees) {
  VYRAResourceWalk<Item> walk(list);
  walk.Next();
  EXPECT_EQ(walk.Next(), b);
  list.Remove(b);
  list.Remove(c);
  EXPECT_TRUE(walk.HoldsRecord());
  Chain();
  EXPECT_FALSE(walk.HoldsRecord());
  EXPECT_EQ(walk.Next(), nullptr);
  EXPECT_EQ(walk.Next(), nullptr);
}

TEST_F(ResourceList, ReorderingDuringWalksNeitherSkipsNorRepeats) {
  std::string forward;
  {
    VYRAResourceWalk<Item> walk(list);
    while (Item* item = walk.Next()) {
      forward += item->name;
      if (item == a) list.MoveToFront(c);
      if (item == b) list.MoveToFront(b);
    }
  }
  EXPECT_EQ(forward, "abc");
  EXPECT_EQ(Chain(), "bca");

  std::string reverse;
  VYRAResourceWalk<Item> walk(list, VYRAResourceWalk<Item>::Order::reverse);
  while (Item* item = walk.Next()) {
    reverse += item->name;
    list.BeginIterate();  // as every caller does before it reorders
    list.EndIterate();
    list.MoveToFront(item);
  }
  EXPECT_EQ(reverse, "acb");
}

TEST_F(ResourceList, RecordsAddedDuringAWalkFromTheBackWaitForTheNext) {
  std::string visited;
  VYRAResourceWalk<Item> walk(list, VYRAResourceWalk<Item>::Order::reverse);
  while (Item* item = walk.Next()) {
    visited += item->name;
    ASSERT_LE(visited.size(), 3U) << "each record adds one: the walk would never end";
    Chain();  // as the host's look for the cursor does: what is added now hides nothing
    list.Add(new Item('n'));
  }
  EXPECT_EQ(visited, "cba");
  EXPECT_EQ(Chain(), "nnnabc");
}

TEST_F(ResourceList, HiddenRecordsGoWithTheirOwnerAndWalksStepOffThem) {
  constexpr int kLeaving = 1;
  list.Add(new Item('x', kLeaving));
  list.Add(new Item('y', kLeaving));  // y x a b c
  std::string visited;
  VYRAResourceWalk<Item> walk(list, VYRAResourceWalk<Item>::Order::reverse);
  while (Item* item = walk.Next()) {
    visited += item->name;
    if (item == b) list.Add(new Item('n'));  // hides all but the last
    if (item == a) list.RemoveAllOf(kLeaving);
  }
  EXPECT_EQ(visited, "cba") << "a walk among the hidden meets none that are gone";
  EXPECT_EQ(Chain(), "nc");
  EXPECT_EQ(Item::alive, 4) << "a and b are hidden, but their owner is still there";
  list.RemoveAllOf(0);
  EXPECT_EQ(Item::alive, 0);
}

TEST_F(ResourceList, HoldGivesItsRecordUntilThatIsRemoved) {
  const VYRAResourceHold<Item> held = list.Hold(b);
  const VYRAResourceHold<Item> heldNone = list.Hold(nullptr);
  list.MoveToFront(b);
  EXPECT_EQ(held.Get(), b);
  list.BeginIterate();
  list.Remove(b);
  EXPECT_EQ(held.Get(), nullptr) << "dead";
  list.EndIterate();
  EXPECT_EQ(held.Get(), nullptr) << "freed";
  EXPECT_EQ(heldNone.Get(), nullptr);
}

TEST(IterationDepth, StopsAtTheLargestNumberAndAtZero) {
  VYRAIterationDepth depth;
  depth.Lower();
  EXPECT_EQ(depth.value, 0);
  depth.value = std::numeric_limits<int>::max();
  depth.Raise();
  EXPECT_EQ(depth.value, std::numeric_limits<int>::max());
}

TEST_F(ResourceList, WalkEndsWhenAnExceptionLeavesItUnlessItIsLeftOpen) {
  EXPECT_THROW(
      {
        VYRAResourceWalk<Item> walk(list);
        list.Remove(walk.Next());
        throw 1;
      },
      int);
  EXPECT_EQ(list.IterationDepth(), 0);
  EXPECT_EQ(Chain(), "bc");
  {
    VYRAResourceWalk<Item> walk(list);
    walk.LeaveOpen();
  }
  EXPECT_EQ(list.IterationDepth(), 1);
}

#ifndef VYRA_RECORDS_FROM_HEAP
TEST(RecordPool, GivesASlotOutAgainAfterAsManyOthersAsABlockHolds) {
  struct Record {
    double value;
  };
  using Pool = VYRARecordPool<Record>;
  std::vector<void*> slots;
  for (std::size_t i = 0; i < 2 * Pool::kSlotsPerBlock; ++i) slots.push_back(Pool::Take());
  EXPECT_EQ(std::set(slots.begin(), slots.end()).size(), slots.size());
  for (std::size_t i = 0; i + 1 < Pool::kSlotsPerBlock; ++i) Pool::Give(slots[i]);
  EXPECT_EQ(std::find(slots.begin(), slots.end(), Pool::Take()), slots.end()) << "too few wait";
  Pool::Give(slots.back());
  EXPECT_EQ(Pool::Take(), slots.front()) << "the one that has waited longest";
}
#endif

TEST(ResourceListPlay, RandomPlayAgreesWithTheModel) {
  constexpr unsigned kPlays = 4000;
  for (unsigned seed = 1; seed <= kPlays; ++seed) {
    std::mt19937 random(seed);
    std::vector<std::uint8_t> script(400);
    for (std::uint8_t& byte : script) byte = static_cast<std::uint8_t>(random());
    ASSERT_EQ(ResourceListScript<VYRAStackedResource_t>(script).Run(), "") << "seed " << seed;
    ASSERT_EQ(ResourceListScript<VYRAResource_t>(script).Run(), "") << "seed " << seed;
  }
}

}  // namespace
