// What the plugin that registers one of everything agrees on with those who fly it: the calls that it can
// get, and how it is asked for the number of each.
#pragma once

#include <array>
#include <cstddef>

enum class Call : std::size_t {
  construct,
  start,
  enable,
  disable,
  stop,
  destroy,
  // From here on each comes once in a round: see ../Round.h.
  message,
  error,
  read,
  write,
  changed,
  loop,
  lateLoop,
  draw,
  drawWindow,
  cursor,
  wheel,
  mouse,
  sniffKey,
  key,
  losingFocus,
  hotKey,
  menu,
  command,
  planesReturned,
  objectReady,
  camera,
};

inline constexpr std::array<const char*, 27> kCallNames = {
    "construct",  "start",  "enable",  "disable",        "stop",        "destroy",  "message",
    "error",      "read",   "write",   "changed",        "loop",        "lateLoop", "draw",
    "drawWindow", "cursor", "wheel",   "mouse",          "sniffKey",    "key",      "losingFocus",
    "hotKey",     "menu",   "command", "planesReturned", "objectReady", "camera"};
static_assert(kCallNames.size() == static_cast<std::size_t>(Call::camera) + 1);

inline constexpr std::size_t kFirstCallOfARound = static_cast<std::size_t>(Call::message);

// How often each call came since the last time that the plugin was asked.
using Tally = std::array<int, kCallNames.size()>;

// Messages from the host to one plugin.
enum {
  kMessageAskTally = 9101,  // with a Tally as parameter, which is filled
  kMessagePrepare = 9102,   // it misuses a function, waits for the planes and loads an object
  kMessageTakeCamera = 9103
};

// What a plugin has for itself lies at a place that its ID gives: its window, its keys, its menu item.
inline constexpr int kPlaceSize = 10;  // pixels, from 0 on
inline constexpr int kHotKeyFlags = 2;
