#include "app/ui/WindowArrangement.h"

#include <QMdiArea>
#include <QMdiSubWindow>

namespace quorvex {
namespace {

enum class Minimized { No, Yes };

QList<QMdiSubWindow*> Windows(const QMdiArea& area, Minimized wanted) {
  QList<QMdiSubWindow*> windows = area.subWindowList();
  windows.removeIf([=](const QMdiSubWindow* window) {
    return window->isHidden() || window->isMinimized() != (wanted == Minimized::Yes);
  });
  return windows;
}

// Gives each window that is not minimised its share of the area, in the order they were opened: one above the other,
// or side by side.
void Share(const QMdiArea& area, Qt::Orientation along) {
  const bool rows = along == Qt::Vertical;
  const QList<QMdiSubWindow*> windows = Windows(area, Minimized::No);
  const QSize room = area.viewport()->size();
  const int count = static_cast<int>(windows.size());
  for (int i = 0; i < count; ++i) {
    // From edge to edge rather than by equal widths, so that rounding leaves no gap at the end.
    const auto edge = [&](int length, int at) { return length * at / count; };
    windows[i]->showNormal();
    windows[i]->setGeometry(rows ? QRect(QPoint(0, edge(room.height(), i)),
                                         QSize(room.width(), edge(room.height(), i + 1) - edge(room.height(), i)))
                                 : QRect(QPoint(edge(room.width(), i), 0),
                                         QSize(edge(room.width(), i + 1) - edge(room.width(), i), room.height())));
  }
}

}  // namespace

bool CloseAllForms(QMdiArea& area) {
  const QList<QMdiSubWindow*> windows = area.subWindowList();
  // Ends at the first window that stays open.
  return std::all_of(windows.begin(), windows.end(), [](QMdiSubWindow* window) { return window->close(); });
}

void TileHorizontally(QMdiArea& area) { Share(area, Qt::Vertical); }
void TileVertically(QMdiArea& area) { Share(area, Qt::Horizontal); }

void ArrangeIcons(QMdiArea& area) {
  const QSize room = area.viewport()->size();
  QPoint corner(0, room.height());
  for (QMdiSubWindow* window : Windows(area, Minimized::Yes)) {
    // A row takes one window at least, however narrow the area is.
    if (corner.x() > 0 && corner.x() + window->width() > room.width()) corner = {0, corner.y() - window->height()};
    window->move(corner.x(), corner.y() - window->height());
    corner.rx() += window->width();
  }
}

}  // namespace quorvex
