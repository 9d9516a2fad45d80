#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "TableFile.h"
#include "core/NumberText.h"
#include "selection/ExecuteSelection.h"

namespace quorvex {

// A file of tests/data as a sheet: X, then Y, then the standard deviation where `weighted`; "NA" as an empty cell.
inline DataSheet SelectionSheet(const std::string& name, bool weighted = false) {
  std::ifstream file(TestData(name));
  std::string line;
  std::getline(file, line);
  const char separator = name.ends_with(".csv") ? ',' : '\t';
  const std::vector<std::string> headers = Split(line, separator);
  DataSheet sheet(headers.size() - (weighted ? 2 : 1), weighted);
  sheet.Headers = headers;
  for (std::size_t row = 1; std::getline(file, line); ++row) {
    const std::vector<std::string> fields = Split(line, separator);
    for (std::size_t i = 0; i < fields.size(); ++i)
      if (const auto value = NumericText(fields[i])) sheet.Cells.SetGridCellNumber(row, i + 1, *value);
  }
  return sheet;
}

// A sheet of these columns, the last one being Y.
inline DataSheet SelectionSheet(const std::vector<std::vector<double>>& columns) {
  DataSheet sheet(columns.size() - 1, false);
  for (std::size_t j = 0; j < columns.size(); ++j)
    for (std::size_t i = 0; i < columns[j].size(); ++i) sheet.Cells.SetGridCellNumber(i + 1, j + 1, columns[j][i]);
  return sheet;
}

// The choices of a window that was only just opened on a sheet.
inline VarSelect ChoicesFor(const DataSheet& sheet, SelectionProcedure procedure = SelectionProcedure::Forward,
                            bool products = false) {
  VarSelect choices;
  choices.WhichModel = procedure;
  choices.NumIV = sheet.IndependentVariables;
  choices.CrossProducts = products;
  choices.Exclude.assign(CandidateNames(sheet.Headers, choices.NumIV, products).size(), false);
  choices.Include = choices.Exclude;
  return choices;
}

inline SelectionData DataFor(const DataSheet& sheet, const VarSelect& choices) {
  const auto gathered = GatherData(sheet, PointOrder::OfSheet);
  Result<SelectionData> data = PrepareSelection(gathered, sheet, choices, LocaleText());
  EXPECT_TRUE(data) << data.error();
  return std::move(*data);
}

// Numbers from 1, as the tables of tests/data have them.
inline Subset SubsetOf(const std::string& text, char separator = ' ') {
  Subset subset;
  for (const std::string& word : Split(text, separator)) subset.push_back(std::stoul(word) - 1);
  return subset;
}

}  // namespace quorvex
