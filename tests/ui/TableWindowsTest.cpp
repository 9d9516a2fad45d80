// The windows Summary Results and Data Table Export, used as a user does.

#include <QClipboard>
#include <QComboBox>
#include <QMimeData>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>

#include "Accessibility.h"
#include "Frame.h"
#include "core/Files.h"
#include "results/SolvedProject.h"
#include "results/ui/TableView.h"
#include "results/ui/frmSummary.h"
#include "results/ui/frmTableExport.h"

namespace quorvex {
namespace {

class TableWindowsTest : public Frame {
 protected:
  void Open() {
    Start();
    Document() = LineProject();
    for (const char* name : {"a*x+b", "a*x^2+b*x+c"}) SolveModel(Document(), name, 1);
    Active().Refresh();
  }
  void OpenPlane() {
    Start();
    Document() = PlaneProject();
    AddModel(Document(), "plane", {"a*x1+b*x2"});
    SolveModel(Document(), "plane", 0);
    Active().Refresh();
  }
  template <class Window>
  Window& Shown() {
    auto* window = Active().findChild<Window*>();
    if (window == nullptr) throw std::runtime_error("no window");
    return *window;
  }
  static void Inspect(QWidget& window) {
    AccessibilityWalk{window};
    ExpectMnemonicsDoNotMeet(window);
    EXPECT_NE(window.focusWidget(), nullptr);
  }
  static void Click(QWidget& window, const char* button) {
    QTest::mouseClick(window.findChild<QPushButton*>(button), Qt::LeftButton);
  }
  static std::string Text(QWidget& window) { return TabSeparated(*window.findChild<TableView*>()->InFull()); }
  // A table of two values of the line.
  frmTableExport& LineTable() {
    Active().findChild<QTableView*>("SolvedList")->selectRow(1);
    dialogs.Do([](QDialog& form) { QTest::keyClick(&form, Qt::Key_Return); });
    dialogs.Do([](QDialog& form) {
      form.findChild<QLineEdit*>("txtNPoints0")->setText("2");
      QTest::keyClick(&form, Qt::Key_Return);
    });
    Trigger("mnuResultsTableExport");
    return Shown<frmTableExport>();
  }
};

TEST_F(TableWindowsTest, ShowsAllSolutionsAndSortsThemWithTheSolvedList) {
  Open();
  Trigger("mnuResultsSummary");
  auto& summary = Shown<frmSummary>();
  EXPECT_EQ(summary.windowTitle(), "Summary Results");
  Inspect(summary);
  auto* cmbSortBy = summary.findChild<QComboBox*>("cmbSortBy");
  QTest::keyClicks(cmbSortBy, "StdErr");
  EXPECT_EQ(session.Preferences.Integer("sortindex"), 4);
  EXPECT_TRUE(Action("mnuSortStdErr").isChecked() || Active().SolutionsSortedBy() == 4);
  Trigger("mnuSortR2");
  EXPECT_EQ(cmbSortBy->currentText(), "R^2");
  Click(summary, "cmdCopy");
  EXPECT_TRUE(QGuiApplication::clipboard()->mimeData()->hasHtml());
  EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), Text(summary));
  dialogs.ChooseFile(folder.Path("summary.txt"));
  Click(summary, "cmdExport");
  WholeFile file;
  EXPECT_EQ(file.Read(folder.Path("summary.txt")), 0);
  EXPECT_EQ(file.Text(), Text(summary));
  dialogs.Do([](QDialog& form) {
    form.findChild<QComboBox*>("values")->setCurrentText("0.00");
    form.accept();
  });
  Click(summary, "cmdFormat");
  EXPECT_NE(Text(summary).find("\t0.98\t"), std::string::npos);
  // What is solved and cleared comes and goes here, too.
  Document().Models.Find("a*x+b")->Solved = false;
  Active().Resort();
  EXPECT_EQ(summary.findChild<TableView*>()->Table()->RowCount(), 1u);
}

TEST_F(TableWindowsTest, HasNoSummaryOfNothing) {
  Start();
  EXPECT_EQ(SaidBy("mnuResultsSummary"), "Nothing is solved yet.");
  EXPECT_EQ(SaidBy("mnuResultsTableExport"), "There are no solved equations to export.");
}

