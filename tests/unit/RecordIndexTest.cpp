// What finds records without a walk, each against a plain model.
#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <memory>
#include <random>
#include <vector>

#include "VYRAKeyedRecords.h"
#include "VYRARecordPool.h"
#include "VYRASequence.h"

namespace {

struct Record : VYRAPooled_t<Record> {
  int number = 0;
  VYRALinks<Record> links;
  std::size_t slot = 0;

  auto Key() const { return std::tuple(number % 5, reinterpret_cast<const void*>(number / 50 * 8L)); }
};

TEST(Sequence, TellsPlacesWhateverLeftBefore) {
  std::mt19937 random(1);
  std::deque<Record> all;
  VYRASequence<Record, &Record::slot> sequence;
  std::vector<Record*> model;
  for (int step = 0; step < 20'000; ++step) {
    // Grows and shrinks by turns, so that gaps are closed and slots used again.
    const bool grows = step / 300 % 2 == 0;
    if (model.empty() || random() % 4 < (grows ? 3U : 1U)) {
      model.push_back(&all.emplace_back());
      sequence.Append(model.back());
    } else {
      const auto leaver = model.begin() + static_cast<std::ptrdiff_t>(random() % model.size());
      sequence.Remove(*leaver);
      model.erase(leaver);
    }
    ASSERT_EQ(sequence.Count(), model.size());
    for (int asked = 0; asked < 4 && !model.empty(); ++asked) {
      const std::size_t place = asked == 0 ? model.size() - 1 : random() % model.size();
      ASSERT_EQ(sequence.At(place), model[place]) << "step " << step;
      ASSERT_EQ(sequence.PlaceOf(*model[place]), place) << "step " << step;
    }
  }
}

TEST(KeyedRecords, KeepTheirOrderUnderEachKey) {
  std::mt19937 random(1);
  std::deque<Record> all;
  VYRAKeyedRecords<Record, &Record::Key, &Record::links> index;
  std::vector<Record*> model;  // those under one key in their order
  const auto alike = [&](const Record& record) {
    std::vector<Record*> found;
    for (Record* one : model) {
      if (one->Key() == record.Key()) found.push_back(one);
    }
    return found;
  };
  for (int step = 0; step < 5'000; ++step) {
    if (model.empty() || random() % 5 < 3) {
      Record& record = all.emplace_back();
      record.number = static_cast<int>(random() % 1'000);
      if (random() % 2 == 0) {
        index.AddFirst(&record);
        model.insert(model.begin(), &record);
      } else {
        index.AddLast(&record);
        model.push_back(&record);
      }
    } else {
      const auto leaver = model.begin() + static_cast<std::ptrdiff_t>(random() % model.size());
      index.Remove(*leaver);
      model.erase(leaver);
    }
    Record asked;
    asked.number = static_cast<int>(random() % 1'100);
    std::vector<Record*> found;
    for (Record* one = index.First(asked.Key()); one != nullptr; one = index.Next(one)) found.push_back(one);
    ASSERT_EQ(found, alike(asked)) << "step " << step;
  }
  while (!model.empty()) {
    index.Remove(model.back());
    model.pop_back();
  }
  EXPECT_EQ(index.Count(), 0U);
}

TEST(RecordPool, KnowsTheAddressesOfItsRecordsAndNoOthers) {
  std::vector<std::unique_ptr<Record>> records(500);
  for (auto& record : records) record = std::make_unique<Record>();
  for (auto& record : records) {
    const auto* address = reinterpret_cast<const char*>(record.get());
    ASSERT_TRUE(Record::Pool::Holds(address));
    ASSERT_FALSE(Record::Pool::Holds(address + 1));
    ASSERT_FALSE(Record::Pool::Holds(address - sizeof(void*)));
  }
  const Record* const gone = records[7].get();
  records[7].reset();
  EXPECT_FALSE(Record::Pool::Holds(gone));
  EXPECT_FALSE(Record::Pool::Holds(nullptr));
  EXPECT_FALSE(Record::Pool::Holds(reinterpret_cast<const void*>(~std::uintptr_t{0})));
}

}  // namespace
