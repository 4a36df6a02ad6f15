// The words of a flight file. A step or an expectation is an object in which one key is the word that says
// what it is. Each word is a room: a file below steps/ or expectations/ with its keys, its reader, what it
// does and its description. The two tables list the rooms; readers, errors, the page and the schema of flight
// files are made from them.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "flight/Entry.h"
#include "flight/Key.h"

namespace sim {

// What a reader may need to know beside its entry.
struct FlightContext {
  std::string systemPath;  // ends in "/"
  int frames = 0;          // of the whole flight
};

struct Outcome {
  bool succeeded;
  std::string text;  // what happened, or why it did not, for the reader
};

// Carries a step out, once.
using Effect = std::function<Outcome()>;

struct Finding {
  bool holds;
  std::string found;
};

struct Claim {
  std::string text;                 // what is expected
  std::function<Finding()> check;   // called once, at its moment
  bool coversLoadFailures = false;  // those up to its moment, when it holds, do not fail the flight
};

struct Word {
  Key key;                                // the word itself, and what its value must be
  std::vector<Key> others;                // that may or must stand beside it
  std::vector<std::string_view> oneOf{};  // of the others: exactly one of these must be there
};

struct StepWord {
  Word word;
  Effect (*read)(const Entry& entry, const FlightContext& context);
};

struct ExpectationWord {
  Word word;
  Claim (*read)(const Entry& entry, const FlightContext& context);
};

// In the order in which the page shows them.
const std::vector<StepWord>& StepWords();
const std::vector<ExpectationWord>& ExpectationWords();

// The keys that say when: of every step, and of every expectation.
const std::vector<Key>& StepMomentKeys();
const std::vector<Key>& ExpectationMomentKeys();

// The room of the word that an entry has, checked against the room's keys. Throws InputError: for no word,
// two words or a word that there is not.
const StepWord& FindStep(const Entry& entry);
const ExpectationWord& FindExpectation(const Entry& entry);

}  // namespace sim
