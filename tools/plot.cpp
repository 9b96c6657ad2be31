#include "tools/plot.hpp"

#include <fmt/core.h>
#include <stdio.h>

#include <csignal>
#include <cstdlib>

#include "tools/printable.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {
namespace {

/// A text in single quotes of gnuplot, in which a quote is written twice.
std::string Quoted(std::string const& text) {
  std::string quoted = "'";
  for (char const character : text) {
    quoted += character;
    if (character == '\'') quoted += '\'';
  }
  return quoted + "'";
}

std::string ScriptOf(std::string const& file, std::vector<PlotSeries> const& series) {
  std::string script =
      "set terminal svg size 560,520 dynamic font 'sans-serif,13' background 'white'\n";
  script += fmt::format("set output {}\n", Quoted(file));
  script +=
      "set encoding utf8\nset termoption noenhanced\n"
      "set xlabel 'true share of the keys, %'\n"
      "set ylabel 'estimated share, %'\n"
      "set xrange [0:100]\nset yrange [0:100]\nset size square\nset grid\n"
      "set key outside bottom center horizontal\n";
  for (std::size_t index = 0; index < series.size(); ++index) {
    script += fmt::format("$points{} << END\n", index);
    for (auto const& [truth, estimate] : series[index].points) {
      script += fmt::format("{:.3f} {:.3f}\n", truth, estimate);
    }
    script += "END\n";
  }
  script += "plot x notitle with lines linecolor 'gray'";
  for (std::size_t index = 0; index < series.size(); ++index) {
    script += fmt::format(", $points{} title {} with points pointtype {} pointsize 0.5", index,
                          Quoted(series[index].name), index + 1);
  }
  return script + "\n";
}

/// As long as it lives, a pipe that nobody reads is a failed write and not the end of the process.
class BrokenPipesFail {
 public:
  BrokenPipesFail() : before(std::signal(SIGPIPE, SIG_IGN)) {}
  ~BrokenPipesFail() { std::signal(SIGPIPE, before); }
  BrokenPipesFail(BrokenPipesFail const&) = delete;
  BrokenPipesFail& operator=(BrokenPipesFail const&) = delete;

 private:
  void (*before)(int);
};

}  // namespace

void RequirePlotter(std::string const& file) {
  if (file.find_first_of("\n\r") != std::string::npos) {
    throw Trouble(fmt::format("{}: no name for a plot", PrintableName(file)));
  }
  if (std::system("command -v gnuplot >/dev/null 2>&1") != 0) {
    throw Trouble("a plot is drawn by gnuplot, which is not installed (Debian: gnuplot-nox)");
  }
}

void DrawEstimates(std::string const& file, std::vector<PlotSeries> const& series) {
  RequirePlotter(file);
  std::string const script = ScriptOf(file, series);
  BrokenPipesFail const guard;
  FILE* const pipe = popen("gnuplot - >/dev/null 2>&1", "w");
  bool isDrawn = pipe != nullptr;
  if (isDrawn) {
    isDrawn = std::fwrite(script.data(), 1, script.size(), pipe) == script.size();
    isDrawn = pclose(pipe) == 0 && isDrawn;
  }
  if (!isDrawn) throw Trouble(fmt::format("gnuplot could not draw {}", PrintableName(file)));
}

}  // namespace xo::tool
