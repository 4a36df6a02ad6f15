// The simulator's log: a stream that it is written to, and the whole text, which a flight's expectations
// search.
#pragma once

#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

// From here on, until the next passage begins, one and the same wrote.
struct LogPassage {
  std::size_t begin;   // in the log's text
  const char* writer;  // as told by who is running, see NoteWriters
};

class Log {
 public:
  // Opens the file, or writes to standard error when the name is empty. Throws InputError.
  explicit Log(const std::string& fileName);

  void Write(std::string_view text);

  // All of it. Valid until more is written.
  std::string_view Text() const { return written; }

  // From now on it is noted who writes. `running` names who does now, with a text that stays for the life of
  // the process, and the same one for the same writer.
  void NoteWriters(const char* (*running)()) { whoIsRunning = running; }
  const std::vector<LogPassage>& Passages() const { return passages; }

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
  const char* (*whoIsRunning)() = nullptr;
  std::vector<LogPassage> passages;
  mutable std::map<std::string, Search, std::less<>> searches;
  mutable Search warnings;           // in whole lines
  mutable std::string firstWarning;  // of these
};

// Whether a line speaks of something wrong.
bool IsLogWarning(std::string_view line);

// The log of this flight, for services and hooks, which are plain functions.
inline Log* gLog = nullptr;

}  // namespace sim
