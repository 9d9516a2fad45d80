// The import dialogs, used as a user does: from the Data menu, by the command line and by dropping files.

#include <QCheckBox>
#include <QComboBox>
#include <QDropEvent>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTableView>

#include "Accessibility.h"
#include "Frame.h"
#include "Paths.h"
#include "RowTexts.h"
#include "import/OdbcSource.h"

namespace quorvex {
namespace {

using Texts = std::vector<std::string>;

// How the messages begin; their words are tested with the import.
constexpr const char* kOverwrite = "This operation may overwrite existing data.";
constexpr const char* kNothingAssigned =
    "You did not assign data columns to any variables, so no data can be imported.";
constexpr const char* kSomeUnassigned = "You did not assign data columns to all variables,";
constexpr const char* kSomeUnassignedOfDatabase = "You did not assign columns to all variables,";

std::string UnknownExtension(const std::string& file) {
  return "The command line argument file name '" + file +
         "' does not have a Quorvex extension. Please specify a new project type, then the file can be imported.";
}

Texts Lines(QWidget& form, const char* list) {
  Texts lines;
  for (int i = 0; i < List(form, list).count(); ++i) lines.push_back(List(form, list).item(i)->text().toStdString());
  return lines;
}
void DoubleClick(QWidget& form, const char* name, int line) {
  auto& list = List(form, name);
  const QPoint at = list.visualItemRect(list.item(line)).center();
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, at);
  QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, at);
}
QModelIndex Preview(QWidget& form, int row, int col) {
  return In<QTableView>(form, "DataPreview").model()->index(row - 1, col - 1);
}
std::string Cell(QWidget& form, int row, int col) { return Preview(form, row, col).data().toString().toStdString(); }
bool Dimmed(QWidget& form, int row, int col) { return Preview(form, row, col).data(Qt::ForegroundRole).isValid(); }
bool Marked(QWidget& form, int row, int col) { return Preview(form, row, col).data(Qt::BackgroundRole).isValid(); }
std::string StartRow(QWidget& form) { return LineBox(form, "ImportText").text().toStdString(); }

class Import : public Frame {
 protected:
  Texts Rows() { return RowTexts(Document().Sheet.Cells, Document().Sheet.ColumnCount()); }
};

