#include "supervise/MemoryMap.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>

namespace sim {
namespace {

// Takes the text up to a separator, and the separators that follow, away from the front.
std::string_view TakeUpTo(std::string_view& text, char separator) {
  const std::size_t end = std::min(text.find(separator), text.size());
  const std::string_view taken = text.substr(0, end);
  text.remove_prefix(std::min(text.find_first_not_of(separator, end), text.size()));
  return taken;
}

std::uintptr_t Hexadecimal(std::string_view digits) {
  std::uintptr_t value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  return value;
}

// 7f12c0a00000-7f12c0a02000 r-xp 00001000 fe:01 393230       /usr/lib/libc.so.6
MappedRange ReadRange(std::string_view line) {
  MappedRange range;
  range.begin = Hexadecimal(TakeUpTo(line, '-'));
  range.end = Hexadecimal(TakeUpTo(line, ' '));
  const std::string_view permissions = TakeUpTo(line, ' ');
  range.isReadable = permissions.starts_with('r');
  range.isWritable = permissions.substr(1).starts_with('w');
  range.isExecutable = permissions.substr(2).starts_with('x');
  for (int skipped = 0; skipped < 3; ++skipped) TakeUpTo(line, ' ');  // offset, device, file number
  range.name = line;
  return range;
}

}  // namespace

MemoryMap::MemoryMap(std::string_view text) {
  while (!text.empty()) {
    const std::string_view line = TakeUpTo(text, '\n');
    if (line.size() > std::string_view("0-1 rwxp").size()) ranges.push_back(ReadRange(line));
  }
}

MemoryMap MemoryMap::Of(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/maps");
  return MemoryMap(std::string(std::istreambuf_iterator<char>(file), {}));
}

const MappedRange* MemoryMap::Find(std::uintptr_t address) const {
  const auto found =
      std::ranges::find_if(ranges, [&](const MappedRange& range) { return range.Holds(address); });
  return found != ranges.end() ? &*found : nullptr;
}

const MappedRange* MemoryMap::FindAbove(std::uintptr_t address) const {
  const auto found =
      std::ranges::find_if(ranges, [&](const MappedRange& range) { return range.begin > address; });
  return found != ranges.end() ? &*found : nullptr;
}

std::uintptr_t MemoryMap::BeginOf(std::string_view file) const {
  const auto found =
      std::ranges::find_if(ranges, [&](const MappedRange& range) { return range.name == file; });
  return found != ranges.end() ? found->begin : 0;
}

}  // namespace sim
