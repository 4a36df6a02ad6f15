#include <fmt/core.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "flight/expectations/Expectations.h"

namespace sim {
namespace {

Finding Look(const std::string& file, const std::string& text) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) return {false, "no such file"};
  std::ifstream stream(file, std::ios::binary);
  const std::string content{std::istreambuf_iterator<char>(stream), {}};
  const bool isIn = content.find(text) != std::string::npos;
  return {isIn, isIn ? "it" : fmt::format("a file of {} bytes without it", content.size())};
}

Claim Read(const Entry& entry, const FlightContext& context) {
  const std::string path = entry.Text("file");
  const std::string file = context.systemPath + path;
  if (entry.Has("absent"))
    return {.text = fmt::format("file {} is absent", path), .check = [file]() -> Finding {
              const bool isThere = std::filesystem::exists(file);
              return {!isThere, isThere ? "it" : "no such file"};
            }};
  const std::string text = entry.Text("contains");
  return {.text = fmt::format("file {} contains \"{}\"", path, text),
          .check = [file, text] { return Look(file, text); },
          .isCostly = true};
}

}  // namespace

ExpectationWord FileHasExpectation() {
  return {{.key = TextKey("file",
                          "the file with this path in the simulator folder is as one of the other keys says"),
           .others = {Optional(TextKey("contains", "it has this text in it")),
                      Optional(TrueKey("absent", "there is none"))},
           .oneOf = {"contains", "absent"}},
          Read};
}

}  // namespace sim
