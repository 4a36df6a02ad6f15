#include "VYRALoaderFeatures.h"

#include <cstddef>
#include <string_view>

#include "VYRALoaderDispatch.h"
#include "VYRALoaderReports.h"

namespace {

constexpr const char* kFeatureNames[kFeatureCount] = {VYRA_FEATURE_WANTS_REFLECTIONS,
                                                      VYRA_FEATURE_NATIVE_PATHS};

// The feature's number, or -1 with a report to the calling plugin.
int CheckedFeature(const char* feature) {
  const int id = VYRAFeatureToID(feature);
  // Kept: asking names the enabling function too; plugins match on this one text.
  if (id < 0) VYRASendError("Illegal feature name passed to VYRAEnableFeature");
  return id;
}

}  // namespace

int VYRAFeatureToID(const char* feature) {
  if (feature == nullptr) return -1;
  for (int id = 0; id < kFeatureCount; ++id) {
    if (std::string_view(kFeatureNames[id]) == feature) return id;
  }
  return -1;
}

int VYRAHasFeatureInternal(VYRAPluginID plugin, int feature) {
  if (!VYRARegistryHolds(plugin) || feature < 0 || feature >= kFeatureCount) return 0;
  return VYRARegistryRecord(plugin).features[feature];
}

bool VYRANeedPathConvert() { return VYRAHasFeatureInternal(gDispatchedPlugin, kFeatureNativePaths) == 0; }

int VYRAHasFeature(const char* feature) { return VYRAFeatureToID(feature) >= 0 ? 1 : 0; }

int VYRAIsFeatureEnabled(const char* feature) {
  const int id = CheckedFeature(feature);
  return id < 0 ? 0 : VYRAHasFeatureInternal(gDispatchedPlugin, id);
}

void VYRAEnableFeature(const char* feature, int enable) {
  const int id = CheckedFeature(feature);
  if (id < 0 || !VYRARegistryHolds(gDispatchedPlugin)) return;
  VYRARegistryRecord(gDispatchedPlugin).features[id] = enable;
}

void VYRAEnumerateFeatures(VYRAFeatureEnumerator_f enumerator, void* refcon) {
  if (enumerator == nullptr) return;
  for (const char* feature : kFeatureNames) {
    const StDispatchCallback dispatch(gDispatchedPlugin, VYRA_CALL_ENUMERATOR,
                                      StDispatchCallback::Ask::nothing);
    enumerator(feature, refcon);
  }
}
