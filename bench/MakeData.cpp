// make_data COUNT FILE: the points of the two exponentials as a data file, x and y.
// make_data COUNT FILE columns: three columns of numbers.
// make_data COUNT FILE WELLS: a plate of so many wells, a logistic curve over a dilution series each, with headings.

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "Workloads.h"

namespace {

using namespace quorvex::bench;

std::string TwoExponentials(std::size_t count) {
  const Points points = MakePoints(kTwoExponentials, count);
  std::string text;
  for (std::size_t i = 0; i < points.X.size(); ++i) {
    AppendNumber(text, points.X[i], '\t');
    AppendNumber(text, points.Y[i], '\n');
  }
  return text;
}

std::string Plate(std::size_t count, std::size_t wells) {
  struct Curve {
    double Bottom, Rise, Half, Slope;
  };
  Random random(384);
  std::string text = "dose";
  std::vector<Curve> curves;
  for (std::size_t w = 0; w < wells; ++w) {
    text += "\tW" + std::to_string(w + 1);
    Curve& curve = curves.emplace_back();
    curve.Bottom = 0.1 * random.Uniform();
    curve.Rise = 1 + random.Uniform();
    curve.Half = 0.3 + 3 * random.Uniform();
    curve.Slope = 0.8 + random.Uniform();
  }
  for (std::size_t i = 0; i < count; ++i) {
    const double x = std::pow(10.0, 4.0 * static_cast<double>(i) / static_cast<double>(count - 1) - 2);
    text += '\n';
    AppendNumber(text, x, '\t');
    for (const Curve& curve : curves)
      AppendNumber(
          text, curve.Bottom + curve.Rise / (1 + std::pow(curve.Half / x, curve.Slope)) + 0.02 * random.Normal(), '\t');
    text.pop_back();
  }
  return text + '\n';
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3 && argc != 4)
    return std::fputs("Usage: make_data COUNT FILE [columns | WELLS]\n", stderr), EXIT_FAILURE;
  const std::size_t count = std::stoul(argv[1]);
  std::ofstream file(argv[2], std::ios::binary);
  if (argc == 4 && argv[3] == std::string("columns"))
    WriteThreeColumns(count, file);
  else
    file << (argc == 3 ? TwoExponentials(count) : Plate(count, std::stoul(argv[3])));
  return file.flush() ? EXIT_SUCCESS : EXIT_FAILURE;
}
