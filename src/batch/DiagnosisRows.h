#pragma once

#include <string>
#include <vector>

#include "diagnosis/Diagnosis.h"
#include "macro/MacroSetup.h"

namespace quorvex {

// What a run tells of its answers besides them: the diagnoses as Diagnose orders them, and what is said of all
// together.
struct RunDiagnoses {
  std::vector<Diagnosis> Models;
  std::vector<std::string> Warnings;
};

// The models that were to be solved and were not, whose diagnoses stand behind those of the solved ones.
std::vector<const ModelClass*> UnsolvedModels(const ModelCollection& models);

// A row of an output: its name and, behind it, numbers and texts.
struct DiagnosisRow {
  std::string Name;
  std::vector<std::string> Cells;
};

// Rows of one kind, and what their cells are.
struct DiagnosisTable {
  std::string Name;
  std::vector<std::string> Columns;
  std::vector<DiagnosisRow> Rows;
};

// What the layouts of a macro's output have of a diagnosis, in common. What was asked for and has no value is "N/A"; a
// limit that is not there is infinite. Of a text, which may hold any character, there is one a row, the last cell.
struct DiagnosisRows {
  std::vector<DiagnosisRow> Figures;
  std::vector<DiagnosisTable> Tables;  // none of them empty
};
DiagnosisRows RowsOf(const Diagnosis& diagnosis, double lossScale, const MacroSetup& setup);

// The words of the verdict, and of where a coefficient stands.
const char* VerdictWord(VerdictKind kind);
const char* StateWord(const CoefficientDiagnosis& coefficient);

}  // namespace quorvex