TEST_F(Import, SplitsShowsAndAssignsAsClicked) {
  const std::string file = folder.Write("runs.txt", "id;t;y\n1;0,5;NA\n2;1.5;3\n3;2,5;4\n");
  Start();
  dialogs.ChooseFile(file);
  dialogs.Do([&](QDialog& form) {
    EXPECT_EQ(form.objectName(), "frmImport");
    EXPECT_EQ(form.windowTitle().toStdString(), "Preview of '" + file + "'");
    for (const auto& [name, checked] : {std::pair("Tab", true), {"Comma", true}, {"SemiColon", true}, {"Space", false}})
      EXPECT_EQ(In<QCheckBox>(form, name).isChecked(), checked) << name;
    EXPECT_EQ(In<QCheckBox>(form, "DupCheck").text().remove('&'), "Treat consecutive delimeters as one");
    EXPECT_EQ(In<QCheckBox>(form, "ckLocale").text().remove('&'), "Interpret \".\" as decimal symbol");
    EXPECT_EQ(Lines(form, "lstColumns"), (Texts{"id", "t", "y", "Column 4"}));
    Click(form, "Comma");
    EXPECT_EQ(Lines(form, "lstColumns"), (Texts{"id", "t", "y"}));
    EXPECT_EQ(Cell(form, 2, 2), "0,5");
    Click(form, "ckLocale");
    EXPECT_EQ(Cell(form, 2, 2), "0.5");
    Click(form, "SemiColon");
    EXPECT_EQ(Cell(form, 2, 1), "1;0,5;NA");
    Click(form, "SemiColon");
    EXPECT_EQ(StartRow(form), "2");
    EXPECT_TRUE(Dimmed(form, 1, 2));
    EXPECT_FALSE(Dimmed(form, 2, 2));
    EXPECT_EQ(Lines(form, "lstHeaders"), (Texts{"X", "Y"}));  // three columns: which ones isn't obvious
    EXPECT_FALSE(In(form, "cmdUnAssign").isEnabled());
    Click(form, "Finish");
    EXPECT_TRUE(dialogs.Said.back().starts_with(kNothingAssigned));
    // The column whose cell is clicked is the one to be assigned.
    auto& preview = In<QTableView>(form, "DataPreview");
    QTest::mouseClick(preview.viewport(), Qt::LeftButton, {}, preview.visualRect(Preview(form, 3, 2)).center());
    EXPECT_EQ(List(form, "lstColumns").currentRow(), 1);
    DoubleClick(form, "lstHeaders", 0);
    EXPECT_EQ(Lines(form, "lstHeaders"), (Texts{"X: t", "Y"}));
    EXPECT_EQ(preview.model()->headerData(1, Qt::Horizontal).toString(), "t\nX");
    Click(form, "Finish");
    EXPECT_TRUE(dialogs.Said.back().starts_with(kSomeUnassigned));
    Click(form, "cmdAssign");  // the next of both lists
    EXPECT_EQ(Lines(form, "lstHeaders"), (Texts{"X: t", "Y: y"}));
    Click(form, "cmdUnAssign");
    EXPECT_EQ(Lines(form, "lstHeaders"), (Texts{"X: t", "Y"}));
    DoubleClick(form, "lstColumns", 2);
    EXPECT_EQ(Lines(form, "lstHeaders"), (Texts{"X: t", "Y: y"}));
    auto& start = In<QSpinBox>(form, "UpDnStartRow");
    start.setFocus();
    start.selectAll();
    QTest::keyClicks(&start, "5");
    EXPECT_TRUE(Dimmed(form, 4, 2));
    Click(form, "Finish");
    EXPECT_EQ(dialogs.Said.back(), "The start row you specified is larger than the number of lines in the file.");
    EXPECT_EQ(form.focusWidget(), &In(form, "UpDnStartRow"));
    for (int i = 0; i < 3; ++i) QTest::keyClick(form.focusWidget(), Qt::Key_Down);
    EXPECT_TRUE(In<QCheckBox>(form, "ckHeadings").isChecked());
    EXPECT_EQ(StartRow(form), "2");
    auto& texts = In<QCheckBox>(form, "ckTextMissing");
    EXPECT_EQ(texts.text(), "1 cell is text: NA. Read it as missin&g?");
    EXPECT_TRUE(Marked(form, 2, 3));
    EXPECT_FALSE(Dimmed(form, 2, 3) || Marked(form, 1, 3) || Marked(form, 3, 3));
    Click(form, "ckTextMissing");
    EXPECT_TRUE(Dimmed(form, 2, 3));
    EXPECT_FALSE(Marked(form, 2, 3));
    Click(form, "ckTextMissing");
    EXPECT_FALSE(In(form, "txtMissingData").isEnabled());
    Click(form, "ckMissingData");
    QTest::keyClicks(&In(form, "txtMissingData"), "NA");
    EXPECT_TRUE(Dimmed(form, 2, 3));
    EXPECT_FALSE(texts.isVisible());
    QTest::keyClick(&form, Qt::Key_Return);  // the default button
  });
  for (const auto button : {QMessageBox::Ok, QMessageBox::No, QMessageBox::Ok}) dialogs.Press(button);
  Trigger("mnuDataImport");
  EXPECT_EQ(dialogs.Said.size(), 3);
  EXPECT_EQ(Rows(), (Texts{"0.5 -", "1.5 3", "2.5 4"}));
  EXPECT_EQ(Document().Sheet.Headers, (Texts{"t", "y"}));  // the project was fresh
  EXPECT_EQ(Shown(2, 2), "3");
  EXPECT_EQ(Current(), std::pair(1, 1));
  EXPECT_EQ(session.Preferences.Text("importdir") + "/", folder.Path(""));
  emit frame->findChild<QMenu*>("edit")->aboutToShow();
  EXPECT_EQ(Action("mnuEditUndo").text(), "&Undo Import");
  Trigger("mnuEditUndo");
  EXPECT_EQ(Rows(), Texts());
  EXPECT_EQ(Document().Sheet.Headers, (Texts{"X", "Y"}));
}

