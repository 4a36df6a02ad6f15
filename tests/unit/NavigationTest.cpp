// Navigation: every function is its service of the host, and nothing else.
#include "VYRANavigation.h"

#include "Forwarding.h"
#include "PluginFixture.h"

namespace {

class Navigation : public PluginFixture {};

TEST_F(Navigation, EveryFunctionReachesItsServiceWithAllItsArguments) {
  using Host = VYRAHostServices;
  ExpectForwards(VYRAGetFirstNavAid, &Host::GetFirstNavAid);
  ExpectForwards(VYRAGetNextNavAid, &Host::GetNextNavAid);
  ExpectForwards(VYRAFindFirstNavAidOfType, &Host::FindFirstNavAidOfType);
  ExpectForwards(VYRAFindLastNavAidOfType, &Host::FindLastNavAidOfType);
  ExpectForwards(VYRAFindNavAid, &Host::FindNavAid);
  ExpectForwards(VYRAGetNavAidInfo, &Host::GetNavAidInfo);
  ExpectForwards(VYRACountFMSEntries, &Host::CountFMSEntries);
  ExpectForwards(VYRAGetDisplayedFMSEntry, &Host::GetDisplayedFMSEntry);
  ExpectForwards(VYRAGetDestinationFMSEntry, &Host::GetDestinationFMSEntry);
  ExpectForwards(VYRASetDisplayedFMSEntry, &Host::SetDisplayedFMSEntry);
  ExpectForwards(VYRASetDestinationFMSEntry, &Host::SetDestinationFMSEntry);
  ExpectForwards(VYRAGetFMSEntryInfo, &Host::GetFMSEntryInfo);
  ExpectForwards(VYRASetFMSEntryInfo, &Host::SetFMSEntryInfo);
  ExpectForwards(VYRASetFMSEntryLatLon, &Host::SetFMSEntryLatLon);
  ExpectForwards(VYRAClearFMSEntry, &Host::ClearFMSEntry);
  ExpectForwards(VYRAGetGPSDestinationType, &Host::GetGPSDestinationType);
  ExpectForwards(VYRAGetGPSDestination, &Host::GetGPSDestination);
}

}  // namespace
