#include "supervise/KeptModules.h"

#include <dlfcn.h>
#include <link.h>

#include <string>
#include <string_view>
#include <vector>

namespace sim {
namespace {

constexpr std::string_view kEnding = ".vyp";

// Only collects: dlopen waits for the lock under which this is called.
int CollectModule(dl_phdr_info* info, std::size_t /*size*/, void* names) {
  if (const std::string_view name = info->dlpi_name; name.ends_with(kEnding))
    static_cast<std::vector<std::string>*>(names)->emplace_back(name);
  return 0;
}

}  // namespace

void KeepModules() {
  std::vector<std::string> names;
  dl_iterate_phdr(CollectModule, &names);
  for (const std::string& name : names) dlopen(name.c_str(), RTLD_LAZY | RTLD_NOLOAD);
}

}  // namespace sim
