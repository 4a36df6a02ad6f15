// The page of keys and modifiers that authors read, held against what plugins are told.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <regex>

#include "SimulatorRun.h"
#include "host/Keyboard.h"

namespace {

const std::string& Page() {
  static const std::string kPage = ReadFile(VYRA_SOURCE_FOLDER "/docs/reference.md");
  return kPage;
}

TEST(ReferencePage, HasTheKeysThatThereAre) {
  for (const sim::NamedKey& key : sim::NamedKeys()) {
    const std::string name = key.name == "`" ? "`` ` ``" : fmt::format("`{}`", key.name);
    const std::string row = fmt::format("`{:02X}` | {} |", key.virtualKey, name);
    EXPECT_NE(Page().find(row), std::string::npos) << row;
  }
  const std::regex row("`[0-9A-F]{2}` \\| `");
  EXPECT_EQ(std::distance(std::sregex_iterator(Page().begin(), Page().end(), row), std::sregex_iterator()),
            sim::NamedKeys().size());
}

TEST(ReferencePage, HasTheModifiers) {
  for (const std::string_view name : sim::ModifierNames()) {
    const std::string row = fmt::format("| {} | {} is held |", sim::ModifierFlags({std::string(name)}), name);
    EXPECT_NE(Page().find(row), std::string::npos) << row;
  }
  EXPECT_NE(Page().find(fmt::format("| {} | the key is released", static_cast<int>(sim::kReleased))),
            std::string::npos);
}

}  // namespace
