// The dialog of initial estimates, used as a user does.

#include <QComboBox>
#include <QScrollBar>
#include <QTableWidget>

#include "Accessibility.h"
#include "Dialogs.h"
#include "Forms.h"
#include "core/ui/MessageBoxPrompter.h"
#include "engine/UserModel.h"
#include "plot/ui/PlotView.h"
#include "results/ui/reginit.h"

namespace quorvex {
namespace {

// y = 2 exp(x / 2), and over two variables y = 1 + 2 X1 + 3 X2.
SolveData Points(std::size_t variables) {
  SolveData data;
  data.X.resize(variables);
  for (int i = 0; i < 12; ++i) {
    for (std::size_t k = 0; k < variables; ++k) data.X[k].push_back(k == 0 ? 0.5 * i : i * i % 7);
    data.Y.push_back(variables == 1 ? 2 * std::exp(0.25 * i) : 1 + 2 * data.X[0].back() + 3 * data.X[1].back());
    data.SD.push_back(1);
    data.sig.push_back(1);
  }
  return data;
}

class Estimates : public testing::Test {
 protected:
  void Open(std::size_t variables, const std::string& equation) {
    project.emplace(NewProject(variables, false, {}));
    editor = std::make_unique<ProjectEditor>(*project, settings, user);
    model = NewModelFor(static_cast<int>(variables), {});
    model->UserType = true;
    model->SetID("mine", {equation});
    dialog = std::make_unique<reginit>(nullptr, *project, *editor, *model, Points(variables), settings);
    dialog->show();
    grid = dialog->findChild<QTableWidget*>("RangeGrid");
  }
  void Type(int row, int column, const char* text) { grid->item(row, column)->setText(text); }
  void Choose(int row, const char* type) { static_cast<QComboBox*>(grid->cellWidget(row, 1))->setCurrentText(type); }
  void Ok() { Press(*dialog, QDialogButtonBox::Ok); }

  Settings settings;
  MessageBoxPrompter user{nullptr};
  Dialogs dialogs;
  std::optional<Project> project;
  std::unique_ptr<ProjectEditor> editor;
  std::unique_ptr<ModelClass> model;
  std::unique_ptr<reginit> dialog;
  QTableWidget* grid = nullptr;
};

TEST_F(Estimates, AreGivenHeldAndTriedOverARange) {
  Open(1, "a*exp(b*x)+c");
  ASSERT_EQ(grid->rowCount(), 3);
  EXPECT_EQ(grid->item(1, 0)->text(), "b");
  EXPECT_FALSE(grid->item(0, 3)->flags() & Qt::ItemIsEditable);
  Type(0, 2, "1.5");
  Type(0, 5, "0");
  Type(2, 6, "1e9");
  Choose(1, "Constant");
  Type(1, 2, "0.5");
  Choose(2, "Range");
  Type(2, 2, "-1");
  Type(2, 3, "1");
  Type(2, 4, "3");
  Ok();
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_TRUE(model->SpecifyICComplete);
  EXPECT_EQ(model->Values(1), 1.5);
  EXPECT_EQ(model->Minimum(1), 0);
  EXPECT_EQ(model->Maximum(1), HUGE_VAL);
  EXPECT_EQ(model->Maximum(3), 1e9);
  EXPECT_EQ(model->Constants(2), 0);
  const ICRange& range = model->GetICRange()[2];
  EXPECT_EQ(range.Min, -1);
  EXPECT_EQ(range.Max, 1);
  EXPECT_EQ(range.Steps, 3);
}

TEST_F(Estimates, RefusesWhatIsNoNumberAndGoesThere) {
  Open(1, "a*exp(b*x)");
  Choose(1, "Range");
  Type(1, 3, "2");
  Type(1, 4, "none");
  dialogs.Press(QMessageBox::Ok);
  Ok();
  EXPECT_EQ(dialogs.Said.back(), "Please enter a valid number of steps for variable 'b'.");
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(grid->currentRow(), 1);
  EXPECT_EQ(grid->currentColumn(), 4);
  EXPECT_FALSE(model->SpecifyICComplete);

  Type(1, 4, "3");
  Type(0, 5, "2");
  Type(0, 6, "1");
  dialogs.Press(QMessageBox::Ok);
  Ok();
  EXPECT_EQ(dialogs.Said.back(), "The Minimum is above the Maximum for variable 'a'.");
  EXPECT_EQ(grid->currentColumn(), 5);
}

TEST_F(Estimates, MoveByTheScrollBarUnderThePreview) {
  Open(1, "a*exp(b*x)");
  Type(1, 2, "0.5");
  grid->setCurrentCell(1, 2);
  dialog->findChild<QComboBox*>("drpPercent")->setCurrentText("+10%");
  const QImage before = dialog->findChild<PlotView*>()->Picture();
  for (int i = 0; i < 2; ++i) QTest::keyClick(dialog->findChild<QScrollBar*>("HscrAjust"), Qt::Key_Right);
  EXPECT_EQ(grid->item(1, 2)->text(), "0.6");
  Type(1, 6, "0.65");
  for (int i = 0; i < 2; ++i) QTest::keyClick(dialog->findChild<QScrollBar*>("HscrAjust"), Qt::Key_Right);
  EXPECT_EQ(grid->item(1, 2)->text(), "0.65");
  EXPECT_NE(dialog->findChild<PlotView*>()->Picture(), before);
  // Where the curve has no value, the reason stands in its place.
  Open(1, "a*ln(x-10)+b");
  EXPECT_EQ(dialog->findChild<PlotView*>(), nullptr);
  EXPECT_EQ(dialog->findChild<QLabel*>("reason")->text(),
            "An error has occurred generating equation data for equation a*ln(x-10)+b");
}

// The curve follows each letter, and waits at its last place while a value is half typed.
TEST_F(Estimates, DrawWhatIsTypedWithoutRedraw) {
  Open(1, "a*exp(b*x)");
  const auto picture = [&] { return dialog->findChild<PlotView*>()->Picture(); };
  const auto settled = [&](const QImage& before) { return QTest::qWaitFor([&] { return picture() != before; }, 5000); };
  dialog->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
  grid->setFocus();
  const QImage first = picture();
  QTest::keyClick(grid, Qt::Key_2);  // opens the cell
  auto* cell = qobject_cast<QLineEdit*>(QApplication::focusWidget());
  ASSERT_NE(cell, nullptr);
  QTest::keyClicks(cell, ".5");
  EXPECT_EQ(grid->item(0, 2)->text(), "2.5");
  EXPECT_TRUE(settled(first));

  QTest::keyClick(cell, Qt::Key_Left);
  QTest::keyClicks(cell, "x");
  EXPECT_EQ(cell->text(), "2.x5");  // the caret stays where it is
  EXPECT_TRUE(QTest::qWaitFor([&] { return In(*dialog, "note").isVisible(); }, 5000));
  EXPECT_EQ(Text(*dialog, "note"),
            "The preview shows the values before. Please enter a valid Initial Value for variable 'a'.");
  const QImage last = picture();
  QTest::keyClick(cell, Qt::Key_Backspace);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !In(*dialog, "note").isVisible(); }, 5000));
  EXPECT_TRUE(QTest::qWaitFor([&] { return picture() == last; }, 5000));  // once it has its size
  dialog->findChild<QComboBox*>("drpPercent")->setCurrentText("+10%");
  for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Up, Qt::Key_Down}) QTest::keyClick(cell, key);
  EXPECT_EQ(cell->text(), "2.75");
  EXPECT_NE(picture(), last);

  // Tab goes through what takes a number, and then on to the types.
  const auto place = [&] { return std::pair(grid->currentRow(), grid->currentColumn()); };
  QTest::keyClick(cell, Qt::Key_Tab);
  EXPECT_EQ(place(), std::pair(0, 5));
  for (const auto& next : {std::pair(0, 6), std::pair(1, 2), std::pair(1, 5)}) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(place(), next);
  }
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
  EXPECT_EQ(place(), std::pair(1, 2));
  for (int i = 0; i < 2; ++i) QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  for (const char* next : {"Type of a", "Type of b", "Adjust b", "Step of the scroll bar"}) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), next);
  }
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
  EXPECT_LE(dialog->minimumSizeHint().width(), 1000);
  EXPECT_LE(dialog->minimumSizeHint().height(), 650);
}

