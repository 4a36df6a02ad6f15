#include "VYRAModuleLoaderFile.h"

#include <elf.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <optional>

namespace {

constexpr std::uint64_t kPageSize = 4096;
constexpr std::size_t kFirstRead = 1024;  // as a rule the header, and all that it lists

// Segments of a file that the loader maps, in so far as they matter here.
struct ProgramHeaders {
  std::uint64_t offset;
  std::size_t count;
};

// The place of the segments' list, or nothing for a file that the loader turns down by its header.
std::optional<ProgramHeaders> FindProgramHeaders(const unsigned char* start, std::size_t size) {
  Elf64_Ehdr header;
  if (size < sizeof(header)) return std::nullopt;
  std::memcpy(&header, start, sizeof(header));
  if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 || header.e_ident[EI_CLASS] != ELFCLASS64 ||
      header.e_phentsize != sizeof(Elf64_Phdr)) {
    return std::nullopt;
  }
  return ProgramHeaders{header.e_phoff, header.e_phnum};
}

// Whether the loader, which maps whole pages of the file, would find some of them behind the file's end.
bool ReachesBeyond(const Elf64_Phdr& segment, std::uint64_t fileSize) {
  if (segment.p_type != PT_LOAD) return false;
  const bool takesFromFile = segment.p_filesz > 0 || segment.p_vaddr % kPageSize != 0;
  return takesFromFile && (segment.p_offset > fileSize || segment.p_filesz > fileSize - segment.p_offset);
}

// Bytes of a file: those at its beginning are read once.
class Bytes {
 public:
  // cppcheck-suppress uninitMemberVar ; no more of it is looked at than was read
  explicit Bytes(int openFile) : file(openFile), size(ReadAt(0, first, sizeof(first))) {}

  const unsigned char* First() const { return first; }
  std::size_t FirstSize() const { return size; }

  // False where the file ends before.
  bool Copy(std::uint64_t offset, void* destination, std::size_t count) const {
    if (offset > INT64_MAX) return false;
    if (offset > size || count > size - offset) return ReadAt(offset, destination, count) == count;
    std::memcpy(destination, first + offset, count);
    return true;
  }

 private:
  std::size_t ReadAt(std::uint64_t offset, void* destination, std::size_t count) const {
    const ssize_t read = pread(file, destination, count, static_cast<off_t>(offset));
    return read > 0 ? static_cast<std::size_t>(read) : 0;
  }

  int file;
  unsigned char first[kFirstRead];
  std::size_t size;
};

bool IsCutShort(int file, std::uint64_t fileSize) {
  const Bytes bytes(file);
  const std::optional<ProgramHeaders> headers = FindProgramHeaders(bytes.First(), bytes.FirstSize());
  if (!headers) return false;
  for (std::size_t i = 0; i < headers->count; ++i) {
    Elf64_Phdr segment;
    if (!bytes.Copy(headers->offset + i * sizeof(segment), &segment, sizeof(segment))) return false;
    if (ReachesBeyond(segment, fileSize)) return true;
  }
  return false;
}

std::string DangerOf(int file, const struct stat& status, const std::string& path) {
  if (S_ISDIR(status.st_mode)) return {};  // harmless, and the loader has a word for it
  if (!S_ISREG(status.st_mode)) return path + ": not a regular file";
  const bool isCutShort = IsCutShort(file, static_cast<std::uint64_t>(status.st_size));
  return isCutShort ? path + ": file too short for its segments" : std::string();
}

}  // namespace

VYRAModuleFile VYRALookAtModuleFile(const char* path) {
  // Without waiting for a writer, should it be a named pipe.
  const int file = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (file < 0) return {};
  VYRAModuleFile module;
  module.isReadable = true;
  struct stat status;
  if (fstat(file, &status) == 0) {
    module.identity = {status.st_dev, status.st_ino};
    module.danger = DangerOf(file, status, path);
  }
  close(file);
  return module;
}
