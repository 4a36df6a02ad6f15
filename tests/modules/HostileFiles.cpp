#include "HostileFiles.h"

#include <elf.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstddef>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

constexpr uid_t kNobody = 65534;

void Require(bool isDone, const std::string& path) {
  if (!isDone) throw std::runtime_error("The file could not be made: " + path);
}

fs::path First(const std::string& path) { return fs::path(path).parent_path() / "0-first.vyp"; }

// A good library, but for one byte of its header.
void MakeWithHeaderByte(const std::string& path, std::size_t offset, unsigned char value) {
  fs::copy_file(First(path), path);
  std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
  file.seekp(static_cast<std::streamoff>(offset));
  file.put(static_cast<char>(value));
}

}  // namespace

void MakeEmpty(const std::string& path) { std::ofstream file(path); }
void MakeText(const std::string& path) { std::ofstream(path) << "This is no library.\n"; }
void MakeFolder(const std::string& path) { fs::create_directory(path); }
void MakeDanglingLink(const std::string& path) { fs::create_symlink(path + ".nowhere", path); }
void MakeLinkToItself(const std::string& path) { fs::create_symlink(path, path); }
void MakeLinkToADevice(const std::string& path) { fs::create_symlink("/dev/zero", path); }
void MakeLinkToTheFirst(const std::string& path) { fs::create_symlink(First(path), path); }
void MakeHardLinkToTheFirst(const std::string& path) { fs::create_hard_link(First(path), path); }
void MakePipe(const std::string& path) { Require(mkfifo(path.c_str(), 0600) == 0, path); }

void MakeSocket(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  Require(path.size() < sizeof(address.sun_path), path);
  std::memcpy(address.sun_path, path.c_str(), path.size());
  const int file = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const int result = bind(file, reinterpret_cast<const sockaddr*>(&address), sizeof(address));
  close(file);
  Require(result == 0, path);
}

void MakeUnreadable(const std::string& path) {
  fs::copy_file(First(path), path);
  fs::permissions(path, fs::perms::none);
}

void MakeForOtherProcessor(const std::string& path) {
  MakeWithHeaderByte(path, offsetof(Elf64_Ehdr, e_machine), EM_S390);
}
void MakeForOtherWordSize(const std::string& path) { MakeWithHeaderByte(path, EI_CLASS, ELFCLASS32); }
void MakeForOtherByteOrder(const std::string& path) { MakeWithHeaderByte(path, EI_DATA, ELFDATA2MSB); }

void MakeHeaderAlone(const std::string& path) {
  fs::copy_file(First(path), path);
  fs::resize_file(path, sizeof(Elf64_Ehdr));
}

void MakeBeginningAlone(const std::string& path) {
  fs::copy_file(First(path), path);
  fs::resize_file(path, 5000);  // ends in the first page of its code
}

void MakeExecutable(const std::string& path) { fs::copy_file("/bin/true", path); }

void MakeThousandsOfEntries(const std::string& path) {
  const fs::path folder = fs::path(path).parent_path();
  for (int i = 0; i < 2500; ++i) {
    std::ofstream(folder / ("entry-" + std::to_string(i) + ".txt")) << i;
    fs::create_directory(folder / ("folder-" + std::to_string(i)));
  }
}

// Which leaves the process the way back: its real and its saved user stay.
StOrdinaryUser::StOrdinaryUser() {
  if (geteuid() == 0 && seteuid(kNobody) != 0) return;
}
StOrdinaryUser::~StOrdinaryUser() {
  if (getuid() == 0 && seteuid(0) != 0) std::terminate();
}
bool StOrdinaryUser::IsOrdinary() const { return geteuid() != 0; }
