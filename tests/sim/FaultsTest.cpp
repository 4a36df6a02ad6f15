// Plugins with one fault each: the report names the plugin, the call and what happened.
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <ostream>

#include "SimulatorRun.h"

namespace {

constexpr const char* kFaulty = "org.skyvora.test.faulty";

struct FaultCase {
  const char* fault;      // as modules/Faulty.cpp reads it
  const char* result;     // of the report
  const char* signature;  // of the culprit; empty where it has not named itself
  const char* call;
  const char* message;  // a part of the culprit's
  const char* frame;    // a part of its backtrace; null for none

  friend std::ostream& operator<<(std::ostream& stream, const FaultCase& test) {
    return stream << test.fault;
  }
};

const nlohmann::json kFlight = {{"steps",
                                 {{{"frame", 5}, {"pickMenuItem", "Plugins/Faulty/Fail"}},
                                  {{"frame", 6}, {"sendMessage", {{"to", kFaulty}, {"message", 1000}}}}}},
                                {"expectations", {{{"after", "shutdown"}, {"pluginCount", 0}}}}};

class FaultsOfPlugins : public testing::TestWithParam<FaultCase> {};

TEST_P(FaultsOfPlugins, AreNamed) {
  const FaultCase& test = GetParam();
  const SimulatorFolder folder;
  const std::string module = folder.Install("faulty", "faulty/64/lin.vyp");
  folder.Install("caller", "caller/64/lin.vyp");
  setenv("VYRA_TEST_FAULT", test.fault, 1);
  const SimulatorRun run = folder.FlyFile(20, kFlight, {"--stall-limit", "2"});
  EXPECT_EQ(run.exitCode, 3) << run.output << run.error;
  EXPECT_EQ(run.report.at("exitCode"), 3);
  EXPECT_EQ(run.report.at("result"), test.result);
  const nlohmann::json& culprit = run.report.at("culprit");
  EXPECT_EQ(culprit.at("path"), module);
  EXPECT_TRUE(run.log.ends_with("half a line") || run.report.at("result") == "exception") << run.log;
  EXPECT_EQ(culprit.at("signature"), test.signature);
  EXPECT_EQ(culprit.at("call"), test.call);
  EXPECT_NE(culprit.at("message").get<std::string>().find(test.message), std::string::npos) << culprit;
  const std::string frame = test.frame != nullptr ? test.frame : "";
  EXPECT_NE(culprit.at("backtrace").dump().find(frame), std::string::npos) << culprit;
}

INSTANTIATE_TEST_SUITE_P(
    All, FaultsOfPlugins,
    testing::Values(
        FaultCase{"null@constructor", "crashed", "", "opening", "null pointer", "WriteToNull"},
        FaultCase{"null@start", "crashed", "", "start", "null pointer", "VyPluginStart"},
        FaultCase{"null@enable", "crashed", kFaulty, "enable", "null pointer", "VyPluginEnable"},
        FaultCase{"null@loop", "crashed", kFaulty, "flight loop", "null pointer", "FlightLoop"},
        FaultCase{"null@draw", "crashed", kFaulty, "draw callback", "null pointer", "DrawPhase"},
        FaultCase{"null@window", "crashed", kFaulty, "window draw", "null pointer", "WriteToNull"},
        FaultCase{"null@menu", "crashed", kFaulty, "menu", "null pointer", "WriteToNull"},
        FaultCase{"null@message", "crashed", kFaulty, "message", "null pointer", "VyPluginReceiveMessage"},
        FaultCase{"null@disable", "crashed", kFaulty, "disable", "null pointer", "VyPluginDisable"},
        FaultCase{"null@stop", "crashed", kFaulty, "stop", "null pointer", "VyPluginStop"},
        FaultCase{"null@destructor", "crashed", kFaulty, "closing", "null pointer", "WriteToNull"},
        FaultCase{"null@accessor", "crashed", kFaulty, "dataref", "null pointer", "WriteToNull"},
        FaultCase{"null@help", "crashed", kFaulty, "flight loop", "Caller was called", "FaultyHelp"},
        FaultCase{"null-in-thread@loop", "crashed", kFaulty, "", "thread of its own", "WriteToNull"},
        FaultCase{"abort@loop", "crashed", kFaulty, "flight loop", "abort", "FlightLoop"},
        FaultCase{"overflow@loop", "crashed", kFaulty, "flight loop", "stack overflow", " times)"},
        FaultCase{"division@loop", "crashed", kFaulty, "flight loop", "division by zero", "FlightLoop"},
        FaultCase{"jump@loop", "crashed", kFaulty, "flight loop", "jump to address 0x123400", "FlightLoop"},
        FaultCase{"bad-pointer@loop", "crashed", kFaulty, "flight loop", "null pointer",
                  "UseLibraryWithBadPointer"},
        FaultCase{"endless@loop", "stalled", kFaulty, "flight loop", "has not returned", "FlightLoop"},
        FaultCase{"endless@start", "stalled", "", "start", "has not returned", "VyPluginStart"},
        FaultCase{"endless@accessor", "stalled", kFaulty, "dataref", "has not returned", "SpinForever"},
        FaultCase{"exception@loop", "exception", kFaulty, "flight loop",
                  "std::out_of_range: thrown on purpose", "FlightLoop"},
        FaultCase{"exception@accessor", "exception", kFaulty, "dataref", "thrown on purpose", nullptr},
        FaultCase{"exception@start", "exception", "", "start", "thrown on purpose", "VyPluginStart"},
        FaultCase{"exception@constructor", "exception", "", "opening", "thrown on purpose", "Construct"},
        FaultCase{"number@menu", "exception", kFaulty, "menu", "int", nullptr},
        FaultCase{"exit@loop", "exited", kFaulty, "flight loop", "exit", "FlightLoop"},
        FaultCase{"exit@constructor", "exited", "", "opening", "exit", "exit"},
        FaultCase{"quick_exit@loop", "exited", kFaulty, "flight loop", "exit", "FlightLoop"},
        FaultCase{"_exit@loop", "exited", kFaulty, "flight loop", "exit code 0", nullptr}),
    [](const auto& test) {
      std::string name = test.param.fault;
      for (char& letter : name)
        if (std::isalnum(static_cast<unsigned char>(letter)) == 0) letter = '_';
      return name;
    });

// Flies with the faulty plugin alone.
SimulatorRun FlyFaulty(const SimulatorFolder& folder, const char* fault,
                       const std::vector<std::string>& arguments = {}) {
  folder.Install("faulty", "faulty/64/lin.vyp");
  setenv("VYRA_TEST_FAULT", fault, 1);
  return folder.FlyFile(20, kFlight, arguments);
}

// The plugin is gone when its code crashes, so nothing but its former place names it.
TEST(FaultsOfThreads, CodeOfAClosedModuleNamesItsPlugin) {
  const SimulatorFolder folder;
  folder.Install("faulty", "../../Aircraft/Test/plugins/faulty/64/lin.vyp");
  folder.Write(R"({"name": "Test"})", "../../Aircraft/Test/Test.acf");
  setenv("VYRA_TEST_FAULT", "thread-left@start", 1);
  const SimulatorRun run = folder.FlyFile(600,
                                          {{"steps",
                                            {{{"frame", 2}, {"loadAircraft", "Aircraft/Test/Test.acf"}},
                                             {{"frame", 5}, {"unloadAircraft", true}}}}},
                                          {"--realtime"});
  EXPECT_EQ(run.exitCode, 3) << run.output;
  EXPECT_EQ(run.report.at("result"), "crashed");
  const nlohmann::json& culprit = run.report.at("culprit");
  EXPECT_EQ(culprit.at("path"), folder.Path("Aircraft/Test/plugins/faulty/64/lin.vyp"));
  EXPECT_EQ(culprit.at("signature"), kFaulty);
  EXPECT_NE(culprit.at("message").get<std::string>().find("after its module was closed"), std::string::npos)
      << culprit;
}

TEST(NoFault, ExceptionThatIsCaughtPasses) {
  EXPECT_EQ(FlyFaulty(SimulatorFolder(), "catch@loop").exitCode, 0);
}

TEST(NoFault, CopyOfTheFlightMayExit) {
  const SimulatorRun run = FlyFaulty(SimulatorFolder(), "exit-in-copy@loop");
  EXPECT_EQ(run.exitCode, 0) << run.output;
  EXPECT_EQ(run.report.at("result"), "passed");
}

// Who sent the signal, or why it came, is not known; but where the flight was is.
TEST(Faults, SignalThatTellsNothingBlamesNobody) {
  for (const char* const fault : {"signal-from-outside@loop", "kill@loop"}) {
    const SimulatorRun run = FlyFaulty(SimulatorFolder(), fault);
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.report.at("result"), "crashed");
    EXPECT_FALSE(run.report.contains("culprit"));
    EXPECT_NE(run.report.at("failures").dump().find("Faulty was called, for: flight loop"), std::string::npos)
        << run.report;
  }
}

