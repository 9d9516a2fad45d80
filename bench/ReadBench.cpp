// Reading a million rows of three columns, 17 digits each, from a mapped file (59 MB): a bare std::from_chars loop,
// which is the least that must be done, and the reader's whole way to X, Y, SD and weights. Run one case alone
// (--benchmark_filter) to see its peak memory in the counter.

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <charconv>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <utility>

#include "core/Files.h"
#include "sheet/ComputeWeights.h"
#include "sheet/LoadGridData.h"
#include "sheet/ParseDelimitedLines.h"

namespace quorvex {
namespace {

constexpr int kRows = 1'000'000;

// splitmix64 (Steele, Lea, Flood 2014): the same numbers on every machine.
class Uniform {
 public:
  double operator()() {
    std::uint64_t z = (state_ += 0x9E3779B97F4A7C15);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
    return static_cast<double>((z ^ (z >> 31)) >> 11) * 0x1p-53;
  }

 private:
  std::uint64_t state_ = 505;
};

// The file, written once per process and removed at its end.
class DataFile {
 public:
  DataFile() {
    std::ofstream file(Name(), std::ios::binary);
    Uniform uniform;
    std::string row;
    for (int i = 0; i < kRows; ++i) {
      double sum = -6;  // of 12 uniforms: near enough to a normal deviate
      for (int k = 0; k < 12; ++k) sum += uniform();
      row.clear();
      Append(row, i * 0.001, '\t');
      Append(row, sum * 1000, '\t');
      Append(row, uniform() * 1e-6, '\n');
      file << row;
    }
  }
  ~DataFile() { std::filesystem::remove(Name()); }

  const std::string& Name() const { return name_; }

 private:
  static void Append(std::string& row, double value, char separator) {
    char buffer[40];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 17).ptr;
    row.append(buffer, end) += separator;
  }

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
    MappedFile file;
    if (file.Open(name) != 0) return state.SkipWithError("cannot open the file");
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
  std::size_t bytes = 0;
  for ([[maybe_unused]] auto pass : state) {
    MappedFile file;
    if (file.Open(name) != 0) return state.SkipWithError("cannot open the file");
    bytes = file.Text().size();
    DelimitedLines lines = ParseDelimitedLines(file.Text(), DelimitedFormat());
    auto loaded = LoadGridData(std::move(lines.Cells), {.IndependentVariables = 1, .Weighted = true});
    if (!loaded || loaded->Points.N() != kRows) return state.SkipWithError("wrong number of points");
    loaded->Points.sig = ComputeWeights(loaded->Points.SD);
    benchmark::DoNotOptimize(loaded->Points.sig.data());
  }
  Report(state, bytes);
}
BENCHMARK(ReadToArrays)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quorvex
