#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>

#include "core/FontSettings.h"
#include "core/NumberText.h"
#include "core/Settings.h"
#include "drawing/PlotFont.h"

namespace quorvex {

// What the settings keep for new plots is listed once a class, each field with its key, and the list is gone through by
// one of these: a plot begins with what is kept, and a plot that the user likes is kept.

class ReadDefaults {
 public:
  explicit ReadDefaults(const Settings& settings) : settings_(settings) {}

  template <typename Field>
  void operator()(const std::string& key, Field& field, std::int32_t least = std::numeric_limits<std::int32_t>::min(),
                  std::int32_t most = std::numeric_limits<std::int32_t>::max()) const {
    if constexpr (std::is_same_v<Field, std::string>)
      field = settings_.Text(key);
    else if constexpr (std::is_same_v<Field, bool>)
      field = settings_.Flag(key);
    else if constexpr (std::is_same_v<Field, float>)
      field = static_cast<float>(std::clamp<double>(settings_.Number(key), least, most));
    else
      field = static_cast<Field>(std::clamp(settings_.Integer(key), least, most));
  }

  void Font(const std::string& prefix, const std::string& suffix, PlotFont& font, std::int32_t& color) const {
    ReadFontParts(settings_, prefix, suffix, font, color);
    font.Size = std::clamp(font.Size, kSmallestFont, kLargestFont);
  }

 private:
  const Settings& settings_;
};

class KeepDefaults {
 public:
  explicit KeepDefaults(Settings& settings) : settings_(settings) {}

  template <typename Field>
  void operator()(const std::string& key, const Field& field, std::int32_t = 0, std::int32_t = 0) const {
    if constexpr (std::is_same_v<Field, std::string>)
      settings_.Set(key, field);
    else if constexpr (std::is_same_v<Field, bool>)
      settings_.SetFlag(key, field);
    else if constexpr (std::is_same_v<Field, float>)
      settings_.Set(key, GeneralNumber(static_cast<double>(field), 7));
    else
      settings_.SetNumber(key, field);
  }

  void Font(const std::string& prefix, const std::string& suffix, const PlotFont& font, std::int32_t color) const {
    ListFontParts([&](const char* part, const auto& field) { (*this)(prefix + part + suffix, field); }, font, color);
  }

 private:
  Settings& settings_;
};

}  // namespace quorvex
