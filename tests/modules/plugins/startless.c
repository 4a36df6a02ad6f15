/* A library that can be loaded but lacks the one function that makes it a plugin. */
#include "VYRAPlugin.h"

void VyPluginStop(void) {}
int VyPluginEnable(void) { return 1; }
void VyPluginDisable(void) {}
void VyPluginReceiveMessage(VYRAPluginID fromPlugin, int message, void* param) {
  (void)fromPlugin;
  (void)message;
  (void)param;
}
