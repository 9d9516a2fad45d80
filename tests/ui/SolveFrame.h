#pragma once

#include <QComboBox>
#include <QGroupBox>
#include <QTableView>
#include <cmath>
#include <fstream>
#include <sstream>

#include "Frame.h"
#include "Paths.h"
#include "engine/UserModel.h"
#include "results/ui/frmResults.h"
#include "solve/ui/ProgressWindow.h"

namespace quorvex {

// The frame with what a user does to solve.
class SolveFrame : public Frame {
 protected:
  static void AddUserModel(Project& project, const std::string& id, const std::string& text) {
    auto own = NewModelFor(project.Sheet.IndependentVariables, {});
    own->SetID(id, {text});
    own->UserType = true;
    project.Models.Add(id, std::move(own));
  }
  // A frame with one project: `points` points of a curve, and two models of the user's own.
  void Open(std::size_t points, const std::string& model = "m*x+n") {
    Project project = NewProject(1, false, {});
    for (std::size_t i = 1; i <= points; ++i) {
      const double x = 10.0 * static_cast<double>(i) / static_cast<double>(points);
      project.Sheet.Cells.SetGridCellNumber(i, 1, x);
      project.Sheet.Cells.SetGridCellNumber(i, 2, 2 * x + 1 + std::sin(x * 7) / 4);
    }
    AddUserModel(project, "mine", model);
    AddUserModel(project, "yours", "p*x^2+q");
    ASSERT_EQ(WriteProject(project, folder.Path("curve.qvx")), 0);
    Start();
    frame->OpenFile(QString::fromStdString(folder.Path("curve.qvx")));
  }

  // The same over the first two columns of a file of the test data, behind its line of headings.
  void OpenData(const std::string& file, const std::string& model) {
    Project project = NewProject(1, false, {});
    std::ifstream lines(TestData(file));
    std::string line;
    std::getline(lines, line);
    for (std::size_t row = 1; std::getline(lines, line); ++row) {
      std::istringstream cells(line);
      for (std::size_t col = 1; col <= 2; ++col) {
        double number = 0;
        cells >> number;
        project.Sheet.Cells.SetGridCellNumber(row, col, number);
      }
    }
    ASSERT_GT(project.Sheet.Cells.GridLastRow(), 4u);
    AddUserModel(project, "mine", model);
    ASSERT_EQ(WriteProject(project, folder.Path("data.qvx")), 0);
    Start();
    frame->OpenFile(QString::fromStdString(folder.Path("data.qvx")));
  }

  // Answers the setup; `option` is one of the model selection.
  void AnswerSetup(const char* option, const char* solver = "optNonLinear") {
    dialogs.Do([option, solver](QDialog& dialog) {
      EXPECT_EQ(dialog.windowTitle(), "Solution Setup");
      Click(dialog, option);
      Click(dialog, solver);
      Press(dialog, QDialogButtonBox::Ok);
    });
  }
  void AnswerGroup(const QString& name, const char* solver = "optNonLinear") {
    AnswerSetup("optGroups", solver);
    dialogs.Do([name](QDialog& dialog) {
      QListWidget& groups = List(dialog, "group_list");
      for (int i = 0; i < groups.count(); ++i)
        groups.item(i)->setCheckState(groups.item(i)->text() == name ? Qt::Checked : Qt::Unchecked);
      Press(dialog, QDialogButtonBox::Ok);
    });
  }
  void AnswerModel(const QString& id) {
    dialogs.Do([id](QDialog& dialog) {
      EXPECT_EQ(dialog.windowTitle(), "Single Model Regression Setup");
      Choose(List(dialog, "eq_list"), id);
      Click(dialog, "solve_command");
    });
  }
  void SolveOne(const QString& id) {
    AnswerSetup("optSingle");
    AnswerModel(id);
    dialogs.Press(QMessageBox::Ok);
    Trigger("mnuSolveRegression");
  }

  QTableView& Solved() { return *Active().findChild<QTableView*>("SolvedList"); }
  // "1 mine|2 yours", as the table shows them.
  QString SolvedRows() {
    QStringList rows;
    const QAbstractItemModel& model = *Solved().model();
    for (int row = 0; row < model.rowCount(); ++row)
      rows << model.index(row, 0).data().toString() + " " + model.index(row, 1).data().toString();
    return rows.join('|');
  }
  QString Caption() { return Active().findChild<QGroupBox*>("solutions")->title(); }

  frmResults& Results() { return *Active().findChild<frmResults*>(); }
  QString ShownModel() { return Results().findChild<QComboBox*>("EqList")->currentText(); }
};

// Steps that are taken while the progress window is open, one per turn of the event loop.
class DuringSolve {
 public:
  using Step = std::function<bool(ProgressWindow& window)>;  // true where it is done
  explicit DuringSolve(std::vector<Step> steps) : steps_(std::move(steps)) {
    QObject::connect(&timer_, &QTimer::timeout, [this] {
      auto* window = qobject_cast<ProgressWindow*>(QApplication::activeModalWidget());
      if (window == nullptr || !window->isVisible() || next_ == steps_.size()) return;
      if (steps_[next_](*window)) ++next_;
    });
    timer_.start(0);
  }
  ~DuringSolve() { EXPECT_EQ(next_, steps_.size()); }

 private:
  QTimer timer_;
  std::vector<Step> steps_;
  std::size_t next_ = 0;
};

}  // namespace quorvex
