#include "supervise/Blame.h"

#include <fmt/core.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string_view>
#include <utility>

#include "VYRAWatch.h"
#include "supervise/FaultText.h"

namespace sim {
namespace {

// ---- Plugins ------------------------------------------------------------------------------------------

// A plugin that has not named itself yet goes by the end of its path, as in the library.
std::string NameOf(const NotedPlugin& plugin) {
  if (plugin.name[0] != '\0') return plugin.name.data();
  constexpr std::string_view kFolder = "plugins/";
  const std::string path = plugin.path.data();
  const std::size_t folder = path.rfind(kFolder);
  return folder == std::string::npos ? path : path.substr(folder + kFolder.size());
}

void SetPlugin(Culprit& culprit, const NotedPlugin& plugin) {
  culprit.name = NameOf(plugin);
  culprit.signature = plugin.signature.data();
  culprit.path = plugin.path.data();
}

// Whether a file that the kernel has mapped is the module that the library opened by this path.
bool IsModule(std::string_view mappedFile, const std::string& path) {
  if (path.empty()) return false;
  constexpr std::string_view kDeleted = " (deleted)";
  if (mappedFile.ends_with(kDeleted)) mappedFile.remove_suffix(kDeleted.size());
  if (mappedFile == path) return true;
  std::error_code error;
  return std::filesystem::weakly_canonical(path, error) == mappedFile && !error;
}

// The plugin whose module was opened by a path; what is known of it may be the path alone.
NotedPlugin PluginAt(const FlightBoard& board, const NotedModule& module) {
  const std::string_view path = module.path.data();
  const auto found = std::ranges::find_if(
      board.plugins, [path](const NotedPlugin& plugin) { return path == plugin.path.data(); });
  if (found != board.plugins.end()) return *found;
  NotedPlugin plugin;
  plugin.path = module.path;
  return plugin;
}

// The plugin whose module a mapped file is. The calls are asked first: a module whose opening has not ended
// has not been noted.
std::optional<NotedPlugin> PluginOfFile(const Evidence& evidence, const std::string& file) {
  const auto callCount = static_cast<std::size_t>(evidence.facts.callCount);
  for (std::size_t i = 0; i < callCount; ++i) {
    const NotedPlugin& plugin = evidence.facts.calls[i].identity;
    if (IsModule(file, plugin.path.data())) return plugin;
  }
  const std::size_t opened = std::min<std::size_t>(evidence.board.openedModules, kNotedModules);
  for (std::size_t i = 0; i < opened; ++i) {
    const NotedModule& module = evidence.board.modules[i];
    if (IsModule(file, module.path.data())) return PluginAt(evidence.board, module);
  }
  return std::nullopt;
}

// ---- The two that come into question ------------------------------------------------------------------

// The plugin that was called last. A call into the simulator, for one of its datarefs say, was made for the
// plugin behind it.
const CallFacts* CalledPlugin(const ThreadFacts& facts) {
  if (!facts.isMainThread || facts.stage < Stage::Calls) return nullptr;
  for (std::size_t i = 0; i < static_cast<std::size_t>(facts.callCount); ++i)
    if (facts.calls[i].plugin > VYRA_HOST_PLUGIN) return &facts.calls[i];
  return nullptr;
}

// The plugin whose code ran.
std::optional<NotedPlugin> RunningPlugin(const Evidence& evidence) {
  for (const StackFrame& frame : evidence.frames) {
    if (!frame.module.starts_with('/')) continue;
    std::optional<NotedPlugin> plugin = PluginOfFile(evidence, frame.module);
    if (plugin) return plugin;
  }
  return std::nullopt;
}

// The plugin whose module lay where the code ran, but was closed.
std::optional<NotedPlugin> FormerPlugin(const Evidence& evidence) {
  if (evidence.frames.empty() || !evidence.frames.front().module.empty()) return std::nullopt;
  const NotedModule* const module = FindLastModule(evidence.board, evidence.frames.front().address);
  if (module == nullptr) return std::nullopt;
  return PluginAt(evidence.board, *module);
}

bool IsSame(const NotedPlugin& one, const NotedPlugin& other) {
  return std::string_view(one.path.data()) == other.path.data();
}

// ---- The rules ----------------------------------------------------------------------------------------

Culprit Circumstances(const Evidence& evidence) {
  Culprit culprit;
  culprit.frame = evidence.facts.frame;
  culprit.hook = HookText(evidence.facts.hook);
  for (const StackFrame& frame : evidence.frames) culprit.backtrace.push_back(frame.text);
  return culprit;
}

std::string DescribeCalled(const CallFacts& called) {
  return fmt::format("{} was called, for: {}", NameOf(called.identity), VYRAGetCallKindName(called.kind));
}
std::string DescribeCalled(const Culprit& called) {
  return fmt::format("{} was called, for: {}", called.name, called.call);
}

// What rule 1 has to say beside what happened.
std::string HowItRan(const ThreadFacts& facts, const NotedPlugin& running, const CallFacts* called) {
  if (!facts.isMainThread) return ", in a thread of its own";
  if (called == nullptr) return ", outside of any call into it";
  if (IsSame(running, called->identity)) return "";
  return fmt::format("; {}, but it was the code of {} that ran, which makes that the more likely one",
                     DescribeCalled(*called), NameOf(running));
}

std::string HowItWasCalled(const Evidence& evidence, const std::optional<NotedPlugin>& former,
                           const CallFacts& called) {
  if (former && !IsSame(*former, called.identity))
    return fmt::format("; the code was that of {}, whose module is closed; {}, and has led there",
                       NameOf(*former), DescribeCalled(called));
  return evidence.frames.empty() ? "" : ", with no code of its module on the stack";
}

BadEnd BlameNobody(const Evidence& evidence, Result result, const std::string& what,
                   const CallFacts* called) {
  BadEnd end{result, false, Circumstances(evidence)};
  end.culprit.message = what;
  if (called != nullptr) {
    end.culprit.message += "; " + DescribeCalled(*called);
  } else if (evidence.facts.isMainThread) {
    end.culprit.message +=
        ", outside of any plugin's code: a fault of the simulator or the library, or of "
        "memory that a plugin has broken before";
  } else {
    end.culprit.message += ", in a thread that runs no code of a plugin's module";
  }
  return end;
}

// ---- Without facts ------------------------------------------------------------------------------------

Culprit WhereTheFlightIs(const FlightBoard& board, const std::string& what) {
  Culprit culprit;
  culprit.frame = board.frame;
  culprit.hook = HookText(board.hook);
  culprit.message = what;
  return culprit;
}

Culprit InnermostCall(const FlightBoard& board) {
  return DescribeCall(board, std::min(static_cast<std::size_t>(board.depth), kNotedCalls) - 1);
}

}  // namespace

Evidence EvidenceOf(pid_t process, const ThreadFacts& facts) {
  MemoryMap map = MemoryMap::Of(process);
  std::vector<StackFrame> frames = ReadBacktrace(process, facts, map);
  return {*gBoard, facts, std::move(frames), std::move(map)};
}

BadEnd Blame(const Evidence& evidence, Result result, const std::string& what) {
  const ThreadFacts& facts = evidence.facts;
  const CallFacts* const called = CalledPlugin(facts);
  if (facts.sender != 0 && facts.sender != evidence.board.flyer)
    return BlameNobody(evidence, result, fmt::format("{}, sent by process {}", what, facts.sender), called);

  BadEnd end{result, true, Circumstances(evidence)};
  if (called != nullptr) end.culprit.call = VYRAGetCallKindName(called->kind);
  const std::optional<NotedPlugin> running = RunningPlugin(evidence);
  const std::optional<NotedPlugin> former = FormerPlugin(evidence);
  if (running) {
    SetPlugin(end.culprit, *running);
    end.culprit.message = what + HowItRan(facts, *running, called);
  } else if (called != nullptr) {
    SetPlugin(end.culprit, called->identity);
    end.culprit.message = what + HowItWasCalled(evidence, former, *called);
  } else if (former) {
    SetPlugin(end.culprit, *former);
    end.culprit.message = what + ": its code was still running after its module was closed";
  } else {
    return BlameNobody(evidence, result, what, called);
  }
  return end;
}

void Identify(Culprit& culprit, const CallFacts& call) {
  SetPlugin(culprit, call.identity);
  culprit.call = VYRAGetCallKindName(call.kind);
}

Culprit DescribeCall(const FlightBoard& board, std::size_t depth) {
  Culprit culprit;
  const NotedCall& call = board.calls[depth];
  const auto plugin = static_cast<std::size_t>(call.plugin.load());
  if (plugin < kNotedPlugins) SetPlugin(culprit, board.plugins[plugin]);
  culprit.call = VYRAGetCallKindName(call.kind);
  culprit.frame = board.frame;
  culprit.hook = HookText(board.hook);
  return culprit;
}

BadEnd BlameRunningCall(const FlightBoard& board, const std::string& what) {
  if (board.depth == 0) return {Result::Exited, false, WhereTheFlightIs(board, what)};
  Culprit culprit = InnermostCall(board);
  culprit.message = what;
  return {Result::Exited, true, std::move(culprit)};
}

BadEnd BlameNobody(const FlightBoard& board, const std::string& what) {
  BadEnd end{Result::Crashed, false, WhereTheFlightIs(board, what)};
  if (board.depth > 0) end.culprit.message += "; " + DescribeCalled(InnermostCall(board));
  return end;
}

}  // namespace sim
