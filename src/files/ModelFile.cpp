#include "files/ModelFile.h"

#include <algorithm>
#include <array>

#include "core/NumberText.h"
#include "core/SaveFile.h"
#include "core/TextEncoding.h"
#include "files/FieldReader.h"
#include "files/FieldWriter.h"
#include "files/FileVersion.h"
#include "files/UserModelRecord.h"

namespace quorvex {
namespace {

constexpr std::string_view kEndEquations = "End_equations";

// Files up to 3.1 have no derivative texts; the layout is the same in all versions since.
constexpr std::array<std::string_view, 2> kWithoutDerivatives = {"3.0", "3.1"};
constexpr std::array<std::string_view, 13> kWithDerivatives = {"4.0", "4.1", "5.0", "5.1", "5.2", "6.0", "6.1",
                                                               "7.0", "7.1", "7.2", "8.0", "8.1", "8.2"};

std::string Unreadable(const std::string& fileName) {
  return "Error reading user defined model file '" + fileName + "'.";
}

}  // namespace

UserModelFile ReadUserModels(const std::string& fileName, const LocaleText& locale) {
  WholeFile file;
  if (file.Read(fileName) != 0) return {"", 0, {}, Unreadable(fileName)};
  return ParseUserModels(file.Text(), fileName, locale);
}

UserModelFile ParseUserModels(std::string_view bytes, const std::string& fileName, const LocaleText& locale) {
  UserModelFile content;
  const auto fail = [&] {
    content.Message = Unreadable(fileName);
    return content;
  };
  FieldReader in(DecodeText(bytes));
  in.Expect("B_HEADER");
  content.Version = Trim(in.Text());
  const std::optional<int> variables = CountBehindEquals(in.Text());
  in.Expect("E_HEADER");
  in.Expect("Begin_equations");
  const auto isOf = [&](const auto& versions) {
    return std::ranges::any_of(versions, [&](std::string_view version) {
      return content.Version == std::string("Quorvex:  Version ").append(version);
    });
  };
  const bool hasDerivatives = content.Version == kFileVersion || isOf(kWithDerivatives);
  if (!in.Good() || !variables || (!hasDerivatives && !isOf(kWithoutDerivatives))) return fail();
  content.IndependentVariables = *variables;

  while (!in.AtEnd()) {  // a file that just stops ends its list
    const std::string line = in.Text();
    if (!in.Good()) return fail();
    if (line == kEndEquations) break;
    UserModelDefinition definition = ReadUserModel(in, line, hasDerivatives, locale);
    if (!in.Good()) return fail();
    content.Models.push_back(std::move(definition));
  }
  return content;
}

int WriteUserModels(const std::string& fileName, std::size_t numIV, const ModelCollection& models,
                    const LocaleText& locale) {
  FieldWriter out;
  out.Line("B_HEADER");
  out.Line(kFileVersion);
  out.Line("Independentvariables = " + std::to_string(numIV));
  out.Line("E_HEADER");
  out.Line("Begin_equations");
  for (const auto& model : models)
    if (model->UserType) WriteUserModel(out, *model, false, locale);
  out.Line(kEndEquations);
  return SaveFile(fileName, out.Text());
}

}  // namespace quorvex
