#include "VYRALoaderHostCalls.h"

const StHostCall* gHostCall = nullptr;
