#include "flight/JsonDocument.h"

#include <fmt/format.h>

#include <filesystem>
#include <fstream>
#include <iterator>

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

JsonDocument::JsonDocument(const std::string& fileToRead) : fileName(fileToRead), json(Read()) {}

world::PlacedJson JsonDocument::Read() const {
  try {
    return world::PlacedJson(ReadText(fileName));
  } catch (const world::JsonError& error) {
    Fail(error.position, error.problem);
  }
}

void JsonDocument::Fail(JsonPosition position, const std::string& problem) const {
  throw InputError(fmt::format("{}:{}:{}: {}", fileName, position.line, position.column, problem));
}

}  // namespace sim
