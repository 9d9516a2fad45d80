// The progress form while real runs go on behind it: a script takes one step per turn of the event loop, which is one
// per iteration.

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QTimer>
#include <deque>
#include <functional>

#include "Forms.h"
#include "TemporaryFolder.h"
#include "app/DesktopDrawer.h"
#include "batch/RunMacro.h"
#include "batch/ui/cfgSolveWindow.h"

namespace quorvex {
namespace {

// Steps taken one by one, each as soon as its condition holds.
class Script {
 public:
  Script() {
    QObject::connect(&timer_, &QTimer::timeout, [this] { Turn(); });
    timer_.start(0);
  }
  void When(std::function<bool()> condition, std::function<void()> action) {
    steps_.push_back({std::move(condition), std::move(action)});
  }
  bool Done() const { return steps_.empty(); }

 private:
  struct Step {
    std::function<bool()> Condition;
    std::function<void()> Action;
  };
  void Turn() {
    if (steps_.empty() || !steps_.front().Condition()) return;
    const Step step = std::move(steps_.front());
    steps_.pop_front();
    step.Action();
  }
  QTimer timer_;
  std::deque<Step> steps_;
};

class ProgressForm : public testing::Test {
 protected:
  template <class Widget = QLabel>
  Widget& Control(const char* name) {
    return In<Widget>(Window, name);
  }
  QString Text(const char* label) { return quorvex::Text(Window, label); }
  QPushButton& Button(const char* name) { return Control<QPushButton>(name); }
  void Click(const char* button) { quorvex::Click(Window, button); }

  // Two models on 20,000 points, in turn but where more threads are wanted. The limits let each search go on for
  // seconds unless somebody ends it.
  MacroOutcome Run(const std::string& handShake, const std::string& id = "long", int threads = 1) {
    std::string data;
    constexpr int kPoints = 200'000;
    for (int i = 1; i <= kPoints; ++i) data += std::to_string(i) + " " + std::to_string(i % 7 + i / 100) + "\n";
    Folder.Write("data.txt", data);
    const std::string name = Folder.Write(
        "macro.cfg",
        "B_MACRO\nDataFile = " + Folder.Path("data.txt") + "\nOutputFile = " + Folder.Path("out.txt") +
            "\nLogFile = " + Folder.Path("run.log") + "\nHandShake = " + handShake +
            "\nMaxIterations = 32000\nUnchangedIterations = 32000\nRegressionTolerance = 1E-300\nThreads = " +
            std::to_string(threads) +
            "\n"
            "B_MODEL\nID = " +
            id + "\nY = first+second*x^third\nE_MODEL\nB_MODEL\nID = last\nY = a+b*x\nE_MODEL\nE_MACRO\n");
    Session session;
    session.Locale = ReadUserLocale();
    DesktopDrawer drawer;
    const MacroOutcome outcome = RunMacro(name, session, Window, drawer);
    Log = Folder.Read("run.log");
    return outcome;
  }
  std::function<bool()> AfterIteration(int n) {
    return [this, n] { return Text("IterationLabel").section(' ', 1).toInt() >= n; };
  }
  bool Logged(const std::string& text) const { return Log.find(text) != std::string::npos; }

