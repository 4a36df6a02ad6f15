// The search for culprits, with failures that are functions of the choice.
#include "bisect/Search.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <vector>

namespace {

using sim::Choice;
using sim::Search;
using sim::SearchResult;
using sim::Trial;
using enum sim::SearchResult::Outcome;

using Culprits = std::vector<std::size_t>;

// Fails when all of the culprits take part.
std::function<bool(const Choice&)> Needs(const Culprits& culprits) {
  return [culprits](const Choice& choice) {
    return std::ranges::all_of(culprits, [&](std::size_t culprit) { return choice[culprit]; });
  };
}

SearchResult Find(std::size_t count, const std::function<bool(const Choice&)>& fails) {
  return Search(count, [&](const Trial& trial) { return fails(trial.choice); }).Run();
}

TEST(Search, FindsEachSingleCulpritInAboutTheLogarithmOfTheCandidates) {
  for (std::size_t culprit = 0; culprit < 50; ++culprit) {
    const SearchResult result = Find(50, Needs({culprit}));
    EXPECT_EQ(result.outcome, Found);
    EXPECT_EQ(result.culprits, Culprits{culprit});
    EXPECT_FALSE(result.failsWithoutThem);
    // All, none, 6 halvings, the culprit alone, and all others.
    EXPECT_LE(result.trials, 10);
  }
}

TEST(Search, FindsEachPairThatFailsOnlyTogether) {
  for (std::size_t first = 0; first < 20; ++first)
    for (std::size_t second = first + 1; second < 20; ++second) {
      const SearchResult result = Find(20, Needs({first, second}));
      EXPECT_EQ(result.outcome, Found);
      EXPECT_EQ(result.culprits, (Culprits{first, second}));
    }
}

TEST(Search, FindsLargerSetsAndTheOnlyCandidate) {
  EXPECT_EQ(Find(50, Needs({3, 17, 18, 49})).culprits, (Culprits{3, 17, 18, 49}));
  EXPECT_EQ(Find(6, Needs({0, 1, 2, 3, 4, 5})).culprits, (Culprits{0, 1, 2, 3, 4, 5}));
  EXPECT_EQ(Find(1, Needs({0})).culprits, Culprits{0});
}

TEST(Search, SaysThatAnotherSetFailsToo) {
  const SearchResult result =
      Find(16, [](const Choice& choice) { return choice[4] || (choice[9] && choice[12]); });
  EXPECT_EQ(result.culprits, Culprits{4});
  EXPECT_TRUE(result.failsWithoutThem);
}

TEST(Search, SaysWhenThereIsNothingToFind) {
  EXPECT_EQ(Find(8, [](const Choice&) { return false; }).outcome, NoFailure);
  EXPECT_EQ(Find(8, [](const Choice&) { return true; }).outcome, FailsWithoutAny);
  EXPECT_EQ(Find(0, [](const Choice&) { return true; }).outcome, FailsWithoutAny);
}

// Fails at the first trial, and whenever few take part, never again.
TEST(Search, SaysWhenTheFailureDoesNotComeAgain) {
  int trials = 0;
  const SearchResult once = Find(32, [&](const Choice&) { return ++trials == 1; });
  EXPECT_EQ(once.outcome, NotReproducible);
  EXPECT_LE(once.trials, 10);
}

TEST(Search, NeverAnnouncesFewerTrialsThanComeForASingleCulprit) {
  for (std::size_t culprit = 0; culprit < 33; ++culprit) {
    std::vector<int> most;
    const SearchResult result = Search(33, [&](const Trial& trial) {
                                  EXPECT_EQ(trial.number, static_cast<int>(most.size()) + 1);
                                  most.push_back(trial.mostLeft);
                                  return Needs({culprit})(trial.choice);
                                }).Run();
    for (std::size_t trial = 0; trial < most.size(); ++trial)
      EXPECT_GE(most[trial], result.trials - static_cast<int>(trial) - 1);
  }
}

}  // namespace
