#include <span>

#include "core/NumberText.h"
#include "core/SaveFile.h"
#include "files/FieldWriter.h"
#include "files/FileVersion.h"
#include "files/ProjectFile.h"
#include "files/UserModelRecord.h"

namespace quorvex {
namespace {

// The sets of the sweep that the solution comes from, if it comes from one.
std::span<const std::vector<double>> SweepOf(const ModelClass& model) {
  if (model.SweepCount == 0) return {};
  return model.GetSweepInfo();
}

void WriteSheet(FieldWriter& out, const DataSheet& sheet) {
  GridCells cells = sheet.Cells;  // whose columns are taken out
  const std::size_t rows = cells.GridLastRow();
  std::vector<std::vector<double>> columns;
  for (std::size_t col = 1; col <= sheet.ColumnCount(); ++col) columns.push_back(cells.TakeColumn(col, rows));
  out.Line("B_INPUT");
  out.Line(rows);
  for (std::size_t row = 0; row < rows; ++row) {
    for (const std::vector<double>& column : columns) {
      const double cell = column[row];
      if (GridCells::IsEmpty(cell))
        out.EmptyField();
      else if (GridCells::IsText(cell))
        out.Field(cells.TextBehind(cell));
      else
        out.Field(cell);
    }
    out.EndLine();
  }
  out.Line("E_INPUT");
}

void WriteFormat(FieldWriter& out, const ColumnFormat& format) {
  out.Line(format.NumberFormat);
  out.Line(format.AlignHorizontal);
  out.Line(format.WordWrap);
  out.Line(format.AlignVertical);
  out.Line(format.Orientation);
  out.Line(format.FontName);
  out.Line(format.FontSize);
  out.Line(format.FontBold);
  out.Line(format.FontItalic);
  out.Line(format.FontUnderline);
  out.Line(format.FontStrikeout);
  out.Line(format.FontColor);
  out.Line(format.FontOutline);
  out.Line(format.FontShadow);
  out.Line(format.ColumnStyle);
  out.Line(format.ColumnWidth);
}

void WriteSolvedModel(FieldWriter& out, const ModelClass& model, std::size_t variables, const LocaleText& locale) {
  out.Line("B_EQUATIONCLASS");
  out.Line(model.Description);
  WriteFunctionList(out, model, locale);
  out.Line(model.id);
  for (const bool flag : {model.UserType, model.SpecifyIC, model.SpecifyICComplete, model.Solve, model.Solved})
    out.Line(flag);
  out.Line(model.SolveType);
  for (const double value :
       {model.RSS, model.RssNorm, model.RST, model.ResAvg, model.ResSum, model.Durbin, model.R2, model.R2Adjust,
        model.StdErr, static_cast<double>(model.DOFError), static_cast<double>(model.DOFRegression)})
    out.Line(value);

  const int n = model.NumDependentVar();
  out.Line(n);
  for (int i = 1; i <= n; ++i) {
    const ICRange& range = model.GetICRange()[static_cast<std::size_t>(i - 1)];
    out.Line(model.Constants(i), model.Values(i), range.Min, range.Max, range.Steps);
  }
  out.Line(SweepOf(model).size());
  for (const std::vector<double>& set : SweepOf(model))
    for (int i = 0; i < n; ++i) out.Line(set[static_cast<std::size_t>(i)]);

  DataStatistics input = model.Statistics;
  input.X.resize(variables);
  out.Line(model.NumInputX());
  if (variables == 1) {
    for (std::size_t i = 1; i <= model.NumInputX(); ++i) out.Line(model.InputX(i), model.InputY(i));
    const VariableStatistics& x = input.X[0];
    for (const double value : {x.InputXMin, x.InputXMax, input.InputYMin, input.InputYMax, x.XMean, x.XStd, x.XAtYMin,
                               x.XAtYMax, x.YAtXMin, x.YAtXMax})
      out.Line(value);
  } else {
    for (std::size_t v = 0; v < variables; ++v) out.Line(input.X[v].InputXMin);
    for (std::size_t v = 0; v < variables; ++v) out.Line(input.X[v].InputXMax);
    out.Line(input.InputYMin);
    out.Line(input.InputYMax);
    for (std::size_t v = 0; v < variables; ++v) {
      const VariableStatistics& x = input.X[v];
      for (const double value : {x.XMean, x.XStd, x.XAtYMin, x.XAtYMax, x.YAtXMin, x.YAtXMax}) out.Line(value);
    }
  }
  out.Line(input.YMean);
  out.Line(input.YStd);
  out.Line(model.ErrorInfo);
  out.Line(n);
  for (int i = 1; i <= n; ++i) out.Line(model.Covariance(i));
  out.Line(model.NumIterations);
  out.Line("E_EQUATIONCLASS");
}

void WriteInterpolation(FieldWriter& out, const InterpClass& curve) {
  out.Line("B_INTERPOLATIONCLASS");
  out.Line(curve.Description);
  out.Line(curve.id);
  out.Line(curve.SolveType);
  out.Line(curve.Solve);
  out.Line(curve.Solved);
  out.Line(curve.LegendText);
  out.Line(curve.NumInputX());
  for (std::size_t i = 1; i <= curve.NumInputX(); ++i) out.Line(curve.InputX(i), curve.InputY(i), curve.InputY2(i));
  for (const double value : {curve.InputXMin, curve.InputXMax, curve.InputYMin, curve.InputYMax}) out.Line(value);
  out.Line(curve.ShowErrorBars);
  out.Line(curve.ErrorInfo);
  out.Line("E_INTERPOLATIONCLASS");
}

// The records of the models have room for the start values of a sweep alone. What each start led to stands behind the
// end of the data, where a reader that does not know it has stopped.
void WriteSweeps(FieldWriter& out, const Project& project) {
  bool begun = false;
  for (const auto& model : project.Models) {
    const std::span<const std::vector<double>> sweep = SweepOf(*model);
    const auto n = static_cast<std::size_t>(model->NumDependentVar());
    if (!model->Solved || sweep.empty() || sweep[0].size() == n) continue;
    if (!begun) out.Line("B_SWEEPINFO");
    begun = true;
    out.Line(model->id);
    for (const std::vector<double>& set : sweep) {
      for (std::size_t i = n; i < set.size(); ++i) out.Field(set[i]);
      out.EndLine();
    }
  }
  if (begun) out.Line("E_SWEEPINFO");
}

// How searches ended that did not by converging, in the same place.
void WriteSearchEnds(FieldWriter& out, const Project& project) {
  bool begun = false;
  for (const auto& model : project.Models) {
    if (!model->Solved || model->Ended == SearchEnd::Converged) continue;
    if (!begun) out.Line("B_SEARCHEND");
    begun = true;
    out.Line(model->id);
    out.Line(static_cast<int>(model->Ended));
  }
  if (begun) out.Line("E_SEARCHEND");
}

}  // namespace

std::string ProjectText(const Project& project) {
  const DataSheet& sheet = project.Sheet;
  FieldWriter out;
  out.Line("B_HEADER");
  out.Line("    " + std::string(kFileVersion));
  out.Line("    filetype=regression");
  out.Line(std::string("    standarddeviation=") + (sheet.HasStandardDeviation ? "True" : "False"));
  out.Line("    columns=" + std::to_string(sheet.ColumnCount()));
  out.Line("E_HEADER");
  out.Line("B_COLHEADER");
  for (const std::string& header : sheet.Headers) out.Line(header);
  out.Line("E_COLHEADER");
  out.Line("B_SOLVESETUP");
  out.Line(project.Limits.ResidualTolerance);
  out.Line(project.Limits.MaxIterations);
  out.Line(project.Limits.DivIterations);
  out.Line("E_SOLVESETUP");
  out.Line("B_FORMAT");
  for (const ColumnFormat& format : sheet.Formats) WriteFormat(out, format);
  out.Line("E_FORMAT");
  out.Line("B_NOTES");
  out.Line(Trim(project.Notes));
  out.Line("E_NOTES");

  out.Line("B_DATA");
  WriteSheet(out, sheet);
  out.Line("B_USERDEFINED");
  for (const auto& model : project.Models)
    if (model->UserType) WriteUserModel(out, *model, true, project.Locale);
  out.Line("E_USERDEFINED");
  for (const auto& model : project.Models)
    if (model->Solved) WriteSolvedModel(out, *model, sheet.IndependentVariables, project.Locale);
  for (const InterpClass& curve : project.Interpolations)
    if (curve.Solved) WriteInterpolation(out, curve);
  out.Line("E_DATA");
  WriteSweeps(out, project);
  WriteSearchEnds(out, project);
  return out.Text();
}

int WriteProject(const Project& project, const std::string& fileName) {
  return SaveFile(fileName, ProjectText(project));
}

}  // namespace quorvex
