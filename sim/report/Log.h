// The simulator's log: a stream that it is written to, and the whole text, which a flight's expectations
// search.
#pragma once

#include <cstdio>
#include <map>
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
  // Each text is looked for in what was written since it was last asked for.
  int Count(std::string_view text) const;

  // The lines that speak of something wrong: see sim/README.md.
  int CountWarnings() const;
  std::string FirstWarning() const;  // empty without any

 private:
  struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  std::unique_ptr<std::FILE, FileCloser> logFile;
  // How far the log was searched, and what was found until there.
  struct Search {
    int count = 0;
    std::size_t end = 0;
  };

  std::string written;
  mutable std::map<std::string, Search, std::less<>> searches;
  mutable Search warnings;           // in whole lines
  mutable std::string firstWarning;  // of these
};

// The log of this flight, for services and hooks, which are plain functions.
inline Log* gLog = nullptr;

}  // namespace sim
