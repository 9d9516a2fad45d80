#include "plot/ui/PlotView.h"

#include <QAccessibleWidget>
#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFrame>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QPainter>

#include "core/ui/BusyCursor.h"
#include "plot/AskResolution.h"
#include "plot/DescribePlot.h"
#include "plot/PictureMessages.h"
#include "plot/PlotUndo.h"

namespace quorvex {
namespace {

constexpr double kTwips = 1440;  // to the inch

// Else Qt takes the view for a filling between controls, which screen readers leave out.
QAccessibleInterface* ChartOf(const QString&, QObject* object) {
  auto* view = qobject_cast<PlotView*>(object);
  return view != nullptr ? new QAccessibleWidget(view, QAccessible::Chart) : nullptr;
}

}  // namespace

PlotView::PlotView(PlotPage& plot, Prompter& prompter, Settings& settings, QWidget* parent)
    : QWidget(parent),
      plot_(plot),
      prompter_(prompter),
      settings_(settings),
      modes_(plot.MakeModes(*this, prompter)),
      xy_frame(new QFrame(this)),
      x_(new QLabel(xy_frame)),
      y_(new QLabel(xy_frame)) {
  [[maybe_unused]] static const bool known = (QAccessible::installFactory(ChartOf), true);
  setAccessibleName(tr("Plot"));
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  // The picture covers the whole widget, so it need not be erased first.
  setAttribute(Qt::WA_OpaquePaintEvent);

  xy_frame->setObjectName("xy_frame");
  xy_frame->setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
  xy_frame->setAutoFillBackground(true);
  // The cursor is followed below the frame, too.
  xy_frame->setAttribute(Qt::WA_TransparentForMouseEvents);
  auto* row = new QHBoxLayout(xy_frame);
  row->setContentsMargins(6, 2, 6, 2);
  for (const auto& [caption, value] : {std::pair{"X", x_}, {"Y", y_}}) {
    value->setObjectName(QString("label") + caption);
    value->setAccessibleName(tr("%1 coordinate").arg(caption));
    value->setMinimumWidth(value->fontMetrics().horizontalAdvance("-0.000000E+000"));
    row->addWidget(new QLabel(QString(caption) + ':', xy_frame));
    row->addWidget(value);
  }
  xy_frame->hide();

  soon_.setSingleShot(true);
  connect(&soon_, &QTimer::timeout, this, &PlotView::RefreshPicture);

  if (modes_->Measures()) {
    AddAction("mnuPlotFormatZoom", tr("&Zoom"), &PlotView::ZoomIn, QKeySequence("Ctrl++"));
    AddAction("mnuPlotShowCoords", tr("Show &Coordinates"), &PlotView::ShowCoords, QKeySequence("Ctrl+K"));
  }
  AddAction("mnuPlotFormatFitAll", tr("&Fit All"), &PlotView::ZoomOut, QKeySequence("Ctrl+0"));
  looking_ = actions();
  AddAction("mnuPlotMoveLegend", tr("Move &Legend"), &PlotView::MoveLegend, QKeySequence("Ctrl+M"));
  AddAction("mnuPlotMoveFootNote", tr("Move Foot&note"), &PlotView::MoveFootNote, QKeySequence("Ctrl+Shift+M"));
  moving_ = actions().mid(looking_.size());
  AddAction("mnuPlotClipItem0", tr("Copy as &Metafile"), &PlotView::EditCopyMetafile);
  AddAction("mnuPlotClipItem1", tr("C&opy"), &PlotView::EditCopy);
  AddAction("mnuPlotSavePicture", tr("&Save Picture..."), &PlotView::SavePicture);
  AddAction("mnuPlotPrint", tr("&Print..."), &PlotView::Print);
}

void PlotView::AddAction(const QString& name, const QString& text, void (PlotView::*verb)(), const QKeySequence& keys) {
  auto* action = new QAction(text, this);
  action->setObjectName(name);
  action->setShortcut(keys);
  // A window may show several plots.
  action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  connect(action, &QAction::triggered, this, verb);
  connect(this, &PlotView::MenuEnabled, action, &QAction::setEnabled);
  addAction(action);
}

PictureSize PlotView::Size() const {
  const QSizeF pixels = QSizeF(size()) * devicePixelRatioF();
  return {qRound(pixels.width()), qRound(pixels.height()), logicalDpiX() * devicePixelRatioF()};
}

QPointF PlotView::InUnits(const QPointF& position) const {
  return position * devicePixelRatioF() * QtSurface::kUnitsPerPixel;
}

double PlotView::TwipsPerPixelX() const { return kTwips / InUnits(QPointF(logicalDpiX(), 0)).x(); }
double PlotView::TwipsPerPixelY() const { return kTwips / InUnits(QPointF(0, logicalDpiY())).y(); }

const QImage& PlotView::Picture() {
  if (soon_.isActive()) RefreshPicture();
  return picture_;
}

void PlotView::Redraw() {
  RefreshPicture();
  emit Redrawn();
}

void PlotView::SetWithoutPlot(const QString& text) {
  withoutPlot_ = text;
  RefreshSoon();
}

void PlotView::Turn(const ViewAngles& angles) {
  plot_.SetAngles(angles);
  RefreshSoon();
  emit Changed(kTurnChange);
}

// While a legend is dragged the plot waits with its drawing, and so the picture stays.
void PlotView::RefreshPicture() {
  soon_.stop();
  if (plot_.Legend.Dragging || plot_.FootNote.Dragging || width() <= 0 || height() <= 0) return;
  // Not on the picture shown: a message of the drawing lets the window paint and change its size.
  QImage picture = BlankPicture(Size());
  {
    QtSurface surface(picture);
    plot_.RefreshPlot(surface, prompter_);
  }
  picture_ = plot_.PlotCreated ? std::move(picture) : BlankPicture(Size());
  setAccessibleDescription(plot_.PlotCreated ? QString::fromStdString(DescribePlot(plot_)) : withoutPlot_);
  update();
}

void PlotView::resizeEvent(QResizeEvent*) {
  modes_->Resize();
  RefreshPicture();
}

void PlotView::paintEvent(QPaintEvent*) {
  const PictureSize size = Size();
  if (picture_.width() != size.Width || picture_.height() != size.Height)
    RefreshPicture();  // a screen of another scale
  QPainter painter(this);
  painter.drawImage(rect(), picture_);
  if (!plot_.PlotCreated) {
    // In the place of the plot, of which there is nothing to be seen.
    painter.setPen(Qt::black);
    painter.drawText(rect().adjusted(20, 20, -20, -20), Qt::AlignCenter | Qt::TextWordWrap, withoutPlot_);
  }
  // A line and not the style's frame, which may colour what it stands around.
  if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange)) {
    painter.setPen(palette().color(QPalette::Highlight));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
  }
  if (!overlay_) return;
  // The overlay is in pixels of the screen, the painter in those of the widget.
  painter.scale(1 / devicePixelRatioF(), 1 / devicePixelRatioF());
  PaintOverlay(painter);
}

