#pragma once

#include <QImage>
#include <QTimer>
#include <QWidget>
#include <memory>
#include <optional>

#include "drawing/ui/QtSurface.h"
#include "plot/PlotHost.h"
#include "plot/PlotModes.h"
#include "plot/PlotPage.h"
#include "plot/ui/PlotOutput.h"

class QFrame;
class QLabel;

namespace quorvex {

// Shows a plot and lets the user zoom and read coordinates, or turn it where it has three dimensions, and move legend
// and footnote. The picture is drawn in the
// screen's own pixels, at any scale, when it is asked for or the size changes, and kept; what the modes show for a
// while is painted over it.
class PlotView : public QWidget, private PlotHost {
  Q_OBJECT

 public:
  // Plot, prompter and settings must outlive the view.
  PlotView(PlotPage& plot, Prompter& prompter, Settings& settings, QWidget* parent = nullptr);

  // Draws the picture anew, after a change of the plot by somebody else.
  void Redraw();
  const QImage& Picture();

  // What stands in the place of a plot that could not be created, other than that sentence: where there is none yet.
  void SetWithoutPlot(const QString& text);

  // What the user can do to look at the plot. Among actions(), with what puts the plot elsewhere, until somebody else
  // decides what the context menu offers.
  const QList<QAction*>& LookingActions() const { return looking_; }

  // By which the arrow keys take the legend and the footnote elsewhere. Among actions(), too.
  const QList<QAction*>& MovingActions() const { return moving_; }

  // Writes the picture to a file, of the kind that its name ends by, and tells of it. Of a PNG picture the user chooses
  // the resolution.
  void WritePicture(const std::string& file);

  // From where the plot is seen; nothing where it cannot be turned.
  std::optional<ViewAngles> Angles() const { return plot_.Angles(); }

  QSize sizeHint() const override { return {640, 480}; }
  QSize minimumSizeHint() const override { return {160, 120}; }

 public slots:
  // Turn the plot. The other angle stays as it is, which may be between two whole degrees.
  void SetXYAngle(int degrees) { Turn({static_cast<double>(degrees), Angles()->Z}); }
  void SetZAngle(int degrees) { Turn({Angles()->XY, static_cast<double>(degrees)}); }
  void ZoomIn();      // lets the user mark a box to zoom into
  void ZoomOut();     // back to the scale of the data
  void ShowCoords();  // of the pointer and of curve points next to it
  void MoveLegend();
  void MoveFootNote();
  void EditCopy();  // the picture as it is shown
  void EditCopyMetafile();
  void SavePicture();
  void Print();

 signals:
  void Changed(std::string_view what);  // as PlotHost tells
  void Redrawn();                       // by Redraw
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
  void PlotChanged(std::string_view what) override { emit Changed(what); }
  void RefreshPicture() override;
  void RefreshSoon() override { soon_.start(); }

  void Turn(const ViewAngles& angles);
  PictureSize Size() const;
  QPointF InUnits(const QPointF& position) const;  // of the picture
  void AddAction(const QString& name, const QString& text, void (PlotView::*verb)(), const QKeySequence& keys = {});
  void PaintOverlay(QPainter& painter) const;

  PlotPage& plot_;
  Prompter& prompter_;
  Settings& settings_;
  QImage picture_;
  QString withoutPlot_ = tr(kPlotFailure);
  QTimer soon_;  // runs out when all events that are waiting have been taken
  std::unique_ptr<PlotModes> modes_;

  struct Overlay {
    PlotOverlay Kind;
    QRect Where;  // in pixels
    QImage Box;   // a legend or footnote on its way
  };
  std::optional<Overlay> overlay_;
  bool clickEndedMode_ = false;  // so it opens no menu
  QList<QAction*> looking_, moving_;
  QString nameWithoutCoords_;

  QFrame* xy_frame;
  QLabel *x_, *y_;
};

}  // namespace quorvex
