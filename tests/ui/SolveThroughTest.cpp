// From a project's file to the answers in the results window, by menu and dialogs, on real data.

#include <QCheckBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QSignalSpy>
#include <QTableWidget>

#include "NistProject.h"
#include "Paths.h"
#include "SolveFrame.h"
#include "results/ui/TableView.h"
namespace quorvex {
namespace {

class SolveThrough : public SolveFrame {
 protected:
  void OpenProject(const Project& project, const std::string& name) {
    ASSERT_EQ(WriteProject(project, folder.Path(name)), 0);
    if (frame == nullptr) Start();
    frame->OpenFile(QString::fromStdString(folder.Path(name)));
  }
  // A project with a table of numbers under a line of names, X's before Y.
  Project ProjectOfTable(const char* file) {
    Project project = NewProject(1, false, {});
    std::ifstream stream(TestData(file));
    std::string line;
    std::getline(stream, line);
    const std::size_t columns = Split(line, '\t').size();
    if (columns > 2) project = NewProject(columns - 1, false, {});
    for (std::size_t row = 1; std::getline(stream, line); ++row)
      for (std::size_t col = 1; const std::string& field : Split(line, '\t'))
        project.Sheet.Cells.SetGridCellNumber(row, col++, std::stod(field));
    return project;
  }

