#include "selection/ui/frmVarSelect.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QVBoxLayout>
#include <array>

#include "core/NumberText.h"
#include "core/ui/Controls.h"
#include "selection/SelectionData.h"
#include "selection/ui/frmStepWise.h"
#include "selection/ui/frmUserSelect.h"
#include "sheet/ColumnNames.h"

namespace quorvex {
namespace {

// The options of a search. On OK the data are prepared by them, too, and stay open where that fails.
class frmVarSelect : public QDialog {
 public:
  frmVarSelect(QWidget* parent, const DataSheet& sheet, const GatheredData& gathered, const LocaleText& locale,
               Prompter& user);

  VarSelect Choices;
  std::optional<SelectionData> Data;  // once it is accepted

 private:
  QWidget* Procedures();
  QWidget* Significance();
  QWidget* Subsets();
  QWidget* Model();
  QWidget* Lists();
  QListWidget* CandidateList(const char* name, const QString& accessibleName);
  void FillLists();
  std::vector<bool> Marked(const QListWidget& list) const;
  void Accept();

  const DataSheet& sheet_;
  const GatheredData& gathered_;
  const LocaleText& locale_;
  Prompter& user_;
  QButtonGroup *optnVarSelect, *optnRank;
  std::array<QLineEdit*, 2> txtPStat;
  QLineEdit* txtNumToReturn;
  QCheckBox *ckIntercept, *ckProducts;
  QComboBox* cmbYTransform;
  QListWidget *lstExclude, *lstInclude;
};

frmVarSelect::frmVarSelect(QWidget* parent, const DataSheet& sheet, const GatheredData& gathered,
                           const LocaleText& locale, Prompter& user)
    : QDialog(parent), sheet_(sheet), gathered_(gathered), locale_(locale), user_(user) {
  setObjectName("frmVarSelect");
  setWindowTitle("Variable Selection");
  Choices.NumIV = sheet.IndependentVariables;
  auto* left = new QVBoxLayout;
  for (QWidget* part : {Procedures(), Significance(), Subsets(), Model()}) left->addWidget(part);
  left->addStretch();
  auto* row = new QHBoxLayout;
  row->addLayout(left);
  row->addWidget(Lists(), 1);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &frmVarSelect::Accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* all = new QVBoxLayout(this);
  all->addLayout(row);
  all->addWidget(buttons);
  FillLists();
  connect(ckProducts, &QCheckBox::toggled, this, &frmVarSelect::FillLists);
  optnVarSelect->checkedButton()->setFocus();
}

QWidget* frmVarSelect::Procedures() {
  constexpr std::array<const char*, 5> kCaptions = {"&Forward Selection", "&Backward Elimination",
                                                    "Ste&pwise Selection", "&All Subsets", "&Manual Selection"};
  auto* box = new QGroupBox("Procedure", this);
  auto* column = new QVBoxLayout(box);
  optnVarSelect = new QButtonGroup(this);
  for (int i = 0; i < static_cast<int>(kCaptions.size()); ++i) {
    auto* option = Named(new QRadioButton(kCaptions[static_cast<std::size_t>(i)], box),
                         qPrintable("optnVarSelect" + QString::number(i)));
    optnVarSelect->addButton(option, i);
    column->addWidget(option);
  }
  optnVarSelect->button(static_cast<int>(Choices.WhichModel))->setChecked(true);
  return box;
}

QWidget* frmVarSelect::Significance() {
  const auto text = [this](double p) { return QString::fromStdString(LocalizeExpression(GeneralNumber(p), locale_)); };
  auto* box = new QGroupBox("Significance", this);
  auto* form = new QFormLayout(box);
  txtPStat = {Named(new QLineEdit(text(Choices.PToEnter), box), "txtPStat0"),
              Named(new QLineEdit(text(Choices.PToRemove), box), "txtPStat1")};
  form->addRow("p To &Enter:", txtPStat[0]);
  form->addRow("p To &Remove:", txtPStat[1]);
  return box;
}

QWidget* frmVarSelect::Subsets() {
  constexpr std::array<const char*, 3> kCaptions = {"R^&2", "R&SS", "S&td. Error"};
  auto* box = new QGroupBox("All Subsets", this);
  auto* form = new QFormLayout(box);
  txtNumToReturn = Named(new QLineEdit(QString::number(Choices.VarsToReturn), box), "txtNumToReturn");
  form->addRow("Ma&x. Variables:", txtNumToReturn);
  optnRank = new QButtonGroup(this);
  auto* row = new QHBoxLayout;
  for (int i = 0; i < static_cast<int>(kCaptions.size()); ++i) {
    auto* option = Named(new QRadioButton(kCaptions[static_cast<std::size_t>(i)], box),
                         qPrintable("optnRank" + QString::number(i)));
    option->setAccessibleDescription("Ranks the combinations by it.");
    optnRank->addButton(option, i);
    row->addWidget(option);
  }
  optnRank->button(static_cast<int>(Choices.RankBy))->setChecked(true);
  form->addRow("Rank by:", row);
  return box;
}

QWidget* frmVarSelect::Model() {
  auto* box = Named(new QGroupBox("Model Properties", this), "frameIntercept");
  auto* column = new QVBoxLayout(box);
  ckIntercept = Named(new QCheckBox("Model has an &intercept", box), "ckIntercept");
  ckIntercept->setChecked(Choices.Intercept);
  ckProducts = Named(new QCheckBox("Show X column s&quares and cross-products", box), "ckProducts");
  cmbYTransform = Named(new QComboBox(box), "cmbYTransform");
  for (const char* name : kYTransformNames) cmbYTransform->addItem(name);
  auto* transform = new QHBoxLayout;
  transform->addWidget(LabelFor(cmbYTransform, "&Y Transform:", box));
  transform->addWidget(cmbYTransform, 1);
  column->addWidget(ckIntercept);
  column->addLayout(transform);
  column->addWidget(ckProducts);
  return box;
}

QListWidget* frmVarSelect::CandidateList(const char* name, const QString& accessibleName) {
  auto* list = Named(new QListWidget(this), name);
  list->setAccessibleName(accessibleName);
  list->setSelectionMode(QAbstractItemView::MultiSelection);
  list->setMinimumWidth(38 * fontMetrics().averageCharWidth());
  return list;
}

QWidget* frmVarSelect::Lists() {
  auto* side = new QWidget(this);
  auto* column = new QVBoxLayout(side);
  column->setContentsMargins(0, 0, 0, 0);
  lstExclude = CandidateList("lstExclude", "Do not include these selected variables");
  lstInclude = CandidateList("lstInclude", "Always include these selected variables");
  column->addWidget(LabelFor(lstExclude, "&Do not include these selected variables:", side));
  column->addWidget(lstExclude, 1);
  column->addWidget(LabelFor(lstInclude, "A&lways include these selected variables:", side));
  column->addWidget(lstInclude, 1);
  // A variable is on one of the lists at most.
  const auto part = [this](QListWidget* list, QListWidget* other) {
    connect(list, &QListWidget::itemSelectionChanged, this, [list, other] {
      for (const QListWidgetItem* item : list->selectedItems()) other->item(list->row(item))->setSelected(false);
    });
  };
  part(lstExclude, lstInclude);
  part(lstInclude, lstExclude);
  return side;
}

// What was selected stays so, for the columns of X come first.
void frmVarSelect::FillLists() {
  const std::vector<std::string> names =
      CandidateNames(ColumnNames(sheet_.Headers), Choices.NumIV, ckProducts->isChecked());
  for (QListWidget* list : {lstExclude, lstInclude}) {
    while (list->count() > static_cast<int>(names.size())) delete list->takeItem(list->count() - 1);
    for (std::size_t i = static_cast<std::size_t>(list->count()); i < names.size(); ++i)
      list->addItem(QString::fromStdString(names[i]));
    if (list->currentRow() < 0) list->setCurrentRow(0, QItemSelectionModel::NoUpdate);
  }
}

std::vector<bool> frmVarSelect::Marked(const QListWidget& list) const {
  std::vector<bool> marked;
  for (int i = 0; i < list.count(); ++i) marked.push_back(list.item(i)->isSelected());
  return marked;
}

void frmVarSelect::Accept() {
  Choices.WhichModel = static_cast<SelectionProcedure>(optnVarSelect->checkedId());
  Choices.RankBy = static_cast<SubsetRank>(optnRank->checkedId());
  Choices.YTransform = static_cast<YTransform>(cmbYTransform->currentIndex());
  Choices.Intercept = ckIntercept->isChecked();
  Choices.CrossProducts = ckProducts->isChecked();
  Choices.Exclude = Marked(*lstExclude);
  Choices.Include = Marked(*lstInclude);
  if (!Choices.Accept(txtPStat[0]->text().toStdString(), txtPStat[1]->text().toStdString(),
                      txtNumToReturn->text().toStdString(), gathered_.Points.N(), locale_, user_))
    return;
  Result<SelectionData> prepared = PrepareSelection(gathered_, sheet_, Choices, locale_);
  if (!prepared) return user_.Refuse(prepared.error());
  Data = std::move(*prepared);
  accept();
}

}  // namespace

void ShowVariableSelection(QWidget* over, const DataSheet& sheet, const LocaleText& locale, Settings& settings,
                           Prompter& user) {
  const std::optional<GatheredData> gathered = GatherForSelection(sheet, settings, user);
  if (!gathered) return;
  frmVarSelect setup(over, sheet, *gathered, locale, user);
  if (setup.exec() != QDialog::Accepted) return;
  if (setup.Choices.WhichModel == SelectionProcedure::Manual)
    frmUserSelect(over, std::move(*setup.Data), setup.Choices.Intercept, locale, settings, user).exec();
  else
    frmStepWise(over, std::move(*setup.Data), setup.Choices, locale, settings, user).exec();
}

}  // namespace quorvex
