// Every service here answers for a subsystem that is not built: it moves out when the subsystem comes.
#include "host/NeutralServices.h"

#include <initializer_list>

namespace sim {
namespace {

// Results by pointer are zeros rather than whatever the caller's memory held; any pointer may be null.
template <class Number>
void Zero(std::initializer_list<Number*> results) {
  for (Number* const result : results)
    if (result != nullptr) *result = 0;
}

void FillDrawing(VYRAHostServices& services) {
  services.SetGraphicsState = [](int, int, int, int, int, int, int) {};
  services.BindTexture2d = [](int, int) {};
  services.GenerateTextureNumbers = [](int* outTextureIds, int count) {
    for (int index = 0; index < count; ++index) outTextureIds[index] = 0;
  };
  services.GetTexture = [](int) { return 0; };
}

void FillPlanes(VYRAHostServices& services) {
  services.DrawAircraft = [](int, float, float, float, float, float, float, int, void*) {};
  services.PlaceUserAtAirport = [](const char*) {};
  services.ReinitUsersPlane = [](int, int) {};
}

void FillInput(VYRAHostServices& services) {
  services.SimulateKeyPress = [](int, int) {};
  services.SpeakString = [](const char*) {};
  services.CommandKeyStroke = [](int) {};
  services.CommandButtonPress = [](const int*, int, int) {};
}

void FillNavigation(VYRAHostServices& services) {
  services.GetFirstNavAid = [] { return 0; };
  services.GetNextNavAid = [](int) { return 0; };
  services.FindFirstNavAidOfType = [](int) { return 0; };
  services.FindLastNavAidOfType = [](int) { return 0; };
  services.FindNavAid = [](const char*, const char*, float*, float*, int*, int) { return 0; };
  services.GetNavAidInfo = [](int, int* outType, float* outLatitude, float* outLongitude, float* outElevation,
                              int* outFrequency, float* outHeading, char* outIdent, char* outName,
                              char* outInRegion) {
    Zero({outType, outFrequency});
    Zero({outLatitude, outLongitude, outElevation, outHeading});
    Zero({outIdent, outName, outInRegion});
  };
  services.CountFMSEntries = [] { return 0; };
  services.GetDisplayedFMSEntry = [] { return 0; };
  services.GetDestinationFMSEntry = [] { return 0; };
  services.SetDisplayedFMSEntry = [](int) {};
  services.SetDestinationFMSEntry = [](int) {};
  services.GetFMSEntryInfo = [](int, int* outType, char* outIdent, int* outNavAid, int* outAltitude,
                                float* outLatitude, float* outLongitude) {
    Zero({outType, outNavAid, outAltitude});
    Zero({outIdent});
    Zero({outLatitude, outLongitude});
  };
  services.SetFMSEntryInfo = [](int, int, int) {};
  services.SetFMSEntryLatLon = [](int, float, float, int) {};
  services.ClearFMSEntry = [](int) {};
  services.GetGPSDestinationType = [] { return 0; };
  services.GetGPSDestination = [] { return 0; };
}

void FillScenery(VYRAHostServices& services) {
  services.ReloadScenery = [] {};
  services.LookupObjects = [](const char*, float, float, VYRALibraryEnumerator_f, void*) { return 0; };
}

void FillFiles(VYRAHostServices& services) {
  services.FindSymbol = [](const char*) -> void* { return nullptr; };
  services.LoadDataFile = [](int, const char*) { return 0; };
  services.SaveDataFile = [](int, const char*) { return 0; };
}

}  // namespace

void FillNeutralServices(VYRAHostServices& services) {
  FillDrawing(services);
  FillPlanes(services);
  FillInput(services);
  FillNavigation(services);
  FillScenery(services);
  FillFiles(services);
}

}  // namespace sim
