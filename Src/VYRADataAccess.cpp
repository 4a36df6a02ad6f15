// Looking datarefs up, and reading and writing them through their owners' accessors.
#include "VYRADataAccess.h"

#include "VYRADataAccessInternal.h"
#include "VYRALoaderDispatch.h"

namespace {

// The calls below for an owner who may not be called straight away: it is disabled or gone, or the watcher
// wants to be told.
template <class Result, class... Rest>
[[gnu::noinline]] Result CallTold(VYRAPluginID owner, Result (*accessor)(void*, Rest...), void* refcon,
                                  Rest... rest) {
  const StDispatchCallback dispatch(owner, VYRA_CALL_DATAREF);
  return dispatch() ? accessor(refcon, rest...) : Result();
}

// Calls the owner's accessor of one type, as the owner. A record whose owner left keeps its accessors, but
// its owner, nobody, may never be called. Plugins read thousands of values in a frame: whether the owner may
// be called is asked before anything is saved for its sake, so that the way to the accessor is straight.
template <class Result, class... Rest>
Result Call(VYRAPluginID owner, Result (*accessor)(void*, Rest...), void* refcon, Rest... rest) {
  if (gUnwatchedAccessors[owner] == 0) [[unlikely]]
    return CallTold(owner, accessor, refcon, rest...);
  const StRunningCall call(owner, VYRA_CALL_DATAREF);
  return accessor(refcon, rest...);
}

template <class Result, class... Rest>
Result Read(const VYRAData_t* record, Result (*VYRAData_t::*accessor)(void*, Rest...), Rest... rest) {
  if (record == nullptr || record->*accessor == nullptr) return Result{};
  return Call(record->owner, record->*accessor, record->readRefcon, rest...);
}

template <class... Rest>
void Write(const VYRAData_t* record, void (*VYRAData_t::*accessor)(void*, Rest...), Rest... rest) {
  if (record == nullptr || record->writable == 0 || record->*accessor == nullptr) return;
  Call(record->owner, record->*accessor, record->writeRefcon, rest...);
}

}  // namespace

VYRADataRef VYRAFindDataRef(const char* name) {
  return name != nullptr ? VYRADataAccessFindOwned(name) : nullptr;
}

int VYRAIsDataRefGood(VYRADataRef dataRef) { return VYRADataAccessIsOwned(dataRef) ? 1 : 0; }

int VYRACanWriteDataRef(VYRADataRef dataRef) { return dataRef != nullptr ? dataRef->writable : 0; }

VYRADataTypeID VYRAGetDataRefTypes(VYRADataRef dataRef) { return dataRef != nullptr ? dataRef->types : 0; }

int VYRAGetDatai(VYRADataRef dataRef) { return Read(dataRef, &VYRAData_t::readInt); }

void VYRASetDatai(VYRADataRef dataRef, int value) { Write(dataRef, &VYRAData_t::writeInt, value); }

float VYRAGetDataf(VYRADataRef dataRef) { return Read(dataRef, &VYRAData_t::readFloat); }

void VYRASetDataf(VYRADataRef dataRef, float value) { Write(dataRef, &VYRAData_t::writeFloat, value); }

double VYRAGetDatad(VYRADataRef dataRef) { return Read(dataRef, &VYRAData_t::readDouble); }

void VYRASetDatad(VYRADataRef dataRef, double value) { Write(dataRef, &VYRAData_t::writeDouble, value); }

int VYRAGetDatavi(VYRADataRef dataRef, int* values, int offset, int max) {
  return Read(dataRef, &VYRAData_t::readIntArray, values, offset, max);
}

void VYRASetDatavi(VYRADataRef dataRef, int* values, int offset, int count) {
  Write(dataRef, &VYRAData_t::writeIntArray, values, offset, count);
}

int VYRAGetDatavf(VYRADataRef dataRef, float* values, int offset, int max) {
  return Read(dataRef, &VYRAData_t::readFloatArray, values, offset, max);
}

void VYRASetDatavf(VYRADataRef dataRef, float* values, int offset, int count) {
  Write(dataRef, &VYRAData_t::writeFloatArray, values, offset, count);
}

int VYRAGetDatab(VYRADataRef dataRef, void* values, int offset, int max) {
  return Read(dataRef, &VYRAData_t::readData, values, offset, max);
}

void VYRASetDatab(VYRADataRef dataRef, void* values, int offset, int count) {
  Write(dataRef, &VYRAData_t::writeData, values, offset, count);
}
