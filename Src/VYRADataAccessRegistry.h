// The datarefs: their records, the pool that holds them and the map that finds them by name. A record is
// never freed or moved, so a handle, which is its address, stays good for the life of the library.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

#include "VYRADataAccess.h"

struct VYRAData_t {
  std::string name;
  int types = 0;
  int writable = 0;
  int owner = 0;  // the plugin that publishes it; VYRA_NO_PLUGIN when nobody does
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

extern std::map<std::string, VYRAData_t*, std::less<>> gDataRefs;
extern VYRADataBlock* gDataBlock;  // the first block
extern VYRADataBlock* gDataFree;   // the last block, which is being filled
extern int gDataCount;             // records handed out

// A fresh record from the pool.
VYRAData_t* AllocDataRef();

// The pointer, if it is the address of a record that was handed out; otherwise null. Any pointer may be
// given: it is compared, not followed.
VYRAData_t* DataIsValid(VYRADataRef pointer);

// A dataref's name, or a text in brackets that says why there is none.
const char* DebugDataRefName(VYRADataRef dataRef);

// A plugin leaves: its datarefs belong to nobody, and its subscriptions to shared data end.
void VYRADataRefsCleanupHook(int plugin);
