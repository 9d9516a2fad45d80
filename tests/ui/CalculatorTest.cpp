// The data calculator, used as a user does.

#include <QCheckBox>
#include <QListWidget>
#include <QPointer>
#include <QRadioButton>

#include "Accessibility.h"
#include "Frame.h"
#include "calculator/ui/calcfrm.h"
#include "files/ui/Dataplot.h"
#include "plot/ui/PlotView.h"
#include "results/SolvedProject.h"

namespace quorvex {
namespace {

class CalcfrmTest : public Frame {
 protected:
  // Of a plot of five points about a line, with a model that was solved after it.
  void Open() {
    Start();
    Document() = LineProject();
    Active().Refresh();
    Trigger("mnuPlotData");
    plot = Active().findChild<Dataplot*>();
    SolveModel(Document(), "a*x+b", 1);
    plot->findChild<QAction*>("mnuPlotCalc")->trigger();
    form = plot->findChild<calcfrm*>();
    form->activateWindow();
    QTest::qWait(50);
  }
  QStringList Stack() { return Rows(List(*form, "stacklist")); }
  void Key(int key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(form->focusWidget(), static_cast<Qt::Key>(key), modifiers);
  }
  void Keys(const QString& text) {
    for (const QChar key : text) QTest::keyClick(form->focusWidget(), key.toLatin1());
  }
  static void Inspect(QDialog& dialog) {
    AccessibilityWalk{dialog};
    ExpectMnemonicsDoNotMeet(dialog);
    EXPECT_NE(dialog.focusWidget(), nullptr);
  }

  QPointer<Dataplot> plot;
  QPointer<calcfrm> form;
};

TEST_F(CalcfrmTest, ComputesByTheKeyboardAlone) {
  Open();
  Inspect(*form);
  EXPECT_LE(form->width(), 1024);
  EXPECT_LE(form->height(), 700);
  EXPECT_EQ(Rows(List(*form, "availablelist")), (QStringList{"Input Data", "a*x+b"}));

  Keys("1,5");
  Key(Qt::Key_Return);
  Keys("2e-1+");
  EXPECT_EQ(Stack(), QStringList{"(1.5 + 0.2) = 1.7"});
  Keys("ratio");
  Key(Qt::Key_Return);
  EXPECT_EQ(Stack(), QStringList{"ratio = 1.7"});
  EXPECT_EQ(LineBox(*form, "constant_text").text(), "");

  // By Tab the focus goes through the window row by row.
  const QStringList landmarks = {"availablelist", "copy",          "stacklist",   "stackops0",     "PreviewPicture",
                                 "preview",       "constant_text", "numbers11",   "enterconstant", "units_option0",
                                 "arc_check",     "DistribCalc",   "operations0", "operations28"};
  QStringList met;
  List(*form, "availablelist").setFocus();
  do {
    if (const QString name = form->focusWidget()->objectName(); landmarks.contains(name)) met << name;
    Key(Qt::Key_Tab);
  } while (form->focusWidget()->objectName() != "availablelist" && met.size() < 2 * landmarks.size());
  EXPECT_EQ(met, landmarks);

  // A letter leads to the lists; digits come back to the entry.
  QTest::keyClick(form.data(), Qt::Key_V, Qt::AltModifier);
  EXPECT_EQ(form->focusWidget()->objectName(), "availablelist");
  QTest::keyClick(form.data(), Qt::Key_C, Qt::AltModifier);
  QTest::qWait(150);
  EXPECT_EQ(Stack(), (QStringList{"Input Data", "ratio = 1.7"}));
  Keys("2*");
  EXPECT_EQ(form->focusWidget()->objectName(), "constant_text");
  EXPECT_EQ(Stack(), (QStringList{"(Input Data * 2)", "ratio = 1.7"}));
  Key(Qt::Key_Delete);
  EXPECT_EQ(Stack(), QStringList{"ratio = 1.7"});
  Key(Qt::Key_Z, Qt::ControlModifier);
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Stack(), (QStringList{"Input Data", "ratio = 1.7"}));
  Key(Qt::Key_Y, Qt::ControlModifier);
  EXPECT_EQ(Stack(), (QStringList{"(Input Data * 2)", "ratio = 1.7"}));

  // What is typed is taken back before what was computed, and a sign may be typed into an exponent or a name.
  Keys("12");
  Key(Qt::Key_Backspace);
  EXPECT_EQ(LineBox(*form, "constant_text").text(), "1");
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Stack().size(), 2);
  LineBox(*form, "constant_text").clear();
  Keys("a+b-1");
  Key(Qt::Key_Return);
  EXPECT_EQ(Stack(), (QStringList{"a+b-1", "ratio = 1.7"}));

  dialogs.Press(QMessageBox::Ok);
  Key(Qt::Key_K, Qt::AltModifier);
  Keys("0/");
  EXPECT_EQ(dialogs.Said.back(), "This operation caused division by zero.");
  EXPECT_EQ(LineBox(*form, "constant_text").text(), "0");
  EXPECT_EQ(Stack().size(), 2);
  Key(Qt::Key_Escape);
  QTest::qWait(10);
  EXPECT_TRUE(form.isNull());
}

