// The simulator's log: a stream that it is written to, and the whole text, which a flight's expectations
// search.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace sim {

class Log {
 public:
  // Opens the file, or writes to standard error when the name is empty. Throws InputError.
  explicit Log(const std::string& fileName);

  void Write(std::string_view text);

  // Closes the file; false when not all of the log could be written to it.
  bool Close();

  // How often a text occurs, without overlap. Never called with an empty text.
  int Count(std::string_view text) const;

  // The lines that speak of something wrong: see sim/README.md.
  int CountWarnings() const;

 private:
  struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  std::unique_ptr<std::FILE, FileCloser> logFile;
  std::string written;
};

// The log of this flight, for services and hooks, which are plain functions.
inline Log* gLog = nullptr;

}  // namespace sim
