#include "report/JUnit.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <pugixml.hpp>
#include <string_view>

#include "InputError.h"
#include "report/ReportJson.h"

namespace sim {
namespace {

// XML has no place for most control characters, nor for bytes that are not UTF-8.
std::string Clean(std::string_view text) {
  // As JSON has it, in which the latter are replaced.
  std::string clean = nlohmann::json::parse(ToText(std::string(text))).get<std::string>();
  std::ranges::replace_if(
      clean, [](unsigned char byte) { return byte < ' ' && byte != '\n' && byte != '\t'; }, '?');
  return clean;
}

class Suite {
 public:
  Suite() : suite(document.append_child("testsuites").append_child("testsuite")) {
    suite.append_attribute("name") = "vyra-sim";
  }

  pugi::xml_node AddCase(const char* group, const std::string& name) {
    ++tests;
    pugi::xml_node testCase = suite.append_child("testcase");
    testCase.append_attribute("classname") = group;
    testCase.append_attribute("name") = Clean(name).c_str();
    return testCase;
  }

  void Fail(pugi::xml_node testCase, const std::string& message, const std::string& text = "") {
    ++failures;
    pugi::xml_node failure = testCase.append_child("failure");
    failure.append_attribute("message") = Clean(message).c_str();
    if (!text.empty()) failure.text().set(Clean(text).c_str());
  }

  void Skip(pugi::xml_node testCase) {
    ++skipped;
    testCase.append_child("skipped");
  }

  bool Save(const std::string& fileName) {
    suite.append_attribute("tests") = tests;
    suite.append_attribute("failures") = failures;
    suite.append_attribute("errors") = 0;
    suite.append_attribute("skipped") = skipped;
    return document.save_file(fileName.c_str(), "  ");
  }

 private:
  pugi::xml_document document;
  pugi::xml_node suite;
  int tests = 0;
  int failures = 0;
  int skipped = 0;
};

void AddFlight(Suite& suite, const Report& report) {
  const pugi::xml_node testCase = suite.AddCase("flight", "flight");
  const std::vector<std::string> reasons = WhyNotPassed(report);
  if (reasons.empty()) return;
  std::vector<std::string> details = reasons;
  for (const FailedStep& step : report.failedSteps)
    details.push_back(fmt::format("frame {}, line {}: {}", step.frame, step.line, step.text));
  if (report.culprit)
    details.insert(details.end(), report.culprit->backtrace.begin(), report.culprit->backtrace.end());
  suite.Fail(testCase, fmt::format("{}", fmt::join(reasons, "; ")),
             fmt::format("{}", fmt::join(details, "\n")));
}

void AddModules(Suite& suite, const Report& report) {
  for (const PluginReport& plugin : report.plugins) {
    const pugi::xml_node testCase = suite.AddCase("module", plugin.path);
    if (plugin.state == "passed over") {
      suite.Skip(testCase);
    } else if (report.culprit && report.culprit->path == plugin.path) {
      suite.Fail(testCase, fmt::format("{}: {}", Name(report.result), report.culprit->message));
    }
  }
  for (std::size_t index = 0; index < report.loadFailures.size(); ++index) {
    const LoadFailure& failure = report.loadFailures[index];
    const pugi::xml_node testCase = suite.AddCase("module", failure.path);
    if (index >= report.expectedLoadFailures) suite.Fail(testCase, failure.reason);
  }
}

void AddExpectations(Suite& suite, const Report& report) {
  for (const ExpectationReport& expectation : report.expectations) {
    const pugi::xml_node testCase =
        suite.AddCase("expectation", fmt::format("line {}: {}", expectation.line, expectation.text));
    if (expectation.result == ExpectationResult::NotReached) suite.Fail(testCase, "not reached");
    if (expectation.result != ExpectationResult::Failed) continue;
    const std::string history =
        expectation.lastHeld > 0 ? fmt::format("; true last after frame {}", expectation.lastHeld) : "";
    suite.Fail(testCase, "found " + expectation.found + history);
  }
}

}  // namespace

void WriteJUnit(const Report& report, const std::string& fileName) {
  Suite suite;
  AddFlight(suite, report);
  AddModules(suite, report);
  AddExpectations(suite, report);
  if (!suite.Save(fileName)) throw InputError("cannot write " + fileName);
}

}  // namespace sim
