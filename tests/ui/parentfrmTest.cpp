// The main frame and its project windows, used as a user does: by keys, clicks, menus and dialogs.

#include <sys/wait.h>
#include <unistd.h>

#include <QAccessible>
#include <QClipboard>
#include <QDropEvent>
#include <QEventLoop>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QScreen>
#include <QSignalSpy>
#include <QStatusBar>
#include <QStyledItemDelegate>
#include <QTabBar>

#include "Accessibility.h"
#include "Frame.h"
#include "Paths.h"
#include "app/ui/FileRequests.h"
#include "core/RecentFiles.h"

namespace quorvex {
namespace {

TEST_F(Frame, BeginsWithAnEmptyProjectThatSaysWhatToDo) {
  Start();
  ASSERT_EQ(Windows(), 1);
  EXPECT_EQ(Document().FileName, "Untitled");
  EXPECT_TRUE(frame->windowTitle().contains("Untitled"));
  const auto* hint = Active().findChild<QLabel*>("hint");
  EXPECT_TRUE(hint->isVisible());
  EXPECT_TRUE(hint->text().contains("X and Y"));
  EXPECT_EQ(Status(), "X, row 1   |   no data");
  Type("1");
  EXPECT_FALSE(hint->isVisible());
  EXPECT_EQ(Status(), "X, row 2   |   1 row of data");
}

TEST_F(Frame, EditsTheSheetByItsMenuAndTakesItBack) {
  Start();
  for (const char* text : {"1", "2", "3"}) Type(text);
  Select(1, 1, 2, 1);
  Trigger("mnuEditCopy");
  EXPECT_EQ(QApplication::clipboard()->text().remove('\r').trimmed(), "1\n2");
  EXPECT_EQ(QApplication::clipboard()->mimeData()->html(), "<table><tr><td>1</td></tr><tr><td>2</td></tr></table>");
  Grid().setCurrentIndex(Grid().model()->index(1, 1));
  Trigger("mnuEditPaste");
  EXPECT_EQ(Shown(2, 2), "1");
  EXPECT_EQ(Shown(3, 2), "2");

  auto* edit = frame->findChild<QMenu*>("edit");
  emit edit->aboutToShow();
  EXPECT_EQ(Action("mnuEditUndo").text(), "&Undo Paste");
  Trigger("mnuEditUndo");
  EXPECT_EQ(Shown(2, 2), "");
  Trigger("mnuEditUndo");
  EXPECT_EQ(Shown(3, 1), "");
  EXPECT_EQ(Shown(2, 1), "2");

  // Two ranges are refused in words that name the command.
  Select(1, 1, 1, 1);
  Select(5, 2, 5, 2, QItemSelectionModel::Select);
  dialogs.Press(QMessageBox::Ok);
  Trigger("mnuEditCut");
  EXPECT_EQ(Shown(1, 1), "1");
}

TEST_F(Frame, TakesWhatIsTyped) {
  Start();
  Type("1.50", Qt::Key_Tab);
  EXPECT_EQ(Current(), std::pair(1, 2));
  Type("2026-11-21", Qt::Key_Down);
  EXPECT_EQ(Current(), std::pair(2, 2));
  EXPECT_EQ(Shown(1, 1), "1.5");
  EXPECT_EQ(Shown(1, 2), "2026-11-21");
  EXPECT_TRUE(Active().isWindowModified());
  EXPECT_TRUE(frame->isWindowModified() || frame->windowTitle().contains('*'));

  // Refused: the entry stays open, with the focus, until it is right.
  dialogs.Press(QMessageBox::Ok);
  Type("ten");
  EXPECT_EQ(dialogs.Said, Said{"Invalid entry."});
  ASSERT_NE(Entry(), nullptr);
  EXPECT_EQ(Entry()->text(), "ten");
  EXPECT_EQ(Current(), std::pair(2, 2));
  dialogs.Press(QMessageBox::Ok);  // going elsewhere by the mouse is refused, too
  QTest::mouseClick(Grid().viewport(), Qt::LeftButton, {}, Grid().visualRect(Grid().model()->index(5, 0)).center());
  EXPECT_EQ(Current(), std::pair(2, 2));
  dialogs.Press(QMessageBox::Ok);  // and so is saving
  Trigger("mnuFileSave");
  ASSERT_NE(Entry(), nullptr);
  Type("10", Qt::Key_Up);  // the refused entry is selected
  EXPECT_EQ(Shown(2, 2), "1900-01-09");
  EXPECT_EQ(Current(), std::pair(1, 2));

  // Escape takes an entry back; going elsewhere by the mouse takes it.
  Type("7", Qt::Key_Escape);
  EXPECT_EQ(Shown(1, 2), "2026-11-21");
  Type("8", std::nullopt);
  QTest::mouseClick(Grid().viewport(), Qt::LeftButton, {}, Grid().visualRect(Grid().model()->index(5, 0)).center());
  EXPECT_EQ(Shown(1, 2), "1900-01-07");  // the column shows dates
  EXPECT_EQ(Current(), std::pair(6, 1));
  EXPECT_EQ(Entry(), nullptr);
}

TEST_F(Frame, ShowsARefusedEntryThatIsBehindTheNotes) {
  Start();
  auto* pages = Active().findChild<QTabWidget*>("pages");
  for (const char* command : {"mnuFileSave", "mnuFileClose"}) {
    pages->setCurrentIndex(0);
    Type("x", std::nullopt);
    pages->setCurrentIndex(1);
    dialogs.Do([&](QDialog& box) {
      EXPECT_EQ(pages->currentIndex(), 0);
      box.reject();
    });
    Trigger(command);
    ASSERT_NE(Entry(), nullptr);
    Type("", Qt::Key_Escape);
  }
}

TEST_F(Frame, StoresAnEntryOnceThatRaisesABox) {
  folder.Write("quorvex.ini", "[startup]\nundolevels=0\n");
  for (const auto end : {std::optional(Qt::Key_Return), std::optional<Qt::Key>()}) {
    Start();
    dialogs.Press(QMessageBox::Ok);
    Type("1", end);
    if (!end) Active().findChild<QTabBar*>()->setFocus();
    QTest::qWait(10);
    EXPECT_EQ(dialogs.Said.back(), "Cannot UNDO, the UNDO feature has been disabled.");
    EXPECT_EQ(Entry(), nullptr);
    Grid().setFocus();
    Type("2");
    EXPECT_EQ(Shown(1, 1), end ? "1" : "2");
    dialogs.Press(QMessageBox::No);
    EXPECT_TRUE(frame->close());
  }
  EXPECT_EQ(dialogs.Said.size(), 4u);
}

TEST_F(Frame, TakesAnEntryThatIsOpenWhereTheProjectIsSaved) {
  Start();
  Type("3", std::nullopt);
  dialogs.ChooseFile(folder.Path("new"));
  Trigger("mnuFileSave");
  EXPECT_EQ(ReadProject(folder.Path("new.qvx"), {})->Sheet.Cells.GridCellNumber(1, 1), 3);
  EXPECT_FALSE(Active().isWindowModified());
  EXPECT_EQ(RecentFiles(LoadSettings(), kRecentProjects), std::vector<std::string>{folder.Path("new.qvx")});
  EXPECT_TRUE(frame->windowTitle().contains("new.qvx"));
  dialogs.ChooseFile(folder.Path("other.qvx"));
  Trigger("mnuFileSaveAs");
  EXPECT_EQ(Document().FileName, folder.Path("other.qvx"));
  // Neither is one that is saved by the question at its end.
  Trigger("mnuFileNew");
  Type("4", std::nullopt);
  dialogs.Press(QMessageBox::Yes);
  dialogs.ChooseFile(folder.Path("last.qvx"));
  EXPECT_TRUE(frame->close());
  EXPECT_EQ(RecentFiles(LoadSettings(), kRecentProjects),
            (std::vector<std::string>{folder.Path("last.qvx"), folder.Path("other.qvx"), folder.Path("new.qvx")}));
}

TEST_F(Frame, HasRoomForEveryDigit) {
  Start();
  Document().Sheet.Cells.SetGridCellNumber(1, 1, -1.0 / 9);
  Active().Refresh();
  EXPECT_EQ(Shown(1, 1), "-0.111111111111111");
  const QStyleOptionViewItem option;
  EXPECT_GE(Grid().columnWidth(0), Grid().itemDelegate()->sizeHint(option, Grid().model()->index(0, 0)).width());
  EXPECT_GE(Grid().rowHeight(0), Grid().fontMetrics().height());
}

// Counts the cells that are painted.
class PaintedCells : public QStyledItemDelegate {
 public:
  mutable int Count = 0;
  void paint(QPainter*, const QStyleOptionViewItem&, const QModelIndex&) const override { ++Count; }
};

TEST_F(Frame, PaintsOnlyWhatIsInSightOfItsManyRows) {
  Start();
  EXPECT_EQ(Grid().model()->rowCount(), 65'536);
  for (std::size_t row = 1; row <= 65'536; ++row) Document().Sheet.Cells.SetGridCellNumber(row, 1, 1.0 / double(row));
  Active().Refresh();
  PaintedCells painted;
  QAbstractItemDelegate* const own = Grid().itemDelegate();
  Grid().setItemDelegate(&painted);
  QSignalSpy changed(Grid().model(), &QAbstractItemModel::dataChanged);
  for (const Qt::Key key : {Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageUp, Qt::Key_Home}) {
    QTest::keyClick(&Grid(), key, key == Qt::Key_PageUp ? Qt::NoModifier : Qt::ControlModifier);
    QTest::qWait(5);
  }
  EXPECT_GT(painted.Count, 0);
  EXPECT_LT(painted.Count, 1000);
  Grid().setItemDelegate(own);
  for (int i = 0; i < 20; ++i) Type("5");
  EXPECT_LE(changed.size(), 60);
}

TEST_F(Frame, AlwaysHasACurrentCell) {
  Start();
  Grid().setCurrentIndex(Grid().model()->index(9, 1));
  Active().Refresh();
  EXPECT_EQ(Current(), std::pair(10, 2));
  Trigger("mnuFileNew");
  EXPECT_EQ(Current(), std::pair(1, 1));
  EXPECT_EQ(Document().FileName, "Untitled 2");
}

TEST_F(Frame, OpensProjectsOnceAndInPlaceOfAFreshOne) {
  const std::string file = SavedProject("a.qvx");
  Start();
  dialogs.ChooseFile(file);
  Trigger("mnuFileOpen");
  EXPECT_EQ(Windows(), 1);
  EXPECT_EQ(Shown(1, 2), "2.5");
  EXPECT_EQ(Active().findChild<QPlainTextEdit*>("Notes")->toPlainText(), "first\nsecond");
  EXPECT_FALSE(Active().isWindowModified());
  Trigger("mnuFileNew");
  EXPECT_EQ(Windows(), 2);
  auto* recent = frame->findChild<QMenu*>("recent");
  emit static_cast<QMenu*>(recent->parentWidget())->aboutToShow();
  ASSERT_EQ(recent->actions().size(), 1);
  recent->actions()[0]->trigger();
  EXPECT_EQ(Windows(), 2);
  EXPECT_EQ(Document().FileName, file);
  EXPECT_EQ(session.Preferences.Text("projectdir") + "/", folder.Path(""));

  // A file that is gone leaves the list.
  std::filesystem::rename(file, folder.Path("b.qvx"));
  Trigger("mnuFileClose");
  dialogs.Press(QMessageBox::Ok);
  recent->actions()[0]->trigger();
  EXPECT_EQ(dialogs.Said, Said{"Could not obtain file description for '" + file + "'."});
  EXPECT_TRUE(RecentFiles(session.Preferences, kRecentProjects).empty());
}

TEST_F(Frame, OpensTheFileOfTheCommandLine) {
  const std::string file = SavedProject("with blank.qvx");
  Start('"' + file + '"');
  ASSERT_EQ(Windows(), 1);
  EXPECT_EQ(Document().FileName, file);
}

TEST_F(Frame, TellsWhatItCannotOpen) {
  const std::string project = SavedProject("whole.qvx");
  const std::string broken = folder.Write("broken.qvx", folder.Read("whole.qvx").substr(0, 300));
  const std::string missing = folder.Path("missing.qvx");
  const std::pair<std::string, std::string> cases[] = {
      {missing, "Could not obtain file description for '" + missing + "'."},
      {broken, "Error reading project '" + broken + "'.\nThe file is incompatible or appears corrupted."},
  };
  for (const auto& [line, said] : cases) {
    dialogs.Press(QMessageBox::Ok);
    Start(line);
    EXPECT_EQ(dialogs.Said.back(), said);
    EXPECT_EQ(Windows(), 0);
    EXPECT_FALSE(Action("mnuFileSave").isEnabled());
    EXPECT_TRUE(frame->close());
  }
}

TEST_F(Frame, TakesFilesThatAreDroppedOnIt) {
  Start();
  Drop({SavedProject("a.qvx"), SavedProject("b.qvx")});
  EXPECT_TRUE(QTest::qWaitFor([this] { return Windows() == 2; }));
  EXPECT_EQ(Document().FileName, folder.Path("b.qvx"));
}

TEST_F(Frame, ClosesAWindowByItsKeyInEveryState) {
  Start();
  for (const auto show : {&QWidget::showMaximized, &QWidget::showNormal}) {
    Trigger("mnuFileNew");
    const qsizetype open = Windows();
    (frame->findChild<QMdiArea*>()->currentSubWindow()->*show)();
    QTest::keyClick(frame->focusWidget(), Qt::Key_W, Qt::ControlModifier);
    QTest::qWait(10);
    EXPECT_EQ(Windows(), open - 1);
  }
}

TEST_F(Frame, AsksForEachChangedProjectUntilCancelled) {
  Start();
  Type("1");
  Trigger("mnuFileNew");
  Active().findChild<QTabWidget*>("pages")->setCurrentIndex(1);
  QTest::keyClicks(Active().findChild<QPlainTextEdit*>("Notes"), "why");
  EXPECT_TRUE(Active().isWindowModified());
  Trigger("mnuFileNew");
  Type("3");
  dialogs.Press(QMessageBox::No);
  dialogs.Press(QMessageBox::Cancel);
  EXPECT_FALSE(frame->close());
  dialogs.Press(QMessageBox::Cancel);
  Trigger("mnuWindowCloseAll");
  const std::string notes = "The notes for project 'Untitled 2' have changed. Save Changes?";
  EXPECT_EQ(dialogs.Said, (Said{"Save changes to project 'Untitled'?", notes, notes}));
  EXPECT_EQ(Windows(), 2);
  while (Windows() > 0) {
    dialogs.Press(QMessageBox::No);
    Trigger("mnuFileClose");
  }
}

TEST_F(Frame, StoresItsPlaceAtTheEnd) {
  folder.Write("quorvex.ini", "[startup]\ndefault_x=1500\ndefault_y=450\nscreenwidth=9000\nscreenheight=6000\n");
  Start();
  EXPECT_EQ(frame->pos(), QPoint(100, 30));
  EXPECT_EQ(frame->size(), QSize(600, 400));
  frame->resize(500, 350);
  EXPECT_TRUE(frame->close());
  const Settings stored = LoadSettings();
  EXPECT_EQ(stored.Number("screenwidth"), 7500);
  EXPECT_EQ(stored.Number("screenheight"), 5250);
  EXPECT_EQ(stored.Number("default_x"), 1500);

  folder.Write("quorvex.ini", "[startup]\ndefault_x=1500000\nscreenwidth=9000000\n");
  Start();
  EXPECT_EQ(frame->width(), frame->screen()->availableGeometry().width());
  EXPECT_TRUE(frame->geometry().intersects(frame->screen()->availableGeometry()));
}

// A process that keeps a project and dies.
void CrashWith(const std::string& state, const std::string& fileName) {
  const pid_t child = fork();
  if (child == 0) {
    Project project(1, false, {});
    project.FileName = fileName;
    project.Sheet.Cells.SetGridCellNumber(1, 1, 42);
    RecoveryStore store(state);
    _exit(store.Keep(1, project));
  }
  waitpid(child, nullptr, 0);
}

TEST_F(Frame, StoresWhatIsChosenInPassing) {
  Start();
  const auto rest = [] {  // as the program does between events
    QEventLoop loop;
    QTimer::singleShot(800, &loop, &QEventLoop::quit);
    loop.exec();
  };
  Active().SortSolutions(4);
  rest();
  EXPECT_EQ(LoadSettings().Integer("sortindex"), 4);
  std::filesystem::remove(folder.Path("quorvex.ini"));
  std::filesystem::create_directory(folder.Path("quorvex.ini"));
  Active().SortSolutions(3);
  dialogs.Press(QMessageBox::Ok);
  rest();
  Active().SortSolutions(2);  // nobody wants to be told each time
  rest();
  EXPECT_TRUE(frame->close());
  EXPECT_EQ(dialogs.Said.size(), 1u);
}

TEST_F(Frame, OffersWhatACrashLeft) {
  CrashWith(folder.Path("state"), folder.Path("lost.qvx"));
  dialogs.Press(QMessageBox::Yes);
  Start();
  EXPECT_EQ(dialogs.Said.back(), "Quorvex ended unexpectedly while changes to the project '" + folder.Path("lost.qvx") +
                                     "' were not saved. Do you want to restore them?");
  ASSERT_EQ(Windows(), 1);
  EXPECT_EQ(Shown(1, 1), "42");
  EXPECT_TRUE(Active().isWindowModified());
  Trigger("mnuFileSave");
  EXPECT_EQ(ReadProject(folder.Path("lost.qvx"), {})->Sheet.Cells.GridCellNumber(1, 1), 42);
  EXPECT_TRUE(frame->close());
  frame.reset();
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path("state")));
}

TEST_F(Frame, KeepsCopiesOfWhatIsNotSaved) {
  const auto copies = [this] {
    int count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Path("")))
      count += entry.path().extension() == ".qvx";
    return count;
  };
  folder.Write("state", "");  // where the folder would be
  Start();
  frame->KeepCopies();
  EXPECT_EQ(copies(), 0);
  Type("1");
  frame->KeepCopies();
  EXPECT_EQ(copies(), 0);
  std::filesystem::remove(folder.Path("state"));
  frame->KeepCopies();  // what failed is tried again
  EXPECT_EQ(copies(), 1);
  dialogs.Press(QMessageBox::No);
  Trigger("mnuFileClose");
  QTest::qWait(0);
  EXPECT_EQ(copies(), 0);
}

