// Notes every call into a plugin on the board.
#pragma once

namespace sim {

// From now on; to be called once, in the flying process, before the library is started.
void NoteCalls();

}  // namespace sim
