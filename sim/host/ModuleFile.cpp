#include "host/ModuleFile.h"

#include <cxxabi.h>
#include <fcntl.h>
#include <fmt/core.h>
#include <gelf.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <optional>
#include <string_view>

namespace sim {
namespace {

constexpr const char* kStart = "VyPluginStart";

// A file that is open as an ELF file; the record is null when it cannot be read as one.
class ElfFile {
 public:
  explicit ElfFile(const std::string& path) {
    if (struct stat status{}; stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return;
    descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0 || elf_version(EV_CURRENT) == EV_NONE) return;
    elf = elf_begin(descriptor, ELF_C_READ, nullptr);
    if (elf != nullptr && elf_kind(elf) != ELF_K_ELF) {
      elf_end(elf);
      elf = nullptr;
    }
  }
  ~ElfFile() {
    if (elf != nullptr) elf_end(elf);
    if (descriptor >= 0) close(descriptor);
  }
  ElfFile(const ElfFile&) = delete;
  ElfFile& operator=(const ElfFile&) = delete;

  Elf* Get() const { return elf; }

  std::optional<GElf_Ehdr> Header() const {
    GElf_Ehdr header;
    if (elf == nullptr || gelf_getehdr(elf, &header) == nullptr) return std::nullopt;
    return header;
  }

 private:
  int descriptor = -1;
  Elf* elf = nullptr;
};

std::string ProcessorName(unsigned machine) {
  switch (machine) {
    case EM_X86_64:
      return "x86-64";
    case EM_AARCH64:
      return "AArch64";
    case EM_ARM:
      return "ARM";
    case EM_RISCV:
      return "RISC-V";
    case EM_PPC64:
      return "PowerPC";
    case EM_S390:
      return "S/390";
    default:
      return fmt::format("ELF machine {}", machine);
  }
}

unsigned OwnMachine() {
  const std::optional<GElf_Ehdr> header = ElfFile("/proc/self/exe").Header();
  return header ? header->e_machine : EM_NONE;
}

// How long the file must be for its segments to be in it.
std::uint64_t NeededSize(Elf* elf) {
  std::size_t count = 0;
  if (elf_getphdrnum(elf, &count) != 0) return 0;
  std::uint64_t needed = 0;
  for (std::size_t index = 0; index < count; ++index) {
    GElf_Phdr segment;
    if (gelf_getphdr(elf, static_cast<int>(index), &segment) == nullptr) return UINT64_MAX;
    if (segment.p_type == PT_LOAD) needed = std::max(needed, segment.p_offset + segment.p_filesz);
  }
  return needed;
}

std::string ElfFault(const ElfFile& file, std::uint64_t size) {
  const std::optional<GElf_Ehdr> header = file.Header();
  if (!header) return fmt::format("it is cut short, at {} bytes", size);
  if (header->e_ident[EI_CLASS] != ELFCLASS64) return "it is a 32-bit module";
  if (const unsigned own = OwnMachine(); header->e_machine != own)
    return fmt::format("it is built for another processor: {}, not {}", ProcessorName(header->e_machine),
                       ProcessorName(own));
  if (header->e_type != ET_DYN) return "it is no shared library";
  const bool hasSegments = header->e_phoff + std::uint64_t{header->e_phnum} * header->e_phentsize <= size;
  if (!hasSegments || NeededSize(file.Get()) > size) return fmt::format("it is cut short, at {} bytes", size);
  return "";
}

// Also one that ends within its header.
bool BeginsAsElf(const std::string& path) {
  std::array<char, SELFMAG> magic{};
  std::ifstream(path).read(magic.data(), magic.size());
  return std::memcmp(magic.data(), ELFMAG, SELFMAG) == 0;
}

bool IsMangledStart(const char* name) {
  int status = 0;
  const std::unique_ptr<char, void (*)(void*)> text(abi::__cxa_demangle(name, nullptr, nullptr, &status),
                                                    std::free);
  if (text == nullptr) return false;
  const std::string_view whole = text.get();
  const std::string_view function = whole.substr(0, whole.find('('));
  return function == kStart || function.ends_with(std::string("::") + kStart);
}

// What one symbol says of the start function.
StartFunction StartOf(const GElf_Sym& symbol, const char* name) {
  if (name == nullptr || symbol.st_shndx == SHN_UNDEF || GELF_ST_TYPE(symbol.st_info) != STT_FUNC)
    return StartFunction::None;
  if (std::strcmp(name, kStart) != 0)
    return IsMangledStart(name) ? StartFunction::Mangled : StartFunction::None;
  const auto visibility = GELF_ST_VISIBILITY(symbol.st_other);
  const bool isExported =
      GELF_ST_BIND(symbol.st_info) != STB_LOCAL && (visibility == STV_DEFAULT || visibility == STV_PROTECTED);
  return isExported ? StartFunction::Exported : StartFunction::Hidden;
}

// The best of a table's symbols, the first of the enumeration being the best.
StartFunction StartIn(Elf* elf, Elf_Scn* section, const GElf_Shdr& header) {
  StartFunction best = StartFunction::None;
  Elf_Data* const data = elf_getdata(section, nullptr);
  if (data == nullptr || header.sh_entsize == 0) return best;
  const std::size_t count = data->d_size / header.sh_entsize;
  for (std::size_t index = 0; index < count; ++index) {
    GElf_Sym symbol;
    if (gelf_getsym(data, static_cast<int>(index), &symbol) == nullptr) break;
    best = std::min(best, StartOf(symbol, elf_strptr(elf, header.sh_link, symbol.st_name)));
  }
  return best;
}

}  // namespace

std::string FileFault(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return fmt::format("it cannot be read: {}", std::strerror(errno));
  if (!S_ISREG(status.st_mode)) return "it is no regular file";
  if (access(path.c_str(), R_OK) != 0) return fmt::format("it cannot be read: {}", std::strerror(errno));
  if (status.st_size == 0) return "it is empty";
  const ElfFile file(path);
  if (file.Get() == nullptr)
    return BeginsAsElf(path) ? fmt::format("it is cut short, at {} bytes", status.st_size)
                             : "it is no shared library";
  return ElfFault(file, static_cast<std::uint64_t>(status.st_size));
}

StartFunction FindStartFunction(const std::string& path) {
  const ElfFile file(path);
  StartFunction best = StartFunction::None;
  if (file.Get() == nullptr) return best;
  Elf_Scn* section = nullptr;
  while ((section = elf_nextscn(file.Get(), section)) != nullptr) {
    GElf_Shdr header;
    if (gelf_getshdr(section, &header) == nullptr) break;
    if (header.sh_type == SHT_DYNSYM || header.sh_type == SHT_SYMTAB)
      best = std::min(best, StartIn(file.Get(), section, header));
  }
  return best;
}

}  // namespace sim
