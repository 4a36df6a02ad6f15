// Holds on to a record of a list while plugins are called, and knows afterwards whether it is still there.
// Its address alone would not tell: the memory of a record that was freed may be another's already.
#pragma once

template <class T>
class VYRAResourceList;

// Made by VYRAResourceList::Hold. It does not count as a walk: it puts off no removal.
template <class T>
class VYRAResourceHold {
 public:
  ~VYRAResourceHold() { innermost = outer; }
  VYRAResourceHold(const VYRAResourceHold&) = delete;
  VYRAResourceHold& operator=(const VYRAResourceHold&) = delete;

  // The record, or null when it was removed, or was null from the beginning.
  T* Get() const { return record != nullptr && !record->is_dead() ? record : nullptr; }

 private:
  friend class VYRAResourceList<T>;

// GCC does not see that the destructor takes the address back.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdangling-pointer"
#endif
  VYRAResourceHold(VYRAResourceHold*& innermostOfList, T* held)
      : innermost(innermostOfList), outer(innermostOfList), record(held) {
    innermost = this;
  }
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif

  // A record is about to be freed.
  void Forget(const T* item) {
    if (record == item) record = nullptr;
  }

  VYRAResourceHold*& innermost;
  VYRAResourceHold* outer;
  T* record;
};
