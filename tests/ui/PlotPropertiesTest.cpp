// The properties of plots, used by clicks and keys.

#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QFontDialog>
#include <QPlainTextEdit>

#include "Accessibility.h"
#include "Dialogs.h"
#include "Forms.h"
#include "core/ui/ColorButton.h"
#include "core/ui/MessageBoxPrompter.h"
#include "plot/Plots.h"
#include "plot/ui/FontButton.h"
#include "plot/ui/PlotOutput.h"
#include "plot/ui/PlotProperties.h"
#include "plot/ui/QtSurface.h"
#include "plot3d/Boxes.h"
#include "plot3d/Surfaces.h"

namespace quorvex {
namespace {

// What a plot looks like.
QImage Picture(PlotPage& plot) {
  QImage picture = BlankPicture({400, 300});
  RecordingPrompter prompter;
  QtSurface surface(picture);
  plot.RefreshPlot(surface, prompter);
  return picture;
}

// As by the user: a text is typed, a choice made by its number, a box ticked by 1.
void Set(QWidget& control, const FieldValue& value) {
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

const ColoredFont kFont{{"Liberation Serif", 17.5, true, true}, 0};

template <typename Plot>
struct FieldRow {
  const char* Control;
  FieldValue Value;
  std::function<bool(const Plot&)> IsSet;
  const char* Button = nullptr;  // opens the dialog that has the control
};

const FieldRow<PlotClass> kFields2D[] = {
    {"PlotTitle_text", "a", [](const PlotClass& p) { return p.PlotTitle == "a"; }},
    {"PlotTitleFont", kFont, [](const PlotClass& p) { return p.PlotTitleFont == kFont.Font; }},
    {"PlotTitleFontColor", 255, [](const PlotClass& p) { return p.PlotTitleColor == 255; }},
    {"AxisTitle_textX", "a", [](const PlotClass& p) { return p.X.AxisTitle == "a"; }},
    {"AxisTitleFontX", kFont, [](const PlotClass& p) { return p.X.AxisTitleFont == kFont.Font; }},
    {"AxisTitleFontXColor", 255, [](const PlotClass& p) { return p.X.AxisTitleColor == 255; }},
    {"AxisTitle_textY", "a", [](const PlotClass& p) { return p.Y.AxisTitle == "a"; }},
    {"AxisTitleFontY", kFont, [](const PlotClass& p) { return p.Y.AxisTitleFont == kFont.Font; }},
    {"MinVal_textX", "-2", [](const PlotClass& p) { return p.X.Min == -2; }},
    {"MaxVal_textX", "1E+2", [](const PlotClass& p) { return p.X.Max == 100; }},
    {"MajorTicks_textX", "3", [](const PlotClass& p) { return p.X.NumMajorTicks == 3; }},
    {"MinorTicks_textX", "0", [](const PlotClass& p) { return p.X.NumMinorTicks == 0; }},
    {"LogScale_checkX", 1, [](const PlotClass& p) { return p.X.LogScale; }},
    {"FormatListX", "0.00E+00", [](const PlotClass& p) { return p.X.LabelString == "0.00E+00"; }},
    {"AxisNumberFontX", kFont, [](const PlotClass& p) { return p.X.AxisNumberFont == kFont.Font; }},
    {"AxisNumberFontXColor", 255, [](const PlotClass& p) { return p.X.AxisNumberColor == 255; }},
    {"DisplayMajor_checkX", 1, [](const PlotClass& p) { return p.X.ShowMajorGrids; }},
    {"DisplayMinor_checkX", 1, [](const PlotClass& p) { return p.X.ShowMinorGrids; }},
    {"DisplayExtra_checkX", 1, [](const PlotClass& p) { return p.X.ShowExtraTicks; }},
    {"MinVal_textY", "-2", [](const PlotClass& p) { return p.Y.Min == -2; }},
    {"MaxVal_textY", "20", [](const PlotClass& p) { return p.Y.Max == 20; }},
    {"MajorTicks_textY", "3", [](const PlotClass& p) { return p.Y.NumMajorTicks == 3; }},
    {"MinorTicks_textY", "0", [](const PlotClass& p) { return p.Y.NumMinorTicks == 0; }},
    {"LogScale_checkY", 1, [](const PlotClass& p) { return p.Y.LogScale; }},
    {"FormatListY", "0", [](const PlotClass& p) { return p.Y.Labels.front() == "10"; }},
    {"AxisNumberFontY", kFont, [](const PlotClass& p) { return p.Y.AxisNumberFont == kFont.Font; }},
    {"DisplayMajor_checkY", 1, [](const PlotClass& p) { return p.Y.ShowMajorGrids; }},
    {"DisplayMinor_checkY", 1, [](const PlotClass& p) { return p.Y.ShowMinorGrids; }},
    {"DisplayExtra_checkY", 1, [](const PlotClass& p) { return p.Y.ShowExtraTicks; }},
    {"LegendText", "a", [](const PlotClass& p) { return p.PlotData[0].Style().LegendText == "a"; }},
    {"DisplayLine_check", 0, [](const PlotClass& p) { return !p.PlotData[0].Style().DisplayLine; }},
    {"Style_picture", 2, [](const PlotClass& p) { return p.PlotData[0].Style().DrawStyle == 2; }},
    {"Color_picture", 255, [](const PlotClass& p) { return p.PlotData[0].Style().DrawColor == 255; }},
    {"LineWidth_text", "7", [](const PlotClass& p) { return p.PlotData[0].Style().DrawWidth == 7; }},
    {"DisplayMarker_check", 1, [](const PlotClass& p) { return p.PlotData[0].Style().DisplayMarker; }},
    {"Marker_picture", 9, [](const PlotClass& p) { return p.PlotData[0].Style().MarkerStyle == 9; }},
    {"MarkerColor_picture", 255, [](const PlotClass& p) { return p.PlotData[0].Style().MarkerColor == 255; }},
    {"txtMarkerSize", "16", [](const PlotClass& p) { return p.PlotData[0].Style().MarkerSize == 16; }},
    {"ErrorCheck", 1, [](const PlotClass& p) { return p.PlotData[0].Style().ShowErrorBars; }},
    {"DisplayLegend_check", 0, [](const PlotClass& p) { return !p.Legend.Show; }},
    {"PlotLegendFont", kFont, [](const PlotClass& p) { return p.PlotLegendFont == kFont.Font; }},
    {"PlotLegendFontColor", 255, [](const PlotClass& p) { return p.PlotLegendColor == 255; }},
    {"optnBorder", 0, [](const PlotClass& p) { return p.Legend.BorderType == 0; }, "cmdPatterns"},
    {"cmdBorderColor", 255, [](const PlotClass& p) { return p.Legend.BorderColor == 255; }, "cmdPatterns"},
    {"txtBorderWidth", "4", [](const PlotClass& p) { return p.Legend.BorderWidth == 4; }, "cmdPatterns"},
    {"ckBorderShadow", 1, [](const PlotClass& p) { return p.Legend.ShowShadow; }, "cmdPatterns"},
    {"optnArea", 1, [](const PlotClass& p) { return p.Legend.AreaType == 1; }, "cmdPatterns"},
    {"cmdAreaColor", 255, [](const PlotClass& p) { return p.Legend.AreaColor == 255; }, "cmdPatterns"},
    {"displayfootnote_check", 1, [](const PlotClass& p) { return p.FootNote.Show; }},
    {"FootNoteText_text", "a\nb", [](const PlotClass& p) { return p.FootNoteText == "a\r\nb"; }},
    {"FootNoteAlign", 1, [](const PlotClass& p) { return p.FootNoteAlign == 1; }},
    {"FootNoteFont", kFont, [](const PlotClass& p) { return p.FootNoteFont == kFont.Font; }},
    {"FootNoteFontColor", 255, [](const PlotClass& p) { return p.FootNoteColor == 255; }},
    {"optnBorder", 0, [](const PlotClass& p) { return p.FootNote.BorderType == 0; }, "cmdFootNotePatterns"},
    {"cmdAreaColor", 255, [](const PlotClass& p) { return p.FootNote.AreaColor == 255; }, "cmdFootNotePatterns"},
    {"PixelEvery_text", "3", [](const PlotClass& p) { return p.PointsPerPlot == 3; }},
    {"plotinfitted_check", 1, [](const PlotClass& p) { return p.PlotAtFittedOnly; }},
    {"ckExtrapolate", 1, [](const PlotClass& p) { return p.Extrapolate; }},
    {"ckMakeSquare", 1, [](const PlotClass& p) { return p.Make2DSquare; }},
    {"ckSwapAxis", 1, [](const PlotClass& p) { return p.SwapAxis; }},
    {"AxisWidth_Text", "5", [](const PlotClass& p) { return p.AxisWidth == 5; }},
    {"MajorTick_Text", "5", [](const PlotClass& p) { return p.TickPenWidthMajor == 5; }},
    {"MinorTick_Text", "5", [](const PlotClass& p) { return p.TickPenWidthMinor == 5; }},
    {"TickLength_text", "0.5", [](const PlotClass& p) { return p.TickPenLength == 0.5F; }},
    {"TickColor_command", 255, [](const PlotClass& p) { return p.TickPenColor == 255; }},
    {"BackGround_command", 255, [](const PlotClass& p) { return p.PlotBackgroundColor == 255; }},
    {"MajorGridStyle_picture", 4, [](const PlotClass& p) { return p.MajorGridLineStyle == 4; }},
    {"MinorGridStyle_picture", 4, [](const PlotClass& p) { return p.MinorGridLineStyle == 4; }},
};

const FieldRow<PlotClass3D> kFields3D[] = {
    {"AxisTitle_textX1", "a", [](const PlotClass3D& p) { return p.X.AxisTitle == "a"; }},
    {"AxisTitle_textX2", "a", [](const PlotClass3D& p) { return p.Y.AxisTitle == "a"; }},
    {"AxisTitle_textY", "a", [](const PlotClass3D& p) { return p.Z.AxisTitle == "a"; }},
    {"MinVal_textX1", "-9", [](const PlotClass3D& p) { return p.X.Min == -9; }},
    {"MaxVal_textX2", "99", [](const PlotClass3D& p) { return p.Y.Max == 99; }},
    {"MajorTicks_textY", "2", [](const PlotClass3D& p) { return p.Z.NumMajorTicks == 2; }},
    {"MinorTicks_textX2", "2", [](const PlotClass3D& p) { return p.Y.NumMinorTicks == 2; }},
    {"LogScale_checkX1", 1, [](const PlotClass3D& p) { return p.X.LogScale; }},
    {"FormatListY", "0.000", [](const PlotClass3D& p) { return p.Z.LabelString == "0.000"; }},
    {"AxisNumberFontY", kFont, [](const PlotClass3D& p) { return p.Z.AxisNumberFont == kFont.Font; }},
    {"DisplayMajor_checkX11", 1, [](const PlotClass3D& p) { return p.X.Grids[0].Major; }},
    {"DisplayMinor_checkX12", 1, [](const PlotClass3D& p) { return p.X.Grids[1].Minor; }},
    {"DisplayMinor_checkX21", 1, [](const PlotClass3D& p) { return p.Y.Grids[0].Minor; }},
    {"DisplayMajor_checkX22", 1, [](const PlotClass3D& p) { return p.Y.Grids[1].Major; }},
    {"DisplayMajor_checkY1", 1, [](const PlotClass3D& p) { return p.Z.Grids[0].Major; }},
    {"DisplayMinor_checkY2", 1, [](const PlotClass3D& p) { return p.Z.Grids[1].Minor; }},
    {"TickColor_commandX1", 255, [](const PlotClass3D& p) { return p.X.TickColor == 255; }},
    {"TickColor_commandY", 255, [](const PlotClass3D& p) { return p.Z.TickColor == 255; }},
    {"XPixelEvery_text", "2", [](const PlotClass3D& p) { return p.XPointsPerPlot == 2; }},
    {"YPixelEvery_text", "99", [](const PlotClass3D& p) { return p.YPointsPerPlot == 99; }},
    {"plotinfitted_check", 1, [](const PlotClass3D& p) { return p.PlotAtFittedOnly; }},
    {"ckExtrapolate", 1, [](const PlotClass3D& p) { return p.Extrapolate; }},
    {"ckShadeByValue", 0, [](const PlotClass3D& p) { return !p.ShadeMeshByValue; }, "cmdShading"},
    {"optColorScheme", 13, [](const PlotClass3D& p) { return p.MeshColorScheme == 13; }, "cmdShading"},
    {"cmdColor", 255, [](const PlotClass3D& p) { return p.PlotData[0].Style().ShadeColor == 255; }, "cmdShading"},
    {"optScale", 1, [](const PlotClass3D& p) { return p.UseAxisScale; }, "cmdShading"},
    {"txtNumContours", "50", [](const PlotClass3D& p) { return p.MeshContourDensity == 50; }, "cmdShading"},
    {"ckDisplayLine", 1, [](const PlotClass3D& p) { return p.DisplayContourLines; }, "cmdShading"},
    {"cmdContourColor", 255, [](const PlotClass3D& p) { return p.ContourPenColor == 255; }, "cmdShading"},
    {"cmdContourStyle", 3, [](const PlotClass3D& p) { return p.ContourPenStyle == 3; }, "cmdShading"},
    {"cmbContourWidth", "5", [](const PlotClass3D& p) { return p.ContourPenWidth == 5; }, "cmdShading"},
    {"ErrorColorAbove", 255, [](const PlotClass3D& p) { return p.ErrorColorAbove == 255; }},
    {"ErrorColorBelow", 255, [](const PlotClass3D& p) { return p.ErrorColorBelow == 255; }},
    {"ErrorColorStyle", 1, [](const PlotClass3D& p) { return p.ErrorColorStyle == 1; }},
    {"ErrorCheck", 1, [](const PlotClass3D& p) { return p.PlotData[0].Style().ShowErrorBars; }},
    {"ShadeMesh", 1, [](const PlotClass3D& p) { return p.PlotData[0].Style().ShadeMesh != 0; }},
    {"ShadeColor", 255, [](const PlotClass3D& p) { return p.PlotData[0].Style().ShadeColor == 255; }},
    {"XYAngle_text", "200", [](const PlotClass3D& p) { return p.XYAngle == kViewPi * 200 / 180; }},
    {"ZAngle_text", "7.5", [](const PlotClass3D& p) { return p.ZAngleDegrees() == 7.5; }},
    {"ckMakeSquare", 1, [](const PlotClass3D& p) { return p.Make3DSquare; }},
    {"ShadeBoxX1-X2", 1, [](const PlotClass3D& p) { return p.BoxXY.Shade; }},
    {"BoxX1-X2Color", 255, [](const PlotClass3D& p) { return p.BoxXY.Color == 255; }},
    {"ShadeBoxX2-Y", 1, [](const PlotClass3D& p) { return p.BoxYZ.Shade; }},
    {"BoxX1-YColor", 255, [](const PlotClass3D& p) { return p.BoxXZ.Color == 255; }},
    {"AxisWidth_Text", "5", [](const PlotClass3D& p) { return p.AxisWidth == 5; }},
    {"displayfootnote_check", 1, [](const PlotClass3D& p) { return p.FootNote.Show; }},
    {"txtBorderWidth", "5", [](const PlotClass3D& p) { return p.FootNote.BorderWidth == 5; }, "cmdFootNotePatterns"},
};

class PlotPropertiesTest : public testing::Test {
 protected:
  PlotPropertiesTest() : user(nullptr), plot(settings), space(settings) {
    plot.PlotData.push_back(PointSeries({1, 5, 10}, {1, 5, 10}, "points", {1, 1, 1}));
    plot.PlotData.push_back(PointSeries({2, 4}, {3, 2}, "others"));
    space.PlotData.push_back(Surface("a*x1+b*x2+1", {1, 2, 5, false}, {1, 2, 5, false}));
    RecordingPrompter prompter;
    for (PlotPage* page : std::initializer_list<PlotPage*>{&plot, &space}) {
      EXPECT_TRUE(page->CreateGraph({.Auto = true}, prompter));
      // Off zero, so that the axes can be logarithmic.
      for (PlotAxis* axis : page->Axes()) axis->Min = 0.5;
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

  template <typename Plot>
  void SetsEachField(Plot& page, std::span<const FieldRow<Plot>> rows) {
    const std::unique_ptr<PlotPage> original = page.Clone();
    for (const FieldRow<Plot>& row : rows) {
      SCOPED_TRACE(row.Control);
      page.Assign(*original);
      Open(page);
      EXPECT_FALSE(CanApply());
      if (row.Button == nullptr) {
        Enter(row.Control, row.Value);
      } else {
        dialogs.Do([&](QDialog& own) {
          Set(In(own, row.Control), row.Value);
          Press(own, QDialogButtonBox::Ok);
        });
        Reach(row.Button);
        Click(*form, row.Button);
      }
      EXPECT_FALSE(row.IsSet(page));
      EXPECT_TRUE(CanApply());
      Click(*form, "ApplyCommand");
      EXPECT_TRUE(row.IsSet(page));
      EXPECT_FALSE(CanApply());
      EXPECT_EQ(std::pair(redrawn, applied), std::pair(1, 1));
      EXPECT_FALSE(row.IsSet(static_cast<const Plot&>(*before)));
      Click(*form, "OKCommand");
      EXPECT_FALSE(form->isVisible());
    }
    EXPECT_TRUE(dialogs.Said.empty());
  }

  Dialogs dialogs;
  Settings settings;
  MessageBoxPrompter user;
  PlotClass plot;
  PlotClass3D space;
  int redrawn = 0, applied = 0;
  std::unique_ptr<PlotPage> before;
  std::unique_ptr<PlotProperties> form;
};

TEST_F(PlotPropertiesTest, SetsEachFieldInTwoDimensions) { SetsEachField<PlotClass>(plot, kFields2D); }
TEST_F(PlotPropertiesTest, SetsEachFieldInThreeDimensions) { SetsEachField<PlotClass3D>(space, kFields3D); }

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
    if (std::string(wrong.Control) == "LineWidth_text") {
      // Of another series than the one shown.
      List(*form, "GraphList").setCurrentRow(1);
      Enter(wrong.Control, wrong.Text);
      List(*form, "GraphList").setCurrentRow(0);
    } else {
      Enter(wrong.Control, wrong.Text);
    }
    Pages().setCurrentIndex(0);
    dialogs.Press(QMessageBox::Ok);
    Click(*form, "OKCommand");
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(form->focusWidget()->objectName(), wrong.Control);
    EXPECT_TRUE(form->focusWidget()->isVisible());
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
    Enter("DisplayLine_check", 0);
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
  EXPECT_EQ(Box(*form, "MinVal_textX").text(), "1");
  EXPECT_EQ(Box(*form, "MaxVal_textY").text(), "10");
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
  Click(*form, "SaveDefaults_command");
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
  EXPECT_EQ(Box(*form, "LegendText").text(), "others");
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
  auto& title = Box(*form, "AxisTitle_textX");
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
