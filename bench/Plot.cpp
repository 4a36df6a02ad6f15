// The plot of cost against size. gnuplot draws it; this writes what it is told.
#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <stdexcept>

#include "Report.h"
#include "measures/Measures.h"

namespace bench {

namespace {

using Curve = std::vector<const Result*>;
using Curves = std::map<std::string, Curve>;  // by contender

struct Panel {
  std::string measure;
  Curves curves;
};

// The measures that were taken at more than one size, in the order in which they ran.
std::vector<Panel> GrowingMeasures(const Session& session) {
  std::vector<Panel> panels;
  for (const Result& result : session.Results()) {
    const auto same = [&](const Panel& panel) { return panel.measure == result.measure; };
    auto panel = std::find_if(panels.begin(), panels.end(), same);
    if (panel == panels.end()) panel = panels.insert(panels.end(), {result.measure, {}});
    panel->curves[result.contender].push_back(&result);
  }
  std::erase_if(panels, [](const Panel& panel) { return panel.curves.begin()->second.size() < 2; });
  return panels;
}

// One colour per contender, the same in every panel.
std::string LineStyle(const std::string& contender) {
  static const std::map<std::string, std::string> colors = {
      {kLibrary, "#0b5fa5"}, {kBareCall, "#777777"}, {kBareTable, "#777777"}, {kBareModules, "#777777"},
      {kSimGear, "#c05a00"}, {kSigc, "#2a8a3e"},     {kGModule, "#c05a00"},   {kBoostSignals, "#8a2a8a"},
  };
  const auto found = colors.find(contender);
  const bool isLibrary = contender == kLibrary;
  return fmt::format("lc rgb '{}' lw {} pt 7 ps {}", found != colors.end() ? found->second : "#000000",
                     isLibrary ? 3 : 1.5, isLibrary ? 0.6 : 0.4);
}

std::string PanelScript(const Panel& panel) {
  std::string plot;
  std::string data;
  for (const auto& [contender, curve] : panel.curves) {
    plot += fmt::format("{} '-' using 1:2 with linespoints {} title '{}'", plot.empty() ? "plot" : ",",
                        LineStyle(contender), contender);
    for (const Result* result : curve) data += fmt::format("{} {}\n", result->size, result->Median());
    data += "e\n";
  }
  return fmt::format("set title '{}' font ',13'\n{}\n{}", panel.measure, plot, data);
}

std::string Script(const std::string& path, const std::vector<Panel>& panels) {
  constexpr std::size_t kColumns = 3;
  const std::size_t rows = (panels.size() + kColumns - 1) / kColumns;
  std::string script = fmt::format(
      "set terminal svg size {},{} font 'sans-serif,11' background rgb 'white'\n"
      "set output '{}'\n"
      "set multiplot layout {},{}\n"
      "set logscale xy\nset grid lc rgb '#dddddd'\nset key above left horizontal reverse Left samplen 1.5\n"
      "set format x '10^{{%T}}'\nset xlabel 'size'\nset ylabel 'nanoseconds'\nset yrange [*<1:*]\n",
      kColumns * 380, rows * 300, path, rows, kColumns);
  for (const Panel& panel : panels) script += PanelScript(panel);
  return script + "unset multiplot\nset output\n";
}

}  // namespace

void WritePlot(const std::string& path, const Session& session) {
  const std::vector<Panel> panels = GrowingMeasures(session);
  if (panels.empty()) throw std::runtime_error("no measure ran at more than one size, so there is no plot");
  std::FILE* gnuplot = popen("gnuplot", "w");
  if (gnuplot == nullptr) throw std::runtime_error("cannot run gnuplot");
  std::fputs(Script(path, panels).c_str(), gnuplot);
  if (pclose(gnuplot) != 0) {
    throw std::runtime_error("gnuplot did not write " + path + " (On Debian: apt-get install gnuplot-nox)");
  }
}

}  // namespace bench
