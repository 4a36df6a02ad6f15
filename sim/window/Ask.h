// How the panels ask for a step.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace sim {

// Asks for it, as Do does. `problem`, which must stay, becomes empty, or says why it was not carried out;
// also of what is no step, as a name that is no UTF-8.
void Ask(nlohmann::json step, std::string& problem);

}  // namespace sim
