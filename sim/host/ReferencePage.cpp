#include "host/ReferencePage.h"

#include <fmt/format.h>

#include <iterator>

#include "host/CommandServices.h"
#include "host/InputServices.h"
#include "host/OwnDataRefs.h"

namespace sim {
namespace {

constexpr const char* kHead =
    R"(# The simulator's own datarefs and commands

<!-- Made by `vyra-sim reference` from the tables that the simulator publishes from: change those, not this. -->

Units are those of the International System, angles are degrees. Local metres have their origin at sea level at
the reference place; x points east, y up and z south. Numbers that are written are cut to what makes sense; what
is no number is not written. Texts are read with their terminator.
)";

const char* TypeName(VYRADataTypeID type) {
  switch (type) {
    case VYRA_TYPE_INT:
      return "int";
    case VYRA_TYPE_FLOAT:
      return "float";
    case VYRA_TYPE_DOUBLE:
      return "double";
    case VYRA_TYPE_FLOAT_ARRAY:
      return "float";
    case VYRA_TYPE_INT_ARRAY:
      return "int";
    default:
      return "data";
  }
}

// A page of Markdown as it grows.
class Page {
 public:
  template <class... Arguments>
  void Add(fmt::format_string<Arguments...> format, Arguments&&... arguments) {
    fmt::format_to(std::back_inserter(text), format, std::forward<Arguments>(arguments)...);
  }

  std::string text = kHead;
};

void AddDataRefs(Page& page) {
  page.Add("\n## Datarefs\n\n| name | type | unit | writable | |\n|---|---|---|---|---|\n");
  for (const DataRefRow& row : OwnDataRefs())
    page.Add("| `{}` | {}{} | {} | {} | {} |\n", row.name, TypeName(row.type),
             row.count > 0 ? fmt::format("[{}]", row.count) : "", row.unit, row.IsWritable() ? "yes" : "",
             row.description);
}

void AddCommands(Page& page) {
  page.Add(
      "\n## Commands\n\nThose that move something by a step do so again in each pass that they are held.\n\n"
      "| name | |\n|---|---|\n");
  for (const CommandRow& row : OwnCommands()) page.Add("| `{}` | {} |\n", row.name, row.description);
}

void AddBindings(Page& page) {
  page.Add(
      "\n## Keys and buttons\n\nKeys that no plugin takes press these commands; so do "
      "`VYRASimulateKeyPress` (key type 0: a character, 1: a virtual key) in the next frame, and "
      "`VYRACommandKeyStroke` (a virtual key) at once, whatever plugins make of the key.\n\n"
      "| virtual key | | command |\n|---|---|---|\n");
  for (const Binding& binding : KeyBindings())
    page.Add("| {:02X} hex | {} | `{}` |\n", binding.number, binding.keyName, binding.command);
  page.Add(
      "\n`VYRACommandButtonPress` holds a button, and its command with it.\n\n"
      "| button | command |\n|---|---|\n");
  for (const Binding& binding : ButtonBindings())
    page.Add("| {} | `{}` |\n", binding.number, binding.command);
}

}  // namespace

std::string ReferencePage() {
  Page page;
  AddDataRefs(page);
  AddCommands(page);
  AddBindings(page);
  return page.text;
}

}  // namespace sim
