#include <gtest/gtest.h>

#include <cmath>

#include "results/KeptDiagnoses.h"
#include "results/SolvedProject.h"

namespace quorvex {
namespace {

class Kept : public testing::Test {
 protected:
  Kept() {
    Follow();
    kept.KeepAll({Said(line), Said(curve)}, {"Few points."});
  }
  bool Follow() { return kept.Follow({&line, &curve}, GatherData(project.Sheet).Points); }
  static Diagnosis Said(const ModelClass& model) {
    Diagnosis one;
    one.Id = model.id;
    one.Coefficients.resize(2);
    one.Rank.AICc = 1;
    return one;
  }
  void KeepProfile(const ModelClass& model) {
    Diagnosis one = Said(model);
    one.Coefficients[1].Profile = LimitsByLevel{};
    one.Judgement = {VerdictKind::Doubtful, "", {"Lopsided."}};
    kept.Keep(one, {.ProfileLimits = true}, {"No profile."});
  }
  void KeepBootstrap(const ModelClass& model) {
    Diagnosis one = Said(model);
    one.Coefficients[0].Bootstrapped = BootstrapSpread{};
    one.Rank.AICc = 5;
    kept.Keep(one, {.Bootstrap = 20}, {"Few points."});
  }

  Project project = LineProject();
  ModelClass& line = SolveModel(project, "a*x+b", 1);
  ModelClass& curve = SolveModel(project, "a+b/x", 1);
  KeptDiagnoses kept;
};

TEST_F(Kept, AddsWhatIsComputedLaterToWhatIsThere) {
  KeepBootstrap(line);
  KeepProfile(line);
  const DiagnosisChoices wanted{.ProfileLimits = true, .Bootstrap = 20, .CrossValidation = 5};
  EXPECT_EQ(kept.Missing(line.id, wanted), DiagnosisChoices{.CrossValidation = 5});
  EXPECT_EQ(kept.Missing(curve.id, wanted), wanted);
  EXPECT_EQ(kept.Missing(line.id, {.Bootstrap = 20, .ResampleCases = true}),
            (DiagnosisChoices{.Bootstrap = 20, .ResampleCases = true}));
  const std::vector<Diagnosis> all = kept.All();
  EXPECT_TRUE(all[0].Coefficients[1].Profile);
  EXPECT_TRUE(all[0].Coefficients[0].Bootstrapped);
  EXPECT_EQ(all[0].Judgement.Reasons, std::vector<std::string>{"Lopsided."});
  EXPECT_TRUE(all[1].Judgement.Reasons.empty());
  EXPECT_EQ(all[0].Rank.AICc, 1) << "alone it has no rank";
  EXPECT_FALSE(all[1].Coefficients[1].Profile);
  EXPECT_EQ(kept.Warnings(line.id), (std::vector<std::string>{"Few points.", "No profile."}));
}

TEST_F(Kept, ForgetsWhatRestsUponAnotherSolutionOrOtherData) {
  line.Variances[0] = NAN;
  EXPECT_TRUE(Follow());
  EXPECT_FALSE(Follow()) << "a number that is none is the same as before";
  EXPECT_FALSE(kept.HasAll());
  KeepProfile(line);
  KeepProfile(curve);
  line.SetValue(1, 7);
  EXPECT_TRUE(Follow());
  EXPECT_FALSE(kept.Choices(line.id).ProfileLimits);
  EXPECT_TRUE(kept.Choices(curve.id).ProfileLimits);
  curve.Reports = {{"twice", "2*a"}};
  EXPECT_TRUE(Follow());
  EXPECT_FALSE(kept.Choices(curve.id).ProfileLimits);
  KeepProfile(curve);
  project.Sheet.Cells.SetGridCellNumber(1, 2, 4);
  EXPECT_TRUE(Follow());
  EXPECT_FALSE(kept.Choices(curve.id).ProfileLimits);
}

}  // namespace
}  // namespace quorvex
