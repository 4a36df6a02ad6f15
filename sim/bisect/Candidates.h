// The plugins that a search may leave out of a flight.
#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace sim {

struct Candidate {
  std::filesystem::path place;  // its folder or loose module, relative to the simulator folder
  std::string signature;        // empty when the flight did not come so far as to know it
};

// Those of a flight over this simulator folder, by its report, of the aircraft and the scenery too, and those
// in Resources/plugins that it did not come to; without those that a pattern (of a shell, for the signature
// or the place) says to keep.
std::vector<Candidate> CandidatesOf(const std::filesystem::path& systemFolder, const nlohmann::json& report,
                                    const std::vector<std::string>& keep);

// Its signature, or else its place.
std::string NameOf(const Candidate& candidate);

}  // namespace sim
