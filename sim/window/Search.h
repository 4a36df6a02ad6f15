// What the panels with long lists share: the field to search in, and the line for what went wrong.
#pragma once

#include <string>
#include <string_view>

namespace sim {

// Whether each word of the search stands in the text, whatever the case of ASCII letters.
bool Finds(std::string_view search, std::string_view text);

// True when the user changed it.
bool DrawSearch(const char* panel, std::string& search);

// Nothing for an empty one.
void DrawProblem(const std::string& problem);

}  // namespace sim
