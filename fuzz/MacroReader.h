#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Require.h"
#include "core/TextEncoding.h"
#include "macro/MacroReader.h"

namespace quorvex {

// Reads the bytes as a macro file, with point and comma for decimals.
inline int FuzzMacroReader(const std::uint8_t* data, std::size_t size) {
  const std::string text = DecodeText({reinterpret_cast<const char*>(data), size});
  constexpr LocaleText kComma = {.DecimalSeparator = ',', .ListSeparator = ';', .ThousandSeparator = '.'};
  for (const LocaleText& locale : {LocaleText(), kComma}) {
    Settings preferences;
    Macro macro;
    InitMacroSetup(macro.Setup, preferences);
    std::string log;
    const bool read = ReadMacro(text, locale, preferences, macro, log);
    Require(read || log.empty(), "a log of what was not read");
    Require(std::isfinite(preferences.ResidualTolerance), "a tolerance that is no number");
    Require(macro.Setup.SortKey >= 1 && macro.Setup.SortKey <= static_cast<int>(kSortKeys.size()), "no sort key");
    Require(macro.ModelsCreated <= macro.BlockCount, "more models than blocks");
    for (const auto& model : macro.Models) {
      Require(model->IsValidEquation(), "a model that is none");
      Require(!model->UserType || model->Solve, "a model of the macro that is not to be solved");
    }
    for (const DeferredAssign& assign : macro.Deferred) Require(assign.Model != nullptr, "an Assign for no model");
  }
  return 0;
}

}  // namespace quorvex
