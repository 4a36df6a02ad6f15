// The datarefs: their records, the pool that holds them and what finds them by name and by owner. A record is
// never freed or moved, so a handle, which is its address, stays good for the life of the library.
#pragma once

#include <cstddef>
#include <map>
#include <string_view>

#include "VYRADataAccess.h"
#include "VYRAOwnedRecords.h"

struct VYRAData_t {
  VYRALinks<VYRAData_t> owned;  // in gOwnedDataRefs
  std::string_view name;        // terminated; kept as long as the record
  int types = 0;
  int writable = 0;
  // Who publishes it, if anybody does; changed by VYRADataAccessSetOwner alone.
  VYRAPluginID owner = VYRA_NO_PLUGIN;
  VYRAReadInt_f readInt = nullptr;
  VYRAWriteInt_f writeInt = nullptr;
  VYRAReadFloat_f readFloat = nullptr;
  VYRAWriteFloat_f writeFloat = nullptr;
  VYRAReadDouble_f readDouble = nullptr;
  VYRAWriteDouble_f writeDouble = nullptr;
  VYRAReadIntArray_f readIntArray = nullptr;
  VYRAWriteIntArray_f writeIntArray = nullptr;
  VYRAReadFloatArray_f readFloatArray = nullptr;
  VYRAWriteFloatArray_f writeFloatArray = nullptr;
  VYRAReadData_f readData = nullptr;
  VYRAWriteData_f writeData = nullptr;
  void* readRefcon = nullptr;
  void* writeRefcon = nullptr;
};

// A run of record slots, handed out from the front. Blocks are chained in the order of allocation.
struct VYRADataBlock {
  static constexpr int kCapacity = 32;

  VYRADataBlock* next = nullptr;
  int capacity = kCapacity;
  int used = 0;
  VYRAData_t slots[kCapacity];
};

// All records by name; the keys are the records' own names, which never change.
extern std::map<std::string_view, VYRAData_t*> gDataRefs;
extern VYRADataBlock* gDataBlock;  // the first block
extern VYRADataBlock* gDataFree;   // the last block, which is being filled
extern int gDataCount;             // records handed out

// The records of each plugin, for the plugin's end.
extern VYRAOwnedRecords<VYRAData_t, &VYRAData_t::owned> gOwnedDataRefs;

// A fresh record from the pool.
VYRAData_t* AllocDataRef();

// The record of a name, if anybody publishes it now, or null. The record itself is not read: it lies in
// memory that a processor has to fetch first, which would take longer than the whole search.
VYRAData_t* VYRADataAccessFindOwned(const char* name);

// The record of a name, made when there is none.
VYRAData_t* VYRADataAccessFindOrAdd(const char* name);

// Makes a plugin, or with VYRA_NO_PLUGIN nobody, the owner of a record.
void VYRADataAccessSetOwner(VYRAData_t* record, VYRAPluginID plugin);

// The pointer, if it is the address of a record that was handed out; otherwise null. Any pointer may be
// given: it is compared, not followed.
VYRAData_t* DataIsValid(VYRADataRef pointer);

// Whether a pointer is the address of a record that has an owner; any pointer may be given. Answered without
// a look at the record, so that many handles can be checked in a row.
bool VYRADataAccessIsOwned(VYRADataRef pointer);

// Notes whether a record has an owner, for VYRADataAccessIsOwned to answer.
void VYRADataAccessNoteOwned(const VYRAData_t* record, bool owned);

// A dataref's name, or a text in brackets that says why there is none.
const char* DebugDataRefName(VYRADataRef dataRef);

// A plugin leaves: its datarefs belong to nobody, and its subscriptions to shared data end.
void VYRADataRefsCleanupHook(VYRAPluginID plugin);