TEST_F(Frame, TakesFilesFromASecondStart) {
  const QString file = QString::fromStdString(SavedProject("a.qvx"));
  EXPECT_FALSE(FileRequests::SendToRunning(file));
  folder.Write("quorvex.socket", "");  // as a crash leaves one behind
  Start();
  FileRequests requests;
  QObject::connect(&requests, &FileRequests::Requested, frame.get(), &parentfrm::OpenRequestedFile);
  ASSERT_TRUE(requests.Listen());
  EXPECT_FALSE(FileRequests().Listen());

  // It waits until the dialog is closed.
  const std::string command = "QT_QPA_PLATFORM=offscreen timeout 20 " + DesktopProgram() + " " + file.toStdString() +
                              " && touch " + folder.Path("done") + " &";
  dialogs.Do([&](QDialog& form) {
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return std::filesystem::exists(folder.Path("done")); }, 20000));
    EXPECT_EQ(Document().FileName, "Untitled");
    form.reject();
  });
  Trigger("mnuFileNewKind");
  EXPECT_TRUE(QTest::qWaitFor([&] { return Document().FileName == file.toStdString(); }));
}

TEST_F(Frame, ArrangesItsWindows) {
  Start();
  Trigger("mnuFileNew");
  Trigger("mnuWindowTile");
  const auto windows = frame->findChild<QMdiArea*>()->subWindowList();
  EXPECT_FALSE(windows[0]->geometry().intersects(windows[1]->geometry()));
  Trigger("mnuWindowCascade");
  EXPECT_TRUE(windows[0]->geometry().intersects(windows[1]->geometry()));
  Trigger("mnuWindowNext");
  EXPECT_EQ(Document().FileName, "Untitled");
  auto* menu = frame->findChild<QMenu*>("windowMenu");
  emit menu->aboutToShow();
  emit menu->aboutToShow();
  const QList<QAction*> entries = menu->actions();
  const qsizetype first = entries.size() - 2;  // the windows come last
  EXPECT_FALSE(entries[first - 1]->isCheckable());
  EXPECT_TRUE(entries[first]->isChecked());
  entries[first + 1]->trigger();
  EXPECT_EQ(Document().FileName, "Untitled 2");
}

