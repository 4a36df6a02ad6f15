#include "VYRALoaderState.h"

#include "VYRALoaderRegistry.h"

bool gIsStarted = false;

namespace {

int gWork = 0;
int gRefusals = 0;

}  // namespace

StLoaderWork::StLoaderWork() { ++gWork; }
StLoaderWork::~StLoaderWork() { --gWork; }
bool StLoaderWork::IsInProgress() { return gWork > 0; }

StRefuseLoading::StRefuseLoading() { ++gRefusals; }
StRefuseLoading::~StRefuseLoading() { --gRefusals; }

bool VYRALoaderMayLoad() { return !gAllPlugins.empty() && gRefusals == 0; }
