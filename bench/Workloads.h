#pragma once

#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

namespace quorvex::bench {

// splitmix64 (Steele, Lea, Flood 2014): the same numbers on every machine.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  double Uniform() {
    std::uint64_t z = (state_ += 0x9E3779B97F4A7C15);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
    return static_cast<double>((z ^ (z >> 31)) >> 11) * 0x1p-53;
  }
  // The sum of 12 uniforms less its mean: near enough to a normal deviate.
  double Normal() {
    double sum = 0;
    for (int k = 0; k < 12; ++k) sum += Uniform();
    return sum - 6;
  }

 private:
  std::uint64_t state_;
};

// A fit: the model, where its coefficients start (in the order of their names), and points made from its truth, x
// evenly spread and normal noise on y.
struct FitCase {
  std::string Model;
  std::vector<double> Start;
  double From, To, Sigma;
  std::uint64_t Seed;
  double (*Truth)(double x);
};

inline const FitCase kTwoExponentials = {
    "a*exp(-b*x)+c*exp(-d*x)+e", {6, 1, 4, 0.1, 0.5}, 0, 20, 0.16, 101, [](double x) {
      return 10 * std::exp(-1.5 * x) + 5 * std::exp(-0.2 * x) + 1;
    }};

inline const FitCase kTwoPeaks = {"a*exp(-b*x)+c*exp(-(x-d)^2/e^2)+f*exp(-(x-g)^2/h^2)",
                                  {90, 0.008, 90, 70, 25, 60, 178, 20},
                                  1,
                                  250,
                                  2,
                                  202,
                                  [](double x) {
                                    const double u = (x - 75) / 20, v = (x - 170) / 16;
                                    return 100 * std::exp(-0.01 * x) + 100 * std::exp(-u * u) + 70 * std::exp(-v * v);
                                  }};

struct Points {
  std::vector<double> X, Y;
};

inline Points MakePoints(const FitCase& fit, std::size_t count) {
  Points points;
  Random random(fit.Seed);
  for (std::size_t i = 0; i < count; ++i) {
    const double x = fit.From + (fit.To - fit.From) * (static_cast<double>(i) / static_cast<double>(count - 1));
    points.X.push_back(x);
    points.Y.push_back(fit.Truth(x) + fit.Sigma * random.Normal());
  }
  return points;
}

// 17 digits, so that the file holds the very numbers.
inline void AppendNumber(std::string& text, double value, char separator) {
  char buffer[40];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 17).ptr;
  text.append(buffer, end) += separator;
}

// A data file of three columns of mixed magnitude and sign; a row has some 60 bytes.
inline void WriteThreeColumns(std::size_t rows, std::ostream& file) {
  Random random(505);
  std::string row;
  for (std::size_t i = 0; i < rows; ++i) {
    row.clear();
    AppendNumber(row, static_cast<double>(i) * 0.001, '\t');
    AppendNumber(row, random.Normal() * 1000, '\t');
    AppendNumber(row, random.Uniform() * 1e-6, '\n');
    file << row;
  }
}

}  // namespace quorvex::bench
