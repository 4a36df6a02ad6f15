// The plugins that a search may leave out of a flight.
#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace sim {

struct Candidate {
  std::filesystem::path place;  // its folder or loose module, from the simulator folder on if it is in it
  std::string signature;        // empty when the flight did not come so far as to know it
};

// Those of a flight over this simulator folder, by its report, of the aircraft and the scenery too, and those
// in Resources/plugins that it did not come to; without those that were passed over, and those that a pattern
// says to keep.
std::vector<Candidate> CandidatesOf(const std::filesystem::path& systemFolder, const nlohmann::json& report,
                                    const std::vector<std::string>& keep);

// Its signature, or else its place.
std::string NameOf(const Candidate& candidate);

}  // namespace sim