TEST_F(Import, ShowsDatesAndAsksForTheirOrder) {
  const std::string file = folder.Write("runs.txt", "day\ty\n03/04/2026\t1\n05/04/2026\t2\n31/02/2026\t3\n");
  Start();
  const int width = Grid().columnWidth(0);
  EXPECT_TRUE(Grid().model()->setData(Grid().model()->index(0, 0), "2026-04-03 11:30:15.25", Qt::EditRole));
  EXPECT_EQ(Shown(1, 1), "2026-04-03 11:30:15.250");
  EXPECT_GT(Grid().columnWidth(0), width);
  Trigger("mnuEditUndo");
  dialogs.ChooseFile(file);
  dialogs.Do([&](QDialog& form) {
    auto& dayFirst = In<QCheckBox>(form, "ckDayFirst");
    EXPECT_EQ(dayFirst.text(), "Nothing in column 'day' tells day from month in 03/04/2026. Read the da&y first");
    EXPECT_TRUE(dayFirst.isVisible() && !dayFirst.isChecked());  // as the locale has it
    EXPECT_EQ(StartRow(form), "2");
    EXPECT_TRUE(Marked(form, 4, 1));
    EXPECT_FALSE(Marked(form, 2, 1) || Marked(form, 3, 1));
    Click(form, "ckDayFirst");
    EXPECT_TRUE(dayFirst.isChecked());
    QTest::keyClick(&form, Qt::Key_Return);
  });
  dialogs.Press(QMessageBox::Ok);
  Trigger("mnuDataImport");
  EXPECT_EQ(dialogs.Said, Texts{"1 cell is no number: '31/02/2026' in day:3."});
  EXPECT_EQ(Rows(), (Texts{"46115 1", "46117 2", "31/02/2026 3"}));
  EXPECT_EQ(Shown(1, 1), "03/04/2026");
  // In the locale's order it would be another day, so the editor has it in the order of no locale.
  EXPECT_EQ(Grid().model()->index(0, 0).data(Qt::EditRole).toString(), "2026-04-03");
  EXPECT_TRUE(Grid().model()->setData(Grid().model()->index(2, 0), "04/30/2026", Qt::EditRole));
  EXPECT_EQ(Shown(3, 1), "30/04/2026");
  Trigger("mnuEditUndo");
  Trigger("mnuEditUndo");
  EXPECT_EQ(Rows(), Texts());
  EXPECT_EQ(Document().Sheet.Formats[0].NumberFormat, "General");
  Trigger("mnuEditRedo");
  dialogs.ChooseFile(folder.Path("days.qvx"));
  Trigger("mnuFileSave");
  Trigger("mnuFileClose");
  frame->OpenFile(QString::fromStdString(folder.Path("days.qvx")));
  EXPECT_EQ(Shown(2, 1), "05/04/2026");
  // Into a project of its own, too.
  dialogs.Do([](QDialog& form) { QTest::keyClick(&form, Qt::Key_Return); });
  frame->OpenFile(QString::fromStdString(folder.Write("times.csv", "2026-04-03T10:30,1\n2026-04-03T11:30,2\n")));
  EXPECT_EQ(Shown(2, 1), "2026-04-03 11:30");
}

TEST_F(Import, AsksBeforeItOverwritesAndLeavesTheSheetWhereCancelled) {
  const std::string file = folder.Write("runs.txt", "t,y\n7,8\n9,10\n"), empty = folder.Write("empty.txt", "");
  Start();
  Type("1");
  dialogs.ChooseFile(file);
  for (const char* command : {"mnuDataImport", "mnuDataImportDatabase"})
    EXPECT_TRUE(SaidBy(command, QMessageBox::No).starts_with(kOverwrite)) << command;
  dialogs.ChooseFile(file);
  dialogs.Press(QMessageBox::Yes);
  dialogs.Do([](QDialog& form) { Click(form, "CancelCommand"); });
  Trigger("mnuDataImport");
  dialogs.ChooseFile(empty);
  dialogs.Press(QMessageBox::Yes);
  EXPECT_EQ(SaidBy("mnuDataImport"), "It appears that the file '" + empty + "' contains no data.");
  EXPECT_EQ(Rows(), Texts{"1 -"});
  dialogs.ChooseFile(file);
  dialogs.Press(QMessageBox::Yes);
  dialogs.Do([](QDialog& form) {
    EXPECT_FALSE(In<QCheckBox>(form, "ckHeadings").isChecked());
    Click(form, "Finish");
  });
  Trigger("mnuDataImport");
  EXPECT_EQ(Rows(), (Texts{"7 8", "9 10"}));
  EXPECT_EQ(Document().Sheet.Headers, (Texts{"X", "Y"}));  // a project in use keeps its names
}

// A missing marker, deviations, a long file and a decimal comma; what every sample file holds is tested with the
// import.
TEST_F(Import, OpensAFileOfTheCommandLine) {
  const struct {
    const char* File;
    int Variables;
    bool Sd;
    std::size_t Rows;
    const char *First, *Last;
    const char* Missing = "";
    char Decimal = '.';
  } kFiles[] = {
      {"airquality.csv", 3, false, 153, "190 7.4 67 41", "223 11.5 68 20", "NA"},
      {"gamma_spectrum.txt", 1, true, 300, "1074.8281 17 4.123106", "1129.484 12 3.464102"},
      {"longley.csv", 6, false, 16, "83 234.289 235.6 159 107.608 1947 60.323",
       "116.9 554.894 400.7 282.7 130.081 1962 70.551"},
      {"pressure_decimal_comma.csv", 1, false, 19, "0 0.0002", "360 806", "", ','},
  };
  for (const auto& c : kFiles) {
    SCOPED_TRACE(c.File);
    session.Locale.DecimalSeparator = c.Decimal;
    const std::string file = TestData(c.File);
    dialogs.Said.clear();
    dialogs.Do([&](QDialog& form) {
      EXPECT_EQ(form.windowTitle().toStdString(),
                "Preview of '" + file + "'" + (c.Rows > 200 ? " (first 200 lines)" : ""));
      EXPECT_EQ(In<QTableView>(form, "DataPreview").model()->rowCount(), std::min<int>(int(c.Rows) + 1, 200));
      EXPECT_EQ(In<QSpinBox>(form, "txtVariables").value(), c.Variables);
      EXPECT_EQ(In<QCheckBox>(form, "chkStDev").isChecked(), c.Sd);
      if (c.Decimal == ',') {
        EXPECT_EQ(Cell(form, 2, 2), "0,0002");
      }
      if (*c.Missing) {
        Click(form, "ckMissingData");
        QTest::keyClicks(&In(form, "txtMissingData"), c.Missing);
      }
      Click(form, "Finish");
    });
    Start(file);
    EXPECT_EQ(dialogs.Said, Texts());
    ASSERT_EQ(Windows(), 1);
    const Texts rows = Rows();
    ASSERT_EQ(rows.size(), c.Rows);
    EXPECT_EQ(rows.front(), c.First);
    EXPECT_EQ(rows.back(), c.Last);
    EXPECT_EQ(Document().Sheet.HasStandardDeviation, c.Sd);
    EXPECT_TRUE(Active().isWindowModified());
    CloseUnsaved();
  }
}

