/*
 * host.c: the smallest simulator that flies plugins. It climbs for three seconds at 50 frames a second
 * and writes the library's log to standard output. docs/host-guide.md goes through it.
 *
 * Usage: host SYSTEM-FOLDER/
 */
#include <VYRADataAccess.h>
#include <VYRAHost.h>
#include <VYRAPlugin.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "watching.h"

static float gAltitude = 1000.0f;
static float gElapsed = 0.0f;
static const char* gSystemPath;

static float ReadAltitude(void* refcon) {
  (void)refcon;
  return gAltitude;
}

/* ---- The services ---- */

static float GetElapsedTime(void) { return gElapsed; }

static void DebugString(const char* text) { fputs(text, stdout); }

static void ShowLoadingStatus(const char* text) { printf("%s\n", text); }

static void ShowMessage(const char* line1, const char* line2, const char* line3, const char* line4) {
  printf("%s\n%s\n%s\n%s\n", line1, line2, line3, line4);
}

static void GetSystemPath(char* outPath) { strcpy(outPath, gSystemPath); }

/* Without a folder in the path the aircraft brings no plugins of its own. */
static void GetNthAircraftModel(int planeIndex, char* outPath, char* outFileName) {
  (void)planeIndex;
  strcpy(outPath, "trainer.acf");
  strcpy(outFileName, "trainer.acf");
}

static int CreateMenu(int parentMenu, int parentItem, const char* name) {
  (void)parentMenu, (void)parentItem, (void)name;
  return 1;
}

static void HostReceiveMessage(VYRAPluginID fromPlugin, int message, void* param) {
  (void)param;
  printf("message %d from plugin %d\n", message, fromPlugin);
}

static void NotProvided(void) {
  fputs("A plugin asked for a service that this host does not provide.\n", stderr);
  abort();
}

/* Every slot is filled: the library checks none. What this host cannot do ends it with a clear line. */
static struct VYRAHostServices MakeServices(void) {
  struct VYRAHostServices services;
  void (*notProvided)(void) = NotProvided;
  size_t offset = offsetof(struct VYRAHostServices, GetScreenSize);
  for (; offset < sizeof services; offset += sizeof notProvided) {
    memcpy((char*)&services + offset, &notProvided, sizeof notProvided);
  }
  services.serviceTableRevision = 4;
  services.hostVersion = 1000;
  services.GetElapsedTime = GetElapsedTime;
  services.GetNthAircraftModel = GetNthAircraftModel;
  services.GetSystemPath = GetSystemPath;
  services.DebugString = DebugString;
  services.CreateMenu = CreateMenu;
  services.ShowMessage = ShowMessage;
  services.ShowLoadingStatus = ShowLoadingStatus;
  services.HostReceiveMessage = HostReceiveMessage;
  return services;
}

/* ---- The flight ---- */

int main(int argc, char** argv) {
  if (argc != 2) {
    fputs("Usage: host SYSTEM-FOLDER/\n", stderr);
    return 2;
  }
  gSystemPath = argv[1];
  WatchPlugins();
  struct VYRAHostServices services = MakeServices();
  VYRARegisterDataAccessor("sim/aircraft/altitude_m", VYRA_TYPE_FLOAT, 0, NULL, NULL, ReadAltitude, NULL,
                           NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL);
  VYRAInitializePlugins(gSystemPath, &services, NULL);
  for (int frame = 1; frame <= 150; ++frame) {
    gElapsed = (float)frame / 50.0f;
    VYRAEventHook(VYRA_EVENT_FLIGHT_LOOPS_0, NULL, NULL, gElapsed, 0.0f);
    gAltitude += 0.2f; /* the simulator's own work: here, a climb of 10 m/s */
    VYRAEventHook(VYRA_EVENT_FLIGHT_LOOPS_1, NULL, NULL, gElapsed, 0.0f);
  }
  VYRAShutdownPlugins();
  PrintCosts();
  return 0;
}
