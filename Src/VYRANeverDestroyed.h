// A global that is not destroyed when the process ends: destructors in modules that are still open may come
// later than the library's own, and find what they registered as it was.
#pragma once

template <class T>
class VYRANeverDestroyed {
 public:
  VYRANeverDestroyed() : value() {}
  ~VYRANeverDestroyed() {}  // NOLINT(modernize-use-equals-default): a union's would not be one
  VYRANeverDestroyed(const VYRANeverDestroyed&) = delete;
  VYRANeverDestroyed& operator=(const VYRANeverDestroyed&) = delete;

  T& operator*() { return value; }
  T* operator->() { return &value; }

 private:
  union {
    T value;
  };
};
