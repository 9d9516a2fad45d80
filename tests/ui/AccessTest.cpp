// What everybody can see, reach by keys and have read to them.

#include <QCheckBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QListWidget>
#include <QRadioButton>
#include <QVBoxLayout>

#include "Accessibility.h"
#include "SolveFrame.h"
#include "app/ui/ContrastStyle.h"
#include "core/ui/NamesApart.h"
#include "desktop/SolvedListPanel.h"
#include "plot/ui/PlotView.h"
#include "results/ResultPlots.h"
#include "results/SolvedProject.h"

namespace quorvex {
namespace {

QPalette Dark() {
  QPalette dark(QColor(0x32, 0x32, 0x32), QColor(0x32, 0x32, 0x32));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) dark.setColor(role, Qt::white);
  dark.setColor(QPalette::Base, QColor(0x24, 0x24, 0x24));
  return dark;
}

// How far the pixel that stands out most does so, in a part of a picture of the widget.
double Contrast(QWidget& widget, const QRect& part, const QColor& ground) {
  const QImage picture = widget.grab(part).toImage();
  double most = 1;
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x) most = std::max(most, ContrastRatio(picture.pixelColor(x, y), ground));
  return most;
}

// On both grounds, with the style that Qt brings along: what is not ticked, frames of groups, and headings.
TEST(Contrast, OfEdgesIsThreeAndOfHeadingsFourAndAHalf) {
  const QPalette before = QApplication::palette();
  for (const QPalette& palette : {QApplication::style()->standardPalette(), Dark()}) {
    QApplication::setPalette(palette);
    const bool dark = palette.color(QPalette::Window).lightness() < 128;
    QWidget window;
    auto* column = new QVBoxLayout(&window);
    auto* box = new QCheckBox(&window);
    auto* option = new QRadioButton(&window);
    auto* group = new QGroupBox("Group", &window);
    auto* list = new QListWidget(&window);
    auto* table = new QTableView(&window);
    SolvedListModel model;
    table->setModel(&model);
    list->addItem("item");
    list->item(0)->setCheckState(Qt::Unchecked);
    group->setMinimumHeight(80);
    for (QWidget* widget : std::initializer_list<QWidget*>{box, option, group, list, table}) column->addWidget(widget);
    window.resize(400, 600);
    window.show();
    const QColor ground = palette.color(QPalette::Window), base = palette.color(QPalette::Base);
    for (QWidget* mark : std::initializer_list<QWidget*>{box, option})
      for (const QColor& beside : {ground, base})
        EXPECT_GE(Contrast(*mark, QRect(0, 0, 20, mark->height()), beside), 3)
            << mark->metaObject()->className() << dark;
    // The frame alone: below the title, and off the right half.
    const QRect frame(0, group->height() / 2, group->width() / 2, 10);
    EXPECT_GE(Contrast(*group, frame, ground), 3) << dark;
    EXPECT_GE(Contrast(*group, QRect(0, 0, group->width(), group->fontMetrics().height()), ground), 4.5) << dark;
    EXPECT_GE(Contrast(*list->viewport(), QRect(0, 0, 18, list->visualItemRect(list->item(0)).height()), base), 3)
        << dark;
    QHeaderView& header = *table->horizontalHeader();
    const QImage heading = header.grab().toImage();
    EXPECT_GE(Contrast(header, header.rect(), heading.pixelColor(2, 2)), 4.5) << dark;
  }
  QApplication::setPalette(before);
}

