// The commands on the sheet through their menus and dialogs, as a user clicks and types them.

#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QInputDialog>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTableWidget>
#include <QTreeWidget>

#include "Accessibility.h"
#include "Frame.h"
#include "analysis/ui/DataStatWindow.h"
#include "results/SolvedProject.h"

namespace quorvex {
namespace {

// What a user enters, control by control: "name=text, name=text", or the name alone of what is clicked.
using Entries = QString;

class SheetDialogs : public Frame {
 protected:
  // The sheet that the commands work on.
  void StartWithData() {
    Start();
    Document() = ProjectOf({{1, 2, 3, -4}, {10, 20, -30, 40}});
    Active().Refresh();
  }

  static void Enter(QWidget& dialog, const Entries& entries) {
    for (const QString& entry : entries.split(", ", Qt::SkipEmptyParts)) {
      const QString name = entry.section('=', 0, 0), text = entry.section('=', 1);
      QWidget* const control = &In(dialog, qPrintable(name));
      ASSERT_TRUE(control->isVisible() && control->isEnabled()) << name.toStdString();
      if (auto* edit = qobject_cast<QLineEdit*>(control)) {
        edit->setFocus();
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, text);
      } else if (auto* choice = qobject_cast<QComboBox*>(control)) {
        choice->setCurrentText(text);
        EXPECT_EQ(choice->currentText(), text);
      } else if (auto* number = qobject_cast<QSpinBox*>(control)) {
        number->selectAll();
        QTest::keyClicks(number, text);
      } else {
        QTest::mouseClick(control, Qt::LeftButton, {}, {8, control->height() / 2});
      }
    }
  }

  static void Accept(QDialog& dialog) {
    auto* buttons = dialog.findChild<QDialogButtonBox*>();
    ASSERT_NE(buttons, nullptr);
    for (QAbstractButton* button : buttons->buttons())
      if (buttons->buttonRole(button) == QDialogButtonBox::AcceptRole) QTest::mouseClick(button, Qt::LeftButton);
  }

  // Every control can be reached by a name and none by the mnemonic of another; the first has the focus.
  static void Inspect(QDialog& dialog) {
    EXPECT_FALSE(dialog.windowTitle().isEmpty());
    AccessibilityWalk{dialog};
    ExpectMnemonicsDoNotMeet(dialog);
    EXPECT_NE(dialog.focusWidget(), nullptr);
    // Tab goes down row by row, and in a row to the right.
    QPoint last;
    for (QWidget* control = dialog.nextInFocusChain(); control != &dialog; control = control->nextInFocusChain()) {
      if (!control->isVisible() || (control->focusPolicy() & Qt::TabFocus) == 0 || control->focusProxy()) continue;
      const QPoint place = control->mapTo(&dialog, control->rect().center());
      const bool below = place.y() > last.y() + 5, right = place.y() > last.y() - 5 && place.x() > last.x();
      EXPECT_TRUE(below || right) << dialog.objectName().toStdString() << ": " << control->objectName().toStdString();
      last = place;
    }
  }

  void Fill(const Entries& entries) {
    dialogs.Do([entries](QDialog& dialog) {
      Inspect(dialog);
      Enter(dialog, entries);
      Accept(dialog);
    });
  }

  std::vector<std::vector<std::string>> Cells(int rows = 6, int cols = 2) {
    std::vector<std::vector<std::string>> cells(static_cast<std::size_t>(rows));
    for (int row = 1; row <= rows; ++row)
      for (int col = 1; col <= cols; ++col)
        cells[static_cast<std::size_t>(row - 1)].push_back(Shown(row, col).toStdString());
    return cells;
  }

