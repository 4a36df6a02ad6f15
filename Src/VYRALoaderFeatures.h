// Features: named switches with which a plugin asks for newer behaviour.
#pragma once

#include "VYRADefs.h"

// The feature's number, or -1 for an unknown name.
int VYRAFeatureToID(const char* feature);

// A plugin's flag; 0 for an unknown plugin.
int VYRAHasFeatureInternal(VYRAPluginID plugin, int feature);

// Whether paths to and from the dispatched plugin are in the host's older encoding: true for everyone who
// did not ask for native paths, the host included.
bool VYRANeedPathConvert();
