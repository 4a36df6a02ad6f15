// Other allocations, made between those of a contender, so that what it keeps lies as scattered in memory as
// it does in a program that has run for a while: in a fresh heap everything that is made in a row lies in a
// row.
#pragma once

#include <memory>
#include <random>
#include <vector>

namespace bench {

class UsedHeap {
 public:
  // One allocation of 16 to 512 bytes, kept until the end of the scope.
  void Allocate() { others.push_back(std::make_unique<char[]>(sizes(random))); }

 private:
  std::mt19937 random{1};
  std::uniform_int_distribution<std::size_t> sizes{16, 512};
  std::vector<std::unique_ptr<char[]>> others;
};

}  // namespace bench