TEST(ElidedAround, LeavesOutWhatOthersHaveToo) {
  const QFontMetrics metrics(QApplication::font());
  const QStringList names = {"a*x1+b*x2+c*x3+d*ln(x1)+e*ln(x2)+f*ln(x3)+g*x1*x2+h",
                             "a*x1+b*x2+c*x3+d*ln(x1)+e*x2^2+f*ln(x3)+g*x1*x2+h",
                             "a*x1+b*x2+c*x3+d*ln(x1)+e*ln(x2)+f*ln(x3)+g*x1*x2",
                             "a*x1^2+b*x2+c*x3+d*ln(x1)+e*ln(x2)+f*ln(x3)+g*x1*x2+h",
                             "short",
                             "a*x1+b*x2+c*x3+d*ln(x1)+e*exp(x2)+f*ln(x3)+g*x1*x2+h"};
  const QHash<QString, qsizetype> shared = SharedStarts(names);
  EXPECT_EQ(shared["short"], 0);
  for (const int letters : {12, 16, 24}) {
    const int width = letters * metrics.horizontalAdvance('x');
    std::set<QString> shown;
    for (const QString& name : names) {
      const QString text = ElidedAround(name, shared[name], metrics, width);
      EXPECT_LE(metrics.horizontalAdvance(text), width) << text.toStdString();
      EXPECT_TRUE(shown.insert(text).second) << text.toStdString() << " twice at " << letters;
    }
    EXPECT_TRUE(shown.contains("short"));
  }
  EXPECT_EQ(ElidedAround("ab", 5, metrics, 0).size(), 2) << "some letter, however narrow";
}

class Access : public SolveFrame {
 protected:
  // A project whose model is solved, behind another one that is active.
  void OpenBehind() {
    Open(20);
    mine = &Active();
    SolveModel(Document(), "a*x+b", 1);
    Active().Refresh();
    Trigger("mnuFileNew");
    ASSERT_NE(&Active(), mine);
  }
  quorvexWindow* mine = nullptr;
};

TEST_F(Access, CommandsOfTheirProjectHaveKeysInWindowsOfResultsAndPlots) {
  OpenBehind();
  mine->ShowResults(mine->Solved().front());
  const auto newest = [this] { return mine->findChildren<Dataplot*>().last(); };
  QTest::qWait(20);
  QTest::keyClick(mine->findChild<frmResults*>(), Qt::Key_F7);
  ASSERT_EQ(mine->findChildren<Dataplot*>().size(), 1);
  EXPECT_EQ(&Active(), mine) << "the project comes to the front of the frame";
  for (QWidget* window : std::initializer_list<QWidget*>{mine->findChild<frmResults*>(), newest()}) {
    Trigger("mnuWindowNext");
    window->activateWindow();
    QTest::qWait(5);
    dialogs.Do([this](QDialog& setup) {
      EXPECT_EQ(setup.windowTitle(), "Solution Setup");
      EXPECT_EQ(setup.parentWidget()->window(), frame.get());
      setup.reject();
    });
    QTest::keyClick(window, Qt::Key_F5);
    EXPECT_EQ(&Active(), mine);
    dialogs.Press(QMessageBox::Ok);
    window->activateWindow();
    QTest::qWait(5);
    QTest::keyClick(window, Qt::Key_L, Qt::ControlModifier);
    EXPECT_EQ(dialogs.Said, Said{"Nothing was solved since the project was opened."});
    dialogs.Said.clear();
    const qsizetype plots = mine->findChildren<Dataplot*>().size();
    window->activateWindow();
    QTest::qWait(5);
    QTest::keyClick(window, Qt::Key_F7, Qt::ShiftModifier);
    EXPECT_EQ(mine->findChildren<Dataplot*>().size(), plots + 1);
    EXPECT_EQ(newest()->Plot().PlotData.back().Model()->id, "a*x+b");
  }
}

TEST_F(Access, TabGoesRoundTheResults) {
  OpenBehind();
  mine->ShowResults(mine->Solved().front());
  auto& results = *mine->findChild<frmResults*>();
  auto& first = *results.findChild<QComboBox*>("EqList");
  first.setFocus();
  std::set<const QWidget*> met;
  do QTest::keyClick(results.focusWidget(), Qt::Key_Tab);
  while (met.insert(results.focusWidget()).second);
  EXPECT_TRUE(met.contains(&first)) << "rather than round a part";
  EXPECT_TRUE(met.contains(results.findChild<QTabWidget*>("ResultsTab")->tabBar()));
  EXPECT_TRUE(met.contains(results.findChild<QTableView*>("FitBook")));
}