// Black on white can be seen on any ground.
void PlotView::PaintOverlay(QPainter& painter) const {
  const QRect& where = overlay_->Where;
  const bool mark = overlay_->Kind == PlotOverlay::kCross || overlay_->Kind == PlotOverlay::kCrossInSquare;
  if (!overlay_->Box.isNull()) {
    painter.setOpacity(0.8);
    painter.drawImage(where.topLeft(), overlay_->Box);
    painter.setOpacity(1);
  }
  const double width = devicePixelRatioF();
  QPen ground(QColor(255, 255, 255, 180), mark ? 3 * width : width), line(Qt::black, width, Qt::SolidLine, Qt::FlatCap);
  if (!mark) line.setDashPattern({3, 3});
  // A line of one pixel has its middle in the middle of pixels.
  painter.translate(0.5, 0.5);
  for (const QPen& pen : {ground, line}) {
    painter.setPen(pen);
    if (overlay_->Kind != PlotOverlay::kCross) painter.drawRect(where);
    if (!mark) continue;
    const QPointF middle = QRectF(where).center();
    painter.drawLine(QPointF(where.x(), middle.y()), QPointF(where.x() + where.width(), middle.y()));
    painter.drawLine(QPointF(middle.x(), where.y()), QPointF(middle.x(), where.y() + where.height()));
  }
}

void PlotView::ShowOverlay(PlotOverlay overlay, const DeviceRect& where) {
  const auto pixel = [](std::int32_t units) { return qRound(1.0 * units / QtSurface::kUnitsPerPixel); };
  const QRect box(pixel(where.left), pixel(where.top), pixel(where.width()), pixel(where.height()));
  // What floats is a piece of the picture, lifted off when the drag begins.
  const bool takenNow = overlay == PlotOverlay::kFloatingBox && (!overlay_ || overlay_->Kind != overlay);
  QImage lifted = takenNow ? picture_.copy(box) : overlay_ ? overlay_->Box : QImage();
  overlay_ = Overlay{overlay, box, std::move(lifted)};
  update();
}

void PlotView::HideOverlay() {
  overlay_.reset();
  update();
}

void PlotView::SetCursor(PlotCursor cursor) {
  if (cursor == PlotCursor::kNormal)
    unsetCursor();
  else
    setCursor(cursor == PlotCursor::kCross ? Qt::CrossCursor : Qt::UpArrowCursor);
}

void PlotView::PlaceFrame() {
  x_->clear();
  y_->clear();
  nameWithoutCoords_ = accessibleName();
  xy_frame->adjustSize();
  // Beside the lower title there is room.
  xy_frame->move(width() - xy_frame->width() - 2, height() - xy_frame->height() - 2);
  xy_frame->show();
}

