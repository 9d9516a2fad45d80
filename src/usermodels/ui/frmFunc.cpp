#include "usermodels/ui/frmFunc.h"

namespace quorvex {
namespace {

QString Text(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

QStringList Rows(std::size_t independentVariables) {
  QStringList rows;
  for (const ModelFunction& function : ModelFunctions(independentVariables))
    rows << Text(function.Name) + "(" + Text(function.Arguments).replace(",", ", ") + ")   " + Text(function.Meaning);
  return rows;
}

}  // namespace

frmFunc::frmFunc(QWidget* parent, std::size_t independentVariables)
    : ListChooser(parent, "Model Functions", "F&unction:", Rows(independentVariables)),
      functions_(ModelFunctions(independentVariables)) {
  setObjectName("frmFunc");
}

}  // namespace quorvex
