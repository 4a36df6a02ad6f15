/* A plugin with none of the optional functions. */
#include <string.h>

#include "VYRAPlugin.h"

int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  strcpy(outName, "bare");
  strcpy(outSignature, "test.bare");
  strcpy(outDescription, "Plugin without optional functions");
  return 1;
}
