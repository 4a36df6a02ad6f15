// Files that no compiler makes, or not of this source: put where a module is looked for.
#pragma once

#include <string>

using MakeFile_f = void (*)(const std::string& path);

void MakeEmpty(const std::string& path);
void MakeText(const std::string& path);
void MakeFolder(const std::string& path);
void MakeDanglingLink(const std::string& path);
void MakeLinkToItself(const std::string& path);
void MakeLinkToADevice(const std::string& path);
void MakeLinkToTheFirst(const std::string& path);
void MakeHardLinkToTheFirst(const std::string& path);
void MakePipe(const std::string& path);
void MakeSocket(const std::string& path);

// The rights to it are taken away, and those of the process that would overrule them: see StOrdinaryUser.
void MakeUnreadable(const std::string& path);

// A library whose header says something else.
void MakeForOtherProcessor(const std::string& path);
void MakeForOtherWordSize(const std::string& path);
void MakeForOtherByteOrder(const std::string& path);
void MakeHeaderAlone(const std::string& path);
void MakeBeginningAlone(const std::string& path);
void MakeExecutable(const std::string& path);

// Five thousand files and folders that are no modules, beside where the module would be.
void MakeThousandsOfEntries(const std::string& path);

// While it lives, root is somebody who may read what everybody may.
class StOrdinaryUser {
 public:
  StOrdinaryUser();
  ~StOrdinaryUser();
  StOrdinaryUser(const StOrdinaryUser&) = delete;
  StOrdinaryUser& operator=(const StOrdinaryUser&) = delete;

  // False where the process may not become somebody else.
  bool IsOrdinary() const;
};
