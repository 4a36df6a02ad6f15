// The navigation database, the flight-management system and the GPS: all of it the host's.
#include "VYRANavigation.h"

#include "VYRAHostServices.h"

int VYRAGetFirstNavAid(void) { return gHooks->GetFirstNavAid(); }

int VYRAGetNextNavAid(int navAid) { return gHooks->GetNextNavAid(navAid); }

int VYRAFindFirstNavAidOfType(int type) { return gHooks->FindFirstNavAidOfType(type); }

int VYRAFindLastNavAidOfType(int type) { return gHooks->FindLastNavAidOfType(type); }

int VYRAFindNavAid(const char* name, const char* ident, float* latitude, float* longitude, int* frequency,
                   int type) {
  return gHooks->FindNavAid(name, ident, latitude, longitude, frequency, type);
}

void VYRAGetNavAidInfo(int navAid, int* outType, float* outLatitude, float* outLongitude, float* outElevation,
                       int* outFrequency, float* outHeading, char* outIdent, char* outName,
                       char* outInRegion) {
  gHooks->GetNavAidInfo(navAid, outType, outLatitude, outLongitude, outElevation, outFrequency, outHeading,
                        outIdent, outName, outInRegion);
}

int VYRACountFMSEntries(void) { return gHooks->CountFMSEntries(); }

int VYRAGetDisplayedFMSEntry(void) { return gHooks->GetDisplayedFMSEntry(); }

int VYRAGetDestinationFMSEntry(void) { return gHooks->GetDestinationFMSEntry(); }

void VYRASetDisplayedFMSEntry(int index) { gHooks->SetDisplayedFMSEntry(index); }

void VYRASetDestinationFMSEntry(int index) { gHooks->SetDestinationFMSEntry(index); }

void VYRAGetFMSEntryInfo(int index, int* outType, char* outIdent, int* outNavAid, int* outAltitude,
                         float* outLatitude, float* outLongitude) {
  gHooks->GetFMSEntryInfo(index, outType, outIdent, outNavAid, outAltitude, outLatitude, outLongitude);
}

void VYRASetFMSEntryInfo(int index, int navAid, int altitude) {
  gHooks->SetFMSEntryInfo(index, navAid, altitude);
}

void VYRASetFMSEntryLatLon(int index, float latitude, float longitude, int altitude) {
  gHooks->SetFMSEntryLatLon(index, latitude, longitude, altitude);
}

void VYRAClearFMSEntry(int index) { gHooks->ClearFMSEntry(index); }

int VYRAGetGPSDestinationType(void) { return gHooks->GetGPSDestinationType(); }

int VYRAGetGPSDestination(void) { return gHooks->GetGPSDestination(); }
