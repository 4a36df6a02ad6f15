#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "world/files/JsonTree.h"
#include "world/files/TextFile.h"

namespace sim::world {
namespace {

template <class Action>
std::string ProblemOf(const Action& action) {
  try {
    action();
  } catch (const FileError& error) {
    return error.what();
  }
  return "none";
}

TEST(JsonTree, KnowsTheLineOfEveryValue) {
  const JsonValue tree =
      ParseJson("{\n \"a\": 1,\n \"b\": [\n  2\n,\n \"text\"],\n\"c\": {\"d\":\ntrue}\n}", "f");
  EXPECT_EQ(ProblemOf([&] { tree["a"].Text(); }), "f:2: this must be a text");
  EXPECT_EQ(ProblemOf([&] { tree["b"].Text(); }), "f:3: this must be a text");
  EXPECT_EQ(ProblemOf([&] { tree["b"].Elements()[0].Text(); }), "f:4: this must be a text");
  EXPECT_EQ(ProblemOf([&] { tree["b"].Elements()[1].YesOrNo(); }), "f:6: this must be true or false");
  EXPECT_EQ(ProblemOf([&] { tree["c"]["d"].Number(0, 1); }), "f:8: this must be a number");
  EXPECT_EQ(ProblemOf([&] { tree["a"].Number(2, 3); }), "f:2: this must be a number from 2 to 3");
  EXPECT_EQ(ProblemOf([&] { tree["none"]; }), "f:1: \"none\" is missing");
  EXPECT_EQ(ProblemOf([&] { tree.AllowOnly({"a", "b"}); }), "f:7: there is no \"c\" here");
  EXPECT_EQ(tree["a"].WholeNumber(0, 9), 1);
  EXPECT_TRUE(tree["c"]["d"].YesOrNo());
}

TEST(JsonTree, RefusesWhatIsNoJson) {
  EXPECT_EQ(ProblemOf([] { ParseJson("{\n\"a\": 1,\n}", "f"); }),
            "f:3: syntax error while parsing object key - unexpected '}'; expected string literal");
  EXPECT_EQ(ProblemOf([] { ParseJson("{\"a\": 1, \n\"a\": 2}", "f"); }),
            "f:2: the key \"a\" stands here a second time");
  EXPECT_EQ(ProblemOf([] { ParseJson(std::string(100'000, '['), "f"); }),
            "f:1: values lie too deep in each other");
  EXPECT_NE(ProblemOf([] { ParseJson("", "f"); }), "none");
  EXPECT_NE(ProblemOf([] { ParseJson("\"\xff\"", "f"); }), "none");
  EXPECT_NE(ProblemOf([] { ParseJson("[1e999]", "f"); }), "none");
}

TEST(TextFile, IsWrittenAsAWholeOrNotAtAll) {
  const std::string folder = testing::TempDir() + "vyra-world-files";
  std::filesystem::create_directories(folder);
  const std::string file = folder + "/text";
  WriteTextFile(file, "one");
  WriteTextFile(file, "two");
  EXPECT_EQ(ReadTextFile(file), "two");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
  EXPECT_EQ(ProblemOf([&] { WriteTextFile(folder + "/none/text", "x"); }),
            folder + "/none/text: the file cannot be written: No such file or directory");
  EXPECT_EQ(ProblemOf([&] { ReadTextFile(folder); }), folder + ": this is no file");
  EXPECT_EQ(ProblemOf([&] { ReadTextFile(folder + "/none"); }), folder + "/none: there is no such file");
  std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace sim::world