  // Row by row, the cells of Fit Information, with all digits.
  std::vector<std::vector<std::string>> Fit() {
    const TextTable& table = *static_cast<TableView&>(In<QTableView>(Results(), "FitBook")).InFull();
    std::vector<std::vector<std::string>> rows(table.RowCount());
    for (std::size_t row = 0; row < table.RowCount(); ++row)
      for (std::size_t col = 0; col < table.ColumnCount(); ++col) rows[row].push_back(table.Cell(row, col));
    return rows;
  }
  // The row of that label, from the table under that heading on.
  std::vector<std::string> FitRow(const std::string& label, const std::string& heading = "Quorvex version ") {
    bool below = false;
    for (const auto& row : Fit()) {
      below |= row[0].starts_with(heading);
      if (below && row[0] == label) return row;
    }
    ADD_FAILURE() << label;
    return std::vector<std::string>(6, "0");
  }
  double FitValue(const std::string& label) { return std::stod(FitRow(label)[1]); }
};

// That every set comes to its certified answers is tested with the solver; here, that the window shows them.
TEST_F(SolveThrough, ShowsTheCertifiedAnswersOfAReferenceSet) {
  const NistSet row = NistSets("nonlinear")[0];
  const std::string& name = row.at("name");
  OpenProject(NistProject(row), name + ".qvx");
  SolveOne(QString::fromStdString(name));
  EXPECT_EQ(dialogs.Said.back(), "Solution was successful.");
  EXPECT_TRUE(Results().isVisible());
  EXPECT_EQ(FitRow("Results from project ")[1], name + ".qvx");
  EXPECT_EQ(FitRow("Y = ")[1], row.at("model"));
  EXPECT_EQ(FitRow("Number of observations = ")[1], row.at("n_obs"));
  EXPECT_EQ(FitRow("Nonlinear iteration limit = ")[1], "250");
  const std::vector<double> values = Numbers(row.at("certified"));
  const std::vector<std::string> names = Split(row.at("coef_names"), ' ');
  for (std::size_t i = 0; i < values.size(); ++i)
    EXPECT_NEAR(std::stod(FitRow(names[i], "Regression Variable Results")[1]) / values[i], 1, 1e-6) << names[i];
}

TEST_F(SolveThrough, SolvesAllModelsPausesAndAborts) {
  OpenProject(ProjectOfTable("women.txt"), "women.qvx");
  session.Preferences.Set("threads", "1");  // several would have done before the window has its second turn
  std::size_t paused = 0;
  QString pausedModel;
  AnswerSetup("optAll");
  std::string summary;
  int failed = 0;
  dialogs.Do([&](QDialog& box) {
    summary = Text(box, "message_label").toStdString();
    failed = List(box, "failed_list").count();
    Click(box, "cmdClose");
  });
  {
    const DuringSolve script({[](ProgressWindow& window) {
                                if (window.findChild<QProgressBar*>()->value() < 3) return false;
                                Click(window, "cmdDetail");
                                EXPECT_TRUE(In<QLabel>(window, "lblParam1").isVisible());
                                return true;
                              },
                              [&](ProgressWindow& window) {
                                if (!Text(window, "status_label").startsWith("Solving Model a*exp(b*x)")) return false;
                                pausedModel = Text(window, "status_label");
                                Click(window, "cmdPause");
                                ++paused;
                                return true;
                              },
                              [](ProgressWindow& window) {
                                EXPECT_EQ(window.findChild<QProgressBar*>()->maximum(), 298);
                                return window.findChild<QProgressBar*>()->value() > 290;
                              }});
    Trigger("mnuSolveRegression");
  }
  const int solved = Solved().model()->rowCount();
  EXPECT_EQ(summary, std::to_string(solved) + " of the 298 models solved.  View log for details.");
  EXPECT_EQ(failed, 298 - solved);
  const QString log = QString::fromStdString(Active().Solver().Log());
  // What trying harder finds is solved from there once more.
  EXPECT_EQ(log.count("Beginning non-linear solution for model "), 298 + log.count("Found by: "));
  EXPECT_GT(log.count("Found by: "), 0);
  EXPECT_EQ(log.count("Solution Complete"), solved);
  EXPECT_EQ(log.count("Iterations stopped by user."), 1) << pausedModel.toStdString();
  EXPECT_EQ(ShownModel(), Solved().model()->index(0, 1).data().toString()) << "the best of them";
  EXPECT_EQ(In<QComboBox>(Results(), "EqList").count(), solved);

  // Again, and stopped in its midst: what was solved so far and before stays, and undo brings all of it back.
  const QString all = SolvedRows();
  AnswerSetup("optAll", "optLinear");
  dialogs.Press(QMessageBox::Ok);
  {
    const DuringSolve script({[](ProgressWindow& window) {
      if (window.findChild<QProgressBar*>()->value() < 100) return false;
      Click(window, "Abort_command");
      return true;
    }});
    Trigger("mnuSolveRegression");
  }
  EXPECT_EQ(dialogs.Said.back(), "Solution Process Aborted.");
  EXPECT_TRUE(Active().Solver().Log().ends_with("\r\nSOLUTION PROCESS ABORTED BY USER.\r\n"));
  EXPECT_NE(SolvedRows(), "");
  Trigger("mnuEditUndo");
  EXPECT_EQ(SolvedRows(), all);
}

// The volume of 31 trees by girth and height. Coefficients, errors and R^2 from the normal equations in exact rational
// arithmetic (Python's fractions), to 10 digits.
TEST_F(SolveThrough, WorksWithTwoIndependentVariables) {
  Project trees = ProjectOfTable("trees.txt");
  AddUserModel(trees, "plane", "c+p*x1+q*x2");
  AddUserModel(trees, "cone", "k*x1^2*x2");
  OpenProject(trees, "trees.qvx");
  SolveOne("plane");
  EXPECT_EQ(dialogs.Said.back(), "Solution was successful.");
  const struct {
    const char* name;
    double value, error;
  } kPlane[] = {{"c", -57.98765891838, 8.638225865302},
                {"p", 4.708160503018, 0.264264609421},
                {"q", 0.3392512342447, 0.1301511807002}};
  for (const auto& c : kPlane) {
    const auto row = FitRow(c.name, "Regression Variable Results");
    EXPECT_NEAR(std::stod(row[1]) / c.value, 1, 1e-8) << c.name;
    EXPECT_NEAR(std::stod(row[2]) / c.error, 1, 1e-8) << c.name;
  }
  EXPECT_NEAR(FitValue("Residual Sum of Squares (Absolute) = "), 421.9213592224, 1e-6);
  EXPECT_NEAR(FitValue("Coefficient of Multiple Determination (R^2) = "), 0.9479500377817, 1e-9);
  EXPECT_EQ(FitRow("Error", "Variance Analysis")[1], "28");

  // A group, on top of what is solved; each of the tabs; and back.
  AnswerGroup("User Defined Models");
  EXPECT_EQ(SaidBy("mnuSolveRegression"), "Solution was successful.");
  EXPECT_EQ(SolvedRows(), "1 cone|2 plane");
  EXPECT_EQ(ShownModel(), "cone");
  auto* tabs = Results().findChild<QTabWidget*>("ResultsTab");
  for (int tab = 0; tab < tabs->count(); ++tab) tabs->setCurrentIndex(tab);
  EXPECT_EQ(In<QTableView>(Results(), "DataBook").model()->rowCount(), 31);
  Trigger("mnuEditUndo");
  EXPECT_EQ(SolvedRows(), "1 plane");
  EXPECT_EQ(In<QComboBox>(Results(), "EqList").count(), 1);
  tabs->setCurrentIndex(0);
  EXPECT_NEAR(std::stod(FitRow("q", "Regression Variable Results")[1]) / kPlane[2].value, 1, 1e-8);
  Trigger("mnuEditUndo");
  EXPECT_EQ(SolvedRows(), "");
  EXPECT_EQ(In<QComboBox>(Results(), "EqList").count(), 0);
}

// Ranges and a coefficient held constant, given in the midst of a solve; then other estimates for what is solved, and
// undo step by step.
TEST_F(SolveThrough, TakesEstimatesAndBringsBackTheSolutionTheyCost) {
  Open(30, "m*x+n");
  // Regress with estimates of the user's own, which the dialog over it asks for.
  const auto answerModel = [&](std::function<void(QDialog&, QTableWidget&)> estimates) {
    AnswerSetup("optSingle");
    dialogs.Do([](QDialog& dialog) {
      Choose(List(dialog, "eq_list"), "mine");
      Click(dialog, "enforce_override");
      Click(dialog, "solve_command");
    });
    dialogs.Do([estimates](QDialog& dialog) {
      EXPECT_EQ(dialog.windowTitle(), "Initial Estimates");
      estimates(dialog, *dialog.findChild<QTableWidget*>("RangeGrid"));
    });
  };
  const auto type = [](QTableWidget& grid, int row, const char* kind) {
    static_cast<QComboBox*>(grid.cellWidget(row, 1))->setCurrentText(kind);
  };
  answerModel([&](QDialog& dialog, QTableWidget& grid) {
    EXPECT_EQ(grid.item(0, 2)->text(), "1") << "by its rule";
    type(grid, 0, "Range");
    type(grid, 1, "Range");
    for (int row = 0; row < 2; ++row) {
      grid.item(row, 2)->setText("0.5");
      grid.item(row, 3)->setText("2.5");
    }
    grid.item(0, 4)->setText("101");
    grid.item(1, 4)->setText("1");
    Press(dialog, QDialogButtonBox::Ok);
    EXPECT_TRUE(
        dialogs.Said.back().ends_with("You currently have 101 specified. Either solve fewer variables with "
                                      "ranges or reduce the number of ranges for each variable."));
    EXPECT_TRUE(dialog.isVisible());
    grid.item(0, 4)->setText("100");
    type(grid, 1, "Constant");
    grid.item(1, 2)->setText("1.25");
    Press(dialog, QDialogButtonBox::Ok);
  });
  dialogs.Press(QMessageBox::Ok);  // to the refusal
  EXPECT_EQ(SaidBy("mnuSolveRegression"), "Solution was successful.");
  const QString log = QString::fromStdString(Active().Solver().Log());
  EXPECT_TRUE(log.contains("Using current initial estimates\r\nSolving with 100 initial condition(s)"));
  EXPECT_TRUE(log.contains("100 of 100 IC's successful, determining best fit."));
  const auto held = FitRow("n", "Regression Variable Results");
  EXPECT_EQ(held, (std::vector<std::string>{"n", "1.25", "0", "", "", "", "", "", "", ""}));
  const std::string slope = FitRow("m", "Regression Variable Results")[1];
  // Start and end of both coefficients, four statistics, two ranges.
  const auto first = FitRow("0.5", "Initial Condition Range Summary");
  EXPECT_EQ(first[2], "1.25");
  EXPECT_EQ(first[4], FitRow("Residual Sum of Squares (Absolute) = ")[1]);
  EXPECT_EQ(first[8], "0.5 to 2.5");
  EXPECT_EQ(first[9], "1.25");
  const auto all = Fit();

  // Once more, from the solution: the question, and a run from one start with both free.
  answerModel([&](QDialog& dialog, QTableWidget& grid) {
    EXPECT_EQ(grid.item(1, 2)->text(), "1.25");
    type(grid, 0, "Initial Estimate");
    type(grid, 1, "Initial Estimate");
    Press(dialog, QDialogButtonBox::Ok);
  });
  dialogs.Press(QMessageBox::Yes);
  dialogs.Press(QMessageBox::Ok);
  Trigger("mnuSolveRegression");
  EXPECT_EQ(dialogs.Said[dialogs.Said.size() - 2],
            "This model is currently in the solved list. Modifying the parameters will clear it's solution. Do you "
            "wish to continue?");
  EXPECT_NE(FitRow("n", "Regression Variable Results")[1], "1.25");
  EXPECT_EQ(Active().UndoText(), "&Undo Solve 'mine...'");
  Trigger("mnuEditUndo");
  EXPECT_EQ(SolvedRows(), "");
  EXPECT_EQ(Active().UndoText(), "&Undo Modify Parameters 'mine...'");
  Trigger("mnuEditUndo");
  EXPECT_EQ(SolvedRows(), "1 mine");
  EXPECT_EQ(Fit(), all);
  Trigger("mnuEditUndo");
  EXPECT_EQ(SolvedRows(), "");
}

// The window is open while its project is solved again, sorted, written on and renamed.
TEST_F(SolveThrough, LeavesTheResultsInStepWithTheProject) {
  Open(30);
  session.Preferences.Set("autoresults", "0");
  SolveOne("mine");
  Trigger("mnuFileSave");
  Trigger("mnuFileClose");
  frame->OpenFile(QString::fromStdString(folder.Path("curve.qvx")));
  Trigger("mnuSolveResults");
  const auto hasLimits = [&] {
    const auto rows = Fit();
    return std::ranges::any_of(rows, [](const auto& row) { return row[0] == "Nonlinear iteration limit = "; });
  };
  EXPECT_FALSE(hasLimits()) << "read from a file";
  SolveOne("mine");
  EXPECT_TRUE(hasLimits());

  // Two fits that another key puts in another order.
  SolveOne("yours");
  EXPECT_EQ(ShownModel(), "mine");
  Document().Models.Find("yours")->R2Adjust = 1;
  Trigger("mnuSortR2Adjust");
  auto* list = Results().findChild<QComboBox*>("EqList");
  EXPECT_EQ(list->itemText(0), "yours");
  EXPECT_EQ(list->currentText(), "mine") << "the one that is shown stays";
  Trigger("mnuSortRSS");
  EXPECT_EQ(list->itemText(0), "mine");

  // Notes have nothing to do with results.
  const QAbstractItemModel* book = In<QTableView>(Results(), "FitBook").model();
  QSignalSpy made(book, &QAbstractItemModel::modelReset);
  In<QPlainTextEdit>(Active(), "Notes").setPlainText("typed");
  EXPECT_EQ(made.size(), 0);
  EXPECT_TRUE(Active().isWindowModified());

  dialogs.Do([](QDialog& dialog) {
    Click(dialog, "optClear4");
    Press(dialog, QDialogButtonBox::Ok);
  });
  Trigger("mnuSolveClear");
  EXPECT_EQ(list->count(), 0);
  Trigger("mnuEditUndo");
  EXPECT_EQ(list->count(), 2);
}

}  // namespace
}  // namespace quorvex
