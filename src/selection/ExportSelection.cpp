#include "selection/ExportSelection.h"

#include <exception>
#include <filesystem>

#include "core/Files.h"
#include "core/Settings.h"
#include "engine/UserModel.h"
#include "files/ProjectFile.h"

namespace quorvex {
namespace {

constexpr const char* kNotSaved = "The variable selection results cannot be saved in Quorvex format.";

std::string Letter(std::size_t i) { return std::string(1, static_cast<char>('a' + i)); }

// "a*x1+b*x2+c" or, as the catalogue has it for two variables, "a+b*x1+c*x2".
std::string LinearText(std::size_t variables, bool intercept, bool interceptFirst) {
  std::string text = intercept && interceptFirst ? "a" : "";
  const std::size_t first = text.size();
  for (std::size_t j = 0; j < variables; ++j)
    text += (text.empty() ? "" : "+") + Letter(first + j) + "*x" + (variables == 1 ? "" : std::to_string(j + 1));
  return intercept && !interceptFirst ? text + "+" + Letter(variables) : text;
}

// The linear model of the project's variables: that of the catalogue, else one of the user's.
ModelClass* LinearModel(Project& project, bool intercept) {
  const std::size_t variables = project.Sheet.IndependentVariables;
  for (const bool interceptFirst : {false, true})
    if (ModelClass* model = project.Models.Find(LinearText(variables, intercept, interceptFirst))) return model;
  const std::string text = LinearText(variables, intercept, false);
  const UserModelDefinition definition{
      text,
      {text},
      "Linear model",
      std::vector(variables + (intercept ? 1 : 0), UserModelDefinition::Coefficient{"Value", "1", "Numerical"})};
  auto model = MakeUserModel(definition, variables, project.Locale);
  return model == nullptr ? nullptr : project.Models.Add(text, std::move(model));
}

// The coefficients in the order of the model's letters.
std::vector<SubsetCoefficient> InModelOrder(const SubsetFit& fit, const ModelClass& model) {
  std::vector<SubsetCoefficient> ordered = fit.Coefficients;
  if (!fit.Intercept) return ordered;
  const bool first = model.id == LinearText(fit.Variables.size(), true, true);
  ordered.insert(first ? ordered.begin() : ordered.end(), *fit.Intercept);
  return ordered;
}

}  // namespace

std::optional<Project> ProjectOf(const SubsetFit& fit, const SelectionData& data, const LocaleText& locale) {
  Project project = NewProject(fit.Variables.size(), data.Weighted, locale);
  DataSheet& sheet = project.Sheet;
  std::size_t column = 0;
  const auto add = [&](const std::string& header, const std::vector<double>& values) {
    sheet.Headers[column++] = header;
    for (std::size_t i = 0; i < values.size(); ++i) sheet.Cells.SetGridCellNumber(i + 1, column, values[i]);
  };
  for (const std::size_t variable : fit.Variables) add(data.Names[variable], data.X[variable]);
  add(data.YName, data.Y);
  if (data.Weighted) add(sheet.Headers[column], data.SD);

  ModelClass* const model = LinearModel(project, fit.Intercept.has_value());
  const GatheredData points = GatherData(sheet);
  if (model == nullptr) return std::nullopt;
  const std::vector<SubsetCoefficient> coefficients = InModelOrder(fit, *model);
  std::vector<ICRange> starts;
  for (std::size_t i = 0; i < coefficients.size(); ++i) {
    model->SetValue(static_cast<int>(i) + 1, coefficients[i].Value);
    starts.push_back({coefficients[i].Value, coefficients[i].Value, 1});
  }
  // The fit fills in all that a solved model has; the coefficients are then those of the report to the last digit.
  model->SolveType = model->UserType ? 0 : 1;
  model->SpecifyICComplete = true;
  model->SetICRange(starts);
  std::string log;
  SolveForm unattended;
  if (!model->Fit(points.Points, Settings(), log, unattended)) return std::nullopt;
  for (std::size_t i = 0; i < coefficients.size(); ++i) {
    model->SetValue(static_cast<int>(i) + 1, coefficients[i].Value);
    model->SetCovariance(static_cast<int>(i) + 1, coefficients[i].Variance);
  }
  model->SetICRange(std::move(starts));
  model->SpecifyICComplete = false;
  if (!model->GetGoodnessOfFit(points.Points, model->NumDependentVar())) return std::nullopt;
  return project;
}

bool ExportSelection(const SubsetFit& model, const SelectionData& data, const LocaleText& locale, Prompter& user) {
  const auto refuse = [&](const std::string& text) {
    user.Refuse(text);
    return false;
  };
  const std::size_t variables = model.Variables.size();
  if (variables > static_cast<std::size_t>(kMostIndependentVariables))
    return refuse("You can have up to 20 independent variables in a Quorvex project, the current model contains " +
                  std::to_string(variables) + ". " + kNotSaved);
  if (variables == 0) return refuse(std::string("There are no variables left for a solution. ") + kNotSaved);
  try {
    const std::optional<Project> project = ProjectOf(model, data, locale);
    if (!project) return refuse("Model creation failed.");
    const auto name = user.ChooseFileToSave("Save As", "Project files (*.qvx)", "qvx");
    if (!name) return false;
    if (const int error = WriteProject(*project, *name))
      return refuse("Error saving project to '" + *name + "'. " + FileErrorText(error));
    user.Inform("The file '" + *name +
                "' contains the solved project which can be opened from the main Quorvex window.");
    return true;
  } catch (const std::exception&) {
    return refuse("An error occurred while saving the file.");
  }
}

bool ExportResult(const SelectionResult& result, const SelectionData& data, const VarSelect& choices,
                  std::size_t chosen, const LocaleText& locale, Prompter& user) {
  // A search without a step leaves a model without variables.
  if (choices.WhichModel != SelectionProcedure::AllSubsets)
    return ExportSelection(result.Steps.empty() ? SubsetFit() : result.Steps.back().Fit, data, locale, user);
  const auto refuse = [&](const std::string& text) {
    user.Refuse(text);
    return false;
  };
  if (result.Subsets.empty())
    return refuse("There are no successfully solved combinations to save as a Quorvex project file.");
  const RankedSubset& subset = result.Subsets[chosen < result.Subsets.size() ? chosen : 0];
  const auto fit = SubsetSolver(data, choices.Intercept, SelectionForm()).Fit(subset.Variables);
  return fit ? ExportSelection(*fit, data, locale, user) : refuse(fit.error());
}

}  // namespace quorvex