TEST_F(Frame, DuplicatesAProject) {
  Start(SavedProject("a.qvx"));
  Type("7");
  Trigger("mnuWindowDuplicate");
  ASSERT_EQ(Windows(), 2);
  EXPECT_EQ(Document().FileName, "Untitled");
  EXPECT_EQ(Shown(1, 1) + ", " + Shown(1, 2), "7, 2.5");
  EXPECT_TRUE(Active().isWindowModified());
  dialogs.Press(QMessageBox::No);
  Trigger("mnuFileClose");
  EXPECT_EQ(Document().FileName, folder.Path("a.qvx"));
  const TemporaryVariable temporary("TMPDIR", "/proc");
  EXPECT_TRUE(SaidBy("mnuWindowDuplicate").starts_with("Error creating temporary file '/proc/"));
  EXPECT_EQ(Windows(), 1);
}

TEST_F(Frame, OpensEveryExampleAsAProjectWithoutFile) {
  Start();
  const auto* menu = frame->findChild<QMenu*>("examples");
  ASSERT_EQ(menu->actions().size(), 4);
  for (QAction* example : menu->actions()) {
    example->trigger();
    EXPECT_GE(Document().Sheet.Cells.GridLastRow(), 8u);
    EXPECT_FALSE(Document().Notes.empty());
    EXPECT_TRUE(Document().FileName.starts_with("Untitled "));
    EXPECT_FALSE(Active().isWindowModified());
  }
  EXPECT_EQ(Windows(), 4);
}

