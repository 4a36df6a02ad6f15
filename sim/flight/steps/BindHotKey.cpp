#include <fmt/core.h>

#include <limits>

#include "flight/NamedKeys.h"
#include "flight/steps/Steps.h"
#include "host/HotKeys.h"

namespace sim {
namespace {

Outcome Bind(const HotKeyName& name, const NamedKey& key, int flags) {
  const std::string what = fmt::format("hot key \"{}\" of {}", name.description, name.signature);
  const std::string problem = BindHotKey(name, key, flags);
  if (!problem.empty()) return {false, fmt::format("{} not bound: {}", what, problem)};
  return {true, fmt::format("{} bound to {}", what, KeyText(key, flags))};
}

Effect Read(const Entry& entry, const FlightContext& /*context*/) {
  const Entry bind = entry.Object("bindHotKey");
  const HotKeyName name{.signature = bind.Text("of"),
                        .description = bind.Text("description", ""),
                        .number = bind.WholeNumber("number", 1)};
  const NamedKey& key = NamedKeyOf(bind, "to");
  return [name, &key, flags = ModifierFlags(bind.Texts("modifiers"))] { return Bind(name, key, flags); };
}

}  // namespace

StepWord BindHotKeyStep() {
  return {{.key = ObjectKey(
               "bindHotKey",
               {TextKey("of", "the signature of its plugin"),
                Optional(TextKey("description", "its description; empty without it")),
                Optional(WholeNumberKey("number", 1, std::numeric_limits<int>::max(),
                                        "which, where several of the plugin have this description, the one "
                                        "registered last being 1; 1 without it")),
                TextKey("to", "the key's name"),
                Optional(TextsKey("modifiers", "keys that are held with it", ModifierNames()))},
               "binds a plugin's hot key to another key, as a user does in a list of them"),
           .others = {}},
          Read};
}

}  // namespace sim
