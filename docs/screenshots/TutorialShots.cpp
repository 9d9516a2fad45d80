// The way of the tutorial: from a file of measurements to models that are ranked.

#include <QAction>
#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTemporaryDir>

#include "Script.h"
#include "Shots.h"
#include "app/ui/parentfrm.h"

namespace quorvex {
namespace {

QWidget* VisibleWindow(const char* name) {
  for (QWidget* window : QApplication::topLevelWidgets())
    if (window->objectName() == name && window->isVisible()) return window;
  return nullptr;
}

void Choose(QDialog& dialog, const char* model) {
  auto* list = dialog.findChild<QListWidget*>("eq_list");
  for (int row = 0; row < list->count(); ++row)
    if (list->item(row)->text().endsWith(model)) list->setCurrentRow(row);
}

}  // namespace

void TakeTutorial(const Shots& shots) {
  Session session;  // that of a beginner, who has set nothing
  Settings& preferences = session.Preferences;
  preferences.Set("Show Tips at Startup", "0");
  preferences.Set("screenwidth", "13500");
  preferences.Set("screenheight", "8000");
  preferences.Set("sortindex", "4");  // StdErr
  const QTemporaryDir state;
  const auto accept = [](QDialog& dialog) { dialog.accept(); };
  const auto choose = [](const char* option) {
    return [option](QDialog& dialog) {
      dialog.findChild<QRadioButton*>("optNonLinear")->setChecked(true);
      dialog.findChild<QRadioButton*>(option)->setChecked(true);
      dialog.accept();
    };
  };
  parentfrm frame(session, "examples/data/puromycin_treated.txt", state.path().toStdString());
  {
    const Script script({[&](QDialog& dialog) {
      shots.Take(dialog, "tutorial-import");
      dialog.findChild<QPushButton*>("Finish")->click();
    }});
    frame.show();
    shots.Take(frame, "tutorial-sheet");
  }
  const auto solve = [&](std::deque<Step> steps) {
    const Script script(std::move(steps));
    frame.findChild<QAction*>("mnuSolveRegression")->trigger();
  };
  solve({choose("optSingle"),
         [&](QDialog& dialog) {
           Choose(dialog, "a*x/(b+x)");
           shots.Take(dialog, "tutorial-model");
           dialog.findChild<QPushButton*>("solve_command")->click();
         },
         accept});
  if (QWidget* results = VisibleWindow("frmResults")) {
    auto* tabs = results->findChild<QTabWidget*>("ResultsTab");
    for (const auto& [tab, name] : {std::pair(0, "tutorial-fit"), std::pair(2, "tutorial-curve")}) {
      tabs->setCurrentIndex(tab);
      shots.Take(*results, name);
    }
    results->close();
  }
  preferences.Set("autoresults", "0");
  solve({choose("optAll"), accept});
  shots.Take(frame, "tutorial-list");
}

}  // namespace quorvex
