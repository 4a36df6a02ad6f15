// The two halves of the plugin that has one of everything: what it registers, and the fault that it commits.
#pragma once

#include "Everything.h"

extern char gName[64];  // of its folder, or of its loose file without the ending

// The buffers of a start, into which the texts go afterwards; a fault that wants others takes them away.
struct StartTexts {
  char* name = nullptr;
  char* signature = nullptr;
  char* description = nullptr;
};
extern StartTexts gStartTexts;

void RegisterEverything();

// As far as there is a function for it.
void UnregisterEverything();

// Does at a call what the plugin's name says, and returns what the plugin is to return.
int CommitFault(Call call, int result);
