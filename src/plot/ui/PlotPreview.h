#pragma once

#include <QDialog>
#include <memory>
#include <string>
#include <vector>

#include "core/Prompter.h"
#include "core/Settings.h"
#include "plot/PlotPage.h"

class QPrintPreviewWidget;
class QPrinter;

namespace quorvex {

// A plot's page as the printer would print it, in the present page setup, with the commands to change that and to
// print.
class PlotPreview : public QDialog {
 public:
  // All must outlive the dialog.
  PlotPreview(PlotPage& plot, Settings& settings, Prompter& user, QWidget* parent);
  ~PlotPreview() override;

  // Draws the page anew and says why there is none.
  void Refresh();

  int PageCount() const;

 private:
  void PageSetupCommand();
  void Print();

  PlotPage& plot_;
  Settings& settings_;
  Prompter& user_;
  std::unique_ptr<QPrinter> printer_;
  QPrintPreviewWidget* page_;
  std::vector<std::string> refusals_;
};

// Shows the preview, unless the plot's settings are in error, which is refused.
void PreviewPlot(PlotPage& plot, Settings& settings, Prompter& user, QWidget* parent);

}  // namespace quorvex