TEST_F(Frame, HasMnemonicsThatDoNotMeet) {
  Start();
  // The tabs and labels of the project in front share the keys of the menus.
  QList<QAction*> all = frame->menuBar()->actions();
  QObject owner;
  const auto* tabs = Active().findChild<QTabWidget*>("pages");
  for (int i = 0; i < tabs->count(); ++i) all << new QAction(tabs->tabText(i), &owner);
  for (const QLabel* label : Active().findChildren<QLabel*>())
    if (label->buddy() != nullptr) all << new QAction(label->text(), &owner);
  ExpectMnemonicsDoNotMeet(all);
}

TEST_F(Frame, AsksForATextThatMayLookLikeMarkup) {
  Start();
  MessageBoxPrompter user(frame.get());
  dialogs.Do([](QDialog& form) {
    EXPECT_EQ(form.windowTitle(), "Quorvex");
    auto* edit = form.findChild<QLineEdit*>();
    EXPECT_EQ(edit->text(), "<b>old");
    edit->setText("new");
    QTest::keyClick(edit, Qt::Key_Return);
  });
  EXPECT_EQ(user.AskText("a < b", "<b>old"), "new");
  dialogs.Do([](QDialog& form) { QTest::keyClick(&form, Qt::Key_Escape); });
  EXPECT_EQ(user.AskText("a < b", ""), std::nullopt);
}

TEST_F(Frame, NamesWhatAScreenReaderMeets) {
  Start(SavedProject("a.qvx"));
  const AccessibilityWalk walk(*frame);
  for (const char* name : {"File", "Window", "Help", "New", "Open", "Save", "Data", "Notes", "Data sheet", "X", "Y",
                           "X, row 1   |   1 row of data"})
    EXPECT_TRUE(walk.Names.contains(name)) << name;
  const auto place = [element = QAccessible::queryAccessibleInterface(frame.get())](QWidget* child) {
    return element->indexOfChild(QAccessible::queryAccessibleInterface(child));
  };
  EXPECT_LT(place(frame->centralWidget()), place(frame->statusBar()));

  QAccessibleTableInterface* table = QAccessible::queryAccessibleInterface(&Grid())->tableInterface();
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(table->rowCount(), 65'536);
  EXPECT_EQ(table->cellAt(0, 1)->text(QAccessible::Name), "2.5");
  EXPECT_TRUE(table->cellAt(0, 0)->state().focused || Grid().currentIndex().isValid());
}

}  // namespace
}  // namespace quorvex
