// The services of each family, as a plugin sees them, and what they change in the simulator's world.
#include <gtest/gtest.h>

#include "SimulatorRun.h"
#include "host/CommandServices.h"
#include "host/OwnDataRefs.h"
#include "host/ReferencePage.h"

namespace {

using nlohmann::json;

json Press(int frame, const std::string& command, int passes = 1) {
  return {{"frame", frame}, {"command", {{"name", command}, {"passes", passes}}}};
}

json Write(int frame, const std::string& dataRef, const json& value) {
  return {{"frame", frame}, {"writeDataRef", {{"name", dataRef}, {"value", value}}}};
}

json Equals(int frame, const std::string& dataRef, const json& value) {
  return {{"frame", frame}, {"dataRef", dataRef}, {"equals", value}};
}

json EqualsAt(int frame, const std::string& dataRef, int index, const json& value) {
  return {{"frame", frame}, {"dataRef", dataRef}, {"index", index}, {"equals", value}};
}

json AtLeast(int frame, const std::string& dataRef, const json& value) {
  return {{"frame", frame}, {"dataRef", dataRef}, {"atLeast", value}};
}

json LogHas(int frame, const std::string& text, int times = 1) {
  return {{"frame", frame}, {"logContains", text}, {"times", times}};
}

json LogLacks(int frame, const std::string& text) { return {{"frame", frame}, {"logLacks", text}}; }

// A flight of the test module "explorer", all of whose expectations must hold.
class WorldFlight : public testing::Test {
 protected:
  WorldFlight() { folder.Install("explorer", "explorer/64/lin.vyp"); }

  void Fly(int frames, const std::vector<json>& steps, const std::vector<json>& expectations) const {
    const SimulatorRun run = folder.FlyFile(frames, {{"steps", steps}, {"expectations", expectations}});
    EXPECT_EQ(run.exitCode, 0) << run.error << run.output << run.log;
    ASSERT_TRUE(run.report.is_object());
    for (const json& expectation : run.report.at("expectations")) EXPECT_EQ(expectation.at("result"), "held");
  }

  // Writes a file of the simulator folder, and gives its path.
  std::string Put(const std::string& text, const std::string& place) const {
    folder.Write(text, "../../" + place);
    return folder.Path(place);
  }

