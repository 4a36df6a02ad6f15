// The names of the services of VYRAHostServices, in the order of their slots, for code that fills them all.
#pragma once

// clang-format off
#define FOR_EACH_SERVICE(X)                                                                                \
  X(GetScreenSize) X(GetMouseLocation) X(SetGraphicsState) X(BindTexture2d) X(GenerateTextureNumbers)      \
  X(GetTexture) X(WorldToLocal) X(LocalToWorld) X(DrawTranslucentDarkBox) X(DrawString) X(DrawNumber)      \
  X(GetFontDimensions) X(GetElapsedTime) X(ReadCameraPosition) X(DrawAircraft) X(SetAircraftModel)         \
  X(GetNthAircraftModel) X(CountAircraft) X(PlaceUserAtAirport) X(SimulateKeyPress) X(SpeakString)         \
  X(CommandKeyStroke) X(CommandButtonPress) X(GetSystemPath) X(GetPrefsPath) X(GetVersions) X(GetLanguage) \
  X(DebugString) X(CreateMenu) X(AppendMenuItem) X(SetMenuItemName) X(DestroyMenu) X(ReinitUsersPlane)     \
  X(ReloadScenery) X(GetFirstNavAid) X(GetNextNavAid) X(FindFirstNavAidOfType) X(FindLastNavAidOfType)     \
  X(FindNavAid) X(GetNavAidInfo) X(CountFMSEntries) X(GetDisplayedFMSEntry) X(GetDestinationFMSEntry)      \
  X(SetDisplayedFMSEntry) X(SetDestinationFMSEntry) X(GetFMSEntryInfo) X(SetFMSEntryInfo)                  \
  X(SetFMSEntryLatLon) X(ClearFMSEntry) X(GetGPSDestinationType) X(GetGPSDestination) X(ShowMessage)       \
  X(ShowLoadingStatus) X(FindCommand) X(CommandBegin) X(CommandRepeat) X(CommandEnd) X(CreateProbe)        \
  X(ProbeTerrainXYZ) X(FindSymbol) X(MeasureString) X(RemoveMenuItem) X(LoadObject) X(DrawObjects)         \
  X(UnloadObject) X(LookupObjects) X(LoadDataFile) X(SaveDataFile) X(LoadObjectAsync) X(HostReceiveMessage)
// clang-format on