TEST_F(Import, LeavesNoWindowBehindWhereCancelled) {
  const std::string file = TestData("cars.csv"), empty = folder.Write("empty.csv", "\n");
  dialogs.Do([](QDialog& form) { QTest::keyClick(&form, Qt::Key_Escape); });
  Start(file);
  EXPECT_EQ(Windows(), 0);
  EXPECT_TRUE(frame->close());

  Start();
  dialogs.ChooseFile(file);
  dialogs.Do([](QDialog& form) {
    In<QSpinBox>(form, "txtVariables").setValue(2);
    Click(form, "CancelCommand");
  });
  Trigger("mnuFileOpen");
  ASSERT_EQ(Windows(), 1);
  EXPECT_EQ(Document().FileName, "Untitled");
  EXPECT_EQ(Document().Sheet.IndependentVariables, 1);
  EXPECT_FALSE(Active().isWindowModified());

  // Dropped; the empty project gives way.
  dialogs.Do([](QDialog& form) { Click(form, "Finish"); });
  Drop({file});
  EXPECT_TRUE(QTest::qWaitFor([this] { return frame->ActiveProject() != nullptr && !Rows().empty(); }));
  EXPECT_EQ(Windows(), 1);
  EXPECT_EQ(Rows().size(), 50);
  Trigger("mnuEditUndo");
  EXPECT_EQ(Rows(), Texts());
}

TEST_F(Import, MakesTheProjectThatIsChosenInTheDialog) {
  Start();
  dialogs.ChooseFile(TestData("airquality.csv"));
  dialogs.Do([](QDialog& form) {
    const AccessibilityWalk walk(form);
    ExpectMnemonicsDoNotMeet(form);
    EXPECT_EQ(Lines(form, "lstHeaders"), (Texts{"X1: solar", "X2: wind", "X3: temp", "Y: ozone"}));
    In<QSpinBox>(form, "txtVariables").setValue(1);
    EXPECT_EQ(Lines(form, "lstHeaders"), (Texts{"X", "Y"}));
    Click(form, "chkStDev");
    EXPECT_EQ(Lines(form, "lstHeaders"), (Texts{"X", "Y", "StDev"}));
    for (const int column : {1, 3}) {
      List(form, "lstColumns").setCurrentRow(column);
      Click(form, "cmdAssign");
    }
    EXPECT_EQ(In<QCheckBox>(form, "ckTextMissing").text(), "37 cells are text: NA. Read them as missin&g?");
    Click(form, "ckTextMissing");
    Click(form, "Finish");
  });
  dialogs.Press(QMessageBox::Yes);  // no deviations
  Trigger("mnuFileOpen");
  EXPECT_EQ(Document().Sheet.Headers, (Texts{"wind", "ozone", "StDev"}));
  EXPECT_EQ(Rows()[0], "7.4 41 -");
  EXPECT_EQ(Rows()[4], "14.3 - -");
}

