// SIGINT and SIGTERM ask for the end of the flight; the simulator then ends it in order.
#pragma once

namespace sim {

// From now on, in this process.
void HandleEndRequests();

// The signal that asked for the end; 0 when none has.
int EndRequestedBy();

}  // namespace sim
