/* What can be wrong with the way in which a module was linked: one fault each. */
#include <stdlib.h>

#include "VYRADefs.h"

#if defined(UNDEFINED_SYMBOL)

void VyNobodyHasThisFunction(void);
VYRA_PLUGIN_EXPORT void VyUseIt(void);
void VyUseIt(void) { VyNobodyHasThisFunction(); }

#elif defined(MISSING_LIBRARY)

void VyOfAnAbsentLibrary(void);
VYRA_PLUGIN_EXPORT void VyUseIt(void);
void VyUseIt(void) { VyOfAnAbsentLibrary(); }

#elif defined(ABSENT_LIBRARY)

VYRA_PLUGIN_EXPORT void VyOfAnAbsentLibrary(void);
void VyOfAnAbsentLibrary(void) {}

#elif defined(REPLACED_SYMBOLS)

/* Nobody's calls may come here, the module's own neither: the library was there before. */
#define REPLACE(function)                 \
  VYRA_PLUGIN_EXPORT void function(void); \
  void function(void) { abort(); }
REPLACE(VYRACreateFlightLoop)
REPLACE(VYRAGetMyID)
REPLACE(VYRARegisterDataAccessor)
REPLACE(VYRAEventHook)
REPLACE(VYRAShutdownPlugins)

#endif