// Decimal commas where the locale has a point, and commas between columns where it has not: one click.
TEST_F(Import, OffersToReadTheCommasOtherwise) {
  const struct {
    const char *File, *Notice, *Command;
    char Decimal;
    Texts Before, After;
    const char *First, *Last;
  } kFiles[] = {
      {"pressure_decimal_comma.csv",
       "The numbers have decimal commas: 0,0002.",
       "Read them as &numbers",
       '.',
       {"X1: temperature", "X2: pressure", "Y: Column 3"},
       {"X: temperature", "Y: pressure"},
       "0 0.0002",
       "360 806"},
      {"cars.csv",
       "Commas separate the columns: 4,2.",
       "Split the li&nes there",
       ',',
       {"X", "Y"},
       {"X: speed", "Y: dist"},
       "4 2",
       "25 85"},
      {"longley.csv",
       "Commas separate the columns: 83,234.289,235.6,159...",
       "Split the li&nes there",
       ',',
       {"X", "Y"},
       {"X1: deflator", "X2: gnp", "X3: unemployed", "X4: armed_forces", "X5: population", "X6: year", "Y: employed"},
       "83 234.289 235.6 159 107.608 1947 60.323",
       "116.9 554.894 400.7 282.7 130.081 1962 70.551"},
  };
  for (const auto& c : kFiles) {
    SCOPED_TRACE(c.File);
    session.Locale.DecimalSeparator = c.Decimal;
    dialogs.Do([&](QDialog& form) {
      const AccessibilityWalk walk(form);
      ExpectMnemonicsDoNotMeet(form);
      EXPECT_EQ(Lines(form, "lstHeaders"), c.Before);
      EXPECT_EQ(In<QLabel>(form, "lblOffer").text().toStdString(), c.Notice);
      EXPECT_EQ(In<QPushButton>(form, "cmdOffer").text(), c.Command);
      EXPECT_FALSE(In<QPushButton>(form, "cmdOffer").isDefault());
      Click(form, "cmdOffer");
      EXPECT_FALSE(In(form, "cmdOffer").isVisible() || In(form, "lblOffer").isVisible());
      EXPECT_EQ(In<QCheckBox>(form, "Comma").isChecked(), c.Decimal == ',');
      EXPECT_EQ(In<QCheckBox>(form, "ckLocale").isChecked(), c.Decimal == ',');
      EXPECT_EQ(Lines(form, "lstHeaders"), c.After);
      EXPECT_EQ(In<QSpinBox>(form, "txtVariables").value(), int(c.After.size()) - 1);
      Click(form, "ckLocale");  // back
      EXPECT_EQ(In(form, "cmdOffer").isVisible(), c.Decimal == '.');
      Click(form, "ckLocale");
      Click(form, "Finish");
    });
    Start(TestData(c.File));
    ASSERT_EQ(Windows(), 1);
    EXPECT_EQ(Rows().front(), c.First);
    EXPECT_EQ(Rows().back(), c.Last);
    CloseUnsaved();
  }
}

TEST_F(Import, SkipsTheCommentsThatItShows) {
  const std::string file = folder.Write("runs.txt",
                                        "# lamp 3, by A & B\n# time volts sd\n# s mV mV\n0\t1.5\t0.1\n1\t1.25\t0.1\n"
                                        "# a pause\n2\t1\t0.1\n");
  dialogs.Do([](QDialog& form) {
    const AccessibilityWalk walk(form);
    ExpectMnemonicsDoNotMeet(form);
    EXPECT_EQ(Lines(form, "lstHeaders"), (Texts{"X: time (s)", "Y: volts (mV)", "StDev: sd (mV)"}));
    EXPECT_EQ(StartRow(form), "4");
    auto& comments = In<QCheckBox>(form, "ckComments");
    EXPECT_EQ(comments.text(), "4 lines are comments: # lamp 3, by A && B. S&kip them");
    EXPECT_TRUE(comments.isChecked());
    EXPECT_EQ(Cell(form, 6, 1), "# a pause");
    EXPECT_TRUE(Dimmed(form, 6, 1) && !Dimmed(form, 7, 1));
    EXPECT_EQ(In<QTableView>(form, "DataPreview").columnSpan(5, 0), 3);
    EXPECT_FALSE(In(form, "ckTextMissing").isVisible());
    Click(form, "ckComments");
    EXPECT_EQ(In<QTableView>(form, "DataPreview").columnSpan(5, 0), 1);
    EXPECT_TRUE(Marked(form, 6, 1));
    EXPECT_EQ(In<QCheckBox>(form, "ckTextMissing").text(), "1 cell is text: # a pause. Read it as missin&g?");
    Click(form, "ckComments");
    Click(form, "Finish");
  });
  Start(file);
  EXPECT_EQ(dialogs.Said, Texts());
  EXPECT_EQ(Rows(), (Texts{"0 1.5 0.1", "1 1.25 0.1", "2 1 0.1"}));
  EXPECT_EQ(Document().Sheet.Headers, (Texts{"time (s)", "volts (mV)", "sd (mV)"}));
}

