// The page of the results window that says whether an answer can be trusted, used as a user does.

#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>

#include "Accessibility.h"
#include "SolveFrame.h"

namespace quorvex {
namespace {

class Diagnosing : public SolveFrame {
 protected:
  static constexpr int kPage = 5;

  // Two solutions of 40 points, the better one in front.
  void Begin() {
    Open(40, "m*x^n");
    SolveOne("yours");
    SolveOne("mine");
    Turn(kPage);
    ASSERT_TRUE(Ended());
  }
  void Turn(int page) { In<QTabWidget>(Results(), "ResultsTab").setCurrentIndex(page); }
  QPushButton& Button(const char* name) { return In<QPushButton>(Results(), name); }
  bool Running() { return Button("cmdCancel").isVisible(); }
  bool Ended() {
    return QTest::qWaitFor([&] { return !Running(); }, 20'000);
  }
  void WantSamples(int samples) {
    In<QCheckBox>(Results(), "ckBootstrap").setChecked(true);
    In<QSpinBox>(Results(), "samples").setValue(samples);
  }
  QString Page() {
    const QAbstractItemModel& model = *In<QTableView>(Results(), "DiagnosisBook").model();
    QString text;
    for (int row = 0; row < model.rowCount(); ++row)
      for (int col = 0; col < model.columnCount(); ++col) text += model.index(row, col).data().toString() + '|';
    return text;
  }
};

TEST_F(Diagnosing, JudgesAtOnceComputesMoreAndKeepsIt) {
  Begin();
  EXPECT_TRUE(Page().contains("Equation ID: |mine|")) << Page().toStdString();
  EXPECT_TRUE(Page().contains("|95% Limits|"));
  EXPECT_TRUE(Page().contains("|Correlations|"));
  EXPECT_FALSE(Button("cmdCompute").isEnabled()) << "nothing is ticked";
  WantSamples(20);
  Button("cmdCompute").setFocus();
  Click(Results(), "cmdCompute");
  ASSERT_TRUE(Ended());
  const QString page = Page();
  EXPECT_TRUE(page.contains("Bootstrap Lower")) << page.toStdString();
  EXPECT_TRUE(page.contains("20 samples of the residuals"));
  EXPECT_FALSE(Button("cmdCompute").isEnabled()) << "it is all there";

  // The other one has none yet. This one keeps its own, in any order and with other windows open.
  Click(Results(), "cmdUpDown0");
  EXPECT_TRUE(Page().contains("Equation ID: |yours|"));
  EXPECT_FALSE(Page().contains("Bootstrap Lower"));
  EXPECT_TRUE(Button("cmdCompute").isEnabled());
  Click(Results(), "cmdUpDown1");
  Active().Refresh();
  EXPECT_EQ(Page(), page);
  Click(Results(), "CopyCommand");
  EXPECT_TRUE(QApplication::clipboard()->text().contains("Bootstrap Lower"));

  // What was ticked is ticked the next time.
  Results().close();
  QTest::qWait(1);
  Trigger("mnuSolveResults");
  EXPECT_TRUE(In<QCheckBox>(Results(), "ckBootstrap").isChecked());
  EXPECT_EQ(In<QSpinBox>(Results(), "samples").value(), 20);
}

TEST_F(Diagnosing, IsCancelledByKeysByClosingAndByASolve) {
  Begin();
  const QString before = Page();
  const std::vector<double> values = Document().Models.Find("mine")->CoefficientValues;
  WantSamples(1'000'000);
  const auto begin = [&] {
    Click(Results(), "cmdCompute");
    EXPECT_TRUE(Running());
    EXPECT_FALSE(Button("cmdCompute").isEnabled());
    EXPECT_EQ(Results().focusWidget(), &Button("cmdCancel"));
  };
  begin();
  const AccessibilityWalk walk(Results());
  Turn(kPage);
  ExpectMnemonicsDoNotMeet(Results());
  Turn(kPage);
  Button("cmdCancel").setFocus();
  // The window is alive: another page can be looked at.
  Turn(0);
  Turn(kPage);
  Results().activateWindow();  // what was asked before had the keys
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Results()));
  QTest::keyClick(&Results(), Qt::Key_Escape);
  ASSERT_TRUE(Ended());
  EXPECT_EQ(Page(), before);
  EXPECT_EQ(Text(Results(), "stage"), "Cancelled.");

  // Models and data that change meanwhile are others than those that it works on.
  begin();
  SolveOne("yours");
  EXPECT_TRUE(Running()) << "the same answer came out";
  Active().EditUndo(2);
  ASSERT_TRUE(Ended());
  EXPECT_TRUE(Page().contains("Equation ID: |yours|")) << Page().toStdString();
  Active().EditUndo(-1);
  ASSERT_TRUE(Ended());
  EXPECT_EQ(Document().Models.Find("mine")->CoefficientValues, values);

  begin();
  const QPointer<QWidget> window = &Results();
  Results().close();
  EXPECT_TRUE(QTest::qWaitFor([&] { return window.isNull(); }, 5000));
}

TEST_F(Diagnosing, TakesOtherQuantitiesWithUndo) {
  Begin();
  const auto answer = [&](const char* text, QDialogButtonBox::StandardButton button) {
    dialogs.Do([text, button](QDialog& form) {
      EXPECT_EQ(form.windowTitle(), "Other Quantities");
      In<QPlainTextEdit>(form, "quantities").setPlainText(text);
      ExpectMnemonicsDoNotMeet(form);
      Press(form, button);
      if (form.isVisible()) form.reject();
    });
  };
  answer("half = ln(2)/n\n\nm", QDialogButtonBox::Ok);
  dialogs.Press(QMessageBox::Ok);
  Click(Results(), "cmdQuantities");
  EXPECT_EQ(dialogs.Said.back(), "Line 3: a quantity is written as 'name = expression'.");
  EXPECT_TRUE(Document().Models.Find("mine")->Reports.empty());

  answer("half = ln(2)/n", QDialogButtonBox::Ok);
  Click(Results(), "cmdQuantities");
  ASSERT_TRUE(Ended());
  EXPECT_EQ(Active().UndoText(), "&Undo Report Quantities 'mine...'");
  EXPECT_TRUE(Document().Changed);
  EXPECT_TRUE(Page().contains("|Reported Quantities|")) << Page().toStdString();
  EXPECT_TRUE(Page().contains("|half|"));
  Active().EditUndo(1);
  ASSERT_TRUE(Ended());
  EXPECT_FALSE(Page().contains("|Reported Quantities|"));
}

}  // namespace
}  // namespace quorvex
