// The measures of vyra-bench. Each sets up what it needs, lets the contenders compete in a session, and
// tears everything down again. Names that are published stay in the library's registry, so a measure whose
// size is the registry's runs before every one that needs a larger registry.
#pragma once

#include <regex>

#include "../Session.h"

namespace bench {

// The contenders' names, as reports show them.
inline constexpr const char* kLibrary = "VYRA";
inline constexpr const char* kBareCall = "bare call";
inline constexpr const char* kBareTable = "bare hash table";
inline constexpr const char* kBareModules = "dlopen";
inline constexpr const char* kSimGear = "SimGear";
inline constexpr const char* kSimGearVariable = "SimGear, variable";
inline constexpr const char* kSigc = "sigc++";
inline constexpr const char* kBoostSignals = "Boost.Signals2";
inline constexpr const char* kGModule = "GModule";

void MeasureFind(Session& session, std::size_t size);
void MeasureCheck(Session& session, std::size_t size);
void MeasureReadsAndWrites(Session& session);

void MeasureDueFlightLoops(Session& session, std::size_t size);
void MeasureIdleFlightLoops(Session& session, std::size_t size);
void MeasureWatchedFlightLoops(Session& session, std::size_t size);

void MeasureDrawCallbacks(Session& session, std::size_t size);
void MeasureKeySniffers(Session& session, std::size_t size);
void MeasureWindows(Session& session, std::size_t size);  // drawn, pressed and asked for the cursor

void MeasureCommandPhase(Session& session, std::size_t size);
void MeasureSharedDataWrite(Session& session, std::size_t size);

void MeasureModuleCycle(Session& session);
void MeasureStartUp(Session& session, std::size_t size);

void MeasureDataRefMemory(Session& session);
void MeasurePluginMemory(Session& session);

void MeasureFrame(Session& session, std::size_t size);

// Of every kind of thing that plugins register whose name matches.
void MeasureGrowth(Session& session, std::size_t size, const std::regex& wanted);

}  // namespace bench
