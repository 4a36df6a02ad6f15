// Reading and writing datarefs through their handles.
#include <VYRADataAccess.h>
#include <fmt/core.h>

#include <type_traits>

#include "../Bare.h"
#include "../HostedLibrary.h"
#include "../Peers.h"
#include "DataRefPopulation.h"
#include "Measures.h"

namespace bench {

namespace {

constexpr VYRAPluginID kOwner = 1;
constexpr VYRAPluginID kReader = 2;

template <class Value>
Value gValue = 42;

// Accessors with a refcon, as the library calls them.
template <class Value>
Value ReadRefcon(void* refcon) {
  return *static_cast<Value*>(refcon);
}
template <class Value>
void WriteRefcon(void* refcon, Value value) {
  *static_cast<Value*>(refcon) = value;
}

// The same without, as the peer calls them.
template <class Value>
Value Get() {
  return gValue<Value>;
}
template <class Value>
void Set(Value value) {
  gValue<Value> = value;
}

// What belongs to a type, chosen once for all measures.
template <class Value>
struct Typed;
template <>
struct Typed<int> {
  static constexpr const char* kName = "an int";
  static constexpr VYRADataTypeID kType = VYRA_TYPE_INT;
  static constexpr auto kGet = VYRAGetDatai;
  static constexpr auto kSet = VYRASetDatai;
};
template <>
struct Typed<float> {
  static constexpr const char* kName = "a float";
  static constexpr VYRADataTypeID kType = VYRA_TYPE_FLOAT;
  static constexpr auto kGet = VYRAGetDataf;
  static constexpr auto kSet = VYRASetDataf;
};
template <>
struct Typed<double> {
  static constexpr const char* kName = "a double";
  static constexpr VYRADataTypeID kType = VYRA_TYPE_DOUBLE;
  static constexpr auto kGet = VYRAGetDatad;
  static constexpr auto kSet = VYRASetDatad;
};

// The accessor if it is of the type asked for, else null.
template <class Wanted, class Value, class Accessor>
auto Only(Accessor accessor) {
  if constexpr (std::is_same_v<Wanted, Value>) {
    return accessor;
  } else {
    return nullptr;
  }
}

template <class Value>
VYRADataRef Publish(const char* name) {
  return VYRARegisterDataAccessor(
      name, Typed<Value>::kType, 1, Only<int, Value>(ReadRefcon<Value>), Only<int, Value>(WriteRefcon<Value>),
      Only<float, Value>(ReadRefcon<Value>), Only<float, Value>(WriteRefcon<Value>),
      Only<double, Value>(ReadRefcon<Value>), Only<double, Value>(WriteRefcon<Value>), nullptr, nullptr,
      nullptr, nullptr, nullptr, nullptr, &gValue<Value>, &gValue<Value>);
}

template <class Value>
void MeasureType(Session& session) {
  VYRADataRef dataRef = nullptr;
  HostedLibrary::RunAs(kOwner, [&] { dataRef = Publish<Value>(DataRefName(0).c_str()); });
  session.Compare(fmt::format("read {}", Typed<Value>::kName), 0, 1,
                  {{kLibrary, HostedLibrary::As(kReader,
                                                [=](benchmark::State& state) {
                                                  for ([[maybe_unused]] auto iteration : state) {
                                                    benchmark::DoNotOptimize(Typed<Value>::kGet(dataRef));
                                                  }
                                                })},
                   {kBareCall, BareCall(ReadRefcon<Value>, &gValue<Value>)},
                   {kSimGear, SimGearRead<Value>(Get<Value>)},
                   {kSimGearVariable, SimGearReadVariable<Value>(&gValue<Value>)}});
  session.Compare(fmt::format("write {}", Typed<Value>::kName), 0, 1,
                  {{kLibrary, HostedLibrary::As(kReader,
                                                [=](benchmark::State& state) {
                                                  for ([[maybe_unused]] auto iteration : state) {
                                                    Typed<Value>::kSet(dataRef, Value{7});
                                                  }
                                                })},
                   {kBareCall, BareCall(WriteRefcon<Value>, &gValue<Value>, Value{7})},
                   {kSimGear, SimGearWrite<Value>(Get<Value>, Set<Value>, Value{7})}});
  HostedLibrary::RunAs(kOwner, [&] { VYRAUnregisterDataAccessor(dataRef); });
}

}  // namespace

void MeasureReadsAndWrites(Session& session) {
  const HostedLibrary library;
  MeasureType<int>(session);
  MeasureType<float>(session);
  MeasureType<double>(session);
}

}  // namespace bench
