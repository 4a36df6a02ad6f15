/*
 * watching.c: a simulator that says which plugin crashed, and what the calls into plugins cost.
 * docs/host-guide.md goes through it.
 */
#define _POSIX_C_SOURCE 200809L /* clock_gettime and write */

#include "watching.h"

#include <VYRAWatch.h>
#include <signal.h>
#include <stdio.h>
#include <string.h>
#include <time.h>
#include <unistd.h>

/* ---- Who crashed ---- */

/* Only what a signal handler may do. */
static void WriteText(const char* text) {
  if (write(STDERR_FILENO, text, strlen(text)) < 0) _exit(1);
}

static void NameCulprit(int signal) {
  VYRARunningCall calls[VYRA_MOST_RUNNING_CALLS];
  int count = VYRAGetRunningCalls(calls, VYRA_MOST_RUNNING_CALLS);
  for (int i = 0; i < count; ++i) {
    WriteText(calls[i].plugin == VYRA_HOST_PLUGIN ? "the host" : calls[i].path);
    WriteText(", in a call of kind ");
    WriteText(VYRAGetCallKindName(calls[i].kind));
    WriteText("\n");
  }
  _exit(signal);
}

/* ---- What calls cost ---- */

static double gSeconds[VYRA_CALL_ERROR + 1]; /* by kind of call */
static struct timespec gBegins[VYRA_MOST_RUNNING_CALLS];
static int gDepth = 0;

static void CallBegins(const VYRARunningCall* call, void* refcon) {
  (void)call, (void)refcon;
  if (gDepth < VYRA_MOST_RUNNING_CALLS) clock_gettime(CLOCK_MONOTONIC, &gBegins[gDepth]);
  ++gDepth;
}

static void CallEnds(const VYRARunningCall* call, void* refcon) {
  struct timespec now;
  (void)refcon;
  clock_gettime(CLOCK_MONOTONIC, &now);
  if (--gDepth >= VYRA_MOST_RUNNING_CALLS) return;
  gSeconds[call->kind] += (double)(now.tv_sec - gBegins[gDepth].tv_sec);
  gSeconds[call->kind] += (double)(now.tv_nsec - gBegins[gDepth].tv_nsec) * 1e-9;
}

void WatchPlugins(void) {
  VYRAWatcher watcher = {sizeof watcher, 0, CallBegins, CallEnds, NULL};
  VYRASetWatcher(&watcher);
  signal(SIGSEGV, NameCulprit);
}

void PrintCosts(void) {
  for (int kind = 1; kind <= VYRA_CALL_ERROR; ++kind) {
    if (gSeconds[kind] > 0) printf("%s: %.6f s\n", VYRAGetCallKindName(kind), gSeconds[kind]);
  }
}
