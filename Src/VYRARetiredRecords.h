// Records that were taken out of their chain while a pass may stand on one of them: they are kept until no
// pass is on the stack, as a pass goes on from where it stands to the record that used to be next.
#pragma once

#include <memory>
#include <utility>
#include <vector>

template <class T>
class VYRARetiredRecords {
 public:
  // A pass over records:
  //
  //   const VYRARetiredRecords<Handler>::StPass pass(gRetired);
  //   for (Handler* handler = first; handler != nullptr; handler = Chain::Next(handler)) { ... }
  class StPass {
   public:
    explicit StPass(VYRARetiredRecords& retired) : records(retired) { ++records.passes; }
    ~StPass() {
      if (--records.passes == 0 && !records.kept.empty()) records.kept.clear();
    }
    StPass(const StPass&) = delete;
    StPass& operator=(const StPass&) = delete;

   private:
    VYRARetiredRecords& records;
  };

  // Frees a record, now or when the passes that are on the stack have ended.
  void Retire(std::unique_ptr<T> record) {
    if (passes > 0) kept.push_back(std::move(record));
  }

 private:
  int passes = 0;
  std::vector<std::unique_ptr<T>> kept;
};
