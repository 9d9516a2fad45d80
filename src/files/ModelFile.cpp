#include "files/ModelFile.h"

#include <optional>

#include "core/NumberText.h"
#include "core/SaveFile.h"
#include "core/TextEncoding.h"
#include "files/FileVersion.h"
#include "files/UserModelRecord.h"

namespace quorvex {
namespace {

constexpr std::string_view kEndEquations = "End_equations";

// The lines in front of the models.
struct Head {
  std::string Version, Variables;
};

template <typename Io, typename AnyHead>
void ListHead(Io& io, AnyHead& head) {
  io.Mark("B_HEADER");
  io(head.Version);
  io(head.Variables);
  io.Mark("E_HEADER");
  io.Mark("Begin_equations");
}

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
  Head head;
  RecordReader beginning(in, 0, locale);
  ListHead(beginning, head);
  content.Version = Trim(head.Version);
  const int version = VersionNamed(content.Version);
  const std::optional<int> variables = CountBehindEquals(head.Variables);
  if (!in.Good() || !variables || version < kOldestModels) return fail();
  content.IndependentVariables = *variables;

  RecordReader io(in, version, locale);
  while (!in.AtEnd() && !in.Sees(kEndEquations)) {  // a file that just stops ends its list
    UserModelDefinition definition = ReadUserModel(io);
    if (!in.Good()) return fail();
    content.Models.push_back(std::move(definition));
  }
  return content;
}

int WriteUserModels(const std::string& fileName, std::size_t numIV, const ModelCollection& models,
                    const LocaleText& locale) {
  RecordWriter io(locale);
  const Head head{std::string(kFileVersion), "Independentvariables = " + std::to_string(numIV)};
  ListHead(io, head);
  for (const auto& model : models)
    if (model->UserType) WriteUserModel(io, *model, ModelHome::ModelFile);
  io.Mark(kEndEquations);
  return SaveFile(fileName, io.Text());
}

}  // namespace quorvex
