// The solve of a project by its menu, dialogs, progress window and solved list, used as a user does.

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTableWidget>

#include "Accessibility.h"
#include "SolveFrame.h"

namespace quorvex {
namespace {

class SolveMenuTest : public SolveFrame {};

TEST_F(SolveMenuTest, SolvesAModelTakesItBackAndKeepsItInTheFile) {
  Open(30);
  EXPECT_TRUE(In<QLabel>(Active(), "none").isVisible());
  SolveOne("mine");
  EXPECT_EQ(dialogs.Said, Said{"Solution was successful."});
  EXPECT_EQ(SolvedRows(), "1 mine");
  EXPECT_TRUE(Solved().isVisible());
  EXPECT_FALSE(In<QLabel>(Active(), "none").isVisible());
  EXPECT_EQ(ShownModel(), "mine");
  EXPECT_TRUE(Active().isWindowModified());
  session.Preferences.Set("maxiterations", "1");  // which "yours" does not get by with
  SolveOne("yours");
  const auto expectMark = [&] {
    const QAbstractItemModel& list = *Solved().model();
    EXPECT_TRUE(list.index(0, 1).data(Qt::DecorationRole).isNull());
    EXPECT_EQ(list.index(0, 1).data(Qt::ToolTipRole).toString(), "mine");
    EXPECT_FALSE(list.index(1, 1).data(Qt::DecorationRole).isNull());
    EXPECT_EQ(list.index(1, 1).data(Qt::ToolTipRole).toString(),
              "yours\nThe search ended at the iteration limit, before it converged.");
  };
  expectMark();
  EXPECT_EQ(SolvedRows(), "1 mine|2 yours");
  EXPECT_EQ(ShownModel(), "yours");
  EXPECT_EQ(Solved().currentIndex().row(), 1);
  EXPECT_EQ(Active().UndoText(), "&Undo Solve 'yours...'");

  Trigger("mnuFileSave");
  Trigger("mnuEditUndo");
  EXPECT_EQ(SolvedRows(), "1 mine");
  Trigger("mnuEditUndo");
  EXPECT_EQ(SolvedRows(), "");
  EXPECT_TRUE(In<QLabel>(Active(), "none").isVisible());
  dialogs.Press(QMessageBox::No);
  Trigger("mnuFileClose");
  frame->OpenFile(QString::fromStdString(folder.Path("curve.qvx")));
  EXPECT_EQ(SolvedRows(), "1 mine|2 yours");
  expectMark();

  // An entry in the sheet makes them invalid.
  Grid().setCurrentIndex(Grid().model()->index(0, 1));
  Grid().setFocus();
  QSignalSpy changed(&Active(), &quorvexWindow::SolutionsChanged);
  Type("7");
  EXPECT_EQ(SolvedRows(), "");
  Active().Refresh();
  EXPECT_EQ(changed.size(), 2) << "each time once";
}

TEST_F(SolveMenuTest, SortsTheListAndAsksForResults) {
  Open(12);
  session.Preferences.Set("autoresults", "0");
  AnswerGroup("Polynomial", "optLinear");
  dialogs.Press(QMessageBox::Ok);
  Trigger("mnuSolveRegression");
  EXPECT_EQ(Active().findChild<frmResults*>(), nullptr);
  const int count = Solved().model()->rowCount();
  EXPECT_GT(count, 5);
  EXPECT_EQ(Caption(), "Available Solutions Sorted By RSS");

  auto* menu = frame->findChild<QMenu*>("solve");
  auto* combo = Active().findChild<QComboBox*>("cmbSortBy");
  const struct {
    const char *action, *key;
    int sortIndex;
    bool descending;
  } kKeys[] = {{"mnuSortR2", "R^2", 2, true},         {"mnuSortR2Adjust", "Ra^2", 3, true},
               {"mnuSortStdErr", "StdErr", 4, false}, {"mnuSortAICc", "AICc", 5, false},
               {"mnuSortBIC", "BIC", 6, false},       {"mnuSortCV", "CV", 7, false},
               {"mnuSortRSS", "RSS", 1, false}};
  for (const auto& key : kKeys) {
    for (const bool byMenu : {true, false}) {
      session.Preferences.Set("sortindex", key.sortIndex == 1 ? "4" : "1");
      Active().Resort();
      if (byMenu) {
        Trigger(key.action);
      } else {
        combo->setFocus();
        QTest::keyClick(combo, key.sortIndex == 1 ? Qt::Key_Home : Qt::Key_Down);
        for (int i = 2; i < key.sortIndex; ++i) QTest::keyClick(combo, Qt::Key_Down);
      }
      EXPECT_EQ(Caption(), QString("Available Solutions Sorted By ") + key.key);
      EXPECT_EQ(combo->currentText(), key.key);
      EXPECT_EQ(session.Preferences.Integer("sortindex"), key.sortIndex);
      EXPECT_EQ(Solved().model()->rowCount(), count);
      EXPECT_TRUE(Solved().currentIndex().isValid());
      EXPECT_EQ(Solved().model()->columnCount(), key.sortIndex > 4 ? 5 : 3);
      const auto value = [&](int row) {
        const QString text = Solved().model()->index(row, 2).data().toString();
        return text.isEmpty() ? HUGE_VAL : text == "exact" ? -HUGE_VAL : text.toDouble();
      };
      for (int row = 1; row < count; ++row)
        EXPECT_TRUE(key.descending ? value(row - 1) >= value(row) : value(row - 1) <= value(row)) << row;
    }
    emit menu->aboutToShow();
    for (const auto& other : kKeys) EXPECT_EQ(Action(other.action).isChecked(), other.sortIndex == key.sortIndex);
  }

  // The best, the next one by keys, and one by the mouse.
  const auto expectShown = [&](int row) {
    EXPECT_EQ(ShownModel(), Solved().model()->index(row, 1).data().toString()) << row;
  };
  Solved().setFocus();
  Solved().setCurrentIndex(Solved().model()->index(0, 0));
  QTest::keyClick(&Solved(), Qt::Key_Return);
  expectShown(0);
  QTest::keyClick(&Solved(), Qt::Key_Down);
  QTest::keyClick(&Solved(), Qt::Key_Enter);
  expectShown(1);
  const QPoint fourth = Solved().visualRect(Solved().model()->index(3, 1)).center();
  QTest::mouseClick(Solved().viewport(), Qt::LeftButton, {}, fourth);
  expectShown(1);
  QTest::mouseDClick(Solved().viewport(), Qt::LeftButton, {}, fourth);
  expectShown(3);
  delete &Results();
  Trigger("mnuSolveResults");
  expectShown(3);
}

TEST_F(SolveMenuTest, AsksForTheSetupUntilItIsTheDefault) {
  Open(12);
  dialogs.Do([](QDialog& dialog) {
    Click(dialog, "optSingle");
    Click(dialog, "chkDefault");
    Press(dialog, QDialogButtonBox::Ok);
  });
  AnswerModel("mine");
  dialogs.Do([this](QDialog& summary) {
    EXPECT_EQ(SolvedRows(), "1 mine");  // already behind the summary
    summary.accept();
  });
  Trigger("mnuSolveRegression");
  AnswerModel("a*x+b");  // no setup any more
  dialogs.Press(QMessageBox::Ok);
  Trigger("mnuSolveRegression");
  Trigger("mnuSolvePrompt");
  dialogs.Do([](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Solution Setup");
    Press(dialog, QDialogButtonBox::Cancel);
  });
  Trigger("mnuSolveRegression");
  emit frame->findChild<QMenu*>("solve")->aboutToShow();
  EXPECT_TRUE(Action("mnuSolvePrompt").isChecked());
  EXPECT_EQ(SolvedRows().count('|'), 1);
  dialogs.Press(QMessageBox::No);
  EXPECT_TRUE(frame->close());
  EXPECT_EQ(LoadSettings().Text("lastselectedmodel"), "a*x+b");
}

TEST_F(SolveMenuTest, ListsModelsByKindAndOpensWhatItLeadsTo) {
  Open(12);
  AnswerSetup("optSingle");
  dialogs.Do([&](QDialog& dialog) {
    EXPECT_EQ(List(dialog, "eq_list").count(), 300);
    Click(dialog, "optWhichModels2");
    EXPECT_EQ(Rows(List(dialog, "eq_list")), (QStringList{"mine", "yours"}));
    EXPECT_EQ(In<QPlainTextEdit>(dialog, "definition_text").toPlainText(), "Y = m*x+n");
    EXPECT_EQ(Text(dialog, "group_label"), "User Defined");
    Choose(List(dialog, "eq_list"), "yours");
    Click(dialog, "optWhichModels0");
    EXPECT_EQ(List(dialog, "eq_list").currentItem()->text(), "yours");
    Click(dialog, "optWhichModels1");
    EXPECT_EQ(List(dialog, "eq_list").count(), 298);
    EXPECT_EQ(Text(dialog, "description_label"), "First Order Polynomial");
    EXPECT_EQ(Text(dialog, "group_label"), "Polynomial");
    Click(dialog, "cancel_command");
  });
  Trigger("mnuSolveRegression");

  AnswerSetup("optSingle");
  dialogs.Do([&](QDialog& dialog) {
    Choose(List(dialog, "eq_list"), "yours");
    Click(dialog, "add_command");
    EXPECT_EQ(List(dialog, "eq_list").count(), 300);
    EXPECT_TRUE(List(dialog, "eq_list").currentItem() != nullptr);
    Choose(List(dialog, "eq_list"), "fresh");
    EXPECT_FALSE(In(dialog, "specify_command").isEnabled());
    Click(dialog, "enforce_override");
    Click(dialog, "solve_command");  // asks for the estimates first
    EXPECT_TRUE(dialog.isVisible());
    Click(dialog, "specify_command");
    Click(dialog, "solve_command");
    EXPECT_FALSE(dialog.isVisible());
  });
  dialogs.Do([&](QDialog& userModels) {
    EXPECT_EQ(userModels.objectName(), "usereq");
    AddUserModel(Document(), "fresh", "u*x");
    Document().Models.Remove("yours");
    userModels.reject();
  });
  for (const auto end : {&QDialog::reject, &QDialog::accept})
    dialogs.Do([end](QDialog& estimates) {
      EXPECT_EQ(estimates.objectName(), "reginit");
      (estimates.*end)();
    });
  dialogs.Press(QMessageBox::Ok);
  Trigger("mnuSolveRegression");
  EXPECT_EQ(SolvedRows(), "1 fresh");
  EXPECT_NE(Active().Solver().Log().find("Using current initial estimates"), std::string::npos);
}

TEST_F(SolveMenuTest, PutsTogetherAGroupAndSolvesIt) {
  const QString before = QDir::currentPath();
  QDir::setCurrent(QString::fromStdString(folder.Path("")));
  Open(12);
  AnswerSetup("optGroups");
  dialogs.Do([&](QDialog& dialog) {
    QListWidget& groups = List(dialog, "group_list");
    EXPECT_EQ(groups.count(), 16);
    Press(dialog, QDialogButtonBox::Ok);
    EXPECT_EQ(dialogs.Said.back(), "Please select the equation group you want to solve.");
    EXPECT_TRUE(dialog.isVisible());

    for (const char* id : {"a*x+b", "mine", "yours"}) {
      Choose(List(dialog, "available_list"), id);
      Click(dialog, "add_command");
    }
    EXPECT_EQ(Rows(List(dialog, "member_list")), (QStringList{"a*x+b", "mine", "yours"}));
    EXPECT_EQ(List(dialog, "available_list").count(), 297);
    Choose(List(dialog, "member_list"), "mine");
    Click(dialog, "remove_command");
    EXPECT_EQ(Rows(List(dialog, "member_list")), (QStringList{"a*x+b", "yours"}));
    EXPECT_EQ(List(dialog, "member_list").currentRow(), 1);
    EXPECT_EQ(groups.item(15)->checkState(), Qt::Checked);
    Press(dialog, QDialogButtonBox::Ok);
  });
  dialogs.Press(QMessageBox::Ok);
  dialogs.Press(QMessageBox::Yes);  // to saving the file
  EXPECT_EQ(SaidBy("mnuSolveRegression"), "Solution was successful.");
  EXPECT_EQ(SolvedRows(), "1 a*x+b|2 yours");
  EXPECT_EQ(folder.Read("user1.grp"), "Quorvex:  Version 9.0\r\nB_Equations\r\na*x+b\r\nyours\r\nE_Equations\r\n");
  dialogs.Press(QMessageBox::No);
  EXPECT_TRUE(frame->close());
  EXPECT_EQ(LoadSettings().Text("UserSpecified", "groupsolve"), "1");
  QDir::setCurrent(before);
}

TEST_F(SolveMenuTest, InterpolatesClearsAndShowsTheLog) {
  Open(8);
  dialogs.Do([](QDialog& dialog) {
    Click(dialog, "optInterp0");
    EXPECT_FALSE(In<QPushButton>(dialog, "solve_command").isEnabled());  // nothing is chosen
    Click(dialog, "optInterp0");
    Click(dialog, "optInterp1");
    Click(dialog, "solve_command");
  });
  dialogs.Press(QMessageBox::Ok);
  Trigger("mnuSolveInterpolation");
  SolveOne("mine");
  EXPECT_EQ(SolvedRows(), "1 mine| Cubic Spline| Polynomial");
  dialogs.Do([](QDialog& dialog) {
    EXPECT_TRUE(In<QPlainTextEdit>(dialog, "txtLog")
                    .toPlainText()
                    .startsWith("Beginning non-linear solution for model mine\nDetermining"));
    Press(dialog, QDialogButtonBox::Close);
  });
  Trigger("mnuSolveLog");

  // The current solution is the selected one; a cutoff that is none keeps the dialog open.
  Solved().setCurrentIndex(Solved().model()->index(1, 0));
  dialogs.Do([&](QDialog& dialog) {
    EXPECT_TRUE(In<QRadioButton>(dialog, "optClear0").isChecked());
    EXPECT_EQ(In<QRadioButton>(dialog, "optClear1").text().remove('&'), "Clear Fits with RSS >");
    EXPECT_EQ(Text(dialog, "lblBest"), Text(dialog, "lblWorst"));
    auto* cutoff = dialog.findChild<QLineEdit*>("txtCutoff");
    QTest::keyClicks(cutoff, "1x");
    EXPECT_TRUE(In<QRadioButton>(dialog, "optClear1").isChecked());
    Press(dialog, QDialogButtonBox::Ok);
    EXPECT_EQ(dialogs.Said.back(), "Please enter a value for the RSS cutoff or select a different option.");
    EXPECT_TRUE(dialog.isVisible());
    Click(dialog, "optClear0");
    Press(dialog, QDialogButtonBox::Ok);
  });
  dialogs.Press(QMessageBox::Ok);
  Trigger("mnuSolveClear");
  EXPECT_EQ(SolvedRows(), "1 mine| Polynomial");
  EXPECT_TRUE(Solved().currentIndex().isValid());
  EXPECT_EQ(Active().UndoText(), "&Undo Clear Fits");
  Trigger("mnuEditUndo");
  EXPECT_EQ(SolvedRows(), "1 mine| Cubic Spline| Polynomial");
}

// A saturation curve whose own start has no value: the box says so, shows the start, and leads to the log, to estimates
// and on to the answer.
TEST_F(SolveMenuTest, LeadsOnFromAFailedSearchByEstimates) {
  OpenData("puromycin_treated.txt", "sqr(a-2)*x/(b+x)");
  session.Preferences.SetFlag("tryharder", false);
  AnswerSetup("optSingle");
  AnswerModel("mine");
  const auto expectBox = [](QDialog& box) {
    EXPECT_EQ(box.windowTitle(), "Quorvex");
    EXPECT_EQ(Text(box, "message_label"), "Solution Failed. View log for details.");
    EXPECT_EQ(Text(box, "reason_label"), "With the estimates it began with, the model has no value at X = 0.02.");
    EXPECT_FALSE(In(box, "failed_list").isVisible());
    const auto& table = In<QTableView>(box, "estimate_table");
    EXPECT_EQ(table.model()->index(1, 0).data().toString() + table.model()->index(1, 1).data().toString(), "b1");
    EXPECT_LE(box.minimumSizeHint().height(), 650);
    EXPECT_LE(box.minimumSizeHint().width(), 1000);
  };
  dialogs.Do([&](QDialog& box) {
    expectBox(box);
    const AccessibilityWalk walk(box);
    ExpectMnemonicsDoNotMeet(box);
    QTest::keyClick(&box, Qt::Key_L, Qt::AltModifier);
  });
  dialogs.Do([](QDialog& log) {
    EXPECT_TRUE(In<QPlainTextEdit>(log, "txtLog").toPlainText().contains("Solution failed: Numerical Error"));
    log.reject();
  });
  dialogs.Do([&](QDialog& box) {
    expectBox(box);
    Click(box, "cmdEstimates");
  });
  dialogs.Do([](QDialog& estimates) {
    In<QTableWidget>(estimates, "RangeGrid").item(0, 2)->setText("40000");
    Press(estimates, QDialogButtonBox::Ok);
  });
  dialogs.Press(QMessageBox::Ok);
  EXPECT_EQ((Trigger("mnuSolveRegression"), dialogs.Said.back()), "Solution was successful.");
  EXPECT_EQ(SolvedRows(), "1 mine");
  EXPECT_NEAR(Solved().model()->index(0, 2).data().toDouble() / 1195.449, 1, 1e-6);  // Bates & Watts, 1988
}

// Of a group, what was not solved is a list; what is tried harder in vain can't be tried again.
TEST_F(SolveMenuTest, LeadsOnFromAGroupThatFailedInPart) {
  Open(12, "ln(-abs(m*x)-1)");
  session.Preferences.SetFlag("tryharder", false);
  AnswerGroup("User Defined Models");
  dialogs.Do([&](QDialog& box) {
    EXPECT_EQ(Text(box, "message_label"), "1 of the 2 models solved.  View log for details.");
    EXPECT_EQ(SolvedRows(), "1 yours");  // already behind it
    EXPECT_EQ(Rows(List(box, "failed_list")), QStringList{"mine"});
    Click(box, "cmdHarder");
  });
  dialogs.Do([&](QDialog& box) {
    EXPECT_EQ(Text(box, "message_label"), "Solution Failed. View log for details.");
    EXPECT_FALSE(In(box, "cmdHarder").isEnabled());
    EXPECT_TRUE(Text(box, "reason_label").endsWith("Searches from many other starts failed, too."));
    QTest::keyClick(&box, Qt::Key_Escape);
  });
  Trigger("mnuSolveRegression");
  EXPECT_EQ(SolvedRows(), "1 yours");

  // By preference it has been tried by then; the mouse goes through a list of several.
  session.Preferences.SetFlag("tryharder", true);
  AddUserModel(Document(), "third", "sqr(-1-p^2)*x");
  AnswerGroup("User Defined Models");
  dialogs.Do([&](QDialog& box) {
    const AccessibilityWalk walk(box);
    ExpectMnemonicsDoNotMeet(box);
    EXPECT_FALSE(In(box, "cmdHarder").isEnabled());
    EXPECT_TRUE(box.focusWidget() == &List(box, "failed_list"));
    EXPECT_EQ(Rows(List(box, "failed_list")), (QStringList{"mine", "third"}));
    QTest::keyClick(&List(box, "failed_list"), Qt::Key_Down);
    const auto& table = In<QTableView>(box, "estimate_table");
    EXPECT_EQ(table.model()->index(0, 0).data().toString(), "p");
    QTest::keyClick(&box, Qt::Key_C, Qt::AltModifier);
  });
  Trigger("mnuSolveRegression");
  EXPECT_EQ(SolvedRows(), "1 yours");
  dialogs.Do([](QDialog& box) {
    EXPECT_EQ(Text(box, "message_label"), "2 models of the last solve have no solution.");
    EXPECT_EQ(Rows(List(box, "failed_list")), (QStringList{"mine", "third"}));
    box.reject();
  });
  Trigger("mnuSolveFailed");
}

TEST_F(SolveMenuTest, TriesHarderBySetupAndMarksWhatWasFoundSo) {
  Open(12);
  dialogs.Do([](QDialog& dialog) {
    Click(dialog, "optLinear");
    EXPECT_FALSE(In(dialog, "chkHarder").isEnabled());
    Click(dialog, "optNonLinear");
    Click(dialog, "chkHarder");
    Click(dialog, "chkDefault");
    Press(dialog, QDialogButtonBox::Ok);
  });
  AnswerModel("mine");
  dialogs.Press(QMessageBox::Ok);
  Trigger("mnuSolveRegression");
  EXPECT_EQ(session.Preferences.Text("defaulttryharder"), "true");
  Document().Models.Find("mine")->FoundBy = "starts read off the data (4 of 40 searches)";
  Active().Refresh();
  const QModelIndex entry = Solved().model()->index(0, 1);
  EXPECT_FALSE(entry.data(Qt::DecorationRole).isNull());
  EXPECT_EQ(entry.data(Qt::ToolTipRole).toString(),
            "mine\nFound by trying harder: starts read off the data (4 of 40 searches).");
  EXPECT_EQ(entry.data(Qt::AccessibleDescriptionRole).toString(),
            "Model, row 1. Found by trying harder: starts read off the data (4 of 40 searches).");
}

TEST_F(SolveMenuTest, FitsWithTheLossOfTheSetupAndKeepsWhichItWas) {
  OpenData("puromycin_treated.txt", "a*x/(b+x)");
  dialogs.Do([this](QDialog& dialog) {
    auto& scale = dynamic_cast<QLineEdit&>(In(dialog, "txtScale"));
    EXPECT_FALSE(scale.isEnabled());
    dynamic_cast<QComboBox&>(In(dialog, "cboLoss")).setCurrentText("Huber");
    scale.setText("-1");
    dialogs.Press(QMessageBox::Ok);
    Press(dialog, QDialogButtonBox::Ok);
    EXPECT_TRUE(dialog.isVisible());
    scale.setText("7.5");
    Click(dialog, "chkDefault");
    AnswerModel("mine");
    dialogs.Press(QMessageBox::Ok);
    Press(dialog, QDialogButtonBox::Ok);
  });
  Trigger("mnuSolveRegression");
  EXPECT_EQ(dialogs.Said, (Said{"The scale has to be a number above 0, or nothing to find it from the residuals.",
                                "Solution was successful."}));
  EXPECT_EQ(StoredSolveChoice(session.Preferences).Loss, LossKind::Huber);
  EXPECT_EQ(StoredSolveChoice(session.Preferences).LossScale, 7.5);
  const auto mark = [&] { return Solved().model()->index(0, 1).data(Qt::ToolTipRole).toString(); };
  const QString before = mark();
  EXPECT_EQ(before, "mine\nResiduals count as Huber, with a scale of 7.5.");
  EXPECT_NE(Active().Solver().Log().find("Loss Huber: scale 7.5 as given, "), std::string::npos);
  Trigger("mnuEditUndo");
  EXPECT_EQ(SolvedRows(), "");
  Trigger("mnuEditRedo");
  EXPECT_EQ(mark(), before);
  Trigger("mnuFileSave");
  Trigger("mnuFileClose");
  frame->OpenFile(QString::fromStdString(folder.Path("data.qvx")));
  EXPECT_EQ(mark(), before);
}

// Two peaks of a spectrum are found from ones, where the curve meets neither, and a file keeps how.
TEST_F(SolveMenuTest, FindsPeaksFromOnesByTryingHarder) {
  OpenData("gamma_spectrum.txt", "a*exp(-((x-b)/c)^2)+d*exp(-((x-e)/f)^2)+g");
  SolveOne("mine");
  EXPECT_EQ(dialogs.Said.back(), "Solution was successful.");
  EXPECT_LT(Document().Models.Find("mine")->RSS, 162910);  // as from estimates read off the plot
  const auto mark = [&] { return Solved().model()->index(0, 1).data(Qt::AccessibleDescriptionRole).toString(); };
  EXPECT_TRUE(mark().startsWith("Model, row 1. Found by trying harder: ")) << mark().toStdString();
  const QString before = mark();
  EXPECT_NE(Active().Solver().Log().find("Found by: "), std::string::npos);
  Trigger("mnuEditUndo");
  EXPECT_EQ(SolvedRows(), "");
  Trigger("mnuEditRedo");
  EXPECT_EQ(mark(), before);
  Trigger("mnuFileSave");
  Trigger("mnuFileClose");
  frame->OpenFile(QString::fromStdString(folder.Path("data.qvx")));
  EXPECT_EQ(mark(), before);
}

// A clean decay whose start of ones comes to no answer is found without being asked for, and undo takes it back.
TEST_F(SolveMenuTest, FindsADecayFromOnesByItself) {
  Open(30, "a*exp(-b*x)+c");
  for (std::size_t i = 0; i < 30; ++i) {
    const double x = 2e5 * static_cast<double>(i);
    Document().Sheet.Cells.SetGridCellNumber(i + 1, 1, x);
    Document().Sheet.Cells.SetGridCellNumber(i + 1, 2, 7 * std::exp(-x / 1e6) + 2);
  }
  session.Preferences.SetFlag("tryharder", false);
  AnswerSetup("optSingle");
  AnswerModel("mine");
  dialogs.Do([](QDialog& box) { Click(box, "cmdClose"); });
  Trigger("mnuSolveRegression");
  EXPECT_EQ(SolvedRows(), "");

  session.Preferences.SetFlag("tryharder", true);
  SolveOne("mine");
  EXPECT_EQ(dialogs.Said.back(), "Solution was successful.");
  EXPECT_EQ(SolvedRows(), "1 mine");
  const double expected[] = {7, 1e-6, 2};
  for (int i = 1; i <= 3; ++i) EXPECT_NEAR(Document().Models.Find("mine")->Values(i) / expected[i - 1], 1, 1e-6) << i;
  EXPECT_FALSE(Solved().model()->index(0, 1).data(Qt::DecorationRole).isNull());
  Trigger("mnuEditUndo");
  EXPECT_EQ(SolvedRows(), "");
}

// What the window has in common with that of a macro is tested there.
TEST_F(SolveMenuTest, ShowsItsProgressAndObeysItsButtons) {
  Open(20000, "first*exp(-second*x)+third*x^fourth");
  session.Preferences.Set("maxiterations", "32000");
  session.Preferences.Set("diviterations", "32000");
  session.Preferences.Set("tolerance", "1E-300");
  {
    const DuringSolve script({[&](ProgressWindow& window) {
      if (!Text(window, "IterationLabel").startsWith("Iteration: 3")) return false;
      EXPECT_EQ(Text(window, "status_label"), "Solving Model mine...");
      EXPECT_EQ(window.findChild<QProgressBar*>()->maximum(), 1);
      EXPECT_EQ(QApplication::activeModalWidget(), &window);
      EXPECT_TRUE(Text(window, "lblParam4").startsWith("third: "));
      const AccessibilityWalk walk(window);
      ExpectMnemonicsDoNotMeet(window);
      Click(window, "cmdPause");
      return true;
    }});
    SolveOne("mine");
  }
  EXPECT_EQ(dialogs.Said.back(), "Solution was successful.");
  EXPECT_NE(Active().Solver().Log().find("Iterations stopped by user."), std::string::npos);
  EXPECT_EQ(SolvedRows(), "1 mine");

  const std::function<void(ProgressWindow&)> ways[] = {
      [](ProgressWindow& window) { Click(window, "Abort_command"); },
      [](ProgressWindow& window) { QTest::keyClick(&window, Qt::Key_Escape); },
      [](ProgressWindow& window) { window.close(); },
  };
  for (const auto& way : ways) {
    const DuringSolve script({[&](ProgressWindow& window) {
      if (!Text(window, "IterationLabel").startsWith("Iteration: 2")) return false;
      way(window);
      return true;
    }});
    delete Active().findChild<frmResults*>();
    SolveOne("mine");
    EXPECT_EQ(dialogs.Said.back(), "Solution Process Aborted.");
    EXPECT_TRUE(Active().Solver().Log().ends_with("\r\nSOLUTION PROCESS ABORTED BY USER.\r\n"));
    EXPECT_EQ(SolvedRows(), "");
    EXPECT_EQ(Active().findChild<frmResults*>(), nullptr);
    Trigger("mnuEditUndo");
    EXPECT_EQ(SolvedRows(), "1 mine");
  }
}

// A program that is ended by a signal, or crashes, in the middle of a solve loses the solve and not the cells that were
// typed before; one that ends while the summary waits to be read loses nothing.
TEST_F(SolveMenuTest, KeepsCopiesBeforeAndAfterARun) {
  const auto kept = [this]() -> Result<Project> {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Path("state")))
      if (entry.path().extension() == ".qvx") return ReadProject(entry.path(), {});
    return Failure{"Nothing is kept."};
  };
  const auto expectCell = [](const Result<Project>& copy) {
    if (!copy) return void(ADD_FAILURE() << copy.error());
    EXPECT_EQ(copy->Sheet.Cells.GridCellNumber(1, 1), 42);
  };
  Open(20);
  Type("42");
  EXPECT_FALSE(std::filesystem::exists(folder.Path("state")));
  const DuringSolve script({[&](ProgressWindow&) {
    expectCell(kept());
    return true;
  }});
  AnswerGroup("Polynomial");
  dialogs.Do([&](QDialog& box) {
    EXPECT_TRUE(frame->KeepCopies());
    const Result<Project> copy = kept();
    expectCell(copy);
    EXPECT_GT(std::ranges::count_if(copy->Models, [](const auto& model) { return model->Solved; }), 5);
    box.accept();
  });
  Trigger("mnuSolveRegression");
}

