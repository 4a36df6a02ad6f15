// A host's round over plugins that have one of everything, in which each call that such a plugin can get
// while it is enabled comes once.
#pragma once

#include "plugins/Everything.h"

// Makes gHost answer as the plugins need it, and keep books.
void PrepareHostForRounds();

// What the plugins took from the host and what it got back.
struct HostBooks {
  int objectsOut = 0;   // loaded and not released
  int commandsOut = 0;  // begun and not ended
  int probes = 0;       // made, since the beginning
};
extern HostBooks gBooks;

// Flies a round at a simulation time in seconds. An exception out of the library ends the one call of it, as
// it does in a host. How many came.
int FlyRound(float now);

// How often each call came to a plugin, which is enabled, since the last time that this was asked.
Tally TallyOf(int plugin);

// Whether anything in the library still answers to what users and simulators do.
bool AnybodyAnswers(int places);