  std::string UndoText() { return Action("mnuEditUndo").text().toStdString(); }
};

// Each dialog, and each page of the one that fills, takes what its fields say; what a command refuses and computes is
// tested with the commands.
TEST_F(SheetDialogs, ComputeNewCellsOnceTheEntryIsRight) {
  const struct {
    const char* Action;
    int Left, Right;  // the columns of the selection
    Entries Wrong, Corrected;
    int Row, Col;
    const char* Result;
  } cases[] = {
      {"mnuDataFill", 2, 2, "ConstantText=ten", "ConstantText=7", 4, 2, "7"},
      {"mnuDataFill", 2, 2, "SelRow1=9, ConstantText=1", "SelRow1=4", 4, 2, "1"},
      {"mnuDataFill", 2, 2, "MethodOption1, LinStart=1", "LinIncrement=0.5", 3, 2, "2"},
      {"mnuDataFill", 2, 2, "MethodOption2, FuncText=a*x, FuncStart=0, FuncIncrement=1", "FuncText=x^2", 4, 2, "9"},
      {"mnuDataFill", 1, 1, "MethodOption3, ColumnFunc=2", "ColumnFunc=x/2, UpDnXCol=2", 4, 1, "20"},
      {"mnuDataScale", 1, 2, "ScaleText=twice", "ScaleText=2", 3, 2, "-60"},
      {"mnuDataTranslate", 1, 1, "", "ScaleText=-1", 1, 1, "0"},
      {"mnuDataSort", 1, 2, "SortKey1=(none)", "SortKey1=Y, Descend1", 1, 1, "-4"},
      {"mnuDataSort", 1, 2, "SortKey2=X", "SortKey2=Y", 1, 1, "-4"},
      {"mnuDataZeroNegative", 1, 1, "", "ckZero1", 4, 1, "0"},
      {"mnuDataZeroPositive", 1, 1, "", "ckZero2", 4, 2, "0"},
  };
  StartWithData();
  const auto before = Cells();
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Action + std::string(c.Result));
    Select(1, c.Left, 4, c.Right);
    const QItemSelection selected = Grid().selectionModel()->selection();
    dialogs.Do([&](QDialog& dialog) {
      Inspect(dialog);
      Enter(dialog, c.Wrong);
      Accept(dialog);
      EXPECT_EQ(Cells(), before);
      Enter(dialog, c.Corrected);
      Accept(dialog);
    });
    dialogs.Press(QMessageBox::Ok);  // the refusal
    Trigger(c.Action);
    EXPECT_EQ(Shown(c.Row, c.Col), c.Result);
    EXPECT_EQ(Grid().selectionModel()->selection(), selected);
    Trigger("mnuEditUndo");
    EXPECT_EQ(Cells(), before);
    EXPECT_EQ(UndoText(), "Can't &Undo");
    EXPECT_FALSE(Action("mnuEditUndo").isEnabled());
  }
}

