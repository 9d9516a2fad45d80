#include "plot/PageFields.h"

namespace quorvex {
namespace {

PropertyField TitleField(const std::string& control, const std::string& label, std::string& title) {
  return {.Control = control, .Label = label, .Kind = FieldKind::PlotText, .Place = &title};
}

constexpr int kMostTicks = 20;  // that the user may ask for

FieldGroup BoxGroup(PlotBox& box, const std::string& title, const std::string& button) {
  using enum FieldKind;
  return {.Title = title,
          .Fields = {{.Control = "optnBorder",
                      .Label = "&Border:",
                      .Kind = Choice,
                      .Place = &box.BorderType,
                      .Choices = {"None", "Solid"}},
                     {.Control = "cmdBorderColor", .Label = "Border &color:", .Kind = Color, .Place = &box.BorderColor},
                     RangeField("txtBorderWidth", "Border &width:", &box.BorderWidth, 1, 5, "The Border Width"),
                     {.Control = "ckBorderShadow", .Label = "&Shadow", .Kind = Flag, .Place = &box.ShowShadow},
                     {.Control = "optnArea",
                      .Label = "&Area:",
                      .Kind = Choice,
                      .Place = &box.AreaType,
                      .Choices = {"Transparent", "Solid"}},
                     {.Control = "cmdAreaColor", .Label = "A&rea color:", .Kind = Color, .Place = &box.AreaColor}},
          .Dialog = FieldGroup::DialogNames{"frmTextBoxPatterns", button, "&Box..."}};
}

}  // namespace

PropertyField FontField(const std::string& control, const std::string& label, PlotFont& font, std::int32_t& color,
                        bool beside) {
  return {
      .Control = control, .Label = label, .Kind = FieldKind::Font, .Place = FontPlace{&font, &color}, .Beside = beside};
}

PropertyField NumberField(const std::string& control, const std::string& label, const FieldPlace& place, double least,
                          double most, const std::string& outOfRange) {
  return {.Control = control,
          .Label = label,
          .Kind = FieldKind::Number,
          .Place = place,
          .Least = least,
          .Most = most,
          .OutOfRange = outOfRange};
}

PropertyField RangeField(const std::string& control, const std::string& label, const FieldPlace& place, int least,
                         int most, const std::string& what) {
  return NumberField(control, label, place, least, most,
                     what + " must be in the range (" + std::to_string(least) + " - " + std::to_string(most) + ").");
}

FieldPage TitlePage(PlotPage& plot, const std::vector<std::string>& names) {
  // A letter for each axis.
  constexpr const char* kLabels[] = {" ax&is title:", " axi&s title:", " a&xis title:"};
  FieldGroup titles{
      .Title = "Titles",
      .Fields = {TitleField("PlotTitle_text", "Pl&ot title:", plot.PlotTitle),
                 FontField("PlotTitleFont", "Plot title font", plot.PlotTitleFont, plot.PlotTitleColor, true)}};
  const std::vector<PlotAxis*> axes = plot.Axes();
  for (std::size_t i = 0; i < axes.size(); ++i) {
    PlotAxis& axis = *axes[i];
    titles.Fields.push_back(TitleField("AxisTitle_text" + names[i], names[i] + kLabels[i], axis.AxisTitle));
    titles.Fields.push_back(FontField("AxisTitleFont" + names[i], names[i] + " axis title font", axis.AxisTitleFont,
                                      axis.AxisTitleColor, true));
  }
  return {"&Titles", {titles}, "cmdTitleFontShift"};
}

FieldGroup ScaleGroup(PlotAxis& axis, const std::string& name, const std::string& logRefusal) {
  using enum FieldKind;
  const std::string ticks = "The number of " + name;
  return {
      .Title = "Scale",
      .Fields =
          {{.Control = "MinVal_text" + name,
            .Label = "Mi&nimum:",
            .Kind = Number,
            .Place = &axis.Min,
            .NotANumber = "Please enter a valid number for " + name + " Min."},
           {.Control = "MaxVal_text" + name,
            .Label = "&Maximum:",
            .Kind = Number,
            .Place = &axis.Max,
            .NotANumber = "Please enter a valid number for " + name + " Max."},
           RangeField("MajorTicks_text" + name, "Maj&or divisions:", &axis.NumMajorTicks, 1, kMostTicks,
                      ticks + " major ticks"),
           RangeField("MinorTicks_text" + name, "M&inor divisions:", &axis.NumMinorTicks, 0, kMostTicks,
                      ticks + " minor ticks"),
           {.Control = "LogScale_check" + name, .Label = "Logarit&hmic scale", .Kind = Flag, .Place = &axis.LogScale},
           {.Control = "FormatList" + name,
            .Label = "Num&ber format:",
            .Kind = Pattern,
            .Place = &axis.LabelString,
            .OutOfRange = "Please enter a valid " + name + " axis label format string."},
           FontField("AxisNumberFont" + name, "Number font", axis.AxisNumberFont, axis.AxisNumberColor, true)},
      .Scale = FieldGroup::ScaleRefusals{"Minimum value of " + name + " must be smaller than the maximum value.",
                                         logRefusal}};
}

FieldPage LegendPage(PlotPage& plot) {
  return {"&Legend",
          {{.Title = "Legend",
            .Fields = {{.Control = "DisplayLegend_check",
                        .Label = "&Show the legend",
                        .Kind = FieldKind::Flag,
                        .Place = &plot.Legend.Show},
                       FontField("PlotLegendFont", "Fo&nt:", plot.PlotLegendFont, plot.PlotLegendColor)}},
           BoxGroup(plot.Legend, "Legend Patterns", "cmdPatterns")}};
}

FieldPage FootNotePage(PlotPage& plot) {
  using enum FieldKind;
  return {"&Footnote",
          {{.Title = "Footnote",
            .Fields = {{.Control = "displayfootnote_check",
                        .Label = "&Show the footnote",
                        .Kind = Flag,
                        .Place = &plot.FootNote.Show},
                       {.Control = "FootNoteText_text",
                        .Label = "Text &of the footnote:",
                        .Kind = Lines,
                        .Place = &plot.FootNoteText},
                       {.Control = "FootNoteAlign",
                        .Label = "Ali&gnment:",
                        .Kind = Choice,
                        .Place = &plot.FootNoteAlign,
                        .Choices = {"Left", "Right", "Center"}},
                       FontField("FootNoteFont", "Fo&nt:", plot.FootNoteFont, plot.FootNoteColor)}},
           BoxGroup(plot.FootNote, "FootNote Patterns", "cmdFootNotePatterns")}};
}

FieldGroup PenGroup(PlotPage& plot) {
  using enum FieldKind;
  const std::string least = LocalizeExpression("0.001", plot.Locale), most = LocalizeExpression("0.5", plot.Locale);
  return {.Title = "Lines",
          .Fields = {
              RangeField("AxisWidth_Text", "Axis widt&h:", &plot.AxisWidth, 1, 5, "The Axis Width"),
              RangeField("MajorTick_Text", "Ma&jor tick width:", &plot.TickPenWidthMajor, 1, 5, "The Major Tick Width"),
              RangeField("MinorTick_Text", "M&inor tick width:", &plot.TickPenWidthMinor, 1, 5, "The Minor Tick Width"),
              NumberField("TickLength_text", "Tic&k length (inches):", &plot.TickPenLength, 0.001, 0.5,
                          "The Tick Length must be in the range (" + least + " - " + most + ")."),
              {.Control = "TickColor_command",
               .Label = "Colo&r of axes and ticks:",
               .Kind = Color,
               .Place = &plot.TickPenColor},
              {.Control = "MajorGridStyle_picture",
               .Label = "&Major grid lines:",
               .Kind = LineStyle,
               .Place = &plot.MajorGridLineStyle},
              {.Control = "MinorGridStyle_picture",
               .Label = "Mi&nor grid lines:",
               .Kind = LineStyle,
               .Place = &plot.MinorGridLineStyle},
              {.Control = "BackGround_command",
               .Label = "Back&ground:",
               .Kind = Color,
               .Place = &plot.PlotBackgroundColor}}};
}

std::vector<PropertyField> LineFields(SeriesStyle& style, int widest, bool hasBars) {
  using enum FieldKind;
  return {{.Control = "LegendText", .Label = "Le&gend text:", .Kind = PlotText, .Place = &style.LegendText},
          {.Control = "DisplayLine_check", .Label = "Show li&ne", .Kind = Flag, .Place = &style.DisplayLine},
          {.Control = "Style_picture", .Label = "L&ine style:", .Kind = LineStyle, .Place = &style.DrawStyle},
          {.Control = "Color_picture", .Label = "Line color", .Kind = Color, .Place = &style.DrawColor, .Beside = true},
          RangeField("LineWidth_text", "Line &width:", &style.DrawWidth, 1, widest, "The Line Width"),
          {.Control = "DisplayMarker_check", .Label = "Show &markers", .Kind = Flag, .Place = &style.DisplayMarker},
          {.Control = "Marker_picture", .Label = "Mar&ker:", .Kind = Marker, .Place = &style.MarkerStyle},
          {.Control = "MarkerColor_picture",
           .Label = "Marker color",
           .Kind = Color,
           .Place = &style.MarkerColor,
           .Beside = true},
          RangeField("txtMarkerSize", "Marker si&ze (points):", &style.MarkerSize, 1, 72, "The Marker Size"),
          {.Control = "ErrorCheck",
           .Label = "Err&or bars",
           .Kind = Flag,
           .Place = &style.ShowErrorBars,
           .Applies = hasBars}};
}

}  // namespace quorvex
