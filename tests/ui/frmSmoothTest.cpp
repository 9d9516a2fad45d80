// The dialog Lowess Smooth, used as a user does.

#include <QToolBar>

#include "Accessibility.h"
#include "Frame.h"
#include "plot/ui/PlotView.h"

namespace quorvex {
namespace {

class frmSmoothTest : public Frame {
 protected:
  void Open() {
    Start();
    for (std::size_t row = 1; row <= 12; ++row) {
      Document().Sheet.Cells.SetGridCellNumber(row, 1, static_cast<double>(row));
      Document().Sheet.Cells.SetGridCellNumber(row, 2, row % 2 == 0 ? 1 : 2);
    }
    Active().Refresh();
  }
  static QLineEdit& Percent(QDialog& form) { return *form.findChild<QLineEdit*>("txtPercent"); }
  static QImage Picture(QDialog& form) { return form.findChild<PlotView*>("pctSmooth")->Picture(); }
};

TEST_F(frmSmoothTest, ShowsEachWindowBeforeItStoresOne) {
  Open();
  dialogs.Do([this](QDialog& form) {
    EXPECT_EQ(form.objectName(), "frmSmooth");
    EXPECT_EQ(form.windowTitle(), "Lowess Smooth");
    AccessibilityWalk{form};
    ExpectMnemonicsDoNotMeet(form);
    EXPECT_EQ(form.focusWidget(), &Percent(form));
    EXPECT_EQ(Percent(form).text(), "10");
    EXPECT_EQ(form.findChild<QToolBar*>("tbSmooth")->actions(), form.findChild<PlotView*>("pctSmooth")->actions());
    form.findChild<QAction*>("mnuPlotShowCoords")->trigger();
    EXPECT_TRUE(form.findChild<QLabel*>("x_text")->isVisible() && form.findChild<QLabel*>("y_text")->isVisible());
    const QImage before = Picture(form);
    Percent(form).setText("60");
    QTest::mouseClick(form.findChild<QPushButton*>("cmdApply"), Qt::LeftButton);
    EXPECT_NE(Picture(form), before);
    EXPECT_EQ(Shown(1, 2), "2");  // the sheet, until OK
    Percent(form).setText("100");
    dialogs.Press(QMessageBox::Ok);
    QTest::mouseClick(form.findChild<QPushButton*>("cmdApply"), Qt::LeftButton);
    EXPECT_EQ(dialogs.Said.back(), "The smoothing window must be less than 100%.");
    EXPECT_EQ(Percent(form).selectedText(), "100");
    Percent(form).setText("x");
    QTest::mouseClick(form.findChild<QPushButton*>("cmdApply"), Qt::LeftButton);
    EXPECT_EQ(Percent(form).text(), "10");
    Percent(form).setText("60");
    QTest::keyClick(&Percent(form), Qt::Key_Return);
  });
  Trigger("mnuDataSmooth");
  EXPECT_NEAR(Shown(6, 2).toDouble(), 1.5, 0.2);
  EXPECT_TRUE(Document().Changed);
  EXPECT_EQ(Action("mnuEditUndo").text(), "&Undo Smooth");
  Trigger("mnuEditUndo");
  EXPECT_EQ(Shown(6, 2), "1");
}

TEST_F(frmSmoothTest, LeavesTheSheetWhereItIsCancelled) {
  Open();
  dialogs.Do([](QDialog& form) { QTest::keyClick(&form, Qt::Key_Escape); });
  Trigger("mnuDataSmooth");
  EXPECT_EQ(Shown(6, 2), "1");
  EXPECT_FALSE(Document().Changed);
}

// The rows that go are gone whether or not the smooth is stored.
TEST_F(frmSmoothTest, ShowsTheSheetWithoutItsIncompleteRows) {
  Open();
  Document().Sheet.Cells.ClearCell(3, 2);
  dialogs.Press(QMessageBox::Yes);
  dialogs.Press(QMessageBox::Ok);
  dialogs.Do([](QDialog& form) { form.reject(); });
  Trigger("mnuDataSmooth");
  EXPECT_EQ(dialogs.Said.back(), "1 incomplete rows were deleted.");
  EXPECT_EQ(Shown(3, 1), "4");
}

}  // namespace
}  // namespace quorvex
