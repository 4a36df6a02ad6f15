// vyra-soak: what must hold not once but for a long time. Each part prints its figures and counts what does
// not hold.
#pragma once

namespace soak {

// The faults found so far. Prints one as it is found, and no more than the first twenty.
[[gnu::format(printf, 1, 2)]] void Fault(const char* format, ...);
int CountFaults();

// Reloads plugins that have one of everything and flies a round after each reload. Nothing that the process
// holds may grow after the first hundred reloads, or after the first tenth when there are fewer than a
// thousand.
void SoakReloads(int reloads, int plugins);

// Flies so many days of frames at 60 Hz, and holds clocks, intervals and counters against exact ones.
void SoakDays(double days);

}  // namespace soak
