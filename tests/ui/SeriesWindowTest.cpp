// Solve, Series: from a file to the table and the plot of its answers, as a user goes.

#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QSpinBox>

#include "Paths.h"
#include "SolveFrame.h"
#include "files/ui/Dataplot.h"
#include "results/ui/TableView.h"
#include "results/ui/frmSeries.h"

namespace quorvex {
namespace {

class SeriesWindow : public SolveFrame {
 protected:
  // Solve, Series over the file; `choose` works on the dialog before it is accepted.
  // Solves the series in a file with the first model of the user's; `choose` works on the dialog before it is accepted,
  // `before` expects what follows.
  frmSeries* Solve(const std::string& file, std::function<void(QDialog&)> choose, std::function<void()> before = {}) {
    dialogs.ChooseFile(file);
    dialogs.Do([choose](QDialog& dialog) {
      EXPECT_EQ(dialog.objectName(), "SeriesSetup");
      choose(dialog);
      Click(dialog, "cmdOK");
    });
    AnswerSetup("optSingle");
    dialogs.Do([](QDialog& dialog) {
      Choose(List(dialog, "eq_list"), "mine");
      Click(dialog, "solve_command");
    });
    if (before) before();
    Trigger("mnuSolveSeries");
    for (QWidget* window : QApplication::topLevelWidgets())
      if (auto* series = qobject_cast<frmSeries*>(window); series != nullptr && series->isVisible()) return series;
    return nullptr;
  }
  static std::string Column(frmSeries& window, std::size_t column) {
    const TextTable& table = *static_cast<TableView&>(In<QTableView>(window, "SeriesBook")).Table();
    std::string cells;
    for (std::size_t row = 0; row < table.RowCount(); ++row) cells += table.Cell(row, column) + "|";
    return cells;
  }
};

// Bates and Watts (1988), Appendix A4.1, have the answers of both columns: 212.7 and 0.0641; 160.3 and 0.0477.
TEST_F(SeriesWindow, ShowsPlotsAndExportsTheAnswersOfBothEnzymes) {
  Open(20, "100*vm*x/(k+x)");
  frmSeries* window = Solve(TestData("../../examples/data/puromycin_both.txt"), [](QDialog& dialog) {
    EXPECT_EQ(In<QSpinBox>(dialog, "UpDnStartRow").value(), 2);
    EXPECT_EQ(Rows(List(dialog, "lstColumns")),
              QStringList({"conc (Column 1)", "treated (Column 2)", "untreated (Column 3)"}));
    EXPECT_EQ(Text(dialog, "lblCount"), "2 ticked");
    EXPECT_FALSE(In(dialog, "ckTextMissing").isEnabled());
  });
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(Column(*window, 1), "treated|untreated|");
  EXPECT_EQ(Column(*window, 4), "Converged|Converged|");
  const TextTable& table = *static_cast<TableView&>(In<QTableView>(*window, "SeriesBook")).InFull();
  EXPECT_NEAR(std::stod(table.Cell(0, 5)), 0.0641, 5e-5);
  EXPECT_NEAR(std::stod(table.Cell(0, 7)), 2.127, 0.0005);
  EXPECT_NEAR(std::stod(table.Cell(1, 5)), 0.0477, 5e-5);
  EXPECT_NEAR(std::stod(table.Cell(1, 7)), 1.603, 0.0005);
  EXPECT_EQ(Solved().model()->rowCount(), 0) << "the project stays as it was";

  auto* header = In<QTableView>(*window, "SeriesBook").horizontalHeader();
  emit header->sectionClicked(7);
  EXPECT_EQ(Column(*window, 0), "2|1|");
  emit header->sectionClicked(7);
  EXPECT_EQ(Column(*window, 0), "1|2|");
  EXPECT_TRUE(In<QCheckBox>(*window, "ckDescending").isChecked());

  dialogs.ChooseFile(folder.Path("series.csv"));
  Click(*window, "cmdExport");
  EXPECT_NE(folder.Read("series.csv").find("1,treated,mine,1,Converged,0.064"), std::string::npos)
      << folder.Read("series.csv");

  Click(*window, "cmdPlot");
  auto* plot = Active().findChild<Dataplot*>();
  ASSERT_NE(plot, nullptr);
  EXPECT_EQ(plot->Plot().PlotTitle, "Series");
  In<QComboBox>(*window, "cmbOver").setCurrentIndex(1);
  dialogs.Press(QMessageBox::Ok);
  Click(*window, "cmdPlot");
  ASSERT_FALSE(dialogs.Said.empty());
  EXPECT_EQ(dialogs.Said.back(), "No heading of a column is a number. Please plot over the numbers of the columns.");
}

TEST_F(SeriesWindow, StopsInTheMidstAndKeepsWhatIsDone) {
  std::string text = "time";
  for (int column = 1; column <= 300; ++column) text += "\t" + std::to_string(column * 10);
  for (int row = 1; row <= 30; ++row) {
    text += "\n" + std::to_string(row);
    for (int column = 1; column <= 300; ++column)
      text += "\t" + std::to_string(column * row / (5.0 + row) + 0.01 * ((row * 7 + column) % 5));
  }
  Open(20, "vm*x/(k+x)");
  const DuringSolve script({[](ProgressWindow& window) {
    if (window.findChild<QProgressBar*>()->value() < 100) return false;
    Click(window, "Abort_command");
    return true;
  }});
  // More columns than an import takes.
  frmSeries* window = Solve(
      folder.Write("time.txt", text), [](QDialog& dialog) { EXPECT_EQ(Text(dialog, "lblCount"), "300 ticked"); },
      [this] { dialogs.Press(QMessageBox::Ok); });
  EXPECT_EQ(dialogs.Said.back(), "Solution Process Aborted.");
  ASSERT_NE(window, nullptr);
  const int rows = In<QTableView>(*window, "SeriesBook").model()->rowCount();
  EXPECT_GE(rows, 100);
  EXPECT_LT(rows, 300);
}

}  // namespace
}  // namespace quorvex
