// The buttons that plugins hold.
#pragma once

#include <vector>

// Pressed and not yet released, in the order of pressing; a button stands here once for each press.
extern std::vector<int> gButtons;

// Tells the host once per frame of all buttons that are held.
void VYRADoRepeatedButtons();
