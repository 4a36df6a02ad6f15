// The files that a flight leaves, also one that ends badly: the report as its schema has it, and JUnit's.
#include <gtest/gtest.h>

#include <cstdlib>
#include <pugixml.hpp>

#include "SimulatorRun.h"

namespace {

using nlohmann::json;

const json kFlight = {{"steps", {{{"frame", 2}, {"unloadAircraft", true}}}},
                      {"expectations",
                       {{{"after", "start"}, {"pluginCount", 2}},
                        {{"frame", 1}, {"pluginCount", 9}},
                        {{"frame", 6}, {"pluginCount", 2}}}}};

// A flight in which a step fails, a module is empty, one expectation holds, one fails, and a plugin's crash
// in frame 5 leaves one that is not reached.
SimulatorRun FlyBadly(const SimulatorFolder& folder, const std::vector<std::string>& arguments) {
  folder.Install("faulty", "faulty/64/lin.vyp");
  folder.Write("", "empty.vyp");
  setenv("VYRA_TEST_FAULT", "null@loop", 1);
  return folder.FlyFile(20, kFlight, arguments);
}

TEST(ReportFiles, EveryReportFitsTheSchema) {
  const SimulatorFolder folder;
  const SimulatorRun bad = FlyBadly(folder, {});
  EXPECT_EQ(bad.exitCode, 3);
  const SimulatorRun good = RunSimulator({"run", "--system", VYRA_SIM_EXAMPLE_FOLDER, "--frames", "900",
                                          "--rate", "60", "--flight", VYRA_SIM_DEMO_FLIGHT, "--cost"});
  EXPECT_EQ(good.exitCode, 0);
  const json schema = json::parse(ReadFile(VYRA_SOURCE_FOLDER "/docs/report.schema.json"));
  json wrong = good.report;
  wrong["plugins"][0]["state"] = "asleep";
  ExpectSchemaHolds({{"definitions", schema.at("definitions")},
                     {"properties", {{"right", {{"items", schema}}}, {"wrong", {{"not", schema}}}}}},
                    {{"right", {bad.report, good.report}}, {"wrong", wrong}});
}

TEST(ReportFiles, WhatWasToldBeforeACrashIsInTheReport) {
  const SimulatorFolder folder;
  const SimulatorRun run = FlyBadly(folder, {});
  EXPECT_EQ(run.report.at("loadFailures").at(0).at("reason"), "it is empty");
  EXPECT_EQ(run.report.at("failedSteps").at(0).at("frame"), 2);
  std::vector<std::string> results;
  for (const json& expectation : run.report.at("expectations")) results.push_back(expectation.at("result"));
  EXPECT_EQ(results, (std::vector<std::string>{"held", "failed", "not reached"}));
  EXPECT_NE(run.output.find("1 ok, 2 FAILED, 1 not reached\n"), std::string::npos) << run.output;
}

TEST(ReportFiles, JUnitHasACaseForTheFlightEachModuleAndEachExpectation) {
  const SimulatorFolder folder;
  const std::string file = folder.Path("junit.xml");
  FlyBadly(folder, {"--junit", file});
  pugi::xml_document document;
  ASSERT_TRUE(document.load_file(file.c_str()));
  const pugi::xml_node suite = document.select_node("/testsuites/testsuite").node();
  EXPECT_EQ(suite.attribute("tests").as_int(), 6);
  EXPECT_EQ(suite.attribute("failures").as_int(), 5);
  const auto message = [&](const std::string& path) {
    return std::string(suite.select_node((path + "/failure/@message").c_str()).attribute().value());
  };
  EXPECT_EQ(message("testcase[@classname='flight']").find("crashed: Faulty (org.skyvora.test.faulty): "), 0U)
      << ReadFile(file);
  EXPECT_EQ(message("testcase[@name='" + folder.Plugins("empty.vyp") + "']"), "it is empty");
  EXPECT_EQ(message("testcase[@name='" + folder.Plugins("faulty/64/lin.vyp") + "']").find("crashed: "), 0U);
  EXPECT_EQ(message("testcase[@classname='expectation'][1]"), "");
  EXPECT_EQ(message("testcase[@classname='expectation'][2]"), "found 2");
  EXPECT_EQ(message("testcase[@classname='expectation'][3]"), "not reached");
}

}  // namespace
