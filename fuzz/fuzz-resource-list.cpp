// Plays the fuzzer's bytes on the callback list and on a model of its rules: see ResourceListScript.h.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "ResourceListScript.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string failure = ResourceListScript({data, size}).Run();
  if (failure.empty()) return 0;
  std::fprintf(stderr, "%s\n", failure.c_str());
  std::abort();
}
