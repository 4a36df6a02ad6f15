#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "world/files/TextFile.h"
#include "world/scenery/BackgroundLoader.h"
#include "world/scenery/Package.h"

namespace sim::world {
namespace {

constexpr const char* kSquare = "# a square\nv 0 0 0\nv 2 0 0\nv 2 3 0\nv 0 3 -1\nf 1/1/1 2/2/2 3/3/3 -1\n";

std::string ProblemOf(const std::string& text) {
  try {
    ParseObjectModel(text, "m.obj", "/nowhere");
  } catch (const FileError& error) {
    return error.what();
  }
  return "none";
}

// A folder that is gone after the test.
class SceneryFolder : public testing::Test {
 protected:
  SceneryFolder() { std::filesystem::create_directories(root); }
  ~SceneryFolder() override { std::filesystem::remove_all(root); }
  SceneryFolder(const SceneryFolder&) = delete;
  SceneryFolder& operator=(const SceneryFolder&) = delete;

  void Write(const std::string& path, const std::string& text) const {
    std::filesystem::create_directories(std::filesystem::path(root + path).parent_path());
    std::ofstream(root + path) << text;
  }

  const std::string root = testing::TempDir() + "vyra-world-" +
                           testing::UnitTest::GetInstance()->current_test_info()->name() + "/";
};

TEST(ObjectModel, IsMadeOfTriangles) {
  const ObjectModel model = ParseObjectModel(kSquare, "m.obj", "/nowhere");
  EXPECT_EQ(model.points.size(), 4U);
  EXPECT_EQ(model.triangles.size(), 2U);
  EXPECT_EQ(model.largest.y, 3.0);
  EXPECT_EQ(model.smallest.z, -1.0);
  EXPECT_EQ(model.triangles[0].colour[1], 1.0F);
}

TEST(ObjectModel, RefusesADamagedFileByItsLine) {
  const std::string square = kSquare;
  EXPECT_EQ(ProblemOf(square), "none");
  EXPECT_EQ(ProblemOf("v 0 0 zero\n"), "m.obj:1: \"zero\" is no number");
  EXPECT_EQ(ProblemOf("v 0 0\n"), "m.obj:1: there are fewer than 3 numbers");
  EXPECT_EQ(ProblemOf("v 0 0 nan\n"), "m.obj:1: \"nan\" is no number");
  EXPECT_EQ(ProblemOf(square + "f 1 2\n"), "m.obj:7: a face needs three corners");
  EXPECT_EQ(ProblemOf(square + "f 1 2 5\n"), "m.obj:7: \"5\" is no corner of the 4 that stand above");
  EXPECT_EQ(ProblemOf(square + "f 1 2 -5\n"), "m.obj:7: \"-5\" is no corner of the 4 that stand above");
  EXPECT_EQ(ProblemOf(square + "f 0 1 2\n"), "m.obj:7: \"0\" is no corner of the 4 that stand above");
  EXPECT_EQ(ProblemOf(square + "bones 1 2\n"), "m.obj:7: there is no \"bones\" here");
  EXPECT_EQ(ProblemOf("mtllib none.mtl\n"), "m.obj:1: there is no material file /nowhere/none.mtl");
  EXPECT_EQ(ProblemOf("v 0 0 0\n"), "m.obj: the model has no faces");
  EXPECT_EQ(ProblemOf(std::string("v 0 0 0\n\0", 9)), "m.obj: this is no text");
}

TEST_F(SceneryFolder, ModelsTakeTheirColoursFromTheMaterials) {
  Write("red.mtl", "newmtl red\nKd 1 0 0.5\n");
  Write("m.obj", std::string("mtllib red.mtl\n") + "usemtl red\n" + kSquare);
  const ObjectModel model = ReadObjectModel(root + "m.obj");
  EXPECT_EQ(model.triangles[1].colour[0], 1.0F);
  EXPECT_EQ(model.triangles[1].colour[2], 0.5F);
}

TEST_F(SceneryFolder, TheBackgroundLoaderLoadsInTurnAndTellsWhatIsWrong) {
  Write("good.obj", kSquare);
  Write("bad.obj", "v 1\n");
  BackgroundLoader loader;
  std::future<LoadedModel> good = loader.Start(root + "good.obj");
  std::future<LoadedModel> bad = loader.Start(root + "bad.obj");
  std::future<LoadedModel> none = loader.Start(root + "none.obj");
  EXPECT_EQ(good.get().model->triangles.size(), 2U);
  EXPECT_EQ(bad.get().problem, root + "bad.obj:1: there are fewer than 3 numbers");
  EXPECT_EQ(none.get().problem, root + "none.obj: there is no such file");
}

TEST_F(SceneryFolder, PackagesAreFoundByVirtualPathAndRegion) {
  Write("Scenery/B/package.json",
        R"({"name": "B", "objects": [
            {"path": "towers/light.obj", "file": "a.obj",
             "region": {"south_deg": 54, "north_deg": 55, "west_deg": 9, "east_deg": 11}},
            {"path": "towers/light.obj", "file": "b.obj"}]})");
  Write("Scenery/B/a.obj", kSquare);
  Write("Scenery/B/b.obj", kSquare);
  Write("Scenery/A/package.json",
        R"({"name": "A", "objects": [{"path": "towers/light.obj", "file": "c.obj"}]})");
  Write("Scenery/A/c.obj", kSquare);
  Write("Scenery/NoPackage/readme", "");
  SceneryLibrary library(root);
  EXPECT_TRUE(library.Read().empty());
  EXPECT_EQ(library.Lookup("towers/light.obj", {.latitude = 54.5, .longitude = 10, .altitude = 0}),
            (std::vector<std::string>{"Scenery/A/c.obj", "Scenery/B/a.obj", "Scenery/B/b.obj"}));
  EXPECT_EQ(library.Lookup("towers/light.obj", {.latitude = 56, .longitude = 10, .altitude = 0}),
            (std::vector<std::string>{"Scenery/A/c.obj", "Scenery/B/b.obj"}));
  EXPECT_TRUE(library.Lookup("towers/dark.obj", {.latitude = 54.5, .longitude = 10, .altitude = 0}).empty());
}

TEST_F(SceneryFolder, ADamagedIndexLeavesWhatWasReadBefore) {
  const std::string good = "{\"name\": \"A\", \"objects\": [{\"path\": \"p\", \"file\": \"c.obj\"}]}";
  Write("Scenery/A/package.json", good);
  Write("Scenery/A/c.obj", kSquare);
  SceneryLibrary library(root);
  library.Read();
  const std::string index = root + "Scenery/A/package.json";
  const auto problem = [&](const std::string& text) {
    Write("Scenery/A/package.json", text);
    const std::vector<std::string> problems = library.Read();
    EXPECT_EQ(library.Lookup("p", {}).size(), 1U);
    return problems.size() == 1 ? problems[0] : "none";
  };
  EXPECT_EQ(problem("{\"name\": \"A\",\n \"objects\": [{\"path\": \"p\",\n\"file\": \"d.obj\"}]}"),
            index + ":3: there is no file Scenery/A/d.obj");
  EXPECT_TRUE(problem(good.substr(0, 30)).starts_with(index + ":1: syntax error"));
  EXPECT_EQ(problem("{\"name\": \"A\", \"objects\": [{\"path\": \"p\", \"file\": \"c.obj\",\n\"region\": "
                    "{\"south_deg\": 5,\n \"north_deg\": 4, \"west_deg\": 0, \"east_deg\": 0}}]}"),
            index + ":2: this lies north of \"north_deg\"");
}

}  // namespace
}  // namespace sim::world