  TemporaryFolder Folder;
  cfgSolveWindow Window;
  Script Play;
  std::string Log;
};

TEST_F(ProgressForm, TellsHowFarTheRunIsAndPauseKeepsWhatWasFound) {
  EXPECT_EQ(Window.windowTitle(), "Quorvex Solution Progress");
  int width = 0;
  Play.When([this] { return Window.isVisible(); },
            [&] {
              width = Window.width();
              EXPECT_FALSE(Button("cmdDetail").isEnabled());
              EXPECT_FALSE(Button("cmdPause").isVisible());
              EXPECT_FALSE(Control("ConvergeLabel").isVisible());
            });
  Play.When(AfterIteration(5), [&] {
    EXPECT_EQ(Window.width(), width);  // nothing moves under the mouse
    EXPECT_EQ(Text("status_label"), "Solving Model long");
    EXPECT_TRUE(Text("ResidualLabel").startsWith("Merit Function: "));
    EXPECT_EQ(Text("DeltaLabel").length(), QString("Percent Change: 1.000000E-01").length());
    EXPECT_TRUE(Control("ConvergeLabel").isVisible());
    EXPECT_TRUE(Button("cmdDetail").isEnabled());
    EXPECT_EQ(Control<QProgressBar>("ProgressBar1").value(), 1);
    EXPECT_EQ(Control<QProgressBar>("ProgressBar1").maximum(), 4);
    Click("cmdPause");
  });
  Play.When([this] { return Text("status_label") == "Solving Model last"; }, [this] { Click("cmdPause"); });
  EXPECT_EQ(Run("ShowProgress").Status, 0);
  EXPECT_TRUE(Play.Done());
  EXPECT_FALSE(Window.isVisible());
  EXPECT_EQ(Control<QProgressBar>("ProgressBar1").value(), 4);
  EXPECT_TRUE(Logged("Iterations stopped by user.\r\nFinal Merit Function = ")) << Log;
  EXPECT_TRUE(Logged("Total number of non-linear iterations = 6\r\n")) << Log;  // the one that it stopped
  EXPECT_NE(Folder.Read("out.txt").find("Model_ID = long"), std::string::npos);
}

TEST_F(ProgressForm, EndsTheRunByButtonKeyAccessibilityAndTitleBar) {
  const std::function<void()> ways[] = {
      [this] { Click("Abort_command"); },
      [this] { QTest::keyClick(&Window, Qt::Key_A, Qt::AltModifier); },
      [this] {
        QAccessible::queryAccessibleInterface(&Button("Abort_command"))
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
      },
      [this] { QTest::qWait(0), Window.close(); },
  };
  for (const auto& way : ways) {
    const int threads = 1 + static_cast<int>(&way - ways) % 2;
    SCOPED_TRACE(&way - ways);
    Window.Aborted = false;
    Control("IterationLabel").clear();  // which still tells of the run before
    Play.When(AfterIteration(2), way);
    const MacroOutcome outcome = Run("ShowProgress", "long", threads);
    EXPECT_FALSE(outcome.Normal);
    EXPECT_EQ(outcome.Status, 450);
    EXPECT_TRUE(Play.Done());
    EXPECT_TRUE(Logged("\r\nSOLUTION PROCESS ABORTED BY USER.\r\n")) << Log;
    EXPECT_TRUE(Log.ends_with("Abnormal termination\r\nExit Status 450\r\n")) << Log;
    EXPECT_FALSE(Logged("Beginning non-linear solution for model last"));
    EXPECT_FALSE(Window.isVisible());
  }
}

TEST_F(ProgressForm, ShowsAndHidesTheParameters) {
  int shortHeight = 0;
  QString start;
  const auto expectThree = [this] {
    const char* names[] = {"first: ", "second: ", "third: "};
    for (int i = 1; i <= kParameterLabels; ++i) {
      const QLabel& label = Control(("lblParam" + std::to_string(i)).c_str());
      EXPECT_EQ(label.isVisible(), i <= 3) << i;
      if (label.isVisible()) {
        EXPECT_TRUE(label.text().startsWith(names[i - 1])) << label.text().toStdString();
      }
    }
  };
  Play.When([this] { return Button("cmdDetail").isEnabled(); },
            [&] {
              shortHeight = Window.sizeHint().height();
              EXPECT_EQ(Button("cmdDetail").text().remove('&'), "More Detail >");
              Click("cmdDetail");
              EXPECT_EQ(Button("cmdDetail").text().remove('&'), "Less Detail <");
              expectThree();
              start = Text("lblParam2");
            });
  Play.When([&] { return Text("lblParam2") != start; },
            [&] {
              EXPECT_GT(Window.height(), shortHeight);
              expectThree();
              Click("cmdDetail");
            });
  // By now the search is at its end and only repeats itself.
  Play.When(AfterIteration(100), [&] {
    EXPECT_EQ(Button("cmdDetail").text().remove('&'), "More Detail >");
    EXPECT_EQ(Window.height(), shortHeight);
    EXPECT_FALSE(Control("lblParam1").isVisible());
    Click("cmdDetail");
    expectThree();
    Click("Abort_command");
  });
  EXPECT_EQ(Run("ShowProgress").Status, 450);
  EXPECT_TRUE(Play.Done());
}

TEST_F(ProgressForm, CutsALongNameAndReadsNoMarkupInIt) {
  const std::string id = "<b>Rôle</b> of a name that goes on and on, to the end of the line";
  Play.When(AfterIteration(1), [&] {
    const QString whole = QString::fromStdString("Solving Model " + id);
    EXPECT_EQ(Text("status_label"), whole.left(50) + "...");
    const QLabel& label = Control("status_label");
    EXPECT_GE(label.width(), label.fontMetrics().horizontalAdvance(label.text()));
    Click("Abort_command");
  });
  EXPECT_EQ(Run("ShowProgress", id).Status, 450);
  EXPECT_TRUE(Play.Done());
}

TEST_F(ProgressForm, ShowsTheTwoMessagesOfARun) {
  const auto box = [] { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); };
  std::vector<QString> shown;
  const auto answer = [&] {
    shown.push_back(box()->windowTitle() + ": " + box()->text());
    box()->accept();
  };
  Play.When(AfterIteration(1), [this] { Click("Abort_command"); });
  Play.When([&] { return box() != nullptr; }, answer);
  EXPECT_EQ(Run("ShowProgress, ShowMessageBox").Status, 450);

