// Reading a million rows of three columns, 17 digits each, from a file of 59 MB: a bare std::from_chars loop,
// which is the least that must be done, and the reader's whole way to X, Y, SD and weights. Run one case alone
// (--benchmark_filter) to see its peak memory in the counter.

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <charconv>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <utility>

#include "Workloads.h"
#include "core/Files.h"
#include "sheet/ComputeWeights.h"
#include "sheet/LoadGridData.h"
#include "sheet/ParseDelimitedLines.h"

namespace quorvex {
namespace {

constexpr std::size_t kRows = 1'000'000;

// The file, written once per process and removed at its end.
class DataFile {
 public:
  DataFile() {
    std::ofstream file(Name(), std::ios::binary);
    bench::WriteThreeColumns(kRows, file);
  }
  ~DataFile() { std::filesystem::remove(Name()); }

  const std::string& Name() const { return name_; }

 private:
  std::string name_ =
      std::filesystem::temp_directory_path() / ("quorvex-bench-" + std::to_string(std::random_device()()));
};

const DataFile& Data() {
  static const DataFile data;
  return data;
}

void Report(benchmark::State& state, std::size_t bytes) {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  state.counters["peak_MB"] = static_cast<double>(usage.ru_maxrss) / 1000;
  state.counters["file_MB"] = static_cast<double>(bytes) / 1e6;
}

void BareFromChars(benchmark::State& state) {
  const std::string& name = Data().Name();
  std::size_t bytes = 0;
  for ([[maybe_unused]] auto pass : state) {
    WholeFile file;
    if (file.Read(name) != 0) return state.SkipWithError("cannot open the file");
    const std::string_view text = file.Text();
    bytes = text.size();
    double sum = 0;
    for (const char *at = text.data(), *end = at + text.size(); at < end; ++at) {
      double value = 0;
      at = std::from_chars(at, end, value).ptr;
      sum += value;
    }
    benchmark::DoNotOptimize(sum);
  }
  Report(state, bytes);
}
BENCHMARK(BareFromChars)->Unit(benchmark::kMillisecond);

void ReadToArrays(benchmark::State& state) {
  const std::string& name = Data().Name();
  for ([[maybe_unused]] auto pass : state) {
    FileLines file;
    DelimitedLines lines;
    if (file.Open(name) != 0 || ReadDelimitedLines(file, DelimitedFormat(), lines) != 0)
      return state.SkipWithError("cannot read the file");
    auto loaded = LoadGridData(std::move(lines.Cells), {.IndependentVariables = 1, .Weighted = true});
    if (!loaded || loaded->Points.N() != kRows) return state.SkipWithError("wrong number of points");
    loaded->Points.sig = ComputeWeights(loaded->Points.SD);
    benchmark::DoNotOptimize(loaded->Points.sig.data());
  }
  Report(state, std::filesystem::file_size(name));
}
BENCHMARK(ReadToArrays)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quorvex
