// Small things that several panels draw with Dear ImGui.
#pragma once

#include <imgui.h>

#include <string>

#include "report/Clock.h"
#include "window/Look.h"

namespace sim {

inline double Milliseconds(Nanoseconds time) { return static_cast<double>(time) / 1e6; }

inline ImVec4 Shade(const Colour& colour) { return {colour.red, colour.green, colour.blue, 1.0F}; }

// In one colour. Nothing in the text is a format.
void ColouredText(const ImVec4& colour, const std::string& text);
void FaintText(const std::string& text);

// A small square, with what comes next beside it.
void Swatch(ImU32 colour);

// The next cell of a table, its text against the right edge.
void NumberCell(const std::string& text);

}  // namespace sim
