#include "results/ReportedQuantities.h"

#include <algorithm>
#include <utility>

#include "core/NumberText.h"
#include "diagnosis/DerivedQuantity.h"
#include "engine/ModelClass.h"

namespace quorvex {

std::string QuantitiesText(const std::vector<DerivedQuantity>& quantities) {
  std::string text;
  for (const DerivedQuantity& one : quantities) text += one.Name + " = " + one.Expression + "\n";
  return text;
}

Result<std::vector<DerivedQuantity>> ReadQuantities(std::string_view text) {
  std::vector<DerivedQuantity> quantities;
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = Trim(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.empty()) continue;
    const auto refuse = [&](const std::string& why) { return Failure{"Line " + std::to_string(number) + ": " + why}; };
    const std::size_t sign = std::min(line.find('='), line.size());
    const DerivedQuantity one{std::string(Trim(line.substr(0, sign))),
                              std::string(Trim(line.substr(std::min(sign + 1, line.size()))))};
    if (one.Name.empty() || one.Expression.empty()) return refuse("a quantity is written as 'name = expression'.");
    quantities.push_back(one);
  }
  return quantities;
}

bool ReportQuantities(ProjectEditor& editor, ModelClass& model, std::string_view text, Prompter& user) {
  const auto quantities = ReadQuantities(text);
  if (!quantities) {
    user.Refuse(quantities.error());
    return false;
  }
  if (*quantities == model.Reports) return true;
  const std::vector<DerivedQuantity> before = std::exchange(model.Reports, *quantities);
  const std::vector<std::string> faults = ReportFaults(model);
  model.Reports = before;
  for (const std::string& fault : faults)
    if (!fault.empty()) {
      user.Refuse(fault);
      return false;
    }
  editor.Edit.PushUndo(UndoLabelOfModel(UndoOperation::ReportQuantities, model.id), {});
  model.Reports = *quantities;
  return true;
}

}  // namespace quorvex
