// The rooms of the expectations, a file each. A new one is a file, and a row here and in the table in
// Expectations.cpp.
#pragma once

#include <optional>

#include "flight/Vocabulary.h"
#include "view/Screen.h"

namespace sim {

// That a count is so many.
Claim CountClaim(std::string text, int wanted, int (*count)());

ExpectationWord LogContainsExpectation();
ExpectationWord LogLacksExpectation();
ExpectationWord DataRefIsExpectation();
ExpectationWord PluginCountExpectation();
ExpectationWord PluginIsExpectation();
ExpectationWord ScreenShowsExpectation();
ExpectationWord ScreenLacksExpectation();
ExpectationWord MenuItemIsExpectation();
ExpectationWord CameraIsExpectation();
ExpectationWord PlanesHeldByExpectation();
ExpectationWord ObjectsLoadedExpectation();
ExpectationWord LoadFailuresAreExpectation();
ExpectationWord ObjectDrawnExpectation();
ExpectationWord PlaneDrawnExpectation();
ExpectationWord NoWarningsExpectation();
ExpectationWord WindowIsExpectation();
ExpectationWord ClickTakenByExpectation();
ExpectationWord KeyTakenByExpectation();
ExpectationWord WheelTakenByExpectation();
ExpectationWord CursorIsExpectation();
ExpectationWord HotKeyIsExpectation();
ExpectationWord HandledByExpectation();
ExpectationWord CalledTimesExpectation();
ExpectationWord TextureBoundExpectation();
ExpectationWord FileHasExpectation();
ExpectationWord CostBelowExpectation();
ExpectationWord FeatureIsExpectation();

// What several rooms share.

// In single precision, so that a file may say 0.8 of a dataref that holds a float.
bool SameNumber(double left, double right);

// "once", "3 times".
std::string Times(int count);

// A text that is looked for on the screen, and where: the key "inside", which may be missing.
struct ScreenSearch {
  std::string text;
  std::optional<Rectangle> within;

  std::string Text() const;   // what is looked for, for a reader
  bool Succeeds() const;      // whether a text that shows has it
  std::string Found() const;  // all texts that show there, for a reader
};
Key InsideKey();
ScreenSearch ReadScreenSearch(const Entry& entry, std::string_view word);

}  // namespace sim
