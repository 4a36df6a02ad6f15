#include "supervise/CallNotes.h"

#include <link.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "VYRAWatch.h"
#include "host/CallWatchers.h"
#include "host/FlightBoard.h"

namespace sim {
namespace {

template <std::size_t Size>
void CopyText(std::array<char, Size>& to, std::string_view from) {
  to[from.copy(to.data(), Size - 1)] = '\0';
}

// ---- Who is called ------------------------------------------------------------------------------------

// The library's texts of a plugin never change their place, so a plugin is known again by them.
struct KnownTexts {
  const char* name = nullptr;
  const char* path = nullptr;
};
std::array<KnownTexts, kNotedPlugins> gKnownTexts;

std::uint64_t gLastSerial = 0;

void NotePlugin(const VYRARunningCall& call) {
  const auto index = static_cast<std::size_t>(call.plugin);
  if (index >= kNotedPlugins) return;
  KnownTexts& known = gKnownTexts[index];
  if (known.name == call.name && known.path == call.path) return;
  known = {call.name, call.path};
  NotedPlugin& note = gBoard->plugins[index];
  CopyText(note.name, call.name);
  CopyText(note.signature, call.signature);
  CopyText(note.path, call.path);
}

// Where the module that was just opened lies. One that could not be opened is found nowhere.
void NoteModule(const char* path) {
  struct Search {
    std::string_view path;
    std::uintptr_t begin = UINTPTR_MAX;
    std::uintptr_t end = 0;
  } search{path};
  dl_iterate_phdr(
      [](dl_phdr_info* module, std::size_t /*size*/, void* argument) {
        auto& wanted = *static_cast<Search*>(argument);
        if (wanted.path != module->dlpi_name) return 0;
        for (int i = 0; i < module->dlpi_phnum; ++i) {
          const auto& part = module->dlpi_phdr[i];
          if (part.p_type != PT_LOAD) continue;
          wanted.begin = std::min(wanted.begin, module->dlpi_addr + part.p_vaddr);
          wanted.end = std::max(wanted.end, module->dlpi_addr + part.p_vaddr + part.p_memsz);
        }
        return 1;
      },
      &search);
  if (search.end == 0) return;
  NotedModule& note = gBoard->modules[gBoard->openedModules % kNotedModules];
  CopyText(note.path, search.path);
  note.begin = search.begin;
  note.end = search.end;
  ++gBoard->openedModules;
}

// ---- The watcher -------------------------------------------------------------------------------------

void NoteBegin(const VYRARunningCall* call, void* /*refcon*/) {
  const auto depth = static_cast<std::size_t>(gBoard->depth.load(std::memory_order_relaxed));
  if (depth < kNotedCalls) {
    NotedCall& note = gBoard->calls[depth];
    note.plugin.store(call->plugin, std::memory_order_relaxed);
    note.kind.store(call->kind, std::memory_order_relaxed);
    note.serial.store(++gLastSerial, std::memory_order_relaxed);
  }
  NotePlugin(*call);
  gBoard->depth.store(static_cast<int>(depth + 1), std::memory_order_relaxed);
}

void NoteEnd(const VYRARunningCall* call, void* /*refcon*/) {
  if (call->kind == VYRA_CALL_OPENING) NoteModule(call->path);
  gBoard->depth.store(gBoard->depth.load(std::memory_order_relaxed) - 1, std::memory_order_relaxed);
}

}  // namespace

void NoteCalls() {
  AddCallWatcher({.structSize = sizeof(VYRAWatcher),
                  .wantsAccessors = 0,
                  .begin = NoteBegin,
                  .end = NoteEnd,
                  .refcon = nullptr});
}

}  // namespace sim
