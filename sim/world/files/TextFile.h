// Files as texts, and what is wrong with them as one line for their author.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace sim::world {

// "FILE:LINE: problem". Line 0 stands for the file as a whole, and is left out.
struct FileError : std::runtime_error {
  FileError(const std::string& fileName, int line, const std::string& problem)
      : std::runtime_error(line > 0 ? fileName + ":" + std::to_string(line) + ": " + problem
                                    : fileName + ": " + problem) {}
};

// The whole file. Throws FileError, also for one of more than 64 MB.
std::string ReadTextFile(const std::string& fileName);

// Writes the file as a whole or not at all: what was there stays until the new one is complete. Throws
// FileError.
void WriteTextFile(const std::string& fileName, std::string_view text);

}  // namespace sim::world
