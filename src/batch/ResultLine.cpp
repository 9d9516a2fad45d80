#include "batch/ResultLine.h"

#include <algorithm>
#include <string_view>

#include "core/JsonText.h"
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
  JsonObject& Number(std::string_view name, double value) { return Raw(name, JsonNumber(value)); }
  std::string Open() { return std::move(text_); }  // what of it stands
  std::string End() { return std::move(text_ += '}'); }

 private:
  std::string text_ = "{";
};

void AppendElement(std::string& array, const std::string& json) {
  array.append(array.size() > 1 ? "," : "").append(json);
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

// Rank 0 is that of a model that was not solved.
std::string ModelObject(const ModelClass& model, std::size_t rank, std::size_t points) {
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
  return object.TextOrNull("message", rank > 0 ? "" : model.Failure).End();
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

std::string Line(const RunResult& run, const std::string& models) {
  JsonObject object = Beginning(run);
  object.Text("data", run.Data);
  if (!run.Series.empty()) object.Text("series", run.Series);
  object.Raw("status", std::to_string(run.Status)).TextOrNull("message", run.Message);
  return object.Raw("models", models).End();
}

}  // namespace

std::string ResultBeginning(const RunResult& run) { return Beginning(run).Open(); }

std::string ResultLine(const RunResult& run) { return Line(run, "[]"); }

std::string ResultLine(const RunResult& run, const ModelCollection& models, const SolveData& data, int sortKey) {
  std::string array = "[";
  std::size_t rank = 0;
  for (const ModelClass* model : RankModels(models, sortKey))
    AppendElement(array, ModelObject(*model, ++rank, data.N()));
  for (const auto& model : models)
    if (model->Solve && !model->Solved) AppendElement(array, ModelObject(*model, 0, data.N()));
  return Line(run, array += ']');
}

}  // namespace quorvex
