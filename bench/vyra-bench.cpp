// vyra-bench: what the library costs, beside what a user would pick instead and the bare machine.
//
// It stands where a simulator stands: it starts libVYRA.so.2 with a service table of its own, hosts plugins
// and calls the exported functions, from inside those plugins where a plugin would call them.
#include <fmt/core.h>
#include <CLI/CLI.hpp>
#include <cstdio>
#include <functional>
#include <regex>

#include "Report.h"
#include "Session.h"
#include "Targets.h"
#include "measures/Measures.h"

namespace {

using bench::Session;

struct CommandLine {
  bool quick = false;
  bool growth = false;
  int repetitions = 51;
  std::size_t largest = 100'000;
  std::string only;
  std::string table;
  std::string json;
  std::string plot;
};

// A measure that grows is taken at every size, another once.
struct Measure {
  const char* name;
  std::function<void(Session&, std::size_t)> run;
  std::vector<std::size_t> sizes;
};

const std::vector<std::size_t> kGrowth = {10, 100, 1'000, 10'000, 100'000};

Measure Once(const char* name, void (*run)(Session&)) {
  return {name, [run](Session& session, std::size_t) { run(session); }, {0}};
}

// In the order that Measures.h asks for.
std::vector<Measure> AllMeasures() {
  return {{"find", bench::MeasureFind, kGrowth},
          {"check", bench::MeasureCheck, kGrowth},
          Once("access", bench::MeasureReadsAndWrites),
          {"due", bench::MeasureDueFlightLoops, kGrowth},
          {"idle", bench::MeasureIdleFlightLoops, kGrowth},
          {"watched", bench::MeasureWatchedFlightLoops, {100}},
          {"draw", bench::MeasureDrawCallbacks, kGrowth},
          {"keys", bench::MeasureKeySniffers, kGrowth},
          {"windows", bench::MeasureWindows, kGrowth},
          {"commands", bench::MeasureCommandPhase, kGrowth},
          {"shared", bench::MeasureSharedDataWrite, kGrowth},
          {"frame", bench::MeasureFrame, {10, 100}},
          Once("cycle", bench::MeasureModuleCycle),
          {"start-up", bench::MeasureStartUp, {10, 100, 500}},
          Once("dataref-memory", bench::MeasureDataRefMemory),
          Once("plugin-memory", bench::MeasurePluginMemory)};
}

// What growth is shown at; those above the largest size asked for are left out.
std::vector<std::size_t> SizesOfGrowth(const Session& session) {
  std::vector<std::size_t> sizes = {10, 1'000, 100'000};
  std::erase_if(sizes, [&](std::size_t size) { return size > session.Options().largest; });
  return sizes;
}

// In a run of its own: the names of datarefs that other measures leave behind would count in it.
void RunGrowth(Session& session, const CommandLine& line) {
  const std::vector<std::size_t> sizes = SizesOfGrowth(session);
  for (const std::size_t size : sizes) bench::MeasureGrowth(session, size, std::regex(line.only));
  const bench::Machine machine = bench::DescribeMachine();
  const std::string table = bench::MakeGrowthTable(machine, session, sizes);
  fmt::print("\n{}", table);
  if (!line.table.empty()) bench::WriteText(line.table, table);
  if (!line.json.empty()) bench::WriteJson(line.json, machine, session, {});
  if (!line.plot.empty()) bench::WritePlot(line.plot, session);
}

void Run(Session& session, const CommandLine& line) {
  const std::regex wanted(line.only);
  for (const Measure& measure : AllMeasures()) {
    if (!std::regex_search(measure.name, wanted)) continue;
    fmt::print("{}\n", measure.name);
    for (const std::size_t size : measure.sizes) {
      if (size <= session.Options().largest) measure.run(session, size);
    }
  }
}

void Report(const Session& session, const CommandLine& line) {
  const bench::Machine machine = bench::DescribeMachine();
  const std::vector<bench::Verdict> verdicts =
      bench::Judge(session, line.only.empty() ? bench::Extent::everyMeasure : bench::Extent::someMeasures);
  const std::string table = bench::MakeTable(machine, verdicts);
  fmt::print("\n{}", table);
  if (!line.table.empty()) bench::WriteText(line.table, table);
  if (!line.json.empty()) bench::WriteJson(line.json, machine, session, verdicts);
  if (!line.plot.empty()) bench::WritePlot(line.plot, session);
}

int RunCommandLine(int argc, char** argv) {
  CommandLine line;
  CLI::App app("vyra-bench: what the library costs, beside its peers and the bare machine.", "vyra-bench");
  app.add_flag("--quick", line.quick, "Run everything once and briefly, up to size 100: shows that it runs.");
  app.add_flag("--growth", line.growth,
               "Measure instead what one thing of each kind costs to make, look up and take back among 10, "
               "1,000 and 100,000");
  app.add_option("--repetitions", line.repetitions, "How often everything is measured")
      ->check(CLI::Range(1, 1000))
      ->capture_default_str();
  app.add_option("--largest", line.largest, "Leave out sizes above this")->capture_default_str();
  app.add_option("--only", line.only, "Run the measures whose name matches this regular expression");
  app.add_option("--table", line.table, "Write the table of ratios to this file, in Markdown");
  app.add_option("--json", line.json, "Write every result to this file");
  app.add_option("--plot", line.plot, "Draw cost against size into this file, an SVG (needs gnuplot)");
  CLI11_PARSE(app, argc, argv);

  Session session(line.quick ? bench::SessionOptions{1, 0.001, 100}
                             : bench::SessionOptions{line.repetitions, 0.005, line.largest});
  if (line.growth) {
    RunGrowth(session, line);
    return 0;
  }
  Run(session, line);
  Report(session, line);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return RunCommandLine(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "vyra-bench: %s\n", error.what());
    return 1;
  }
}
