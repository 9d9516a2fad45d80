// Variable selection through its windows, as a user clicks and types.

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QMimeData>
#include <QProgressBar>
#include <QRadioButton>
#include <QTableView>
#include <cmath>
#include <fstream>

#include "Accessibility.h"
#include "Frame.h"
#include "selection/SelectionCase.h"
#include "solve/SolvedList.h"

namespace quorvex {
namespace {

class VariableSelection : public Frame {
 protected:
  void StartWith(DataSheet sheet) {
    Start();
    Document() = NewProject(sheet.IndependentVariables, sheet.HasStandardDeviation, LocaleText());
    Document().Sheet = std::move(sheet);
    Active().Refresh();
  }

  // Once the run behind the dialog is at its end.
  void DoAtEnd(std::function<void(QDialog&)> action) {
    dialogs.Do([this, action = std::move(action)](QDialog& dialog) { WaitFor(dialog, action); });
  }

  // An option looks pressed for a moment before it is chosen.
  static void ChooseByLetter(QDialog& dialog, Qt::Key letter, const char* option) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    QTest::keyClick(&dialog, letter, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return In<QRadioButton>(dialog, option).isChecked(); })) << option;
  }

  // From now on nothing else answers: the message box with this text is, whenever it comes, and `then` goes on behind
  // it.
  void AnswerAtLast(const std::string& text, std::function<void(QDialog& report)> then) {
    dialogs.Rest();
    WaitForBox(text, std::move(then));
  }

  static std::string Cell(const QDialog& dialog, int row, int column) {
    return In<QTableView>(dialog, "f1StepWise").model()->index(row, column).data().toString().toStdString();
  }
  static std::vector<std::string> FirstColumn(const QDialog& dialog) {
    std::vector<std::string> texts;
    for (int row = 0; row < In<QTableView>(dialog, "f1StepWise").model()->rowCount(); ++row)
      texts.push_back(Cell(dialog, row, 0));
    return texts;
  }
  static std::string FileText(const std::string& name) {
    std::ifstream file(name);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  void WaitForBox(const std::string& text, const std::function<void(QDialog& report)>& then) {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr || !box->isVisible() || box->text().toStdString() != text) {
      QTimer::singleShot(5, frame.get(), [=, this] { WaitForBox(text, then); });
      return;
    }
    box->accept();
    QTimer::singleShot(5, frame.get(), [=, this] { then(*frame->findChild<QDialog*>("frmStepWise")); });
  }

  // Not in a loop of its own, for the run goes on below the dialog's.
  static void WaitFor(QDialog& dialog, const std::function<void(QDialog&)>& action) {
    if (!In(dialog, "cmdAbort").isEnabled()) return action(dialog);
    QTimer::singleShot(5, &dialog, [&dialog, action] { WaitFor(dialog, action); });
  }
};

TEST_F(VariableSelection, ReportsAllSubsetsAndSavesTheOneChosen) {
  StartWith(SelectionSheet("mtcars.txt"));
  const std::string text = folder.Path("report.txt"), html = folder.Path("report.html"),
                    saved = folder.Path("chosen.qvx");
  dialogs.Do([](QDialog& setup) {
    AccessibilityWalk{setup};
    ExpectMnemonicsDoNotMeet(setup);
    EXPECT_EQ(setup.focusWidget(), &In(setup, "optnVarSelect0"));
    ChooseByLetter(setup, Qt::Key_A, "optnVarSelect3");
    ChooseByLetter(setup, Qt::Key_T, "optnRank2");
    // A variable is on one list at most; squares and products join both, and leave what is selected.
    List(setup, "lstExclude").item(0)->setSelected(true);
    List(setup, "lstInclude").item(5)->setSelected(true);
    List(setup, "lstInclude").item(0)->setSelected(true);
    EXPECT_FALSE(List(setup, "lstExclude").item(0)->isSelected());
    List(setup, "lstExclude").item(0)->setSelected(true);
    Click(setup, "ckProducts");
    EXPECT_EQ(List(setup, "lstExclude").count(), 65);
    EXPECT_EQ(List(setup, "lstInclude").item(10)->text(), "cyl^2");
    Click(setup, "ckProducts");
    EXPECT_EQ(Rows(List(setup, "lstExclude")).join(' '), "cyl disp hp drat wt qsec vs am gear carb");
    EXPECT_TRUE(List(setup, "lstExclude").item(0)->isSelected());
    TypeInto(setup, "txtNumToReturn", "3");
    Press(setup, QDialogButtonBox::Ok);
  });
  DoAtEnd([&](QDialog& report) {
    AccessibilityWalk{report};
    ExpectMnemonicsDoNotMeet(report);
    EXPECT_EQ(report.windowTitle().toStdString(), "All Subsets");
    // The best of three with qsec and without cyl, by the references; behind it 1 + 8 + 28 less itself.
    EXPECT_EQ(Cell(report, 6, 0), "1");
    EXPECT_EQ(Cell(report, 6, 6), "wt, qsec, am");
    EXPECT_EQ(Cell(report, 42, 0), "37");
    EXPECT_EQ(In<QTableView>(report, "f1StepWise").currentIndex().row(), 6);
    Click(report, "cmdCopy");
    const QMimeData& copied = *QGuiApplication::clipboard()->mimeData();
    EXPECT_TRUE(copied.text().contains("\t3\t0.84966\t169.285929537652\t")) << copied.text().toStdString();
    EXPECT_TRUE(copied.html().contains("<td align=\"right\">0.84966</td>"));
    for (const std::string& name : {text, html}) {
      dialogs.ChooseFile(name);
      Click(report, "cmdSave");
    }
    EXPECT_EQ(FileText(text), copied.text().toStdString());
    EXPECT_EQ(FileText(html).rfind("<!DOCTYPE html>", 0), 0u);
    dialogs.Do([](QDialog& format) {
      format.findChild<QComboBox*>("residuals")->setCurrentText("0.00");
      Press(format, QDialogButtonBox::Ok);
    });
    Click(report, "cmdFormat");
    EXPECT_EQ(Cell(report, 6, 2), "0.84966");
    EXPECT_EQ(Cell(report, 6, 3), "169.29");
    // The second best.
    auto& table = In<QTableView>(report, "f1StepWise");
    table.setCurrentIndex(table.model()->index(7, 0));
    dialogs.ChooseFile(saved);
    dialogs.Press(QMessageBox::Ok);
    Click(report, "cmdExport");
    EXPECT_EQ(dialogs.Said.back(),
              "The file '" + saved + "' contains the solved project which can be opened from the main Quorvex window.");
    QTest::keyClick(&report, Qt::Key_Escape);
  });
  Trigger("mnuDataVarSelect");
  Result<Project> opened = ReadProject(saved, LocaleText());
  ASSERT_TRUE(opened);
  EXPECT_EQ(opened->Sheet.IndependentVariables, 3u);
  EXPECT_EQ(SolvedItems(*opened, 1).size(), 1u);
  EXPECT_FALSE(Document().Changed);
}