TEST(Faults, LeaveAReportOfAllPlugins) {
  const SimulatorFolder folder;
  const std::vector<std::string> paths = {folder.Plugins("faulty/64/lin.vyp"),
                                          folder.Install("plain", "plain/64/lin.vyp"),
                                          folder.Install("reader", "reader/64/lin.vyp")};
  const SimulatorRun run = FlyFaulty(folder, "null@loop");
  ASSERT_EQ(run.report.at("plugins").size(), paths.size()) << run.report;
  for (std::size_t i = 0; i < paths.size(); ++i) {
    const nlohmann::json& plugin = run.report.at("plugins")[i];
    EXPECT_EQ(plugin.at("path"), paths[i]);
    EXPECT_EQ(plugin.at("state"), "enabled");
    EXPECT_NE(plugin.at("name"), "");
  }
}

TEST(Faults, CoreIsLeftByTheSignalItself) {
  const SimulatorRun run = FlyFaulty(SimulatorFolder(), "null@loop", {"--core"});
  EXPECT_EQ(run.exitCode, 128 + SIGSEGV);
  EXPECT_EQ(run.report.at("culprit").at("signature"), kFaulty);
}

TEST(Faults, AreRememberedForTheNextStart) {
  const SimulatorFolder folder;
  const std::vector<std::string> state = {"--state", folder.Path("state")};
  const std::string line =
      "crashed: Faulty, flight loop; to fly without that plugin: --skip Resources/plugins/faulty\n";
  EXPECT_EQ(FlyFaulty(folder, "null@loop", state).output.find(line), std::string::npos);
  setenv("VYRA_TEST_FAULT", "none", 1);
  EXPECT_NE(folder.Fly(1, state).output.find(line), std::string::npos);
  EXPECT_EQ(folder.Fly(1, state).output.find(line), std::string::npos);
}

