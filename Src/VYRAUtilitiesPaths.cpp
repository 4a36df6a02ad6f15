// The host's paths, taking paths apart, listing folders, and the host's own data files.
#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "VYRAHostServices.h"
#include "VYRALoaderPaths.h"
#include "VYRALoaderReports.h"
#include "VYRAModuleLoader.h"
#include "VYRAUtilities.h"

static_assert(VYRA_PATH_SIZE == kPathBufferSize);

namespace {

// The separator of folders in the host's older encoding.
constexpr char kOldDirSeparator[] = "/";

// A plugin's two buffers for a listing, and what is still free in them.
class PackedNames {
 public:
  PackedNames(char* names, int nameBufferSize, char** indexArray, int indexCount)
      : cursor(names),
        room(names != nullptr ? Size(nameBufferSize) : 0),
        indices(indexArray),
        indicesLeft(Size(indexCount)) {}

  bool Add(const std::string& name) {
    if (!HasRoom(name.size() + 1)) return false;
    PutIndex(cursor);
    std::memcpy(cursor, name.c_str(), name.size() + 1);
    cursor += name.size() + 1;
    room -= name.size() + 1;
    ++count;
    return true;
  }

  // Ends both lists, or neither.
  bool Close() {
    if (!HasRoom(1)) return false;
    PutIndex(nullptr);
    *cursor = '\0';
    return true;
  }

  int Count() const { return count; }

 private:
  static std::size_t Size(int size) { return static_cast<std::size_t>(std::max(size, 0)); }

  bool HasRoom(std::size_t bytes) const { return bytes <= room && (indices == nullptr || indicesLeft > 0); }

  void PutIndex(char* name) {
    if (indices == nullptr) return;
    *indices++ = name;
    --indicesLeft;
  }

  char* cursor;
  std::size_t room;
  char** indices;
  std::size_t indicesLeft;
  int count = 0;
};

std::vector<std::string> NamesIn(const char* folder) {
  std::vector<std::string> names;
  if (folder == nullptr) return names;
  VYRAFetchDirectoryContents(VYRAPathFromPlugin(folder).c_str(), "*.*", names);
  for (std::string& name : names) name = VYRAPathToPlugin(name);
  return names;
}

bool Pack(const std::vector<std::string>& names, std::size_t first, PackedNames& packed) {
  for (std::size_t i = first; i < names.size(); ++i) {
    if (!packed.Add(names[i])) return false;
  }
  return packed.Close();
}

bool IsDataFileType(int fileType) { return fileType == VYRA_DATA_FILE_1 || fileType == VYRA_DATA_FILE_2; }

}  // namespace

void VYRAGetSystemPath(char* outSystemPath) {
  if (outSystemPath == nullptr) return;
  gHooks->GetSystemPath(outSystemPath);
  VYRAPathToPluginInPlace(outSystemPath);
}

void VYRAGetPrefsPath(char* outPrefsPath) {
  if (outPrefsPath == nullptr) return;
  gHooks->GetPrefsPath(outPrefsPath);
  VYRAPathToPluginInPlace(outPrefsPath);
}

const char* VYRAGetDirectorySeparator(void) {
  return VYRANeedPathConvert() ? kOldDirSeparator : gDirSeparator;
}

char* VYRAExtractFileAndPath(char* ioFullPath) {
  if (ioFullPath == nullptr || *ioFullPath == '\0') return ioFullPath;
  const char separator = *VYRAGetDirectorySeparator();
  char* last = ioFullPath + std::strlen(ioFullPath) - 1;
  if (*last == separator) {
    *last = '\0';
    if (last == ioFullPath) return ioFullPath;
    --last;
  }
  while (last > ioFullPath && *last != separator) --last;
  if (*last != separator) return last;
  *last = '\0';
  return last + 1;
}

int VYRAGetDirectoryContents(const char* directoryPath, int firstReturn, char* outFileNames,
                             int fileNameBufferSize, char** outIndices, int indexCount, int* outTotalFiles,
                             int* outReturnedFiles) {
  const std::vector<std::string> names = NamesIn(directoryPath);
  if (outTotalFiles != nullptr) *outTotalFiles = static_cast<int>(names.size());
  PackedNames packed(outFileNames, fileNameBufferSize, outIndices, indexCount);
  const bool complete = Pack(names, static_cast<std::size_t>(std::max(firstReturn, 0)), packed);
  if (outReturnedFiles != nullptr) *outReturnedFiles = packed.Count();
  return complete ? 1 : 0;
}

// Kept: only saving refuses a null path. A host may take null for its own file when it loads, but nothing is
// ever written to a file that nobody named.
int VYRALoadDataFile(int fileType, const char* filePath) {
  if (!IsDataFileType(fileType)) {
    VYRASendError("Illegal file type passed to VYRALoadDataFile.");
    return 0;
  }
  return gHooks->LoadDataFile(fileType, filePath);
}

int VYRASaveDataFile(int fileType, const char* filePath) {
  if (filePath == nullptr) {
    VYRASendError("Null file path passed to VYRASaveDataFile.");
    return 0;
  }
  if (!IsDataFileType(fileType)) {
    VYRASendError("Illegal file type passed to VYRASaveDataFile.");
    return 0;
  }
  return gHooks->SaveDataFile(fileType, filePath);
}