TEST_F(VariableSelection, AbortsWhereTheUserWantsThat) {
  DataSheet sheet(20, false);
  for (std::size_t row = 1; row <= 100; ++row)
    for (std::size_t col = 1; col <= 21; ++col)
      sheet.Cells.SetGridCellNumber(row, col, std::sin(static_cast<double>(row * row * col + 7 * col)));
  StartWith(std::move(sheet));
  dialogs.Do([](QDialog& setup) {
    Click(setup, "optnVarSelect3");
    Click(setup, "ckProducts");
    Press(setup, QDialogButtonBox::Ok);
  });
  dialogs.Press(QMessageBox::Yes);  // a search of 2 ^ 230 combinations
  bool answered = false;
  dialogs.Do([&](QDialog& report) {
    EXPECT_EQ(report.focusWidget(), &In(report, "cmdAbort"));
    EXPECT_FALSE(In(report, "cmdSave").isEnabled());
    dialogs.Press(QMessageBox::No);
    QTest::keyClick(&report, Qt::Key_Escape);
    EXPECT_TRUE(report.isVisible());
    dialogs.Press(QMessageBox::Yes);
    Click(report, "cmdAbort");
    AnswerAtLast("Solution process aborted.", [](QDialog& aborted) {
      EXPECT_EQ(Text(aborted, "lblStatus"), "Solution process aborted.");
      EXPECT_TRUE(In(aborted, "cmdSave").isEnabled());
      EXPECT_EQ(FirstColumn(aborted).back(), "Solution process aborted.");
      aborted.reject();
    });
    answered = true;
  });
  Trigger("mnuDataVarSelect");
  EXPECT_TRUE(answered);
  EXPECT_EQ(dialogs.Said,
            (Said{"There is a large number of combinations to examine (2 ^ 230). Do you wish to continue?",
                  "Abort solution process?", "Abort solution process?"}));
}

