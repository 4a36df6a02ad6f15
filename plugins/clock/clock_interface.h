/*
 * What the plugin clock offers to others: its signature, its datarefs, the alarm that it shares, and its
 * messages. A plugin that talks to it includes this header and needs nothing else of it.
 */
#ifndef CLOCK_INTERFACE_H
#define CLOCK_INTERFACE_H

#define CLOCK_SIGNATURE "org.skyvora.clock"

/* Datarefs. */
#define CLOCK_TIME "clock/time_s" /* double, writable: what the clock shows, in seconds */
#define CLOCK_RATE \
  "clock/rate_ratio"                /* float, writable: how fast it goes; 1 keeps pace with the simulation */
#define CLOCK_PASSES "clock/passes" /* int: passes of phase 0 since the clock was started */
#define CLOCK_LAPS "clock/laps_s"   /* 8 floats, writable: the last lap times, the latest first */
#define CLOCK_CALLS "clock/calls"   /* 4 ints: how often each of the clock's flight loops was called */
#define CLOCK_LABEL "clock/label"   /* data, writable: the time as a text, "00:01:30" */

enum { CLOCK_LAP_COUNT = 8, CLOCK_LOOP_COUNT = 4, CLOCK_LABEL_SIZE = 16 };

/* Shared data, a double: the clock's time in seconds at which it rings; 0 for no alarm. */
#define CLOCK_ALARM "clock/alarm_s"

/* Messages. */
enum {
  CLOCK_MESSAGE_ASK_TIME = 1001, /* to the clock; param: a ClockTime, which it fills in before it returns */
  CLOCK_MESSAGE_RING = 1002      /* from the clock to every plugin, when the alarm's time has come */
};

typedef struct ClockTime {
  double seconds;
  char label[CLOCK_LABEL_SIZE];
} ClockTime;

#endif
