#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

#include "Shots.h"
#include "app/ui/parentfrm.h"
#include "desktop/SheetView.h"
#include "desktop/quorvexWindow.h"

namespace quorvex {
namespace {

void Choose(QDialog& dialog, const char* button) { dialog.findChild<QRadioButton*>(button)->click(); }
void Type(QDialog& dialog, const char* edit, const char* text) { dialog.findChild<QLineEdit*>(edit)->setText(text); }

}  // namespace

// The dialogs of the commands on the sheet, with an example's data.
void TakeSheet(const Shots& shots) {
  shots.Run.Preferences.Set("screenwidth", "12000");  // window units, 15 to the pixel
  shots.Run.Preferences.Set("screenheight", "8000");
  parentfrm frame(shots.Run, "", "");
  frame.show();
  frame.findChild<QMenu*>("examples")->actions()[1]->trigger();
  SheetView& grid = frame.ActiveProject()->Grid();
  const auto select = [&](int bottom, int right) {
    const QAbstractItemModel& cells = *grid.model();
    grid.selectionModel()->select({cells.index(0, 0), cells.index(bottom, right)}, QItemSelectionModel::ClearAndSelect);
  };

  shots.TakeDialog(frame, "mnuFileNewKind", "project-new");
  shots.TakeDialog(frame, "mnuFileDerive", "project-derive", [](QDialog& dialog) {
    for (const char* add : {"cmdAddX", "cmdAddY"}) {
      dialog.findChild<QPushButton*>(add)->click();
      dialog.findChild<QListWidget*>("lstData")->setCurrentRow(1);
    }
  });
  select(9, 0);
  shots.TakeDialog(frame, "mnuDataFill", "sheet-fill", [](QDialog& dialog) {
    Choose(dialog, "MethodOption2");
    Type(dialog, "FuncText", "exp(-x/10)");
    Type(dialog, "FuncStart", "0");
    Type(dialog, "FuncIncrement", "0.5");
  });
  shots.TakeDialog(frame, "mnuDataFill", "sheet-fill-column", [](QDialog& dialog) {
    Choose(dialog, "MethodOption3");
    Type(dialog, "ColumnFunc", "ln(x)");
  });
  shots.TakeDialog(frame, "mnuDataScale", "sheet-scale", [](QDialog& dialog) { Type(dialog, "ScaleText", "0.001"); });
  select(9, static_cast<int>(frame.ActiveProject()->Document().Sheet.ColumnCount()) - 1);
  shots.TakeDialog(frame, "mnuDataSort", "sheet-sort",
                   [](QDialog& dialog) { dialog.findChild<QComboBox*>("SortKey2")->setCurrentIndex(2); });
  shots.TakeDialog(frame, "mnuDataCombine", "sheet-combine");
  shots.TakeDialog(frame, "mnuDataZeroNegative", "sheet-zero");
  shots.TakeDialog(frame, "mnuDataSmooth", "sheet-smooth", [](QDialog& dialog) {
    Type(dialog, "txtPercent", "40");
    dialog.findChild<QPushButton*>("cmdApply")->click();
  });
  shots.TakeDialog(frame, "mnuEditPasteSpecial", "sheet-paste-special");
  shots.TakeDialog(frame, "mnuEditGoto", "sheet-goto", [](QDialog& dialog) { Type(dialog, "txtReference", "A7"); });
  grid.selectColumn(1);
  shots.TakeDialog(frame, "mnuFormatCells", "sheet-format",
                   [](QDialog& dialog) { dialog.findChild<QComboBox*>("NumberFormat")->setCurrentText("0.0000"); });

  frame.findChild<QAction*>("mnuEditFind")->trigger();
  auto* find = frame.findChild<QDialog*>("frmFind");
  Type(*find, "txtFindWhat", "12");
  shots.Take(*find, "sheet-find");
  find->close();

  frame.findChild<QAction*>("mnuEditCopy")->trigger();
  for (const char* text : {"0.04", "0.06", "0.11"}) grid.model()->setData(grid.model()->index(20, 0), text);
  frame.findChild<QAction*>("mnuEditClear")->trigger();
  shots.TakeDialog(frame, "mnuEditUndoHistory", "sheet-undo-history");
  for (int i = 0; i < 4; ++i) frame.findChild<QAction*>("mnuEditUndo")->trigger();

  frame.findChild<QAction*>("mnuDataStatistics")->trigger();
  auto* statistics = frame.findChild<QDialog*>("DataStat");
  shots.Take(*statistics, "sheet-statistics");
  statistics->findChild<QTabWidget*>()->setCurrentIndex(1);
  shots.Take(*statistics, "sheet-correlation");

  ColumnFormat& format = frame.ActiveProject()->Document().Sheet.Formats[1];
  format.FontBold = true;
  format.FontColor = 0x4060E0;
  format.NumberFormat = "0.000E+00";
  grid.setCurrentIndex(grid.model()->index(0, 0));
  frame.ActiveProject()->Refresh();
  shots.Take(frame, "sheet-formats");
  frame.ActiveProject()->Document().Changed = false;
}

}  // namespace quorvex
