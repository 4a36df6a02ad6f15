// Halving, and keeping what was answered before.
#include "Search.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace sim {
namespace {

// The known ones and the first of the row.
Choice WithBeginning(Choice known, std::size_t length) {
  std::fill_n(known.begin(), length, true);
  return known;
}

// Trials that halve `length` candidates down to one.
int Halvings(std::size_t length) {
  return static_cast<int>(std::bit_width(std::max<std::size_t>(length, 1) - 1));
}

// What comes when a culprit is found: the trial of the set alone, and that of all others.
constexpr int kLastTrials = 2;

}  // namespace

Search::Search(std::size_t candidateCount, std::function<bool(const Trial&)> fails)
    : count(candidateCount), ask(std::move(fails)) {}

bool Search::FailsAgain(const Choice& choice, int mostLeft) {
  ++trials;
  return answers[choice] = ask({choice, trials, mostLeft, culpritsKnown});
}

bool Search::Fails(const Choice& choice, int mostLeft) {
  const auto known = answers.find(choice);
  return known != answers.end() ? known->second : FailsAgain(choice, mostLeft);
}

// The length of it: with one less it does not fail. `failing` is a length that does.
std::size_t Search::ShortestFailingBeginning(const Choice& known, std::size_t failing) {
  std::size_t passing = 0;
  while (failing - passing > 1) {
    const std::size_t middle = passing + (failing - passing) / 2;
    const int mostLeft = Halvings(failing - passing) - 1 + kLastTrials;
    (Fails(WithBeginning(known, middle), mostLeft) ? failing : passing) = middle;
  }
  return failing;
}

SearchResult Search::Result(SearchResult::Outcome outcome) const {
  SearchResult result;
  result.outcome = outcome;
  result.trials = trials;
  return result;
}

SearchResult Search::Run() {
  using enum SearchResult::Outcome;
  const int most = Halvings(count) + kLastTrials;
  if (!Fails(WithBeginning(NoneOf(), count), most + 1)) return Result(NoFailure);
  if (Fails(NoneOf(), most)) return Result(FailsWithoutAny);

  Choice culprits = NoneOf();
  std::size_t length = count;
  while (true) {
    length = ShortestFailingBeginning(culprits, length) - 1;
    culprits[length] = true;
    ++culpritsKnown;
    // A set that failed while others took part, or failed once, is tried anew: the answer must hold.
    const Choice withRest = WithBeginning(culprits, length);
    if (FailsAgain(culprits, 1)) break;
    if (length == 0 || !FailsAgain(withRest, Halvings(length) + kLastTrials)) return Result(NotReproducible);
  }

  SearchResult result = Result(Found);
  Choice others = culprits;
  others.flip();
  result.failsWithoutThem = Fails(others, 0);
  result.trials = trials;
  for (std::size_t candidate = 0; candidate < count; ++candidate)
    if (culprits[candidate]) result.culprits.push_back(candidate);
  return result;
}

}  // namespace sim
