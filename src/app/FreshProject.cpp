#include "app/FreshProject.h"

#include <algorithm>

#include "files/UserModelFiles.h"
#include "import/ColumnAssignment.h"

namespace quorvex {

ProjectKind DefaultKind(const Settings& settings) {
  const int variables = std::clamp(settings.Integer("default_numiv"), 1, kMostIndependentVariables);
  return {static_cast<std::size_t>(variables), settings.Flag("default_showsdev")};
}

ProjectKind KindForColumns(const std::vector<std::string>& columns) {
  const DataSheet sheet = SheetForColumns(columns);
  return {sheet.IndependentVariables, sheet.HasStandardDeviation};
}

Project FreshProject(const ProjectKind& kind, const std::string& name, const Settings& settings,
                     const LocaleText& locale) {
  Project project = NewProject(kind.IndependentVariables, kind.HasStandardDeviation, locale);
  project.FileName = name;
  if (settings.Integer("loadusermodels") != 0)
    AddUserModels(project.Models, settings.Text("usermodelfile"), kind.IndependentVariables, locale);
  project.Limits = {settings.ResidualTolerance, settings.MaxIterations, settings.DivIterations};
  return project;
}

std::string NextUntitled(const std::vector<std::string>& taken) {
  std::string name = "Untitled";
  for (int i = 2; std::ranges::find(taken, name) != taken.end(); ++i) name = "Untitled " + std::to_string(i);
  return name;
}

}  // namespace quorvex
