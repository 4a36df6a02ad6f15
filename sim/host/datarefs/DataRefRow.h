// One of the simulator's own datarefs: a row of the table from which they are published and described.
#pragma once

#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "VYRADataAccess.h"

namespace sim {

struct DataRefRow {
  std::string name;
  VYRADataTypeID type = VYRA_TYPE_INT;
  std::string unit;  // empty where there is none
  std::string description;

  // Of an int, a float or a double. Numbers are read and written as doubles, whatever the type.
  double (*get)() = nullptr;
  void (*set)(double value) = nullptr;  // null where it is read-only

  // Of an array.
  int count = 0;
  double (*getAt)(int index) = nullptr;
  void (*setAt)(int index, double value) = nullptr;

  // Of data, which are texts.
  std::string_view (*getText)() = nullptr;
  void (*writeText)(void* refcon, void* bytes, int offset, int count) = nullptr;

  // What is written is cut to these; what is no number is not written at all.
  double smallest = std::numeric_limits<double>::lowest();
  double largest = std::numeric_limits<double>::max();

  bool IsWritable() const { return set != nullptr || setAt != nullptr || writeText != nullptr; }
};

// The limits of what may be written.
struct Limits {
  double smallest = std::numeric_limits<double>::lowest();
  double largest = std::numeric_limits<double>::max();
};

// A row of each kind. Without a function to write, it is read-only.
DataRefRow Int(std::string name, std::string unit, std::string description, double (*get)(),
               void (*set)(double) = nullptr, Limits limits = {});
DataRefRow Float(std::string name, std::string unit, std::string description, double (*get)(),
                 void (*set)(double) = nullptr, Limits limits = {});
DataRefRow Double(std::string name, std::string unit, std::string description, double (*get)(),
                  void (*set)(double) = nullptr, Limits limits = {});
// An int that is 0 or 1.
DataRefRow Switch(std::string name, std::string description, double (*get)(), void (*set)(double) = nullptr);
DataRefRow FloatArray(std::string name, std::string unit, std::string description, int count,
                      double (*getAt)(int), void (*setAt)(int, double) = nullptr);
DataRefRow IntArray(std::string name, std::string unit, std::string description, int count,
                    double (*getAt)(int));
DataRefRow Text(std::string name, std::string description, std::string_view (*getText)());

// The rows of each subject, a file each.
std::vector<DataRefRow> AircraftDataRefs();
std::vector<DataRefRow> ControlDataRefs();
std::vector<DataRefRow> EnvironmentDataRefs();
std::vector<DataRefRow> NavigationDataRefs();
std::vector<DataRefRow> PlaneDataRefs();
std::vector<DataRefRow> SystemDataRefs();
std::vector<DataRefRow> ViewDataRefs();

}  // namespace sim
