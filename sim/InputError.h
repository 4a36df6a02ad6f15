// What is wrong with the command line or a file that it names, as one line for the user.
#pragma once

#include <stdexcept>

namespace sim {

struct InputError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

}  // namespace sim
