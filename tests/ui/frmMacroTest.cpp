// The macro editor over the active project, used by clicks and keys.

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTabWidget>

#include "Accessibility.h"
#include "Frame.h"
#include "Mnemonics.h"
#include "batch/ui/frmMacro.h"

namespace quorvex {
namespace {

class MacroEditor : public Frame {
 protected:
  static void TypeInto(QDialog& form, const char* name, const QString& text) {
    auto* edit = form.findChild<QWidget*>(name);
    ASSERT_NE(edit, nullptr) << name;
    edit->setFocus();
    if (auto* line = qobject_cast<QLineEdit*>(edit)) line->selectAll();
    QTest::keyClicks(edit, text);
  }
  static void Tick(QDialog& form, const char* name) {
    auto* button = form.findChild<QAbstractButton*>(name);
    ASSERT_NE(button, nullptr) << name;
    ASSERT_TRUE(button->isEnabled()) << name;
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, button->height() / 2));
  }
  static void GoToPage(QDialog& form, int page) { form.findChild<QTabWidget*>()->setCurrentIndex(page); }

  // Opens the editor and shows the macro that `fill` makes.
  std::string View(std::function<void(QDialog&)> fill) {
    std::string macro;
    dialogs.Do([this, fill, &macro](QDialog& form) {
      fill(form);
      dialogs.Do([&macro](QDialog& view) {
        macro = view.findChild<QPlainTextEdit*>("txtMacro")->toPlainText().toStdString();
        const auto* list = view.findChild<QListWidget*>("lstFindings");
        for (int row = 0; row < list->count(); ++row) macro += list->item(row)->text().toStdString() + '\n';
        macro += view.findChild<QLabel*>("lblCount")->text().toStdString();
        ExpectMnemonicsDoNotMeet(view);
        const AccessibilityWalk walk(view);
        QTest::keyClick(&view, Qt::Key_Escape);
      });
      QTest::mouseClick(form.findChild<QPushButton*>("cmdView"), Qt::LeftButton);
      QTest::keyClick(&form, Qt::Key_Escape);
    });
    Trigger("mnuToolsMacro");
    return macro;
  }
};

TEST_F(MacroEditor, ShowsTheMacroThatItsFieldsMake) {
  Start();
  const std::string macro = View([](QDialog& form) {
    TypeInto(form, "txtComments", "first");
    Tick(form, "ckShowProgress");
    TypeInto(form, "txtMaxIterations", "300");
    Tick(form, "optnCentral");
    GoToPage(form, 1);
    TypeInto(form, "txtDataFile", "data.csv");
    TypeInto(form, "txtColumnOrder", "y, x");
    Tick(form, "ckDelimitTab");
    Tick(form, "ckDelimitSpace");
    EXPECT_FALSE(form.findChild<QLineEdit*>("txtMissingData")->isEnabled());
    Tick(form, "ckMissingData");
    TypeInto(form, "txtMissingData", "NA");
    Tick(form, "ckSQLQuery");
    TypeInto(form, "txtSQLQuery", "SELECT 1");
    Tick(form, "ckParameterFile");
    TypeInto(form, "txtParameterFile", "sites.csv");
    GoToPage(form, 2);
    TypeInto(form, "txtOutputFile", "out.txt");
    form.findChild<QComboBox*>("cmbOutput")->setCurrentText("Spreadsheet");
    form.findChild<QComboBox*>("cmbSortBy")->setCurrentText("Ra^2");
    form.findChild<QComboBox*>("cmbOutputDelimit")->setCurrentText("Comma");
    Tick(form, "ckTableCalcData");
    Tick(form, "ckLogFile");
    TypeInto(form, "txtLogFile", "run.log");
    Tick(form, "ckLogSummaryOnly");
    GoToPage(form, 3);
    Tick(form, "optnModels4");
    auto* models = form.findChild<QListWidget*>("lstSource");
    ASSERT_TRUE(models->isEnabled());
    models->setFocus();
    QTest::keyClick(models, Qt::Key_Space);  // ticks the first
  });
  EXPECT_EQ(macro.substr(0, macro.find("        ID = ")),
            "B_MACRO\n"
            "    Comment = first\n"
            "    HandShake = ShowProgress\n"
            "    RegressionTolerance = 1E-10\n"
            "    UnchangedIterations = 10\n"
            "    MaxIterations = 300\n"
            "    Derivatives = CentralDifference\n"
            "    DataFile = data.csv\n"
            "    DataFirstLine = 1\n"
            "    IndependentVariables = 1\n"
            "    Weighted = False\n"
            "    SQLQuery = SELECT 1\n"
            "    ParameterFile = sites.csv\n"
            "    ColumnOrder = y, x\n"
            "    InputDelimit = Comma, SemiColon, IgnoreConsecutive\n"
            "    OverrideDecimal = True\n"
            "    MissingData = NA\n"
            "    OutputFile = out.txt\n"
            "    OutputFormat = Spreadsheet\n"
            "    LogFile = run.log\n"
            "    LogSummaryOnly = True\n"
            "    OutputDelimit = Comma\n"
            "    TableOutput = CalcData\n"
            "    SortKey = Ra^2\n"
            "    OutputFitInfo = True\n"
            "    B_MODEL\n");
  EXPECT_TRUE(macro.ends_with("    E_MODEL\nE_MACRO\nThere were 0 error(s) and 0 warning(s).")) << macro;
  EXPECT_TRUE(frame->close());
}

