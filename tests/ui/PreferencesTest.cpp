// The preferences, the tip of the day, the arrangement of windows and the help, used by clicks and keys.

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QMdiSubWindow>
#include <QMenu>

#include "Accessibility.h"
#include "Frame.h"
#include "app/Preferences.h"
#include "app/Tips.h"
#include "app/ui/ManualView.h"
#include "app/ui/PreferenceDialog.h"
#include "app/ui/frmGenPref.h"
#include "app/ui/frmTip.h"
#include "core/RecentFiles.h"
#include "core/Version.h"
#include "core/ui/ColorButton.h"
#include "results/SolvedProject.h"

namespace quorvex {
namespace {

TEST_F(Frame, StoresThePreferencesOfTheSolver) {
  Start();
  Type("3", std::nullopt);  // an entry that is still open is not lost
  dialogs.Do([this](QDialog& form) {
    TypeInto(form, "txttolerance", "0.05");
    TypeInto(form, "txtmaxiterations", "0");
    GoToPage(form, 1);
    Click(form, "ckshow90ci");
    In<QComboBox>(form, "cmbsortindex").setCurrentText("StdErr");
    // Refused: back to the page of the field, with the field selected.
    dialogs.Press(QMessageBox::Ok);
    Press(form, QDialogButtonBox::Ok);
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(form.findChild<QTabWidget*>()->currentIndex(), 0);
    auto* wrong = form.findChild<QLineEdit*>("txtmaxiterations");
    EXPECT_EQ(form.focusWidget(), wrong);
    EXPECT_EQ(wrong->selectedText(), "0");
    QTest::keyClicks(wrong, "77");
    QTest::keyClick(wrong, Qt::Key_Return);
  });
  Trigger("mnuFilePref");
  EXPECT_EQ(dialogs.Said, Said{"'Maximum iterations' cannot be 0, since 0 stands for the program's own choice, 250."});
  const Settings stored = LoadSettings();
  EXPECT_EQ(stored.ResidualTolerance, 0.05);
  EXPECT_EQ(stored.MaxIterations, 77);
  EXPECT_EQ(stored.Integer("sortindex"), 4);
  EXPECT_EQ(stored.Integer("show90ci"), 0);
  EXPECT_EQ(stored.Integer("show95ci"), 1);
  EXPECT_EQ(session.Preferences.MaxIterations, 77);
  EXPECT_EQ(Shown(1, 1), "3");

  // Escape leaves everything as it was; the defaults come back by their button.
  dialogs.Do([](QDialog& form) {
    TypeInto(form, "txtmaxiterations", "5");
    QTest::keyClick(&form, Qt::Key_Escape);
  });
  Trigger("mnuFilePref");
  EXPECT_EQ(session.Preferences.MaxIterations, 77);
  dialogs.Do([](QDialog& form) {
    EXPECT_EQ(LineBox(form, "txtmaxiterations").text(), "77");
    Click(form, "cmdDefaults");
    EXPECT_EQ(LineBox(form, "txtmaxiterations").text(), "250");
    Press(form, QDialogButtonBox::Ok);
  });
  Trigger("mnuFilePref");
  EXPECT_EQ(LoadSettings().MaxIterations, 250);
}

// Another entry than the one that is there, one that can be stored.
std::string AnotherEntry(const Preference& row, const std::string& entry, const std::string& file) {
  switch (row.Kind) {
    case PreferenceKind::Integer:
      return std::to_string(entry == std::to_string(static_cast<int>(row.Most)) ? static_cast<int>(row.Most) - 1
                                                                                : std::stoi(entry) + 1);
    case PreferenceKind::Real:
      return row.Key == "tolerance" ? "0.5" : "0.375";
    case PreferenceKind::OneOrZero:
      return entry == "1" ? "0" : "1";
    case PreferenceKind::TrueOrFalse:
      return entry == "true" ? "false" : "true";
    case PreferenceKind::Choice:
      return std::string(row.Choices[row.Choices.size() - (row.Choices.back().Stored == entry ? 2 : 1)].Stored);
    case PreferenceKind::Color:
      return "1193046";
    case PreferenceKind::Pattern:
      return "0.0###E+00";
    case PreferenceKind::File:
      return file;
  }
  return "";
}

TEST_F(Frame, KeepsEveryChoiceAndPlaceForTheNextStart) {
  const std::string file = folder.Write("chosen/models.txt", "");
  folder.Write("data/runs.csv", "1,2\n");
  std::map<std::string, PreferenceEntries> chosen;
  const auto changeAll = [&](const char* command, std::span<const PreferencePage> pages) {
    PreferenceEntries& entries = chosen[command] = EntriesOf(pages, session.Preferences, session.Locale);
    dialogs.Do([&entries, pages, file](QDialog& form) {
      for (const PreferencePage& page : pages)
        for (const Preference& row : page.Rows) {
          std::string& entry = entries[std::string(row.Key)];
          entry = AnotherEntry(row, entry, file);
          const QString name = QString::fromUtf8(row.Key.data(), qsizetype(row.Key.size())).remove(' ');
          const QString text = QString::fromStdString(entry);
          if (auto* edit = form.findChild<QLineEdit*>("txt" + name)) edit->setText(text);
          if (auto* box = form.findChild<QCheckBox*>("ck" + name)) box->click();
          if (auto* list = form.findChild<QComboBox*>("cmb" + name)) list->setCurrentIndex(list->findData(text));
          if (auto* color = form.findChild<ColorButton*>("cmd" + name)) color->SetColor(text.toInt());
        }
      Press(form, QDialogButtonBox::Ok);
    });
    Trigger(command);
  };
  Start();
  changeAll("mnuFilePref", SolverPreferences());
  changeAll("mnuGenPref", GeneralPreferences());
  dialogs.ChooseFile(folder.Path("chosen/a.qvx"));
  Trigger("mnuFileSave");
  dialogs.ChooseFile(folder.Path("data/runs.csv"));
  dialogs.Do([](QDialog& form) { form.reject(); });
  Trigger("mnuDataImport");
  frame->resize(620, 430);
  frame->move(60, 45);
  EXPECT_TRUE(frame->close());
  frame.reset();

  session = Session();
  dialogs.Do([](QDialog& tip) { tip.reject(); });
  Start();
  EXPECT_EQ(frame->size(), QSize(620, 430));
  EXPECT_EQ(frame->pos(), QPoint(60, 45));
  EXPECT_EQ(EntriesOf(SolverPreferences(), session.Preferences, session.Locale), chosen["mnuFilePref"]);
  EXPECT_EQ(EntriesOf(GeneralPreferences(), session.Preferences, session.Locale), chosen["mnuGenPref"]);
  EXPECT_EQ(RecentFiles(session.Preferences, kRecentProjects), std::vector<std::string>{folder.Path("chosen/a.qvx")});
  std::vector<std::string> begins;
  for (const char* command : {"mnuFileOpen", "mnuDataImport"}) {
    dialogs.Do([&](QDialog& form) {
      begins.push_back(static_cast<QFileDialog&>(form).directory().absolutePath().toStdString());
      form.reject();
    });
    Trigger(command);
  }
  EXPECT_EQ(begins, (std::vector<std::string>{folder.Path("chosen"), folder.Path("data")}));
}

TEST_F(Frame, SaysOnceThatItsSettingsCannotBeStored) {
  const std::string file = SavedProject("a.qvx"), other = SavedProject("b.qvx");
  folder.Write("file", "");
  const TemporaryVariable unwritable("QUORVEX_SETTINGS", folder.Path("file/quorvex.ini").c_str());
  Start();
  dialogs.Press(QMessageBox::Ok);
  frame->OpenFile(QString::fromStdString(file));
  EXPECT_EQ(dialogs.Said, Said{"The preferences could not be stored in '" + folder.Path("file/quorvex.ini") +
                               "' (error 76). They hold until Quorvex ends."});
  frame->OpenFile(QString::fromStdString(other));
  EXPECT_EQ(RecentFiles(session.Preferences, kRecentProjects), (std::vector<std::string>{other, file}));
  Type("7");
  dialogs.Press(QMessageBox::Yes);
  EXPECT_TRUE(frame->close());
  EXPECT_EQ(dialogs.Said.size(), 2u);  // and no more than the question about the project
  EXPECT_EQ(ReadProject(other, {})->Sheet.Cells.GridCellNumber(1, 1), 7);
  EXPECT_EQ(folder.Read("file"), "");
}

TEST_F(Frame, TurnsUndoOffAtOnceInOpenWindows) {
  Start();
  Type("1");
  EXPECT_TRUE(Active().UndoText().startsWith("&Undo Typing"));
  dialogs.Do([](QDialog& form) {
    TypeInto(form, "txtundolevels", "0");
    TypeInto(form, "txtdefault_numiv", "3");
    Click(form, "ckdefault_showsdev");
    Press(form, QDialogButtonBox::Ok);
  });
  Trigger("mnuGenPref");
  dialogs.Press(QMessageBox::Ok);
  for (const char* text : {"2", "3"}) Type(text);  // is told once, and the changes stand
  EXPECT_EQ(dialogs.Said, Said{"Cannot UNDO, the UNDO feature has been disabled."});
  EXPECT_EQ(Shown(3, 1), "3");
  EXPECT_EQ(Active().UndoText(), "Can't &Undo");
  Trigger("mnuFileNew");
  EXPECT_EQ(Document().Sheet.IndependentVariables, 3u);
  EXPECT_TRUE(Document().Sheet.HasStandardDeviation);
  Trigger("mnuFileClose");
}

TEST_F(Frame, StoresFontsColoursAndPatternsOfPlots) {
  Start();
  dialogs.Do([this](QDialog& form) {
    GoToPage(form, 2);
    TypeInto(form, "txtxlabelstring", "0.0E+00");
    EXPECT_EQ(Text(form, "samplexlabelstring"), "such as 1.2E+03   5.0E-02");
    GoToPage(form, 5);
    auto* color = form.findChild<ColorButton*>("cmdtickpencolor");
    dialogs.Do([](QDialog& colors) {
      dynamic_cast<QColorDialog&>(colors).setCurrentColor(QColor(0x10, 0x20, 0x30));
      colors.accept();
    });
    QTest::mouseClick(color, Qt::LeftButton);
    EXPECT_EQ(color->Color(), 0x302010);
    GoToPage(form, 7);
    auto* fonts = form.findChild<QListWidget*>("lstFonts");
    fonts->setCurrentRow(2);
    auto* size = form.findChild<QDoubleSpinBox*>("txtFontSize");
    EXPECT_FALSE(size->isEnabled());
    Click(form, "ckOfPlot");
    EXPECT_TRUE(size->isEnabled());
    size->setValue(14);
    Click(form, "ckBold");
    fonts->setCurrentRow(3);
    EXPECT_TRUE(In<QCheckBox>(form, "ckOfPlot").isChecked());
    EXPECT_FALSE(In<QCheckBox>(form, "ckBold").isChecked());
    fonts->setCurrentRow(2);
    EXPECT_TRUE(In<QCheckBox>(form, "ckBold").isChecked());
    Press(form, QDialogButtonBox::Ok);
  });
  Trigger("mnuGenPref");
  const Settings stored = LoadSettings();
  EXPECT_EQ(stored.Text("xlabelstring"), "0.0E+00");
  EXPECT_EQ(stored.Integer("tickpencolor"), 0x302010);
  EXPECT_EQ(ReadFontChoice(FontPreferences()[2], stored), (FontChoice{false, "Arial", 14, true, false, 0}));
  EXPECT_EQ(ReadFontChoice(FontPreferences()[3], stored), FontChoice());
}

TEST_F(Frame, PreferencesAnswerToKeysAndScreenReaders) {
  Start();
  for (const char* action : {"mnuFilePref", "mnuGenPref"}) {
    dialogs.Do([](QDialog& form) {
      ExpectMnemonicsDoNotMeet(form);
      const AccessibilityWalk walk(form);
      for (const Preference& row : SolverPreferences()[0].Rows)
        // Of a choice a screen reader says what is chosen; its label is a relation.
        EXPECT_TRUE(form.objectName() != "FilePref" || row.Kind == PreferenceKind::Choice ||
                    walk.Names.contains(NameOf(row)))
            << row.Key;
      form.reject();
    });
    Trigger(action);
  }
}

TEST_F(Frame, ShowsATipAtTheStartUntilToldNotTo) {
  session.Preferences = Settings();
  folder.Write("quorvex.ini", "[startup]\nShow Tips at Startup=1\n");
  dialogs.Do([this](QDialog& form) {
    EXPECT_EQ(Windows(), 1);  // the project stands before it
    const auto* label = form.findChild<QLabel*>("lblTip");
    const QString first = label->text();
    std::set<QString> seen;
    for (std::size_t i = 0; i < Tips().size(); ++i) {
      seen.insert(label->text());
      EXPECT_LE(label->heightForWidth(label->width()), label->height());
      Click(form, "cmdNextTip");
    }
    EXPECT_EQ(seen.size(), Tips().size());
    EXPECT_EQ(label->text(), first);
    Click(form, "cmdNextTip");
    Click(form, "cmdPreviousTip");
    EXPECT_EQ(label->text(), first);
    ExpectMnemonicsDoNotMeet(form);
    const AccessibilityWalk walk(form);
    Click(form, "chkLoadTipsAtStartup");
    QTest::keyClick(&form, Qt::Key_Escape);
  });
  Start();
  EXPECT_EQ(LoadSettings().Integer("Show Tips at Startup"), 0);
  EXPECT_TRUE(frame->close());
  Start();  // without one
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(Frame, ListsThePlotsUsedLast) {
  const std::string plot =
      folder.Write("a.plt", "\"B_HEADER\"\r\n\"    Quorvex:  Version 9.0 Plot\"\r\n\"filetype=2d\"\r\n\"x\"\r\n");
  folder.Write("quorvex.ini", "[Plot Files]\nRecentFile1=" + plot + "\nRecentFile2=" + folder.Path("gone.plt") + "\n");
  Start();
  auto* recent = frame->findChild<QMenu*>("recentPlots");
  ASSERT_EQ(recent->actions().size(), 2);
  dialogs.Press(QMessageBox::Ok);
  dialogs.Press(QMessageBox::Ok);
  recent->actions()[0]->trigger();
  recent->actions()[1]->trigger();
  EXPECT_EQ(dialogs.Said[0], "Error reading plot '" + plot + "'.\nThe file is incompatible or appears corrupted.");
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return RecentFiles(LoadSettings(), kRecentPlots) == std::vector<std::string>{plot}; }));
}

