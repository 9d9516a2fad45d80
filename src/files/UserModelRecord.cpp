#include "files/UserModelRecord.h"

#include <utility>

namespace quorvex {
namespace {

constexpr int kFirstWithDerivatives = 40;
constexpr std::string_view kEndDescription = "End_description";

const UserModelDefinition::Coefficient kFresh{"", "", "Numerical"};

// `description` is in pieces: a file may have it in any number of texts.
template <typename Io, typename Model, typename Texts>
void ListFields(Io& io, Model& model, Texts& description) {
  for (auto& line : model.FunctionList) io(ModelText{line});
  io(model.id);
  io.Mark("Begin_description");
  io.TextsUntil(kEndDescription, description);
  auto count = static_cast<std::int32_t>(model.Coefficients.size());
  io(count);  // one below zero is none, which leaves the model out and spares the file
  io.Elements(count, model.Coefficients, kFresh, [&](auto& c) { io(c.Rule, ModelText{c.RuleConstant}); });
  for (auto& coefficient : model.Coefficients) io.Since(kFirstWithDerivatives, ModelText{coefficient.Derivative});
}

std::vector<std::string> DescriptionTexts(const ModelClass& model, ModelHome home) {
  std::string description(home == ModelHome::Project ? model.Description : Trim(model.Description));
  if (home == ModelHome::ModelFile && description.empty()) return {};
  if (description == kEndDescription) description += ' ';  // or the reader would take it for the end
  return {std::move(description)};
}

std::string DescriptionOf(const std::vector<std::string>& texts) {
  std::string description;
  for (const std::string& text : texts) description += text;
  while (description.ends_with('\r') || description.ends_with('\n')) description.pop_back();
  return description;
}

}  // namespace

std::vector<std::string> FunctionLines(const ModelClass& model) {
  std::vector<std::string> lines;
  for (int n = 0; n < kMostFunctionLines; ++n) lines.push_back(model.FunctionList(n));
  return lines;
}

std::vector<std::string> UsedLines(std::vector<std::string> lines) {
  while (lines.size() > 1 && lines.back().empty()) lines.pop_back();
  return lines;
}

void WriteUserModel(RecordWriter& io, const ModelClass& model, ModelHome home) {
  UserModelDefinition definition = DefinitionOf(model);
  definition.FunctionList.resize(kMostFunctionLines);
  const std::vector<std::string> description = DescriptionTexts(model, home);
  ListFields(io, std::as_const(definition), description);
}

UserModelDefinition ReadUserModel(RecordReader& io) {
  UserModelDefinition definition;
  definition.FunctionList.resize(kMostFunctionLines);
  std::vector<std::string> description;
  ListFields(io, definition, description);
  definition.FunctionList = UsedLines(std::move(definition.FunctionList));
  definition.Description = DescriptionOf(description);
  return definition;
}

}  // namespace quorvex
