#include "core/ui/SystemClipboard.h"

#include <QMimeData>

namespace quorvex {

void SystemClipboard::SetCells(const std::string& tabSeparated) {
  const QString text = QString::fromStdString(tabSeparated);
  QStringList lines = QString(text).remove('\r').split('\n');
  if (lines.last().isEmpty()) lines.removeLast();
  QString html = "<table>";
  for (const QString& line : lines) html += "<tr><td>" + line.toHtmlEscaped().replace('\t', "</td><td>") + "</td></tr>";
  auto* data = new QMimeData;
  data->setText(text);
  data->setHtml(html + "</table>");
  QGuiApplication::clipboard()->setMimeData(data);
}

}  // namespace quorvex
