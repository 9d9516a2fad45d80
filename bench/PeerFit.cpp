// peer_fit WORKLOAD DATAFILE REPETITIONS START VARIANT [SUMS CATALOGUE]: one workload of the comparison with other
// programs, fitted in memory through the core's own interface, the file read by the program's reader. The arguments are
// those that every program of the comparison takes:
//   WORKLOAD   w1, w6: two exponentials; w2: three peaks; w4: all models of CATALOGUE in turn; w5: reading alone
//   START      start values, separated by commas; not for w4 and w5
//   VARIANT    central, richardson, exact; built-in (w4): models of the program's own catalogue where it has them; and
//              behind a colon the number of threads, 1 where there is none, 0 for all
//   SUMS       file that receives the number and the residual sum of squares of each model of w4
//   CATALOGUE  lines of number, kind, count of coefficients, formula and start values, separated by tabs
// Prints RESULT, median and least time of a fit in seconds, iterations, evaluations (-1: not counted), residual sum of
// squares (w4: the least) and seconds of reading, separated by tabs.

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Workloads.h"
#include "core/DerivativeKind.h"
#include "core/Files.h"
#include "engine/EqClass.h"
#include "equation/Catalogue.h"
#include "sheet/ComputeWeights.h"
#include "sheet/LoadGridData.h"
#include "sheet/ParseDelimitedLines.h"

