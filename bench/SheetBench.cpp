// A full sheet, 65,536 rows of three columns: opening it from a project, copying and pasting it, and what typing in a
// cell and taking that back cost beside a small sheet. An undo snapshot of a typed cell is that cell, so both sheets
// should take the same.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <random>
#include <string>

#include "RecordingClipboard.h"
#include "RecordingPrompter.h"
#include "Workloads.h"
#include "core/Settings.h"
#include "files/ProjectFile.h"
#include "project/ProjectEditor.h"
#include "sheet/EditCommands.h"
#include "sheet/TypeInCell.h"

namespace quorvex {
namespace {

constexpr int kFullSheet = 65'536;

// X, Y and standard deviation, 17 digits each.
Project SheetOf(int rows) {
  Project project = NewProject(1, true, {});
  bench::Random random(808);
  for (int row = 0; row < rows; ++row) {
    const auto at = static_cast<std::size_t>(row) + 1;
    project.Sheet.Cells.SetGridCellNumber(at, 1, row * 0.001);
    project.Sheet.Cells.SetGridCellNumber(at, 2, random.Normal() * 1000);
    project.Sheet.Cells.SetGridCellNumber(at, 3, random.Uniform() * 1e-6);
  }
  return project;
}

void OpenProject(benchmark::State& state) {
  const std::string name =
      std::filesystem::temp_directory_path() / ("quorvex-bench-" + std::to_string(std::random_device()()) + ".qvx");
  if (WriteProject(SheetOf(kFullSheet), name) != 0) return state.SkipWithError("cannot write the project");
  for ([[maybe_unused]] auto pass : state) {
    const Result<Project> project = ReadProject(name, {});
    if (!project || project->Sheet.Cells.GridLastRow() != kFullSheet) return state.SkipWithError("not read");
  }
  std::filesystem::remove(name);
}
BENCHMARK(OpenProject)->Unit(benchmark::kMillisecond);

// The editor of a sheet, all of whose cells are selected.
struct Editing {
  explicit Editing(int rows) : Document(SheetOf(rows)) { Editor.Edit.Selection = {Editor.Edit.WholeSheet()}; }

  Project Document;
  Settings Preferences;
  RecordingPrompter User;
  ProjectEditor Editor{Document, Preferences, User};
  RecordingClipboard Clip;
};

void CopySheet(benchmark::State& state) {
  Editing sheet(kFullSheet);
  for ([[maybe_unused]] auto pass : state) benchmark::DoNotOptimize(EditCopy(sheet.Editor.Edit, sheet.Clip));
}
BENCHMARK(CopySheet)->Unit(benchmark::kMillisecond);

void PasteSheet(benchmark::State& state) {
  Editing sheet(kFullSheet);
  EditCopy(sheet.Editor.Edit, sheet.Clip);
  for ([[maybe_unused]] auto pass : state) {
    if (!EditPaste(sheet.Editor.Edit, sheet.Clip)) return state.SkipWithError("nothing pasted");
    sheet.Editor.EditUndo();
  }
}
BENCHMARK(PasteSheet)->Unit(benchmark::kMillisecond);

void TypeAndUndo(benchmark::State& state) {
  Editing sheet(static_cast<int>(state.range(0)));
  for ([[maybe_unused]] auto pass : state) {
    if (!TypeInCell(sheet.Editor.Edit, 50, 2, "12.5")) return state.SkipWithError("not typed");
    sheet.Editor.EditUndo();
  }
}
BENCHMARK(TypeAndUndo)->ArgName("rows")->Arg(100)->Arg(kFullSheet)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace quorvex
