#include "results/ui/DiagnosisRun.h"

#include <exception>
#include <utility>

#include "engine/ModelClass.h"
#include "sheet/ComputeWeights.h"

namespace quorvex {

// What a fit sees of the run: it is told to end, and tells how far it is.
class DiagnosisRun::Form : public SolveForm {
 public:
  explicit Form(DiagnosisRun& run) : run_(run) {}

  void Yield() override { Pulse(); }
  void Pulse() override { Aborted = Aborted || run_.work_.Cancelled(); }
  void ShowWork(const std::string& what, std::size_t done, std::size_t of) override {
    run_.work_.ShowProgress(done, of);
    const std::scoped_lock lock(run_.guard_);
    run_.stage_ = what;
  }

 private:
  DiagnosisRun& run_;
};

DiagnosisRun::DiagnosisRun(const std::vector<const ModelClass*>& models, SolveData data,
                           const DiagnosisChoices& choices, int sortIndex, Settings settings)
    : choices_(choices), sortIndex_(sortIndex), settings_(std::move(settings)), data_(std::move(data)) {
  for (const ModelClass* model : models) models_.Add(model->id, model->CopyTo());
}

DiagnosisRun::~DiagnosisRun() {
  Cancel();
  wait();
}

std::string DiagnosisRun::Stage() const {
  const std::scoped_lock lock(guard_);
  return stage_;
}

void DiagnosisRun::run() {
  try {
    Form form(*this);
    const LocaleText locale = models_.size() > 0 ? (*models_.begin())->Locale() : LocaleText();
    Answers = Diagnose(models_, data_, choices_, sortIndex_, settings_, form, Warnings, locale);
    if (settings_.AbsoluteDeviations)
      for (std::string& warning : DeviationWarnings(data_)) Warnings.push_back(std::move(warning));
  } catch (const std::exception& fault) {
    Answers.clear();
    Fault = std::string("The diagnosis has come to no end: ") + fault.what() + ".";
  }
  if (work_.Cancelled()) Answers.clear();
}

}  // namespace quorvex
