#include "window/Registrations.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

#include "VYRAWatch.h"
#include "list/List.h"

namespace sim {
namespace {

template <class Describe>
Registrations Of(const char* kind, const Rows& rows, const std::string& owner, const Describe& describe) {
  Registrations found{.kind = kind, .lines = {}};
  for (const Rows& row : rows)
    if (row.at("owner") == owner) found.lines.push_back(describe(row));
  return found;
}

std::string Word(const Rows& row, const char* field) { return row.at(field).get<std::string>(); }

Registrations WindowsOf(const std::string& owner) {
  return Of("windows", ListedWindows(), owner, [](const Rows& row) {
    return fmt::format("{} to {} across, {} to {} up, {}", row.at("left").get<int>(),
                       row.at("right").get<int>(), row.at("bottom").get<int>(), row.at("top").get<int>(),
                       row.at("shown").get<bool>() ? "shown" : "hidden");
  });
}

// Without their values: accessors are not called for this.
Registrations DataRefsOf(VYRAPluginID owner) {
  std::vector<VYRADataRefInfo> infos(static_cast<std::size_t>(VYRAGetDataRefs(nullptr, 0)));
  VYRAGetDataRefs(infos.data(), static_cast<int>(infos.size()));
  Registrations found{.kind = "datarefs", .lines = {}};
  for (const VYRADataRefInfo& info : infos)
    if (info.owner == owner)
      found.lines.push_back(fmt::format("{}{}", info.name, info.isWritable != 0 ? ", writable" : ""));
  return found;
}

Registrations HandlersOf(const Rows& commands, const std::string& signature) {
  Registrations found{.kind = "command handlers", .lines = {}};
  for (const Rows& row : commands)
    for (const Rows& handler : row.at("handlers"))
      if (handler == signature) found.lines.push_back(Word(row, "name"));
  return found;
}

}  // namespace

std::vector<Registrations> RegisteredBy(const PluginInfo& plugin) {
  const std::string& owner = plugin.signature;
  const Rows commands = ListedCommands();
  return {
      WindowsOf(owner),
      DataRefsOf(plugin.id),
      Of("commands", commands, owner, [](const Rows& row) { return Word(row, "name"); }),
      HandlersOf(commands, owner),
      Of("hot keys", ListedKeys(), owner,
         [](const Rows& row) { return fmt::format("{}: {}", Word(row, "key"), Word(row, "description")); }),
      Of("menu items", ListedMenus(), owner, [](const Rows& row) {
        return fmt::format("{}", fmt::join(row.at("item").get<std::vector<std::string>>(), " / "));
      })};
}

}  // namespace sim
