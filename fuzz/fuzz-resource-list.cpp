// Plays the fuzzer's bytes on the callback list and on a model of its rules: see ResourceListScript.h.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "ResourceListScript.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string failure = ResourceListScript<VYRAStackedResource_t>({data, size}).Run();
  if (failure.empty()) failure = ResourceListScript<VYRAResource_t>({data, size}).Run();
  if (failure.empty()) return 0;
  std::fprintf(stderr, "%s\n", failure.c_str());
  std::abort();
}
