#include "app/FreshProject.h"

#include <algorithm>

#include "files/UserModelFiles.h"
#include "import/DeviationColumn.h"

namespace quorvex {

ProjectKind DefaultKind(const Settings& settings) {
  const int variables = std::clamp(settings.Integer("default_numiv"), 1, kMostIndependentVariables);
  return {static_cast<std::size_t>(variables), settings.Flag("default_showsdev")};
}

ProjectKind KindForColumns(const std::vector<std::string>& columns) {
  const bool deviation = DeviationColumn(columns) != 0;
  const std::size_t others = deviation ? 2 : 1, count = std::max(columns.size(), others + 1) - others;
  return {std::min<std::size_t>(count, kMostIndependentVariables), deviation};
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
