// A plugin that does nothing, or one that has one fault in being loaded: the build defines which.
#include <cstring>

// The header would declare the start function as it should be.
#if !defined(HIDDEN_START) && !defined(MANGLED_START)
#include "VYRAPlugin.h"
#endif

#if defined(UNDEFINED_SYMBOL) || defined(MISSING_LIBRARY)
extern "C" int NobodyHasThis();
#else
#ifdef REFUSES_START
constexpr int kAnswer = 0;
#else
constexpr int kAnswer = 1;
#endif
static int NobodyHasThis() { return kAnswer; }
#endif

static int Start(char* outName, char* outSignature, char* outDescription) {
  std::strcpy(outName, "Plain");
  std::strcpy(outDescription, "Does nothing.");
#ifdef NAMELESS
  outSignature[0] = '\0';
#else
  std::strcpy(outSignature, "org.skyvora.test.plain");
#endif
  return NobodyHasThis();
}

#ifdef MANGLED_START
__attribute__((visibility("default"))) int VyPluginStart(char*, char*, char*);
__attribute__((visibility("default"))) int VyPluginStart(char* outName, char* outSignature,
                                                         char* outDescription) {
  return Start(outName, outSignature, outDescription);
}
#elif defined(HIDDEN_START)
extern "C" int VyPluginStart(char*, char*, char*);
extern "C" __attribute__((used)) int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  return Start(outName, outSignature, outDescription);
}
#else
VYRA_PLUGIN_EXPORT int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  return Start(outName, outSignature, outDescription);
}
#endif

#ifdef REFUSES_ENABLE
VYRA_PLUGIN_EXPORT int VyPluginEnable() { return 0; }
#endif
