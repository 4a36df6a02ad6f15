// One fault of a plugin for each target; see CMakeLists.txt.
#if defined(UNDEFINED)
#include <VYRAPlugin.h>
extern "C" int NobodyHasThis();
int VyPluginStart(char*, char*, char*) { return NobodyHasThis(); }
#elif defined(HIDDEN)
extern "C" int VyPluginStart(char*, char*, char*);
extern "C" int VyPluginStart(char*, char*, char*) { return 1; }
#elif defined(MANGLED)
int VyPluginStart(char*, char*, char*);
int VyPluginStart(char*, char*, char*) { return 1; }
#endif
