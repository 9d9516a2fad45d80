#include "batch/ResultLine.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>

#include "core/JsonText.h"
#include "core/NumberText.h"
#include "diagnosis/ProfileRemarks.h"
#include "engine/RankModels.h"

namespace quorvex {
namespace {

// The members of an object in the order in which they are given.
class JsonObject {
 public:
  JsonObject& Raw(std::string_view name, std::string_view json) {
    text_.append(text_.size() > 1 ? "," : "").append(JsonText(name)).append(":").append(json);
    return *this;
  }
  JsonObject& Text(std::string_view name, std::string_view text) { return Raw(name, JsonText(text)); }
  JsonObject& TextOrNull(std::string_view name, std::string_view text) {
    return Raw(name, text.empty() ? "null" : JsonText(text));
  }
  JsonObject& Count(std::string_view name, std::size_t count) { return Raw(name, std::to_string(count)); }
  JsonObject& CountOrNull(std::string_view name, int count) {
    return Raw(name, count > 0 ? std::to_string(count) : "null");
  }
  JsonObject& Number(std::string_view name, double value) { return Raw(name, JsonNumber(value)); }
  std::string Open() { return std::move(text_); }  // what of it stands
  std::string End() { return std::move(text_ += '}'); }

 private:
  std::string text_ = "{";
};

void AppendElement(std::string& array, const std::string& json) {
  array.append(array.size() > 1 ? "," : "").append(json);
}

template <typename Elements, typename JsonOf>
std::string Array(const Elements& elements, const JsonOf& jsonOf) {
  std::string array = "[";
  for (const auto& element : elements) AppendElement(array, jsonOf(element));
  return array += ']';
}

std::string_view EndName(const ModelClass& model) {
  // What has neither an answer nor a reason was not brought to its end.
  if (!model.Solved) return model.Failure.empty() ? "aborted" : "failed";
  switch (model.Ended) {
    case SearchEnd::Converged:
      return "converged";
    case SearchEnd::Unchanged:
      return "unchanged";
    case SearchEnd::IterationLimit:
      return "limit";
    case SearchEnd::Paused:
      break;
  }
  return "paused";
}

std::string CoefficientsArray(const ModelClass& model) {
  std::string array = "[";
  for (int i = 1; i <= model.NumDependentVar(); ++i)
    AppendElement(array, JsonObject()
                             .Text("name", model.Variables(i))
                             .Number("value", model.Values(i))
                             .Number("stdErr", model.StandardError(i))
                             .Raw("fitted", model.Constants(i) != 0 ? "true" : "false")
                             .End());
  return array += ']';
}

std::string LimitsObject(const std::optional<LimitsByLevel>& limits) {
  if (!limits) return "null";
  JsonObject object;
  for (std::size_t level = 0; level < kLimitLevels.size(); ++level)
    object.Raw(std::to_string(kLimitLevels[level]),
               "[" + JsonNumber((*limits)[level].Lower) + "," + JsonNumber((*limits)[level].Upper) + "]");
  return object.End();
}

void AddBootstrap(JsonObject& object, const std::optional<BootstrapSpread>& spread) {
  object.Raw("bootstrap", spread ? LimitsObject(spread->Limits) : "null");
  object.Number("bootstrapBias", spread ? spread->Bias : NAN).Number("bootstrapStdErr", spread ? spread->StdErr : NAN);
}

std::string CoefficientObject(const CoefficientDiagnosis& one) {
  JsonObject object;
  object.Text("name", one.Name).Text("state", StateWord(one));
  object.Raw("symmetric", one.IsHeld ? "null" : LimitsObject(one.Symmetric));
  object.Raw("profile", LimitsObject(one.Profile));
  AddBootstrap(object, one.Bootstrapped);
  return object.Raw("profileRemarks", Array(ProfileRemarks(one), JsonText)).End();
}

std::string QuantityObject(const QuantityDiagnosis& one) {
  JsonObject object;
  object.Text("name", one.Name).Text("expression", one.Expression).TextOrNull("fault", one.Fault);
  object.Number("value", one.Value).Number("stdErr", one.StdErr).Raw("symmetric", LimitsObject(one.Symmetric));
  AddBootstrap(object, one.Bootstrapped);
  return object.End();
}

std::string CorrelationObject(const Diagnosis& diagnosis) {
  const Matrix& matrix = diagnosis.Correlation;
  std::string rows = "[";
  for (std::size_t i = 0; i < matrix.Order(); ++i) {
    std::string row = "[";
    for (std::size_t j = 0; j < matrix.Order(); ++j) AppendElement(row, JsonNumber(matrix(i, j)));
    AppendElement(rows, row += ']');
  }
  return JsonObject().Raw("names", Array(diagnosis.CorrelationNames, JsonText)).Raw("matrix", rows += ']').End();
}

std::string DiagnosisObject(const Diagnosis& diagnosis, double lossScale, const MacroSetup& setup) {
  const Verdict& verdict = diagnosis.Judgement;
  const Ranking& rank = diagnosis.Rank;
  JsonObject object;
  object.Text("verdict", ToLower(VerdictWord(verdict.Kind))).TextOrNull("search", verdict.Ended);
  object.Raw("reasons", Array(verdict.Reasons, JsonText)).Raw("notes", Array(verdict.Notes, JsonText));
  object.Text("deviations", diagnosis.AbsoluteDeviations ? "absolute" : "relative");
  object.Number("reducedChiSquare", diagnosis.ReducedChiSquare);
  object.Number("chiSquareProbability", diagnosis.ChiSquareProbability);
  object.Text("loss", kLossNames[static_cast<std::size_t>(setup.Loss)]);
  object.Raw("lossScale", lossScale > 0 ? JsonNumber(lossScale) : "null");
  object.Raw("outliers", Array(diagnosis.Outliers, [](std::size_t row) { return std::to_string(row); }));
  object.Number("condition", diagnosis.Condition).Number("aicc", rank.AICc).Number("deltaAicc", rank.DeltaAICc);
  object.Number("akaikeWeight", rank.AkaikeWeight).Number("bic", rank.BIC);
  object.CountOrNull("group", rank.Group).CountOrNull("sameAs", rank.SameAs);
  object.Number("leaveOneOut", rank.LeaveOneOut).Number("crossValidated", rank.CrossValidated);
  object.Raw("coefficients", Array(diagnosis.Coefficients, CoefficientObject));
  object.Raw("correlation", CorrelationObject(diagnosis));
  object.Raw("quantities", Array(diagnosis.Quantities, QuantityObject));
  return object.Raw("bootstrapFailures", std::to_string(diagnosis.BootstrapFailures)).End();
}

// Rank 0 is that of a model that was not solved. `diagnosis` is empty where none is wanted.
std::string ModelObject(const ModelClass& model, std::size_t rank, std::size_t points, const std::string& diagnosis) {
  JsonObject object;
  object.Text("id", model.cfgID.empty() ? model.id : model.cfgID);
  object.Raw("rank", rank > 0 ? std::to_string(rank) : "null").Text("ended", EndName(model)).Count("points", points);
  if (rank > 0) {
    object.Raw("iterations", std::to_string(model.NumIterations)).Number("rss", model.RSS);
    object.Number("weightedRss", model.RssNorm).Number("stdErr", model.StdErr).Number("r2", model.R2);
    object.Raw("coefficients", CoefficientsArray(model));
  } else {
    for (const char* name : {"iterations", "rss", "weightedRss", "stdErr", "r2"}) object.Raw(name, "null");
    object.Raw("coefficients", "[]");
  }
  object.TextOrNull("message", rank > 0 ? "" : model.Failure);
  if (!diagnosis.empty()) object.Raw("diagnosis", diagnosis);
  return object.End();
}

JsonObject Beginning(const RunResult& run) {
  JsonObject parameters;
  for (auto each = run.Parameters.begin(); each != run.Parameters.end(); ++each) {
    // Of columns of one name the first is the one that counts, and an object has each name once.
    const bool isRepeated =
        std::any_of(run.Parameters.begin(), each, [&](const auto& earlier) { return earlier.first == each->first; });
    if (!isRepeated) parameters.Text(each->first, each->second);
  }
  JsonObject object;
  object.Count("run", run.Number).Raw("parameters", parameters.End());
  return object;
}

// The line ends with the models, by which its readers know that it is whole.
std::string Line(const RunResult& run, const std::string& models, const std::string& warnings = {}) {
  JsonObject object = Beginning(run);
  object.Text("data", run.Data);
  if (!run.Series.empty()) object.Text("series", run.Series);
  object.Raw("status", std::to_string(run.Status)).TextOrNull("message", run.Message);
  if (!warnings.empty()) object.Raw("warnings", warnings);
  return object.Raw("models", models).End();
}

}  // namespace

std::string ResultBeginning(const RunResult& run) { return Beginning(run).Open(); }

std::string ResultLine(const RunResult& run) { return Line(run, "[]"); }

std::string ResultLine(const RunResult& run, const ModelCollection& models, const SolveData& data,
                       const MacroSetup& setup, const RunDiagnoses& diagnoses) {
  std::string array = "[";
  std::size_t told = 0;
  const auto add = [&](const ModelClass& model, std::size_t rank) {
    const bool isThere = told < diagnoses.Models.size();
    std::string diagnosis;
    if (setup.Diagnostics)
      diagnosis = isThere ? DiagnosisObject(diagnoses.Models[told], model.LossScale, setup) : "null";
    ++told;
    AppendElement(array, ModelObject(model, rank, data.N(), diagnosis));
  };
  for (const ModelClass* model : RankModels(models, setup.SortKey)) add(*model, told + 1);
  for (const ModelClass* model : UnsolvedModels(models)) add(*model, 0);
  return Line(run, array += ']', setup.Diagnostics ? Array(diagnoses.Warnings, JsonText) : "");
}

}  // namespace quorvex
