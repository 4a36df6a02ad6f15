// What a plugin draws, and what of it shows.
#include <gtest/gtest.h>

#include "SimulatorRun.h"
#include "view/Picture.h"

namespace {

using nlohmann::json;

class ScreenFlight : public testing::Test {
 protected:
  ScreenFlight() { folder.Install("painter", "painter/64/lin.vyp"); }

  const SimulatorFolder folder;
};

json Shows(int frame, const std::string& text) { return {{"frame", frame}, {"screenShows", text}}; }
json Lacks(int frame, const std::string& text) { return {{"frame", frame}, {"screenLacks", text}}; }

json Inside(json expectation, int left, int bottom, int right, int top) {
  expectation["inside"] = {{"left", left}, {"bottom", bottom}, {"right", right}, {"top", top}};
  return expectation;
}

TEST_F(ScreenFlight, TextShowsWhereNothingHidesIt) {
  const std::vector<json> expectations = {
      Shows(1, "in the front one"),
      Lacks(1, "in the back one"),
      Inside(Shows(1, "in th"), 100, 300, 150, 400),  // what stands out on the left
      Lacks(1, "below the front one"),
      Shows(1, "beside the windows"),
      Shows(1, "above all windows"),
      Lacks(1, "far away"),
      Lacks(1, "out of turn"),
      Shows(1, "this text is too long for one line of it"),
      Inside(Lacks(1, "this text is too long for one line of it"), 600, 590, 1280, 620),
      Inside(Shows(1, "this text"), 600, 590, 720, 620),
      Shows(1, "-12.35"),
      Shows(2, "in the back one"),
      Lacks(2, "in the front one"),
  };
  const json raise = {{"frame", 2}, {"command", {{"name", "painter/raise"}, {"passes", 1}}}};
  const SimulatorRun run = folder.FlyFile(2, {{"steps", {raise}}, {"expectations", expectations}});
  EXPECT_EQ(run.exitCode, 0) << run.error << run.output;
}

TEST_F(ScreenFlight, SmallerScreenShowsLess) {
  const json flight = {{"expectations",
                        {Shows(1, "in the front one"),
                         Lacks(1, "beside the windows"),
                         {{"frame", 1}, {"dataRef", "sim/screen/width_px"}, {"equals", 640}},
                         {{"frame", 1}, {"dataRef", "sim/screen/height_px"}, {"equals", 480}}}}};
  const SimulatorRun run = folder.FlyFile(1, flight, {"--size", "640x480"});
  EXPECT_EQ(run.exitCode, 0) << run.error << run.output;
}

TEST_F(ScreenFlight, PictureHasTheWindowsAndWhatAPluginDrawsWithOpenGl) {
  const std::string asked = folder.Path("asked.png");
  const std::string stepped = folder.Path("stepped.png");
  const json flight = {{"steps", {{{"frame", 3}, {"screenshot", stepped}}}}};
  const SimulatorRun run = folder.FlyFile(3, flight, {"--size", "1200x720", "--screenshot", "2:" + asked});
  EXPECT_EQ(run.exitCode, 0) << run.error << run.output;
  EXPECT_NE(run.output.find("picture written to " + asked), std::string::npos);
  for (const std::string& fileName : {asked, stepped}) {
    const sim::Picture picture = sim::ReadPng(fileName);
    ASSERT_EQ(picture.width, 1200);
    ASSERT_EQ(picture.height, 720);
    EXPECT_EQ(picture.At(850, 630), (std::array{255, 0, 255})) << "the triangle";
    EXPECT_EQ(picture.At(1050, 650), (std::array{0, 255, 0})) << "the texture";
    int yellow = 0;
    for (int x = 160; x < 300; ++x)
      for (int y = 345; y < 365; ++y) yellow += picture.At(x, y)[0] > 240 && picture.At(x, y)[2] < 40 ? 1 : 0;
    EXPECT_GT(yellow, 50) << "ink in the front window";
    EXPECT_LT(picture.At(390, 390)[0], 90) << "the window's dark box";
    EXPECT_GT(picture.At(1190, 710)[2], picture.At(1190, 710)[0]) << "the sky";
  }
}

TEST_F(ScreenFlight, PictureThatIsLostFailsTheFlight) {
  const SimulatorRun run = folder.Fly(2, {"--screenshot", "1:/dev/full"});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_NE(run.output.find("FAILED  cannot write the picture /dev/full: "), std::string::npos) << run.output;
}

}  // namespace
