// Paths on their way between the library, which keeps them as UTF-8, and the dispatched plugin, which may
// have them in the host's older encoding.
#pragma once

#include <cstring>
#include <string>
#include <string_view>

#include "VYRALoaderFeatures.h"
#include "VYRAStrings.h"

// The size of the buffers in which plugins receive a path.
inline constexpr std::size_t kPathBufferSize = 512;

// The size of the buffers in which the library itself asks the host for a path: above what the services
// promise to stay below.
inline constexpr std::size_t kHostPathSize = 4096;

inline std::string VYRAPathFromPlugin(std::string_view path) {
  return VYRANeedPathConvert() ? VYRAOldToUTF8(path) : std::string(path);
}

inline std::string VYRAPathToPlugin(std::string_view path) {
  return VYRANeedPathConvert() ? VYRAUTF8ToOld(path) : std::string(path);
}

// Converts what the host wrote into a plugin's buffer where it stands.
inline void VYRAPathToPluginInPlace(char* path) {
  if (!VYRANeedPathConvert()) return;
  strcpytrunc(path, VYRAUTF8ToOld({path, strnlen(path, kPathBufferSize)}), kPathBufferSize);
}
