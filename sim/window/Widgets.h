// Small things that several panels draw with Dear ImGui.
#pragma once

#include <imgui.h>

#include <cstddef>
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

// The next cell of a table.
void TextCell(const std::string& text);

// Draws those rows of many that can be seen, by their numbers from 0 on.
template <class DrawRow>
void DrawVisibleRows(std::size_t count, const DrawRow& drawRow) {
  ImGuiListClipper clipper;
  clipper.Begin(static_cast<int>(count));
  while (clipper.Step())
    for (int row = clipper.DisplayStart; row < clipper.DisplayEnd; ++row)
      drawRow(static_cast<std::size_t>(row));
}

// The next cell of a table, its text against the right edge.
void NumberCell(const std::string& text);

}  // namespace sim
