#include "selection/VarSelect.h"

#include <cmath>

#include "core/NumberText.h"

namespace quorvex {
namespace {

// From this number of candidates on there are more combinations than a report has rows, and the search is asked about.
constexpr std::size_t kManyCandidates = 16;

bool TakeProbability(const std::string& text, const char* name, const LocaleText& locale, Prompter& user, double& p) {
  const auto value = NumericText(text, locale.DecimalSeparator);
  if (!value || !(*value >= 0 && *value <= 1)) {
    user.Refuse(std::string(name) + " must be between 0.0 and 1.0.");
    return false;
  }
  p = *value;
  return true;
}

// Whether a list leaves at least two variables to choose from.
bool LeavesChoice(std::size_t left, const std::string& list, Prompter& user) {
  if (left >= 2) return true;
  user.Refuse((left == 0
                   ? "There are no independent variables left for the selection process. You need to de-select at "
                     "least two independent variables in the '"
                   : "There is only one independent variable left for the selection process. You need to "
                     "de-select at least one independent variable in the '") +
              list + "' list to continue.");
  return false;
}

}  // namespace

std::vector<std::string> CandidateNames(const std::vector<std::string>& headers, std::size_t independentVariables,
                                        bool products) {
  std::vector<std::string> names(headers.begin(), headers.begin() + static_cast<std::ptrdiff_t>(independentVariables));
  if (!products) return names;
  for (std::size_t i = 0; i < independentVariables; ++i) names.push_back(headers[i] + "^2");
  for (std::size_t i = 0; i < independentVariables; ++i)
    for (std::size_t j = i + 1; j < independentVariables; ++j) names.push_back(headers[i] + "*" + headers[j]);
  return names;
}

std::size_t VarSelect::Candidates() const {
  std::size_t count = 0;
  for (const bool excluded : Exclude) count += excluded ? 0 : 1;
  return count;
}

std::size_t VarSelect::Free() const {
  std::size_t count = 0;
  for (std::size_t i = 0; i < Exclude.size(); ++i) count += !Exclude[i] && !Include[i] ? 1 : 0;
  return count;
}

bool VarSelect::Accept(const std::string& pToEnter, const std::string& pToRemove, const std::string& varsToReturn,
                       std::size_t points, const LocaleText& locale, Prompter& user) {
  const auto refuse = [&](const char* text) {
    user.Refuse(text);
    return false;
  };
  if (!TakeProbability(pToEnter, "p To Enter", locale, user, PToEnter) ||
      !TakeProbability(pToRemove, "p To Remove", locale, user, PToRemove))
    return false;
  if (!(PToEnter < PToRemove)) return refuse("p To Enter must be less than p To Remove.");
  const auto most = NumericText(varsToReturn, locale.DecimalSeparator);
  if (!most || *most != std::floor(*most) || *most < 1 || *most > kMostVariablesToReturn)
    return refuse("Maximum number of variables to return must be between 1 and 20.");
  VarsToReturn = static_cast<int>(*most);
  if (WhichModel == SelectionProcedure::Backward && Candidates() + (Intercept ? 1 : 0) >= points)
    return refuse(
        "There are too few data points to perform backward elimination. Please select another option, or exclude some "
        "of the independent variables.");
  if (!AcceptLists(user)) return false;
  if (WhichModel != SelectionProcedure::AllSubsets) return true;
  if (Candidates() - Free() > static_cast<std::size_t>(VarsToReturn))
    return refuse(
        "The 'Always include' list has more variables than the maximum number of variables to return. Please de-select "
        "some of them or increase the maximum.");
  return Free() < kManyCandidates || user.Ask("There is a large number of combinations to examine (2 ^ " +
                                              std::to_string(Free()) + "). Do you wish to continue?");
}

bool VarSelect::AcceptLists(Prompter& user) const {
  return LeavesChoice(Candidates(), "Do not include", user) && LeavesChoice(Free(), "Always include", user);
}

}  // namespace quorvex
