#include "engine/WriteFunction.h"

#include "core/SaveFile.h"
#include "equation/CodeExport.h"

namespace quorvex {
namespace {

int WriteFunction(const ModelClass& model, ExprType language, const std::string& name) {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return SaveFile(name, model.ExportFunction(language, FunctionName(name), local), FileCare::Answer);
}

}  // namespace

int WriteBasicFunction(const ModelClass& model, const std::string& file) {
  return WriteFunction(model, ExprType::Basic, file);
}

int WriteCFunction(const ModelClass& model, const std::string& file) { return WriteFunction(model, ExprType::C, file); }

}  // namespace quorvex
