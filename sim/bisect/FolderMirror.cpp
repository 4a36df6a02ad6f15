// Folders on the way to what is left out are made anew; everything else is one link.
#include "bisect/FolderMirror.h"

#include <algorithm>

namespace sim {
namespace {

namespace fs = std::filesystem;

// Whether a path lies below a folder; both are relative to the same one.
bool LiesBelow(const fs::path& path, const fs::path& folder) {
  const auto [ofFolder, ofPath] = std::mismatch(folder.begin(), folder.end(), path.begin(), path.end());
  return ofFolder == folder.end() && ofPath != path.end();
}

void Mirror(const fs::path& original, const fs::path& mirror, const fs::path& place,
            const std::set<fs::path>& leftOut) {
  fs::create_directory(mirror / place);
  for (const fs::directory_entry& entry : fs::directory_iterator(original / place)) {
    const fs::path here = place / entry.path().filename();
    if (leftOut.contains(here)) continue;
    const bool hasGap =
        std::ranges::any_of(leftOut, [&](const fs::path& path) { return LiesBelow(path, here); });
    if (hasGap)
      Mirror(original, mirror, here, leftOut);
    else
      fs::create_symlink(entry.path(), mirror / here);
  }
}

}  // namespace

void MirrorFolder(const fs::path& original, const fs::path& mirror, const std::set<fs::path>& leftOut) {
  fs::remove_all(mirror);  // of a link, this takes the link alone
  Mirror(original, mirror, {}, leftOut);
}

}  // namespace sim