TEST_F(SheetDialogs, ChangeNothingWhereTheyAreCancelled) {
  StartWithData();
  const auto before = Cells();
  QApplication::clipboard()->setText("5");
  Select(1, 2, 4, 2);
  for (const char* action : {"mnuDataFill", "mnuDataScale", "mnuDataTranslate", "mnuDataCombine", "mnuDataZeroNegative",
                             "mnuEditPasteSpecial", "mnuEditCopySpecial", "mnuEditGoto"}) {
    dialogs.Do([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    Trigger(action);
    EXPECT_EQ(Cells(), before) << action;
    EXPECT_FALSE(Document().Changed) << action;
  }
  EXPECT_EQ(QApplication::clipboard()->text(), "5");
}

TEST_F(SheetDialogs, RefuseSeveralRangesBeforeTheyOpen) {
  StartWithData();
  Select(1, 1, 1, 1);
  Select(4, 2, 4, 2, QItemSelectionModel::Select);
  for (const char* action :
       {"mnuEditPasteSpecial", "mnuEditCopySpecial", "mnuDataFill", "mnuDataSort", "mnuDataCombine", "mnuDataScale"}) {
    dialogs.Press(QMessageBox::Ok);
    Trigger(action);
    EXPECT_TRUE(dialogs.Said.back().starts_with("Invalid range selection.")) << action;
  }
}

TEST_F(SheetDialogs, SortAllColumnsWhereTheUserWantsThat) {
  StartWithData();
  Select(1, 1, 4, 1);
  dialogs.Press(QMessageBox::Yes);
  Fill("SortKey1=X");
  Trigger("mnuDataSort");
  EXPECT_EQ(Cells(2), (std::vector<std::vector<std::string>>{{"-4", "40"}, {"1", "10"}}));
  Trigger("mnuEditUndo");
  EXPECT_EQ(Shown(1, 2), "10");
}

TEST_F(SheetDialogs, CombineColumns) {
  Start();
  EXPECT_EQ(SaidBy("mnuDataCombine"), "There is no data to combine.");
  StartWithData();
  Select(1, 2, 1, 2);
  Fill("cmbFirstCol=Y, cmbOperation=/   (divide), cmbSecondCol=X, cmbResultCol=Y");
  Trigger("mnuDataCombine");
  EXPECT_EQ(Shown(3, 2), "-10");
  EXPECT_EQ(UndoText(), "&Undo Combine");
  Trigger("mnuEditUndo");
  EXPECT_EQ(Shown(3, 2), "-30");
}

TEST_F(SheetDialogs, AverageReplicates) {
  StartWithData();
  EXPECT_EQ(SaidBy("mnuDataAverage"), "No replicates found.");
  Document().Sheet.Cells.SetGridCellNumber(2, 1, 1);
  EXPECT_EQ(SaidBy("mnuDataAverage"), "1 replicate  found.");
  EXPECT_EQ(Shown(1, 2), "15");
  EXPECT_EQ(Shown(2, 1), "3");
  Trigger("mnuEditUndo");
  EXPECT_EQ(Shown(2, 2), "20");
}

TEST_F(SheetDialogs, PasteAndCopyWithRowsAndColumnsExchanged) {
  StartWithData();
  Select(1, 1, 4, 2);
  Fill("ckRotated");
  Trigger("mnuEditCopySpecial");
  EXPECT_EQ(QApplication::clipboard()->text().remove('\r'), "1\t2\t3\t-4\n10\t20\t-30\t40\n");
  Select(5, 1, 5, 1);
  Fill("ckRotated");
  Trigger("mnuEditPasteSpecial");
  EXPECT_EQ(Shown(7, 2), "-30");
  EXPECT_EQ(UndoText(), "&Undo Paste Rotated");
  Trigger("mnuEditUndo");
  EXPECT_EQ(Shown(7, 2), "");
  Fill("");
  EXPECT_EQ(SaidBy("mnuEditPasteSpecial"),
            "2 columns beyond the project's were left out; Columns in the Data menu makes room for more.");
  EXPECT_EQ(Shown(6, 2), "20");
  EXPECT_EQ(UndoText(), "&Undo Paste Special");
  Trigger("mnuEditCopySheet");
  EXPECT_EQ(QApplication::clipboard()->text().count('\n'), 6);
}

// A table is typed row by row, and gone through by blocks.
TEST_F(SheetDialogs, GoAboutTheSheetByKeys) {
  using Place = std::pair<int, int>;
  StartWithData();
  const auto press = [&](Qt::Key key, Qt::KeyboardModifiers with = {}) {
    QTest::keyClick(frame->focusWidget(), key, with);
    // What the next command works on is the selection.
    EXPECT_TRUE(Grid().selectionModel()->isSelected(Grid().currentIndex())) << key;
    return Current();
  };
  Select(5, 1, 5, 1);
  Grid().setFocus();
  Type("5", Qt::Key_Tab);
  Type("50", Qt::Key_Return);
  EXPECT_EQ(Current(), Place(6, 1));
  Type("6", Qt::Key_Tab);
  Type("60", Qt::Key_Tab);
  EXPECT_EQ(Current(), Place(7, 1)) << "behind the last column";
  EXPECT_EQ(press(Qt::Key_Backtab), Place(6, 2));
  EXPECT_EQ(press(Qt::Key_Return), Place(7, 1));
  EXPECT_EQ(press(Qt::Key_Return), Place(8, 1)) << "a second Enter goes straight down";

  EXPECT_EQ(press(Qt::Key_Home, Qt::ControlModifier), Place(1, 1));
  EXPECT_EQ(press(Qt::Key_Down, Qt::ControlModifier), Place(6, 1));
  EXPECT_EQ(press(Qt::Key_Up, Qt::ControlModifier), Place(1, 1));
  EXPECT_EQ(press(Qt::Key_End, Qt::ControlModifier), Place(6, 2));
  EXPECT_EQ(press(Qt::Key_Up, Qt::ControlModifier | Qt::ShiftModifier), Place(1, 2));
  EXPECT_EQ(Grid().selectionModel()->selectedIndexes().size(), 6);
  EXPECT_EQ(press(Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier), Place(1, 1));
  EXPECT_EQ(Grid().selectionModel()->selectedIndexes().size(), 12);

  Select(3, 1, 5, 2);
  Grid().selectionModel()->setCurrentIndex(Grid().model()->index(4, 1), QItemSelectionModel::NoUpdate);
  Type("33");
  EXPECT_EQ(Shown(3, 1), "33");
  EXPECT_EQ(Current(), Place(4, 1));
}

TEST_F(SheetDialogs, TakeBackAsMuchAsIsChosenInTheHistory) {
  StartWithData();
  auto* history = frame->findChild<QAction*>("mnuEditUndoHistory");
  EXPECT_FALSE(history->isEnabled());
  Document().Sheet.Headers[0] = "R&D";
  Select(1, 1, 1, 1);
  for (const char* text : {"5", "6", "7"}) Type(text);
  EXPECT_EQ(UndoText(), "&Undo Typing \"7\" in R&&D:3");
  dialogs.Do([](QDialog& dialog) {
    Inspect(dialog);
    EXPECT_EQ(dialog.windowTitle(), "Undo History");
    EXPECT_EQ(dialog.findChild<QLabel*>()->text().remove('&'), "Number:     Action:");
    auto* list = dialog.findChild<QTreeWidget*>("lstUndo");
    ASSERT_EQ(list->topLevelItemCount(), 3);
    EXPECT_EQ(list->topLevelItem(0)->text(1), "Undo Typing \"7\" in R&D:3");
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(list->currentItem()->text(0), "2");
    QTest::mouseClick(dialog.findChild<QPushButton*>("cmdUndo"), Qt::LeftButton);
  });
  Trigger("mnuEditUndoHistory");
  EXPECT_EQ(Cells(3, 1), (std::vector<std::vector<std::string>>{{"5"}, {"2"}, {"3"}}));
  EXPECT_EQ(UndoText(), "&Undo Typing \"5\" in R&&D:1");

  // What was taken back can be made again, by keys, or as much as is chosen.
  EXPECT_EQ(Action("mnuEditRedo").text(), "&Redo Typing \"6\" in R&&D:2");
  frame->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(frame.get()));
  QTest::keyClick(&Grid(), Qt::Key_Y, Qt::ControlModifier);
  EXPECT_EQ(Cells(3, 1), (std::vector<std::vector<std::string>>{{"5"}, {"6"}, {"3"}}));
  QTest::keyClick(&Grid(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(Action("mnuEditRedo").text(), "Can't &Redo");
  EXPECT_FALSE(Action("mnuEditRedo").isEnabled());
  for (int i = 0; i < 3; ++i) Trigger("mnuEditUndo");
  EXPECT_EQ(UndoText(), "Can't &Undo");
  dialogs.Do([](QDialog& dialog) {
    auto* list = dialog.findChild<QTreeWidget*>("lstUndo");
    EXPECT_EQ(list->currentItem()->text(1), "Redo Typing \"5\" in R&D:1");
    QTest::keyClick(list, Qt::Key_Up);
    EXPECT_EQ(list->currentItem()->text(0), "+2");
    auto* button = dialog.findChild<QPushButton*>("cmdUndo");
    EXPECT_EQ(button->text(), "&Redo");
    QTest::mouseClick(button, Qt::LeftButton);
  });
  Trigger("mnuEditUndoHistory");
  EXPECT_EQ(Cells(3, 1), (std::vector<std::vector<std::string>>{{"5"}, {"6"}, {"3"}}));
}

TEST_F(SheetDialogs, EditTheHeaders) {
  StartWithData();
  const auto shown = [&] { return Grid().model()->headerData(1, Qt::Horizontal).toString(); };
  const auto type = [&](const char* text) {
    dialogs.Do([=](QDialog& dialog) {
      auto* edit = dialog.findChild<QLineEdit*>();
      edit->setText(text);
      QTest::keyClick(edit, Qt::Key_Return);
    });
  };
  type("rate");
  QHeaderView& header = *Grid().horizontalHeader();
  const QPoint place(header.sectionViewportPosition(1) + header.sectionSize(1) / 2, header.height() / 2);
  QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, place);
  QTest::mouseDClick(header.viewport(), Qt::LeftButton, {}, place);
  EXPECT_EQ(shown(), "rate");
  EXPECT_EQ(UndoText(), "&Undo Edit Header");
  EXPECT_EQ(Document().Sheet.Headers[0], "X");
  type("speed");
  Trigger("mnuFormatHeader");
  EXPECT_EQ(shown(), "speed");
  Trigger("mnuFormatDefault");
  EXPECT_EQ(shown(), "Y");
  EXPECT_EQ(UndoText(), "&Undo Default Headers");
  Trigger("mnuEditUndo");
  EXPECT_EQ(shown(), "speed");
}

TEST_F(SheetDialogs, ExchangeTwoColumnsAndRefuseOne) {
  StartWithData();
  Select(1, 1, 4, 1);
  EXPECT_EQ(SaidBy("mnuEditExchange"), "The currently selected range only includes a single column.");
  Select(1, 2, 4, 2, QItemSelectionModel::Select);
  dialogs.Press(QMessageBox::Yes);
  Trigger("mnuEditExchange");
  EXPECT_EQ(dialogs.Said.back(), "Do you also want to exchange the column headers you defined?");
  EXPECT_EQ(Shown(4, 1), "40");
  EXPECT_EQ(Document().Sheet.Headers[0], "Y");
  EXPECT_EQ(UndoText(), "&Undo Exchange Headers");
  Trigger("mnuEditUndo");
  EXPECT_EQ(Shown(4, 1), "-4");
  EXPECT_EQ(Document().Sheet.Headers[0], "X");
}

TEST_F(SheetDialogs, FormatWholeColumns) {
  StartWithData();
  Select(2, 1, 2, 1);
  dialogs.Press(QMessageBox::No);
  Trigger("mnuFormatCells");
  EXPECT_EQ(dialogs.Said.back(),
            "Formatting must be applied to entire columns. Do you with to change the number format of the columns "
            "included in the current selection?");
  EXPECT_EQ(Shown(1, 1), "1");
  Grid().selectColumn(0);
  dialogs.Do([](QDialog& dialog) {
    Inspect(dialog);
    EXPECT_EQ(In<QComboBox>(dialog, "NumberFormat").currentText(), "General");
    EXPECT_EQ(Text(dialog, "Sample"), "1");
    Enter(dialog, "NumberFormat=0.00");
    EXPECT_EQ(Text(dialog, "Sample"), "1.00");
    auto* typed = In<QComboBox>(dialog, "NumberFormat").lineEdit();
    typed->selectAll();
    QTest::keyClicks(typed, "0.0E+00");
    EXPECT_EQ(Text(dialog, "Sample"), "1.0E+00");
    Enter(dialog, "NumberFormat=yyyy-mm-dd hh:mm");
    EXPECT_EQ(Text(dialog, "Sample"), "1899-12-31 00:00");
    Enter(dialog, "NumberFormat=0.0E+00");
    Accept(dialog);
  });
  Trigger("mnuFormatCells");
  EXPECT_EQ(Shown(4, 1), "-4.0E+00");
  EXPECT_EQ(Shown(4, 2), "40");
  EXPECT_EQ(UndoText(), "&Undo Format Cells");
  Trigger("mnuEditUndo");
  EXPECT_EQ(Shown(4, 1), "-4");
}

TEST_F(SheetDialogs, ShowColumnsAsTheyAreKept) {
  StartWithData();
  ColumnFormat& format = Document().Sheet.Formats[1];
  format.AlignHorizontal = 3;
  format.FontSize = 800;
  format.FontBold = true;
  format.FontColor = 0x0000FF;
  format.ColumnWidth = 2200;
  const int height = Grid().rowHeight(0), width = Grid().columnWidth(1);
  Active().Refresh();
  const QModelIndex cell = Grid().model()->index(0, 1), other = Grid().model()->index(0, 0);
  EXPECT_EQ(cell.data(Qt::TextAlignmentRole).toInt(), int(Qt::AlignCenter));
  EXPECT_EQ(other.data(Qt::TextAlignmentRole).toInt(), int(Qt::AlignRight | Qt::AlignVCenter));
  EXPECT_EQ(cell.data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::red));
  EXPECT_FALSE(other.data(Qt::ForegroundRole).isValid());
  const QFont font = cell.data(Qt::FontRole).value<QFont>().resolve(Grid().font());
  EXPECT_TRUE(font.bold());
  EXPECT_EQ(font.family(), Grid().font().family());
  EXPECT_EQ(font.pointSizeF(), 40);
  EXPECT_EQ(other.data(Qt::FontRole).value<QFont>().resolve(Grid().font()), Grid().font());
  EXPECT_GT(Grid().rowHeight(0), height);
  EXPECT_EQ(Grid().columnWidth(1), 2 * width);
  EXPECT_EQ(Grid().columnWidth(0), width);

  // What the user makes wider stays so in the file.
  Document().Changed = false;
  Grid().horizontalHeader()->resizeSection(0, width + 31);
  EXPECT_TRUE(Active().isWindowModified());
  dialogs.ChooseFile(folder.Path("wide.qvx"));
  Trigger("mnuFileSave");
  Trigger("mnuFileClose");
  frame->OpenFile(QString::fromStdString(folder.Path("wide.qvx")));
  EXPECT_EQ(Grid().columnWidth(0), width + 31);
  EXPECT_EQ(Grid().columnWidth(1), 2 * width);
  EXPECT_FALSE(Active().isWindowModified());
}

TEST_F(SheetDialogs, FindTextInTheSheetInFront) {
  StartWithData();
  Trigger("mnuEditFindNext");  // nothing was looked for yet
  auto* form = frame->findChild<QDialog*>("frmFind");
  ASSERT_NE(form, nullptr);
  EXPECT_TRUE(form->isVisible());
  EXPECT_FALSE(form->isModal());
  Inspect(*form);
  auto* next = form->findChild<QPushButton*>("cmdFindNext");
  EXPECT_FALSE(next->isEnabled());
  Enter(*form, "txtFindWhat=0, cmbSearchBy=By Rows");
  Grid().setCurrentIndex(Grid().model()->index(0, 1));
  QTest::mouseClick(next, Qt::LeftButton);
  EXPECT_EQ(Current(), std::pair(2, 2));
  QTest::keyClick(form->findChild<QLineEdit*>("txtFindWhat"), Qt::Key_Return);
  EXPECT_EQ(Current(), std::pair(3, 2));
  Trigger("mnuEditFindNext");
  EXPECT_EQ(Current(), std::pair(4, 2));
  Enter(*form, "ckMatchCells");
  dialogs.Press(QMessageBox::Ok);
  QTest::mouseClick(next, Qt::LeftButton);
  EXPECT_EQ(dialogs.Said.back(), "Quorvex could not find the specified data.");
  EXPECT_TRUE(form->isVisible());

  Trigger("mnuFileNew");
  Type("0");
  Type("1");
  QTest::mouseClick(next, Qt::LeftButton);
  EXPECT_EQ(Current(), std::pair(1, 1));
  QTest::keyClick(form, Qt::Key_Escape);
  EXPECT_FALSE(form->isVisible());
}

TEST_F(SheetDialogs, GoToACell) {
  StartWithData();
  dialogs.Do([](QDialog& dialog) {
    Inspect(dialog);
    Enter(dialog, "txtReference=nowhere");
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(LineBox(dialog, "txtReference").selectedText(), "nowhere");
    QTest::keyClicks(dialog.focusWidget(), "B60000");
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
  });
  EXPECT_EQ(SaidBy("mnuEditGoto"), "Invalid cell reference.");
  EXPECT_EQ(Current(), std::pair(60'000, 2));
  EXPECT_FALSE(Grid().visualRect(Grid().currentIndex()).isEmpty());
}

TEST_F(SheetDialogs, ShowStatisticsThatCanBeTakenElsewhere) {
  Start();
  EXPECT_EQ(SaidBy("mnuDataStatistics"), "You need at least 2 points to calculate statistics.");
  StartWithData();
  Trigger("mnuDataStatistics");
  auto* window = static_cast<DataStatWindow*>(Active().findChild<QDialog*>("DataStat"));
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(window->windowTitle(), "Data Statistics");
  Inspect(*window);
  auto* grid = window->findChild<QTableWidget*>("grdStatistics");
  EXPECT_EQ(grid->item(1, 0)->text(), "Y");
  EXPECT_EQ(grid->item(1, 6)->text(), "10");
  const auto click = [&](const char* button) {
    QTest::mouseClick(window->findChild<QPushButton*>(button), Qt::LeftButton);
  };

  Fill("NumberFormat=0.00");
  click("cmdFormat");
  EXPECT_EQ(grid->item(1, 6)->text(), "10.00");
  EXPECT_EQ(grid->item(1, 1)->text(), "4");
  click("cmdCopy");
  const QString copied = QApplication::clipboard()->text().remove('\r');
  EXPECT_TRUE(copied.startsWith("Variable\tNumber of Points\tMissing Points\tMaximum Value\t")) << copied.toStdString();
  EXPECT_TRUE(copied.contains("\nY\t4\t0\t40.00\t-30.00\t70.00\t10.00\t")) << copied.toStdString();
  grid->clearSelection();
  grid->setRangeSelected({0, 3, 1, 4}, true);
  window->activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(window));
  QTest::keyClick(grid, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text().remove('\r'), "3.00\t-4.00\n40.00\t-30.00\n");

  // Each tab has a format of its own.
  window->findChild<QTabWidget*>()->setCurrentIndex(1);
  auto* correlation = window->findChild<QTableWidget*>("grdCorrelation");
  EXPECT_EQ(correlation->item(1, 1)->text(), "1");
  EXPECT_EQ(correlation->verticalHeaderItem(1)->text(), "Y");
  EXPECT_EQ(correlation->item(0, 1)->text(), correlation->item(1, 0)->text());
  dialogs.ChooseFile(folder.Path("r"));
  click("cmdExport");
  EXPECT_TRUE(folder.Read("r.txt").starts_with("\tX\tY\r\nX\t1\t")) << folder.Read("r.txt");
  QPrinter printer;
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(QString::fromStdString(folder.Path("r.pdf")));
  window->Print(printer);
  EXPECT_TRUE(folder.Read("r.pdf").starts_with("%PDF"));
}

TEST_F(SheetDialogs, LeaveTheSheetAloneWhereTheNotesAreInFront) {
  StartWithData();
  Active().findChild<QTabWidget*>("pages")->setCurrentIndex(1);
  auto* notes = Active().findChild<QPlainTextEdit*>("Notes");
  QTest::keyClicks(notes, "why");
  Trigger("mnuEditSelectAll");
  Trigger("mnuEditCut");
  EXPECT_EQ(notes->toPlainText(), "");
  Trigger("mnuEditPaste");
  EXPECT_EQ(notes->toPlainText(), "why");
  Trigger("mnuEditSelectAll");
  Trigger("mnuEditClear");
  EXPECT_EQ(notes->toPlainText(), "");
  EXPECT_EQ(Shown(1, 1), "1");
  EXPECT_FALSE(Document().Changed);
  Trigger("mnuEditInsert");  // what is done to the sheet is seen
  EXPECT_EQ(Active().findChild<QTabWidget*>("pages")->currentIndex(), 0);
}

TEST_F(SheetDialogs, TakeTheKeysOfTheSheetWhereItHasTheFocus) {
  StartWithData();
  const QString before = Shown(1, 1);
  Select(1, 1, 1, 1);
  Document().Interpolations[0].Solved = true;  // so that the list is there
  Active().Resort();
  auto* solutions = Active().findChild<QWidget*>("SolvedList");
  solutions->setFocus();
  ASSERT_TRUE(solutions->hasFocus());
  QTest::keyClick(solutions, Qt::Key_Delete);
  QTest::keyClick(solutions, Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(Shown(1, 1), before);
  Grid().setFocus();
  QTest::keyClick(&Grid(), Qt::Key_Delete);
  EXPECT_EQ(Shown(1, 1), "");
  QTest::keyClick(&Grid(), Qt::Key_Z, Qt::ControlModifier);
  QTest::keyClick(&Grid(), Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(Shown(1, 1), "");
  QTest::keyClick(&Grid(), Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(Shown(1, 1), before);
}

// However many cells change, the view is told once or twice and asks for those that it shows.
TEST_F(SheetDialogs, ChangeAFullSheetInOnePiece) {
  Project full = NewProject(1, true, {});
  for (std::size_t row = 1; row <= 65'536; ++row)
    for (std::size_t col = 1; col <= 3; ++col) full.Sheet.Cells.SetGridCellNumber(row, col, 1.0 / double(row + col));
  ASSERT_EQ(WriteProject(full, folder.Path("full.qvx")), 0);
  Start();
  frame->OpenFile(QString::fromStdString(folder.Path("full.qvx")));
  QSignalSpy changed(Grid().model(), &QAbstractItemModel::dataChanged);
  Trigger("mnuEditSelectAll");
  Trigger("mnuEditCopy");
  for (const char* command : {"mnuEditPaste", "mnuEditCut", "mnuEditUndo", "mnuEditClear", "mnuEditUndo"}) {
    Trigger(command);
    EXPECT_LE(changed.size(), 3) << command;
    changed.clear();
  }
  EXPECT_EQ(Document().Sheet.Cells.GridCellNumber(65'536, 3), 1.0 / 65'539);
  Trigger("mnuEditDelete");
  EXPECT_EQ(Document().Sheet.Cells.GridLastRow(), 0u);
}

TEST_F(SheetDialogs, OfferTheUsualOnARightClick) {
  StartWithData();
  std::set<std::string> offered;
  for (const QAction* action : Grid().actions()) offered.insert(action->objectName().toStdString());
  ExpectMnemonicsDoNotMeet(Grid().actions());
  for (const char* name : {"mnuEditCut", "mnuEditCopy", "mnuEditPaste", "mnuEditInsert", "mnuEditDelete",
                           "mnuEditClear", "mnuFormatCells"})
    EXPECT_TRUE(offered.contains(name)) << name;
  // On a cell, and on a header, whose column it is for then.
  const QHeaderView& header = *Grid().horizontalHeader();
  const std::pair<QWidget*, QPoint> places[] = {
      {Grid().viewport(), Grid().visualRect(Grid().model()->index(1, 0)).center()},
      {header.viewport(), {header.sectionViewportPosition(1) + 5, header.height() / 2}}};
  for (const auto& [widget, place] : places) {
    int entries = 0;
    QTimer::singleShot(0, frame.get(), [&] {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      ASSERT_NE(menu, nullptr);
      entries = static_cast<int>(menu->actions().size());
      menu->close();
    });
    QContextMenuEvent click(QContextMenuEvent::Mouse, place, widget->mapToGlobal(place));
    QApplication::sendEvent(widget, &click);
    EXPECT_EQ(entries, Grid().actions().size());
  }
  EXPECT_TRUE(Grid().selectionModel()->isColumnSelected(1));

  Trigger("mnuEditSelectAll");
  EXPECT_EQ(Grid().selectionModel()->selection().size(), 1);
  EXPECT_EQ(Grid().selectionModel()->selection()[0].height(), 65'536);
}

}  // namespace
}  // namespace quorvex
