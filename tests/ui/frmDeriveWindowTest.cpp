// The dialog Derive New Project, used as a user does.

#include <QCheckBox>
#include <QListWidget>

#include "Accessibility.h"
#include "Frame.h"
#include "results/SolvedProject.h"

namespace quorvex {
namespace {

class frmDeriveWindowTest : public Frame {
 protected:
  static QListWidget& List(QDialog& form, const char* name) { return *form.findChild<QListWidget*>(name); }
  static void Add(QDialog& form, std::initializer_list<int> rows, const char* button) {
    QListWidget& list = List(form, "lstData");
    list.clearSelection();
    for (const int row : rows) list.item(row)->setSelected(true);
    QTest::mouseClick(form.findChild<QPushButton*>(button), Qt::LeftButton);
  }
};

TEST_F(frmDeriveWindowTest, OpensAProjectOfTheChosenColumns) {
  Start();
  Document() = ProjectOf({{1, 2, 3}, {10, 20, 30}, {0.1, 0.2, 0.3}}, true);
  Document().Sheet.Headers[1] = "Heat";
  Active().Refresh();
  dialogs.Do([this](QDialog& form) {
    EXPECT_EQ(form.windowTitle(), "Derive New Project");
    AccessibilityWalk{form};
    ExpectMnemonicsDoNotMeet(form);
    EXPECT_EQ(form.focusWidget(), &List(form, "lstData"));
    EXPECT_EQ(List(form, "lstData").item(3)->text(), "<Blank Column>");
    dialogs.Press(QMessageBox::Ok);
    QTest::keyClick(&form, Qt::Key_Return);
    EXPECT_EQ(dialogs.Said.back(), "You must select at least one independent variable for the new project.");
    EXPECT_FALSE(form.findChild<QPushButton*>("cmdRemoveX")->isEnabled());
    Add(form, {1, 3, 0}, "cmdAddX");
    EXPECT_EQ(List(form, "lstNewX").count(), 3);
    List(form, "lstNewX").item(2)->setSelected(true);
    QTest::mouseClick(form.findChild<QPushButton*>("cmdRemoveX"), Qt::LeftButton);
    Add(form, {0}, "cmdAddY");
    EXPECT_EQ(List(form, "lstNewY").item(0)->text(), "X");
    auto* ckUseSD = form.findChild<QCheckBox*>("ckUseSD");
    EXPECT_TRUE(ckUseSD->isEnabled() && ckUseSD->isChecked());
    QTest::keyClick(&form, Qt::Key_Return);
  });
  const qsizetype before = Windows();
  Trigger("mnuFileDerive");
  EXPECT_EQ(Windows(), before + 1);
  EXPECT_EQ(Document().Sheet.Headers, (std::vector<std::string>{"X", "Heat", "X", "StDev"}));
  EXPECT_EQ(Shown(3, 2), "30");
  EXPECT_EQ(Shown(3, 4), "0.3");
  EXPECT_TRUE(Document().Changed);
  EXPECT_FALSE(Document().HasFile);
}

TEST_F(frmDeriveWindowTest, OpensNothingWhereItIsCancelled) {
  Start();
  dialogs.Do([](QDialog& form) {
    EXPECT_FALSE(form.findChild<QCheckBox*>("ckUseSD")->isEnabled());
    QTest::keyClick(&form, Qt::Key_Escape);
  });
  const qsizetype before = Windows();
  Trigger("mnuFileDerive");
  EXPECT_EQ(Windows(), before);
}

}  // namespace
}  // namespace quorvex
