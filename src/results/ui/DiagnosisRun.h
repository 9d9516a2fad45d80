#pragma once

#include <QThread>
#include <mutex>
#include <string>
#include <vector>

#include "core/LongWork.h"
#include "core/Settings.h"
#include "core/SolveData.h"
#include "diagnosis/Diagnosis.h"
#include "engine/ModelCollection.h"

namespace quorvex {

// Diagnoses copies of models on a thread of its own, so that the windows stay alive and whatever happens to the models
// meanwhile does no harm. `finished` tells of the end; the destructor cancels and waits for it.
class DiagnosisRun : public QThread {
 public:
  DiagnosisRun(const std::vector<const ModelClass*>& models, SolveData data, const DiagnosisChoices& choices,
               int sortIndex, Settings settings);
  ~DiagnosisRun() override;

  const DiagnosisChoices& Choices() const { return choices_; }
  void Cancel() { work_.Cancel(); }
  // How far it is, and what it is at, at any time.
  const LongWork& Work() const { return work_; }
  std::string Stage() const;

  // What came of it, once it has finished: nothing where it was cancelled or found no memory, of which Fault tells.
  std::vector<Diagnosis> Answers;
  std::vector<std::string> Warnings;
  std::string Fault;

 protected:
  void run() override;

 private:
  class Form;

  const DiagnosisChoices choices_;
  const int sortIndex_;
  const Settings settings_;
  const SolveData data_;
  ModelCollection models_;
  LongWork work_;
  mutable std::mutex guard_;
  std::string stage_;
};

}  // namespace quorvex
