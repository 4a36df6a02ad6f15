#include "choice/PluginPattern.h"

#include <fnmatch.h>

#include <string_view>

namespace sim {
namespace {

namespace fs = std::filesystem;

bool Fits(const std::string& pattern, const fs::path& text) {
  return fnmatch(pattern.c_str(), text.c_str(), 0) == 0;
}

}  // namespace

fs::path EntryOf(const fs::path& module) {
  if (module.filename() != "lin.vyp") return module;
  fs::path folder = module.parent_path();
  if (folder.filename() == "64") folder = folder.parent_path();
  return folder.filename() == "plugins" ? module : folder;
}

bool PatternFits(const std::string& pattern, const fs::path& path, const fs::path& systemFolder,
                 const std::function<std::string()>& signature) {
  const fs::path entry = EntryOf(path);
  if (pattern.find('/') == std::string::npos)
    return Fits(pattern, entry.filename()) || Fits(pattern, signature());
  return Fits(pattern, path) || Fits(pattern, entry) ||
         Fits(pattern, path.lexically_relative(systemFolder)) ||
         Fits(pattern, entry.lexically_relative(systemFolder));
}

std::string LiteralPattern(const std::string& text) {
  std::string pattern;
  for (const char letter : text) {
    if (std::string_view("*?[\\").find(letter) != std::string_view::npos) pattern += '\\';
    pattern += letter;
  }
  return pattern;
}

}  // namespace sim
