// Records that belong together, in an order: a record is added at either end and leaves from anywhere, each
// in constant time. It stands in as many chains at once as it has links.
#pragma once

#include <functional>

template <class T>
struct VYRALinks {
  T* next = nullptr;      // stays as it was when the record leaves its chain
  T* previous = nullptr;  // of the first record: the last
};

// `links` is where a record keeps its links in this chain: a member, or a function that is given the record.
template <class T, auto links>
class VYRAChain {
 public:
  T* First() const { return first; }
  static T* Next(T* record) { return LinksOf(record).next; }

  void AddFirst(T* record) {
    LinksOf(record) = {first, first != nullptr ? LinksOf(first).previous : record};
    if (first != nullptr) LinksOf(first).previous = record;
    first = record;
  }

  void AddLast(T* record) {
    if (first == nullptr) {
      AddFirst(record);
      return;
    }
    T*& last = LinksOf(first).previous;
    LinksOf(record) = {nullptr, last};
    LinksOf(last).next = record;
    last = record;
  }

  void Remove(T* record) {
    const VYRALinks<T> left = LinksOf(record);
    if (first == record) {
      first = left.next;
    } else {
      LinksOf(left.previous).next = left.next;
    }
    T* const pointsBack = left.next != nullptr ? left.next : first;
    if (pointsBack != nullptr) LinksOf(pointsBack).previous = left.previous;
  }

 private:
  static VYRALinks<T>& LinksOf(T* record) { return std::invoke(links, *record); }

  T* first = nullptr;
};
