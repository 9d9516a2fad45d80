#pragma once

#include <QDialog>
#include <functional>
#include <span>
#include <vector>

#include "calculator/Calculator.h"
#include "plot/PlotClass.h"

class QBoxLayout;
class QCheckBox;
class QGridLayout;
class QKeyEvent;
class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace quorvex {

class PlotView;

// The data calculator: what can be copied, the stack, a preview, and the keys. It stands beside the plot that it was
// opened from, and takes numbers and operators from the keyboard wherever the focus is.
class calcfrm : public QDialog {
  Q_OBJECT

 public:
  // Opens a plot of the curves; false where there is none.
  using OpenPlot = std::function<bool(std::vector<PlotSeries> curves)>;

  // Settings and prompter outlive it.
  calcfrm(QWidget* parent, Settings& settings, const LocaleText& locale, Prompter& user, OpenPlot openPlot);
  ~calcfrm() override;

  // Offers the series of a plot and of its project.
  void Init(std::vector<PlotSeries> plot, const std::vector<PlotSeries>& project);

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QPushButton* AddButton(const QString& name, const QString& caption, const QString& description,
                         std::function<void()> press);
  void AddKeys(QGridLayout* grid, const char* name, std::span<const OperationKey> keys, int columns,
               void (Calculator::*press)(int));
  QLayout* Lists();
  QLayout* StackCommands();
  QLayout* EntryPad();
  QLayout* Functions();

  void Compute(void (Calculator::*command)(int), int Index);
  bool TakeKey(const QKeyEvent& event);
  void Show();

  void preview();
  void plotnew();
  void cmdSample();

  Settings& settings_;
  Prompter& user_;
  OpenPlot openPlot_;
  Calculator calculator_;
  PlotClass previewPlot_;

  QListWidget *availablelist, *stacklist;
  QLineEdit* constant_text;
  QRadioButton* units_option[2];
  QCheckBox* arc_check;
  PlotView* PreviewPicture;
  QPushButton* undo_ = nullptr;
};

}  // namespace quorvex
