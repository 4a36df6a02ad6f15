// vyra-bench: what the library costs a plugin, beside the bare machine.
//
// It stands where a simulator stands: it starts libVYRA.so.2 with a service table of its own and calls the
// exported functions. "bare" is the same work done by a call through a function pointer that the compiler
// may not look into, which is the least that a library of callbacks can cost.

#include <VYRADataAccess.h>
#include <VYRAHost.h>
#include <VYRAPlugin.h>
#include <VYRAProcessing.h>
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "RatioReporter.h"

namespace {

// ---- A host that does nothing -------------------------------------------------------------------------

void NotProvided() {
  std::fputs("vyra-bench: the library asked for a service that this host does not provide\n", stderr);
  std::abort();
}

VYRAHostServices MakeServices() {
  VYRAHostServices services;
  void (*const notProvided)() = NotProvided;
  for (std::size_t offset = offsetof(VYRAHostServices, GetScreenSize); offset < sizeof services;
       offset += sizeof notProvided) {
    std::memcpy(reinterpret_cast<char*>(&services) + offset, &notProvided, sizeof notProvided);
  }
  services.serviceTableRevision = 4;
  services.hostVersion = 1000;
  services.DebugString = [](const char*) {};
  services.GetElapsedTime = [] { return 0.0F; };
  services.CreateMenu = [](int, int, const char*) { return 1; };
  services.ShowLoadingStatus = [](const char*) {};
  services.HostReceiveMessage = [](VYRAPluginID, int, void*) {};
  return services;
}

// The library, started with a system folder that holds no plugins, until the end of the scope.
class RunningLibrary {
 public:
  RunningLibrary() {
    std::string pattern = (std::filesystem::temp_directory_path() / "vyra-bench-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
      std::perror("vyra-bench: no temporary folder");
      std::exit(1);
    }
    folder = pattern;
    std::filesystem::create_directories(folder / "Resources/plugins");
    VYRAInitializePlugins((folder.string() + "/").c_str(), &services, nullptr);
  }
  ~RunningLibrary() {
    VYRAShutdownPlugins();
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
  }
  RunningLibrary(const RunningLibrary&) = delete;
  RunningLibrary& operator=(const RunningLibrary&) = delete;

 private:
  std::filesystem::path folder;
  VYRAHostServices services = MakeServices();
};

// ---- Reading a dataref through its handle -------------------------------------------------------------

template <typename Value>
Value Read(void* refcon) {
  return *static_cast<Value*>(refcon);
}

template <typename Value>
Value gValue = 42;

template <typename Value>
void BareRead(benchmark::State& state) {
  Value (*volatile read)(void*) = Read<Value>;
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(read(&gValue<Value>));
}

VYRADataRef Publish(const char* name, VYRADataTypeID type, VYRAReadInt_f readInt, VYRAReadFloat_f readFloat,
                    VYRAReadDouble_f readDouble, void* refcon) {
  return VYRARegisterDataAccessor(name, type, 0, readInt, nullptr, readFloat, nullptr, readDouble, nullptr,
                                  nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, refcon, nullptr);
}

void ReadInt(benchmark::State& state) {
  static const VYRADataRef dataRef =
      Publish("bench/int", VYRA_TYPE_INT, Read<int>, nullptr, nullptr, &gValue<int>);
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(VYRAGetDatai(dataRef));
}

void ReadFloat(benchmark::State& state) {
  static const VYRADataRef dataRef =
      Publish("bench/float", VYRA_TYPE_FLOAT, nullptr, Read<float>, nullptr, &gValue<float>);
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(VYRAGetDataf(dataRef));
}

void ReadDouble(benchmark::State& state) {
  static const VYRADataRef dataRef =
      Publish("bench/double", VYRA_TYPE_DOUBLE, nullptr, nullptr, Read<double>, &gValue<double>);
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(VYRAGetDatad(dataRef));
}

// ---- Finding a dataref by name ------------------------------------------------------------------------

// Names once registered stay in the library's registry, so a smaller registry must be measured first.
std::vector<std::string> gNames;

void FindByName(benchmark::State& state, std::size_t count) {
  if (gNames.size() > count) {
    state.SkipWithError("the registry is larger by now: run this in a process of its own");
    return;
  }
  while (gNames.size() < count) {
    std::array<char, 64> name{};
    std::snprintf(name.data(), name.size(), "bench/group_%zu/item_%05zu", gNames.size() % 7, gNames.size());
    Publish(name.data(), VYRA_TYPE_INT, Read<int>, nullptr, nullptr, &gValue<int>);
    gNames.emplace_back(name.data());
  }
  // Asked for in an order that neither the processor nor the registry can foresee.
  std::vector<std::string> names = gNames;
  std::shuffle(names.begin(), names.end(), std::mt19937(1));
  std::size_t next = 0;
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(VYRAFindDataRef(names[next].c_str()));
    if (++next == names.size()) next = 0;
  }
}

