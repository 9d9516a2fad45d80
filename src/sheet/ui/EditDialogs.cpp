#include "sheet/ui/EditDialogs.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <cmath>

#include "core/Clipboard.h"
#include "sheet/CellEntry.h"
#include "sheet/ColumnLayout.h"
#include "sheet/PasteSpecial.h"
#include "sheet/ui/SheetDialog.h"

namespace quorvex {
namespace {

// What the two special dialogs ask, `verb` being "Paste" or "Copy". Nothing where the user cancels.
std::optional<CellOrder> AskOrder(QWidget* parent, const char* name, const QString& verb) {
  SheetDialog dialog(parent, name, verb + " Special");
  QCheckBox* ckRotated = dialog.AddCheck("ckRotated", verb + " &Rotated");
  dialog.AddNote(verb + " text rotated (exchange rows and columns)");
  if (!dialog.Run([] { return true; })) return std::nullopt;
  return ckRotated->isChecked() ? CellOrder::Rotated : CellOrder::Kept;
}

// A number of the column, for a dialog that shows what a format makes of it.
double SampleOf(const DataSheet& sheet, std::size_t col) {
  for (std::size_t row = 1; row <= sheet.Cells.GridLastRow(); ++row)
    if (const double cell = sheet.Cells.Cell(row, col); !std::isnan(cell)) return cell;
  return 1234.56789;
}

}  // namespace

bool ShowPasteSpecial(const SheetEdit& edit, QWidget* parent, const Clipboard& clipboard) {
  if (!edit.OneRange(kPasteSpecialCommand)) return false;
  const std::optional<CellOrder> order = AskOrder(parent, "frmPSpecial", "Paste");
  return order && PasteSpecial(edit, clipboard.Text(), *order);
}

bool ShowCopySpecial(const SheetEdit& edit, QWidget* parent, Clipboard& clipboard) {
  if (!edit.OneRange(kCopySpecialCommand)) return false;
  const std::optional<CellOrder> order = AskOrder(parent, "frmCSpecial", "Copy");
  if (!order) return false;
  if (const auto text = CopySpecial(edit, *order)) clipboard.SetCells(*text);
  return false;
}

std::optional<std::string> ChooseNumberFormat(QWidget* parent, const std::string& NumberFormat, double sample,
                                              const LocaleText& locale) {
  SheetDialog dialog(parent, "FormatCells", "Number Format");
  QStringList patterns;
  for (const char* pattern : kNumberPatterns) patterns << pattern;
  for (const char* pattern : kDatePatterns) patterns << pattern;
  QComboBox* pattern = dialog.AddChoice("NumberFormat", "Number &pattern:", patterns);
  pattern->setEditable(true);
  pattern->setCurrentText(QString::fromStdString(NumberFormat));
  auto* shown = new QLabel(&dialog);
  shown->setObjectName("Sample");
  shown->setTextFormat(Qt::PlainText);
  shown->setMinimumWidth(shown->fontMetrics().horizontalAdvance("-0.123456789012345E+00"));
  dialog.Rows()->addRow("Sample:", shown);
  dialog.AddNote(
      "0 is a digit that is always shown, # one that is shown when needed, E+00 an exponent.\n"
      "Dates: yyyy is the year, mm the month, dd the day. Times: hh:mm:ss; [h] counts on behind 24.");
  const auto show = [&] {
    shown->setText(QString::fromStdString(ShownNumber(sample, pattern->currentText().toStdString(), locale)));
  };
  QObject::connect(pattern, &QComboBox::currentTextChanged, shown, show);
  show();
  if (!dialog.Run([] { return true; })) return std::nullopt;
  return pattern->currentText().toStdString();
}

bool ShowFormatCells(const SheetEdit& edit, QWidget* parent) {
  return FormatCells(edit, [&](const std::string& NumberFormat) {
    return ChooseNumberFormat(parent, NumberFormat, SampleOf(edit.Sheet, edit.Selection.front().FirstCol), edit.Locale);
  });
}

std::optional<CellPlace> ShowGoto(const DataSheet& sheet, QWidget* parent, Prompter& user) {
  SheetDialog dialog(parent, "frmGoto", "Go To");
  QLineEdit* txtReference = dialog.AddText("txtReference", "&Reference:");
  dialog.AddNote("Column and row, as in " + ColumnNames(sheet, 1, 1).first() + ":12 or A12.");
  std::optional<CellPlace> place;
  dialog.Run([&] {
    place = GoToCell(sheet, txtReference->text().toStdString(), user);
    return place.has_value();
  });
  return dialog.result() == QDialog::Accepted ? place : std::nullopt;
}

}  // namespace quorvex
