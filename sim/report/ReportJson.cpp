#include "report/ReportJson.h"

#include <cerrno>
#include <cstring>
#include <fstream>

#include "InputError.h"

namespace sim {

// The cost of all calls stands beside that of the kinds, not in an object of its own.
void to_json(nlohmann::json& object, const PluginCost& cost) {
  object = cost.total;
  object["kinds"] = cost.kinds;
}

void from_json(const nlohmann::json& object, PluginCost& cost) {
  object.get_to(cost.total);
  object.at("kinds").get_to(cost.kinds);
}

void to_json(nlohmann::json& object, const PluginReport& plugin) {
  object = {{"id", plugin.id},     {"signature", plugin.signature}, {"name", plugin.name},
            {"path", plugin.path}, {"state", plugin.state},         {"loadMs", plugin.loadMs}};
  if (plugin.cost) object["cost"] = *plugin.cost;
}

void from_json(const nlohmann::json& object, PluginReport& plugin) {
  object.at("id").get_to(plugin.id);
  object.at("signature").get_to(plugin.signature);
  object.at("name").get_to(plugin.name);
  object.at("path").get_to(plugin.path);
  object.at("state").get_to(plugin.state);
  object.at("loadMs").get_to(plugin.loadMs);
  plugin.cost.reset();
  if (object.contains("cost")) plugin.cost = object.at("cost").get<PluginCost>();
}

std::string ToText(const nlohmann::json& value, int indent) {
  return value.dump(indent, ' ', false, nlohmann::json::error_handler_t::replace);
}

nlohmann::json ToJson(const Report& report) {
  nlohmann::json object = {{"result", report.result},
                           {"exitCode", report.exitCode},
                           {"plugins", report.plugins},
                           {"loadFailures", report.loadFailures},
                           {"expectations", report.expectations},
                           {"failedSteps", report.failedSteps},
                           {"failures", WhyNotPassed(report)}};
  if (report.culprit) object["culprit"] = *report.culprit;
  if (report.frames) object["frames"] = *report.frames;
  if (report.totals) object["totals"] = *report.totals;
  return object;
}

void WriteReport(const Report& report, const std::string& fileName) {
  std::ofstream file(fileName);
  file << ToText(ToJson(report), 2) << '\n';
  file.close();
  if (!file) throw InputError("cannot write the report " + fileName + ": " + std::strerror(errno));
}

}  // namespace sim
