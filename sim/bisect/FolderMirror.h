// A copy of a simulator folder, made of links, in which some of what lies there is missing.
#pragma once

#include <filesystem>
#include <set>

namespace sim {

// Makes the folder `mirror`, in place of what was there: it has what `original` has, but for the files and
// folders `leftOut`, whose paths are relative to it. Throws std::filesystem::filesystem_error.
void MirrorFolder(const std::filesystem::path& original, const std::filesystem::path& mirror,
                  const std::set<std::filesystem::path>& leftOut);

}  // namespace sim
