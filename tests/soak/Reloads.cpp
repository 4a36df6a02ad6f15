#include <malloc.h>
#include <stdlib.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "../RecordingHost.h"
#include "Round.h"
#include "Soak.h"
#include "VYRAHost.h"
#include "VYRAPlugin.h"

namespace fs = std::filesystem;

namespace soak {
namespace {

// A simulator's folder with plugins in it, removed at the end.
class Folder {
 public:
  explicit Folder(int plugins) {
    std::string pattern = (fs::temp_directory_path() / "vyra-soak-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) std::abort();
    root = pattern + "/";
    const fs::path place = fs::path(root) / "Resources/plugins";
    fs::create_directories(place);
    for (int i = 0; i < plugins; ++i) {
      fs::copy_file(EVERYTHING_MODULE, place / ("plugin-" + std::to_string(i) + ".vyp"));
    }
  }
  ~Folder() {
    std::error_code ignored;
    fs::remove_all(root, ignored);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  const std::string& Root() const { return root; }

 private:
  std::string root;
};

// What the process holds.
struct Holdings {
  long heap = 0;      // bytes that the C library's allocator has given out
  long resident = 0;  // bytes
  long descriptors = 0;
  long mappings = 0;
};

long CountLines(const char* path) {
  std::ifstream file(path);
  return std::count(std::istreambuf_iterator<char>(file), {}, '\n');
}

long ResidentBytes() {
  std::ifstream file("/proc/self/status");
  for (std::string word; file >> word;) {
    long kilobytes = 0;
    if (word == "VmRSS:" && file >> kilobytes) return kilobytes * 1024;
  }
  return 0;
}

Holdings Measure() {
  Holdings now;
  now.resident = ResidentBytes();
  now.mappings = CountLines("/proc/self/maps");
  now.descriptors = std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
  // Last, when the others have given back what they took. What is freed but kept for the next is no holding.
  const struct mallinfo2 heap = mallinfo2();
  now.heap = static_cast<long>(heap.uordblks + heap.hblkhd - heap.fsmblks);
  return now;
}

void Print(const char* when, const Holdings& now) {
  std::printf("%-14s heap %9ld bytes, resident %9ld bytes, %ld descriptors, %ld mappings, %d probes\n", when,
              now.heap, now.resident, now.descriptors, now.mappings, gBooks.probes);
}

void CheckRound(int plugins) {
  if (VYRACountPlugins() != plugins + 1) Fault("%d plugins are there", VYRACountPlugins() - 1);
  if (FlyRound(1) != 0) Fault("an exception came");
  for (int plugin = 1; plugin < VYRACountPlugins(); ++plugin) {
    const Tally tally = TallyOf(plugin);
    for (std::size_t call = kFirstCallOfARound; call < tally.size(); ++call) {
      if (tally[call] != 1) Fault("plugin %d got %d calls of %s", plugin, tally[call], kCallNames[call]);
    }
  }
}

void Reload() {
  VYRAReloadPlugins();
  VYRAEventHook(VYRA_EVENT_FLIGHT_LOOPS_1, nullptr, nullptr, 1, 1);
  for (int plugin = 1; plugin < VYRACountPlugins(); ++plugin) TallyOf(plugin);
}

// The allocator counts what it keeps for the next request as given out, and the system counts whole pages; so
// both have some room, less than one allocation for each reload would take.
void Compare(const Holdings& settled, const Holdings& end, int probes) {
  constexpr long kHeapRoom = 4L * 1024;
  constexpr long kResidentRoom = 256L * 1024;
  if (end.heap > settled.heap + kHeapRoom) Fault("the heap grew by %ld bytes", end.heap - settled.heap);
  if (end.resident > settled.resident + kResidentRoom) Fault("the resident size grew");
  if (end.descriptors != settled.descriptors) Fault("descriptors stayed open");
  if (end.mappings > settled.mappings) Fault("mappings stayed");
  if (gBooks.probes != probes) Fault("the host made more probes");
}

}  // namespace

void SoakReloads(int reloads, int plugins) {
  const Folder folder(plugins);
  const int settling = std::min(100, std::max(1, reloads / 10));
  gHost.systemPath = folder.Root();
  PrepareHostForRounds();
  const auto begin = std::chrono::steady_clock::now();
  VYRAInitializePlugins(folder.Root().c_str(), &gHost.services, nullptr);
  CheckRound(plugins);
  const int probes = gBooks.probes;
  Holdings settled;
  for (int reload = 1; reload <= reloads; ++reload) {
    Reload();
    CheckRound(plugins);
    gHost.calls.clear();
    gHost.log.clear();
    if (reload == 1) Print("1 reload", Measure());
    if (reload == settling) {
      settled = Measure();
      Print((std::to_string(settling) + " reloads").c_str(), settled);
    }
  }
  const Holdings end = Measure();
  Print((std::to_string(reloads) + " reloads").c_str(), end);
  Compare(settled, end, probes);
  VYRAShutdownPlugins();
  if (gBooks.objectsOut != 0 || gBooks.commandsOut != 0) Fault("something was not given back to the host");
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
  std::printf("%d reloads of %d plugins in %.1f s\n", reloads, plugins, seconds.count());
}

}  // namespace soak
