#include "app/HelpPages.h"

#include <algorithm>

#include "core/NumberText.h"

namespace quorvex {
namespace {

constexpr HelpPage kRows[] = {
    {"parentfrm", "index.html"},
    {"quorvexWindow", "sheet.html"},
    {"NewProj", "sheet.html#new"},
    {"frmDeriveWindow", "sheet.html#derive"},
    {"frmUndoHistory", "sheet.html#undo"},
    {"frmPSpecial", "sheet.html#edit"},
    {"frmCSpecial", "sheet.html#edit"},
    {"frmFind", "sheet.html#find"},
    {"frmGoto", "sheet.html#find"},
    {"FormatCells", "sheet.html#format"},
    {"DataSweep", "sheet.html#data"},
    {"Factor", "sheet.html#data"},
    {"Sort", "sheet.html#data"},
    {"frmCombine", "sheet.html#data"},
    {"frmZeroSelect", "sheet.html#data"},
    {"frmSmooth", "sheet.html#smooth"},
    {"DataStat", "sheet.html#statistics"},
    {"frmVarSelect", "selection.html"},
    {"frmStepWise", "selection.html#report"},
    {"frmUserSelect", "selection.html#manual"},
    {"frmImport", "import.html"},
    {"frmDataBase", "import.html#database"},
    {"SolveSetup", "solve.html#setup"},
    {"Regress", "solve.html#single"},
    {"Groups", "solve.html#groups"},
    {"Interp", "solve.html#interpolation"},
    {"Solve", "solve.html#run"},
    {"SeriesSetup", "solve.html#series"},
    {"frmSeries", "solve.html#seriesresults"},
    {"SolveFailed", "solve.html#failed"},
    {"SolveLog", "solve.html#log"},
    {"reginit", "solve.html#estimates"},
    {"ClearFits", "solve.html#clear"},
    {"usereq", "models.html"},
    {"frmEqEdit", "models.html#editor"},
    {"frmFunc", "models.html#functions"},
    {"frmPartial", "models.html#derivatives"},
    {"frmRules", "models.html#rules"},
    {"frmCopyModel", "models.html#copy"},
    {"frmChooseModel", "models.html#files"},
    {"frmEquationText", "models.html#export"},
    {"frmExcelRef", "models.html#export"},
    {"frmModelCode", "models.html#code"},
    {"frmResults", "results.html"},
    {"DiagnosisTab", "diagnosis.html"},
    {"frmQuantities", "diagnosis.html#quantities"},
    {"frmSummary", "results.html#summary"},
    {"frmTableExport", "results.html#export"},
    {"frmTableType", "results.html#export"},
    {"frmTableVars", "results.html#export"},
    {"TableFormat", "results.html#commands"},
    {"Dataplot", "plots.html"},
    {"frmPltTemplate", "plots.html#templates"},
    {"frmTemplateEdit", "plots.html#templates"},
    {"frmTemplatePrompt", "plots.html#templates"},
    {"Properties2D", "plots.html#edit"},
    {"Properties3D", "plots.html#edit"},
    {"frmTextBoxPatterns", "plots.html#edit"},
    {"frmContour", "plots.html#edit"},
    {"frmPlotSelect", "plots.html#columns"},
    {"frmScatterType", "plots.html#residuals"},
    {"frmPlotEquation", "plots.html#equation"},
    {"GraphList", "plots.html#columns"},
    {"frmPlotInfo", "plots.html"},
    {"calcfrm", "plots.html#calculator"},
    {"Distribution", "plots.html#calculator"},
    {"expsetup", "plots.html#calculator"},
    {"frmSample", "plots.html#calculator"},
    {"frmSectionPlot", "plots.html#calculator"},
    {"PSetup", "plots.html#paper"},
    {"PlotPreview", "plots.html#paper"},
    {"Printfrm", "plots.html#paper"},
    {"frmMacro", "macros.html"},
    {"frmViewMacro", "macros.html#view"},
    {"FilePref", "preferences.html#solver"},
    {"frmGenPref", "preferences.html#general"},
};

}  // namespace

std::string HeadingAnchor(std::string_view heading) {
  std::string anchor;
  for (const char c : ToLower(heading)) {
    if (c == ' ')
      anchor += '-';
    else if (c == '-' || c == '_' || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9'))
      anchor += c;
  }
  return anchor;
}

std::span<const HelpPage> HelpPages() { return kRows; }

std::string_view HelpPageOf(std::string_view window) {
  const auto row = std::find_if(std::begin(kRows), std::end(kRows), [&](auto& page) { return page.Window == window; });
  return row == std::end(kRows) ? std::string_view() : row->Page;
}

}  // namespace quorvex
