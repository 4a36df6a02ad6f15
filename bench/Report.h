// What a session is shown as: a table of ratios, a JSON file, a plot.
#pragma once

#include <string>
#include <vector>

#include "Session.h"
#include "Targets.h"

namespace bench {

// Where and with what a session ran, as names and texts: processor, system, compiler, date.
using Machine = std::vector<std::pair<std::string, std::string>>;
Machine DescribeMachine();

// The table, in Markdown.
std::string MakeTable(const Machine& machine, const std::vector<Verdict>& verdicts);

// What each thing of a kind costs at the sizes of `sizes`, and how much more at each than at the one before.
std::string MakeGrowthTable(const Machine& machine, const Session& session,
                            const std::vector<std::size_t>& sizes);

void WriteText(const std::string& path, const std::string& text);
void WriteJson(const std::string& path, const Machine& machine, const Session& session,
               const std::vector<Verdict>& verdicts);

// Cost against size of every measure that grows, as an SVG, drawn by gnuplot.
void WritePlot(const std::string& path, const Session& session);

}  // namespace bench
