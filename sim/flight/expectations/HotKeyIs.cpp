#include <fmt/format.h>
#include <fmt/ranges.h>

#include "VYRADisplay.h"
#include "VYRAPlugin.h"
#include "flight/NamedKeys.h"
#include "flight/expectations/Expectations.h"

namespace sim {
namespace {

constexpr std::string_view kNobody = "nobody";

std::string SignatureOf(VYRAPluginID plugin) {
  char signature[VYRA_PLUGIN_INFO_SIZE] = "";
  VYRAGetPluginInfo(plugin, nullptr, nullptr, signature, nullptr);
  return signature;
}

// The one that would fire: of several on one combination, the one that was registered last.
std::string OwnerOf(int virtualKey, int flags) {
  const int count = VYRACountHotKeys();
  for (int index = 0; index < count; ++index) {
    char key = 0;
    int keyFlags = 0;
    VYRAPluginID plugin = VYRA_NO_PLUGIN;
    VYRAGetHotKeyInfo(VYRAGetNthHotKey(index), &key, &keyFlags, nullptr, &plugin);
    if ((key & 0xFF) == virtualKey && keyFlags == flags && VYRAIsPluginEnabled(plugin) != 0)
      return SignatureOf(plugin);
  }
  return std::string(kNobody);
}

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const NamedKey& key = NamedKeyOf(entry, "hotKey");
  const int flags = ModifierFlags(entry.Texts("modifiers"));
  const std::string wanted = entry.Text("of");
  return {.text = fmt::format("hot key {} is of {}", KeyText(key, flags), wanted),
          .check = [virtualKey = key.virtualKey, flags, wanted]() -> Finding {
            const std::string owner = OwnerOf(virtualKey, flags);
            return {owner == wanted, owner};
          }};
}

}  // namespace

ExpectationWord HotKeyIsExpectation() {
  return {
      {.key = TextKey("hotKey", "pressing the key of this name, with these modifiers alone, calls a hot key"),
       .others = {Optional(TextsKey("modifiers", "keys that are held with it", ModifierNames())),
                  TextKey("of", "that is of the enabled plugin with this signature, or of `nobody`")}},
      Read};
}

}  // namespace sim
