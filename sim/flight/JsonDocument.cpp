#include "flight/JsonDocument.h"

#include <fmt/core.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include "InputError.h"

namespace sim {
namespace {

std::string ReadText(const std::string& fileName) {
  std::ifstream file(fileName);
  // A folder can be opened, and not be read.
  if (!file || std::filesystem::is_directory(fileName))
    throw InputError("cannot read the flight " + fileName);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

JsonDocument::JsonDocument(const std::string& fileToRead) : JsonDocument(fileToRead, ReadText(fileToRead)) {}

JsonDocument::JsonDocument(std::string name, std::string_view text)
    : fileName(std::move(name)), json(Parse(text)) {}

world::PlacedJson JsonDocument::Parse(std::string_view text) const {
  try {
    return world::PlacedJson(text);
  } catch (const world::JsonError& error) {
    Fail(error.position, error.problem);
  }
}

void JsonDocument::Fail(JsonPosition position, const std::string& problem) const {
  throw InputError(fmt::format("{}:{}:{}: {}", fileName, position.line, position.column, problem));
}

}  // namespace sim
