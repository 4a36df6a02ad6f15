// A run: the bytes are turned into calls of the host and of its plugins, from the start of the library to its
// end. A fault ends the process.
#pragma once

#include <cstddef>
#include <cstdint>

namespace calls {

void Run(const std::uint8_t* data, std::size_t size);

// How many calls into the library the runs of this process have made so far.
std::uint64_t Operations();

}  // namespace calls
