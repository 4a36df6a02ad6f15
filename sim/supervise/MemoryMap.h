// Which file's code or data lies at an address of the flying process.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

struct MappedRange {
  std::uintptr_t begin = 0;
  std::uintptr_t end = 0;
  bool isReadable = false;
  bool isWritable = false;
  bool isExecutable = false;
  std::string name;  // a file, "[stack]" or the like, or empty

  bool Holds(std::uintptr_t address) const { return address >= begin && address < end; }
  bool IsFile() const { return name.starts_with('/'); }
};

// The memory of a process, by address.
class MemoryMap {
 public:
  // From the text of /proc/PID/maps.
  explicit MemoryMap(std::string_view text);

  // What the kernel says of a process; empty when it says nothing.
  static MemoryMap Of(pid_t process);

  // The range that holds an address; null when none does.
  const MappedRange* Find(std::uintptr_t address) const;
  // The first range that begins above an address; null when none does.
  const MappedRange* FindAbove(std::uintptr_t address) const;
  // Where a file's first range begins; 0 when it has none.
  std::uintptr_t BeginOf(std::string_view file) const;

 private:
  std::vector<MappedRange> ranges;  // in ascending order
};

}  // namespace sim
