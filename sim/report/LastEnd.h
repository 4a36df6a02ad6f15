// What is remembered of flights that a plugin ended, from one start of the program to the next: one small
// file for each simulator folder.
#pragma once

#include <optional>
#include <string>

#include "report/Report.h"

namespace sim {

struct LastEnd {
  std::string date;  // "2026-03-01 17:45"
  std::string result;
  std::string name;
  std::string signature;
  std::string path;
  std::string call;
};

// Where such files lie when the user names no other folder: below $XDG_STATE_HOME, or ~/.local/state. Empty
// when there is no such place.
std::string DefaultStateFolder();

// Takes away what is remembered of the last flight over a simulator folder; nothing when that came to its
// end.
std::optional<LastEnd> TakeLastEnd(const std::string& stateFolder, const std::string& systemPath);

// Remembers how this flight ended, at this moment. False when that cannot be written.
bool RememberEnd(const std::string& stateFolder, const std::string& systemPath, Result result,
                 const Culprit& culprit);

// Remembers it again. False when that cannot be written.
bool RememberAgain(const std::string& stateFolder, const std::string& systemPath, const LastEnd& end);

// The pattern by which the plugin is passed over.
std::string PatternOf(const LastEnd& end, const std::string& systemPath);

// One line, with what to give to "vyra-sim run" to fly without the plugin, fit for a shell.
std::string DescribeLastEnd(const LastEnd& end, const std::string& systemPath);

}  // namespace sim
