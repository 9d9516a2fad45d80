// From a clipboard with names, missing values and columns that a new project has no place for to numbers, as a user
// goes.

#include <QAccessible>
#include <QClipboard>
#include <QSpinBox>
#include <QStyleHints>
#include <algorithm>
#include <fstream>
#include <sstream>

#include "Accessibility.h"
#include "Paths.h"
#include "SolveFrame.h"
#include "results/ui/TableView.h"

namespace quorvex {
namespace {

class SheetRoads : public SolveFrame {
 protected:
  // A file with commas, as another program's sheet would put it on the clipboard.
  static void Copy(const char* file) {
    std::stringstream text;
    text << std::ifstream(TestData(file)).rdbuf();
    QApplication::clipboard()->setText(QString::fromStdString(text.str()).replace(',', '\t'));
  }
  void Ask(QMessageBox::StandardButton answer) { dialogs.Press(answer); }
  void ChangeColumns(int variables, bool deviation = false, bool asks = false) {
    dialogs.Do([=](QDialog& dialog) {
      EXPECT_EQ(dialog.windowTitle(), "Columns");
      AccessibilityWalk{dialog};
      dialog.findChild<QSpinBox*>("txtVariables")->setValue(variables);
      if (dialog.findChild<QAbstractButton*>("chkStDev")->isChecked() != deviation) Click(dialog, "chkStDev");
      Press(dialog, QDialogButtonBox::Ok);
    });
    if (asks) Ask(QMessageBox::Yes);
    Trigger("mnuDataColumns");
  }
  std::string Value(const std::string& label) {
    const TextTable& table = *static_cast<TableView&>(In<QTableView>(Results(), "FitBook")).InFull();
    for (std::size_t row = 0; row < table.RowCount(); ++row)
      if (table.Cell(row, 0) == label) return table.Cell(row, 1);
    return "no " + label;
  }
};

TEST_F(SheetRoads, CarsArePastedWithTheirNames) {
  Start();
  Copy("cars.csv");
  Ask(QMessageBox::Yes);
  Trigger("mnuEditPaste");
  EXPECT_EQ(dialogs.Said, Said{"The first row holds headings. Use them as column names?"});
  EXPECT_EQ(Document().Sheet.Headers, (std::vector<std::string>{"speed", "dist"}));
  EXPECT_EQ(Document().Sheet.Cells.GridLastRow(), 50u);
  EXPECT_EQ(Shown(50, 2), "85");
  EXPECT_EQ(Active().UndoText(), "&Undo Paste");
  Trigger("mnuEditUndo");
  EXPECT_EQ(Document().Sheet.Headers, (std::vector<std::string>{"X", "Y"}));
  EXPECT_EQ(Document().Sheet.Cells.GridLastRow(), 0u);
  Trigger("mnuEditRedo");
  EXPECT_EQ(Document().Sheet.Headers[1], "dist");
  EXPECT_EQ(Shown(1, 1), "4");
}

// lm(ozone ~ solar + wind + temp) in R: 111 observations, 42 deleted, residual standard error 21.18 on 107 degrees of
// freedom.
TEST_F(SheetRoads, AirQualityIsSolvedWithoutTheRowsThatHaveNoNumber) {
  Start();
  Copy("airquality.csv");
  Ask(QMessageBox::No);
  Ask(QMessageBox::Ok);
  Trigger("mnuEditPaste");
  EXPECT_EQ(dialogs.Said.back(),
            "9 cells are no numbers, the first of them 'solar' in X:1. 2 columns beyond the project's were left out; "
            "Columns in the Data menu makes room for more.");
  Trigger("mnuEditUndo");

  ChangeColumns(3);
  EXPECT_EQ(Grid().model()->columnCount(), 4);
  EXPECT_EQ(Active().UndoText(), "&Undo Change Columns");
  Ask(QMessageBox::Yes);
  Ask(QMessageBox::Ok);
  Trigger("mnuEditPaste");
  EXPECT_EQ(dialogs.Said.back(), "44 cells are no numbers, the first of them 'NA' in solar:5.");

  // A text can be told from a number by its colour, its corner and a screen reader.
  const QModelIndex text = Grid().model()->index(4, 0);
  EXPECT_TRUE(text.data(Qt::AccessibleDescriptionRole).toString().endsWith(", text"));
  EXPECT_FALSE(text.siblingAtColumn(1).data(Qt::AccessibleDescriptionRole).toString().endsWith("text"));
  QAccessibleTableInterface* table = QAccessible::queryAccessibleInterface(&Grid())->tableInterface();
  EXPECT_EQ(table->cellAt(4, 0)->text(QAccessible::Description), "solar, row 5, text");

  Grid().setCurrentIndex(Grid().model()->index(100, 3));
  const std::string kQuestion =
      "Row 5, column 'solar': 'NA' is not a number. 44 cells in 42 rows of the data are no numbers. Do you want to "
      "leave "
      "these rows out?";
  EXPECT_EQ(SaidBy("mnuSolveRegression", QMessageBox::No), kQuestion);
  EXPECT_EQ(Current(), std::pair(5, 1));
  EXPECT_TRUE(SolvedRows().isEmpty());

  const auto solve = [&] {
    Ask(QMessageBox::Yes);
    AnswerSetup("optSingle", "optLinear");
    AnswerModel("a*x1+b*x2+c*x3+d");
    dialogs.Press(QMessageBox::Ok);
    Trigger("mnuSolveRegression");
    EXPECT_EQ(Value("Number of observations = "), "111");
    EXPECT_EQ(Value("Number of missing observations = "), "42");
    return std::stod(Value("Standard Error of the Estimate = "));
  };
  const double error = solve();
  EXPECT_NEAR(error, 21.18, 0.005);
  In<QTabWidget>(Results(), "ResultsTab").setCurrentIndex(1);
  EXPECT_EQ(In<QTableView>(Results(), "DataBook").model()->rowCount(), 111);

  // Saved, opened and solved again they are the same numbers; the texts are still there.
  dialogs.ChooseFile(folder.Path("air.qvx"));
  Trigger("mnuFileSave");
  Trigger("mnuFileClose");
  frame->OpenFile(QString::fromStdString(folder.Path("air.qvx")));
  EXPECT_EQ(Shown(5, 1), "NA");
  EXPECT_EQ(Document().Sheet.Headers[3], "ozone");
  Active().ShowResults(Active().Solved().at(0));
  EXPECT_EQ(Value("Number of observations = "), "111");
  EXPECT_EQ(std::stod(Value("Standard Error of the Estimate = ")), error);
  EXPECT_EQ(solve(), error);

  // Emptied by Replace, the rows are incomplete, and nothing else about them is another.
  Trigger("mnuEditReplace");
  auto* form = frame->findChild<QDialog*>("frmFind");
  AccessibilityWalk{*form};
  ExpectMnemonicsDoNotMeet(*form);
  QTest::keyClicks(&In<QLineEdit>(*form, "txtFindWhat"), "NA");
  Click(*form, "ckMatchCells");
  Ask(QMessageBox::Ok);
  QTest::mouseClick(&In<QPushButton>(*form, "cmdReplaceAll"), Qt::LeftButton);
  EXPECT_EQ(dialogs.Said.back(), "44 cells were replaced.");
  EXPECT_EQ(Shown(5, 1), "");
  EXPECT_EQ(solve(), error);
  EXPECT_EQ(dialogs.Said[dialogs.Said.size() - 2],
            "Row 5, column 'solar' is empty. 42 rows of the data are incomplete and are left out of the solution. Do "
            "you want to continue?");
  form->close();

  // Fewer columns take their data, the solution and what shows it away, and undo brings them back.
  ChangeColumns(1, true, true);
  EXPECT_EQ(dialogs.Said.back(),
            "This takes away column 'wind' with its 153 cells, column 'temp' with its 153 cells and 1 solution. Undo "
            "brings that back. Do you want to continue?");
  EXPECT_EQ(Document().Sheet.Headers, (std::vector<std::string>{"solar", "ozone", "StDev"}));
  EXPECT_TRUE(SolvedRows().isEmpty());
  EXPECT_EQ(In<QTableView>(Results(), "FitBook").model()->rowCount(), 0);
  Trigger("mnuEditUndo");
  EXPECT_EQ(Grid().model()->columnCount(), 4);
  EXPECT_EQ(std::stod(Value("Standard Error of the Estimate = ")), error);
  Trigger("mnuEditRedo");
  EXPECT_EQ(Grid().model()->columnCount(), 3);
  EXPECT_TRUE(SolvedRows().isEmpty());
}

TEST_F(SheetRoads, ReplaceGoesFromCellToCellInTheSheetInFront) {
  Start();
  for (const char* number : {"15", "25", "35"}) Type(number);
  Grid().setCurrentIndex(Grid().model()->index(0, 0));
  Trigger("mnuEditFind");
  auto* form = frame->findChild<QDialog*>("frmFind");
  EXPECT_FALSE(In<QLineEdit>(*form, "txtReplaceWith").isVisible());
  Trigger("mnuEditReplace");
  QTest::keyClicks(&In<QLineEdit>(*form, "txtFindWhat"), "5");
  QTest::keyClicks(&In<QLineEdit>(*form, "txtReplaceWith"), "7");
  auto& replace = In<QPushButton>(*form, "cmdReplace");
  QTest::mouseClick(&replace, Qt::LeftButton);
  EXPECT_EQ(Shown(1, 1) + " " + Shown(2, 1), "17 25");
  EXPECT_EQ(Current(), std::pair(2, 1));
  Select(3, 1, 3, 2);
  Click(*form, "ckSelection");
  Ask(QMessageBox::Ok);
  QTest::mouseClick(&In<QPushButton>(*form, "cmdReplaceAll"), Qt::LeftButton);
  EXPECT_EQ(dialogs.Said.back(), "1 cell was replaced.");
  EXPECT_EQ(Shown(2, 1) + " " + Shown(3, 1), "25 37");
  EXPECT_EQ(Active().UndoText(), "&Undo Replace");
  Trigger("mnuEditUndo");
  Trigger("mnuEditUndo");
  EXPECT_EQ(Shown(1, 1) + " " + Shown(3, 1), "15 35");
  form->close();
}

// By the formula of WCAG 2.1, on what sheets are drawn on, light and dark.
TEST(SheetView, MarksTextsWithEnoughContrast) {
  const auto luminance = [](const QColor& color) {
    const auto part = [](float c) { return c <= 0.04045f ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
  };
  for (const char* ground : {"#ffffff", "#f0f0f0", "#2b2b2b", "#1e1e1e", "#000000"}) {
    const double a = luminance(QColor(ground)), b = luminance(SheetView::TextMark(QColor(ground)));
    EXPECT_GE((std::max(a, b) + 0.05) / (std::min(a, b) + 0.05), 4.5) << ground;
  }
}

}  // namespace
}  // namespace quorvex
