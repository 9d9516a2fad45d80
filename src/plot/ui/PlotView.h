#pragma once

#include <QImage>
#include <QWidget>
#include <memory>
#include <optional>

#include "plot/PlotHost.h"
#include "plot/PlotModes.h"
#include "plot/PlotPage.h"
#include "plot/ui/PlotOutput.h"
#include "plot/ui/QtSurface.h"

class QFrame;
class QLabel;

namespace quorvex {

// Shows a plot and lets the user zoom, read coordinates and move legend and footnote. The picture is drawn in the
// screen's own pixels, at any scale, when it is asked for or the size changes, and kept; what the modes show for a
// while is painted over it.
class PlotView : public QWidget, private PlotHost {
  Q_OBJECT

 public:
  // Plot, prompter and settings must outlive the view.
  PlotView(PlotPage& plot, Prompter& prompter, const Settings& settings, QWidget* parent = nullptr);

  // Draws the picture anew, after a change of the plot.
  void Redraw() { RefreshPicture(); }
  const QImage& Picture() const { return picture_; }

  QSize sizeHint() const override { return {640, 480}; }
  QSize minimumSizeHint() const override { return {160, 120}; }

 public slots:
  void ZoomIn();      // lets the user mark a box to zoom into
  void ZoomOut();     // back to the scale of the data
  void ShowCoords();  // of the pointer and of curve points next to it
  void EditCopy();
  void SavePicture();
  void Print();

 signals:
  void Changed();  // there is something to save
  void MenuEnabled(bool enabled);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  std::int32_t ScaleWidth() const override { return picture_.width() * QtSurface::kUnitsPerPixel; }
  std::int32_t ScaleHeight() const override { return picture_.height() * QtSurface::kUnitsPerPixel; }
  double TwipsPerPixelX() const override;
  double TwipsPerPixelY() const override;
  void EnableMenu() override { emit MenuEnabled(true); }
  void DisableMenu() override { emit MenuEnabled(false); }
  void SetCursor(PlotCursor cursor) override;
  void PlaceFrame() override;
  void ShowPoint(const std::string& x, const std::string& y) override;
  void HideFrame() override;
  void ShowOverlay(PlotOverlay overlay, const DeviceRect& where) override;
  void HideOverlay() override;
  void PlotChanged() override { emit Changed(); }
  void RefreshPicture() override;

  PictureSize Size() const;
  QPointF InUnits(const QPointF& position) const;  // of the picture
  void AddAction(const QString& name, const QString& text, void (PlotView::*verb)());
  void PaintOverlay(QPainter& painter) const;

  PlotPage& plot_;
  Prompter& prompter_;
  const Settings& settings_;
  QImage picture_;
  std::unique_ptr<PlotModes> modes_;

  struct Overlay {
    PlotOverlay Kind;
    QRect Where;  // in pixels
    QImage Box;   // a legend or footnote on its way
  };
  std::optional<Overlay> overlay_;
  bool clickEndedMode_ = false;  // so it opens no menu

  QFrame* xy_frame;
  QLabel *x_, *y_;
};

}  // namespace quorvex
