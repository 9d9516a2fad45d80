#include "project/ChangeColumns.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "engine/LoadModelCatalog.h"

namespace quorvex {
namespace {

// Where each column of the sheet goes, counted from 1; 0 for one that is taken away.
std::vector<std::size_t> Targets(const DataSheet& sheet, const ProjectKind& kind) {
  std::vector<std::size_t> targets;
  for (std::size_t x = 1; x <= sheet.IndependentVariables; ++x)
    targets.push_back(x <= kind.IndependentVariables ? x : 0);
  targets.push_back(kind.IndependentVariables + 1);
  if (sheet.HasStandardDeviation) targets.push_back(kind.HasStandardDeviation ? kind.IndependentVariables + 2 : 0);
  return targets;
}

DataSheet Rearranged(DataSheet sheet, const ProjectKind& kind) {
  DataSheet rearranged(kind.IndependentVariables, kind.HasStandardDeviation);
  const std::vector<std::string> defaults = DefaultHeaders(sheet.IndependentVariables, sheet.HasStandardDeviation);
  const std::vector<std::size_t> targets = Targets(sheet, kind);
  for (std::size_t i = 0; i < targets.size(); ++i) {
    if (targets[i] == 0) continue;
    if (sheet.Headers[i] != defaults[i]) rearranged.Headers[targets[i] - 1] = sheet.Headers[i];
    rearranged.Formats[targets[i] - 1] = sheet.Formats[i];
  }
  sheet.Cells.MoveColumns(targets);
  rearranged.Cells = std::move(sheet.Cells);
  return rearranged;
}

std::string Counted(std::size_t count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

// What the change takes away, each as in "column 'X2' with its 32 cells".
std::vector<std::string> Losses(const Project& project, const ProjectKind& kind) {
  const DataSheet& sheet = project.Sheet;
  std::vector<std::string> losses;
  const std::vector<std::size_t> targets = Targets(sheet, kind);
  for (std::size_t col = 1; col <= targets.size(); ++col) {
    std::size_t filled = 0;
    for (std::size_t row = 1; targets[col - 1] == 0 && row <= sheet.Cells.GridLastRow(); ++row)
      if (!GridCells::IsEmpty(sheet.Cells.Cell(row, col))) ++filled;
    if (filled > 0) losses.push_back("column '" + sheet.Headers[col - 1] + "' with its " + Counted(filled, "cell"));
  }
  const auto solved = static_cast<std::size_t>(
      std::ranges::count_if(project.Models, [](const auto& model) { return model->Solved; }) +
      std::ranges::count_if(project.Interpolations, [](const InterpClass& curve) { return curve.Solved; }));
  if (solved > 0) losses.push_back(Counted(solved, "solution"));
  const auto own = static_cast<std::size_t>(
      std::ranges::count_if(project.Models, [](const auto& model) { return model->UserType; }));
  if (own > 0 && kind.IndependentVariables != sheet.IndependentVariables)
    losses.push_back(Counted(own, "user defined model") + " of " +
                     Counted(sheet.IndependentVariables, "independent variable"));
  return losses;
}

}  // namespace

bool ChangeColumns(Project& project, const SheetEdit& edit, const ProjectKind& kind, const UndoLabel& label) {
  const DataSheet& sheet = project.Sheet;
  const std::size_t variables = sheet.IndependentVariables;
  if (kind == ProjectKind{variables, sheet.HasStandardDeviation}) return false;
  std::string lost;
  const std::vector<std::string> losses = Losses(project, kind);
  for (std::size_t i = 0; i < losses.size(); ++i)
    lost += (i == 0 ? "" : i + 1 < losses.size() ? ", " : " and ") + losses[i];
  if (!lost.empty() && !edit.User.Ask("This takes away " + lost + ". Undo brings that back. Do you want to continue?"))
    return false;
  edit.PushUndo(label, edit.WholeSheet());
  project.Sheet = Rearranged(std::move(project.Sheet), kind);
  if (kind.IndependentVariables == variables) return true;
  project.Models = {};
  LoadModelCatalog(project.Models, static_cast<int>(kind.IndependentVariables), project.Locale);
  return true;
}

}  // namespace quorvex
