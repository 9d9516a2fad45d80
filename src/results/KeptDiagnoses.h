#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "core/SolveData.h"
#include "diagnosis/Diagnosis.h"
#include "diagnosis/DiagnosisChoices.h"

namespace quorvex {

// The diagnoses of a project's solutions as a window has computed them: what is quick of all together, since they are
// ranked among each other, and limits and cross-validation of one at a time. Each is kept until what it rests upon is
// another: a solution, the quantities that are wanted of it, the points.
class KeptDiagnoses {
 public:
  // The solved models as they are now, the best first. What rests upon others is forgotten. Returns whether anything
  // that a diagnosis under way may rest upon has changed.
  bool Follow(const std::vector<const ModelClass*>& solved, const SolveData& data);

  // Takes what Diagnose said of all of them without further choices.
  void KeepAll(std::vector<Diagnosis> all, std::vector<std::string> warnings);
  bool HasAll() const { return all_.has_value(); }

  // Takes what it said of one of them with these choices, beside what is there of it from before.
  void Keep(Diagnosis one, const DiagnosisChoices& choices, std::vector<std::string> warnings);
  // What of the choices is not there yet for this model.
  DiagnosisChoices Missing(const std::string& id, const DiagnosisChoices& wanted) const;
  // What is there of it.
  DiagnosisChoices Choices(const std::string& id) const;

  // What was said of all together and of it beside the others.
  std::vector<std::string> Warnings(const std::string& id) const;

  // All of them, in their order, each with everything that is there; empty without KeepAll.
  std::vector<Diagnosis> All() const;

 private:
  // The bits of all numbers that a diagnosis of a solution rests upon, and the texts.
  struct Mark {
    std::string Id;
    std::vector<std::uint64_t> Numbers;
    std::vector<DerivedQuantity> Reports;

    bool operator==(const Mark&) const = default;
  };
  struct Further {
    Diagnosis Said;
    DiagnosisChoices Choices;
    std::vector<std::string> Warnings;
  };

  static Mark MarkOf(const ModelClass& model);

  std::vector<Mark> marks_;
  SolveData data_;
  std::optional<std::vector<Diagnosis>> all_;
  std::vector<std::string> warnings_;
  std::map<std::string, Further> further_;  // by ID
};

}  // namespace quorvex
