// Reading and writing in one go.
#include "world/files/TextFile.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace sim::world {
namespace {

constexpr std::uintmax_t kLargestFile = std::uintmax_t{64} * 1024 * 1024;

std::string Reason() { return std::strerror(errno); }  // NOLINT(concurrency-mt-unsafe)

}  // namespace

std::string ReadTextFile(const std::string& fileName) {
  std::error_code error;
  if (!std::filesystem::exists(fileName, error)) throw FileError(fileName, 0, "there is no such file");
  if (!std::filesystem::is_regular_file(fileName, error)) throw FileError(fileName, 0, "this is no file");
  const std::uintmax_t size = std::filesystem::file_size(fileName, error);
  if (error) throw FileError(fileName, 0, error.message());
  if (size > kLargestFile) throw FileError(fileName, 0, "the file is larger than 64 MB");
  std::ifstream file(fileName, std::ios::binary);
  std::string text(static_cast<std::size_t>(size), '\0');
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  if (!file) throw FileError(fileName, 0, "the file cannot be read");
  return text;
}

void WriteTextFile(const std::string& fileName, std::string_view text) {
  const std::string unfinished = fileName + ".unfinished";
  std::ofstream file(unfinished, std::ios::binary | std::ios::trunc);
  if (!file) throw FileError(fileName, 0, "the file cannot be written: " + Reason());
  file.write(text.data(), static_cast<std::streamsize>(text.size()));
  file.close();
  std::error_code error;
  if (file) std::filesystem::rename(unfinished, fileName, error);
  if (file && !error) return;
  const std::string reason = error ? error.message() : Reason();
  std::filesystem::remove(unfinished, error);
  throw FileError(fileName, 0, "the file cannot be written: " + reason);
}

}  // namespace sim::world