TEST(WithoutSupervisor, ExitNamesThePlugin) {
  const SimulatorRun run = FlyFaulty(SimulatorFolder(), "exit@loop", {"--no-supervisor"});
  EXPECT_EQ(run.exitCode, 3);
  EXPECT_EQ(run.report.at("result"), "exited");
  EXPECT_EQ(run.report.at("culprit").at("signature"), kFaulty);
  EXPECT_EQ(run.report.at("culprit").at("call"), "flight loop");
}

TEST(WithoutSupervisor, CrashIsLeftToTheDebugger) {
  setenv("ASAN_OPTIONS", "handle_segv=0", 1);
  EXPECT_EQ(FlyFaulty(SimulatorFolder(), "null@loop", {"--no-supervisor"}).exitCode, 128 + SIGSEGV);
}

// The plugins are stopped, and what had not been reached is said.
TEST(EndRequest, EndsTheFlightInOrder) {
  const SimulatorFolder folder;
  folder.Install("faulty", "faulty/64/lin.vyp");
  setenv("VYRA_TEST_FAULT", "ask-for-end@loop", 1);
  const SimulatorRun run =
      folder.FlyFile(3000,
                     {{"expectations",
                       {{{"frame", 3000}, {"pluginCount", 2}}, {{"after", "shutdown"}, {"pluginCount", 0}}}}},
                     {"--realtime"});
  EXPECT_EQ(run.exitCode, 1) << run.output;
  EXPECT_NE(run.output.find("SIGTERM asks for the end of the flight"), std::string::npos) << run.output;
  EXPECT_EQ(run.report.at("expectations").at(0).at("result"), "not reached");
  EXPECT_LT(run.report.at("totals").at("frames"), 3000);
}

}  // namespace
