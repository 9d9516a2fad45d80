#include "analysis/ui/DataStatWindow.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QPrintDialog>
#include <QPrinter>
#include <QScreen>
#include <QShortcut>
#include <QTabWidget>
#include <QTableWidget>
#include <QTextDocument>
#include <algorithm>

#include "sheet/ui/EditDialogs.h"

namespace quorvex {

DataStatWindow::DataStatWindow(QWidget* parent, DataStat statistics, const LocaleText& locale, Prompter& user)
    : QDialog(parent),
      statistics_(std::move(statistics)),
      locale_(locale),
      user_(user),
      pages_{{"grdStatistics", "&Statistics", "Statistics", StatisticsRows, false},
             {"grdCorrelation", "Correlation &Matrix", "Correlation Matrix", CorrelationRows, true}},
      tabs_(new QTabWidget(this)) {
  setObjectName("DataStat");
  setWindowTitle("Data Statistics");
  setAttribute(Qt::WA_DeleteOnClose);
  for (Page& page : pages_) {
    page.Grid = new QTableWidget(tabs_);
    page.Grid->setObjectName(page.Name);
    page.Grid->setAccessibleName(page.Title);
    page.Grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    page.Grid->setTabKeyNavigation(false);
    page.Grid->setAlternatingRowColors(true);
    page.Grid->verticalHeader()->setVisible(page.NamedRows);
    tabs_->addTab(page.Grid, page.Tab);
    Fill(page);
  }

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  const auto add = [&](const char* name, const QString& text, auto command) {
    QPushButton* button = buttons->addButton(text, QDialogButtonBox::ActionRole);
    button->setObjectName(name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, command);
  };
  add("cmdCopy", "&Copy", &DataStatWindow::Copy);
  add("cmdExport", "&Export...", &DataStatWindow::Export);
  add("cmdFormat", "&Format...", &DataStatWindow::Format);
  add("cmdPrint", "&Print...", &DataStatWindow::ChoosePrinter);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(new QShortcut(QKeySequence::Copy, this), &QShortcut::activated, this, &DataStatWindow::Copy);
  connect(new QShortcut(QKeySequence::Print, this), &QShortcut::activated, this, &DataStatWindow::ChoosePrinter);

  auto* column = new QVBoxLayout(this);
  column->addWidget(tabs_);
  column->addWidget(buttons);
  pages_.front().Grid->setFocus();
  // Wide enough for all columns where the screen is.
  const int wanted = pages_.front().Grid->horizontalHeader()->length() + 10 * fontMetrics().averageCharWidth();
  resize(std::min(wanted, screen()->availableGeometry().width()), 20 * fontMetrics().height());
}

void DataStatWindow::Fill(Page& page) {
  const auto rows = page.Rows(statistics_, locale_, page.NumberFormat);
  const std::size_t firstColumn = page.NamedRows ? 1 : 0;
  QTableWidget& grid = *page.Grid;
  grid.setRowCount(static_cast<int>(rows.size()) - 1);
  grid.setColumnCount(static_cast<int>(rows[0].size() - firstColumn));
  for (int row = -1; row < grid.rowCount(); ++row) {
    const std::vector<std::string>& texts = rows[static_cast<std::size_t>(row + 1)];
    if (row >= 0) grid.setVerticalHeaderItem(row, new QTableWidgetItem(QString::fromStdString(texts[0])));
    for (int col = 0; col < grid.columnCount(); ++col) {
      const std::size_t place = static_cast<std::size_t>(col) + firstColumn;
      auto* item = new QTableWidgetItem(QString::fromStdString(texts[place]));
      item->setTextAlignment(Qt::AlignVCenter | (place == 0 ? Qt::AlignLeft : Qt::AlignRight));
      row < 0 ? grid.setHorizontalHeaderItem(col, item) : grid.setItem(row, col, item);
    }
  }
  grid.resizeColumnsToContents();
  if (!grid.currentIndex().isValid()) grid.setCurrentCell(0, 0);
}

const DataStatWindow::Page& DataStatWindow::Front() const {
  return pages_[static_cast<std::size_t>(tabs_->currentIndex())];
}

std::vector<std::vector<std::string>> DataStatWindow::FrontRows() const {
  return Front().Rows(statistics_, locale_, Front().NumberFormat);
}

// The cells that are selected; the whole grid with its headings where that is no more than the current one.
void DataStatWindow::Copy() const {
  const QTableWidget& grid = *Front().Grid;
  std::vector<std::vector<std::string>> rows;
  if (const QList<QTableWidgetSelectionRange> ranges = grid.selectedRanges();
      ranges.size() == 1 && ranges[0].rowCount() * ranges[0].columnCount() > 1) {
    for (int row = ranges[0].topRow(); row <= ranges[0].bottomRow(); ++row) {
      rows.emplace_back();
      for (int col = ranges[0].leftColumn(); col <= ranges[0].rightColumn(); ++col)
        rows.back().push_back(grid.item(row, col)->text().toStdString());
    }
  } else {
    rows = FrontRows();
  }
  QGuiApplication::clipboard()->setText(QString::fromStdString(TableText(rows)));
}

void DataStatWindow::Export() const { ExportTable(FrontRows(), user_); }

void DataStatWindow::Format() {
  Page& page = pages_[static_cast<std::size_t>(tabs_->currentIndex())];
  const auto chosen = ChooseNumberFormat(this, page.NumberFormat, statistics_.Columns.front().Average, locale_);
  if (!chosen) return;
  page.NumberFormat = *chosen;
  Fill(page);
}

void DataStatWindow::ChoosePrinter() const {
  QPrinter printer(QPrinter::HighResolution);
  printer.setPageOrientation(QPageLayout::Landscape);  // eight columns side by side
  printer.setDocName(windowTitle());
  QPrintDialog dialog(&printer, const_cast<DataStatWindow*>(this));
  if (dialog.exec() == QDialog::Accepted) Print(printer);
}

void DataStatWindow::Print(QPrinter& printer) const {
  const auto rows = FrontRows();
  QString html = QString("<h3>%1: %2</h3><table border='1' cellspacing='0' cellpadding='3'>")
                     .arg(windowTitle(), QString(Front().Title));
  for (const auto& row : rows) {
    const bool heading = &row == &rows.front();
    html += "<tr>";
    for (const std::string& text : row)
      html += QString(heading                 ? "<th>%1</th>"
                      : &text == &row.front() ? "<td>%1</td>"
                                              : "<td align='right'>%1</td>")
                  .arg(QString::fromStdString(text).toHtmlEscaped());
    html += "</tr>";
  }
  QTextDocument document;
  document.setHtml(html + "</table>");
  document.print(&printer);
}

}  // namespace quorvex
