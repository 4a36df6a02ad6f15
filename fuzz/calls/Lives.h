// The life of a plugin, from the opening of its module to the closing: what the modules pass on of it.
#pragma once

#include "Book.h"

namespace calls {

void Opened(Module& module);
void Closing(Module& module);
int Start(Module& module, char* outName, char* outSignature, char* outDescription);
int Enable(Module& module);
void Disable(Module& module);
void Stop(Module& module);
void Message(Module& module, VYRAPluginID from, int message, void* param);
void Error(Module& module, const char* message);

}  // namespace calls
