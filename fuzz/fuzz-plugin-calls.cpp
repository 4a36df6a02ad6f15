// Lets seven and more plugins, real modules, do what the fuzzer's bytes say: register everything, use every
// handle, and throw, from inside every callback and every service of the host. The sanitizers watch; what
// must hold is checked by calls/. At its end it says how many calls into the library it has made.
#include <cstdio>
#include <cstdlib>

#include "calls/Script.h"

extern "C" int LLVMFuzzerInitialize(int* /*argumentCount*/, char*** /*arguments*/) {
  return std::atexit([] {
    std::fprintf(stderr, "%llu operations\n", static_cast<unsigned long long>(calls::Operations()));
  });
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  calls::Run(data, size);
  return 0;
}
