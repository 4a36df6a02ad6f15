#include "choice/Signature.h"

#include <csignal>
#include <exception>
#include <filesystem>

#include "choice/ChildFlight.h"
#include "choice/PluginPattern.h"

namespace sim {
namespace {

namespace fs = std::filesystem;

std::string FirstSignature(const nlohmann::json& report) {
  if (!report.is_object() || report.at("plugins").empty()) return "";
  return report.at("plugins").front().at("signature");
}

}  // namespace

std::string SignatureOf(const std::string& module) {
  try {
    const ChildFlights flights;
    const fs::path entry = EntryOf(module);
    const fs::path plugins = flights.Folder() / "system/Resources/plugins";
    fs::create_directories(plugins);
    fs::create_symlink(entry, plugins / entry.filename());
    return FirstSignature(flights
                              .Fly({"--system", flights.Folder() / "system", "--frames", "1", "--rate", "60",
                                    "--stall-limit", "5"})
                              .report);
  } catch (const Interrupted& interruption) {
    std::raise(interruption.signal);  // it was meant for this process
  } catch (const std::exception&) {
    // Without a place for the flight its signature cannot be known.
  }
  return "";
}

}  // namespace sim
