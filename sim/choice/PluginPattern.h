// Patterns by which users name plugins. "*" stands for anything, "?" for any letter. One with a "/" in it is
// held against the path of the module and that of its plugin folder, whole or from the simulator folder on;
// one without against the name of the plugin folder or loose module, and against the signature.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace sim {

// The plugin folder of a module, or the module itself when it lies loose.
std::filesystem::path EntryOf(const std::filesystem::path& module);

// Whether a pattern fits a plugin; `path` is that of its module, or of its plugin folder. The signature is
// asked for when all depends on it.
bool PatternFits(const std::string& pattern, const std::filesystem::path& path,
                 const std::filesystem::path& systemFolder, const std::function<std::string()>& signature);

// The pattern that fits a text alone.
std::string LiteralPattern(const std::string& text);

}  // namespace sim