// A fresh project gives way to another one; one that somebody has begun gets the columns and keeps its notes.
TEST_F(Import, ChangesTheKindOfAProjectWithoutData) {
  Start();
  for (const bool begun : {false, true}) {
    if (begun) {
      Trigger("mnuFileNew");
      In<QPlainTextEdit>(Active(), "Notes").setPlainText("Plate 3");
    }
    dialogs.ChooseFile(TestData("dnase_sd.txt"));
    dialogs.Do([&](QDialog& form) {
      EXPECT_EQ(Lines(form, "lstHeaders"), (Texts{"X", "Y"}));
      Click(form, "chkStDev");
      EXPECT_EQ(Lines(form, "lstHeaders"), (Texts{"X: conc", "Y: density", "StDev: sd"}));
      Click(form, "Finish");
    });
    Trigger("mnuDataImport");
    EXPECT_EQ(Windows(), begun ? 2 : 1);
    EXPECT_EQ(Document().Sheet.Headers, (Texts{"conc", "density", "sd"}));
    EXPECT_EQ(Rows().size(), 8);
    EXPECT_EQ(Document().Notes, begun ? "Plate 3" : "");
    EXPECT_EQ(Active().UndoText(), begun ? "&Undo Change Columns and Import" : "&Undo Import");
    Trigger("mnuEditUndo");
    EXPECT_EQ(Rows(), Texts());
    EXPECT_EQ(Document().Sheet.Headers, begun ? (Texts{"X", "Y"}) : (Texts{"X", "Y", "StDev"}));
    Trigger("mnuEditRedo");
    EXPECT_EQ(Rows().size(), 8);
    EXPECT_EQ(Document().Sheet.Headers, (Texts{"conc", "density", "sd"}));
  }
}

TEST_F(Import, IsCoveredByNoTip) {
  folder.Write("quorvex.ini", "[startup]\nShow Tips at Startup=1\n");
  dialogs.Do([](QDialog& form) {
    EXPECT_EQ(form.objectName(), "frmImport");
    Click(form, "Finish");
  });
  Start(TestData("mauna_loa_co2.csv"));
  QTest::qWait(50);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_EQ(Rows().size(), 468);
}

// A file that others cut short while it is shown is imported as it was.
TEST_F(Import, TakesWhatItHasShown) {
  const std::string file = folder.Write("runs.csv", "x,y\n1,2\n3,4\n");
  dialogs.Do([&](QDialog& form) {
    folder.Write("runs.csv", "");
    Click(form, "Finish");
  });
  Start(file);
  EXPECT_EQ(dialogs.Said, Texts());
  EXPECT_EQ(Rows(), (Texts{"1 2", "3 4"}));
}

TEST_F(Import, GivesEveryListOfColumnsTheirNames) {
  dialogs.Do([](QDialog& form) { Click(form, "Finish"); });
  Start(folder.Write("runs.csv", "dose,rate,rate,error\n1,2,3,4\n2,5,3,1\n3,1,7,1\n4,4,4,4\n"));
  for (const char* command : {"mnuDataFill", "mnuDataSort", "mnuDataCombine", "mnuDataZeroNegative", "mnuDataVarSelect",
                              "mnuPlotColumns", "mnuFileDerive"}) {
    SCOPED_TRACE(command);
    QStringList shown;
    dialogs.Do([&](QDialog& form) {
      if (auto* column = form.findChild<QSpinBox*>("UpDnXCol")) column->setValue(3);
      for (const QComboBox* box : form.findChildren<QComboBox*>())
        for (int i = 0; i < box->count(); ++i) shown << box->itemText(i);
      for (const QListWidget* list : form.findChildren<QListWidget*>())
        for (int i = 0; i < list->count(); ++i) shown << list->item(i)->text();
      for (const QCheckBox* box : form.findChildren<QCheckBox*>()) shown << box->text();
      for (const QLabel* label : form.findChildren<QLabel*>()) shown << label->text();
      shown << form.windowTitle();
      form.reject();
    });
    Select(1, 1, 4, 4);
    if (std::string(command) == "mnuDataFill") Select(1, 2, 4, 2);
    Trigger(command);
    // The variable selection chooses among the columns of X.
    EXPECT_EQ(shown.filter("rate (column 2)").isEmpty(), false);
    EXPECT_EQ(shown.filter("rate (column 3)").isEmpty(), std::string(command) == "mnuDataVarSelect");
    EXPECT_TRUE(shown.filter(QRegularExpression("Column [0-9]")).isEmpty()) << shown.join('|').toStdString();
  }
}

// The designed sentence, and the kind that it asks for.
TEST_F(Import, AsksForTheKindWhereTheNameTellsNothing) {
  const std::string file = folder.Write("runs.log", "1 2\n3 4\n");
  dialogs.Press(QMessageBox::Ok);
  dialogs.Do([](QDialog& form) {
    EXPECT_EQ(form.windowTitle(), "New Project");
    In<QCheckBox>(form, "chkStDev").setChecked(true);
    QTest::keyClick(&form, Qt::Key_Return);
  });
  dialogs.Do([](QDialog& form) {
    EXPECT_EQ(Lines(form, "lstHeaders"), (Texts{"X", "Y", "StDev"}));
    QTest::keyClick(&form, Qt::Key_Escape);
  });
  Start(file);
  EXPECT_EQ(dialogs.Said, Texts{UnknownExtension(file)});
  EXPECT_EQ(Windows(), 0);
}