  const SimulatorFolder folder;
};

constexpr const char* kTriangle = "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";
constexpr const char* kDamagedObject = "v 0 0 0\nv 1 0 zero\n";

TEST_F(WorldFlight, EarthAndTerrainAreTheOnesThatAreDocumented) {
  Fly(10, {Press(5, "explore/terrain")},
      {LogHas(5, "explorer: at the published place: 1"),
       LogHas(5, "explorer: origin at 54.300000, 10.100000, 0.000000"),
       LogHas(5, "explorer: home: result 0, wet 0, normal 1.00000, speed 0.0"),
       LogHas(5, "explorer: ship: result 0, wet 0, normal 1.00000, speed 8.0"),
       LogHas(5, "explorer: sea: result 0, wet 1, normal 1.00000, speed 0.0"),
       LogHas(5, "explorer: nowhere: result 2, wet 0")});
}

TEST_F(WorldFlight, NavaidsAreFoundByEveryWay) {
  const std::string home = "type 1 HOME (Home Field) at 24.0 m, 128025 kHz, 70 degrees, in region 1";
  Fly(5, {Press(2, "explore/navigation")},
      {AtLeast(2, "sim/navigation/navaid_count", 200), LogHas(2, "explorer: first: " + home),
       LogHas(2, "explorer: counted as published: 1"), LogHas(2, "explorer: types in order: 1"),
       LogHas(2, "explorer: nearest airport: " + home), LogHas(2, "explorer: by frequency: " + home),
       LogHas(2, "explorer: by name: type 8 "),
       LogHas(2, "explorer: none: type 0  () at 0.0 m, 0 kHz, 0 degrees, in region 0")});
}

TEST_F(WorldFlight, NavaidsOfTheFolderReplaceTheSimulatorsOwnUnlessTheyAreDamaged) {
  const std::string header =
      "type,ident,name,latitude_deg,longitude_deg,elevation_m,frequency_khz,heading_deg\n";
  const std::string file = Put(header + "vor,ABC,Abbey,54.2,10.2,5,113000,0\n", "Resources/navigation.csv");
  Fly(2, {}, {Equals(1, "sim/navigation/navaid_count", 1)});
  Put(header + "vor,ABC,Abbey,54.2\n", "Resources/navigation.csv");
  Fly(2, {},
      {AtLeast(1, "sim/navigation/navaid_count", 200),
       LogHas(1, "Failed: " + file + ":2: there are 4 columns, not 8")});
}

TEST_F(WorldFlight, FlightPlanLeadsTheGpsAndTheAutopilot) {
  Fly(3'000,
      {Press(2, "explore/make_plan"), Press(3, "explore/tell_plan"), Press(5, "sim/gps/to_nearest_airport"),
       Write(6, "sim/aircraft/longitude_deg", 10.3), Press(7, "sim/autopilot/gps_hold")},
      {LogHas(2, "explorer: plan: 3 entries, 2 shown, 0 flown to, GPS 0 of type 1"),
       Equals(2, "sim/gps/destination_ident", "HOME"), Equals(2, "sim/flight_plan/displayed_entry", 2),
       LogHas(3, "explorer: entry 0: type 1 'HOME' navaid 0 at 500 m, 54.30, 10.10"),
       LogHas(3, "explorer: entry 1: type 0 '' navaid -1 at 0 m, 0.00, 0.00"),
       LogHas(3, "explorer: entry 2: type 32 '' navaid -1 at 900 m, 54.50, 10.25"),
       LogHas(3, "explorer: plan: 1 entries once the last is empty"),
       AtLeast(7, "sim/gps/distance_m", 10'000), Equals(8, "sim/autopilot/flies_to_gps_destination", 1),
       AtLeast(3'000, "sim/gps/bearing_deg", 265), AtLeast(3'000, "sim/aircraft/heading_deg", 265)});
}

TEST_F(WorldFlight, FilesAreSavedAndLoadedAndDamagedOnesRefused) {
  const std::string plan =
      Put("{\n  \"format\": \"Skyvora flight plan 1\",\n  oops\n}\n", "damaged-plan.json");
  const std::string situation =
      Put("{\n  \"format\": \"Skyvora situation 1\",\n  \"aircraft\": 5\n}\n", "damaged-situation.json");
  Fly(100,
      {Press(2, "explore/make_plan"), Write(2, "sim/controls/rudder_ratio", 0.25),
       Write(3, "sim/aircraft/fuel_kg", 33), Press(4, "explore/files"), Write(50, "sim/aircraft/fuel_kg", 5),
       Write(50, "sim/controls/rudder_ratio", 0), Press(60, "explore/load_situation")},
      {LogHas(4, "explorer: saved plan 1, situation 1"), LogHas(4, "explorer: saved nowhere 0"),
       LogHas(4, "none/plan.json: the file cannot be written: No such file or directory"),
       LogHas(4, "explorer: loaded damaged 0 and 0, without a path 0"),
       LogHas(4, "Failed: " + plan + ":3: syntax error"),
       LogHas(4, "Failed: " + situation + ":3: this must be a text"),
       LogHas(4, "explorer: entries before loading 0"), LogHas(4, "explorer: loaded plan 1"),
       LogHas(4, "explorer: message 107"), Equals(4, "sim/flight_plan/entry_count", 3),
       Equals(4, "sim/flight_plan/displayed_entry", 2), LogHas(60, "explorer: loaded situation 1"),
       LogHas(60, "explorer: message 101"), Equals(60, "sim/controls/rudder_ratio", 0.25),
       AtLeast(60, "sim/aircraft/fuel_kg", 32.9), Equals(55, "sim/controls/rudder_ratio", 0)});
}

TEST_F(WorldFlight, FilesAreSavedAndLoadedByStepsToo) {
  Put(R"({"format": "Skyvora situation 1", "aircraft": 5})", "damaged.json");
  const std::vector<json> steps = {Press(2, "explore/make_plan"),
                                   Write(3, "sim/aircraft/fuel_kg", 33),
                                   {{"frame", 4}, {"saveFlightPlan", "plan.json"}},
                                   {{"frame", 4}, {"saveSituation", "situation.json"}},
                                   Press(5, "explore/tell_plan"),
                                   {{"frame", 6}, {"placeAtAirport", "HOME"}},
                                   Write(7, "sim/aircraft/fuel_kg", 5),
                                   {{"frame", 9}, {"loadFlightPlan", "plan.json"}},
                                   {{"frame", 9}, {"loadSituation", "situation.json"}}};
  const std::vector<json> expectations = {
      Equals(3, "sim/flight_plan/entry_count", 3),  Equals(5, "sim/flight_plan/entry_count", 1),
      Equals(9, "sim/flight_plan/entry_count", 3),  LogHas(9, "explorer: message 107"),
      LogHas(9, "explorer: message 101"),           AtLeast(9, "sim/aircraft/fuel_kg", 32.9),
      Equals(8, "sim/aircraft/wheels_on_ground", 3)};
  Fly(10, steps, expectations);
  const SimulatorRun run = folder.FlyFile(5, {{"steps",
                                               {{{"frame", 2}, {"loadSituation", "damaged.json"}},
                                                {{"frame", 3}, {"saveFlightPlan", "none/plan.json"}},
                                                {{"frame", 4}, {"placeAtAirport", "NONE"}}}}});
  EXPECT_EQ(run.exitCode, 1);
  ASSERT_TRUE(run.report.is_object());
  EXPECT_EQ(run.report.at("failedSteps").size(), 3U) << run.output;
}

TEST_F(WorldFlight, SceneryIsLookedUpLoadedDrawnAndReadAnew) {
  Put(R"({"name": "A", "objects": [{"path": "towers/light.obj", "file": "light.obj",
      "region": {"south_deg": 54, "north_deg": 55, "west_deg": 9, "east_deg": 11}}]})",
      "Scenery/A/package.json");
  Put(kTriangle, "Scenery/A/light.obj");
  const std::string index = Put("{\n\"name\": 5,\n\"objects\": []}", "Scenery/B/package.json");
  const std::string damaged = Put(kDamagedObject, "damaged.obj");
  Fly(20, {Press(3, "explore/scenery")},
      {Equals(1, "sim/scenery/package_count", 1),
       LogHas(1, "Failed: " + index + ":2: this must be a text"),
       LogHas(3, "explorer: found Scenery/A/light.obj"),
       LogHas(3, "explorer: looked up 1 here"),
       LogHas(3, "explorer: looked up 0 elsewhere"),
       LogHas(3, "explorer: damaged at once: none"),
       LogHas(3, "Failed: " + damaged + ":2: \"zero\" is no number"),
       Equals(3, "sim/scenery/objects_loading", 1),
       Equals(3, "sim/scenery/reloads", 1),
       LogHas(3, "explorer: message 105"),
       LogHas(3, "Failed: " + index + ":2: this must be a text", 2),
       Equals(2, "sim/scenery/objects_drawn", 0),
       Equals(3, "sim/scenery/objects_drawn", 2),
       {{"frame", 3}, {"objectDrawn", "Scenery/A/light.obj"}, {"times", 2}},
       {{"frame", 3},
        {"objectDrawn", "Scenery/A/light.obj"},
        {"times", 1},
        {"at", {{"x", 100}, {"y", 0}, {"z", 0}, {"within", 0.1}}}},
       {{"frame", 2}, {"objectDrawn", "Scenery/A/light.obj"}, {"times", 0}},
       Equals(3, "sim/scenery/objects_loaded", 1),
       LogLacks(6, "explorer: damaged object: none"),
       LogHas(7, "explorer: damaged object: none")});
}

