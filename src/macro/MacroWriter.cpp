#include "macro/MacroWriter.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>
#include <variant>

#include "core/NumberText.h"
#include "core/SaveFile.h"
#include "macro/MacroStatements.h"

namespace quorvex {
namespace {

// A field as a statement can hold it; a line end of two characters becomes one blank.
std::string OneLine(std::string_view text) {
  std::string line;
  while (!text.empty()) {
    if (!line.empty()) line += ' ';
    line += TakeLine(text);
  }
  std::replace(line.begin(), line.end(), '\t', ' ');
  return std::string(Trim(line));
}

std::string TrueOrFalse(bool value) { return value ? "True" : "False"; }

std::string LimitText(double limit, const LocaleText& locale) {
  return LocalizeExpression(GeneralNumber(limit), locale);
}

// Left empty, and rightly so.
bool IsReplaced(const MacroStatement& statement, const MacroFields& fields) {
  return statement.Instead != nullptr && !OneLine(fields.*statement.Instead).empty() &&
         OneLine(fields.*TypedField(statement)).empty();
}

// The values with which a statement of that kind is written, one each; none where it is left out.
class Values {
 public:
  Values(const MacroFields& fields, const Settings& preferences, const LocaleText& locale)
      : fields_(fields), preferences_(preferences), locale_(locale) {}

  std::vector<std::string> Of(const MacroStatement& statement) const {
    if (statement.Only != nullptr && !(fields_.*statement.Only)) return {};
    if (IsReplaced(statement, fields_)) return {};
    if (statement.UnlessDefault && SaysDefault(statement)) return {};
    if (statement.OfTexts && EqualNoCase(fields_.OutputFormat, "Quorvex")) return {};  // a project has its own layout
    return std::visit([this](const auto& kind) { return Texts(kind); }, statement.Value);
  }

 private:
  using List = std::vector<std::string>;

  bool SaysDefault(const MacroStatement& statement) const {
    const auto* choice = std::get_if<ChoiceValue>(&statement.Value);
    const auto field = choice != nullptr ? choice->Chosen : TypedField(statement);
    return EqualNoCase(OneLine(fields_.*field), MacroFields().*field);
  }

  List Texts(const LinesValue& given) const {
    List lines;
    for (std::string_view rest = fields_.*given.Typed; !rest.empty();) lines.emplace_back(TakeLine(rest));
    if (OneLine(fields_.*given.Typed).empty() && !given.Placeholder.empty()) return {std::string(given.Placeholder)};
    return lines;
  }
  List Texts(const TextValue& text) const {
    const std::string typed = Typed(text.Typed, text.Placeholder);
    return typed.empty() ? List() : List{typed};
  }
  template <typename Number>
  List Texts(const LimitValue<Number>& limit) const {
    return {Typed(limit.Typed, LimitText(preferences_.*limit.Preference, locale_))};
  }
  template <typename Number>
  List Texts(const NumberValue<Number>& number) const {
    return {Typed(number.Typed, "")};
  }
  List Texts(const VariablesValue& variables) const { return {Typed(variables.Typed, variables.Placeholder)}; }
  List Texts(const FlagValue& flag) const { return {TrueOrFalse(fields_.*flag.Ticked)}; }
  List Texts(const WordsValue& words) const {
    std::string text;
    for (const MacroWord& word : words.Words)
      if (fields_.*word.Ticked)
        text += (text.empty() ? "" : locale_.ListSeparator + std::string(" ")).append(word.Word);
    return text.empty() ? List() : List{text};
  }
  List Texts(const ChoiceValue& choice) const {
    return choice.Chosen == nullptr ? List() : List{fields_.*choice.Chosen};
  }
  List Texts(const DerivativesValue& derivatives) const { return {fields_.*derivatives.Chosen}; }

  std::string Typed(std::string MacroFields::*field, std::string_view otherwise) const {
    std::string text = OneLine(fields_.*field);
    return text.empty() ? std::string(otherwise) : text;
  }

  const MacroFields& fields_;
  const Settings& preferences_;
  const LocaleText& locale_;
};

class Writer {
 public:
  explicit Writer(const LocaleText& locale) : locale_(locale) {}

