// Looking datarefs up, and reading and writing them through their owners' accessors.
#include "VYRADataAccess.h"

#include "VYRADataAccessInternal.h"
#include "VYRALoaderRegistry.h"

namespace {

// Calls the owner's read accessor of one type, as the owner. A record whose owner left keeps its accessors,
// but its owner, nobody, may never be called. Plugins read thousands of values in a frame: whether the owner
// may be called is asked before anything is saved for its sake, so that the way to the accessor is straight.
template <class Result, class... Rest>
Result Read(const VYRAData_t* record, Result (*VYRAData_t::*accessor)(void*, Rest...), Rest... rest) {
  if (record == nullptr || record->*accessor == nullptr || gCallable[record->owner] == 0) return Result{};
  const StDispatchCallback dispatch(record->owner);
  return (record->*accessor)(record->readRefcon, rest...);
}

template <class... Rest>
void Write(const VYRAData_t* record, void (*VYRAData_t::*accessor)(void*, Rest...), Rest... rest) {
  if (record == nullptr || record->writable == 0 || record->*accessor == nullptr) return;
  if (gCallable[record->owner] == 0) return;
  const StDispatchCallback dispatch(record->owner);
  (record->*accessor)(record->writeRefcon, rest...);
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
