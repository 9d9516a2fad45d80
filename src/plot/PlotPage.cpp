#include "plot/PlotPage.h"

#include "core/FontSettings.h"

namespace quorvex {
namespace {

constexpr std::int32_t kWhite = 0xFFFFFF;

}  // namespace

void ReadFont(const Settings& settings, const std::string& prefix, const std::string& suffix, PlotFont& font,
              std::int32_t& colour) {
  ReadFontParts(settings, prefix, suffix, font, colour);
}

PlotPage::PlotPage(const Settings& settings, const LocaleText& locale) : Locale(locale) {
  PlotTitleFont.Size = 12;
  PlotLegendFont.Size = FootNoteFont.Size = 8;
  ReadFont(settings, "plottitle", "", PlotTitleFont, PlotTitleColor);
  ReadFont(settings, "plotlegend", "", PlotLegendFont, PlotLegendColor);
  ReadFont(settings, "footnote", "", FootNoteFont, FootNoteColor);
  // Paper where nobody has chosen: the key's default text would be black, and so are lines and letters.
  PlotBackgroundColor = settings.Has("plotbackgroundcolor") ? settings.Integer("plotbackgroundcolor") : kWhite;
  Legend.Show = true;
  Legend.AreaColor = FootNote.AreaColor = PlotBackgroundColor;
  TickPenColor = settings.Integer("tickpencolor");
  TickPenWidthMajor = settings.Integer("tickpenwidth");
  TickPenWidthMinor = settings.Integer("tickpenwidthminor");
  TickPenLength = static_cast<float>(settings.Number("tickpenlength"));
}

}  // namespace quorvex