TEST_F(Frame, TilesArrangesAndClosesAllWindows) {
  Start();
  Trigger("mnuFileNew");
  Trigger("mnuFileNew");
  auto* area = frame->findChild<QMdiArea*>();
  const auto windows = area->subWindowList();
  Trigger("mnuWindowCascade");
  area->setActiveSubWindow(windows[1]);
  windows[1]->showMinimized();
  const QSize room = area->viewport()->size();
  Trigger("mnuWindowTileHorizontally");
  EXPECT_EQ(windows[0]->geometry(), QRect(0, 0, room.width(), room.height() / 2));
  EXPECT_EQ(windows[2]->geometry(), QRect(0, room.height() / 2, room.width(), room.height() - room.height() / 2));
  Trigger("mnuWindowTileVertically");
  EXPECT_EQ(windows[0]->geometry(), QRect(0, 0, room.width() / 2, room.height()));
  EXPECT_EQ(windows[2]->geometry(), QRect(room.width() / 2, 0, room.width() - room.width() / 2, room.height()));
  EXPECT_TRUE(windows[1]->isMinimized());
  windows[2]->showMinimized();
  for (QMdiSubWindow* icon : {windows[1], windows[2]}) icon->move(40, 40);
  Trigger("mnuWindowArrange");
  EXPECT_EQ(windows[1]->geometry().bottomLeft(), QPoint(0, room.height() - 1));
  EXPECT_FALSE(windows[1]->geometry().intersects(windows[2]->geometry()));
  EXPECT_TRUE(area->viewport()->rect().contains(windows[2]->geometry()));
  Trigger("mnuWindowCloseAll");
  EXPECT_EQ(Windows(), 0);
  EXPECT_FALSE(Action("mnuWindowTile").isEnabled());
  EXPECT_FALSE(Action("mnuToolsMacro").isEnabled());
  EXPECT_TRUE(Action("mnuGenPref").isEnabled());
}