TEST_F(Import, ReadsTheSheetsOfASpreadsheet) {
  for (const char* name : {"spreadsheets/runs.ods", "spreadsheets/office.xlsx"}) {
    const std::string file = TestData(name);
    Start();
    dialogs.ChooseFile(file);
    dialogs.Do([&](QDialog& form) {
      EXPECT_EQ(form.windowTitle().toStdString(), "Preview of '" + file + "'");
      EXPECT_EQ(form.findChild<QWidget*>("Delimit_check"), nullptr);
      auto& sheets = In<QComboBox>(form, "cboSheet");
      EXPECT_EQ(sheets.currentText(), "Runs");
      EXPECT_EQ(sheets.count(), 3);
      EXPECT_EQ(Cell(form, 1, 1), "time");
      EXPECT_EQ(StartRow(form), "2");
      sheets.setFocus();
      QTest::keyClick(&sheets, Qt::Key_Down);
      EXPECT_EQ(Cell(form, 3, 3), "1");
      EXPECT_EQ(StartRow(form), "3");
      QTest::keyClick(&sheets, Qt::Key_Down);  // without a cell
      const AccessibilityWalk walk(form);
      EXPECT_EQ(Lines(form, "lstColumns"), Texts());
      EXPECT_FALSE(In(form, "cmdAssign").isEnabled());
      QTest::keyClick(&sheets, Qt::Key_Home);
      EXPECT_EQ(StartRow(form), "2");
      List(form, "lstColumns").setCurrentRow(2);
      Click(form, "cmdAssign");
      List(form, "lstColumns").setCurrentRow(1);
      Click(form, "cmdAssign");
      Click(form, "Finish");
    });
    Trigger("mnuDataImport");
    EXPECT_EQ(Rows()[0], "43845 0.1");  // a date of the file
    EXPECT_EQ(Document().Sheet.Headers, (Texts{"when", "signal"}));
    CloseUnsaved();
  }
  const std::string broken = folder.Write("broken.ods", "x");
  dialogs.Said.clear();
  dialogs.Press(QMessageBox::Ok);
  Start(broken);
  EXPECT_EQ(dialogs.Said, (Texts{"Error importing data from '" + broken +
                                 "'. The file is damaged, or it is no spreadsheet of type .ods or .xlsx."}));
  EXPECT_EQ(Windows(), 0);
}

TEST_F(Import, ReadsATableOfADatabase) {
  const std::string database = "Driver=SQLite3;Database=" + folder.Path("lab.db");
  for (const char* query : {"CREATE TABLE runs (t TEXT, y REAL)", "CREATE TABLE wide (a REAL, b REAL, c REAL)",
                            "INSERT INTO runs VALUES ('2020-01-15', 0.5), ('2020-01-16', 1.5)"})
    ASSERT_TRUE(QueryDatabase(database + ";NoCreat=0", query));
  const TemporaryVariable sources(
      "ODBCINI",
      folder.Write("odbc.ini", "[lab]\nDriver=SQLite3\nDatabase=" + folder.Path("lab.db") + "\n[lost]\nDriver=None\n")
          .c_str());
  Start();
  dialogs.Do([&](QDialog& form) {
    EXPECT_EQ(form.objectName(), "frmDataBase");
    const AccessibilityWalk walk(form);
    EXPECT_FALSE(In(form, "Finish").isEnabled() || In(form, "cmdConnect").isEnabled());
    auto& source = In<QComboBox>(form, "cboSource");
    source.setCurrentText("lost");
    EXPECT_EQ(LineBox(form, "txtConnect").text(), "DSN=lost");
    QTest::keyClicks(&In(form, "txtPassword"), "secret");
    Click(form, "cmdConnect");
    EXPECT_TRUE(dialogs.Said.back().starts_with("Error importing data from 'lost'. ")) << dialogs.Said.back();
    EXPECT_EQ(dialogs.Said.back().find("secret"), std::string::npos);
    In<QComboBox>(form, "cboSource").setCurrentText("lab");
    LineBox(form, "txtPassword").clear();
    Click(form, "cmdConnect");
    auto& table = In<QComboBox>(form, "cboTable");
    EXPECT_EQ(table.currentText(), "runs");
    EXPECT_EQ(Cell(form, 1, 1), "2020-01-15");
    EXPECT_EQ(Lines(form, "lstHeaders"), (Texts{"X: t", "Y: y"}));
    EXPECT_EQ(Lines(form, "lstColumns"), (Texts{"t", "y"}));
    EXPECT_EQ(In<QTableView>(form, "DataPreview").model()->headerData(0, Qt::Horizontal), "t\nX");
    table.setCurrentText("wide");
    EXPECT_EQ(Cell(form, 1, 1), "");
    table.setCurrentText("runs");
    Click(form, "cmdUnAssign");  // X
    Click(form, "Finish");
    EXPECT_TRUE(dialogs.Said.back().starts_with(kSomeUnassignedOfDatabase));
    // What is typed is no longer the source that was chosen, and nothing is shown of it until it is connected to.
    auto& connect = LineBox(form, "txtConnect");
    connect.selectAll();
    QTest::keyClicks(&connect, QString::fromStdString(database));
    EXPECT_EQ(In<QComboBox>(form, "cboSource").currentIndex(), 0);
    EXPECT_FALSE(In(form, "Finish").isEnabled() || In(form, "cboTable").isEnabled());
    QTest::keyClick(&connect, Qt::Key_Return);
    EXPECT_EQ(In<QComboBox>(form, "cboTable").count(), 2);
    Click(form, "Finish");
  });
  for (const auto button : {QMessageBox::Ok, QMessageBox::No}) dialogs.Press(button);
  Trigger("mnuDataImportDatabase");
  EXPECT_EQ(Rows(), (Texts{"43845 0.5", "43846 1.5"}));
  EXPECT_EQ(Document().Sheet.Headers, (Texts{"t", "y"}));
  emit frame->findChild<QMenu*>("edit")->aboutToShow();
  EXPECT_EQ(Action("mnuEditUndo").text(), "&Undo Import");
}