namespace quorvex {
namespace {

double Seconds() { return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count(); }

std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts(1);
  for (const char c : text)
    if (c == separator)
      parts.emplace_back();
    else
      parts.back() += c;
  return parts;
}

std::vector<double> Numbers(const std::string& list) {
  std::vector<double> numbers;
  for (const std::string& part : Split(list, ',')) {
    double value = 0;
    std::from_chars(part.data(), part.data() + part.size(), value);
    numbers.push_back(value);
  }
  return numbers;
}

SolveData Read(const std::string& name, bool weighted) {
  WholeFile file;
  if (file.Read(name) != 0) return {};
  DelimitedLines lines = ParseDelimitedLines(file.Text(), DelimitedFormat());
  auto loaded = LoadGridData(std::move(lines.Cells), {.IndependentVariables = 1, .Weighted = weighted});
  if (!loaded) return {};
  SolveData data = std::move(loaded->Points);
  data.sig = ComputeWeights(data.SD);
  return data;
}

void Replace(std::string& text, std::string_view from, std::string_view to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
    text.replace(at, from.size(), to);
}

// A formula of the list as the program spells it.
std::string OwnSpelling(std::string formula) {
  Replace(formula, "sqrt(", "sqr(");
  Replace(formula, "atan(", "arctan(");
  Replace(formula, "tanh(", "htan(");
  Replace(formula, "cosh(", "hcos(");
  return formula;
}

const CatalogueModel* BuiltIn(std::string formula, const std::string& kind, std::size_t coefficients) {
  Replace(formula, "*1/", "/");
  for (const CatalogueModel& model : Catalogue(1)) {
    const bool polynomial =
        model.Group == "Polynomial" && static_cast<std::size_t>(model.NumCoefficients) == coefficients;
    if (kind == "poly" ? polynomial : model.Definition == formula) return &model;
  }
  return nullptr;
}

struct Task {
  std::unique_ptr<EqClass> Model;
  std::vector<double> Start;
  int Number;
};

Task MakeTask(const std::string& formula, std::vector<double> start, const CatalogueModel* builtIn, int number) {
  auto model = std::make_unique<EqClass>(LocaleText());
  if (builtIn != nullptr)
    model->SetBuiltIn(*builtIn);
  else
    model->SetID(formula, {formula});
  model->SolveType = 0;  // nonlinear also where the program would solve a linear system
  return {std::move(model), std::move(start), number};
}

std::vector<Task> Tasks(const std::vector<std::string>& arguments, bool builtIns) {
  std::vector<Task> tasks;
  const std::string& workload = arguments[1];
  if (workload != "w4") {
    const std::string& formula = (workload == "w2" ? bench::kTwoPeaks : bench::kTwoExponentials).Model;
    tasks.push_back(MakeTask(formula, Numbers(arguments[4]), nullptr, 1));
    return tasks;
  }
  std::ifstream list(arguments.at(7));
  for (std::string line; std::getline(list, line);) {
    const std::vector<std::string> parts = Split(line, '\t');
    std::vector<double> start = Numbers(parts.at(4));
    const std::string formula = OwnSpelling(parts[3]);
    const CatalogueModel* builtIn = builtIns ? BuiltIn(formula, parts[1], start.size()) : nullptr;
    tasks.push_back(MakeTask(formula, std::move(start), builtIn, static_cast<int>(tasks.size()) + 1));
  }
  return tasks;
}

struct Outcome {
  long Iterations = 0;
  std::vector<double> Sums;
};

Outcome FitAll(const std::vector<Task>& tasks, const SolveData& data, const Settings& settings) {
  Outcome outcome;
  SolveForm form;
  for (const Task& task : tasks) {
    ModelClass& model = *task.Model;
    for (std::size_t i = 0; i < task.Start.size(); ++i) model.SetValue(static_cast<int>(i) + 1, task.Start[i]);
    model.SetICRange(std::vector<ICRange>(task.Start.size()));
    model.SpecifyICComplete = true;
    std::string log;
    const bool solved = model.Fit(data, settings, log, form);
    outcome.Iterations += model.NumIterations;
    outcome.Sums.push_back(solved ? model.RSS : std::numeric_limits<double>::infinity());
  }
  return outcome;
}

int Run(const std::vector<std::string>& arguments) {
  if (arguments.size() < 6) return std::fputs("Usage: see the head of PeerFit.cpp\n", stderr), EXIT_FAILURE;
  const std::string& workload = arguments[1];
  const std::string& variant = arguments[5];
  const bool readingAlone = workload == "w5";
  const int repetitions = std::max(1, std::atoi(arguments[3].c_str()));
  double start = Seconds();
  SolveData data = Read(arguments[2], readingAlone);
  std::vector<double> times;
  double readTime = Seconds() - start;
  double sum = 0;
  Outcome outcome;
  if (data.N() == 0) return std::fputs("no data\n", stderr), EXIT_FAILURE;
  if (readingAlone) {
    times.push_back(readTime);
    while (static_cast<int>(times.size()) < repetitions) {
      data = SolveData();
      start = Seconds();
      data = Read(arguments[2], true);
      times.push_back(Seconds() - start);
    }
    sum = data.SD.back();
    outcome.Iterations = 1;
  } else {
    Settings settings;
    const std::size_t number = variant.find(':');
    settings.Threads = number == std::string::npos ? 1 : std::atoi(variant.c_str() + number + 1);
    const std::string method = variant.substr(0, number);
    settings.DerivativeMethod = method == "richardson" ? DerivativeKind::Richardson
                                : method == "exact"    ? DerivativeKind::Exact
                                                       : DerivativeKind::Central;
    const std::vector<Task> tasks = Tasks(arguments, method == "built-in");
    for (int i = 0; i < repetitions; ++i) {
      start = Seconds();
      outcome = FitAll(tasks, data, settings);
      times.push_back(Seconds() - start);
    }
    sum = *std::min_element(outcome.Sums.begin(), outcome.Sums.end());
  }
  if (arguments.size() > 6 && workload == "w4") {
    std::ofstream sums(arguments[6]);
    std::string text;
    for (std::size_t i = 0; i < outcome.Sums.size(); ++i) {
      text = std::to_string(i + 1) + '\t';
      bench::AppendNumber(text, outcome.Sums[i], '\n');
      sums << text;
    }
  }
  std::sort(times.begin(), times.end());
  std::string line = "RESULT\t";
  for (const double time : {times[times.size() / 2], times.front()}) bench::AppendNumber(line, time, '\t');
  line += std::to_string(outcome.Iterations) + "\t-1\t";
  bench::AppendNumber(line, sum, '\t');
  bench::AppendNumber(line, readTime, '\n');
  std::fputs(line.c_str(), stdout);
  return EXIT_SUCCESS;
}

}  // namespace
}  // namespace quorvex

int main(int argc, char** argv) { return quorvex::Run(std::vector<std::string>(argv, argv + argc)); }
