#include "report/EndText.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <iterator>

#include "report/Moment.h"

namespace sim {
namespace {

std::string UpperCase(std::string text) {
  std::ranges::transform(text, text.begin(), [](unsigned char letter) { return std::toupper(letter); });
  return text;
}

std::string Who(const Culprit& culprit) {
  std::string who = culprit.name;
  if (!culprit.signature.empty()) who += fmt::format(" ({})", culprit.signature);
  if (!culprit.call.empty()) who += ", " + culprit.call;
  return who;
}

}  // namespace

std::string DescribeEnd(Result result, const Culprit& culprit) {
  std::string text = UpperCase(Name(result)) + "  ";
  if (!culprit.path.empty()) text += Who(culprit) + ": ";
  text += culprit.message;
  const auto addLine = [&text](const auto& head, const std::string& rest) {
    if (!rest.empty()) fmt::format_to(std::back_inserter(text), "\n{:>16}  {}", head, rest);
  };
  addLine("module", culprit.path);
  addLine("called from", culprit.hook);
  for (std::size_t i = 0; i < culprit.backtrace.size(); ++i) addLine(i, culprit.backtrace[i]);
  return text;
}

std::string MomentOf(const Culprit& culprit) {
  return culprit.frame > 0 ? MomentName(culprit.frame) : "start";
}

}  // namespace sim
