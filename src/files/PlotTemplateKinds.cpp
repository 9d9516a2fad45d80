#include "files/PlotTemplateKinds.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/Files.h"

namespace quorvex {
namespace {

// A longer text is neither written nor taken: a number pattern of that many places, at each tick of an axis, would keep
// the drawing busy.
constexpr std::size_t kMostText = 4096;

// The size that stands for a plot's before it is drawn for the first time. Only the ratio of a place to it counts.
constexpr std::int32_t kNominalSize = 1000;

constexpr double kMostPercent = 95;  // so that something of the box is always seen

std::string WithoutLineEnds(std::string_view text) {
  std::string escaped;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
    if (text[i] == '\r' || text[i] == '\n')
      escaped += "\\n";
    else
      escaped.append(text[i] == '\\' ? 2 : 1, text[i]);
  }
  return escaped;
}

// A backslash before anything else stands for itself.
std::string WithLineEnds(std::string_view escaped) {
  std::string text;
  for (std::size_t i = 0; i < escaped.size(); ++i) {
    const char next = escaped[i] == '\\' && i + 1 < escaped.size() ? escaped[i + 1] : '\0';
    if (next == 'n')
      text += NL;
    else
      text += escaped[i];
    if (next == 'n' || next == '\\') ++i;
  }
  return text;
}

std::optional<std::string> IfNotTooLong(std::string text) {
  return text.size() <= kMostText ? std::optional(std::move(text)) : std::nullopt;
}

}  // namespace

bool ParseTemplateBoolean(std::string_view text) {
  constexpr std::array<std::string_view, 4> kTrue = {"true", "yes", "t", "y"};
  return std::ranges::any_of(kTrue, [&](std::string_view word) { return EqualNoCase(text, word); });
}

std::string ColorToText(std::int32_t color) {
  const auto channel = [&](int shift) { return std::to_string(color >> shift & 0xFF); };
  return "(" + channel(0) + ", " + channel(8) + ", " + channel(16) + ")";
}

std::optional<std::int32_t> TextToColor(std::string_view text) {
  text = Trim(text);
  if (text.starts_with('(') && text.ends_with(')')) text = text.substr(1, text.size() - 2);
  std::int32_t color = 0;
  for (int shift = 0; shift < 24; shift += 8) {
    const std::size_t end = shift < 16 ? text.find(',') : text.size();
    if (end == std::string_view::npos) return std::nullopt;
    const std::int32_t channel = CheckTemplateRange(text.substr(0, end), -1, 0, 0xFF);
    if (channel < 0) return std::nullopt;
    color |= channel << shift;
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return color;
}

TemplateKey& TemplateKeyList::Add(std::string key, TemplateKind kind, std::string prompt) {
  TemplateKey& added = keys_.emplace_back();
  if (!twinPrefix_.empty()) added.Twin = twinPrefix_ + key;
  added.Key = std::move(key);
  added.Group = group_;
  added.Kind = kind;
  added.Prompt = std::move(prompt);
  return added;
}

std::string TemplateKeyList::RangeText(std::optional<double> least, std::optional<double> most) {
  return least && most ? " (" + GeneralNumber(*least) + " - " + GeneralNumber(*most) + ")" : "";
}

void TemplateKeyList::Color(std::string key, const std::string& words, const TemplateField<std::int32_t>& field) {
  AddField<std::int32_t>(
      std::move(key), TemplateKind::Color, "Enter " + words + " (R,G,B):", field, ColorToText,
      [](std::int32_t& color, std::string_view value) { color = TextToColor(value).value_or(color); });
}

void TemplateKeyList::Text(std::string key, const std::string& words, const TemplateField<std::string>& field) {
  AddField<std::string>(std::move(key), TemplateKind::Text, "Enter " + words + ":", field, IfNotTooLong,
                        [](std::string& text, std::string_view value) {
                          if (value.size() <= kMostText) text = value;
                        });
}

void TemplateKeyList::Lines(std::string key, const std::string& words, const TemplateField<std::string>& field) {
  AddField<std::string>(
      std::move(key), TemplateKind::Text, "Enter " + words + ":", field,
      [](const std::string& text) { return IfNotTooLong(WithoutLineEnds(text)); },
      [](std::string& text, std::string_view value) {
        if (value.size() <= kMostText) text = WithLineEnds(value);
      });
}

void TemplateKeyList::Percent(std::string key, const std::string& words, PlotBox PlotPage::*box, float PlotBox::*place,
                              std::int32_t PlotPage::*size) {
  TemplateKey& added = Add(std::move(key), TemplateKind::Percent, "Enter " + words + RangeText(0, 100) + ":");
  added.Least = 0;
  added.Most = 100;
  added.Value = [=](PlotPage& plot) {
    const double at = static_cast<double>(plot.*box.*place);
    // One that is placed next to the edge must not read back as one that nobody has placed.
    const double least = at > 0 ? 1 : 0;
    const double percent = plot.*size > 0 ? std::clamp(std::round(100 * at / plot.*size), least, 100.0) : 0;
    return ShortestNumber(percent);
  };
  added.Set = [=](PlotPage& plot, std::string_view value) {
    if (plot.InitPlotWidth == 0 || plot.InitPlotHeight == 0) plot.InitPlotWidth = plot.InitPlotHeight = kNominalSize;
    const double percent = std::clamp(std::trunc(NumericText(value).value_or(0)), 0.0, kMostPercent);
    plot.*box.*place = static_cast<float>(percent * plot.*size / 100);
  };
}

void TemplateKeyList::Degrees(std::string key, const std::string& words, double ViewAngles::*angle,
                              double ViewAngles::*offered, double most) {
  TemplateKey& added = Add(std::move(key), TemplateKind::Degrees, "Enter " + words + RangeText(0, most) + ":");
  added.Least = 0;
  added.Most = most;
  const auto text = [](double ViewAngles::*which) {
    return [which](PlotPage& plot) { return ShortestNumber(plot.Angles().value_or(ViewAngles()).*which); };
  };
  added.Value = text(angle);
  added.Offered = text(offered);
  added.Set = [=](PlotPage& plot, std::string_view value) {
    ViewAngles angles = plot.Angles().value_or(ViewAngles());
    angles.*angle = CheckTemplateRange(value, angles.*angle, 0, most);
    plot.SetAngles(angles);
  };
}

}  // namespace quorvex
