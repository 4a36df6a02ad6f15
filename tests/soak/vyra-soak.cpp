#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "Soak.h"

namespace soak {
namespace {
int gFaults = 0;
}

void Fault(const char* format, ...) {
  constexpr int kMostPrinted = 20;
  if (++gFaults > kMostPrinted) return;
  std::fputs("FAULT: ", stdout);
  std::va_list values;
  va_start(values, format);
  std::vprintf(format, values);
  va_end(values);
  std::fputs("\n", stdout);
}

int CountFaults() { return gFaults; }

}  // namespace soak

int main(int count, char** arguments) {
  const std::string part = count > 1 ? arguments[1] : "";
  if (part == "reloads" && count == 4) {
    soak::SoakReloads(std::atoi(arguments[2]), std::atoi(arguments[3]));
  } else if (part == "days" && count == 3) {
    soak::SoakDays(std::atof(arguments[2]));
  } else {
    std::fputs("usage: vyra-soak reloads RELOADS PLUGINS\n       vyra-soak days DAYS\n", stderr);
    return 2;
  }
  std::printf("%d faults\n", soak::CountFaults());
  return soak::CountFaults() == 0 ? 0 : 1;
}
