// The hooks of a frame's drawing and input, each walking callbacks that let the walk go on.
#include <VYRADisplay.h>

#include "../Bare.h"
#include "../HostedLibrary.h"
#include "Measures.h"

namespace bench {

namespace {

int gCalls = 0;

int Draw(int /*phase*/, int /*isBefore*/, void* /*refcon*/) {
  ++gCalls;
  return 1;
}

int SniffKey(char /*key*/, int /*flags*/, char /*virtualKey*/, void* /*refcon*/) {
  ++gCalls;
  return 1;
}

void DrawWindow(VYRAWindowID /*window*/, void* /*refcon*/) { ++gCalls; }

// Refuses the press.
int PressWindow(VYRAWindowID /*window*/, int /*x*/, int /*y*/, int /*status*/, void* /*refcon*/) {
  ++gCalls;
  return 0;
}

// Leaves the cursor to what lies below.
int AskForCursor(VYRAWindowID /*window*/, int /*x*/, int /*y*/, void* /*refcon*/) {
  ++gCalls;
  return 0;
}

// A loop over one of the host's hooks, each of whose calls must reach `size` callbacks.
template <class Hook, class... Arguments>
Loop HookLoop(std::size_t size, Hook hook, Arguments... arguments) {
  return [=](benchmark::State& state) {
    gCalls = 0;
    for ([[maybe_unused]] auto iteration : state) benchmark::DoNotOptimize(hook(arguments...));
    if (gCalls != static_cast<int>(state.iterations() * static_cast<std::int64_t>(size))) {
      state.SkipWithError("wrong calls");
    }
  };
}

// The refcon tells one registration from the next.
void* Refcon(std::size_t index) { return reinterpret_cast<void*>(index); }

}  // namespace

void MeasureDrawCallbacks(Session& session, std::size_t size) {
  constexpr int kStep = 19;  // calls what stands before phase 50
  const HostedLibrary library;
  library.Share(size, [](std::size_t i) { VYRARegisterDrawCallback(Draw, 50, 1, Refcon(i)); });
  session.Compare("draw callback", size, size,
                  {{kLibrary, HookLoop(size, VYRADoDrawingHook, kStep, 0)},
                   {kBareCall, BarePass<VYRADrawCallback_f>(size, Draw, 50, 1, nullptr)}});
}

void MeasureKeySniffers(Session& session, std::size_t size) {
  const HostedLibrary library;
  library.Share(size, [](std::size_t i) { VYRARegisterKeySniffer(SniffKey, 1, Refcon(i)); });
  session.Compare("key sniffer", size, size,
                  {{kLibrary, HookLoop(size, VYRAKeyPressHook, 'a', 8, 'A')},
                   {kBareCall, BarePass<VYRAKeySniffer_f>(size, SniffKey, 'a', 8, 'A', nullptr)}});
}

void MeasureWindows(Session& session, std::size_t size) {
  constexpr int kStep = 20;  // draws the windows
  const HostedLibrary library;
  library.Share(size, [](std::size_t) {
    const VYRAWindowCreateParams params{sizeof params, 0,           200,     300,          100,     1,
                                        DrawWindow,    PressWindow, nullptr, AskForCursor, nullptr, nullptr};
    VYRACreateWindowEx(&params);
  });
  session.Compare("window drawn", size, size,
                  {{kLibrary, HookLoop(size, VYRADoDrawingHook, kStep, 0)},
                   {kBareCall, BarePass<VYRADrawWindow_f>(size, DrawWindow, nullptr, nullptr)}});
  session.Compare("window under the mouse", size, size,
                  {{kLibrary, HookLoop(size, VYRAMouseClickHook, 50, 150, 1)},
                   {kBareCall, BarePass<VYRAHandleMouseClick_f>(size, PressWindow, nullptr, 50, 150,
                                                                int{VYRA_MOUSE_DOWN}, nullptr)}});
  session.Compare("window under the cursor", size, size,
                  {{kLibrary, HookLoop(size, VYRACursorHook, 50, 150)},
                   {kBareCall, BarePass<VYRAHandleCursor_f>(size, AskForCursor, nullptr, 50, 150, nullptr)}});
}

}  // namespace bench