TEST_F(Access, PlotsSayWhatTheyShowAndFollowTheirChanges) {
  OpenBehind();
  mine->ShowResults(mine->Solved().front());
  auto& results = *mine->findChild<frmResults*>();
  results.findChild<QTabWidget*>("ResultsTab")->setCurrentIndex(2);
  QTest::qWait(20);
  auto& view = *results.findChild<PlotView*>();
  QAccessibleInterface* read = QAccessible::queryAccessibleInterface(&view);
  EXPECT_EQ(read->role(), QAccessible::Chart);
  EXPECT_EQ(read->text(QAccessible::Name), "Model Plot");
  const QString all = read->text(QAccessible::Description);
  for (const char* part :
       {"Title: \"Y against X\".", "X axis \"X\": 0 to 10.", "\"Input Data\": 20 points.", "the model \"a*x+b\"."})
    EXPECT_TRUE(all.contains(part)) << part << " in " << all.toStdString();
  view.setFocus();
  view.findChild<QAction*>("mnuPlotFormatZoom")->trigger();
  for (const int key : {Qt::Key_Return, Qt::Key_Right, Qt::Key_Up, Qt::Key_Return})
    QTest::keyClick(&view, Qt::Key(key));
  EXPECT_FALSE(read->text(QAccessible::Description).contains("0 to 10."));
  QTest::keyClick(&view, Qt::Key_0, Qt::ControlModifier);
  EXPECT_EQ(read->text(QAccessible::Description), all);
  // Coordinates are read as they change.
  QTest::keyClick(&view, Qt::Key_K, Qt::ControlModifier);
  QTest::keyClick(&view, Qt::Key_Right);
  const QString first = read->text(QAccessible::Name);
  QTest::keyClick(&view, Qt::Key_Right);
  EXPECT_TRUE(first.startsWith("X ") && first.contains(", Y "));
  EXPECT_NE(read->text(QAccessible::Name), first);
  EXPECT_EQ(view.findChild<QLabel*>("labelX")->accessibleName(),
            "X coordinate " + view.findChild<QLabel*>("labelX")->text());
  QTest::keyClick(&view, Qt::Key_Escape);
  EXPECT_EQ(read->text(QAccessible::Name), "Model Plot");
  QTest::keyClick(&view, Qt::Key_M, Qt::ControlModifier);
  QTest::keyClick(&view, Qt::Key_Left);
  QTest::keyClick(&view, Qt::Key_Return);
  EXPECT_TRUE(view.isEnabled());
}

TEST_F(Access, CellsSayWhereTheyAreAndColumnsHaveTheirWidthsByKeys) {
  OpenBehind();
  mine->ShowResults(mine->Solved().front());
  auto& results = *mine->findChild<frmResults*>();
  results.findChild<QTabWidget*>("ResultsTab")->setCurrentIndex(1);
  const struct {
    QTableView* Table;
    int Column;
    const char* Place;
  } kTables[] = {{&mine->Grid(), 1, "Y, row 3"},
                 {mine->findChild<QTableView*>("SolvedList"), 2, "RSS, row 1"},
                 {results.findChild<QTableView*>("DataBook"), 3, "Calc Y, row 3"},
                 {results.findChild<QTableView*>("FitBook"), 0, "Column 1, row 3"}};
  for (const auto& c : kTables) {
    QTableView& table = *c.Table;
    const int row = std::min(2, table.model()->rowCount() - 1);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&table)
                  ->tableInterface()
                  ->cellAt(row, c.Column)
                  ->text(QAccessible::Description),
              c.Place);
    table.setCurrentIndex(table.model()->index(row, c.Column));
    const int width = table.columnWidth(c.Column);
    for (int i = 0; i < 3; ++i) QTest::keyClick(&table, Qt::Key_Right, Qt::AltModifier);
    EXPECT_GT(table.columnWidth(c.Column), width) << c.Place;
    for (int i = 0; i < 3; ++i) QTest::keyClick(&table, Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(table.columnWidth(c.Column), width) << c.Place;
    for (int i = 0; i < 300; ++i) QTest::keyClick(&table, Qt::Key_Left, Qt::AltModifier);
    EXPECT_GT(table.columnWidth(c.Column), 0) << c.Place;
    EXPECT_EQ(table.currentIndex().column(), c.Column);
  }
  EXPECT_TRUE(mine->Document().Changed) << "widths of the sheet are the project's";
  CloseUnsaved();
}

