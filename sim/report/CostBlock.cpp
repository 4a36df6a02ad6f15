// Mapping the block.
#include "report/CostBlock.h"

#include <sys/mman.h>

#include <cerrno>
#include <system_error>

namespace sim {

SharedCostBlock MapCostBlock() {
  void* const memory = mmap(nullptr, sizeof(CostBlock), PROT_READ | PROT_WRITE,
                            MAP_SHARED | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (memory == MAP_FAILED)
    throw std::system_error(errno, std::generic_category(), "no memory for the costs");
  return SharedCostBlock(static_cast<CostBlock*>(memory));
}

void CostBlockUnmapper::operator()(CostBlock* block) const { munmap(block, sizeof(CostBlock)); }

}  // namespace sim
