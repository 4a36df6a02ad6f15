// A look at a module's file before the system's loader is let at it: the loader waits for ever at a named
// pipe, and a library that was cut short, as a broken download leaves it, ends the process while it is
// mapped.
#pragma once

#include <string>

// Which file it is, whatever name led to it.
struct VYRAFileIdentity {
  unsigned long long device = 0;
  unsigned long long inode = 0;
  bool operator==(const VYRAFileIdentity&) const = default;
};

struct VYRAModuleFile {
  bool isReadable = false;
  // Why the loader must not see the file, or empty. What else may be wrong with it the loader finds itself,
  // and says in words that people know.
  std::string danger;
  VYRAFileIdentity identity;
};

// Opens a file for reading, looks at it, and closes it again.
VYRAModuleFile VYRALookAtModuleFile(const char* path);