TEST_F(Access, ALegendThatIsNotShownIsToldOf) {
  Open(20);
  for (int power = 1; power <= 21; ++power) {
    const std::string text = "a*x^(1/" + std::to_string(power) + ")+b";
    AddUserModel(Document(), text, text);
    SolveModel(Document(), text.c_str(), 0);
  }
  Active().Refresh();
  EXPECT_EQ(SaidBy("mnuPlotAll"), NoLegendText(21));
  Dataplot& plot = *Active().findChild<Dataplot*>();
  EXPECT_FALSE(plot.Plot().Legend.Show);
  EXPECT_EQ(plot.Plot().PlotData.size(), 22U);
}

TEST_F(Access, NamesOfFilesWithDoubleQuotesAreRefusedByEveryDialog) {
  Start();
  const struct {
    const char *Title, *Command, *Button;  // of the form that the command opens, if any
    bool Asks = false;                     // before it lets choose
  } kRoads[] = {{"Open", "mnuFileOpen", nullptr},
                {"Import", "mnuDataImport", nullptr},
                {"Load User Models", "mnuModelsLoad", nullptr, true},
                {"Import User Models", "mnuModelsImport", nullptr},
                {"Save As", "mnuFileSaveAs", nullptr},
                {"Input Data File", "mnuToolsMacro", "cmdDataFile"},
                {"Output File", "mnuToolsMacro", "cmdOutputFile"},
                {"Choose a File", "mnuGenPref", "cmdtemplate2d"}};
  // Quotes about a part of what is typed, which is a file that there is: the dialog would take that one.
  const std::string there = SavedProject("there.qvx");
  for (const auto& road : kRoads) {
    const bool saves = std::string(road.Title).starts_with("Save") || std::string(road.Title).starts_with("Output");
    const std::string typed = '"' + there + (saves ? ".new" : "") + "\"more";
    if (road.Button != nullptr)
      dialogs.Do([&](QDialog& form) {
        form.findChild<QAbstractButton*>(road.Button)->click();
        form.reject();
      });
    if (road.Asks) dialogs.Press(QMessageBox::Yes);
    dialogs.ChooseFile(typed);
    dialogs.Press(QMessageBox::Ok);
    dialogs.Do([&](QDialog& files) {
      EXPECT_EQ(files.windowTitle().toStdString(), road.Title);
      files.reject();
    });
    Trigger(road.Command);
    ASSERT_FALSE(dialogs.Said.empty()) << road.Title;
    EXPECT_EQ(dialogs.Said.back(),
              "The name '" + typed +
                  "' cannot be taken, for double quotes mean a list of files here. Please choose a name without them.")
        << road.Title;
    dialogs.Said.clear();
  }
  // A list is what quotes are for; the fresh project gives way to it.
  const std::string a = SavedProject("a.qvx"), b = SavedProject("b.qvx");
  dialogs.ChooseFile('"' + a + "\" \"" + b + '"');
  Trigger("mnuFileOpen");
  EXPECT_EQ(Windows(), 2);
}

}  // namespace
}  // namespace quorvex
