// The properties of plots, used by clicks and keys.

#include <QColorDialog>
#include <QFontDialog>

#include "Accessibility.h"
#include "Properties.h"

namespace quorvex {
namespace {

using PlotPropertiesTest = PropertiesForm;

TEST_F(PlotPropertiesTest, GoesToWhatItRefuses) {
  const struct {
    const char *Control, *Text;
  } kWrong[] = {{"MaxVal_textX", "big"},
                {"MinorTicks_textY", "99"},
                {"FormatListY", ""},
                {"TickLength_text", "9"},
                {"LineWidth_text", "0"}};
  for (const auto& wrong : kWrong) {
    Open(plot);
    // Of another series than the one shown.
    List(*form, "GraphList").setCurrentRow(1);
    Enter(wrong.Control, wrong.Text);
    List(*form, "GraphList").setCurrentRow(0);
    Pages().setCurrentIndex(0);
    dialogs.Press(QMessageBox::Ok);
    Click(*form, "OKCommand");
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(form->focusWidget()->objectName(), wrong.Control);
    EXPECT_TRUE(form->focusWidget()->isVisible());
    if (std::string(wrong.Control) == "LineWidth_text") {
      EXPECT_EQ(List(*form, "GraphList").currentRow(), 1);
    }
    EXPECT_EQ(redrawn, 0);
    dialogs.Press(QMessageBox::No);
    Press(*form, QDialogButtonBox::Cancel);
  }
}

TEST_F(PlotPropertiesTest, TakesPreviewsBack) {
  for (PlotPage* page : std::initializer_list<PlotPage*>{&plot, &space}) {
    const QImage original = Picture(*page);
    Open(*page);
    Click(*form, "Preview_check");
    Enter("PlotTitle_text", "Preview");
    Enter("BackGround_command", 0x80FFFF);
    Enter("ckMakeSquare", 1);
    if (page == &space) Enter("XPixelEvery_text", "3");
    QTest::qWait(5);
    const QImage preview = Picture(*page);
    EXPECT_NE(preview, original);
    EXPECT_EQ(page->PlotTitle, "Preview");
    // What does not pass leaves the last preview, and the check box takes it away.
    Enter("AxisWidth_Text", "x");
    QTest::qWait(5);
    EXPECT_EQ(Picture(*page), preview);
    Click(*form, "Preview_check");
    EXPECT_EQ(Picture(*page), original);
    Enter("AxisWidth_Text", "1");
    Click(*form, "Preview_check");
    EXPECT_EQ(Picture(*page), preview);
    EXPECT_EQ(applied, 0);

    dialogs.Press(QMessageBox::Cancel);
    form->close();
    EXPECT_TRUE(form->isVisible());
    dialogs.Press(QMessageBox::No);
    QTest::keyClick(form.get(), Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(Picture(*page), original);
    EXPECT_EQ(dialogs.Said.back(), "You have made changes that were not applied. Do you want to apply them now?");
    EXPECT_EQ(applied, 0);
  }
}

TEST_F(PlotPropertiesTest, AppliesPendingChangesOnTheWayOut) {
  Open(plot);
  Enter("PlotTitle_text", "Kept");
  dialogs.Press(QMessageBox::Yes);
  form->close();
  EXPECT_FALSE(form->isVisible());
  EXPECT_EQ(plot.PlotTitle, "Kept");
  EXPECT_EQ(applied, 1);

  // Without a change there is nothing to ask, nor to do.
  Open(plot);
  Enter("PlotTitle_text", "Other");
  Enter("PlotTitle_text", "Kept");
  EXPECT_FALSE(CanApply());
  Press(*form, QDialogButtonBox::Cancel);
  EXPECT_FALSE(form->isVisible());
  EXPECT_EQ(redrawn, 0);
  EXPECT_EQ(dialogs.Said.size(), 1u);
}

TEST_F(PlotPropertiesTest, StaysWhereThePlotCannotBeCreated) {
  Open(plot);
  Enter("MinVal_textX", "-1E308");
  Enter("MaxVal_textX", "1E308");
  dialogs.Press(QMessageBox::Ok);
  Click(*form, "OKCommand");
  EXPECT_EQ(dialogs.Said, Said{kPlotFailure});
  EXPECT_TRUE(form->isVisible());
  EXPECT_FALSE(plot.PlotCreated);
  Click(*form, "CalcScale_command");
  Click(*form, "OKCommand");
  EXPECT_FALSE(form->isVisible());
  EXPECT_TRUE(plot.PlotCreated);
}

TEST_F(PlotPropertiesTest, CalculatesTheScaleForTheUserToSee) {
  Open(plot);
  Enter("MinVal_textX", "-100");
  Enter("LogScale_checkY", 1);
  EXPECT_FALSE(In(*form, "MajorTicks_textY").isEnabled());
  Click(*form, "CalcScale_command");
  EXPECT_EQ(LineBox(*form, "MinVal_textX").text(), "1");
  EXPECT_EQ(LineBox(*form, "MaxVal_textY").text(), "10");
  EXPECT_EQ(In(*form, "MajorTicks_textY").findChild<QLineEdit*>()->text(), "1");
  EXPECT_EQ(plot.X.Min, 0.5);
  EXPECT_EQ(redrawn, 0);
}

TEST_F(PlotPropertiesTest, StoresWhatNewPlotsBeginWith) {
  Open(plot);
  Enter("PixelEvery_text", "x");
  dialogs.Press(QMessageBox::Ok);
  Click(*form, "SaveDefaults_command");
  EXPECT_FALSE(settings.Has("pointsperplot"));
  Enter("PixelEvery_text", "77");
  dialogs.Press(QMessageBox::Ok);
  Click(*form, "SaveDefaults_command");
  EXPECT_EQ(dialogs.Said.back(), "New plots begin with what is entered here.");
  EXPECT_EQ(PlotClass(settings).PointsPerPlot, 77);
  EXPECT_EQ(plot.PointsPerPlot, 100);
}

TEST_F(PlotPropertiesTest, EditsOneSeriesAtATime) {
  Open(plot);
  auto& list = List(*form, "GraphList");
  EXPECT_EQ(Rows(list), (QStringList{"points", "others"}));
  Enter("LegendText", "first");
  EXPECT_EQ(Rows(list), (QStringList{"first", "others"}));
  list.setCurrentRow(1);
  EXPECT_EQ(LineBox(*form, "LegendText").text(), "others");
  EXPECT_FALSE(In(*form, "ErrorCheck").isEnabled()) << "no deviations";
  Enter("Marker_picture", 3);
  Enter("LegendText", "");
  EXPECT_EQ(Rows(list), (QStringList{"first", "Series 2"}));
  list.setCurrentRow(0);
  EXPECT_EQ(In<QComboBox>(*form, "Marker_picture").currentIndex(), 0);
  Click(*form, "OKCommand");
  EXPECT_EQ(plot.PlotData[0].Style().LegendText, "first");
  EXPECT_EQ(plot.PlotData[1].Style().MarkerStyle, 3);
}

TEST_F(PlotPropertiesTest, PutsTextCodesAroundTheSelection) {
  Open(plot);
  auto& title = LineBox(*form, "AxisTitle_textX");
  Enter("AxisTitle_textX", QString::fromUtf8("µ m2").toStdString());
  title.setFocus();
  title.setSelection(3, 1);
  Click(*form, "cmdTitleFontShiftUp");
  EXPECT_EQ(title.text(), QString::fromUtf8("µ m~>2~>"));
  EXPECT_EQ(title.selectedText(), "2");
  title.deselect();
  dialogs.Press(QMessageBox::Ok);
  QTest::keyClick(form.get(), Qt::Key_B, Qt::AltModifier);
  QTest::qWait(150);  // a button that a key presses comes up again first
  EXPECT_EQ(dialogs.Said, Said{"Please select the text that you want to apply the formatting to."});

  auto& legend = static_cast<QLineEdit&>(Reach("LegendText"));
  legend.setFocus();
  legend.selectAll();
  Click(*form, "cmdLegendFontShiftDown");
  EXPECT_EQ(legend.text(), "~<points~<");
  EXPECT_EQ(legend.selectedText(), "points");
}

TEST_F(PlotPropertiesTest, ChoosesColoursAndFontsByDialogs) {
  Open(plot);
  dialogs.Do([](QDialog& colors) {
    dynamic_cast<QColorDialog&>(colors).setCurrentColor(QColor(1, 2, 3));
    colors.accept();
  });
  Reach("BackGround_command");
  Click(*form, "BackGround_command");
  EXPECT_EQ(In(*form, "BackGround_command").accessibleDescription(), "#010203");
  Reach("PlotTitleFont");
  dialogs.Do([](QDialog& fonts) { fonts.accept(); });
  Click(*form, "PlotTitleFont");
  EXPECT_EQ(In<FontButton>(*form, "PlotTitleFont").Chosen().Name, "Arial") << "whatever stands in for it here";
  dialogs.Do([](QDialog& fonts) {
    QFont font("Liberation Serif", 21);
    font.setItalic(true);
    dynamic_cast<QFontDialog&>(fonts).setCurrentFont(font);
    fonts.accept();
  });
  Click(*form, "PlotTitleFont");
  EXPECT_EQ(In(*form, "PlotTitleFont").accessibleDescription(), "Liberation Serif, 21 pt, italic");
  Click(*form, "ApplyCommand");
  EXPECT_EQ(plot.PlotBackgroundColor, 0x030201);
  EXPECT_EQ(plot.PlotTitleFont, (PlotFont{"Liberation Serif", 21, false, true}));
}

TEST_F(PlotPropertiesTest, ChecksTheDialogsOfBoxes) {
  Open(plot);
  dialogs.Do([this](QDialog& own) {
    EXPECT_EQ(own.objectName(), "frmTextBoxPatterns");
    EXPECT_EQ(own.windowTitle(), "FootNote Patterns");
    Set(In(own, "txtBorderWidth"), "6");
    dialogs.Press(QMessageBox::Ok);
    Press(own, QDialogButtonBox::Ok);
    EXPECT_EQ(own.focusWidget(), &In(own, "txtBorderWidth"));
    Set(In(own, "ckBorderShadow"), 1);
    Press(own, QDialogButtonBox::Cancel);
  });
  Reach("cmdFootNotePatterns");
  Click(*form, "cmdFootNotePatterns");
  EXPECT_EQ(dialogs.Said, Said{"The Border Width must be in the range (1 - 5)."});
  EXPECT_FALSE(CanApply());
}

TEST_F(PlotPropertiesTest, PreviewsTheDialogsOfBoxesAndSurfaces) {
  const struct {
    PlotPage& Plot;
    const char *Button, *Control;
    FieldValue Value;
    const char *Number, *Wrong;
  } cases[] = {{plot, "cmdPatterns", "txtBorderWidth", "4", "txtBorderWidth", "9"},
               {space, "cmdShading", "optColorScheme", 2, "txtNumContours", "99"}};
  space.PlotData[0].Style().ShadeMesh = true;
  for (const auto& c : cases) {
    const QImage original = Picture(c.Plot);
    const auto open = [&](const std::function<void(QDialog&)>& use) {
      dialogs.Do(use);
      Reach(c.Button);
      Click(*form, c.Button);
      QTest::qWait(5);
    };
    Open(c.Plot);
    open([&](QDialog& own) {
      Set(In(own, c.Control), c.Value);
      QTest::qWait(5);
      EXPECT_EQ(Picture(c.Plot), original) << "nobody wants to see it";
      Press(own, QDialogButtonBox::Cancel);
    });
    Click(*form, "Preview_check");
    QImage preview;
    open([&](QDialog& own) {
      Set(In(own, c.Control), c.Value);
      QTest::qWait(5);
      preview = Picture(c.Plot);
      EXPECT_NE(preview, original) << c.Button;
      Set(In(own, c.Number), c.Wrong);
      QTest::qWait(5);
      EXPECT_EQ(Picture(c.Plot), preview) << "what does not pass is not shown";
      Press(own, QDialogButtonBox::Cancel);
    });
    EXPECT_EQ(Picture(c.Plot), original) << "taken back";
    EXPECT_FALSE(CanApply());
    open([&](QDialog& own) {
      Set(In(own, c.Control), c.Value);
      Press(own, QDialogButtonBox::Ok);
    });
    EXPECT_EQ(Picture(c.Plot), preview);
    EXPECT_TRUE(CanApply());
    dialogs.Press(QMessageBox::No);
    Press(*form, QDialogButtonBox::Cancel);
    EXPECT_EQ(Picture(c.Plot), original);
    EXPECT_EQ(applied, 0);
  }
}

TEST_F(PlotPropertiesTest, HasNoPageForSeriesWhereThereIsNone) {
  plot.ClearGraph();
  Open(plot);
  EXPECT_EQ(form->findChild<QWidget*>("GraphList"), nullptr);
  Enter("PlotTitle_text", "Empty");
  Click(*form, "OKCommand");
  EXPECT_EQ(plot.PlotTitle, "Empty");
}

TEST_F(PlotPropertiesTest, StepsNumbersWithinTheirRange) {
  Open(plot);
  auto& length = Reach("TickLength_text");
  const auto press = [&](Qt::Key key, int times) {
    for (int i = 0; i < times; ++i) QTest::keyClick(&length, key);
    return length.findChild<QLineEdit*>()->text();
  };
  EXPECT_EQ(press(Qt::Key_Up, 1), "0.13");
  EXPECT_EQ(press(Qt::Key_Up, 100), "0.5");
  EXPECT_EQ(press(Qt::Key_Down, 200), "0.001");
  // What is typed stays as it is, right or wrong.
  QTest::keyClicks(&length, "1 inch");
  EXPECT_EQ(press(Qt::Key_Tab, 1), "1 inch");
  EXPECT_TRUE(CanApply());
}

TEST_F(PlotPropertiesTest, AnswersToKeysAndScreenReadersAndFits) {
  for (PlotPage* page : std::initializer_list<PlotPage*>{&plot, &space}) {
    Open(*page);
    EXPECT_LE(form->sizeHint().width(), 1024);
    EXPECT_LE(form->sizeHint().height(), 700);
    ExpectMnemonicsDoNotMeet(*form);
    const AccessibilityWalk walk(*form);
    for (const char* name : {"Plot title font", "Plot title font color", "Background", "Tick length (inches)"})
      EXPECT_TRUE(walk.Names.contains(name)) << name;

    // Each control but the buttons for selected text is reached by Tab on its page.
    for (int index = 0; index < Pages().count(); ++index) {
      Pages().setCurrentIndex(index);
      std::set<const QWidget*> met;
      for (int i = 0; i < 80; ++i) {
        met.insert(form->focusWidget());
        QTest::keyClick(form->focusWidget(), Qt::Key_Tab);
      }
      for (QWidget* control : Pages().currentWidget()->findChildren<QWidget*>())
        if (control->isEnabled() && (control->focusPolicy() & Qt::TabFocus) != 0 && !control->objectName().isEmpty() &&
            !control->objectName().startsWith("qt_")) {
          EXPECT_TRUE(met.contains(control)) << index << ' ' << control->objectName().toStdString();
        }
    }
    for (const char* button : {"cmdPatterns", "cmdFootNotePatterns", "cmdShading"}) {
      if (form->findChild<QWidget*>(button) == nullptr) continue;
      dialogs.Do([](QDialog& own) {
        ExpectMnemonicsDoNotMeet(own);
        const AccessibilityWalk ownWalk(own);
        own.reject();
      });
      Reach(button);
      Click(*form, button);
    }
  }
}

}  // namespace
}  // namespace quorvex