  // Nothing but the last box, and no progress form, where only boxes are wanted.
  Window.Aborted = false;
  Play.When(AfterIteration(2), [this] { Window.Paused = true; });
  Play.When([this] { return Text("status_label") == "Solving Model last"; }, [this] { Window.Paused = true; });
  Play.When([&] { return box() != nullptr; }, answer);
  EXPECT_EQ(Run("ShowMessageBox").Status, 0);
  EXPECT_TRUE(Play.Done());
  EXPECT_EQ(shown,
            (std::vector<QString>{"Quorvex: Solution Process Aborted.", "Quorvex: Solution process is complete."}));
}

// Up to 14 parameters the panel keeps its height; from there on it grows by a row per parameter, of 240 units of 1/1440
// inch, 15 to the pixel, or as the font needs.
TEST_F(ProgressForm, GrowsByARowFromFifteenParametersOn) {
  Window.ShowConverging(true);
  Window.Show(true);
  Click("cmdDetail");
  const int row = std::max(16, Window.fontMetrics().height());
  for (const int count : {1, 14, 15, 20, 33}) {
    Window.SetParameterCount(count);
    const int rows = std::clamp(count, 14, 20);
    EXPECT_EQ(Control<QScrollArea>("panel").height(),
              std::min(rows * row + 17, Window.screen()->availableSize().height() / 2))
        << count;
    EXPECT_EQ(Control("lblParam20").isVisible(), count >= 20);
  }
}

TEST_F(ProgressForm, CutsNothingAtAnySizeOfFont) {
  Window.ShowConverging(true);
  Window.Show(true);
  Click("cmdDetail");
  Window.SetParameterCount(3);
  for (int i = 1; i <= 3; ++i) Window.SetParameterLabel(i, "coefficient: -1.23456789012345E-300");
  for (const int points : {6, 9, 13, 24}) {
    QFont font = Window.font();
    font.setPointSize(points);
    Window.setFont(font);
    Window.Yield();
    for (const QWidget* widget : Window.findChildren<QWidget*>()) {
      const bool text = qobject_cast<const QLabel*>(widget) || qobject_cast<const QPushButton*>(widget);
      if (!text || !widget->isVisible()) continue;
      EXPECT_GE(widget->width(), widget->sizeHint().width()) << widget->objectName().toStdString() << points;
      EXPECT_GE(widget->height(), widget->minimumSizeHint().height()) << widget->objectName().toStdString() << points;
    }
  }
}

TEST_F(ProgressForm, HearsNoKeyUntilTheTabKeyWalksToAButton) {
  Window.Show(true);
  Window.activateWindow();
  Window.Yield();
  for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape}) {
    QTest::keyClick(Window.focusWidget(), key);
    EXPECT_FALSE(Window.Aborted) << key;
  }
  Window.ShowConverging(true);
  QTest::keyClick(Window.focusWidget(), Qt::Key_Tab);
  QTest::keyClick(Window.focusWidget(), Qt::Key_Return);
  EXPECT_TRUE(Control<QScrollArea>("panel").isVisible());
  for (const char* next : {"cmdPause", "Abort_command", "panel", "cmdDetail", "cmdPause"}) {
    QTest::keyClick(Window.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(Window.focusWidget()->objectName(), next);
  }
  QTest::keyClick(Window.focusWidget(), Qt::Key_Space);
  EXPECT_TRUE(Window.Paused && !Window.Aborted);
  for (const bool shown : {false, true}) {
    QTest::keyClick(&Window, Qt::Key_D, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Control<QScrollArea>("panel").isVisible() == shown; }));
  }
}

// Every element of the window as a screen reader meets it.
TEST_F(ProgressForm, NamesWhatAScreenReaderMeets) {
  Window.ShowConverging(true);
  Window.SetStatusLabel("Solving Model line");
  Window.SetParameterCount(2);
  Window.Show(true);
  Click("cmdDetail");
  for (int i = 1; i <= 2; ++i) Window.SetParameterLabel(i, "p: 1");

  std::vector<std::string> met;
  const std::function<void(QAccessibleInterface*)> walk = [&](QAccessibleInterface* element) {
    ASSERT_TRUE(element != nullptr && element->isValid());
    const std::string name = element->text(QAccessible::Name).toStdString();
    const auto role = element->role();
    if (role == QAccessible::StaticText || role == QAccessible::Button || role == QAccessible::ProgressBar) {
      if (!element->state().invisible) {
        met.push_back(name);
        EXPECT_FALSE(element->rect().isEmpty()) << name;
      }
    }
    for (int i = 0; i < element->childCount(); ++i) walk(element->child(i));
  };
  QAccessibleInterface* window = QAccessible::queryAccessibleInterface(&Window);
  EXPECT_EQ(window->text(QAccessible::Name), "Quorvex Solution Progress");
  walk(window);
  EXPECT_EQ(met, (std::vector<std::string>{"Solving Model line", "Progress of the run", "Converging...",
                                           "Iteration:", "Merit Function:", "Percent Change:", "Less Detail <", "Pause",
                                           "Abort", "p: 1", "p: 1"}));
}

}  // namespace
}  // namespace quorvex
