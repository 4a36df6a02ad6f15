// The rooms of the expectations, a file each. A new one is a file, and a row here and in the table in
// Expectations.cpp.
#pragma once

#include "flight/Vocabulary.h"

namespace sim {

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

// What several rooms share.

// In single precision, so that a file may say 0.8 of a dataref that holds a float.
bool SameNumber(double left, double right);

// "once", "3 times".
std::string Times(int count);

// Whether a text that was drawn in this frame has this text in it, and all that were drawn, for a reader.
bool ScreenHas(const std::string& text);
std::string TextsOnScreen();

}  // namespace sim
