#include "host/datarefs/DataRefRow.h"

#include <utility>

namespace sim {
namespace {

DataRefRow Number(VYRADataTypeID type, std::string name, std::string unit, std::string description,
                  double (*get)(), void (*set)(double), Limits limits) {
  DataRefRow row;
  row.name = std::move(name);
  row.type = type;
  row.unit = std::move(unit);
  row.description = std::move(description);
  row.get = get;
  row.set = set;
  row.smallest = limits.smallest;
  row.largest = limits.largest;
  return row;
}

DataRefRow Array(VYRADataTypeID type, std::string name, std::string unit, std::string description, int count,
                 double (*getAt)(int), void (*setAt)(int, double)) {
  DataRefRow row =
      Number(type, std::move(name), std::move(unit), std::move(description), nullptr, nullptr, {});
  row.count = count;
  row.getAt = getAt;
  row.setAt = setAt;
  return row;
}

}  // namespace

DataRefRow Int(std::string name, std::string unit, std::string description, double (*get)(),
               void (*set)(double), Limits limits) {
  return Number(VYRA_TYPE_INT, std::move(name), std::move(unit), std::move(description), get, set, limits);
}

DataRefRow Float(std::string name, std::string unit, std::string description, double (*get)(),
                 void (*set)(double), Limits limits) {
  return Number(VYRA_TYPE_FLOAT, std::move(name), std::move(unit), std::move(description), get, set, limits);
}

DataRefRow Double(std::string name, std::string unit, std::string description, double (*get)(),
                  void (*set)(double), Limits limits) {
  return Number(VYRA_TYPE_DOUBLE, std::move(name), std::move(unit), std::move(description), get, set, limits);
}

DataRefRow Switch(std::string name, std::string description, double (*get)(), void (*set)(double)) {
  return Number(VYRA_TYPE_INT, std::move(name), "0 or 1", std::move(description), get, set, {});
}

DataRefRow FloatArray(std::string name, std::string unit, std::string description, int count,
                      double (*getAt)(int), void (*setAt)(int, double)) {
  return Array(VYRA_TYPE_FLOAT_ARRAY, std::move(name), std::move(unit), std::move(description), count, getAt,
               setAt);
}

DataRefRow IntArray(std::string name, std::string unit, std::string description, int count,
                    double (*getAt)(int)) {
  return Array(VYRA_TYPE_INT_ARRAY, std::move(name), std::move(unit), std::move(description), count, getAt,
               nullptr);
}

DataRefRow Text(std::string name, std::string description, std::string_view (*getText)()) {
  DataRefRow row = Number(VYRA_TYPE_DATA, std::move(name), "", std::move(description), nullptr, nullptr, {});
  row.getText = getText;
  return row;
}

}  // namespace sim
