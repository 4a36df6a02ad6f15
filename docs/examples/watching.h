/* watching.h: see watching.c. */
#ifndef WATCHING_H
#define WATCHING_H

/* From here on a crash names its plugin, and calls into plugins are timed. */
void WatchPlugins(void);

/* Prints the seconds spent in each kind of call, calls that they led to included. */
void PrintCosts(void);

#endif
