// The thin layer over the operating system: opening plugin modules, finding their functions, listing
// folders, and thread-specific storage. It knows nothing of plugins.
#pragma once

#include <pthread.h>

#include <string>
#include <vector>

struct VYRALoadedDLL {
  void* handle = nullptr;
  std::string error;  // in the system's words; empty when there is a handle
};

// Opens a module with all its symbols bound. Its file must have been looked at: VYRAModuleLoaderFile.h.
VYRALoadedDLL VYRALoadDLL(const char* path);

// The handle of a module whose constructor threw: the system keeps it open all the same. Null when it does
// not.
void* VYRAHandleOfInterruptedOpening(const char* path);

// Writes why a module or a symbol is not there to the log: "dlerror:" and the text.
void VYRALogLoadError(const std::string& error);

// A symbol's address, or null; with `report`, a missing symbol writes a "dlerror:" line to the log. Not
// to be confused with the one-argument function of the interface, which asks the host.
void* VYRAFindSymbol(void* handle, const char* name, int report);

void VYRAUnloadDLL(void* handle);

// The path with which an open module was opened.
std::string VYRAModulePath(void* handle);

// Appends the names in a folder that match a pattern to `out`, in the order of the system, without "." and
// "..". "*.*" matches every name; any other pattern matches as a suffix, without its leading "*" and
// ignoring case. "DIR" also matches folders. A folder that cannot be read has no names.
void VYRAFetchDirectoryContents(const char* folder, const char* pattern, std::vector<std::string>& out);

// Thread-specific storage for code that shares this layer. The library itself has one thread and uses none.
pthread_key_t VYRAAllocTLS();
void* VYRAGetTLS(pthread_key_t key);
void VYRASetTLS(pthread_key_t key, void* value);
