// The index by key that a VYRAResourceList keeps beside itself, where its records have one.
#pragma once

#include "VYRAKeyedRecords.h"
#include "VYRAResource.h"

template <class T>
struct VYRAResourceKeys {
  void AddFirst(T* /*item*/) {}
  void Remove(T* /*item*/) {}
};

template <class T>
requires requires(const T& item) { item.Key(); }
struct VYRAResourceKeys<T> : VYRAKeyedRecords<T, &T::Key, &VYRAResourceAside<T>::AlikeOf> {};
