#pragma once

#include <memory>
#include <optional>

#include "files/RecordIo.h"
#include "project/Project.h"

namespace quorvex {

// A solved model as a project file holds it: which model it is, how its fit ended, its coefficients and its input. The
// record has room for the starts of a sweep alone, and none for the end of a search, for what found the solution, for
// standard deviations that are taken at their word, for the bounds of coefficients, or for the loss; these stand in
// sections of their own behind the end of the data, where readers that do not know them have stopped.

// The names of the sections.
inline constexpr const char *kSolvedModel = "EQUATIONCLASS", *kSweeps = "SWEEPINFO", *kSearchEnds = "SEARCHEND",
                            *kFoundBy = "FOUNDBY", *kDeviations = "DEVIATIONS", *kReports = "REPORTS",
                            *kBounds = "BOUNDS", *kLosses = "ROBUSTLOSS";

void WriteSolvedModel(RecordWriter& io, const ModelClass& model, std::size_t variables);
void WriteSweeps(RecordWriter& io, const Project& project);
void WriteSearchEnds(RecordWriter& io, const Project& project);
void WriteFoundBy(RecordWriter& io, const Project& project);
void WriteDeviations(RecordWriter& io, const Project& project);
void WriteLosses(RecordWriter& io, const Project& project);
// Of all models, solved or not.
void WriteReports(RecordWriter& io, const Project& project);
// Of all models that have them, solved or not.
void WriteBounds(RecordWriter& io, const Project& project);

// Reads the records of a project's solved models into its models, which it has by then, as it has its sheet.
class SolvedModelReader {
 public:
  explicit SolvedModelReader(Project& project) : project_(project) {}

  void ReadSolvedModel(RecordReader& io);
  void ReadSweeps(RecordReader& io);
  void ReadSearchEnds(RecordReader& io);
  void ReadFoundBy(RecordReader& io);
  void ReadDeviations(RecordReader& io);
  void ReadLosses(RecordReader& io);
  void ReadReports(RecordReader& io);
  void ReadBounds(RecordReader& io);

 private:
  // The model whose ID comes next, or null.
  ModelClass* FindModel(RecordReader& io);
  // The points of the sheet. Empty columns where it holds texts, which no solve could read.
  const SolveData& Points();

  Project& project_;
  std::optional<SolveData> points_;
  std::shared_ptr<const InputPoints> input_;  // of the models of several variables, which keep every point
};

}  // namespace quorvex
