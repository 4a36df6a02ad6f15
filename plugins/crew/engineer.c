/*
 * The plugin engineer: is told of each order of fuel by shared data, carries it out, reports back by a
 * message, and answers questions. The other half of the captain; see crew.h.
 */
#include <string.h>

#include "VYRADataAccess.h"
#include "VYRAPlugin.h"
#include "crew.h"

static VYRADataRef gOrder;
static VYRADataRef gFuel; /* of the simulator */
static int gOrders;

static void OnError(const char* message) {
  VYRADebugString("[Engineer]: ");
  VYRADebugString(message);
  VYRADebugString("\n");
}

/* Called after each write of the order, also with the value that it had before. */
static void OnOrder(void* refcon) {
  (void)refcon;
  VYRASetDataf(gFuel, VYRAGetDataf(gOrder));
  ++gOrders;
  const VYRAPluginID captain = VYRAFindPluginBySignature(CAPTAIN_SIGNATURE);
  if (captain != VYRA_NO_PLUGIN) VYRASendMessageToPlugin(captain, CREW_MESSAGE_FUEL_DONE, NULL);
}

int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  strcpy(outName, "Engineer");
  strcpy(outSignature, ENGINEER_SIGNATURE);
  strcpy(outDescription, "Fills the tanks as the captain orders.");
  VYRASetErrorCallback(OnError);
  gOrders = 0;
  gFuel = VYRAFindDataRef("sim/aircraft/fuel_kg");
  if (!VYRAShareData(CREW_FUEL_ORDER, VYRA_TYPE_FLOAT, OnOrder, NULL))
    return 0; /* it has another type already */
  gOrder = VYRAFindDataRef(CREW_FUEL_ORDER);
  return 1;
}

void VyPluginReceiveMessage(VYRAPluginID fromPlugin, int message, void* param) {
  (void)fromPlugin;
  if (message != CREW_MESSAGE_ASK_FUEL) return;
  CrewFuelReport* const report = param;
  report->onBoard = VYRAGetDataf(gFuel);
  report->orders = gOrders;
}
