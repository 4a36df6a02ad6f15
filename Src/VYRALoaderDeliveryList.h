// Deliveries, results of finished work on their way to a plugin, and the intrusive lists that hold them.
// The rules of who gets a delivery when stand in VYRALoaderDeliveries.h.
#pragma once

#include "VYRADefs.h"

class VYRADelivery {
 public:
  explicit VYRADelivery(VYRAPluginID plugin = VYRA_NO_PLUGIN) : pluginID(plugin) {}
  VYRADelivery(const VYRADelivery&) = delete;
  VYRADelivery& operator=(const VYRADelivery&) = delete;

  // Hands the result to its plugin, or drops it when the plugin is gone. The lists never free a delivery:
  // this is the last call it gets, and it disposes of its object.
  virtual void DeliverToPlugin(bool pluginGone) = 0;

  VYRAPluginID pluginID;

 protected:
  ~VYRADelivery() = default;

 private:
  friend void VYRADeliveryEnqueue(class VYRADeliveryHead& head, VYRADelivery& delivery);
  friend void VYRADeliveryDequeue(VYRADelivery& delivery);
  friend VYRADelivery* VYRADeliveryPop(VYRADeliveryHead& head);
  friend class VYRADeliveryHead;

  VYRADelivery* next = nullptr;
  VYRADelivery* previous = nullptr;
};

// The sentinel in front of a list. It lives inside a plugin record, and records move when the registry
// grows, so moving a head takes its list along: the first delivery is told its new neighbour.
class VYRADeliveryHead final : public VYRADelivery {
 public:
  VYRADeliveryHead() = default;
  VYRADeliveryHead(VYRADeliveryHead&& other) noexcept { TakeOver(other); }
  VYRADeliveryHead& operator=(VYRADeliveryHead&& other) noexcept {
    if (this != &other) TakeOver(other);
    return *this;
  }
  ~VYRADeliveryHead() = default;

  void DeliverToPlugin(bool /*pluginGone*/) override {}

 private:
  void TakeOver(VYRADeliveryHead& other) noexcept {
    next = other.next;
    other.next = nullptr;
    if (next != nullptr) next->previous = this;
  }
};

// Links a delivery directly behind the head: the list is last in, first out, and plugins see that order.
inline void VYRADeliveryEnqueue(VYRADeliveryHead& head, VYRADelivery& delivery) {
  delivery.next = head.next;
  delivery.previous = &head;
  if (head.next != nullptr) head.next->previous = &delivery;
  head.next = &delivery;
}

// Takes a delivery off the list that holds it; one that is on no list stays as it is.
inline void VYRADeliveryDequeue(VYRADelivery& delivery) {
  if (delivery.previous != nullptr) delivery.previous->next = delivery.next;
  if (delivery.next != nullptr) delivery.next->previous = delivery.previous;
  delivery.next = nullptr;
  delivery.previous = nullptr;
}

// Takes the delivery directly behind the head, or returns null.
inline VYRADelivery* VYRADeliveryPop(VYRADeliveryHead& head) {
  VYRADelivery* first = head.next;
  if (first != nullptr) VYRADeliveryDequeue(*first);
  return first;
}
