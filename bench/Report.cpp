#include "Report.h"

#include <fmt/format.h>
#include <sys/utsname.h>

#include <array>
#include <ctime>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>
#include <thread>

namespace bench {

namespace {

std::string ProcessorName() {
  std::ifstream info("/proc/cpuinfo");
  for (std::string line; std::getline(info, line);) {
    if (line.starts_with("model name")) return line.substr(line.find(':') + 2);
  }
  return "unknown";
}

std::string SystemName() {
  struct utsname name = {};
  uname(&name);
  std::ifstream release("/etc/os-release");
  for (std::string line; std::getline(release, line);) {
    if (!line.starts_with("PRETTY_NAME=")) continue;
    return fmt::format("{}, {} {}", line.substr(13, line.size() - 14), name.sysname, name.release);
  }
  return fmt::format("{} {}", name.sysname, name.release);
}

std::string Today() {
  const std::time_t now = std::time(nullptr);
  std::array<char, 16> text{};
  std::strftime(text.data(), text.size(), "%Y-%m-%d", std::gmtime(&now));
  return text.data();
}

// Times below a microsecond in nanoseconds, and so on up.
std::string Amount(double value, const std::string& unit) {
  if (unit != "ns") return fmt::format("{:.0f} {}", value, unit);
  if (value < 1e3) return fmt::format("{:.2f} ns", value);
  return value < 1e6 ? fmt::format("{:.1f} us", value / 1e3) : fmt::format("{:.1f} ms", value / 1e6);
}

std::string Grouped(std::size_t number) {
  std::string digits = fmt::format("{}", number);
  for (std::size_t place = digits.size(); place > 3; place -= 3) digits.insert(place - 3, 1, ',');
  return digits;
}

std::string Yardstick(const Target& target) {
  if (target.against.empty()) return "bound";
  return target.otherSize != 0 ? fmt::format("the same among {}", target.otherSize) : target.against;
}

// What the ratio may be at most.
double Bound(const Target& target) { return target.against.empty() ? 1 : target.bound; }

// The bound of a row and whether it is reached, as two cells.
std::string Judgement(const Verdict& verdict) {
  if (verdict.target.bound == kNoBound) return "| |";
  return fmt::format("{:g} | {} |", Bound(verdict.target), verdict.reached ? "yes" : "**no**");
}

}  // namespace

Machine DescribeMachine() {
  return {{"date", Today()},
          {"processor", fmt::format("{}, {} cores", ProcessorName(), std::thread::hardware_concurrency())},
          {"system", SystemName()},
          {"compiler", BENCH_COMPILER},
          {"library", BENCH_LIBRARY}};
}

std::string MakeTable(const Machine& machine, const std::vector<Verdict>& verdicts) {
  std::string table;
  for (const auto& [name, text] : machine) table += fmt::format("- {}: {}\n", name, text);
  table += "\n| work | VYRA | held against | | ratio | at most | reached |\n|---|--:|---|--:|--:|--:|---|\n";
  for (const Verdict& verdict : verdicts) {
    table += fmt::format("| {} | {} | {} | {} | {:.2f} | {}\n", verdict.target.work,
                         Amount(verdict.cost, verdict.unit), Yardstick(verdict.target),
                         Amount(verdict.yardstick, verdict.unit), verdict.ratio, Judgement(verdict));
  }
  return table;
}

std::string MakeGrowthTable(const Machine& machine, const Session& session,
                            const std::vector<std::size_t>& sizes) {
  std::string table;
  for (const auto& [name, text] : machine) table += fmt::format("- {}: {}\n", name, text);
  table += "\n| kind | |";
  for (const std::size_t size : sizes) table += fmt::format(" of {} |", Grouped(size));
  for (std::size_t i = 1; i < sizes.size(); ++i) {
    table += fmt::format(" {} : {} |", Grouped(sizes[i]), Grouped(sizes[i - 1]));
  }
  table += "\n|---|---|";
  for (std::size_t i = 1; i < 2 * sizes.size(); ++i) table += "--:|";
  table += "\n";
  std::set<std::pair<std::string, std::string>> shown;
  for (const Result& result : session.Results()) {
    if (!shown.emplace(result.measure, result.contender).second) continue;
    std::vector<const Result*> found;
    found.reserve(sizes.size());
    for (const std::size_t size : sizes)
      found.push_back(session.Find(result.measure, size, result.contender));
    table += fmt::format("| {} | {} |", result.measure, result.contender);
    for (const Result* one : found)
      table += one != nullptr ? fmt::format(" {:.0f} ns |", one->Median()) : " |";
    for (std::size_t i = 1; i < found.size(); ++i) {
      const bool both = found[i] != nullptr && found[i - 1] != nullptr;
      table += both ? fmt::format(" {:.2f} |", found[i]->Median() / found[i - 1]->Median()) : " |";
    }
    table += "\n";
  }
  return table;
}

void WriteText(const std::string& path, const std::string& text) {
  std::ofstream file(path);
  file << text;
  file.close();
  if (!file) throw std::runtime_error("cannot write " + path);
}

void WriteJson(const std::string& path, const Machine& machine, const Session& session,
               const std::vector<Verdict>& verdicts) {
  nlohmann::ordered_json document;
  for (const auto& [name, text] : machine) document["machine"][name] = text;
  document["results"] = nlohmann::json::array();
  for (const Result& result : session.Results()) {
    document["results"].push_back({{"measure", result.measure},
                                   {"size", result.size},
                                   {"contender", result.contender},
                                   {"unit", result.unit},
                                   {"median", result.Median()},
                                   {"repetitions", result.values}});
  }
  document["table"] = nlohmann::json::array();
  for (const Verdict& verdict : verdicts) {
    nlohmann::ordered_json row = {{"work", verdict.target.work}, {"against", Yardstick(verdict.target)},
                                  {"cost", verdict.cost},        {"yardstick", verdict.yardstick},
                                  {"unit", verdict.unit},        {"ratio", verdict.ratio}};
    if (verdict.target.bound != kNoBound) {
      row["bound"] = Bound(verdict.target);
      row["reached"] = verdict.reached;
    }
    document["table"].push_back(row);
  }
  WriteText(path, document.dump(2) + "\n");
}

}  // namespace bench
