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
  double rate = 60.0;      // frames per simulated second
};

struct Outcome {
  bool succeeded = true;
  std::string text;    // what happened, or why it did not, for the reader; empty: nothing to tell yet
  bool isDone = true;  // otherwise the step goes on in the next frame
};

// Carries a step out: called once in each frame, until it is done.
using Effect = std::function<Outcome()>;

struct Finding {
  bool holds;
  std::string found;
};

struct Claim {
  std::string text;  // what is expected
  // Called at its moment, and in the frames before, so that a failure can say where it held last. It only
  // looks, and remembers at most what it saw.
  std::function<Finding()> check;
  bool coversLoadFailures = false;  // those up to its moment, when it holds, do not fail the flight
  bool needsCosts = false;          // the plugins' costs are measured in this flight
  bool isCostly = false;            // it is not looked at before its moment
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

// The keys that say when, and for how long: of every step, and of every expectation.
struct MomentKeys {
  std::vector<Key> keys;
  std::vector<std::string_view> oneOf;        // exactly one of these must be there
  std::vector<std::string_view> atMostOneOf;  // not more than one of these may be there
};
const MomentKeys& StepMoments();
const MomentKeys& ExpectationMoments();

// The room of the word that an entry has, checked against the room's keys. Throws InputError: for no word,
// two words or a word that there is not.
const StepWord& FindStep(const Entry& entry);
const ExpectationWord& FindExpectation(const Entry& entry);
// Of an expectation that stands in a step, and has no moment of its own.
const ExpectationWord& FindExpectationInStep(const Entry& entry);

}  // namespace sim
