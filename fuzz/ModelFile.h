#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "Require.h"
#include "files/ModelFile.h"

namespace quorvex {

// Reads the bytes as a file of user-defined models, with point and comma for decimals, and makes the models.
inline int FuzzModelFile(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  constexpr LocaleText kComma = {.DecimalSeparator = ',', .ListSeparator = ';', .ThousandSeparator = '.'};
  for (const LocaleText& locale : {LocaleText(), kComma}) {
    const UserModelFile content = ParseUserModels(bytes, "m.equ", locale);
    for (const UserModelDefinition& definition : content.Models) {
      const auto model = MakeUserModel(definition, content.IndependentVariables == 1 ? 1 : 2, locale);
      Require(model == nullptr || DefinitionOf(*model) == definition, "a model that is not its definition");
    }
  }
  return 0;
}

}  // namespace quorvex
