#include "VYRASceneryProbes.h"

#include "VYRAHostServices.h"
#include "VYRALoaderDispatch.h"

std::set<std::unique_ptr<VYRAProbe_t>, VYRAProbeOrder> gProbes;
std::set<int> gFreeProbes;

namespace {

int TakeHostProbe() {
  if (gFreeProbes.empty()) return gHooks->CreateProbe();
  return gFreeProbes.extract(gFreeProbes.begin()).value();
}

}  // namespace

VYRAProbeRef VYRACreateProbe(int type) {
  const VYRAPluginID plugin = VYRAGetDispatchedPlugin();
  const int hostIndex = TakeHostProbe();
  const auto probe =
      gProbes.insert(std::make_unique<VYRAProbe_t>(VYRAProbe_t{{}, plugin, type, hostIndex})).first;
  return probe->get();
}

void VYRADestroyProbe(VYRAProbeRef probe) {
  const auto found = gProbes.find(probe);
  if (found == gProbes.end()) return;
  gFreeProbes.insert((*found)->hostIndex);
  gProbes.erase(found);
}

int VYRAProbeTerrainXYZ(VYRAProbeRef probe, float x, float y, float z, VYRAProbeInfo* outInfo) {
  if (!gProbes.contains(probe) || probe->type != VYRA_PROBE_VERTICAL) return VYRA_PROBE_ERROR;
  if (outInfo == nullptr || outInfo->size != sizeof(VYRAProbeInfo)) return VYRA_PROBE_ERROR;
  const float point[] = {x, y, z};
  const int hit = gHooks->ProbeTerrainXYZ(probe->hostIndex, point, outInfo->location, outInfo->normal,
                                          outInfo->velocity, &outInfo->isWet);
  return hit != 0 ? VYRA_PROBE_HIT : VYRA_PROBE_MISSED;
}

void VYRASceneryDestroyProbesOf(VYRAPluginID plugin) {
  std::erase_if(gProbes, [&](const auto& probe) {
    if (probe->owner != plugin) return false;
    gFreeProbes.insert(probe->hostIndex);
    return true;
  });
}
