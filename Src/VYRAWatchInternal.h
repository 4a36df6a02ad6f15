// Telling the watcher of calls into plugins.
#pragma once

#include "VYRALoaderRunningCalls.h"

// Which setting of the watcher is in force; 0: nobody watches.
[[gnu::visibility("hidden")]] extern unsigned gWatch;

// Tells the watcher of the begin of a call; the setting of the watcher that was told, or 0 when there was
// nothing to tell. The end is told to that setting alone.
unsigned VYRAWatchTellBegin(VYRACallWord call);
void VYRAWatchTellEnd(VYRACallWord call, unsigned told);
