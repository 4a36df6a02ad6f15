/*
 * The shortest honest plugin: it says who it is and that it is there. Everything else is optional.
 */
#include <string.h>

#include "VYRAPlugin.h"

int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  strcpy(outName, "Hello");
  strcpy(outSignature, "org.skyvora.hello");
  strcpy(outDescription, "Greets the log.");
  VYRADebugString("hello: good morning\n");
  return 1;
}
