#include "flight/Vocabulary.h"

#include <fmt/format.h>

#include <algorithm>

#include "flight/Nearest.h"
#include "report/Moment.h"

namespace sim {
namespace {

constexpr std::string_view kStep = "a step";
constexpr std::string_view kExpectation = "an expectation";

std::string_view NounOf(std::string_view kind) { return kind.substr(kind.find(' ') + 1); }

template <class Room>
std::vector<std::string_view> Names(const std::vector<Room>& rooms) {
  std::vector<std::string_view> names;
  names.reserve(rooms.size());
  for (const Room& room : rooms) names.push_back(room.word.key.name);
  return names;
}

// Of the keys that are no word, the one that looks most like one is what was meant to be it.
[[noreturn]] void FailForUnknownWord(const Entry& entry, const std::vector<std::string_view>& words,
                                     const MomentKeys& moments, std::string_view kind) {
  std::vector<std::string_view> unknown = entry.Keys();
  std::erase_if(unknown, [&](std::string_view key) {
    return std::ranges::find(moments.keys, key, &Key::name) != moments.keys.end();
  });
  if (unknown.empty()) entry.Fail(fmt::format("this {} has no word that says what it is", NounOf(kind)));
  const auto meant =
      std::ranges::find_if(unknown, [&](std::string_view key) { return !NearestWord(key, words).empty(); });
  const std::string_view written = meant != unknown.end() ? *meant : unknown.front();
  entry.FailAtKey(written,
                  fmt::format("unknown {} \"{}\"{}", NounOf(kind), written, DidYouMean(written, words)));
}

std::string Quoted(const std::vector<std::string_view>& keys) {
  return fmt::format("\"{}\"", fmt::join(keys, "\", \""));
}

std::ptrdiff_t CountOf(const Entry& entry, const std::vector<std::string_view>& keys) {
  return std::ranges::count_if(keys, [&](std::string_view key) { return entry.Has(key); });
}

void CheckOneOf(const Entry& entry, std::string_view owner, const std::vector<std::string_view>& oneOf) {
  if (oneOf.empty()) return;
  const std::ptrdiff_t count = CountOf(entry, oneOf);
  if (count != 1)
    entry.Fail(fmt::format("{} needs {} of {}", owner, count == 0 ? "one" : "only one", Quoted(oneOf)));
}

void CheckKeys(const Entry& entry, const Word& word, const MomentKeys& moments, std::string_view kind) {
  std::vector<Key> keys = moments.keys;
  keys.push_back(word.key);
  keys.insert(keys.end(), word.others.begin(), word.others.end());
  entry.Check(keys);
  CheckOneOf(entry, fmt::format("\"{}\"", word.key.name), word.oneOf);
  CheckOneOf(entry, kind, moments.oneOf);
  if (CountOf(entry, moments.atMostOneOf) > 1)
    entry.Fail(fmt::format("{} may have only one of {}", kind, Quoted(moments.atMostOneOf)));
}

template <class Room>
const Room& FindRoom(const Entry& entry, const std::vector<Room>& rooms, const MomentKeys& moments,
                     std::string_view kind) {
  const Room* found = nullptr;
  for (const Room& room : rooms) {
    if (!entry.Has(room.word.key.name)) continue;
    if (found != nullptr)
      entry.FailAtKey(room.word.key.name,
                      fmt::format("\"{}\" and \"{}\" are two {}s: each is an object of its own",
                                  found->word.key.name, room.word.key.name, NounOf(kind)));
    found = &room;
  }
  if (found == nullptr) FailForUnknownWord(entry, Names(rooms), moments, kind);
  CheckKeys(entry, found->word, moments, kind);
  return *found;
}

}  // namespace

const MomentKeys& StepMoments() {
  static const MomentKeys kMoments{
      .keys =
          {Optional(WholeNumberKey("frame", 1, kMaxFrames, "before which frame it is carried out")),
           Optional(AmountKey("second", "instead: before the first frame at or behind this simulated time")),
           Optional(WholeNumberKey("later", 0, kMaxFrames,
                                   "instead: so many frames after the step before it in the file was done"))},
      .oneOf = {"frame", "second", "later"},
      .atMostOneOf = {}};
  return kMoments;
}

const MomentKeys& ExpectationMoments() {
  static const MomentKeys kMoments{
      .keys = {Optional(WholeNumberKey("frame", 1, kMaxFrames, "after which frame it is checked")),
               Optional(
                   AmountKey("second", "instead: after the first frame at or behind this simulated time")),
               Optional(ChoiceKey("after", {"start", "end", "shutdown"},
                                  "instead: when the plugins were loaded and enabled, after the last frame, "
                                  "or when they are stopped")),
               Optional(WholeNumberKey("within", 1, kMaxFrames,
                                       "it needs to hold at that moment or once in so many frames after it")),
               Optional(WholeNumberKey("throughout", 1, kMaxFrames,
                                       "it must hold at that moment and in each of so many frames after it")),
               Optional(WholeNumberKey("never", 1, kMaxFrames,
                                       "it must not hold at that moment, nor in so many frames after it"))},
      .oneOf = {"frame", "second", "after"},
      .atMostOneOf = {"within", "throughout", "never"}};
  return kMoments;
}

const StepWord& FindStep(const Entry& entry) { return FindRoom(entry, StepWords(), StepMoments(), kStep); }

const ExpectationWord& FindExpectation(const Entry& entry) {
  return FindRoom(entry, ExpectationWords(), ExpectationMoments(), kExpectation);
}

const ExpectationWord& FindExpectationInStep(const Entry& entry) {
  return FindRoom(entry, ExpectationWords(), {}, kExpectation);
}

}  // namespace sim