TEST_F(CalcfrmTest, ComputesByItsButtons) {
  Open();
  for (const char* key : {"numbers4", "numbers10", "numbers5", "exponential", "numbers1", "changesign"})
    Click(*form, key);
  EXPECT_EQ(LineBox(*form, "constant_text").text(), "4.5e-1");
  Click(*form, "changesign");
  Click(*form, "enterconstant");
  Click(*form, "numbers0");
  Click(*form, "arithmetic1");
  EXPECT_EQ(Stack(), QStringList{"(45 - 0) = 45"});
  Click(*form, "units_option1");
  Click(*form, "operations3");
  Click(*form, "arc_check");
  Click(*form, "operations3");
  EXPECT_EQ(Stack(), QStringList{"Arctan(Tan((45 - 0))) = 45"});
  Click(*form, "stackops5");
  EXPECT_EQ(Stack(), QStringList());
  Click(*form, "cmdUndo");
  EXPECT_EQ(Stack().size(), 1);

  Choose(List(*form, "availablelist"), "a*x+b");
  Click(*form, "copy");
  EXPECT_EQ(Stack()[0], "a*x+b");
  dialogs.Do([](QDialog& dialog) {
    Inspect(dialog);
    TypeInto(dialog, "txtMaxMin1", "9");
    Click(dialog, "cmdDefaults");
    EXPECT_EQ(LineBox(dialog, "txtMaxMin0").text() + ' ' + LineBox(dialog, "txtMaxMin1").text(), "1 5");
    Click(dialog, "ckSampleFitted");
    EXPECT_FALSE(LineBox(dialog, "txtSamples").isEnabled());
    Press(dialog, QDialogButtonBox::Ok);
  });
  Click(*form, "cmdSample");
  EXPECT_EQ(Stack()[0], "Sample(a*x+b)");
  dialogs.Do([this](QDialog& dialog) {
    Inspect(dialog);
    EXPECT_EQ(LineBox(dialog, "txtXMin").text() + ' ' + LineBox(dialog, "txtXMax").text(), "1 5");
    TypeInto(dialog, "txtXMin", "2");
    TypeInto(dialog, "txtXMax", "1");
    dialogs.Press(QMessageBox::Ok);
    Press(dialog, QDialogButtonBox::Ok);
    EXPECT_EQ(dialogs.Said.back(), "The value of X Max must be larger than X Min.");
    TypeInto(dialog, "txtXMax", "4");
    Press(dialog, QDialogButtonBox::Ok);
  });
  Click(*form, "operations24");
  EXPECT_EQ(Stack()[0], "Sect(Sample(a*x+b))");
  dialogs.Do([](QDialog& dialog) { dialog.reject(); });
  Click(*form, "operations24");
  dialogs.Do([](QDialog& dialog) {
    Inspect(dialog);
    Press(dialog, QDialogButtonBox::Ok);
  });
  Click(*form, "DistribCalc");
  EXPECT_EQ(Stack()[0], "ND: Avg = 0, SDev = 1");
  dialogs.Do([](QDialog& dialog) {
    Inspect(dialog);
    TypeInto(dialog, "functiontext", "x^2");
    Press(dialog, QDialogButtonBox::Ok);
  });
  Click(*form, "equation");
  EXPECT_EQ(Stack()[0], "x^2");

  auto& preview = In<PlotView>(*form, "PreviewPicture");
  const QImage empty = preview.Picture();
  EXPECT_EQ(preview.accessibleDescription(), "Select a curve of the stack, then Pre.");
  Click(*form, "preview");
  EXPECT_NE(preview.Picture(), empty);
}

TEST_F(CalcfrmTest, PlotsWhatIsSelectedAndCloses) {
  Open();
  plot->findChild<QAction*>("mnuPlotCalc")->trigger();
  EXPECT_EQ(plot->findChildren<calcfrm*>().size(), 1) << "It is there already.";
  dialogs.Press(QMessageBox::Ok);
  Click(*form, "plotnew");
  EXPECT_EQ(dialogs.Said.back(), "The calculator stack is empty.");
  List(*form, "availablelist").selectAll();
  Click(*form, "copy");
  Click(*form, "stackops0");
  Click(*form, "operations0");
  List(*form, "stacklist").setCurrentRow(0);
  List(*form, "stacklist").item(1)->setSelected(true);
  Click(*form, "plotnew");
  QTest::qWait(10);
  EXPECT_TRUE(form.isNull());
  ASSERT_EQ(Active().findChildren<Dataplot*>().size(), 2);
  Dataplot& opened = *Active().findChildren<Dataplot*>()[1];
  EXPECT_EQ(opened.windowTitle(), "Plot 2 - Untitled[*]");
  ASSERT_EQ(opened.Plot().PlotData.size(), 2U);
  EXPECT_EQ(opened.Plot().PlotData[0].Style().LegendText, "neg(a*x+b)");
  EXPECT_NE(opened.Plot().PlotData[0].Style().DrawColor, opened.Plot().PlotData[1].Style().DrawColor);

  // The plot offers its curves, and what the project has, to a calculator of its own; and goes with it.
  opened.findChild<QAction*>("mnuPlotCalc")->trigger();
  form = opened.findChild<calcfrm*>();
  EXPECT_EQ(Rows(List(*form, "availablelist")), (QStringList{"neg(a*x+b)", "a*x+b", "Input Data", "a*x+b"}));
  opened.close();
  QTest::qWait(10);
  EXPECT_TRUE(form.isNull());
}

}  // namespace
}  // namespace quorvex
