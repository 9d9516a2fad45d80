// The macro editor over the active project, used by clicks and keys.

#include <QCheckBox>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QShortcut>

#include "Accessibility.h"
#include "Frame.h"
#include "Golden.h"
#include "batch/ui/frmMacro.h"

namespace quorvex {
namespace {

class MacroEditor : public Frame {
 protected:
  // Opens the editor and shows the macro that `fill` makes.
  std::string View(std::function<void(QDialog&)> fill) {
    std::string macro;
    dialogs.Do([this, fill, &macro](QDialog& form) {
      fill(form);
      dialogs.Do([&macro](QDialog& view) {
        macro = In<QPlainTextEdit>(view, "txtMacro").toPlainText().toStdString();
        const auto* list = view.findChild<QListWidget*>("lstFindings");
        for (int row = 0; row < list->count(); ++row) macro += list->item(row)->text().toStdString() + '\n';
        macro += Text(view, "lblCount").toStdString();
        ExpectMnemonicsDoNotMeet(view);
        const AccessibilityWalk walk(view);
        QTest::keyClick(&view, Qt::Key_Escape);
      });
      Click(form, "cmdView");
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
    Click(form, "ckShowProgress");
    TypeInto(form, "txtMaxIterations", "300");
    Click(form, "optnExact");
    TypeInto(form, "txtThreads", "3");
    GoToPage(form, 1);
    TypeInto(form, "txtDataFile", "data.csv");
    TypeInto(form, "txtColumnOrder", "y, x");
    Click(form, "ckDelimitTab");
    Click(form, "ckDelimitSpace");
    EXPECT_FALSE(LineBox(form, "txtMissingData").isEnabled());
    Click(form, "ckMissingData");
    TypeInto(form, "txtMissingData", "NA");
    Click(form, "ckSQLQuery");
    TypeInto(form, "txtSQLQuery", "SELECT 1");
    Click(form, "ckParameterFile");
    TypeInto(form, "txtParameterFile", "sites.csv");
    GoToPage(form, 2);
    TypeInto(form, "txtOutputFile", "out.txt");
    In<QComboBox>(form, "cmbOutput").setCurrentText("Spreadsheet");
    In<QComboBox>(form, "cmbSortBy").setCurrentText("Ra^2");
    In<QComboBox>(form, "cmbOutputDelimit").setCurrentText("Comma");
    Click(form, "ckTableCalcData");
    Click(form, "ckLogFile");
    TypeInto(form, "txtLogFile", "run.log");
    Click(form, "ckLogSummaryOnly");
    GoToPage(form, 4);
    Click(form, "optnModels4");
    auto* models = form.findChild<QListWidget*>("lstSource");
    ASSERT_TRUE(models->isEnabled());
    models->setFocus();
    QTest::keyClick(models, Qt::Key_Space);  // ticks the first
  });
  ExpectGolden("MacroOfTheEditor.txt", macro.substr(0, macro.find("        ID = ")));
  EXPECT_TRUE(macro.ends_with("    E_MODEL\nE_MACRO\nThere were 0 error(s) and 0 warning(s).")) << macro;
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
    Click(form, "cmdExport");
    EXPECT_FALSE(std::filesystem::exists(file));
    GoToPage(form, 4);
    Click(form, "optnModels3");
    EXPECT_FALSE(List(form, "lstSource").isEnabled());
    dialogs.Press(QMessageBox::Yes);
    dialogs.ChooseFile(folder.Path("fit"));
    dialogs.Press(QMessageBox::Ok);
    Click(form, "cmdExport");
    form.reject();
  });
  Trigger("mnuToolsMacro");
  EXPECT_EQ(dialogs.Said, (Said{"There are 3 errors and 2 warnings. Do you want to export the file anyway?",
                                "There are 2 errors and 2 warnings. Do you want to export the file anyway?",
                                "The file '" + file + "' contains the exported macro."}));
  EXPECT_TRUE(folder.Read("fit.cfg").starts_with("B_MACRO\r\n"));
}

TEST_F(MacroEditor, TurnsOffWhatAProjectFileHasNoUseFor) {
  Start();
  const std::string macro = View([](QDialog& form) {
    GoToPage(form, 2);
    In<QComboBox>(form, "cmbOutput").setCurrentText("Quorvex");
    for (const char* name : {"cmbSortBy", "cmbOutputDelimit", "ckTableDataFile", "ckOutputFitInfo"})
      EXPECT_FALSE(In(form, name).isEnabled()) << name;
    EXPECT_TRUE(In<QWidget>(form, "txtOutputFile").isEnabled());
  });
  EXPECT_EQ(macro.find("SortKey"), std::string::npos);
}

// What the check finds follows what the editor finds, and leads to its line; a second check replaces the first.
TEST_F(MacroEditor, ChecksTheMacroItShows) {
  const MacroFindings findings{{"Warning: of the editor"}, 0, 1};
  std::size_t runs = 0, faults = 2;
  frmViewMacro view(nullptr, "B_MACRO\r\n    A = 1\r\n    B = 2\r\nE_MACRO\r\n", findings, [&] {
    MacroCheck check;
    check.Runs = ++runs;
    const MacroFault all[] = {{.Line = 3, .Text = "The b."}, {.Text = "No model."}};
    check.Faults.assign(all, all + faults);
    return check;
  });
  view.show();
  auto& list = List(view, "lstFindings");
  auto& text = In<QPlainTextEdit>(view, "txtMacro");
  const auto rows = [&] {
    std::string all;
    for (int row = 0; row < list.count(); ++row) all += list.item(row)->text().toStdString() + '\n';
    return all;
  };
  EXPECT_EQ(runs, 0u);
  ASSERT_EQ(view.findChild<QShortcut*>()->key(), QKeySequence(Qt::Key_F8));
  emit view.findChild<QShortcut*>()->activated();
  EXPECT_EQ(rows(), "Warning: of the editor\nLine 3: the b.\nNo model.\n");
  EXPECT_EQ(text.textCursor().selectedText().trimmed().toStdString(), "B = 2");
  EXPECT_EQ(Text(view, "lblCheck").toStdString(), "Checked 1 run of 0 models: 2 faults.");
  text.moveCursor(QTextCursor::Start);
  list.setCurrentRow(0);
  EXPECT_EQ(text.textCursor().position(), 0);
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(1)).center());
  EXPECT_EQ(text.textCursor().selectedText().trimmed().toStdString(), "B = 2");
  faults = 0;
  Click(view, "cmdCheck");
  EXPECT_EQ(rows(), "Warning: of the editor\n");
  EXPECT_EQ(Text(view, "lblCheck").toStdString(), "Checked 2 runs of 0 models: no faults.");
}

