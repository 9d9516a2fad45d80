#pragma once

#include <gtest/gtest.h>

#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QPlainTextEdit>
#include <memory>

#include "Dialogs.h"
#include "Forms.h"
#include "core/ui/ColorButton.h"
#include "core/ui/MessageBoxPrompter.h"
#include "drawing/ui/QtSurface.h"
#include "plot/Plots.h"
#include "plot/ui/FontButton.h"
#include "plot/ui/PlotOutput.h"
#include "plot/ui/PlotProperties.h"
#include "plot3d/Boxes.h"
#include "plot3d/Surfaces.h"

namespace quorvex {

// What a plot looks like.
inline QImage Picture(PlotPage& plot) {
  QImage picture = BlankPicture({400, 300});
  RecordingPrompter prompter;
  QtSurface surface(picture);
  plot.RefreshPlot(surface, prompter);
  return picture;
}

// As by the user: a text is typed, a choice made by its number, a box ticked by 1.
inline void Set(QWidget& control, const FieldValue& value) {
  ASSERT_TRUE(control.isEnabled()) << control.objectName().toStdString();
  const auto number = [&] { return std::get<std::int32_t>(value); };
  const auto text = [&] { return QString::fromStdString(std::get<std::string>(value)); };
  if (auto* edit = qobject_cast<QLineEdit*>(&control)) edit->setText(text());
  if (auto* edit = qobject_cast<QPlainTextEdit*>(&control)) edit->setPlainText(text());
  if (auto* box = qobject_cast<QAbstractSpinBox*>(&control)) box->findChild<QLineEdit*>()->setText(text());
  if (auto* box = qobject_cast<QCheckBox*>(&control)) box->setChecked(number() != 0);
  if (auto* list = qobject_cast<QComboBox*>(&control)) {
    if (list->isEditable())
      list->setEditText(text());
    else
      list->setCurrentIndex(number());
  }
  if (auto* color = qobject_cast<ColorButton*>(&control)) {
    color->SetColor(number());
    emit color->Chosen();
  }
  if (auto* font = qobject_cast<FontButton*>(&control)) {
    font->Show(std::get<ColoredFont>(value).Font);
    emit font->FontChosen();
  }
}

// The properties of a plot of two dimensions, and of one of three, which a test opens.
class PropertiesForm : public testing::Test {
 protected:
  PropertiesForm() : user(nullptr), plot(settings), space(settings) {
    plot.PlotData.push_back(PointSeries({1, 5, 10}, {1, 5, 10}, "points", {1, 1, 1}));
    plot.PlotData.push_back(PointSeries({2, 4}, {3, 2}, "others"));
    space.PlotData.push_back(Surface("a*x1+b*x2+1", {1, 2, 5, false}, {1, 2, 5, false}));
    RecordingPrompter prompter;
    for (PlotPage* page : std::initializer_list<PlotPage*>{&plot, &space}) {
      EXPECT_TRUE(page->CreateGraph({.Auto = true}, prompter));
      // Off zero, so that the axes can be logarithmic.
      for (PlotAxis* axis : page->Axes()) axis->Min = 0.5;
      space.Z.Max = 6;
      EXPECT_TRUE(page->CreateGraph({.Regenerate = true, .AutoFormat = true}, prompter));
      Picture(*page);
    }
  }

  // What the dialog does to a plot is counted.
  void Open(PlotPage& page) {
    redrawn = applied = 0;
    form = std::make_unique<PlotProperties>(
        page, settings, user,
        PlotWatcher{[this] { ++redrawn; }, [this](const PlotPage& was) { ++applied, before = was.Clone(); }}, nullptr);
    form->show();
    form->activateWindow();
    QTest::qWait(1);
  }

  QTabWidget& Pages() { return *form->findChild<QTabWidget*>(); }

  // To the page of a control.
  QWidget& Reach(const char* control) {
    auto& found = In(*form, control);
    for (int page = 0; page < Pages().count(); ++page)
      if (Pages().widget(page)->isAncestorOf(&found)) Pages().setCurrentIndex(page);
    return found;
  }
  void Enter(const char* control, const FieldValue& value) { Set(Reach(control), value); }
  bool CanApply() { return In(*form, "ApplyCommand").isEnabled(); }

  Dialogs dialogs;
  Settings settings;
  MessageBoxPrompter user;
  PlotClass plot;
  PlotClass3D space;
  int redrawn = 0, applied = 0;
  std::unique_ptr<PlotPage> before;
  std::unique_ptr<PlotProperties> form;
};

}  // namespace quorvex
