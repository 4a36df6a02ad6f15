#include "flight/NamedKeys.h"

#include <fmt/core.h>

#include <vector>

#include "flight/Nearest.h"

namespace sim {

const NamedKey& NamedKeyOf(const Entry& entry, std::string_view word) {
  const std::string name = entry.Text(word);
  if (const NamedKey* const key = FindKey(name)) return *key;
  std::vector<std::string_view> names;
  for (const NamedKey& key : NamedKeys()) names.push_back(key.name);
  entry.FailAtValue(word, fmt::format("there is no key \"{}\"{}", name, DidYouMean(name, names)));
}

}  // namespace sim