// The real check, of a macro with the placeholders of an editor that nothing was typed into.
TEST_F(MacroEditor, ChecksTheFilesOfTheMacro) {
  Start();
  std::string found;
  dialogs.Do([this, &found](QDialog& form) {
    dialogs.Do([&found](QDialog& view) {
      Click(view, "cmdCheck");
      auto& list = List(view, "lstFindings");
      for (int row = 0; row < list.count(); ++row) found += list.item(row)->text().toStdString() + '\n';
      QTest::keyClick(&view, Qt::Key_Escape);
    });
    Click(form, "cmdView");
    QTest::keyClick(&form, Qt::Key_Escape);
  });
  Trigger("mnuToolsMacro");
  EXPECT_NE(found.find("\nLine 6: the data file '********.***' cannot be read. The file does not exist.\n"),
            std::string::npos)
      << found;
  EXPECT_TRUE(found.ends_with("\nThe macro has no model that can be solved.\n")) << found;
}

TEST_F(MacroEditor, KeepsEveryFieldItIsGiven) {
  const LocaleText locale;
  const Settings preferences;
  const ModelCollection none;
  MessageBoxPrompter user(nullptr);
  MacroFields given;
  given.Comments = "a\nb";
  given.UseDDE = given.ShowProgress = given.ShowMessageBox = given.Weighted = true;
  given.Derivatives = "Exact";
  given.UseSQLQuery = given.UseParameterFile = given.UseMissingData = given.UseLogFile = given.LogSummaryOnly = true;
  given.TableDataFile = given.TableCalcData = given.TableErrorData = given.TableMinMaxError = true;
  given.DelimitTab = given.DelimitComma = given.DelimitSemicolon = given.DelimitSpace = false;
  given.IgnoreConsecutive = given.OverrideDecimal = given.OutputFitInfo = false;
  given.RegressionTolerance = "t", given.UnchangedIterations = "u", given.MaxIterations = "m";
  given.Threads = "h";
  given.DataFile = "d", given.DataFirstLine = "f", given.IndependentVariables = "i", given.SQLQuery = "s\nq";
  given.ParameterFile = "p", given.ColumnOrder = "c", given.MissingData = "n", given.OutputFile = "o";
  given.UsePlots = true, given.PlotFiles = "a.svg\nb.plt", given.PlotTemplate = "l.qv2";
  given.UseCode = true, given.CodeFiles = "a.py\nb.js";
  given.ReportFiles = "a.html\nb.md";
  given.ResultFile = "r", given.SolveEachRun = given.RequireSolution = given.StrictStatus = true;
  given.DataSeries = true;
  given.PlotModels = "3", given.PlotKind = "Probability", given.PlotBands = "Prediction";
  given.StandardDeviations = "Absolute", given.Loss = "Bisquare", given.LossScale = "s";
  given.TableConfidence = given.TablePrediction = given.Diagnostics = true;
  given.Limits = "Profile", given.Bootstrap = "b", given.BootstrapKind = "Cases", given.CrossValidation = "v";
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
}

}  // namespace
}  // namespace quorvex
