// Code that runs when its scope ends, also when an exception ends it: for what is to change after a plugin
// was called, whether the plugin returned or threw. It calls no plugin itself, and does not throw.
#pragma once

#include <utility>

// The scope:
//
//   const StAtEnd release([] { gDragWindow = nullptr; });
//   window.handleMouseClick(...);
template <class Code>
class StAtEnd {
 public:
  explicit StAtEnd(Code atEnd) : code(std::move(atEnd)) {}
  ~StAtEnd() { code(); }
  StAtEnd(const StAtEnd&) = delete;
  StAtEnd& operator=(const StAtEnd&) = delete;

 private:
  Code code;
};
