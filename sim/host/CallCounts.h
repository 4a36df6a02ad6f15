// How often each plugin was called, for expectations that ask.
#pragma once

#include <string>
#include <string_view>

namespace sim {

// To be called before the flight: from its start on, calls other than those of accessors are counted. Without
// it nothing is counted, and nothing is paid.
void CountCalls();

// Begins to count, if that was asked for.
void StartCallCounts();

// So far, of the plugin with this signature, for a kind of call by its name.
int CallCount(const std::string& signature, std::string_view kind);

}  // namespace sim
