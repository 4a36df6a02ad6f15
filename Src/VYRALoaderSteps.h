// Work in steps of which each is taken whatever the others lead to: one plugin's exception keeps no other
// from being loaded, enabled or cleaned up after.
#pragma once

#include <exception>
#include <utility>

//   VYRALoaderSteps steps;
//   for (const std::string& name : names) steps.Take([&] { Load(name); });
//   steps.End();
class VYRALoaderSteps {
 public:
  VYRALoaderSteps() = default;
  ~VYRALoaderSteps() { Drop(); }
  VYRALoaderSteps(const VYRALoaderSteps&) = delete;
  VYRALoaderSteps& operator=(const VYRALoaderSteps&) = delete;

  // Takes a step. Of the exceptions that leave steps, the first is kept for the end. False when this step was
  // left by one.
  template <class Step>
  bool Take(Step step) {
    try {
      step();
      return true;
    } catch (...) {
      if (first == nullptr) {
        first = std::current_exception();
        ++kept;
      }
      return false;
    }
  }

  // Whether there is an exception for later, here or in work around this.
  static bool IsAnExceptionKept() { return kept > 0; }

  // After the last step: lets the first exception go on to the host.
  void End() {
    if (first == nullptr) return;
    std::exception_ptr exception = first;
    Drop();
    std::rethrow_exception(std::move(exception));
  }

 private:
  void Drop() {
    if (first == nullptr) return;
    first = nullptr;
    --kept;
  }

  std::exception_ptr first;
  static inline int kept = 0;
};
