// Reading flight files: what is wrong in one is told with its place, and with the word that was meant. The
// page and the schema that are made from the vocabulary hold what the reader holds.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>

#include "InputError.h"
#include "SimulatorRun.h"
#include "flight/Flight.h"
#include "flight/VocabularyPages.h"

namespace {

namespace fs = std::filesystem;

class FlightFile : public testing::Test {
 protected:
  // What reading this text is refused with, from the position on; empty when it is read.
  std::string Refusal(const std::string& text) const {
    std::ofstream(path) << text;
    try {
      sim::ReadFlight(path, {.systemPath = fs::temp_directory_path().string() + "/", .frames = 20});
      return "";
    } catch (const sim::InputError& error) {
      return std::string(error.what()).substr(path.string().size() + 1);
    }
  }
  void TearDown() override { fs::remove(path); }

  fs::path path = fs::temp_directory_path() / ("flight-" + std::to_string(getpid()) + ".json");
};

TEST_F(FlightFile, UnknownWordGetsTheNearestOneWithItsPlace) {
  EXPECT_EQ(Refusal("{ \"steps\": [\n  { \"frame\": 1,\n    \"writeDatRef\": { \"name\": \"a\" } }] }"),
            "3:5: steps[0]: unknown step \"writeDatRef\"; did you mean \"writeDataRef\"?");
  EXPECT_EQ(Refusal(R"({"steps": [{"frame": 1, "lodaAircraft": "x"}]})"),
            "1:25: steps[0]: unknown step \"lodaAircraft\"; did you mean \"loadAircraft\"?");
  EXPECT_EQ(Refusal(R"({"steps": [{"frame": 1, "teleport": "x"}]})"),
            "1:25: steps[0]: unknown step \"teleport\"");
  // The key beside the word is no word.
  EXPECT_EQ(Refusal(R"({"expectations": [{"frame": 1, "is": "absent", "Plugins": "x"}]})"),
            "1:48: expectations[0]: unknown expectation \"Plugins\"; did you mean \"plugin\"?");
  EXPECT_EQ(Refusal(R"({"step": []})"), "1:2: unknown key \"step\"; did you mean \"steps\"?");
  EXPECT_EQ(Refusal(R"({"steps": [{"frame": 1, "command": {"name": "x", "pases": 1}}]})"),
            "1:50: steps[0].command: unknown key \"pases\"; did you mean \"passes\"?");
  EXPECT_EQ(Refusal(R"({"expectations": [{"frame": 1, "plugin": "x", "is": "enable"}]})"),
            "1:53: expectations[0]: \"is\" must be one of: loaded, enabled, disabled, absent; did you mean "
            "\"enabled\"?");
}

// A number is read one character too far, which here is a line's end.
TEST_F(FlightFile, PlacesAreThoseOfTheFile) {
  EXPECT_EQ(Refusal("{\"steps\": [\n{\"frame\": 21\n,\n\t\"broadcastEvent\":\n2\n}]}"),
            "2:11: steps[0]: frame 21 lies behind the flight's last, 20");
  EXPECT_EQ(Refusal("{\"steps\": [{\"frame\":1,\"broadcastEvent\":2\n},\n  {\"frame\": 1}]}"),
            "3:3: steps[1]: this step has no word that says what it is");
  EXPECT_EQ(Refusal("{\"a/b~\\u00e4\": 1}"), "1:2: unknown key \"a/b~\xc3\xa4\"");
  const fs::path file = path;
  std::ofstream(file) << "{ \"expectations\": [\n\n  {\"frame\": 2, \"pluginCount\": 1},\n"
                         "  {\"after\": \"start\", \"pluginCount\": 1}] }";
  const sim::Flight flight = sim::ReadFlight(file, {.systemPath = "/", .frames = 2});
  ASSERT_EQ(flight.expectations.size(), 2U);
  EXPECT_EQ(flight.expectations[0].line, 4);  // the earlier moment comes first
  EXPECT_EQ(flight.expectations[0].index, 1U);
  EXPECT_EQ(flight.expectations[1].line, 3);
}

TEST_F(FlightFile, WhatIsNoFlightIsRefusedWithItsPlace) {
  EXPECT_EQ(Refusal("{\n  \"steps\": [\n    ]]\n}\n"),
            "3:6: syntax error while parsing object - unexpected ']'; expected '}'");
  EXPECT_EQ(
      Refusal(""),
      "1:1: syntax error while parsing value - unexpected end of input; expected '[', '{', or a literal");
  EXPECT_EQ(Refusal("[]"), "1:1: an object is needed here");
  EXPECT_EQ(Refusal(R"({"steps": {}})"), "1:11: \"steps\" must be an array");
  EXPECT_EQ(Refusal(R"({"steps": [3]})"), "1:12: steps[0]: an object is needed here");
  EXPECT_EQ(Refusal(R"({"steps": [{"frame": 1, "broadcastEvent": 1e999}]})"),
            "1:47: number overflow parsing '1e999'");
  EXPECT_EQ(Refusal(R"({"steps": [{"frame": 1, "frame": 2, "broadcastEvent": 2}]})"),
            "1:25: the key \"frame\" stands here a second time");
}

TEST_F(FlightFile, ValuesAreWhatTheirKeysDeclare) {
  const auto step = [&](const std::string& rest) {
    return Refusal(R"({"steps": [{"frame": 1, )" + rest + "}]}");
  };
  EXPECT_EQ(step(R"("click": {"x": 8192, "y": 0})"),
            "1:40: steps[0].click: \"x\" must be a whole number from 0 to 8191");
  EXPECT_EQ(step(R"("click": {"x": 1.5, "y": 0})"),
            "1:40: steps[0].click: \"x\" must be a whole number from 0 to 8191");
  EXPECT_EQ(step(R"("click": {"x": 1})"), "1:34: steps[0].click: the key \"y\" is missing");
  EXPECT_EQ(step(R"("broadcastEvent": 18446744073709551615)"),
            "1:43: steps[0]: \"broadcastEvent\" must be a whole number from 0 to 2147483647");
  EXPECT_EQ(step(R"("broadcastEvent": 3)"),
            "1:43: steps[0]: event 3 is no broadcast: 2, 4, 6, 7, 11 and 13 are");
  EXPECT_EQ(step(R"("unloadAircraft": false)"), "1:43: steps[0]: \"unloadAircraft\" can only be true");
  EXPECT_EQ(step(R"("key": "PageUp")"),
            "1:32: steps[0]: there is no key \"PageUp\"; did you mean \"Page Up\"?");
  EXPECT_EQ(step(R"("key": "a", "modifiers": ["shft"])"),
            "1:50: steps[0]: \"modifiers\" must be an array of some of: shift, control, alt");
  EXPECT_EQ(
      step(R"("drag": [[1, 2]])"),
      "1:33: steps[0]: \"drag\" must be an array of two pixels or more, each an array of two whole numbers");
  EXPECT_EQ(step(R"("waitUntil": {"dataRef": "a", "equal": 1}, "limit": 9)"),
            "1:55: steps[0].waitUntil: unknown key \"equal\"; did you mean \"equals\"?");
  EXPECT_EQ(step(R"("waitUntil": {"frame": 1, "pluginCount": 1}, "limit": 9)"),
            "1:39: steps[0].waitUntil: unknown key \"frame\"");
  EXPECT_EQ(step(R"("pickMenuItem": "")"),
            "1:41: steps[0]: \"pickMenuItem\" must be a text or an array of texts");
  EXPECT_EQ(step(R"("writeDataRef": {"name": "a", "value": [1, "b"]})"),
            "1:64: steps[0].writeDataRef: \"value\" must be a number, an array of numbers or a text");
  EXPECT_EQ(step(R"("writeDataRef": {"name": "a", "value": "b", "index": 1})"),
            "1:64: steps[0].writeDataRef: \"value\" can only be numbers where an element is written");
  EXPECT_EQ(step(R"("writeDataRef": {"name": "a", "value": 1, "index": 1, "overFrames": 2})"),
            "1:79: steps[0].writeDataRef: an element is written at once");
  EXPECT_NE(step(R"("loadAircraft": "Glider.acf")").find("steps[0]: there is no aircraft file"),
            std::string::npos);
}

TEST_F(FlightFile, EachStepAndExpectationIsOneThingAtOneMoment) {
  EXPECT_EQ(Refusal(R"({"steps": [{"frame": 1, "key": "c", "unloadAircraft": true}]})"),
            "1:25: steps[0]: \"unloadAircraft\" and \"key\" are two steps: each is an object of its own");
  EXPECT_EQ(Refusal(R"({"expectations": [{"pluginCount": 1}]})"),
            "1:19: expectations[0]: an expectation needs one of \"frame\", \"second\", \"after\"");
  EXPECT_EQ(Refusal(R"({"expectations": [{"dataRef": "a", "frame": 1}]})"),
            "1:19: expectations[0]: \"dataRef\" needs one of \"equals\", \"atLeast\", \"atMost\", "
            "\"between\", \"changesBy\", \"contains\", \"absent\"");
  EXPECT_EQ(Refusal(R"({"expectations": [{"dataRef": "a", "frame": 1, "equals": 1, "atLeast": 1}]})"),
            "1:19: expectations[0]: \"dataRef\" needs only one of \"equals\", \"atLeast\", \"atMost\", "
            "\"between\", \"changesBy\", \"contains\", \"absent\"");
}

TEST(Vocabulary, PageInTheTreeIsMadeFromIt) {
  EXPECT_EQ(ReadFile(VYRA_SOURCE_FOLDER "/docs/flight-files.md"), sim::VocabularyPage())
      << "vyra-sim vocabulary > docs/flight-files.md makes it anew";
}

// No word is a key that may stand beside another word, so that an entry's word can be told from its keys.
TEST(Vocabulary, EveryWordCanBeToldFromTheKeysBesideIt) {
  const auto check = [](const auto& rooms) {
    std::set<std::string_view> words;
    for (const auto& room : rooms) EXPECT_TRUE(words.insert(room.word.key.name).second) << room.word.key.name;
    for (const auto& room : rooms)
      for (const sim::Key& key : room.word.others) EXPECT_FALSE(words.contains(key.name)) << key.name;
  };
  check(sim::StepWords());
  check(sim::ExpectationWords());
}

// All in one run of the checker, which takes most of a second to begin: the schema holds for the one that is
// right, and for none of the others.
TEST_F(FlightFile, SchemaRefusesWhatTheReaderRefuses) {
  using nlohmann::json;
  const json schema = json::parse(sim::VocabularySchema());
  json wrong = json::array();
  for (const char* const text :
       {R"({"steps": [{"frame": 1, "writeDatRef": {"name": "a", "value": 1}}]})",
        R"({"steps": [{"frame": 1, "click": {"x": 8192, "y": 0}}]})", R"({"steps": [{"broadcastEvent": 2}]})",
        R"({"expectations": [{"frame": 1, "after": "end", "pluginCount": 1}]})",
        R"({"expectations": [{"frame": 1, "dataRef": "a"}]})", R"({"step": []})"}) {
    EXPECT_NE(Refusal(text), "") << text;
    wrong.push_back(json::parse(text));
  }
  const json right = json::parse(ReadFile(VYRA_SOURCE_FOLDER "/plugins/demo-flight.json"));
  ExpectSchemaHolds({{"properties", {{"right", schema}, {"wrong", {{"items", {{"not", schema}}}}}}}},
                    {{"right", right}, {"wrong", wrong}});
}

}  // namespace