TEST_F(MacroEditor, ListsWhatItFindsAndAsksBeforeTheExport) {
  Start();
  const std::string text = View([](QDialog&) {});
  EXPECT_NE(text.find("Warning: No interactive options have been set (Configuration Tab).\n"), std::string::npos);
  EXPECT_NE(text.find("ERROR: No regression models have been selected (Models Tab).\n"
                      "There were 3 error(s) and 2 warning(s)."),
            std::string::npos)
      << text;

  const std::string file = folder.Path("fit.cfg");
  dialogs.Do([&, this](QDialog& form) {
    dialogs.Press(QMessageBox::No);
    QTest::mouseClick(form.findChild<QPushButton*>("cmdExport"), Qt::LeftButton);
    EXPECT_FALSE(std::filesystem::exists(file));
    GoToPage(form, 3);
    Tick(form, "optnModels3");
    EXPECT_FALSE(form.findChild<QListWidget*>("lstSource")->isEnabled());
    dialogs.Press(QMessageBox::Yes);
    dialogs.ChooseFile(folder.Path("fit"));
    dialogs.Press(QMessageBox::Ok);
    QTest::mouseClick(form.findChild<QPushButton*>("cmdExport"), Qt::LeftButton);
    form.reject();
  });
  Trigger("mnuToolsMacro");
  EXPECT_EQ(dialogs.Said,
            (std::vector<std::string>{"There are 3 errors and 2 warnings. Do you want to export the file anyway?",
                                      "There are 2 errors and 2 warnings. Do you want to export the file anyway?",
                                      "The file '" + file + "' contains the exported macro."}));
  EXPECT_TRUE(folder.Read("fit.cfg").starts_with("B_MACRO\r\n"));
  EXPECT_TRUE(frame->close());
}

TEST_F(MacroEditor, TurnsOffWhatAProjectFileHasNoUseFor) {
  Start();
  const std::string macro = View([](QDialog& form) {
    GoToPage(form, 2);
    form.findChild<QComboBox*>("cmbOutput")->setCurrentText("Quorvex");
    for (const char* name : {"cmbSortBy", "cmbOutputDelimit", "ckTableDataFile", "ckOutputFitInfo"})
      EXPECT_FALSE(form.findChild<QWidget*>(name)->isEnabled()) << name;
    EXPECT_TRUE(form.findChild<QWidget*>("txtOutputFile")->isEnabled());
  });
  EXPECT_EQ(macro.find("SortKey"), std::string::npos);
  EXPECT_TRUE(frame->close());
}

TEST_F(MacroEditor, KeepsEveryFieldItIsGiven) {
  const LocaleText locale;
  const Settings preferences;
  const ModelCollection none;
  MessageBoxPrompter user(nullptr);
  MacroFields given;
  given.Comments = "a\nb";
  given.UseDDE = given.ShowProgress = given.ShowMessageBox = given.CentralDifference = given.Weighted = true;
  given.UseSQLQuery = given.UseParameterFile = given.UseMissingData = given.UseLogFile = given.LogSummaryOnly = true;
  given.TableDataFile = given.TableCalcData = given.TableErrorData = given.TableMinMaxError = true;
  given.DelimitTab = given.DelimitComma = given.DelimitSemicolon = given.DelimitSpace = false;
  given.IgnoreConsecutive = given.OverrideDecimal = given.OutputFitInfo = false;
  given.RegressionTolerance = "t", given.UnchangedIterations = "u", given.MaxIterations = "m";
  given.DataFile = "d", given.DataFirstLine = "f", given.IndependentVariables = "i", given.SQLQuery = "s\nq";
  given.ParameterFile = "p", given.ColumnOrder = "c", given.MissingData = "n", given.OutputFile = "o";
  given.OutputFormat = "Spreadsheet", given.LogFile = "l", given.OutputDelimit = "Space", given.SortKey = "StdErr";
  for (const MacroFields& fields : {given, MacroFields()}) {
    frmMacro form(nullptr, fields, none, preferences, locale, user);
    EXPECT_EQ(BuildMacroText(form.Fields(), none, preferences, locale),
              BuildMacroText(fields, none, preferences, locale));
  }
  for (const auto models : {MacroModels::Solved, MacroModels::UserDefined, MacroModels::PreDefined, MacroModels::All,
                            MacroModels::Ticked}) {
    given.Models = models;
    EXPECT_EQ(frmMacro(nullptr, given, none, preferences, locale, user).Fields().Models, models);
  }
}

TEST_F(MacroEditor, AnswersToKeysAndScreenReaders) {
  Start();
  dialogs.Do([](QDialog& form) {
    ExpectMnemonicsDoNotMeet(form);
    const AccessibilityWalk walk(form);
    for (const char* name : {"Comments", "Data file", "Input Data File", "Models of the project", "Query"})
      EXPECT_TRUE(walk.Names.contains(name)) << name;
    form.reject();
  });
  Trigger("mnuToolsMacro");
  EXPECT_TRUE(frame->close());
}

}  // namespace
}  // namespace quorvex
