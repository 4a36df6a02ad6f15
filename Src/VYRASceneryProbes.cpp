#include "VYRASceneryProbes.h"

#include "VYRAHostServices.h"
#include "VYRALoaderDispatch.h"
#include "VYRANeverDestroyed.h"
#include "VYRAOwnedRecords.h"

std::set<int> gFreeProbes;

namespace {

VYRANeverDestroyed<VYRAOwnedRecords<VYRAProbe_t, &VYRAProbe_t::owned>> gProbesOf;

int TakeHostProbe() {
  if (gFreeProbes.empty()) return gHooks->CreateProbe();
  return gFreeProbes.extract(gFreeProbes.begin()).value();
}

}  // namespace

VYRAProbeRef VYRACreateProbe(int type) {
  const VYRAPluginID plugin = VYRAGetDispatchedPlugin();
  const int hostIndex = TakeHostProbe();
  auto* probe = new VYRAProbe_t(plugin, type, hostIndex);
  gProbesOf->AddFirst(plugin, probe);
  return probe;
}

void VYRADestroyProbe(VYRAProbeRef probe) {
  if (!VYRAProbe_t::Pool::Holds(probe)) return;
  gFreeProbes.insert(probe->hostIndex);
  gProbesOf->Remove(probe->owner, probe);
  delete probe;
}

int VYRAProbeTerrainXYZ(VYRAProbeRef probe, float x, float y, float z, VYRAProbeInfo* outInfo) {
  if (!VYRAProbe_t::Pool::Holds(probe) || probe->type != VYRA_PROBE_VERTICAL) return VYRA_PROBE_ERROR;
  if (outInfo == nullptr || outInfo->size != sizeof(VYRAProbeInfo)) return VYRA_PROBE_ERROR;
  const float point[] = {x, y, z};
  const int hit = gHooks->ProbeTerrainXYZ(probe->hostIndex, point, outInfo->location, outInfo->normal,
                                          outInfo->velocity, &outInfo->isWet);
  return hit != 0 ? VYRA_PROBE_HIT : VYRA_PROBE_MISSED;
}

void VYRASceneryDestroyProbesOf(VYRAPluginID plugin) {
  while (VYRAProbe_t* probe = gProbesOf->First(plugin)) VYRADestroyProbe(probe);
}
