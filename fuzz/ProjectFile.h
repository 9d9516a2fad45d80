#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "Require.h"
#include "files/ProjectFile.h"

namespace quorvex {

// Reads the bytes as a project file, with point and comma for decimals. What was read can be written, and is then the
// same project for good.
inline int FuzzProjectFile(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  constexpr LocaleText kComma = {.DecimalSeparator = ',', .ListSeparator = ';', .ThousandSeparator = '.'};
  for (const LocaleText& locale : {LocaleText(), kComma}) {
    const Result<Project> project = ParseProject(bytes, "p.qvx", locale);
    if (!project) {
      Require(!project.error().empty(), "a refusal without words");
      continue;
    }
    const std::string text = ProjectText(*project);
    const Result<Project> again = ParseProject(text, "p.qvx", locale);
    Require(static_cast<bool>(again), "a project that was saved and cannot be read");
    Require(ProjectText(*again) == text, "a project that saving changes");
    for (const InterpClass& curve : project->Interpolations) {
      double y = 0;
      std::string why;
      curve.Evaluate((curve.InputXMin + curve.InputXMax) / 2, y, why);
    }
  }
  return 0;
}

}  // namespace quorvex
