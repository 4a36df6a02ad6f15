// Publishing datarefs and taking them back, and who owns them.
#include "VYRADataAccessInternal.h"
#include "VYRALoaderDispatch.h"
#include "VYRALoaderReports.h"

VYRADataRef VYRARegisterDataAccessor(const char* name, VYRADataTypeID types, int writable,
                                     VYRAReadInt_f readInt, VYRAWriteInt_f writeInt,
                                     VYRAReadFloat_f readFloat, VYRAWriteFloat_f writeFloat,
                                     VYRAReadDouble_f readDouble, VYRAWriteDouble_f writeDouble,
                                     VYRAReadIntArray_f readIntArray, VYRAWriteIntArray_f writeIntArray,
                                     VYRAReadFloatArray_f readFloatArray,
                                     VYRAWriteFloatArray_f writeFloatArray, VYRAReadData_f readData,
                                     VYRAWriteData_f writeData, void* readRefcon, void* writeRefcon) {
  if (name == nullptr) return nullptr;
  VYRAData_t* record = VYRADataAccessFindOrAdd(name);
  if (record->owner != VYRA_NO_PLUGIN) {
    VYRASendError("Dataref is already registered by someone else.");
    // Kept: the refused caller gets the other owner's handle, and plugins read through it.
    return record;
  }
  record->types = types;
  record->writable = writable;
  VYRADataAccessSetOwner(record, gDispatchedPlugin);
  record->readInt = readInt;
  record->writeInt = writeInt;
  record->readFloat = readFloat;
  record->writeFloat = writeFloat;
  record->readDouble = readDouble;
  record->writeDouble = writeDouble;
  record->readIntArray = readIntArray;
  record->writeIntArray = writeIntArray;
  record->readFloatArray = readFloatArray;
  record->writeFloatArray = writeFloatArray;
  record->readData = readData;
  record->writeData = writeData;
  record->readRefcon = readRefcon;
  record->writeRefcon = writeRefcon;
  return record;
}

void VYRAUnregisterDataAccessor(VYRADataRef dataRef) {
  VYRAData_t* record = DataIsValid(dataRef);
  if (record == nullptr) {
    VYRASendError("Dataref is illegal and cannot be unregistered.");
  } else if (record->owner == gDispatchedPlugin) {
    VYRADataAccessSetOwner(record, VYRA_NO_PLUGIN);
  } else {
    // Kept: the misspelling; plugins match on this text.
    VYRASendError("Dataref is not owned by you - you cannot unregsiter.");
  }
}