TEST_F(Estimates, OfTwoVariablesShowASurfaceThatTurns) {
  Open(2, "a+b*x1+c*x2");
  auto& xy = In<QScrollBar>(*dialog, "XYScroll");
  auto& z = In<QScrollBar>(*dialog, "ZScroll");
  const auto view = [&] { return dialog->findChild<PlotView*>(); };
  EXPECT_EQ(*view()->Angles(), (ViewAngles{140, 30}));
  EXPECT_EQ(xy.value(), 140);
  EXPECT_EQ(z.value(), 30);
  const QImage before = view()->Picture();
  QTest::keyClick(&xy, Qt::Key_Right);
  z.setValue(75);
  EXPECT_EQ(*view()->Angles(), (ViewAngles{141, 75}));
  EXPECT_NE(view()->Picture(), before);
  QTest::keyClick(view(), Qt::Key_Right);
  EXPECT_EQ(xy.value(), 146);

  // Other values, the same view; and the scroll bars turn the new surface.
  dialog->findChild<QScrollBar*>("HscrAjust")->setValue(2);
  EXPECT_EQ(*view()->Angles(), (ViewAngles{146, 75}));
  EXPECT_EQ(xy.value(), 146);
  xy.setValue(10);
  EXPECT_EQ(*view()->Angles(), (ViewAngles{10, 75}));
  AccessibilityWalk walk(*dialog);
  for (const char* name : {"Initial Estimate", "X1-X2 view angle of the preview", "X1-Y view angle of the preview"})
    EXPECT_TRUE(walk.Names.contains(name)) << name;
  ExpectMnemonicsDoNotMeet(*dialog);

  // While there is no surface there is nothing to turn.
  Type(0, 2, "1");
  Open(2, "a+b*ln(x1-9)+c*x2");
  EXPECT_EQ(view(), nullptr);
  EXPECT_FALSE(In<QScrollBar>(*dialog, "XYScroll").isEnabled());
}

TEST_F(Estimates, OfManyVariablesShowWhatTheyCalculate) {
  Open(3, "a+b*x1+c*x2+d*x3");
  ASSERT_NE(dialog->findChild<PlotView*>(), nullptr);
  EXPECT_FALSE(dialog->findChild<PlotView*>()->Angles());
  EXPECT_FALSE(In<QScrollBar>(*dialog, "XYScroll").isVisible());
}

}  // namespace
}  // namespace quorvex
