/*
 * The plugin captain: orders fuel by writing shared data (the command crew/order_fuel), and asks the engineer
 * what is on board by a message (crew/ask_fuel). One half of a model for plugins that talk; see crew.h.
 */
#include <stdio.h>
#include <string.h>

#include "VYRADataAccess.h"
#include "VYRAPlugin.h"
#include "VYRAUtilities.h"
#include "crew.h"

static const float kStep = 5.0F; /* kilograms more with each order */

static VYRADataRef gOrder;

static void OnError(const char* message) {
  VYRADebugString("[Captain]: ");
  VYRADebugString(message);
  VYRADebugString("\n");
}

/* Everyone who shares the order is told before this returns. */
static int OnOrder(VYRACommandRef command, int phase, void* refcon) {
  (void)command, (void)refcon;
  if (phase == VYRA_COMMAND_PHASE_BEGIN) VYRASetDataf(gOrder, VYRAGetDataf(gOrder) + kStep);
  return 0;
}

static int OnAsk(VYRACommandRef command, int phase, void* refcon) {
  (void)command, (void)refcon;
  if (phase != VYRA_COMMAND_PHASE_BEGIN) return 0;
  /* Found anew each time: plugins come and go, and their IDs with them. */
  const VYRAPluginID engineer = VYRAFindPluginBySignature(ENGINEER_SIGNATURE);
  CrewFuelReport report = {-1.0F, -1}; /* which a disabled engineer leaves as it is */
  if (engineer != VYRA_NO_PLUGIN) VYRASendMessageToPlugin(engineer, CREW_MESSAGE_ASK_FUEL, &report);
  char line[80];
  if (report.orders < 0)
    strcpy(line, "captain: no engineer answers\n");
  else
    snprintf(line, sizeof(line), "captain: %.0f kg on board after %d orders\n", (double)report.onBoard,
             report.orders);
  VYRADebugString(line);
  return 0;
}

int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  strcpy(outName, "Captain");
  strcpy(outSignature, CAPTAIN_SIGNATURE);
  strcpy(outDescription, "Orders fuel of the engineer.");
  VYRASetErrorCallback(OnError);
  if (!VYRAShareData(CREW_FUEL_ORDER, VYRA_TYPE_FLOAT, NULL, NULL))
    return 0; /* it has another type already */
  gOrder = VYRAFindDataRef(CREW_FUEL_ORDER);
  VYRARegisterCommandHandler(VYRACreateCommand("crew/order_fuel", "Order 5 kg more fuel"), OnOrder, 1, NULL);
  VYRARegisterCommandHandler(VYRACreateCommand("crew/ask_fuel", "Ask how much fuel is on board"), OnAsk, 1,
                             NULL);
  return 1;
}

void VyPluginReceiveMessage(VYRAPluginID fromPlugin, int message, void* param) {
  (void)param;
  if (message != CREW_MESSAGE_FUEL_DONE) return; /* the simulator's messages come here, too */
  char name[VYRA_PLUGIN_INFO_SIZE] = "";
  VYRAGetPluginInfo(fromPlugin, name, NULL, NULL, NULL);
  VYRADebugString("captain: done, says ");
  VYRADebugString(name);
  VYRADebugString("\n");
}