  void Begin() { Line(0, "B_MACRO"); }
  void Statement(std::string_view keyword, std::string_view value) {
    Line(4, std::string(keyword) + " = " + OneLine(value));
  }
  void Model(const ModelClass& model);
  std::string End() {
    Line(0, "E_MACRO");
    return std::move(buffer_);
  }

 private:
  std::string Number(double value) const { return LocalizeExpression(GeneralNumber(value), locale_); }
  void Line(std::size_t indent, std::string_view text) { buffer_.append(indent, ' ').append(text).append(NL); }

  const LocaleText& locale_;
  std::string buffer_;
};

// A built-in model is found again by its formula; one of the user's also needs its starts and derivatives.
void Writer::Model(const ModelClass& model) {
  const std::string separator(1, locale_.ListSeparator);
  Line(4, "B_MODEL");
  Line(8, "ID = " + OneLine(model.id));
  for (int i = 1; i < model.FunctionCount(); ++i)
    if (!model.FunctionList(i).empty()) Line(8, "F" + std::to_string(i) + " = " + OneLine(model.FunctionList(i)));
  Line(8, "Y = " + OneLine(model.FunctionList(0)));
  // With the first Assign a built-in model starts from its rules, no longer from its linear form: then from where it
  // is.
  const bool isAssigned = model.UserType || model.HasBounds();
  for (int i = 1; isAssigned && i <= model.NumDependentVar(); ++i) {
    const bool fromValue = !model.UserType && !model.ForceRuleEstimate;
    const std::string start = fromValue ? Number(model.Values(i)) : model.RuleConstant(i);
    const std::string rule = fromValue ? "Value" : model.Rules(i);
    const std::string least =
        std::isfinite(model.Minimum(i)) ? separator + " Minimum = " + Number(model.Minimum(i)) : "";
    const std::string most =
        std::isfinite(model.Maximum(i)) ? separator + " Maximum = " + Number(model.Maximum(i)) : "";
    Line(8, "Assign " + model.Variables(i) + " = " + start + separator + " Operator = " + rule + separator +
                " Fit = " + TrueOrFalse(model.Constants(i) == 1) + separator +
                " Derivative = " + OneLine(model.Derivatives(i)) + least + most);
  }
  for (const DerivedQuantity& report : model.Reports)
    Line(8, "Report = " + OneLine(report.Name) + " = " + OneLine(report.Expression));
  Line(4, "E_MODEL");
}

bool IsChosen(const ModelClass& model, const MacroFields& fields) {
  switch (fields.Models) {
    case MacroModels::Solved:
      return model.Solved;
    case MacroModels::UserDefined:
      return model.UserType;
    case MacroModels::PreDefined:
      return !model.UserType;
    case MacroModels::All:
      return true;
    case MacroModels::Ticked:
      break;
  }
  return std::any_of(fields.TickedModels.begin(), fields.TickedModels.end(),
                     [&](const std::string& id) { return EqualNoCase(id, model.id); });
}

bool IsGiven(const MacroStatement& statement, const MacroFields& fields) {
  if (const auto field = TypedField(statement)) return !OneLine(fields.*field).empty();
  const auto* words = std::get_if<WordsValue>(&statement.Value);
  return words == nullptr ||
         std::ranges::any_of(words->Words, [&](const MacroWord& word) { return word.Suffices && fields.*word.Ticked; });
}

// What is no number counts as 0.
bool IsInRange(const MacroStatement& statement, const MacroFields& fields, const LocaleText& locale) {
  if (const auto* choice = std::get_if<ChoiceValue>(&statement.Value)) {
    MacroSetup read;
    return choice->Read(read, OneLine(fields.*choice->Chosen));
  }
  if (statement.UnlessDefault)
    return NumberWithin(statement, OneLine(fields.*TypedField(statement)), locale).has_value();
  const double value = NumericText(fields.*TypedField(statement), locale.DecimalSeparator).value_or(0);
  return value >= statement.Least && value <= statement.Most;
}

}  // namespace

MacroFields FieldsFor(std::size_t independentVariables, bool weighted, const Settings& preferences,
                      const LocaleText& locale) {
  MacroFields fields;
  const auto fillLimit = [&](const auto& value) {
    if constexpr (requires { value.Typed, value.Preference; })
      fields.*value.Typed = LimitText(preferences.*value.Preference, locale);
  };
  for (const MacroStatement& statement : MacroStatements()) std::visit(fillLimit, statement.Value);
  fields.Derivatives = DerivativeWord(preferences.DerivativeMethod);
  fields.IndependentVariables = std::to_string(independentVariables);
  fields.Weighted = weighted;
  const int sort = preferences.Integer("sortindex");
  if (sort >= 1 && sort <= static_cast<int>(kSortKeys.size()))
    fields.SortKey = kSortKeys[static_cast<std::size_t>(sort - 1)];
  return fields;
}

std::vector<const ModelClass*> ChosenModels(const MacroFields& fields, const ModelCollection& models) {
  std::vector<const ModelClass*> chosen;
  for (const auto& model : models)
    if (IsChosen(*model, fields)) chosen.push_back(model.get());
  return chosen;
}

std::string BuildMacroText(const MacroFields& fields, const ModelCollection& models, const Settings& preferences,
                           const LocaleText& locale) {
  const Values values(fields, preferences, locale);
  Writer writer(locale);
  writer.Begin();
  for (const MacroStatement& statement : MacroStatements())
    for (const std::string& value : values.Of(statement)) writer.Statement(statement.Keyword, value);
  for (const ModelClass* model : ChosenModels(fields, models)) writer.Model(*model);
  return writer.End();
}

std::string MacroFindings::Count() const {
  return "There were " + std::to_string(Errors) + " error(s) and " + std::to_string(Warnings) + " warning(s).";
}

MacroFindings CheckMacro(const MacroFields& fields, const ModelCollection& models, const LocaleText& locale) {
  std::vector<const MacroStatement*> checked;
  for (const MacroStatement& statement : MacroStatements())
    if (statement.FoundAt > 0) checked.push_back(&statement);
  // Findings come in the order of the editor's pages, which is not that of the statements.
  std::ranges::sort(checked, {}, &MacroStatement::FoundAt);

  MacroFindings findings;
  const auto tell = [&](bool isError, std::string_view text) {
    ++(isError ? findings.Errors : findings.Warnings);
    findings.Lines.push_back((isError ? "ERROR: " : "Warning: ") + std::string(text));
  };
  for (const MacroStatement* statement : checked) {
    if (statement->Only != nullptr && !(fields.*statement->Only)) continue;
    if (IsReplaced(*statement, fields)) continue;
    if (!IsGiven(*statement, fields)) {
      if (!statement->Missing.empty()) tell(statement->MissingIsError, statement->Missing);
    } else if (!statement->Invalid.empty() && !IsInRange(*statement, fields, locale)) {
      tell(true, statement->Invalid);
    }
  }
  if (ChosenModels(fields, models).empty()) tell(true, "No regression models have been selected (Models Tab).");
  return findings;
}

bool ExportMacro(const MacroFields& fields, const ModelCollection& models, const Settings& preferences,
                 const LocaleText& locale, Prompter& prompter) {
  const MacroFindings findings = CheckMacro(fields, models, locale);
  if (!findings.Lines.empty() &&
      !prompter.Ask("There are " + std::to_string(findings.Errors) + " errors and " +
                    std::to_string(findings.Warnings) + " warnings. Do you want to export the file anyway?"))
    return false;
  const auto name = prompter.ChooseFileToSave("Export Macro", "Quorvex Macro files (*.cfg)", "cfg");
  if (!name) return false;

  const bool written = SaveFile(*name, BuildMacroText(fields, models, preferences, locale), FileCare::Answer) == 0;
  if (written)
    prompter.Inform("The file '" + *name + "' contains the exported macro.");
  else
    prompter.Refuse("Error saving macro to '" + *name + "'.");
  return written;
}

}  // namespace quorvex