TEST_F(Frame, TellsAboutItself) {
  Start();
  dialogs.Do([this](QDialog& form) {
    const auto& box = dynamic_cast<QMessageBox&>(form);
    EXPECT_TRUE(box.text().contains(QString("Quorvex ") + kVersion));
    EXPECT_TRUE(box.informativeText().contains(QString::fromStdString(folder.Path("quorvex.ini"))));
    const AccessibilityWalk walk(form);
    form.accept();
  });
  Trigger("mnuHelpAbout");
}

// The page that the manual shows, and its part, as in "sheet.html#data". Closes it, so that the next one opens it anew.
std::string PageShown() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->objectName() != "ManualWindow" || !window->isVisible()) continue;
    const QUrl page = window->findChild<ManualView*>()->source();
    window->close();
    return (page.fileName() + '#' + page.fragment()).toStdString();
  }
  return "no manual";
}

TEST_F(Frame, OpensThePageOfEachDialogByF1) {
  Start();
  Document() = ProjectOf({{1, 2, 3, 4}, {1, 2, 3, 4}});
  Grid().clearSelection();
  Grid().SelectAll();
  const std::pair<const char*, const char*> kDialogs[] = {
      {"mnuFileNewKind", "sheet.html#new"},       {"mnuEditPasteSpecial", "sheet.html#edit"},
      {"mnuEditCopySpecial", "sheet.html#edit"},  {"mnuEditGoto", "sheet.html#find"},
      {"mnuFormatCells", "sheet.html#format"},    {"mnuDataScale", "sheet.html#data"},
      {"mnuDataTranslate", "sheet.html#data"},    {"mnuDataSort", "sheet.html#data"},
      {"mnuDataCombine", "sheet.html#data"},      {"mnuDataZeroNegative", "sheet.html#data"},
      {"mnuSolveRegression", "solve.html#setup"}, {"mnuSolveInterpolation", "solve.html#interpolation"},
      {"mnuModelsUser", "models.html#"},          {"mnuToolsMacro", "macros.html#"},
      {"mnuFilePref", "preferences.html#solver"}, {"mnuGenPref", "preferences.html#general"},
  };
  for (const auto& [action, page] : kDialogs) {
    dialogs.Do([](QDialog& form) {
      QTest::keyClick(form.focusWidget() != nullptr ? form.focusWidget() : &form, Qt::Key_F1);
      form.reject();
    });
    Trigger(action);
    EXPECT_EQ(PageShown(), page) << action;
  }
  // A message is about the window that it stands over.
  dialogs.Do([this](QDialog& form) {
    dialogs.Do([](QDialog& message) {
      QTest::keyClick(message.focusWidget(), Qt::Key_F1);
      message.reject();
    });
    form.accept();
    form.reject();
  });
  Trigger("mnuDataScale");
  EXPECT_EQ(PageShown(), "sheet.html#data");
}

TEST_F(Frame, OpensThePageOfTheWindowByF1) {
  Start();
  QTest::keyClick(frame->focusWidget(), Qt::Key_F1);
  EXPECT_EQ(PageShown(), "sheet.html#");
  dialogs.Do([](QDialog& form) {
    QTest::keyClick(form.focusWidget(), Qt::Key_F1);
    form.reject();
  });
  Trigger("mnuFilePref");
  EXPECT_EQ(PageShown(), "preferences.html#solver");
  Trigger("mnuFileClose");
  Trigger("mnuHelpManual");
  EXPECT_EQ(PageShown(), "index.html#");
}

}  // namespace
}  // namespace quorvex
