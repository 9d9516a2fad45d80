#include "app/ui/DesktopApplication.h"

#include <QAccessibleWidget>
#include <QDialog>
#include <QEvent>
#include <QMdiSubWindow>
#include <QMetaMethod>
#include <QScopedValueRollback>
#include <QStyle>
#include <exception>
#include <new>

#include "app/ui/ContrastStyle.h"
#include "core/ui/TabOrder.h"

namespace quorvex {
namespace {

// Asked for each class of an object, from its own to the last base, before Qt takes a widget that it doesn't know for a
// filling between controls.
QAccessibleInterface* DialogOf(const QString&, QObject* object) {
  auto* widget = qobject_cast<QWidget*>(object);
  const bool dialog = widget != nullptr && widget->windowType() == Qt::Dialog && !qobject_cast<QDialog*>(object);
  return dialog ? new QAccessibleWidget(widget, QAccessible::Dialog) : nullptr;
}

}  // namespace

DesktopApplication::DesktopApplication(int& argc, char** argv) : QApplication(argc, argv) {
  QAccessible::installFactory(DialogOf);
  if (style()->name() == ContrastStyle::kBase) setStyle(new ContrastStyle);
}

bool DesktopApplication::notify(QObject* receiver, QEvent* event) {
  FollowKeyboard(*receiver, *event);
  if (event->type() == QEvent::Show && !event->spontaneous())
    if (auto* shown = qobject_cast<QWidget*>(receiver);
        shown != nullptr && (shown->isWindow() || qobject_cast<QMdiSubWindow*>(shown) != nullptr))
      TabAsLaidOut(*shown);
  static const QMetaMethod failed = QMetaMethod::fromSignal(&DesktopApplication::Failed);
  if (!isSignalConnected(failed)) return QApplication::notify(receiver, event);
  const bool painting = event->type() == QEvent::Paint || event->type() == QEvent::UpdateRequest;
  try {
    try {
      return QApplication::notify(receiver, event);
    } catch (const std::bad_alloc&) {
      Tell("There is not enough memory for that.", painting);
    } catch (const std::exception& error) {
      Tell(QString("An unexpected error occurred: %1.").arg(QString::fromLocal8Bit(error.what())), painting);
    } catch (...) {
      Tell("An unexpected error occurred.", painting);
    }
  } catch (...) {
    // Not even enough is left to say so.
  }
  return false;
}

void DesktopApplication::FollowKeyboard(const QObject& receiver, const QEvent& event) {
  if (event.type() == QEvent::WindowActivate) {
    if (const auto* window = qobject_cast<const QWidget*>(&receiver); window != nullptr && window->isWindow())
      active_ = window;
  } else if (event.type() == QEvent::Hide && !event.spontaneous()) {
    const auto* dialog = qobject_cast<const QDialog*>(&receiver);
    const bool gone = active_ == nullptr || (active_ != dialog && !active_->isVisible());
    if (dialog != nullptr && gone && dialog->parentWidget() != nullptr)
      dialog->parentWidget()->window()->activateWindow();
  }
}

// What goes wrong while that is told isn't told, too. What can't be painted is painted again behind every message, and
// told once.
void DesktopApplication::Tell(const QString& what, bool painting) {
  if (telling_ || (painting && what == toldOfPainting_)) return;
  if (painting) toldOfPainting_ = what;
  const QScopedValueRollback telling(telling_, true);
  emit Failed(what);
}

}  // namespace quorvex
