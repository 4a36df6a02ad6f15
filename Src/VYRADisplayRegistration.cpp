#include "VYRADisplayRegistration.h"

// The leak checker's own function, where one is part of the program.
// NOLINTNEXTLINE(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" [[gnu::weak]] void __lsan_ignore_object(const void* object);

void VYRADisplayAbandon(const void* record) {
  if (__lsan_ignore_object != nullptr) __lsan_ignore_object(record);
}
