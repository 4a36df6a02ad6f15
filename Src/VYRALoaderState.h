// What the library is in the middle of, and what may therefore not begin now: a host may call from inside any
// service, and so from the middle of a start, a load, a reload or a shutdown.
#pragma once

// From the start to the shutdown. In the middle of a reload the registry is empty, but the library is
// started.
[[gnu::visibility("hidden")]] extern bool gIsStarted;

// A stretch of work on modules and the registry. The library must not be started in the middle of one: its
// plugins would get IDs that the work goes on to use.
class StLoaderWork {
 public:
  StLoaderWork();
  ~StLoaderWork();
  StLoaderWork(const StLoaderWork&) = delete;
  StLoaderWork& operator=(const StLoaderWork&) = delete;

  static bool IsInProgress();
};

// Keeps plugins from being loaded while it lasts.
class StRefuseLoading {
 public:
  StRefuseLoading();
  ~StRefuseLoading();
  StRefuseLoading(const StRefuseLoading&) = delete;
  StRefuseLoading& operator=(const StRefuseLoading&) = delete;
};

// Whether a plugin may be loaded: behind the host's own record, which has the first ID, and unless that is
// refused.
bool VYRALoaderMayLoad();
