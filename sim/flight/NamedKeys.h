// Keys of the keyboard in flight files.
#pragma once

#include <string_view>

#include "flight/Entry.h"
#include "host/Keyboard.h"

namespace sim {

// The key whose name stands behind a word. Throws InputError for a name that there is not.
const NamedKey& NamedKeyOf(const Entry& entry, std::string_view word);

}  // namespace sim
