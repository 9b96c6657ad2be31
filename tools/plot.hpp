#pragma once

#include <string>
#include <utility>
#include <vector>

namespace xo::tool {

/// Points of one kind, in percent: the truth first, then the estimate.
struct PlotSeries {
  std::string name;
  std::vector<std::pair<double, double>> points;
};

/// Draws estimates against the truth into an SVG file, by gnuplot. That it is not there, or does
/// not succeed, is `Trouble`.
void DrawEstimates(std::string const& file, std::vector<PlotSeries> const& series);

/// `Trouble` if there is no gnuplot, or `file` has a name that it cannot be told.
void RequirePlotter(std::string const& file);

}  // namespace xo::tool
