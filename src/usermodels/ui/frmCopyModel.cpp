#include "usermodels/ui/frmCopyModel.h"

namespace quorvex {
namespace {

// The ID and what tells more than it does: the formula or, where that is the ID, the description.
QStringList Rows(const std::vector<ModelClass*>& models) {
  QStringList rows;
  for (const ModelClass* model : models) {
    const std::string& more = model->FunctionList(0) != model->id ? model->FunctionList(0) : model->Description;
    rows << (QString::fromStdString(model->id) + "   " + QString::fromStdString(more).simplified()).trimmed();
  }
  return rows;
}

}  // namespace

frmCopyModel::frmCopyModel(QWidget* parent, const QString& title, std::vector<ModelClass*> models)
    : ListChooser(parent, title, "&Model:", Rows(models)), models_(std::move(models)) {
  setObjectName("frmCopyModel");
}

ModelClass* ChooseModel(QWidget* over, const QString& title, std::vector<ModelClass*> models) {
  frmCopyModel form(over, title, std::move(models));
  return form.exec() == QDialog::Accepted ? &form.Model() : nullptr;
}

}  // namespace quorvex
