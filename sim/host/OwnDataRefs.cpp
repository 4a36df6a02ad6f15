// Accessors over the table: the refcon of each is its row.
#include "host/OwnDataRefs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace sim {
namespace {

std::array<char, 64> gBuildString{};  // of the library, terminated

const DataRefRow& Row(void* refcon) { return *static_cast<const DataRefRow*>(refcon); }

// How many of the elements from offset on there are, at most `wanted`.
int CountAt(int count, int offset, int wanted) {
  if (offset < 0 || offset >= count) return 0;
  return std::clamp(wanted, 0, count - offset);
}

// A plugin may write anything, but one value that is no number would spoil the world for good.
template <class Value>
void Write(void* refcon, Value value) {
  const DataRefRow& row = Row(refcon);
  const auto number = static_cast<double>(value);
  if (std::isfinite(number)) row.set(std::clamp(number, row.smallest, row.largest));
}

template <class Value>
Value Read(void* refcon) {
  return static_cast<Value>(Row(refcon).get());
}

template <class Value>
int ReadArray(void* refcon, Value* values, int offset, int max) {
  const DataRefRow& row = Row(refcon);
  if (values == nullptr) return row.count;
  const int count = CountAt(row.count, offset, max);
  for (int index = 0; index < count; ++index) values[index] = static_cast<Value>(row.getAt(offset + index));
  return count;
}

void WriteFloatArray(void* refcon, float* values, int offset, int wanted) {
  const DataRefRow& row = Row(refcon);
  const int count = values != nullptr ? CountAt(row.count, offset, wanted) : 0;
  for (int index = 0; index < count; ++index)
    if (std::isfinite(values[index])) row.setAt(offset + index, static_cast<double>(values[index]));
}

// With a terminator, so that a plugin may read all of it as a text.
int ReadText(void* refcon, void* values, int offset, int max) {
  const std::string_view text = Row(refcon).getText();
  const int size = static_cast<int>(text.size()) + 1;
  if (values == nullptr) return size;
  const int count = CountAt(size, offset, max);
  for (int index = 0; index < count; ++index) {
    const auto place = static_cast<std::size_t>(offset) + static_cast<std::size_t>(index);
    static_cast<char*>(values)[index] = place < text.size() ? text[place] : '\0';
  }
  return count;
}

void WriteBuildString(void* /*refcon*/, void* values, int offset, int count) {
  const int bytes = values != nullptr ? CountAt(static_cast<int>(gBuildString.size()), offset, count) : 0;
  if (bytes > 0) std::memcpy(gBuildString.data() + offset, values, static_cast<std::size_t>(bytes));
  gBuildString.back() = '\0';
}

DataRefRow BuildString() {
  DataRefRow row = Text("sim/version/vyra_build_string",
                        "build date and time of the library, which writes them at its start",
                        [] { return std::string_view(gBuildString.data()); });
  row.writeText = WriteBuildString;
  return row;
}

void Publish(const DataRefRow& row) {
  void* const refcon = const_cast<DataRefRow*>(&row);  // it comes back through Row
  const bool isArray = row.count != 0;
  const bool isInt = row.type == VYRA_TYPE_INT;
  const bool isFloat = row.type == VYRA_TYPE_FLOAT;
  const bool isDouble = row.type == VYRA_TYPE_DOUBLE;
  const bool isIntArray = row.type == VYRA_TYPE_INT_ARRAY;
  const bool isData = row.type == VYRA_TYPE_DATA;
  const bool isSet = row.set != nullptr;
  VYRARegisterDataAccessor(row.name.c_str(), row.type, row.IsWritable() ? 1 : 0, isInt ? Read<int> : nullptr,
                           isInt && isSet ? Write<int> : nullptr, isFloat ? Read<float> : nullptr,
                           isFloat && isSet ? Write<float> : nullptr, isDouble ? Read<double> : nullptr,
                           isDouble && isSet ? Write<double> : nullptr, isIntArray ? ReadArray<int> : nullptr,
                           nullptr, isArray && !isIntArray ? ReadArray<float> : nullptr,
                           row.setAt != nullptr ? WriteFloatArray : nullptr, isData ? ReadText : nullptr,
                           row.writeText, refcon, refcon);
}

}  // namespace

const std::vector<DataRefRow>& OwnDataRefs() {
  static const std::vector<DataRefRow> kRows = [] {
    std::vector<DataRefRow> rows{BuildString()};
    for (std::vector<DataRefRow> (*const part)() :
         {AircraftDataRefs, ControlDataRefs, EnvironmentDataRefs, NavigationDataRefs, PlaneDataRefs,
          SystemDataRefs, ViewDataRefs})
      for (DataRefRow& row : part()) rows.push_back(std::move(row));
    std::ranges::sort(rows, {}, &DataRefRow::name);
    return rows;
  }();
  return kRows;
}

void RegisterSimulatorDataRefs() {
  for (const DataRefRow& row : OwnDataRefs()) Publish(row);
}

}  // namespace sim