TEST_F(VariableSelection, ListsAsManyCombinationsAsAReportHasRoomFor) {
  DataSheet sheet(17, false);
  for (std::size_t row = 1; row <= 40; ++row)
    for (std::size_t col = 1; col <= 18; ++col)
      sheet.Cells.SetGridCellNumber(row, col, std::sin(static_cast<double>(row * row * col + 7 * col)));
  StartWith(std::move(sheet));
  dialogs.Do([](QDialog& setup) {
    Click(setup, "optnVarSelect3");
    Press(setup, QDialogButtonBox::Ok);
  });
  dialogs.Press(QMessageBox::Yes);
  DoAtEnd([](QDialog& report) {
    EXPECT_EQ(Cell(report, 65'005, 0), "65000");
    EXPECT_EQ(Cell(report, 65'006, 0), "");
    EXPECT_EQ(Cell(report, 65'007, 0), "Correlation matrix");
    Click(report, "cmdCopy");
    EXPECT_GT(QGuiApplication::clipboard()->text().size(), 65'000 * 50);
    report.reject();
  });
  Trigger("mnuDataVarSelect");
}

TEST_F(VariableSelection, RefusesInTheWindowWhatCannotBeSearched) {
  StartWith(SelectionSheet("stackloss.txt"));
  dialogs.Do([this](QDialog& setup) {
    const auto refused = [&] {
      dialogs.Press(QMessageBox::Ok);
      Press(setup, QDialogButtonBox::Ok);
      EXPECT_TRUE(setup.isVisible());
      return dialogs.Said.back();
    };
    TypeInto(setup, "txtPStat0", "0.1");
    EXPECT_EQ(refused(), "p To Enter must be less than p To Remove.");
    TypeInto(setup, "txtPStat0", "0.05");
    List(setup, "lstExclude").selectAll();
    EXPECT_EQ(refused().substr(0, 71), "There are no independent variables left for the selection process. You ");
    List(setup, "lstExclude").clearSelection();
    setup.findChild<QComboBox*>("cmbYTransform")->setCurrentText("1/Y");
    Document().Sheet.Cells.SetGridCellNumber(3, 4, 0);
    setup.reject();
  });
  Trigger("mnuDataVarSelect");
  // The data are those at the beginning of the command.
  dialogs.Do([this](QDialog& setup) {
    setup.findChild<QComboBox*>("cmbYTransform")->setCurrentText("1/Y");
    dialogs.Press(QMessageBox::Ok);
    Press(setup, QDialogButtonBox::Ok);
    EXPECT_EQ(dialogs.Said.back(), "Cannot take the inverse of 0 in row 3.");
    setup.reject();
  });
  Trigger("mnuDataVarSelect");
}

TEST_F(VariableSelection, TellsOfIdenticalVariables) {
  const std::vector<double> x = {1, 2, 4, 8, 16, 31};
  StartWith(SelectionSheet({x, {3, 1, 4, 1, 5, 9}, x, {1, 2, 3, 9, 14, 33}}));
  bool reported = false;
  dialogs.Do([&](QDialog& setup) {
    Click(setup, "optnVarSelect1");
    AnswerAtLast(kLeastSquaresError, [&](QDialog& report) {
      const auto lines = FirstColumn(report);
      EXPECT_TRUE(std::count(lines.begin(), lines.end(), "Correlation matrix"));
      reported = true;
      AnswerAtLast(
          "There are no variables left for a solution. The variable selection results cannot be saved in Quorvex "
          "format.",
          [](QDialog& left) { left.reject(); });
      Click(report, "cmdExport");
    });
    Press(setup, QDialogButtonBox::Ok);
  });
  Trigger("mnuDataVarSelect");
  EXPECT_TRUE(reported);
}

TEST_F(VariableSelection, FitsWhatIsMarkedByHand) {
  StartWith(SelectionSheet("stackloss.txt"));
  const std::string saved = folder.Path("by hand.qvx");
  dialogs.Do([](QDialog& setup) {
    ChooseByLetter(setup, Qt::Key_M, "optnVarSelect4");
    QTest::keyClick(&setup, Qt::Key_Return);
  });
  dialogs.Do([&](QDialog& manual) {
    AccessibilityWalk{manual};
    ExpectMnemonicsDoNotMeet(manual);
    QListWidget& variables = List(manual, "lstVariables");
    EXPECT_EQ(manual.focusWidget(), &variables);
    dialogs.Press(QMessageBox::Ok);
    Click(manual, "cmdExport");
    EXPECT_EQ(dialogs.Said.back(),
              "Please select the variables you want to include and perform a calculation before saving.");
    Click(manual, "cmdSAll");
    EXPECT_EQ(variables.selectedItems().size(), 3);
    Click(manual, "cmdDAll");
    EXPECT_EQ(variables.selectedItems().size(), 0);
    variables.setFocus();
    QTest::keyClick(&variables, Qt::Key_Space);
    QTest::keyClick(&manual, Qt::Key_Return);
    EXPECT_EQ(FirstColumn(manual).back(), "air_flow");
    const auto rows = FirstColumn(manual).size();
    QTest::keyClick(&variables, Qt::Key_Down, Qt::ControlModifier);
    variables.item(1)->setSelected(true);
    Click(manual, "cmdCalculate");
    EXPECT_EQ(FirstColumn(manual).back(), "water_temp");
    EXPECT_EQ(FirstColumn(manual).size(), 2 * rows + 2);  // a variable more, and a row between
    dialogs.ChooseFile(saved);
    dialogs.Press(QMessageBox::Ok);
    Click(manual, "cmdExport");
    QTest::keyClick(&manual, Qt::Key_Escape);
  });
  Trigger("mnuDataVarSelect");
  const Result<Project> opened = ReadProject(saved, LocaleText());
  ASSERT_TRUE(opened);
  EXPECT_EQ(opened->Sheet.Headers, (std::vector<std::string>{"air_flow", "water_temp", "stack_loss"}));
}

}  // namespace
}  // namespace quorvex