TEST_F(WorldFlight, AiPlanesFlyUntilAPluginFliesAndDrawsThem) {
  Fly(300,
      {Press(100, "explore/take_planes"), Press(101, "explore/fly_plane"),
       Press(200, "explore/give_planes_back")},
      {Equals(99, "sim/planes/active_count", 4),
       EqualsAt(99, "sim/planes/times_drawn_by_plugin", 1, 0),
       LogHas(100, "explorer: planes taken: 1"),
       EqualsAt(100, "sim/planes/times_drawn_by_plugin", 1, 1),
       EqualsAt(100, "sim/planes/times_drawn_by_plugin", 2, 0),
       {{"frame", 99}, {"planeDrawn", 1}, {"by", "simulator"}},
       {{"frame", 100}, {"planeDrawn", 1}, {"by", "plugin"}},
       Equals(101, "sim/private/net_disables/ai_loc[1]", 1),
       Equals(190, "sim/planes/plane1_latitude_deg", 54.75),
       Equals(201, "sim/private/net_disables/ai_loc[1]", 0),
       EqualsAt(201, "sim/planes/times_drawn_by_plugin", 1, 0),
       AtLeast(300, "sim/planes/plane1_latitude_deg", 54.7)});
}

TEST_F(WorldFlight, UsersAircraftIsLoadedWithItsNumbersUnlessItIsDamaged) {
  const std::string damaged =
      Put("{\"name\": \"Damaged\",\n\"wing\": {\"area_m2\": \"large\"}}", "Aircraft/Damaged/Damaged.acf");
  Put(R"({"name": "Kite", "model": "kite.obj", "mass": {"empty_kg": 400}})", "Aircraft/Kite/Kite.acf");
  Put(kTriangle, "Aircraft/Kite/kite.obj");
  folder.Install("reader", "../../Aircraft/Kite/plugins/reader/64/lin.vyp");
  Fly(20, {Press(10, "explore/set_users_aircraft")},
      {AtLeast(9, "sim/aircraft/mass_kg", 939),
       LogHas(10, "Failed: " + damaged + ":2: this must be a number"),
       Equals(10, "sim/aircraft/name", "Kite"),
       AtLeast(10, "sim/aircraft/mass_kg", 479),
       {{"frame", 10}, {"dataRef", "sim/aircraft/model_path"}, {"contains", "Aircraft/Kite/Kite.acf"}},
       {{"frame", 10}, {"plugin", "org.skyvora.test.reader"}, {"is", "enabled"}},
       LogHas(10, "explorer: message 102")});
}

