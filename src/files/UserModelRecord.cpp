#include "files/UserModelRecord.h"

#include "core/NumberText.h"

namespace quorvex {
namespace {

constexpr std::string_view kBeginDescription = "Begin_description", kEndDescription = "End_description";

}  // namespace

void WriteFunctionList(FieldWriter& out, const ModelClass& model, const LocaleText& locale) {
  for (int n = 0; n < kFunctionLines; ++n) out.Line(EncodeLocaleText(model.FunctionList(n), locale));
}

void WriteUserModel(FieldWriter& out, const ModelClass& model, bool inProject, const LocaleText& locale) {
  WriteFunctionList(out, model, locale);
  out.Line(model.id);
  out.Line(kBeginDescription);
  std::string description(inProject ? model.Description : Trim(model.Description));
  if (description == kEndDescription) description += ' ';  // or the reader would take it for the end
  if (inProject || !description.empty()) out.Line(description);
  out.Line(kEndDescription);
  out.Line(model.NumDependentVar());
  for (int i = 1; i <= model.NumDependentVar(); ++i)
    out.Line(model.Rules(i), EncodeLocaleText(model.RuleConstant(i), locale));
  for (int i = 1; i <= model.NumDependentVar(); ++i) out.Line(EncodeLocaleText(model.Derivatives(i), locale));
}

UserModelDefinition ReadUserModel(FieldReader& in, const std::string& modelLine, bool hasDerivatives,
                                  const LocaleText& locale) {
  UserModelDefinition definition;
  definition.FunctionList = {DecodeLocaleText(modelLine, locale)};
  for (int n = 1; n < kFunctionLines; ++n) definition.FunctionList.push_back(DecodeLocaleText(in.Text(), locale));
  while (definition.FunctionList.size() > 1 && definition.FunctionList.back().empty())
    definition.FunctionList.pop_back();
  definition.id = in.Text();
  in.Expect(kBeginDescription);
  for (std::string part = in.Text(); in.Good() && part != kEndDescription; part = in.Text())
    definition.Description += part;
  while (definition.Description.ends_with('\r') || definition.Description.ends_with('\n'))
    definition.Description.pop_back();
  const std::int32_t n = in.Integer();
  for (std::int32_t i = 0; i < n && in.Good(); ++i) {
    std::string rule = in.Text();
    definition.Coefficients.push_back({std::move(rule), DecodeLocaleText(in.Text(), locale), "Numerical"});
  }
  if (hasDerivatives)
    for (auto& coefficient : definition.Coefficients) coefficient.Derivative = DecodeLocaleText(in.Text(), locale);
  return definition;
}

}  // namespace quorvex
