// An OpenGL context without a window and without a display server: Mesa draws on the processor. It has the
// fixed functions, so that plugins that draw with them appear as well.
#pragma once

namespace sim {

class HeadlessContext {
 public:
  // Makes it the current one of this thread. Throws InputError, naming the Debian packages to install, where
  // there is no such context to be had.
  HeadlessContext();
  ~HeadlessContext();
  HeadlessContext(const HeadlessContext&) = delete;
  HeadlessContext& operator=(const HeadlessContext&) = delete;

 private:
  void* display = nullptr;
  void* context = nullptr;
};

}  // namespace sim
