// One of many plugins, whose part its folder's name tells: the same module lies in many folders.
//
//   culprit  throws in frame 3
//   left     publishes a dataref
//   right    throws in frame 3, if left's dataref is there
//   noisy    writes to the log in frame 3
//   slow     takes 30 ms of frame 3
//   once     throws in frame 3, and leaves a file that keeps it from doing so again
//   others   do nothing in frame 3
#include <dlfcn.h>

#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <thread>

#include "VYRADataAccess.h"
#include "VYRAPlugin.h"
#include "VYRAProcessing.h"
#include "VYRAUtilities.h"

namespace {

constexpr const char* kLeftsDataRef = "test/left";

std::filesystem::path gFolder;

void DoOncesPart() {
  const std::filesystem::path file = gFolder / "thrown";
  if (std::filesystem::exists(file)) return;
  std::ofstream(file) << "once\n";
  throw std::runtime_error("thrown once");
}

float Fly(float /*elapsedSinceLastCall*/, float /*elapsedTime*/, int /*counter*/, void* /*refcon*/) {
  const std::string part = gFolder.filename();
  if (part == "culprit") throw std::runtime_error("thrown on purpose");
  if (part == "right" && VYRAFindDataRef(kLeftsDataRef) != nullptr) throw std::runtime_error("left is there");
  if (part == "noisy") VYRADebugString("noise\n");
  if (part == "slow") std::this_thread::sleep_for(std::chrono::milliseconds(30));
  if (part == "once") DoOncesPart();
  return 0.0F;
}

int ReadNothing(void* /*refcon*/) { return 0; }

}  // namespace

VYRA_PLUGIN_EXPORT int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  Dl_info module{};
  dladdr(reinterpret_cast<void*>(&Fly), &module);
  gFolder = std::filesystem::path(module.dli_fname).parent_path().parent_path();
  const std::string name = gFolder.filename();
  std::strcpy(outName, name.c_str());
  std::strcpy(outSignature, ("org.skyvora.test." + name).c_str());
  std::strcpy(outDescription, "One of many.");
  if (name == "left")
    VYRARegisterDataAccessor(kLeftsDataRef, VYRA_TYPE_INT, 0, ReadNothing, nullptr, nullptr, nullptr, nullptr,
                             nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
  VYRARegisterFlightLoopCallback(Fly, -3.0F, nullptr);
  return 1;
}
