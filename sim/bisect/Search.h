// The search for the culprits behind a failure, among candidates of which any may be left out. It knows
// nothing of flights: whoever calls it says whether the failure shows with a choice of them.
//
// While no culprit is known, it halves the row of candidates until it has the shortest beginning of the row
// that fails; the last of that beginning is a culprit. If it does not fail alone, the same goes on for the
// next culprit, with those found so far always among the choice. So one culprit among n takes some log2 n
// trials, and k together take k times that. The set is the smallest in that none of it can be left out.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <vector>

namespace sim {

// A candidate each: whether it takes part.
using Choice = std::vector<bool>;

struct Trial {
  Choice choice;
  int number = 1;
  // How many come after it at the most, if one more culprit is all that is to be found.
  int mostLeft = 0;
  std::size_t culpritsKnown = 0;
};

struct SearchResult {
  enum class Outcome {
    Found,
    NoFailure,        // with all candidates
    FailsWithoutAny,  // of them
    NotReproducible,  // the same choice failed at one time and not at another
  };
  Outcome outcome = Outcome::NoFailure;
  std::vector<std::size_t> culprits;  // in the order of the candidates
  bool failsWithoutThem = false;      // so there is another set of culprits
  int trials = 0;
};

class Search {
 public:
  // `fails` is asked with each trial.
  Search(std::size_t candidateCount, std::function<bool(const Trial&)> fails);

  SearchResult Run();

 private:
  Choice NoneOf() const { return Choice(count, false); }
  bool Fails(const Choice& choice, int mostLeft);
  bool FailsAgain(const Choice& choice, int mostLeft);
  std::size_t ShortestFailingBeginning(const Choice& known, std::size_t failing);
  SearchResult Result(SearchResult::Outcome outcome) const;

  std::size_t count;
  std::function<bool(const Trial&)> ask;
  std::map<Choice, bool> answers;
  int trials = 0;
  std::size_t culpritsKnown = 0;
};

}  // namespace sim
