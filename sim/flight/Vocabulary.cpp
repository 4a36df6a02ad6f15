#include "flight/Vocabulary.h"

#include <fmt/format.h>

#include <algorithm>

#include "flight/Nearest.h"
#include "report/Moment.h"

namespace sim {
namespace {

template <class Room>
std::vector<std::string_view> Names(const std::vector<Room>& rooms) {
  std::vector<std::string_view> names;
  for (const Room& room : rooms) names.push_back(room.word.key.name);
  return names;
}

// Of the keys that are no word, the one that looks most like one is what was meant to be it.
[[noreturn]] void FailForUnknownWord(const Entry& entry, const std::vector<std::string_view>& words,
                                     const std::vector<Key>& momentKeys, std::string_view kind) {
  std::vector<std::string_view> unknown = entry.Keys();
  std::erase_if(unknown, [&](std::string_view key) {
    return std::ranges::find(momentKeys, key, &Key::name) != momentKeys.end();
  });
  if (unknown.empty()) entry.Fail(fmt::format("this {} has no word that says what it is", kind));
  const auto meant =
      std::ranges::find_if(unknown, [&](std::string_view key) { return !NearestWord(key, words).empty(); });
  const std::string_view written = meant != unknown.end() ? *meant : unknown.front();
  entry.FailAtKey(written, fmt::format("unknown {} \"{}\"{}", kind, written, DidYouMean(written, words)));
}

void CheckOneOf(const Entry& entry, const Word& word) {
  if (word.oneOf.empty()) return;
  const auto count = std::ranges::count_if(word.oneOf, [&](std::string_view key) { return entry.Has(key); });
  if (count == 1) return;
  const std::string names = fmt::format("\"{}\"", fmt::join(word.oneOf, "\", \""));
  entry.Fail(fmt::format("\"{}\" needs {} of {}", word.key.name, count == 0 ? "one" : "only one", names));
}

void CheckKeys(const Entry& entry, const Word& word, const std::vector<Key>& momentKeys) {
  std::vector<Key> keys = momentKeys;
  keys.push_back(word.key);
  keys.insert(keys.end(), word.others.begin(), word.others.end());
  entry.Check(keys);
  CheckOneOf(entry, word);
}

template <class Room>
const Room& FindRoom(const Entry& entry, const std::vector<Room>& rooms, const std::vector<Key>& momentKeys,
                     std::string_view kind) {
  const Room* found = nullptr;
  for (const Room& room : rooms) {
    if (!entry.Has(room.word.key.name)) continue;
    if (found != nullptr)
      entry.FailAtKey(room.word.key.name,
                      fmt::format("\"{}\" and \"{}\" are two {}s: each is an object of its own",
                                  found->word.key.name, room.word.key.name, kind));
    found = &room;
  }
  if (found == nullptr) FailForUnknownWord(entry, Names(rooms), momentKeys, kind);
  CheckKeys(entry, found->word, momentKeys);
  return *found;
}

}  // namespace

const std::vector<Key>& StepMomentKeys() {
  static const std::vector<Key> kKeys = {
      WholeNumberKey("frame", 1, kMaxFrames, "before which frame it is carried out")};
  return kKeys;
}

const std::vector<Key>& ExpectationMomentKeys() {
  static const std::vector<Key> kKeys = {
      Optional(WholeNumberKey("frame", 1, kMaxFrames, "after which frame it is checked")),
      Optional(
          ChoiceKey("after", {"start", "end", "shutdown"},
                    "instead of a frame: when the plugins were loaded and enabled, after the last frame, "
                    "or when they are stopped"))};
  return kKeys;
}

const StepWord& FindStep(const Entry& entry) {
  return FindRoom(entry, StepWords(), StepMomentKeys(), "step");
}

const ExpectationWord& FindExpectation(const Entry& entry) {
  return FindRoom(entry, ExpectationWords(), ExpectationMomentKeys(), "expectation");
}

}  // namespace sim