TEST_F(WorldFlight, AircraftIsPlacedAtAirportsAndAnewAfterACrash) {
  Fly(700,
      {Press(10, "explore/place"), Write(100, "sim/aircraft/altitude_m", 300),
       Write(101, "sim/aircraft/has_crashed", 1), Press(200, "explore/take_planes"),
       Press(201, "explore/place_again"), Press(300, "sim/aircraft/place_on_ship"),
       Write(400, "sim/aircraft/latitude_deg", 55.7), Write(400, "sim/aircraft/altitude_m", 2'000),
       Press(401, "sim/aircraft/place_at_nearest_airport")},
      {LogHas(10, "Failed: there is no airport NONE"), LogHas(10, "explorer: message 103"),
       Equals(60, "sim/aircraft/is_on_ground", 1), Equals(60, "sim/terrain/ground_altitude_m", 24),
       Equals(60, "sim/aircraft/wheels_on_ground", 3), Equals(101, "sim/aircraft/has_crashed", 1),
       LogHas(201, "explorer: message 103", 2), Equals(260, "sim/aircraft/has_crashed", 0),
       Equals(260, "sim/aircraft/is_on_ground", 1), Equals(360, "sim/terrain/is_deck", 1),
       Equals(360, "sim/aircraft/is_on_ground", 1), AtLeast(360, "sim/aircraft/ground_speed_m_per_s", 7.8),
       LogLacks(400, "explorer: message 104"), LogHas(401, "explorer: message 104"),
       AtLeast(401, "sim/earth/reference_latitude_deg", 55)});
}

TEST_F(WorldFlight, DrawingStateAndTexturesAreKept) {
  Fly(5, {Press(2, "explore/graphics")},
      {LogHas(2, "explorer: textures differ 1, panel 1, none 0"),
       Equals(2, "sim/graphics/state", {1, 2, 3, 4, 5, 6, 7}),
       Equals(2, "sim/graphics/bound_textures", {0, 5, 0, 0}), Equals(2, "sim/graphics/textures_made", 2)});
}

TEST_F(WorldFlight, KeysButtonsSpeechAndSymbolsReachTheSimulator) {
  Fly(400, {Press(2, "explore/input"), Press(50, "explore/release_button")},
      {LogHas(2, "Speech: good evening"),
       Equals(2, "sim/speech/last_text", "good evening"),
       {{"frame", 2}, {"screenShows", "good evening"}},
       {{"frame", 303}, {"screenLacks", "good evening"}},
       LogHas(2, "explorer: key", 2),
       LogHas(3, "explorer: key 0, virtual 116"),
       LogHas(3, "explorer: key 113, virtual 81"),
       Equals(3, "sim/autopilot/holds_altitude", 1),
       Equals(1, "sim/autopilot/holds_altitude", 0),
       Equals(3, "sim/input/simulated_keys", 2),
       Equals(2, "sim/aircraft/throttle_ratio", 1),
       Equals(2, "sim/controls/brake_ratio", 1),
       Equals(2, "sim/input/buttons_held", 1),
       Equals(50, "sim/controls/brake_ratio", 0),
       Equals(50, "sim/input/buttons_held", 0),
       LogHas(2, "explorer: symbols: 0.017 s, 24.0 m, beyond 1, none 1"),
       LogHas(2, "explorer: by symbol")});
}

TEST_F(WorldFlight, SystemAndMenusAreWhatPluginsMakeOfThem) {
  const auto item = [](int frame, const char* name, const char* state) {
    return json{{"frame", frame}, {"menuItem", {"Plugins", "Explore", name}}, {"is", state}};
  };
  Fly(10,
      {Press(2, "explore/system"), Press(3, "explore/make_menu"), Press(5, "explore/change_menu"),
       Press(7, "explore/destroy_menu")},
      {LogHas(2, "explorer: system: prefs in place 1, version 600, host 1, language 0"),
       item(3, "first", "plain"), item(3, "second", "plain"), item(5, "first", "absent"),
       item(5, "second", "absent"), item(5, "renamed", "plain"), item(7, "renamed", "absent")});
}

TEST_F(WorldFlight, WritingAControlTakesItFromTheAutopilot) {
  Fly(120,
      {Write(2, "sim/controls/aileron_ratio", 0.5), Write(3, "sim/controls/elevator_ratio", 0.1),
       Write(60, "sim/aircraft/target_heading_deg", -90), Write(61, "sim/controls/rudder_ratio", 7)},
      {Equals(1, "sim/autopilot/holds_heading", 1), Equals(2, "sim/autopilot/holds_heading", 0),
       Equals(3, "sim/autopilot/holds_pitch", 0), AtLeast(30, "sim/aircraft/roll_deg", 10),
       Equals(60, "sim/autopilot/holds_heading", 1), Equals(60, "sim/aircraft/target_heading_deg", 270),
       Equals(61, "sim/controls/rudder_ratio", 1)});
}

TEST_F(WorldFlight, WorldStandsStillWhilePaused) {
  Fly(100,
      {Press(10, "sim/time/pause"), Press(50, "sim/time/pause"), Press(20, "sim/aircraft/place_at_home")},
      {Equals(15, "sim/time/is_paused", 1), Equals(49, "sim/aircraft/wheels_on_ground", 0),
       Equals(60, "sim/aircraft/wheels_on_ground", 3)});
}

// Each of the simulator's own commands changes what is published, or says so; those that need more than one
// flight to show are tested on their own above.
TEST_F(WorldFlight, ControlsAndAutopilotFollowTheirCommands) {
  Fly(200,
      {Press(2, "sim/throttle/full"),
       Press(3, "sim/throttle/idle"),
       Press(4, "sim/throttle/increase", 4),
       Press(9, "sim/autopilot/off"),
       Press(10, "sim/controls/centre"),
       Press(11, "sim/controls/elevator_up", 4),
       Press(16, "sim/controls/aileron_left", 4),
       Press(21, "sim/controls/rudder_right", 4),
       Press(26, "sim/controls/trim_down", 4),
       Press(31, "sim/controls/centre"),
       Press(32, "sim/controls/trim_neutral"),
       Press(33, "sim/controls/brake", 5),
       Press(40, "sim/controls/parking_brake"),
       Press(50, "sim/autopilot/heading_hold"),
       Press(51, "sim/autopilot/pitch_hold"),
       Press(52, "sim/autopilot/altitude_hold"),
       Press(53, "sim/autopilot/heading_left", 4),
       Press(60, "sim/autopilot/altitude_up", 4),
       Press(70, "sim/autopilot/pitch_down", 4),
       Press(80, "sim/weather/wind_stronger", 4),
       Press(85, "sim/weather/wind_left", 4),
       Press(95, "sim/weather/calm"),
       Write(100, "sim/aircraft/fuel_kg", 1),
       Press(101, "sim/aircraft/refuel"),
       Press(110, "sim/view/farther", 20)},
      {Equals(2, "sim/aircraft/throttle_ratio", 1),
       Equals(3, "sim/aircraft/throttle_ratio", 0),
       Equals(9, "sim/aircraft/throttle_ratio", 0.05),
       Equals(10, "sim/autopilot/holds_heading", 0),
       Equals(15, "sim/controls/elevator_ratio", 0.1),
       Equals(20, "sim/controls/aileron_ratio", -0.1),
       Equals(25, "sim/controls/rudder_ratio", 0.1),
       Equals(30, "sim/controls/elevator_trim_ratio", -0.025),
       Equals(31, "sim/controls/elevator_ratio", 0),
       Equals(31, "sim/controls/rudder_ratio", 0),
       Equals(32, "sim/controls/elevator_trim_ratio", 0),
       Equals(36, "sim/controls/brake_ratio", 1),
       Equals(39, "sim/controls/brake_ratio", 0),
       Equals(40, "sim/controls/brake_ratio", 1),
       Equals(50, "sim/autopilot/holds_heading", 1),
       Equals(51, "sim/autopilot/holds_pitch", 1),
       Equals(52, "sim/autopilot/holds_altitude", 1),
       Equals(58, "sim/aircraft/target_heading_deg", 85),
       Equals(66, "sim/autopilot/target_altitude_m", 425),
       Equals(76, "sim/autopilot/target_pitch_deg", 1.5),
       Equals(84, "sim/weather/wind_m_per_s", 5),
       Equals(90, "sim/weather/wind_from_deg", 220),
       Equals(95, "sim/weather/wind_m_per_s", 0),
       AtLeast(101, "sim/aircraft/fuel_kg", 119)});
}

TEST(OwnTables, AreDocumentedAndLongEnough) {
  EXPECT_GE(sim::OwnDataRefs().size(), 80U);
  EXPECT_GE(sim::OwnCommands().size(), 40U);
  EXPECT_EQ(ReadFile(VYRA_SOURCE_FOLDER "/docs/simulator-datarefs.md"), sim::ReferencePage())
      << "vyra-sim reference > docs/simulator-datarefs.md makes it anew";
}

}  // namespace