TEST_F(TableWindowsTest, AsksForTypeAndRangeAndShowsTheTable) {
  Open();
  Active().findChild<QTableView*>("SolvedList")->selectRow(1);
  dialogs.Do([](QDialog& form) {
    EXPECT_EQ(form.windowTitle(), "Table Type");
    Inspect(form);
    EXPECT_EQ(form.findChild<QComboBox*>("cmbVariable"), nullptr);
    EXPECT_FALSE(In<QComboBox>(form, "cmbLevel").isEnabled());
    In<QComboBox>(form, "cmbLimits").setCurrentIndex(1);
    EXPECT_TRUE(In<QComboBox>(form, "cmbLevel").isEnabled());
    In<QComboBox>(form, "cmbLimits").setCurrentIndex(0);
    QTest::keyClick(&form, Qt::Key_Return);
  });
  dialogs.Do([this](QDialog& form) {
    EXPECT_EQ(form.windowTitle(), "Table Variables");
    Inspect(form);
    EXPECT_EQ(form.findChild<QLineEdit*>("txtVar0")->text(), "X");
    auto* points = form.findChild<QLineEdit*>("txtNPoints0");
    points->clear();
    dialogs.Press(QMessageBox::Ok);
    QTest::keyClick(&form, Qt::Key_Return);
    EXPECT_EQ(dialogs.Said.back(), "Please enter the number of points for X");
    points->setText("3");
    QTest::keyClick(&form, Qt::Key_Return);
  });
  Trigger("mnuResultsTableExport");
  auto& form = Shown<frmTableExport>();
  EXPECT_EQ(form.windowTitle(), "Data Table Export");
  Inspect(form);
  EXPECT_EQ(Text(form), "X Value\tCalc Y\r\n1\t3.2\r\n3\t7.2\r\n5\t11.2\r\nEND\r\n");
  dialogs.ChooseFile(folder.Path("table.txt"));
  Click(form, "cmdExport");
  WholeFile file;
  EXPECT_EQ(file.Read(folder.Path("table.txt")), 0);
  EXPECT_EQ(file.Text(), Text(form));
  dialogs.Do([this](QDialog& dialog) {
    QPrinter& printer = *dynamic_cast<QPrintDialog&>(dialog).printer();
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QString::fromStdString(folder.Path("table.pdf")));
    dialog.done(QDialog::Accepted);
  });
  Click(form, "cmdPrint");
  EXPECT_EQ(WholeFile().Read(folder.Path("table.pdf")), 0);
}

TEST_F(TableWindowsTest, SearchesRootsAlongTheVariableThatIsChosen) {
  OpenPlane();
  Active().findChild<QTableView*>("SolvedList")->selectRow(0);
  dialogs.Do([](QDialog& form) {
    Inspect(form);
    auto* variable = form.findChild<QComboBox*>("cmbVariable");
    EXPECT_FALSE(variable->isEnabled());
    form.findChild<QRadioButton*>("optnTableType2")->click();
    EXPECT_TRUE(variable->isEnabled());
    variable->setCurrentIndex(1);
    form.accept();
  });
  dialogs.Do([](QDialog& form) {
    EXPECT_EQ(form.findChild<QLineEdit*>("txtVar1")->text(), "X1");
    Inspect(form);
    form.reject();
  });
  Trigger("mnuResultsTableExport");
  EXPECT_EQ(Active().findChild<frmTableExport*>(), nullptr);
}

TEST_F(TableWindowsTest, PutsNumbersIntoTheSheet) {
  Open();
  frmTableExport& form = LineTable();
  // With the row of END, which is left out.
  form.findChild<TableView*>()->selectAll();
  Select(7, 1, 7, 1);
  dialogs.Do([](QDialog& dialog) {
    EXPECT_EQ(dialog.objectName(), "frmPSpecial");
    dialog.accept();
  });
  Click(form, "cmdSheet");
  EXPECT_EQ(Frame::Shown(7, 2), "3.2");
  EXPECT_EQ(Frame::Shown(8, 1), "5");
  EXPECT_EQ(Frame::Shown(9, 1), "");
  EXPECT_EQ(Action("mnuEditUndo").text(), "&Undo Paste Special");
}

}  // namespace
}  // namespace quorvex