// A server that doesn't answer, by Escape; a table that doesn't end, by the button. The dialog is there as before.
TEST_F(Import, IsCancelledWhileADatabaseIsSlow) {
  Start();
  int waits = 0;
  QTimer user;
  QObject::connect(&user, &QTimer::timeout, [&] {
    QWidget* const window = QApplication::activeModalWidget();
    if (window == nullptr || window->objectName() != "WaitWindow") return;
    const AccessibilityWalk walk(*window);
    if (++waits == 1)
      QTest::keyClick(window, Qt::Key_Escape);
    else
      Click(*window, "cmdCancel");
  });
  user.start(20);
  dialogs.Do([&](QDialog& form) {
    auto& connect = LineBox(form, "txtConnect");
    connect.setText(QString::fromStdString("Driver=" + AwkwardDriver() + ";Server=deaf"));
    Click(form, "cmdConnect");
    EXPECT_EQ(waits, 1);
    EXPECT_FALSE(In(form, "Finish").isEnabled() || In(form, "cboTable").isEnabled());
    connect.setText(QString::fromStdString("Driver=" + AwkwardDriver()));
    Click(form, "cmdConnect");
    EXPECT_EQ(waits, 1);
    auto& table = In<QComboBox>(form, "cboTable");
    EXPECT_EQ(table.currentText(), "lab.order");
    table.setCurrentText("lab.endless");
    EXPECT_EQ(waits, 2);
    EXPECT_EQ(Lines(form, "lstColumns"), Texts());
    form.reject();
  });
  Trigger("mnuDataImportDatabase");
  EXPECT_EQ(dialogs.Said, Texts());
}

TEST_F(Import, IsUsedByKeysAndReadAloud) {
  Start();
  const auto check = [](QDialog& form, const Texts& order) {
    const AccessibilityWalk walk(form);
    ExpectMnemonicsDoNotMeet(form);
    Texts met;
    QWidget* at = &form;
    do {
      at = at->nextInFocusChain();
      if (!at->objectName().isEmpty() && (at->focusPolicy() & Qt::TabFocus) && at->isEnabled() && at->isVisible() &&
          !at->objectName().startsWith("qt_") && at->objectName() != "ImportText")
        met.push_back(at->objectName().toStdString());
    } while (at != &form);
    EXPECT_EQ(met, order);
    form.reject();
  };
  const Texts shared = {"DataPreview", "UpDnStartRow", "ckMissingData", "ckHeadings", "txtVariables", "chkStDev",
                        "lstColumns",  "cmdAssign",    "lstHeaders",    "Finish",     "CancelCommand"};
  const auto behind = [&](Texts first, bool texts) {
    first.insert(first.end(), shared.begin(), shared.end());
    if (texts) first.insert(std::ranges::find(first, "txtVariables"), "ckTextMissing");
    return first;
  };
  for (const auto& [file, order] :
       {std::pair("women.txt", behind({"Tab", "Comma", "SemiColon", "Space", "DupCheck", "ckLocale"}, false)),
        {"spreadsheets/runs.ods", behind({"cboSheet"}, true)}}) {
    dialogs.ChooseFile(TestData(file));
    dialogs.Do([&, order = order](QDialog& form) {
      List(form, "lstHeaders").setCurrentRow(0);
      if (In(form, "cmdUnAssign").isEnabled()) Click(form, "cmdUnAssign");
      check(form, order);
    });
    Trigger("mnuDataImport");
  }
  dialogs.Do([&](QDialog& form) {
    check(form, {"cboSource", "txtConnect", "txtUser", "txtPassword", "CancelCommand"});
  });
  Trigger("mnuDataImportDatabase");
}

}  // namespace
}  // namespace quorvex
