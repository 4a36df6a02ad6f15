#include "supervise/EndRequest.h"

#include <csignal>

#include <atomic>

namespace sim {
namespace {

std::atomic<int> gEndRequest = 0;
static_assert(std::atomic<int>::is_always_lock_free);

}  // namespace

void HandleEndRequests() {
  struct sigaction action = {};
  action.sa_handler = [](int signal) { gEndRequest = signal; };
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  sigaction(SIGINT, &action, nullptr);
  sigaction(SIGTERM, &action, nullptr);
}

int EndRequestedBy() { return gEndRequest; }

}  // namespace sim
