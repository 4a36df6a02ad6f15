// The value of a dataref of any type: a number, numbers for an array, a text for data.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace sim {

using DataRefValue = std::variant<double, std::vector<double>, std::string>;

// The value of the dataref of this name in the first type that it offers: double, float, int, float array,
// int array, data (up to its first zero byte). Nothing when nobody publishes it.
std::optional<DataRefValue> ReadDataRef(const std::string& name);

// Writes an int, float or double from a number, an array from numbers, data from a text, from the start; or
// an array from this element on. The result is empty, or says why nothing was written.
std::string WriteDataRef(const std::string& name, const DataRefValue& value, int firstElement = 0);

// The types that a dataref offers, as in "int, float".
std::string TypeNames(int types);

std::string ToText(const DataRefValue& value);

}  // namespace sim
