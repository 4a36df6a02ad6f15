// What there is in a flight, and to which plugin it belongs: an array of one object for each thing.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

// In the order in which they are shown.
using Rows = nlohmann::ordered_json;

// One kind of thing; a new one is a file with its function, and a row of Lists().
struct List {
  std::string_view name;  // "datarefs"
  Rows (*rows)();
};
const std::vector<List>& Lists();

Rows ListedPlugins();
Rows ListedDataRefs();
Rows ListedCommands();
Rows ListedMenus();
Rows ListedWindows();
Rows ListedKeys();

// For readers, with a line for each row under the names of their fields.
std::string TableOf(const Rows& rows);

// As JSON, with a row on each line. Bytes that are not UTF-8 become replacement characters.
std::string JsonOf(const Rows& rows);

}  // namespace sim
