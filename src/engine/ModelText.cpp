#include "engine/ModelClass.h"
#include "equation/CodeExport.h"
#include "equation/GenerateExcelInfix.h"
#include "equation/GenerateInfix.h"
#include "equation/GenerateTextInfix.h"

namespace quorvex {

std::string ModelClass::GenerateTextInfix(int ReplaceOption, int AppendParameters) const {
  return quorvex::GenerateTextInfix(Compiled(), CoefficientValues, locale_, ReplaceOption, AppendParameters);
}

void ModelClass::GenerateInfix(ExprType language, std::vector<std::string>& InFixList,
                               std::vector<std::string>& FnList) const {
  quorvex::GenerateInfix(Compiled(), language, locale_, InFixList, FnList);
}

Result<std::string> ModelClass::GenerateExcelInfix(std::string_view CellReferance, bool XInColumns) const {
  return quorvex::GenerateExcelInfix(Compiled(), CoefficientValues, Statistics, CellReferance, XInColumns);
}

std::string ModelClass::ExportFunction(ExprType language, std::string_view name, const std::tm& created) const {
  return FunctionSource({Compiled(), CoefficientValues, Statistics, R2, R2Adjust, StdErr, locale_}, language, name,
                        created);
}

}  // namespace quorvex