// The first pass over so many points takes long. The window has its turns within it all the same, and an abort ends the
// run there.
TEST_F(SolveMenuTest, AnswersWhileAnIterationTakesLong) {
  Open(100000, "a+b*jnu(c*c,x+1)+d*student(x,f*f+2)+g*igamma(h*h+1,x)");
  int turns = 0;
  QString first;
  {
    const DuringSolve script({[&](ProgressWindow& window) {
      if (turns == 0) first = Text(window, "IterationLabel");
      if (++turns < 10) return false;
      EXPECT_EQ(Text(window, "IterationLabel"), first);
      Click(window, "Abort_command");
      return true;
    }});
    SolveOne("mine");
  }
  EXPECT_EQ(dialogs.Said.back(), "Solution Process Aborted.");
  EXPECT_EQ(Active().Solver().Log().find("Final Merit Function"), std::string::npos);
}

TEST_F(SolveMenuTest, CanBeReadByAScreenReaderAndHasALetterForEverything) {
  Open(8);
  const auto look = [](QDialog& dialog) {
    const AccessibilityWalk walk(dialog);
    ExpectMnemonicsDoNotMeet(dialog);
  };
  { const AccessibilityWalk walk(*frame); }  // nothing is solved
  dialogs.Do([&](QDialog& dialog) {
    look(dialog);
    Press(dialog, QDialogButtonBox::Ok);
  });
  dialogs.Do([&](QDialog& dialog) {
    look(dialog);
    Click(dialog, "solve_command");
  });
  dialogs.Press(QMessageBox::Ok);
  Trigger("mnuSolveRegression");
  AnswerSetup("optGroups");
  dialogs.Do([&](QDialog& dialog) {
    look(dialog);
    for (int i = 0; i < 2; ++i) Click(dialog, "add_command");
    look(dialog);
    dialog.reject();
  });
  Trigger("mnuSolveRegression");
  for (const char* action : {"mnuSolveInterpolation", "mnuSolveClear", "mnuSolveLog"}) {
    dialogs.Do([&](QDialog& dialog) {
      look(dialog);
      dialog.reject();
    });
    Trigger(action);
  }
  const AccessibilityWalk walk(*frame);
  EXPECT_TRUE(walk.Names.contains("Available Solutions Sorted By RSS"));
  EXPECT_TRUE(walk.Names.contains("Solutions"));
}

}  // namespace
}  // namespace quorvex
