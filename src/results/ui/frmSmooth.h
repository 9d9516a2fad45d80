#pragma once

#include <QDialog>

#include "analysis/SmoothCommand.h"
#include "core/Settings.h"
#include "plot/PlotClass.h"

class QLineEdit;

namespace quorvex {

class PlotView;

// The dialog "Lowess Smooth": the data and a smooth of them in one plot, and which part of the points each value is
// smoothed over.
class frmSmooth : public QDialog {
  Q_OBJECT

 public:
  // The command has begun. It and the rest outlive the dialog.
  frmSmooth(QWidget* parent, SmoothCommand& command, const SheetEdit& edit, Settings& settings);
  ~frmSmooth() override;

  void accept() override;

 private:
  void LayOut();
  void Apply();
  void ShowCurve();
  bool Try(bool (SmoothCommand::*step)(std::string& percent));

  SmoothCommand& command_;
  const SheetEdit& edit_;
  Settings& settings_;
  PlotClass plot_;
  PlotView* pctSmooth;
  QLineEdit* txtPercent;
};

// The whole command on a sheet. Returns whether it changed that.
bool ShowSmooth(const SheetEdit& edit, QWidget* parent, Settings& settings);

}  // namespace quorvex
