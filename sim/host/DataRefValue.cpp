// Choosing the accessor that fits a dataref's declared types.
#include "host/DataRefValue.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>
#include <utility>

#include "VYRADataAccess.h"
#include "host/FlightBoard.h"

namespace sim {
namespace {

// All elements: the first call asks how many there are.
template <class Element, class Argument>
std::vector<Element> ReadElements(VYRADataRef dataRef, int (*read)(VYRADataRef, Argument*, int, int)) {
  const int total = std::max(0, read(dataRef, nullptr, 0, 0));
  std::vector<Element> elements(static_cast<std::size_t>(total));
  const int copied = total == 0 ? 0 : read(dataRef, elements.data(), 0, total);
  elements.resize(static_cast<std::size_t>(std::clamp(copied, 0, total)));
  return elements;
}

template <class Element>
std::vector<double> ToNumbers(const std::vector<Element>& elements) {
  return {elements.begin(), elements.end()};
}

std::string ReadText(VYRADataRef dataRef) {
  const auto bytes = ReadElements<char>(dataRef, VYRAGetDatab);
  return {bytes.begin(), std::ranges::find(bytes, '\0')};
}

// The nearest value that the dataref can hold.
template <class Element>
Element Convert(double number) {
  using Limits = std::numeric_limits<Element>;
  return static_cast<Element>(
      std::clamp(number, static_cast<double>(Limits::lowest()), static_cast<double>(Limits::max())));
}

template <class Element>
void WriteElements(VYRADataRef dataRef, void (*write)(VYRADataRef, Element*, int, int),
                   const std::vector<double>& numbers, int first) {
  std::vector<Element> elements;
  elements.reserve(numbers.size());
  for (const double number : numbers) elements.push_back(Convert<Element>(number));
  write(dataRef, elements.data(), first, static_cast<int>(elements.size()));
}

bool WriteNumber(VYRADataRef dataRef, VYRADataTypeID types, double number) {
  if ((types & VYRA_TYPE_DOUBLE) != 0)
    VYRASetDatad(dataRef, number);
  else if ((types & VYRA_TYPE_FLOAT) != 0)
    VYRASetDataf(dataRef, Convert<float>(number));
  else if ((types & VYRA_TYPE_INT) != 0)
    VYRASetDatai(dataRef, Convert<int>(number));
  else
    return false;
  return true;
}

bool WriteNumbers(VYRADataRef dataRef, VYRADataTypeID types, const std::vector<double>& numbers, int first) {
  if ((types & VYRA_TYPE_FLOAT_ARRAY) != 0)
    WriteElements<float>(dataRef, VYRASetDatavf, numbers, first);
  else if ((types & VYRA_TYPE_INT_ARRAY) != 0)
    WriteElements<int>(dataRef, VYRASetDatavi, numbers, first);
  else
    return false;
  return true;
}

// cppcheck-suppress passedByValue ; the library takes it as text that could be written to
bool WriteText(VYRADataRef dataRef, VYRADataTypeID types, std::string text) {
  if ((types & VYRA_TYPE_DATA) == 0) return false;
  VYRASetDatab(dataRef, text.data(), 0, static_cast<int>(text.size()) + 1);
  return true;
}

std::optional<DataRefValue> Read(VYRADataRef dataRef) {
  const VYRADataTypeID types = VYRAGetDataRefTypes(dataRef);
  if ((types & VYRA_TYPE_DOUBLE) != 0) return VYRAGetDatad(dataRef);
  if ((types & VYRA_TYPE_FLOAT) != 0) return static_cast<double>(VYRAGetDataf(dataRef));
  if ((types & VYRA_TYPE_INT) != 0) return static_cast<double>(VYRAGetDatai(dataRef));
  if ((types & VYRA_TYPE_FLOAT_ARRAY) != 0) return ToNumbers(ReadElements<float>(dataRef, VYRAGetDatavf));
  if ((types & VYRA_TYPE_INT_ARRAY) != 0) return ToNumbers(ReadElements<int>(dataRef, VYRAGetDatavi));
  if ((types & VYRA_TYPE_DATA) != 0) return ReadText(dataRef);
  return std::nullopt;
}

// False when the dataref has another type.
bool Write(VYRADataRef dataRef, const DataRefValue& value, int firstElement) {
  const VYRADataTypeID types = VYRAGetDataRefTypes(dataRef);
  if (const auto* const number = std::get_if<double>(&value)) return WriteNumber(dataRef, types, *number);
  if (const auto* const numbers = std::get_if<std::vector<double>>(&value))
    return WriteNumbers(dataRef, types, *numbers, firstElement);
  return WriteText(dataRef, types, std::get<std::string>(value));
}

}  // namespace

std::optional<DataRefValue> ReadDataRef(const std::string& name) {
  const VYRADataRef dataRef = VYRAFindDataRef(name.c_str());
  if (dataRef == nullptr) return std::nullopt;
  return CallHook("VYRAGetData", [dataRef] { return Read(dataRef); });
}

std::string WriteDataRef(const std::string& name, const DataRefValue& value, int firstElement) {
  const VYRADataRef dataRef = VYRAFindDataRef(name.c_str());
  if (dataRef == nullptr) return "nobody publishes it";
  if (VYRACanWriteDataRef(dataRef) == 0) return "it is not writable";
  const bool fits = CallHook("VYRASetData", [&] { return Write(dataRef, value, firstElement); });
  return fits ? "" : "it has another type";
}

std::string TypeNames(int types) {
  constexpr std::array<std::pair<int, const char*>, 6> kNames = {{{VYRA_TYPE_INT, "int"},
                                                                  {VYRA_TYPE_FLOAT, "float"},
                                                                  {VYRA_TYPE_DOUBLE, "double"},
                                                                  {VYRA_TYPE_FLOAT_ARRAY, "float array"},
                                                                  {VYRA_TYPE_INT_ARRAY, "int array"},
                                                                  {VYRA_TYPE_DATA, "data"}}};
  std::vector<std::string_view> names;
  for (const auto& [type, name] : kNames)
    if ((types & type) != 0) names.emplace_back(name);
  return fmt::format("{}", fmt::join(names, ", "));
}

std::string ToText(const DataRefValue& value) {
  if (const auto* const number = std::get_if<double>(&value)) return fmt::format("{:.9g}", *number);
  if (const auto* const numbers = std::get_if<std::vector<double>>(&value))
    return fmt::format("[{:.9g}]", fmt::join(*numbers, ", "));
  return fmt::format("\"{}\"", std::get<std::string>(value));
}

}  // namespace sim
