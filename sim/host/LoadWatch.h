// Which plugins were loaded, and which modules were not and why, as the library's log, its calls and the
// folders tell together; told as events.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "report/Clock.h"
#include "report/Report.h"

namespace sim {

// A round of loading: from its making until Audit, the log and the calls of VyPluginEnable are followed. A
// round may lie inside another one, as when a plugin leads the simulator to load an aircraft.
class LoadRound {
 public:
  LoadRound();
  ~LoadRound();
  LoadRound(const LoadRound&) = delete;
  LoadRound& operator=(const LoadRound&) = delete;

  // To be called when the loading is over. Tells what lies in the main folder, or in an aircraft's or a
  // package's folder of plugins, and was not loaded; and the state of all plugins.
  void AuditMainFolder() const;
  void AuditPackage(const std::string& folder) const;

 private:
  void Audit(const std::string& folder, bool takesLooseModules) const;
};

// What the library and the plugins write to the log, in whatever pieces. Costs nothing outside a round.
void FollowLog(std::string_view text);

// The library is about to load all plugins anew; and it is done, or an exception cut it short. Without a
// reload EndReload does nothing.
void BeginReload();
void EndReload();

// Where the plugins of an aircraft lie, by the path of its model.
std::string PluginsOfAircraft(const std::string& modelPath);

// The state of all plugins that were ever loaded.
void TellPluginStates();

// The modules that were loaded, or could not be, in the whole flight; and how many.
std::vector<std::string> MetModules();
std::size_t CountMetModules();

// What opening, start and the first enable of a module took when it was loaded last, with what they led to.
std::optional<Nanoseconds> LoadTimeOf(const std::string& path);

// The modules that could not be loaded, each once for each cause.
const std::vector<LoadFailure>& LoadFailures();

// Of the whole flight, each module counted once for each cause; and all of them, for a reader.
int CountLoadFailures();
std::string DescribeLoadFailures();

}  // namespace sim
