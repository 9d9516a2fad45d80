#include "usermodels/UserModelDraft.h"

#include <algorithm>

#include "core/Files.h"
#include "core/NumberText.h"
#include "equation/Expression.h"

namespace quorvex {
namespace {

const std::string kNewLine(NL);
const std::string kNotValid = "The model you entered is not valid.";

// The words in which the two kinds of model differ.
struct Words {
  const char *Cyclic, *Missing;
};

constexpr Words kOneVariable = {
    "Cyclic expression detected. A function (Fn = ?) which points to a function that points back to itself cannot be "
    "resolved. Please check your model definition.",
    "The model definition is missing a required function (Fn = ?). Please recheck your model definition."};
constexpr Words kSeveralVariables = {
    "Cyclic expression detected. A function (Fn = ?) which points to a function that points back to itself cannot be "
    "resolved. Please check your equation definition.",
    "The equation definition is missing a required function (Fn = ?). Please recheck your equation definition."};

ModelCheck Refused(std::string message, int box, int start = -1, int length = -1) {
  return {nullptr, std::move(message), box, start, length};
}

// Parsed, but without something that every model has.
ModelCheck Lacking(const std::string& what) {
  return Refused(kNotValid + kNewLine + what + kNewLine + "Please check the equation syntax.", 0);
}

bool IsBlank(const std::string& text) { return Trim(text).empty(); }

std::string FromX1To(std::size_t last) { return "'X1' to 'X" + std::to_string(last) + "'"; }

// "a, b, c"; of very many, the first ones and how many more there are.
std::string Listed(const std::vector<std::string>& names) {
  constexpr std::size_t kShown = 20;
  std::string list;
  for (std::size_t i = 0; i < std::min(names.size(), kShown); ++i) list += (i == 0 ? "" : ", ") + names[i];
  return names.size() <= kShown ? list : list + " and " + std::to_string(names.size() - kShown) + " more";
}

// The first line that is not there, functions before the model itself; no message where all are.
ModelCheck CheckLines(const std::vector<std::string>& lines) {
  const auto blank = std::find_if(lines.begin() + 1, lines.end(), IsBlank);
  const std::string last = std::to_string(lines.size() - 1);
  if (blank != lines.end()) {
    return Refused(lines.size() == 2
                       ? "The supporting function F1 must have a valid entry. If you intend not to use this function, "
                         "you can remove it by clicking on the 'Remove F1' button."
                       : "The supporting functions F1 through F" + last +
                             " must have valid entries. If you intend not to use all of the functions, you can remove "
                             "them sequentially by clicking on the 'Remove F" +
                             last + "' button.",
                   static_cast<int>(blank - lines.begin()));
  }
  return Refused(IsBlank(lines[0]) ? "Please enter a valid equation." : "", 0);
}

// Whether the model is one for data with that many independent variables, which are more than one.
ModelCheck CheckVariables(const Expression& compiled, std::size_t variables) {
  if (static_cast<std::size_t>(compiled.NumIndependentVar) != variables)
    return Refused(VariableMismatch("The model you entered has ", compiled.NumIndependentVar, variables) +
                       ". All independent variables from " + FromX1To(variables) + " must appear in the model.",
                   0);
  if (!compiled.VarsInOrder)
    return Lacking("At least one of the independent variables from " + FromX1To(variables) + " is missing.");
  return {};
}

ModelCheck TestModel(const UserModelDraft& draft, std::size_t variables, const LocaleText& locale) {
  const bool several = variables > 1;
  const Words& words = several ? kSeveralVariables : kOneVariable;
  std::unique_ptr<ModelClass> model = NewModelFor(variables, locale);
  model->SetID(std::string(Trim(draft.id)), draft.FunctionList);
  const Expression& compiled = model->Compiled();
  if (compiled.CyclicError) return Refused(words.Cyclic, 0);
  if (compiled.FuncMissing) return Refused(words.Missing, 0);
  if (compiled.ParseError) {
    const std::string& why = compiled.ParseErrorMessage;
    return Refused(kNotValid + kNewLine +
                       (why.empty() ? "Please check the equation syntax" : why + " Please check the equation syntax."),
                   compiled.PublicSubFunctionPointer,
                   PlaceOfError(compiled, model->FunctionList(compiled.PublicSubFunctionPointer)),
                   compiled.PublicTokenPointerLength);
  }
  if (!compiled.HasCoefficients) return Lacking("It does not appear to contain any fitting parameters.");
  if (!compiled.HasIndependentVar)
    return Lacking(several ? "It does not appear to contain the independent variables from " + FromX1To(variables) + "."
                           : "It does not appear to contain the independent variable 'X'.");
  if (model->NumDependentVar() > kMostCoefficients)
    return Refused("The model you entered contains " + std::to_string(model->NumDependentVar()) +
                       " parameters. The maximum allowed is " + std::to_string(kMostCoefficients) + ".",
                   0);
  if (several)
    if (ModelCheck check = CheckVariables(compiled, variables); !check.Message.empty()) return check;

  model->Description = draft.Description;
  model->Group = "User Defined";
  ApplyCoefficients(draft, *model);
  ModelCheck right;
  right.Model = std::move(model);
  return right;
}

}  // namespace

std::string VariableMismatch(const std::string& subject, int variables, std::size_t projectVariables) {
  return subject + std::to_string(variables) +
         (variables == 1 ? " independent variable, and the current project has "
                         : " independent variables, and the current project has ") +
         std::to_string(projectVariables);
}

UserModelDraft DraftOf(const ModelClass& model) {
  UserModelDefinition definition = DefinitionOf(model);
  UserModelDraft draft{definition.id, definition.Description, std::move(definition.FunctionList), {}};
  KeepCoefficients(model, draft);
  return draft;
}

UserModelDraft CopyOf(const ModelClass& model) {
  UserModelDraft draft = DraftOf(model);
  draft.id = "Copy of " + draft.id;
  return draft;
}

void KeepCoefficients(const ModelClass& model, UserModelDraft& draft) {
  for (int i = 1; i <= model.NumDependentVar(); ++i)
    draft.Coefficients[ToLower(model.Variables(i))] = {model.Rules(i), model.RuleConstant(i), model.Derivatives(i),
                                                       model.Minimum(i), model.Maximum(i)};
}

void ApplyCoefficients(const UserModelDraft& draft, ModelClass& model) {
  for (int i = 1; i <= model.NumDependentVar(); ++i) {
    const auto kept = draft.Coefficients.find(ToLower(model.Variables(i)));
    if (kept == draft.Coefficients.end()) continue;
    model.SetRule(i, kept->second.Rule);
    model.SetRuleConstant(i, kept->second.RuleConstant);
    model.SetDerivative(i, kept->second.Derivative);
    model.SetBounds(i, kept->second.Minimum, kept->second.Maximum);
  }
}

ModelCheck CheckDefinition(const UserModelDraft& draft, std::size_t independentVariables, const LocaleText& locale) {
  ModelCheck lines = CheckLines(draft.FunctionList);
  return lines.Message.empty() ? TestModel(draft, independentVariables, locale) : std::move(lines);
}

ModelCheck CheckUserModel(const UserModelDraft& draft, const Project& project, const ModelClass* edited) {
  const std::string id(Trim(draft.id));
  if (id.empty()) return Refused("You must enter a Model ID.", ModelCheck::kIdBox);
  if (ModelCheck lines = CheckLines(draft.FunctionList); !lines.Message.empty()) return lines;
  const ModelClass* same = project.Models.Find(id);
  if (same != nullptr && same != edited)
    return Refused(
        "The Model ID you entered already exists in the database. Each Model ID must be unique. Please enter a "
        "different ID.",
        ModelCheck::kIdBox);
  return TestModel(draft, project.Sheet.IndependentVariables, project.Locale);
}

std::string CompileStatus(const UserModelDraft& draft, std::size_t independentVariables, const LocaleText& locale) {
  if (IsBlank(draft.FunctionList[0]))
    return independentVariables == 1 ? "For example a*exp(-b*x)" : "For example a*x1+b*x2";
  std::unique_ptr<ModelClass> model = NewModelFor(independentVariables, locale);
  model->SetID("", draft.FunctionList);
  const Expression& compiled = model->Compiled();
  if (std::string reason = WhyNoModel(compiled, "Not a model yet"); !reason.empty()) return reason;
  std::vector<std::string> unused;
  for (std::size_t n = 1; n < draft.FunctionList.size(); ++n) {
    const auto isOfIt = [n](const SourceToken& token) { return token.Owner == static_cast<int>(n); };
    if (std::ranges::none_of(compiled.SourceTokens, isOfIt)) unused.push_back("F" + std::to_string(n));
  }
  std::string status = "Compiles. ";
  for (const std::string& warning : compiled.Warnings) status += warning + " ";
  status += "Coefficients: " + Listed(compiled.CoefficientNames);
  if (!unused.empty()) status += ". Not used: " + Listed(unused);
  return status + ".";
}

}  // namespace quorvex
