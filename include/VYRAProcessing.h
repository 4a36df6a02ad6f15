/*
 * VYRAProcessing.h: flight loops, the callbacks in which a plugin does its periodic work.
 *
 * The host runs two passes in a frame: phase 0 and phase 1. In each, the library calls every flight loop
 * of that phase that is due, the one created last first, while its plugin is enabled. A callback may
 * create, schedule and remove flight loops, its own included; one created during a pass is first looked
 * at in the next.
 *
 * Times are single-precision, so their steps get coarser as simulation time goes on: 2 ms after 4.6 hours,
 * 16 ms after 36 and 63 ms after 146. A flight loop of every frame is then told of unsteady times, and of 0
 * in some frames, at 60 frames a second after 73 hours: do not divide by them unchecked. An interval in
 * seconds is kept to within one and a half steps and a frame; one of less than half a step comes in every
 * pass. Passes are counted exactly, but intervals in passes are kept exactly only up to pass 16,777,216
 * (after 38.8 hours at 60 frames a second with both phases), and then to within 2, 4, 8 and so on, twice as
 * much each time that the count has doubled. -1 stays the next pass of the phase.
 */
#ifndef VYRA_PROCESSING_H
#define VYRA_PROCESSING_H

#include "VYRADefs.h"

VYRA_BEGIN_DECLARATIONS

/** Simulation time in seconds, as the host tells it; 0 before the library was started. [always] */
VYRA_API float VYRAGetElapsedTime(void);

/** The number of passes run so far, of both phases. [always] */
VYRA_API int VYRAGetCycleNumber(void);

/**
 * A flight loop.
 *
 * elapsedSinceLastCall: seconds since this flight loop was last called (or created, or scheduled relative
 * to now). elapsedTime: the simulation time of this pass in seconds, the same for every flight loop of
 * the pass. counter: VYRAGetCycleNumber(). refcon: as given at creation.
 *
 * Result, the interval until the next call: more than 0, seconds; less than 0, passes (of both phases:
 * -1 is the next pass of this phase); 0, not again until it is scheduled. A call that throws counts as a
 * call; the interval stays what it was, and the pass ends.
 */
typedef float (*VYRAFlightLoop_f)(float elapsedSinceLastCall, float elapsedTime, int counter, void* refcon);

/* ---- Flight loops by handle ------------------------------------------------------------------------ */

/* A flight loop. The handle is valid until the flight loop is destroyed, or its plugin is unloaded. */
typedef struct VYRAFlightLoopRecord* VYRAFlightLoopID;

#define VYRA_FLIGHT_LOOP_PHASE_0 0 /* the pass of the host's event 0 */
#define VYRA_FLIGHT_LOOP_PHASE_1 1 /* the pass of the host's event 10 */

/* What a flight loop is created with. */
typedef struct VYRAFlightLoopParams {
  int structSize;            /* sizeof(VYRAFlightLoopParams): 24 */
  int phase;                 /* VYRA_FLIGHT_LOOP_PHASE_0 or VYRA_FLIGHT_LOOP_PHASE_1 */
  VYRAFlightLoop_f callback; /* what is called */
  void* refcon;              /* passed to the callback; what it points to belongs to the plugin */
} VYRAFlightLoopParams;

VYRA_LAYOUT_ASSERT(FlightLoopParamsIs24Bytes, sizeof(VYRAFlightLoopParams) == 24);
VYRA_LAYOUT_ASSERT(FlightLoopParamsPhaseAt4, offsetof(VYRAFlightLoopParams, phase) == 4);
VYRA_LAYOUT_ASSERT(FlightLoopParamsCallbackAt8, offsetof(VYRAFlightLoopParams, callback) == 8);
VYRA_LAYOUT_ASSERT(FlightLoopParamsRefconAt16, offsetof(VYRAFlightLoopParams, refcon) == 16);

/**
 * Creates a flight loop of the calling plugin, not scheduled yet. It lives until it is destroyed or its
 * plugin is unloaded.
 *
 * params: read during the call only; null gives null.
 * Result: the handle. Errors, reported only to a plugin with an error callback, and none of which stops
 * the creation: "Illegal struct size for VYRACreateFlightLoop", "Illegal phase type for
 * VYRACreateFlightLoop", "Null callback for VYRACreateFlightLoop". A flight loop with another phase or a
 * null callback is never called.
 * [always]
 */
VYRA_API VYRAFlightLoopID VYRACreateFlightLoop(const VYRAFlightLoopParams* params);

/**
 * Destroys one of the calling plugin's flight loops, also from inside its own callback.
 * Error: "Attempt to remove a flight loop callback owned by another plugin.", also for a handle that is
 * none; nothing changes then.
 * [always]
 */
VYRA_API void VYRADestroyFlightLoop(VYRAFlightLoopID flightLoop);

/**
 * Sets when one of the calling plugin's flight loops is due next.
 *
 * interval: as a flight loop returns it. relativeToNow: with 1, seconds count from now; with 0, from the
 * flight loop's last call (its creation, when it was never called).
 * Error: "Attempt to schedule a flight loop callback owned by another plugin.", also for a handle that is
 * none; nothing changes then.
 * [always]
 */
VYRA_API void VYRAScheduleFlightLoop(VYRAFlightLoopID flightLoop, float interval, int relativeToNow);

/* ---- Flight loops by callback and refcon -------------------------------------------------------------
 *
 * The older calls, over the same flight loops. They name a flight loop by its callback and refcon and
 * compare no owner: a plugin can reach another's by naming its function.
 */

/** Creates a flight loop of phase 0 and schedules it, counting from now. [always] */
VYRA_API void VYRARegisterFlightLoopCallback(VYRAFlightLoop_f callback, float interval, void* refcon);

/**
 * Removes the most recently created flight loop with this callback and refcon; none: nothing happens.
 * [always]
 */
VYRA_API void VYRAUnregisterFlightLoopCallback(VYRAFlightLoop_f callback, void* refcon);

/**
 * Schedules every flight loop with this callback and refcon; arguments as VYRAScheduleFlightLoop.
 * [always]
 */
VYRA_API void VYRASetFlightLoopCallbackInterval(VYRAFlightLoop_f callback, float interval, int relativeToNow,
                                                void* refcon);

VYRA_END_DECLARATIONS

#endif
