// How plugins are named to those who ask at a bad time: a signal handler or another thread. Texts are kept
// for the life of the process and the table of them never moves, so that they can be read without a lock.
#pragma once

#include <string_view>

#include "VYRADefs.h"

struct VYRAIdentity {
  const char* name = "";
  const char* signature = "";
  const char* path = "";
};

// Keeps a text for good. The same text is kept once, so a plugin that is loaded again takes no more memory.
const char* VYRAIdentityKeepText(std::string_view text);

// Sets how a plugin is named from now on, until its ID is given to another.
void VYRAIdentitySet(VYRAPluginID plugin, std::string_view name, std::string_view signature,
                     std::string_view path);

// How often any plugin's naming was set: who keeps an identity looks here whether it still holds.
[[gnu::visibility("hidden")]] extern unsigned gIdentityChanges;

// How a plugin is named; empty texts for one that never was. Safe in signal handlers and other threads.
VYRAIdentity VYRAIdentityOf(VYRAPluginID plugin);
