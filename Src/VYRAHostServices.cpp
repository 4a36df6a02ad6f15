#include "VYRAHostServices.h"

#include <cstdarg>
#include <cstdio>

VYRAHostServices* gHooks = nullptr;
void* gSelf = nullptr;

int VYRAInitialized(void) { return gHooks != nullptr ? 1 : 0; }

void VYRADebugString(const char* text) {
  if (gHooks != nullptr && text != nullptr) gHooks->DebugString(text);
}

int VYRA_dprintf(const char* format, ...) {
  static char buffer[8192];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(buffer, sizeof(buffer), format, arguments);
  va_end(arguments);
  VYRADebugString(buffer);
  return 0;
}