// ---- A pass over flight loops -------------------------------------------------------------------------

constexpr int kFlightLoopCount = 100;

int gCalls = 0;

// Asks to be called in the next pass again.
float CountCall(float, float, int, void*) {
  ++gCalls;
  return -1.0F;
}

void BareFlightLoops(benchmark::State& state) {
  std::array<volatile VYRAFlightLoop_f, kFlightLoopCount> callbacks;
  for (auto& callback : callbacks) callback = CountCall;
  for ([[maybe_unused]] auto _ : state) {
    for (const auto& callback : callbacks) callback(0.02F, 1.0F, 1, nullptr);
    benchmark::ClobberMemory();
  }
}

// interval: -1 makes every flight loop due in every pass, 1e9 none.
void FlightLoopPass(benchmark::State& state, float interval) {
  std::vector<VYRAFlightLoopID> flightLoops;
  for (int i = 0; i < kFlightLoopCount; ++i) {
    const VYRAFlightLoopParams params{sizeof params, VYRA_FLIGHT_LOOP_PHASE_0, CountCall, nullptr};
    flightLoops.push_back(VYRACreateFlightLoop(&params));
    VYRAScheduleFlightLoop(flightLoops.back(), interval, 1);
  }
  gCalls = 0;
  for ([[maybe_unused]] auto _ : state) {
    VYRAEventHook(VYRA_EVENT_FLIGHT_LOOPS_0, nullptr, nullptr, 1.0F, 0.0F);
  }
  state.counters["calls_per_pass"] = static_cast<double>(gCalls) / static_cast<double>(state.iterations());
  for (const VYRAFlightLoopID flightLoop : flightLoops) VYRADestroyFlightLoop(flightLoop);
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;

  benchmark::RegisterBenchmark("bare/int", BareRead<int>);
  benchmark::RegisterBenchmark("read/int", ReadInt);
  benchmark::RegisterBenchmark("bare/float", BareRead<float>);
  benchmark::RegisterBenchmark("read/float", ReadFloat);
  benchmark::RegisterBenchmark("bare/double", BareRead<double>);
  benchmark::RegisterBenchmark("read/double", ReadDouble);
  benchmark::RegisterBenchmark("find/100", FindByName, std::size_t{100});
  benchmark::RegisterBenchmark("find/10000", FindByName, std::size_t{10000});
  benchmark::RegisterBenchmark("bare/100_flight_loops", BareFlightLoops);
  benchmark::RegisterBenchmark("pass/100_due", FlightLoopPass, -1.0F);
  benchmark::RegisterBenchmark("pass/100_not_due", FlightLoopPass, 1e9F);

  const RunningLibrary library;
  bench::RatioReporter reporter({{"read/int", "bare/int"},
                                 {"read/float", "bare/float"},
                                 {"read/double", "bare/double"},
                                 {"find/100", "bare/int"},
                                 {"find/10000", "bare/int"},
                                 {"pass/100_due", "bare/100_flight_loops"},
                                 {"pass/100_not_due", "bare/100_flight_loops"}});
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
}
