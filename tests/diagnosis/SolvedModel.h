#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "engine/Points.h"
#include "engine/UserModel.h"

namespace quorvex {

// The model of a formula, solved from a start.
inline std::unique_ptr<ModelClass> SolvedModel(const std::string& formula, const SolveData& data,
                                               const std::vector<double>& start, const Settings& settings = {}) {
  std::unique_ptr<ModelClass> model = CompileModel("model", {formula}, data.X.size(), LocaleText());
  model->SpecifyICComplete = true;
  for (std::size_t i = 0; i < start.size(); ++i) {
    model->CoefficientValues[i] = start[i];
    model->ICRanges[i] = {start[i], start[i], 1};
  }
  SolveForm form;
  std::string log;
  EXPECT_TRUE(model->Fit(data, settings, log, form)) << log;
  return model;
}

// The same on the linear road, of the catalogue.
inline std::unique_ptr<ModelClass> LinearModel(const std::string& ID, const SolveData& data) {
  std::unique_ptr<ModelClass> model = NewModelFor(data.X.size(), LocaleText());
  model->SetID(ID, {ID});
  model->UserType = false;
  model->SolveType = 1;
  SolveForm form;
  std::string log;
  EXPECT_TRUE(model->Fit(data, {}, log, form)) << log;
  return model;
}

// Published data: initial velocities of an enzyme against the concentration of its substrate, treated with puromycin
// (D. M. Bates & D. G. Watts, Nonlinear Regression Analysis and Its Applications, Wiley 1988, A1.3), and biochemical
// oxygen demand against days (the same, A1.4).
inline SolveData Puromycin(double scale = 1) {
  SolveData data = Points({{0.02, 0.02, 0.06, 0.06, 0.11, 0.11, 0.22, 0.22, 0.56, 0.56, 1.1, 1.1}},
                          {76, 47, 97, 107, 123, 139, 159, 152, 191, 201, 207, 200});
  for (double& y : data.Y) y *= scale;
  return data;
}
inline SolveData OxygenDemand() { return Points({{1, 2, 3, 4, 5, 7}}, {8.3, 10.3, 19, 16, 15.6, 19.8}); }

// A form whose user aborts at the given turn.
struct AbortingForm : SolveForm {
  explicit AbortingForm(int turns) : turns_(turns) {}
  void Yield() override { Aborted = Aborted || --turns_ <= 0; }

 private:
  int turns_;
};

}  // namespace quorvex
