#include <QListWidget>
#include <QTabWidget>

#include "Shots.h"
#include "app/ui/PreferenceDialog.h"
#include "app/ui/frmGenPref.h"
#include "app/ui/frmTip.h"
#include "batch/ui/frmMacro.h"
#include "core/ui/MessageBoxPrompter.h"
#include "engine/LoadModelCatalog.h"

namespace quorvex {
namespace {

// Each page of a tabbed dialog.
void TakePages(const Shots& shots, QDialog& dialog, const QString& name) {
  auto* pages = dialog.findChild<QTabWidget*>();
  dialog.show();
  for (int page = 0; page < pages->count(); ++page) {
    pages->setCurrentIndex(page);
    QString title = pages->tabText(page).remove('&').toLower();
    shots.Take(dialog, name + '-' + title.replace(' ', '-'));
  }
}

}  // namespace

// The preferences, the tip of the day and the macro editor.
void TakePreferences(const Shots& shots) {
  MessageBoxPrompter user(nullptr);
  FilePref solver(nullptr, shots.Run, user);
  TakePages(shots, solver, "solver");
  const Settings usual = shots.Run.Preferences;
  shots.Run.Preferences.Set("yaxistitlefontname", "Liberation Serif");
  shots.Run.Preferences.Set("yaxistitlefontheight", "16");
  shots.Run.Preferences.Set("yaxistitlefontitalic", "true");
  frmGenPref general(nullptr, shots.Run, user);
  general.findChild<QListWidget*>("lstFonts")->setCurrentRow(2);
  TakePages(shots, general, "preferences");
  shots.Run.Preferences = usual;  // the plots of other pictures have the fonts of a fresh program

  frmTip tip(nullptr, shots.Run, 0);
  tip.show();
  shots.Take(tip, "tip");

  ModelCollection models;
  LoadModelCatalog(models, 1, shots.Run.Locale);
  MacroFields fields = FieldsFor(1, false, shots.Run.Preferences, shots.Run.Locale);
  fields.Comments = "Velocity of an enzyme, treated with puromycin";
  fields.DataFile = "data/puromycin_treated.txt";
  fields.ColumnOrder = "x, y";
  fields.Diagnostics = true;
  fields.Limits = "Profile";
  fields.Bootstrap = "1000";
  fields.Models = MacroModels::Ticked;
  fields.TickedModels = {"a*x+b"};
  frmMacro macro(nullptr, fields, models, shots.Run.Preferences, shots.Run.Locale, user);
  TakePages(shots, macro, "macro");
  const std::string text = BuildMacroText(fields, models, shots.Run.Preferences, shots.Run.Locale);
  frmViewMacro view(nullptr, text, CheckMacro(fields, models, shots.Run.Locale),
                    [&] { return CheckMacroText(text, shots.Run); });
  view.show();
  shots.Take(view, "macro-view");
}

}  // namespace quorvex
