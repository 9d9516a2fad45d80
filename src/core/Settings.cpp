#include "core/Settings.h"

#include <algorithm>
#include <optional>

#include "core/FontSettings.h"
#include "core/NumberText.h"
#include "core/NumericFault.h"

namespace quorvex {
namespace {

struct SettingRow {
  std::string_view Section, Key, Default;
  const char* BuiltIn = nullptr;  // stands in for the default text, which then says "never chosen"
};

constexpr SettingRow kRows[] = {
    {"startup", "defaultproject", "3"},
    {"startup", "hideplotinfo", "0"},
    {"startup", "sortindex", "1"},  // 1 RSS, 2 R^2, 3 adjusted R^2, 4 StdErr, 5 AICc, 6 BIC, 7 CV
    {"startup", "autoresults", "3"},
    {"startup", "derivative", "0"},
    {"startup", "threads", "0"},
    {"startup", "template2d", "0", ""},
    {"startup", "template3d", "0", ""},
    {"startup", "loadusermodels", "0"},
    {"startup", "usermodelfile", "0", ""},
    {"startup", "listmodel", "0"},
    {"startup", "default_x", "0"},
    {"startup", "default_y", "0"},
    {"startup", "screenheight", "0"},  // 0 asks the frame for a size that suits the screen
    {"startup", "screenwidth", "0"},
    {"startup", "projectdir", "0"},
    {"startup", "importdir", "0"},
    {"startup", "lastselectedmodel", "0"},
    {"startup", "missingdatawarning", "1"},
    {"startup", "logintimeout", "0"},  // of databases, in seconds; 0 waits for any time
    {"startup", "querytimeout", "0"},
    {"startup", "promptforsetup", "0", "true"},
    {"startup", "defaultsolvesetup", "0", "0"},
    {"startup", "defaultsolver", "0", "0"},
    {"startup", "defaulttryharder", "false"},
    {"startup", "defaultabsolutedeviations", "false"},
    {"startup", "defaultloss", "0"},
    {"startup", "defaultlossscale", "0"},  // 0 finds it from the residuals
    {"startup", "tryharder", "true"},      // where a solve in a window fails
    {"startup", "undolevels", "15"},
    {"startup", "default_numiv", "1"},
    {"startup", "default_showsdev", "false"},
    {"startup", "show68ci", "1"},
    {"startup", "show90ci", "1"},
    {"startup", "show95ci", "1"},
    {"startup", "show99ci", "1"},
    {"startup", "showsumstats", "1"},
    {"startup", "showvariance", "1"},
    {"startup", "tolerance", "0", "1E-10"},
    {"startup", "diviterations", "0", "10"},
    {"startup", "maxiterations", "0", "250"},
    {"startup", "Show Tips at Startup", "1"},
    {"startup", "pngresolution", "0"},  // 0 asks for the screen's

    // Initial values of plots.
    {"startup", "plotbackgroundcolor", "0"},
    {"startup", "tickpencolor", "0"},
    {"startup", "tickpenwidth", "1"},
    {"startup", "tickpenwidthminor", "1"},
    {"startup", "tickpenlength", "0", "0.125"},
    {"startup", "xlabelstring", "0.00"},
    {"startup", "ylabelstring", "0.00"},
    {"startup", "xlabelstring3d", "0.00"},
    {"startup", "ylabelstring3d", "0.00"},
    {"startup", "zlabelstring3d", "0.00"},
    {"startup", "xlogscale", "false"},
    {"startup", "ylogscale", "false"},
    {"startup", "xlogscale3d", "false"},
    {"startup", "ylogscale3d", "false"},
    {"startup", "zlogscale3d", "false"},
    {"startup", "swapaxis", "false"},
    {"startup", "pointsperplot", "100"},
    {"startup", "discreetmarkersize", "0", "5"},
    {"startup", "plotatfittedonly", "false"},
    {"startup", "plotmodelsonly", "false"},
    {"startup", "extrapolate2d", "false"},
    {"startup", "extrapolate3d", "false"},
    {"startup", "make2dsquare", "false"},
    {"startup", "make3dsquare", "false"},
    {"startup", "display3dcontourlines", "false"},
    {"startup", "useaxisscale", "false"},
    {"startup", "shade3dmeshbyvalue", "true"},
    {"startup", "mesh3dcolorscheme", "0", "8"},
    {"startup", "mesh3dcontourcount", "0", "10"},
    {"startup", "mesh3dcontourcolor", "0"},
    {"startup", "mesh3dcontourstyle", "0"},
    {"startup", "mesh3dcontourwidth", "1"},

    {"printsetup", "mleft", "-1", "0.25"},
    {"printsetup", "mright", "-1", "0.25"},
    {"printsetup", "mtop", "-1", "0.25"},
    {"printsetup", "mbottom", "-1", "0.25"},
    {"printsetup", "munits", "inches"},
    {"printsetup", "printbackground", "false"},
    {"printsetup", "plotorientation", "2"},

    {"TextExport", "ReplaceOption", "0"},
    {"TextExport", "AppendParameters", "0"},

    {"diagnosis", "profile", "false"},
    {"diagnosis", "bootstrap", "false"},
    {"diagnosis", "samples", "1000"},
    {"diagnosis", "points", "false"},  // drawn by the bootstrap; else residuals
    {"diagnosis", "crossvalidation", "false"},
    {"diagnosis", "parts", "10"},

    {"groupsolve", "UserSpecified", "0"},
    {"groupsolve", "UserDefined", "0"},
};

// A font is stored under keys such as "xaxistitlefontname" or, in 3D plots, "zaxistitlecolor3d".
constexpr std::string_view kFonts2D[] = {"xaxistitle", "yaxistitle",  "plottitle",  "plotlegend",
                                         "footnote",   "xaxisnumber", "yaxisnumber"};
constexpr std::string_view kFonts3D[] = {"xaxistitle",  "yaxistitle",  "zaxistitle",
                                         "xaxisnumber", "yaxisnumber", "zaxisnumber"};

bool IsFontPart(std::string_view text) {
  const struct { int Name = 0, Bold = 0, Size = 0, Italic = 0; } none;
  bool found = false;
  ListFontParts([&](std::string_view part, int) { found = found || part == text; }, none, none.Name);
  return found;
}

bool IsFontKey(std::string_view key) {
  const bool threeD = key.ends_with("3d");
  if (threeD) key.remove_suffix(2);
  const auto isKeyOf = [key](std::string_view font) {
    return key.starts_with(font) && IsFontPart(key.substr(font.size()));
  };
  return threeD ? std::any_of(std::begin(kFonts3D), std::end(kFonts3D), isKeyOf)
                : std::any_of(std::begin(kFonts2D), std::end(kFonts2D), isKeyOf);
}

// The row of a key; fonts share one, whose "0" leaves the plot's own font.
SettingRow RowOf(std::string_view section, std::string_view key) {
  for (const SettingRow& row : kRows)
    if (EqualNoCase(row.Key, key) && EqualNoCase(row.Section, section)) return row;
  return {section, key, EqualNoCase(section, "startup") && IsFontKey(ToLower(key)) ? "0" : ""};
}

std::string WithoutSentinel(std::string_view text, const SettingRow& row) {
  return std::string(text == row.Default && row.BuiltIn != nullptr ? row.BuiltIn : text);
}

std::optional<std::int32_t> IntegerText(std::string_view text) {
  const auto value = NumericText(text);
  if (!value) return std::nullopt;
  try {
    return RoundToInt32(*value);
  } catch (const NumericFault&) {
    return std::nullopt;
  }
}

}  // namespace

bool Settings::Has(std::string_view key, std::string_view section) const {
  return stored_.contains({ToLower(section), ToLower(key)});
}

std::string Settings::Text(std::string_view key, std::string_view section) const {
  const SettingRow row = RowOf(section, key);
  const auto found = stored_.find({ToLower(section), ToLower(key)});
  return WithoutSentinel(found != stored_.end() ? std::string_view(found->second) : row.Default, row);
}

double Settings::Number(std::string_view key, std::string_view section) const {
  // A text that is no number, as a file may hold it, counts as never chosen.
  if (const auto value = NumericText(Text(key, section))) return *value;
  const SettingRow row = RowOf(section, key);
  return NumericText(WithoutSentinel(row.Default, row)).value_or(0);
}

std::int32_t Settings::Integer(std::string_view key, std::string_view section) const {
  if (const auto value = IntegerText(Text(key, section))) return *value;
  const SettingRow row = RowOf(section, key);
  return IntegerText(WithoutSentinel(row.Default, row)).value_or(0);
}

bool Settings::Flag(std::string_view key, std::string_view section) const {
  // A flag that is on by its built-in value is on for "true" alone; any other is off for "false" alone.
  const bool onByBuiltIn = RowOf(section, key).BuiltIn != nullptr;
  return onByBuiltIn ? Text(key, section) == "true" : Text(key, section) != "false";
}

std::string Settings::Folder(std::string_view key) const {
  const std::string folder = Text(key);
  return folder == "0" ? "" : folder;
}

void Settings::Set(std::string_view key, std::string_view text, std::string_view section) {
  const auto [entry, isNew] = stored_.try_emplace({ToLower(section), ToLower(key)});
  // What stays as it is need not be written to the file.
  if (!isNew && entry->second == text) return;
  entry->second = text;
  changes_.emplace(section, key);
  if (EqualNoCase(section, "startup")) ReadField(key);
}

void Settings::SetNumber(std::string_view key, double value, std::string_view section) {
  Set(key, ShortestNumber(value), section);
}

void Settings::SetFlag(std::string_view key, bool value, std::string_view section) {
  Set(key, value ? "true" : "false", section);
}

void Settings::ReadField(std::string_view key) {
  if (EqualNoCase(key, "tolerance")) ResidualTolerance = Number(key);
  if (EqualNoCase(key, "maxiterations")) MaxIterations = Integer(key);
  if (EqualNoCase(key, "diviterations")) DivIterations = Integer(key);
  if (EqualNoCase(key, "derivative")) {
    const int number = Integer(key);
    DerivativeMethod = number == 1 || number == 2 ? static_cast<DerivativeKind>(number) : DerivativeKind::Richardson;
  }
  if (EqualNoCase(key, "threads")) Threads = std::max(Integer(key), 0);
}

}  // namespace quorvex
