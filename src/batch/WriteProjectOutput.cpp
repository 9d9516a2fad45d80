#include "batch/WriteProjectOutput.h"

#include "files/ProjectFile.h"
#include "project/Project.h"

namespace quorvex {

int WriteProjectOutput(const ModelCollection& models, const SolveData& unsorted, const MacroSetup& setup,
                       const LocaleText& locale, const std::string& path) {
  const SolveLimits limits{setup.RegressionTolerance, setup.MaxIterations, setup.UnchangedIterations};
  Project project = ProjectOfSolve(unsorted, setup.Weighted, models, limits, locale);
  project.Notes = setup.Comment;
  return WriteProject(project, path);
}

}  // namespace quorvex
