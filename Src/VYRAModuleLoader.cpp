#include "VYRAModuleLoader.h"

#include <dirent.h>
#include <dlfcn.h>
#include <link.h>
#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

#include "VYRAHostServices.h"
#include "VYRAStrings.h"

namespace {

std::string SystemError() {
  const char* error = dlerror();
  return error != nullptr ? error : "";
}

bool suffix_matches(std::string_view name, std::string_view pattern) {
  if (pattern == "*.*") return true;
  if (pattern.starts_with('*')) pattern.remove_prefix(1);
  if (name.size() < pattern.size()) return false;
  const auto sameLetter = [](char left, char right) {
    return std::toupper(static_cast<unsigned char>(left)) == std::toupper(static_cast<unsigned char>(right));
  };
  return std::equal(pattern.begin(), pattern.end(), name.end() - static_cast<std::ptrdiff_t>(pattern.size()),
                    sameLetter);
}

// Whether folder/name is a folder. One whose status cannot be read is reported on standard output and
// counts as none: it concerns whoever set the machine up, not the reader of the host's log.
bool IsFolder(const std::string& folder, const char* name) {
  struct stat status;
  if (stat((folder + gDirSeparator + name).c_str(), &status) != 0) {
    std::printf("name %s, errno %d\n", name, errno);
    return false;
  }
  return S_ISDIR(status.st_mode);
}

// Lets the exception of a module's constructor through. It is declared that there is none, so this has a
// frame of its own, without anything that would have to be destroyed on the way and so without a handler's
// table.
[[gnu::noinline]] void* Open(const char* path) { return dlopen(path, RTLD_NOW); }

}  // namespace

VYRALoadedDLL VYRALoadDLL(const char* path) {
  void* const handle = Open(path);
  if (handle == nullptr) return {nullptr, SystemError()};
  return {handle, {}};
}

void* VYRAHandleOfInterruptedOpening(const char* path) {
  void* const handle = dlopen(path, RTLD_NOW | RTLD_NOLOAD);
  if (handle != nullptr) dlclose(handle);  // the interrupted opening counts as one already
  return handle;
}

void VYRALogLoadError(const std::string& error) { VYRA_dprintf("dlerror:%s\n", error.c_str()); }

void* VYRAFindSymbol(void* handle, const char* name, int report) {
  if (handle == nullptr) return nullptr;
  void* symbol = dlsym(handle, name);
  if (symbol == nullptr && report != 0) VYRALogLoadError(SystemError());
  return symbol;
}

void VYRAUnloadDLL(void* handle) {
  if (handle != nullptr) dlclose(handle);
}

std::string VYRAModulePath(void* handle) {
  const link_map* module = nullptr;
  if (handle == nullptr || dlinfo(handle, RTLD_DI_LINKMAP, &module) != 0) return {};
  return module->l_name;
}

void VYRAFetchDirectoryContents(const char* folder, const char* pattern, std::vector<std::string>& out) {
  const std::unique_ptr<DIR, int (*)(DIR*)> listing(opendir(folder), closedir);
  if (listing == nullptr) return;

  const bool wantsFolders = std::string_view(pattern) == "DIR";
  while (const dirent* entry = readdir(listing.get())) {
    const std::string_view name = entry->d_name;
    if (name == "." || name == "..") continue;
    // Kept: "DIR" is a suffix like any other as well, so a file whose name ends in "dir" is listed too, and
    // a folder of such a name twice. Plugin folders that rely on it keep loading.
    if (suffix_matches(name, pattern)) out.emplace_back(name);
    if (wantsFolders && IsFolder(folder, entry->d_name)) out.emplace_back(name);
  }
}

pthread_key_t VYRAAllocTLS() {
  pthread_key_t key = 0;
  pthread_key_create(&key, nullptr);
  return key;
}

void* VYRAGetTLS(pthread_key_t key) { return pthread_getspecific(key); }

void VYRASetTLS(pthread_key_t key, void* value) { pthread_setspecific(key, value); }
