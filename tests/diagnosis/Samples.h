#pragma once

#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "TableFile.h"
#include "engine/Points.h"

namespace quorvex {

// A sample of tests/data, its last column the dependent variable.
inline SolveData Sample(const std::string& file, char separator) {
  std::ifstream stream(TestData(file));
  std::string line;
  std::getline(stream, line);
  std::vector<std::vector<double>> columns;
  while (std::getline(stream, line)) {
    const std::vector<std::string> cells = Split(line, separator);
    columns.resize(cells.size());
    for (std::size_t v = 0; v < cells.size(); ++v) columns[v].push_back(Number(cells[v]));
  }
  std::vector<double> y = columns.back();
  columns.pop_back();
  return Points(std::move(columns), std::move(y));
}

// Weights of mean 1 in proportion to 1/y.
inline SolveData Weighted(SolveData data) {
  double sum = 0;
  for (const double y : data.Y) sum += 1 / y;
  for (std::size_t i = 0; i < data.N(); ++i) data.sig[i] = static_cast<double>(data.N()) / sum / data.Y[i];
  return data;
}

}  // namespace quorvex
