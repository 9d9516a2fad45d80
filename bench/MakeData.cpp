// make_data COUNT FILE: the points of the two exponentials as a data file, x and y.

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "Workloads.h"

int main(int argc, char** argv) {
  if (argc != 3) return std::fputs("Usage: make_data COUNT FILE\n", stderr), EXIT_FAILURE;
  using namespace quorvex::bench;
  const Points points = MakePoints(kTwoExponentials, static_cast<std::size_t>(std::stoul(argv[1])));
  std::string text;
  for (std::size_t i = 0; i < points.X.size(); ++i) {
    AppendNumber(text, points.X[i], '\t');
    AppendNumber(text, points.Y[i], '\n');
  }
  std::ofstream file(argv[2], std::ios::binary);
  file << text;
  return file.flush() ? EXIT_SUCCESS : EXIT_FAILURE;
}
