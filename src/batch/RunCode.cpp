#include "batch/RunCode.h"

#include "batch/WritePlot.h"
#include "code/CodeLanguage.h"
#include "core/Files.h"
#include "core/NumberText.h"
#include "engine/RankModels.h"
#include "macro/BatchStatus.h"

namespace quorvex {

std::optional<std::string> RefuseCode(const std::string& name, MacroFiles& files) {
  std::optional<std::string> refusal = files.RefuseInput("code", name);
  return refusal ? refusal : files.RefuseOther(Writing::Code, name);
}

int CodeNameError(const std::string& name, const std::string& path, std::string& fault) {
  if (LanguageOfFile(name) != nullptr) return NoFileError("code", name, path, fault);
  fault = UnknownLanguageText(name);
  return kBadFileName;
}

std::string CodeFaultText(const std::string& name, int error) {
  return "The code '" + name + "' cannot be written. " + FileErrorText(error);
}

int RunCode::Write(const MacroSetup& setup, const ModelCollection& models) {
  const std::vector<ModelClass*> ranked = RankModels(models, setup.SortKey);
  if (ranked.empty()) {
    log_.Line("Warning: There is no solved model to be written as code.");
    return 0;
  }
  int error = 0;
  for (std::string_view names = setup.CodeFile; !names.empty();) {
    const std::string name(TakeLine(names));
    log_.Line("Writing code to " + name);
    std::string fault;
    if (const int failed = WriteOne(name, *ranked.front(), fault); failed != 0) error = failed;
    if (!fault.empty()) log_.Fault(fault);
  }
  return error;
}

int RunCode::WriteOne(const std::string& name, ModelClass& model, std::string& fault) {
  if (const std::optional<std::string> refusal = RefuseCode(name, files_)) {
    fault = *refusal;
    return kAccessError;
  }
  int error = CodeNameError(name, files_.Place(name), fault);
  if (error != 0) return error;
  error = file_.Create(name);
  if (error == 0) file_.Text().Write(*CodeForFile(model, name));
  if (error == 0) error = file_.Commit();
  if (error == 0)
    files_.NoteWritten(Writing::Code, name);
  else
    fault = CodeFaultText(name, error);
  return error;
}

}  // namespace quorvex
