// What a test asks of an X server that xdotool cannot.
#pragma once

#include <string>

// The window that is shown on a display, where there is but one; 0 for none.
unsigned long FindShownWindow(const std::string& display);

// Asks it to close, as its close button does.
void PressCloseButton(const std::string& display);
