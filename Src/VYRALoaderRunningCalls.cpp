#include "VYRALoaderRunningCalls.h"

VYRACallState gRunningCall = {};
std::atomic<VYRACallWord> gOuterCalls[VYRA_MOST_RUNNING_CALLS];
VYRARunningModule gRunningModules[VYRA_MOST_RUNNING_CALLS];