void PlotView::ShowPoint(const std::string& x, const std::string& y) {
  x_->setText(QString::fromStdString(x));
  y_->setText(QString::fromStdString(y));
  for (QLabel* value : {x_, y_})
    value->setAccessibleName(tr("%1 coordinate %2").arg(value->objectName().right(1), value->text()));
  // What has the keyboard is read anew when its name changes.
  setAccessibleName(tr("X %1, Y %2").arg(x_->text(), y_->text()));
}

void PlotView::HideFrame() {
  if (!xy_frame->isHidden()) setAccessibleName(nameWithoutCoords_);
  xy_frame->hide();
}

void PlotView::mousePressEvent(QMouseEvent* event) {
  // A right click that ends a mode is also followed by a request for the context menu, which must not open then.
  clickEndedMode_ = event->button() != Qt::LeftButton && modes_->Active();
  const QPointF at = InUnits(event->position());
  modes_->MouseDown(static_cast<int>(event->button()), at.x(), at.y());
}

void PlotView::mouseMoveEvent(QMouseEvent* event) {
  const QPointF at = InUnits(event->position());
  modes_->MouseMove(event->buttons().testFlag(Qt::LeftButton), at.x(), at.y());
}

void PlotView::mouseReleaseEvent(QMouseEvent* event) {
  const QPointF at = InUnits(event->position());
  modes_->MouseUp(static_cast<int>(event->button()), at.x(), at.y());
}

void PlotView::keyPressEvent(QKeyEvent* event) {
  constexpr std::pair<int, PlotModes::Key> kKeys[] = {
      {Qt::Key_Left, PlotModes::kLeftArrow},   {Qt::Key_Up, PlotModes::kUpArrow},
      {Qt::Key_Right, PlotModes::kRightArrow}, {Qt::Key_Down, PlotModes::kDownArrow},
      {Qt::Key_Return, PlotModes::kReturn},    {Qt::Key_Enter, PlotModes::kReturn},
      {Qt::Key_Space, PlotModes::kReturn}};
  if (modes_->Active() && event->key() == Qt::Key_Escape) return modes_->LostFocus();
  // With Ctrl or Alt a key is a command of the window.
  const bool plain = !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
  for (const auto& [key, code] : kKeys)
    if (plain && event->key() == key && modes_->KeyDown(code, event->modifiers().testFlag(Qt::ShiftModifier))) return;
  if (!modes_->Active()) QWidget::keyPressEvent(event);
}

void PlotView::focusOutEvent(QFocusEvent* event) {
  // A menu has the focus for a moment only.
  if (event->reason() != Qt::PopupFocusReason) modes_->LostFocus();
  QWidget::focusOutEvent(event);
}

void PlotView::contextMenuEvent(QContextMenuEvent* event) {
  const bool ended = event->reason() == QContextMenuEvent::Mouse && clickEndedMode_;
  clickEndedMode_ = false;
  if (ended || modes_->Active()) return;
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->addActions(actions());
  menu->popup(event->globalPos());
}

void PlotView::ZoomIn() {
  setFocus();
  modes_->Zoom(PlotModes::kMove, 0, 0);
}

void PlotView::ShowCoords() {
  setFocus();
  modes_->ShowCoords(PlotModes::kMove, 0, 0);
}

void PlotView::MoveLegend() {
  setFocus();
  if (!modes_->MoveLegend()) prompter_.Inform("The plot shows no legend that could be moved.");
}

void PlotView::MoveFootNote() {
  setFocus();
  if (!modes_->MoveFootNote()) prompter_.Inform("The plot shows no footnote that could be moved.");
}

void PlotView::ZoomOut() {
  plot_.CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = plot_.AutoFormatted()}, prompter_);
  RefreshPicture();
  emit Changed(kFitAllChange);
}

void PlotView::EditCopy() {
  if (!CanBe("copied", plot_, prompter_)) return;
  const BusyCursor busy;
  QGuiApplication::clipboard()->setMimeData(CopiedPicture(plot_, Size(), Picture()).release());
}

void PlotView::WritePicture(const std::string& file) {
  std::optional<PictureSize> size = Size();
  if (const PictureFormat* const format = PictureFormatOf(file); format && format->Kind == PictureKind::Png)
    size = AskResolution(*size, settings_, plot_.Locale, prompter_);
  const BusyCursor busy;
  if (size) SavePlotPicture(plot_, *size, file, prompter_);
}

void PlotView::EditCopyMetafile() {
  const BusyCursor busy;
  if (auto metafile = CopiedMetafile(plot_, Size(), prompter_))
    QGuiApplication::clipboard()->setMimeData(metafile.release());
}

void PlotView::SavePicture() {
  if (!CanBe("saved", plot_, prompter_)) return;
  const auto file = prompter_.ChooseFileToSave("Save Picture", PictureFilters(), "png");
  if (file) WritePicture(*file);
}

void PlotView::Print() { FilePrint(plot_, settings_, prompter_, this); }

}  // namespace quorvex
