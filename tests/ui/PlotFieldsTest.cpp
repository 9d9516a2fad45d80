// Each field of a plot, set in its properties.

#include <functional>
#include <span>

#include "Properties.h"

namespace quorvex {
namespace {

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
    {"ZAngle_text", "7.5", [](const PlotClass3D& p) { return p.Angles()->Z == 7.5; }},
    {"ckMakeSquare", 1, [](const PlotClass3D& p) { return p.Make3DSquare; }},
    {"ShadeBoxX1-X2", 1, [](const PlotClass3D& p) { return p.BoxXY.Shade; }},
    {"BoxX1-X2Color", 255, [](const PlotClass3D& p) { return p.BoxXY.Color == 255; }},
    {"ShadeBoxX2-Y", 1, [](const PlotClass3D& p) { return p.BoxYZ.Shade; }},
    {"BoxX1-YColor", 255, [](const PlotClass3D& p) { return p.BoxXZ.Color == 255; }},
    {"AxisWidth_Text", "5", [](const PlotClass3D& p) { return p.AxisWidth == 5; }},
    {"displayfootnote_check", 1, [](const PlotClass3D& p) { return p.FootNote.Show; }},
    {"txtBorderWidth", "5", [](const PlotClass3D& p) { return p.FootNote.BorderWidth == 5; }, "cmdFootNotePatterns"},
};

class PlotFieldsTest : public PropertiesForm {
 protected:
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
};

TEST_F(PlotFieldsTest, SetsEachFieldInTwoDimensions) { SetsEachField<PlotClass>(plot, kFields2D); }
TEST_F(PlotFieldsTest, SetsEachFieldInThreeDimensions) { SetsEachField<PlotClass3D>(space, kFields3D); }

}  // namespace
}  // namespace quorvex
